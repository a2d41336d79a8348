#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace qvnd::drawing {

// The standard ligatures of a font: the feature 'liga' of its table GSUB, as it is for Latin script
// in the default language (OpenType 1.9, "GSUB", "Common Table Formats").
class Ligatures {
public:
    // A ligature and the glyphs that it stands for behind the first one.
    struct Entry {
        std::vector<std::uint16_t> others;
        std::uint16_t glyph = 0;
    };

    Ligatures() = default;
    // `table`: the bytes of GSUB. What of it is damaged has no ligatures.
    explicit Ligatures(std::string_view table);

    // The first ligature that the font names for glyphs that begin with these; null for none.
    const Entry* find(std::span<const std::uint16_t> glyphs) const;
    bool empty() const { return entries_.empty(); }

private:
    std::map<std::uint16_t, std::vector<Entry>> entries_; // by their first glyph
};

// The kerning of pairs of glyphs in a font: the feature 'kern' of its table GPOS, of the same
// script and language.
class Kerning {
public:
    Kerning() = default;
    // `table`: the bytes of GPOS. What of it is damaged moves nothing.
    explicit Kerning(std::string table) : table_(std::move(table)) {}

    // What is added to the advance of the first glyph, in units of the font; mostly negative.
    int between(std::uint16_t first, std::uint16_t second);

private:
    std::string table_;
    std::map<std::pair<std::uint16_t, std::uint16_t>, int> known_;
};

} // namespace qvnd::drawing
