#include "platform/word/layout/LayoutEstimate.h"

#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "support/ContentBuilder.h"

#include <gtest/gtest.h>

namespace qvnd::word {
namespace {

using test::ContentBuilder;

// A4 with margins of 2.5 cm: 9070 by 14004 twips of text.
Bytes a4() {
    Bytes list;
    list = withSprm16(list, sprm::SXaPage, 11906);
    list = withSprm16(list, sprm::SYaPage, 16838);
    for (const auto side : {sprm::SDxaLeft, sprm::SDxaRight, sprm::SDyaTop, sprm::SDyaBottom}) {
        list = withSprm16(list, side, 1417);
    }
    return list;
}

// Text of 12 points: a line of East Asian text is 15.6 points high, 44 of them fill a page, and
// 37 characters fill a line.
class LayoutEstimateTest : public testing::Test {
protected:
    LayoutEstimateTest() {
        builder.content.sections[0].properties = builder.content.tables.lists.intern(a4());
    }

    Bytes size12() { return withSprm16({}, sprm::CHps, 24); }

    void paragraphs(int count, const std::u16string& text, const Bytes& properties = {}) {
        for (int i = 0; i < count; ++i) {
            builder.add({{text + u"\r", size12()}}, 0, properties);
        }
    }

    // The pages shown for the starts of the given paragraphs, counted from 0.
    std::vector<int> pagesOf(const std::vector<std::size_t>& wanted) {
        std::vector<Cp> starts{0};
        const std::u16string text = builder.text();
        for (Cp at = 0; at < text.size(); ++at) {
            if (text[at] == u'\r' || text[at] == u'\f') {
                starts.push_back(at + 1);
            }
        }
        std::vector<Cp> positions;
        positions.reserve(wanted.size());
        for (const std::size_t index : wanted) {
            positions.push_back(starts.at(index));
        }
        return estimate.displayedPages(builder.content, positions);
    }

    ContentBuilder builder;
    LayoutEstimate estimate;
};

TEST_F(LayoutEstimateTest, AShortDocumentHasOnePage) {
    paragraphs(3, u"施工部署");
    EXPECT_EQ(pagesOf({0, 2}), (std::vector<int>{1, 1}));
    EXPECT_EQ(estimate.pages(), 1);
}

TEST_F(LayoutEstimateTest, LinesFillAPageAndGoOnOnTheNext) {
    paragraphs(100, u"施工部署");
    EXPECT_EQ(pagesOf({0, 43, 44, 99}), (std::vector<int>{1, 1, 2, 3}));
    EXPECT_EQ(estimate.pages(), 3);
}

TEST_F(LayoutEstimateTest, LongTextTakesAsManyLinesAsItNeeds) {
    paragraphs(40, std::u16string(100, u'施')); // three lines each
    EXPECT_EQ(pagesOf({0, 39}), (std::vector<int>{1, 3}));
}

TEST_F(LayoutEstimateTest, AGutterTakesFromTheWidthAtTheSideAndFromTheHeightOnTop) {
    auto& section = builder.content.sections[0].properties;
    auto& lists = builder.content.tables.lists;
    section = lists.intern(withSprm16(lists[section], sprm::SDzaGutter, 4536)); // 8 cm
    paragraphs(44, std::u16string(30, u'施')); // one line without a gutter, 18 characters with it
    EXPECT_EQ(pagesOf({21, 22, 43}), (std::vector<int>{1, 2, 2}));
    writeDop(builder.content.settings, dop::gutterAtTop, 1);
    EXPECT_EQ(pagesOf({29, 30, 43}), (std::vector<int>{1, 2, 2}));
}

TEST_F(LayoutEstimateTest, LatinLettersAreNarrowerThanChineseOnes) {
    paragraphs(44, std::u16string(60, u'i'));
    EXPECT_EQ(pagesOf({43}), (std::vector<int>{1}));
}

TEST_F(LayoutEstimateTest, LargerTypeTakesMoreRoom) {
    builder.add({{u"大\r", withSprm16({}, sprm::CHps, 144)}});
    paragraphs(41, u"小");
    EXPECT_EQ(pagesOf({38, 39}), (std::vector<int>{1, 2})); // it takes the room of six lines
}

TEST_F(LayoutEstimateTest, APageBreakBeforeStartsAPageButNeverABlankOne) {
    const Bytes onNewPage = withSprm8({}, sprm::PFPageBreakBefore, 1);
    paragraphs(1, u"第一章", onNewPage);
    paragraphs(1, u"第二章", onNewPage);
    EXPECT_EQ(pagesOf({0, 1}), (std::vector<int>{1, 2}));
}

TEST_F(LayoutEstimateTest, APageBreakCharacterStartsAPageForWhatFollows) {
    builder.add({{u"前\f\r", size12()}});
    paragraphs(1, u"后");
    const auto end = static_cast<Cp>(builder.text().size() - 1);
    EXPECT_EQ(estimate.displayedPages(builder.content, std::vector<Cp>{0, end - 2}),
              (std::vector<int>{1, 2}));
}

TEST_F(LayoutEstimateTest, AHeadingKeptWithTheNextDoesNotStandAloneAtTheFoot) {
    constexpr SprmOpcode keepFollow = 0x2406;
    paragraphs(42, u"正文");
    paragraphs(1, u"标题", withSprm8({}, keepFollow, 1));
    paragraphs(5, std::u16string(100, u'文'));
    EXPECT_EQ(pagesOf({41, 42}), (std::vector<int>{1, 2}));
}

TEST_F(LayoutEstimateTest, APictureTakesItsHeight) {
    auto picture = std::make_shared<Bytes>(68);
    const auto put = [&](std::size_t at, int value) {
        (*picture)[at] = static_cast<std::uint8_t>(value);
        (*picture)[at + 1] = static_cast<std::uint8_t>(value >> 8);
    };
    put(0x1C, 8000); // 8000 by 20000 twips, at half its size
    put(0x1E, 20000);
    put(0x20, 500);
    put(0x22, 500);
    builder.content.tables.blobs.push_back(picture);
    const Bytes properties = withSprm8(withSprm32({}, sprm::CPicLocation, 0), sprm::CFSpec, 1);
    paragraphs(1, u"图");
    builder.add({{u"\x01\r", properties}});
    builder.add({{u"\x01\r", properties}});
    EXPECT_EQ(pagesOf({0, 1, 2}), (std::vector<int>{1, 1, 2}));
}

// One row of two cells, the first 1000 twips wide with `text` in it.
void addRow(ContentBuilder& builder, const std::u16string& text, const Bytes& size) {
    const Bytes inTable = withSprm8({}, sprm::PFInTable, 1);
    LittleEndianWriter cells;
    cells.u16(2 + 1 + 3 * 2 - 1);
    cells.u8(2);
    for (const int edge : {0, 1000, 9000}) {
        cells.u16(static_cast<unsigned>(edge));
    }
    const Bytes rowMark =
        withSprm(withSprm8(inTable, sprm::PFTtp, 1), sprm::TDefTable, cells.data());
    builder.add({{text + u"\a", size}}, 0, inTable);
    builder.add({{u"短\a", size}}, 0, inTable);
    builder.add({{u"\a", size}}, 0, rowMark);
}

TEST_F(LayoutEstimateTest, ATableRowIsAsHighAsItsHighestCell) {
    // 3 characters fit in the narrow cell: 30 of them make 10 lines, 5 rows make 50.
    for (int i = 0; i < 5; ++i) {
        addRow(builder, std::u16string(30, u'工'), size12());
    }
    paragraphs(1, u"表后");
    const auto after = static_cast<Cp>(builder.text().find(u"表后"));
    EXPECT_EQ(estimate.displayedPages(builder.content, std::vector<Cp>{0, after}),
              (std::vector<int>{1, 2}));
}

TEST_F(LayoutEstimateTest, ARowIsNotSplitWhenItFitsOnTheNextPage) {
    paragraphs(40, u"正文");
    const auto table = static_cast<Cp>(builder.text().size() - 1);
    addRow(builder, std::u16string(30, u'工'), size12());
    EXPECT_EQ(estimate.displayedPages(builder.content, std::vector<Cp>{table}),
              (std::vector<int>{2}));
}

TEST_F(LayoutEstimateTest, FieldCodesAndHiddenTextTakeNoRoom) {
    const std::u16string code(4000, u'码');
    builder.add({{u"\x13" + code + u"\x14果\x15\r", size12()}});
    builder.add({{code + u"\r", withSprm8(size12(), sprm::CFVanish, 1)}});
    EXPECT_EQ(pagesOf({1, 2}), (std::vector<int>{1, 1}));
}

TEST_F(LayoutEstimateTest, ASectionThatRestartsCountsFromItsFirstNumber) {
    paragraphs(2, u"封面");
    Bytes restarting = withSprm8(a4(), sprm::SFPgnRestart, 1);
    restarting = withSprm16(restarting, sprm::SPgnStart97, 0);
    auto& content = builder.content;
    content.sections[0].properties = content.tables.lists.intern(restarting);
    paragraphs(60, u"正文");
    EXPECT_EQ(pagesOf({0, 61}), (std::vector<int>{0, 1}));
    EXPECT_EQ(estimate.pages(), 2);
}

TEST_F(LayoutEstimateTest, ASectionBreakStartsAPageWithItsOwnPaper) {
    builder.add({{u"纵向\f", size12()}});
    auto& content = builder.content;
    const Cp first = 3;
    Bytes landscape = withSprm16(withSprm16(a4(), sprm::SXaPage, 16838), sprm::SYaPage, 11906);
    const Cp rest = content.sections[0].length - first;
    content.sections[0].length = first;
    content.sections.push_back({rest, content.tables.lists.intern(landscape)});
    for (int i = 0; i < 31; ++i) {
        builder.add({{u"横向\r", size12()}});
    }
    EXPECT_EQ(pagesOf({0, 1, 31}), (std::vector<int>{1, 2, 3}));
}

} // namespace
} // namespace qvnd::word
