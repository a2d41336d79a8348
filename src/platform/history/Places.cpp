#include "platform/history/Places.h"

#include "platform/files/Paths.h"

#include <QDir>
#include <QFileInfo>
#include <QSysInfo>

#include <algorithm>

namespace qvnd::history {

namespace {

const QString fromHome = QStringLiteral("P|");
// Behind the machine.
constexpr QChar mark = u'|';

QString speltFolder(const QString& folder) { return files::withSeparator(spelt(folder)); }

} // namespace

QString Places::thisMachine() {
    const QByteArray id = QSysInfo::machineUniqueId();
    return id.isEmpty() ? QSysInfo::machineHostName() : QString::fromLatin1(id);
}

Places::Places(const QString& home, const QStringList& others, QString machine)
    : home_(speltFolder(home)), machine_(std::move(machine)) {
    for (const QString& folder : others) {
        others_ << speltFolder(folder);
    }
    std::sort(others_.begin(), others_.end(), [](const QString& one, const QString& other) {
        return one.size() > other.size(); // a folder within another one comes before it
    });
}

bool Places::hasIn(const QString& path) const {
    return path.startsWith(home_) ||
           std::any_of(others_.begin(), others_.end(),
                       [&](const QString& folder) { return path.startsWith(folder); });
}

bool Places::movesAlong(const QString& path) const {
    return path.startsWith(home_) ||
           std::any_of(others_.begin(), others_.end(), [&](const QString& folder) {
               return path.startsWith(folder) && home_.startsWith(folder);
           });
}

QString Places::shortOf(const QString& path) const {
    if (isElsewhere(path)) {
        return path;
    }
    if (path.startsWith(home_)) {
        return fromHome + path.mid(home_.size());
    }
    if (movesAlong(path)) {
        return fromHome + QDir(home_).relativeFilePath(path);
    }
    return machine_ + mark + path;
}

QString Places::longOf(const QString& text) const {
    if (text.startsWith(fromHome)) {
        const QString path = text.mid(fromHome.size());
        return path.startsWith(QLatin1String(".."))
                   ? QDir::toNativeSeparators(QDir::cleanPath(home_ + path))
                   : home_ + path;
    }
    if (!text.startsWith(machine_ + mark)) {
        return text;
    }
    const QString path = text.mid(machine_.size() + 1);
    return QFileInfo(QFileInfo(path).path()).dir().exists() ? path : text;
}

bool Places::isElsewhere(const QString& path) { return !QDir::isAbsolutePath(path); }

QString Places::pathElsewhere(const QString& text) { return text.section(mark, 1); }

bool isDatabase(const QString& path) {
    return path.endsWith(QStringLiteral(".mdb"), Qt::CaseInsensitive);
}

QString spelt(const QString& path) {
    return QDir::toNativeSeparators(QDir::cleanPath(files::resolved(path)));
}

} // namespace qvnd::history
