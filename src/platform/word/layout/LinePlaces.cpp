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

// Lines come nearly in order: those of a cell that goes on from the page before precede others.
void LinePlaces::add(const Strip& strip, const LinePlace& page) {
    if (strip.row) {
        for (const RowParts::Cell& cell : strip.row->cells) {
            for (const Strip& line : cell.strips) {
                add(line, page);
            }
        }
        return;
    }
    auto place = lines_.end();
    while (place != lines_.begin() && std::prev(place)->at >= strip.at) {
        --place;
    }
    if (place == lines_.end() || place->at != strip.at) {
        lines_.insert(place, {strip.at, page.sheet, page.number, page.form});
    }
}

} // namespace qvnd::layout
