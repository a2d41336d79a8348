#pragma once

#include "platform/word/docfile/format/Sprm.h"

#include <initializer_list>

namespace qvnd::word {

// The entries of a list that are whole and of one of the groups, up to the first that is not
// whole; a padding byte at the end is left out.
Bytes soundSprms(ByteView list, std::initializer_list<SprmGroup> groups);

} // namespace qvnd::word
