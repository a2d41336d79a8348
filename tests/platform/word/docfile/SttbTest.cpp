#include "platform/word/docfile/format/Sttb.h"

#include "support/ByteText.h"

#include <gtest/gtest.h>

namespace qvnd::word {
namespace {

using test::hex;

TEST(Sttb, ReadsUtf16StringsWithTheirExtraData) {
    const DecodedSttb read = decodeSttb(hex("FFFF 0200 0200  0100 9677 AABB  0000 CCDD"));

    ASSERT_TRUE(read.complete);
    ASSERT_EQ(read.table.entries.size(), 2U);
    EXPECT_EQ(read.table.entries[0].text, u"\u7796");
    EXPECT_EQ(read.table.entries[0].extra, hex("AABB"));
    EXPECT_EQ(read.table.entries[1].text, u"");
}

TEST(Sttb, ReadsSingleByteStringsAsWindows1252) {
    const DecodedSttb read = decodeSttb(hex("0100 0000  03 41 E9 80"));

    ASSERT_EQ(read.table.entries.size(), 1U);
    EXPECT_EQ(read.table.entries[0].text, u"A\u00E9\u20AC");
}

TEST(Sttb, KeepsWholeEntriesOfATableThatEndsEarly) {
    const DecodedSttb read = decodeSttb(hex("FFFF FF7F 0000  0100 4100  0500 42"));

    EXPECT_FALSE(read.complete);
    ASSERT_EQ(read.table.entries.size(), 1U);
    EXPECT_EQ(read.table.entries[0].text, u"A");
}

TEST(Sttb, NoBytesAreAnEmptyTable) {
    EXPECT_TRUE(decodeSttb({}).complete);
    EXPECT_TRUE(decodeSttb({}).table.entries.empty());
}

TEST(Sttb, WritesWhatItRead) {
    const Bytes bytes = hex("FFFF 0200 0200  0100 9677 AABB  0000 CCDD");
    EXPECT_EQ(encodeSttb(decodeSttb(bytes).table), bytes);
}

TEST(Sttb, BringsExtraDataToItsSize) {
    Sttb table;
    table.extraSize = 2;
    table.entries = {{u"a", hex("010203")}, {u"b", {}}};
    EXPECT_EQ(encodeSttb(table), hex("FFFF 0200 0200  0100 6100 0102  0100 6200 0000"));
}

} // namespace
} // namespace qvnd::word
