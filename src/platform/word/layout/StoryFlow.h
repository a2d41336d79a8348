#pragma once

#include "platform/word/docfile/document/DocumentData.h"

#include <vector>

namespace qvnd::word {

// A paragraph of the main story and the sheets, counted from 0, on which it starts and ends.
struct PlacedParagraph {
    Cp start = 0;
    int sheet = 0;
    int lastSheet = 0;
};

// Lays the main story out, paragraph after paragraph.
std::vector<PlacedParagraph> layOut(const DocumentContent& content);

} // namespace qvnd::word
