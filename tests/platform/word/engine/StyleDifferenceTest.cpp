#include "platform/word/engine/StyleDifference.h"

#include "platform/word/engine/ImportFixture.h"
#include "platform/word/formatting/ListMembership.h"
#include "platform/word/formatting/StyleProperties.h"

#include <gtest/gtest.h>

using namespace qvnd::word;
using namespace qvnd::word::importing;

namespace {

class StyleDifferences : public testing::Test {
protected:
    DocumentTables tables;
    ListLevels levels{tables};

    ResolvedProperties look(const Bytes& list) {
        ResolvedProperties result;
        result.lay(list, levels);
        return result;
    }
    Bytes under(const Bytes& source, const Bytes& target, const Bytes& direct = {}) {
        return StyleDifference(look(source), look(target)).under(direct, levels);
    }
    // A list in the tables whose level has these paragraph properties.
    std::uint16_t addList(const Bytes& paragraph) {
        ListLevel level;
        level.paragraph = tables.lists.intern(paragraph);
        const auto number = static_cast<std::int32_t>(tables.listOverrides.size() + 1);
        tables.listDefinitions.push_back({number, 0, {}, 0, 0, {level}, u""});
        tables.listOverrides.push_back({number, 0, 0, {}});
        return static_cast<std::uint16_t>(number);
    }
    static Bytes tabs(const std::vector<std::int16_t>& taken,
                      const std::vector<std::int16_t>& set) {
        LittleEndianWriter operand;
        operand.u8(static_cast<unsigned>(2 + 2 * taken.size() + 3 * set.size()));
        operand.u8(static_cast<unsigned>(taken.size()));
        for (const std::int16_t position : taken) {
            operand.u16(static_cast<std::uint16_t>(position));
        }
        operand.u8(static_cast<unsigned>(set.size()));
        for (const std::int16_t position : set) {
            operand.u16(static_cast<std::uint16_t>(position));
        }
        operand.zeros(set.size());
        return withSprm({}, sprm::PChgTabsPapx, operand.data());
    }
};

} // namespace

TEST_F(StyleDifferences, StylesThatLookAlikeSayNothing) {
    const Bytes direct = sprm8(sprm::PJc80, 2);
    EXPECT_EQ(under(sprm16(sprm::CHps, 24), sprm16(sprm::CHps, 24), direct), direct);
}

TEST_F(StyleDifferences, WhatTheSourceSaysOtherwiseIsSaidDirectly) {
    EXPECT_EQ(under(sprm16(sprm::CHps, 24), sprm16(sprm::CHps, 21)), sprm16(sprm::CHps, 24));
}

TEST_F(StyleDifferences, WhatOnlyTheTargetSaysIsTakenBackByTheDefault) {
    EXPECT_EQ(under({}, sprm16(sprm::CHps, 21)), sprm16(sprm::CHps, 20));
    EXPECT_EQ(under({}, sprm8(sprm::CFBold, 1)), sprm8(sprm::CFBold, 0));
    EXPECT_EQ(under({}, sprm32(sprm::PDyaLine, 0x00010168)), sprm32(sprm::PDyaLine, 0x000100F0));
    EXPECT_EQ(under({}, sprm32(sprm::CCv, 0x000000FF)), sprm32(sprm::CCv, 0xFF000000));
    EXPECT_EQ(under({}, sprm8(0x2433, 0)), sprm8(0x2433, 1));
}

TEST_F(StyleDifferences, ADefaultInWordsEqualsNoWord) {
    EXPECT_EQ(under({}, sprm16(sprm::CHps, 20)), Bytes{});
}

TEST_F(StyleDifferences, AColourByNumberEqualsTheSameColourByItsParts) {
    const Bytes blue = sprm8(sprm::CIco, 2);
    EXPECT_EQ(under(blue + sprm32(sprm::CCv, 0x00FF0000), blue), Bytes{});
    EXPECT_EQ(under(sprm32(sprm::CCv, 0x00000001), blue), sprm32(sprm::CCv, 0x00000001));
    EXPECT_EQ(under({}, sprm8(sprm::CIco, 0)), Bytes{});
}

TEST_F(StyleDifferences, TheSameValueInAnOlderSpellingIsNoDifference) {
    EXPECT_EQ(under(sprm8(sprm::PJc80, 1), sprm8(sprm::PJc80, 1) + sprm8(sprm::PJc, 1)), Bytes{});
    EXPECT_EQ(under(sprm16(sprm::PDxaLeft80, 100), sprm16(sprm::PDxaLeft, 100)), Bytes{});
}

TEST_F(StyleDifferences, ABorderOfTheTargetAloneIsTakenBack) {
    const Bytes border = withSprm({}, 0xC64E, Bytes{8, 1, 2, 3, 0, 4, 1, 0, 0});
    EXPECT_EQ(under({}, border), withSprm({}, 0xC64E, Bytes{8, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST_F(StyleDifferences, DirectFormattingHasTheLastWord) {
    const Bytes direct = sprm16(sprm::CHps, 30);
    EXPECT_EQ(under(sprm16(sprm::CHps, 24), sprm16(sprm::CHps, 21), direct), direct);
}

TEST_F(StyleDifferences, WhatStandsBeforeAReturnToTheStyleHasNoWord) {
    const Bytes source = sprm16(sprm::CHps, 24);
    const Bytes target = sprm16(sprm::CHps, 21);
    const Bytes plain = sprm8(sprm::CPlain, 0);
    const Bytes voided = sprm16(sprm::CHps, 30) + plain;
    EXPECT_EQ(under(source, target, voided), voided + source);
    const Bytes said = plain + sprm16(sprm::CHps, 30);
    EXPECT_EQ(under(source, target, said), said);
}

TEST_F(StyleDifferences, AnOlderSpellingOfTheSamePropertyHasTheLastWordToo) {
    const Bytes direct = sprm8(sprm::CIco, 6);
    EXPECT_EQ(under(sprm8(sprm::CIco, 2) + sprm32(sprm::CCv, 0x00FF0000), {}, direct), direct);
    EXPECT_EQ(under(sprm8(sprm::PJc80, 1) + sprm8(sprm::PJc, 1), {}, sprm8(sprm::PJc80, 2)),
              sprm8(sprm::PJc80, 2));
}

TEST_F(StyleDifferences, ALaterLayerReplacesEverySpellingOfAnEarlierOne) {
    ResolvedProperties look = this->look(sprm8(sprm::CIco, 2) + sprm32(sprm::CCv, 0x00FF0000));
    look.lay(sprm8(sprm::CIco, 6), levels);
    EXPECT_EQ(*look.find(sprm::CIco), sprm8(sprm::CIco, 6));
}

TEST_F(StyleDifferences, TheDifferenceStandsInFrontOfDirectFormatting) {
    EXPECT_EQ(under(sprm16(sprm::CHps, 24), {}, sprm8(sprm::CFBold, 1)),
              sprm16(sprm::CHps, 24) + sprm8(sprm::CFBold, 1));
}

TEST_F(StyleDifferences, TheCharacterStyleStaysInFront) {
    EXPECT_EQ(under(sprm16(sprm::CHps, 24), {}, sprm8(sprm::CFBold, 1) + sprm16(sprm::CIstd, 15)),
              sprm16(sprm::CIstd, 15) + sprm16(sprm::CHps, 24) + sprm8(sprm::CFBold, 1));
}

TEST_F(StyleDifferences, AToggleThatLeansOnTheStyleBecomesWhatItCameTo) {
    const Bytes bold = sprm8(sprm::CFBold, 1);
    EXPECT_EQ(under(bold, {}, sprm8(sprm::CFBold, 0x81)), sprm8(sprm::CFBold, 0));
    EXPECT_EQ(under(bold, {}, sprm8(sprm::CFBold, 0x80)), sprm8(sprm::CFBold, 1));
    EXPECT_EQ(under({}, bold, sprm8(sprm::CFBold, 0x81)), sprm8(sprm::CFBold, 1));
}

TEST_F(StyleDifferences, AToggleLeansOnWhereTheStylesAgree) {
    const Bytes direct = sprm8(sprm::CFItalic, 0x81);
    EXPECT_EQ(under(sprm8(sprm::CFBold, 1), {}, direct), sprm8(sprm::CFBold, 1) + direct);
}

TEST_F(StyleDifferences, AToggleInALayerIsResolvedAgainstTheLayersBelow) {
    ResolvedProperties look = this->look(sprm8(sprm::CFBold, 1));
    look.lay(sprm8(sprm::CFBold, 0x81), levels);
    EXPECT_FALSE(look.toggle(sprm::CFBold));
    look.lay(sprm8(sprm::CFBold, 0x80), levels);
    EXPECT_FALSE(look.toggle(sprm::CFBold));
    look.lay(sprm8(sprm::CFBold, 0x81), levels);
    EXPECT_TRUE(look.toggle(sprm::CFBold));
}

TEST_F(StyleDifferences, AToggleThatIsOffInWordsEqualsOneThatIsNotNamed) {
    EXPECT_EQ(under(sprm8(sprm::CFBold, 0), {}), Bytes{});
}

TEST_F(StyleDifferences, TabStopsOfTheTargetGoAndThoseOfTheSourceCome) {
    EXPECT_EQ(under(tabs({}, {720}), tabs({}, {400})), tabs({400}, {720}));
}

TEST_F(StyleDifferences, DirectTabStopsAreCountedAgainstTheTargetsStyle) {
    EXPECT_EQ(under(tabs({}, {720, 900}), tabs({}, {400}), tabs({720}, {1000})),
              tabs({400, 720}, {900, 1000}));
}

TEST_F(StyleDifferences, DirectTabStopsStayAsTheyCameWhereTheStylesAgree) {
    const Bytes direct = tabs({720}, {1000});
    EXPECT_EQ(under(tabs({}, {720}) + sprm8(sprm::PJc80, 1), tabs({}, {720}), direct),
              sprm8(sprm::PJc80, 1) + direct);
}

TEST_F(StyleDifferences, MoreTabStopsThanOneEntryHoldsTakeTwo) {
    std::vector<std::int16_t> many;
    for (std::int16_t i = 1; i <= 60; ++i) {
        many.push_back(static_cast<std::int16_t>(i * 100));
    }
    TabStops stops;
    for (int i = 1; i <= 60; ++i) {
        stops[static_cast<std::int16_t>(i * 100)] = 0;
    }
    ResolvedProperties result = look(under(tabs({}, many), {}));
    EXPECT_EQ(result.tabStops(), stops);
}

TEST_F(StyleDifferences, AListOfTheSourcesStyleBecomesDirectWithItsIndents) {
    const std::uint16_t list = addList(sprm16(sprm::PDxaLeft80, 420));
    const Bytes result = under(sprm16(sprm::PIlfo, list), sprm16(sprm::PDxaLeft80, 100));
    EXPECT_EQ(operand16(result, sprm::PIlfo), list);
    EXPECT_EQ(operand16(result, sprm::PDxaLeft80), 420);
}

TEST_F(StyleDifferences, AListOfTheTargetsStyleIsSwitchedOff) {
    const std::uint16_t list = addList(sprm16(sprm::PDxaLeft80, 420));
    const Bytes result = under({}, sprm16(sprm::PIlfo, list));
    EXPECT_EQ(operand16(result, sprm::PIlfo), 0);
    for (const SprmOpcode indent :
         {sprm::PDxaLeft80, sprm::PDxaLeft, sprm::PDxaLeft180, sprm::PDxaLeft1}) {
        EXPECT_EQ(operand16(result, indent), 0) << indent;
    }
}

TEST_F(StyleDifferences, ADirectListKeepsTheIndentsOfItsLevel) {
    const std::uint16_t list = addList(sprm16(sprm::PDxaLeft80, 420));
    const Bytes direct = sprm16(sprm::PIlfo, list);
    EXPECT_EQ(under(sprm16(sprm::PDxaLeft80, 100), sprm16(sprm::PDxaLeft80, 200), direct), direct);
}

TEST_F(StyleDifferences, IndentsInTheStyleItselfGoOverThoseOfItsList) {
    const std::uint16_t list = addList(sprm16(sprm::PDxaLeft80, 420));
    const ResolvedProperties styled =
        look(sprm16(sprm::PIlfo, list) + sprm16(sprm::PDxaLeft80, 777));
    EXPECT_EQ(*styled.find(sprm::PDxaLeft80), sprm16(sprm::PDxaLeft80, 777));
}

TEST_F(StyleDifferences, IndentsInCharactersAndInTwipsAreTwoProperties) {
    const Bytes result = under(sprm16(sprm::PDxaLeft80, 420), sprm16(sprm::PDcxaLeft, 200));
    EXPECT_EQ(operand16(result, sprm::PDcxaLeft), 0);
    EXPECT_EQ(operand16(result, sprm::PDxaLeft80), 420);
}

TEST_F(StyleDifferences, WhatStoodBeforeATrackedChangeLeansOnTheSourcesStyleToo) {
    const Bytes direct = sprm8(0x2A83, 1) + sprm16(sprm::CHps, 30);
    EXPECT_EQ(under(sprm16(sprm::CHps, 24), {}, direct), sprm16(sprm::CHps, 24) + direct);
}

TEST_F(StyleDifferences, ADirectListThatIsSwitchedOffTakesItsIndentsAlong) {
    const std::uint16_t list = addList(sprm16(sprm::PDxaLeft80, 420) + tabs({}, {420}));
    const Bytes source = sprm16(sprm::PIlfo, list);
    const ResolvedProperties off = look(under(source, {}, sprm16(sprm::PIlfo, 0)));
    EXPECT_EQ(off.list(), 0);
    EXPECT_TRUE(off.tabStops().empty());
    EXPECT_EQ(operand16(under(source, {}, sprm16(sprm::PIlfo, 0)), sprm::PDxaLeft80), 0);
}

TEST_F(StyleDifferences, ALayerThatLeavesTheListTakesBackWhatItsLevelDid) {
    const std::uint16_t list = addList(sprm16(sprm::PDxaLeft80, 420) + tabs({}, {420}));
    ResolvedProperties styled = look(sprm16(sprm::PIlfo, list) + sprm8(sprm::PJc80, 1));
    styled.lay(sprm16(sprm::PIlfo, 0), levels);
    EXPECT_EQ(styled.find(sprm::PDxaLeft80), nullptr);
    EXPECT_TRUE(styled.tabStops().empty());
    EXPECT_NE(styled.find(sprm::PJc80), nullptr);
}

TEST_F(StyleDifferences, ATabStopOfTheLevelThatTheStyleTookAwayDoesNotComeBack) {
    const std::uint16_t list = addList(tabs({}, {420}));
    const Bytes result = under(sprm16(sprm::PIlfo, list) + tabs({420}, {600}), {});
    TabStops wanted{{600, 0}};
    EXPECT_EQ(look(result).tabStops(), wanted);
}

TEST_F(StyleDifferences, ALevelWithoutAListJoinsNone) {
    const std::uint16_t list = addList(sprm16(sprm::PDxaLeft80, 420));
    const Bytes level = sprm8(sprm::PIlvl, 0);
    const Bytes centred = sprm8(sprm::PJc80, 1);
    EXPECT_EQ(under(centred, {}, level), centred + level);
    const Bytes listed = under(sprm16(sprm::PIlfo, list) + sprm16(sprm::PDxaLeft80, 100), {});
    EXPECT_EQ(operand16(listed, sprm::PDxaLeft80), 100);
    EXPECT_EQ(
        look(under(sprm16(sprm::PIlfo, list) + sprm16(sprm::PDxaLeft80, 100), {}, level)).list(),
        list);
}

TEST_F(StyleDifferences, FortyTabStopsAreOneEntryAndOneMoreMakesASecond) {
    const auto entriesFor = [&](std::int16_t count) {
        std::vector<std::int16_t> stops;
        for (std::int16_t i = 1; i <= count; ++i) {
            stops.push_back(static_cast<std::int16_t>(i * 100));
        }
        const Bytes list = under(tabs({}, stops), {});
        return parseSprms(list).sprms.size();
    };
    EXPECT_EQ(entriesFor(40), 1U);
    EXPECT_EQ(entriesFor(41), 2U);
}
