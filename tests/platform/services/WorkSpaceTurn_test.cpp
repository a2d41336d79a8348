#include "platform/files/WorkSpaceTurn.h"

#include "platform/error/RunTimeError.h"
#include "support/FakeTurnWait.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <functional>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

using namespace qvnd;
using namespace std::chrono_literals;
using files::WorkSpaceTurn;

namespace {

class WorkSpaceTurns : public testing::Test {
protected:
    // What stands in the refusal; empty when the turn came.
    static QString refusal(WorkSpaceTurn& turn, std::chrono::milliseconds longest) {
        try {
            turn.take(longest);
            return {};
        } catch (const RunTimeError& failure) {
            EXPECT_EQ(failure.number(), error::storeBusy);
            return QString::fromStdU16String(failure.description());
        }
    }

    // Acts as a user who owns nothing, where the test runs as one who may do everything.
    static void asAnyUser(const std::function<void()>& act) {
        constexpr uid_t nobody = 65534;
        const bool mayDoEverything = geteuid() == 0;
        if (mayDoEverything) {
            ASSERT_EQ(seteuid(nobody), 0);
        }
        const auto back = qScopeGuard([mayDoEverything] {
            if (mayDoEverything) {
                (void)!seteuid(0);
            }
        });
        act();
    }
    QByteArray path(const QString& name) const { return QFile::encodeName(folder.filePath(name)); }

    QTemporaryDir folder;
    WorkSpaceTurn one{folder.path()};
    WorkSpaceTurn other{folder.path()};
};

TEST_F(WorkSpaceTurns, OneHasItAtATime) {
    one.take();
    EXPECT_NE(refusal(other, 0ms), QString());
    one.giveBack();
    EXPECT_EQ(refusal(other, 0ms), QString());
}

TEST_F(WorkSpaceTurns, WhoHasItIsNamedAsLongAsHeHasIt) {
    const auto named = [this] {
        QFile file(folder.filePath("qvnd.lock"));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString("none");
    };
    one.take();
    EXPECT_TRUE(named().contains(QString::number(QCoreApplication::applicationPid())));
    one.giveBack();
    EXPECT_EQ(named(), "");
}

TEST_F(WorkSpaceTurns, WhoHeldItIsNamedNoLongerOnceItIsGone) {
    const QString file = folder.filePath(files::FileLock::fileName);
    {
        files::FileLock lock(folder.path());
        ASSERT_TRUE(lock.tryTake());
        EXPECT_GT(QFileInfo(file).size(), 0);
    }
    EXPECT_EQ(QFileInfo(file).size(), 0);
}

TEST_F(WorkSpaceTurns, AHolderThatDoesNotTellItsNameIsAnotherProgram) {
    QFile held(folder.filePath(files::FileLock::fileName));
    ASSERT_TRUE(held.open(QIODevice::ReadWrite));
    ASSERT_EQ(files::systemLock(held).outcome, files::LockAttempt::Outcome::taken);
    files::FileLock lock(folder.path());
    EXPECT_FALSE(lock.tryTake());
    EXPECT_EQ(lock.holder(), "另一个程序");
}

TEST_F(WorkSpaceTurns, AnInterruptionOfAnEarlierCallDoesNotKeepTheSystemFromLocking) {
    QFile file(folder.filePath(files::FileLock::fileName));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    errno = EINTR;
    EXPECT_EQ(files::systemLock(file).outcome, files::LockAttempt::Outcome::taken);
}

TEST_F(WorkSpaceTurns, WhoWaitsGetsItWhenItIsGivenBack) {
    test::FakeTurnWait wait;
    wait.goOn = [this] {
        one.giveBack();
        return true;
    };
    other.setWait(&wait);
    one.take();
    EXPECT_EQ(refusal(other, 10s), QString());
    EXPECT_EQ(wait.asked, 1);
    EXPECT_TRUE(other.isTaken());
}

TEST_F(WorkSpaceTurns, WhoWaitsInVainIsToldWhatHoldsTheWorkSpaceAndHowLongItWaited) {
    one.take();
    const QString told = refusal(other, 1s);
    EXPECT_TRUE(told.contains(QDir::toNativeSeparators(folder.path()))) << told.toStdString();
    EXPECT_TRUE(told.contains("进程 " + QString::number(QCoreApplication::applicationPid())))
        << told.toStdString();
    EXPECT_TRUE(told.contains("等了 1 秒")) << told.toStdString();
    EXPECT_EQ(WorkSpaceTurn::patience, 30s);
}

TEST_F(WorkSpaceTurns, TellWhatIsWaitedForAndThatThisIsOver) {
    test::FakeTurnWait wait;
    other.setWait(&wait);
    other.take();
    other.giveBack();
    EXPECT_TRUE(wait.told.isEmpty());
    one.take();
    EXPECT_FALSE(other.tryTake());
    EXPECT_TRUE(wait.told.isEmpty());
    EXPECT_NE(refusal(other, 50ms), QString());
    EXPECT_EQ(wait.told, (QStringList{QStringLiteral("『%1』正由程序“%2”（进程 %3）使用。")
                                          .arg(QDir::toNativeSeparators(folder.path()),
                                               QCoreApplication::applicationName())
                                          .arg(QCoreApplication::applicationPid()),
                                      "end"}));
    EXPECT_GT(wait.asked, 0);
}

TEST_F(WorkSpaceTurns, WhoNoLongerWantsToWaitIsLetGoAtOnce) {
    test::FakeTurnWait wait;
    wait.goOn = [&wait] { return wait.asked < 3; };
    other.setWait(&wait);
    one.take();
    try {
        other.take(10s);
        FAIL() << "the turn came";
    } catch (const RunTimeError& failure) {
        EXPECT_EQ(failure.number(), error::dialogCancelled);
    }
    EXPECT_EQ(wait.asked, 3);
    EXPECT_EQ(wait.told.back(), "end");
    EXPECT_FALSE(other.isTaken());
}

TEST_F(WorkSpaceTurns, TakenTwiceByOneIsTakenOnce) {
    one.take();
    one.take();
    one.giveBack();
    EXPECT_EQ(refusal(other, 0ms), QString());
}

TEST_F(WorkSpaceTurns, IsHeldForTheLengthOfTheOuterCommand) {
    {
        const files::TurnScope outer(&one);
        { const files::TurnScope inner(&one); }
        EXPECT_NE(refusal(other, 0ms), QString());
    }
    EXPECT_EQ(refusal(other, 0ms), QString());
    const files::TurnScope ofNone(nullptr);
}

TEST_F(WorkSpaceTurns, OfAKilledProcessComesFree) {
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    const pid_t process = fork();
    if (process == 0) {
        WorkSpaceTurn theirs(folder.path());
        theirs.take();
        (void)!write(ready[1], "x", 1);
        pause();
        _exit(0);
    }
    char byte = 0;
    ASSERT_EQ(read(ready[0], &byte, 1), 1);
    EXPECT_NE(refusal(one, 0ms), QString());
    kill(process, SIGKILL);
    waitpid(process, nullptr, 0);
    EXPECT_EQ(refusal(one, 0ms), QString());
}

TEST_F(WorkSpaceTurns, NameTheirHolderAloneWhateverADeadOneLeftInTheFile) {
    QFile left(folder.filePath("qvnd.lock"));
    ASSERT_TRUE(left.open(QIODevice::WriteOnly));
    left.write(QByteArray(500, 'x'));
    left.close();
    one.take();
    const QString told = refusal(other, 0ms);
    EXPECT_TRUE(told.contains(QString::number(QCoreApplication::applicationPid())))
        << told.toStdString();
    EXPECT_FALSE(told.contains("xx")) << told.toStdString();
}

TEST_F(WorkSpaceTurns, OfAFolderThatIsMissingMakesItSoThatTwoFirstStartsAreKeptApart) {
    WorkSpaceTurn first(folder.filePath("new/program"));
    WorkSpaceTurn second(folder.filePath("new/program"));
    first.take();
    EXPECT_NE(refusal(second, 0ms), QString());
}

TEST_F(WorkSpaceTurns, WhereNothingCanBeWrittenIsGivenWithoutALock) {
    ASSERT_TRUE(QFile(folder.filePath("file")).open(QIODevice::WriteOnly));
    WorkSpaceTurn nowhere(folder.filePath("file/missing"));
    EXPECT_EQ(refusal(nowhere, 0ms), QString());
    EXPECT_TRUE(nowhere.isTaken());
}

TEST_F(WorkSpaceTurns, OfAnotherUsersFileAreTakenByReadingItAlone) {
    one.take();
    one.giveBack();
    ASSERT_EQ(chmod(path("qvnd.lock"), 0444), 0);
    ASSERT_EQ(chmod(path(""), 0755), 0);
    asAnyUser([this] {
        EXPECT_EQ(refusal(one, 0ms), QString());
        EXPECT_NE(refusal(other, 0ms), QString());
        one.giveBack();
        EXPECT_EQ(refusal(other, 0ms), QString());
    });
}

TEST_F(WorkSpaceTurns, OfAFileThatCannotBeOpenedFailAtOnceWithTheReason) {
    ASSERT_EQ(mkdir(path("qvnd.lock"), 0755), 0);
    try {
        one.take(10s);
        FAIL() << "the turn came";
    } catch (const RunTimeError& failure) {
        EXPECT_EQ(failure.number(), error::cannotAccessFile);
        EXPECT_TRUE(QString::fromStdU16String(failure.description()).contains("qvnd.lock"));
    }
    int attempts = 0;
    files::FileLock lock(folder.path(), [&attempts](QFile&) {
        ++attempts;
        return files::LockAttempt{files::LockAttempt::Outcome::taken, {}};
    });
    EXPECT_THROW(lock.tryTake(), RunTimeError);
    EXPECT_EQ(attempts, 0) << "the system is not asked for a lock";
}

TEST_F(WorkSpaceTurns, OnADiskWithoutLocksFailAtOnceWithTheReason) {
    int attempts = 0;
    WorkSpaceTurn without(folder.path(), [&attempts](QFile&) {
        ++attempts;
        return files::LockAttempt{files::LockAttempt::Outcome::failed, "No locks available"};
    });
    try {
        without.take(10s);
        FAIL() << "the turn came";
    } catch (const RunTimeError& failure) {
        EXPECT_EQ(failure.number(), error::cannotAccessFile);
        const QString told = QString::fromStdU16String(failure.description());
        EXPECT_TRUE(told.contains("不能加锁") && told.contains("No locks available"))
            << told.toStdString();
    }
    EXPECT_EQ(attempts, 1);
}

TEST_F(WorkSpaceTurns, AFolderThatIsCoveredAgainIsLockedOnce) {
    one.cover(folder.path(), 0ms); // plans may lie in the program's own folder
    EXPECT_EQ(refusal(one, 0ms), QString());
    one.cover(folder.path(), 0ms);
    EXPECT_TRUE(one.isTaken());
    EXPECT_NE(refusal(other, 0ms), QString());
}

TEST_F(WorkSpaceTurns, ALockThatIsHeldIsNotAskedForAgain) {
    int attempts = 0;
    files::FileLock lock(folder.path(), [&attempts](QFile& file) {
        ++attempts;
        return files::systemLock(file);
    });
    EXPECT_TRUE(lock.tryTake());
    EXPECT_TRUE(lock.tryTake());
    EXPECT_EQ(attempts, 1);
}

TEST_F(WorkSpaceTurns, TheSystemTellsAHeldLockFromOneThatCannotBeTaken) {
    using Outcome = files::LockAttempt::Outcome;
    one.take();
    QFile held(folder.filePath("qvnd.lock"));
    ASSERT_TRUE(held.open(QIODevice::ReadOnly));
    EXPECT_EQ(files::systemLock(held).outcome, Outcome::held);
    // A handle that only names the file takes no locks.
    const int named = open(path("qvnd.lock"), O_PATH | O_CLOEXEC);
    QFile nameless;
    ASSERT_TRUE(nameless.open(named, QIODevice::ReadOnly, QFile::AutoCloseHandle));
    EXPECT_EQ(files::systemLock(nameless).outcome, Outcome::failed);
    EXPECT_NE(files::systemLock(nameless).reason, QString());
}

TEST_F(WorkSpaceTurns, OfTwoProgramFoldersOnOneWorkFolderAreKeptApart) {
    const QString plans = folder.filePath("plans");
    WorkSpaceTurn first(folder.filePath("first"));
    WorkSpaceTurn second(folder.filePath("second"));
    first.cover(plans);
    second.cover(plans);
    first.take();
    const QString told = refusal(second, 0ms);
    EXPECT_TRUE(told.contains(QDir::toNativeSeparators(plans))) << told.toStdString();
    WorkSpaceTurn sameProgram(folder.filePath("second"));
    EXPECT_EQ(refusal(sameProgram, 0ms), QString()) << "what it could not use whole it gave back";
}

TEST_F(WorkSpaceTurns, ThatAreTakenWaitForAFolderThatTheyCoverLater) {
    const QString plans = folder.filePath("plans");
    WorkSpaceTurn first(folder.filePath("first"));
    first.cover(plans);
    first.take();
    WorkSpaceTurn second(folder.filePath("second"));
    second.take();
    EXPECT_THROW(second.cover(plans, 50ms), RunTimeError);
    EXPECT_TRUE(second.isTaken());
    test::FakeTurnWait wait;
    wait.goOn = [&first] {
        first.giveBack();
        return true;
    };
    second.setWait(&wait);
    second.cover(plans, 10s);
    EXPECT_EQ(wait.asked, 1);
    EXPECT_NE(refusal(first, 0ms), QString());
}

TEST_F(WorkSpaceTurns, WhoDoesNotWaitGoesOnWithoutIt) {
    one.take();
    {
        const files::TurnScope reading(&other, files::TurnScope::Waits::no);
        EXPECT_FALSE(reading.holds());
    }
    EXPECT_TRUE(one.isTaken());
    one.giveBack();
    const files::TurnScope reading(&other, files::TurnScope::Waits::no);
    EXPECT_TRUE(reading.holds());
    EXPECT_TRUE(other.isTaken());
}

} // namespace
