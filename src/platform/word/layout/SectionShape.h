#pragma once

#include "platform/word/docfile/Bytes.h"
#include "platform/word/layout/Pages.h"

namespace qvnd::word {

struct SectionShape {
    PageShape page;
    bool startsPage = true; // false for a continuous section break
};

// What a section's property list (SEPX) says of its paper; what it does not say is as for a
// section without properties, [MS-DOC] 2.6.4.
SectionShape sectionShape(ByteView properties);

} // namespace qvnd::word
