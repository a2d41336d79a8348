#include "generate/walk/InsertNodeDocument.h"

#include "outline/OutlinePaths.h"
#include "platform/files/Paths.h"
#include "store/FontSizeToPoints.h"

namespace qvnd::generate {

namespace {

int endOf(word::Document& document) { return document.paragraphs().Last().Range().End(); }

int indentOf(const GenerationRun& run) {
    return jet::Value(run.services.frmBidSet.txtInde()).ToInteger();
}

// `start` was the document's end. The insertion point stood before its last mark, so what came in
// begins one character ahead of it.
void formatInserted(const GenerationRun& run, const VisitedNode& visited, int start) {
    word::Document& document = run.word.activeDocument();
    const auto inserted = document.Range(start - 1, endOf(document));
    inserted->Select();
    inserted->Font().setName(run.window.BodyFontName.toStdU16String());
    inserted->Font().setSize(store::FontSizeToPoints(run.window.BodySizeName));
    if (visited.isChild() && run.switches().gChildDocAsNumber)
        inserted->ParagraphFormat().IndentCharWidth(indentOf(run));
}

void selectLastMark(const GenerationRun& run, const VisitedNode& visited) {
    word::Document& document = run.word.activeDocument();
    const int end = endOf(document);
    const auto mark = document.Range(end - 1, end);
    mark->Select();
    if (visited.isChild())
        mark->ParagraphFormat().IndentCharWidth(-indentOf(run));
}

} // namespace

void insertNodeDocument(GenerationRun& run, const VisitedNode& visited) {
    word::Selection& selection = run.word.selection();
    selection.TypeParagraph();
    if (run.switches().gBlankLineAroundTitle)
        selection.TypeParagraph();
    const int start = endOf(run.word.activeDocument());
    // The plan's name is the key of node 1.
    run.gPathTmp =
        outline::documentPath(run.program.modMain, run.TrvEdit.Item(1).Key(), visited.node.Key());
    selection.InsertFile(files::toPath(run.gPathTmp));
    formatInserted(run, visited, start);
    selectLastMark(run, visited);
    run.word.activeDocument().Save();
    run.window.AfterNodeFlag = false;
}

} // namespace qvnd::generate
