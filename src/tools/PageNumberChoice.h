#pragma once

#include "platform/office/OfficePageNumbers.h"
#include "platform/word/layout/LayoutEstimate.h"
#include "tools/GenerateOptions.h"

#include <QString>

namespace qvnd::tools {

// Where the page numbers of a document come from: the office suite where it is installed and
// draws the document, else our estimate; or one of the two alone.
class PageNumberChoice {
public:
    // What is told of the numbers of the last document.
    struct Origin {
        // "office" or "estimate"; empty while no document has asked for numbers.
        QString source;
        // Why an estimate stands in for the suite's numbers, in Chinese; else empty.
        QString fallback;
    };

    explicit PageNumberChoice(PageSource wanted);
    PageNumberChoice(const PageNumberChoice&) = delete;
    PageNumberChoice& operator=(const PageNumberChoice&) = delete;

    // False when the office suite alone is wanted and there is none.
    bool isOffered() const;
    word::PageNumberSource& source();
    Origin origin();

private:
    PageSource wanted_;
    office::OfficeSuite suite_;
    office::OfficePageNumbers exact_;
    word::LayoutEstimate estimate_;
    office::BestPageNumbers best_;
};

} // namespace qvnd::tools
