#pragma once

#include <array>
#include <cstdint>

namespace qvnd::generate {

// The running numbers of the outline levels 0 to 30. A level outside raises error 9 (subscript
// out of range), a number beyond 16 bits error 6 (overflow).
class LevelCounters {
public:
    static constexpr int deepest = 30;

    int at(int level) const;
    void advance(int level);
    // Sets every level deeper than `level` to 0.
    void clearBelow(int level);
    // Sets all levels to 0.
    void clear() { counters_.fill(0); }

private:
    std::array<std::int16_t, deepest + 1> counters_{};
};

} // namespace qvnd::generate
