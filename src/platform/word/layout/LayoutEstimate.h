#pragma once

#include "platform/word/layout/PageNumberSource.h"

namespace qvnd::word {

// Page numbers from a layout of our own: lines by the widths of a typical face, tables row by row,
// pictures by their size, breaks, sections, spacing, lines kept together. Close, not exact: the
// true faces are not looked at. Linear in the size of the document.
class LayoutEstimate : public PageNumberSource {
public:
    std::vector<int> displayedPages(const DocumentContent& content,
                                    std::span<const Cp> positions) override;
    int pages() const override { return pages_; }

private:
    int pages_ = 0;
};

} // namespace qvnd::word
