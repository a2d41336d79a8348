#pragma once

#include <string_view>

namespace qvnd::word {

// Whether the font has symbols at the codes of letters (Symbol, Wingdings, ...).
bool isSymbolFont(std::u16string_view font);

// The Unicode character for a code of such a font; a bullet when there is none. `code`: the font's
// code, with or without 0xF000 added.
char16_t symbolAsText(char16_t code, std::u16string_view font);

} // namespace qvnd::word
