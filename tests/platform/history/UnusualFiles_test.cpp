#include "platform/history/HistoryWorld.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <QFileInfo>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

using namespace qvnd;
using test::HistoryWorld;

namespace {

namespace fs = std::filesystem;

// Links, names that are no valid text, old dates and permissions.
class UnusualFiles : public testing::Test {
protected:
    UnusualFiles() {
        world.write("source.doc", "from outside");
        world.write("real.doc", "behind the link");
    }
    fs::path native(const QString& name) const { return files::toPath(world.path(name)); }
    static void write(const fs::path& path, const std::string& bytes) {
        std::ofstream(path, std::ios::binary) << bytes;
    }
    static std::string read(const fs::path& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    history::History::Outcome overwrite(const QString& name) {
        return world.run("添加", [&] {
            world.files->CopyFile(world.path("source.doc"), world.path(name), true);
        });
    }
    void makePlanInACommand() {
        world.run("新建", [&] { world.makePlan("甲"); });
    }
    history::History::Outcome deletePlanInACommand() {
        return world.run("删除", [&] { world.deletePlan("甲"); });
    }
    bool hasNothingUnder(const QString& name) const {
        return !fs::exists(fs::symlink_status(native(name)));
    }

    HistoryWorld world;
};

class OverwrittenLink : public UnusualFiles, public testing::WithParamInterface<bool> {
protected:
    OverwrittenLink() {
        QDir(world.path("")).mkdir("sub");
        if (GetParam()) {
            fs::create_symlink(native("real.doc"), native("sub/link.doc"));
        } else {
            fs::create_symlink("../real.doc", native("sub/link.doc"));
        }
    }
};

INSTANTIATE_TEST_SUITE_P(AbsoluteAndRelative, OverwrittenLink, testing::Bool());

TEST_P(OverwrittenLink, WhatTheDocumentBehindItHeldComesBackAndIsTold) {
    const auto added = overwrite("sub/link.doc");
    ASSERT_EQ(world.read("real.doc"), "from outside");
    ASSERT_TRUE(added.step);
    const auto changes = world.history->changesOf(added.step->id);
    ASSERT_EQ(changes.size(), 1);
    EXPECT_EQ(changes[0].kind, history::Change::Kind::fileReplaced);
    EXPECT_EQ(changes[0].name, "real.doc");
    ASSERT_TRUE(world.history->undo());
    EXPECT_EQ(world.read("real.doc"), "behind the link");
    EXPECT_TRUE(fs::is_symlink(native("sub/link.doc")));
    ASSERT_TRUE(world.history->redo());
    EXPECT_EQ(world.read("real.doc"), "from outside");
    EXPECT_TRUE(fs::is_symlink(native("sub/link.doc")));
}

TEST_P(OverwrittenLink, ThatIsDeletedComesBackAsALinkAndTheDocumentBehindItStays) {
    const fs::path target = fs::read_symlink(native("sub/link.doc"));
    world.run("删除", [&] { world.files->DeleteFile(world.path("sub/link.doc")); });
    EXPECT_TRUE(hasNothingUnder("sub/link.doc"));
    ASSERT_TRUE(world.history->undo());
    ASSERT_TRUE(fs::is_symlink(native("sub/link.doc")));
    EXPECT_EQ(fs::read_symlink(native("sub/link.doc")), target);
    ASSERT_TRUE(world.history->redo());
    EXPECT_TRUE(hasNothingUnder("sub/link.doc"));
    EXPECT_EQ(world.read("real.doc"), "behind the link");
}

TEST_P(OverwrittenLink, WhoseNameADocumentTakesIsNotWrittenThroughByTheRedo) {
    world.run("替换", [&] {
        world.files->DeleteFile(world.path("sub/link.doc"));
        world.files->CopyFile(world.path("source.doc"), world.path("sub/link.doc"), true);
    });
    ASSERT_TRUE(world.history->undo());
    ASSERT_TRUE(fs::is_symlink(native("sub/link.doc")));
    ASSERT_TRUE(world.history->redo());
    EXPECT_FALSE(fs::is_symlink(native("sub/link.doc")));
    EXPECT_EQ(world.read("sub/link.doc"), "from outside");
    EXPECT_EQ(world.read("real.doc"), "behind the link");
}

TEST_F(UnusualFiles, ADocumentThatIsMadeBehindALinkToNothingGoesWithTheUndo) {
    fs::create_symlink("coming.doc", native("link.doc"));
    ASSERT_TRUE(overwrite("link.doc").step);
    EXPECT_EQ(world.read("coming.doc"), "from outside");
    ASSERT_TRUE(world.history->undo());
    EXPECT_TRUE(hasNothingUnder("coming.doc"));
    EXPECT_TRUE(fs::is_symlink(native("link.doc")));
    ASSERT_TRUE(world.history->redo());
    EXPECT_EQ(world.read("coming.doc"), "from outside");
}

TEST_F(UnusualFiles, LinksOfADeletedPlanComeBackAsLinksWhereverTheyLead) {
    makePlanInACommand();
    QDir(world.path("")).mkdir("elsewhere");
    fs::create_symlink("nowhere", native("甲/broken"));
    fs::create_directory_symlink(native("elsewhere"), native("甲/folder"));
    fs::create_symlink("../real.doc", native("甲/file.doc"));
    ASSERT_TRUE(deletePlanInACommand().step);
    ASSERT_TRUE(world.history->undo());
    EXPECT_EQ(fs::read_symlink(native("甲/broken")), "nowhere");
    EXPECT_EQ(fs::read_symlink(native("甲/folder")), native("elsewhere"));
    EXPECT_EQ(fs::read_symlink(native("甲/file.doc")), "../real.doc");
    ASSERT_TRUE(world.history->redo());
    EXPECT_TRUE(hasNothingUnder("甲"));
    EXPECT_EQ(world.read("real.doc"), "behind the link");
    EXPECT_TRUE(QFileInfo(world.path("elsewhere")).isDir());
}

#ifndef Q_OS_WIN // names are text there

class OldNames : public UnusualFiles {
protected:
    static constexpr auto document = "\xbc\xd7.1.doc"; // "甲.1.doc" in GBK
    static constexpr auto folder = "\xcd\xbc";         // "图"

    OldNames() {
        makePlanInACommand();
        QDir(world.path("甲")).mkdir("附件");
        write(native("甲") / document, "of an archive");
        fs::create_directories(native("甲/附件") / folder / "deep");
        write(native("甲/附件") / folder / "deep" / document, "deep inside");
    }
    void expectThere() const {
        EXPECT_EQ(read(native("甲") / document), "of an archive");
        EXPECT_EQ(read(native("甲/附件") / folder / "deep" / document), "deep inside");
        EXPECT_EQ(read(native("甲/甲.1.doc")), "from outside");
    }
};

TEST_F(OldNames, ComeBackWithADeletedPlanAndGoWithItAgain) {
    ASSERT_TRUE(deletePlanInACommand().step);
    ASSERT_TRUE(hasNothingUnder("甲"));
    for (int i = 0; i < 2; ++i) {
        ASSERT_TRUE(world.history->undo());
        expectThere();
        ASSERT_TRUE(world.history->redo());
        EXPECT_TRUE(hasNothingUnder("甲"));
    }
}

TEST_F(OldNames, StayKeptWhenTheHistoryIsThinned) {
    const history::Limits none{std::chrono::days{30}, 1, 50};
    ASSERT_TRUE(deletePlanInACommand().step);
    world.history->thin(none, QDateTime::currentDateTime());
    ASSERT_TRUE(world.history->undo());
    expectThere();
    world.history->thin(none, QDateTime::currentDateTime());
    ASSERT_TRUE(world.history->redo());
    EXPECT_TRUE(hasNothingUnder("甲"));
    ASSERT_TRUE(world.history->undo());
    expectThere();
}

TEST_F(OldNames, AreKeptNoLongerThanTheStepThatTookThem) {
    ASSERT_TRUE(deletePlanInACommand().step);
    for (int i = 0; i < 3; ++i) {
        world.run("新建", [&] { world.files->CreateFolder(world.path(QString::number(i))); });
    }
    world.history->thin({std::chrono::days{30}, 1, 2}, QDateTime::currentDateTime());
    ASSERT_EQ(world.history->steps().size(), 3);
    EXPECT_EQ(history::KeptFiles(world.path(".~history/kept")).size(), 0);
}

TEST_F(OldNames, ThatCameOrChangedBehindTheUndoStayWhenThePlanGoesAgain) {
    ASSERT_TRUE(deletePlanInACommand().step);
    ASSERT_TRUE(world.history->undo());
    write(native("甲") / document, "changed since");
    write(native("甲/附件") / folder / "\xb8\xbd", "came since");
    ASSERT_TRUE(world.history->redo());
    EXPECT_EQ(read(native("甲") / document), "changed since");
    EXPECT_EQ(read(native("甲/附件") / folder / "\xb8\xbd"), "came since");
    EXPECT_FALSE(fs::exists(native("甲/甲.1.doc")));
}

TEST_F(OldNames, ComeBackWhereTheCommandIsTakenBack) {
    world.history->begin({"删除", "甲", {}, {}, {}, {}, {}});
    world.deletePlan("甲");
    world.history.reset(); // as a killed process leaves it
    ASSERT_TRUE(world.restart().unfinished);
    ASSERT_TRUE(world.history->undo());
    expectThere();
}

TEST_F(OldNames, ComeBackOverWhatAKilledUndoHasLeftHalf) {
    ASSERT_TRUE(deletePlanInACommand().step);
    ASSERT_TRUE(world.history->undo());
    fs::create_directories(native("甲/.~coming") / folder);
    fs::remove(native("甲") / document);
    ASSERT_TRUE(world.history->redo());
    ASSERT_TRUE(world.history->undo());
    expectThere();
    EXPECT_FALSE(fs::exists(native("甲/.~coming")));
}

TEST_F(UnusualFiles, AFileThatComesBackMayBeReadByNoMoreThanBefore) {
    QFile::setPermissions(world.path("real.doc"), QFile::ReadOwner | QFile::WriteOwner);
    world.run("删除", [&] { world.files->DeleteFile(world.path("real.doc")); });
    ASSERT_TRUE(world.history->undo());
    EXPECT_EQ(fs::status(native("real.doc")).permissions(),
              fs::perms::owner_read | fs::perms::owner_write);
}

#endif

TEST_F(UnusualFiles, AFileThatComesBackHasItsDate) {
    const QDateTime old(QDate(2020, 1, 1), QTime(8, 30));
    {
        QFile file(world.path("real.doc"));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.setFileTime(old, QFileDevice::FileModificationTime));
    }
    overwrite("real.doc");
    ASSERT_TRUE(world.history->undo());
    EXPECT_EQ(world.read("real.doc"), "behind the link");
    EXPECT_EQ(QFileInfo(world.path("real.doc")).lastModified(), old);
    // It counts as the file that the undo has put there.
    ASSERT_TRUE(world.history->redo());
    EXPECT_EQ(world.history->note(), QString());
    EXPECT_EQ(world.history->steps().size(), 1);
}

} // namespace
