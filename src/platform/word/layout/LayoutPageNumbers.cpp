#include "platform/word/layout/LayoutPageNumbers.h"

#include "platform/word/layout/DocumentLayout.h"

#include <algorithm>

namespace qvnd::layout {

namespace {

// How many pages lie between the last page that was laid out and the one of a position behind it:
// as many as the same text took so far.
int pagesBehind(const std::vector<LinePlace>& lines, word::Cp position) {
    if (lines.empty() || lines.back().sheet == 0 || position <= lines.back().at) {
        return 0;
    }
    const int sheet = lines.back().sheet;
    const word::Cp begin = std::find_if(lines.begin(), lines.end(), [&](const LinePlace& line) {
                               return line.sheet == sheet;
                           })->at;
    return begin == 0 ? 0 : static_cast<int>(static_cast<double>(position - begin) * sheet / begin);
}

int numberAt(const std::vector<LinePlace>& lines, word::Cp position) {
    const auto behind =
        std::upper_bound(lines.begin(), lines.end(), position,
                         [](word::Cp p, const LinePlace& line) { return p < line.at; });
    return behind == lines.begin() ? 1 : std::prev(behind)->number;
}

} // namespace

void LayoutPageNumbers::clear() {
    pages_ = 0;
    stoppedBehind_.reset();
}

std::vector<int> LayoutPageNumbers::displayedPages(const word::DocumentContent& content,
                                                   std::span<const word::Cp> positions) {
    if (!fonts_) {
        fonts_ = openFonts_();
    }
    const LayoutSource source = sourceOf(content);
    DocumentLayout layout(source, *fonts_, options_);
    clear();
    while (!stoppedBehind_ && layout.nextPage()) {
        ++pages_;
        if (eachPage_ && !eachPage_(pages_)) {
            stoppedBehind_ = pages_;
        }
    }
    const auto behind = [&](word::Cp position) {
        return stoppedBehind_ ? pagesBehind(layout.lines(), position) : 0;
    };
    std::vector<int> shown;
    for (const word::Cp position : positions) {
        shown.push_back(numberAt(layout.lines(), position) + behind(position));
    }
    pages_ += behind(source.main->size() - 1);
    return shown;
}

} // namespace qvnd::layout
