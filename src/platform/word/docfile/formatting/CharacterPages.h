#pragma once

#include "platform/word/docfile/document/Story.h"
#include "platform/word/docfile/formatting/FormattingPage.h"

#include <cstdint>
#include <vector>

// Character formatting in pages, [MS-DOC] 2.9.33 ChpxFkp and 2.9.32 Chpx.
namespace qvnd::word {

// Characters with one property list, in the form that the file needs (operands are offsets and
// indexes of the file).
struct FormattedCharacters {
    Cp length = 0;
    ByteView properties;
};

// A Chpx counts its bytes in one byte.
inline constexpr std::size_t longestCharacterProperties = 255;

// A list as a Chpx has room for it, and what stays over: that is for a modifier of the text's
// piece, which counts behind the Chpx. Only a list that is too long loses what later entries
// overrule and, as far as that helps, identifiers of editing sessions.
struct FittedList {
    Bytes list;
    Bytes rest;
};
FittedList fittedCharacterProperties(ByteView list);

// The pages for text at file offset `fc`, two bytes a character, handed on one by one; runs of
// length 0 are left out. Of lists longer than longestCharacterProperties the fitted part.
class CharacterPages {
public:
    CharacterPages(std::uint32_t fc, FormattingPages::Take take);

    void add(const FormattedCharacters& run);
    // Where the run that was added last ends.
    std::uint32_t limitFc() const { return pages_.limitFc(); }
    // Hands the last page on.
    void finish() { pages_.finish(); }

private:
    FormattingPages pages_;
};

struct CharacterEntry {
    std::uint32_t firstFc = 0;
    std::uint32_t limitFc = 0;
    ByteView properties; // of the page's bytes
};

struct CharacterPage {
    std::vector<CharacterEntry> entries; // ascending, none empty
    bool sound = true;                   // false: something was out of bounds and left out
};

// Throws FormatError (damaged) for what cannot be a page.
CharacterPage decodeCharacterPage(ByteView page);

} // namespace qvnd::word
