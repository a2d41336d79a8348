#include "platform/history/HistoryWorld.h"
#include "platform/history/PageDelta.h"
#include "support/PlainSqlite.h"

#include <gtest/gtest.h>

#include <random>

using namespace qvnd;
using history::Limits;
using test::HistoryWorld;

namespace {

class ThinnedHistory : public testing::Test {
protected:
    ThinnedHistory() {
        for (const char* name : {"source.doc", "even.doc", "odd.doc"}) {
            world.write(name, QByteArray(50000, name[0]));
        }
        for (int i = 0; i < 12; ++i) {
            states << world.state();
            world.run("新建", [&] {
                world.makePlan("P" + QString::number(i));
                world.files->CopyFile(world.path(i % 2 == 0 ? "even.doc" : "odd.doc"),
                                      world.path("book.doc"), true);
            });
        }
    }
    // Three steps a day, the last one today.
    void spreadOverDays() {
        world.close();
        test::PlainSqlite file(world.path(".~history/history.db"));
        for (int i = 1; i <= 12; ++i) {
            const QString time = now.addDays(-40 + (i - 1) / 3).toString(Qt::ISODateWithMs);
            file.rows(QString("UPDATE steps SET time='%1' WHERE id=%2").arg(time).arg(i));
        }
        world.open();
        exitOnTheDaysBefore();
    }
    // Exits of the program on other days tell that the clock is right.
    void exitOnTheDaysBefore() {
        for (const int days : {2, 1}) {
            EXPECT_EQ(world.history->thin({}, now.addDays(-days)), 0);
        }
    }
    // Sets a field of a step, as if its command had been another one.
    void make(int step, const QString& field, const QString& value) {
        world.close();
        test::PlainSqlite(world.path(".~history/history.db"))
            .rows(QString("UPDATE steps SET %1='%2' WHERE id=%3").arg(field, value).arg(step));
        world.open();
    }
    int thin() { return world.history->thin({std::chrono::days{30}, Limits{}.bytes, 0}, now); }
    // Bytes that the history takes.
    qint64 size() const {
        const QStringList bytes = test::PlainSqlite(world.path(".~history/history.db"))
                                      .rows("SELECT ((SELECT * FROM pragma_page_count()) - "
                                            "(SELECT * FROM pragma_freelist_count())) * "
                                            "(SELECT * FROM pragma_page_size())");
        return history::KeptFiles(world.path(".~history/kept")).size() +
               bytes.value(0).toLongLong();
    }
    int thinTo(qint64 bytes) { return world.history->thin({std::chrono::days{30}, bytes, 0}, now); }
    // A row of a text that does not compress takes the place of the one before.
    void writeNoise(unsigned seed) {
        std::mt19937 random(seed);
        QString noise;
        while (noise.size() < 200000) {
            noise += QString::number(random(), 36);
        }
        world.db->Execute("Delete * from P0 where Key='P0.x'");
        const auto rows = world.db->OpenRecordset("Select * from P0");
        rows->AddNew();
        rows->Set(u"Key", QString("P0.x"));
        rows->Set(u"名称", noise);
        rows->Update();
    }
    history::Step firstStep() { return world.history->steps().first(); }
    QStringList titles() {
        QStringList found;
        for (const history::Step& step : world.history->steps()) {
            found << step.title;
        }
        return found;
    }

    static constexpr qint64 books = qint64{11} * 50000; // bytes that all steps but the first keep
    const QDateTime now = QDateTime::currentDateTime();
    HistoryWorld world;
    QList<HistoryWorld::State> states;
};

TEST_F(ThinnedHistory, StepsOfTheLastDaysStay) {
    EXPECT_EQ(world.history->thin({std::chrono::days{30}, Limits{}.bytes, 0}, now), 0);
    EXPECT_EQ(world.history->steps().size(), 12);
}

TEST_F(ThinnedHistory, OlderStepsAreJoinedToOneADayAndLeadBackAllTheSame) {
    spreadOverDays();
    const HistoryWorld::State last = world.state();
    EXPECT_EQ(world.history->thin({std::chrono::days{30}, Limits{}.bytes, 0}, now), 8);
    EXPECT_EQ(world.history->steps().size(), 4);
    for (const int state : {9, 6, 3, 0}) {
        ASSERT_TRUE(world.history->undo()) << state;
        EXPECT_EQ(world.state(), states[state]) << state;
    }
    for (int i = 0; i < 4; ++i) {
        ASSERT_TRUE(world.history->redo());
    }
    EXPECT_EQ(world.state(), last);
}

// Of a clock that was set wrong, or whose battery is empty.
TEST_F(ThinnedHistory, ExitsWithTheClockAYearAheadJoinNothing) {
    exitOnTheDaysBefore();
    const QDateTime wrong = now.addYears(1);
    for (const QDateTime& time : {wrong, wrong.addSecs(3600), wrong.addDays(1), now}) {
        EXPECT_EQ(world.history->thin({std::chrono::days{30}, Limits{}.bytes, 0}, time), 0)
            << time.toString().toStdString();
    }
    EXPECT_EQ(world.history->steps().size(), 12);
}

TEST_F(ThinnedHistory, StepsThatAreOldOnThreeDaysOfExitsAreJoined) {
    const auto thinBehind = [&](int days) {
        world.close();
        world.open();
        return world.history->thin({std::chrono::days{30}, Limits{}.bytes, 0}, now.addDays(days));
    };
    EXPECT_EQ(thinBehind(31), 0);
    EXPECT_EQ(thinBehind(31), 0) << "the same day";
    EXPECT_EQ(thinBehind(40), 0);
    EXPECT_EQ(thinBehind(50), 11);
}

TEST_F(ThinnedHistory, AJoinedStepKeepsTheWordsAndPlansOfAllCommands) {
    spreadOverDays();
    make(1, "plan", "甲");
    make(1, "note", "同时移除了 1 个节点：章");
    make(1, "title", "删除[人、机、料]");
    make(2, "note", "覆盖了 1 个文件：文.doc");
    make(2, "title", "添加[文]");
    make(2, "plan", "丙");
    for (const auto& [field, value] : {std::pair("kind", "3"), std::pair("minor", "1"),
                                       std::pair("plan", "乙"), std::pair("title", "退出")}) {
        make(3, field, value);
    }
    EXPECT_EQ(thin(), 8);
    const history::Step joined = firstStep();
    EXPECT_EQ(joined.title, "删除[人、机、料]、添加[文]");
    EXPECT_EQ(joined.note, "同时移除了 1 个节点：章\n覆盖了 1 个文件：文.doc");
    EXPECT_EQ(joined.plans(), (QStringList{"甲", "丙"}));
    EXPECT_EQ(joined.kind, history::StepKind::command);
    EXPECT_FALSE(joined.isMinor);
}

TEST_F(ThinnedHistory, ATitleOfVeryManyCommandsEndsWithAndSoOnAndNoneIsLost) {
    spreadOverDays();
    const QString first(90, u'长');
    const QString second = titles().at(1);
    const QString third = "导出[只有标题里有的\n名称]";
    make(1, "title", first);
    make(3, "title", third);
    EXPECT_EQ(thin(), 8);
    const history::Step joined = firstStep();
    EXPECT_EQ(joined.title, first + "、" + second + "等");
    EXPECT_EQ(joined.titles(), (QStringList{first, second, "导出[只有标题里有的 名称]"}));
    const auto found = world.history->stepsWith("只有标题里有的");
    ASSERT_EQ(found.size(), 1);
    EXPECT_EQ(found.first().id, joined.id);
}

// As when the last commands did not reach back so far at an earlier exit.
TEST_F(ThinnedHistory, ADayThatIsJoinedInTwoGoesIsAsOneThatIsJoinedAtOnce) {
    spreadOverDays();
    make(1, "plan", "甲");
    make(2, "plan", "乙");
    make(3, "plan", "甲");
    make(3, "note", "覆盖了 1 个文件：文.doc");
    const QStringList all = titles().mid(0, 3);
    EXPECT_EQ(world.history->thin({std::chrono::days{30}, Limits{}.bytes, 10}, now), 1);
    EXPECT_EQ(world.history->thin({std::chrono::days{30}, Limits{}.bytes, 9}, now), 1);
    const history::Step joined = firstStep();
    EXPECT_EQ(joined.titles(), all);
    EXPECT_EQ(joined.plans(), (QStringList{"甲", "乙"}));
    EXPECT_EQ(joined.note, "覆盖了 1 个文件：文.doc");
    while (world.history->undo()) {
    }
    EXPECT_EQ(world.state(), states[0]);
}

TEST(JoinedDelta, LeadsFromTheFirstImageToTheLastAndBack) {
    using history::Direction;
    const QByteArray page(4096, 'a');
    const QByteArray other(4096, 'b');
    const QList<QByteArray> images{{}, page + page, other + page + page, page + other};
    QList<QByteArray> deltas;
    for (qsizetype i = 1; i < images.size(); ++i) {
        deltas << history::deltaOf(images[i - 1], images[i]);
    }
    const QByteArray all = history::joinedDelta(deltas);
    EXPECT_EQ(history::applied(all, images.first(), Direction::forward), images.last());
    EXPECT_EQ(history::applied(all, images.last(), Direction::back), images.first());
    const QByteArray there = history::deltaOf(images[1], images[3]);
    const QByteArray back = history::deltaOf(images[3], images[1]);
    EXPECT_FALSE(there.isEmpty());
    EXPECT_EQ(history::joinedDelta({there, back}), QByteArray()) << "nothing has changed";
}

// It answers for the state behind it, commands for the one before them.
TEST_F(ThinnedHistory, WhatCameFromOutsideIsJoinedWithNothing) {
    spreadOverDays();
    make(2, "kind", "2");
    EXPECT_EQ(thin(), 6);
    EXPECT_EQ(world.history->step(2)->kind, history::StepKind::outside);
    EXPECT_EQ(world.history->steps().size(), 6);
}

TEST_F(ThinnedHistory, AKilledCommandIsJoinedWithNothing) {
    spreadOverDays();
    make(2, "kind", "1");
    EXPECT_EQ(thin(), 6);
    EXPECT_EQ(world.history->step(2)->kind, history::StepKind::unfinished);
}

// Behind an undo they stand at their paths and are kept besides.
TEST_F(ThinnedHistory, ContentsThatAreKeptTwiceGoBeforeAnyStep) {
    const HistoryWorld::State before = world.state();
    world.run("删除", [&] { world.deletePlan("P0"); });
    const HistoryWorld::State behind = world.state();
    world.history->undo();
    EXPECT_EQ(thinTo(size() - 1), 0);
    EXPECT_EQ(history::KeptFiles(world.path(".~history/kept")).size(), books);
    ASSERT_TRUE(world.history->redo());
    EXPECT_EQ(world.state(), behind);
    ASSERT_TRUE(world.history->undo());
    EXPECT_EQ(world.state(), before);
}

TEST_F(ThinnedHistory, NoMoreGoThanAreTooMuch) {
    world.run("删除", [&] { world.deletePlan("P0"); });
    world.run("删除", [&] { world.deletePlan("P1"); });
    EXPECT_EQ(thinTo(size()), 0);
    EXPECT_EQ(thinTo(size() - 1), 0)
        << "a database lies with the folder, and is known by its pages";
    EXPECT_EQ(thinTo(size() - 1), 1);
    const qint64 wanted = size() - 60000;
    EXPECT_GT(thinTo(wanted), 1);
    EXPECT_LE(size(), wanted);
}

// A deletion among the last commands.
TEST_F(ThinnedHistory, NoStepGoesInVainWhereThoseThatStayAreTooMuchByThemselves) {
    world.run("删除", [&] { world.deletePlan("P0"); });
    const qint64 ofTheDeletion = 2 * 50000;
    const auto thinAllButOne = [&] {
        return world.history->thin({std::chrono::days{30}, ofTheDeletion, 1}, now);
    };
    EXPECT_EQ(thinAllButOne(), 12) << "up to the last one that keeps a file of its own";
    for (int i = 0; i < 3; ++i) {
        world.run("添加", [&] { HistoryWorld::addRow(*world.db, "P1", QString::number(i)); });
    }
    world.run("删除", [&] { world.deletePlan("P1"); });
    EXPECT_EQ(thinAllButOne(), 1) << "the first deletion";
    EXPECT_EQ(thinAllButOne(), 0);
    EXPECT_EQ(world.history->steps().size(), 4);
}

// The deletion was taken back; a document of it was overwritten then.
TEST_F(ThinnedHistory, OfAStepThatGoesOnlyWhatOthersNeedStaysKept) {
    world.run("删除", [&] { world.deletePlan("P0"); });
    world.history->undo();
    world.run("覆盖", [&] {
        world.files->CopyFile(world.path("odd.doc"), world.path("P0/P0.1.doc"), true);
    });
    const history::KeptFiles kept(world.path(".~history/kept"));
    EXPECT_GT(kept.size(), books + 2 * 50000);
    EXPECT_EQ(thinTo(size() - 1), 0);
    EXPECT_EQ(kept.size(), books + 50000);
    EXPECT_EQ(world.history->undo()->title, "覆盖[P0.1.doc]");
    EXPECT_EQ(world.read("P0/P0.1.doc"), QByteArray(50000, 's'));
}

TEST_F(ThinnedHistory, TheFileIsMadeSmallerWhereAQuarterOfItIsFree) {
    const auto pages = [&](const char* which) {
        return test::PlainSqlite(world.path(".~history/history.db"))
            .rows(QString("PRAGMA ") + which)
            .value(0)
            .toInt();
    };
    for (unsigned i = 0; i < 8; ++i) {
        world.run("改写", [&] { writeNoise(i); });
    }
    EXPECT_EQ(thinTo(size() - 1), 1);
    EXPECT_GT(pages("freelist_count"), 0);
    const int before = pages("page_count");
    EXPECT_GT(thinTo(size() * 2 / 3), 1);
    EXPECT_EQ(pages("freelist_count"), 0);
    EXPECT_LT(4 * pages("page_count"), 3 * before);
}

// A full disk, or another program, may have stood in the way at the exit before.
TEST_F(ThinnedHistory, RoomThatCouldNotBeGivenBackIsGivenBackByTheNext) {
    test::PlainSqlite file(world.path(".~history/history.db"));
    file.rows("CREATE TABLE gone AS SELECT zeroblob(9000000) AS bytes; DROP TABLE gone");
    ASSERT_NE(file.rows("PRAGMA freelist_count"), QStringList("0"));
    EXPECT_EQ(thin(), 0);
    EXPECT_EQ(file.rows("PRAGMA freelist_count"), QStringList("0"));
}

TEST_F(ThinnedHistory, TheLastStepsStayHoweverOldTheyAre) {
    spreadOverDays();
    EXPECT_EQ(world.history->thin({std::chrono::days{30}, 0, 12}, now), 0);
    EXPECT_EQ(world.history->steps().size(), 12);
}

TEST_F(ThinnedHistory, TheOldestStepsGoWhenTooMuchIsKept) {
    EXPECT_EQ(world.history->thin({std::chrono::days{30}, 0, 5}, now), 7);
    for (int i = 11; i >= 7; --i) {
        ASSERT_TRUE(world.history->undo());
        EXPECT_EQ(world.state(), states[i]);
    }
    EXPECT_FALSE(world.history->undo());
}

// The work space stands far back: what is to be done again builds on every step since the first.
TEST_F(ThinnedHistory, WhatIsUndoneStaysWholeWhenTooMuchIsKept) {
    const HistoryWorld::State last = world.state();
    for (int i = 0; i < 10; ++i) {
        world.history->undo();
    }
    EXPECT_EQ(world.history->thin({std::chrono::days{30}, 0, 5}, now), 2);
    EXPECT_EQ(world.history->head(), history::beginning);
    EXPECT_EQ(world.state(), states[2]);
    while (world.history->redo()) {
    }
    EXPECT_EQ(world.state(), last);
    while (world.history->undo()) {
    }
    EXPECT_EQ(world.state(), states[2]);
}

TEST_F(ThinnedHistory, ABranchThatWasLeftGoesFromItsEnd) {
    for (int i = 0; i < 12; ++i) {
        world.history->undo();
    }
    world.run("新建", [&] { world.makePlan("Q"); });
    const HistoryWorld::State behind = world.state();
    world.history->thin({std::chrono::days{30}, 0, 1}, now);
    ASSERT_EQ(world.history->steps().size(), 1);
    EXPECT_EQ(world.state(), behind);
    ASSERT_TRUE(world.history->undo());
    EXPECT_EQ(world.state(), states[0]);
}

// Another program on the same history, which thins at its end.
class OtherProgram {
public:
    explicit OtherProgram(const HistoryWorld& world)
        : history_(world.path(".~history"), history::Places(world.path("")), engine_.Workspaces(0),
                   files_, "另一个") {}
    int thin(const QDateTime& now) {
        return history_.thin({std::chrono::days{30}, Limits{}.bytes, 0}, now);
    }

private:
    jet::DBEngine engine_;
    files::DiskFileSystem files_;
    history::History history_;
};

TEST_F(ThinnedHistory, WhatACommandOfAnotherProgramHasKeptSoFarStays) {
    spreadOverDays();
    const HistoryWorld::State before = world.state();
    world.history->begin({"删除", "P11", {}, {}, {}, {}, {}});
    world.deletePlan("P11");
    EXPECT_EQ(OtherProgram(world).thin(now), 0);
    world.history->finish({});
    ASSERT_TRUE(world.history->undo());
    EXPECT_EQ(world.state(), before);
    EXPECT_EQ(OtherProgram(world).thin(now), 8);
}

TEST(HistoryLimits, AreThirtyDaysTwoGigabytesAndFiftyCommands) {
    EXPECT_EQ(Limits{}.whole, std::chrono::days{30});
    EXPECT_EQ(Limits{}.bytes, 2147483648LL);
    EXPECT_EQ(Limits{}.least, 50);
}

} // namespace
