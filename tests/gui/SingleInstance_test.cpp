#include "startup/windows/SingleInstance.h"

#include "support/OutlineWorld.h"
#include "support/Text.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

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

} // namespace
