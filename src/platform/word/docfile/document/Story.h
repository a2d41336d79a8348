#pragma once

#include "platform/word/docfile/document/PropertyLists.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace qvnd::word {

// A character position, counted in UTF-16 code units from the start of a story or fragment.
using Cp = std::uint32_t;
// An index into the style sheet (istd).
using StyleIndex = std::uint16_t;

// Characters that share one list of character properties (CHPX).
struct CharacterRun {
    Cp length = 0;
    PropertyListId properties = PropertyListId::empty;
    bool operator==(const CharacterRun&) const = default;
};

// One paragraph, its mark included (PAPX). In a fragment the last one may lack its mark: then the
// paragraph goes on in what follows, and the properties that count stand there.
struct ParagraphRun {
    Cp length = 0;
    StyleIndex style = 0;
    PropertyListId properties = PropertyListId::empty;
    bool operator==(const ParagraphRun&) const = default;
};

// A field character in the text: U+0013 begin, U+0014 separator, U+0015 end, with its FLD.
struct FieldMark {
    Cp at = 0;
    std::uint8_t character = 0; // 0x13, 0x14 or 0x15 (the low five bits of FLD.fldch)
    std::uint8_t data = 0;      // begin: field type (flt); end: flags (grffld); separator: unused
    bool operator==(const FieldMark&) const = default;
};

enum class AnchorKind : std::uint8_t { footnote, endnote, comment, drawing };
inline constexpr std::size_t anchorKinds = 4;

// A character that stands for a text of its own or for a drawing, by its index in the pool of that
// kind (DocumentTables). It travels with its character.
struct Anchor {
    Cp at = 0;
    AnchorKind kind = AnchorKind::footnote;
    std::uint32_t index = 0;
    bool operator==(const Anchor&) const = default;
};

// A stretch of a story that keeps its place in the text: a bookmark, or what a comment speaks of,
// which has no name.
struct Bookmark {
    std::u16string name;
    Cp start = 0;
    Cp end = 0;
    std::uint16_t flags = 0;                             // BKC
    std::optional<std::uint32_t> comment = std::nullopt; // DocumentTables::sideStories
    bool operator==(const Bookmark&) const = default;
};

// Appends those of a fragment's marks, fields or anchors, that lie in [begin, begin + length), as
// they stand when that part of the fragment starts at `at`.
template <class Mark>
void appendMarks(std::vector<Mark>& marks, const std::vector<Mark>& ofFragment, Cp begin, Cp length,
                 Cp at) {
    auto mark = std::lower_bound(ofFragment.begin(), ofFragment.end(), begin,
                                 [](const Mark& m, Cp position) { return m.at < position; });
    for (; mark != ofFragment.end() && mark->at - begin < length; ++mark) {
        marks.push_back(*mark);
        marks.back().at = mark->at - begin + at;
    }
}

// Text with its formatting. Invariant: the lengths of `characters` and those of `paragraphs` each
// add up to text.size(); `fields` and `anchors` ascend.
// Characters that bear meaning ([MS-DOC] 2.4.1): 0x0D paragraph, 0x07 cell or row mark, 0x0C page
// or section break, 0x0B line break, 0x01 picture, 0x02 note reference, 0x05 comment reference,
// 0x08 drawing, 0x13 to 0x15 fields.
struct Story {
    std::u16string text;
    std::vector<CharacterRun> characters;
    std::vector<ParagraphRun> paragraphs;
    std::vector<FieldMark> fields;
    std::vector<Anchor> anchors;
    // Those of a text that stands aside: a header, a note, the text of a shape. The bookmarks of a
    // main story are its document's, which is edited.
    std::vector<Bookmark> bookmarks{};

    Cp size() const { return static_cast<Cp>(text.size()); }
    bool operator==(const Story&) const = default;
};

} // namespace qvnd::word
