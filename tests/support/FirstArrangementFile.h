#pragma once

#include "platform/jet/file/Connection.h"
#include "support/SourceFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace qvnd::test {

// A text of tests/store/first_arrangement; empty when there is none of that name.
inline QByteArray firstArrangementText(const QString& name) {
    const auto path =
        sourceFolder() / "tests/store/first_arrangement" / (name + ".sql").toStdString();
    QFile file(QString::fromStdString(path.string()));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Makes a file anew at `path` in which the tables are "t7" and their columns "f0", as the program
// made them at first, with our collation, as its indexes had it: the catalogue, which all of them
// begin with, and the text of that name. The folder is made if it is missing. False when there is
// no such text.
inline bool layFirstArrangement(const QString& name, const QString& path) {
    QDir().mkpath(QFileInfo(path).path());
    QFile::remove(path);
    const QByteArray catalogue = firstArrangementText("catalogue");
    const QByteArray rows = firstArrangementText(name);
    jet::Connection(path, jet::Connection::Mode::create).Run(catalogue + rows);
    return !catalogue.isEmpty() && !rows.isEmpty();
}

} // namespace qvnd::test
