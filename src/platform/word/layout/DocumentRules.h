#pragma once

#include "platform/word/layout/LineComposer.h"

#include <vector>

namespace qvnd::layout {

// The layout rules of a document as a whole: its sections, and what its settings (the Dop) say.
class DocumentRules {
public:
    // `source` must outlive the object.
    DocumentRules(const LayoutSource& source, const LayoutOptions& options);

    // At least one section.
    const std::vector<word::ResolvedSection>& sections() const { return sections_; }
    // The position behind a section, in the main story.
    word::Cp endOf(std::size_t section) const { return sectionEnds_[section]; }
    // The section of a position in the main story.
    const word::ResolvedSection& sectionAt(word::Cp position) const;
    bool addsSpaces() const; // see gapBetween()
    // Columns above a continuous section end at the same height.
    bool balancesColumns() const;
    // Even pages have the left margin at their right.
    bool mirrorsMargins() const;
    // Borders of pages that stand around the text stand around headers and footers too.
    bool bordersHoldHeader() const;
    bool bordersHoldFooter() const;
    bool showsRevisions() const;
    bool hasLeading() const; // see LineSetting
    // The settings of lines in a column of that width, without a grid.
    LineSetting lineSetting(double width) const;
    // Those of a column, on the section's grid.
    LineSetting columnSetting(const word::ResolvedSection& section, std::size_t column) const;
    // Those of headers, footers and notes, which keep to no grid.
    LineSetting pageSetting(const word::ResolvedSection& section) const {
        return lineSetting(section.paper.textWidth());
    }
    // The paper of the page with that number: the margins of even pages may have changed sides.
    word::SectionPaper paperOf(const word::ResolvedSection& section, int number) const;

private:
    const LayoutSource& source_;
    LayoutOptions options_;
    std::vector<word::ResolvedSection> sections_;
    std::vector<word::Cp> sectionEnds_;
};

} // namespace qvnd::layout
