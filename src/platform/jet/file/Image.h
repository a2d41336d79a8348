#pragma once

#include "platform/jet/file/Connection.h"

#include <QByteArray>
#include <QMap>
#include <QSet>
#include <QString>
#include <QStringList>

#include <cstdint>

// A database as a whole, as the bytes of its file: for keeping a state and for going back to it.
// The files are reached through SQLite, so that its locks hold and a journal that a killed process
// left is played back first. A damaged file is taken as the bytes that it has. Errors are those of
// the store.
namespace qvnd::jet {

// Empty when there is no such file.
QByteArray imageOf(const QString& path);
// As the connection sees it, with the changes of its open transaction.
QByteArray imageOf(Connection& connection);

// Grows with every transaction that any program commits on the file; 0 when there is no such file.
std::uint32_t changeCounterOf(const QString& path);
// The same, of an image.
std::uint32_t changeCounterIn(const QByteArray& image);

// Whether the images hold the same but for their counters of changes: a transaction that changes
// nothing, such as one that puts the same pages, counts as well.
bool holdTheSame(const QByteArray& one, const QByteArray& other);
// A short text that only images that hold the same have in common.
QByteArray digestOf(const QByteArray& image);

// Gives the file the state of the image, at one stroke: an empty image takes the file away; a
// missing file is made, with its folder, and a damaged one replaced. Programs that have it open see
// the new state as another program's change.
void putImage(const QString& path, const QByteArray& image);

// Removes the journal beside a database which a process has left that was killed before it had
// changed the file. Does nothing where there is no database, or it cannot be read.
void removeJournal(const QString& path);

// Looks into an image.
class ImageTables {
public:
    explicit ImageTables(const QByteArray& image);

    // The tables by name, with a number that a table made anew under its name does not share.
    const QMap<QString, std::int64_t>& tables() const { return tables_; }

    struct Row {
        QMap<QString, QString> fields;
        bool operator==(const Row&) const = default;
    };
    // By the number that the file gives each row. Empty for a table that is not there.
    QMap<std::int64_t, Row> rowsOf(const QString& table);

private:
    bool isEmpty_;
    Connection connection_;
    QMap<QString, std::int64_t> tables_;
};

} // namespace qvnd::jet
