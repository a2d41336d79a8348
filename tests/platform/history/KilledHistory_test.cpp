#include "platform/history/HistoryWorld.h"
#include "platform/word/docfile/container/OutputFile.h"
#include "support/TracedProcess.h"

#ifdef __linux__

#include <gtest/gtest.h>

#include <filesystem>

using namespace qvnd;
using test::HistoryWorld;
using test::TracedProcess;

namespace {

// A work space in three states: 甲 alone; then 乙 made; and what a command makes of it.
class KilledHistory : public testing::TestWithParam<int> {
protected:
    using State = HistoryWorld::State;
    using Command = std::function<void(HistoryWorld&)>;

    static void prepare(const QString& base) {
        HistoryWorld world(base);
        world.write("source.doc", QByteArray(20000, 'x'));
        world.run("新建", [&] { world.makePlan("甲"); });
        world.run("新建", [&] { world.makePlan("乙"); });
    }
    static State stateIn(const QString& base) { return HistoryWorld(base).state(); }

    // A plan goes, a row and a file of another one change, a third one comes.
    static void changeMuch(HistoryWorld& world) {
        world.run("换", [&] {
            world.deletePlan("乙");
            HistoryWorld::addRow(*world.db, "甲", "甲.7");
            world.files->DeleteFile(world.path("甲/甲.1.doc"));
            world.makePlan("丙");
        });
    }

    // A file whose time is another one counts as changed outside.
    static void copyWithTimes(const std::filesystem::path& from, const std::filesystem::path& to) {
        namespace fs = std::filesystem;
        fs::copy(from, to, fs::copy_options::recursive);
        for (const auto& entry : fs::recursive_directory_iterator(from)) {
            fs::last_write_time(to / entry.path().lexically_relative(from),
                                fs::last_write_time(entry.path()));
        }
    }
    // Kills the command before each change of a file in turn, or before one of `stride`; `check`
    // sees the folder behind it.
    void killEverywhere(const Command& before, const Command& command,
                        const std::function<void(const QString&)>& check, int stride = 1) {
        const test::TemporaryFolder original(test::inMemory());
        prepare(original.path());
        {
            HistoryWorld world(original.path());
            before(world);
        }
        for (int deadly = 1;; deadly += stride) {
            const test::TemporaryFolder folder(test::inMemory());
            const QString base = folder.path("w");
            copyWithTimes(original.path().toStdString(), base.toStdString());
            const int changes = TracedProcess::run(
                [&] {
                    HistoryWorld world(base);
                    command(world);
                },
                deadly);
            if (changes < 0) {
                GTEST_SKIP() << "processes cannot be traced here";
            }
            SCOPED_TRACE("killed before change " + std::to_string(deadly));
            check(base);
            if (changes < deadly - 1 || ::testing::Test::HasFailure()) {
                EXPECT_GT(deadly, 20);
                return;
            }
        }
    }
    // The state that an undisturbed run of the command leads to.
    static State stateBehind(const Command& before, const Command& command) {
        const test::TemporaryFolder folder(test::inMemory());
        prepare(folder.path());
        HistoryWorld world(folder.path());
        before(world);
        command(world);
        return world.state();
    }
};

void nothing(HistoryWorld&) {}
void undo(HistoryWorld& world) { world.history->undo(); }
void redo(HistoryWorld& world) { world.history->redo(); }

TEST_F(KilledHistory, ACommandKilledAnywhereIsFoundAndOneUndoLeadsToBeforeIt) {
    const State before = stateBehind(nothing, nothing);
    const State behind = stateBehind(nothing, changeMuch);
    int unfinished = 0;
    killEverywhere(nothing, changeMuch, [&](const QString& base) {
        HistoryWorld world(base);
        const auto found = world.history->mend();
        if (found.unfinished) {
            ++unfinished;
            EXPECT_EQ(found.unfinished->kind, history::StepKind::unfinished);
            ASSERT_TRUE(world.history->undo());
            EXPECT_EQ(world.state(), before);
        } else if (world.state() != before) {
            EXPECT_EQ(world.state(), behind);
            world.history->undo();
            EXPECT_EQ(world.state(), before);
        }
    });
    EXPECT_GT(unfinished, 10);
}

// The kept copy of a document that is written in place is half when the process dies over it; the
// document itself is not touched then.
TEST_F(KilledHistory, ADocumentThatIsWrittenInPlaceKilledAnywhereComesBackWhole) {
    const QByteArray text(300000, 'a');
    const auto make = [&](HistoryWorld& world) { world.write("甲/甲.1.doc", text); };
    const auto edit = [](HistoryWorld& world) {
        world.run("插入", [&] {
            const auto folder = word::realOutputFolder();
            const auto file = folder->openForUpdate(files::toPath(world.path("甲/甲.1.doc")));
            const std::uint8_t bytes[] = {'X', 'Y'};
            file->writeAt(0, bytes);
            file->close();
        });
    };
    int undone = 0;
    killEverywhere(make, edit, [&](const QString& base) {
        HistoryWorld world(base);
        world.history->mend();
        const QByteArray now = world.read("甲/甲.1.doc");
        EXPECT_EQ(now.size(), text.size());
        if (world.history->undoable()->title.startsWith("插入")) {
            ++undone;
            world.history->undo();
        }
        EXPECT_TRUE(world.read("甲/甲.1.doc") == text);
    });
    EXPECT_GT(undone, 1);
}

// Nobody has asked for what a start or an exit does.
TEST_F(KilledHistory, AStartOrAnExitKilledAnywhereLeavesTheStateBeforeItAndNoStep) {
    const State before = stateBehind(nothing, nothing);
    for (const QString& caption : {history::caption::start, history::caption::exit}) {
        int killed = 0;
        const auto change = [&](HistoryWorld& world) {
            world.run(caption, [&] {
                world.deletePlan("乙");
                world.makePlan("丙");
            });
        };
        const auto check = [&](const QString& base) {
            HistoryWorld world(base);
            const auto found = world.history->mend();
            EXPECT_FALSE(found.unfinished);
            if (world.history->steps().size() == 2) {
                EXPECT_EQ(world.state(), before);
                ++killed;
            }
            EXPECT_TRUE(!found.exitKilled || caption == history::caption::exit);
        };
        killEverywhere(nothing, change, check,
                       qEnvironmentVariableIsSet("QVND_KILL_EVERYWHERE") ? 1 : 11);
        EXPECT_GT(killed, 5);
    }
}

// A plan whose folder had gone when its deletion was killed is forgotten by the next start.
TEST_F(KilledHistory, WhatTheStartDoesBehindAKilledCommandIsTakenBackWithIt) {
    const test::TemporaryFolder folder(test::inMemory());
    const QString base = folder.path("w");
    folder.makeFolder("w");
    prepare(base);
    const State before = stateIn(base);
    const int changes = TracedProcess::run(
        [&] {
            HistoryWorld killed(base);
            killed.run("删除", [&] {
                killed.files->DeleteFolder(killed.path("乙"), false);
                raise(SIGKILL);
            });
        },
        0);
    if (changes < 0) {
        GTEST_SKIP() << "processes cannot be traced here";
    }
    HistoryWorld world(base);
    ASSERT_TRUE(world.history->mend().unfinished);
    const auto start =
        world.run(history::caption::start, [&] { world.db->TableDefs().Delete("乙"); });
    const State behind = world.state();
    ASSERT_TRUE(start.step);
    EXPECT_EQ(start.step->kind, history::StepKind::unfinished);
    EXPECT_TRUE(start.step->title.startsWith("删除"));
    EXPECT_EQ(world.history->steps().size(), 3);
    ASSERT_TRUE(world.history->undo());
    EXPECT_EQ(world.state(), before);
    ASSERT_TRUE(world.history->redo());
    EXPECT_EQ(world.state(), behind);
    world.run("新建", [&] { world.makePlan("丙"); });
    world.run(history::caption::start, [&] { HistoryWorld::addRow(*world.db, "甲", "甲.8"); });
    EXPECT_EQ(world.history->steps().size(), 5) << "behind another command a start is its own step";
}

// Such as those on a stick that was pulled out and got another drive.
TEST_F(KilledHistory, ACommandIsFoundWhereTheFoldersWereMovedMeanwhile) {
    const test::TemporaryFolder folder(test::inMemory());
    folder.makeFolder("w");
    prepare(folder.path("w"));
    const State before = stateIn(folder.path("w"));
    const int changes = TracedProcess::run(
        [&] {
            HistoryWorld killed(folder.path("w"));
            changeMuch(killed);
        },
        40);
    if (changes < 0) {
        GTEST_SKIP() << "processes cannot be traced here";
    }
    ASSERT_TRUE(QDir().rename(folder.path("w"), folder.path("moved")));
    HistoryWorld world(folder.path("moved"));
    ASSERT_TRUE(world.history->mend().unfinished);
    ASSERT_TRUE(world.history->undo());
    EXPECT_EQ(world.state(), before);
    EXPECT_FALSE(QFile::exists(folder.path("w")));
}

// Another program goes on with the work space: its next command finds what was left.
TEST_F(KilledHistory, ACommandOfAnotherProgramIsFoundByTheNextCommandOfThisOne) {
    const test::TemporaryFolder folder(test::inMemory());
    const QString base = folder.path("w");
    folder.makeFolder("w");
    prepare(base);
    const State before = stateIn(base);
    const int changes = TracedProcess::run(
        [&] {
            HistoryWorld other(base);
            changeMuch(other);
        },
        40);
    if (changes < 0) {
        GTEST_SKIP() << "processes cannot be traced here";
    }
    HistoryWorld world(base);
    const auto found = world.history->begin({"添加", "甲", {}, {}, {}, {}, {}});
    ASSERT_TRUE(found.unfinished);
    HistoryWorld::addRow(*world.db, "甲", "甲.8");
    ASSERT_TRUE(world.history->finish({}).step);
    EXPECT_EQ(world.history->undo()->title, "添加[名甲.8]");
    EXPECT_EQ(world.history->undo()->id, found.unfinished->id);
    EXPECT_EQ(world.state(), before);
}

TEST_F(KilledHistory, AnUndoKilledAnywhereLeavesEitherStateWhole) {
    const State before = stateBehind(nothing, nothing);
    const State behind = stateBehind(nothing, changeMuch);
    int restored = 0;
    killEverywhere(changeMuch, undo, [&](const QString& base) {
        HistoryWorld world(base);
        const auto found = world.history->mend();
        restored += found.restored;
        const State now = world.state();
        EXPECT_EQ(now, world.history->redoable() ? before : behind);
        EXPECT_TRUE(!found.restored || now == before);
    });
    EXPECT_GT(restored, 10);
}

TEST_F(KilledHistory, ARedoKilledAnywhereLeavesEitherStateWhole) {
    const State before = stateBehind(nothing, nothing);
    const State behind = stateBehind(nothing, changeMuch);
    const auto changeAndUndo = [](HistoryWorld& world) {
        changeMuch(world);
        undo(world);
    };
    int restored = 0;
    killEverywhere(changeAndUndo, redo, [&](const QString& base) {
        HistoryWorld world(base);
        const auto found = world.history->mend();
        restored += found.restored;
        EXPECT_EQ(world.state(), world.history->redoable() ? before : behind);
    });
    EXPECT_GT(restored, 10);
}

} // namespace

#endif
