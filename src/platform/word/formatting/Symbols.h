#pragma once

#include <string_view>

namespace qvnd::word {

// Whether a font of that name has pictures where other fonts have letters (Symbol, Wingdings, ...).
bool isSymbolFont(std::u16string_view font);

// The Unicode character that shows what a character of such a font shows; a bullet for one that
// has no counterpart. `code`: as the font has it, with or without 0xF000.
char16_t symbolAsText(char16_t code, std::u16string_view font);

} // namespace qvnd::word
