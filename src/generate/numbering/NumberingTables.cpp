#include "generate/numbering/NumberingTables.h"

#include "platform/error/RunTimeError.h"

#include <algorithm>
#include <limits>

namespace qvnd::generate {

namespace {

// `place` as an index of a table whose last place is `last`.
std::size_t subscript(int place, int last) {
    if (place < 0 || place > last)
        throw RunTimeError(error::subscriptOutOfRange, u"下标越界");
    return static_cast<std::size_t>(place);
}

} // namespace

const QString& NumberWords::at(int number) const { return words_[subscript(number, last)]; }

void NumberWords::set(int number, const QString& word) { words_[subscript(number, last)] = word; }

const QString& ChapterGrid::at(int row, ChapterColumn column) const {
    return cells_[subscript(row, lastRow)][static_cast<std::size_t>(column)];
}

void ChapterGrid::set(int row, ChapterColumn column, const QString& text) {
    cells_[subscript(row, lastRow)][static_cast<std::size_t>(column)] = text;
}

int LevelCounters::at(int level) const { return counters_[subscript(level, deepest)]; }

void LevelCounters::advance(int level) {
    auto& counter = counters_[subscript(level, deepest)];
    if (counter == std::numeric_limits<std::int16_t>::max())
        throw RunTimeError(error::overflow, u"溢出");
    ++counter;
}

void LevelCounters::clearBelow(int level) {
    const int first = std::clamp(level + 1, 0, deepest + 1);
    std::fill(counters_.begin() + first, counters_.end(), std::int16_t{0});
}

} // namespace qvnd::generate
