#pragma once

#include "generate/windows/BidEditToolbar.h"
#include "generate/windows/PicEdit.h"
#include "generate/windows/dlgTB.h"
#include "generate/windows/frmBidEdit.h"
#include "gui/support/WorkbenchWindow.h"
#include "outline/TakeBack.h"
#include "platform/word/engine/EngineApplication.h"
#include "store/DatabaseCreation.h"
#include "support/FakeDocumentConverter.h"
#include "support/FakeFilesInUse.h"
#include "support/FakeGenerationRecord.h"
#include "support/FakePdfPrinter.h"
#include "support/FakeShell.h"
#include "support/FakeWindowLookup.h"
#include "support/FakeWordProcessorWindows.h"
#include "support/FixedFonts.h"

#include <QApplication>
#include <QPushButton>
#include <QScrollBar>

namespace qvnd::test {

// Writes down what the plan edit window asks of its frame.
class RecordingBidEditFrame : public generate::BidEditFrame {
public:
    void unloadPlanEditor() override { asked << "unload"; }
    void showFrmBid() override { asked << "show"; }
    void maximizeFrmBid() override { asked << "maximize"; }
    void showStatus(const QString& text) override { status << text; }

    QStringList asked;
    QStringList status;
};

// The format dialog's two controls as they are at first.
class FirstControls : public format::ChildDocumentControls {
public:
    QString cboBianHao() override { return {}; }
    QString txtInde() override { return QStringLiteral("2"); }
};

// The plan edit window on a real store with settings of a first installation: plan T with a folder
// and two documents, as files of our own engine. The word processor is that engine until a test
// puts another there.
class PlanEditWindow : public testing::Test,
                       private word::ImportReport,
                       private word::UnsavedChangesQuestion {
protected:
    PlanEditWindow() {
        world.makePlan("T", {{"T", "T"},
                             {"T.1", "工程概况"},
                             {"T.1.1", "编制依据", "是"},
                             {"T.2", "施工部署", "是"}});
        store::CreateBidSetDb(world.state, world.folder.path("Sys/Database/Db_BidSet.mdb"),
                              QDate(2026, 5, 1));
        writeDocument("T.1.1", u"依据正文");
        writeDocument("T.2", u"部署正文");
        const auto current = world.state.gDbUser->OpenRecordset("Select * from 当前表");
        current->AddNew();
        current->Set(u"名称", QStringLiteral("T"));
        current->Update();
    }

    void notCarried(const std::filesystem::path&, std::u16string_view what) override {
        ADD_FAILURE() << toUtf8(what);
    }
    bool save(const std::filesystem::path&) override {
        ++unsaved;
        return false;
    }

    QString fileOf(const QString& key) const {
        return world.folder.path("用户模板/T/" + key + ".doc");
    }
    void writeDocument(const QString& key, std::u16string_view text) {
        writeDocumentTo(fileOf(key), text);
    }
    void writeDocumentTo(const QString& path, std::u16string_view text) {
        word::EngineApplication writer({pages, *this, *this});
        word::Document& file = writer.documents().Add();
        writer.Selection().TypeText(text);
        file.SaveAs(files::toPath(path));
    }
    QString finished() const { return world.state.gWorkPath + "施工方案.doc"; }

    generate::frmBidEdit::Parts parts() {
        return {{world.state, switches, word},
                world.messages,
                world.dialogs,
                world.events,
                *longRun,
                *generation,
                *insertion,
                *wordProcessorWindows,
                windows,
                shell,
                *filesInUse,
                *printer,
                *generationRecord,
                converter,
                controls,
                frame,
                showSettings,
                [this](std::int64_t step) {
                    outline::undoNamed(world.state, world.workbench, world.services(), step);
                },
                [this] { ++detailsShown; },
                *pane,
                preview};
    }
    void open() {
        pane = new TallPane;
        form = std::make_unique<generate::frmBidEdit>(parts());
        form->resize(1000, 680);
        form->show();
        form->Load();
        QCoreApplication::processEvents();
    }
    outline::OutlineView& tree() { return *form->findChild<outline::OutlineView*>("TrvEdit"); }
    void click(const QString& key, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(tree().viewport(), button, {}, rowOf(key));
    }
    void doubleClick(const QString& key) {
        click(key);
        QTest::mouseDClick(tree().viewport(), Qt::LeftButton, {}, rowOf(key));
    }
    QPoint rowOf(const QString& key) {
        outline::OutlineModel& model = tree().outline();
        const QModelIndex index = model.indexOf(&model.tree().Item(key));
        tree().scrollTo(index);
        return tree().visualRect(index).center();
    }
    QAction& item(const QString& name) { return *form->findChild<QAction*>(name); }
    void choose(const QString& name) { item(name).trigger(); }
    QAction& key(const QString& key) { return *form->findChild<QAction*>("TbarBidSet_" + key); }
    void press(const QString& key) { this->key(key).trigger(); }
    template <typename Control = QWidget>
    Control& control(const QString& name) {
        return *form->findChild<Control*>(name);
    }
    // The dialog of a running generation; null when there is none.
    generate::dlgTB* dlgTB() {
        auto* dialog = form->findChild<generate::dlgTB*>();
        return dialog && dialog->isVisible() ? dialog : nullptr;
    }
    QStringList messages() const {
        QStringList texts;
        for (const desktop::Message& message : world.messages.shown) {
            texts << message.text;
        }
        return texts;
    }
    bool hasHourglass() const { return form->cursor().shape() == Qt::WaitCursor; }
    // Pointer, dialog and word processor of a command are gone, and the next one may run.
    void expectUsable() {
        EXPECT_FALSE(hasHourglass());
        EXPECT_TRUE(preview.isFollowing);
        EXPECT_EQ(dlgTB(), nullptr);
        EXPECT_FALSE(world.state.Command.isRunning());
        EXPECT_FALSE(word.isAtWork());
        EXPECT_TRUE(form->isEnabled());
    }

    OutlineWorld world;
    RecordingBidEditFrame frame;
    FakePreview preview;
    FakeShell shell;
    FakeWindowLookup windows;
    FakeWordProcessorWindows openDocuments;
    FakeFilesInUse inUse;
    desktop::WordProcessorWindows* wordProcessorWindows = &openDocuments;
    files::FilesInUse* filesInUse = &inUse;
    FakePdfPrinter pdf;
    FakeGenerationRecord record;
    FakeDocumentConverter converter;
    generate::GenerationRecord* generationRecord = &record;
    FirstControls controls;
    FormatSwitches switches;
    generate::WordSession word;
    std::function<void()> showSettings;
    test::FixedPageNumbers pages;
    word::EngineApplicationFactory engine{{pages, *this, *this}};
    word::ApplicationFactory* generation = &engine;
    word::ApplicationFactory* insertion = &world.word;
    desktop::LongRun* longRun = &world.longRun;
    office::PdfPrinter* printer = &pdf;
    int detailsShown = 0;
    int unsaved = 0; // how often a changed document was closed
    TallPane* pane = nullptr;
    std::unique_ptr<generate::frmBidEdit> form;
};

} // namespace qvnd::test
