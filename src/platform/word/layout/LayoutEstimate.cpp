#include "platform/word/layout/LayoutEstimate.h"

#include "platform/word/layout/SectionPages.h"
#include "platform/word/layout/StoryFlow.h"

#include <algorithm>

namespace qvnd::word {

std::vector<int> LayoutEstimate::displayedPages(const DocumentContent& content,
                                                std::span<const Cp> positions) {
    const std::vector<PlacedParagraph> placed = layOut(content);
    pages_ = placed.empty() ? 1 : placed.back().lastSheet + 1;
    const auto sheetOf = [&](Cp position) {
        const auto behind =
            std::upper_bound(placed.begin(), placed.end(), position,
                             [](Cp p, const PlacedParagraph& at) { return p < at.start; });
        return behind == placed.begin() ? 0 : std::prev(behind)->sheet;
    };
    std::vector<int> firstSheets;
    for (const Cp start : sectionStarts(content.sections)) {
        firstSheets.push_back(sheetOf(start));
    }
    const PageNumbering numbering(content, std::move(firstSheets));
    std::vector<int> shown;
    for (const Cp position : positions) {
        shown.push_back(numbering.shown(position, sheetOf(position)));
    }
    return shown;
}

} // namespace qvnd::word
