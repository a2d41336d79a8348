#pragma once

#include "store/ProgramFiles.h"

namespace qvnd::generate {

using store::programFile;

} // namespace qvnd::generate
