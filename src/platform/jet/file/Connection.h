#pragma once

#include "platform/jet/TableDef.h"
#include "platform/jet/Value.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <memory>
#include <unordered_map>

struct sqlite3;
struct sqlite3_stmt;

namespace qvnd::jet {

class Connection;

// One prepared statement: bind from 1, step, read from 0. Failures are raised as the store's
// run-time errors.
class Statement {
public:
    Statement(Connection& connection, const QByteArray& sql);
    ~Statement();
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    void Bind(int position, const Value& value);
    void Bind(int position, std::int64_t number);
    void Bind(int position, const QByteArray& bytes);
    // Binds what another statement, of any connection, has in a column of its row.
    void BindColumn(int position, const Statement& source, int column);

    // True while there is a row.
    bool Step();
    // For a statement without rows: runs it and makes it ready for the next run.
    void Run();
    // Ready for the next run; what was bound stays.
    void Reset();

    std::int64_t Number(int column) const;
    QString Text(int column) const;
    QByteArray Bytes(int column) const;
    int Columns() const;
    QString ColumnName(int column) const;
    bool IsNull(int column) const;
    // The column as a field of that type keeps it.
    Value Read(int column, FieldType type) const;

private:
    Connection& connection_;
    sqlite3_stmt* statement_ = nullptr;
};

// One SQLite connection, with the collation and the functions of the dialect. They serve our
// queries alone: nothing in the file refers to them.
class Connection {
public:
    // Opens an existing file for reading and writing, or makes one. A journal that a killed
    // process left is played back by the first read.
    enum class Mode { existing, create };
    // A journal that is removed at each commit leaves the file alone whenever nothing is being
    // written; full synchronisation keeps a commit through a power failure on any device. One that
    // is emptied stays beside the file, and waits for the device half as often. Programs on several
    // machines may have either open: changes that are written ahead need memory that they share.
    enum class Journal { removed, emptied };
    Connection(const QString& path, Mode mode, Journal journal = Journal::removed);
    // A database in memory that begins as the image says, see Image.h. It never reaches a file.
    explicit Connection(const QByteArray& image);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    void Run(const QByteArray& sql);
    // A statement that is kept for the next time; it must be reset before it is asked for again.
    Statement& Prepared(const QByteArray& sql);
    // The first column of the first row of a query that has one; 0 without a row.
    std::int64_t NumberOf(const QByteArray& sql);

    // Where SQLite keeps the rollback journal of a file.
    static QString JournalOf(const QString& path);
    // Removes the rollback journal of a process that was killed before it had changed the file:
    // SQLite itself removes a journal only when there is a change to roll back. It does nothing
    // when the journal belongs to another program that is writing just now.
    void RemoveJournal();

    bool InTransaction() const;
    std::int64_t LastInsertedRow() const;
    // Rows changed by the statement that ran last.
    int Changes() const;
    // Grows with every row that this connection changes.
    std::int64_t ChangeStamp() const;

    const QString& Path() const { return path_; }
    sqlite3* Handle() const { return handle_; }
    // Raises the failure that SQLite reported last.
    [[noreturn]] void Fail() const;

private:
    // Opens the file and no more; the object then stands, so that whatever fails later closes it.
    Connection(const QString& path, int openFlags);

    struct HashBytes {
        std::size_t operator()(const QByteArray& bytes) const { return qHash(bytes); }
    };

    QString path_;
    sqlite3* handle_ = nullptr;
    std::unordered_map<QByteArray, std::unique_ptr<Statement>, HashBytes> prepared_;
};

} // namespace qvnd::jet
