#include "support/JetStore.h"

#ifdef __unix__

#include <csignal>
#include <cstdlib>
#include <functional>
#include <sys/wait.h>
#include <unistd.h>

namespace qvnd::jet {

namespace {

// Another process that works on a store and is killed without warning. It reports each completed
// step by a byte.
class Victim {
public:
    using Work = std::function<void(const std::function<void()>& completed)>;

    explicit Victim(const Work& work) {
        int ends[2];
        if (pipe(ends) != 0) {
            std::abort();
        }
        process_ = fork();
        if (process_ == 0) {
            close(ends[0]);
            work([&] {
                if (write(ends[1], "x", 1) != 1) {
                    _exit(1);
                }
            });
            _exit(0);
        }
        close(ends[1]);
        reports_ = ends[0];
    }

    // Waits for so many more completed steps; false when the process ended before.
    bool waitFor(int steps) {
        char byte = 0;
        for (int i = 0; i < steps; ++i) {
            if (read(reports_, &byte, 1) != 1) {
                return false;
            }
            ++completed_;
        }
        return true;
    }

    // Kills it and counts what it had reported by then.
    int kill() {
        ::kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
        char byte = 0;
        while (read(reports_, &byte, 1) == 1) {
            ++completed_;
        }
        close(reports_);
        return completed_;
    }

private:
    pid_t process_ = -1;
    int reports_ = -1;
    int completed_ = 0;
};

} // namespace

class KilledProcess : public test::JetStore {
protected:
    // Every process opens its own store; the fixture's is closed meanwhile.
    void prepare(const QStringList& keys) {
        const auto db = create(u"a.mdb"_qs);
        db->TableDefs().Append(outlineTable(u"T"_qs));
        addRows(*db, u"T"_qs, keys);
        db->Close();
    }
    QStringList survivors() {
        const auto db = open(u"a.mdb"_qs);
        QStringList rows = rowsOf(*db, u"select Key from T"_qs);
        db->Close();
        EXPECT_EQ(QDir(folder_.path()).entryList({u"a.mdb*"_qs}, QDir::Files),
                  QStringList{u"a.mdb"_qs});
        return rows;
    }
    // Lets the victim go on for a while that differs from round to round.
    static void wait(int round) { usleep(static_cast<useconds_t>(round * 1300 % 9000)); }

    static constexpr int rounds = 10;
};

TEST_F(KilledProcess, EveryRowWhoseUpdateReturnedIsThere) {
    prepare({});
    int reported = 0;
    for (int round = 1; round <= rounds; ++round) {
        Victim victim([&](const std::function<void()>& completed) {
            DBEngine engine;
            const auto db = engine.Workspaces(0).OpenDatabase(pathOf(u"a.mdb"_qs));
            for (int i = 0;; ++i) {
                addRows(*db, u"T"_qs, {u"%1.%2"_qs.arg(round).arg(i)});
                completed();
            }
        });
        ASSERT_TRUE(victim.waitFor(3));
        wait(round);
        reported += victim.kill();
        EXPECT_GE(survivors().size(), reported);
        reported = static_cast<int>(survivors().size());
    }
}

TEST_F(KilledProcess, EveryRunOfRowsWhoseRecordsetWasClosedIsThereWhole) {
    constexpr int rowsInRun = 40;
    prepare({});
    for (int round = 1; round <= rounds; ++round) {
        const auto before = static_cast<int>(survivors().size());
        Victim victim([&](const std::function<void()>& completed) {
            DBEngine engine;
            const auto db = engine.Workspaces(0).OpenDatabase(pathOf(u"a.mdb"_qs));
            for (int run = 0;; ++run) {
                QStringList keys;
                for (int i = 0; i < rowsInRun; ++i) {
                    keys << u"%1.%2.%3"_qs.arg(round).arg(run).arg(i);
                }
                addRows(*db, u"T"_qs, keys);
                completed();
            }
        });
        ASSERT_TRUE(victim.waitFor(2));
        wait(round);
        const int runs = victim.kill();
        EXPECT_GE(survivors().size(), before + runs * rowsInRun);
    }
}

TEST_F(KilledProcess, ATransactionIsThereWholeOrNotAtAll) {
    QStringList keys;
    for (int i = 0; i < 300; ++i) {
        keys << QString::number(i);
    }
    prepare(keys);
    for (int round = 1; round <= rounds; ++round) {
        Victim victim([&](const std::function<void()>& completed) {
            DBEngine engine;
            Workspace& workspace = engine.Workspaces(0);
            const auto db = workspace.OpenDatabase(pathOf(u"a.mdb"_qs));
            for (int i = 0;; ++i) {
                workspace.BeginTrans();
                db->Execute(u"Delete * from T"_qs);
                addRows(*db, u"T"_qs, keys);
                workspace.CommitTrans();
                completed();
            }
        });
        ASSERT_TRUE(victim.waitFor(1));
        wait(round);
        victim.kill();
        EXPECT_EQ(survivors(), keys);
    }
}

TEST_F(KilledProcess, AHotJournalIsPlayedBackByTheNextOpening) {
    prepare({u"T"_qs});
    Victim victim([&](const std::function<void()>& completed) {
        DBEngine engine;
        Workspace& workspace = engine.Workspaces(0);
        const auto db = workspace.OpenDatabase(pathOf(u"a.mdb"_qs));
        workspace.BeginTrans();
        db->Execute(u"Delete * from T"_qs);
        const auto rows = db->OpenRecordset(u"T"_qs);
        // More than the cache holds, so that the file itself has been changed by then.
        for (int i = 0; i < 200; ++i) {
            rows->AddNew();
            rows->Set(u"Key", QString::number(i));
            rows->Set(u"名称", QString(20000, u'长'));
            rows->Update();
        }
        completed();
        pause();
    });
    ASSERT_TRUE(victim.waitFor(1));
    victim.kill();
    ASSERT_TRUE(QFile::exists(pathOf(u"a.mdb-journal"_qs)));
    ASSERT_GT(QFileInfo(pathOf(u"a.mdb"_qs)).size(), 1000000);
    EXPECT_EQ(survivors(), QStringList{u"T"_qs});
}

TEST_F(KilledProcess, ACreationLeavesAWholeDatabaseOrNone) {
    for (int round = 1; round <= rounds; ++round) {
        const QString prefix = QString::number(round);
        Victim victim([&](const std::function<void()>& completed) {
            DBEngine engine;
            for (int i = 0;; ++i) {
                engine.Workspaces(0).CreateDatabase(pathOf(u"%1.%2.mdb"_qs.arg(prefix).arg(i)),
                                                    QString());
                completed();
            }
        });
        ASSERT_TRUE(victim.waitFor(1));
        wait(round);
        victim.kill();
        for (const QString& file :
             QDir(folder_.path()).entryList({prefix + u".*.mdb"_qs}, QDir::Files)) {
            EXPECT_EQ(test::errorOf([&] { open(file)->TableDefs().Count(); }), 0);
        }
    }
}

TEST_F(KilledProcess, ATransactionThatAFailureLeftOpenKeepsWhatWasSettled) {
    prepare({});
    Victim victim([&](const std::function<void()>& completed) {
        DBEngine engine;
        Workspace& workspace = engine.Workspaces(0);
        const auto db = workspace.OpenDatabase(pathOf(u"a.mdb"_qs));
        workspace.BeginTrans();
        addRows(*db, u"T"_qs, {u"x"_qs, u"y"_qs});
        workspace.Settle();
        completed();
        pause();
    });
    ASSERT_TRUE(victim.waitFor(1));
    victim.kill();
    EXPECT_EQ(survivors(), (QStringList{u"x"_qs, u"y"_qs}));
}

} // namespace qvnd::jet

#endif
