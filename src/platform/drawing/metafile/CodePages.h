#pragma once

#include "platform/word/docfile/container/Bytes.h"

#include <span>
#include <string>
#include <vector>

namespace qvnd::drawing::metafile {

// A text of a metafile from its bytes in the code page of a font's character set ([MS-WMF]
// 2.1.1.5). `unitsOfByte` gets for each byte the number of code units that it began (0 for the
// second byte of a character), so that advances that come a byte each find their characters. Bytes
// that mean nothing are left out.
std::u16string decodedText(word::ByteView bytes, unsigned charset,
                           std::vector<unsigned>& unitsOfByte);

// Advances that came for each byte, for each code unit: a character has those of all its bytes.
// Nothing where there are fewer than bytes.
std::vector<double> advancesOfUnits(const std::vector<unsigned>& unitsOfByte,
                                    std::span<const double> advancesOfBytes);

// The characters of a text in a symbol font (Symbol, Wingdings, ...) as those that other fonts have
// at those places; any other text as it is.
std::u16string shownText(std::u16string text, const std::u16string& font);

} // namespace qvnd::drawing::metafile
