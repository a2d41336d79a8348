#include "platform/word/docfile/formatting/Sections.h"

#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "support/ByteText.h"

#include <gtest/gtest.h>

namespace qvnd::word {
namespace {

using test::hex;

TEST(Sections, EncodeDecodeEncodeGivesEqualBytes) {
    const std::vector<SectionPlace> sections{{100, 4096, 0}, {7, std::nullopt, 1}, {1, 5000, 2}};
    const Bytes bytes = encodeSections(sections);
    EXPECT_EQ(bytes.size(), 4U * 4 + 3U * 12);
    int damage = 0;
    const auto read = decodeSections(bytes, 108, &damage);
    EXPECT_EQ(read, sections);
    EXPECT_EQ(damage, 0);
    EXPECT_EQ(encodeSections(read), bytes);
}

TEST(Sections, LengthsAlwaysAddUpToTheMainStory) {
    const std::vector<SectionPlace> sections{{100, 4096}, {50, 4200}};
    const Bytes bytes = encodeSections(sections);
    int damage = 0;
    auto read = decodeSections(bytes, 120, &damage); // the last reaches behind the story
    ASSERT_EQ(read.size(), 2U);
    EXPECT_EQ(read[1].length, 20U);

    read = decodeSections(bytes, 60, &damage); // the second lies behind it
    ASSERT_EQ(read.size(), 1U);
    EXPECT_EQ(read[0].length, 60U);

    damage = 0;
    read = decodeSections(bytes, 200, &damage); // the last ends too early
    ASSERT_EQ(read.size(), 2U);
    EXPECT_EQ(read[1].length, 100U);
    EXPECT_EQ(damage, 1);
}

TEST(Sections, ThereIsAlwaysOne) {
    const auto read = decodeSections({}, 12);
    ASSERT_EQ(read.size(), 1U);
    EXPECT_EQ(read[0].length, 12U);
    EXPECT_FALSE(read[0].sepx);
}

TEST(Sections, AnEmptySectionIsLeftOutAndTheOthersKeepTheirNumber) {
    const std::vector<SectionPlace> sections{{10, 1}, {0, 2}, {5, 3}};
    int damage = 0;
    const auto read = decodeSections(encodeSections(sections), 15, &damage);
    ASSERT_EQ(read.size(), 2U);
    EXPECT_EQ(read[1].number, 2U);
    EXPECT_EQ(damage, 1);
}

TEST(Sepx, ReadsBackWhatItWrites) {
    const Bytes list = hex("09 30 02");
    Bytes stream = hex("FF");
    const Bytes sepx = encodeSepx(list);
    stream.insert(stream.end(), sepx.begin(), sepx.end());
    const ByteView read = decodeSepx(stream, 1);
    EXPECT_EQ(Bytes(read.begin(), read.end()), list);
}

TEST(Sepx, OutsideOfTheStreamIsRefused) {
    EXPECT_THROW(decodeSepx(hex("05 00 01"), 0), FormatError);
    EXPECT_THROW(decodeSepx(hex("05 00 01"), 100), FormatError);
}

TEST(Sepx, OfTooLongAListAsManyEntriesAreKeptAsHaveRoom) {
    Bytes list = hex("09 30 02");
    const Bytes entry = withSprm16({}, sprm::SXaPage, 12240);
    while (list.size() <= 0x7FFF) {
        list.insert(list.end(), entry.begin(), entry.end());
    }
    EXPECT_EQ(decodeSepx(encodeSepx(list), 0).size(), 0x7FFFU);
}

TEST(Sepx, TooLongAListIsCutBetweenEntries) {
    Bytes list;
    while (list.size() < 40000) {
        const Bytes entry = withSprm16({}, sprm::SXaPage, 12240);
        list.insert(list.end(), entry.begin(), entry.end());
    }
    const Bytes sepx = encodeSepx(list);
    const ByteView read = decodeSepx(sepx, 0);
    EXPECT_LE(read.size(), 0x7FFFU);
    EXPECT_TRUE(parseSprms(read).complete);
}

} // namespace
} // namespace qvnd::word
