#pragma once

#include "platform/word/docfile/document/DocumentTables.h"

#include <string_view>

namespace qvnd::word {

// The index of a font in the font table, entered there when it is new. The case of Latin letters
// does not count.
std::uint16_t fontNamed(std::vector<FontEntry>& fonts, std::u16string_view name);

// Whether the font's characters are symbols that no other font has: chs of the FFN is 2,
// [MS-DOC] 2.9.79.
bool isSymbolFont(const FontEntry& font);

} // namespace qvnd::word
