#pragma once

#include "platform/word/docfile/document/DocumentTables.h"
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
    std::optional<std::uint32_t> comment = std::nullopt; // index of the comment
};

// How much a file holds of what stands outside the main story's own text and tables.
struct SideContents {
    int footnotes = 0;
    int endnotes = 0;
    int comments = 0;
    int textBoxes = 0; // texts of shapes over the main story that no shape shows
    int drawings = 0;  // floating shapes anchored in the main story, each group as one
    int embeddedObjects = 0;
    bool macros = false;
};

// A Word document as read from a file: everything that a merge needs, references as indexes.
struct DocumentData {
    DocumentTables tables;
    Story main; // ends in a paragraph mark
    std::vector<SectionRun> sections;
    std::vector<HeaderSet> headers;  // by section
    std::vector<Bookmark> bookmarks; // those of the main story, and ranges of comments
    SideContents side;
    Bytes settings; // the Dop as it came
    // What was unreadable and left out, in Chinese, for the user; empty for a sound file.
    std::vector<std::u16string> remarks;
};

// A document under work, as the writer wants it: tables, and the main story in slices.
struct DocumentContent {
    DocumentTables tables;
    SlicedText main;
    std::vector<SectionRun> sections;
    std::vector<HeaderSet> headers;
    std::vector<Bookmark> bookmarks;
    Bytes settings; // the Dop
};

} // namespace qvnd::word
