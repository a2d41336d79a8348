#include "generate/settings/LoadSettings.h"

#include "generate/settings/SettingsChoice.h"
#include "generate/settings/SettingsRow.h"

using namespace Qt::StringLiterals;

namespace qvnd::generate {

namespace {

void loadBodyFont(GenerationRun& run) {
    jet::Database& gDbBidSet = run.database();
    QString table = u"页面设置表"_s;
    run.attempt([&] { table = bodyFontTable(readSelectionRow(gDbBidSet)); });
    SettingsRow row;
    run.attempt([&] { row = {gDbBidSet, u"Select 正文字体,正文字号 from ["_s + table + u']'}; });
    if (!row.hasRow()) {
        run.window.BodyFontName = u"宋体"_s;
        run.window.BodySizeName = u"小四"_s;
        return;
    }
    run.attempt([&] { run.window.BodyFontName = row.text(u"正文字体"); });
    run.attempt([&] { run.window.BodySizeName = row.text(u"正文字号"); });
}

void loadNumberWords(GenerationRun& run) {
    std::unique_ptr<jet::Recordset> rows;
    run.attempt([&] { rows = run.database().OpenRecordset(u"SELECT 一型 FROM 序号表"_s); });
    if (!rows)
        return;
    run.attempt([&] {
        for (int number = 1; !rows->Eof(); ++number, rows->MoveNext())
            run.attempt(
                [&] { run.window.NumberWords.set(number, rows->Get(u"一型").TextOrEmpty()); });
    });
}

void loadChapterRow(ChapterGrid& grid, int row, const jet::Recordset& record) {
    const auto& fields = record.Fields();
    for (int column = 1; column <= ChapterGrid::lastColumn; ++column) {
        const QString& field = fields.at(static_cast<std::size_t>(column - 1)).Name;
        grid.set(row, static_cast<ChapterColumn>(column), record.Get(field).TextOrEmpty());
    }
}

void loadChapterGrid(GenerationRun& run) {
    std::unique_ptr<jet::Recordset> rows;
    run.attempt([&] {
        rows = run.database().OpenRecordset(
            u"SELECT 级别,字体,字号,前缀,中缀,序号标志,后缀,位置,置页头,带该级标题 "
            "FROM 章节设置表"_s);
    });
    if (!rows)
        return;
    run.attempt([&] {
        for (int row = 1; !rows->Eof(); ++row, rows->MoveNext())
            run.attempt([&] { loadChapterRow(run.window.ChapterGrid, row, *rows); });
    });
}

} // namespace

void loadSettings(GenerationRun& run) {
    loadBodyFont(run);
    loadNumberWords(run);
    loadChapterGrid(run);
}

} // namespace qvnd::generate
