#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/formatting/FormatResolver.h"
#include "platform/word/formatting/ResolvedSection.h"
#include "support/ContentBuilder.h"

#include <gtest/gtest.h>

namespace qvnd::word {
namespace {

using test::ContentBuilder;

// Formatting as it comes out of the styles of a small document.
class Formats : public testing::Test {
protected:
    Bytes& styleList(StyleIndex style, bool ofParagraphs) {
        lists.emplace_back();
        pending.push_back({style, ofParagraphs, lists.size() - 1});
        return lists.back();
    }
    FormatResolver& formats() {
        if (!resolver) {
            for (const auto& [style, ofParagraphs, list] : pending) {
                StyleDefinition& definition = *builder.content.tables.styles.styles[style];
                (ofParagraphs ? definition.paragraph : definition.character) =
                    builder.content.tables.lists.intern(lists[list]);
            }
            resolver.emplace(builder.content.tables);
        }
        return *resolver;
    }
    const ResolvedText& text(const Bytes& own, StyleIndex style = 0) {
        return formats().text(style, builder.content.tables.lists.intern(own));
    }
    const ResolvedParagraph& paragraph(const Bytes& own, StyleIndex style = 0) {
        return formats().paragraph(style, builder.content.tables.lists.intern(own));
    }

    struct Pending {
        StyleIndex style;
        bool ofParagraphs;
        std::size_t list;
    };
    ContentBuilder builder;
    std::deque<Bytes> lists;
    std::vector<Pending> pending;
    std::optional<FormatResolver> resolver;
};

TEST_F(Formats, AToggleOfACharacterMayTurnItsStyleAround) {
    styleList(1, false) = withSprm8({}, sprm::CFBold, 1);
    EXPECT_TRUE(text({}, 1).bold);
    EXPECT_TRUE(text(withSprm8({}, sprm::CFBold, 0x80), 1).bold);
    EXPECT_FALSE(text(withSprm8({}, sprm::CFBold, 0x81), 1).bold);
    EXPECT_TRUE(text(withSprm8({}, sprm::CFBold, 0x81), 0).bold);
}

TEST_F(Formats, LettersBearShadowEdgesAndRelief) {
    using Relief = LetterEffects::Relief;
    EXPECT_EQ(text({}).effects, LetterEffects{});
    EXPECT_EQ(text(withSprm8({}, sprm::CFShadow, 1)).effects,
              (LetterEffects{true, false, Relief::none}));
    EXPECT_EQ(text(withSprm8({}, sprm::CFOutline, 1)).effects,
              (LetterEffects{false, true, Relief::none}));
    EXPECT_EQ(text(withSprm8({}, sprm::CFEmboss, 1)).effects,
              (LetterEffects{false, false, Relief::raised}));
    EXPECT_EQ(text(withSprm8({}, sprm::CFImprint, 1)).effects,
              (LetterEffects{false, false, Relief::sunken}));
    EXPECT_EQ(text(withSprm8({}, sprm::CFImprint, 0)).effects, LetterEffects{});
}

TEST_F(Formats, FontsAreThoseOfTheScriptsAndOfTheSheetWhereNobodySaysOne) {
    EXPECT_EQ(text({}).latinFont, 0);
    EXPECT_EQ(text({}).eastAsianFont, 1);
    const Bytes own = withSprm16(withSprm8({}, sprm::CIdctHint, 1), sprm::CRgFtc1, 0);
    EXPECT_EQ(text(own).eastAsianFont, 0);
    EXPECT_TRUE(text(own).eastAsianHint);
}

TEST_F(Formats, TextMayBeSaidToBeInNoLanguage) {
    EXPECT_FALSE(text({}).hasNoLanguage);
    EXPECT_FALSE(text(withSprm16({}, sprm::CRgLid1, 0x0804)).hasNoLanguage);
    EXPECT_TRUE(text(withSprm16({}, sprm::CRgLid1, 0x0400)).hasNoLanguage);
    EXPECT_TRUE(text(withSprm16({}, sprm::CRgLid1, 0x00FF)).hasNoLanguage);
}

TEST_F(Formats, ColoursByNumberAndByPartsAreOneProperty) {
    EXPECT_EQ(text({}).colour, std::nullopt);
    EXPECT_EQ(text(withSprm8({}, sprm::CIco, 6)).colour, 0xFF0000U);
    EXPECT_EQ(text(withSprm32({}, sprm::CCv, 0x00112233)).colour, 0x332211U);
    EXPECT_EQ(text(withSprm32({}, sprm::CCv, 0xFF000000)).colour, std::nullopt);
}

TEST_F(Formats, TextMayHaveABorder) {
    EXPECT_FALSE(text({}).border.visible);
    const Border border = text(withSprm32({}, sprm::CBrc80, 0x00060104)).border; // red, single
    EXPECT_TRUE(border.visible);
    EXPECT_EQ(border.width, 10); // half a point
    EXPECT_EQ(border.colour, 0xFF0000U);
}

TEST_F(Formats, OnlyColoursOfTheTableHaveNumbers) {
    EXPECT_EQ(text(withSprm8({}, sprm::CIco, 0)).colour, std::nullopt);
    EXPECT_EQ(text(withSprm8({}, sprm::CIco, 16)).colour, 0xC0C0C0U);
    EXPECT_EQ(text(withSprm8({}, sprm::CIco, 17)).colour, std::nullopt);
}

TEST_F(Formats, NoStyleDeletesSoItsOppositeIsADeletion) {
    const auto isDeleted = [this](unsigned value) {
        return text(withSprm8({}, sprm::CFRMarkDel, value)).deleted;
    };
    EXPECT_TRUE(isDeleted(1));
    EXPECT_TRUE(isDeleted(0x81));
    EXPECT_FALSE(isDeleted(0));
    EXPECT_FALSE(isDeleted(0x80));
}

TEST_F(Formats, IndentsInCharactersOverrideTwipsButNotInTheOfficeSuite) {
    const auto firstLine = [&](const Bytes& own, double width, IndentUnits units) {
        return indentsOf(paragraph(own), width, units).firstLine;
    };
    const Bytes own = withSprm16({}, sprm::PDcxaLeft1, 200);
    EXPECT_DOUBLE_EQ(firstLine(own, 240, IndentUnits::characters), 480);
    EXPECT_DOUBLE_EQ(firstLine(own, 240, IndentUnits::twips), 480);
    const Bytes both = withSprm16(own, sprm::PDxaLeft180, 420);
    EXPECT_DOUBLE_EQ(firstLine(both, 240, IndentUnits::characters), 480);
    EXPECT_DOUBLE_EQ(firstLine(both, 240, IndentUnits::twips), 420);
    const Bytes twips = withSprm16({}, sprm::PDxaLeft180, 360);
    EXPECT_DOUBLE_EQ(firstLine(twips, 240, IndentUnits::characters), 360);
}

TEST_F(Formats, ALeftIndentInCharactersIsThatOfTheHangingFirstLine) {
    const auto hanging = [](int left, int first) {
        return withSprm16(withSprm16({}, sprm::PDxaLeft80, static_cast<std::uint16_t>(left)),
                          sprm::PDxaLeft180, static_cast<std::uint16_t>(first));
    };
    Bytes both = withSprm16(hanging(630, -420), sprm::PDcxaLeft, 100);
    both = withSprm16(both, sprm::PDcxaLeft1, static_cast<std::uint16_t>(-200));
    const auto asStored = indentsOf(paragraph(both), 210, IndentUnits::characters);
    EXPECT_DOUBLE_EQ(asStored.left, 630);
    EXPECT_DOUBLE_EQ(asStored.firstLine, -420);
    const auto larger = indentsOf(paragraph(both), 240, IndentUnits::characters);
    EXPECT_DOUBLE_EQ(larger.left, 720);
    EXPECT_DOUBLE_EQ(larger.firstLine, -480);
    EXPECT_DOUBLE_EQ(indentsOf(paragraph(both), 240, IndentUnits::twips).left, 630);
    const Bytes onlyFirst =
        withSprm16(hanging(420, -420), sprm::PDcxaLeft1, static_cast<std::uint16_t>(-200));
    const auto fromMargin = indentsOf(paragraph(onlyFirst), 240, IndentUnits::characters);
    EXPECT_DOUBLE_EQ(fromMargin.left, 480) << "the first line begins where it was stored";
    EXPECT_DOUBLE_EQ(fromMargin.firstLine, -480);
    Bytes noTwips = withSprm16({}, sprm::PDxaLeft80, 420);
    noTwips = withSprm16(noTwips, sprm::PDcxaLeft1, static_cast<std::uint16_t>(-200));
    const auto inCharacters = indentsOf(paragraph(noTwips), 240, IndentUnits::characters);
    EXPECT_DOUBLE_EQ(inCharacters.left, 420);
    EXPECT_DOUBLE_EQ(inCharacters.firstLine, -480);
}

// A list whose level indents by 360 twips. Style 1 has a right indent of 170, style 2 besides that
// is in the list.
class FormatsOfList : public Formats {
protected:
    FormatsOfList() {
        DocumentTables& tables = builder.content.tables;
        ListDefinition list;
        list.lsid = 77;
        list.linkedStyles.fill(StyleDefinition::none);
        list.levels.resize(9);
        list.levels[0].paragraph = tables.lists.intern(withSprm16({}, sprm::PDxaLeft80, 360));
        tables.listDefinitions = {list};
        tables.listOverrides = {{77, 0, 0, {}}};
        styleList(1, true) = withSprm16({}, sprm::PDxaRight80, 170);
        tables.styles.styles[2] = tables.styles.styles[1];
        tables.styles.styles[2]->basedOn = 1;
        styleList(2, true) = inList;
    }
    int right(StyleIndex style, const Bytes& own, bool office) {
        formats();
        FormatResolver resolved(builder.content.tables, office);
        return resolved.paragraph(style, builder.content.tables.lists.intern(own)).right.twips;
    }

    const Bytes inList = withSprm16({}, sprm::PIlfo, 1);
};

TEST_F(FormatsOfList, InTheOfficeSuiteAParagraphIndentedByItsListHasNoRightIndent) {
    EXPECT_EQ(right(1, inList, false), 170);
    EXPECT_EQ(right(1, {}, true), 170);
    EXPECT_EQ(right(1, inList, true), 0);
    EXPECT_EQ(right(2, {}, true), 0);
    EXPECT_EQ(right(2, withSprm16({}, sprm::PIlfo, 0), true), 170);
}

TEST_F(FormatsOfList, InTheOfficeSuiteAnIndentOfItsOwnBringsTheRightOneOfItsStyle) {
    EXPECT_EQ(right(1, withSprm16(inList, sprm::PDxaLeft80, 720), true), 170);
    EXPECT_EQ(right(2, withSprm16({}, sprm::PDxaLeft180, 100), true), 170);
    EXPECT_EQ(right(2, withSprm16({}, sprm::PDyaAfter, 100), true), 0);
}

TEST_F(Formats, ALabelHasTheUnderlineAndTheMarkerOfItsLevelAlone) {
    PropertyLists& pool = builder.content.tables.lists;
    const PropertyListId own =
        pool.intern(withSprm8(withSprm8({}, sprm::CKul, 1), sprm::CHighlight, 7));
    const auto label = [&](const Bytes& level) -> const ResolvedText& {
        return formats().label(0, own, pool.intern(level));
    };
    EXPECT_FALSE(label({}).underline.isSeen());
    EXPECT_FALSE(label(withSprm8({}, sprm::CKul, 0)).underline.isSeen());
    EXPECT_TRUE(label(withSprm8({}, sprm::CKul, 1)).underline.isSeen());
    EXPECT_EQ(label({}).background, std::nullopt);
    EXPECT_TRUE(formats().text(0, own).underline.isSeen());
    EXPECT_EQ(formats().text(0, own).background, 0xFFFF00U);
}

TEST_F(Formats, LineSpacingIsAMultipleOrAtLeastOrExact) {
    const ResolvedParagraph& plain = paragraph({});
    EXPECT_EQ(plain.spacing, ResolvedParagraph::Spacing::multiple);
    EXPECT_EQ(plain.line, 240);
    const ResolvedParagraph& half = paragraph(withSprm32({}, sprm::PDyaLine, 0x00010168));
    EXPECT_EQ(half.spacing, ResolvedParagraph::Spacing::multiple);
    EXPECT_EQ(half.line, 360);
    const ResolvedParagraph& least = paragraph(withSprm32({}, sprm::PDyaLine, 400));
    EXPECT_EQ(least.spacing, ResolvedParagraph::Spacing::atLeast);
    EXPECT_EQ(least.line, 400);
    const ResolvedParagraph& exact =
        paragraph(withSprm32({}, sprm::PDyaLine, static_cast<std::uint16_t>(-560)));
    EXPECT_EQ(exact.spacing, ResolvedParagraph::Spacing::exact);
    EXPECT_EQ(exact.line, 560);
}

TEST_F(Formats, ABuiltInHeadingIsAtItsLevelWithoutSayingSo) {
    EXPECT_EQ(paragraph({}, 1).outlineLevel, 1);
    EXPECT_EQ(paragraph({}, 0).outlineLevel, 0);
    EXPECT_EQ(paragraph(withSprm8({}, sprm::POutLvl, 2), 0).outlineLevel, 3);
}

TEST_F(Formats, TheBuiltInHeadingsAreNine) {
    const auto levelOf = [](std::uint16_t sti) {
        ContentBuilder sheet;
        sheet.content.tables.styles.styles[1]->sti = sti;
        return FormatResolver(sheet.content.tables).paragraph(1, {}).outlineLevel;
    };
    for (std::uint16_t level = 1; level <= 9; ++level) {
        EXPECT_EQ(levelOf(level), level);
    }
    EXPECT_EQ(levelOf(0), 0);
    EXPECT_EQ(levelOf(10), 0);
}

TEST_F(Formats, ATabStopOfAParagraphStandsForThatOfItsStyle) {
    styleList(1, true) = {0x0D, 0xC6, 5, 0, 1, 0x68, 0x20, 0x00};
    EXPECT_EQ(paragraph({}, 1).tabStops.at(0), (TabStop{8296, TabStop::Kind::left, 0}));
    EXPECT_EQ(paragraph({0x0D, 0xC6, 5, 0, 1, 0x68, 0x20, 0x0A}, 1).tabStops,
              (std::vector<TabStop>{{8296, TabStop::Kind::right, u'.'}}));
}

TEST_F(Formats, TabStopsBearTheirKindAndLeader) {
    // One stop at 8296 twips, to the right, with dots.
    Bytes own{0x0D, 0xC6, 5, 0, 1, 0x68, 0x20, 0x0A};
    const ResolvedParagraph& format = paragraph(own);
    ASSERT_EQ(format.tabStops.size(), 1U);
    EXPECT_EQ(format.tabStops[0], (TabStop{8296, TabStop::Kind::right, u'.'}));
}

TEST_F(Formats, ParagraphsControlWidowsUnlessTheySayOtherwise) {
    EXPECT_TRUE(paragraph({}).controlsWidows);
    EXPECT_FALSE(paragraph(withSprm8({}, sprm::PFWidowControl, 0)).controlsWidows);
    EXPECT_TRUE(paragraph(withSprm8({}, sprm::PFKeepFollow, 1)).keepsWithNext);
    EXPECT_TRUE(paragraph(withSprm8({}, sprm::PFPageBreakBefore, 1)).startsPage);
}

// A row of two cells, 100 to 1100 to 3100 twips; the second goes on what stands above it.
Bytes twoCells() {
    LittleEndianWriter writer;
    writer.u16(sprm::TDefTable);
    writer.u16(2 * 20 + 6 + 1 + 1);
    writer.u8(2);
    for (const unsigned edge : {100U, 1100U, 3100U}) {
        writer.u16(edge);
    }
    for (const unsigned flags : {0x0080U, 0x0020U}) {
        writer.u16(flags);
        writer.u16(0);
        for (int side = 0; side < 4; ++side) {
            writer.u32(0x00010104); // half a point, single, black
        }
    }
    return writer.take();
}

TEST_F(Formats, ARowTellsItsCellsWithEdgesBordersAndMerges) {
    const ResolvedRow row = resolvedRowOf(twoCells(), builder.content.tables);
    ASSERT_EQ(row.cells.size(), 2U);
    EXPECT_EQ(row.cells[0].left, 100);
    EXPECT_EQ(row.cells[0].right, 1100);
    EXPECT_EQ(row.cells[1].right, 3100);
    EXPECT_FALSE(row.cells[0].mergedAbove);
    EXPECT_TRUE(row.cells[1].mergedAbove);
    EXPECT_EQ(row.cells[0].alignment, VerticalAlignment::centre);
    EXPECT_TRUE(row.cells[0].topSide.visible);
    EXPECT_EQ(row.cells[0].topSide.width, 10);
    EXPECT_EQ(row.cells[0].topSide.colour, 0x000000U);
}

TEST_F(Formats, ARowTellsItsHeightAndWhetherItMayBeParted) {
    Bytes list = twoCells();
    list = withSprm16(list, sprm::TDyaRowHeight, static_cast<std::uint16_t>(-500));
    list = withSprm8(list, sprm::TFCantSplit, 1);
    list = withSprm8(list, sprm::TTableHeader, 1);
    const ResolvedRow row = resolvedRowOf(list, builder.content.tables);
    EXPECT_EQ(row.height, 500);
    EXPECT_TRUE(row.exactHeight);
    EXPECT_TRUE(row.staysWhole);
    EXPECT_TRUE(row.isHeading);
}

TEST_F(Formats, ADamagedRowDefinitionGivesNoCells) {
    Bytes list{0x08, 0xD6, 3, 0, 200, 0};
    EXPECT_TRUE(resolvedRowOf(list, builder.content.tables).cells.empty());
}

TEST(ResolvedSections, ColumnsShareTheRoomBetweenTheMargins) {
    Bytes list = withSprm16({}, sprm::SXaPage, 11906);
    list = withSprm16(list, sprm::SDxaLeft, 1800);
    list = withSprm16(list, sprm::SDxaRight, 1800);
    list = withSprm16(list, sprm::SCcolumns, 1);
    list = withSprm16(list, sprm::SDxaColumns, 306);
    const ResolvedSection format = resolvedSectionOf(list, false);
    ASSERT_EQ(format.columns.size(), 2U);
    EXPECT_EQ(format.columns[0].width, 4000);
    EXPECT_EQ(format.columns[1].left, 4306);
}

TEST(ResolvedSections, ANegativeMarginStaysWhereItIs) {
    const Bytes list = withSprm16({}, sprm::SDyaTop, static_cast<std::uint16_t>(-1440));
    const ResolvedSection format = resolvedSectionOf(list, false);
    EXPECT_EQ(format.paper.top, 1440);
    EXPECT_TRUE(format.topIsFixed);
    EXPECT_FALSE(format.bottomIsFixed);
}

TEST(ResolvedSections, MarginsWiderThanThePaperLeaveRoomForText) {
    Bytes list = withSprm16({}, sprm::SXaPage, 1000);
    list = withSprm16(list, sprm::SDxaLeft, 30000);
    const ResolvedSection format = resolvedSectionOf(list, false);
    EXPECT_GE(format.paper.textWidth(), 720);
    EXPECT_GE(format.columns[0].width, 720);
}

TEST(ResolvedSections, AGutterOnTopStandsAboveTheTextAndNotBesideIt) {
    Bytes list = withSprm16({}, sprm::SDxaLeft, 1440);
    list = withSprm16(list, sprm::SDyaTop, 1440);
    list = withSprm16(list, sprm::SDzaGutter, 720);
    EXPECT_EQ(resolvedSectionOf(list, false).paper.left, 2160);
    EXPECT_EQ(resolvedSectionOf(list, false).paper.top, 1440);
    EXPECT_EQ(resolvedSectionOf(list, true).paper.left, 1440);
    EXPECT_EQ(resolvedSectionOf(list, true).paper.top, 2160);
}

TEST(ResolvedSections, TheGridTellsItsPitchAndWhatItAddsToCharacters) {
    Bytes list = withSprm16({}, sprm::SClm, 2);
    list = withSprm16(list, sprm::SDyaLinePitch, 312);
    const ResolvedSection format = resolvedSectionOf(list, false);
    EXPECT_EQ(format.grid, GridKind::lines);
    EXPECT_EQ(format.linePitch, 312);
}

TEST(Borders, OldAndNewSpellingsComeToTheSame) {
    const Bytes old{8, 1, 6, 2};
    const Bytes now{0xFF, 0, 0, 0, 8, 1, 2, 0};
    EXPECT_EQ(borderOf(old), borderOf(now));
    EXPECT_EQ(borderOf(old).width, 20);
    EXPECT_EQ(borderOf(old).space, 40);
    EXPECT_FALSE(borderOf(Bytes{0, 0, 0, 0}).visible);
    EXPECT_FALSE(borderOf(Bytes{0xFF, 0xFF, 0xFF, 0xFF}).visible);
}

TEST(Shadings, APatternIsMixedOfItsTwoColours) {
    EXPECT_EQ(colourOfShd80(0xFFFF), std::nullopt);
    EXPECT_EQ(colourOfShd80(0), std::nullopt);
    EXPECT_EQ(colourOfShd80(8U << 5), 0xFFFFFFU);         // white behind
    EXPECT_EQ(colourOfShd80((1U << 10) | 6U), 0xFF0000U); // solid red
}

} // namespace
} // namespace qvnd::word
