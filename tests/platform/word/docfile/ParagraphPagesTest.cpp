#include "platform/word/docfile/formatting/ParagraphPages.h"

#include "platform/word/docfile/EncodedPages.h"
#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "support/ByteText.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace qvnd::word {
namespace {

using qvnd::test::encodeParagraphPages;
using test::hex;

const Bytes centred = hex("61 24 01");
const Bytes indented = hex("5E 84 20 01");

std::uint32_t noStore(ByteView record) {
    ADD_FAILURE() << "a list of a page went to the Data stream: " << record.size();
    return 0;
}

// A Data stream that keeps what it is given.
struct Store {
    Bytes data = hex("EE EE EE");
    StoreInDataStream store = [this](ByteView record) {
        const auto offset = static_cast<std::uint32_t>(data.size());
        data.insert(data.end(), record.begin(), record.end());
        return offset;
    };
};

Bytes longList(std::size_t entries) {
    Bytes list;
    for (std::size_t i = 0; i < entries; ++i) {
        const Bytes entry = withSprm16({}, sprm::PDxaLeft, static_cast<unsigned>(i));
        list.insert(list.end(), entry.begin(), entry.end());
    }
    return list;
}

std::vector<FormattedParagraph> decodedRuns(const ParagraphPage& page) {
    std::vector<FormattedParagraph> runs;
    for (const ParagraphEntry& entry : page.entries) {
        runs.push_back({(entry.limitFc - entry.firstFc) / 2, entry.style, entry.properties});
    }
    return runs;
}

TEST(ParagraphPages, EncodeDecodeEncodeGivesEqualBytes) {
    const std::vector<FormattedParagraph> runs{
        {5, 0, {}}, {1, 3, centred}, {7, 1, indented}, {2, 3, centred}};
    const auto pages = encodeParagraphPages(runs, 1024, noStore);
    ASSERT_EQ(pages.size(), 1U);
    EXPECT_EQ(pages[0].firstFc, 1024U);
    EXPECT_EQ(pages[0].limitFc, 1024U + 2 * 15);

    const ParagraphPage page = decodeParagraphPage(pages[0].bytes);
    EXPECT_TRUE(page.sound);
    ASSERT_EQ(page.entries.size(), 4U);
    EXPECT_EQ(page.entries[1].style, 3);
    EXPECT_EQ(Bytes(page.entries[2].properties.begin(), page.entries[2].properties.end()),
              indented);
    EXPECT_EQ(encodeParagraphPages(decodedRuns(page), 1024, noStore)[0].bytes, pages[0].bytes);
}

TEST(ParagraphPages, LayoutIsThatOfTheFormat) {
    const std::vector<FormattedParagraph> runs{{1, 2, centred}, {1, 4, indented}};
    const Bytes page = encodeParagraphPages(runs, 0x400, noStore)[0].bytes;
    EXPECT_EQ(Bytes(page.begin(), page.begin() + 12), hex("00040000 02040000 04040000"));
    // Thirteen bytes a paragraph: half the offset, then the unused height.
    const std::size_t first = std::size_t{2} * page[12];
    const std::size_t second = std::size_t{2} * page[25];
    for (std::size_t i = 13; i < 25; ++i) {
        EXPECT_EQ(page[i], 0);
    }
    // Style and list are five bytes: an odd number counts as 2 * cb - 1.
    EXPECT_EQ(Bytes(page.begin() + long(first), page.begin() + long(first) + 6),
              hex("03 0200 612401"));
    // Six bytes: a zero, then an even number as 2 * cb.
    EXPECT_EQ(Bytes(page.begin() + long(second), page.begin() + long(second) + 8),
              hex("00 03 0400 5E842001"));
    EXPECT_EQ(page[511], 2);
}

TEST(ParagraphPages, EqualListsOfAPageAreStoredOnce) {
    std::vector<FormattedParagraph> runs(29, {1, 0, centred});
    EXPECT_EQ(encodeParagraphPages(runs, 0, noStore).size(), 1U);
    runs.push_back({1, 0, centred}); // thirty need more than a page's positions
    EXPECT_EQ(encodeParagraphPages(runs, 0, noStore).size(), 2U);
}

TEST(ParagraphPages, TheSameListUnderAnotherStyleIsAnother) {
    const std::vector<FormattedParagraph> runs{{1, 1, centred}, {1, 2, centred}};
    const ParagraphPage page = decodeParagraphPage(encodeParagraphPages(runs, 0, noStore)[0].bytes);
    EXPECT_EQ(page.entries[0].style, 1);
    EXPECT_EQ(page.entries[1].style, 2);
}

TEST(ParagraphPages, AListThatNoPageHoldsGoesToTheDataStream) {
    const Bytes list = longList(200);
    Store data;
    const std::vector<FormattedParagraph> runs{{4, 7, list}, {1, 1, centred}};
    const auto pages = encodeParagraphPages(runs, 512, data.store);
    const ParagraphPage page = decodeParagraphPage(pages[0].bytes);
    EXPECT_EQ(page.entries[0].style, 7);
    const auto huge = findSprm(page.entries[0].properties, sprm::PHugePapx);
    ASSERT_TRUE(huge);
    const std::uint32_t offset = LittleEndianReader(huge->operand, "offset").u32();
    EXPECT_EQ(offset, 3U);
    const ByteView stored = decodePrcData(data.data, offset);
    EXPECT_EQ(Bytes(stored.begin(), stored.end()), list);
}

TEST(ParagraphPages, ParagraphsThatShareALongListNameOneRecord) {
    const Bytes list = longList(200);
    const Bytes other = longList(201);
    Store data;
    const std::vector<FormattedParagraph> runs{{4, 7, list}, {1, 1, other}, {2, 7, list}};
    const auto pages = encodeParagraphPages(runs, 512, data.store);
    EXPECT_EQ(data.data.size(), 3 + (2 + list.size()) + (2 + other.size()));
    const ParagraphPage page = decodeParagraphPage(pages[0].bytes);
    ASSERT_EQ(page.entries.size(), 3U);
    EXPECT_TRUE(std::equal(page.entries[0].properties.begin(), page.entries[0].properties.end(),
                           page.entries[2].properties.begin(), page.entries[2].properties.end()));
    EXPECT_FALSE(std::equal(page.entries[0].properties.begin(), page.entries[0].properties.end(),
                            page.entries[1].properties.begin(), page.entries[1].properties.end()));
}

TEST(ParagraphPages, TheLongestListOfAPageStaysInIt) {
    Bytes list = hex("0D C6 FF"); // one entry of 2 + 1 + 255 bytes
    list.resize(258);
    const Bytes rest = longList(56);
    list.insert(list.end(), rest.begin(), rest.end());
    list.resize(485 - 3);
    list.insert(list.end(), centred.begin(), centred.end());
    ASSERT_EQ(list.size(), 485U);
    const std::vector<FormattedParagraph> fits{{1, 0, list}};
    const ParagraphPage page = decodeParagraphPage(encodeParagraphPages(fits, 0, noStore)[0].bytes);
    EXPECT_EQ(page.entries[0].properties.size(), 485U);

    list.push_back(0);
    Store data;
    const std::vector<FormattedParagraph> tooLong{{1, 0, list}};
    EXPECT_EQ(encodeParagraphPages(tooLong, 0, data.store).size(), 1U);
    EXPECT_GT(data.data.size(), 400U);
}

TEST(ParagraphPages, WhatExceedsThePrcIsCutBetweenEntries) {
    const Bytes list = longList(5000);
    Store data;
    const std::vector<FormattedParagraph> runs{{1, 0, list}};
    encodeParagraphPages(runs, 0, data.store);
    const ByteView stored = decodePrcData(data.data, 3);
    EXPECT_LE(stored.size(), longestPrcData);
    EXPECT_GT(stored.size(), longestPrcData - 4);
    EXPECT_TRUE(parseSprms(stored).complete);
}

TEST(ParagraphPages, WhatIsNoPageIsRefused) {
    EXPECT_THROW(decodeParagraphPage(Bytes(100)), FormatError);
    EXPECT_THROW(decodeParagraphPage(Bytes(512)), FormatError);
    Bytes full(512);
    full[511] = 30;
    EXPECT_THROW(decodeParagraphPage(full), FormatError);
}

TEST(ParagraphPages, ARecordWithoutRoomForAStyleIsLeftOut) {
    const std::vector<FormattedParagraph> runs{{1, 2, centred}};
    Bytes bytes = encodeParagraphPages(runs, 512, noStore)[0].bytes;
    const std::size_t at = std::size_t{2} * bytes[8];
    for (const std::uint8_t size : {std::uint8_t{1}, std::uint8_t{0xFF}}) {
        bytes[at] = size;
        const ParagraphPage page = decodeParagraphPage(bytes);
        EXPECT_FALSE(page.sound);
        ASSERT_EQ(page.entries.size(), 1U);
        EXPECT_EQ(page.entries[0].style, 0);
        EXPECT_TRUE(page.entries[0].properties.empty());
    }
}

TEST(PrcData, OutsideOfTheDataStreamIsRefused) {
    const Bytes data = hex("00 02 00 AA BB");
    const ByteView list = decodePrcData(data, 1);
    EXPECT_EQ(Bytes(list.begin(), list.end()), hex("AA BB"));
    EXPECT_THROW(decodePrcData(data, 3), FormatError);
    EXPECT_THROW(decodePrcData(data, 0xFFFFFFFF), FormatError);
}

} // namespace
} // namespace qvnd::word
