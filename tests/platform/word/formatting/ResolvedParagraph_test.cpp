#include "platform/word/formatting/ResolvedParagraph.h"

#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/formatting/ListMembership.h"
#include "platform/word/formatting/ResolvedText.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace qvnd::word {
namespace {

ResolvedProperties propertiesOf(const Bytes& list) {
    const DocumentTables none{};
    ListLevels levels(none);
    ResolvedProperties properties;
    properties.lay(list, levels);
    return properties;
}

ResolvedParagraph paragraphOf(const Bytes& list) { return resolvedParagraphOf(propertiesOf(list)); }
ResolvedParagraph paragraphWithWord(SprmOpcode opcode, int value) {
    return paragraphOf(withSprm16({}, opcode, static_cast<std::uint16_t>(value)));
}
ResolvedParagraph paragraphWithByte(SprmOpcode opcode, unsigned value) {
    return paragraphOf(withSprm8({}, opcode, value));
}

ResolvedText textOfList(const Bytes& list) { return resolvedTextOf(propertiesOf(list), list); }
ResolvedText textWithWord(SprmOpcode opcode, int value) {
    return textOfList(withSprm16({}, opcode, static_cast<std::uint16_t>(value)));
}
ResolvedText textWithByte(SprmOpcode opcode, unsigned value) {
    return textOfList(withSprm8({}, opcode, value));
}

// The frame of a paragraph that has these entries of two bytes.
std::optional<ParagraphFrame> frameWith(const std::vector<std::pair<SprmOpcode, int>>& words,
                                        Bytes list = {}) {
    for (const auto& [opcode, value] : words) {
        list = withSprm16(list, opcode, static_cast<std::uint16_t>(value));
    }
    return paragraphOf(list).frame;
}

TEST(ParagraphProperties, AlignmentsAreNumbered) {
    const auto alignment = [](unsigned jc) { return paragraphWithByte(sprm::PJc80, jc).alignment; };
    EXPECT_EQ(alignment(0), LineAlignment::left);
    EXPECT_EQ(alignment(1), LineAlignment::centre);
    EXPECT_EQ(alignment(2), LineAlignment::right);
    EXPECT_EQ(alignment(3), LineAlignment::justified);
    EXPECT_EQ(alignment(4), LineAlignment::distributed);
    EXPECT_EQ(alignment(5), LineAlignment::justified);
    EXPECT_EQ(alignment(9), LineAlignment::justified);
    EXPECT_EQ(alignment(10), LineAlignment::left);
}

TEST(ParagraphProperties, NoIndentIsWiderThanTheLargestPaper) {
    EXPECT_EQ(paragraphWithWord(sprm::PDxaLeft80, 31680).left.twips, 31680);
    EXPECT_EQ(paragraphWithWord(sprm::PDxaLeft80, 31681).left.twips, 31680);
    EXPECT_EQ(paragraphWithWord(sprm::PDxaRight80, -31681).right.twips, -31680);
    EXPECT_EQ(paragraphWithWord(sprm::PDcxaLeft, 150).left.characters, 150);
    EXPECT_EQ(paragraphWithWord(sprm::PDcxaRight, -50).right.characters, -50);
}

TEST(ParagraphProperties, ALineSpacingOfNoughtIsASingleLine) {
    const auto spacing = [](std::uint32_t lspd) {
        return paragraphOf(withSprm32({}, sprm::PDyaLine, lspd));
    };
    EXPECT_EQ(spacing(0).line, 240);
    EXPECT_EQ(spacing(0).spacing, ResolvedParagraph::Spacing::multiple);
    EXPECT_EQ(spacing(0x00010000).line, 240);
    EXPECT_EQ(spacing(0x00010001).line, 1);
    EXPECT_EQ(spacing(0x0001FF10).line, 240) << "a negative multiple";
    EXPECT_EQ(spacing(0x00017BC0).line, 31680);
    EXPECT_EQ(spacing(0x00017BC1).line, 31680);
    EXPECT_EQ(spacing(0x00007BC1).line, 31680);
    EXPECT_EQ(spacing(0x00000001).spacing, ResolvedParagraph::Spacing::atLeast);
    EXPECT_EQ(spacing(0x0000FFFF).spacing, ResolvedParagraph::Spacing::exact);
    EXPECT_EQ(spacing(0x0000FFFF).line, 1);
    EXPECT_EQ(spacing(0x00020190).spacing, ResolvedParagraph::Spacing::atLeast);
}

TEST(ParagraphProperties, SpaceAboveAndBelowIsInTwipsOrLines) {
    EXPECT_EQ(paragraphWithWord(sprm::PDyaBefore, 156).before, 156);
    EXPECT_EQ(paragraphWithWord(sprm::PDyaBefore, 156).after, 0);
    EXPECT_EQ(paragraphWithWord(sprm::PDyaAfter, 157).after, 157);
    EXPECT_EQ(paragraphWithWord(sprm::PDyaAfter, 31681).after, 31680);
    EXPECT_EQ(paragraphWithWord(sprm::PDylBefore, 50).linesBefore, 50);
    EXPECT_EQ(paragraphWithWord(sprm::PDylBefore, 13201).linesBefore, 13200);
    EXPECT_EQ(paragraphWithWord(sprm::PDylAfter, 60).linesAfter, 60);
    EXPECT_EQ(paragraphWithWord(sprm::PDylAfter, -1).linesAfter, 0);
    EXPECT_TRUE(paragraphWithByte(sprm::PFDyaBeforeAuto, 1).automaticBefore);
    EXPECT_TRUE(paragraphWithByte(sprm::PFDyaAfterAuto, 1).automaticAfter);
    EXPECT_TRUE(paragraphWithByte(sprm::PFContextualSpacing, 1).contextual);
    const ResolvedParagraph plain = paragraphOf({});
    EXPECT_FALSE(plain.automaticBefore || plain.automaticAfter || plain.contextual);
}

TEST(ParagraphProperties, ATabStopHasOneOfFiveKindsAndSixLeaders) {
    const auto stops = [](std::uint8_t tbd) {
        return paragraphOf({0x0D, 0xC6, 5, 0, 1, 100, 0, tbd}).tabStops;
    };
    EXPECT_EQ(stops(0), (std::vector<TabStop>{{100, TabStop::Kind::left, 0}}));
    EXPECT_EQ(stops(4), (std::vector<TabStop>{{100, TabStop::Kind::bar, 0}}));
    EXPECT_EQ(stops(5), std::vector<TabStop>{});
    EXPECT_EQ(stops(8)[0].leader, u'.');
    EXPECT_EQ(stops(16)[0].leader, u'-');
    EXPECT_EQ(stops(24)[0].leader, u'_');
    EXPECT_EQ(stops(32)[0].leader, u'_');
    EXPECT_EQ(stops(40)[0].leader, u'·');
    EXPECT_EQ(stops(48)[0].leader, 0);
}

TEST(ParagraphProperties, ATabChangeThatIsCutOffChangesNothing) {
    TabStops stops{{100, 0}, {200, 0}};
    const TabStops before = stops;
    applyTabStops(stops, Bytes{0x0D, 0xC6, 1, 1});             // one to take, none told
    applyTabStops(stops, Bytes{0x0D, 0xC6, 3, 1, 100, 0});     // no number of those to set
    applyTabStops(stops, Bytes{0x0D, 0xC6, 4, 0, 1, 0x2C, 1}); // one to set without its kind
    EXPECT_EQ(stops, before);
    applyTabStops(stops, Bytes{0x0D, 0xC6, 4, 1, 100, 0, 0});
    EXPECT_EQ(stops, (TabStops{{200, 0}}));
    applyTabStops(stops, Bytes{0x0D, 0xC6, 5, 0, 1, 0x2C, 1, 2});
    EXPECT_EQ(stops, (TabStops{{200, 0}, {300, 2}}));
}

TEST(ParagraphProperties, ALaterStopAtAPlaceTakesTheEarlierOnesKindAndLeader) {
    TabStops stops{{100, 0}, {200, 2}};
    applyTabStops(stops, Bytes{0x0D, 0xC6, 5, 0, 1, 100, 0, 0x0A}); // to the right, with dots
    EXPECT_EQ(stops, (TabStops{{100, 0x0A}, {200, 2}}));
    applyTabStops(stops, Bytes{0x0D, 0xC6, 7, 1, 200, 0, 1, 200, 0, 1}); // taken away and set
    EXPECT_EQ(stops, (TabStops{{100, 0x0A}, {200, 1}}));
}

TEST(ParagraphProperties, ATabChangeMayTakeStopsNearAPlace) {
    TabStops stops{{99, 0}, {100, 0}, {110, 0}, {120, 0}, {121, 0}};
    // sprmPChgTabs: one place, 110, with ten twips to either side.
    applyTabStops(stops, Bytes{0x15, 0xC6, 6, 1, 110, 0, 10, 0, 0});
    EXPECT_EQ(stops, (TabStops{{99, 0}, {121, 0}}));
}

TEST(ParagraphProperties, SwitchesOfTheFlowSayYesOrNo) {
    EXPECT_TRUE(paragraphWithByte(sprm::PFKeep, 1).keepsLines);
    EXPECT_FALSE(paragraphWithByte(sprm::PFUsePgsuSettings, 0).snapsToGrid);
    EXPECT_FALSE(paragraphWithByte(sprm::PFKinsoku, 0).forbidsLineEnds);
    EXPECT_TRUE(paragraphWithByte(sprm::PFWordWrap, 0).breaksWords);
    EXPECT_FALSE(paragraphWithByte(sprm::PFOverflowPunct, 0).hangsPunctuation);
    EXPECT_FALSE(paragraphWithByte(sprm::PFAutoSpaceDE, 0).spacesLatin);
    EXPECT_FALSE(paragraphWithByte(sprm::PFAutoSpaceDN, 0).spacesDigits);
    const ResolvedParagraph plain = paragraphOf({});
    EXPECT_FALSE(plain.keepsLines || plain.keepsWithNext || plain.startsPage || plain.breaksWords);
    EXPECT_TRUE(plain.snapsToGrid && plain.forbidsLineEnds && plain.hangsPunctuation &&
                plain.spacesLatin && plain.spacesDigits);
}

TEST(ParagraphProperties, OutlineLevelsAreOneToNine) {
    EXPECT_EQ(paragraphWithByte(sprm::POutLvl, 0).outlineLevel, 1);
    EXPECT_EQ(paragraphWithByte(sprm::POutLvl, 8).outlineLevel, 9);
    EXPECT_EQ(paragraphWithByte(sprm::POutLvl, 9).outlineLevel, 0);
    EXPECT_EQ(paragraphOf({}).outlineLevel, 0);
}

TEST(ParagraphProperties, EachSideHasItsBorder) {
    const auto bordered = [](SprmOpcode opcode) {
        return paragraphOf(withSprm32({}, opcode, 0x00000108)); // a point, single
    };
    EXPECT_EQ(bordered(sprm::PBrcTop80).topSide.width, 20);
    EXPECT_EQ(bordered(sprm::PBrcLeft80).leftSide.width, 20);
    EXPECT_EQ(bordered(sprm::PBrcBottom80).bottomSide.width, 20);
    EXPECT_EQ(bordered(sprm::PBrcRight80).rightSide.width, 20);
    EXPECT_EQ(bordered(sprm::PBrcBetween80).between.width, 20);
    EXPECT_FALSE(bordered(sprm::PBrcTop80).bottomSide.visible);
    EXPECT_FALSE(paragraphOf({}).topSide.visible);
}

TEST(ParagraphProperties, ABorderInTheNewSpellingStandsBehindItsLength) {
    const Bytes own{0x4E, 0xC6, 8, 0xFF, 0, 0, 0, 16, 1, 0, 0};
    EXPECT_EQ(paragraphOf(own).topSide.width, 40);
    EXPECT_EQ(paragraphOf(own).topSide.colour, 0xFF0000U);
}

TEST(ParagraphProperties, ShadingInBothSpellingsIsABackground) {
    EXPECT_EQ(paragraphWithWord(sprm::PShd80, (1 << 10) | 6).background, 0xFF0000U);
    const Bytes own{0x4D, 0xC6, 10, 0, 0, 0, 0xFF, 0, 0xFF, 0, 0, 0, 0};
    EXPECT_EQ(paragraphOf(own).background, 0x00FF00U);
    EXPECT_EQ(paragraphOf({}).background, std::nullopt);
}

TEST(ParagraphFrames, APlaceOrAWidthMakesAFrame) {
    EXPECT_EQ(frameWith({}), std::nullopt);
    EXPECT_EQ(frameWith({{sprm::PWHeightAbs, 500}}), std::nullopt);
    EXPECT_TRUE(frameWith({{sprm::PDxaAbs, 1}}));
    EXPECT_TRUE(frameWith({{sprm::PDyaAbs, 1}}));
    EXPECT_TRUE(frameWith({{sprm::PDxaWidth, 1}}));
}

TEST(ParagraphFrames, ADropCapStandsInAFrameWhereItIsInTheText) {
    const auto frame = frameWith({{sprm::PDcs, 0x0019}}); // three lines high
    ASSERT_TRUE(frame);
    EXPECT_EQ(frame->down, FrameSpot::Down::fromParagraph);
    EXPECT_EQ(frame->width, 0);
    EXPECT_TRUE(frame->textBeside);
    EXPECT_EQ(frameWith({{sprm::PDcs, 0x0018}}), std::nullopt) << "three lines of none";
}

TEST(ParagraphFrames, SomeDistancesAcrossNamePlaces) {
    using Place = ParagraphFrame::Place;
    const auto across = [](int stored) {
        return frameWith({{sprm::PDxaAbs, stored}, {sprm::PDxaWidth, 100}})->placeAcross;
    };
    EXPECT_EQ(across(0), Place::start);
    EXPECT_EQ(across(-4), Place::centre);
    EXPECT_EQ(across(-8), Place::end);
    EXPECT_EQ(across(-12), Place::start);
    EXPECT_EQ(across(-16), Place::end);
    EXPECT_EQ(across(-20), Place::distance);
    EXPECT_EQ(across(1), Place::distance);
    EXPECT_EQ(across(-5), Place::distance);
}

TEST(ParagraphFrames, SomeDistancesDownNamePlaces) {
    using Place = ParagraphFrame::Place;
    const auto down = [](int stored) {
        return frameWith({{sprm::PDyaAbs, stored}, {sprm::PDxaWidth, 100}})->placeDown;
    };
    EXPECT_EQ(down(0), Place::distance);
    EXPECT_EQ(down(-4), Place::start);
    EXPECT_EQ(down(-8), Place::centre);
    EXPECT_EQ(down(-12), Place::end);
    EXPECT_EQ(down(-16), Place::start);
    EXPECT_EQ(down(-20), Place::end);
    EXPECT_EQ(down(1), Place::distance);
}

TEST(ParagraphFrames, DistancesAreStoredOneTooLarge) {
    const auto frame = frameWith({{sprm::PDxaAbs, 1001}, {sprm::PDyaAbs, 501}});
    EXPECT_EQ(frame->left, 1000);
    EXPECT_EQ(frame->top, 500);
    EXPECT_EQ(frameWith({{sprm::PDxaAbs, -4}, {sprm::PDyaAbs, -8}})->left, 0);
    EXPECT_EQ(frameWith({{sprm::PDxaAbs, -4}, {sprm::PDyaAbs, -8}})->top, 0);
    EXPECT_EQ(frameWith({{sprm::PDxaWidth, 100}})->top, 0);
}

TEST(ParagraphFrames, OriginsAreTheColumnTheMarginOrThePage) {
    const auto frame = [](unsigned code) {
        return *frameWith({{sprm::PDxaAbs, 5}, {sprm::PDyaAbs, 5}}, withSprm8({}, sprm::PPc, code));
    };
    EXPECT_EQ(frame(0x00).across, FrameSpot::Across::fromColumn);
    EXPECT_EQ(frame(0x40).across, FrameSpot::Across::fromMargin);
    EXPECT_EQ(frame(0x80).across, FrameSpot::Across::fromPage);
    EXPECT_EQ(frame(0xC0).across, FrameSpot::Across::fromColumn);
    EXPECT_EQ(frame(0x00).down, FrameSpot::Down::fromMargin);
    EXPECT_EQ(frame(0x10).down, FrameSpot::Down::fromPage);
    EXPECT_EQ(frame(0x20).down, FrameSpot::Down::fromParagraph);
    EXPECT_EQ(frame(0x30).down, FrameSpot::Down::fromMargin);
}

TEST(ParagraphFrames, AFrameWithoutADistanceDownStandsAtItsParagraph) {
    const auto frame =
        frameWith({{sprm::PDxaAbs, 5}}, withSprm8({}, sprm::PPc, 0x10)); // from the page
    EXPECT_EQ(frame->down, FrameSpot::Down::fromParagraph);
}

TEST(ParagraphFrames, AHeightIsExactUnlessItsHighestBitIsSet) {
    const auto frame = [](int height) {
        return *frameWith({{sprm::PDxaAbs, 5}, {sprm::PWHeightAbs, height}});
    };
    EXPECT_EQ(frame(500).height, 500);
    EXPECT_TRUE(frame(500).exactHeight);
    EXPECT_EQ(frame(0x8000 | 500).height, 500);
    EXPECT_FALSE(frame(0x8000 | 500).exactHeight);
    EXPECT_FALSE(frame(0).exactHeight);
    EXPECT_EQ(frameWith({{sprm::PDxaWidth, 31681}})->width, 31680);
}

TEST(ParagraphFrames, TextStandsBesideAFrameUnlessItSaysOtherwise) {
    const auto textBeside = [](unsigned wrap) {
        return frameWith({{sprm::PDxaAbs, 5}}, withSprm8({}, sprm::PWr, wrap))->textBeside;
    };
    EXPECT_TRUE(textBeside(0));
    EXPECT_FALSE(textBeside(1));
    EXPECT_TRUE(textBeside(2));
    EXPECT_FALSE(textBeside(3));
    EXPECT_TRUE(textBeside(4));
    const auto frame =
        frameWith({{sprm::PDxaAbs, 5}, {sprm::PDxaFromText, 180}, {sprm::PDyaFromText, 90}});
    EXPECT_EQ(frame->apartAcross, 180);
    EXPECT_EQ(frame->apartDown, 90);
}

TEST(TextProperties, SizesAreOneTo1638Points) {
    EXPECT_EQ(textOfList({}).halfPoints, 20);
    EXPECT_EQ(textWithWord(sprm::CHps, 1).halfPoints, 2);
    EXPECT_EQ(textWithWord(sprm::CHps, 3276).halfPoints, 3276);
    EXPECT_EQ(textWithWord(sprm::CHps, 3277).halfPoints, 3276);
    EXPECT_EQ(textWithWord(sprm::CCharScale, 0).scalePercent, 1);
    EXPECT_EQ(textWithWord(sprm::CCharScale, 600).scalePercent, 600);
    EXPECT_EQ(textWithWord(sprm::CCharScale, 601).scalePercent, 600);
    EXPECT_EQ(textOfList({}).scalePercent, 100);
}

TEST(TextProperties, CharactersStandApartRaisedOrLowered) {
    EXPECT_EQ(textWithWord(sprm::CDxaSpace, -20).spacing, -20);
    EXPECT_EQ(textWithWord(sprm::CDxaSpace, 31681).spacing, 31680);
    EXPECT_EQ(textWithWord(sprm::CDxaSpace, -31681).spacing, -31680);
    EXPECT_EQ(textWithWord(sprm::CHpsPos, -6).raisedBy, -6);
    EXPECT_EQ(textWithWord(sprm::CHpsPos, 3169).raisedBy, 3168);
    EXPECT_EQ(textWithWord(sprm::CHpsPos, -3169).raisedBy, -3168);
    EXPECT_EQ(textWithByte(sprm::CIss, 0).script, ResolvedText::Script::normal);
    EXPECT_EQ(textWithByte(sprm::CIss, 1).script, ResolvedText::Script::raised);
    EXPECT_EQ(textWithByte(sprm::CIss, 2).script, ResolvedText::Script::lowered);
    EXPECT_EQ(textWithByte(sprm::CIss, 3).script, ResolvedText::Script::normal);
}

TEST(TextProperties, AnUnderlineHasAKindAndAColourOfItsOwn) {
    using Kind = Underline::Kind;
    const auto line = [](unsigned kul) { return textWithByte(sprm::CKul, kul).underline; };
    EXPECT_EQ(line(1), Underline{Kind::plain});
    EXPECT_EQ(line(2), (Underline{Kind::plain, false, true})) << "words alone";
    EXPECT_EQ(line(3), Underline{Kind::twofold});
    EXPECT_EQ(line(4), Underline{Kind::dotted});
    EXPECT_FALSE(line(5).isSeen()) << "hidden";
    EXPECT_EQ(line(6), (Underline{Kind::plain, true}));
    EXPECT_EQ(line(11), Underline{Kind::wavy});
    EXPECT_EQ(line(27), (Underline{Kind::wavy, true}));
    EXPECT_EQ(line(43), Underline{Kind::twofoldWavy});
    EXPECT_EQ(line(55), (Underline{Kind::longDashed, true}));
    EXPECT_EQ(line(99), Underline{Kind::plain}) << "one that is not known";
    const Bytes red = withSprm32(withSprm8({}, sprm::CKul, 1), sprm::CCvUl, 0x0000FF);
    EXPECT_EQ(textOfList(red).underline.colour, 0xFF0000U);
    EXPECT_EQ(textOfList(withSprm32(red, sprm::CCvUl, 0xFF000000)).underline.colour, std::nullopt);
}

TEST(TextProperties, EmphasisMarksAreOfFourKinds) {
    using Emphasis = ResolvedText::Emphasis;
    EXPECT_EQ(textWithByte(sprm::CKcd, 0).emphasis, Emphasis::none);
    EXPECT_EQ(textWithByte(sprm::CKcd, 1).emphasis, Emphasis::dotAbove);
    EXPECT_EQ(textWithByte(sprm::CKcd, 4).emphasis, Emphasis::dotBelow);
    EXPECT_EQ(textWithByte(sprm::CKcd, 5).emphasis, Emphasis::none);
}

TEST(TextProperties, EachSwitchChangesItsOwnLook) {
    EXPECT_TRUE(textWithByte(sprm::CFBold, 1).bold);
    EXPECT_TRUE(textWithByte(sprm::CFItalic, 1).italic);
    EXPECT_TRUE(textWithByte(sprm::CKul, 3).underline.isSeen());
    EXPECT_FALSE(textWithByte(sprm::CKul, 0).underline.isSeen());
    EXPECT_TRUE(textWithByte(sprm::CFStrike, 1).struckOut);
    EXPECT_TRUE(textWithByte(sprm::CFDStrike, 1).struckOut);
    EXPECT_TRUE(textWithByte(sprm::CFCaps, 1).capitals);
    EXPECT_TRUE(textWithByte(sprm::CFSmallCaps, 1).smallCapitals);
    EXPECT_TRUE(textWithByte(sprm::CFVanish, 1).hidden);
    EXPECT_FALSE(textWithByte(sprm::CFUsePgsuSettings, 0).snapsToGrid);
    const ResolvedText plain = textOfList({});
    EXPECT_FALSE(plain.bold || plain.italic || plain.underline.isSeen() || plain.struckOut ||
                 plain.capitals || plain.smallCapitals || plain.hidden || plain.deleted ||
                 plain.special || plain.isData || plain.eastAsianHint);
    EXPECT_TRUE(plain.snapsToGrid);
}

TEST(TextProperties, EachScriptHasItsFont) {
    EXPECT_EQ(textWithWord(sprm::CRgFtc0, 7).latinFont, 7);
    EXPECT_EQ(textWithWord(sprm::CRgFtc1, 7).eastAsianFont, 7);
    EXPECT_EQ(textWithWord(sprm::CRgFtc2, 7).otherFont, 7);
    EXPECT_EQ(textWithWord(sprm::CRgFtc2, 7).latinFont, 0);
    EXPECT_TRUE(textWithByte(sprm::CIdctHint, 1).eastAsianHint);
    EXPECT_FALSE(textWithByte(sprm::CIdctHint, 2).eastAsianHint);
}

TEST(TextProperties, AMarkerCoversTheShading) {
    const Bytes shaded = withSprm16({}, sprm::CShd80, (1 << 10) | 6);
    EXPECT_EQ(textOfList(shaded).background, 0xFF0000U);
    EXPECT_EQ(textOfList(withSprm8(shaded, sprm::CHighlight, 7)).background, 0xFFFF00U);
    EXPECT_EQ(textOfList(withSprm8(shaded, sprm::CHighlight, 0)).background, 0xFF0000U);
    EXPECT_EQ(textOfList({}).background, std::nullopt);
}

TEST(TextProperties, ASpecialCharacterNamesItsPicture) {
    EXPECT_TRUE(textWithByte(sprm::CFSpec, 1).special);
    EXPECT_FALSE(textWithByte(sprm::CFSpec, 0).special);
    EXPECT_TRUE(textWithByte(sprm::CFData, 1).isData);
    EXPECT_TRUE(textWithByte(sprm::CFOle2, 1).isData);
    EXPECT_TRUE(textOfList(withSprm8(withSprm8({}, sprm::CFData, 1), sprm::CFOle2, 0)).isData);
    EXPECT_FALSE(textWithByte(sprm::CFOle2, 0).isData);
    EXPECT_EQ(textOfList(withSprm32({}, sprm::CPicLocation, 5)).blob, 5U);
    EXPECT_EQ(textOfList({}).blob, std::nullopt);
}

TEST(TextProperties, ASymbolHasItsFontAndCode) {
    const ResolvedText text = textOfList(withSprm32({}, sprm::CSymbol, 0xF0FC0003));
    ASSERT_TRUE(text.symbol);
    EXPECT_TRUE(text.special);
    EXPECT_EQ(text.symbol->font, 3);
    EXPECT_EQ(text.symbol->code, 0xF0FC);
}

// The strokes of a border of this kind that is a point wide, in twips.
int strokesOf(std::uint8_t type) { return borderOf(Bytes{8, type, 0, 0}).thickness; }

TEST(Borders, SeveralStrokesAndTheGapsBetweenThemAreThickerThanOne) {
    EXPECT_EQ(strokesOf(1), 20);
    EXPECT_EQ(strokesOf(2), 20);
    EXPECT_EQ(strokesOf(3), 60);
    EXPECT_EQ(strokesOf(9), 20);
    EXPECT_EQ(strokesOf(10), 60);
    EXPECT_EQ(strokesOf(11), 50);
    EXPECT_EQ(strokesOf(13), 50);
    EXPECT_EQ(strokesOf(14), 40);
    EXPECT_EQ(strokesOf(16), 40);
    EXPECT_EQ(strokesOf(17), 65);
    EXPECT_EQ(strokesOf(19), 65);
    EXPECT_EQ(strokesOf(20), 20);
    EXPECT_EQ(strokesOf(21), 60);
    EXPECT_EQ(strokesOf(25), 20);
    EXPECT_EQ(strokesOf(26), 55);
    EXPECT_EQ(strokesOf(27), 55);
    EXPECT_EQ(strokesOf(28), 20);
}

TEST(Borders, StrokesFollowFromTheContentOutwards) {
    const auto strokes = [](std::uint8_t type) { return borderOf(Bytes{8, type, 0, 0}).strokes; };
    using Strokes = std::array<BorderStroke, 3>;
    constexpr Strokes one{{{20, 0}, {}, {}}};
    for (const std::uint8_t type : {1, 2, 4, 9, 20, 22, 23, 24, 26}) {
        EXPECT_EQ(strokes(type), one) << int(type);
    }
    EXPECT_EQ(strokes(3), (Strokes{{{20, 0}, {20, 20}, {}}}));
    EXPECT_EQ(strokes(10), (Strokes{{{12, 0}, {12, 12}, {12, 12}}}));
    EXPECT_EQ(strokes(11), (Strokes{{{15, 0}, {20, 15}, {}}})) << "thin within thick";
    EXPECT_EQ(strokes(12), (Strokes{{{20, 0}, {15, 15}, {}}}));
    EXPECT_EQ(strokes(13), (Strokes{{{7.5, 0}, {20, 7.5}, {7.5, 7.5}}}));
    EXPECT_EQ(strokes(14), (Strokes{{{10, 0}, {20, 10}, {}}}));
    EXPECT_EQ(strokes(18), (Strokes{{{30, 0}, {15, 20}, {}}}));
    EXPECT_EQ(strokes(21), (Strokes{{{20, 0}, {20, 20}, {}}}));
}

TEST(Borders, StrokesAndTheirGapsAreTheirThickness) {
    for (std::uint8_t type = 1; type < 26; ++type) {
        const Border border = borderOf(Bytes{8, type, 0, 0});
        double all = 0;
        for (const BorderStroke& stroke : border.strokes) {
            all += stroke.gap + stroke.width;
        }
        EXPECT_DOUBLE_EQ(all, border.thickness) << int(type);
    }
}

TEST(Borders, NoStrokeIsThinnerThanAQuarterOfAPointAndNoGapWiderThan31Points) {
    EXPECT_EQ(borderOf(Bytes{1, 1, 0, 0}).width, 5);
    EXPECT_EQ(borderOf(Bytes{3, 1, 0, 0}).width, 7);
    EXPECT_EQ(borderOf(Bytes{8, 1, 0, 0x1F}).space, 620);
    EXPECT_EQ(borderOf(Bytes{8, 1, 0, 0x20}).space, 0);
    EXPECT_FALSE(borderOf(Bytes{8, 1, 0}).visible);
    EXPECT_FALSE(borderOf(Bytes{8, 1, 0, 0, 0}).visible);
}

TEST(Shadings, PatternsMixInTheirPart) {
    const auto mixed = [](unsigned pattern) { // black on white
        return colourOfShd80((pattern << 10) | (8U << 5) | 1U);
    };
    EXPECT_EQ(mixed(0), 0xFFFFFFU);
    EXPECT_EQ(mixed(1), 0x000000U);
    EXPECT_EQ(mixed(2), 0xF2F2F2U);  // 5 %
    EXPECT_EQ(mixed(13), 0x191919U); // 90 %
    EXPECT_EQ(mixed(14), 0x7F7F7FU); // lines, half of them
    EXPECT_EQ(mixed(34), 0x7F7F7FU);
    EXPECT_EQ(mixed(35), 0xF8F8F8U); // 2.5 %
    EXPECT_EQ(mixed(37), 0xDFDFDFU); // 12.5 %
    EXPECT_EQ(mixed(38), 0xD8D8D8U); // 15 %
    EXPECT_EQ(mixed(43), 0xA5A5A5U); // 35 %
    EXPECT_EQ(mixed(61), 0x060606U); // 97.5 %
    EXPECT_EQ(mixed(62), 0x070707U); // 97 %
    EXPECT_EQ(mixed(63), 0x7F7F7FU);
    // Of automatic colours a pattern is black on white.
    EXPECT_EQ(colourOfShd80(1U << 10), 0x000000U);
    EXPECT_EQ(colourOfShd80(2U << 10), 0xF2F2F2U);
}

TEST(Shadings, AShadingThatIsCutOffIsNone) {
    EXPECT_EQ(colourOfShd(Bytes{0, 0, 0, 0xFF, 0, 0xFF, 0, 0, 0, 0}), 0x00FF00U);
    EXPECT_EQ(colourOfShd(Bytes{0, 0, 0, 0xFF, 0, 0xFF, 0, 0, 0}), std::nullopt);
    EXPECT_EQ(colourOfShd(Bytes{0, 0, 0xFF, 0, 0, 0xFF, 0, 0, 1, 0}), 0x0000FFU);
}

} // namespace
} // namespace qvnd::word
