#pragma once

#include "generate/driver/GenerationRun.h"

namespace qvnd::generate {

// Saves the document at the target, ends the word processor and shows the result in the preview.
// False when the save failed.
bool finishDocument(GenerationRun& run);

} // namespace qvnd::generate
