#include "generate/walk/TypeHeading.h"

#include "generate/assembly/TextAlignment.h"
#include "generate/numbering/FormatChildNumber.h"
#include "store/FontSizeToPoints.h"

using namespace Qt::StringLiterals;

namespace qvnd::generate {

namespace {

QString childTitle(const GenerationRun& run, const VisitedNode& visited) {
    const QString number = QString::number(run.window.LevelCounters.at(visited.level));
    return FormatChildNumber(number, run.services.frmBidSet.cboBianHao()) + u' ' +
           visited.node.Text();
}

void formatHeading(const GenerationRun& run, int level) {
    const ChapterGrid& grid = run.window.ChapterGrid;
    const QString name = u"标题 "_s + QString::number(level);
    word::Style& style = run.word.activeDocument().styles().Item(name.toStdU16String());
    run.word.selection().setStyle(style);
    style.Font().setName(grid.at(level, ChapterColumn::字体).toStdU16String());
    style.Font().setSize(store::FontSizeToPoints(grid.at(level, ChapterColumn::字号)));
    if (const auto alignment = alignmentOf(grid.at(level, ChapterColumn::位置)))
        style.ParagraphFormat().setAlignment(*alignment);
}

} // namespace

void typeHeading(GenerationRun& run, const VisitedNode& visited) {
    word::Selection& selection = run.word.selection();
    if (run.window.ChapterGrid.at(visited.level, ChapterColumn::置页头) == u"是")
        selection.InsertBreak(word::BreakType::page);
    if (visited.isChild() && run.switches().gChildDocAsNumber) {
        selection.TypeText(childTitle(run, visited).toStdU16String());
        return;
    }
    const QString title = run.window.HeadingNumberText + u' ' + visited.node.Text();
    selection.TypeText(title.toStdU16String());
    formatHeading(run, visited.level);
}

} // namespace qvnd::generate
