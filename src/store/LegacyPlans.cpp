#include "store/LegacyPlans.h"

#include "platform/desktop/MessageBoxes.h"
#include "platform/error/RunTimeError.h"
#include "store/LegacyFile.h"
#include "store/LegacyTables.h"
#include "store/Names.h"
#include "store/PlanTables.h"

#include <algorithm>
#include <optional>

namespace qvnd::store {

namespace {

using jet::legacy::LegacyDatabase;
using jet::legacy::LegacyTable;

bool hasTable(const LegacyDatabase& database, const QString& name) {
    return database.TableNames().contains(name, Qt::CaseInsensitive);
}

[[noreturn]] void failNoOutline(const QString& file, const QString& name) {
    throw RunTimeError(
        error::tableNotFound,
        QStringLiteral("旧版数据库『%1』中没有提纲表『%2』。").arg(file, name).toStdU16String());
}

LegacyTable outlineIn(const LegacyDatabase& database, const QString& name, const QString& file) {
    if (!hasTable(database, name)) {
        failNoOutline(file, name);
    }
    LegacyTable outline = database.Table(name);
    if (outline.PositionOf(field::name) < 0 || outline.PositionOf(field::key) < 0) {
        failNoOutline(file, name);
    }
    return outline;
}

// With its first row alone, the only one that counts; nothing without a row.
std::optional<LegacyTable> informationIn(const LegacyDatabase& database, const QString& name) {
    const QString table = informationTableOf(name);
    if (!hasTable(database, table)) {
        return std::nullopt;
    }
    LegacyTable information = database.Table(table);
    if (information.Rows.empty()) {
        return std::nullopt;
    }
    information.Rows.resize(1);
    return information;
}

} // namespace

LegacyTakeover takeOverLegacyFile(modMain& state, const QString& file, const QString& name,
                                  bool withInformation) {
    const auto old = state.gLegacyReader->Open(file);
    const LegacyTable outline = outlineIn(*old, name, file);
    const auto information = withInformation ? informationIn(*old, name) : std::nullopt;
    LegacyTakeover taken{name, withInformation ? LegacyKind::plan : LegacyKind::templateFolder};
    taken.Rows = static_cast<int>(outline.Rows.size());
    taken.Information = information.has_value();
    taken.KeptAs = replaceLegacyFile(*state.gWs, file, [&](const QString& path) {
        const auto database =
            state.gWs->CreateDatabase(path, QString::fromUtf16(jet::dbLangGeneral));
        bringIn(*database, outlineTable(name), outline);
        if (information) {
            bringIn(*database, informationTable(name), *information);
        }
        database->Close();
    });
    return taken;
}

bool adoptLegacyFile(modMain& state, const QString& file, const QString& name,
                     bool withInformation) {
    if (state.gLegacyReader == nullptr || !state.gLegacyReader->Recognizes(file)) {
        return true;
    }
    const LegacyKind kind = withInformation ? LegacyKind::plan : LegacyKind::templateFolder;
    // A second attempt counts alone.
    std::erase_if(state.LegacyTakeovers, [&](const LegacyTakeover& earlier) {
        return earlier.Name == name && earlier.Kind == kind;
    });
    try {
        state.LegacyTakeovers.push_back(takeOverLegacyFile(state, file, name, withInformation));
        return true;
    } catch (const RunTimeError& failure) {
        LegacyTakeover refused{name, kind};
        refused.Failure = desktop::descriptionOf(failure) + QStringLiteral("\n文件保持原样。");
        state.LegacyTakeovers.push_back(refused);
        return false;
    }
}

} // namespace qvnd::store
