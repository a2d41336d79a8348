#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <vector>

namespace qvnd::drawing {

// A value for each character, kept in pages of characters. A page takes memory once one of its
// characters has been asked for.
template <class Value>
class CharacterTable {
public:
    // `unknown`: the value of characters that have not been set.
    explicit CharacterTable(Value unknown) : unknown_(unknown) {}

    Value& operator[](char32_t c) {
        const std::size_t number = c / charactersAPage;
        if (number >= pages_.size()) {
            pages_.resize(number + 1);
        }
        std::unique_ptr<Page>& page = pages_[number];
        if (!page) {
            page = std::make_unique<Page>();
            page->fill(unknown_);
        }
        return (*page)[c % charactersAPage];
    }

private:
    static constexpr std::size_t charactersAPage = 256;
    using Page = std::array<Value, charactersAPage>;

    Value unknown_;
    std::vector<std::unique_ptr<Page>> pages_;
};

} // namespace qvnd::drawing
