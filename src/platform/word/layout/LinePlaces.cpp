#include "platform/word/layout/LinePlaces.h"

#include <algorithm>
#include <iterator>

namespace qvnd::layout {

LinePlace placeOf(const std::vector<LinePlace>& lines, word::Cp position) {
    if (lines.empty()) {
        return {};
    }
    const auto behind =
        std::upper_bound(lines.begin(), lines.end(), position,
                         [](word::Cp p, const LinePlace& line) { return p < line.at; });
    return behind == lines.begin() ? *behind : *std::prev(behind);
}

void extend(std::optional<word::PageText>& text, const Strip& strip) {
    if (strip.isHeading || strip.isOfNote) {
        return;
    }
    if (strip.row) {
        for (const RowParts::Cell& cell : strip.row->cells) {
            for (std::size_t i = 0; i < cell.strips.size(); ++i) {
                extend(text, cell.strips[i]);
            }
        }
        return;
    }
    const word::PageText before = text.value_or(word::PageText{strip.at, strip.at});
    text = {std::min(before.begin, strip.at), std::max(before.end, strip.at)};
}

// Lines come in order, but for those of a cell that goes on from the page before, and of pages that
// are laid out again.
void LinePlaces::add(const Strip& strip, const LinePlace& page) {
    if (strip.isOfNote) {
        return;
    }
    if (strip.row) {
        for (const RowParts::Cell& cell : strip.row->cells) {
            for (std::size_t i = 0; i < cell.strips.size(); ++i) {
                add(cell.strips[i], page);
            }
        }
        return;
    }
    const auto place =
        lines_.empty() || lines_.back().at < strip.at
            ? lines_.end()
            : std::lower_bound(lines_.begin(), lines_.end(), strip.at,
                               [](const LinePlace& line, word::Cp at) { return line.at < at; });
    if (place == lines_.end() || place->at != strip.at) {
        lines_.insert(place, {strip.at, page.sheet, page.number, page.form});
    }
}

} // namespace qvnd::layout
