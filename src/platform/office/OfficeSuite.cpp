#include "platform/office/OfficeSuite.h"

#include "platform/error/RunTimeError.h"
#include "platform/office/ProcessGroup.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QUrl>

#include <chrono>
#include <filesystem>
#include <utility>

using namespace Qt::StringLiterals;

namespace qvnd::office {

namespace {

constexpr int lookAfterMs = 30;         // between two looks at the stop request
constexpr qint64 basicTimeMs = 120'000; // start of the suite and a small document
constexpr qint64 timePerMegabyteMs = 30'000;

RunTimeError failure(long number, const QString& text) { return {number, text.toStdU16String()}; }

RunTimeError stopped() { return failure(error::invalidCall, u"转换已停止。"_s); }

qint64 patienceFor(const QString& source) {
    return basicTimeMs + QFileInfo(source).size() / (1 << 20) * timePerMegabyteMs;
}

// By itself it would bear the program's Chinese name, which arguments lose where the locale's
// encoding knows no Chinese; the suite then waits for a file that is not there.
QString plainScratch() { return QDir(QDir::tempPath()).filePath(u"qvnd-XXXXXX"_s); }

std::filesystem::path native(const QString& path) { return path.toStdU16String(); }

// Puts the result in place of the target, over folders on different disks too.
void moveInto(const QString& result, const QString& target) {
    const QString beside = target + u".neu"_s;
    QFile::remove(beside);
    if (!QFile::copy(result, beside)) {
        QFile::remove(beside);
        throw failure(error::pathAccess, u"无法写入文件“"_s + target + u"”。"_s);
    }
    std::error_code error;
    std::filesystem::rename(native(beside), native(target), error);
    if (error) {
        QFile::remove(beside);
        throw failure(error::permissionDenied, u"无法替换文件“"_s + target + u"”。"_s);
    }
}

} // namespace

OfficeSuite::OfficeSuite(QString profileFolder, QString program, Stop stop)
    : profileFolder_(std::move(profileFolder)), program_(std::move(program)),
      stop_(std::move(stop)) {}

QString OfficeSuite::installedProgram() {
    for (const QString& name : {u"soffice"_s, u"libreoffice"_s}) {
        if (QString found = QStandardPaths::findExecutable(name); !found.isEmpty()) {
            return found;
        }
    }
    return {};
}

// The programs that draw the windows of each toolkit lie beside the suite's own one. Where that is
// not found, as behind a wrapper, nothing speaks against windows.
bool OfficeSuite::hasWindows(const QString& program) {
    const QDir beside = QFileInfo(QFileInfo(program).canonicalFilePath()).dir();
    return !beside.exists(u"soffice.bin"_s) || !beside.entryList({u"libvclplug*"_s}).isEmpty();
}

QString OfficeSuite::profileOption(const QString& folder) {
    return u"-env:UserInstallation="_s +
           QString::fromLatin1(QUrl::fromLocalFile(folder).toEncoded());
}

QString OfficeSuite::cacheFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) + u"/qvnd"_s;
}

void OfficeSuite::convert(const QString& source, const QString& target,
                          const QString& filter) const {
    if (!isInstalled()) {
        throw failure(error::fileNotFound, u"没有安装办公套件（LibreOffice），无法转换“"_s +
                                               QFileInfo(source).fileName() + u"”。"_s);
    }
    const QTemporaryDir scratch(plainScratch());
    // A plain name: the suite takes some characters of a file's name for a pattern or an option.
    const QString input = scratch.filePath(u"document."_s + QFileInfo(source).suffix());
    if (!QFile::copy(source, input)) {
        throw failure(error::fileNotFound, u"找不到或无法读取文件“"_s + source + u"”。"_s);
    }
    const QString output = scratch.filePath(u"out"_s);
    run({u"--convert-to"_s, filter, u"--outdir"_s, output, input}, source);
    const QFileInfoList results = QDir(output).entryInfoList(QDir::Files);
    if (results.isEmpty()) {
        throw failure(error::invalidCall, u"办公套件无法转换文件“"_s + source + u"”。"_s);
    }
    moveInto(results.first().filePath(), target);
}

// A second suite with the same profile hands its work to the first one or fails, so another of our
// programs that converts meanwhile has to come to its end. It ends a suite that hangs by itself.
void OfficeSuite::awaitTurn(QLockFile& turn) const {
    using std::chrono::milliseconds;
    turn.setStaleLockTime(milliseconds::zero()); // only the end of its process makes it stale
    while (!turn.tryLock(milliseconds(lookAfterMs)) && turn.error() == QLockFile::LockFailedError) {
        if (isStopped()) {
            throw stopped();
        }
    }
}

void OfficeSuite::run(const QStringList& arguments, const QString& source) const {
    QDir().mkpath(profileFolder_);
    QLockFile turn(profileFolder_ + u".lock"_s);
    awaitTurn(turn);
    QProcess process;
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    setOwnGroup(process);
    process.start(program_, QStringList{profileOption(profileFolder_), u"--headless"_s,
                                        u"--norestore"_s, u"--nolockcheck"_s} +
                                arguments);
    QElapsedTimer clock;
    clock.start();
    while (!process.waitForFinished(lookAfterMs) && process.state() != QProcess::NotRunning) {
        const bool isAtItsUsersWish = isStopped();
        if (isAtItsUsersWish || clock.hasExpired(patienceFor(source))) {
            endGroup(process);
            process.waitForFinished();
            throw isAtItsUsersWish
                ? stopped()
                : failure(error::automationServerGone,
                          u"办公套件长时间没有响应，已结束。文件：“"_s + source + u"”。"_s);
        }
    }
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        throw failure(error::invalidCall, u"办公套件无法转换文件“"_s + source + u"”。"_s);
    }
}

} // namespace qvnd::office
