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
    // the first two, and what the user was told.
    static constexpr long done = 1;
    static constexpr long refused = 2;
    static constexpr long told = 4;
    static constexpr long toldThatHalfStands = 8;
    static constexpr long toldThatNothingWasDone = 16;
    static constexpr int bits = 5;
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
            return (disk.empty() << bits) + outcome;
        });
        const long number = answer.value_or(0);
        if (number == 0) {
            return std::nullopt;
        }
        return Attempt{number % (1 << bits), static_cast<int>(number >> bits)};
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
        QString texts;
        for (const auto& shown : {boxes.shown, planner.messages.shown}) {
            for (const desktop::Message& message : shown) {
                texts += message.text + u'\n';
            }
        }
        return (wasRefused ? refused : done) + wordsIn(texts);
    }
    static long wordsIn(const QString& texts) {
        const bool saysHalf = texts.contains("没有能全部收回") || texts.contains("只做了一半");
        const bool saysNothing = texts.contains("没有执行") || texts.contains("没有改动任何东西") ||
                                 texts.contains("什么也不改动");
        return (texts.isEmpty() ? 0 : told) + (saysHalf ? toldThatHalfStands : 0) +
               (saysNothing ? toldThatNothingWasDone : 0);
    }
    // As the menu item does it.
    template <typename TakeBack>
    long takingBack(TakeBack takeBack) {
        try {
            takeBack();
            return done;
        } catch (const RunTimeError& failure) {
            return refused + wordsIn(QString::fromStdU16String(failure.description()));
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
            EXPECT_TRUE((tried->outcome & toldThatHalfStands) != 0);
            EXPECT_FALSE((tried->outcome & toldThatNothingWasDone) != 0);
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
    int refusals = 0;
    for (const int call : callsToFail(undisturbed->calls)) {
        SCOPED_TRACE("full from call " + std::to_string(call));
        const auto tried = attempt(call, undoing);
        ASSERT_TRUE(tried);
        planner.start();
        const bool isCarriedOn = planner.state().HistoryFound.restored;
        const bool isRefused = (tried->outcome & refused) != 0;
        refusals += isRefused && !isCarriedOn;
        EXPECT_EQ(isCarriedOn, (tried->outcome & toldThatHalfStands) != 0);
        EXPECT_TRUE(isRefused || tried->outcome == done);
        test::expectSame(onDisk(), isRefused && !isCarriedOn ? behind : before);
        planner.exit();
    }
    EXPECT_GT(refusals, 0);
}

INSTANTIATE_TEST_SUITE_P(Each, OnAFullDisk, testing::ValuesIn(test::realCommands()),
                         [](const auto& tested) { return std::string(tested.param.label); });

} // namespace

#endif
