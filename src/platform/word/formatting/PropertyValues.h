#pragma once

#include "platform/word/formatting/ResolvedProperties.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

// Decodes numbers, colours and borders in property lists. Colours are 0xRRGGBB; an empty value
// stands for the automatic colour.
namespace qvnd::word {

inline constexpr int twipsPerPoint = 20;

// The operand as an unsigned little-endian number of up to four bytes.
std::uint32_t numberOf(const SprmView& entry);
// The operand's lower two bytes as a signed number.
std::int16_t signedNumberOf(const SprmView& entry);

// The entry in effect for a property, which is named by its oldest sprm; nothing when it is not
// set.
std::optional<SprmView> settingOf(const ResolvedProperties& look, SprmOpcode property);
// Its operand, or the one that counts when the property is not set (SprmFacts::plain).
std::uint32_t numberOf(const ResolvedProperties& look, SprmOpcode property);
int signedNumberOf(const ResolvedProperties& look, SprmOpcode property);

// Ico, [MS-DOC] 2.9.119.
std::optional<std::uint32_t> colourOfIndex(unsigned ico);
// COLORREF, [MS-DOC] 2.9.43.
std::optional<std::uint32_t> colourOfReference(std::uint32_t colorref);
inline constexpr std::size_t shdSize = 10; // of Shd, in bytes
// Shading as one colour: a pattern mixes its foreground with its background. Shd is described in
// [MS-DOC] 2.9.248, Shd80, which has two bytes, in 2.9.249. Nothing for no shading.
std::optional<std::uint32_t> colourOfShd(ByteView shd);
std::optional<std::uint32_t> colourOfShd80(unsigned shd80);
// The operand of sprmPShd, sprmCShd and their older spellings.
std::optional<std::uint32_t> colourOfShading(const SprmView& entry);

// One side of a box around text, paragraphs or cells.
// A stroke of a border, in twips. `gap`: between it and the one that is nearer to the content.
struct BorderStroke {
    double width = 0;
    double gap = 0;
    bool operator==(const BorderStroke&) const = default;
};

struct Border {
    bool visible = false;
    std::array<BorderStroke, 3> strokes{}; // from the content outwards; no width: no stroke
    int width = 0;                         // that is told, of one stroke for most kinds, in twips
    int thickness = 0;                     // of all strokes and the gaps between them, in twips
    int space = 0;                         // between the border and its content, in twips
    std::optional<std::uint32_t> colour;
    bool isTakenAway = false; // told as none; otherwise one that is not visible is not told
    bool operator==(const Border&) const = default;
};

inline constexpr std::size_t brc80Size = 4; // of Brc80 ([MS-DOC] 2.9.17), in bytes
inline constexpr std::size_t brcSize = 8;   // of Brc (2.9.16)
// Decodes Brc80 and Brc, told apart by their sizes. No border for any other size.
Border borderOf(ByteView brc);
// That of a property: Brc80, or Brc with its length in front.
Border borderOf(const SprmView& entry);
// The border that a property sets, in either spelling.
Border sideOf(const ResolvedProperties& look, SprmOpcode property);

} // namespace qvnd::word
