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

private:
    const LayoutSource& source_;
    LayoutOptions options_;
    std::vector<word::ResolvedSection> sections_;
    std::vector<word::Cp> sectionEnds_;
};

} // namespace qvnd::layout
