#pragma once

#include "generate/driver/GenerationRun.h"

namespace qvnd::generate {

// One node of the walk: its level from its key's points, the counters, the progress, then the
// node's heading and document. A change of level, up or down, clears all deeper counters. A level
// beyond 30 raises error 9, a visit or number beyond 16 bits error 6.
void VisitNode(GenerationRun& run, const outline::OutlineNode& node);

} // namespace qvnd::generate
