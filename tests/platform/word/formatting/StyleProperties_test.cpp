#include "platform/word/formatting/StyleProperties.h"

#include "platform/word/docfile/format/SprmCodes.h"
#include "support/ByteText.h"

#include <gtest/gtest.h>

namespace qvnd::word {
namespace {

using test::hex;

TEST(StyleProperties, DefaultsOfEntriesAreWrittenInFull) {
    EXPECT_EQ(defaultEntry(sprm::CFBold), hex("3508 00"));
    EXPECT_EQ(defaultEntry(sprm::CHps), hex("434A 1400"));
    EXPECT_EQ(defaultEntry(sprm::PDyaLine), hex("1264 F0000100"));
    EXPECT_EQ(defaultEntry(sprm::CCv), hex("7068 000000FF"));
    EXPECT_EQ(defaultEntry(sprm::POutLvl), hex("4026 09"));
}

TEST(StyleProperties, TheDefaultOfAShadingIsNoneInAutomaticColours) {
    EXPECT_EQ(defaultEntry(sprm::PShd), hex("4DC6 0A 000000FF 000000FF 0000"));
    EXPECT_EQ(defaultEntry(sprm::CShd), hex("71CA 0A 000000FF 000000FF 0000"));
}

TEST(StyleProperties, TheDefaultOfABorderIsNone) {
    for (SprmOpcode opcode = sprm::PBrcTop; opcode <= sprm::PBrcBar; ++opcode) {
        const auto entry = defaultEntry(opcode);
        ASSERT_TRUE(entry) << opcode;
        EXPECT_EQ(Bytes(entry->begin() + 2, entry->end()), hex("08 0000000000000000"));
    }
    EXPECT_EQ(defaultEntry(sprm::CBrc), hex("72CA 08 0000000000000000"));
}

TEST(StyleProperties, OtherEntriesOfVariableSizeHaveNoDefault) {
    for (const SprmOpcode opcode :
         {sprm::PChgTabs, sprm::PPropRMark, sprm::PAnld80, sprm::CPropRMark, sprm::CIstdPermute}) {
        EXPECT_EQ(defaultEntry(opcode), std::nullopt) << opcode;
    }
}

TEST(StyleProperties, AColourByNumberAndByPartsHaveTheSameEffect) {
    const auto byNumber = [](unsigned ico) { return entry8(sprm::CIco, ico); };
    EXPECT_TRUE(sameEffect(byNumber(0), withSprm32({}, sprm::CCv, 0xFF000000)));
    EXPECT_TRUE(sameEffect(byNumber(6), withSprm32({}, sprm::CCv, 0x000000FF)));
    EXPECT_TRUE(sameEffect(byNumber(16), withSprm32({}, sprm::CCv, 0x00C0C0C0)));
    EXPECT_FALSE(sameEffect(byNumber(6), withSprm32({}, sprm::CCv, 0x00FF0000)));
    EXPECT_FALSE(sameEffect(byNumber(17), withSprm32({}, sprm::CCv, 0x00C0C0C0)));
    EXPECT_TRUE(sameEffect(byNumber(17), byNumber(17)));
}

TEST(StyleProperties, OldAndNewSpellingsOfAValueHaveTheSameEffect) {
    EXPECT_TRUE(sameEffect(entry8(sprm::PJc80, 1), entry8(sprm::PJc, 1)));
    EXPECT_FALSE(sameEffect(entry8(sprm::PJc80, 1), entry8(sprm::PJc, 2)));
    EXPECT_TRUE(sameEffect({}, {}));
    EXPECT_FALSE(sameEffect({}, entry8(sprm::PJc, 1)));
    // The entry behind has the last word.
    Bytes both = entry8(sprm::PJc80, 2);
    const Bytes newer = entry8(sprm::PJc, 1);
    both.insert(both.end(), newer.begin(), newer.end());
    EXPECT_TRUE(sameEffect(both, newer));
}

TEST(StyleProperties, ALookIsOfCharactersAndParagraphsAlone) {
    EXPECT_TRUE(belongsToLook(sprm::CFBold));
    EXPECT_TRUE(belongsToLook(sprm::PJc));
    EXPECT_FALSE(belongsToLook(sprm::TJc));
    EXPECT_FALSE(belongsToLook(sprm::SBkc));
    EXPECT_FALSE(belongsToLook(sprm::PIstd));
    EXPECT_FALSE(belongsToLook(sprm::PChgTabs));
    EXPECT_TRUE(setsTabStops(sprm::PChgTabs));
    EXPECT_FALSE(setsTabStops(sprm::PJc));
}

} // namespace
} // namespace qvnd::word
