#pragma once

#include "platform/office/OfficeSuite.h"
#include "platform/word/layout/PageNumberSource.h"

#include <utility>

namespace qvnd::office {

// Page numbers as the office suite lays the document out: a copy with a mark at each position is
// drawn as PDF, which names the page of each mark.
class OfficePageNumbers : public word::PageNumberSource {
public:
    explicit OfficePageNumbers(OfficeSuite suite) : suite_(std::move(suite)) {}

    // Throws what OfficeSuite::convert() throws.
    std::vector<std::u16string> displayedPages(const word::DocumentContent& content,
                                               std::span<const word::Cp> positions) override;
    int pages() const override { return pages_; }

private:
    OfficeSuite suite_;
    int pages_ = 0;
};

} // namespace qvnd::office
