#pragma once

#include "generate/driver/GenerationRun.h"
#include "generate/walk/VisitedNode.h"

namespace qvnd::generate {

// Inserts a document node's file at the insertion point, sets the body font over what came in,
// indents a child document as far as the switches say, and saves. The file is the plan's folder's
// "<key>.doc"; its path stays in gPathTmp. The last paragraph of every child document is outdented
// again, also where nothing was indented.
void insertNodeDocument(GenerationRun& run, const VisitedNode& visited);

} // namespace qvnd::generate
