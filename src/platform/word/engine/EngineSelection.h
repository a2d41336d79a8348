#pragma once

#include "platform/word/engine/EngineFormat.h"
#include "platform/word/model/Selection.h"

#include <map>
#include <memory>

namespace qvnd::word {

class EngineApplication;
class EngineDocument;
class EngineRange;

// The selection of the active document.
class EngineSelection : public word::Selection, private ParagraphTarget {
public:
    explicit EngineSelection(EngineApplication& application);
    ~EngineSelection() override;

    void TypeText(std::u16string_view text) override;
    void TypeParagraph() override;
    void InsertBreak(BreakType type) override;
    // Throws 53 for a missing file, 5 for one that cannot be read; the document is as before then.
    void InsertFile(const std::filesystem::path& path) override;

    void Delete(int count) override;
    void MoveLeftExtending() override;
    void MoveRightExtending() override;

    word::Font& Font() override { return font_; }
    word::ParagraphFormat& ParagraphFormat() override { return paragraphFormat_; }
    void setStyle(Style& style) override;
    // In a header or footer the range of the main story where that was left.
    word::Range& Range() override;
    word::InlineShapes& InlineShapes() override;
    Section& Sections(int index) override;
    // 5941 outside of headers and footers.
    word::HeaderFooter& HeaderFooter() override;

private:
    EngineDocument& document();
    DocumentTables& tables() override;
    void changeLooks(const LookChange& change) override;
    int characterWidth() override;

    EngineApplication& application_;
    EngineFont font_;
    EngineParagraphFormat paragraphFormat_{*this};
    std::map<EngineDocument*, std::unique_ptr<EngineRange>> ranges_;
};

} // namespace qvnd::word
