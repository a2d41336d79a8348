#pragma once

#include <QList>
#include <QString>

#include <utility>

namespace qvnd::history {

// The folders whose files the history covers. In the history a path begins with the letter of its
// folder, so that the history stays true when the folders are moved together.
class Places {
public:
    // Letters and folders; a folder within another one comes before it.
    explicit Places(QList<std::pair<QChar, QString>> folders) : folders_(std::move(folders)) {}

    bool hasIn(const QString& path) const { return shortOf(path) != path; }
    // A path in none of the folders stays as it is.
    QString shortOf(const QString& path) const;
    QString longOf(const QString& path) const;

private:
    QList<std::pair<QChar, QString>> folders_;
};

// Whether the name is that of a database.
bool isDatabase(const QString& path);

// A path as the history has it: absolute, with native separators, its names spelt as on disk.
QString spelt(const QString& path);

} // namespace qvnd::history
