#pragma once

#include "platform/word/formatting/ResolvedProperties.h"

#include <cstdint>
#include <optional>

// Numbers and colours as property lists keep them. Colours are 0xRRGGBB; nothing is automatic.
namespace qvnd::word {

// The operand as a number of up to four bytes, least significant first.
std::uint32_t numberOf(const SprmView& entry);
// The lower two bytes with their sign.
std::int16_t signedNumberOf(const SprmView& entry);

// The entry that counts for a property, named by its oldest spelling; nothing when none sets it.
std::optional<SprmView> settingOf(const ResolvedProperties& look, SprmOpcode property);
std::uint32_t numberOf(const ResolvedProperties& look, SprmOpcode property,
                       std::uint32_t otherwise);
int signedNumberOf(const ResolvedProperties& look, SprmOpcode property, int otherwise);

// Ico, [MS-DOC] 2.9.119.
std::optional<std::uint32_t> colourOfIndex(unsigned ico);
// COLORREF, [MS-DOC] 2.9.43.
std::optional<std::uint32_t> colourOfReference(std::uint32_t colorref);
// A pattern comes to one colour: its fore colour mixed with its back colour. Shd of ten bytes,
// [MS-DOC] 2.9.248; Shd80 of two, 2.9.249; nothing for no shading.
std::optional<std::uint32_t> colourOfShd(ByteView shd);
std::optional<std::uint32_t> colourOfShd80(unsigned shd80);
// The operand of sprmPShd, sprmCShd and their older spellings.
std::optional<std::uint32_t> colourOfShading(const SprmView& entry);

// One side of a box around text, paragraphs or cells.
struct Border {
    bool visible = false;
    bool isDouble = false;
    int width = 0; // twips, of one stroke
    int space = 0; // twips between the border and what it surrounds
    std::optional<std::uint32_t> colour;
    bool operator==(const Border&) const = default;
};

// Brc80 of four bytes, [MS-DOC] 2.9.17; Brc of eight, 2.9.16. No border for any other size.
Border borderOf(ByteView brc);

} // namespace qvnd::word
