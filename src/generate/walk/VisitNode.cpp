#include "generate/walk/VisitNode.h"

#include "generate/numbering/NumberText.h"
#include "generate/walk/InsertOutlineNode.h"

#include <limits>

namespace qvnd::generate {

namespace {

void enterLevel(BidEditState& window, int level) {
    if (level == window.LastLevel)
        return;
    window.LevelCounters.clearBelow(level);
    window.LastLevel = level;
}

void showProgress(GenerationRun& run) {
    auto& visited = run.window.VisitedCount;
    if (visited == std::numeric_limits<std::int16_t>::max())
        throw RunTimeError(error::overflow, u"溢出");
    ++visited;
    run.services.dlgTB.setProgress(0.65 * visited / run.TrvEdit.Count());
}

QString numberOf(const GenerationRun& run, int level) {
    const BidEditState& window = run.window;
    return FormatLevelNumber(
        {run.switches().gMultLevelOn, window.LevelCounters, window.ChapterGrid, window.NumberWords},
        level, window.LevelCounters.at(level));
}

} // namespace

void VisitNode(GenerationRun& run, const outline::OutlineNode& node) {
    int level = static_cast<int>(node.Key().count(u'.'));
    enterLevel(run.window, level);
    showProgress(run);
    run.window.LevelCounters.advance(level);
    InsertOutlineNode(run, node, level, numberOf(run, level));
}

} // namespace qvnd::generate
