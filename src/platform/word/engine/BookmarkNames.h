#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace qvnd::word {

// The bookmark names of a document. Names are at most 40 characters and compare without regard
// to the case of Latin letters.
class BookmarkNames {
public:
    static constexpr std::size_t maximumLength = 40;

    std::size_t count() const { return used_.size(); }
    bool contains(std::u16string_view name) const;
    void add(std::u16string_view name);
    // `name` itself when it is free, else the name with the first free number behind it. The
    // result is added.
    std::u16string addUnique(std::u16string_view name);

private:
    std::unordered_set<std::u16string> used_;                      // folded
    std::unordered_map<std::u16string, std::uint32_t> lastNumber_; // by folded name
};

} // namespace qvnd::word
