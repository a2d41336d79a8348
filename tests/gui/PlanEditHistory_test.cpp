#include "format/windows/frmBidSetWindow.h"
#include "gui/support/DesktopWorld.h"
#include "gui/support/ModalWindow.h"
#include "gui/support/PlanEditWindow.h"
#include "outline/TakeBack.h"
#include "outline/windows/NoteBar.h"
#include "support/FakeFonts.h"
#include "support/FakeInputBoxes.h"

#include <QCheckBox>

namespace qvnd::test {
namespace {

// What the plan edit window changes, in the history.
class PlanEditHistory : public PlanEditWindow {
protected:
    PlanEditHistory() {
        world.state.History = std::make_unique<history::History>(
            world.state.gUserTplPath + ".~history", history::Places({{'A', world.folder.root()}}),
            *world.state.gWs, *world.state.gFso, "测试");
    }
    void TearDown() override { form.reset(); }

    history::Step last() { return world.state.History->undoable().value_or(history::Step{}); }
    void undo() { ASSERT_TRUE(outline::undo(world.state, world.workbench, world.services())); }
    QString setting(const QString& table, const QString& field) {
        return world.state.gDbBidSet->OpenRecordset("Select * from [" + table + "]")
            ->Get(field)
            .TextOrEmpty();
    }
};

TEST_F(PlanEditHistory, AGenerationThatReplacesTheFinishedDocumentTellsItAndIsTakenBack) {
    open();
    world.folder.write("施工方案.doc", "earlier");
    choose("mnuBuildbid");
    EXPECT_EQ(last().title, "生成卷宗编制[施工方案.doc]");
    EXPECT_EQ(last().note, "覆盖了 1 个文件：施工方案.doc");
    EXPECT_NE(world.folder.read("施工方案.doc"), "earlier");
    undo();
    EXPECT_EQ(world.folder.read("施工方案.doc"), "earlier");
}

TEST_F(PlanEditHistory, AKeyOfTheToolbarIsNamedAsItsTwinInTheMenus) {
    showSettings = [this] {
        world.state.gDbBidSet->Execute("Delete * from 章节设置表 where 级别='2'");
    };
    open();
    press("标书设置");
    EXPECT_TRUE(last().title.startsWith("施工方案设置")) << last().title.toStdString();
    press("生成标书");
    EXPECT_EQ(last().title, "生成卷宗编制[施工方案.doc]");
}

TEST_F(PlanEditHistory, WhatTheFormatDialogWritesIsOneStepAndComesBack) {
    FakeInputBoxes inputs;
    FakeFonts fonts;
    format::frmBidSet dialog(world.state,
                             {world.messages, inputs, world.dialogs, fonts, shell, world.word});
    format::FormatDialog shown(world.state, dialog, world.messages);
    std::function<void(format::frmBidSetWindow&)> act = [](format::frmBidSetWindow& window) {
        window.findChild<QCheckBox*>("chkHeader")->click();
        window.findChild<QCheckBox*>("chkfooter")->click();
        window.close();
    };
    showSettings = [&] {
        onceModal<format::frmBidSetWindow>(act);
        shown.show(nullptr);
    };
    open();
    const QString header = setting("页眉页脚表", "是否带页眉");
    const QString footer = setting("页眉页脚表", "是否带页脚");
    choose("mnuBidSet");
    EXPECT_NE(setting("页眉页脚表", "是否带页眉"), header);
    EXPECT_TRUE(last().title.startsWith("施工方案设置")) << last().title.toStdString();
    undo();
    EXPECT_EQ(setting("页眉页脚表", "是否带页眉"), header);
    EXPECT_EQ(setting("页眉页脚表", "是否带页脚"), footer);
    EXPECT_FALSE(world.state.History->undoable()) << "the dialog was one step";
    act = [&](format::frmBidSetWindow& window) {
        EXPECT_EQ(window.findChild<QCheckBox*>("chkHeader")->isChecked(), header == "是")
            << "the dialog shows what came back";
        window.close();
    };
    choose("mnuBidSet");
}

// The bar is the workbench's.
TEST(PlanEditHistoryInTheFrame, WhatAGenerationReplacedIsToldInTheWorkbench) {
    FakeMessageBoxes messages;
    FakeFileDialogs dialogs;
    FixedPageNumbers pages;
    struct Silent : word::ImportReport, word::UnsavedChangesQuestion {
        void notCarried(const std::filesystem::path&, std::u16string_view) override {}
        bool save(const std::filesystem::path&) override { return false; }
    } silent;
    word::EngineApplicationFactory engine{{pages, silent, silent}};
    DesktopWorld world{messages, dialogs, engine};
    world.start();
    startup::MainForm& frame = world.mainForm();
    const QString finished = world.run().program().state().gWorkPath + "施工方案.doc";
    QFile file(finished);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("earlier");
    file.close();
    frame.showPlanEditor();
    frame.findChild<QAction*>("mnuBuildbid")->trigger();
    frame.findChild<QAction*>("mnuBack")->trigger();
    QCoreApplication::processEvents();
    auto* bar = frame.findChild<outline::NoteBar*>();
    EXPECT_TRUE(bar->isVisible());
    EXPECT_EQ(bar->text(), "覆盖了 1 个文件：施工方案.doc");
    world.drop();
}

} // namespace
} // namespace qvnd::test
