#pragma once

#include "platform/word/docfile/text/BulletPictures.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace qvnd::word {

// Names that a document has once each. They are at most `maximumLength` characters and compare
// without regard to the case of Latin letters.
class UniqueNames {
public:
    explicit UniqueNames(std::size_t maximumLength) : maximumLength_(maximumLength) {}

    std::size_t count() const { return used_.size(); }
    bool contains(std::u16string_view name) const;
    void add(std::u16string_view name);
    // `name` itself when it is free, else the name with the first free number behind it. The
    // result is added.
    std::u16string addUnique(std::u16string_view name);

private:
    std::u16string numbered(std::u16string_view name, std::uint32_t number) const;

    std::size_t maximumLength_;
    std::unordered_set<std::u16string> used_;                      // folded
    std::unordered_map<std::u16string, std::uint32_t> lastNumber_; // by folded name
};

// The bookmark names of a document. That of the pictures of bullets is always one of them: the
// writer sets it.
class BookmarkNames : public UniqueNames {
public:
    static constexpr std::size_t maximumLength = 40;

    BookmarkNames() : UniqueNames(maximumLength) { add(nameOfBulletPictures); }
};

} // namespace qvnd::word
