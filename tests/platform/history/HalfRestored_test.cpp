#include "platform/history/HistoryWorld.h"
#include "support/TracedProcess.h"

#ifdef __linux__

#include <gtest/gtest.h>

#include <functional>
#include <vector>

using namespace qvnd;
using history::StepKind;
using test::HistoryWorld;
using test::TracedProcess;

namespace {

// An undo that was killed on its way, in a work space of its own each time.
class HalfRestored : public testing::Test {
protected:
    using State = HistoryWorld::State;
    static constexpr const char* documents[] = {"甲/甲.1.doc", "甲/甲.9.doc", "丙/丙.1.doc"};

    // What the undo takes back: a row, a document that went, one that came, and a plan.
    static void changeMuch(HistoryWorld& world) {
        world.run("换", [&] {
            HistoryWorld::addRow(*world.db, "甲", "甲.7");
            world.files->DeleteFile(world.path("甲/甲.1.doc"));
            world.files->CopyFile(world.path("甲/甲.2.doc"), world.path("甲/甲.9.doc"), true);
            world.makePlan("丙");
        });
    }
    HalfRestored() {
        folder.makeFolder("w");
        HistoryWorld world(base);
        world.write("source.doc", QByteArray(5000, 'x'));
        world.run("新建", [&] { world.makePlan("甲"); });
        before = world.state();
        changeMuch(world);
        behind = world.state();
    }
    void undo() const {
        HistoryWorld world(base);
        world.history->undo();
    }
    // The restorations that are noted in a work space.
    static int pending(const QString& space) {
        return test::PlainSqlite(space + "/.~history/history.db")
            .rows("SELECT count(*) FROM pending")
            .value(0)
            .toInt();
    }
    // What a process leaves that is killed now, while the work stands still. Only the copy may be
    // read: a second reader would take part in what the work is doing.
    const QString& leftNow() const {
        QDir(left).removeRecursively();
        test::copyWithTimes(base, left);
        return left;
    }
    // Kills it when it has noted what it is about to do; false where processes cannot be traced.
    bool killHalfWay() const {
        return TracedProcess::watch([this] { undo(); },
                                    [this](int) { return pending(leftNow()) == 0; }) >= 0;
    }
    static QString refusalOf(const std::function<void()>& action) {
        try {
            action();
        } catch (const RunTimeError& failure) {
            return QString::fromStdU16String(failure.description());
        }
        return {};
    }

    const test::TemporaryFolder folder{test::inMemory()};
    const QString base = folder.path("w");
    const QString left = folder.path("left");
    State before;
    State behind;
};

TEST_F(HalfRestored, NoUndoAndNoStepElseIsTakenOverItWhileItCannotBeEnded) {
    if (!killHalfWay()) {
        GTEST_SKIP() << "processes cannot be traced here";
    }
    HistoryWorld world(base);
    world.openDocument = world.path("甲/甲.9.doc");
    const std::vector<std::function<void()>> actions = {
        [&] { world.history->mend(); }, [&] { world.history->undo(); },
        [&] { world.history->redo(); }, [&] { world.history->goTo(history::beginning); }};
    for (const auto& action : actions) {
        const QString refusal = refusalOf(action);
        EXPECT_TRUE(refusal.startsWith("上一次撤消或恢复只做了一半，要先把它做完："))
            << refusal.toStdString();
        EXPECT_TRUE(refusal.contains("甲.9.doc”正在另一个程序中打开"));
        EXPECT_FALSE(refusal.contains("没有改动"));
        EXPECT_EQ(pending(base), 1);
    }
    world.openDocument.clear();
    EXPECT_FALSE(world.history->undo()) << "it ends the half-done one, and does no more";
    EXPECT_EQ(world.state(), before);
    EXPECT_EQ(pending(base), 0);
    ASSERT_TRUE(world.history->redo());
    EXPECT_EQ(world.state(), behind);
}

TEST_F(HalfRestored, InACommandOfTheUserIsRefusedWithTheReasonOfItsBegin) {
    if (!killHalfWay()) {
        GTEST_SKIP() << "processes cannot be traced here";
    }
    HistoryWorld world(base);
    world.openDocument = world.path("甲/甲.9.doc");
    QString refusal;
    world.run("撤消", [&] { refusal = refusalOf([&] { world.history->undo(); }); });
    EXPECT_TRUE(refusal.startsWith("上一次撤消或恢复只做了一半")) << refusal.toStdString();
    world.openDocument.clear();
    bool isTaken = true;
    world.run("撤消", [&] { isTaken = world.history->undo().has_value(); });
    EXPECT_FALSE(isTaken) << "its begin has ended the half-done one";
    EXPECT_EQ(world.state(), before);
}

// As a scanner takes them away that finds macros in them.
void removeKept(const QString& base, const QByteArray& content) {
    QDirIterator kept(base + "/.~history/kept", QDir::Files, QDirIterator::Subdirectories);
    while (kept.hasNext()) {
        QFile file(kept.next());
        if (file.open(QIODevice::ReadOnly) && file.readAll() == content) {
            file.remove();
        }
    }
}

TEST_F(HalfRestored, AContentThatIsGoneMeanwhileIsToldAndTheRestComesBack) {
    if (!killHalfWay()) {
        GTEST_SKIP() << "processes cannot be traced here";
    }
    removeKept(base, QByteArray(5000, 'x'));
    HistoryWorld world(base);
    const auto found = world.history->mend();
    EXPECT_TRUE(found.restored);
    EXPECT_EQ(found.note, "操作历史没有下列文件那时的内容，它们没有恢复：甲.1.doc");
    State expected = before;
    expected.remove(documents[0]);
    EXPECT_EQ(world.state(), expected);
    EXPECT_EQ(pending(base), 0);
}

TEST_F(HalfRestored, ADocumentThatWasTakenAwayForAContentThatIsGoneMeanwhileStays) {
    const QString overwritten = "甲/甲.2.doc";
    folder.write("other.doc", "other");
    {
        HistoryWorld world(base);
        world.run("覆盖", [&] {
            world.files->CopyFile(folder.path("other.doc"), world.path(overwritten), true);
        });
    }
    const auto isTaken = [&](int) { return QFile::exists(base + "/" + overwritten); };
    if (TracedProcess::watch([this] { undo(); }, isTaken) < 0) {
        GTEST_SKIP() << "processes cannot be traced here";
    }
    ASSERT_FALSE(QFile::exists(base + "/" + overwritten));
    removeKept(base, QByteArray(5000, 'x'));
    HistoryWorld world(base);
    const auto found = world.history->mend();
    EXPECT_TRUE(found.restored);
    EXPECT_EQ(found.note, "操作历史没有下列文件那时的内容，它们没有恢复：甲.2.doc");
    EXPECT_EQ(world.read(overwritten), "other");
    ASSERT_TRUE(world.history->redo());
    EXPECT_EQ(world.read(overwritten), "other");
}

TEST_F(HalfRestored, AStateFurtherAwayIsReachedOverIt) {
    if (!killHalfWay()) {
        GTEST_SKIP() << "processes cannot be traced here";
    }
    HistoryWorld world(base);
    world.history->goTo(history::beginning);
    EXPECT_FALSE(world.state().contains("甲"));
    EXPECT_EQ(pending(base), 0);
}

TEST_F(HalfRestored, WhatTheUserKeepsBesideADocumentStaysWhenItIsCarriedOn) {
    if (!killHalfWay()) {
        GTEST_SKIP() << "processes cannot be traced here";
    }
    // As files are named that are written half.
    folder.write("w/甲/甲.1.doc.new", "mine");
    test::PlainSqlite(base + "/.~history/history.db")
        .rows("UPDATE pending SET began='2099-01-01T00:00:00.000'");
    HistoryWorld world(base);
    ASSERT_TRUE(world.history->mend().restored);
    EXPECT_EQ(folder.read("w/甲/甲.1.doc.new"), "mine");
}

TEST_F(HalfRestored, OneThatAnEarlierVersionOfTheProgramHasNotedIsCarriedOn) {
    if (!killHalfWay()) {
        GTEST_SKIP() << "processes cannot be traced here";
    }
    test::PlainSqlite(base + "/.~history/history.db")
        .rows("DROP TABLE killed; ALTER TABLE pending DROP COLUMN began; PRAGMA user_version=1");
    HistoryWorld world(base);
    EXPECT_TRUE(world.history->mend().restored);
    EXPECT_EQ(world.state(), before);
}

// Others write to what the undo has put back and to what it was still to do.
TEST_F(HalfRestored, WhatCameMeanwhileIsKeptAsAStepBeforeItIsCarriedOn) {
    int carriedOn = 0;
    int editsKept = 0;
    const auto look = [&] {
        QStringList edited;
        leftNow();
        for (const char* name : documents) {
            if (folder.exists("left/" + QString(name))) {
                folder.write("left/" + QString(name), "mine: " + QByteArray(name));
                edited << name;
            }
        }
        test::PlainSqlite(left + "/central.mdb").rows("UPDATE 甲 SET 名称='mine' WHERE Key='甲.2'");
        HistoryWorld world(left);
        const auto found = world.history->mend();
        QMap<QString, std::int64_t> keeping; // the steps from outside, by what they keep
        for (const history::Step& step : world.history->steps()) {
            if (step.kind != StepKind::outside) {
                continue;
            }
            EXPECT_TRUE(found.note.contains(step.title)) << found.note.toStdString();
            for (const history::Change& change : world.history->changesOf(step.id)) {
                keeping[change.table.isEmpty() ? change.key : change.database] = step.id;
            }
        }
        EXPECT_TRUE(found.restored || keeping.isEmpty());
        for (const QString& name : edited) {
            const QByteArray mine = "mine: " + name.toUtf8();
            if (!found.restored) {
                EXPECT_EQ(world.read(name), mine) << "nothing is put over it";
                continue;
            }
            ASSERT_TRUE(keeping.contains(world.path(name))) << name.toStdString();
            world.history->takeOut(keeping[world.path(name)], world.path(name), world.path("out"));
            EXPECT_EQ(world.read("out"), mine);
            QFile::remove(world.path("out"));
            ++editsKept;
        }
        if (found.restored) {
            ++carriedOn;
            EXPECT_EQ(world.state(), before);
            ASSERT_TRUE(keeping.contains("central.mdb"));
            world.history->goTo(keeping["central.mdb"]);
        }
        EXPECT_TRUE(world.rowsIn(world.path("central.mdb")).contains("2|甲.2|mine"));
    };
    const int changes = TracedProcess::watch([this] { undo(); },
                                             [&](int change) {
                                                 SCOPED_TRACE(change);
                                                 look();
                                                 return !HasFailure();
                                             });
    if (changes < 0) {
        GTEST_SKIP() << "processes cannot be traced here";
    }
    EXPECT_GT(carriedOn, 5);
    EXPECT_GT(editsKept, 5);
}

} // namespace

#endif
