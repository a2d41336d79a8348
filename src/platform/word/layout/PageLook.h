#pragma once

#include "platform/word/formatting/ResolvedSection.h"
#include "platform/word/layout/ColumnFlow.h"
#include "platform/word/layout/FloatPlace.h"
#include "platform/word/layout/PageModel.h"

#include <vector>

// What a section says of the look of its pages.
namespace qvnd::layout {

// The paper with the left margin at the right. The gutter goes with it.
word::SectionPaper mirrored(word::SectionPaper paper);

// The vertical range for the text of a page, in twips from its upper edge.
struct TextRoom {
    double top = 0;
    double bottom = 0;
};

// The area that borders surround which keep to the text: the headers too where they hold them.
struct HeldHeaders {
    bool header = false;
    bool footer = false;
};
PageArea borderedArea(const word::ResolvedSection& section, const word::SectionPaper& paper,
                      TextRoom room, HeldHeaders held);

// What headers and footers of that height leave to the text. A height of 0: there is none.
TextRoom textRoom(const word::ResolvedSection& section, double headerHeight, double footerHeight);
// Whole lines of a document grid, in the middle of the room.
TextRoom centredOnGrid(TextRoom room, double linePitch);

// The space above the text of a page that leaves so much room. Text that is to fill its page is
// not spread.
double spaceAboveText(word::ResolvedSection::TextPlace place, double roomLeft);

// Adds the lines between columns, which begin at `top`. Beside a column without text is none.
void addColumnLines(const word::ResolvedSection& section,
                    const std::vector<std::vector<FlowedStrip>>& columns, double left, double top,
                    Layer& layer);

// Adds the borders of a page. `text`: the area that they surround where they are not measured from
// the edge of the paper.
void addPageBorders(const word::PageBorders& borders, bool isFirstOfSection, const PageArea& text,
                    Page& page);

} // namespace qvnd::layout
