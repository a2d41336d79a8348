#pragma once

#include "platform/word/docfile/container/Bytes.h"

#include <cstdint>

// Records of drawings, [MS-ODRAW] 2.2.1. On-disk numbers: never change.
namespace qvnd::word::art {

inline constexpr std::uint16_t dggContainer = 0xF000; // what all drawings share
inline constexpr std::uint16_t bstoreContainer = 0xF001;
inline constexpr std::uint16_t dgContainer =
    0xF002; // one drawing: all shapes of a part of the text
inline constexpr std::uint16_t spgrContainer = 0xF003;
inline constexpr std::uint16_t spContainer = 0xF004;
inline constexpr std::uint16_t fdggBlock = 0xF006;
inline constexpr std::uint16_t fbse = 0xF007;
inline constexpr std::uint16_t fdg = 0xF008;
inline constexpr std::uint16_t fspgr = 0xF009;
inline constexpr std::uint16_t fsp = 0xF00A;
inline constexpr std::uint16_t fopt = 0xF00B;
inline constexpr std::uint16_t clientTextbox = 0xF00D;
inline constexpr std::uint16_t clientAnchor = 0xF010;
inline constexpr std::uint16_t clientData = 0xF011;
inline constexpr std::uint16_t secondaryFopt = 0xF121;
inline constexpr std::uint16_t tertiaryFopt = 0xF122;
inline constexpr std::uint16_t firstBlip = 0xF018;
inline constexpr std::uint16_t lastBlip = 0xF117;
inline constexpr std::uint16_t blipEmf = 0xF01A;
inline constexpr std::uint16_t blipWmf = 0xF01B;
inline constexpr std::uint16_t blipJpeg = 0xF01D;
inline constexpr std::uint16_t blipPng = 0xF01E;
inline constexpr std::uint16_t blipDib = 0xF01F;
inline constexpr std::uint16_t blipJpegOfCmyk = 0xF02A;

// Version of records that hold other records.
inline constexpr unsigned container = 0xF;
inline constexpr std::size_t headerSize = 8;

// An entry of the store of pictures (OfficeArtFBSE, [MS-ODRAW] 2.2.32) without name and picture.
inline constexpr std::size_t fbseSize = 36;
inline constexpr std::size_t fbseUidAt = 2;    // 16 bytes
inline constexpr std::size_t fbseSizeAt = 20;  // of the picture, its header included
inline constexpr std::size_t fbseCountAt = 24; // cRef
inline constexpr std::size_t fbseDelayAt = 28; // foDelay, an offset in the WordDocument stream
inline constexpr std::size_t fbseNameAt = 33;  // cbName

// A store counts its pictures with the 12 bits of its record's instance.
inline constexpr std::size_t mostPictures = 0x0FFF;

// Flags of a shape (OfficeArtFSP, [MS-ODRAW] 2.2.40).
inline constexpr std::uint32_t shapeIsGroup = 0x001;
inline constexpr std::uint32_t shapeIsPatriarch = 0x004; // the group of a whole drawing
inline constexpr std::uint32_t shapeIsDeleted = 0x008;
inline constexpr std::uint32_t shapeHasAnchor = 0x200;
inline constexpr std::uint32_t shapeIsBackground = 0x400;
inline constexpr std::uint32_t shapeHasKind = 0x800;

// Identifiers of shapes are given out in clusters, each to one drawing ([MS-ODRAW] 2.2.46).
inline constexpr std::uint32_t clusterSize = 1024;

struct RecordHeader {
    unsigned version = 0;
    unsigned instance = 0;
    std::uint16_t type = 0;
    std::uint32_t length = 0; // of what follows the header
};

// Throws FormatError when fewer than 8 bytes are left.
RecordHeader readHeader(LittleEndianReader& reader);

inline bool isBlip(std::uint16_t type) { return type >= firstBlip && type <= lastBlip; }

// Whether the bytes are records without a gap, the first of that type, and containers are filled
// by theirs, not too deep in each other.
bool recordsAreWhole(ByteView bytes, std::uint16_t firstType);

// Writes the header of a record whose `length` bytes follow.
void writeHeader(LittleEndianWriter& writer, unsigned version, unsigned instance,
                 std::uint16_t type, std::size_t length);

// Writes header and content.
void writeRecord(LittleEndianWriter& writer, unsigned version, unsigned instance,
                 std::uint16_t type, ByteView content);

} // namespace qvnd::word::art
