#pragma once

namespace qvnd::word {

// The width of a character in thousandths of the font size: 1000 for Chinese characters and
// full-width forms, the widths of a Times-like face for Latin text, 0 for combining marks.
int characterWidth(char16_t c);

// Whether a line may end behind this character: blanks, hyphens and East Asian characters.
bool breaksBehind(char16_t c);

// The height of a line of text in the given size, in the same unit: East Asian faces stand taller.
int lineHeight(int fontSize, bool eastAsian);

bool isEastAsian(char16_t c);

} // namespace qvnd::word
