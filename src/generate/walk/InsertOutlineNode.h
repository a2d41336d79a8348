#pragma once

#include "generate/driver/GenerationRun.h"

namespace qvnd::generate {

// Types a node's heading at the insertion point and, for a document node, inserts its file below,
// sets the body font over it and saves. `level` comes back limited to 9.
//
// An error ends this node only. What has been typed and inserted for it stays. The error's
// description is shown (nothing for number 0) and kept in BidEditState::Visited, and the walk goes
// on.
void InsertOutlineNode(GenerationRun& run, const outline::OutlineNode& node, int& level,
                       const QString& numberText);

} // namespace qvnd::generate
