#pragma once

#include "format/ChildDocumentControls.h"
#include "store/FormatSwitches.h"

// What generation reads of the format dialog beside the tables.
namespace qvnd::generate {

using format::ChildDocumentControls;
using qvnd::FormatSwitches;

} // namespace qvnd::generate
