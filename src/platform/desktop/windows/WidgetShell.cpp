#include "platform/desktop/windows/WidgetShell.h"

#include "platform/error/RunTimeError.h"
#include "platform/office/OfficeSuite.h"

#include <QDesktopServices>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QUrl>

namespace qvnd::desktop {

namespace {

constexpr int noHandler = 31031;

[[noreturn]] void notFound(const QString& path) {
    throw RunTimeError(error::fileNotFound, ("找不到文件：" + path).toStdU16String());
}

} // namespace

void WidgetShell::run(const QString& program) {
    if (!QProcess::startDetached(program, {})) {
        notFound(program);
    }
}

void WidgetShell::openAsTemplate(const QString& file) {
    if (!QFileInfo::exists(file)) {
        notFound(file);
    }
    const QString suite = office::OfficeSuite::installedProgram();
    // An address is plain ASCII, whatever encoding arguments go through.
    const QString address = QString::fromLatin1(QUrl::fromLocalFile(file).toEncoded());
    if (!suite.isEmpty() && office::OfficeSuite::hasWindows(suite) &&
        QProcess::startDetached(suite, {QStringLiteral("-n"), address})) {
        return;
    }
    QTemporaryDir folder;
    folder.setAutoRemove(false); // the word processor works on the copy
    const QString copy = folder.filePath(QFileInfo(file).fileName());
    if (!QFile::copy(file, copy)) {
        throw RunTimeError(error::pathAccess, ("无法写入临时文件：" + copy).toStdU16String());
    }
    try {
        open(copy);
    } catch (const RunTimeError&) {
        folder.setAutoRemove(true);
        throw;
    }
}

void WidgetShell::open(const QString& file) {
    if (!QFileInfo::exists(file)) {
        notFound(file);
    }
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(file))) {
        const QString told =
            QStringLiteral("没有打开“%1”的程序。请安装文字处理软件，例如 LibreOffice Writer。");
        throw RunTimeError(noHandler, told.arg(QFileInfo(file).fileName()).toStdU16String());
    }
}

} // namespace qvnd::desktop
