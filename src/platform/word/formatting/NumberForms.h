#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace qvnd::word {

// A list or page number in a number format (NFC, [MS-OSHARED] 2.2.1.3): 3, III, iii, C, c, 三, ③
// and so on. An unknown format writes digits.
std::u16string numberInForm(int number, unsigned nfc);

// The number as a field with a formatting switch shows it: words have no capital there.
std::u16string numberOfField(int number, unsigned nfc);

// The number format that a field's instruction asks for by a general formatting switch, such as
// \* roman (ISO 29500-1, 17.16.4.3.1). Nothing without a switch that names one.
std::optional<unsigned> numberFormOf(std::u16string_view instruction);

} // namespace qvnd::word
