// Frames of paragraphs, and the text around them.

#include "platform/layout/TypedRows.h"

namespace qvnd::layout {
namespace {

using word::Bytes;
using word::withSprm16;
using word::withSprm32;
using word::withSprm8;
namespace sprm = word::sprm;

// A frame 800 wide and so high at the left edge of the column, where it stands in the text.
Bytes frame(unsigned height = 400) {
    Bytes list = withSprm16({}, sprm::PDxaWidth, 800);
    return withSprm16(list, sprm::PWHeightAbs, 0x8000 | height);
}

// Such a frame with no text beside it.
Bytes closedFrame(unsigned height = 400) { return withSprm8(frame(height), sprm::PWr, 1); }

Bytes withNext() { return withSprm8({}, sprm::PFKeepFollow, 1); }

class FramesOnPages : public test::TypedRows {
protected:
    // So many lines, the last one with a frame that stands below it and has no text beside it.
    void linesAboveAFrame(int count) {
        paragraphs(count - 1);
        Bytes below = withSprm8(closedFrame(), sprm::PPc, 2U << 4U);
        type(u"框\r", withSprm16(below, sprm::PDyaAbs, 201));
        paragraphs(1);
    }
};

TEST_F(FramesOnPages, TextGoesOnBesideAFrameAndBelowItInFullWidth) {
    type(u"框\r", frame());
    type(u"甲乙丙丁戊己庚辛壬癸甲乙丙丁戊\r");
    const Page page = pages().at(0);
    EXPECT_DOUBLE_EQ(runWith(page, u'框').x, 1000);
    EXPECT_DOUBLE_EQ(runWith(page, u'框').baseline, 1160);
    EXPECT_DOUBLE_EQ(runWith(page, u'甲').x, 1800);
    EXPECT_DOUBLE_EQ(runWith(page, u'甲').baseline, 1160);
    EXPECT_DOUBLE_EQ(runWith(page, u'庚').x, 1800);
    EXPECT_DOUBLE_EQ(runWith(page, u'丙').x, 1000);
    EXPECT_DOUBLE_EQ(runWith(page, u'丙').baseline, 1560);
}

TEST_F(FramesOnPages, TextGoesOnBelowAFrameThatHasNoneBesideIt) {
    type(u"框\r", closedFrame());
    type(u"甲\r");
    const Page page = pages().at(0);
    EXPECT_DOUBLE_EQ(runWith(page, u'甲').baseline, 1560);
    EXPECT_DOUBLE_EQ(runWith(page, u'框').baseline, 1160) << "it does not go down with the text";
}

TEST_F(FramesOnPages, AtTheTopOfAPageTextGoesOnBelowAFrameToo) {
    for (int i = 0; i < 10; ++i) {
        type(u"一\r");
    }
    type(u"框\r", closedFrame());
    type(u"甲\r");
    const auto found = pages();
    ASSERT_EQ(found.size(), 2U);
    EXPECT_DOUBLE_EQ(runWith(found[1], u'框').baseline, 1160);
    EXPECT_DOUBLE_EQ(runWith(found[1], u'甲').baseline, 1560);
}

TEST_F(FramesOnPages, AHeadingThatGoesToTheNextPageWithItsTextStandsAtItsTop) {
    linesAboveAFrame(6);
    type(u"题\r", withNext());
    EXPECT_DOUBLE_EQ(runWith(pages().at(0), u'题').baseline, 1000 + 6 * 200 + 400 + 160);
    type(u"甲乙丙丁戊己庚辛壬癸甲乙丙丁戊己庚辛壬癸甲\r", withSprm8({}, sprm::PFKeep, 1));
    const auto found = pages();
    ASSERT_EQ(found.size(), 2U);
    EXPECT_DOUBLE_EQ(runWith(found[1], u'题').baseline, 1160);
    EXPECT_DOUBLE_EQ(runWith(found[1], u'甲').baseline, 1360);
}

TEST_F(FramesOnPages, ATableThatGoesToTheNextPageWithItsHeadingIsWhole) {
    linesAboveAFrame(6);
    type(u"题\r", withNext());
    typeRow({std::u16string(11, u'格')}, {0, 1000});
    typeRow({u"末"}, {0, 1000});
    type(u"后\r");
    const auto found = pages();
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(textOf(found[1]), u"题" + std::u16string(11, u'格') + u"末后");
    EXPECT_DOUBLE_EQ(runWith(found[1], u'题').baseline, 1160);
}

TEST_F(FramesOnPages, WhatBeginsAPageKeepsClearOfNothingOnThePageBefore) {
    type(u"侧\r", frame(1000));
    type(u"一\r");
    type(u"题\r", withSprm8({}, sprm::PFPageBreakBefore, 1));
    const auto found = pages();
    ASSERT_EQ(found.size(), 2U);
    EXPECT_DOUBLE_EQ(runWith(found[1], u'题').x, 1000);
}

TEST_F(FramesOnPages, AFrameOfAParagraphThatBeginsAPageKeepsTextAway) {
    paragraphs(3);
    const Bytes onPaper = withSprm8(frame(), sprm::PPc, 1U << 4U);
    type(u"侧\r", withSprm16(onPaper, sprm::PDyaAbs, 1)); // at its top
    type(u"题\r", withSprm8({}, sprm::PFPageBreakBefore, 1));
    EXPECT_DOUBLE_EQ(runWith(pages().at(1), u'题').x, 1000);
    main.paragraphs[3].properties = intern(frame());
    EXPECT_DOUBLE_EQ(runWith(pages().at(1), u'题').x, 1800);
}

TEST_F(FramesOnPages, TheFrameOfAHeadingGoesToTheNextPageWithIt) {
    linesAboveAFrame(5);
    type(u"侧\r", frame(200));
    type(u"题\r", withNext());
    type(u"旁\r", frame(200));
    type(u"甲乙丙丁戊己庚辛壬癸甲乙丙丁戊己庚辛壬癸甲\r", withSprm8({}, sprm::PFKeep, 1));
    const auto found = pages();
    ASSERT_EQ(found.size(), 2U);
    EXPECT_DOUBLE_EQ(runWith(found[1], u'侧').baseline, 1160);
    EXPECT_DOUBLE_EQ(runWith(found[1], u'题').x, 1800);
}

TEST_F(FramesOnPages, TextKeepsClearOfAFrameThatWentToTheNextPageWithTheHeading) {
    paragraphs(8);
    const Bytes below = withSprm8(closedFrame(), sprm::PPc, 2U << 4U);
    type(u"框\r", withSprm16(below, sprm::PDyaAbs, 201));
    type(u"题\r", withNext());
    type(u"甲乙丙丁戊己庚辛壬癸甲\r");
    const auto found = pages();
    ASSERT_EQ(found.size(), 2U);
    EXPECT_DOUBLE_EQ(runWith(found[1], u'题').baseline, 1160);
    EXPECT_DOUBLE_EQ(runWith(found[1], u'甲').baseline, 1160 + 200 + 400);
}

TEST_F(FramesOnPages, AnEndnoteBehindALineThatStaysWithTheNextIsNotLost) {
    linesAboveAFrame(7);
    type(u"题\x02\r", withNext());
    main.anchors = {{main.size() - 2, word::AnchorKind::endnote, 0}};
    const std::u16string note(11, u'注');
    document.tables.sideStories.push_back(
        {std::make_shared<const word::Story>(story(note + u"\r", withSprm8({}, sprm::PFKeep, 1))),
         true,
         {},
         {}});
    const auto found = pages();
    ASSERT_EQ(found.size(), 2U);
    EXPECT_TRUE(textOf(found[1]).starts_with(u"题"));
    EXPECT_TRUE(textOf(found[1]).ends_with(note));
}

TEST_F(FramesOnPages, TextThatHasNoRoomBelowAFrameOnAnyPageStandsOverIt) {
    for (const unsigned height : {1900U, 2100U}) {
        main = {};
        paragraphs(1);
        type(u"框\r", closedFrame(height));
        type(u"甲\r乙\r");
        const auto found = pages();
        ASSERT_GE(found.size(), 2U);
        EXPECT_EQ(textOf(found[0]), u"一");
        EXPECT_DOUBLE_EQ(runWith(found[1], u'框').baseline, 1160);
        EXPECT_DOUBLE_EQ(runWith(found[1], u'甲').baseline, 1160);
    }
}

TEST_F(FramesOnPages, TheBoxOfAParagraphBelowAFrameBeginsBelowItToo) {
    type(u"框\r", closedFrame());
    Bytes boxed;
    for (const auto side : {sprm::PBrcTop80, sprm::PBrcLeft80}) {
        boxed = withSprm32(boxed, side, 0x00010108); // one point
    }
    type(u"甲\r", withSprm16(boxed, sprm::PShd80, 8U << 5U));
    const Page page = pages().at(0);
    const double top = runWith(page, u'甲').baseline - 160;
    EXPECT_GE(top, 1400);
    ASSERT_EQ(page.layer.fills.size(), 1U);
    EXPECT_DOUBLE_EQ(page.layer.fills[0].y, top);
    EXPECT_DOUBLE_EQ(page.layer.fills[0].height, 200);
    ASSERT_EQ(page.layer.rules.size(), 2U);
    for (const Rule& rule : page.layer.rules) {
        EXPECT_DOUBLE_EQ(rule.y1, top);
    }
}

TEST_F(FramesOnPages, AFrameMayStandAnywhereOnThePage) {
    Bytes list = withSprm8(frame(), sprm::PPc, (1U << 4U) | (2U << 6U));
    list = withSprm16(list, sprm::PDxaAbs, 301);
    list = withSprm16(list, sprm::PDyaAbs, 501);
    type(u"框\r", list);
    type(u"甲\r");
    const Page page = pages().at(0);
    EXPECT_DOUBLE_EQ(runWith(page, u'框').x, 300);
    EXPECT_DOUBLE_EQ(runWith(page, u'框').baseline, 660);
    EXPECT_DOUBLE_EQ(runWith(page, u'甲').baseline, 1160);
}

TEST_F(FramesOnPages, AFrameWithoutAWidthIsAsWideAsItsText) {
    type(u"框框\r", withSprm16({}, sprm::PDxaAbs, 0xFFFC)); // centred
    type(u"甲\r");
    EXPECT_NEAR(runWith(pages().at(0), u'框').x, 1800, 1);
    main = {};
    type(u"1\r", withSprm16({}, sprm::PDxaAbs, 0xFFFC)); // half as wide
    type(u"甲\r");
    EXPECT_NEAR(runWith(pages().at(0), u'1').x, 1950, 1) << "though that is narrow";
    main = {};
    type(u"框\r宽宽宽\r", withSprm8(withSprm16({}, sprm::PDxaAbs, 0xFFFC), sprm::PJc, 2)); // right
    type(u"甲\r");
    const Page page = pages().at(0);
    EXPECT_NEAR(runWith(page, u'宽').x, 1700, 1);
    EXPECT_NEAR(runWith(page, u'框').x, 2100, 1) << "within the longest line";
}

TEST_F(FramesOnPages, ParagraphsInEqualFramesShareOne) {
    type(u"框\r架\r", frame());
    type(u"甲\r");
    const Page page = pages().at(0);
    EXPECT_DOUBLE_EQ(runWith(page, u'架').baseline, runWith(page, u'框').baseline + 200);
}

TEST_F(FramesOnPages, AFrameThatNothingFollowsIsNotLost) {
    type(u"甲\r");
    type(u"框\r", frame());
    EXPECT_EQ(textOf(pages().at(0)), u"甲框");
}

TEST_F(FramesOnPages, LinesBesideAFrameThatGoToTheNextPageHaveItsFullWidth) {
    for (int i = 0; i < 8; ++i) {
        type(u"一\r");
    }
    type(u"框\r", frame());
    type(u"甲乙丙丁戊己庚辛壬癸甲乙丙丁戊己庚辛壬癸甲乙\r", withSprm8({}, sprm::PFWidowControl, 0));
    const auto found = pages();
    ASSERT_EQ(found.size(), 2U);
    EXPECT_DOUBLE_EQ(runWith(found[1], u'丙').x, 1000);
    EXPECT_EQ(textOf(found[1]), u"丙丁戊己庚辛壬癸甲乙");
}

TEST_F(FramesOnPages, TextStandsOnBothSidesOfAFrame) {
    Bytes list = withSprm16(section(), sprm::SXaPage, 6000);
    document.sections[0].properties = intern(list);
    type(u"框\r", withSprm16(withSprm16({}, sprm::PDxaAbs, 1401), sprm::PDxaWidth, 1000));
    type(u"甲乙丙丁戊己庚辛壬癸甲乙丙丁戊己庚辛壬癸\r");
    const Page page = pages().at(0);
    EXPECT_DOUBLE_EQ(runWith(page, u'甲').x, 1000);
    EXPECT_DOUBLE_EQ(runWith(page, u'辛').x, 3400);
    EXPECT_DOUBLE_EQ(runWith(page, u'辛').baseline, runWith(page, u'甲').baseline);
    EXPECT_DOUBLE_EQ(runWith(page, u'己').x, 1000);
    EXPECT_DOUBLE_EQ(runWith(page, u'己').baseline, runWith(page, u'甲').baseline + 200);
}

TEST_F(FramesOnPages, AWordThatIsTooLongForThePlaceBesideAFrameGoesBelow) {
    type(u"框\r", frame());
    type(u"abcdefghijklmnop\r");
    const Page page = pages().at(0);
    EXPECT_DOUBLE_EQ(runWith(page, u'a').x, 1000);
    EXPECT_DOUBLE_EQ(runWith(page, u'a').baseline, 1560);
}

TEST_F(FramesOnPages, ANoteOfAFrameStandsAtTheFootOfItsPage) {
    type(u"框\x02\r", frame());
    putFootnote(1, u"注\r");
    type(u"甲\r");
    EXPECT_NE(textOf(pages().at(0)).find(u'注'), std::u16string::npos);
}

} // namespace
} // namespace qvnd::layout
