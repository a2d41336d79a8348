#pragma once

#include "platform/history/HistoryFile.h"

#include <cstdint>

namespace qvnd::history {

// Makes one step of several that follow each other: `all` takes their place, with the words of the
// caller and what they have changed together. Its number is one of theirs; the steps behind the
// last are its children only when it is that of the last. Belongs into a transaction. Errors are
// those of the store.
void joinSteps(HistoryFile& file, const QList<std::int64_t>& steps, const Step& all);

} // namespace qvnd::history
