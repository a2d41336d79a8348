#pragma once

#include "platform/word/docfile/container/Bytes.h"
#include "platform/word/layout/Pages.h"

namespace qvnd::word {

struct SectionShape {
    PageShape page;
    bool startsPage = true;
};

// False for a section that begins with a continuous section break.
bool startsPage(ByteView properties);

// What a section's property list (SEPX) says of the room for its text, which is never less than
// half an inch either way. `gutterOnTop`: see sectionPaper().
SectionShape sectionShape(ByteView properties, bool gutterOnTop);

} // namespace qvnd::word
