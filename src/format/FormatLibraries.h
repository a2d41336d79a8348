#pragma once

#include "platform/jet/Database.h"
#include "platform/word/model/Application.h"
#include "store/modMain.h"

#include <QString>
#include <QStringList>

#include <optional>

// The saved settings in Db_BidSet.mdb: copies of the working tables under names that the user
// gave, the custom pages, and the row that says which of them generation is to use. Each call does
// its steps one after the other; what was done before an error stays done. Names stand in the
// statements as they are, so that the store refuses those that it cannot take.
namespace qvnd::format {

// The entries of 设置库 or 封面库 in the table's order, of 自定义表 by ID. Error 3078 without the
// table.
QStringList settingLibraries(jet::Database& database);
QStringList coverLibraries(jet::Database& database);
QStringList customPages(jet::Database& database);

// The tables of a setting library, in the order of their making: <name>章节, <name>页面,
// <name>眉脚.
struct SettingTables {
    explicit SettingTables(const QString& name);
    QString chapters;
    QString page;
    QString headerFooter;
};

// Copies the working tables; 3010 when a table of such a name exists.
void copySettingTables(jet::Database& database, const QString& name);
// Copies 封面表 to the table `name`; 3010 when there is any table of that name.
void copyCoverTable(jet::Database& database, const QString& name);
// Adds the row of the entry.
void registerSettingLibrary(jet::Database& database, const QString& name);
void registerCoverLibrary(jet::Database& database, const QString& name);

// The row of the entry, then its tables; 3265 for a table that is missing.
void deleteSettingLibrary(jet::Database& database, const QString& name);
void deleteCoverLibrary(jet::Database& database, const QString& name);

// Which entries generation uses in place of the working tables.
struct Selection {
    std::optional<QString> cover;   // 封面名称, with 是否封面
    std::optional<QString> setting; // 设置名称, with 是否设置
    bool customPage = false;        // 是否定义
};
// Replaces the one row of 是否设置表.
void writeSelection(jet::Database& database, const Selection& selection);
// What the row says; a selection of nothing without a row.
Selection readSelection(jet::Database& database);

// Whether 自定义表 has a page of that name.
bool isCustomPage(jet::Database& database, const QString& name);
// Makes the page's document in the folder of custom pages, which is made if it is missing, over
// one that is there. Errors of the disk and the word processor; 52 for a name that is no name of
// a file.
void createCustomPage(modMain& state, word::ApplicationFactory& word, const QString& name);
void registerCustomPage(jet::Database& database, const QString& name);
// Takes the page's row away; its document stays in the folder.
void unregisterCustomPage(jet::Database& database, const QString& name);
// Makes it the page in use: the one row of 当前自定义.
void storeCurrentPage(jet::Database& database, const QString& name);

} // namespace qvnd::format
