#include "platform/word/docfile/format/ShapeProperties.h"

#include "platform/word/docfile/container/FormatError.h"
#include "support/ByteText.h"

#include <gtest/gtest.h>

namespace qvnd::word::art {
namespace {

using test::hex;

// A picture, its name (complex data), a set of line flags.
const char* const table = "0441 01000000  05C1 04000000  FF01 00000800  6100 0000";

TEST(ShapeProperties, WritesWhatItRead) {
    const Bytes bytes = hex(table);
    const ShapeProperties properties(bytes, 3);
    EXPECT_EQ(properties.count(), 3U);
    EXPECT_EQ(properties.encode(), bytes);
}

TEST(ShapeProperties, NewPropertyTakesItsPlaceInOrderAndComplexDataStays) {
    ShapeProperties properties(hex(table), 3);
    properties.set(cropFromTop, 7);
    properties.set(pictureContrast, 8);
    EXPECT_EQ(properties.encode(), hex("0001 07000000  0441 01000000  05C1 04000000"
                                       "0801 08000000  FF01 00000800  6100 0000"));
}

TEST(ShapeProperties, FlagLeavesTheOthersOfItsSet) {
    ShapeProperties properties(hex("FF01 11001100"), 1);
    properties.setFlag(lineFlags, 8, true);
    EXPECT_EQ(properties.value(lineFlags), 0x00190019U);
    properties.setFlag(lineFlags, 1, false);
    EXPECT_EQ(properties.value(lineFlags), 0x00190018U);
}

TEST(ShapeProperties, InheritsWhatItDoesNotSayItselfInOrder) {
    ShapeProperties own(hex("0101 07000000  CB01 09000000"), 2);
    own.inherit(ShapeProperties(hex("0001 01000000  0101 02000000  8201 03000000"), 3));
    EXPECT_EQ(own.encode(), hex("0001 01000000  0101 07000000  8201 03000000  CB01 09000000"));
}

TEST(ShapeProperties, InheritsOfASetOnlyTheValuesThatDoNotCountYet) {
    ShapeProperties own(hex("FF01 01000100"), 1);
    own.inherit(ShapeProperties(hex("FF01 08000900"), 1));
    EXPECT_EQ(own.value(lineFlags), 0x00090009U);
}

TEST(ShapeProperties, TableShorterThanItCountsIsDamaged) {
    EXPECT_THROW(ShapeProperties(hex(table), 4), FormatError);
    EXPECT_THROW(ShapeProperties(hex("05C1 FFFFFF7F"), 1), FormatError);
}

} // namespace
} // namespace qvnd::word::art
