#ifdef __linux__

#include "support/KillPoints.h"
#include "support/TracedProcess.h"
#include "whole/RealCommands.h"

using namespace qvnd;

namespace {

// Real commands, their undo and their redo, killed before a change of a file.
class KilledTakingBack : public test::RealCommands {
protected:
    // Kills the work in a started program and looks at what the next start finds. Every change by
    // hand: QVND_KILL_EVERYWHERE.
    void killEverywhere(const std::function<void()>& work, const std::function<void()>& look) {
        keep();
        const int ofTheStart = test::TracedProcess::run([this] { planner.start(); }, 0);
        bringBack();
        const int changes = test::TracedProcess::run(
            [&] {
                planner.start();
                work();
            },
            0);
        if (changes < 0) {
            GTEST_SKIP() << "processes cannot be traced here";
        }
        ASSERT_GT(changes, ofTheStart);
        const int all = changes - ofTheStart;
        for (const int point :
             test::killPoints(all, qEnvironmentVariableIsSet("QVND_KILL_EVERYWHERE") ? all : 4)) {
            SCOPED_TRACE("killed before change " + std::to_string(point) + " of " +
                         std::to_string(all));
            bringBack();
            test::TracedProcess::run(
                [&] {
                    planner.start();
                    work();
                },
                ofTheStart + point);
            ASSERT_TRUE(planner.start());
            look();
            planner.exit();
            if (HasFailure()) {
                return;
            }
        }
    }
    bool isRestored() { return planner.state().HistoryFound.restored; }
};

TEST_P(KilledTakingBack, AnUndoLeavesEitherStateWholeAndTheWayToTheOther) {
    const test::WorkSpaceState atTheEnd = behind;
    planner.restart(); // whose end levels the copy in the plan's folder
    behind = onDisk();
    planner.exit();
    int restored = 0;
    killEverywhere([this] { undo(); },
                   [&] {
                       restored += isRestored();
                       const bool isUndone = onDisk() == before;
                       EXPECT_TRUE(isUndone || !isRestored());
                       if (isUndone) {
                           EXPECT_TRUE(redo());
                           test::expectSame(onDisk(), atTheEnd);
                       } else {
                           test::expectSame(onDisk(), behind);
                           EXPECT_TRUE(undo());
                           test::expectSame(onDisk(), before);
                       }
                   });
    EXPECT_GT(restored, 0);
}

TEST_P(KilledTakingBack, ARedoLeavesEitherStateWholeAndTheWayToTheOther) {
    EXPECT_TRUE(undo());
    planner.exit();
    int restored = 0;
    killEverywhere([this] { redo(); },
                   [&] {
                       restored += isRestored();
                       const bool isDone = onDisk() == behind;
                       EXPECT_TRUE(isDone || !isRestored());
                       if (isDone) {
                           EXPECT_TRUE(undo());
                           test::expectSame(onDisk(), before);
                       } else {
                           test::expectSame(onDisk(), before);
                           EXPECT_TRUE(redo());
                           test::expectSame(onDisk(), behind);
                       }
                   });
    EXPECT_GT(restored, 0);
}

INSTANTIATE_TEST_SUITE_P(Each, KilledTakingBack, testing::ValuesIn(test::realCommands()),
                         [](const auto& tested) { return std::string(tested.param.label); });

// The commands that the companion has too are killed through it.
class KilledDeskCommand : public KilledTakingBack {};

TEST_P(KilledDeskCommand, IsToldAtTheNextStartAndOneUndoLeadsToBeforeIt) {
    EXPECT_TRUE(undo());
    planner.exit();
    int unfinished = 0;
    killEverywhere([this] { run(); },
                   [&] {
                       const bool isTold = planner.state().HistoryFound.unfinished.has_value();
                       unfinished += isTold;
                       if (isTold || onDisk() != before) {
                           EXPECT_TRUE(undo());
                       }
                       test::expectSame(onDisk(), before);
                   });
    EXPECT_GT(unfinished, 0);
}

INSTANTIATE_TEST_SUITE_P(Each, KilledDeskCommand, testing::ValuesIn(test::deskCommands()),
                         [](const auto& tested) { return std::string(tested.param.label); });

} // namespace

#endif
