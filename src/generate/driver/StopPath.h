#pragma once

#include "generate/driver/GenerationRun.h"

namespace qvnd::generate {

// Ends a stopped run: closes the document and quits the word processor with errors ignored, takes
// the stop request back and drops what the run held. The file on disk stays as last saved. The
// progress dialog is left as it is.
void leaveStopped(GenerationRun& run);

} // namespace qvnd::generate
