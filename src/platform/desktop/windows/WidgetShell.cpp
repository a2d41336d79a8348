#include "platform/desktop/windows/WidgetShell.h"

#include "platform/error/RunTimeError.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QProcess>
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

void WidgetShell::open(const QString& file) {
    if (!QFileInfo::exists(file)) {
        notFound(file);
    }
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(file))) {
        throw RunTimeError(noHandler, ("没有可以打开此文件的程序：" + file).toStdU16String());
    }
}

} // namespace qvnd::desktop
