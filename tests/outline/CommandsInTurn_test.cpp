#include "outline/CommandsInTurn.h"

#include "outline/RecordedCommand.h"
#include "support/FakeTurnWait.h"
#include "support/OutlineWorld.h"
#include "support/Text.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <utility>

using namespace qvnd;
using namespace qvnd::test;

namespace {

// A window's events on a work space that another program has for the length of a test, or until the
// user cancels.
class CommandsInTurn : public testing::Test {
protected:
    CommandsInTurn() {
        world.state.Turn = std::make_unique<files::WorkSpaceTurn>(world.folder.path());
        world.state.Turn->setWait(&wait);
    }
    void cancelsWaits() {
        wait.goOn = [] { return false; };
    }
    // They end while a command waits for them.
    void theyEndMeanwhile() {
        wait.goOn = [this] {
            theirs.giveBack();
            return true;
        };
    }
    QString told() const {
        return world.messages.shown.empty() ? QString() : world.messages.shown.back().text;
    }

    OutlineWorld world;
    FakeTurnWait wait;
    files::WorkSpaceTurn theirs{world.folder.path()};
    bool isNews = false;
    int looks = 0;
    int done = 0;
    std::function<void()> act = [this] { ++done; };
    outline::CommandsInTurn events{world.state, world.messages, [this] {
                                       ++looks;
                                       return std::exchange(isNews, false);
                                   }};
};

TEST_F(CommandsInTurn, ThatOnlyReadRunAtOnceWhileAnotherProgramHasTheTurn) {
    theirs.take();
    QElapsedTimer clock;
    clock.start();
    EXPECT_TRUE(events.read(act));
    EXPECT_EQ(done, 1);
    EXPECT_LT(clock.elapsed(), 1000);
    EXPECT_TRUE(wait.told.isEmpty());
    EXPECT_TRUE(world.messages.shown.empty());
}

TEST_F(CommandsInTurn, ThatChangeSomethingWaitAndThenRun) {
    theirs.take();
    theyEndMeanwhile();
    EXPECT_TRUE(events.run(act));
    EXPECT_EQ(done, 1);
    ASSERT_EQ(wait.told.size(), 2);
    EXPECT_TRUE(wait.told[0].endsWith("使用。")) << wait.told[0].toStdString();
    EXPECT_EQ(wait.told[1], "end");
    EXPECT_FALSE(world.state.Turn->isTaken());
}

TEST_F(CommandsInTurn, ThatFailUnexpectedlyAreToldAndTheNextOneRuns) {
    const std::function<void()> fail = [] { throw std::logic_error("odd"); };
    EXPECT_TRUE(events.run(fail));
    EXPECT_EQ(told(), "程序内部出错，这一步没有完成。（odd）");
    EXPECT_TRUE(events.read(fail));
    EXPECT_EQ(world.messages.shown.size(), 2U);
    EXPECT_TRUE(events.run(act));
    EXPECT_EQ(done, 1);
}

TEST_F(CommandsInTurn, WhoseWaitTheUserCancelsAreNotRunAndRaiseNoBox) {
    theirs.take();
    cancelsWaits();
    EXPECT_TRUE(events.run(act));
    EXPECT_EQ(done, 0);
    EXPECT_EQ(looks, 0);
    EXPECT_TRUE(world.messages.shown.empty()) << told().toStdString();
}

TEST_F(CommandsInTurn, NoneOtherRunsWhileOneWaits) {
    theirs.take();
    bool isRefused = false;
    wait.goOn = [&] {
        isRefused = !events.read(act) && !events.run(act);
        theirs.giveBack();
        return true;
    };
    events.run(act);
    EXPECT_TRUE(isRefused);
    EXPECT_EQ(done, 1);
}

TEST_F(CommandsInTurn, OfOneMovementWaitOnce) {
    theirs.take();
    theyEndMeanwhile();
    const outline::CommandsInTurn::Gesture gesture(events);
    events.run(act);
    EXPECT_TRUE(world.state.Turn->isTaken()) << "nobody comes in between";
    events.run(act);
    EXPECT_EQ(done, 2);
    EXPECT_EQ(wait.told.count("end"), 1);
}

TEST_F(CommandsInTurn, OfAMovementWhoseWaitWasCancelledDoNotWaitAgain) {
    theirs.take();
    cancelsWaits();
    {
        const outline::CommandsInTurn::Gesture gesture(events);
        events.run(act);
        events.run(act);
        events.read(act);
    }
    EXPECT_EQ(done, 0);
    EXPECT_EQ(wait.told.count("end"), 1);
    theirs.giveBack();
    events.run(act);
    EXPECT_EQ(done, 1) << "the next movement counts by itself";
}

TEST_F(CommandsInTurn, AreNotRunWhenTheyWereMeantForWhatHasChangedAndThisIsToldOnce) {
    isNews = true;
    {
        const outline::CommandsInTurn::Gesture gesture(events);
        events.run(act);
        events.run(act);
    }
    EXPECT_EQ(done, 0);
    ASSERT_EQ(world.messages.shown.size(), 1U);
    EXPECT_EQ(told(), "另一个程序改动了方案或模板，现在显示的是改动后的内容。请再操作一次。");
    events.run(act);
    EXPECT_EQ(done, 1);
}

TEST_F(CommandsInTurn, ThatReadAllThemselvesRunWithoutALook) {
    isNews = true;
    EXPECT_TRUE(events.runWithoutLook(act));
    EXPECT_EQ(done, 1);
    EXPECT_EQ(looks, 0);
}

TEST_F(CommandsInTurn, TellWhatTheyLetPassAndGiveTheTurnBack) {
    events.run([] { throw RunTimeError(error::storeFailed, u"读不出来"); });
    EXPECT_EQ(told(), "读不出来");
    EXPECT_FALSE(world.state.Turn->isTaken());
    EXPECT_FALSE(world.state.Command.isRunning());
}

TEST_F(CommandsInTurn, TellAFailureOfTheTurnItselfAndAreNotRun) {
    ASSERT_TRUE(QFile::remove(world.folder.path("qvnd.lock")) ||
                !QFile::exists(world.folder.path("qvnd.lock")));
    world.folder.makeFolder("qvnd.lock");
    events.run(act);
    EXPECT_EQ(done, 0);
    EXPECT_TRUE(told().contains("不能加锁")) << told().toStdString();
}

TEST_F(CommandsInTurn, AreNoNewsByALookThatFindsNothing) {
    EXPECT_FALSE(events.look());
    EXPECT_EQ(looks, 1);
    isNews = true;
    EXPECT_TRUE(events.look());
    EXPECT_FALSE(events.look());
}

TEST_F(CommandsInTurn, ThatOnlyReadRunInTheGestureOfAnother) {
    const outline::CommandsInTurn::Gesture gesture(events);
    EXPECT_TRUE(events.run(act));
    EXPECT_TRUE(events.read(act));
    EXPECT_EQ(done, 2);
}

TEST_F(CommandsInTurn, LookWithoutWaitingForTheUserWhoComesBack) {
    theirs.take();
    isNews = true;
    EXPECT_FALSE(events.look());
    EXPECT_EQ(looks, 0) << "what another program is in the middle of is not read";
    theirs.giveBack();
    EXPECT_TRUE(events.look());
    EXPECT_TRUE(world.messages.shown.empty());
    EXPECT_FALSE(world.state.Turn->isTaken());
}

TEST_F(CommandsInTurn, RemarkWhatTheirCommandHasToSayAndNothingElse) {
    QStringList remarks;
    int refusals = 0;
    events.onRemarks([&](const QString& text) { remarks << text; });
    events.onRefusal([&](const QString&) { ++refusals; });
    events.run(act);
    EXPECT_EQ(remarks, QStringList());
    EXPECT_EQ(refusals, 0);
    events.run([this] {
        world.state.Remarks << "一"
                            << "二";
    });
    EXPECT_EQ(remarks, QStringList("一\n二"));
}

TEST_F(CommandsInTurn, ReadAgainOnceTheGestureOfARefusedCommandIsOver) {
    theirs.take();
    cancelsWaits();
    events.run(act);
    EXPECT_EQ(done, 0);
    EXPECT_TRUE(events.read(act));
    EXPECT_EQ(done, 1);
}

// A window's events on a plan whose commands are recorded.
class RecordedInTurn : public CommandsInTurn {
protected:
    RecordedInTurn() {
        world.makePlan({"T", "T.1"});
        world.openPlan("T", "T.1");
        events.areAbout(world.workbench.TrvCurrent);
        events.onStep([this](const history::Step& step) { steps << step.selectedBefore; });
        events.onRefusal([this](const QString& selected) { refusals << selected; });
    }
    void TearDown() override { world.state.History.reset(); }

    void openHistory() {
        world.state.History = std::make_unique<history::History>(
            world.state.gUserTplPath + ".~history",
            history::Places(world.state.gUserTplPath, {world.folder.root()}), *world.state.gWs,
            *world.state.gFso, "测试");
    }
    void addRow() {
        OutlineWorld::add(*world.state.gDbUser->OpenRecordset("Select * from T"), {"T.2", "新"});
    }

    QStringList steps; // the nodes selected before them
    QStringList refusals;
};

TEST_F(RecordedInTurn, EachStepIsToldAndNothingWhereNothingWasChanged) {
    openHistory();
    events.run(act, "添加");
    EXPECT_EQ(steps, QStringList());
    events.run([this] { addRow(); }, "添加");
    EXPECT_EQ(steps, QStringList("T.1"));
    EXPECT_EQ(refusals, QStringList());
}

TEST_F(RecordedInTurn, AStepIsToldEvenOfACommandThatFailsOnItsWay) {
    openHistory();
    events.run(
        [this] {
            addRow();
            throw RunTimeError(error::storeFailed, u"中断");
        },
        "添加");
    EXPECT_EQ(told(), "中断");
    EXPECT_EQ(steps, QStringList("T.1"));
}

TEST_F(RecordedInTurn, ACommandThatCannotBeRecordedIsRefusedWithTheNodeThatWasSelected) {
    world.folder.write("用户模板/.~history", "in the way of the folder");
    openHistory();
    events.run([this] { addRow(); }, "添加");
    EXPECT_EQ(world.keys("T"), (QStringList{"T", "T.1"}));
    EXPECT_EQ(refusals, QStringList("T.1"));
    EXPECT_EQ(steps, QStringList());
}

TEST_F(CommandsInTurn, RunNoMoreBehindTheEndOfTheProgram) {
    world.state.gDbUser.reset();
    EXPECT_FALSE(events.read(act));
    EXPECT_FALSE(events.run(act));
    EXPECT_FALSE(events.look());
    EXPECT_EQ(done, 0);
}

TEST(Captions, AreSpokenWithoutWhatTheyHaveForTheKeyboard) {
    EXPECT_EQ(outline::spokenCaption("删除(&D)"), "删除");
    EXPECT_EQ(outline::spokenCaption("打开 (&O)..."), "打开");
    EXPECT_EQ(outline::spokenCaption(" &File "), "File");
    EXPECT_EQ(outline::spokenCaption("甲(D)"), "甲(D)");
}

} // namespace
