#pragma once

#include "platform/word/docfile/document/DocumentContent.h"

#include <span>
#include <vector>

namespace qvnd::word {

// The start positions of the sections of the main story, ascending from 0.
std::vector<Cp> sectionStarts(const std::vector<SectionRun>& sections);

// Converts page indexes (0, 1, 2, ...) into page numbers. A section with sprmSFPgnRestart starts at
// its sprmSPgnStart; any other section continues the numbering. The first section starts at 1 by
// default.
class PageNumbering {
public:
    // `firstSheets`: for each section the index of the page on which it starts.
    PageNumbering(const DocumentContent& content, std::vector<int> firstSheets);

    // The page number of the page with index `sheet` for a position of the main story on it.
    int shown(Cp position, int sheet) const;

private:
    struct Count {
        Cp from = 0;   // position from which this count applies
        int sheet = 0; // index of the page with `number`
        int number = 1;
    };
    std::vector<Count> counts_;
};

} // namespace qvnd::word
