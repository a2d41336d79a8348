#include "platform/history/HistoryWorld.h"
#include "support/PlainSqlite.h"

#include <gtest/gtest.h>

using namespace qvnd;
using history::Limits;
using test::HistoryWorld;

namespace {

class ThinnedHistory : public testing::Test {
protected:
    ThinnedHistory() {
        world.write("source.doc", QByteArray(50000, 'x'));
        for (int i = 0; i < 12; ++i) {
            states << world.state();
            const QString plan = "P" + QString::number(i);
            world.run("新建", [&] { world.makePlan(plan); });
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
    history::Step firstStep() { return world.history->steps().first(); }
    QStringList titles() {
        QStringList found;
        for (const history::Step& step : world.history->steps()) {
            found << step.title;
        }
        return found;
    }

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

TEST_F(ThinnedHistory, ATitleOfVeryManyCommandsEndsWithAndSoOn) {
    spreadOverDays();
    const QString second = titles().at(1);
    make(1, "title", QString(90, u'长'));
    EXPECT_EQ(thin(), 8);
    EXPECT_EQ(firstStep().title, QString(90, u'长') + "、" + second + "等");
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
    EXPECT_EQ(history::KeptFiles(world.path(".~history/kept")).size(), 0);
    ASSERT_TRUE(world.history->redo());
    EXPECT_EQ(world.state(), behind);
    ASSERT_TRUE(world.history->undo());
    EXPECT_EQ(world.state(), before);
}

TEST_F(ThinnedHistory, NoMoreGoThanAreTooMuch) {
    world.run("删除", [&] { world.deletePlan("P0"); });
    world.run("删除", [&] { world.deletePlan("P1"); });
    EXPECT_EQ(thinTo(size()), 0);
    EXPECT_EQ(thinTo(size() - 1), 1);
    const qint64 wanted = size() - 60000;
    EXPECT_GT(thinTo(wanted), 1);
    EXPECT_LE(size(), wanted);
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
