#include "platform/word/layout/SectionPages.h"

#include "platform/word/formatting/NumberForms.h"

#include <algorithm>

namespace qvnd::word {

namespace {

bool haveOneSheet(const ResolvedSection& one, const ResolvedSection& other) {
    return one.paper.width == other.paper.width && one.paper.height == other.paper.height;
}

bool haveEqualColumns(const ResolvedSection& one, const ResolvedSection& other) {
    return one.paper.left == other.paper.left &&
           std::equal(
               one.columns.begin(), one.columns.end(), other.columns.begin(), other.columns.end(),
               [](const auto& a, const auto& b) { return a.left == b.left && a.width == b.width; });
}

} // namespace

std::vector<Cp> sectionStarts(const std::vector<SectionRun>& sections) {
    std::vector<Cp> starts;
    Cp at = 0;
    for (const SectionRun& section : sections) {
        starts.push_back(at);
        at += section.length;
    }
    return starts;
}

int firstNumberOf(const ResolvedSection& section, int counted) {
    return section.restartsNumbers ? section.firstNumber : counted;
}

bool skipsPage(const ResolvedSection& section, int number) {
    const bool isOdd = number % 2 != 0;
    return (section.start == ResolvedSection::Start::evenPage && isOdd) ||
           (section.start == ResolvedSection::Start::oddPage && !isOdd);
}

bool goesOnBelow(const ResolvedSection& above, const ResolvedSection& section) {
    return section.start == ResolvedSection::Start::continuous && haveOneSheet(above, section);
}

bool beginsColumn(const ResolvedSection& above, const ResolvedSection& section) {
    return section.start == ResolvedSection::Start::column && haveOneSheet(above, section) &&
           haveEqualColumns(above, section);
}

bool hasOneColumnWidth(const ResolvedSection& section) {
    return std::all_of(section.columns.begin(), section.columns.end(), [&](const auto& column) {
        return column.width == section.columns.front().width;
    });
}

PageNumbering::PageNumbering(const DocumentContent& content, const std::vector<int>& firstSheets) {
    counts_.push_back({});
    const std::vector<Cp> starts = sectionStarts(content.sections);
    for (std::size_t i = 0; i < starts.size() && i < firstSheets.size(); ++i) {
        const ResolvedSection section =
            resolvedSectionOf(content.tables.lists[content.sections[i].properties], false);
        const Count& before = counts_.back();
        int number = firstNumberOf(section, before.number + firstSheets[i] - before.sheet);
        number += !section.restartsNumbers && skipsPage(section, number) ? 1 : 0;
        counts_.push_back({starts[i], firstSheets[i], number, section});
        if (section.chapterLevel > 0 && !headings_) {
            headings_.emplace(content.tables, *joined(content.main));
        }
    }
}

std::u16string PageNumbering::shown(Cp position, int sheet) const {
    const auto behind = std::upper_bound(counts_.begin(), counts_.end(), position,
                                         [](Cp p, const Count& count) { return p < count.from; });
    const Count& count = *std::prev(behind);
    const std::u16string chapter =
        headings_ ? headings_->chapter(count.section, {position, position}) : std::u16string();
    return chapter + numberInForm(count.number + sheet - count.sheet, count.section.numberForm);
}

} // namespace qvnd::word
