#pragma once

#include "platform/word/engine/EngineFormat.h"
#include "platform/word/model/Range.h"

namespace qvnd::word {

class EngineDocument;

// A range of a document's main story. Its positions stay as they are when the text changes.
class EngineRange : public word::Range, private ParagraphTarget {
public:
    explicit EngineRange(EngineDocument& document) : document_(document) {}

    // Moves the range. Positions behind the end are taken back to it.
    EngineRange& set(Cp start, Cp end);

    int Start() override { return static_cast<int>(start_); }
    int End() override { return static_cast<int>(end_); }
    void Select() override;
    word::Font& Font() override { return font_; }
    word::ParagraphFormat& ParagraphFormat() override { return paragraphFormat_; }

private:
    void changeFont(const FontChange& change);
    DocumentTables& tables() override;
    void changeLooks(const LookChange& change) override;
    int characterWidth() override;

    EngineDocument& document_;
    Cp start_ = 0;
    Cp end_ = 0;
    EngineFont font_{[this](const FontChange& change) { changeFont(change); }};
    EngineParagraphFormat paragraphFormat_{*this};
};

} // namespace qvnd::word
