#include "platform/word/layout/Pages.h"

#include <algorithm>
#include <numeric>

namespace qvnd::word {

void Pages::begin(const PageShape& shape) {
    shape_ = shape;
    column_ = 0;
}

void Pages::breakPage() {
    if (!empty_) {
        newSheet();
    }
}

void Pages::newSheet() {
    ++sheet_;
    column_ = 0;
    used_ = 0;
    empty_ = true;
}

void Pages::nextColumn() {
    if (column_ + 1 < shape_.columns) {
        ++column_;
        used_ = 0;
    } else {
        newSheet();
    }
}

int Pages::addLines(const std::vector<int>& heights, int before, int after, int keptBelow) {
    const std::size_t count = heights.size();
    const int total = std::accumulate(heights.begin(), heights.end(), 0);
    const std::size_t together = std::min<std::size_t>(count, 2);
    const int head = count <= 3 && total < shape_.textHeight
                         ? total
                         : std::accumulate(heights.begin(), heights.begin() + together, 0);
    const int wanted = keptBelow > 0 ? std::min(total + keptBelow, shape_.textHeight) : head;
    if (used_ > 0 && before + wanted > room()) {
        nextColumn();
    }
    used_ += used_ > 0 ? before : 0;
    int first = -1;
    for (std::size_t i = 0; i < count; ++i) {
        const bool lastTwo = i + 2 == count && count > 3;
        const int needed = lastTwo ? heights[i] + heights[i + 1] : heights[i];
        if (used_ > 0 && needed > room()) {
            nextColumn();
        }
        first = first < 0 ? sheet_ : first;
        used_ += heights[i];
        empty_ = false;
    }
    used_ += after;
    return first;
}

int Pages::addBox(int height) {
    if (used_ > 0 && height > room()) {
        nextColumn();
    }
    const int first = sheet_;
    empty_ = false;
    for (used_ += height; used_ > shape_.textHeight && height > shape_.textHeight;) {
        const int rest = used_ - shape_.textHeight;
        newSheet();
        used_ = rest;
        height = rest;
        empty_ = false;
    }
    return first;
}

} // namespace qvnd::word
