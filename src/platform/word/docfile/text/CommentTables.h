#pragma once

#include "platform/word/docfile/text/NoteTables.h"

#include <optional>
#include <string>

// Comments: PlcfandRef with ATRDPre10, PlcfandTxt, GrpXstAtnOwners, AtrdExtra, and the bookmarks
// of what they speak of (SttbfAtnBkmk, PlcfAtnBkf, PlcfAtnBkl), [MS-DOC] 2.8 and 2.9.
namespace qvnd::word {

// More texts than this no comments can speak of in one file ([MS-DOC] 2.9.277); a comment beyond
// has its place only.
inline constexpr std::size_t mostCommentRanges = 0x3FFB;

// A stretch of the main story.
struct CommentRange {
    Cp start = 0;
    Cp end = 0;
};

struct CommentPlace {
    Cp at = 0; // its reference in the main story
    TextPlace text;
    std::u16string author;
    std::u16string initials;           // the format keeps nine characters
    std::uint32_t date = 0;            // DTTM; 0 where the file does not tell
    std::optional<CommentRange> range; // nothing for a comment on a place
    // An answer is one deeper than the comment before it that it answers; 0 for no answer.
    std::uint32_t depth = 0;
    bool ink = false;
};

struct CommentTableViews {
    ByteView references;  // PlcfandRef
    ByteView texts;       // PlcfandTxt
    ByteView owners;      // GrpXstAtnOwners
    ByteView dates;       // AtrdExtra
    ByteView rangeTags;   // SttbfAtnBkmk
    ByteView rangeStarts; // PlcfAtnBkf
    ByteView rangeEnds;   // PlcfAtnBkl
};

// What tables of notes and comments have of damage.
struct SideDamage {
    int texts = 0;  // notes and comments that are left out
    int ranges = 0; // comments that come in without what they speak of
};

// Comments without a text, and all but the first at one place, are left out. A range that is not
// there, falls, or is not inside the first `mainLength` characters counts as none. Both are counted
// in `*damage` where given. A range without characters is sound and stands for the place. An answer
// to nothing answers the comment before it, the first one is none.
std::vector<CommentPlace> decodeComments(const CommentTableViews& tables, Cp mainLength,
                                         Cp partLength, SideDamage* damage = nullptr);

struct CommentTables {
    Bytes references;
    Bytes texts;
    Bytes owners;
    Bytes dates;
    Bytes rangeTags;
    Bytes rangeStarts;
    Bytes rangeEnds;
};
// `end` is the position that closes the tables over the main story. All are empty when there is no
// comment.
CommentTables encodeComments(std::span<const CommentPlace> comments, Cp end);

} // namespace qvnd::word
