#pragma once

// What characters mean for where lines end, how wide gaps are and which font shows them. The lists
// of characters that begin or end no line are those of the standard level for simplified Chinese,
// as word processors apply them; Latin words part at blanks and behind hyphens only.
namespace qvnd::layout {

// Chinese, Japanese and Korean letters, full-width forms and their punctuation.
bool isEastAsian(char32_t c);
// Of those the letters alone: what gets a gap beside Latin text.
bool isIdeograph(char32_t c);
// Signs that both a Latin and a Chinese font have: quotation marks, dashes, dots, degree signs.
bool isOfEitherScript(char32_t c);

bool isLatinLetter(char32_t c);
bool isDigit(char32_t c);

// Blanks that a line may end behind and that take no room there.
bool isBlank(char32_t c);

bool beginsNoLine(char32_t c);
bool endsNoLine(char32_t c);
// Closing punctuation that may stand beyond the margin at the end of a full line.
bool mayHang(char32_t c);

// Full-width punctuation whose ink stands in the left or in the right half of its square.
bool isClosingMark(char32_t c);
bool isOpeningMark(char32_t c);
// Marks that the office suite sets narrower where more is to fit on a line.
bool isSqueezable(char32_t c);

// Whether a line may end between two characters that follow each other.
struct BreakRules {
    bool forbidsLineEnds = true; // the lists above count
    bool breaksWords = false;    // between any two letters
};
bool mayBreakBetween(char32_t before, char32_t after, const BreakRules& rules);

} // namespace qvnd::layout
