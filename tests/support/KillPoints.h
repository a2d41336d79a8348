#pragma once

#include <algorithm>
#include <random>
#include <vector>

namespace qvnd::test {

// Before which of its changes, counted from 1, to kill a run that makes that many: at most `most`,
// one at random in each equal stretch of the run, the same ones every time.
inline std::vector<int> killPoints(int changes, int most) {
    std::mt19937 random(20260322);
    std::vector<int> points;
    const int count = std::min(changes, most);
    for (int i = 0; i < count; ++i) {
        std::uniform_int_distribution<int> stretch(i * changes / count + 1,
                                                   (i + 1) * changes / count);
        points.push_back(stretch(random));
    }
    return points;
}

} // namespace qvnd::test
