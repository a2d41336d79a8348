#pragma once

namespace qvnd::word {

enum class PageNumberAlignment { left = 0, center = 1, right = 2 };

class PageNumbers {
public:
    virtual ~PageNumbers() = default;
    virtual void setNumberStyle(int style) = 0;
    virtual void setHeadingLevelForChapter(int level) = 0;
    virtual void setIncludeChapterNumber(bool include) = 0;
    virtual void setChapterPageSeparator(int separator) = 0;
    virtual void setRestartNumberingAtSection(bool restart) = 0;
    virtual void setStartingNumber(int number) = 0;
    // Puts a page number field in a frame at that side; `firstPage` false leaves the first page
    // without one.
    virtual void Add(PageNumberAlignment alignment, bool firstPage) = 0;
};

class HeaderFooter {
public:
    virtual ~HeaderFooter() = default;
    virtual bool IsHeader() = 0;
    virtual word::PageNumbers& PageNumbers() = 0;
};

class Section {
public:
    virtual ~Section() = default;
    // Index 1 is the primary header or footer.
    virtual HeaderFooter& Headers(int index) = 0;
    virtual HeaderFooter& Footers(int index) = 0;
};

} // namespace qvnd::word
