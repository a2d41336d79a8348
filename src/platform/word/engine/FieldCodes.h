#pragma once

#include "platform/word/docfile/document/Story.h"

#include <functional>
#include <optional>
#include <string_view>
#include <vector>

namespace qvnd::word {

// A field of a story by the positions of its characters.
struct FieldPlace {
    Cp begin = 0;
    std::optional<Cp> separator;
    Cp end = 0;
    std::uint8_t type = 0; // flt
};

// A word of a field's code (the part before its separator), without quotation marks. There may be
// one for every second character of a text.
struct FieldWord {
    Cp at = 0;
    Cp length : 31 = 0;
    Cp quoted : 1 = 0;

    std::u16string_view in(const Story& story) const {
        return std::u16string_view(story.text).substr(at, length);
    }
};

// The words of one field's code; fields within the code are no part of it and part its words.
struct FieldCode {
    const Story& story;
    std::vector<FieldWord> words;

    std::u16string_view word(std::size_t index) const { return words[index].in(story); }
};

// Visits the fields of a story in the order in which they begin; marks without counterpart are
// passed over.
void forEachField(const Story& story, const std::function<void(const FieldPlace&)>& visit);

// The same with their codes, of which there is one at a time.
using FieldCodeVisitor = std::function<void(const FieldPlace&, const FieldCode&)>;
void forEachFieldCode(const Story& story, const FieldCodeVisitor& visit);

// Visits those words of the code, or parts of words, that may name a bookmark: the argument of REF,
// PAGEREF, NOTEREF and the like, the second one of SEQ, that of \l of a HYPERLINK within the
// document, that of \b of a TOC, INDEX or TOA, that of \r of an XE or TA, the names that a formula
// (=) reckons with, those that IF, COMPARE and the like compare, a name alone. In a formula a name
// is no function and no cell of a table. A place in another file is none of this document's.
using FieldWordVisitor = std::function<void(const FieldWord&)>;
void forEachBookmarkWord(const FieldCode& code, const FieldWordVisitor& visit);

// The word of a LISTNUM that names its list; nothing for any other field.
std::optional<FieldWord> listNameWord(const FieldCode& code);

} // namespace qvnd::word
