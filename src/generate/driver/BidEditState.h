#pragma once

#include "generate/numbering/NumberingTables.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace qvnd::generate {

// A node that a run has come to.
struct VisitedEntry {
    QString Key;
    // Why its heading or its document is not in the target, or not whole; nothing when all is well.
    std::optional<QString> Failure;
    // Its heading stands in the target in the style of its level, so the contents name it.
    bool HasHeading = false;
};

// The working state that the plan edit window keeps. It lives as long as the window, so what a
// run does not set is what the run before it left.
struct BidEditState {
    // Font and size name of inserted document text.
    QString BodyFontName;
    QString BodySizeName;
    generate::NumberWords NumberWords;
    generate::ChapterGrid ChapterGrid;
    generate::LevelCounters LevelCounters;
    // The level of the node visited last and the nodes visited in this run.
    int LastLevel = 0;
    std::int16_t VisitedCount = 0;
    // Those nodes of this run that were gone through, in order.
    std::vector<VisitedEntry> Visited;
    // What failed in this run beside its nodes: of the cover, the contents, the settings.
    std::vector<QString> Told;
    // Whether the next node without a document ends its paragraph by itself. No run resets it.
    bool AfterNodeFlag = false;
    // Number text of the current node, affixes included.
    QString HeadingNumberText;
};

} // namespace qvnd::generate
