#pragma once

#include "platform/word/engine/EngineRange.h"
#include "platform/word/model/Document.h"

#include <functional>
#include <map>
#include <memory>

namespace qvnd::word {

// Start and end of a paragraph, its mark included.
struct ParagraphSpan {
    Cp start = 0;
    Cp end = 0;
};

// A paragraph looked up anew whenever its range is asked for.
class EngineParagraph : public Paragraph {
public:
    using LookUp = std::function<ParagraphSpan()>;
    EngineParagraph(EngineDocument& document, LookUp lookUp)
        : range_(document), lookUp_(std::move(lookUp)) {}

    word::Range& Range() override {
        const ParagraphSpan span = lookUp_();
        return range_.set(span.start, span.end);
    }

private:
    EngineRange range_;
    LookUp lookUp_;
};

class EngineParagraphs : public Paragraphs {
public:
    explicit EngineParagraphs(EngineDocument& document);

    Paragraph& First() override { return first_; }
    Paragraph& Last() override { return last_; }
    Paragraph& Item(int index) override;

private:
    // Throws 5941 when there is no such paragraph.
    ParagraphSpan numbered(int index);

    EngineDocument& document_;
    EngineParagraph first_;
    EngineParagraph last_;
    std::map<int, std::unique_ptr<EngineParagraph>> items_;
};

} // namespace qvnd::word
