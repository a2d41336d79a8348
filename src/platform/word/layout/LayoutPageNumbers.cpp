#include "platform/word/layout/LayoutPageNumbers.h"

#include "platform/word/layout/DocumentLayout.h"

#include <algorithm>

namespace qvnd::layout {

namespace {

int numberAt(const std::vector<LinePlace>& lines, word::Cp position) {
    const auto behind =
        std::upper_bound(lines.begin(), lines.end(), position,
                         [](word::Cp p, const LinePlace& line) { return p < line.at; });
    return behind == lines.begin() ? 1 : std::prev(behind)->number;
}

} // namespace

std::vector<int> LayoutPageNumbers::displayedPages(const word::DocumentContent& content,
                                                   std::span<const word::Cp> positions) {
    if (!fonts_) {
        fonts_ = openFonts_();
    }
    const LayoutSource source = sourceOf(content);
    DocumentLayout layout(source, *fonts_, options_);
    pages_ = 0;
    while (layout.nextPage()) {
        ++pages_;
    }
    std::vector<int> shown;
    for (const word::Cp position : positions) {
        shown.push_back(numberAt(layout.lines(), position));
    }
    return shown;
}

} // namespace qvnd::layout
