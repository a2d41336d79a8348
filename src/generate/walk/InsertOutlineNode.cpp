#include "generate/walk/InsertOutlineNode.h"

#include "generate/numbering/HeadingNumber.h"
#include "generate/numbering/NumberText.h"
#include "generate/settings/SettingsRow.h"
#include "generate/walk/InsertNodeDocument.h"
#include "outline/OutlineTree.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/error/UnexpectedErrors.h"
#include "store/FontSizeToPoints.h"

#include <algorithm>
#include <exception>

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

// Types the heading of a node whose number text is set: a page break where its level begins a
// page, then the text. It takes the style "标题 N", and font, size and alignment are set on that
// style, so the last node of a level decides for all of them. A document under a document that is
// numbered as such stays plain text; false for one.
bool typeHeading(GenerationRun& run, const VisitedNode& visited) {
    word::Selection& selection = run.word.selection();
    if (run.window.ChapterGrid.at(visited.level, ChapterColumn::置页头) == u"是")
        selection.InsertBreak(word::BreakType::page);
    if (visited.isChild() && run.switches().gChildDocAsNumber) {
        selection.TypeText(childTitle(run, visited).toStdU16String());
        return false;
    }
    const QString title = run.window.HeadingNumberText + u' ' + visited.node.Text();
    selection.TypeText(title.toStdU16String());
    formatHeading(run, visited.level);
    return true;
}

void endParagraph(GenerationRun& run) {
    bool& AfterNodeFlag = run.window.AfterNodeFlag;
    if (run.switches().gBlankLineAroundTitle || AfterNodeFlag)
        run.word.selection().TypeParagraph();
    AfterNodeFlag = true;
}

void insert(GenerationRun& run, const VisitedNode& visited, const QString& numberText,
            VisitedEntry& entry) {
    BidEditState& window = run.window;
    setHeadingNumberText(window.HeadingNumberText, run.switches(), window.ChapterGrid,
                         visited.level, numberText);
    if (!window.HeadingNumberText.isEmpty())
        entry.HasHeading = typeHeading(run, visited);
    if (visited.isDocument())
        insertNodeDocument(run, visited);
    endParagraph(run);
}

void showError(const GenerationRun& run, const RunTimeError& error,
               const outline::OutlineNode& node) {
    const GenerationServices& services = run.services;
    services.dlgTB.hide();
    if (error.number() != 0)
        services.messages.tell(outline::failureText({}, error, &node), desktop::Icon::information);
    services.dlgTB.show();
}

} // namespace

void InsertOutlineNode(GenerationRun& run, const outline::OutlineNode& node, int& level,
                       const QString& numberText) {
    VisitedEntry entry{node.Key(), {}};
    try {
        level = std::min(level, ChapterGrid::lastRow);
        insert(run, {node, level}, numberText, entry);
    } catch (const std::exception& failure) {
        const RunTimeError error = runTimeErrorOf(failure);
        entry.Failure = desktop::descriptionOf(error);
        showError(run, error, node);
    }
    run.window.Visited.push_back(entry);
}

} // namespace qvnd::generate
