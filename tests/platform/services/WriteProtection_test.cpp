#include "platform/files/WriteProtection.h"
#include "support/Files.h"
#include "support/Text.h"

#include <gtest/gtest.h>

#include <QFile>

namespace qvnd::files {
namespace {

TEST(WriteProtection, OfAFileInAFolderBelowIsFound) {
    const test::TemporaryFolder folder;
    folder.write("甲/甲.1.doc", "one");
    folder.write("甲/附图/总平面.doc", "two");
    EXPECT_EQ(writeProtectedIn(folder.path("甲")), QString());
    ASSERT_TRUE(QFile::setPermissions(folder.path("甲/附图/总平面.doc"), QFile::ReadOwner));
    EXPECT_EQ(writeProtectedIn(folder.path("甲")), folder.path("甲/附图/总平面.doc"));
}

TEST(WriteProtection, OfAFolderIsThatOfNoFile) {
    const test::TemporaryFolder folder;
    folder.write("甲/附图/总平面.doc", "two");
    ASSERT_TRUE(QFile::setPermissions(folder.path("甲/附图"), QFile::ReadOwner | QFile::ExeOwner));
    EXPECT_EQ(writeProtectedIn(folder.path("甲")), QString());
    QFile::setPermissions(folder.path("甲/附图"),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

} // namespace
} // namespace qvnd::files
