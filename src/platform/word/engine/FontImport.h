#pragma once

#include "platform/word/docfile/document/DocumentTables.h"

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace qvnd::word {

// Finds the fonts of one document in the font table of another. A font is its name (without
// regard to case) and whether it is a symbol font; one that the target lacks comes along when it
// is first asked for.
class FontImport {
public:
    FontImport(std::vector<FontEntry>& target, const std::vector<FontEntry>& source)
        : target_(target), source_(source), known_(source.size()) {}

    // Nothing when the source has no such font, or the target no room for it.
    std::optional<std::uint16_t> font(std::uint16_t ftc);
    // How many fonts the target had no room for.
    int withoutRoom() const { return static_cast<int>(withoutRoom_.size()); }

private:
    using Key = std::pair<std::u16string, bool>; // folded name, symbol font

    static Key keyOf(const FontEntry& font);
    std::optional<std::uint16_t> placeOf(const FontEntry& font);

    std::vector<FontEntry>& target_;
    const std::vector<FontEntry>& source_;
    std::vector<std::optional<std::uint16_t>> known_;
    std::map<Key, std::uint16_t> places_; // of the first `indexed_` fonts of the target
    std::size_t indexed_ = 0;
    std::set<std::uint16_t> withoutRoom_; // of the source
};

} // namespace qvnd::word
