#pragma once

#include "generate/driver/GenerationRun.h"

namespace qvnd::generate {

// Shows that the command runs, starts the word processor anew, saves an empty document at the
// target and puts two empty paragraphs ahead of the insertion point.
void startDocument(GenerationRun& run);

} // namespace qvnd::generate
