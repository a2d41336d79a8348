#include "platform/word/layout/PageCounts.h"

#include "platform/word/docfile/text/Fields.h"
#include "platform/word/layout/NoteNumbers.h"

#include <algorithm>
#include <string>

namespace qvnd::layout {

namespace {

std::size_t digitsOf(int number) { return std::to_string(number).size(); }

} // namespace

int PageCounts::ofSection(std::size_t section) const {
    return section < ofSections.size() ? ofSections[section] : 1;
}

PageCounter::PageCounter(const LayoutSource& source, std::size_t sections)
    : numbersNotes_(countsNotesByPage(source)),
      noteSheets_(numbersNotes_ ? source.tables->sideStories.size() : 0), sheets_(sections) {
    look(source.main->fields);
    for (const word::HeaderSet& headers : source.headers) {
        for (const word::SlicedText& text : headers) {
            for (const word::StorySlice& slice : text) {
                look(slice.fragment->fields);
            }
        }
    }
    for (const word::SideStory& note : source.tables->sideStories) {
        if (note.text) {
            look(note.text->fields);
        }
    }
    for (const word::ShapeText& text : source.tables->shapeTexts) {
        if (text.text) {
            look(text.text->fields);
        }
    }
}

void PageCounter::look(std::span<const word::FieldMark> fields) {
    for (const word::FieldMark& mark : fields) {
        if (mark.character == word::fieldBegin) {
            showsTotal_ = showsTotal_ || mark.data == pageCountField;
            showsOfSections_ = showsOfSections_ || mark.data == sectionPagesField;
        }
    }
}

void PageCounter::add(std::size_t section, int sheet) {
    Sheets& sheets = sheets_[section];
    sheets.first = sheets.first < 0 ? sheet : std::min(sheets.first, sheet);
    sheets.last = std::max(sheets.last, sheet);
    last_ = std::max(last_, sheet);
}

void PageCounter::addNotes(const std::vector<std::uint32_t>& notes, int sheet) {
    for (const std::uint32_t note : notes) {
        if (note < noteSheets_.size()) {
            noteSheets_[note] = sheet;
        }
    }
}

std::optional<PageCounts> PageCounter::corrected(const PageCounts& used) const {
    PageCounts counts = used;
    if (showsTotal_) {
        counts.total = last_ + 1;
    }
    if (showsOfSections_) {
        counts.ofSections.clear();
        for (const Sheets& sheets : sheets_) {
            counts.ofSections.push_back(sheets.last - sheets.first + 1);
        }
    }
    if (numbersNotes_) {
        counts.noteSheets = noteSheets_;
    }
    return counts == used ? std::nullopt : std::optional(counts);
}

bool areAsWide(const PageCounts& one, const PageCounts& other) {
    const std::size_t sections = std::max(one.ofSections.size(), other.ofSections.size());
    bool same = digitsOf(one.total) == digitsOf(other.total) && one.noteSheets == other.noteSheets;
    for (std::size_t i = 0; i < sections; ++i) {
        same = same && digitsOf(one.ofSection(i)) == digitsOf(other.ofSection(i));
    }
    return same;
}

int likelyPages(const LayoutSource& source) {
    constexpr word::Cp charactersAPage = 600;
    return static_cast<int>(source.main->size() / charactersAPage) + 1;
}

} // namespace qvnd::layout
