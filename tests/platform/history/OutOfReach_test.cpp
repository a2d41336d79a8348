#include "platform/history/HistoryWorld.h"
#include "support/TracedProcess.h"

#include <gtest/gtest.h>

#include <csignal>

using namespace qvnd;
using test::HistoryWorld;
using test::TracedProcess;

namespace {

// Two program folders beside one work space, each with settings of its own.
class TwoProgramFolders : public testing::Test {
protected:
    TwoProgramFolders() {
        folder.makeFolder("work");
        folder.write("new.doc", "new");
        folder.write("one/Sys/图片库/page.doc", "of the first");
        folder.write("two/Sys/图片库/page.doc", "of the second");
    }
    // A command of the first program that changes its own folder.
    void changeInFirst(const QString& machine = history::Places::thisMachine()) {
        HistoryWorld first(folder.path("work"), folder.path("one"), machine);
        EXPECT_TRUE(first
                        .run("改写",
                             [&] {
                                 first.files->CopyFile(folder.path("new.doc"),
                                                       folder.path("one/Sys/图片库/page.doc"),
                                                       true);
                                 const auto settings = first.create("../one/Sys/set.mdb");
                                 settings->TableDefs().Append(HistoryWorld::table("设置"));
                             })
                        .step);
    }
    // Three commands of the first program: 甲 comes with a page and with settings, whose first row
    // comes, and then a second one.
    void workInFirst() {
        HistoryWorld first(folder.path("work"), folder.path("one"));
        first.write("source.doc", "from outside");
        first.run("新建", [&] {
            first.makePlan("甲");
            first.files->CopyFile(folder.path("new.doc"), page(), true);
            first.create("../one/Sys/set.mdb")->TableDefs().Append(HistoryWorld::table("设置"));
        });
        for (const QString key : {"设置.1", "设置.2"}) {
            first.run("添加", [&] {
                HistoryWorld::addRow(*first.db, "甲", key);
                HistoryWorld::addRow(*first.workspace().OpenDatabase(settings()), "设置", key);
            });
        }
    }
    QString page() const { return folder.path("one/Sys/图片库/page.doc"); }
    QString settings() const { return folder.path("one/Sys/set.mdb"); }
    void takeFirstAway() const {
        ASSERT_TRUE(QDir().rename(folder.path("one"), folder.path("away")));
    }
    void bringFirstBack() const {
        ASSERT_TRUE(QDir().rename(folder.path("away"), folder.path("one")));
    }
    // 撤消 or 恢复 as a command of the user, who answers the question with yes.
    bool take(HistoryWorld& world,
              std::optional<history::Step> (history::History::*step)() = &history::History::undo) {
        world.leaveOut = yes();
        bool isTaken = false;
        world.run("撤消", [&] { isTaken = (*world.history.*step)().has_value(); });
        return isTaken;
    }
    history::Question yes() {
        return [this](const QString& question) {
            questions << question;
            return true;
        };
    }
    static QStringList keysIn(HistoryWorld& world) {
        return world.rowsIn(world.path("central.mdb")).filter("设置.");
    }

    test::TemporaryFolder folder{test::inMemory()};
    QStringList questions;
};

TEST_F(TwoProgramFolders, AnUndoInOneWritesIntoTheFolderOfTheOtherThatRanTheCommand) {
    changeInFirst();
    HistoryWorld second(folder.path("work"), folder.path("two"));
    ASSERT_TRUE(second.history->undo());
    EXPECT_EQ(folder.read("one/Sys/图片库/page.doc"), "of the first");
    EXPECT_FALSE(folder.exists("one/Sys/set.mdb"));
    ASSERT_TRUE(second.history->redo());
    EXPECT_EQ(folder.read("one/Sys/图片库/page.doc"), "new");
    EXPECT_TRUE(folder.exists("one/Sys/set.mdb"));
    EXPECT_EQ(folder.read("two/Sys/图片库/page.doc"), "of the second");
    EXPECT_EQ(folder.names("two/Sys"), QStringList{"图片库"});
}

TEST_F(TwoProgramFolders, AnUndoIsRefusedOnAnotherMachine) {
    changeInFirst("another machine");
    HistoryWorld second(folder.path("work"), folder.path("one"));
    try {
        second.history->undo();
        ADD_FAILURE() << "was not refused";
    } catch (const RunTimeError& failure) {
        EXPECT_EQ(failure.number(), error::pathNotFound);
        EXPECT_TRUE(QString::fromStdU16String(failure.description()).contains("另一台计算机"));
    }
    EXPECT_EQ(folder.read("one/Sys/图片库/page.doc"), "new");
    EXPECT_TRUE(folder.exists("one/Sys/set.mdb"));
}

TEST_F(TwoProgramFolders, AnUndoIsRefusedWhereTheFolderIsGone) {
    changeInFirst();
    ASSERT_TRUE(QDir().rename(folder.path("one"), folder.path("away")));
    HistoryWorld second(folder.path("work"), folder.path("two"));
    EXPECT_THROW(second.history->undo(), RunTimeError);
    EXPECT_FALSE(folder.exists("one"));
    ASSERT_TRUE(QDir().rename(folder.path("away"), folder.path("one")));
    ASSERT_TRUE(second.history->undo());
    EXPECT_EQ(folder.read("one/Sys/图片库/page.doc"), "of the first");
}

TEST_F(TwoProgramFolders, AnUndoLeavesOutAFolderThatIsGoneWhereTheUserWantsThat) {
    workInFirst();
    takeFirstAway();
    HistoryWorld second(folder.path("work"), folder.path("two"));
    ASSERT_TRUE(take(second));
    ASSERT_EQ(questions.size(), 1);
    EXPECT_TRUE(questions[0].contains(folder.path("one/Sys"))) << questions[0].toStdString();
    EXPECT_TRUE(questions[0].contains("要跳过它们，只做其余的吗？"));
    EXPECT_EQ(second.history->note(),
              "下列文件夹够不到，其中的文件没有改动：" + folder.path("one/Sys"));
    EXPECT_EQ(keysIn(second), QStringList{"3|设置.1|名设置.1"});
    EXPECT_FALSE(folder.exists("one"));
}

TEST_F(TwoProgramFolders, AnyNumberOfStepsCanBeTakenBackWithoutAFolderThatIsGone) {
    workInFirst();
    takeFirstAway();
    HistoryWorld second(folder.path("work"), folder.path("two"));
    while (take(second)) {
    }
    EXPECT_FALSE(second.state().contains("甲"));
    EXPECT_EQ(questions.size(), 3);
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(take(second, &history::History::redo));
    }
    EXPECT_EQ(keysIn(second).size(), 2);
    EXPECT_EQ(second.read("甲/甲.1.doc"), "from outside");
}

TEST_F(TwoProgramFolders, NothingIsTakenBackWhereTheUserDoesNotWantToLeaveTheFolderOut) {
    workInFirst();
    takeFirstAway();
    HistoryWorld second(folder.path("work"), folder.path("two"));
    const HistoryWorld::State before = second.state();
    second.leaveOut = [&](const QString& question) {
        questions << question;
        return false;
    };
    second.run("撤消", [&] { EXPECT_THROW(second.history->undo(), RunTimeError); });
    EXPECT_EQ(questions.size(), 1);
    EXPECT_EQ(second.state(), before);
    EXPECT_FALSE(second.history->redoable());
}

// What was undone meanwhile is still in it, so it is another state than the one that was left.
TEST_F(TwoProgramFolders, AFolderThatComesBackIsKeptAsChangedOutsideAndThenFollows) {
    workInFirst();
    takeFirstAway();
    HistoryWorld second(folder.path("work"), folder.path("two"));
    ASSERT_TRUE(take(second));
    ASSERT_TRUE(take(second));
    bringFirstBack();
    ASSERT_EQ(second.rowsIn(settings()).size(), 3);
    ASSERT_TRUE(take(second, &history::History::redo));
    EXPECT_EQ(questions.size(), 2) << "nothing is out of reach any more";
    EXPECT_EQ(second.rowsIn(settings()), (QStringList{"table 设置", "1|设置.1|名设置.1"}));
    EXPECT_TRUE(second.history->note().contains("外部改动[set.mdb]"))
        << second.history->note().toStdString();
    second.history->goTo(second.history->steps().last().id);
    EXPECT_EQ(second.rowsIn(settings()).size(), 3) << "as it came back";
    ASSERT_TRUE(second.history->undo());
    ASSERT_TRUE(second.history->undo());
    EXPECT_EQ(folder.read("one/Sys/图片库/page.doc"), "of the first");
    EXPECT_FALSE(folder.exists("one/Sys/set.mdb"));
}

#ifdef __linux__
TEST_F(TwoProgramFolders, AKilledCommandAtAFolderThatIsGoneIsFoundWithoutItWhereTheUserWantsThat) {
    folder.write("work/source.doc", "from outside");
    const auto work = [&] {
        HistoryWorld first(folder.path("work"), folder.path("one"));
        first.run("改写", [&] {
            first.makePlan("甲");
            first.files->CopyFile(folder.path("new.doc"), page(), true);
            first.create("../one/Sys/set.mdb");
            first.workspace().Settle();
            raise(SIGKILL);
        });
    };
    if (TracedProcess::run(work, 0) < 0) {
        GTEST_SKIP() << "processes cannot be traced here";
    }
    takeFirstAway();
    HistoryWorld second(folder.path("work"), folder.path("two"));
    EXPECT_THROW(second.history->mend(), RunTimeError);
    ASSERT_TRUE(second.history->mend(yes()).unfinished);
    EXPECT_TRUE(questions.last().contains(folder.path("one/Sys")))
        << questions.last().toStdString();
    ASSERT_TRUE(take(second));
    EXPECT_FALSE(second.state().contains("甲"));
    EXPECT_FALSE(folder.exists("one"));
    bringFirstBack();
    ASSERT_TRUE(second.history->redo());
    ASSERT_TRUE(second.history->undo());
    EXPECT_EQ(folder.read("one/Sys/图片库/page.doc"), "of the first") << "it was kept all the time";
}

TEST_F(TwoProgramFolders, AHalfDoneUndoAtAFolderThatIsGoneIsEndedWithoutItWhereTheUserWantsThat) {
    workInFirst();
    const QString left = folder.path("left");
    const auto undoAll = [&] {
        HistoryWorld first(folder.path("work"), folder.path("one"));
        first.history->goTo(history::beginning);
    };
    // Killed when it has noted what it is about to do.
    const auto isBegun = [&] {
        QDir(left).removeRecursively();
        test::copyWithTimes(folder.path("work"), left);
        const QStringList pending =
            test::PlainSqlite(left + "/.~history/history.db").rows("SELECT count(*) FROM pending");
        return pending.value(0).toInt() > 0;
    };
    if (TracedProcess::watch(undoAll, [&](int) { return !isBegun(); }) < 0) {
        GTEST_SKIP() << "processes cannot be traced here";
    }
    takeFirstAway();
    HistoryWorld second(folder.path("work"), folder.path("two"));
    EXPECT_THROW(second.history->mend(), RunTimeError);
    const auto found = second.history->mend(yes());
    EXPECT_TRUE(found.restored);
    EXPECT_TRUE(found.note.contains("其中的文件没有改动")) << found.note.toStdString();
    EXPECT_FALSE(second.state().contains("甲"));
    EXPECT_FALSE(folder.exists("one"));
    EXPECT_TRUE(second.history->redoable());
}
#endif

} // namespace
