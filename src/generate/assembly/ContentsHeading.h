#pragma once

#include "generate/driver/GenerationRun.h"

namespace qvnd::generate {

// Types "目录" at the insertion point, centred, bold, 16 points. No paragraph follows it.
void typeContentsHeading(GenerationRun& run);

} // namespace qvnd::generate
