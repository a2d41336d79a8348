#pragma once

#include <cstddef>
#include <functional>

namespace qvnd::test {

// What a piece of work asks of memory, counted over the operators new and delete of the test
// program: the same on every machine, unlike a clock.
struct MemoryUse {
    std::size_t peak = 0;        // bytes in use at one time, over those in use before
    std::size_t allocations = 0; // how often memory was asked for
};

MemoryUse memoryUseOf(const std::function<void()>& work);

} // namespace qvnd::test
