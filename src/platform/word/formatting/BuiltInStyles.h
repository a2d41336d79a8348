#pragma once

#include "platform/word/docfile/document/DocumentTables.h"

#include <cstdint>
#include <optional>
#include <string_view>

// The built-in styles. Word identifies them by number (StdfBase.sti of [MS-DOC]), whatever
// names a file gives them. The names here are those of the latent style table of ISO/IEC 29500 and
// of Word's Chinese version.
namespace qvnd::word {

namespace sti {
inline constexpr std::uint16_t normal = 0;
inline constexpr std::uint16_t heading1 = 1;   // 1 to 9: the heading styles
inline constexpr std::uint16_t contents1 = 19; // 19 to 27: the contents styles
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

// The built-in style with that number; nothing for an unknown number.
std::optional<BuiltInStyle> builtInStyle(std::uint16_t number);

// The built-in style with that Chinese or English name. The case of Latin letters is ignored.
std::optional<BuiltInStyle> builtInStyleNamed(std::u16string_view name);

// The index that the style sheet reserves for that style: Normal, the headings, the default
// paragraph font, the normal table and "no list" have one. Nothing for every other style.
std::optional<StyleIndex> fixedStyleIndex(std::uint16_t number);

} // namespace qvnd::word
