#pragma once

#include "platform/word/docfile/document/DocumentTables.h"
#include "platform/word/docfile/document/Remarks.h"
#include "platform/word/docfile/document/SlicedText.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace qvnd::word {

// A section of the main story: its length, its break mark included, and its properties (SEPX).
struct SectionRun {
    Cp length = 0;
    PropertyListId properties = PropertyListId::empty;
};

enum class HeaderKind : std::uint8_t {
    evenHeader,
    oddHeader, // the primary header
    evenFooter,
    oddFooter, // the primary footer
    firstHeader,
    firstFooter
};

// The headers and footers of one section; one without text is that of the section before. Each ends
// in a paragraph mark.
using HeaderSet = std::array<SlicedText, 6>;

// A stretch of the main story that keeps its place in the text: a bookmark, or what a comment
// speaks of, which has no name.
struct Bookmark {
    std::u16string name;
    Cp start = 0; // in the main story
    Cp end = 0;
    std::uint16_t flags = 0;                             // BKC
    std::optional<std::uint32_t> comment = std::nullopt; // DocumentTables::sideStories
};

// The text of a document in terms of its tables. Notes, comments and the texts of shapes are
// named by anchors and stand in the tables' pools.
struct DocumentBody {
    SlicedText main; // ends in a paragraph mark
    // At least one; their lengths add up to that of `main`.
    std::vector<SectionRun> sections;
    std::vector<HeaderSet> headers; // by section
    std::vector<Bookmark> bookmarks;
};

// What a file holds and the document read from it does not.
struct UnreadContents {
    std::array<int, anchorKinds> sideStories{}; // by AnchorKind
    int textBoxes = 0;                          // over the main story
    bool macros = false;
    // What was unreadable and left out, in Chinese, for the user; empty for a sound file.
    Remarks remarks;
};

// A Word document, read or under work. Bringing one into another rewrites its text in terms of the
// other's tables. Property lists of a damaged file may name what its tables do not have: bringing
// it in and opening it take such names out.
struct DocumentContent : DocumentBody {
    DocumentTables tables;
    // What stands between the text and its notes: of footnotes the separator, that of notes that go
    // on from the page before and the notice that they go on, then the same of endnotes; one
    // without text is the usual line, or nothing for a notice. Each ends in a paragraph mark.
    std::array<SlicedText, 6> separators;
    Bytes settings; // the Dop
    UnreadContents unread;
};

} // namespace qvnd::word
