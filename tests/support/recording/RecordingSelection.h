#pragma once

#include "platform/word/model/Selection.h"
#include "support/recording/RecordingDocument.h"
#include "support/recording/RecordingShapes.h"

namespace qvnd::test {

class RecordingPageNumbers : public word::PageNumbers, Recorded {
public:
    using Recorded::Recorded;
    void setNumberStyle(int style) override { set("NumberStyle", style); }
    void setHeadingLevelForChapter(int level) override { set("HeadingLevelForChapter", level); }
    void setIncludeChapterNumber(bool include) override { set("IncludeChapterNumber", include); }
    void setChapterPageSeparator(int separator) override { set("ChapterPageSeparator", separator); }
    void setRestartNumberingAtSection(bool restart) override {
        set("RestartNumberingAtSection", restart);
    }
    void setStartingNumber(int number) override { set("StartingNumber", number); }
    void Add(word::PageNumberAlignment alignment, bool firstPage) override {
        called("Add " + log_.text(static_cast<int>(alignment)) + ", " + log_.text(firstPage));
    }
};

class RecordingHeaderFooter : public word::HeaderFooter {
public:
    RecordingHeaderFooter(CallLog& log, const std::string& name)
        : log_(log), name_(name), pageNumbers_(log, name + ".PageNumbers") {}
    bool IsHeader() override {
        log_.write(name_ + ".IsHeader -> " + CallLog::text(isHeader));
        return isHeader;
    }
    word::PageNumbers& PageNumbers() override { return pageNumbers_; }

    bool isHeader = true;

private:
    CallLog& log_;
    std::string name_;
    RecordingPageNumbers pageNumbers_;
};

class RecordingSection : public word::Section {
public:
    explicit RecordingSection(CallLog& log)
        : header_(log, "Sections(1).Headers(1)"), footer_(log, "Sections(1).Footers(1)") {}
    word::HeaderFooter& Headers(int /*index*/) override { return header_; }
    word::HeaderFooter& Footers(int /*index*/) override { return footer_; }

private:
    RecordingHeaderFooter header_;
    RecordingHeaderFooter footer_;
};

// Counts the length of what is typed into the document's end: a text its characters, a paragraph
// or break 1, a file `fileLength`.
class RecordingSelection : public word::Selection, Recorded {
public:
    RecordingSelection(CallLog& log, int& documentEnd)
        : Recorded(log, "Selection"), headerFooter(log, "Selection.HeaderFooter"),
          end_(documentEnd), font_(log, "Selection.Font"),
          format_(log, "Selection.ParagraphFormat"),
          range_(log, "Selection.Range", zero_, documentEnd),
          shapes_(log, "Selection.InlineShapes"), section_(log) {}

    void TypeText(std::u16string_view text) override {
        called("TypeText " + log_.text(text));
        end_ += static_cast<int>(text.size());
    }
    void TypeParagraph() override {
        called("TypeParagraph");
        ++end_;
    }
    void InsertBreak(word::BreakType type) override {
        called("InsertBreak " + log_.text(static_cast<int>(type)));
        ++end_;
    }
    void InsertFile(const std::filesystem::path& path) override {
        called("InsertFile " + log_.text(path));
        end_ += fileLength;
    }
    void Delete(int count) override { called("Delete " + log_.text(count)); }
    void MoveLeftExtending() override { called("MoveLeftExtending"); }
    void MoveRightExtending() override { called("MoveRightExtending"); }
    word::Font& Font() override { return font_; }
    word::ParagraphFormat& ParagraphFormat() override { return format_; }
    void setStyle(word::Style& style) override {
        called("Style = " + static_cast<RecordingStyle&>(style).name);
    }
    word::Range& Range() override { return range_; }
    word::InlineShapes& InlineShapes() override { return shapes_; }
    word::Section& Sections(int /*index*/) override { return section_; }
    word::HeaderFooter& HeaderFooter() override { return headerFooter; }

    RecordingHeaderFooter headerFooter;
    int fileLength = 100;

private:
    int& end_;
    const int zero_ = 0;
    RecordingFont font_;
    RecordingParagraphFormat format_;
    RecordingRange range_;
    RecordingShapes shapes_;
    RecordingSection section_;
};

} // namespace qvnd::test
