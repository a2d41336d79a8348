#pragma once

#include "platform/history/HistoryFile.h"

#include <cstdint>

namespace qvnd::history {

// Makes one step of several that follow each other, oldest first: `joined` takes their place, with
// the words of the caller and what they have changed together. Its number is that of any of them;
// the steps behind the last are its children only when it is that of the last. Belongs into a
// transaction. Errors are those of the store.
void joinSteps(HistoryFile& file, const QList<std::int64_t>& steps, const Step& joined);

// The words of several steps that follow each other, oldest first, under the number of the last. Of
// bookkeeping among commands only the notes are told.
Step joinedStep(const QList<Step>& steps);

} // namespace qvnd::history
