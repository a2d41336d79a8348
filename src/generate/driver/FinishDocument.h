#pragma once

#include "generate/driver/GenerationRun.h"

namespace qvnd::generate {

// Saves the document at the target, ends the word processor and shows the result in the preview.
// False when the save failed.
bool finishDocument(GenerationRun& run);

// Ends a stopped run: closes the document and quits the word processor with errors ignored, takes
// the stop request back and drops what the run held. The file on disk stays as last saved. The
// progress dialog is left as it is.
void leaveStopped(GenerationRun& run);

} // namespace qvnd::generate
