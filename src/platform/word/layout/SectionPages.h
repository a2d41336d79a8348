#pragma once

#include "platform/word/docfile/document/DocumentContent.h"

#include <span>
#include <vector>

namespace qvnd::word {

// Where each section of the main story starts, ascending from 0.
std::vector<Cp> sectionStarts(const std::vector<SectionRun>& sections);

// Turns pages counted from the first sheet (0, 1, 2, ...) into the numbers that they show: a
// section with sprmSFPgnRestart counts anew from its sprmSPgnStart, any other goes on counting;
// the first section starts at 1 unless it says otherwise.
class PageNumbering {
public:
    // `firstSheets`: the sheet on which each section starts, as many as there are sections.
    PageNumbering(const DocumentContent& content, std::vector<int> firstSheets);

    // The number shown on `sheet` for a place at `position` of the main story.
    int shown(Cp position, int sheet) const;

private:
    struct Count {
        Cp from = 0;   // position from which it holds
        int sheet = 0; // the sheet that shows `number`
        int number = 1;
    };
    std::vector<Count> counts_;
};

} // namespace qvnd::word
