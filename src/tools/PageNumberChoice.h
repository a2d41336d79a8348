#pragma once

#include "platform/drawing/FontFaces.h"
#include "platform/office/OfficePageNumbers.h"
#include "platform/word/layout/LayoutPageNumbers.h"
#include "tools/GenerateOptions.h"

#include <QString>

namespace qvnd::tools {

// Where the page numbers of a document come from: our own layout, or the office suite where the
// user wishes.
class PageNumberChoice {
public:
    // `fontsHere`: our own layout goes by the fonts that are installed, as the office suite does.
    PageNumberChoice(PageSource wanted, bool fontsHere);
    PageNumberChoice(const PageNumberChoice&) = delete;
    PageNumberChoice& operator=(const PageNumberChoice&) = delete;

    // False when the office suite alone is wanted and there is none.
    bool isOffered() const;
    word::PageNumberSource& source();
    // "layout" or "office"; empty while no document has asked for numbers.
    QString origin();

private:
    PageSource wanted_;
    office::OfficeSuite suite_;
    office::OfficePageNumbers exact_;
    layout::LayoutPageNumbers own_;
};

} // namespace qvnd::tools
