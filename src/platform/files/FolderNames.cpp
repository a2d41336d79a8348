#include "platform/files/FolderNames.h"

#include "platform/files/Paths.h"

#include <QFileInfo>

namespace qvnd::files {

namespace {

struct Place {
    QString folder;
    QString name;
};

Place placeOf(const QString& path) {
    const qsizetype cut = path.lastIndexOf(separator());
    return {path.left(cut), path.mid(cut + 1)};
}

// Of names that differ in case alone, a look-up finds the first.
void insertFirst(QHash<QString, QString>& names, const QString& name) {
    const QString key = name.toCaseFolded();
    if (!names.contains(key)) {
        names.insert(key, name);
    }
}

} // namespace

FolderNames::Names& FolderNames::namesIn(const QString& folder) {
    const auto known = folders_.find(folder);
    if (known != folders_.end()) {
        return *known;
    }
    Names names;
    for (const QString& name : namesOf(folder)) {
        insertFirst(names, name);
    }
    return *folders_.insert(folder, names);
}

QString FolderNames::resolved(const QString& path) {
    const Place place = placeOf(path);
    if (!QFileInfo(place.folder).isDir()) {
        return files::resolved(path);
    }
    if (QFileInfo::exists(path)) {
        return path;
    }
    const auto spelling = namesIn(place.folder).value(place.name.toCaseFolded(), place.name);
    return place.folder + separator() + spelling;
}

void FolderNames::add(const QString& path) {
    const Place place = placeOf(path);
    const auto known = folders_.find(place.folder);
    if (known != folders_.end()) {
        insertFirst(*known, place.name);
    }
}

void FolderNames::remove(const QString& path) { folders_.remove(placeOf(path).folder); }

} // namespace qvnd::files
