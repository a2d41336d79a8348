#pragma once

#include "platform/word/model/Format.h"
#include "platform/word/model/PageSetup.h"
#include "platform/word/model/Range.h"
#include "platform/word/model/TablesOfContents.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string_view>

namespace qvnd::word {

class Paragraph {
public:
    virtual ~Paragraph() = default;
    virtual word::Range& Range() = 0;
};

class Paragraphs {
public:
    virtual ~Paragraphs() = default;
    virtual Paragraph& First() = 0;
    virtual Paragraph& Last() = 0;
    // Counted from 1; 5941 when there is no such paragraph.
    virtual Paragraph& Item(int index) = 0;
};

class Styles {
public:
    virtual ~Styles() = default;
    // By name; the headings are "标题 1" to "标题 9". 5941 when there is no such style.
    virtual Style& Item(std::u16string_view name) = 0;
};

class Document {
public:
    virtual ~Document() = default;

    virtual void Activate() = 0;
    virtual void SaveAs(const std::filesystem::path& path) = 0;
    virtual void Save() = 0;
    // Without a value the word processor may ask about unsaved changes.
    virtual void Close(std::optional<bool> saveChanges = std::nullopt) = 0;
    // Marks the document as unchanged (true) or changed without writing.
    virtual void setSaved(bool saved) = 0;

    virtual std::unique_ptr<word::Range> Range(int start, int end) = 0;
    virtual Paragraphs& paragraphs() = 0;
    virtual Styles& styles() = 0;
    virtual TablesOfContents& tablesOfContents() = 0;
    virtual PageSetup& pageSetup() = 0;
};

} // namespace qvnd::word
