// Frames of paragraphs, and the text around them.

#include "platform/layout/PagedDocument.h"

namespace qvnd::layout {
namespace {

using word::Bytes;
using word::withSprm16;
using word::withSprm8;
namespace sprm = word::sprm;

class FramesOnPages : public test::PagedDocument {};

// A frame 800 wide and 400 high at the left edge of the column, where it stands in the text.
Bytes frame() {
    Bytes list = withSprm16({}, sprm::PDxaWidth, 800);
    return withSprm16(list, sprm::PWHeightAbs, 0x8000 | 400);
}

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
    type(u"框\r", withSprm8(frame(), sprm::PWr, 1));
    type(u"甲\r");
    const Page page = pages().at(0);
    EXPECT_DOUBLE_EQ(runWith(page, u'甲').baseline, 1560);
    EXPECT_DOUBLE_EQ(runWith(page, u'框').baseline, 1160) << "it does not go down with the text";
}

TEST_F(FramesOnPages, AtTheTopOfAPageTextGoesOnBelowAFrameToo) {
    for (int i = 0; i < 10; ++i) {
        type(u"一\r");
    }
    type(u"框\r", withSprm8(frame(), sprm::PWr, 1));
    type(u"甲\r");
    const auto found = pages();
    ASSERT_EQ(found.size(), 2U);
    EXPECT_DOUBLE_EQ(runWith(found[1], u'框').baseline, 1160);
    EXPECT_DOUBLE_EQ(runWith(found[1], u'甲').baseline, 1560);
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
