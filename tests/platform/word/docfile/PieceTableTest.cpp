#include "platform/word/docfile/text/PieceTable.h"

#include "platform/word/docfile/container/FormatError.h"
#include "support/ByteText.h"

#include <gtest/gtest.h>

namespace qvnd::word {
namespace {

using test::hex;

constexpr std::uint64_t streamSize = 10000;

TEST(PieceTable, EncodeDecodeEncodeGivesEqualBytes) {
    PieceTable table;
    table.pieces = {{100, 2048, false, 0, 0},
                    {50, 3001, true, 0x0003, Piece::withoutParagraphMark},
                    {1, 2047, true, 0x01AA, 0}};
    table.modifiers = {hex("35 08 01"), hex("36 08 01 61 24 01")};
    const Bytes bytes = encodeClx(table);
    int damage = 0;
    const PieceTable read = decodeClx(bytes, streamSize, &damage);
    EXPECT_EQ(read, table);
    EXPECT_EQ(damage, 0);
    EXPECT_EQ(encodeClx(read), bytes);
}

TEST(PieceTable, LayoutIsThatOfTheFormat) {
    PieceTable table;
    table.pieces = {{3, 0x800, false, 0, 0}, {2, 0x900, true, 0, 0}};
    table.modifiers = {hex("35 08 01")};
    EXPECT_EQ(encodeClx(table), hex("01 0300 350801"
                                    "02 1C000000 00000000 03000000 05000000"
                                    "0000 00080000 0000  0000 00120040 0000"));
}

TEST(PieceTable, PiecesOutsideOfTheStreamAreShortenedOrLeftOutAndCounted) {
    PieceTable table;
    table.pieces = {{10, 9990, false, 0, 0}, {10, 20000, false, 0, 0}, {4, 0, true, 0, 0}};
    int damage = 0;
    const PieceTable read = decodeClx(encodeClx(table), streamSize, &damage);
    ASSERT_EQ(read.pieces.size(), 2U);
    EXPECT_EQ(read.pieces[0].length, 5U);
    EXPECT_EQ(read.pieces[1].length, 4U);
    EXPECT_EQ(damage, 2);
}

// So many pieces of ten characters, each a hundred bytes behind the other.
Bytes piecesOfTen(std::uint32_t count) {
    PieceTable table;
    for (std::uint32_t i = 0; i < count; ++i) {
        table.pieces.push_back({10, 100 * i, false, 0, 0});
    }
    return encodeClx(table);
}

TEST(PieceTable, PositionsThatDescendGiveNoPiece) {
    Bytes bytes = piecesOfTen(3);
    bytes[5 + 8] = 3; // the end of the second piece lies before its start
    int damage = 0;
    const PieceTable read = decodeClx(bytes, streamSize, &damage);
    ASSERT_EQ(read.pieces.size(), 2U);
    EXPECT_EQ(read.pieces[0].length, 10U);
    EXPECT_EQ(read.pieces[1].fc, 200U);
    EXPECT_GT(damage, 0);
}

TEST(PieceTable, ATableThatIsCutShortGivesThePiecesThatAreThere) {
    Bytes bytes = piecesOfTen(2);
    bytes.resize(bytes.size() - 1);
    int damage = 0;
    EXPECT_EQ(decodeClx(bytes, streamSize, &damage).pieces.size(), 1U);
    EXPECT_GT(damage, 0);
}

TEST(PieceTable, WithoutATableOfPiecesThereIsNothingToRead) {
    EXPECT_THROW(decodeClx({}, streamSize), FormatError);
    EXPECT_THROW(decodeClx(hex("05 00 00"), streamSize), FormatError);
    EXPECT_THROW(decodeClx(hex("01 FFFF 00"), streamSize), FormatError);
}

TEST(PieceModifier, ShortFormIsOneEntry) {
    EXPECT_EQ(modifierProperties({}, 0x01AA), hex("35 08 01")); // isprm 0x55: bold on
    EXPECT_EQ(modifierProperties({}, 0x020A), hex("61 24 02")); // isprm 5: aligned right
    EXPECT_EQ(modifierProperties({}, 0x01BC), hex("3E 2A 01")); // isprm 0x5E: underlined
    EXPECT_TRUE(modifierProperties({}, 0).empty());
    EXPECT_TRUE(modifierProperties({}, 0x01FE).empty()); // isprm 0x7F names nothing
}

TEST(PieceModifier, LongFormNamesAList) {
    const std::vector<Bytes> lists{hex("35 08 01"), hex("36 08 01")};
    EXPECT_EQ(modifierProperties(lists, 0x0003), lists[1]);
    EXPECT_TRUE(modifierProperties(lists, 0x0005).empty());
}

TEST(CompressedText, BytesOfTheTableStandForOtherCharacters) {
    EXPECT_EQ(decompressed(0x41), u'A');
    EXPECT_EQ(decompressed(0x85), u'\u2026');
    EXPECT_EQ(decompressed(0x92), u'\u2019');
    EXPECT_EQ(decompressed(0x9F), u'\u0178');
    EXPECT_EQ(decompressed(0x83), u'\u0192');
}

TEST(CompressedText, AllOtherBytesStandForThemselves) {
    for (const int byte :
         {0x07, 0x7F, 0x80, 0x81, 0x8D, 0x8E, 0x8F, 0x90, 0x9D, 0x9E, 0xA0, 0xFF}) {
        EXPECT_EQ(decompressed(static_cast<std::uint8_t>(byte)), byte);
    }
}

} // namespace
} // namespace qvnd::word
