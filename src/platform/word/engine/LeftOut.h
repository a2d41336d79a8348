#pragma once

#include "platform/word/docfile/document/DocumentContent.h"
#include "platform/word/engine/RunFacts.h"

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace qvnd::word {

// Counts of what an import left out.
struct ImportLosses {
    std::array<int, anchorKinds> sideStories{}; // by AnchorKind
    int objects = 0;        // embedded objects without data; their pictures stay
    int drawings = 0;       // anchors of floating shapes that are damaged
    int shapePictures = 0;  // pictures of shapes beyond the number that a document holds
    int pictures = 0;       // inline pictures without data
    int lists = 0;          // lists beyond the number that a document holds
    int fonts = 0;          // the same of fonts
    int styles = 0;         // of styles
    int bookmarks = 0;      // and of bookmarks
    bool divisions = false; // of a web page: namesDivisions() of the source's lists
    int longFormats = 0;    // property lists that a file has no room for as a whole
};

// Counts what a character stands for and is not there, unless it is counted with the notes or is
// not worth a word.
void count(Missing missing, ImportLosses& losses);

// Whether a paragraph or a table stands in a division of a web page (sprmPIpgp, sprmTIpgp), whose
// margins and borders lie in a table that is not read.
bool namesDivisions(const PropertyLists& lists);

// Counts of what a contents found no room for.
struct ContentsLosses {
    std::size_t entries = 0;   // headings that get no bookmark
    std::size_t bookmarks = 0; // hidden ones that made room
};

// What an import gives other names or numbers.
struct ImportChanges {
    struct Renamed {
        std::u16string before;
        std::u16string behind;
    };
    std::vector<Renamed> bookmarks; // those that users see
    std::vector<Renamed> styles;
    std::vector<Renamed> lists;
    int footnotes = 0; // numbered by the program
    int endnotes = 0;
    bool pages = false;    // the file gives the number of a first page
    bool pageForm = false; // the file's page numbers have a form of their own
};

// One line of Chinese for each kind of thing, with the reason.
std::vector<std::u16string> changesOf(const ImportChanges& changes);

// One line of Chinese for each kind of thing that a merge leaves out, behind the remarks of the
// document's reader; smart tags are told apart (ImportNotes). Empty when nothing is missing.
std::vector<std::u16string> leftOutOf(const DocumentContent& source, const ImportLosses& losses);

// The same for a contents.
std::vector<std::u16string> leftOutOf(const ContentsLosses& losses);

// The same for a document that is opened for editing. It keeps its headers and its pages.
std::vector<std::u16string> leftOutOfOpened(const DocumentContent& source,
                                            const ImportLosses& losses);

} // namespace qvnd::word
