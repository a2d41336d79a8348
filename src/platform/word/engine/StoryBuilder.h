#pragma once

#include "platform/word/docfile/document/StoryParts.h"

#include <cstdint>
#include <string_view>

namespace qvnd::word {

// Field types (flt), [MS-DOC] 2.9.90.
namespace field {
inline constexpr std::uint8_t toc = 0x0D;
inline constexpr std::uint8_t page = 0x21;
inline constexpr std::uint8_t pageRef = 0x25;
inline constexpr std::uint8_t hyperlink = 0x58;
// Flags of a field's end (grffldEnd), [MS-DOC] 2.9.108.
inline constexpr std::uint8_t nested = 0x40;
inline constexpr std::uint8_t hasSeparator = 0x80;
} // namespace field

// Puts a story together from front to back.
class StoryBuilder {
public:
    // Goes on at the end of `story`, which must outlive the builder.
    explicit StoryBuilder(Story& story) : story_(story) {}

    void text(std::u16string_view text, PropertyListId properties);
    // A character that ends a paragraph, with the look of that paragraph.
    void mark(char16_t character, ParagraphLook look, PropertyListId properties);

    // The three characters of a field; `properties` gets sprmCFSpec from the caller.
    void fieldBegin(std::uint8_t type, PropertyListId properties);
    void fieldSeparator(PropertyListId properties);
    void fieldEnd(std::uint8_t flags, PropertyListId properties);

private:
    void fieldMark(char16_t character, std::uint8_t data, PropertyListId properties);
    void unendedParagraph(Cp length);

    Story& story_;
};

} // namespace qvnd::word
