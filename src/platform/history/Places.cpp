#include "platform/history/Places.h"

#include "platform/files/Paths.h"

#include <QDir>

namespace qvnd::history {

namespace {

// No path of a file system begins with a letter and this.
constexpr QChar mark = u'|';

} // namespace

QString Places::shortOf(const QString& path) const {
    for (const auto& [letter, folder] : folders_) {
        if (path.startsWith(folder)) {
            return QString(letter) + mark + path.mid(folder.size());
        }
    }
    return path;
}

QString Places::longOf(const QString& path) const {
    if (path.size() < 2 || path[1] != mark) {
        return path;
    }
    for (const auto& [letter, folder] : folders_) {
        if (path[0] == letter) {
            return folder + path.mid(2);
        }
    }
    return path;
}

bool isDatabase(const QString& path) {
    return path.endsWith(QStringLiteral(".mdb"), Qt::CaseInsensitive);
}

QString spelt(const QString& path) {
    return QDir::toNativeSeparators(QDir::cleanPath(files::resolved(path)));
}

} // namespace qvnd::history
