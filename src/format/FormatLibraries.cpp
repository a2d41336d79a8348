#include "format/FormatLibraries.h"

#include "format/SettingsRows.h"
#include "platform/error/RunTimeError.h"
#include "platform/files/Paths.h"
#include "store/Names.h"
#include "store/ProgramFiles.h"

using namespace Qt::StringLiterals;

namespace qvnd::format {

namespace field = store::field;
namespace table = store::table;

namespace {

constexpr long badFileName = 52;

QStringList column(jet::Database& database, const QString& query, QStringView field) {
    QStringList values;
    const auto rows = database.OpenRecordset(query);
    for (; !rows->Eof(); rows->MoveNext()) {
        values << textOf(*rows, field);
    }
    return values;
}

void addName(jet::Database& database, QStringView list, QStringView field, const QString& name) {
    const auto rows = database.OpenRecordset(u"Select * from %1"_s.arg(list));
    rows->AddNew();
    rows->Set(field, name);
    rows->Update();
}

void removeName(jet::Database& database, QStringView list, QStringView field, const QString& name) {
    database.Execute(u"delete * from %1 where %2='%3'"_s.arg(list, field, name));
}

void copyTable(jet::Database& database, QStringView source, const QString& target) {
    database.Execute(u"Select * into %1 from %2"_s.arg(target, source));
}

void dropTable(jet::Database& database, const QString& name) {
    jet::TableDefs tables = database.TableDefs();
    tables.Refresh();
    tables.Delete(name);
    tables.Refresh();
}

// What some system does not take in the name of a file.
void requireFileName(const QString& name) {
    for (const QChar character : name) {
        if (character < u' ' || u"\\/:*?\"<>|"_s.contains(character)) {
            throw RunTimeError(badFileName, u"名称不能含有下列字符：\\ / : * ? \" < > |");
        }
    }
}

std::optional<QString> chosenName(const jet::Recordset& row, QStringView flag, QStringView name) {
    return isYes(row, flag) ? std::optional(textOf(row, name)) : std::nullopt;
}

void setChoice(jet::Recordset& row, QStringView flag, QStringView field,
               const std::optional<QString>& name) {
    row.Set(flag, name ? store::yes : store::no);
    if (name) {
        row.Set(field, *name);
    }
}

} // namespace

QStringList settingLibraries(jet::Database& database) {
    return column(database, u"Select * from 设置库"_s, field::name);
}

QStringList coverLibraries(jet::Database& database) {
    return column(database, u"Select * from 封面库"_s, field::name);
}

QStringList customPages(jet::Database& database) {
    return column(database, u"Select * from 自定义表 order by ID asc"_s, field::path);
}

SettingTables::SettingTables(const QString& name)
    : chapters(name + u"章节"_s), page(name + u"页面"_s), headerFooter(name + u"眉脚"_s) {}

void copySettingTables(jet::Database& database, const QString& name) {
    const SettingTables tables(name);
    copyTable(database, table::chapters, tables.chapters);
    copyTable(database, table::pageSetup, tables.page);
    copyTable(database, table::headerFooter, tables.headerFooter);
}

void copyCoverTable(jet::Database& database, const QString& name) {
    copyTable(database, table::cover, name);
}

void registerSettingLibrary(jet::Database& database, const QString& name) {
    addName(database, table::settingLibrary, field::name, name);
}

void registerCoverLibrary(jet::Database& database, const QString& name) {
    addName(database, table::coverLibrary, field::name, name);
}

void deleteSettingLibrary(jet::Database& database, const QString& name) {
    removeName(database, table::settingLibrary, field::name, name);
    const SettingTables tables(name);
    for (const QString& of : {tables.chapters, tables.headerFooter, tables.page}) {
        dropTable(database, of);
    }
}

void deleteCoverLibrary(jet::Database& database, const QString& name) {
    removeName(database, table::coverLibrary, field::name, name);
    dropTable(database, name);
}

void writeSelection(jet::Database& database, const Selection& selection) {
    const auto rows = database.OpenRecordset(u"Select * from 是否设置表"_s);
    database.Execute(u"delete * from 是否设置表"_s);
    rows->AddNew();
    setChoice(*rows, field::withCover, field::coverName, selection.cover);
    setChoice(*rows, field::withSetting, field::settingName, selection.setting);
    rows->Set(field::withCustomPages, selection.customPage ? store::yes : store::no);
    rows->Update();
}

Selection readSelection(jet::Database& database) {
    const auto rows = database.OpenRecordset(u"Select * from 是否设置表"_s);
    if (rows->Eof()) {
        return {};
    }
    return {chosenName(*rows, field::withCover, field::coverName),
            chosenName(*rows, field::withSetting, field::settingName),
            isYes(*rows, field::withCustomPages)};
}

bool isCustomPage(jet::Database& database, const QString& name) {
    const QString query = u"Select * from 自定义表 where 路径='%1'"_s.arg(name);
    return !database.OpenRecordset(query)->Eof();
}

void createCustomPage(modMain& state, word::ApplicationFactory& word, const QString& name) {
    requireFileName(name);
    const QString file = store::customPageFile(state.gAppPath, name);
    const QString folder = store::customPageFolder(state.gAppPath);
    if (!state.gFso->FolderExists(folder)) {
        state.gFso->CreateFolder(folder);
    }
    const auto application = word.create();
    word::Document& page = application->documents().Add();
    page.SaveAs(files::toPath(file));
    page.Close();
    application->Quit();
}

void registerCustomPage(jet::Database& database, const QString& name) {
    addName(database, table::customPages, field::path, name);
}

void unregisterCustomPage(jet::Database& database, const QString& name) {
    removeName(database, table::customPages, field::path, name);
}

void storeCurrentPage(jet::Database& database, const QString& name) {
    const auto set = [&](jet::Recordset& row) { row.Set(field::path, name); };
    writeRow(database, u"Select * from 当前自定义"_s, set, set);
}

} // namespace qvnd::format
