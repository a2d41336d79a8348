#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

// Numbers of the compound file format, [MS-CFB] 2.1 to 2.6. On-disk numbers: never change.
namespace qvnd::word::cfb {

inline constexpr std::array<std::uint8_t, 8> signature{0xD0, 0xCF, 0x11, 0xE0,
                                                       0xA1, 0xB1, 0x1A, 0xE1};

// Marks in allocation tables; every smaller number up to lastSector is a sector.
inline constexpr std::uint32_t lastSector = 0xFFFFFFFA; // MAXREGSECT
inline constexpr std::uint32_t difatSector = 0xFFFFFFFC;
inline constexpr std::uint32_t fatSector = 0xFFFFFFFD;
inline constexpr std::uint32_t endOfChain = 0xFFFFFFFE;
inline constexpr std::uint32_t freeSector = 0xFFFFFFFF;

inline constexpr std::size_t headerSize = 512;
inline constexpr std::size_t difatPlacesInHeader = 109;

// Directory entries.
inline constexpr std::size_t entrySize = 128;
inline constexpr std::uint32_t noEntry = 0xFFFFFFFF;
inline constexpr std::uint8_t kindUnused = 0;
inline constexpr std::uint8_t kindStorage = 1;
inline constexpr std::uint8_t kindStream = 2;
inline constexpr std::uint8_t kindRoot = 5;
inline constexpr std::uint8_t colourRed = 0;
inline constexpr std::uint8_t colourBlack = 1;

} // namespace qvnd::word::cfb
