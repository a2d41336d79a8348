#include "generate/numbering/LevelCounters.h"

#include "platform/error/RunTimeError.h"

#include <algorithm>
#include <limits>

namespace qvnd::generate {

namespace {

std::size_t subscript(int level) {
    if (level < 0 || level > LevelCounters::deepest)
        throw RunTimeError(error::subscriptOutOfRange, u"下标越界");
    return static_cast<std::size_t>(level);
}

} // namespace

int LevelCounters::at(int level) const { return counters_[subscript(level)]; }

void LevelCounters::advance(int level) {
    auto& counter = counters_[subscript(level)];
    if (counter == std::numeric_limits<std::int16_t>::max())
        throw RunTimeError(error::overflow, u"溢出");
    ++counter;
}

void LevelCounters::clearBelow(int level) {
    const int first = std::clamp(level + 1, 0, deepest + 1);
    std::fill(counters_.begin() + first, counters_.end(), std::int16_t{0});
}

} // namespace qvnd::generate
