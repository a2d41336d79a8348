#include "platform/files/DiskFileSystem.h"

#include "platform/files/FileErrors.h"
#include "platform/files/Paths.h"
#include "support/Errors.h"
#include "support/Files.h"
#include "support/RestrictedProcess.h"
#include "support/Text.h"

#include <QDir>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <system_error>
#include <utility>
#include <vector>

using namespace qvnd;
using namespace qvnd::files;
using test::errorNumberOf;

namespace {

struct DiskFiles : testing::Test {
    test::TemporaryFolder folder;
    DiskFileSystem gFso;

    void setWritable(const QString& name, bool writable) const {
        QFile::setPermissions(folder.path(name), writable ? QFile::ReadOwner | QFile::WriteOwner
                                                          : QFile::Permissions(QFile::ReadOwner));
    }
};

TEST_F(DiskFiles, FoldersAndFilesAreToldApart) {
    folder.write("甲/a.doc", "x");
    EXPECT_TRUE(gFso.FolderExists(folder.path("甲")));
    EXPECT_TRUE(gFso.FolderExists(folder.path("甲") + separator()));
    EXPECT_FALSE(gFso.FileExists(folder.path("甲")));
    EXPECT_TRUE(gFso.FileExists(folder.path("甲/a.doc")));
    EXPECT_FALSE(gFso.FolderExists(folder.path("甲/a.doc")));
    EXPECT_FALSE(gFso.FolderExists(QString()));
}

TEST_F(DiskFiles, NamesAreFoundWithoutRegardToCase) {
    folder.write("sys/Database/Db_BidSet.mdb", "x");
    EXPECT_TRUE(gFso.FileExists(folder.path("Sys/database/DB_BIDSET.MDB")));
    EXPECT_TRUE(gFso.FolderExists(folder.path("SYS/DATABASE")));
    EXPECT_EQ(resolved(folder.path("SYS/DATABASE/new.mdb")), folder.path("sys/Database/new.mdb"));
}

TEST_F(DiskFiles, ANameThatExistsAsWrittenWinsOverOneOfAnotherCase) {
    folder.write("a.txt", "small");
    folder.write("A.txt", "large");
    EXPECT_EQ(resolved(folder.path("A.txt")), folder.path("A.txt"));
    EXPECT_EQ(resolved(folder.path("a.txt")), folder.path("a.txt"));
}

TEST_F(DiskFiles, CreateFolderMakesOneLevel) {
    gFso.CreateFolder(folder.path("甲"));
    EXPECT_TRUE(folder.exists("甲"));
    EXPECT_EQ(errorNumberOf([&] { gFso.CreateFolder(folder.path("乙/丙")); }), error::pathNotFound);
}

TEST_F(DiskFiles, CreateFolderRefusesOneThatIsThere) {
    folder.makeFolder("sys");
    EXPECT_EQ(errorNumberOf([&] { gFso.CreateFolder(folder.path("sys")); }),
              error::fileAlreadyExists);
    EXPECT_EQ(errorNumberOf([&] { gFso.CreateFolder(folder.path("Sys")); }),
              error::fileAlreadyExists);
}

TEST_F(DiskFiles, DeleteFolderTakesAllThatIsInIt) {
    folder.write("甲/乙/a.doc", "x");
    gFso.DeleteFolder(folder.path("甲"), false);
    EXPECT_FALSE(folder.exists("甲"));
    EXPECT_EQ(errorNumberOf([&] { gFso.DeleteFolder(folder.path("甲"), false); }),
              error::pathNotFound);
}

TEST_F(DiskFiles, DeleteFolderWithoutForceStopsAtAReadOnlyFile) {
    folder.write("甲/a.doc", "x");
    setWritable("甲/a.doc", false);
    EXPECT_EQ(errorNumberOf([&] { gFso.DeleteFolder(folder.path("甲"), false); }),
              error::permissionDenied);
    EXPECT_TRUE(folder.exists("甲/a.doc"));
    gFso.DeleteFolder(folder.path("甲"), true);
    EXPECT_FALSE(folder.exists("甲"));
}

TEST_F(DiskFiles, DeleteFolderStopsAtAReadOnlyFileInAFolderBelowToo) {
    folder.write("甲/a.doc", "x");
    folder.write("甲/乙/b.doc", "x");
    setWritable("甲/乙/b.doc", false);
    EXPECT_EQ(errorNumberOf([&] { gFso.DeleteFolder(folder.path("甲"), false); }),
              error::permissionDenied);
    EXPECT_TRUE(folder.exists("甲/a.doc"));
    EXPECT_TRUE(folder.exists("甲/乙/b.doc"));
}

TEST_F(DiskFiles, AFolderThatCannotBeDeletedWholeComesBackUnderItsName) {
    folder.write("甲/乙/b.doc", "x");
    const auto protectedFolder = QFile::ReadOwner | QFile::ExeOwner;
    QFile::setPermissions(folder.path("甲/乙"), protectedFolder);
    std::vector<std::string> owned;
    for (const char* name : {"", "甲", "甲/乙", "甲/乙/b.doc"}) {
        owned.push_back(folder.path(name).toStdString());
    }
    const auto number = test::RestrictedProcess::withoutPrivileges(
        owned, [&] { return errorNumberOf([&] { gFso.DeleteFolder(folder.path("甲"), false); }); });
    QFile::setPermissions(folder.path("甲/乙"), protectedFolder | QFile::WriteOwner);
    if (!number) {
        GTEST_SKIP() << "no user without rights";
    }
    EXPECT_EQ(number, error::permissionDenied);
    EXPECT_EQ(folder.names(), QStringList{"甲"});
    EXPECT_EQ(folder.read("甲/乙/b.doc"), "x");
}

TEST_F(DiskFiles, AFolderOfWhichAPartCannotBeSeenIsNotDeleted) {
    folder.write("甲/乙/b.doc", "x");
    folder.write("甲/a.doc", "a");
    folder.write("甲/丙.doc", "c");
    QFile::setPermissions(folder.path("甲/乙"), QFile::WriteOwner | QFile::ExeOwner);
    std::vector<std::string> owned;
    for (const char* name : {"", "甲", "甲/乙", "甲/乙/b.doc", "甲/a.doc", "甲/丙.doc"}) {
        owned.push_back(folder.path(name).toStdString());
    }
    const auto number = test::RestrictedProcess::withoutPrivileges(
        owned, [&] { return errorNumberOf([&] { gFso.DeleteFolder(folder.path("甲"), false); }); });
    QFile::setPermissions(folder.path("甲/乙"),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    if (!number) {
        GTEST_SKIP() << "no user without rights";
    }
    EXPECT_EQ(number, error::permissionDenied);
    EXPECT_EQ(folder.read("甲/乙/b.doc"), "x");
    EXPECT_EQ(folder.read("甲/a.doc"), "a");
    EXPECT_EQ(folder.read("甲/丙.doc"), "c");
}

TEST_F(DiskFiles, DeleteFolderNeverClimbsOutOfTheFolder) {
    folder.write("甲/乙/a.doc", "x");
    for (const char* name : {"甲/乙/..", "甲/乙/.", "甲/乙/../"}) {
        EXPECT_EQ(errorNumberOf([&] { gFso.DeleteFolder(folder.path() + '/' + name, true); }),
                  error::pathNotFound)
            << name;
    }
    EXPECT_TRUE(folder.exists("甲/乙/a.doc"));
}

TEST_F(DiskFiles, DeleteFolderDoesNotFollowALink) {
    folder.write("别处/a.doc", "x");
    folder.makeFolder("甲");
    ASSERT_TRUE(QFile::link(folder.path("别处"), folder.path("甲/链接")));
    gFso.DeleteFolder(folder.path("甲"), false);
    EXPECT_TRUE(folder.exists("别处/a.doc"));
}

TEST_F(DiskFiles, AReadOnlyFileBehindALinkDoesNotHoldAFolder) {
    folder.write("别处/a.doc", "x");
    setWritable("别处/a.doc", false);
    folder.makeFolder("甲");
    ASSERT_TRUE(QFile::link(folder.path("别处"), folder.path("甲/链接")));
    gFso.DeleteFolder(folder.path("甲"), false);
    EXPECT_FALSE(folder.exists("甲"));
    EXPECT_TRUE(folder.exists("别处/a.doc"));
}

TEST_F(DiskFiles, WhatIsNoFileDoesNotHoldAFolder) {
    folder.makeFolder("甲");
    ASSERT_EQ(mkfifo(QFile::encodeName(folder.path("甲/a.doc")).constData(), S_IRUSR), 0);
    gFso.DeleteFolder(folder.path("甲"), false);
    EXPECT_FALSE(folder.exists("甲"));
}

TEST_F(DiskFiles, WhatCannotBeDeletedForWantOfRightsStays) {
    folder.write("甲/乙/b.doc", "x");
    QFile::setPermissions(folder.path("甲"), QFile::ReadOwner | QFile::ExeOwner);
    std::vector<std::string> owned;
    for (const char* name : {"", "甲", "甲/乙", "甲/乙/b.doc"}) {
        owned.push_back(folder.path(name).toStdString());
    }
    const auto deleting = [&] {
        return errorNumberOf([&] { gFso.DeleteFolder(folder.path("甲/乙"), false); });
    };
    QFile::setPermissions(folder.path("甲/乙"), QFile::ReadOwner | QFile::ExeOwner);
    const auto deletingFile = [&] {
        return errorNumberOf([&] { gFso.DeleteFile(folder.path("甲/乙/b.doc")); });
    };
    const auto ofFolder = test::RestrictedProcess::withoutPrivileges(owned, deleting);
    const auto ofFile = test::RestrictedProcess::withoutPrivileges(owned, deletingFile);
    for (const char* name : {"甲", "甲/乙"}) {
        QFile::setPermissions(folder.path(name),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    if (!ofFolder || !ofFile) {
        GTEST_SKIP() << "no user without rights";
    }
    EXPECT_EQ(ofFolder, error::permissionDenied);
    EXPECT_EQ(ofFile, error::permissionDenied);
    EXPECT_EQ(folder.read("甲/乙/b.doc"), "x");
}

TEST_F(DiskFiles, AFileInThePlaceOfANewFolderIsOneThatIsThere) {
    folder.write("甲", "x");
    EXPECT_EQ(errorNumberOf([&] { gFso.CreateFolder(folder.path("甲")); }),
              error::fileAlreadyExists);
}

TEST_F(DiskFiles, ANameRightBelowTheRootIsFoundWithoutRegardToCaseToo) {
    ASSERT_FALSE(QFileInfo::exists("/USR"));
    EXPECT_EQ(resolved("/USR"), "/usr");
}

TEST_F(DiskFiles, AFolderIsFoundWithItsSeparatorBehindIt) {
    folder.makeFolder("sys/Db");
    const QString found = folder.path("sys/Db") + separator();
    EXPECT_EQ(resolved(folder.path("SYS/DB") + separator()), found);
    EXPECT_EQ(resolved("/USR/"), "/usr/");
    EXPECT_EQ(resolved("/no-such-folder/"), "/no-such-folder/");
    EXPECT_EQ(resolved("/"), "/");
}

TEST_F(DiskFiles, ANameWithoutAFolderIsLookedForInTheFolderAtHand) {
    folder.makeFolder("sys");
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(folder.path()));
    EXPECT_EQ(resolved("SYS"), "sys");
    EXPECT_EQ(resolved("SYS/"), "sys/");
    EXPECT_EQ(resolved("neu.doc"), "neu.doc");
    ASSERT_TRUE(QDir::setCurrent(before));
}

TEST_F(DiskFiles, NoNameIsNeitherFileNorFolder) {
    EXPECT_FALSE(fileExists(QString()));
    EXPECT_FALSE(folderExists(QString()));
    EXPECT_FALSE(gFso.FileExists(QString()));
    EXPECT_EQ(resolved(QString()), QString());
}

TEST_F(DiskFiles, AFileOrALinkIsNoFolderToDeleteOrMove) {
    folder.write("a.doc", "x");
    folder.write("甲/b.doc", "y");
    ASSERT_TRUE(QFile::link(folder.path("甲"), folder.path("链接")));
    const auto deleting = [&](const char* name) {
        return errorNumberOf([&] { gFso.DeleteFolder(folder.path(name), true); });
    };
    EXPECT_EQ(deleting("a.doc"), error::pathNotFound);
    EXPECT_EQ(deleting("链接"), error::pathNotFound);
    EXPECT_EQ(errorNumberOf([&] { gFso.MoveFolder(folder.path("a.doc"), folder.path("c")); }),
              error::pathNotFound);
    EXPECT_EQ(folder.names(), QStringList({"a.doc", "甲", "链接"}));
    EXPECT_EQ(folder.read("甲/b.doc"), "y");
}

TEST(FileErrors, EachReasonOfTheSystemHasItsNumber) {
    const std::vector<std::pair<std::errc, long>> numbers{
        {std::errc::no_such_file_or_directory, error::pathNotFound},
        {std::errc::not_a_directory, error::pathNotFound},
        {std::errc::file_exists, error::fileAlreadyExists},
        {std::errc::no_space_on_device, error::diskFull},
        {std::errc::permission_denied, error::permissionDenied},
        {std::errc::operation_not_permitted, error::permissionDenied},
        {std::errc::read_only_file_system, error::permissionDenied},
        {std::errc::device_or_resource_busy, error::permissionDenied},
        {std::errc::text_file_busy, error::permissionDenied},
        {std::errc::io_error, error::pathAccess}};
    for (const auto& [reason, number] : numbers) {
        const std::error_code code = std::make_error_code(reason);
        EXPECT_EQ(errorNumberOf([&] { throwFileError(code, "x"); }), number) << code.message();
    }
}

TEST_F(DiskFiles, TheRootIsItsOwnSeparatorAndKeepsIt) {
    EXPECT_EQ(withoutSeparator("/"), "/");
    EXPECT_EQ(withoutSeparator("/usr/"), "/usr");
    EXPECT_EQ(withoutSeparator("/usr"), "/usr");
    EXPECT_EQ(withoutSeparator("a/"), "a");
    EXPECT_EQ(withSeparator("a"), "a/");
    EXPECT_EQ(withSeparator("a/"), "a/");
    EXPECT_EQ(withoutSeparator(""), "");
}

TEST_F(DiskFiles, DeleteFolderClearsAwayWhatAKilledDeletionLeft) {
    folder.write("a/x.doc", "x");
    folder.write(".~deleted/y.doc", "y");
    gFso.DeleteFolder(folder.path("a"), false);
    EXPECT_EQ(folder.names(), QStringList());
}

TEST_F(DiskFiles, MoveFolderTakesAllAlongToANameThatIsFree) {
    folder.write("a/x.doc", "x");
    folder.makeFolder("b");
    gFso.MoveFolder(folder.path("a"), folder.path("c"));
    EXPECT_EQ(folder.names(), QStringList({"b", "c"}));
    EXPECT_EQ(folder.read("c/x.doc"), "x");
    EXPECT_EQ(errorNumberOf([&] { gFso.MoveFolder(folder.path("c"), folder.path("b")); }),
              error::fileAlreadyExists);
    EXPECT_EQ(errorNumberOf([&] { gFso.MoveFolder(folder.path("a"), folder.path("d")); }),
              error::pathNotFound);
    EXPECT_EQ(errorNumberOf([&] { gFso.MoveFolder(folder.path("c"), folder.path("none/d")); }),
              error::pathNotFound);
    EXPECT_EQ(folder.read("c/x.doc"), "x");
}

TEST_F(DiskFiles, CopyFileReplacesTheTargetWhole) {
    folder.write("a.doc", "new");
    folder.write("b.doc", "old and longer");
    gFso.CopyFile(folder.path("a.doc"), folder.path("b.doc"), true);
    EXPECT_EQ(folder.read("b.doc"), "new");
    EXPECT_EQ(folder.names(), QStringList({"a.doc", "b.doc"}));
}

TEST_F(DiskFiles, CopyFileOntoItselfKeepsTheFile) {
    folder.write("a.doc", "content");
    gFso.CopyFile(folder.path("a.doc"), folder.path("a.doc"), true);
    EXPECT_EQ(folder.read("a.doc"), "content");
}

TEST_F(DiskFiles, CopyFileNamesWhatIsWrong) {
    folder.write("a.doc", "x");
    folder.write("b.doc", "y");
    const auto copy = [&](const char* from, const char* to, bool overwrite) {
        return errorNumberOf([&] { gFso.CopyFile(folder.path(from), folder.path(to), overwrite); });
    };
    EXPECT_EQ(copy("none.doc", "b.doc", true), error::fileNotFound);
    EXPECT_EQ(copy("none.doc", "b.doc", false), error::fileNotFound);
    EXPECT_EQ(copy("", "c.doc", true), error::fileNotFound);
    EXPECT_EQ(copy("a.doc", "none/b.doc", true), error::pathNotFound);
    EXPECT_EQ(copy("a.doc", "b.doc", false), error::fileAlreadyExists);
    EXPECT_EQ(folder.read("b.doc"), "y");
    setWritable("b.doc", false);
    EXPECT_EQ(copy("a.doc", "b.doc", true), error::permissionDenied);
    EXPECT_EQ(folder.read("b.doc"), "y");
}

TEST_F(DiskFiles, DeleteFileWantsAFileThatMayBeWritten) {
    folder.write("a.doc", "x");
    setWritable("a.doc", false);
    EXPECT_EQ(errorNumberOf([&] { gFso.DeleteFile(folder.path("a.doc")); }),
              error::permissionDenied);
    setWritable("a.doc", true);
    gFso.DeleteFile(folder.path("A.DOC"));
    EXPECT_FALSE(folder.exists("a.doc"));
    EXPECT_EQ(errorNumberOf([&] { gFso.DeleteFile(folder.path("a.doc")); }), error::fileNotFound);
}

TEST_F(DiskFiles, ListingsComeInTheOrderOfNames) {
    folder.makeFolder("b");
    folder.makeFolder("a");
    folder.write("c.doc", "x");
    const auto folders = gFso.SubFolders(folder.root());
    ASSERT_EQ(folders.size(), 2U);
    EXPECT_EQ(folders[0].Name, "a");
    EXPECT_EQ(folders[1].Path, folder.path("b"));
    const auto found = gFso.Files(folder.path());
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].Name, "c.doc");
    EXPECT_EQ(errorNumberOf([&] { gFso.SubFolders(folder.path("none")); }), error::pathNotFound);
}

TEST_F(DiskFiles, AFailureNamesThePathInPlainWords) {
    try {
        gFso.DeleteFile(folder.path("none.doc"));
        FAIL();
    } catch (const RunTimeError& e) {
        EXPECT_EQ(QString::fromStdU16String(e.description()),
                  "文件未找到：" + folder.path("none.doc"));
    }
}

} // namespace
