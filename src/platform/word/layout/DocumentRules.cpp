#include "platform/word/layout/DocumentRules.h"

#include "platform/word/docfile/format/Dop.h"
#include "platform/word/formatting/FormatResolver.h"
#include "platform/word/formatting/PropertyValues.h"
#include "platform/word/layout/PageLook.h"

#include <algorithm>

namespace qvnd::layout {

using word::ResolvedSection;

namespace {

// A grid of characters has cells as wide as a character of the standard style. As many as have room
// stand in the middle of the text area.
void divideIntoCells(ResolvedSection& section, int characterWidth) {
    constexpr double unitsPerPoint = 4096;
    const bool hasCells = section.grid == word::GridKind::linesAndCharacters ||
                          section.grid == word::GridKind::snappedCharacters;
    const double added = section.characterSpacing / unitsPerPoint * word::twipsPerPoint;
    const int cell = characterWidth + static_cast<int>(added);
    if (!hasCells || section.columns.size() != 1 || cell <= 0 ||
        cell > section.columns.front().width) {
        return;
    }
    const int rest = section.columns.front().width % cell;
    section.columns.front().left += rest / 2;
    section.columns.front().width -= rest;
    section.cellWidth = cell;
}

} // namespace

DocumentRules::DocumentRules(const LayoutSource& source, const LayoutOptions& options)
    : source_(source), options_(options) {
    const bool onTop = word::gutterOnTop(source_.settings);
    word::Cp at = 0;
    for (const word::SectionRun& section : source_.sections) {
        sections_.push_back(
            word::resolvedSectionOf(source_.tables->lists[section.properties], onTop));
        at += section.length;
        sectionEnds_.push_back(at);
    }
    if (sections_.empty()) {
        sections_.push_back(word::resolvedSectionOf({}, onTop));
        sectionEnds_.push_back(source_.main->size());
    }
    if (options_.officeLines) {
        word::FormatResolver formats(*source_.tables, true);
        const auto& standard = formats.text(0, word::PropertyListId::empty);
        for (ResolvedSection& section : sections_) {
            section.chapterLevel = 0; // which the suite does not show
            divideIntoCells(section, static_cast<int>(standard.halfPoints * twipsPerHalfPoint));
        }
    }
}

const ResolvedSection& DocumentRules::sectionAt(word::Cp position) const {
    const auto end = std::upper_bound(sectionEnds_.begin(), sectionEnds_.end(), position);
    const auto index = static_cast<std::size_t>(end - sectionEnds_.begin());
    return sections_[std::min(index, sections_.size() - 1)];
}

bool DocumentRules::addsSpaces() const {
    constexpr std::size_t knownFrom = 516; // settings of Word 97 do not say it
    return source_.settings.size() < knownFrom ||
           word::readDop(source_.settings, word::dop::addsParagraphSpaces) != 0;
}

bool DocumentRules::balancesColumns() const {
    return word::readDop(source_.settings, word::dop::unbalancedColumns) == 0;
}

bool DocumentRules::mirrorsMargins() const {
    return word::readDop(source_.settings, word::dop::mirrorMargins) != 0;
}

bool DocumentRules::bordersHoldHeader() const {
    return word::readDop(source_.settings, word::dop::bordersHoldHeader) != 0;
}

bool DocumentRules::bordersHoldFooter() const {
    return word::readDop(source_.settings, word::dop::bordersHoldFooter) != 0;
}

bool DocumentRules::showsRevisions() const {
    return word::readDop(source_.settings, word::dop::showRevisions) != 0;
}

// In the office suite one grid takes the leading from all of the document.
bool DocumentRules::hasLeading() const {
    const bool isLost =
        options_.officeLines &&
        std::any_of(sections_.begin(), sections_.end(), [](const ResolvedSection& section) {
            return section.grid != word::GridKind::none;
        });
    return word::readDop(source_.settings, word::dop::noLeading) == 0 && !isLost;
}

LineSetting DocumentRules::lineSetting(double width) const {
    LineSetting setting;
    setting.width = width;
    setting.options = options_;
    const auto tab = word::readDop(source_.settings, word::dop::defaultTab);
    setting.defaultTab = tab > 0 ? tab : setting.defaultTab;
    setting.hasLeading = hasLeading();
    setting.compressesPunctuation =
        word::readDop(source_.settings, word::dop::characterSpacing) != 0;
    setting.expandsBrokenLines =
        word::readDop(source_.settings, word::dop::expandsBrokenLines) != 0;
    setting.gridInTables = word::readDop(source_.settings, word::dop::tableLinesOffGrid) == 0;
    return setting;
}

LineSetting DocumentRules::columnSetting(const ResolvedSection& section, std::size_t column) const {
    LineSetting setting = lineSetting(section.columns[column].width);
    setting.grid = gridOf(section);
    return setting;
}

word::SectionPaper DocumentRules::paperOf(const ResolvedSection& section, int number) const {
    return mirrorsMargins() && number % 2 == 0 ? mirrored(section.paper) : section.paper;
}

} // namespace qvnd::layout
