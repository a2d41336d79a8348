#pragma once

#include "platform/word/engine/EngineFormat.h"
#include "platform/word/model/Document.h"

#include <map>
#include <memory>

namespace qvnd::word {

class EngineDocument;

// A style of the document; its font and paragraph format change the style itself.
class EngineStyle : public Style, private ParagraphTarget {
public:
    EngineStyle(EngineDocument& document, StyleIndex index) : document_(document), index_(index) {}

    StyleIndex index() const { return index_; }
    word::Font& Font() override { return font_; }
    word::ParagraphFormat& ParagraphFormat() override { return paragraphFormat_; }

private:
    StyleDefinition& definition();
    void changeFont(const FontChange& change);
    DocumentTables& tables() override;
    void changeLooks(const LookChange& change) override;
    int characterWidth() override;

    EngineDocument& document_;
    StyleIndex index_;
    EngineFont font_{[this](const FontChange& change) { changeFont(change); }};
    EngineParagraphFormat paragraphFormat_{*this};
};

class EngineStyles : public Styles {
public:
    explicit EngineStyles(EngineDocument& document) : document_(document) {}

    // Under the style's own name, or the Chinese or English name of a built-in one.
    Style& Item(std::u16string_view name) override;

private:
    EngineDocument& document_;
    std::map<StyleIndex, std::unique_ptr<EngineStyle>> items_;
};

} // namespace qvnd::word
