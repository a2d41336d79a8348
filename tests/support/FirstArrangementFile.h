#pragma once

#include "platform/jet/file/Connection.h"
#include "support/SourceFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace qvnd::test {

// The SQL text of a file in which the tables were "t7" and their columns "f0", as the program made
// them at first. Each lies in tests/store/first_arrangement.
inline QByteArray firstArrangementText(const QString& name) {
    const auto path =
        sourceFolder() / "tests/store/first_arrangement" / (name + ".sql").toStdString();
    QFile file(QString::fromStdString(path.string()));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Makes the file anew at `path`, with our collation, as its indexes had it. The folder is made if
// it is missing. False when there is no such text.
inline bool layFirstArrangement(const QString& name, const QString& path) {
    QDir().mkpath(QFileInfo(path).path());
    QFile::remove(path);
    const QByteArray sql = firstArrangementText(name);
    jet::Connection(path, jet::Connection::Mode::create).Run(sql);
    return !sql.isEmpty();
}

} // namespace qvnd::test
