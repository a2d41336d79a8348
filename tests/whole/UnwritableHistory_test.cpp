#include "whole/RealCommands.h"

#include "support/PlainSqlite.h"

using namespace qvnd;

namespace {

// The history was written to until the program ended; behind the start its folder is out of reach.
class UnwritableHistory : public test::RealCommands {
protected:
    UnwritableHistory() {
        EXPECT_TRUE(undo());
        planner.exit();
    }
    // The user's answer to each box about the history.
    void runWithout(desktop::Answer answer) {
        planner.messages.shown.clear();
        planner.start();
        asked.otherwise = answer;
        EXPECT_FALSE(run(&asked));
        ASSERT_EQ(asked.shown.size(), 1U);
        EXPECT_TRUE(asked.shown[0].text.startsWith("操作历史不能写入，“删除”做了就不能撤消："))
            << asked.shown[0].text.toStdString();
    }
    QString historyFolder() const { return planner.folder.path("Sys/用户模板/.~history"); }
    void putAFileInItsPlace() {
        QDir(historyFolder()).removeRecursively();
        planner.folder.write("Sys/用户模板/.~history", "in the way");
    }

    test::FakeMessageBoxes asked;
};

TEST_P(UnwritableHistory, ACommandThatTheUserDoesNotWantThenChangesNothing) {
    putAFileInItsPlace();
    runWithout(desktop::Answer::no);
    EXPECT_TRUE(wasRefused);
    test::expectSame(onDisk(), before);
}

TEST_P(UnwritableHistory, ACommandThatTheUserWantsAllTheSameIsDoneWhole) {
    putAFileInItsPlace();
    runWithout(desktop::Answer::yes);
    EXPECT_FALSE(wasRefused);
    test::expectSame(onDisk(), behind);
}

TEST_P(UnwritableHistory, AHistoryThatCannotBeReadRefusesCommandsToo) {
    QFile::remove(historyFolder() + "/history.db");
    planner.folder.write("Sys/用户模板/.~history/history.db", QByteArray(8192, 'x'));
    planner.messages.answers = {desktop::Answer::no}; // it stays where it is
    runWithout(desktop::Answer::no);
    EXPECT_TRUE(wasRefused);
    ASSERT_FALSE(planner.messages.shown.empty());
    EXPECT_TRUE(planner.messages.shown[0].text.startsWith("操作历史不能使用："));
    test::expectSame(onDisk(), before);
}

TEST_P(UnwritableHistory, ADamagedHistoryThatTheUserLaysAsideIsFollowedByANewOne) {
    const QByteArray damaged(8192, 'x');
    QFile::remove(historyFolder() + "/history.db");
    planner.folder.write("Sys/用户模板/.~history/history.db", damaged);
    planner.messages.shown.clear();
    planner.messages.answers = {desktop::Answer::yes};
    planner.start();
    ASSERT_EQ(planner.messages.shown.size(), 1U);
    EXPECT_TRUE(planner.messages.shown[0].text.contains("要把它放到一边，从现在起重新记录吗？"))
        << planner.messages.shown[0].text.toStdString();
    const QStringList aside = QDir(historyFolder()).entryList({"damaged-*"}, QDir::Dirs);
    ASSERT_EQ(aside.size(), 1);
    EXPECT_EQ(planner.folder.read("Sys/用户模板/.~history/" + aside[0] + "/history.db"), damaged);
    EXPECT_TRUE(run(&asked));
    EXPECT_TRUE(asked.shown.empty());
    test::expectSame(onDisk(), behind);
    EXPECT_TRUE(undo());
    test::expectSame(onDisk(), before);
}

TEST_P(UnwritableHistory, ACommandThatCannotBeRecordedAtItsEndIsTakenBack) {
    planner.start();
    const QString file = historyFolder() + "/history.db";
    test::PlainSqlite(file).rows(
        "CREATE TRIGGER full BEFORE INSERT ON steps BEGIN SELECT RAISE(ABORT,'full'); END");
    EXPECT_FALSE(run(&asked));
    EXPECT_TRUE(wasRefused);
    ASSERT_EQ(asked.shown.size(), 1U);
    EXPECT_TRUE(asked.shown[0].text.startsWith("“删除”没有执行，因为操作历史不能写入"))
        << asked.shown[0].text.toStdString();
    test::expectSame(onDisk(), before);
    test::PlainSqlite(file).rows("DROP TRIGGER full");
    outline::showTables(planner.state(), planner.workbench(), planner.services(), {});
    EXPECT_TRUE(run()) << "the next command is recorded again";
    test::expectSame(onDisk(), behind);
}

INSTANTIATE_TEST_SUITE_P(Each, UnwritableHistory, testing::ValuesIn(test::realCommands()),
                         [](const auto& tested) { return std::string(tested.param.label); });

} // namespace
