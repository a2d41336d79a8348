#include "platform/files/WorkSpaceTurn.h"

#include "platform/error/RunTimeError.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <atomic>
#include <csignal>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

using namespace qvnd;
using namespace std::chrono_literals;
using files::WorkSpaceTurn;

namespace {

class WorkSpaceTurns : public testing::Test {
protected:
    // What stands in the refusal; empty when the turn came.
    static QString refusal(WorkSpaceTurn& turn, std::chrono::milliseconds longest) {
        try {
            turn.take(longest);
            return {};
        } catch (const RunTimeError& failure) {
            EXPECT_EQ(failure.number(), error::storeBusy);
            return QString::fromStdU16String(failure.description());
        }
    }

    QTemporaryDir folder;
    WorkSpaceTurn one{folder.path()};
    WorkSpaceTurn other{folder.path()};
};

TEST_F(WorkSpaceTurns, OneHasItAtATime) {
    one.take();
    EXPECT_NE(refusal(other, 0ms), QString());
    one.giveBack();
    EXPECT_EQ(refusal(other, 0ms), QString());
}

TEST_F(WorkSpaceTurns, WhoWaitsGetsItWhenItIsGivenBack) {
    one.take();
    std::atomic<bool> isGivenBack = false;
    std::thread holder([&] {
        std::this_thread::sleep_for(150ms);
        isGivenBack = true;
        one.giveBack();
    });
    EXPECT_EQ(refusal(other, 10s), QString());
    EXPECT_TRUE(isGivenBack);
    holder.join();
}

TEST_F(WorkSpaceTurns, WhoWaitsInVainIsToldWhatHoldsTheWorkSpaceAndHowLongItWaited) {
    one.take();
    const QString told = refusal(other, 1s);
    EXPECT_TRUE(told.contains(QDir::toNativeSeparators(folder.path()))) << told.toStdString();
    EXPECT_TRUE(told.contains("进程 " + QString::number(QCoreApplication::applicationPid())))
        << told.toStdString();
    EXPECT_TRUE(told.contains("等了 1 秒")) << told.toStdString();
    EXPECT_EQ(WorkSpaceTurn::patience, 30s);
}

TEST_F(WorkSpaceTurns, TellThatTheyAreWaitedForAndThatThisIsOver) {
    std::vector<bool> told;
    other.onWaiting = [&](bool isWaiting) { told.push_back(isWaiting); };
    other.take();
    other.giveBack();
    EXPECT_TRUE(told.empty());
    one.take();
    EXPECT_NE(refusal(other, 0ms), QString());
    EXPECT_TRUE(told.empty());
    EXPECT_NE(refusal(other, 50ms), QString());
    EXPECT_EQ(told, (std::vector<bool>{true, false}));
}

TEST_F(WorkSpaceTurns, TakenTwiceByOneIsTakenOnce) {
    one.take();
    one.take();
    one.giveBack();
    EXPECT_EQ(refusal(other, 0ms), QString());
}

TEST_F(WorkSpaceTurns, IsHeldForTheLengthOfTheOuterCommand) {
    {
        const files::TurnScope outer(&one);
        { const files::TurnScope inner(&one); }
        EXPECT_NE(refusal(other, 0ms), QString());
    }
    EXPECT_EQ(refusal(other, 0ms), QString());
    const files::TurnScope ofNone(nullptr);
}

TEST_F(WorkSpaceTurns, OfAKilledProcessComesFree) {
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    const pid_t process = fork();
    if (process == 0) {
        WorkSpaceTurn theirs(folder.path());
        theirs.take();
        (void)!write(ready[1], "x", 1);
        pause();
        _exit(0);
    }
    char byte = 0;
    ASSERT_EQ(read(ready[0], &byte, 1), 1);
    EXPECT_NE(refusal(one, 0ms), QString());
    kill(process, SIGKILL);
    waitpid(process, nullptr, 0);
    EXPECT_EQ(refusal(one, 0ms), QString());
}

TEST_F(WorkSpaceTurns, OfAFolderThatIsMissingIsGivenWithoutALock) {
    WorkSpaceTurn nowhere(folder.path() + "/missing");
    EXPECT_EQ(refusal(nowhere, 0ms), QString());
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
}

} // namespace
