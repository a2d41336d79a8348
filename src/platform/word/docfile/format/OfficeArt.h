#pragma once

#include "platform/word/docfile/container/Bytes.h"

#include <cstdint>

// Records of drawings, [MS-ODRAW] 2.2.1. On-disk numbers: never change.
namespace qvnd::word::art {

inline constexpr std::uint16_t spContainer = 0xF004;
inline constexpr std::uint16_t fbse = 0xF007;
inline constexpr std::uint16_t fsp = 0xF00A;
inline constexpr std::uint16_t fopt = 0xF00B;
inline constexpr std::uint16_t clientAnchor = 0xF010;
inline constexpr std::uint16_t blipEmf = 0xF01A;
inline constexpr std::uint16_t blipWmf = 0xF01B;
inline constexpr std::uint16_t blipJpeg = 0xF01D;
inline constexpr std::uint16_t blipPng = 0xF01E;
inline constexpr std::uint16_t blipDib = 0xF01F;
inline constexpr std::uint16_t blipJpegOfCmyk = 0xF02A;

// Version of records that hold other records.
inline constexpr unsigned container = 0xF;
inline constexpr std::size_t headerSize = 8;

struct RecordHeader {
    unsigned version = 0;
    unsigned instance = 0;
    std::uint16_t type = 0;
    std::uint32_t length = 0; // of what follows the header
};

// Throws FormatError when fewer than 8 bytes are left.
RecordHeader readHeader(LittleEndianReader& reader);

// Whether the bytes are records without a gap, the first of that type, and containers are filled
// by theirs, not too deep in each other.
bool recordsAreWhole(ByteView bytes, std::uint16_t firstType);

// Writes header and content.
void writeRecord(LittleEndianWriter& writer, unsigned version, unsigned instance,
                 std::uint16_t type, ByteView content);

} // namespace qvnd::word::art
