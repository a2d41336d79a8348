#include "platform/desktop/LockFiles.h"
#include "platform/desktop/OpenDocuments.h"
#include "platform/files/DiskFileSystem.h"
#include "platform/files/FileLocks.h"
#include "support/Errors.h"
#include "support/Files.h"
#include "support/HeldLock.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace qvnd;
using namespace qvnd::files;
using test::errorNumberOf;
using test::HeldLock;
using test::LockKind;

namespace {

const QByteArray otherMachine = ",planner,there,21.11.2026 08:59,file:///tmp/own;";

QByteArray staleLock() {
    return ",planner," + desktop::SystemProcesses().hostName().toUtf8() +
           ",21.11.2026 08:59,file:///nowhere/at/all;";
}

struct FilesUsed : testing::Test {
    test::TemporaryFolder folder;
    DiskFileSystem gFso{std::make_unique<desktop::OpenDocuments>()};

    FilesUsed() {
        folder.write("甲/甲.1.doc", "one");
        folder.write("甲/甲.2.doc", "two");
        folder.write("甲/甲.mdb", "database");
        folder.write("new.doc", "new");
    }
    std::optional<long> deletingFolder() {
        return errorNumberOf([&] { gFso.DeleteFolder(folder.path("甲"), false); });
    }
    std::optional<long> deletingFile(const QString& name) {
        return errorNumberOf([&] { gFso.DeleteFile(folder.path(name)); });
    }
    std::optional<long> copyingOnto(const QString& name) {
        return errorNumberOf(
            [&] { gFso.CopyFile(folder.path("new.doc"), folder.path(name), true); });
    }
};

struct LockedFiles : FilesUsed, testing::WithParamInterface<LockKind> {};

INSTANTIATE_TEST_SUITE_P(Kinds, LockedFiles,
                         testing::Values(LockKind::record, LockKind::sharedRecord,
                                         LockKind::whole));

TEST_P(LockedFiles, AFileThatAnotherProcessHoldsLockedIsSeen) {
    EXPECT_FALSE(isLockedByOther(folder.path("甲/甲.2.doc")));
    {
        const HeldLock lock(folder.path("甲/甲.2.doc"), GetParam());
        EXPECT_TRUE(isLockedByOther(folder.path("甲/甲.2.doc")));
        EXPECT_FALSE(isLockedByOther(folder.path("甲/甲.1.doc")));
    }
    EXPECT_FALSE(isLockedByOther(folder.path("甲/甲.2.doc")));
}

TEST_P(LockedFiles, AFileThatIsNoDocumentIsNotInUseThoughItIsLocked) {
    const HeldLock lock(folder.path("甲/甲.mdb"), GetParam());
    EXPECT_FALSE(gFso.IsInUse(folder.path("甲/甲.mdb")));
    const HeldLock document(folder.path("甲/甲.2.doc"), GetParam());
    EXPECT_TRUE(gFso.IsInUse(folder.path("甲/甲.2.DOC")));
    EXPECT_FALSE(gFso.IsInUse(folder.path("甲/甲.1.doc")));
}

TEST_P(LockedFiles, AFolderWithALockedDocumentKeepsAllThatIsInIt) {
    const QStringList before = folder.names("甲");
    const HeldLock lock(folder.path("甲/甲.2.doc"), GetParam());
    EXPECT_EQ(deletingFolder(), error::permissionDenied);
    EXPECT_EQ(folder.names("甲"), before);
}

TEST_P(LockedFiles, ForceDoesNotHelpAgainstALock) {
    const HeldLock lock(folder.path("甲/甲.2.doc"), GetParam());
    EXPECT_EQ(errorNumberOf([&] { gFso.DeleteFolder(folder.path("甲"), true); }),
              error::permissionDenied);
    EXPECT_TRUE(folder.exists("甲/甲.1.doc"));
}

TEST_P(LockedFiles, ALockedDocumentIsNeitherDeletedNorOverwritten) {
    const HeldLock lock(folder.path("甲/甲.2.doc"), GetParam());
    EXPECT_EQ(deletingFile("甲/甲.2.doc"), error::permissionDenied);
    EXPECT_EQ(copyingOnto("甲/甲.2.doc"), error::permissionDenied);
    EXPECT_EQ(folder.read("甲/甲.2.doc"), "two");
    EXPECT_EQ(copyingOnto("甲/甲.1.doc"), std::nullopt);
    EXPECT_EQ(deletingFile("甲/甲.1.doc"), std::nullopt);
}

TEST_P(LockedFiles, ALockedDocumentMayBeCopiedFrom) {
    const HeldLock lock(folder.path("new.doc"), GetParam());
    EXPECT_EQ(copyingOnto("甲/甲.2.doc"), std::nullopt);
    EXPECT_EQ(folder.read("甲/甲.2.doc"), "new");
}

TEST_P(LockedFiles, ALockOnWhatIsNoDocumentDoesNotCount) {
    const HeldLock lock(folder.path("甲/甲.mdb"), GetParam());
    EXPECT_EQ(deletingFolder(), std::nullopt);
}

TEST_P(LockedFiles, ADocumentIsOneWhateverTheCaseOfItsSuffix) {
    folder.write("甲/甲.3.DOC", "three");
    const HeldLock lock(folder.path("甲/甲.3.DOC"), GetParam());
    EXPECT_TRUE(gFso.IsInUse(folder.path("甲/甲.3.DOC")));
    EXPECT_EQ(copyingOnto("甲/甲.3.DOC"), error::permissionDenied);
    EXPECT_EQ(folder.read("甲/甲.3.DOC"), "three");
}

TEST_F(FilesUsed, WithoutLocksEverythingGoes) {
    EXPECT_EQ(copyingOnto("甲/甲.2.doc"), std::nullopt);
    EXPECT_EQ(deletingFile("甲/甲.2.doc"), std::nullopt);
    EXPECT_EQ(deletingFolder(), std::nullopt);
    EXPECT_FALSE(folder.exists("甲"));
}

TEST_F(FilesUsed, AWordProcessorsLockFileBesideADocumentCounts) {
    folder.write("甲/.~lock.甲.2.doc#", otherMachine);
    EXPECT_EQ(deletingFile("甲/甲.2.doc"), error::permissionDenied);
    EXPECT_EQ(copyingOnto("甲/甲.2.doc"), error::permissionDenied);
    EXPECT_EQ(folder.read("甲/甲.2.doc"), "two");
    const QStringList before = folder.names("甲");
    EXPECT_EQ(deletingFolder(), error::permissionDenied);
    EXPECT_EQ(folder.names("甲"), before);
    EXPECT_EQ(deletingFile("甲/甲.1.doc"), std::nullopt);
}

TEST_F(FilesUsed, AnOwnerFileBesideADocumentCounts) {
    folder.write("甲/~$甲.2.doc", "planner");
    EXPECT_EQ(deletingFile("甲/甲.2.doc"), error::permissionDenied);
    EXPECT_EQ(deletingFolder(), error::permissionDenied);
}

TEST_F(FilesUsed, AnOwnerFileMayLackTheFirstTwoCharacters) {
    folder.write("甲/~$2.doc", "planner");
    EXPECT_EQ(deletingFile("甲/甲.2.doc"), error::permissionDenied);
    EXPECT_EQ(deletingFile("甲/甲.1.doc"), std::nullopt);
}

TEST_F(FilesUsed, AStaleLockFileDoesNotCountAndGoesWithTheFolder) {
    folder.write("甲/.~lock.甲.2.doc#", staleLock());
    EXPECT_EQ(copyingOnto("甲/甲.2.doc"), std::nullopt);
    EXPECT_EQ(deletingFile("甲/甲.1.doc"), std::nullopt);
    EXPECT_EQ(deletingFolder(), std::nullopt);
    EXPECT_FALSE(folder.exists("甲"));
}

TEST_F(FilesUsed, ALockFileWhoseDocumentHasGoneDoesNotCount) {
    folder.write("甲/.~lock.甲.9.doc#", otherMachine);
    EXPECT_EQ(deletingFolder(), std::nullopt);
}

TEST_F(FilesUsed, AnOwnerFileItselfMayBeDeleted) {
    folder.write("甲/~$甲.2.doc", "planner");
    EXPECT_EQ(deletingFile("甲/~$甲.2.doc"), std::nullopt);
    EXPECT_EQ(deletingFile("甲/甲.2.doc"), std::nullopt);
}

TEST_F(FilesUsed, ADocumentInASubFolderIsLookedAt) {
    folder.write("甲/下/图.doc", "x");
    folder.write("甲/下/.~lock.图.doc#", otherMachine);
    EXPECT_EQ(deletingFolder(), error::permissionDenied);
    EXPECT_TRUE(folder.exists("甲/甲.1.doc"));
}

TEST_F(FilesUsed, WithoutAWordOnLockFilesOnlyLocksCount) {
    DiskFileSystem plain;
    folder.write("甲/.~lock.甲.2.doc#", otherMachine);
    EXPECT_EQ(errorNumberOf([&] { plain.DeleteFile(folder.path("甲/甲.2.doc")); }), std::nullopt);
}

TEST_F(FilesUsed, ANewFileNextToALockFileOfTheSameNameIsNotInUse) {
    folder.write("甲/.~lock.甲.9.doc#", otherMachine);
    EXPECT_EQ(copyingOnto("甲/甲.9.doc"), std::nullopt);
}

} // namespace
