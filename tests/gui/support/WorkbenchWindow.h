#pragma once

#include "outline/windows/PreviewFrame.h"
#include "outline/windows/WorkbenchFrame.h"
#include "outline/windows/WorkbenchToolbar.h"
#include "outline/windows/frmBid.h"
#include "support/FakeInputBoxes.h"
#include "support/FakePreview.h"
#include "support/OutlineWorld.h"

#include <QDir>
#include <QFile>
#include <QTabWidget>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

namespace qvnd::test {

// Writes down what the workbench asks of its frame.
class RecordingFrame : public outline::WorkbenchFrame {
public:
    void showPlanEditor() override { asked << "showPlanEditor"; }
    void openDocument(const QString& file) override { opened << file; }
    void arrangeCascade() override { asked << "arrangeCascade"; }
    void arrangeTile() override { asked << "arrangeTile"; }
    void showHelpContents() override { asked << "showHelpContents"; }
    void showHelpIndex() override { asked << "showHelpIndex"; }
    void showAbout() override { asked << "showAbout"; }
    void showStatus(const QString& text) override { status << text; }
    void endAtOnce() override { asked << "endAtOnce"; }
    void exit() override { asked << "exit"; }

    QStringList status;
    QStringList asked;
    QStringList opened;
};

// A document view of a given height.
class TallPane : public QWidget {
public:
    QSize sizeHint() const override { return {100, wanted}; }
    void setWanted(int height) {
        wanted = height;
        updateGeometry();
    }

    int wanted = 100;
};

// The workbench on a real store: plan T with a folder, documents and a document below a document,
// template M with a folder and a document; files for the documents.
class WorkbenchWindow : public testing::Test {
protected:
    WorkbenchWindow() {
        world.makePlan("T", {{"T", "T"},
                             {"T.1", "名T.1"},
                             {"T.1.1", "名T.1.1", "是"},
                             {"T.2", "名T.2", "是"},
                             {"T.2.1", "名T.2.1", "是"},
                             {"T.3", "名T.3"}});
        world.makePlan("U", {{"U", "U"}, {"U.1", "名U.1", "是"}});
        OutlineWorld::makeTable(*world.state.gDbTemplate, "M",
                                {{"M", "M"}, {"M.1", "模板章"}, {"M.2", "模板文", "是"}});
        world.registerName(*world.state.gDbTemplate, "M");
        world.folder.makeFolder("Sys/Database");
        world.folder.makeFolder("Sys/标书模板/M");
        for (const char* file :
             {"用户模板/T/T.1.1.doc", "用户模板/T/T.2.doc", "用户模板/T/T.2.1.doc",
              "用户模板/U/U.1.doc", "Sys/标书模板/M/M.2.doc"}) {
            writeDocument(world.folder.path(file));
        }
        world.state.HelpFile = world.folder.path("Qvnd.hlp");
    }

    static void writeDocument(const QString& path) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
        file.write("document");
    }

    void setCurrentPlan(const QString& name) {
        const auto rs = world.state.gDbUser->OpenRecordset("Select * from 当前表");
        rs->AddNew();
        rs->Set(u"名称", name);
        rs->Update();
    }

    // Opens the window on plan T; with `select`, that node is clicked.
    void open(const QString& select = {}) {
        setCurrentPlan("T");
        openAsItIs();
        if (!select.isEmpty()) {
            click(trvCurrent(), select);
        }
    }
    void openAsItIs() {
        pane = new TallPane;
        fraSee = new outline::PreviewFrame(*pane, preview);
        form = std::make_unique<outline::frmBid>(outline::frmBid::Parts{
            world.state, world.workbench, world.services(), frame, *fraSee, inputs});
        form->resize(1000, 680);
        form->show();
        form->Load();
        QCoreApplication::processEvents();
    }

    outline::OutlineView& tree(const QString& name) {
        return *form->findChild<outline::OutlineView*>(name);
    }
    outline::OutlineView& trvCurrent() { return tree("TrvCurrent"); }
    outline::OutlineView& trvTemplate() { return tree("TrvTemplate"); }
    outline::OutlineView& trvUser() {
        form->findChild<QTabWidget*>("TabTemplate")->setCurrentIndex(1);
        return tree("TrvTemplate_Us");
    }
    QPoint rowOf(outline::OutlineView& view, const QString& key) {
        outline::OutlineModel& model = view.outline();
        const QModelIndex index = model.indexOf(&model.tree().Item(key));
        view.scrollTo(index);
        return view.visualRect(index).center();
    }
    static QPoint beside(const outline::OutlineView& view) {
        return {20, view.viewport()->height() - 3};
    }
    void click(outline::OutlineView& view, const QString& key,
               Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(view.viewport(), button, {}, rowOf(view, key));
    }
    void doubleClick(outline::OutlineView& view, const QString& key) {
        click(view, key);
        QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, rowOf(view, key));
    }

    QAction& item(const QString& name) {
        auto* found = form->findChild<QAction*>(name);
        if (!found) {
            found = form->findChild<QMenu*>(name)->menuAction();
        }
        return *found;
    }
    outline::WorkbenchToolbar& toolbar() {
        return *form->findChild<outline::WorkbenchToolbar*>("TbarBid");
    }
    QString lastMessage() const {
        return world.messages.shown.empty() ? QString() : world.messages.shown.back().text;
    }
    QString selected() const { return world.selectedKey(); }

    OutlineWorld world;
    RecordingFrame frame;
    FakePreview preview;
    FakeInputBoxes inputs;
    TallPane* pane = nullptr;
    outline::PreviewFrame* fraSee = nullptr;
    std::unique_ptr<outline::frmBid> form;
};

} // namespace qvnd::test
