#include "platform/history/HistoryWorld.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace qvnd;
using test::HistoryWorld;

namespace {

namespace fs = std::filesystem;

// A work space with the plan 甲, whose documents are of 12 bytes.
class KeptDocuments : public testing::Test {
protected:
    using State = HistoryWorld::State;

    KeptDocuments() {
        world.write("source.doc", "from outside");
        world.write("other.doc", "other bytes!");
        world.run("新建", [&] { world.makePlan("甲"); });
    }
    history::History& history() { return *world.history; }
    history::History::Outcome overwrite(const QString& with) {
        return world.run(
            "覆盖", [&] { world.files->CopyFile(world.path(with), world.path(document), true); });
    }
    fs::path pathOf(const QString& name) const { return world.path(name).toStdU16String(); }

    const QString document = "甲/甲.1.doc";
    HistoryWorld world;
};

TEST_F(KeptDocuments, OneThatHasAnotherNameElsewhereIsKeptByCopy) {
    fs::create_hard_link(pathOf(document), pathOf("backup.doc"));
    overwrite("other.doc");
    world.write("backup.doc", "edited there"); // in place
    ASSERT_TRUE(history().undo());
    EXPECT_EQ(world.read(document), "from outside");
}

// On a file system that tells times to two seconds.
TEST_F(KeptDocuments, OneThatACommandReplacesInTheMomentAndSizeOfAnUndoComesBack) {
    overwrite("other.doc");
    history().undo();
    const auto time = fs::last_write_time(pathOf(document));
    const auto again = world.run("覆盖", [&] {
        world.files->CopyFile(world.path("other.doc"), world.path(document), true);
        fs::last_write_time(pathOf(document), time);
    });
    ASSERT_TRUE(again.step);
    ASSERT_TRUE(history().undo());
    EXPECT_EQ(world.read(document), "from outside");
}

// As all have in a work space that was copied without them.
TEST_F(KeptDocuments, OneThatHasOnlyAnotherTimeThanWhenItWasPutBackCountsAsUnchanged) {
    overwrite("other.doc");
    history().undo();
    fs::last_write_time(pathOf(document), fs::file_time_type::clock::now() - std::chrono::hours(9));
    ASSERT_TRUE(history().redo());
    EXPECT_EQ(history().note(), "");
    EXPECT_EQ(history().steps().size(), 2);
    EXPECT_EQ(world.read(document), "other bytes!");
    world.write(document, "mine by hand");
    ASSERT_TRUE(history().undo());
    EXPECT_NE(history().note(), "") << "another content counts";
}

TEST_F(KeptDocuments, AStepThatKeepsNoneLeavesNoFolder) {
    const auto folders = [&] {
        return QDir(world.path(".~history/kept")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    };
    EXPECT_EQ(folders(), QStringList());
    world.run("添加", [&] { HistoryWorld::addRow(*world.db, "甲", "甲.3"); });
    history().undo();
    history().redo();
    HistoryWorld::addRow(*world.db, "甲", "甲.8"); // by no command
    history().undo();
    EXPECT_EQ(folders(), QStringList());
    const auto step = overwrite("other.doc").step;
    EXPECT_EQ(folders(), QStringList{QString::number(step->id)});
}

// The file of the steps is older than the contents that are kept beside it: the power failed, or it
// came out of a backup, or was deleted.
class LostSteps : public KeptDocuments, public testing::WithParamInterface<bool> {
protected:
    LostSteps() {
        world.close();
        const QString file = world.path(".~history/history.db");
        const QByteArray older = world.read(".~history/history.db");
        world.open();
        for (const char* content : {"content two ", "contentthree", "content four"}) {
            world.write("other.doc", content);
            overwrite("other.doc");
        }
        world.close();
        for (const char* end : {"", "-wal", "-shm"}) {
            QFile::remove(file + end);
        }
        if (GetParam()) {
            world.write(".~history/history.db", older);
        }
        world.open();
    }
};

TEST_P(LostSteps, OfWhichContentsAreKeptAreNotTakenForLaterOnes) {
    world.write("other.doc", "a fresh one!");
    const QString fresh = "甲/甲.3.doc";
    world.run("添加",
              [&] { world.files->CopyFile(world.path("other.doc"), world.path(fresh), true); });
    ASSERT_TRUE(history().undo());
    EXPECT_FALSE(QFile::exists(world.path(fresh)));
    ASSERT_TRUE(history().redo());
    EXPECT_EQ(world.read(fresh), "a fresh one!");
}

TEST_P(LostSteps, StopNoDeletionOfAPlan) {
    const State before = world.state();
    const auto deleted = world.run("删除", [&] { world.deletePlan("甲"); });
    EXPECT_EQ(deleted.refusal, "");
    EXPECT_FALSE(world.state().contains("甲"));
    ASSERT_TRUE(history().undo());
    EXPECT_EQ(world.state(), before);
}

TEST_P(LostSteps, LeaveTheirContentsWhereTheyAre) {
    const auto contents = [&] {
        QSet<QByteArray> found;
        QDirIterator kept(world.path(".~history/kept"), QDir::Files, QDirIterator::Subdirectories);
        while (kept.hasNext()) {
            found << world.read(kept.next().mid(world.path("").size()));
        }
        return found;
    };
    const QSet<QByteArray> before = contents();
    EXPECT_TRUE(before.contains("contentthree"));
    world.write("other.doc", "a fresh one!");
    overwrite("other.doc");
    history().undo();
    EXPECT_TRUE(contents().contains(before));
}

INSTANTIATE_TEST_SUITE_P(Behind, LostSteps, testing::Bool(), [](const auto& tested) {
    return std::string(tested.param ? "AnOlderFile" : "NoFile");
});

TEST_F(KeptDocuments, TheHistoryIsOneFileThatHoldsAllWhileItIsOpen) {
    overwrite("other.doc");
    for (const char* end : {"-wal", "-shm"}) {
        EXPECT_FALSE(QFile::exists(world.path(".~history/history.db") + end)) << end;
    }
    EXPECT_EQ(QFileInfo(world.path(".~history/history.db-journal")).size(), 0);
    ASSERT_TRUE(QFile::copy(world.path(".~history/history.db"), world.path("copied.db")));
    EXPECT_EQ(test::PlainSqlite(world.path("copied.db")).rows("SELECT count(*) FROM steps"),
              QStringList("2"));
}

// One page of the file of the steps holds no more what it held: the first of that table.
void damage(const QString& file, const QString& table) {
    const int page = test::PlainSqlite(file)
                         .rows("SELECT rootpage FROM sqlite_schema WHERE name='" + table + "'")
                         .value(0)
                         .toInt();
    ASSERT_GT(page, 1);
    QFile bytes(file);
    ASSERT_TRUE(bytes.open(QIODevice::ReadWrite));
    bytes.seek(qint64{page - 1} * 4096);
    bytes.write(QByteArray(4096, 'x'));
}

// The next start does not come upon the place, and every command does.
TEST_F(KeptDocuments, DamageThatACommandMeetsIsKnownFromThenOnAndEndsByLayingTheHistoryAside) {
    const QString file = world.path(".~history/history.db");
    const auto add = [&] {
        return world.run("添加", [&] { HistoryWorld::addRow(*world.db, "甲", "甲.3"); });
    };
    world.close();
    damage(file, "mirror");
    world.open();
    world.history->mend();
    EXPECT_FALSE(history().isDamaged());
    EXPECT_NE(add().refusal, "");
    EXPECT_TRUE(history().isDamaged());
    world.restart();
    ASSERT_TRUE(history().isDamaged());
    const QString aside = history().layAside(QDateTime::currentDateTime());
    EXPECT_TRUE(QFile::exists(aside + "history.db"));
    EXPECT_FALSE(history().isDamaged());
    EXPECT_EQ(history().steps().size(), 0);
    ASSERT_TRUE(add().step);
    EXPECT_TRUE(history().undo());
}

// Neither the next start nor a command comes upon the place.
TEST_F(KeptDocuments, DamageThatAnUndoMeetsIsKnownFromThenOn) {
    ASSERT_TRUE(world.run("添加", [&] { HistoryWorld::addRow(*world.db, "甲", "甲.3"); }).step);
    world.close();
    damage(world.path(".~history/history.db"), "database_steps");
    world.open();
    world.history->mend();
    EXPECT_FALSE(history().isDamaged());
    EXPECT_THROW(history().undo(), RunTimeError);
    EXPECT_TRUE(history().isDamaged());
}

// Earlier versions wrote changes ahead, which needs memory that all programs share: those of
// another machine do not.
TEST_F(KeptDocuments, AHistoryOfAnEarlierVersionIsOneFileFromItsNextOpeningOn) {
    const QString file = world.path(".~history/history.db");
    world.close();
    test::PlainSqlite(file).rows("PRAGMA journal_mode=WAL");
    world.open();
    EXPECT_EQ(history().steps().size(), 1);
    EXPECT_EQ(test::PlainSqlite(file).rows("PRAGMA journal_mode"), QStringList("delete"));
}

TEST_F(KeptDocuments, AHistoryThatAnEarlierVersionHasOpenIsWrittenAllTheSame) {
    const QString file = world.path(".~history/history.db");
    world.close();
    test::PlainSqlite earlier(file);
    earlier.rows("PRAGMA journal_mode=WAL");
    earlier.rows("SELECT count(*) FROM steps");
    world.open();
    EXPECT_TRUE(overwrite("other.doc").step);
    EXPECT_EQ(earlier.rows("SELECT count(*) FROM steps"), QStringList("2"));
}

} // namespace
