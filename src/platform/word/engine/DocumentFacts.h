#pragma once

#include "platform/word/docfile/DocumentData.h"

#include <string>

namespace qvnd::word {

// How much of everything a document holds. All but the last six count in the main story.
struct DocumentFacts {
    int paragraphs = 0; // cells and row ends not counted
    int tables = 0;     // nested ones too
    int cells = 0;
    int pictures = 0; // inline
    int sections = 0;
    int lists = 0; // that some paragraph belongs to
    int fields = 0;
    int bookmarks = 0;
    int footnotes = 0;
    int endnotes = 0;
    int comments = 0;
    int shapes = 0; // floating
    int embeddedObjects = 0;
    int styles = 0;
};

DocumentFacts factsOf(const DocumentData& document);

// The main story as plain text: a line for each paragraph and table row, a tab between cells, of
// fields what they show.
std::u16string plainText(const Story& story, const PropertyLists& lists);

} // namespace qvnd::word
