#include "platform/word/docfile/formatting/CharacterPages.h"

#include "platform/word/docfile/EncodedPages.h"
#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/format/Plc.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "support/ByteText.h"

#include <gtest/gtest.h>

namespace qvnd::word {
namespace {

using qvnd::test::encodeCharacterPages;
using test::hex;

const Bytes bold = hex("35 08 01");
const Bytes italic = hex("36 08 01");

std::vector<FormattedCharacters> decodedRuns(const CharacterPage& page) {
    std::vector<FormattedCharacters> runs;
    for (const CharacterEntry& entry : page.entries) {
        runs.push_back({(entry.limitFc - entry.firstFc) / 2, entry.properties});
    }
    return runs;
}

TEST(Plc, AsManyElementsAsTheBytesHold) {
    const Bytes bytes = hex("01000000 02000000 05000000  AABB CCDD  EE");
    const Plc plc = decodePlc(bytes, 2);
    EXPECT_EQ(plc.count(), 2U);
    EXPECT_EQ(plc.positions, (std::vector<std::uint32_t>{1, 2, 5}));
    EXPECT_EQ(plc.element(1)[0], 0xCC);
    EXPECT_EQ(encodePlc(plc.positions, plc.data), hex("01000000 02000000 05000000 AABB CCDD"));
    EXPECT_EQ(decodePlc(hex("07000000"), 2).positions, std::vector<std::uint32_t>{7});
    EXPECT_EQ(decodePlc(hex("01 00"), 2).count(), 0U);
    EXPECT_EQ(decodePlc({}, 0).count(), 0U);
}

TEST(CharacterPages, EncodeDecodeEncodeGivesEqualBytes) {
    const std::vector<FormattedCharacters> runs{{5, bold}, {1, {}}, {7, italic}, {2, bold}};
    const auto pages = encodeCharacterPages(runs, 1024);
    ASSERT_EQ(pages.size(), 1U);
    EXPECT_EQ(pages[0].bytes.size(), 512U);
    EXPECT_EQ(pages[0].firstFc, 1024U);
    EXPECT_EQ(pages[0].limitFc, 1024U + 2 * 15);

    const CharacterPage page = decodeCharacterPage(pages[0].bytes);
    EXPECT_TRUE(page.sound);
    EXPECT_EQ(encodeCharacterPages(decodedRuns(page), 1024)[0].bytes, pages[0].bytes);
}

TEST(CharacterPages, LayoutIsThatOfTheFormat) {
    const std::vector<FormattedCharacters> runs{{1, bold}, {1, {}}};
    const Bytes page = encodeCharacterPages(runs, 0x400)[0].bytes;
    EXPECT_EQ(Bytes(page.begin(), page.begin() + 14), hex("00040000 02040000 04040000 FD 00"));
    // Two bytes a unit: the record lies at 2 * 0xFD, its length in front.
    EXPECT_EQ(Bytes(page.begin() + 506, page.begin() + 510), hex("03 35 08 01"));
    EXPECT_EQ(page[511], 2);
}

TEST(CharacterPages, EqualListsOfAPageAreStoredOnce) {
    std::vector<FormattedCharacters> runs;
    runs.reserve(99);
    for (int i = 0; i < 99; ++i) {
        runs.push_back({1, i % 2 == 0 ? ByteView(bold) : ByteView(italic)});
    }
    EXPECT_EQ(encodeCharacterPages(runs, 0).size(), 1U);
}

TEST(CharacterPages, AFullPageIsFollowedByTheNextWithoutAGap) {
    std::vector<FormattedCharacters> runs;
    std::vector<Bytes> lists;
    for (unsigned i = 0; i < 500; ++i) {
        lists.push_back(withSprm32({}, sprm::CCv, i));
    }
    runs.reserve(lists.size());
    for (const Bytes& list : lists) {
        runs.push_back({3, list});
    }
    const auto pages = encodeCharacterPages(runs, 2048);
    ASSERT_GT(pages.size(), 1U);
    std::uint32_t fc = 2048;
    std::size_t next = 0;
    for (const FormattingPage& page : pages) {
        EXPECT_EQ(page.firstFc, fc);
        for (const CharacterEntry& entry : decodeCharacterPage(page.bytes).entries) {
            EXPECT_EQ(entry.firstFc, fc);
            EXPECT_EQ(Bytes(entry.properties.begin(), entry.properties.end()), lists.at(next++));
            fc = entry.limitFc;
        }
        EXPECT_EQ(page.limitFc, fc);
    }
    EXPECT_EQ(next, lists.size());
}

TEST(CharacterPages, EmptyRunsAreLeftOut) {
    const std::vector<FormattedCharacters> runs{{0, bold}, {2, italic}, {0, bold}};
    const auto pages = encodeCharacterPages(runs, 512);
    ASSERT_EQ(pages.size(), 1U);
    EXPECT_EQ(decodeCharacterPage(pages[0].bytes).entries.size(), 1U);
    EXPECT_TRUE(encodeCharacterPages({}, 512).empty());
}

TEST(CharacterPages, AListTooLongLosesWhatLaterEntriesOverrule) {
    Bytes list;
    for (int i = 0; i < 100; ++i) {
        list.insert(list.end(), bold.begin(), bold.end());
    }
    list.insert(list.end(), italic.begin(), italic.end());
    const std::vector<FormattedCharacters> runs{{1, list}};
    const auto pages = encodeCharacterPages(runs, 512);
    const CharacterPage page = decodeCharacterPage(pages[0].bytes);
    EXPECT_EQ(Bytes(page.entries[0].properties.begin(), page.entries[0].properties.end()),
              hex("35 08 01 36 08 01"));
    EXPECT_TRUE(fittedCharacterProperties(list).rest.empty());
}

TEST(CharacterPages, AListTooLongLosesIdentifiersOfSessionsBeforeLooks) {
    Bytes list;
    for (unsigned i = 0; i < 42; ++i) {
        list = withSprm32(list, static_cast<SprmOpcode>(0x6840 + i), i);
    }
    const Bytes whole = withSprm32(list, sprm::CRsidProp, 7);
    const FittedList fitted = fittedCharacterProperties(whole);
    EXPECT_EQ(fitted.list, list);
    EXPECT_TRUE(fitted.rest.empty());
}

TEST(CharacterPages, AListTooLongKeepsItsPicture) {
    Bytes list;
    for (unsigned i = 0; i < 60; ++i) {
        list = withSprm32(list, static_cast<SprmOpcode>(0x6840 + i), i);
    }
    list = withSprm32(withSprm8(list, sprm::CFSpec, 1), sprm::CPicLocation, 3);
    const FittedList fitted = fittedCharacterProperties(list);
    EXPECT_TRUE(findSprm(fitted.list, sprm::CFSpec));
    EXPECT_TRUE(findSprm(fitted.list, sprm::CPicLocation));
    EXPECT_LE(fitted.list.size(), longestCharacterProperties);
    EXPECT_EQ(fitted.list.size() + fitted.rest.size(), list.size());
}

TEST(CharacterPages, AListStillTooLongIsDividedBetweenEntries) {
    Bytes list;
    for (unsigned i = 0; i < 64; ++i) {
        const Bytes entry = withSprm32({}, static_cast<SprmOpcode>(0x6840 + i), i);
        list.insert(list.end(), entry.begin(), entry.end());
    }
    const std::vector<FormattedCharacters> runs{{1, list}, {1, bold}};
    const auto pages = encodeCharacterPages(runs, 512);
    const CharacterPage page = decodeCharacterPage(pages[0].bytes);
    EXPECT_EQ(page.entries[0].properties.size(), 252U);
    EXPECT_TRUE(parseSprms(page.entries[0].properties).complete);
    const Bytes rest = fittedCharacterProperties(list).rest;
    EXPECT_EQ(rest, Bytes(list.begin() + 252, list.end()));
}

TEST(CharacterPages, TheLongestListFitsAPage) {
    Bytes list = hex("57 CA FC");
    list.resize(255);
    const std::vector<FormattedCharacters> runs{{1, list}};
    const CharacterPage page = decodeCharacterPage(encodeCharacterPages(runs, 512)[0].bytes);
    EXPECT_EQ(page.entries[0].properties.size(), 255U);
}

TEST(CharacterPages, WhatIsNoPageIsRefused) {
    EXPECT_THROW(decodeCharacterPage(Bytes(511)), FormatError);
    EXPECT_THROW(decodeCharacterPage(Bytes(512)), FormatError); // no runs
    Bytes full(512);
    full[511] = 0xFF; // more runs than fit
    EXPECT_THROW(decodeCharacterPage(full), FormatError);
}

TEST(CharacterPages, ARecordOutOfBoundsIsLeftOutAndItsRunKept) {
    const std::vector<FormattedCharacters> runs{{1, bold}, {1, italic}};
    Bytes bytes = encodeCharacterPages(runs, 512)[0].bytes;
    bytes[12] = 1; // leads into the positions
    CharacterPage page = decodeCharacterPage(bytes);
    EXPECT_FALSE(page.sound);
    ASSERT_EQ(page.entries.size(), 2U);
    EXPECT_TRUE(page.entries[0].properties.empty());
    EXPECT_FALSE(page.entries[1].properties.empty());

    bytes = encodeCharacterPages(runs, 512)[0].bytes;
    bytes[std::size_t{2} * bytes[12]] = 0xFF; // counts past the end
    page = decodeCharacterPage(bytes);
    EXPECT_FALSE(page.sound);
    EXPECT_TRUE(page.entries[0].properties.empty());
}

TEST(CharacterPages, PositionsThatDescendAreLeftOut) {
    const std::vector<FormattedCharacters> runs{{1, bold}, {1, italic}, {1, bold}};
    Bytes bytes = encodeCharacterPages(runs, 512)[0].bytes;
    bytes[8] = 0;
    bytes[9] = 0;
    const CharacterPage page = decodeCharacterPage(bytes);
    EXPECT_FALSE(page.sound);
    ASSERT_EQ(page.entries.size(), 2U);
    EXPECT_EQ(page.entries[1].firstFc, page.entries[0].limitFc);
}

bool isList(ByteView properties, const Bytes& expected) {
    return Bytes(properties.begin(), properties.end()) == expected;
}

// A page of three runs of two bytes each, with one limit replaced.
Bytes pageWithLimit(std::size_t index, std::uint32_t limit) {
    const std::vector<FormattedCharacters> runs{{1, bold}, {1, italic}, {1, bold}};
    Bytes bytes = encodeCharacterPages(runs, 512)[0].bytes;
    for (std::size_t i = 0; i < 4; ++i) {
        bytes[4 * index + i] = static_cast<std::uint8_t>(limit >> (8 * i));
    }
    return bytes;
}

TEST(CharacterPages, ALimitThatIsFarTooHighTakesNoRunBehindItAlong) {
    const Bytes bytes = pageWithLimit(1, 0x20000204);
    const CharacterPage page = decodeCharacterPage(bytes);
    EXPECT_FALSE(page.sound);
    ASSERT_EQ(page.entries.size(), 2U);
    EXPECT_EQ(page.entries[0].firstFc, 512U);
    EXPECT_EQ(page.entries[0].limitFc, 516U);
    EXPECT_EQ(page.entries[1].limitFc, 518U);
    EXPECT_TRUE(isList(page.entries[0].properties, bold));
    EXPECT_TRUE(isList(page.entries[1].properties, bold));
}

TEST(CharacterPages, AFirstLimitThatIsFarTooHighLosesItsRunAlone) {
    const Bytes bytes = pageWithLimit(0, 0x20000200);
    const CharacterPage page = decodeCharacterPage(bytes);
    EXPECT_FALSE(page.sound);
    ASSERT_EQ(page.entries.size(), 2U);
    EXPECT_EQ(page.entries[0].firstFc, 514U);
    EXPECT_EQ(page.entries[1].limitFc, 518U);
}

TEST(CharacterPages, OfEqualLimitsTheRunBehindTheLastIsKept) {
    const Bytes bytes = pageWithLimit(1, 512);
    const CharacterPage page = decodeCharacterPage(bytes);
    EXPECT_FALSE(page.sound);
    ASSERT_EQ(page.entries.size(), 2U);
    EXPECT_EQ(page.entries[0].firstFc, 512U);
    EXPECT_EQ(page.entries[0].limitFc, 516U);
    EXPECT_TRUE(isList(page.entries[0].properties, italic));
    EXPECT_TRUE(isList(page.entries[1].properties, bold));
}

Bytes tableOf(const BinTableEncoder& encoder) {
    LittleEndianWriter table;
    for (const ByteView part : encoder.parts()) {
        table.bytes(part);
    }
    return table.take();
}

TEST(BinTable, GrowsPageByPage) {
    BinTableEncoder encoder;
    EXPECT_TRUE(encoder.empty());
    encoder.add(512, 800, 7);
    EXPECT_FALSE(encoder.empty());
    EXPECT_EQ(encoder.limitFc(), 800U);
    encoder.add(900, 1000, 9); // where a page starts counts, not where the one before ends
    EXPECT_EQ(encoder.limitFc(), 1000U);

    const BinTable table = decodeBinTable(tableOf(encoder));
    EXPECT_EQ(table.entries, (std::vector<BinTable::Entry>{{512, 7}, {900, 9}}));
    EXPECT_EQ(table.limitFc, 1000U);
    EXPECT_TRUE(decodeBinTable({}).entries.empty());
}

TEST(BinTable, OnlyTheLowBitsOfAPageNumberCount) {
    BinTableEncoder encoder;
    encoder.add(512, 1000, 0xFFC00007);
    EXPECT_EQ(decodeBinTable(tableOf(encoder)).entries[0].page, 7U);
}

TEST(CharacterPages, AListThatFitsWithoutWhatIsOverruledKeepsItsSession) {
    const Bytes session = withSprm32({}, sprm::CRsidText, 7);
    Bytes list = session;
    for (int i = 0; i < 100; ++i) {
        list.insert(list.end(), bold.begin(), bold.end());
    }
    const FittedList fitted = fittedCharacterProperties(list);
    EXPECT_EQ(fitted.list, test::joined({session, bold}));
    EXPECT_TRUE(fitted.rest.empty());
}

TEST(CharacterPages, BehindAnEntryThatDoesNotFitASmallerOneStillDoes) {
    const auto filler = [](SprmOpcode opcode, std::size_t size) {
        Bytes operand(size, 1);
        operand[0] = static_cast<std::uint8_t>(size - 1);
        return withSprm({}, opcode, operand);
    };
    const Bytes first = filler(0xCA76, 200); // 202 bytes
    const Bytes second = filler(0xCA72, 60);
    const FittedList fitted = fittedCharacterProperties(test::joined({first, second, italic}));
    EXPECT_EQ(fitted.list, test::joined({first, italic}));
    EXPECT_EQ(fitted.rest, second);
    const Bytes exact = filler(0xCA72, longestCharacterProperties - first.size() - 2);
    EXPECT_EQ(fittedCharacterProperties(test::joined({first, exact})).list,
              test::joined({first, exact}));
    EXPECT_EQ(fittedCharacterProperties(test::joined({first, exact, italic})).rest, italic);
}

} // namespace
} // namespace qvnd::word
