#pragma once

#include "platform/word/docfile/document/DocumentContent.h"
#include "platform/word/formatting/DateForms.h"

#include <memory>
#include <optional>
#include <span>

namespace qvnd::layout {

// The document that is laid out. What it points to must outlive the layout.
struct LayoutSource {
    const word::DocumentTables* tables = nullptr;
    std::shared_ptr<const word::Story> main;
    std::span<const word::SectionRun> sections;
    std::span<const word::HeaderSet> headers; // by section
    word::ByteView settings;                  // the Dop
    // What fields of date and time show, as a word processor does that opens the document. Nothing:
    // what they showed last.
    std::optional<word::Moment> now{};
};

LayoutSource sourceOf(const word::DocumentContent& document);

// How a word processor sets text where the document leaves it open.
struct LayoutOptions {
    // Room between Chinese and Latin text, in parts of the font size.
    double latinGap = 0.25;
    // Whether the mark of a paragraph that holds text counts for the height of its line.
    bool marksCount = true;
    // Lines as the office suite sets them: what a multiple adds stands below a line, on a document
    // grid multiples alone count, and the grid stands in the middle of the page. An empty paragraph
    // takes over what is said of the mark before it, deleted text is shown, struck out, where the
    // document's settings show revisions, and characters of symbol fonts keep their codes.
    bool officeLines = false;
    int totalPages = 1; // what NUMPAGES shows
};

// How the office suite of the desktop sets text.
LayoutOptions officeOptions();

} // namespace qvnd::layout
