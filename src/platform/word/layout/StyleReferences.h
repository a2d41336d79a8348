#pragma once

#include "platform/word/formatting/StyledParagraphs.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace qvnd::layout {

// The type of STYLEREF fields (flt), [MS-DOC] 2.9.90.
inline constexpr std::uint8_t styleReferenceField = 0x0A;

// What a STYLEREF field shows (ISO 29500-1, 17.16.5.66).
struct StyleReference {
    enum class Shows : std::uint8_t { text, label, numbers };

    word::StyleIndex style = 0;
    Shows shows = Shows::text;
    bool last = false; // that on the page, else the first
};

// Nothing for an instruction that names no style of paragraphs of the sheet, or asks for the place
// of the paragraph.
std::optional<StyleReference> styleReferenceOf(std::u16string_view instruction,
                                               const word::StyleSheet& sheet);

// What it shows on a page; nothing where no paragraph has the style.
std::optional<std::u16string> shownBy(const StyleReference& reference,
                                      const word::StyledParagraphs& paragraphs,
                                      word::PageText page);

} // namespace qvnd::layout
