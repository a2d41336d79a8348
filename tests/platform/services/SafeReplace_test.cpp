#include "platform/files/SafeReplace.h"

#include "support/Errors.h"
#include "support/Files.h"
#include "support/RestrictedProcess.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace qvnd;
using namespace qvnd::files;
using test::errorNumberOf;
using test::RestrictedProcess;

namespace {

// What a copy or a write leaves that cannot be brought to its end.
struct SafeReplaces : testing::Test {
    SafeReplaces() {
        folder.write("target.doc", "earlier");
        folder.write("source.doc", QByteArray(5000, 'x'));
    }
    void expectEarlierState() const {
        EXPECT_EQ(folder.read("target.doc"), "earlier");
        EXPECT_EQ(folder.read("source.doc").size(), 5000);
        EXPECT_EQ(folder.names(), QStringList({"source.doc", "target.doc"}));
    }

    test::TemporaryFolder folder;
};

TEST_F(SafeReplaces, AFullDiskLeavesTheEarlierFile) {
    const QString target = folder.path("target.doc");
    EXPECT_EQ(
        RestrictedProcess::withFilesUpTo(
            4096,
            [&] { return errorNumberOf([&] { writeWhole(target, QByteArray(5000, 'x')); }); }),
        error::diskFull);
    expectEarlierState();
}

TEST_F(SafeReplaces, AFullDiskLeavesTheEarlierFileOfACopyToo) {
    EXPECT_EQ(RestrictedProcess::withFilesUpTo(4096,
                                               [&] {
                                                   return errorNumberOf([&] {
                                                       copyWhole(folder.path("source.doc"),
                                                                 folder.path("target.doc"));
                                                   });
                                               }),
              error::diskFull);
    expectEarlierState();
}

TEST_F(SafeReplaces, OnlyFilesThatAreThereAndHaveTheSameBytesAreTheSame) {
    folder.write("a", "12345");
    folder.write("b", "12345");
    folder.write("c", "12346");
    folder.write("d", "1234");
    folder.write("empty", "");
    const auto same = [&](const char* one, const char* other) {
        return haveSameBytes(folder.path(one), folder.path(other));
    };
    EXPECT_TRUE(same("a", "b"));
    EXPECT_FALSE(same("a", "c"));
    EXPECT_FALSE(same("a", "d"));
    EXPECT_FALSE(same("a", "none"));
    EXPECT_FALSE(same("empty", "none"));
    EXPECT_FALSE(same("none", "empty"));
}

TEST_F(SafeReplaces, ASourceThatIsMissingIsNotFoundAndATargetFolderThatIsMissingIsNoPath) {
    EXPECT_EQ(errorNumberOf([&] { copyWhole(folder.path("none"), folder.path("target.doc")); }),
              error::fileNotFound);
    EXPECT_EQ(errorNumberOf([&] { writeWhole(folder.path("none/target.doc"), "x"); }),
              error::pathNotFound);
    EXPECT_EQ(errorNumberOf([&] { copyWhole(folder.path(), folder.path("target.doc")); }),
              error::permissionDenied);
    expectEarlierState();
}

TEST_F(SafeReplaces, AFolderWithoutRightsIsAPermissionDeniedAndNoFullDisk) {
    QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::ExeOwner);
    const auto number = RestrictedProcess::withoutPrivileges({folder.path().toStdString()}, [&] {
        return errorNumberOf([&] { writeWhole(folder.path("new.doc"), "x"); });
    });
    QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    if (!number) {
        GTEST_SKIP() << "no user without rights";
    }
    EXPECT_EQ(number, error::permissionDenied);
    expectEarlierState();
}

TEST_F(SafeReplaces, ASourceOfSeveralBlocksIsCopiedWhole) {
    QByteArray bytes(qsizetype{2} << 20, 'x');
    bytes += "end";
    folder.write("source.doc", bytes);
    copyWhole(folder.path("source.doc"), folder.path("target.doc"));
    EXPECT_EQ(folder.read("target.doc"), bytes);
}

TEST_F(SafeReplaces, ASourceThatCannotBeReadToItsEndLeavesTheEarlierFile) {
    const auto number = RestrictedProcess::withReadsBelow(1 << 16, [&] {
        return errorNumberOf(
            [&] { copyWhole(folder.path("source.doc"), folder.path("target.doc")); });
    });
    if (!number) {
        GTEST_SKIP() << "no filter of system calls";
    }
    EXPECT_EQ(number, error::pathAccess);
    expectEarlierState();
}

} // namespace
