#pragma once

#include "platform/word/docfile/document/DocumentContent.h"
#include "platform/word/formatting/DateForms.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace qvnd::layout {

// The document to lay out. The objects that it points to must outlive the layout.
struct LayoutSource {
    const word::DocumentTables* tables = nullptr;
    std::shared_ptr<const word::Story> main;
    std::span<const word::SectionRun> sections;
    std::span<const word::HeaderSet> headers; // one for each section
    word::ByteView settings;                  // the Dop
    // The time that date and time fields show, as when a word processor opens the document.
    // Nothing: the fields keep their stored results.
    std::optional<word::Moment> now{};
    // The path of the document, which file name fields show as in the office suite. Empty: the
    // fields keep their stored results.
    std::u16string path{};
};

// The result that a field of that type (flt, [MS-DOC] 2.9.90) shows instead of its stored one: the
// date or the time, or the name of the file, with its path for the switch \p. Nothing for a field
// that shows what it stored.
std::optional<std::u16string> resultAnew(const LayoutSource& source, std::uint8_t type,
                                         std::u16string_view instruction);

LayoutSource sourceOf(const word::DocumentContent& document);
// With dates and times as of now, as a reader of the document sees it.
LayoutSource sourceOfToday(const word::DocumentContent& document);

// What a document shows that is known once it is laid out: the numbers of pages of NUMPAGES and
// SECTIONPAGES fields, and the pages of its notes.
struct PageCounts {
    int total = 1;
    std::vector<int> ofSections;
    // By note: the index of the page with its reference, where notes are counted by page.
    std::vector<int> noteSheets{};

    // 1 for a section whose pages are not counted.
    int ofSection(std::size_t section) const;
    bool operator==(const PageCounts&) const = default;
};

// Layout rules that the document does not specify.
struct LayoutOptions {
    // Space between Chinese and Latin text, as a fraction of the font size.
    double latinGap = 0.25;
    // Whether the paragraph mark affects the height of its line in a paragraph with text.
    bool marksCount = true;
    // Lays out lines as the office suite does:
    // - line spacing by a multiple adds its space below the line;
    // - on a document grid only multiples have an effect, and the grid is centred on the page;
    // - the mark of an empty paragraph inherits the formatting of the previous mark;
    // - deleted text is shown struck out when the document's settings show revisions;
    // - characters of symbol fonts keep their codes.
    bool officeLines = false;
    PageCounts counts;
};

// The options that match the office suite of the desktop.
LayoutOptions officeOptions();

} // namespace qvnd::layout
