#pragma once

#include "platform/word/formatting/StyledParagraphs.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace qvnd::layout {

// The type of STYLEREF fields (flt), [MS-DOC] 2.9.90.
inline constexpr std::uint8_t styleReferenceField = 0x0A;

// What a STYLEREF field shows (ISO 29500-1, 17.16.5.66; its switch \s, which stands in captions,
// asks for the numbers alone).
struct StyleReference {
    // `wholeLabel`: with those of the levels above it.
    enum class Shows : std::uint8_t { text, label, wholeLabel, numbers };

    word::StyleIndex style = 0;
    Shows shows = Shows::text;
    bool last = false; // that on the page, else the first
};

// Nothing for an instruction that names no style of paragraphs of the sheet, or asks for anything
// else, such as the place of the paragraph.
std::optional<StyleReference> styleReferenceOf(std::u16string_view instruction,
                                               const word::StyleSheet& sheet);

// What it shows on a page; nothing where no paragraph has the style, or its label lacks the numbers
// of the levels above that are asked for.
std::optional<std::u16string> shownBy(const StyleReference& reference,
                                      const word::StyledParagraphs& paragraphs,
                                      word::PageText page);

} // namespace qvnd::layout
