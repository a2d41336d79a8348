#include "platform/jet/TableDefs.h"

#include "platform/jet/Failure.h"
#include "platform/jet/engine/Session.h"

namespace qvnd::jet {

namespace {

const std::vector<StoredTable>& tablesOf(const std::shared_ptr<Session>& session) {
    StoreFile& file = session->File();
    file.Refresh();
    return file.Tables().Tables();
}

} // namespace

void TableDefs::Append(const TableDef& table) {
    StoreFile& file = session_->EnterFile();
    WriteScope scope(file, session_->Workspace().StaysPending());
    file.Tables().Add(file.Sql(), table);
    scope.Finish();
}

void TableDefs::Delete(const QString& name) {
    StoreFile& file = session_->EnterFile();
    WriteScope scope(file, session_->Workspace().StaysPending());
    const StoredTable* table = file.Tables().Find(name);
    if (table == nullptr) {
        failItemNotFound(name);
    }
    file.Tables().Remove(file.Sql(), table->Id);
    scope.Finish();
}

void TableDefs::Refresh() { session_->EnterFile(); }

int TableDefs::Count() const { return static_cast<int>(tablesOf(session_).size()); }

bool TableDefs::Contains(const QString& name) const {
    tablesOf(session_);
    return session_->File().Tables().Find(name) != nullptr;
}

TableDef TableDefs::operator[](int position) const {
    const std::vector<StoredTable>& tables = tablesOf(session_);
    if (position < 0 || position >= static_cast<int>(tables.size())) {
        failItemNotFound(QString::number(position));
    }
    return tables[static_cast<std::size_t>(position)].Definition;
}

TableDef TableDefs::operator[](const QString& name) const {
    tablesOf(session_);
    const StoredTable* table = session_->File().Tables().Find(name);
    if (table == nullptr) {
        failItemNotFound(name);
    }
    return table->Definition;
}

QStringList TableDefs::Names() const {
    QStringList names;
    for (const StoredTable& table : tablesOf(session_)) {
        names << table.Definition.Name;
    }
    return names;
}

std::vector<TableDef> TableDefs::All() const {
    std::vector<TableDef> all;
    for (const StoredTable& table : tablesOf(session_)) {
        all.push_back(table.Definition);
    }
    return all;
}

} // namespace qvnd::jet
