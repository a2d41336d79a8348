#pragma once

#include "platform/word/formatting/StyledParagraphs.h"
#include "platform/word/layout/BlockComposer.h"
#include "platform/word/layout/ColumnFlow.h"
#include "platform/word/layout/HeaderStrips.h"
#include "platform/word/layout/PageModel.h"
#include "platform/word/layout/PageNotes.h"
#include "platform/word/layout/PageObstacles.h"

#include <deque>
#include <optional>
#include <vector>

namespace qvnd::layout {

// The state of page filling that continues from one page to the next, without the column that is
// being filled.
struct FillState {
    std::size_t section_ = 0;
    bool firstOfSection_ = true;    // the next page is the first of its section
    bool isFirstOfSection_ = false; // the current page is the first of its section
    std::size_t block_ = 0;         // the next block, or the table being composed
    TableCursor table_;
    std::deque<Strip> pending_;
    Page page_{.sheet = -1, .number = 1, .numberText = {}, .layer = {}};
    HeaderStrips::Of headersOf_;           // of the page being filled
    std::optional<word::PageText> text_{}; // that stands on it
    int number_ = 1;
    double bodyTop_ = 0;
    double bodyBottom_ = 0;
    double regionTop_ = 0;  // top of the columns being filled
    double regionUsed_ = 0; // height of the highest of them
    std::size_t column_ = 0;
    std::vector<std::vector<FlowedStrip>> columns_; // filled columns of the region
    std::size_t sectionColumn_ = 0; // those before are of sections above the current one
    bool regionGoesOn_ = false;     // its first column continues text of the previous page
    bool goesOn_ = false;           // the next column continues text of this one
    std::vector<std::uint32_t> pageNotes_;
    double notesHeight_ = 0;
    std::vector<NotePart> carriedNotes_; // notes that did not fit on the previous page
    PageObstacles obstacles_;
    bool endnotesFed_ = false;
    bool done_ = false;
};

// The first strip of the first paragraph that depends on what floats: whose lines were set beside
// it, or that holds it. Tables do not.
std::deque<Strip>::const_iterator firstWithFloats(const std::deque<Strip>& pending);

// The size of the heap memory of the state, in bytes. Counting stops above `most`.
std::size_t sizeOf(const FillState& state, std::size_t most);

} // namespace qvnd::layout
