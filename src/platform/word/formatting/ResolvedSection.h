#pragma once

#include "platform/word/docfile/formatting/SectionPaper.h"

#include <cstdint>
#include <vector>

namespace qvnd::word {

// Where lines and characters of a section may stand.
enum class GridKind : std::uint8_t { none, linesAndCharacters, lines, snappedCharacters };

// What a section's properties say of its pages. Lengths in twips.
struct ResolvedSection {
    enum class Start : std::uint8_t { continuous, column, page, evenPage, oddPage };

    struct Column {
        int left = 0; // from the text's left edge
        int width = 0;
    };

    SectionPaper paper;
    Start start = Start::page;
    std::vector<Column> columns; // at least one
    bool lineBetweenColumns = false;
    int headerTop = 720;       // from the edge of the paper
    int footerBottom = 720;    // from the lower edge
    bool hasTitlePage = false; // its first page has headers and footers of its own
    // The text keeps its place, however high the header or footer is.
    bool topIsFixed = false;
    bool bottomIsFixed = false;
    bool restartsNumbers = false;
    int firstNumber = 1;
    unsigned numberForm = 0; // NFC
    GridKind grid = GridKind::none;
    int linePitch = 0;        // of the grid
    int characterSpacing = 0; // added to each character, in 1/4096 of a point
    bool verticalText = false;
};

// `properties`: the SEPX. Room for the text is at least half an inch either way.
ResolvedSection resolvedSectionOf(ByteView properties, bool gutterOnTop);

} // namespace qvnd::word
