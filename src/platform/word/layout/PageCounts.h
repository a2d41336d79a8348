#pragma once

#include "platform/word/layout/LayoutSource.h"

#include <cstdint>

// The page counts that fields of a document show, and the pages that its notes are counted by. They
// are known once it has been laid out, so a document that shows them is laid out twice.
namespace qvnd::layout {

// Field types (flt) of NUMPAGES and SECTIONPAGES, [MS-DOC] 2.9.90.
inline constexpr std::uint8_t pageCountField = 0x1A;
inline constexpr std::uint8_t sectionPagesField = 0x42;

// Counts the pages of a document while it is laid out.
class PageCounter {
public:
    PageCounter(const LayoutSource& source, std::size_t sections);

    // Whether fields in any story of the document show page counts, or its notes are counted by
    // page.
    bool isShown() const { return showsTotal_ || showsOfSections_ || numbersNotes_; }
    // Counts the page with index `sheet`, on which the section stands. A page may be counted again.
    void add(std::size_t section, int sheet);
    // Tells the page with the references to these notes.
    void addNotes(const std::vector<std::uint32_t>& notes, int sheet);
    // The counts that the fields should show; nothing when they are those that were used.
    std::optional<PageCounts> corrected(const PageCounts& used) const;

private:
    void look(std::span<const word::FieldMark> fields);

    struct Sheets {
        int first = -1;
        int last = -1;
    };
    bool showsTotal_ = false;
    bool showsOfSections_ = false;
    bool numbersNotes_ = false;
    std::vector<int> noteSheets_; // by note
    int last_ = 0;                // index of the last page
    std::vector<Sheets> sheets_;  // by section
};

// Whether the counts have as many digits, so that text that shows them is as wide. Notes on other
// pages may have other numbers.
bool areAsWide(const PageCounts& one, const PageCounts& other);

// An estimate of the number of pages, from the amount of text.
int likelyPages(const LayoutSource& source);

} // namespace qvnd::layout
