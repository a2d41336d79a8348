#pragma once

#include "platform/office/OfficePageNumbers.h"
#include "platform/word/layout/LayoutEstimate.h"
#include "tools/GenerateOptions.h"

namespace qvnd::tools {

// The sources of page numbers, and the one that an option names: exact where the office suite is
// installed, else estimated; or one of the two alone.
class PageNumberChoice {
public:
    PageNumberChoice();

    // False when the office suite alone is wanted and there is none.
    bool offers(PageSource wanted) const;
    word::PageNumberSource& source(PageSource wanted);

private:
    office::OfficeSuite suite_;
    office::OfficePageNumbers exact_;
    word::LayoutEstimate estimate_;
    office::BestPageNumbers best_;
};

} // namespace qvnd::tools
