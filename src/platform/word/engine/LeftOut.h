#pragma once

#include "platform/word/docfile/document/DocumentContent.h"

#include <array>
#include <string>
#include <vector>

namespace qvnd::word {

// Counts of what an import left out.
struct ImportLosses {
    std::array<int, anchorKinds> sideStories{}; // by AnchorKind
    int objects = 0;     // embedded objects without data; their pictures stay
    int drawings = 0;    // anchors of floating shapes that are damaged
    int pictures = 0;    // inline pictures without data
    int lists = 0;       // lists beyond the number that a document holds
    int fonts = 0;       // the same of fonts
    int styles = 0;      // of styles
    int bookmarks = 0;   // and of bookmarks
    int longFormats = 0; // property lists that a file has no room for as a whole
};

// One line of Chinese for each kind of thing that a merge leaves out, behind the remarks of the
// document's reader. Empty when nothing is missing.
std::vector<std::u16string> leftOutOf(const DocumentContent& source, const ImportLosses& losses);

// The same for a document that is opened for editing. It keeps everything that its text refers
// to.
std::vector<std::u16string> leftOutOfOpened(const DocumentContent& source);

} // namespace qvnd::word
