#include "gui/support/PlanEditWindow.h"

#include "platform/files/WorkSpaceTurn.h"
#include "platform/history/History.h"

#include <QLabel>
#include <QTreeWidget>

#include <memory>
#include <stdexcept>

namespace qvnd::test {
namespace {

// Check and PDF

struct PlanEditCheck : PlanEditWindow {
    QTreeWidget& list() { return *form->findChild<QTreeWidget*>("lstFindings"); }
    QString summary() { return form->findChild<QLabel*>("lblSummary")->text(); }
};

TEST_F(PlanEditCheck, ItListsWhatToMendAndAClickSelectsTheNode) {
    QFile::remove(fileOf("T.1.1"));
    open();
    choose("mnuCheck");
    ASSERT_EQ(list().topLevelItemCount(), 2);
    EXPECT_EQ(list().topLevelItem(0)->text(0), "工程概况") << "its heading would run on";
    EXPECT_EQ(list().topLevelItem(1)->text(0), "编制依据");
    EXPECT_TRUE(list().topLevelItem(1)->text(1).contains("T.1.1.doc"));
    EXPECT_TRUE(summary().contains("2"));
    list().setCurrentItem(list().topLevelItem(0));
    EXPECT_EQ(tree().outline().tree().SelectedItem()->Key(), "T.1");
    EXPECT_FALSE(item("mnuOpenDoc").isEnabled());
    list().setCurrentItem(list().topLevelItem(1));
    EXPECT_EQ(tree().outline().tree().SelectedItem()->Key(), "T.1.1");
    EXPECT_TRUE(item("mnuOpenDoc").isEnabled());
    EXPECT_TRUE(messages().isEmpty());
    expectUsable();
}

TEST_F(PlanEditCheck, OfASoundPlanItSaysSo) {
    switches.gBlankLineAroundTitle = true;
    open();
    choose("mnuCheck");
    EXPECT_EQ(summary(), "没有发现问题，可以生成。");
    EXPECT_FALSE(list().isVisible());
    EXPECT_LT(list().window()->height(), 200) << "no empty room for rows";
}

TEST_F(PlanEditCheck, AskedAgainItShowsWhatIsSoNow) {
    switches.gBlankLineAroundTitle = true;
    QFile::remove(fileOf("T.1.1"));
    open();
    choose("mnuCheck");
    EXPECT_EQ(list().topLevelItemCount(), 1);
    writeDocument("T.1.1", u"依据正文");
    choose("mnuCheck");
    EXPECT_EQ(list().topLevelItemCount(), 0);
}

TEST_F(PlanEditCheck, AClickOnTheCurrentRowSelectsItsNodeAgain) {
    QFile::remove(fileOf("T.1.1"));
    switches.gBlankLineAroundTitle = true;
    open();
    choose("mnuCheck");
    const auto clickRow = [&] {
        QTest::mouseClick(list().viewport(), Qt::LeftButton, {},
                          list().visualItemRect(list().topLevelItem(0)).center());
    };
    clickRow();
    EXPECT_EQ(tree().outline().tree().SelectedItem()->Key(), "T.1.1");
    click("T.1");
    clickRow();
    EXPECT_EQ(tree().outline().tree().SelectedItem()->Key(), "T.1.1");
    EXPECT_TRUE(item("mnuOpenDoc").isEnabled());
}

TEST_F(PlanEditCheck, OpenedItLeavesTheSelectedNodeUntilARowIsChosen) {
    QFile::remove(fileOf("T.1.1"));
    open();
    choose("mnuCheck");
    ASSERT_TRUE(QTest::qWaitForWindowActive(list().window()));
    EXPECT_EQ(tree().outline().tree().SelectedItem()->Key(), "T.2");
    list().setFocus();
    QTest::keyClick(&list(), Qt::Key_Down);
    EXPECT_NE(tree().outline().tree().SelectedItem()->Key(), "T.2");
}

TEST_F(PlanEditCheck, LongTextsStandInSeveralLines) {
    open();
    choose("mnuCheck");
    QTest::qWait(1);
    EXPECT_EQ(list().columnWidth(1), 240) << "as wide as it may be";
    const int line = list().fontMetrics().lineSpacing();
    EXPECT_GE(list().visualItemRect(list().topLevelItem(0)).height(), 2 * line)
        << "the advice for a heading that runs on is long";
}

TEST_F(PlanEditCheck, OfAPlanWithNothingInItSaysThatThereIsNothingToGenerate) {
    world.state.gDbUser->Execute("DELETE * FROM T WHERE Key<>'T'");
    open();
    choose("mnuCheck");
    ASSERT_EQ(list().topLevelItemCount(), 1);
    EXPECT_EQ(list().topLevelItem(0)->text(1), "没有内容去生成标书！");
}

TEST_F(PlanEditCheck, CancelledItShowsNoList) {
    world.longRun.cancel = [] { return true; };
    open();
    choose("mnuCheck");
    EXPECT_EQ(form->findChild<QTreeWidget*>("lstFindings"), nullptr);
    expectUsable();
}

TEST_F(PlanEditCheck, ItLeavesTheTurnToOthersAndIsNoStepOfTheHistory) {
    world.state.Turn = std::make_unique<files::WorkSpaceTurn>(world.folder.root());
    world.state.History = std::make_unique<history::History>(
        world.state.gUserTplPath + ".~history",
        history::Places(world.state.gUserTplPath, {world.folder.root()}), *world.state.gWs,
        *world.state.gFso, "测试");
    QFile::remove(fileOf("T.1.1"));
    open();
    int yields = 0;
    world.events.whileServed = [&] {
        ++yields;
        EXPECT_FALSE(world.state.Turn->isTaken());
        EXPECT_FALSE(world.state.History->isUnderWay());
    };
    world.state.gDbUser->Execute("DELETE * FROM T WHERE Key='T.2'");
    choose("mnuCheck");
    EXPECT_EQ(yields, 2) << "of the outline as the workbench has left it";
    EXPECT_EQ(list().topLevelItemCount(), 2);
    form.reset();
}

TEST_F(PlanEditCheck, WhatIsNoRunTimeErrorIsToldAndTheWindowGoesOn) {
    open();
    world.events.whileServed = [] { throw std::logic_error("odd"); };
    choose("mnuCheck");
    EXPECT_EQ(messages(), QStringList("程序内部出错，这一步没有完成。（odd）"));
    EXPECT_FALSE(world.longRun.running);
    expectUsable();
    world.events.whileServed = nullptr;
    choose("mnuCheck");
    EXPECT_EQ(messages().size(), 1);
    expectUsable();
}

TEST_F(PlanEditCheck, NoOtherCommandRunsInIt) {
    open();
    int yields = 0;
    world.events.whileServed = [&] {
        ++yields;
        for (const char* name : {"mnuCheck", "mnuBrowsebid", "mnuOpenDoc", "mnuBack", "mnuPdf"}) {
            choose(name);
        }
        press("生成标书");
    };
    choose("mnuCheck");
    EXPECT_EQ(yields, 3) << "at each node";
    EXPECT_TRUE(messages().isEmpty()) << messages().join("|").toStdString();
    EXPECT_TRUE(frame.asked.isEmpty() && shell.opened.isEmpty() && pdf.printed.isEmpty());
    EXPECT_FALSE(QFile::exists(finished()));
    expectUsable();
}

TEST_F(PlanEditWindow, ThePdfStandsBesideTheFinishedDocument) {
    open();
    choose("mnuPdf");
    EXPECT_EQ(messages(), QStringList{"对不起，系统尚未生成标书！"});
    world.folder.write("施工方案.doc", "finished");
    choose("mnuPdf");
    EXPECT_EQ(pdf.printed, QStringList({finished()}));
    EXPECT_EQ(world.folder.read("施工方案.pdf"), pdf.content);
    EXPECT_EQ(messages().last(), "已输出 PDF 文件：\n" + world.state.gWorkPath + "施工方案.pdf");
    EXPECT_EQ(world.messages.shown.back().title, "提示");
    EXPECT_EQ(world.messages.shown.back().icon, desktop::Icon::information);
    pdf.failure = RunTimeError(error::invalidCall, u"办公套件无法转换文件");
    choose("mnuPdf");
    EXPECT_EQ(messages().last(), "办公套件无法转换文件");
    expectUsable();
}

TEST_F(PlanEditWindow, WithoutTheSuiteThePdfSaysWhatItNeeds) {
    pdf.isInstalled = false;
    world.folder.write("施工方案.doc", "finished");
    open();
    choose("mnuPdf");
    EXPECT_EQ(messages(), QStringList{"输出 PDF 需要办公软件 LibreOffice，但没有找到。"});
    EXPECT_EQ(world.messages.shown[0].title, "提示");
    EXPECT_EQ(world.messages.shown[0].icon, desktop::Icon::exclamation);
    EXPECT_FALSE(QFile::exists(world.state.gWorkPath + "施工方案.pdf"));
    expectUsable();
}

TEST_F(PlanEditWindow, WhatIsNoRunTimeErrorOfThePdfIsToldAndTheWindowGoesOn) {
    class OddPrinter : public office::PdfPrinter {
        bool isAvailable() const override { return true; }
        void print(const QString&, const QString&) override { throw std::logic_error("odd"); }
    } odd;
    printer = &odd;
    world.folder.write("施工方案.doc", "finished");
    open();
    choose("mnuPdf");
    EXPECT_EQ(messages(), QStringList("程序内部出错，这一步没有完成。（odd）"));
    EXPECT_FALSE(world.longRun.running);
    EXPECT_FALSE(QFile::exists(world.state.gWorkPath + "施工方案.pdf"));
    expectUsable();
    form.reset(); // which knows the printer
}

} // namespace
} // namespace qvnd::test
