#pragma once

#include "platform/word/docfile/formatting/SectionPaper.h"
#include "platform/word/formatting/PropertyValues.h"

#include <cstdint>
#include <vector>

namespace qvnd::word {

// What a document grid aligns.
enum class GridKind : std::uint8_t { none, linesAndCharacters, lines, snappedCharacters };

// The borders of the pages of a section.
struct PageBorders {
    enum class Pages : std::uint8_t { all, first, allButFirst };

    Border top;
    Border left;
    Border bottom;
    Border right;
    Pages pages = Pages::all;
    bool fromEdge = false; // their distance is that from the edge of the paper, not from the text
};

// The page formatting of a section. Lengths in twips.
struct ResolvedSection {
    enum class Start : std::uint8_t { continuous, column, page, evenPage, oddPage };
    // Where the text stands on a page that it does not fill.
    enum class TextPlace : std::uint8_t { top, centre, justified, bottom };
    // The sign between the number of a chapter and that of a page (CNS).
    enum class ChapterSign : std::uint8_t { hyphen, period, colon, emDash, enDash };

    struct Column {
        int left = 0; // from the left edge of the text area
        int width = 0;
    };

    SectionPaper paper;
    Start start = Start::page;
    std::vector<Column> columns; // at least one
    bool lineBetweenColumns = false;
    int headerTop = 720;       // from the top edge of the paper
    int footerBottom = 720;    // from the bottom edge of the paper
    bool hasTitlePage = false; // the first page has separate headers and footers
    // The margin is exact: a high header or footer does not move the text.
    bool topIsFixed = false;
    bool bottomIsFixed = false;
    bool restartsNumbers = false;
    int firstNumber = 1;
    unsigned numberForm = 0; // NFC
    // The level of the headings whose number stands in front of page numbers; 0 for none.
    unsigned chapterLevel = 0;
    ChapterSign chapterSign = ChapterSign::hyphen;
    GridKind grid = GridKind::none;
    int linePitch = 0;        // of the grid
    int characterSpacing = 0; // added to each character, in 1/4096 point
    // Twips of the cells that the office suite divides the text area into on a grid of characters.
    int cellWidth = 0;
    TextPlace textPlace = TextPlace::top;
    PageBorders borders;
};

// `properties`: the property list of the SEPX. The text area is at least half an inch wide and
// high.
ResolvedSection resolvedSectionOf(ByteView properties, bool gutterOnTop);

} // namespace qvnd::word
