#include "platform/word/layout/DocumentLayout.h"

#include "platform/error/Utf8.h"
#include "platform/layout/PagedDocument.h"
#include "platform/word/docfile/format/Dop.h"
#include "platform/word/layout/CharacterClasses.h"

#include <cstdint>
#include <utility>
#include <vector>

namespace qvnd::layout {
namespace {

using word::Bytes;
using word::withSprm16;
using word::withSprm32;
using word::withSprm8;
namespace sprm = word::sprm;

class Pages : public test::PagedDocument {
protected:
    // Of a line and a section with another line.
    std::vector<Page> pagesOfTwoSections(const Bytes& second) {
        type(u"甲\r");
        nextSection(second);
        type(u"乙\r");
        return pages();
    }
};

TEST_F(Pages, ADocumentWithoutTextHasOnePage) {
    type(u"\r");
    EXPECT_EQ(pages().size(), 1U);
}

TEST_F(Pages, TenLinesFillAPage) {
    paragraphs(10);
    EXPECT_EQ(pages().size(), 1U);
    paragraphs(1);
    EXPECT_EQ(pages().size(), 2U);
}

TEST_F(Pages, APageBreakPutsTheRestOnTheNextPage) {
    type(u"甲\f乙\r");
    const auto found = pages();
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(textOf(found[0]), u"甲");
    EXPECT_EQ(textOf(found[1]), u"乙");
}

TEST_F(Pages, AParagraphMayStartAPage) {
    type(u"甲\r");
    type(u"乙\r", withSprm8({}, sprm::PFPageBreakBefore, 1));
    EXPECT_EQ(textOf(pages().at(1)), u"乙");
}

TEST_F(Pages, ASectionStartsAPageAndMayCountAnew) {
    const auto found = pagesOfTwoSections(
        withSprm16(withSprm8(section(), sprm::SFPgnRestart, 1), sprm::SPgnStart97, 7));
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].number, 1);
    EXPECT_EQ(found[1].number, 7);
}

TEST_F(Pages, AContinuousSectionGoesOnUnderTheLast) {
    const auto found = pagesOfTwoSections(withSprm8(section(), sprm::SBkc, 0));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_DOUBLE_EQ(found[0].layer.texts[1].baseline - found[0].layer.texts[0].baseline, 200);
}

TEST_F(Pages, AContinuousSectionOnOtherPaperBeginsASheet) {
    const auto papersWith = [&](std::uint16_t side, std::uint16_t length) {
        main = {};
        before = 0;
        document.sections.resize(1);
        std::vector<std::pair<double, double>> papers;
        for (const Page& page :
             pagesOfTwoSections(withSprm16(withSprm8(section(), sprm::SBkc, 0), side, length))) {
            papers.emplace_back(page.width, page.height);
        }
        return papers;
    };
    using Papers = std::vector<std::pair<double, double>>;
    EXPECT_EQ(papersWith(sprm::SYaPage, 4000), (Papers{{4000, 4000}}));
    EXPECT_EQ(papersWith(sprm::SYaPage, 5000), (Papers{{4000, 4000}, {4000, 5000}}));
    EXPECT_EQ(papersWith(sprm::SXaPage, 5000), (Papers{{4000, 4000}, {5000, 4000}}));
}

TEST_F(Pages, TheSpaceBelowASectionStaysAboveOneThatGoesOnUnderIt) {
    type(u"甲\r", withSprm16({}, sprm::PDyaAfter, 300));
    nextSection(withSprm8(section(), sprm::SBkc, 0));
    type(u"乙\r");
    const auto texts = pages().at(0).layer.texts;
    ASSERT_EQ(texts.size(), 2U);
    EXPECT_DOUBLE_EQ(texts[1].baseline - texts[0].baseline, 500);
}

TEST_F(Pages, ASectionOnAnOddPageLeavesAnEvenOneEmpty) {
    const auto found = pagesOfTwoSections(withSprm8(section(), sprm::SBkc, 4));
    ASSERT_EQ(found.size(), 3U);
    EXPECT_EQ(textOf(found[1]), u"");
    EXPECT_EQ(found[2].number, 3);
}

TEST_F(Pages, TwoColumnsAreFilledOneAfterTheOther) {
    Bytes list = withSprm16(section(), sprm::SCcolumns, 1);
    list = withSprm16(list, sprm::SDxaColumns, 200);
    document.sections[0].properties = intern(list);
    paragraphs(12);
    const auto found = pages();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_DOUBLE_EQ(found[0].layer.texts[10].x, 1000 + 900 + 200);
    EXPECT_DOUBLE_EQ(found[0].layer.texts[10].baseline, found[0].layer.texts[0].baseline);
}

TEST_F(Pages, HiddenTextAndInstructionsOfFieldsAreNotSeen) {
    type(u"甲\x13HYPERLINK x\x14乙\x15丙\r");
    main.fields = {{1, 0x13, 0x58}, {13, 0x14, 0}, {15, 0x15, 0}};
    EXPECT_EQ(textOf(pages().at(0)), u"甲乙丙");
    main.characters = {{1, intern(withSprm8({}, sprm::CFVanish, 1))}, {main.size() - 1, {}}};
    EXPECT_EQ(textOf(pages().at(0)), u"乙丙");
}

TEST_F(Pages, ATableStandsCellBesideCell) {
    word::LittleEndianWriter definition;
    definition.u16(sprm::TDefTable);
    definition.u16(2 * 2 + 2 + 1 + 1);
    definition.u8(2);
    for (const unsigned edge : {0U, 1000U, 2000U}) {
        definition.u16(edge);
    }
    const Bytes inTable = withSprm8({}, sprm::PFInTable, 1);
    Bytes mark = withSprm8(inTable, sprm::PFTtp, 1);
    const Bytes row = definition.take();
    mark.insert(mark.end(), row.begin(), row.end());
    main.text = u"甲\a乙\a\a\r";
    main.characters = {{6, {}}};
    main.paragraphs = {
        {2, 0, intern(inTable)}, {2, 0, intern(inTable)}, {1, 0, intern(mark)}, {1, 0, {}}};
    document.sections[0].length = 6;
    const auto found = pages();
    ASSERT_EQ(textOf(found[0]), u"甲乙");
    EXPECT_DOUBLE_EQ(found[0].layer.texts[0].x, 1000 + 108);
    EXPECT_DOUBLE_EQ(found[0].layer.texts[1].x, 2000 + 108);
    EXPECT_DOUBLE_EQ(found[0].layer.texts[0].baseline, found[0].layer.texts[1].baseline);
}

TEST_F(Pages, ATableOfNothingButHeadingRowsFillsItsPagesAsAnyOther) {
    const Bytes inTable = withSprm8({}, sprm::PFInTable, 1);
    const Bytes mark = withSprm8(withSprm8(inTable, sprm::PFTtp, 1), sprm::TTableHeader, 1);
    for (int i = 0; i < 15; ++i) {
        main.text += u"甲\a\a";
        main.paragraphs.push_back({2, 0, intern(inTable)});
        main.paragraphs.push_back({1, 0, intern(mark)});
    }
    main.characters = {{45, {}}};
    type(u"末\r");
    const auto found = pages();
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(textOf(found[0]), std::u16string(10, u'甲'));
    EXPECT_EQ(textOf(found[1]), std::u16string(5, u'甲') + u"末");
}

TEST_F(Pages, HeadingRowsCountFromTheFirstRowOnAlone) {
    const auto typeRow = [&](const std::u16string& text, unsigned isHeading) {
        const Bytes inTable = withSprm8({}, sprm::PFInTable, 1);
        main.text += text + u"\a\a";
        main.characters.push_back({static_cast<word::Cp>(text.size() + 2), {}});
        main.paragraphs.push_back({static_cast<word::Cp>(text.size() + 1), 0, intern(inTable)});
        main.paragraphs.push_back(
            {1, 0,
             intern(withSprm8(withSprm8(inTable, sprm::PFTtp, 1), sprm::TTableHeader, isHeading))});
    };
    const auto textOfTable = [&](const std::vector<unsigned>& headings) {
        main = {};
        for (std::size_t i = 0; i < 12; ++i) {
            const bool isHeading = i < headings.size() && headings[i] != 0;
            typeRow(std::u16string(1, static_cast<char16_t>(u'a' + i)), isHeading ? 1 : 0);
        }
        type(u"末\r");
        std::vector<std::u16string> texts;
        for (const Page& page : pages()) {
            texts.push_back(textOf(page));
        }
        return texts;
    };
    using Texts = std::vector<std::u16string>;
    EXPECT_EQ(textOfTable({}), (Texts{u"abcdefghij", u"kl末"}));
    EXPECT_EQ(textOfTable({1}), (Texts{u"abcdefghij", u"akl末"}));
    EXPECT_EQ(textOfTable({1, 1}), (Texts{u"abcdefghij", u"abkl末"}));
    EXPECT_EQ(textOfTable({0, 1}), (Texts{u"abcdefghij", u"kl末"}));
    EXPECT_EQ(textOfTable({1, 0, 1}), (Texts{u"abcdefghij", u"akl末"}));
}

TEST_F(Pages, APictureHigherThanThePageStandsOnOneOfItsOwn) {
    paragraphs(1);
    type(u"二\r", withSprm32({}, sprm::PDyaLine, static_cast<std::uint16_t>(-9000)));
    paragraphs(1);
    EXPECT_EQ(pages().size(), 3U);
}

TEST_F(Pages, TheOfficeSuitePutsWholeLinesOfTheGridInTheMiddleOfThePage) {
    Bytes list = withSprm16(section(), sprm::SClm, 2);
    list = withSprm16(list, sprm::SDyaLinePitch, 300); // six of them in 2000 twips
    document.sections.front().properties = intern(list);
    paragraphs(7);
    options = officeOptions();
    const auto found = pages();
    ASSERT_EQ(found.size(), 2U);
    EXPECT_NEAR(found[0].layer.texts.front().baseline, 1000 + 100 + 50 + 160, 0.02);
    EXPECT_EQ(textOf(found[1]), u"一");
}

TEST_F(Pages, InTheOfficeSuiteAGridWhoseLinesAreHigherThanThePageMovesNothing) {
    for (int i = 0; i < 10; ++i) {
        type(u"甲\r", withSprm8({}, sprm::PFUsePgsuSettings, 0)); // off the grid
    }
    options = officeOptions();
    const auto onGrid = [&](std::uint16_t pitch) {
        const Bytes list = withSprm16(section(), sprm::SClm, 2);
        document.sections.front().properties = intern(withSprm16(list, sprm::SDyaLinePitch, pitch));
        return pages();
    };
    const auto one = onGrid(1500); // one line in the middle of 2000 twips
    EXPECT_EQ(one.size(), 2U);
    EXPECT_NEAR(one.at(0).layer.texts.front().baseline, 1000 + 250 + 160, 0.02);
    const auto none = onGrid(2001);
    EXPECT_EQ(none.size(), 1U);
    EXPECT_NEAR(none.at(0).layer.texts.front().baseline, 1000 + 160, 0.02);
}

TEST_F(Pages, InTheOfficeSuiteAnEmptyParagraphTakesOverTheMarkBeforeIt) {
    type(u"甲\r");
    main.characters.back().properties = intern(withSprm16({}, sprm::CHps, 40));
    type(u"\r乙\r");
    EXPECT_DOUBLE_EQ(runWith(pages().at(0), u'乙').baseline, 1000 + 400 + 200 + 160);
    options = officeOptions();
    EXPECT_NEAR(runWith(pages().at(0), u'乙').baseline, 1000 + 400 + 400 + 160, 0.02);
}

TEST_F(Pages, DeletedTextIsNotSeenButTheOfficeSuiteStrikesItOut) {
    type(u"甲乙");
    main.characters.back().properties = intern(withSprm8({}, sprm::CFRMarkDel, 0x81));
    type(u"丙\r");
    main.paragraphs.back().length = 4;
    EXPECT_EQ(textOf(pages().at(0)), u"丙");
    options = officeOptions();
    EXPECT_EQ(textOf(pages().at(0)), u"甲乙丙");
    EXPECT_TRUE(runWith(pages().at(0), u'甲').struckOut);
}

TEST_F(Pages, AParagraphWhoseMarkIsHiddenTooTakesNoLine) {
    for (const Bytes& unseen :
         {withSprm8({}, sprm::CFVanish, 1), withSprm8({}, sprm::CFRMarkDel, 0x81)}) {
        main = {};
        type(u"甲\r");
        type(u"乙\r");
        main.characters.back().properties = intern(unseen);
        type(u"丙\r");
        EXPECT_EQ(textOf(pages().at(0)), u"甲丙");
        EXPECT_DOUBLE_EQ(runWith(pages().at(0), u'丙').baseline, 1000 + 200 + 160);
        main.characters = {{3, {}}, {1, intern(unseen)}, {2, {}}}; // the mark alone
        EXPECT_DOUBLE_EQ(runWith(pages().at(0), u'丙').baseline, 1000 + 400 + 160);
    }
}

// Two columns of 900 with a space of 200.
Bytes twoColumnsOf(const Bytes& section) {
    return withSprm16(withSprm16(section, sprm::SCcolumns, 1), sprm::SDxaColumns, 200);
}

TEST_F(Pages, ColumnsAboveAContinuousSectionEndAtTheSameHeight) {
    document.sections[0].properties = intern(twoColumnsOf(section()));
    paragraphs(5);
    type(u"六\r");
    nextSection(withSprm8(section(), sprm::SBkc, 0));
    type(u"下\r");
    const Page page = pages().at(0);
    EXPECT_DOUBLE_EQ(page.layer.texts[3].x, 1000 + 900 + 200);
    EXPECT_DOUBLE_EQ(page.layer.texts[3].baseline, page.layer.texts[0].baseline);
    EXPECT_DOUBLE_EQ(runWith(page, u'下').x, 1000);
    EXPECT_DOUBLE_EQ(runWith(page, u'下').baseline, 1000 + 3 * 200 + 160);
}

TEST_F(Pages, ColumnsStayAsTheyAreWhereTheSettingsSaySo) {
    document.sections[0].properties = intern(twoColumnsOf(section()));
    word::writeDop(document.settings, word::dop::unbalancedColumns, 1);
    paragraphs(6);
    nextSection(withSprm8(section(), sprm::SBkc, 0));
    type(u"下\r");
    const Page page = pages().at(0);
    EXPECT_DOUBLE_EQ(page.layer.texts[5].x, 1000);
    EXPECT_DOUBLE_EQ(runWith(page, u'下').baseline, 1000 + 6 * 200 + 160);
}

TEST_F(Pages, TheLastLinesOfASectionKeepItsMargins) {
    const auto found = pagesOfTwoSections(withSprm16(section(), sprm::SDxaLeft, 600));
    EXPECT_DOUBLE_EQ(runWith(found.at(0), u'甲').x, 1000);
    EXPECT_DOUBLE_EQ(runWith(found.at(1), u'乙').x, 600);
}

TEST_F(Pages, TheLastColumnOfASectionStandsWhereItsOwnColumnsSay) {
    document.sections[0].properties = intern(twoColumnsOf(section()));
    paragraphs(15);
    nextSection(section());
    type(u"乙\r");
    const auto found = pages();
    EXPECT_DOUBLE_EQ(found.at(0).layer.texts.back().x, 1000 + 900 + 200);
    EXPECT_EQ(textOf(found.at(1)), u"乙");
}

TEST_F(Pages, InTheOfficeSuiteASectionsEndOfItsOwnTakesNoRoom) {
    paragraphs(10);
    type(u"\f");
    main.paragraphs.push_back({1, 0, {}});
    nextSection(section());
    type(u"乙\r");
    EXPECT_EQ(pages().size(), 3U);
    options = officeOptions();
    EXPECT_EQ(pages().size(), 2U);
}

// A font whose lines have a leading of a fifth.
class LeadingFonts : public test::FixedFonts {
public:
    FaceHeights heights(FaceId) override { return {0.8, 0.2, 0.2}; }
};

TEST_F(Pages, InTheOfficeSuiteOneGridTakesTheLeadingFromAllOfTheDocument) {
    type(u"甲\r乙\r");
    nextSection(withSprm16(withSprm16(section(), sprm::SClm, 2), sprm::SDyaLinePitch, 300));
    type(u"丙\r");
    sourceOfAll();
    LeadingFonts leading;
    const auto pitch = [&](const LayoutOptions& with) {
        DocumentLayout laidOut(source, leading, with);
        const Page page = *laidOut.nextPage();
        return runWith(page, u'乙').baseline - runWith(page, u'甲').baseline;
    };
    EXPECT_DOUBLE_EQ(pitch({}), 240);
    EXPECT_DOUBLE_EQ(pitch(officeOptions()), 200);
}

TEST_F(Pages, TheOfficeSuiteDrawsTextAtTenthsOfPoints) {
    type(u"甲\r");
    type(u"乙\r", withSprm16({}, sprm::PDyaBefore, 101));
    EXPECT_DOUBLE_EQ(runWith(pages().at(0), u'乙').baseline, 1461);
    options = officeOptions();
    EXPECT_NEAR(runWith(pages().at(0), u'甲').baseline, 1160, 0.02);
    EXPECT_NEAR(runWith(pages().at(0), u'乙').baseline, 1462, 0.02);
}

TEST_F(Pages, TheOfficeSuiteCountsFromTheFootOfPaperInThousandthsOfPoints) {
    Page page;
    page.layer.texts.resize(1);
    page.layer.texts[0].baseline = 9241.9;
    page.height = 15840; // 792 points
    page.alignLikeOffice();
    EXPECT_DOUBLE_EQ(page.layer.texts[0].baseline, 9242);
    page.height = 16838; // 297 mm, 841.88976 points: 379.789 above its foot, and not 379.78976
    page.alignLikeOffice();
    EXPECT_NEAR(page.layer.texts[0].baseline, 9242 + 0.01528, 0.00001);
}

TEST_F(Pages, InTheOfficeSuiteEverySecondOfBreaksInARowIsNoneOfItsOwn) {
    type(u"甲\f\f乙\f\f\f丙\r");
    EXPECT_EQ(pages().size(), 6U);
    options = officeOptions();
    const auto found = pages();
    ASSERT_EQ(found.size(), 4U);
    EXPECT_EQ(textOf(found[1]), u"乙");
    EXPECT_EQ(textOf(found[3]), u"丙");
}

TEST_F(Pages, InTheOfficeSuiteAPageBreakAtAParagraphsStartLeavesNothingOnThePageBefore) {
    paragraphs(10);
    type(u"\f乙\r");
    EXPECT_EQ(pages().size(), 3U);
    options = officeOptions();
    const auto found = pages();
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(textOf(found[1]), u"乙");
}

} // namespace
} // namespace qvnd::layout
