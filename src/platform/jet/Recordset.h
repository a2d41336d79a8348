#pragma once

#include "platform/jet/TableDef.h"
#include "platform/jet/Value.h"

#include <memory>

namespace qvnd::jet {

class RecordsetState;

// A window onto the rows of a table or query, one of them current, that can be changed through it.
//
// Which rows it has, and their order, is settled when it is opened or requeried; their contents
// are read when asked for: what this program has changed by then shows, and what another program
// changes, at the latest some dozens of rows further on. Rows added through it stand at its end,
// whether or not the query's condition holds for them, and do not become current. A row that
// something else deleted stays in its place and answers with error 3167.
//
// Errors of every operation: 3420 when it or its database is closed.
class Recordset {
public:
    explicit Recordset(std::unique_ptr<RecordsetState> state);
    ~Recordset(); // as Close, but swallows errors
    Recordset(Recordset&&) noexcept;
    Recordset& operator=(Recordset&&) noexcept;

    bool Bof() const; // before the first row, or no rows
    bool Eof() const; // behind the last row, or no rows
    // The rows reached so far: 1 after the opening of one that has rows, exact after MoveLast.
    // Opened as a table it is exact at once. Rows added through it are counted.
    int RecordCount() const;

    // The definitions of the fields it shows, in their order.
    const std::vector<Field>& Fields() const;

    // The field's value in the row being added or edited, else in the current row.
    // 3265 for an unknown field, 3021 without a current row.
    Value Get(QStringView field) const;
    // Takes the value into the row being added or edited, converted to the field's type.
    // 3265 for an unknown field, 3020 outside AddNew and Edit, 3421 for a value that the type
    // cannot take, 3315 for an empty text where it is not allowed, 3163 for a text too long.
    void Set(QStringView field, const Value& value);

    void AddNew();
    // 3021 without a current row.
    void Edit();
    // Writes the row; 3020 without AddNew or Edit, 3022 when a unique index has its value already
    // (the row then stays in hand). Committed at once, except that rows added one straight
    // after the other share one transaction, see Workspace::Settle.
    void Update();
    // Deletes the current row; it is then no longer readable (3167) until the next move.
    void Delete();

    // 3021 when there are no rows.
    void MoveFirst();
    void MoveLast();
    // From the last row to behind it; from there error 3021.
    void MoveNext();
    // Makes the first row current for which the condition (as behind "where") holds. Otherwise the
    // current row stays and NoMatch is true.
    void FindFirst(const QString& condition);
    bool NoMatch() const;
    // Runs the query again and moves to the first row.
    void Requery();

    void Close();

private:
    std::unique_ptr<RecordsetState> state_;
};

} // namespace qvnd::jet
