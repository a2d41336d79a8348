// What stands on a page, of all that a document may hold.

#include "platform/layout/TypedRows.h"
#include "platform/word/docfile/format/Dop.h"
#include "platform/word/docfile/styles/FontTable.h"
#include "platform/word/docfile/text/Fields.h"
#include "platform/word/layout/BlockComposer.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace qvnd::layout {
namespace {

using word::Bytes;
using word::withSprm16;
using word::withSprm32;
using word::withSprm8;
namespace sprm = word::sprm;

class PageContent : public test::TypedRows {};

TEST_F(PageContent, TextBearsTheLookOfItsStyleAndItsOwn) {
    word::StyleDefinition& heading = *document.tables.styles.styles[1];
    heading.character = intern(withSprm16(withSprm8({}, sprm::CFBold, 1), sprm::CHps, 32));
    type(u"章红蓝\r");
    main.paragraphs[0].style = 1;
    main.characters = {
        {1, {}},
        {1, intern(withSprm8({}, sprm::CIco, 6))},
        {2, intern(withSprm8(withSprm32({}, sprm::CCv, 0x00FF0000), sprm::CKul, 1))}};
    const Page page = pages().at(0);
    const PlacedText& plain = textAt(page, u"章");
    EXPECT_EQ(plain.size, 320);
    EXPECT_EQ(plain.face, 1U) << "bold";
    EXPECT_EQ(plain.colour, std::nullopt);
    EXPECT_FALSE(plain.underline.isSeen());
    EXPECT_EQ(textAt(page, u"红").colour, 0xFF0000U);
    EXPECT_EQ(textAt(page, u"蓝").colour, 0x0000FFU);
    EXPECT_TRUE(textAt(page, u"蓝").underline.isSeen());
}

TEST_F(PageContent, TextBearsTheEffectsOfItsLetters) {
    type(u"平影\r");
    main.characters = {{1, {}}, {2, intern(withSprm8({}, sprm::CFShadow, 1))}};
    const Page page = pages().at(0);
    EXPECT_FALSE(textAt(page, u"平").effects.shadowed);
    EXPECT_TRUE(textAt(page, u"影").effects.shadowed);
}

TEST_F(PageContent, AListsNumberStandsBeforeItsParagraph) {
    document.tables.listDefinitions.push_back(numberedList(0));
    document.tables.listOverrides.push_back({77, 0, 0, {}});
    const Bytes listed = withSprm8(withSprm16({}, sprm::PIlfo, 1), sprm::PIlvl, 0);
    type(u"甲\r乙\r", listed);
    EXPECT_EQ(textOf(pages().at(0)), u"1、甲2、乙");
}

TEST_F(PageContent, AListsNumberMayStandAroundItsPlaceOrEndThere) {
    const Bytes listed = withSprm16(withSprm8(withSprm16({}, sprm::PIlfo, 1), sprm::PIlvl, 0),
                                    sprm::PDxaLeft80, 600);
    document.tables.listOverrides.push_back({77, 0, 0, {}});
    type(u"甲\r", listed);
    for (const auto& [alignment, before] :
         {std::pair(0, 0), std::pair(1, 150), std::pair(2, 300)}) { // "1、" is 300 wide
        document.tables.listDefinitions = {numberedList(static_cast<std::uint8_t>(alignment))};
        EXPECT_DOUBLE_EQ(pages().at(0).layer.texts.front().x, 1600 - before);
    }
}

TEST_F(PageContent, ALineBreakEndsItsLineWithinTheParagraph) {
    type(u"上\v下\r");
    const Page page = pages().at(0);
    EXPECT_DOUBLE_EQ(textAt(page, u"下").baseline - textAt(page, u"上").baseline, 200);
    EXPECT_DOUBLE_EQ(textAt(page, u"下").x, textAt(page, u"上").x);
}

// A character that stands for that code of the font Symbol, the third of the document.
Bytes symbolRun(unsigned code) { return withSprm32({}, sprm::CSymbol, (code << 16) | 2); }

TEST_F(PageContent, ASymbolIsShownThoughNothingElseMakesItASpecialCharacter) {
    document.tables.fonts.push_back(word::makeFont(u"Symbol"));
    type(u"(箭\r");
    main.characters = {{1, intern(symbolRun(0xF0AE))}, {2, {}}};
    EXPECT_EQ(textOf(pages().at(0)), u"→箭");
}

TEST_F(PageContent, ASymbolKeepsItsCodeWhereTheOfficeSuiteSetsTheText) {
    document.tables.fonts.push_back(word::makeFont(u"Symbol"));
    type(u"((箭\r");
    main.characters = {{1, intern(symbolRun(0xAE))}, {3, {}}};
    options = officeOptions();
    EXPECT_EQ(textOf(pages().at(0)), u"\uF0AE(箭");
}

TEST_F(PageContent, DeletedTextIsSeenWhereTheOfficeSuiteShowsRevisionsAlone) {
    type(u"留删\r");
    main.characters = {{1, {}}, {1, intern(withSprm8({}, sprm::CFRMarkDel, 1))}, {1, {}}};
    word::writeDop(document.settings, word::dop::showRevisions, 1);
    EXPECT_EQ(textOf(pages().at(0)), u"留");
    options = officeOptions();
    EXPECT_EQ(textOf(pages().at(0)), u"留删");
    EXPECT_TRUE(textAt(pages().at(0), u"删").struckOut);
    word::writeDop(document.settings, word::dop::showRevisions, 0);
    EXPECT_EQ(textOf(pages().at(0)), u"留");
}

TEST_F(PageContent, ADateIsTheOneOfTheDayWhereTheSourceTellsIt) {
    const std::u16string instruction = u"DATE \\@ \"yyyy年M月d日\"";
    main.text = u"\u0013" + instruction + u"\u0014旧\u0015\r";
    main.characters = {{main.size(), {}}};
    main.paragraphs = {{main.size(), 0, {}}};
    const auto separator = static_cast<word::Cp>(instruction.size() + 1);
    main.fields = {{0, word::fieldBegin, 0x1F},
                   {separator, word::fieldSeparator, 0},
                   {separator + 2, word::fieldEnd, 0}};
    document.sections.back().length = main.size();
    EXPECT_EQ(textOf(pages().at(0)), u"旧");
    sourceOfAll();
    source.now = word::Moment{2026, 11, 22, 9, 5, 7};
    DocumentLayout today(source, fonts, options);
    EXPECT_EQ(textOf(*today.nextPage()), u"2026年11月22日");
}

TEST_F(PageContent, RowsWithDifferentEdgesStandAtTheirOwn) {
    typeRow({u"宽", u"窄"}, {0, 1300, 2000});
    typeRow({u"一", u"二", u"三"}, {0, 700, 1310, 2000});
    type(u"\r");
    const Page page = pages().at(0);
    EXPECT_DOUBLE_EQ(textAt(page, u"窄").x - textAt(page, u"宽").x, 1300);
    EXPECT_DOUBLE_EQ(textAt(page, u"二").x - textAt(page, u"一").x, 700);
    EXPECT_DOUBLE_EQ(textAt(page, u"三").x - textAt(page, u"一").x, 1310);
    EXPECT_GT(textAt(page, u"一").baseline, textAt(page, u"宽").baseline);
}

TEST_F(PageContent, OnlyTheBordersThatTheRowSaysAreDrawn) {
    typeRow({u"甲", u"乙"}, {0, 1000, 2000});
    type(u"\r");
    const Page page = pages().at(0);
    ASSERT_EQ(page.layer.rules.size(), 1U);
    const Rule& rule = page.layer.rules[0];
    EXPECT_DOUBLE_EQ(rule.y1, rule.y2);
    EXPECT_NEAR(rule.x2 - rule.x1, 1000, 20);
}

TEST_F(PageContent, EachSideOfACellIsDrawnInItsWidth) {
    // The table's: top, left, bottom, right of 1 to 4 points, 6 between columns.
    moreOfRows = {0x05, 0xD6, 24, 8, 1, 0, 0, 16, 1, 0,  0, 24, 1, 0,
                  0,    32,   1,  0, 0, 0, 0, 0,  0, 48, 1, 0,  0};
    typeRow({u"甲", u"乙"}, {0, 1000, 2000});
    type(u"\r");
    const Page page = pages().at(0);
    std::vector<std::pair<double, double>> upright; // place and width
    std::vector<double> lying;
    double top = 1e9;
    for (const Rule& rule : page.layer.rules) {
        if (rule.x1 == rule.x2) {
            upright.emplace_back(rule.x1 - page.layer.rules.front().x1, rule.width);
            EXPECT_GT(rule.y2, rule.y1 + 200);
        } else {
            lying.push_back(rule.width);
            top = std::min(top, rule.y1);
        }
    }
    const std::vector<std::pair<double, double>> expected{
        {0, 40}, {1000, 120}, {1000, 120}, {2000, 80}};
    EXPECT_EQ(upright, expected);
    EXPECT_EQ(lying, (std::vector<double>{20, 60, 20, 60}));
    EXPECT_DOUBLE_EQ(page.layer.rules.front().y1, top);
}

TEST_F(PageContent, TheFrameOfATableStandsAboveItsFirstRowAndBelowItsLastAlone) {
    // The table's: three points above, two below, half a point between rows.
    moreOfRows = {0x05, 0xD6, 24, 24, 1, 0, 0, 0, 0, 0, 0, 16, 1, 0,
                  0,    0,    0,  0,  0, 4, 1, 0, 0, 0, 0, 0,  0};
    typeRow({u"甲", u"乙"}, {0, 1000, 2000});
    typeRow({u"丙", u"丁"}, {0, 1000, 2000});
    type(u"\r");
    std::vector<double> widths; // of the second cells, which have no border of their own
    const Page page = pages().at(0);
    for (const Rule& rule : page.layer.rules) {
        if (rule.x1 > 1500) {
            widths.push_back(rule.width);
        }
    }
    EXPECT_EQ(widths, (std::vector<double>{60, 10, 10, 40}));
}

TEST_F(PageContent, TheBackgroundOfACellFillsItAndNoOther) {
    moreOfRows = {0x09, 0xD6, 4, 0xFF, 0xFF, 0x06, 0x04}; // nothing, solid red
    typeRow({u"甲", u"乙"}, {0, 1000, 1700});
    type(u"\r");
    const Page page = pages().at(0);
    ASSERT_EQ(page.layer.fills.size(), 1U);
    const Fill& fill = page.layer.fills[0];
    EXPECT_DOUBLE_EQ(fill.width, 700);
    EXPECT_GT(fill.height, 200);
    EXPECT_LT(fill.x, textAt(page, u"乙").x);
    EXPECT_GT(fill.x, textAt(page, u"甲").x);
    EXPECT_EQ(fill.colour, 0xFF0000U);
}

TEST_F(PageContent, TheBackgroundAndTheBordersOfAPartedRowEndWithEachPart) {
    moreOfRows = {0x09, 0xD6, 2, 0x06, 0x04}; // solid red
    bottomSide = 0x00010108;
    std::u16string lines;
    for (int i = 0; i < 14; ++i) {
        lines += u"一\v";
    }
    typeRow({lines + u"末"}, {0, 1000});
    type(u"\r");
    const auto found = pages();
    ASSERT_EQ(found.size(), 2U);
    for (const std::size_t i : {0U, 1U}) {
        const Page& page = found[i];
        const double height = i == 0 ? 2000 : 200 * static_cast<double>(page.layer.texts.size());
        ASSERT_EQ(page.layer.fills.size(), 1U);
        EXPECT_NEAR(page.layer.fills[0].y, 1000, 30);
        EXPECT_NEAR(page.layer.fills[0].height, height, 60);
        ASSERT_EQ(page.layer.rules.size(), 2U);
        EXPECT_NEAR(page.layer.rules[0].y1, 1000, 30) << "the upper one";
        EXPECT_NEAR(page.layer.rules[0].y2, 1000, 30);
        EXPECT_NEAR(page.layer.rules[1].y1, 1000 + height, 60);
        EXPECT_NEAR(page.layer.rules[1].y2, 1000 + height, 60);
    }
    EXPECT_EQ(found[0].layer.texts.size() + found[1].layer.texts.size(), 15U);
}

TEST_F(PageContent, ARowStandsAtTheRightOrInTheMiddleOfTheText) {
    const auto leftOf = [this](unsigned alignment) {
        main = {};
        moreOfRows = withSprm16({}, sprm::TJc, alignment);
        typeRow({u"甲"}, {0, 1000});
        type(u"\r");
        return textAt(pages().at(0), u"甲").x;
    };
    const double left = leftOf(0);
    EXPECT_DOUBLE_EQ(leftOf(1), left + 500);
    EXPECT_DOUBLE_EQ(leftOf(2), left + 1000);
}

TEST_F(PageContent, CellsMergedAcrossJoinTheFirstOfThem) {
    typeRow({u"甲", u"乙乙乙乙乙", u"", u"丙"}, {0, 300, 900, 1700, 2000}, {0, 1, 2, 0});
    type(u"\r");
    const Page page = pages().at(0);
    EXPECT_DOUBLE_EQ(textAt(page, u"乙乙乙乙乙").baseline, textAt(page, u"甲").baseline);
}

TEST_F(PageContent, CharactersAreAsWideAsTheirScaleSays) {
    type(u"宽常\r");
    main.characters = {{1, intern(withSprm16({}, sprm::CCharScale, 150))}, {2, {}}};
    const Page page = pages().at(0);
    EXPECT_DOUBLE_EQ(textAt(page, u"宽").stretch, 1.5);
    EXPECT_DOUBLE_EQ(textAt(page, u"常").stretch, 1);
    EXPECT_DOUBLE_EQ(textAt(page, u"常").x - textAt(page, u"宽").x, 300);
}

TEST_F(PageContent, ParagraphsOfOneStyleMayStandWithoutTheirSpaceBetween) {
    const auto apart = [this](const Bytes& list) {
        main = {};
        type(u"甲\r乙\r", list);
        const Page page = pages().at(0);
        return textAt(page, u"乙").baseline - textAt(page, u"甲").baseline;
    };
    const Bytes space = withSprm16({}, sprm::PDyaAfter, 200);
    EXPECT_DOUBLE_EQ(apart(space) - apart({}), 200);
    EXPECT_DOUBLE_EQ(apart(withSprm8(space, sprm::PFContextualSpacing, 1)), apart({}));
}

TEST_F(PageContent, ACellMergedDownHoldsItsTextOnce) {
    typeRow({u"高", u"甲"}, {0, 1000, 2000}, {0x60, 0});
    typeRow({u"不", u"乙"}, {0, 1000, 2000}, {0x20, 0});
    type(u"\r");
    EXPECT_EQ(textOf(pages().at(0)), u"高甲乙");
}

TEST_F(PageContent, ACellMergedAcrossHoldsItsTextOnceUnlessItIsTheFirst) {
    typeRow({u"并", u"不", u"后"}, {0, 600, 1200, 1800}, {1, 2, 0});
    typeRow({u"首", u"甲"}, {0, 600, 1200}, {2, 0});
    type(u"\r");
    EXPECT_EQ(textOf(pages().at(0)), u"并后首甲");
}

TEST_F(PageContent, ARowMayDefineMoreCellsThanItHas) {
    typeRow({u"一", u"二", u"三"}, {0, 600, 1200, 1800});
    main.text.erase(4, 2); // the third cell's
    main.characters.erase(main.characters.begin() + 4, main.characters.begin() + 6);
    main.paragraphs.erase(main.paragraphs.begin() + 2);
    type(u"尾\r");
    EXPECT_EQ(textOf(pages().at(0)), u"一二尾");
}

TEST_F(PageContent, CellsMergedAcrossLeaveTheOthersAtTheirPlaces) {
    typeRow({u"并", u"", u"后"}, {0, 600, 1200, 1800}, {1, 2, 0});
    typeRow({u"一", u"二", u"三"}, {0, 600, 1200, 1800});
    type(u"\r");
    const Page page = pages().at(0);
    EXPECT_DOUBLE_EQ(textAt(page, u"后").x, textAt(page, u"三").x);
    EXPECT_DOUBLE_EQ(textAt(page, u"并").x, textAt(page, u"一").x);
}

TEST_F(PageContent, RaisedAndLoweredTextOfTheOfficeSuiteStaysWithinItsLine) {
    type(u"甲乙丙\r丁\r");
    main.characters = {{1, {}},
                       {1, intern(withSprm8({}, sprm::CIss, 1))},
                       {1, intern(withSprm8({}, sprm::CIss, 2))},
                       {3, {}}};
    options = officeOptions();
    const Page page = pages().at(0);
    const double foot = textAt(page, u"甲").baseline;
    EXPECT_DOUBLE_EQ(textAt(page, u"乙").size, 116);
    EXPECT_NEAR(foot - textAt(page, u"乙").baseline, 160 - 93, 1); // at tenths of points
    EXPECT_NEAR(textAt(page, u"丙").baseline - foot, 40 - 23, 1);
    EXPECT_DOUBLE_EQ(textAt(page, u"丁").baseline - foot, 200);
}

TEST_F(PageContent, InTheOfficeSuiteTheLastRunBeforeATableHasNoFormattingOfItsOwn) {
    const auto large = intern(withSprm16({}, sprm::CHps, 40));
    type(u"甲\r乙丙\r");
    main.characters = {{3, large}, {2, large}};
    typeRow({u"丁"}, {0, 1000});
    type(u"\r");
    EXPECT_DOUBLE_EQ(textAt(pages().at(0), u"乙丙").size, 400);
    options = officeOptions();
    const Page page = pages().at(0);
    EXPECT_DOUBLE_EQ(textAt(page, u"甲").size, 400);
    EXPECT_DOUBLE_EQ(textAt(page, u"乙").size, 400);
    EXPECT_DOUBLE_EQ(textAt(page, u"丙").size, 200);
    main.characters[1].length = 3;
    main.characters.erase(main.characters.begin() + 2);
    EXPECT_DOUBLE_EQ(textAt(pages().at(0), u"乙丙").size, 400); // the run goes on in the table
}

TEST_F(PageContent, InTheOfficeSuiteATabOfTheLastRunBeforeATableHasNoFormattingOfItsOwn) {
    const auto large = intern(withSprm16({}, sprm::CHps, 40));
    type(u"甲\r\t\r");
    main.characters = {{2, {}}, {2, large}};
    typeRow({u"丁"}, {0, 1000});
    type(u"\r");
    const auto down = [&] {
        const Page page = pages().at(0);
        return textAt(page, u"丁").baseline - textAt(page, u"甲").baseline;
    };
    EXPECT_DOUBLE_EQ(down(), 200 + 400 + 20);
    options = officeOptions();
    EXPECT_DOUBLE_EQ(down(), 200 + 200 + 20);
}

TEST_F(PageContent, InTheOfficeSuiteATableEndsBelowItsLowestBorder) {
    bottomSide = 0x00010108; // one point
    typeRow({u"丁", u"戊"}, {0, 1000, 2000});
    typeRow({u"己", u"庚"}, {0, 1000, 2000});
    type(u"后\r");
    const auto down = [&] {
        const Page page = pages().at(0);
        return textAt(page, u"后").baseline - textAt(page, u"己").baseline;
    };
    EXPECT_DOUBLE_EQ(down(), 200);
    options = officeOptions();
    EXPECT_DOUBLE_EQ(down(), 220);
}

TEST_F(PageContent, InTheOfficeSuiteARowThatStaysWithTheNextIsNotParted) {
    for (int i = 0; i < 5; ++i) {
        type(u"前\r");
    }
    typeRow({std::u16string(70, u'格')}, {0, 2000}); // seven lines
    main.paragraphs[5].properties =
        intern(withSprm8(withSprm8({}, sprm::PFInTable, 1), sprm::PFKeepFollow, 1));
    type(u"后\r");
    EXPECT_NE(textOf(pages().at(0)), u"前前前前前");
    options = officeOptions();
    EXPECT_EQ(textOf(pages().at(0)), u"前前前前前");
}

TEST_F(PageContent, WhatARowOfExactHeightDoesNotHoldIsCutOff) {
    const auto typeExactRow = [&](const std::vector<std::u16string>& cells,
                                  const std::vector<unsigned>& flags) {
        typeRow(cells, {0, 1000, 2000}, flags);
        const word::ByteView row = document.tables.lists[main.paragraphs.back().properties];
        main.paragraphs.back().properties = intern(withSprm16(
            Bytes(row.begin(), row.end()), sprm::TDyaRowHeight, static_cast<std::uint16_t>(-300)));
    };
    typeExactRow({u"高", std::u16string(9, u'格')}, {0x60, 0}); // three characters a line
    typeExactRow({u"", u"乙"}, {0x20, 0});                      // the first cell goes on
    type(u"后\r");
    const Page page = pages().at(0);
    EXPECT_EQ(textOf(page), u"高" + std::u16string(6, u'格') + u"乙后");
    EXPECT_EQ(page.layer.texts[1].endsAt, std::nullopt);
    EXPECT_EQ(page.layer.texts[2].endsAt, 1300);
    options = officeOptions(); // where a reader of the PDF finds what is not seen
    const Page written = pages().at(0);
    EXPECT_EQ(textOf(written), u"高" + std::u16string(9, u'格') + u"乙后");
    EXPECT_EQ(written.layer.texts[3].endsAt, 1300);
}

TEST_F(PageContent, InTheOfficeSuiteABulletWhoseLevelNamesNoFontStandsInTheSerifFace) {
    word::ListDefinition bullets = numberedList(0);
    bullets.levels[0].head[4] = 23;
    bullets.levels[0].head[6] = 0;
    bullets.levels[0].text = {u'-'};
    document.tables.listDefinitions.push_back(bullets);
    document.tables.listOverrides.push_back({77, 0, 0, {}});
    type(u"a\r", withSprm8(withSprm16({}, sprm::PIlfo, 1), sprm::PIlvl, 0));
    const auto bulletFont = [&] {
        test::NamedFonts named;
        sourceOfAll();
        DocumentLayout laidOut(source, named, options);
        return named.names.at(textAt(*laidOut.nextPage(), u"-").face);
    };
    const std::u16string own = document.tables.fonts.at(0).name;
    options = officeOptions();
    EXPECT_EQ(bulletFont(), u"serif");
    document.tables.listDefinitions[0].levels[0].character =
        intern(withSprm16({}, sprm::CRgFtc0, 0));
    EXPECT_EQ(bulletFont(), own);
}

TEST_F(PageContent, InTheOfficeSuiteAFieldOfUnknownKindShowsNothing) {
    main = story(u"前\u0013 ? \u0014旧\u0015后\r");
    main.fields = {
        {1, word::fieldBegin, 0x01}, {5, word::fieldSeparator, 0}, {7, word::fieldEnd, 0}};
    document.sections.back().length = main.size();
    EXPECT_EQ(textOf(pages().at(0)), u"前旧后");
    options = officeOptions();
    EXPECT_EQ(textOf(pages().at(0)), u"前后");
}

TEST_F(PageContent, InTheOfficeSuiteACharacterOfNoCodeIsThePageNumber) {
    type(std::u16string(u"第") + u'\0' + u"页\r");
    EXPECT_EQ(textOf(pages().at(0)), u"第页");
    options = officeOptions();
    EXPECT_EQ(textOf(pages().at(0)), u"第1页");
}

TEST_F(PageContent, AFileNameFieldShowsTheFileWhereTheSourceTellsItsPath) {
    std::u16string path;
    const auto shown = [&](const std::u16string& instruction) {
        main = story(u"\u0013" + instruction + u"\u0014旧\u0015\r");
        const auto separator = static_cast<word::Cp>(instruction.size() + 1);
        main.fields = {{0, word::fieldBegin, 0x1D},
                       {separator, word::fieldSeparator, 0},
                       {separator + 2, word::fieldEnd, 0}};
        document.sections.back().length = main.size();
        sourceOfAll();
        source.path = path;
        DocumentLayout laidOut(source, fonts, options);
        return textOf(*laidOut.nextPage());
    };
    EXPECT_EQ(shown(u" FILENAME "), u"旧");
    path = u"/计划/施工方案.doc";
    EXPECT_EQ(shown(u" FILENAME  \\* MERGEFORMAT "), u"施工方案.doc");
    EXPECT_EQ(shown(u" FILENAME \\p "), u"/计划/施工方案.doc");
}

// A font that tells the faces of Chinese text apart.
class ChineseFaces : public test::FixedFonts {
public:
    static constexpr FaceId chinese = 5;
    FaceId face(const FaceRequest& request) override { return request.eastAsian ? chinese : 0; }
};

TEST_F(PageContent, GreekLettersThatAreMarkedAsChineseHaveTheChineseFontAndNoGap) {
    type(u"径Φ8\r");
    const auto drawn = [&](const Bytes& look) {
        main.characters = {{2, intern(look)}, {2, {}}};
        ChineseFaces faces;
        sourceOfAll();
        return DocumentLayout(source, faces, options).nextPage()->layer.texts;
    };
    const auto marked = drawn(withSprm8({}, sprm::CIdctHint, 1));
    EXPECT_EQ(marked.at(0).text, u"径Φ");
    EXPECT_EQ(marked.at(0).face, ChineseFaces::chinese);
    EXPECT_FLOAT_EQ(marked.at(0).advances.at(0), 200);
    const auto plain = drawn({});
    EXPECT_EQ(plain.at(1).text.substr(0, 1), u"Φ");
    EXPECT_EQ(plain.at(1).face, 0U);
    EXPECT_FLOAT_EQ(plain.at(0).advances.at(0), 250);
}

TEST_F(PageContent, TheUnitOfAnIndentInCharactersIsTheSizeOfTheParagraphsText) {
    document.tables.listDefinitions.push_back(numberedList(0));
    document.tables.listOverrides.push_back({77, 0, 0, {}});
    const Bytes listed = withSprm8(withSprm16({}, sprm::PIlfo, 1), sprm::PIlvl, 0);
    type(u"甲\r乙\r", withSprm16(listed, sprm::PDcxaLeft1, 200));
    main.characters = {{1, intern(withSprm8(withSprm16({}, sprm::CHps, 40), sprm::CIss, 1))},
                       {1, {}},
                       {1, intern(withSprm16({}, sprm::CHps, 40))},
                       {1, {}}};
    const Page page = pages().at(0);
    EXPECT_DOUBLE_EQ(page.layer.texts.at(0).x, 1000 + 800) << "raised text has its full size";
    EXPECT_DOUBLE_EQ(textAt(page, u"2、").x, 1000 + 800) << "the label is smaller than the text";
}

TEST_F(PageContent, NumbersOfAListInABoxAreCountedOnceHoweverOftenItIsSet) {
    document.tables.listDefinitions.push_back(numberedList(0));
    document.tables.listOverrides.push_back({77, 0, 0, {}});
    const Bytes listed = withSprm8(withSprm16({}, sprm::PIlfo, 1), sprm::PIlvl, 0);
    const word::Story boxed = story(u"甲\r乙\r", listed);
    sourceOfAll();
    StoryReader::Shared shared(source, fonts);
    LineSetting setting;
    setting.width = 2000;
    for (int time = 0; time < 2; ++time) {
        std::u16string text;
        for (const Strip& line : BlockComposer(shared, boxed).composeAll(setting)) {
            for (const PlacedText& run : line.layer.texts) {
                text += run.text;
            }
        }
        EXPECT_EQ(text, u"1、甲2、乙");
    }
}

} // namespace
} // namespace qvnd::layout
