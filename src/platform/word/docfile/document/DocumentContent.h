#pragma once

#include "platform/word/docfile/document/DocumentTables.h"
#include "platform/word/docfile/document/Remarks.h"
#include "platform/word/docfile/document/SlicedText.h"

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
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

// The text of a document in terms of its tables. Notes, comments and the texts of shapes are
// named by anchors and stand in the tables' pools.
struct DocumentBody {
    SlicedText main; // ends in a paragraph mark
    // At least one; their lengths add up to that of `main`.
    std::vector<SectionRun> sections;
    std::vector<HeaderSet> headers;  // by section
    std::vector<Bookmark> bookmarks; // of the main story
};

// A value under a name, which DOCVARIABLE fields show and macros keep.
struct DocumentVariable {
    std::u16string name;
    std::u16string value;
    bool operator==(const DocumentVariable&) const = default;
};

// What programs show of a document without opening it, and what its fields may ask for. A new
// document has none.
inline constexpr std::size_t associatedTextCount = 18; // in SttbfAssoc
struct DocumentInformation {
    // As they came, sound property sets ([MS-OLEPS] 2.21): title, author, key words; company,
    // category, what users add.
    Bytes summary;
    Bytes documentSummary;
    // Title, author and the like once more, by their places in SttbfAssoc ([MS-DOC] 2.9.272): none
    // or all of them.
    std::vector<std::u16string> associated;
    std::vector<DocumentVariable> variables; // of distinct names
};

// What a file may hold that no document of this program does.
enum class UnreadKind : std::uint8_t {
    macros,
    toolbars, // or key bindings
    embeddedFonts,
    mailMerge,
    contentControls, // or other structured tags; their text is read
    subdocuments,
    editableRanges, // those that a protection leaves free; their text is read
    moveMarks,      // of tracked changes; their text is read
    autoText,
    captions, // that come with a table or a picture by themselves
    routing,  // from one reader to the next
    envelope, // of a mail
    writePassword,
    readOnlyAdvice,
    signature,
    customXml // beside the text, for content controls and programs
};

// What a file holds and the document read from it does not.
struct UnreadContents {
    std::array<int, anchorKinds> sideStories{}; // by AnchorKind
    int textBoxes = 0;
    std::set<UnreadKind> kinds;
    int smartTags = 0;        // marks of words; the words are read
    bool information = false; // that is damaged
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
    DocumentInformation information;
    UnreadContents unread;
};

// Visits each text that stands aside of the main story: headers, separators, notes and comments,
// texts of shapes.
void forEachTextAside(const DocumentContent& content,
                      const std::function<void(const Story& text)>& visit);

} // namespace qvnd::word
