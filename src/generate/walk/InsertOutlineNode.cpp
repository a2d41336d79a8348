#include "generate/walk/InsertOutlineNode.h"

#include "generate/numbering/HeadingNumber.h"
#include "generate/walk/InsertNodeDocument.h"
#include "generate/walk/TypeHeading.h"

#include <algorithm>

namespace qvnd::generate {

namespace {

void endParagraph(GenerationRun& run) {
    bool& AfterNodeFlag = run.window.AfterNodeFlag;
    if (run.switches().gBlankLineAroundTitle || AfterNodeFlag)
        run.word.selection().TypeParagraph();
    AfterNodeFlag = true;
}

void insert(GenerationRun& run, const VisitedNode& visited, const QString& numberText) {
    BidEditState& window = run.window;
    setHeadingNumberText(window.HeadingNumberText, run.switches(), window.ChapterGrid,
                         visited.level, numberText);
    if (!window.HeadingNumberText.isEmpty())
        typeHeading(run, visited);
    if (visited.isDocument())
        insertNodeDocument(run, visited);
    endParagraph(run);
}

void showError(const GenerationRun& run, const RunTimeError& error) {
    const GenerationServices& services = run.services;
    services.dlgTB.hide();
    if (error.number() != 0)
        services.messages.tell(QString::fromStdU16String(error.description()),
                               desktop::Icon::information);
    services.dlgTB.show();
}

} // namespace

void InsertOutlineNode(GenerationRun& run, const outline::OutlineNode& node, int& level,
                       const QString& numberText) {
    std::optional<QString> failure;
    try {
        level = std::min(level, ChapterGrid::lastRow);
        insert(run, {node, level}, numberText);
    } catch (const RunTimeError& error) {
        failure = QString::fromStdU16String(error.description());
        showError(run, error);
    }
    run.window.Visited.push_back({node.Key(), failure});
}

} // namespace qvnd::generate
