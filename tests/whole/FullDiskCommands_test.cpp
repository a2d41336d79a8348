#ifdef __linux__

#include "support/FullDisk.h"
#include "support/KillPoints.h"
#include "support/RestrictedProcess.h"
#include "whole/RealCommands.h"

using namespace qvnd;

namespace {

// A command, or its being taken back, on a disk that is full from some call on: the history, what
// it keeps, the databases and the documents fail alike.
class OnAFullDisk : public test::RealCommands {
protected:
    // What came of the work in a program of its own, whose disk was full from that call on: one of
    // the first two, and the third.
    static constexpr long done = 1;
    static constexpr long refused = 2;
    static constexpr long told = 4;
    struct Attempt {
        long outcome = 0;
        int calls = 0; // that needed room
    };
    using Work = std::function<long()>;

    // Nothing where such a disk is not offered.
    std::optional<Attempt> attempt(int from, const Work& work) {
        bringBack();
        const auto answer = test::RestrictedProcess::alone([&]() -> std::optional<long> {
            planner.start();
            planner.messages.shown.clear();
            test::FullDisk disk;
            if (!disk.isOffered()) {
                return 0;
            }
            disk.fillFrom(from);
            const long outcome = work();
            return (disk.empty() << 4) + outcome;
        });
        const long number = answer.value_or(0);
        if (number == 0) {
            return std::nullopt;
        }
        return Attempt{number % 16, static_cast<int>(number >> 4)};
    }
    // The first and some others; every one by hand: QVND_FULL_EVERYWHERE.
    static std::vector<int> callsToFail(int calls) {
        const bool isEach = qEnvironmentVariableIsSet("QVND_FULL_EVERYWHERE");
        std::vector<int> chosen = test::killPoints(calls, isEach ? calls : 4);
        chosen.front() = 1;
        return chosen;
    }
    // The command; the user wants nothing that cannot be recorded.
    long command() {
        test::FakeMessageBoxes boxes;
        run(&boxes);
        const bool isTold = !boxes.shown.empty() || !planner.messages.shown.empty();
        return (wasRefused ? refused : done) + (isTold ? told : 0);
    }
    // As the menu item does it.
    template <typename TakeBack>
    long takingBack(TakeBack takeBack) {
        try {
            takeBack();
            return done;
        } catch (const RunTimeError&) {
            return refused + told;
        }
    }
};

TEST_P(OnAFullDisk, ACommandIsRefusedWithNothingChangedOrOneStepBackLeadsToBeforeIt) {
    EXPECT_TRUE(undo());
    const std::int64_t head = planner.state().History->head();
    planner.exit();
    keep();
    const auto undisturbed = attempt(INT_MAX, [this] { return command(); });
    if (!undisturbed) {
        GTEST_SKIP() << "a full disk is not offered here";
    }
    EXPECT_EQ(undisturbed->outcome & done, done);
    int refusals = 0;
    for (const int call : callsToFail(undisturbed->calls)) {
        SCOPED_TRACE("full from call " + std::to_string(call));
        const auto tried = attempt(call, [this] { return command(); });
        ASSERT_TRUE(tried);
        const bool isRefused = (tried->outcome & refused) != 0;
        EXPECT_TRUE(!isRefused || (tried->outcome & told) != 0);
        planner.start();
        if (planner.state().HistoryFound.unfinished) {
            // Taking it back at once found no room either.
            EXPECT_TRUE(isRefused);
            EXPECT_TRUE(undo());
        } else if (!isRefused) {
            outline::goToStep(planner.state(), planner.workbench(), planner.services(), head);
        } else {
            ++refusals;
        }
        test::expectSame(onDisk(), before);
        planner.exit();
    }
    EXPECT_GT(refusals, 0);
}

TEST_P(OnAFullDisk, AnUndoIsDoneOrLeavesTheStateBeforeIt) {
    planner.restart();
    behind = onDisk();
    planner.exit();
    keep();
    const auto undoing = [this] { return takingBack([this] { undo(); }); };
    const auto undisturbed = attempt(INT_MAX, undoing);
    if (!undisturbed) {
        GTEST_SKIP() << "a full disk is not offered here";
    }
    EXPECT_EQ(undisturbed->outcome, done);
    for (const int call : callsToFail(undisturbed->calls)) {
        SCOPED_TRACE("full from call " + std::to_string(call));
        const auto tried = attempt(call, undoing);
        ASSERT_TRUE(tried);
        planner.start();
        const bool isUndone = tried->outcome == done || planner.state().HistoryFound.restored;
        test::expectSame(onDisk(), isUndone ? before : behind);
        planner.exit();
    }
}

INSTANTIATE_TEST_SUITE_P(Each, OnAFullDisk, testing::ValuesIn(test::realCommands()),
                         [](const auto& tested) { return std::string(tested.param.label); });

} // namespace

#endif
