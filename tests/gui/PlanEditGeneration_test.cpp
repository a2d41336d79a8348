#include "gui/support/WindowGeneration.h"

#include "generate/windows/FindingsWindow.h"
#include "outline/CurrentPlan.h"

#include <QTreeWidget>

namespace qvnd::test {
namespace {

TEST_F(WindowGeneration, TheFinishedDocumentStandsInThePreview) {
    open();
    choose("mnuBuildbid");
    EXPECT_TRUE(messages().isEmpty());
    expectWhole();
    EXPECT_EQ(preview.shown.last(), finished());
    EXPECT_TRUE(control("OleEdit").isVisible());
    expectUsable();
}

TEST_F(WindowGeneration, TheStatusBarTellsWhereTheDocumentIsAndHowManyPagesItHas) {
    open();
    choose("mnuBuildbid");
    EXPECT_EQ(frame.status, QStringList("已生成 " + finished() + "。")) << "their number unknown";
    record.pageCount = 3;
    choose("mnuBuildbid");
    EXPECT_EQ(frame.status.last(), "已生成 " + finished() + "，共 3 页。");
}

TEST_F(WindowGeneration, TheStatusBarTellsOfAStoppedRunThatItIsNotFinished) {
    open();
    choose("mnuBuildbid");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // the dialog of that run
    atEachYield([this] { stop(); });
    choose("mnuBuildbid");
    ASSERT_EQ(frame.status.size(), 2);
    EXPECT_EQ(frame.status.last(), "最近一次生成中途停止，“施工方案.doc”没有完成。");
    world.events.whileServed = {};
    openDocuments.open = true;
    choose("mnuBuildbid");
    EXPECT_EQ(frame.status.size(), 2) << "a refused one changes nothing";
}

TEST_F(WindowGeneration, MenuAndKeyDoTheSame) {
    open();
    key("生成标书").trigger();
    expectWhole();
    expectUsable();
}

TEST_F(WindowGeneration, AFormerDocumentIsReplacedWhole) {
    open();
    writeEarlier();
    choose("mnuBuildbid");
    expectWhole();
}

TEST_F(WindowGeneration, APlanOfOnlyARootIsRefused) {
    world.state.gDbUser->Execute("DELETE * FROM T WHERE Key<>'T'");
    open();
    world.folder.write("施工方案.doc", "earlier");
    choose("mnuBuildbid");
    EXPECT_EQ(messages(), QStringList{"没有内容去生成标书！"});
    EXPECT_EQ(world.messages.shown[0].icon, desktop::Icon::information);
    EXPECT_EQ(world.messages.shown[0].title, QString());
    EXPECT_EQ(world.folder.read("施工方案.doc"), "earlier");
    expectUsable();
}

TEST_F(WindowGeneration, AnOpenDocumentOfThePlanStopsItBeforeAnythingChanges) {
    open();
    openDocuments.open = true;
    world.folder.write("施工方案.doc", "earlier");
    choose("mnuBuildbid");
    EXPECT_EQ(messages(), QStringList{busy});
    EXPECT_EQ(world.messages.shown[0].icon, desktop::Icon::exclamation);
    EXPECT_EQ(world.messages.shown[0].title, QString());
    EXPECT_EQ(world.folder.read("施工方案.doc"), "earlier");
    EXPECT_EQ(openDocuments.asked.size(), 2);
    expectUsable();
}

TEST_F(WindowGeneration, ADialogOnTopShowsHowFarItIs) {
    open();
    QStringList labels;
    int highest = 0;
    atEachYield([&] {
        EXPECT_TRUE(dlgTB()->windowFlags() & Qt::WindowStaysOnTopHint);
        EXPECT_FALSE(dlgTB()->isModal());
        EXPECT_EQ(dlgTB()->windowTitle(), "生成卷宗编制");
        EXPECT_EQ(dlgTB()->findChild<QPushButton*>("cmdStop")->text(), "停止");
        EXPECT_TRUE(hasHourglass());
        EXPECT_FALSE(preview.isFollowing) << "the document is written again and again";
        EXPECT_NE(dlgTB()->cursor().shape(), Qt::WaitCursor) << "its button can be pressed";
        if (labels.isEmpty() || labels.last() != label()) {
            labels << label();
        }
        highest = std::max(highest, progress());
    });
    choose("mnuBuildbid");
    EXPECT_TRUE(labels.contains("正在设置封面...")) << labels.join("|").toStdString();
    EXPECT_TRUE(labels.contains("正在设置页面格式...")) << labels.join("|").toStdString();
    EXPECT_GE(highest, 860);
    expectUsable();
}

// What is shown when the button is pressed, in the order of the run.
struct Yield {
    const char* name;
    const char* label;
    int progress;
};

class StopInTheWindow : public WindowGeneration, public testing::WithParamInterface<Yield> {};

TEST_P(StopInTheWindow, EndsTheRunWithTheBodyOnDiskAndTheWindowUsable) {
    open();
    atEachYield([this] {
        if (isAt(GetParam().label, GetParam().progress)) {
            stop();
        }
    });
    writeEarlier();
    choose("mnuBuildbid");
    EXPECT_TRUE(messages().isEmpty()) << messages().join("|").toStdString();
    expectBodyAlone();
    EXPECT_FALSE(world.state.StopRequested);
    expectUsable();
    world.events.whileServed = {};
    choose("mnuBuildbid");
    expectWhole();
}

INSTANTIATE_TEST_SUITE_P(Yields, StopInTheWindow,
                         testing::Values(Yield{"Start", "正在生成...", 50},
                                         Yield{"Settings", "正在生成...", 150},
                                         Yield{"FirstNode", "正在生成...", 163},
                                         Yield{"LastNode", "正在生成...", 488},
                                         Yield{"Cover", "正在设置封面...", 800},
                                         Yield{"Picture", "正在设置封面...", 810},
                                         Yield{"PageTable", "正在设置封面...", 830},
                                         Yield{"HeaderTable", "正在设置页面格式...", 860},
                                         Yield{"Contents", "正在设置页面格式...", 880},
                                         Yield{"ContentsDone", "正在设置页面格式...", 900},
                                         Yield{"Header", "正在设置页眉页脚...", 900},
                                         Yield{"HeaderDone", "正在设置页眉页脚...", 950},
                                         Yield{"End", "正在设置页眉页脚...", 1000}),
                         [](const auto& yield) { return std::string(yield.param.name); });

// The word processor of the program asks in a box.
class StopWithAQuestion : public WindowGeneration {
protected:
    void stopWithTheContentsIn() {
        generation = &asking.factory();
        open();
        atEachYield([this] {
            if (isAt("正在设置页眉页脚...", 900)) {
                stop();
            }
        });
        choose("mnuBuildbid");
        ASSERT_EQ(messages(), QStringList{"是否保存对“施工方案.doc”的更改？"});
    }

    startup::GenerationWord asking{world.messages, office::OfficeSuite({}, {}), world.longRun,
                                   world.events};
};

TEST_F(StopWithAQuestion, AnsweredNoTheFileStaysAsLastSaved) {
    stopWithTheContentsIn();
    expectBodyAlone();
    expectUsable();
}

TEST_F(StopWithAQuestion, AnsweredYesTheFileIsAsItWasAtTheStop) {
    world.messages.otherwise = desktop::Answer::yes;
    stopWithTheContentsIn();
    expectWhole();
    expectUsable();
}

TEST_F(StopWithAQuestion, ASecondRunInItIsRefusedAndOtherCommandsDoNothing) {
    bool isSecond = false;
    world.messages.whileOpen = [&] {
        if (!std::exchange(isSecond, true)) {
            choose("mnuBrowsebid");
            press("返回");
            choose("mnuBuildbid");
        }
    };
    generation = &asking.factory();
    open();
    atEachYield([this] {
        if (isAt("正在设置页眉页脚...", 950)) {
            stop();
        }
    });
    choose("mnuBuildbid");
    EXPECT_EQ(messages(), (QStringList{"是否保存对“施工方案.doc”的更改？", busy}));
    EXPECT_TRUE(frame.asked.isEmpty() && preview.shown.isEmpty());
    expectBodyAlone();
    expectUsable();
}

TEST_F(WindowGeneration, WhileAStoppedRunEndsASecondOneIsRefused) {
    open();
    bool isStopped = false;
    int yields = 0;
    world.events.whileServed = [&] {
        if (isStopped) {
            ++yields;
            choose("mnuBuildbid");
            choose("mnuBrowseDoc");
        } else if (dlgTB() && label() == "正在设置封面...") {
            const QScopedValueRollback once(world.events.whileServed, {});
            stop();
            isStopped = true;
        }
    };
    choose("mnuBuildbid");
    EXPECT_EQ(yields, 1);
    EXPECT_EQ(messages(), QStringList{busy});
    EXPECT_TRUE(preview.shown.isEmpty());
    expectBodyAlone();
    expectUsable();
}

TEST_F(WindowGeneration, TheStopButtonLetsEventsRunBeforeItRequestsTheStopAndUnloadsTheDialog) {
    open();
    int servedByTheButton = 0;
    atEachYield([&] {
        if (label() == "正在设置封面..." && servedByTheButton == 0) {
            const std::function<void()> atOtherYields = world.events.whileServed;
            world.events.whileServed = [&] {
                ++servedByTheButton;
                EXPECT_FALSE(world.state.StopRequested);
                EXPECT_NE(dlgTB(), nullptr);
            };
            stop();
            EXPECT_TRUE(world.state.StopRequested);
            EXPECT_EQ(dlgTB(), nullptr);
            world.events.whileServed = atOtherYields;
        }
    });
    choose("mnuBuildbid");
    EXPECT_EQ(servedByTheButton, 1);
    expectBodyAlone();
    expectUsable();
}

TEST_F(WindowGeneration, ClosingTheDialogStopsToo) {
    open();
    atEachYield([this] {
        if (label() == "正在设置封面...") {
            dlgTB()->close();
        }
    });
    choose("mnuBuildbid");
    expectBodyAlone();
    expectUsable();
}

TEST_F(WindowGeneration, StopInTheBoxOfAFailedNodeLetsTheWalkEnd) {
    open();
    QFile::remove(fileOf("T.1.1"));
    world.messages.whileOpen = [this] {
        auto* dialog = form->findChild<generate::dlgTB*>();
        ASSERT_NE(dialog, nullptr);
        EXPECT_FALSE(dialog->isVisible()) << "the box stands alone";
        dialog->findChild<QPushButton*>("cmdStop")->click();
    };
    choose("mnuBuildbid");
    ASSERT_EQ(messages().size(), 1);
    EXPECT_TRUE(messages()[0].contains("T.1.1.doc"));
    const QString text = textOfFinished();
    EXPECT_TRUE(text.contains("部署正文")) << text.toStdString();
    EXPECT_FALSE(text.contains("目录"));
    expectUsable();
}

TEST_F(WindowGeneration, TheDialogStaysAwayBehindAFailedLastSaveAndNoStopIsLeftForTheNextRun) {
    open();
    atEachYield([this] {
        if (progress() == 1000) {
            QFile::remove(finished());
            world.folder.makeFolder("施工方案.doc/taken");
        }
    });
    world.messages.whileOpen = [this] {
        world.events.whileServed = [this] {
            if (dlgTB()) {
                stop();
            }
        };
    };
    choose("mnuBuildbid");
    EXPECT_FALSE(messages().isEmpty());
    EXPECT_FALSE(world.state.StopRequested);
    expectUsable();
    QDir(finished()).removeRecursively();
    world.messages.shown.clear();
    choose("mnuBuildbid");
    EXPECT_TRUE(messages().isEmpty());
    expectWhole();
}

// Keys that were meant for the window behind the dialog.
TEST_F(WindowGeneration, SpaceAndEnterDoNotStopARun) {
    open();
    int yields = 0;
    atEachYield([&] {
        ++yields;
        QWidget* focus = dlgTB()->focusWidget();
        ASSERT_NE(focus, nullptr);
        EXPECT_NE(focus->objectName(), "cmdStop");
        QTest::keyClick(focus, Qt::Key_Space);
        QTest::keyClick(focus, Qt::Key_Return);
    });
    choose("mnuBuildbid");
    EXPECT_GE(yields, 10);
    expectWhole();
    expectUsable();
}

TEST_F(WindowGeneration, TabLeadsToTheStopButton) {
    open();
    atEachYield([this] {
        QTest::keyClick(dlgTB()->focusWidget(), Qt::Key_Tab);
        if (dlgTB() && dlgTB()->focusWidget()->objectName() == "cmdStop") {
            QTest::keyClick(dlgTB()->focusWidget(), Qt::Key_Space);
        }
    });
    choose("mnuBuildbid");
    expectBodyAlone();
    expectUsable();
}

// A second command

TEST_F(WindowGeneration, AtEveryYieldASecondRunMeetsTheOpenWordProcessor) {
    open();
    int yields = 0;
    atEachYield([&] {
        ++yields;
        choose("mnuBuildbid");
        press("生成标书");
    });
    choose("mnuBuildbid");
    EXPECT_GE(yields, 13) << "at each step of the progress";
    EXPECT_EQ(messages(), QStringList(2 * yields, busy));
    expectWhole();
    expectUsable();
}

TEST_F(WindowGeneration, AtEveryYieldNoOtherCommandTakesTheRunsGroundAway) {
    showSettings = [this] { ++settingsShown; };
    open();
    atEachYield([this] { chooseAllOthers(); });
    choose("mnuBuildbid");
    expectNoneOfTheOthers();
    EXPECT_TRUE(messages().isEmpty());
    expectWhole();
    expectUsable();
}

TEST_F(WindowGeneration, ASecondRunInABoxOfTheFirstIsRefusedToo) {
    open();
    QFile::remove(fileOf("T.2"));
    bool isSecond = false;
    world.messages.whileOpen = [&] {
        if (!std::exchange(isSecond, true)) {
            choose("mnuBuildbid");
        }
    };
    choose("mnuBuildbid");
    ASSERT_EQ(messages().size(), 2);
    EXPECT_EQ(messages()[1], busy);
    EXPECT_TRUE(textOfFinished().contains("目录"));
    expectUsable();
}
// The report

TEST_F(WindowGeneration, TheReportIsOnOfferBehindARunAndShownWhenSomethingIsMissing) {
    open();
    EXPECT_FALSE(item("mnuReport").isEnabled());
    choose("mnuBuildbid");
    EXPECT_TRUE(item("mnuReport").isEnabled());
    EXPECT_EQ(form->findChild<generate::FindingsWindow*>("dlgReport"), nullptr);
    QFile::remove(fileOf("T.1.1"));
    record.lost = {{"T.2", "2 个脚注"}};
    choose("mnuBuildbid");
    auto* report = form->findChild<generate::FindingsWindow*>("dlgReport");
    ASSERT_NE(report, nullptr);
    EXPECT_TRUE(report->isVisible());
    auto& list = *report->findChild<QTreeWidget*>();
    ASSERT_EQ(list.topLevelItemCount(), 2);
    EXPECT_EQ(list.topLevelItem(0)->text(0), "编制依据");
    EXPECT_EQ(list.topLevelItem(0)->text(1), "没有放入");
    EXPECT_EQ(list.topLevelItem(1)->text(2), "2 个脚注");
    list.setCurrentItem(list.topLevelItem(0));
    EXPECT_EQ(tree().outline().tree().SelectedItem()->Key(), "T.1.1");
    report->close();
    choose("mnuReport");
    EXPECT_TRUE(report->isVisible());
    expectUsable();
    writeDocument("T.1.1", u"依据正文");
    record.lost.clear();
    choose("mnuBuildbid");
    EXPECT_FALSE(report->isVisible()) << "it told of the run before";
}

TEST_F(WindowGeneration,
       TheReportTellsConversionsAndOtherNumbersApartAndIsNotShownForNumbersAlone) {
    using Kind = generate::CollectedLosses::Kind;
    record.lost = {{"T.2", "脚注 2 个连续编号", Kind::changed}};
    open();
    choose("mnuBuildbid");
    EXPECT_EQ(form->findChild<generate::FindingsWindow*>("dlgReport"), nullptr);
    record.lost = {{"T.2", "脚注 2 个连续编号", Kind::changed},
                   {"T.1.1", "原文件是RTF 文档", Kind::converted},
                   {"T.1.1", "宏未能带入"}};
    choose("mnuBuildbid");
    const auto* report = form->findChild<generate::FindingsWindow*>("dlgReport");
    ASSERT_NE(report, nullptr);
    QStringList rows;
    const auto* list = report->findChild<QTreeWidget*>();
    for (int row = 0; row < list->topLevelItemCount(); ++row) {
        rows << list->topLevelItem(row)->text(1) + "：" + list->topLevelItem(row)->text(2);
    }
    EXPECT_EQ(rows, (QStringList{"没有原样带入：宏未能带入", "已转换：原文件是RTF 文档",
                                 "编号或名称有变：脚注 2 个连续编号"}));
    expectUsable();
}

TEST_F(WindowGeneration, AnotherPlanLoadedTakesTheListsOfTheFormerAway) {
    open();
    QFile::remove(fileOf("T.1.1"));
    choose("mnuBuildbid");
    choose("mnuCheck");
    const auto* report = form->findChild<generate::FindingsWindow*>("dlgReport");
    const auto* findings = form->findChild<generate::FindingsWindow*>("dlgCheck");
    ASSERT_TRUE(report && findings);
    form->Load();
    EXPECT_TRUE(report->isVisible() && findings->isVisible()) << "it is the same plan";
    world.makePlan("乙", {{"乙", "乙"}, {"乙.1", "章"}});
    outline::setCurrentPlan(*world.state.gDbUser, "乙");
    form->Load();
    EXPECT_FALSE(report->isVisible());
    EXPECT_FALSE(findings->isVisible());
    EXPECT_FALSE(item("mnuReport").isEnabled());
}

TEST_F(WindowGeneration, TheReportOfAPlanThatIsDeletedMeanwhileIsRefusedInWords) {
    open();
    choose("mnuBuildbid");
    world.state.gDbUser->Execute("DROP TABLE T");
    choose("mnuBrowseDoc");
    ASSERT_EQ(tree().outline().tree().Count(), 0);
    world.messages.shown.clear();
    choose("mnuReport");
    EXPECT_EQ(messages(), QStringList{"方案已被删除，它的生成报告不能再显示。"});
    EXPECT_EQ(form->findChild<generate::FindingsWindow*>("dlgReport"), nullptr);
    expectUsable();
}

} // namespace
} // namespace qvnd::test
