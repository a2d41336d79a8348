#pragma once

#include "platform/jet/Recordset.h"
#include "platform/jet/TableDefs.h"

#include <QString>

#include <memory>

namespace qvnd::jet {

class Session;

enum class OpenAs { Query, Table };

// An open database, one file. Close and the destructor commit what was written; behind that no
// journal is left beside the file. The destructor swallows errors; call Close to see them. Several
// handles on one file share its state.
//
// Operations on a closed handle raise error 3420.
class Database {
public:
    explicit Database(std::shared_ptr<Session> session);
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    // The file's path as it was opened, native separators.
    QString Name() const;
    jet::TableDefs TableDefs() const;

    // Runs a statement that returns no rows:
    //   SELECT * | f, g INTO t [IN 'file'] FROM u [WHERE ...] [ORDER BY ...]
    //   INSERT INTO t [IN 'file'] SELECT * | f, g FROM u [WHERE ...] [ORDER BY ...]
    //   DELETE [*] FROM t [WHERE ...]
    //   DROP TABLE t
    // All or nothing. Errors: 3075 syntax, 3078 no such table, 3061 an unknown field in a
    // condition, 3010 the table to be made exists, 3192 no table to insert into, 3376 no table to
    // drop, 3022 a value twice in a unique index, 3464 a comparison of a number with a text;
    // for the file behind IN those of Workspace::OpenDatabase.
    void Execute(const QString& statement);

    // `source` is a table's name, or SELECT * | f, g FROM t [WHERE ...] [ORDER BY ...].
    // The first row is current. Errors as Execute.
    std::unique_ptr<Recordset> OpenRecordset(const QString& source, OpenAs as = OpenAs::Query);

    // Grows whenever another program has changed the file since the last call on it, so that
    // whoever shows its rows knows when to read them anew.
    int ForeignChanges() const;

    void Close();
    bool IsOpen() const;

private:
    std::shared_ptr<Session> session_;
};

} // namespace qvnd::jet
