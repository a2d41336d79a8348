#pragma once

#include "platform/word/docfile/container/Bytes.h"
#include "platform/word/docfile/document/Story.h"

#include <optional>
#include <span>
#include <vector>

// Sections of the main story: PlcfSed, Sed and Sepx, [MS-DOC] 2.8.26, 2.9.242 and 2.9.243.
namespace qvnd::word {

// A section of the main story, its break mark included, and where its Sepx lies.
struct SectionPlace {
    Cp length = 0;
    std::optional<std::uint32_t> sepx; // offset in the WordDocument stream; none: all defaults
    std::size_t number = 0;            // as counted in the file, when it was read from one
    bool operator==(const SectionPlace&) const = default;
};

// The most bytes of a section's properties: their length is a signed number of 16 bits.
inline constexpr std::size_t longestSepx = 0x7FFF;

// The section's properties behind their length, as they lie in the WordDocument stream. Longer
// lists are cut there, between two entries.
Bytes encodeSepx(ByteView properties);
// The properties of the Sepx at `offset`; throws FormatError (damaged) when it is not inside.
ByteView decodeSepx(ByteView wordDocument, std::uint32_t offset);

Bytes encodeSections(std::span<const SectionPlace> sections);

// Always at least one section, and the lengths add up to `mainLength`: what lies behind it, empty
// sections and positions that do not ascend are left out, and counted in `*damage` where given.
std::vector<SectionPlace> decodeSections(ByteView plcfSed, Cp mainLength, int* damage = nullptr);

} // namespace qvnd::word
