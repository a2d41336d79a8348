#include "platform/word/CountedMemory.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <new>

namespace {

// In front of each block stands its size, in a place that keeps the block aligned.
constexpr std::size_t head = alignof(std::max_align_t);

std::atomic<std::size_t> inUse = 0;
std::atomic<std::size_t> peak = 0;
std::atomic<std::size_t> allocations = 0;

void* allocate(std::size_t size) {
    void* block = std::malloc(size + head);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    *static_cast<std::size_t*>(block) = size;
    const std::size_t now = inUse.fetch_add(size) + size;
    peak.store(std::max(peak.load(), now));
    ++allocations;
    return static_cast<char*>(block) + head;
}

void release(void* memory) noexcept {
    if (memory != nullptr) {
        void* block = static_cast<char*>(memory) - head;
        inUse -= *static_cast<std::size_t*>(block);
        std::free(block);
    }
}

} // namespace

// The other forms of the operators come down to these.
void* operator new(std::size_t size) { return allocate(size); }
void operator delete(void* memory) noexcept { release(memory); }
void operator delete(void* memory, std::size_t) noexcept { release(memory); }

namespace qvnd::test {

MemoryUse memoryUseOf(const std::function<void()>& work) {
    const std::size_t before = inUse;
    const std::size_t allocationsBefore = allocations;
    peak = before;
    work();
    return {peak - before, allocations - allocationsBefore};
}

} // namespace qvnd::test
