#pragma once

#include <string>

namespace qvnd::word {

// A number of a list or a page in the form that an NFC names ([MS-OSHARED] 2.2.1.3): 3, III, iii,
// C, c, 三, ③ and their like. A form that is not known counts in digits.
std::u16string numberInForm(int number, unsigned nfc);

} // namespace qvnd::word
