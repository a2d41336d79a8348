#include "platform/word/layout/LayoutPageNumbers.h"

#include "platform/word/formatting/NumberForms.h"
#include "platform/word/layout/DocumentLayout.h"
#include "platform/word/layout/PageCounts.h"

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

} // namespace

void LayoutPageNumbers::clear() {
    pages_ = 0;
    stoppedBehind_.reset();
}

std::vector<std::u16string> LayoutPageNumbers::displayedPages(const word::DocumentContent& content,
                                                              std::span<const word::Cp> positions) {
    if (!fonts_) {
        fonts_ = openFonts_();
    }
    const LayoutSource source = sourceOfToday(content);
    LayoutOptions options = options_;
    options.counts.total = likelyPages(source);
    auto layout = laidOut(source, options);
    const auto counts = layout->correctedCounts();
    if (counts && !areAsWide(*counts, options.counts)) {
        options.counts = *counts;
        layout = laidOut(source, options);
    }
    const auto behind = [&](word::Cp position) {
        return stoppedBehind_ ? pagesBehind(layout->lines(), position) : 0;
    };
    std::vector<std::u16string> shown;
    for (const word::Cp position : positions) {
        const LinePlace place = placeOf(layout->lines(), position);
        shown.push_back(layout->chapterAt(position) +
                        word::numberInForm(place.number + behind(position), place.form));
    }
    pages_ += behind(source.main->size() - 1);
    return shown;
}

std::unique_ptr<DocumentLayout> LayoutPageNumbers::laidOut(const LayoutSource& source,
                                                           const LayoutOptions& options) {
    auto layout = std::make_unique<DocumentLayout>(source, *fonts_, options);
    clear();
    while (!stoppedBehind_ && layout->nextPage()) {
        ++pages_;
        if (eachPage_ && !eachPage_(pages_)) {
            stoppedBehind_ = pages_;
        }
    }
    return layout;
}

} // namespace qvnd::layout
