#pragma once

#include "platform/word/docfile/document/DocumentContent.h"

#include <span>
#include <vector>

namespace qvnd::word {

// Tells on which page a place of a document comes to stand. The contents of a document take their
// page numbers from here.
class PageNumberSource {
public:
    virtual ~PageNumberSource() = default;

    // For each position of the main story (ascending) the number that the page of that position
    // shows: counted as the sections' page numbering says, a restart and its first number
    // included. As many answers as positions; an empty answer when no layout can be had, which
    // leaves the numbers as they are.
    virtual std::vector<int> displayedPages(const DocumentContent& content,
                                            std::span<const Cp> positions) = 0;

    // The sheets of the document asked about last; 0 when that is not known.
    virtual int pages() const { return 0; }
};

} // namespace qvnd::word
