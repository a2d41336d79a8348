#pragma once

#include "platform/word/docfile/document/DocumentTables.h"

#include <cstdint>
#include <optional>
#include <string_view>

// The styles that Word knows by number (sti), whatever a file calls them; StdfBase.sti of [MS-DOC],
// names as in the latent style table of ISO/IEC 29500 and in Word's Chinese version.
namespace qvnd::word {

namespace sti {
inline constexpr std::uint16_t normal = 0;
inline constexpr std::uint16_t heading1 = 1;   // to 9
inline constexpr std::uint16_t contents1 = 19; // to 27: the contents styles
inline constexpr std::uint16_t header = 31;
inline constexpr std::uint16_t footer = 32;
inline constexpr std::uint16_t pageNumber = 41;
inline constexpr std::uint16_t defaultParagraphFont = 65;
inline constexpr std::uint16_t hyperlink = 85;
inline constexpr std::uint16_t normalTable = 105;
inline constexpr std::uint16_t noList = 107;
inline constexpr std::uint16_t tableGrid = 154;
} // namespace sti

struct BuiltInStyle {
    std::uint16_t number = 0; // sti
    StyleKind kind = StyleKind::paragraph;
    std::u16string_view chineseName;
    std::u16string_view englishName;
};

// Nothing for a number without a known style.
std::optional<BuiltInStyle> builtInStyle(std::uint16_t number);

// By its Chinese or English name; the case of Latin letters does not count.
std::optional<BuiltInStyle> builtInStyleNamed(std::u16string_view name);

// The place in the style sheet that belongs to that style alone (Normal, headings, default
// paragraph font, normal table, no list); nothing for all the others.
std::optional<StyleIndex> fixedStyleIndex(std::uint16_t number);

} // namespace qvnd::word
