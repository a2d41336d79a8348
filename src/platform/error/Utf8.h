#pragma once

#include <string>
#include <string_view>

namespace qvnd {

// Lone surrogates and malformed bytes become U+FFFD; nothing throws.
std::string toUtf8(std::u16string_view text);
std::u16string fromUtf8(std::string_view text);

} // namespace qvnd
