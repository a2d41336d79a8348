#pragma once

#include "platform/history/HistoryWorld.h"
#include "support/TracedProcess.h"

#ifdef __linux__

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include <functional>
#include <string>

namespace qvnd::test {

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

    // Kills a process that changes much when a document has gone; false where none can be traced.
    static bool killAmidChanges(const QString& base) {
        return TracedProcess::watch(
                   [&] {
                       HistoryWorld killed(base);
                       changeMuch(killed);
                   },
                   [&](int) { return QFile::exists(base + "/甲/甲.1.doc"); }) >= 0;
    }

    // Has the command killed before each change of a file, or one of `stride`: `check` sees the
    // folder as it then is.
    void killEverywhere(const Command& before, const Command& command,
                        const std::function<void(const QString&)>& check, int stride = 1) {
        const test::TemporaryFolder folder(test::inMemory());
        const QString base = folder.path("w");
        const QString left = folder.path("left");
        folder.makeFolder("w");
        prepare(base);
        {
            HistoryWorld world(base);
            before(world);
        }
        const auto lookAt = [&](int change) {
            SCOPED_TRACE("killed before change " + std::to_string(change));
            test::copyWithTimes(base, left);
            check(left);
            QDir(left).removeRecursively();
            return !HasFailure();
        };
        const int changes = TracedProcess::watch(
            [&] {
                HistoryWorld world(base);
                command(world);
            },
            [&](int change) { return change % stride != 0 || lookAt(change); });
        if (changes < 0) {
            GTEST_SKIP() << "processes cannot be traced here";
        }
        lookAt(changes + 1);
        EXPECT_GT(changes, 20);
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

inline void nothing(HistoryWorld&) {}

} // namespace qvnd::test

#endif
