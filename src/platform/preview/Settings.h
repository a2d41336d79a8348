#pragma once

#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/formatting/ResolvedProperties.h"

#include <cstdint>
#include <optional>

// What single entries of property lists say.
namespace qvnd::preview {

// The entry of a look that counts for a property (named by its oldest sprm); nothing when none
// sets it. Valid as long as the look.
std::optional<word::SprmView> settingOf(const word::ResolvedProperties& look,
                                        word::SprmOpcode property);
// Its operand as a number, its length byte not counted.
std::uint32_t numberOf(const word::SprmView& entry);
std::int16_t signedNumberOf(const word::SprmView& entry);
std::uint32_t numberOf(const word::ResolvedProperties& look, word::SprmOpcode property,
                       std::uint32_t otherwise);
double pointsOf(const word::ResolvedProperties& look,
                word::SprmOpcode property); // of a length in twips

// 0xRRGGBB of an Ico ([MS-DOC] 2.9.119), of a COLORREF, and of the background of a Shd or Shd80;
// nothing for automatic and for what is no colour.
std::optional<std::uint32_t> colourOfIndex(unsigned ico);
std::optional<std::uint32_t> colourOfReference(std::uint32_t colorref);
std::optional<std::uint32_t> colourOfShading(const word::SprmView& entry);
// The background of one Shd of 10 bytes.
std::optional<std::uint32_t> colourOfShading(word::ByteView shd);

} // namespace qvnd::preview
