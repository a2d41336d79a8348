#include "platform/word/docfile/format/OfficeArt.h"

#include "platform/word/docfile/DrawingBytes.h"

#include <gtest/gtest.h>

namespace qvnd::word::art {
namespace {

using drawings::artContainer;
using drawings::artRecord;

TEST(ArtRecords, AreWholeWhereTheyFillTheBytes) {
    const Bytes inner = artRecord(0, 0, fsp, Bytes(4));
    const Bytes whole = artContainer(spContainer, {inner, inner});
    EXPECT_TRUE(recordsAreWhole(whole, spContainer));
    EXPECT_FALSE(recordsAreWhole(whole, spgrContainer)) << "of another type";
    EXPECT_FALSE(recordsAreWhole(ByteView(whole).first(headerSize - 1), spContainer));
    EXPECT_FALSE(recordsAreWhole(ByteView(whole).first(whole.size() - 1), spContainer));
    for (const std::size_t more : {1U, 7U}) {
        EXPECT_FALSE(recordsAreWhole(qvnd::test::joined({whole, Bytes(more)}), spContainer));
    }
    EXPECT_TRUE(recordsAreWhole(qvnd::test::joined({whole, inner}), spContainer));
}

TEST(ArtRecords, AreWholeWhereThoseOfAContainerFillIt) {
    const Bytes inner = artRecord(0, 0, fsp, Bytes(4));
    for (const std::size_t missing : {1U, 5U, 12U}) {
        const Bytes cut(inner.begin(), inner.end() - static_cast<std::ptrdiff_t>(missing));
        EXPECT_EQ(recordsAreWhole(artContainer(spContainer, {cut}), spContainer), missing == 12);
        EXPECT_TRUE(recordsAreWhole(artRecord(0, 0, spContainer, cut), spContainer))
            << "what is no container may hold anything";
    }
}

TEST(ArtRecords, NestSixteenDeepAndNoDeeper) {
    const auto nested = [](int containers) {
        Bytes records;
        for (int i = 0; i < containers; ++i) {
            records = artContainer(spgrContainer, {records});
        }
        return recordsAreWhole(records, spgrContainer);
    };
    EXPECT_TRUE(nested(16));
    EXPECT_FALSE(nested(17));
}

TEST(ArtRecords, AreBlipsFromTheFirstToTheLastOfThem) {
    EXPECT_FALSE(isBlip(0xF017));
    EXPECT_TRUE(isBlip(0xF018));
    EXPECT_TRUE(isBlip(0xF117));
    EXPECT_FALSE(isBlip(0xF118));
}

} // namespace
} // namespace qvnd::word::art
