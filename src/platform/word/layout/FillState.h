#pragma once

#include "platform/word/layout/ColumnFlow.h"
#include "platform/word/layout/PageModel.h"
#include "platform/word/layout/PageNotes.h"
#include "platform/word/layout/PageObstacles.h"

#include <deque>
#include <vector>

namespace qvnd::layout {

// What goes on from one page to the next, apart from the column that is being filled.
struct FillState {
    std::size_t section_ = 0;
    bool firstOfSection_ = true;    // the next page is
    bool isFirstOfSection_ = false; // this page is
    std::size_t block_ = 0;
    std::deque<Strip> pending_;
    Page page_{.sheet = -1, .number = 1, .numberText = {}, .layer = {}};
    int number_ = 1;
    double bodyTop_ = 0;
    double bodyBottom_ = 0;
    double regionTop_ = 0;  // of the columns being filled
    double regionUsed_ = 0; // by the highest of them
    std::size_t column_ = 0;
    std::vector<std::vector<FlowedStrip>> columns_; // of the region, filled before this one
    bool regionGoesOn_ = false; // its first column does, with what did not fit before
    bool goesOn_ = false;       // the next column, with what did not fit into this one
    std::vector<std::uint32_t> pageNotes_;
    double notesHeight_ = 0;
    std::vector<NotePart> carriedNotes_; // from the page before, which had no room for them
    PageObstacles obstacles_;
    bool endnotesFed_ = false;
    bool done_ = false;
};

// The memory that it points to, in bytes; counted no further than beyond `most`.
std::size_t sizeOf(const FillState& state, std::size_t most);

} // namespace qvnd::layout
