#pragma once

#include "support/recording/RecordingFormat.h"

#include <map>
#include <memory>

namespace qvnd::test {

class RecordingRange : public word::Range, Recorded {
public:
    RecordingRange(CallLog& log, const std::string& name, const int& start, const int& end)
        : Recorded(log, name), start_(start), end_(end), font_(log, name + ".Font"),
          format_(log, name + ".ParagraphFormat") {}
    int Start() override {
        called("Start -> " + log_.text(start_));
        return start_;
    }
    int End() override {
        called("End -> " + log_.text(end_));
        return end_;
    }
    void Select() override { called("Select"); }
    word::Font& Font() override { return font_; }
    word::ParagraphFormat& ParagraphFormat() override { return format_; }
    const std::string& name() const { return name_; }

private:
    const int& start_;
    const int& end_;
    RecordingFont font_;
    RecordingParagraphFormat format_;
};

// A range that keeps its own positions.
class RecordingFixedRange : public RecordingRange {
public:
    RecordingFixedRange(CallLog& log, const std::string& name, int start, int end)
        : RecordingRange(log, name, startOwned_, endOwned_), startOwned_(start), endOwned_(end) {}

private:
    int startOwned_;
    int endOwned_;
};

class RecordingParagraph : public word::Paragraph {
public:
    RecordingParagraph(CallLog& log, const std::string& name, const int& start, const int& end)
        : range_(log, name + ".Range", start, end) {}
    word::Range& Range() override { return range_; }

private:
    RecordingRange range_;
};

class RecordingParagraphs : public word::Paragraphs {
public:
    RecordingParagraphs(CallLog& log, const int& documentEnd)
        : log_(log), end_(documentEnd), first_(log, "Paragraphs.First", zero_, one_),
          last_(log, "Paragraphs.Last", zero_, documentEnd) {}
    word::Paragraph& First() override { return first_; }
    word::Paragraph& Last() override { return last_; }
    word::Paragraph& Item(int index) override {
        const std::string name = "Paragraphs(" + CallLog::text(index) + ")";
        return byIndex_.try_emplace(index, log_, name, zero_, end_).first->second;
    }

private:
    CallLog& log_;
    const int& end_;
    const int zero_ = 0;
    const int one_ = 1;
    RecordingParagraph first_;
    RecordingParagraph last_;
    std::map<int, RecordingParagraph> byIndex_;
};

class RecordingStyles : public word::Styles {
public:
    explicit RecordingStyles(CallLog& log) : log_(log) {}
    word::Style& Item(std::u16string_view name) override {
        const std::string text = "Styles(" + CallLog::text(name) + ")";
        return byName_.try_emplace(text, log_, text).first->second;
    }

private:
    CallLog& log_;
    std::map<std::string, RecordingStyle> byName_;
};

class RecordingContents : public word::TableOfContents, Recorded {
public:
    using Recorded::Recorded;
    void setTabLeader(word::TabLeader leader) override {
        set("TabLeader", static_cast<int>(leader));
    }
    void Delete() override { called("Delete"); }
};

class RecordingTablesOfContents : public word::TablesOfContents, Recorded {
public:
    explicit RecordingTablesOfContents(CallLog& log)
        : Recorded(log, "TablesOfContents"), first_(log, "TablesOfContents(1)") {}
    word::TableOfContents& Add(word::Range& range,
                               const word::TableOfContentsOptions& options) override {
        called("Add " + static_cast<RecordingRange&>(range).name() + ", UseHeadingStyles " +
               log_.text(options.UseHeadingStyles) + ", levels " +
               log_.text(options.UpperHeadingLevel) + " to " +
               log_.text(options.LowerHeadingLevel) + ", RightAlignPageNumbers " +
               log_.text(options.RightAlignPageNumbers) + ", IncludePageNumbers " +
               log_.text(options.IncludePageNumbers) + ", AddedStyles \"" +
               log_.text(std::u16string_view(options.AddedStyles)) + "\"");
        return first_;
    }
    word::TableOfContents& Item(int index) override {
        if (index != 1)
            throw RunTimeError(error::memberNotFound, u"集合所要求的成员不存在");
        return first_;
    }

private:
    RecordingContents first_;
};

class RecordingDocument : public word::Document, Recorded {
public:
    RecordingDocument(CallLog& log, const std::string& name)
        : Recorded(log, name), paragraphs_(log, end), styles_(log), contents_(log),
          pageSetup_(log, "PageSetup") {}

    void Activate() override { called("Activate"); }
    void SaveAs(const std::filesystem::path& path) override { called("SaveAs " + log_.text(path)); }
    void Save() override { called("Save"); }
    void Close(std::optional<bool> saveChanges) override {
        called(saveChanges ? "Close " + log_.text(*saveChanges) : "Close");
    }
    void setSaved(bool saved) override { set("Saved", saved); }
    std::unique_ptr<word::Range> Range(int start, int rangeEnd) override {
        const std::string name = "Range(" + log_.text(start) + ", " + log_.text(rangeEnd) + ")";
        return std::make_unique<RecordingFixedRange>(log_, name, start, rangeEnd);
    }
    word::Paragraphs& paragraphs() override { return paragraphs_; }
    word::Styles& styles() override { return styles_; }
    word::TablesOfContents& tablesOfContents() override { return contents_; }
    word::PageSetup& pageSetup() override { return pageSetup_; }

    // The end of the last paragraph; the selection counts here what is typed.
    int end = 1;

private:
    RecordingParagraphs paragraphs_;
    RecordingStyles styles_;
    RecordingTablesOfContents contents_;
    RecordingPageSetup pageSetup_;
};

} // namespace qvnd::test
