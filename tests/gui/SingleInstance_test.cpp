#include "startup/windows/SingleInstance.h"

#include "support/OutlineWorld.h"
#include "support/Text.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

using namespace qvnd;
using namespace qvnd::startup;

namespace {

TEST(SingleInstance, ASecondStartOnTheSameFolderIsToldAndTheFirstHearsOfIt) {
    const test::TemporaryFolder folder;
    SingleInstance first(folder.path());
    SingleInstance second(folder.path() + "/");
    QSignalSpy heard(&first, &SingleInstance::startedAgain);
    EXPECT_TRUE(first.begin());
    EXPECT_FALSE(second.begin());
    EXPECT_TRUE(heard.wait());
}

TEST(SingleInstance, TwoFoldersDoNotDisturbEachOther) {
    const test::TemporaryFolder one;
    const test::TemporaryFolder other;
    SingleInstance first(one.path());
    SingleInstance second(other.path());
    EXPECT_TRUE(first.begin());
    EXPECT_TRUE(second.begin());
}

TEST(SingleInstance, AnEndedRunMakesRoom) {
    const test::TemporaryFolder folder;
    {
        SingleInstance first(folder.path());
        EXPECT_TRUE(first.begin());
    }
    SingleInstance next(folder.path());
    EXPECT_TRUE(next.begin());
}

// A killed run leaves the socket of its guard behind.
TEST(SingleInstance, AKilledRunMakesRoomForAGuardOfTheNextOne) {
    const test::TemporaryFolder folder;
    const pid_t killed = fork();
    if (killed == 0) {
        SingleInstance run(folder.path());
        run.begin();
        raise(SIGKILL);
    }
    int status = 0;
    waitpid(killed, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status));
    SingleInstance next(folder.path());
    EXPECT_TRUE(next.begin());
    SingleInstance second(folder.path());
    EXPECT_FALSE(second.begin());
}

} // namespace
