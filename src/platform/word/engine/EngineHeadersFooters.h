#pragma once

#include "platform/word/docfile/document/DocumentContent.h"
#include "platform/word/model/HeadersFooters.h"

#include <array>
#include <memory>

namespace qvnd::word {

class EngineDocument;

// The page numbers of the section that the selection stands in.
class EnginePageNumbers : public PageNumbers {
public:
    EnginePageNumbers(EngineDocument& document, HeaderKind kind)
        : document_(document), kind_(kind) {}

    void setNumberStyle(int style) override;
    void setHeadingLevelForChapter(int level) override;
    void setIncludeChapterNumber(bool include) override;
    void setChapterPageSeparator(int separator) override;
    void setRestartNumberingAtSection(bool restart) override;
    void setStartingNumber(int number) override;
    // A page number field in a frame of its own, in front of what the header or footer holds.
    // Without one on the first page the section gets a title page, whose header and footer are
    // empty.
    void Add(PageNumberAlignment alignment, bool firstPage) override;

private:
    void setByte(std::uint16_t opcode, unsigned operand);

    EngineDocument& document_;
    HeaderKind kind_;
    int chapterLevel_ = 0;
};

class EngineHeaderFooter : public HeaderFooter {
public:
    EngineHeaderFooter(EngineDocument& document, HeaderKind kind)
        : pageNumbers_(document, kind), kind_(kind) {}

    bool IsHeader() override;
    word::PageNumbers& PageNumbers() override { return pageNumbers_; }

private:
    EnginePageNumbers pageNumbers_;
    HeaderKind kind_;
};

class EngineSection : public Section {
public:
    explicit EngineSection(EngineDocument& document)
        : header_(document, HeaderKind::oddHeader), footer_(document, HeaderKind::oddFooter) {}

    // 5941 for anything but the primary one.
    HeaderFooter& Headers(int index) override;
    HeaderFooter& Footers(int index) override;

private:
    EngineHeaderFooter header_;
    EngineHeaderFooter footer_;
};

} // namespace qvnd::word
