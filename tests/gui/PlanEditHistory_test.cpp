#include "format/windows/frmBidSetWindow.h"
#include "gui/support/DesktopWorld.h"
#include "gui/support/ModalWindow.h"
#include "gui/support/PlanEditWindow.h"
#include "outline/RecordedCommand.h"
#include "outline/TakeBack.h"
#include "outline/windows/NoteBar.h"
#include "store/PlanTables.h"
#include "support/FakeFonts.h"
#include "support/FakeInputBoxes.h"
#include "support/PlainSqlite.h"

#include <QCheckBox>
#include <QInputMethodEvent>
#include <QLineEdit>

namespace qvnd::test {
namespace {

// What the plan edit window changes, in the history.
class PlanEditHistory : public PlanEditWindow {
protected:
    PlanEditHistory() {
        world.state.History = std::make_unique<history::History>(
            world.state.gUserTplPath + ".~history",
            history::Places(world.state.gUserTplPath, {world.folder.root()}), *world.state.gWs,
            *world.state.gFso, "测试");
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

TEST_F(PlanEditHistory, ANoteThatComesAndGoesLeavesTheReaderWhereHeIs) {
    open();
    world.folder.write("施工方案.doc", "earlier");
    pane->wanted = 3000;
    choose("mnuBuildbid");
    const auto* note = form->findChild<outline::NoteBar*>();
    ASSERT_TRUE(note->isVisible());
    auto& steps = control<QScrollBar>("VSEdit");
    EXPECT_EQ(steps.maximum(), 10) << "as behind a run without a note";
    EXPECT_EQ(steps.height(), control("PicEdit").height() - 3);
    steps.setValue(5);
    const int before = control("PicEdit").height();
    undo();
    click("T.1");
    ASSERT_FALSE(note->isVisible()) << "its step has been taken back";
    EXPECT_GT(control("PicEdit").height(), before);
    EXPECT_EQ(steps.maximum(), 10);
    EXPECT_EQ(steps.value(), 5);
    EXPECT_EQ(control("OleEdit").y(), -qRound((3000 - control("PicEdit").height()) * 0.5));
}

TEST_F(PlanEditHistory, APdfThatReplacesTheFormerOneTellsItAndIsTakenBack) {
    open();
    world.folder.write("施工方案.doc", "finished");
    world.folder.write("施工方案.pdf", "earlier");
    choose("mnuPdf");
    EXPECT_EQ(last().title, "输出 PDF[施工方案.pdf]");
    EXPECT_EQ(last().note, "覆盖了 1 个文件：施工方案.pdf");
    EXPECT_EQ(world.folder.read("施工方案.pdf"), pdf.content);
    undo();
    EXPECT_EQ(world.folder.read("施工方案.pdf"), "earlier");
}

TEST_F(PlanEditHistory, APdfThatFailsLeavesTheFormerOneAndNoStep) {
    open();
    world.folder.write("施工方案.doc", "finished");
    world.folder.write("施工方案.pdf", "earlier");
    pdf.failure = RunTimeError(error::invalidCall, u"办公套件无法转换文件");
    choose("mnuPdf");
    EXPECT_EQ(world.folder.read("施工方案.pdf"), "earlier");
    EXPECT_FALSE(world.state.History->undoable());
}

// The disk of the history is full when the command ends, though it was not when it began.
class FullAtTheEnd : public PlanEditHistory {
protected:
    void fillHistory() {
        PlainSqlite(world.state.gUserTplPath + ".~history/history.db")
            .rows("CREATE TRIGGER full BEFORE INSERT ON steps "
                  "BEGIN SELECT RAISE(ABORT,'full'); END");
        world.messages.shown.clear();
        frame.status.clear();
    }
};

TEST_F(FullAtTheEnd, AGenerationThatIsTakenBackIsNotSaidToHaveFinished) {
    open();
    choose("mnuBuildbid");
    world.folder.write("施工方案.doc", "earlier");
    fillHistory();
    choose("mnuBuildbid");
    ASSERT_EQ(messages().size(), 1);
    EXPECT_TRUE(messages()[0].startsWith("“生成卷宗编制”没有执行")) << messages()[0].toStdString();
    EXPECT_EQ(world.folder.read("施工方案.doc"), "earlier");
    EXPECT_EQ(frame.status, QStringList());
    EXPECT_FALSE(item("mnuReport").isEnabled());
}

TEST_F(FullAtTheEnd, APdfThatIsTakenBackIsNotSaidToStandThere) {
    open();
    world.folder.write("施工方案.doc", "finished");
    choose("mnuPdf");
    world.folder.write("施工方案.pdf", "earlier");
    fillHistory();
    choose("mnuPdf");
    ASSERT_EQ(messages().size(), 1) << messages().join('|').toStdString();
    EXPECT_TRUE(messages()[0].startsWith("“输出 PDF”没有执行")) << messages()[0].toStdString();
    EXPECT_EQ(world.folder.read("施工方案.pdf"), "earlier");
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

// The format dialog on the screen, and what its user does at each showing.
class SettingsInHistory : public PlanEditHistory {
protected:
    SettingsInHistory() {
        world.state.gDbUser->TableDefs().Append(store::informationTable("T"));
        showSettings = [this] {
            onceModal<format::frmBidSetWindow>(act);
            shown.show(nullptr);
        };
    }

    outline::NoteBar& bar() { return control<outline::NoteBar>("NoteBar"); }
    static void type(format::frmBidSetWindow& window, const QString& name, const QString& text) {
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        auto* box = window.findChild<QLineEdit*>(name);
        box->setFocus();
        box->selectAll();
        QInputMethodEvent typed;
        typed.setCommitString(text);
        QCoreApplication::sendEvent(box, &typed);
    }
    static void press(format::frmBidSetWindow& window, const QString& name) {
        window.findChild<QPushButton*>(name)->click();
    }
    void change(const QString& table, const QString& field, const QString& text) {
        const auto rows = world.state.gDbBidSet->OpenRecordset("Select * from [" + table + "]");
        rows->Eof() ? rows->AddNew() : rows->Edit();
        rows->Set(field, text);
        rows->Update();
    }

    FakeInputBoxes inputs;
    FakeFonts fonts;
    format::frmBidSet dialog{world.state,
                             {world.messages, inputs, world.dialogs, fonts, shell, world.word}};
    format::FormatDialog shown{world.state, dialog, world.messages};
    std::function<void(format::frmBidSetWindow&)> act = [](format::frmBidSetWindow& window) {
        press(window, "cmdCancel");
    };
};

TEST_F(SettingsInHistory, WhatCancelKeepsIsToldAtOnceAndOneUndoTakesItBack) {
    open();
    choose("mnuBidSet"); // what the first load changes is a step of its own
    act = [](format::frmBidSetWindow& window) {
        type(window, "TxtPrjName", "滨江");
        type(window, "TxtOffName", "一建");
        QTest::keyClick(&window, Qt::Key_Escape);
    };
    choose("mnuBidSet");
    EXPECT_EQ(setting("封面表", "工程名称"), "滨江");
    EXPECT_TRUE(bar().isVisible());
    EXPECT_TRUE(
        bar().text().startsWith("设置已保留，取消和关闭不撤回改动：工程名称由“T”改为“滨江”"))
        << bar().text().toStdString();
    EXPECT_EQ(last().note, bar().text());
    control<QPushButton>("noteDetails").click();
    EXPECT_EQ(detailsShown, 1);
    control<QPushButton>("noteUndo").click();
    EXPECT_EQ(setting("封面表", "工程名称"), "T");
    EXPECT_EQ(setting("封面表", "单位名称"), "单位名称");
    EXPECT_FALSE(bar().isVisible());
}

TEST_F(SettingsInHistory, AHiddenDialogShowsWhatAnUndoBroughtBack) {
    open();
    act = [](format::frmBidSetWindow& window) {
        type(window, "TxtOffName", "一建");
        press(window, "cmdCancel");
    };
    choose("mnuBidSet");
    ASSERT_EQ(setting("封面表", "单位名称"), "一建");
    control<QPushButton>("noteUndo").click();
    ASSERT_EQ(setting("封面表", "单位名称"), "单位名称");
    act = [](format::frmBidSetWindow& window) {
        EXPECT_EQ(window.findChild<QLineEdit*>("TxtOffName")->text(), "单位名称");
        press(window, "cmdCancel");
    };
    choose("mnuBidSet");
    EXPECT_TRUE(messages().last().contains("“撤消”")) << messages().last().toStdString();
    EXPECT_EQ(setting("封面表", "单位名称"), "单位名称");
}

TEST_F(SettingsInHistory, WhatTheLoadOfTheDialogChangesIsToldAndTakenBack) {
    change("封面表", "工程名称", "手工题名");
    change("页眉页脚表", "是否右对齐", "否");
    open();
    act = [](format::frmBidSetWindow& window) { press(window, "cmdDecide"); };
    choose("mnuBidSet");
    EXPECT_EQ(setting("封面表", "工程名称"), "T");
    EXPECT_EQ(bar().text(),
              "打开设置时自动改动了：工程名称由“手工题名”改为“T”，是否右对齐由“否”改为“是”。");
    control<QPushButton>("noteUndo").click();
    EXPECT_EQ(setting("封面表", "工程名称"), "手工题名");
    EXPECT_EQ(setting("页眉页脚表", "是否右对齐"), "否");
}

TEST_F(SettingsInHistory, ALibraryThatDecidingGivesUpIsTold) {
    change("封面表", "工程名称", "T");
    change("页眉页脚表", "是否右对齐", "是");
    change("是否设置表", "是否封面", "是");
    open();
    act = [](format::frmBidSetWindow& window) { press(window, "cmdDecide"); };
    choose("mnuBidSet");
    EXPECT_EQ(bar().text(), "没有选中“选用库”，生成时不再采用封面格式库中的设置。");
    choose("mnuBidSet");
    EXPECT_FALSE(bar().isVisible()) << "nothing was given up this time";
}

TEST_F(SettingsInHistory, ADecisionNeedsNoWordsAboutWhatTheUserChanged) {
    change("封面表", "工程名称", "T");
    change("页眉页脚表", "是否右对齐", "是");
    open();
    act = [](format::frmBidSetWindow& window) {
        type(window, "TxtOffName", "一建");
        press(window, "cmdDecide");
    };
    choose("mnuBidSet");
    EXPECT_EQ(setting("封面表", "单位名称"), "一建");
    EXPECT_FALSE(bar().isVisible());
}

TEST_F(SettingsInHistory, WhileACommandRunsTheBarStaysForLater) {
    open();
    act = [](format::frmBidSetWindow& window) {
        type(window, "TxtOffName", "一建");
        press(window, "cmdCancel");
    };
    choose("mnuBidSet");
    ASSERT_TRUE(bar().isVisible());
    world.state.Command.run([this] { control<QPushButton>("noteUndo").click(); });
    EXPECT_TRUE(bar().isVisible());
    EXPECT_EQ(setting("封面表", "单位名称"), "一建");
    control<QPushButton>("noteUndo").click();
    EXPECT_FALSE(bar().isVisible());
    EXPECT_EQ(setting("封面表", "单位名称"), "单位名称");
}

TEST_F(SettingsInHistory, TheBarTakesNoOtherStepBackThanItsOwn) {
    open();
    act = [](format::frmBidSetWindow& window) {
        type(window, "TxtOffName", "一建");
        press(window, "cmdCancel");
    };
    choose("mnuBidSet");
    {
        outline::RecordedCommand another(world.state, world.workbench.TrvCurrent, "操作",
                                         world.messages);
        change("页眉页脚表", "页脚内容", "别处");
        another.finish();
    }
    control<QPushButton>("noteUndo").click();
    EXPECT_EQ(setting("页眉页脚表", "页脚内容"), "别处");
    EXPECT_EQ(setting("封面表", "单位名称"), "一建");
    EXPECT_FALSE(bar().isVisible());
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
    auto* editor = frame.findChild<generate::frmBidEdit*>();
    const auto contents = [&] {
        QFile now(finished);
        return now.open(QIODevice::ReadOnly) ? now.readAll() : QByteArray();
    };
    editor->findChild<QPushButton*>("noteUndo")->click();
    EXPECT_EQ(contents(), "earlier") << "the bar of the plan edit window leads back as well";
    EXPECT_FALSE(editor->findChild<outline::NoteBar*>()->isVisible());
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
