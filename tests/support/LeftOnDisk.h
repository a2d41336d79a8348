#pragma once

#include "support/Text.h"

#include <QByteArray>
#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QString>

namespace qvnd::test {

// What a process has left in a folder, by path: two states that are equal are the same to whoever
// comes next. Of a rollback journal only its header counts. The pages behind it are written before
// those of the database that they save, so as long as the database stays as it is, SQLite takes it
// back to the same bytes however many of them there are, and nothing else reads a journal.
using LeftOnDisk = QMap<QString, QByteArray>;

inline LeftOnDisk leftOnDisk(const QString& folder) {
    constexpr qsizetype journalHeader = 28; // bytes, with the count of the pages that it saves
    LeftOnDisk left;
    QDirIterator all(folder, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                     QDirIterator::Subdirectories);
    while (all.hasNext()) {
        const QString path = all.next();
        QFile file(path);
        QByteArray& bytes = left[path.mid(folder.size())];
        if (!all.fileInfo().isDir() && file.open(QIODevice::ReadOnly)) {
            bytes = path.endsWith("-journal") ? file.read(journalHeader) : file.readAll();
        }
    }
    return left;
}

} // namespace qvnd::test
