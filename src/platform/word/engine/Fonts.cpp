#include "platform/word/engine/Fonts.h"

#include "platform/word/docfile/styles/FontTable.h"
#include "platform/word/formatting/NameFolding.h"

#include <algorithm>

namespace qvnd::word {

std::uint16_t fontNamed(std::vector<FontEntry>& fonts, std::u16string_view name) {
    FontEntry made = makeFont(std::u16string(name));
    const std::u16string folded = foldedName(made.name);
    const auto known = std::find_if(fonts.begin(), fonts.end(), [&](const FontEntry& font) {
        return foldedName(font.name) == folded;
    });
    if (known != fonts.end()) {
        return static_cast<std::uint16_t>(known - fonts.begin());
    }
    fonts.push_back(std::move(made));
    return static_cast<std::uint16_t>(fonts.size() - 1);
}

bool isSymbolFont(const FontEntry& font) {
    constexpr std::size_t charsetAt = 3; // behind ffid and wWeight
    constexpr std::uint8_t symbolCharset = 2;
    return font.record.size() > charsetAt && font.record[charsetAt] == symbolCharset;
}

} // namespace qvnd::word
