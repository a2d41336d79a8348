#pragma once

#include "platform/jet/TableDef.h"

#include <memory>

namespace qvnd::jet {

class Session;

// The tables of one open database, in the order of their creation. A view: copies look at the
// same database, and an operation on a closed one raises error 3420.
class TableDefs {
public:
    explicit TableDefs(std::shared_ptr<Session> session) : session_(std::move(session)) {}

    // Creates the table, all or nothing. 3010 when the name is taken, 3264 for a table without
    // fields, 3191 for a field named twice, 3409 for an index on a field that is not there, 3125
    // for a name that is empty, longer than 64 characters, begins with a blank or has one of
    // . ! ` [ ] in it.
    void Append(const TableDef& table);
    // Drops the table with its rows; 3265 when there is none of that name.
    void Delete(const QString& name);
    // Reads the list anew, so that tables made by another program show.
    void Refresh();

    int Count() const;
    bool Contains(const QString& name) const;
    // By position from 0, or by name; 3265 when there is none.
    TableDef operator[](int position) const;
    TableDef operator[](const QString& name) const;
    // For a walk from first to last; the list is a copy, so deleting on the way is safe.
    QStringList Names() const;
    std::vector<TableDef> All() const;

private:
    std::shared_ptr<Session> session_;
};

} // namespace qvnd::jet
