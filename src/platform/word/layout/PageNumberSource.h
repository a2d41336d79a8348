#pragma once

#include "platform/word/docfile/document/DocumentContent.h"

#include <span>
#include <string>
#include <vector>

namespace qvnd::word {

// Determines the page numbers of positions in a document, for its table of contents.
class PageNumberSource {
public:
    virtual ~PageNumberSource() = default;

    // For each position of the main story (ascending), the number that its page shows by the page
    // numbering of its section, including restarts, in the number form of the section. Returns one
    // text for each position. Returns none when no layout is available; the numbers in the document
    // then stay unchanged.
    virtual std::vector<std::u16string> displayedPages(const DocumentContent& content,
                                                       std::span<const Cp> positions) = 0;

    // The number of pages of the last document; 0 when unknown.
    virtual int pages() const { return 0; }
};

} // namespace qvnd::word
