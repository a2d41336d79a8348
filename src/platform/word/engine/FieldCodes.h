#pragma once

#include "platform/word/docfile/document/Story.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace qvnd::word {

// A field of a story by the positions of its characters.
struct FieldPlace {
    Cp begin = 0;
    std::optional<Cp> separator;
    Cp end = 0;
    std::uint8_t type = 0; // flt
};

// The fields of a story in the order of their ends; marks without counterpart are passed over.
std::vector<FieldPlace> fieldPlaces(const Story& story);

// A word of a field's code (the part before its separator), without quotation marks.
struct FieldWord {
    Cp at = 0;
    std::u16string text;
    bool quoted = false;
};

// The words of the code of each field, in the order of fieldPlaces(); fields within a code are no
// part of it.
std::vector<std::vector<FieldWord>> fieldWords(const Story& story);

// Those words of the code, or parts of words, that may name a bookmark: the argument of REF,
// PAGEREF, NOTEREF and the like, the second one of SEQ, that of \l of a HYPERLINK within the
// document, that of \b of a TOC, INDEX or TOA, that of \r of an XE or TA, the names that a formula
// (=) reckons with, those that IF, COMPARE and the like compare, a name alone. In a formula a name
// is no function and no cell of a table. A place in another file is none of this document's.
std::vector<FieldWord> bookmarkWords(const std::vector<FieldWord>& words);

// The word of a LISTNUM that names its list; nothing for any other field.
std::optional<FieldWord> listNameWord(const std::vector<FieldWord>& words);

} // namespace qvnd::word
