#pragma once

#include "platform/word/docfile/container/Bytes.h"

namespace qvnd::word {

// The paper of a section and the place of its text. Lengths in twips; all of them are 0 or more,
// but the text may be left without room by margins that are too wide.
struct SectionPaper {
    int width = 0;
    int height = 0;
    // From the edge of the paper to the text, the gutter included.
    int left = 0;
    int right = 0;
    int top = 0;
    int bottom = 0;

    int textWidth() const { return width - left - right; }
    int textHeight() const { return height - top - bottom; }
};

// Reads a section's property list (SEPX). What it does not say is as for a section without
// properties, [MS-DOC] 2.6.4. A negative top or bottom margin counts by its size: the sign only
// says that header and footer do not push the text. `gutterOnTop` is the document's setting
// iGutterPos: the gutter takes from the height instead of the width.
SectionPaper sectionPaper(ByteView properties, bool gutterOnTop);

// The setting iGutterPos of a Dop.
bool gutterOnTop(ByteView settings);

} // namespace qvnd::word
