#pragma once

#include <cstdint>
#include <string_view>

namespace qvnd::word {

bool isWingdings(std::u16string_view font);

// What Wingdings, Wingdings 2 or Wingdings 3 shows at that code: the Unicode character that looks
// like it, and a bullet where there is none.
char16_t wingdingsAsText(std::uint8_t code, std::u16string_view font);

} // namespace qvnd::word
