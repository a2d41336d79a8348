#include "platform/desktop/Processes.h"

#include <QDir>
#include <QFile>
#include <QSysInfo>

#include <algorithm>

namespace qvnd::desktop {

namespace {

bool isNumber(const QString& name) {
    return std::all_of(name.begin(), name.end(), [](QChar c) { return c.isDigit(); });
}

} // namespace

std::vector<QStringList> SystemProcesses::commandLines() {
    std::vector<QStringList> found;
    const QDir processes(QStringLiteral("/proc"));
    for (const QString& name : processes.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile file(processes.filePath(name + QLatin1String("/cmdline")));
        if (!isNumber(name) || !file.open(QIODevice::ReadOnly)) {
            continue;
        }
        const QByteArray line = file.readAll();
        if (!line.isEmpty()) {
            found.push_back(QString::fromLocal8Bit(line).split(QChar(u'\0'), Qt::SkipEmptyParts));
        }
    }
    return found;
}

QString SystemProcesses::hostName() { return QSysInfo::machineHostName(); }

} // namespace qvnd::desktop
