#include "store/LegacyTables.h"

#include "platform/error/IgnoringErrors.h"
#include "store/Names.h"

#include <QSet>

#include <algorithm>
#include <optional>
#include <vector>

namespace qvnd::store {

namespace {

using jet::Field;
using jet::FieldType;
using jet::TableDef;
using jet::Value;
using jet::legacy::LegacyTable;

// The old rows with a value for each field of the new table.
using Rows = std::vector<std::vector<Value>>;

Rows rowsFor(const TableDef& definition, const LegacyTable& old) {
    std::vector<int> positions;
    positions.reserve(definition.Fields.size());
    for (const Field& field : definition.Fields) {
        positions.push_back(old.PositionOf(field.Name));
    }
    Rows rows;
    rows.reserve(old.Rows.size());
    for (const std::vector<Value>& oldRow : old.Rows) {
        std::vector<Value> row;
        row.reserve(positions.size());
        for (const int position : positions) {
            row.push_back(position < 0 ? Value() : oldRow[static_cast<std::size_t>(position)]);
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

std::optional<std::size_t> automaticNumberOf(const TableDef& definition) {
    const auto found = std::find_if(definition.Fields.begin(), definition.Fields.end(),
                                    [](const Field& field) { return field.IsAutoIncrement(); });
    return found == definition.Fields.end()
               ? std::nullopt
               : std::optional(static_cast<std::size_t>(found - definition.Fields.begin()));
}

bool hasNumbersOfItsOwn(const Rows& rows, std::size_t at) {
    QSet<std::int32_t> seen;
    for (const auto& row : rows) {
        if (!row[at].IsNumber()) {
            return false;
        }
        seen.insert(row[at].ToLong());
    }
    return seen.size() == static_cast<qsizetype>(rows.size());
}

void order(Rows& rows, std::size_t at) {
    const bool allNumbers =
        std::all_of(rows.begin(), rows.end(), [&](const auto& row) { return row[at].IsNumber(); });
    if (allNumbers) {
        std::stable_sort(rows.begin(), rows.end(), [&](const auto& a, const auto& b) {
            return a[at].ToLong() < b[at].ToLong();
        });
    }
    if (!hasNumbersOfItsOwn(rows, at)) {
        std::int32_t next = 0;
        for (auto& row : rows) {
            row[at] = Value(++next);
        }
    }
}

void widen(TableDef& definition, const Rows& rows) {
    for (std::size_t i = 0; i < definition.Fields.size(); ++i) {
        Field& field = definition.Fields[i];
        if (field.Type != FieldType::Text) {
            continue;
        }
        int longest = field.Size;
        for (const auto& row : rows) {
            longest = std::max(longest, static_cast<int>(row[i].TextOrEmpty().size()));
        }
        field.Type = longest > jet::defaultTextSize ? FieldType::Memo : FieldType::Text;
        field.Size = field.Type == FieldType::Memo ? 0 : longest;
    }
}

bool differ(const Rows& rows, std::size_t at) {
    QSet<QString> seen;
    for (const auto& row : rows) {
        seen.insert(row[at].TextOrEmpty().toCaseFolded());
    }
    return seen.size() == static_cast<qsizetype>(rows.size());
}

void dropForbiddenIndexes(TableDef& definition, const Rows& rows) {
    std::erase_if(definition.Indexes, [&](const jet::Index& index) {
        return (index.Unique || index.Primary) &&
               std::any_of(index.Fields.begin(), index.Fields.end(), [&](const QString& name) {
                   const auto at = &definition.FieldNamed(name) - definition.Fields.data();
                   return !differ(rows, static_cast<std::size_t>(at));
               });
    });
}

void write(jet::Database& database, const TableDef& definition, const Rows& rows) {
    database.TableDefs().Append(definition);
    const auto recordset = database.OpenRecordset(definition.Name, jet::OpenAs::Table);
    for (const auto& row : rows) {
        recordset->AddNew();
        for (std::size_t i = 0; i < row.size(); ++i) {
            if (!row[i].IsNull()) {
                ignoringErrors([&] { recordset->Set(definition.Fields[i].Name, row[i]); });
            }
        }
        recordset->Update();
    }
}

// The name of a table beside the one under work.
QString stagingFor(const jet::Database& database, const QString& name) {
    QString staging = table::scratch.toString();
    while (database.TableDefs().Contains(staging) ||
           staging.compare(name, Qt::CaseInsensitive) == 0) {
        staging += '2';
    }
    return staging;
}

// The numbers come in through a table where the field is a plain one: those of the final table
// are the engine's own, and only a copy from another table may bring them along.
void writeThroughStaging(jet::Database& database, const TableDef& definition, const Rows& rows) {
    TableDef staging = definition;
    staging.Name = stagingFor(database, definition.Name);
    staging.Indexes.clear();
    for (Field& field : staging.Fields) {
        field.Attributes = 0;
    }
    write(database, staging, rows);
    database.TableDefs().Append(definition);
    const Field& number = definition.Fields[*automaticNumberOf(definition)];
    database.Execute("INSERT INTO [" + definition.Name + "] SELECT * FROM [" + staging.Name +
                     "] ORDER BY [" + number.Name + "]");
    database.Execute("DROP TABLE [" + staging.Name + "]");
}

} // namespace

void bringIn(jet::Database& database, const TableDef& wanted, const LegacyTable& old) {
    TableDef definition = wanted;
    Rows rows = rowsFor(definition, old);
    const auto number = automaticNumberOf(definition);
    if (number) {
        order(rows, *number);
    }
    widen(definition, rows);
    dropForbiddenIndexes(definition, rows);
    if (number) {
        writeThroughStaging(database, definition, rows);
    } else {
        write(database, definition, rows);
    }
}

} // namespace qvnd::store
