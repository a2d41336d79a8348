#pragma once

#include <QString>

namespace qvnd::preview {

// A number of a list in the form that an NFC names ([MS-OSHARED] 2.2.1.3): 3, III, iii, C, c, 三,
// ③ and their like. A form that is not known counts in digits.
QString numberInForm(int number, unsigned nfc);

} // namespace qvnd::preview
