#include "store/LegacyCentral.h"

#include "platform/desktop/MessageBoxes.h"
#include "platform/error/RunTimeError.h"
#include "platform/files/Paths.h"
#include "store/FormatTables.h"
#include "store/LegacyFile.h"
#include "store/LegacyTables.h"
#include "store/Names.h"
#include "store/PlanTables.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <optional>
#include <vector>

namespace qvnd::store {

namespace {

using jet::Field;
using jet::FieldType;
using jet::TableDef;
using jet::legacy::LegacyTable;

std::vector<LegacyTable> tablesIn(const modMain& state, const QString& file) {
    const auto old = state.gLegacyReader->Open(file);
    std::vector<LegacyTable> tables;
    for (const QString& name : old->TableNames()) {
        tables.push_back(old->Table(name));
    }
    return tables;
}

// Sizes are not told, so every text gets all the room there is.
TableDef asItComes(const LegacyTable& table) {
    TableDef definition(table.Name);
    for (Field field : table.Fields) {
        field.Type = field.IsText() ? FieldType::Memo : field.Type;
        field.AllowZeroLength = field.IsText();
        definition.Fields.push_back(field);
    }
    return definition;
}

bool hasFields(const LegacyTable& table, std::initializer_list<QStringView> names) {
    return std::all_of(names.begin(), names.end(),
                       [&](QStringView name) { return table.PositionOf(name) >= 0; });
}

TableDef formatTable(QStringView name) {
    const std::vector<TableDef> all = formatTables();
    return *std::find_if(all.begin(), all.end(),
                         [&](const TableDef& table) { return table.Name == name; });
}

// Plans, templates and library entries bear names of the user's choice; their fields tell what
// they are.
TableDef definitionFor(const LegacyTable& table) {
    TableDef definition = asItComes(table);
    if (hasFields(table, {field::name, field::key})) {
        definition = outlineTable(table.Name);
    } else if (hasFields(table, {field::client, field::contractor})) {
        definition = informationTable({});
    } else if (hasFields(table, {field::projectName, field::officeName})) {
        definition = formatTable(table::cover);
    } else if (hasFields(table, {field::level, field::numberStyle})) {
        definition = formatTable(table::chapters);
    } else if (hasFields(table, {field::headerText, field::footerText})) {
        definition = formatTable(table::headerFooter);
    } else if (hasFields(table, {field::marginTop, field::bodyFont})) {
        definition = formatTable(table::pageSetup);
    }
    definition.Name = table.Name;
    return definition;
}

void fill(jet::Database& database, const std::vector<LegacyTable>& tables) {
    for (const LegacyTable& table : tables) {
        if (table.Fields.empty()) {
            continue;
        }
        TableDef definition = definitionFor(table);
        if (database.TableDefs().Contains(table.Name)) {
            definition = database.TableDefs()[table.Name];
            database.TableDefs().Delete(table.Name);
        }
        bringIn(database, definition, table);
    }
}

// Faults of the file itself. Every other one may be gone at the next start.
bool isDamage(const RunTimeError& failure) {
    return failure.number() == error::unrecognizedFormat ||
           failure.number() == error::tableNotFound;
}

// All tables of the file; nothing, and why in the takeover, when it is damaged.
std::optional<std::vector<LegacyTable>> readWhole(const modMain& state, const QString& file,
                                                  LegacyTakeover& takeover) {
    try {
        return tablesIn(state, file);
    } catch (const RunTimeError& failure) {
        if (!isDamage(failure)) {
            throw;
        }
        takeover.Failure = desktop::descriptionOf(failure);
        return std::nullopt;
    }
}

} // namespace

void takeOverCentralFile(modMain& state, const QString& file,
                         const std::function<void(const QString& path)>& create) {
    if (state.gLegacyReader == nullptr || !state.gLegacyReader->Recognizes(file)) {
        return;
    }
    LegacyTakeover takeover{QFileInfo(file).fileName(), LegacyKind::central};
    const auto tables = readWhole(state, file, takeover);
    takeover.KeptAs = replaceLegacyFile(*state.gWs, file, [&](const QString& path) {
        create(path);
        if (tables) {
            const auto database = state.gWs->OpenDatabase(path);
            fill(*database, *tables);
            database->Close();
        }
    });
    takeover.Tables = tables ? static_cast<int>(tables->size()) : 0;
    state.LegacyTakeovers.push_back(takeover);
}

QString centralFailureText(const LegacyTakeover& takeover) {
    if (takeover.Kind != LegacyKind::central || takeover.Failure.isEmpty()) {
        return {};
    }
    return QStringLiteral(
               "旧版数据库“%1”不能接收，已经重新建立一个新的。\n%2\n原来的文件保存为“%3”。")
        .arg(takeover.Name, takeover.Failure, QDir::toNativeSeparators(takeover.KeptAs));
}

} // namespace qvnd::store
