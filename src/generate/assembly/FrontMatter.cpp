#include "generate/assembly/FrontMatter.h"

#include "generate/assembly/Contents.h"
#include "generate/assembly/Cover.h"
#include "generate/assembly/HeaderFooter.h"
#include "generate/settings/SettingsChoice.h"
#include "generate/settings/SettingsRow.h"

using namespace Qt::StringLiterals;

namespace qvnd::generate {

namespace {

using TableChoice = QString (*)(const std::optional<SelectionRow>&);

QString chosenTable(GenerationRun& run, TableChoice choose) {
    QString table = choose(std::nullopt);
    run.attempt([&] { table = choose(readSelectionRow(run.database())); });
    return table;
}

SettingsRow openRow(GenerationRun& run, const QString& table) {
    SettingsRow row;
    run.attempt([&] { row = {run.database(), u"Select * from ["_s + table + u']'}; });
    return row;
}

void addCover(GenerationRun& run) {
    run.services.dlgTB.setProgress(0.8);
    run.services.dlgTB.setLabel(u"正在设置封面..."_s);
    run.attempt([&] { run.word.activeDocument().paragraphs().First().Range().Select(); });
    typeCover(run);
}

// Sets margins, gutter and the distances of header and footer from a row of the shape of
// 页面设置表, in centimetres. Page size and orientation stay. Without a row nothing is set.
void setPageFormat(GenerationRun& run, const SettingsRow& page) {
    if (page.opened() && !page.hasRow())
        return;
    const auto setup = [&]() -> word::PageSetup& { return run.word.activeDocument().pageSetup(); };
    const auto points = [&](QStringView field) {
        return run.word.application().CentimetersToPoints(page.single(field));
    };
    run.attempt([&] { setup().setTopMargin(points(u"页边距上")); });
    run.attempt([&] { setup().setBottomMargin(points(u"页边距下")); });
    run.attempt([&] { setup().setLeftMargin(points(u"页边距左")); });
    run.attempt([&] { setup().setRightMargin(points(u"页边距右")); });
    run.attempt([&] { setup().setGutter(points(u"装订距离")); });
    run.attempt([&] { setup().setGutterOnTop(!page.equals(u"装订位置", u"边")); });
    run.attempt([&] { setup().setHeaderDistance(points(u"距页眉")); });
    run.attempt([&] { setup().setFooterDistance(points(u"距页脚")); });
}

void addPageFormat(GenerationRun& run) {
    typeContentsHeading(run);
    const SettingsRow page = openRow(run, chosenTable(run, pageTable));
    run.letEventsRun();
    run.stopTest();
    run.services.dlgTB.setProgress(0.86);
    run.services.dlgTB.setLabel(u"正在设置页面格式..."_s);
    setPageFormat(run, page);
}

void addContents(GenerationRun& run) {
    const QString table = chosenTable(run, headerFooterTable);
    run.letEventsRun();
    run.stopTest();
    run.services.dlgTB.setProgress(0.88);
    addContentsTable(run, openRow(run, table));
    run.services.dlgTB.setProgress(0.9);
    run.stopTest();
}

void addHeaderAndFooter(GenerationRun& run) {
    const SettingsRow row = openRow(run, chosenTable(run, headerFooterTable));
    clearHeaderAndFooter(run);
    run.stopTest();
    run.services.dlgTB.setLabel(u"正在设置页眉页脚..."_s);
    typeHeaderAndFooter(run, row);
    addPageNumbers(run, row);
    run.services.dlgTB.setProgress(0.95);
    run.stopTest();
    run.attempt([&] {
        run.word.activeWindow().ActivePane().View().setSeekView(word::SeekView::mainDocument);
    });
}

void breakBeforeLevelOne(GenerationRun& run) {
    SettingsRow levelOne;
    run.attempt([&] { levelOne = {run.database(), u"Select * from 章节设置表 where 级别='1'"_s}; });
    if (levelOne.hasRow())
        run.attempt([&] {
            if (levelOne.equals(u"置页头", u"否"))
                run.word.selection().InsertBreak(word::BreakType::page);
        });
    run.services.dlgTB.setProgress(1.0);
    run.stopTest();
}

} // namespace

void addFrontMatter(GenerationRun& run) {
    addCover(run);
    addPageFormat(run);
    addContents(run);
    addHeaderAndFooter(run);
    breakBeforeLevelOne(run);
}

} // namespace qvnd::generate
