#pragma once

#include "platform/word/docfile/document/Story.h"
#include "platform/word/layout/FloatPlace.h"
#include "platform/word/layout/PageModel.h"

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace qvnd::layout {

struct RowParts;

// A floating object, with its position relative to the strip that it is anchored in.
struct AnchoredFloat {
    FloatPlace place;
    Layer layer;            // relative to the object's upper left corner
    double x = 0;           // of the column's left edge, from the strip's upper left corner
    double y = 0;           // of the anchor, from the strip's upper left corner
    double columnWidth = 0; // of a table cell; 0: the strip is in a column of the page
    std::vector<AnchoredFloat> held{};  // what floats in it, relative to its upper left corner
    std::vector<std::uint32_t> notes{}; // the footnotes referenced in it
};

// Moves it to higher planes, or to lower ones, with all that it holds.
void movePlanes(AnchoredFloat& floating, Plane by);

// A horizontal strip of content: a line of text, a table row or a part of a table row. `layer` is
// relative to the strip's upper left corner; the strip's left edge is the left edge of the column.
struct Strip {
    double before = 0; // space above the strip; dropped at the top of a page
    double after = 0;  // space below the strip
    double height = 0;
    double spare = 0;   // part of the height that may extend beyond the end of a column
    double dropped = 0; // part of the height that stays empty above a line, beside what floats
    Layer layer;
    std::vector<AnchoredFloat> floats;
    std::vector<std::uint32_t> notes; // indexes of the footnotes referenced in the strip
    word::Cp at = 0;                  // position of the first character
    bool isOfNote = false;            // its lines are no text of the page's story

    std::size_t paragraph = 0; // differs between adjacent paragraphs
    word::StyleIndex style = 0;
    std::size_t line = 0;  // index of the line in its paragraph
    std::size_t lines = 1; // number of lines of the paragraph
    bool keepsLines = false;
    bool keepsWithNext = false;
    bool controlsWidows = false;
    bool contextual = false;
    bool startsPage = false;
    bool endsPage = false;               // a page break follows
    bool endsColumn = false;             // a column break follows
    std::shared_ptr<const RowParts> row; // set for a row that may break across pages
    // Heading rows to repeat above the strip when it begins a page.
    std::shared_ptr<const std::vector<Strip>> headings;
    bool isHeading = false;
    bool besideFloats = false; // its width depends on its position, because text wraps there
    // The rest of a split row, whose layer and floats are made when it is placed: see completed().
    bool lacksContent = false;
};

using Strips = std::vector<Strip>;

// Strips that the parts of a split row share instead of copying them.
class SharedStrips {
public:
    SharedStrips() = default;
    explicit SharedStrips(Strips strips);

    std::size_t size() const { return strips_.size(); }
    bool empty() const { return strips_.empty(); }
    const Strip& operator[](std::size_t at) const { return *strips_[at]; }
    const Strip& front() const { return *strips_.front(); }
    const Strip& back() const { return *strips_.back(); }
    void push_back(Strip strip) {
        strips_.push_back(std::make_shared<const Strip>(std::move(strip)));
    }
    // Adds those of another list from `from` up to `to`.
    void append(const SharedStrips& others, std::size_t from, std::size_t to);

private:
    std::vector<std::shared_ptr<const Strip>> strips_;
};

// Rules for the content of cells.
struct CellRules {
    bool addsSpaces = true; // see gapBetween()
    // A page may end within a cell only where it may end outside tables. The office suite parts
    // cells behind any line.
    bool keepsTogether = true;
};

// The cells of a table row with their content.
struct RowParts {
    struct Cell {
        double x = 0; // of the content
        double width = 0;
        double above = 0; // from the top of the row to the space above the first strip
        double down = 0;  // the part of `above` that alignment and rows above it cause
        double below = 0; // bottom padding
        SharedStrips strips;
    };
    CellRules rules;
    std::vector<Cell> cells;
    Layer frame; // fills and borders for a row of `height`
    double height = 0;
};

// Strips stacked into one layer. Positions are relative to its upper left corner.
struct Stack {
    Layer layer;
    std::vector<AnchoredFloat> floats;
    double height = 0;
};
Stack stacked(const Strips& strips, bool addsSpaces);

// Memory size in bytes. Data that several strips share is counted for each of them.
std::size_t sizeOf(const Layer& layer);
std::size_t sizeOf(const Strip& strip);

// The space between two adjacent strips. `addsSpaces`: the sum of the space after the first and the
// space before the second; otherwise the larger of both.
double gapBetween(const Strip& above, const Strip& below, bool addsSpaces);
// The height of stacked strips, including the spaces between them.
double heightOf(const Strips& strips, bool addsSpaces);
double heightOf(const SharedStrips& strips, bool addsSpaces);

} // namespace qvnd::layout
