// Headers and footers of pages.

#include "platform/layout/PagedDocument.h"
#include "platform/word/docfile/format/Dop.h"

namespace qvnd::layout {
namespace {

using word::Bytes;
using word::HeaderKind;
using word::withSprm16;
using word::withSprm8;
namespace sprm = word::sprm;

class Headers : public test::PagedDocument {};

// A frame 800 wide and 400 high where it stands in the text.
Bytes frameInHeader() {
    Bytes list = withSprm16({}, sprm::PDxaWidth, 800);
    return withSprm16(list, sprm::PWHeightAbs, 0x8000 | 400);
}

TEST_F(Headers, HeadersStandOnEachPageAndPushTheTextDown) {
    paragraphs(12);
    putHeader(word::HeaderKind::oddHeader, story(u"眉\r眉\r眉\r"));
    const auto found = pages();
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(textOf(found[1]).substr(0, 3), u"眉眉眉");
    EXPECT_DOUBLE_EQ(found[0].layer.texts[0].baseline, 720 + 160);
    EXPECT_DOUBLE_EQ(found[0].layer.texts[3].baseline, 720 + 600 + 160);
}

TEST_F(Headers, TheyLieBelowTheTextOfThePage) {
    paragraphs(1);
    putHeader(word::HeaderKind::oddHeader, story(u"眉\r"));
    const Page page = pages().at(0);
    EXPECT_EQ(textAt(page, u"眉").plane, toHeader);
    EXPECT_EQ(textAt(page, u"一").plane, 0);
}

TEST_F(Headers, TextKeepsToAFixedMarginHoweverHighTheyAre) {
    const auto firstPage = [&](std::uint16_t margin, HeaderKind kind, unsigned width) {
        document.sections[0].properties = intern(withSprm16(section(), margin, width));
        document.headers.clear();
        putHeader(kind, story(u"眉\r眉\r眉\r"));
        return pages().at(0);
    };
    constexpr unsigned fixed = 0x10000 - 1000; // the margin, negative
    paragraphs(10);
    const auto textsOn = [](const Page& page) { return page.layer.texts.size() - 3; };
    EXPECT_EQ(textsOn(firstPage(sprm::SDyaTop, HeaderKind::oddHeader, 1000)), 8U);
    EXPECT_EQ(textsOn(firstPage(sprm::SDyaTop, HeaderKind::oddHeader, fixed)), 10U);
    EXPECT_EQ(textsOn(firstPage(sprm::SDyaBottom, HeaderKind::oddFooter, 1000)), 8U);
    EXPECT_EQ(textsOn(firstPage(sprm::SDyaBottom, HeaderKind::oddFooter, fixed)), 10U);
}

TEST_F(Headers, ATitlePageHasHeadersOfItsOwn) {
    paragraphs(12);
    document.sections[0].properties = intern(withSprm8(section(), sprm::SFTitlePage, 1));
    putHeader(word::HeaderKind::oddHeader, story(u"眉\r"));
    const auto found = pages();
    EXPECT_EQ(textOf(found[0])[0], u'一');
    EXPECT_EQ(textOf(found[1])[0], u'眉');
}

TEST_F(Headers, AFooterIsHighEnoughForAFrameInIt) {
    word::Story footer = story(u"1\r", frameInHeader());
    append(footer, u"\r");
    putHeader(word::HeaderKind::oddFooter, footer);
    paragraphs(10);
    EXPECT_EQ(pages().size(), 2U); // 400 below the text, above 720 at the foot of the page
}

TEST_F(Headers, SpacesInAHeaderAreTheLargerOfBothWhereTheDocumentSaysSo) {
    word::Story header = story(u"眉\r", withSprm16({}, sprm::PDyaAfter, 300));
    append(header, u"题\r", withSprm16({}, sprm::PDyaBefore, 100));
    putHeader(word::HeaderKind::oddHeader, header);
    type(u"甲\r");
    const auto gap = [&] {
        const auto texts = pages().at(0).layer.texts;
        return texts[1].baseline - texts[0].baseline;
    };
    word::writeDop(document.settings, word::dop::addsParagraphSpaces, 1);
    EXPECT_DOUBLE_EQ(gap(), 200 + 400);
    word::writeDop(document.settings, word::dop::addsParagraphSpaces, 0);
    EXPECT_DOUBLE_EQ(gap(), 200 + 300);
}

TEST_F(Headers, EvenPagesHaveTheirOwnWhereTheDocumentSaysSo) {
    paragraphs(12);
    putHeader(HeaderKind::oddHeader, story(u"单\r"));
    putHeader(HeaderKind::evenHeader, story(u"双\r"));
    putHeader(HeaderKind::evenFooter, story(u"脚\r"));
    EXPECT_EQ(textOf(pages().at(1)).front(), u'单');
    word::writeDop(document.settings, word::dop::facingPages, 1);
    const auto found = pages();
    EXPECT_EQ(textOf(found.at(0)).front(), u'单');
    EXPECT_EQ(textOf(found.at(1)).substr(0, 2), u"双脚");
    EXPECT_EQ(textOf(found.at(0)).find(u'脚'), std::u16string::npos);
}

TEST_F(Headers, TextOfASectionThatLeavesAPageEmptyStandsBelowTheHeaderOfItsOwnPage) {
    type(u"甲\r");
    nextSection(withSprm8(section(), sprm::SBkc, 4)); // on an odd page
    type(u"乙\r");
    putHeader(HeaderKind::oddHeader, story(u"单\r单\r单\r单\r"));
    putHeader(HeaderKind::evenHeader, story(u"双\r"));
    document.headers.resize(2);
    word::writeDop(document.settings, word::dop::facingPages, 1);
    const auto textTop = [&] {
        const auto found = pages();
        EXPECT_EQ(found.size(), 3U);
        EXPECT_TRUE(found.at(1).layer.texts.empty());
        EXPECT_EQ(found.at(1).number, 2);
        EXPECT_EQ(found.at(2).number, 3);
        return textAt(found.at(2), u"乙").baseline - 160;
    };
    EXPECT_DOUBLE_EQ(textTop(), 720 + 4 * 200);
    main.paragraphs.back().properties = intern(withSprm8({}, sprm::PFPageBreakBefore, 1));
    EXPECT_DOUBLE_EQ(textTop(), 720 + 4 * 200) << "its page is empty so far";
}

TEST_F(Headers, ATitlePageIsTheFirstOfEachSectionThatHasOne) {
    const Bytes titled = withSprm8(section(), sprm::SFTitlePage, 1);
    type(u"甲\r");
    nextSection(titled);
    paragraphs(12);
    putHeader(HeaderKind::oddHeader, story(u"眉\r"));
    putHeader(HeaderKind::firstHeader, story(u"首\r"));
    document.headers.resize(2);
    const auto found = pages();
    ASSERT_EQ(found.size(), 3U);
    EXPECT_EQ(textOf(found[0]).front(), u'眉');
    EXPECT_EQ(textOf(found[1]).front(), u'首');
    EXPECT_EQ(textOf(found[2]).front(), u'眉');
}

TEST_F(Headers, ASectionWithoutOneHasThatOfTheSectionBefore) {
    type(u"甲\r");
    nextSection(section());
    type(u"乙\r");
    nextSection(section());
    type(u"丙\r");
    const auto textsWith = [&](std::size_t at, const std::u16string& text) {
        document.headers[at][static_cast<std::size_t>(HeaderKind::oddHeader)] =
            word::slicesOf(story(text));
        std::u16string all;
        for (const Page& page : pages()) {
            all += textOf(page);
        }
        return all;
    };
    document.headers.resize(3);
    EXPECT_EQ(textsWith(1, u"中\r"), u"甲中乙中丙");
    EXPECT_EQ(textsWith(0, u"首\r"), u"首甲中乙中丙");
    EXPECT_EQ(textsWith(2, u"末\r"), u"首甲中乙末丙");
    document.headers.resize(1);
    EXPECT_EQ(textsWith(0, u"首\r"), u"首甲首乙首丙") << "fewer sets than sections";
}

TEST_F(Headers, OneGrowsWithWhatFloatsBesideItsTextAlone) {
    const auto textTop = [&](const Bytes& frame) {
        word::Story header = story(u"框\r", frame);
        append(header, u"\r");
        putHeader(HeaderKind::oddHeader, header);
        return textAt(pages().at(0), u"甲").baseline;
    };
    type(u"甲\r");
    EXPECT_DOUBLE_EQ(textTop(frameInHeader()), 720 + 400 + 160);
    const Bytes onPage = withSprm8(frameInHeader(), sprm::PPc, 1U << 4U);
    EXPECT_DOUBLE_EQ(textTop(withSprm16(onPage, sprm::PDyaAbs, 1)), 1000 + 160);
}

TEST_F(Headers, AFrameThatEndsAHeaderIsNotLost) {
    type(u"甲\r");
    word::Story header = story(u"眉\r");
    append(header, u"框\r", frameInHeader());
    putHeader(HeaderKind::oddHeader, header);
    EXPECT_DOUBLE_EQ(textAt(pages().at(0), u"框").baseline, 720 + 200 + 160);
    putHeader(HeaderKind::oddHeader, story(u"框\r", frameInHeader()));
    EXPECT_DOUBLE_EQ(textAt(pages().at(0), u"框").baseline, 720 + 160);
}

TEST_F(Headers, WhatStandsBesideTheTextOfOnePageIsNotBesideThatOfTheNext) {
    type(u"框\r", frameInHeader());
    type(u"甲\r");
    paragraphs(12);
    const auto found = pages();
    ASSERT_EQ(found.size(), 2U);
    EXPECT_DOUBLE_EQ(textAt(found[0], u"甲").x, 1800);
    EXPECT_DOUBLE_EQ(found[1].layer.texts[0].x, 1000);
}

} // namespace
} // namespace qvnd::layout
