#include "startup/ProgramFolder.h"

#include "support/OutlineWorld.h"
#include "support/Text.h"

#include <gtest/gtest.h>

#include <QFile>

using namespace qvnd;
using namespace qvnd::startup;

namespace {

TEST(ProgramFolder, IsTheUsersOwnWithoutAMark) {
    const test::TemporaryFolder executables;
    EXPECT_EQ(programFolder(executables.path()), userProgramFolder());
    EXPECT_TRUE(userProgramFolder().endsWith("qvnd"));
}

TEST(ProgramFolder, IsTheExecutablesOwnWhereAMarkLiesBesideIt) {
    const test::TemporaryFolder executables;
    QFile mark(executables.path() + "/qvnd.portable");
    ASSERT_TRUE(mark.open(QIODevice::WriteOnly));
    EXPECT_EQ(programFolder(executables.path()), QDir::toNativeSeparators(executables.path()));
}

} // namespace
