#include "platform/word/docfile/container/NumberSet.h"

#include <algorithm>
#include <bit>

namespace qvnd::word {

namespace {

std::size_t leastOf(std::size_t word, std::uint64_t bits) {
    return word * 64 + static_cast<std::size_t>(std::countr_zero(bits));
}

} // namespace

bool NumberSet::add(std::size_t number) {
    const std::size_t word = number / wordBits;
    if (word >= words_.size()) {
        words_.resize(word + 1);
    }
    words_[word] |= bitOf(number);
    ++count_;
    return true;
}

void NumberSet::erase(std::size_t number) {
    if (contains(number)) {
        words_[number / wordBits] &= ~bitOf(number);
        --count_;
    }
}

void NumberSet::clear() {
    std::fill(words_.begin(), words_.end(), 0);
    count_ = 0;
}

std::optional<std::size_t> NumberSet::firstFrom(std::size_t from) const {
    std::uint64_t below = bitOf(from) - 1;
    for (std::size_t word = from / wordBits; word < words_.size(); ++word) {
        if (const std::uint64_t bits = words_[word] & ~below; bits != 0) {
            return leastOf(word, bits);
        }
        below = 0;
    }
    return std::nullopt;
}

std::optional<std::size_t> NumberSet::firstOfBoth(const NumberSet& one, const NumberSet& other) {
    for (std::size_t word = 0; word < std::min(one.words_.size(), other.words_.size()); ++word) {
        if (const std::uint64_t bits = one.words_[word] & other.words_[word]; bits != 0) {
            return leastOf(word, bits);
        }
    }
    return std::nullopt;
}

} // namespace qvnd::word
