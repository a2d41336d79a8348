#ifdef __linux__

#include "support/KillPoints.h"
#include "support/LeftOnDisk.h"
#include "support/TracedProcess.h"
#include "whole/RealCommands.h"

#include <algorithm>
#include <map>

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
        const auto points =
            test::killPoints(all, qEnvironmentVariableIsSet("QVND_KILL_EVERYWHERE") ? all : 4);
        std::map<int, Kept> left; // of those that leave the same behind, the first
        test::LeftOnDisk last;
        bringBack();
        test::TracedProcess::watch(
            [&] {
                planner.start();
                work();
            },
            [&](int change) {
                const int point = change - ofTheStart;
                if (std::binary_search(points.begin(), points.end(), point)) {
                    test::LeftOnDisk now = test::leftOnDisk(planner.folder.path());
                    if (now != last) {
                        left[point] = keptNow();
                        last.swap(now);
                    }
                }
                return point != points.back();
            });
        RecordProperty("changes", all);
        RecordProperty("points", static_cast<int>(left.size()));
        for (const auto& [point, kept] : left) {
            SCOPED_TRACE("killed before change " + std::to_string(point) + " of " +
                         std::to_string(all));
            bringBack(*kept);
            ASSERT_TRUE(planner.start());
            look();
            planner.exit();
            if (HasFailure()) {
                return;
            }
        }
    }
    // The step leads from one state to the other, and from there `opposite` to the last.
    void expectEither(const std::function<bool()>& step, const std::function<bool()>& opposite,
                      const test::WorkSpaceState& from, const test::WorkSpaceState& to,
                      const test::WorkSpaceState& back) {
        int restored = 0;
        killEverywhere([&] { step(); },
                       [&] {
                           const bool isRestored = planner.state().HistoryFound.restored;
                           restored += isRestored;
                           const bool isDone = onDisk() == to;
                           EXPECT_TRUE(isDone || !isRestored);
                           if (!isDone) {
                               test::expectSame(onDisk(), from);
                           }
                           EXPECT_TRUE(isDone ? opposite() : step());
                           test::expectSame(onDisk(), isDone ? back : to);
                       });
        EXPECT_GT(restored, 0);
    }
};

TEST_P(KilledTakingBack, AnUndoLeavesEitherStateWholeAndTheWayToTheOther) {
    const test::WorkSpaceState atTheEnd = behind;
    planner.restart(); // whose end levels the copy in the plan's folder
    behind = onDisk();
    planner.exit();
    expectEither([this] { return undo(); }, [this] { return redo(); }, behind, before, atTheEnd);
}

TEST_P(KilledTakingBack, ARedoLeavesEitherStateWholeAndTheWayToTheOther) {
    EXPECT_TRUE(undo());
    planner.exit();
    expectEither([this] { return redo(); }, [this] { return undo(); }, before, behind, before);
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
