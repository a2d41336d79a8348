#pragma once

#include "generate/driver/GenerationRun.h"

namespace qvnd::generate {

// Puts cover and contents before the finished outline, then sets page format, header, footer and
// page numbers of the whole document, and the page break that the headings of level 1 do not
// make by themselves.
void addFrontMatter(GenerationRun& run);

} // namespace qvnd::generate
