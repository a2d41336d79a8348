#pragma once

#include "platform/history/HistoryFile.h"

#include <cstdint>

namespace qvnd::history {

// Makes one step of a step and the next one: `both` takes their place, with the words of the caller
// and what the two have changed together. Its number is that of either; the steps behind `next` are
// its children only when it is that of `next`. Belongs into a transaction. Errors are those of the
// store.
void joinSteps(HistoryFile& file, std::int64_t first, std::int64_t next, const Step& both);

} // namespace qvnd::history
