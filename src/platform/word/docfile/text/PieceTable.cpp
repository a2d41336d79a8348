#include "platform/word/docfile/text/PieceTable.h"

#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/format/Plc.h"
#include "platform/word/docfile/format/Sprm.h"

#include <algorithm>
#include <array>
#include <utility>

namespace qvnd::word {

namespace {

constexpr unsigned prcMark = 1;
constexpr unsigned pcdtMark = 2;
constexpr std::size_t pcdSize = 8;
constexpr std::uint32_t compressedBit = 0x40000000;
constexpr std::uint32_t offsetMask = 0x3FFFFFFF;

// Prm0.isprm, [MS-DOC] 2.9.215: numbers that single-byte entries have there.
constexpr std::array<std::pair<std::uint8_t, SprmOpcode>, 53> shortCodes{{
    {0x00, 0x2879}, {0x04, 0x2602}, {0x05, 0x2461}, {0x07, 0x2405}, {0x08, 0x2406}, {0x09, 0x2407},
    {0x0C, 0x260A}, {0x0D, 0x2470}, {0x0E, 0x240C}, {0x0F, 0x2471}, {0x18, 0x2416}, {0x19, 0x2417},
    {0x1D, 0x261B}, {0x25, 0x2423}, {0x2C, 0x242A}, {0x32, 0x2430}, {0x33, 0x2431}, {0x35, 0x2433},
    {0x36, 0x2434}, {0x37, 0x2435}, {0x38, 0x2436}, {0x39, 0x2437}, {0x3A, 0x2438}, {0x41, 0x0800},
    {0x42, 0x0801}, {0x43, 0x0802}, {0x47, 0x0806}, {0x4B, 0x080A}, {0x4D, 0x2A0C}, {0x4E, 0x0858},
    {0x4F, 0x2859}, {0x50, 0x0811}, {0x51, 0x0818}, {0x53, 0x2A33}, {0x55, 0x0835}, {0x56, 0x0836},
    {0x57, 0x0837}, {0x58, 0x0838}, {0x59, 0x0839}, {0x5A, 0x083A}, {0x5B, 0x083B}, {0x5C, 0x083C},
    {0x5E, 0x2A3E}, {0x62, 0x2A42}, {0x68, 0x2A48}, {0x73, 0x2A53}, {0x74, 0x0854}, {0x75, 0x0855},
    {0x76, 0x0856}, {0x78, 0x2640}, {0x7B, 0x2A90}, {0x7C, 0x2A86}, {0x7E, 0x2443},
}};

PieceTable decodePieces(ByteView plcPcd, std::uint64_t streamSize, int& damage) {
    const Plc plc = decodePlc(plcPcd, pcdSize);
    PieceTable table;
    std::uint32_t cp = plc.positions.empty() ? 0 : plc.positions.front();
    LittleEndianReader reader(plc.data, "Pcd");
    for (std::size_t i = 0; i < plc.count(); ++i) {
        Piece piece;
        piece.flags = reader.u16();
        const std::uint32_t where = reader.u32();
        piece.modifier = reader.u16();
        piece.compressed = (where & compressedBit) != 0;
        piece.fc = piece.compressed ? (where & offsetMask) / 2 : where & offsetMask;
        const std::uint32_t limit = std::max(plc.positions[i + 1], cp);
        const std::uint64_t room =
            piece.fc < streamSize ? (streamSize - piece.fc) / piece.bytesPerCharacter() : 0;
        piece.length = static_cast<Cp>(std::min<std::uint64_t>(limit - cp, room));
        damage += piece.length == plc.positions[i + 1] - plc.positions[i] ? 0 : 1;
        cp = limit;
        if (piece.length > 0) {
            table.pieces.push_back(piece);
        }
    }
    return table;
}

} // namespace

Bytes encodeClx(const PieceTable& table) {
    LittleEndianWriter clx;
    for (const Bytes& modifier : table.modifiers) {
        clx.u8(prcMark);
        clx.u16(static_cast<unsigned>(modifier.size()));
        clx.bytes(modifier);
    }
    clx.u8(pcdtMark);
    clx.u32(static_cast<std::uint32_t>(table.pieces.size() * (4 + pcdSize) + 4));
    Cp position = 0;
    for (const Piece& piece : table.pieces) {
        clx.u32(position);
        position += piece.length;
    }
    clx.u32(position);
    for (const Piece& piece : table.pieces) {
        clx.u16(piece.flags);
        clx.u32(piece.compressed ? (piece.fc * 2) | compressedBit : piece.fc);
        clx.u16(piece.modifier);
    }
    return clx.take();
}

PieceTable decodeClx(ByteView clx, std::uint64_t streamSize, int* damage) {
    LittleEndianReader reader(clx, "Clx");
    std::vector<Bytes> modifiers;
    unsigned mark = reader.u8();
    for (; mark == prcMark; mark = reader.u8()) {
        const ByteView list = reader.view(reader.u16());
        modifiers.emplace_back(list.begin(), list.end());
    }
    if (mark != pcdtMark) {
        throw FormatError(FormatError::Kind::damaged, "Clx: no table of pieces");
    }
    const std::size_t counted = reader.u32();
    int found = counted > reader.remaining() ? 1 : 0;
    const ByteView plc = reader.view(std::min(counted, reader.remaining()));
    PieceTable table = decodePieces(plc, streamSize, found);
    table.modifiers = std::move(modifiers);
    if (damage != nullptr) {
        *damage += found;
    }
    return table;
}

Bytes modifierProperties(const std::vector<Bytes>& modifiers, std::uint16_t modifier) {
    if ((modifier & 1) != 0) {
        const std::size_t index = modifier >> 1;
        return index < modifiers.size() ? modifiers[index] : Bytes{};
    }
    const unsigned code = (modifier >> 1) & 0x7F;
    const unsigned value = modifier >> 8;
    const auto* known = std::find_if(shortCodes.begin(), shortCodes.end(),
                                     [&](const auto& entry) { return entry.first == code; });
    if (modifier == 0 || known == shortCodes.end()) {
        return {};
    }
    return withSprm8({}, known->second, value);
}

char16_t decompressed(std::uint8_t byte) {
    // 0x80, 0x81, 0x8D to 0x90, 0x9D and 0x9E stand for themselves.
    constexpr std::array<char16_t, 32> mapped{
        0x80,   0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
        0x2039, 0x0152, 0x8D,   0x8E,   0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
        0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x9E,   0x0178};
    return byte >= 0x80 && byte < 0xA0 ? mapped[byte - 0x80] : byte;
}

} // namespace qvnd::word
