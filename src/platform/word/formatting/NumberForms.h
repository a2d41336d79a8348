#pragma once

#include <string>

namespace qvnd::word {

// A list or page number in a number format (NFC, [MS-OSHARED] 2.2.1.3): 3, III, iii, C, c, 三, ③
// and so on. An unknown format writes digits.
std::u16string numberInForm(int number, unsigned nfc);

} // namespace qvnd::word
