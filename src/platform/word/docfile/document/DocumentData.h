#pragma once

#include "platform/word/docfile/document/DocumentTables.h"
#include "platform/word/docfile/document/FrameSpot.h"
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

// A text box of the main story: any shape with text, or a chain of them that a text flows through.
struct TextBox {
    Cp at = 0;  // its anchor; that of the group it is in, that of the chain's first shape
    Story text; // ends in a paragraph mark
    std::optional<FrameSpot> spot; // of one in no group
    bool inDrawing = false;        // its shape is one of DocumentTables::drawings
};

// A picture that floats over the main story: a shape that shows a picture and nothing else.
struct FloatingPicture {
    Cp at = 0;              // its anchor, U+0008
    DataBlob inlineForm;    // the same picture in the same size, as one that stands in a line
    bool inDrawing = false; // it is one of DocumentTables::drawings
};

// How much a file holds of what stands outside the main story's own text and tables.
struct SideContents {
    int footnotes = 0;
    int endnotes = 0;
    int comments = 0;
    int textBoxes = 0; // texts of shapes that are anchored in the main story
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
    std::vector<FloatingPicture> floatingPictures; // those of the main story
    std::vector<TextBox> textBoxes; // those of the main story whose anchor is known, in its order
    Bytes settings;                 // the Dop as it came
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
