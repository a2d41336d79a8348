#pragma once

// Character classes for line breaking, spacing and font choice. Line breaking follows the standard
// level of rules for simplified Chinese, as word processors apply them. Latin text breaks only at
// spaces and after hyphens.
namespace qvnd::layout {

// Chinese, Japanese and Korean letters, full-width forms and their punctuation.
bool isEastAsian(char32_t c);
// The letters of isEastAsian(). They get space beside Latin text.
bool isIdeograph(char32_t c);
// Ambiguous characters, which Latin and Chinese fonts both have: quotation marks, dashes, dots,
// degree signs.
bool isOfEitherScript(char32_t c);
// Characters that Chinese fonts have as full-width glyphs, other than those of isEastAsian():
// ambiguous ones, and the Greek and Cyrillic letters, box lines and signs of GB 2312.
bool isFullWidthInChineseFonts(char32_t c);

bool isLatinLetter(char32_t c);
bool isDigit(char32_t c);

// Spaces that a line may break after. They have no width at the end of a line.
bool isBlank(char32_t c);

// Characters that must not begin a line.
bool beginsNoLine(char32_t c);
// Characters that must not end a line.
bool endsNoLine(char32_t c);
// Closing punctuation that may hang into the margin at the end of a full line, in word processors
// and in the office suite.
bool mayHang(char32_t c);
bool mayHangInOffice(char32_t c);

// Full-width punctuation whose glyph fills only the left half (closing) or right half (opening).
bool isClosingMark(char32_t c);
bool isOpeningMark(char32_t c);
// A full-width bracket, which is turned in lines that run downwards.
bool isBracket(char32_t c);
// Punctuation that the office suite compresses to fit more text on a line.
bool isSqueezable(char32_t c);

// Settings of a paragraph for line breaking.
struct BreakRules {
    bool forbidsLineEnds = true; // beginsNoLine() and endsNoLine() apply
    bool breaksWords = false;    // a line may break between any two letters
};
// Whether a line may break between two adjacent characters.
bool mayBreakBetween(char32_t before, char32_t after, const BreakRules& rules);

} // namespace qvnd::layout
