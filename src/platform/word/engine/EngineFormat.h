#pragma once

#include "platform/word/engine/FontChange.h"
#include "platform/word/engine/ParagraphChange.h"
#include "platform/word/model/Format.h"

#include <functional>
#include <utility>

namespace qvnd::word {

// A font whose settings go to whatever `apply` changes.
class EngineFont : public Font {
public:
    using Apply = std::function<void(const FontChange&)>;
    explicit EngineFont(Apply apply) : apply_(std::move(apply)) {}

    void setName(std::u16string_view name) override {
        apply_({std::u16string(name), std::nullopt, std::nullopt});
    }
    void setSize(float points) override { apply_({std::nullopt, points, std::nullopt}); }
    void setBold(bool bold) override { apply_({std::nullopt, std::nullopt, bold}); }

private:
    Apply apply_;
};

// What a paragraph format belongs to.
class ParagraphTarget {
public:
    virtual ~ParagraphTarget() = default;
    virtual DocumentTables& tables() = 0;
    virtual void changeLooks(const LookChange& change) = 0;
    // The width of a character, in twips, where the target begins.
    virtual int characterWidth() = 0;
};

class EngineParagraphFormat : public ParagraphFormat {
public:
    explicit EngineParagraphFormat(ParagraphTarget& target) : target_(target) {}

    void setAlignment(Alignment alignment) override {
        target_.changeLooks(alignmentChange(target_.tables().lists, alignment));
    }
    void IndentCharWidth(int count) override {
        target_.changeLooks(indentChange(target_.tables(), count, target_.characterWidth()));
    }

private:
    ParagraphTarget& target_;
};

// The size of a character in twips, which is also the width of a Chinese one: by its direct
// formatting over the styles of the character and its paragraph.
int characterSize(const DocumentTables& tables, PropertyListId character, StyleIndex style);

} // namespace qvnd::word
