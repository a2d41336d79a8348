#pragma once

#include "platform/word/docfile/document/DocumentContent.h"

#include <array>
#include <string>
#include <vector>

namespace qvnd::word {

// What was met on the way in and could not come along.
struct ImportLosses {
    std::array<int, anchorKinds> sideStories{}; // by AnchorKind
    int objects = 0;     // embedded objects without data; their pictures stay
    int drawings = 0;    // anchors of floating shapes that are damaged
    int pictures = 0;    // inline pictures without data
    int lists = 0;       // lists that found no room
    int longFormats = 0; // property lists that a file has no room for as a whole
};

// One line of Chinese for each kind of thing that a document holds and a merge leaves out, what
// its reader left out first. Empty when nothing is missing.
std::vector<std::u16string> leftOutOf(const DocumentContent& source, const ImportLosses& losses);

// The same for a document that is opened to be worked on and saved: it keeps all that it has but
// what nothing in it leads to.
std::vector<std::u16string> leftOutOfOpened(const DocumentContent& source);

} // namespace qvnd::word
