#pragma once

#include <string>

namespace qvnd::word {

class Range;

enum class TabLeader { spaces = 0, dots = 1, dashes = 2, lines = 3, heavy = 4 };

struct TableOfContentsOptions {
    bool UseHeadingStyles = true;
    int UpperHeadingLevel = 1;
    int LowerHeadingLevel = 3;
    bool RightAlignPageNumbers = true;
    bool IncludePageNumbers = true;
    // Further styles with their levels, as in "标题 1,1".
    std::u16string AddedStyles;
};

class TableOfContents {
public:
    virtual ~TableOfContents() = default;
    virtual void setTabLeader(TabLeader leader) = 0;
    virtual void Delete() = 0;
};

class TablesOfContents {
public:
    virtual ~TablesOfContents() = default;
    virtual TableOfContents& Add(Range& range, const TableOfContentsOptions& options) = 0;
    // Counted from 1; 5941 when there is none.
    virtual TableOfContents& Item(int index) = 0;
};

} // namespace qvnd::word
