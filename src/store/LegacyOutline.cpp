#include "store/LegacyOutline.h"

#include "platform/error/RunTimeError.h"
#include "store/Names.h"
#include "store/PlanTables.h"

#include <QSet>

#include <algorithm>

namespace qvnd::store {

namespace {

using jet::Value;
using jet::legacy::LegacyTable;

[[noreturn]] void failNoOutline(const QString& file, const QString& name) {
    throw RunTimeError(error::tableNotFound,
                       QStringLiteral("旧版数据库『%1』中没有提纲表『%2』；文件保持原样。")
                           .arg(file, name)
                           .toStdU16String());
}

Value valueOf(const std::vector<Value>& row, int position) {
    return position < 0 ? Value() : row[static_cast<std::size_t>(position)];
}

bool isNumber(const Value& value) { return value.IsNumber(); }

// Numbers the rows as they stand, if their IDs are no use.
void giveIds(std::vector<LegacyRow>& rows, bool allHaveIds) {
    QSet<std::int32_t> seen;
    for (const LegacyRow& row : rows) {
        seen.insert(row.Id);
    }
    if (allHaveIds && seen.size() == static_cast<qsizetype>(rows.size())) {
        return;
    }
    std::int32_t next = 0;
    for (LegacyRow& row : rows) {
        row.Id = ++next;
    }
}

bool keysDiffer(const std::vector<LegacyRow>& rows) {
    QSet<QString> seen;
    for (const LegacyRow& row : rows) {
        seen.insert(row.Key.toCaseFolded());
    }
    return seen.size() == static_cast<qsizetype>(rows.size());
}

bool hasTable(const jet::legacy::LegacyDatabase& database, const QString& name) {
    return database.TableNames().contains(name, Qt::CaseInsensitive);
}

} // namespace

LegacyOutline legacyOutline(const jet::legacy::LegacyDatabase& database, const QString& name,
                            const QString& file) {
    if (!hasTable(database, name)) {
        failNoOutline(file, name);
    }
    const LegacyTable table = database.Table(name);
    const int nameAt = table.PositionOf(field::name);
    const int keyAt = table.PositionOf(field::key);
    const int idAt = table.PositionOf(field::id);
    const int documentAt = table.PositionOf(field::isDocument);
    if (nameAt < 0 || keyAt < 0) {
        failNoOutline(file, name);
    }
    LegacyOutline outline;
    bool allHaveIds = true;
    for (const std::vector<Value>& row : table.Rows) {
        const Value id = valueOf(row, idAt);
        allHaveIds = allHaveIds && isNumber(id);
        outline.Rows.push_back(
            {valueOf(row, nameAt).TextOrEmpty(), valueOf(row, keyAt).TextOrEmpty(),
             valueOf(row, documentAt).TextOrEmpty(), isNumber(id) ? id.ToLong() : 0});
    }
    if (allHaveIds) {
        std::stable_sort(outline.Rows.begin(), outline.Rows.end(),
                         [](const LegacyRow& a, const LegacyRow& b) { return a.Id < b.Id; });
    }
    giveIds(outline.Rows, allHaveIds);
    outline.KeysDiffer = keysDiffer(outline.Rows);
    return outline;
}

std::optional<std::vector<Value>> legacyInformation(const jet::legacy::LegacyDatabase& database,
                                                    const QString& name) {
    const QString information = informationTableOf(name);
    if (!hasTable(database, information)) {
        return std::nullopt;
    }
    const LegacyTable table = database.Table(information);
    if (table.Rows.empty()) {
        return std::nullopt;
    }
    std::vector<Value> values;
    for (const jet::Field& field : informationTable(name).Fields) {
        values.push_back(valueOf(table.Rows.front(), table.PositionOf(field.Name)));
    }
    return values;
}

} // namespace qvnd::store
