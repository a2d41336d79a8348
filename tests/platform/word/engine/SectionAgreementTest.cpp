#include "platform/word/engine/SectionProperties.h"

#include "platform/word/docfile/format/SprmCodes.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace qvnd::word {
namespace {

Bytes with(SprmOpcode opcode, unsigned value) { return withSprm16({}, opcode, value); }
Bytes with8(SprmOpcode opcode, unsigned value) { return withSprm8({}, opcode, value); }

Bytes oldBorder(SprmOpcode side, unsigned kind) {
    return withSprm(Bytes(), side, Bytes{4, static_cast<std::uint8_t>(kind), 0, 0});
}
Bytes border(SprmOpcode side, unsigned kind) {
    return withSprm(Bytes(), side, Bytes{8, 0, 0, 0, 0, 4, static_cast<std::uint8_t>(kind), 0, 0});
}

TEST(PagesOfSections, AreTheSameUpToTwentyTwips) {
    EXPECT_TRUE(samePage({}, {}));
    EXPECT_TRUE(samePage(with(sprm::SXaPage, 12240), {})) << "a letter where nothing is said";
    EXPECT_TRUE(samePage(with(sprm::SYaPage, 15840), {}));
    for (const auto& [opcode, length] :
         {std::pair(sprm::SXaPage, 12240), std::pair(sprm::SYaPage, 15840)}) {
        for (const int sign : {-1, 1}) {
            const auto near = static_cast<unsigned>(length + sign * 20);
            const auto far = static_cast<unsigned>(length + sign * 21);
            EXPECT_TRUE(samePage(with(opcode, near), {}));
            EXPECT_TRUE(samePage({}, with(opcode, near)));
            EXPECT_FALSE(samePage(with(opcode, far), {}));
            EXPECT_FALSE(samePage({}, with(opcode, far)));
        }
    }
}

TEST(PagesOfSections, DifferInTheirDirectionAndTheAlignmentOfTheirText) {
    EXPECT_TRUE(samePage(with8(sprm::SBOrientation, 1), {}));
    EXPECT_FALSE(samePage(with8(sprm::SBOrientation, 2), {}));
    EXPECT_FALSE(samePage({}, with8(sprm::SBOrientation, 2)));
    EXPECT_TRUE(samePage(with8(sprm::SBOrientation, 2), with8(sprm::SBOrientation, 2)));
    EXPECT_TRUE(samePage(with8(sprm::SVjc, 0), {}));
    EXPECT_FALSE(samePage(with8(sprm::SVjc, 1), {}));
    EXPECT_TRUE(samePage(with(sprm::STextFlow, 0), {}));
    EXPECT_FALSE(samePage(with(sprm::STextFlow, 1), {}));
}

TEST(PagesOfSections, DifferInEachOfTheirBorders) {
    for (const SprmOpcode side :
         {sprm::SBrcTop80, sprm::SBrcLeft80, sprm::SBrcBottom80, sprm::SBrcRight80}) {
        EXPECT_FALSE(samePage(oldBorder(side, 1), {}));
        EXPECT_FALSE(samePage({}, oldBorder(side, 1)));
        EXPECT_FALSE(samePage(oldBorder(side, 1), oldBorder(side, 2)));
        EXPECT_TRUE(samePage(oldBorder(side, 1), oldBorder(side, 1)));
        EXPECT_TRUE(samePage(oldBorder(side, 0), {})) << "no border";
        EXPECT_TRUE(samePage({}, oldBorder(side, 0xFF)));
    }
    for (const SprmOpcode side :
         {sprm::SBrcTop, sprm::SBrcLeft, sprm::SBrcBottom, sprm::SBrcRight}) {
        EXPECT_FALSE(samePage(border(side, 1), {}));
        EXPECT_FALSE(samePage({}, border(side, 1)));
        EXPECT_TRUE(samePage(border(side, 1), border(side, 1)));
        EXPECT_TRUE(samePage(border(side, 0), {})) << "no border";
        EXPECT_TRUE(samePage({}, border(side, 0xFF)));
    }
}

TEST(PagesOfSections, DifferInThePlaceOfTheirBordersWhereThereAreAny) {
    const Bytes place = with(sprm::SPgbProp, 1);
    EXPECT_TRUE(samePage(place, {}));
    const Bytes bordered = border(sprm::SBrcLeft, 1);
    EXPECT_FALSE(samePage(withSprm16(bordered, sprm::SPgbProp, 1), bordered));
    EXPECT_TRUE(samePage(withSprm16(bordered, sprm::SPgbProp, 0), bordered));
    EXPECT_TRUE(
        samePage(withSprm16(bordered, sprm::SPgbProp, 1), withSprm16(bordered, sprm::SPgbProp, 1)));
}

TEST(ColumnsOfSections, AreTheSameWhereTheyAreAsMany) {
    EXPECT_TRUE(sameColumns(with(sprm::SCcolumns, 0), {}));
    EXPECT_FALSE(sameColumns(with(sprm::SCcolumns, 1), {}));
    EXPECT_TRUE(sameColumns(with(sprm::SCcolumns, 1), with(sprm::SCcolumns, 1)));
}

TEST(LinesOfSections, DifferInEachSettingFromWhatCountsWhereNothingIsSaid) {
    const std::vector<std::pair<Bytes, Bytes>> settings{
        {with(sprm::SNLnnMod, 0), with(sprm::SNLnnMod, 5)},
        {with(sprm::SClm, 0), with(sprm::SClm, 2)},
        {with8(sprm::SFpc, 1), with8(sprm::SFpc, 0)},
        {with8(sprm::SRncFtn, 0), with8(sprm::SRncFtn, 1)},
        {with8(sprm::SRncEdn, 0), with8(sprm::SRncEdn, 1)},
        {with(sprm::SNfcFtnRef, 0), with(sprm::SNfcFtnRef, 1)},
        {with(sprm::SNfcEdnRef, 2), with(sprm::SNfcEdnRef, 0)},
        {with(sprm::SNFtn, 1), with(sprm::SNFtn, 0)},
        {with(sprm::SNEdn, 1), with(sprm::SNEdn, 0)}};
    for (std::size_t i = 0; i < settings.size(); ++i) {
        EXPECT_TRUE(sameLinesAndNotes(settings[i].first, {})) << i;
        EXPECT_FALSE(sameLinesAndNotes(settings[i].second, {})) << i;
        EXPECT_FALSE(sameLinesAndNotes({}, settings[i].second)) << i;
    }
}

TEST(LinesOfSections, DifferInTheirNumbersWhereTheyBearAny) {
    for (const Bytes& numbers :
         {with8(sprm::SLnc, 1), with(sprm::SDxaLnn, 100), with(sprm::SLnnMin, 3)}) {
        EXPECT_TRUE(sameLinesAndNotes(numbers, {}));
        const Bytes numbered = withSprm16(numbers, sprm::SNLnnMod, 5);
        EXPECT_FALSE(sameLinesAndNotes(numbered, with(sprm::SNLnnMod, 5)));
        EXPECT_TRUE(sameLinesAndNotes(numbered, numbered));
    }
}

TEST(LinesOfSections, DifferInTheirGridWhereThereIsOne) {
    for (const Bytes& grid :
         {with(sprm::SDyaLinePitch, 312), withSprm32({}, sprm::SDxtCharSpace, 7)}) {
        EXPECT_TRUE(sameLinesAndNotes(grid, {}));
        const Bytes gridded = withSprm16(grid, sprm::SClm, 2);
        EXPECT_FALSE(sameLinesAndNotes(gridded, with(sprm::SClm, 2)));
        EXPECT_TRUE(sameLinesAndNotes(gridded, gridded));
    }
}

TEST(NumberingOfSections, IsAllThatIsTakenOverOrLeftOut) {
    Bytes own = with(sprm::SXaPage, 9000);
    Bytes other = with(sprm::SXaPage, 8000);
    for (const SprmOpcode opcode : {sprm::SFTitlePage, sprm::SNfcPgn, sprm::SFPgnRestart,
                                    sprm::SiHeadingPgn, sprm::ScnsPgn}) {
        own = withSprm8(own, opcode, 1);
        other = withSprm8(other, opcode, 2);
    }
    own = withSprm16(own, sprm::SPgnStart97, 3);
    other = withSprm16(other, sprm::SPgnStart97, 4);
    EXPECT_EQ(withoutOwnNumbering(own), with(sprm::SXaPage, 9000));
    EXPECT_EQ(withNumberingOf(own, {}), with(sprm::SXaPage, 9000));
    const Bytes taken = withNumberingOf(own, other);
    EXPECT_EQ(sprmValue(taken, sprm::SXaPage, 0), 9000U);
    for (const SprmOpcode opcode : {sprm::SFTitlePage, sprm::SNfcPgn, sprm::SFPgnRestart,
                                    sprm::SiHeadingPgn, sprm::ScnsPgn}) {
        EXPECT_EQ(sprmValue(taken, opcode, 0), 2U);
    }
    EXPECT_EQ(sprmValue(taken, sprm::SPgnStart97, 0), 4U);
    EXPECT_EQ(taken.size(), own.size());
}

TEST(BreaksOfSections, AreTakenOverOrLeftOut) {
    const Bytes column = withBreak({}, SectionBreak::newColumn);
    EXPECT_EQ(column, with8(sprm::SBkc, 1));
    EXPECT_EQ(withBreakOf(with8(sprm::SBkc, 2), column), column);
    EXPECT_EQ(withBreakOf(with8(sprm::SBkc, 2), {}), Bytes());
}

TEST(ValuesOfProperties, AreThoseOfTheLastEntryInUpToFourBytes) {
    EXPECT_EQ(sprmValue({}, sprm::SXaPage, 7), 7U);
    EXPECT_EQ(sprmValue(with(sprm::SXaPage, 0x1234), sprm::SXaPage, 7), 0x1234U);
    EXPECT_EQ(sprmValue(withSprm32({}, sprm::SDxtCharSpace, 0x12345678), sprm::SDxtCharSpace, 0),
              0x12345678U);
}

} // namespace
} // namespace qvnd::word
