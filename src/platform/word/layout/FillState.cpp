#include "platform/word/layout/FillState.h"

#include <algorithm>
#include <iterator>

namespace qvnd::layout {

std::deque<Strip>::const_iterator firstWithFloats(const std::deque<Strip>& pending) {
    auto first = std::find_if(pending.begin(), pending.end(), [](const Strip& strip) {
        return strip.besideFloats || (!strip.row && !strip.floats.empty());
    });
    while (first != pending.begin() && first != pending.end() &&
           std::prev(first)->paragraph == first->paragraph) {
        --first;
    }
    return first;
}

std::size_t sizeOf(const FillState& state, std::size_t most) {
    std::size_t size = sizeOf(state.page_.layer);
    for (const auto& column : state.columns_) {
        for (auto flowed = column.begin(); flowed != column.end() && size <= most; ++flowed) {
            size += sizeOf(flowed->strip);
        }
    }
    const auto& pending = state.pending_;
    for (auto strip = pending.begin(); strip != pending.end() && size <= most; ++strip) {
        size += sizeOf(*strip);
    }
    return size;
}

} // namespace qvnd::layout
