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

void* tryToAllocate(std::size_t size) noexcept {
    void* block = std::malloc(size + head);
    if (block == nullptr) {
        return nullptr;
    }
    *static_cast<std::size_t*>(block) = size;
    const std::size_t now = inUse.fetch_add(size) + size;
    peak.store(std::max(peak.load(), now));
    ++allocations;
    return static_cast<char*>(block) + head;
}

void* allocate(std::size_t size) {
    void* block = tryToAllocate(size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}

void release(void* memory) noexcept {
    if (memory != nullptr) {
        void* block = static_cast<char*>(memory) - head;
        inUse -= *static_cast<std::size_t*>(block);
        std::free(block);
    }
}

} // namespace

// All forms but those with an alignment: those that are left out come down to these with the
// standard library's operators, but not with those of a sanitizer.
void* operator new(std::size_t size) { return allocate(size); }
void* operator new[](std::size_t size) { return allocate(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return tryToAllocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return tryToAllocate(size);
}
void operator delete(void* memory) noexcept { release(memory); }
void operator delete[](void* memory) noexcept { release(memory); }
void operator delete(void* memory, std::size_t) noexcept { release(memory); }
void operator delete[](void* memory, std::size_t) noexcept { release(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { release(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { release(memory); }

namespace qvnd::test {

MemoryUse memoryUseOf(const std::function<void()>& work) {
    const std::size_t before = inUse;
    const std::size_t allocationsBefore = allocations;
    peak = before;
    work();
    return {peak - before, allocations - allocationsBefore};
}

} // namespace qvnd::test
