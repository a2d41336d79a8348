#include "startup/WindowMemory.h"

#include "platform/files/Paths.h"

#include <QSettings>

namespace qvnd::startup {

WindowMemory::WindowMemory(const QString& programFolder)
    : file_(files::withSeparator(programFolder) + "windows.ini") {}

RememberedWindows WindowMemory::load() const {
    const QSettings settings(file_, QSettings::IniFormat);
    RememberedWindows windows;
    windows.frame = settings.value("frame").toByteArray();
    windows.workbench = settings.value("workbench").toRect();
    windows.barsFor = settings.value("barsFor").toSize();
    windows.verticalBar = settings.value("verticalBar").value<double>();
    windows.horizontalBar = settings.value("horizontalBar").value<double>();
    windows.library = settings.value("library").toInt();
    windows.node = settings.value("node").toString();
    return windows;
}

void WindowMemory::save(const RememberedWindows& windows) const {
    QSettings settings(file_, QSettings::IniFormat);
    settings.setValue("frame", windows.frame);
    settings.setValue("workbench", windows.workbench);
    settings.setValue("barsFor", windows.barsFor);
    settings.setValue("verticalBar", windows.verticalBar);
    settings.setValue("horizontalBar", windows.horizontalBar);
    settings.setValue("library", windows.library);
    settings.setValue("node", windows.node);
}

} // namespace qvnd::startup
