#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace qvnd::word {

// Small whole numbers, a bit for each. Changing it costs nothing but the bit; a search passes 64
// numbers at a step.
class NumberSet {
public:
    bool empty() const { return count_ == 0; }
    bool contains(std::size_t number) const {
        const std::size_t word = number / wordBits;
        return word < words_.size() && (words_[word] & bitOf(number)) != 0;
    }
    // Whether it was not there before.
    bool insert(std::size_t number) { return !contains(number) && add(number); }
    void erase(std::size_t number);
    void clear();

    // The least one that is not below `from`.
    std::optional<std::size_t> firstFrom(std::size_t from) const;
    // The least one that both have.
    static std::optional<std::size_t> firstOfBoth(const NumberSet& one, const NumberSet& other);

private:
    static constexpr std::size_t wordBits = 64;

    static std::uint64_t bitOf(std::size_t number) {
        return std::uint64_t{1} << (number % wordBits);
    }
    bool add(std::size_t number);

    std::vector<std::uint64_t> words_;
    std::size_t count_ = 0;
};

} // namespace qvnd::word
