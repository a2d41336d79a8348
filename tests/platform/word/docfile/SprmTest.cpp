#include "platform/word/docfile/format/Sprm.h"

#include "platform/word/docfile/format/SprmCodes.h"
#include "support/ByteText.h"

#include <gtest/gtest.h>

namespace qvnd::word {
namespace {

using test::hex;

TEST(Sprm, OpcodeTellsTheOperandsSize) {
    const Bytes rest(8, 0);
    EXPECT_EQ(operandSize(0x0835, rest), 1U); // spra 0
    EXPECT_EQ(operandSize(0x2403, rest), 1U); // spra 1
    EXPECT_EQ(operandSize(0x4600, rest), 2U); // spra 2
    EXPECT_EQ(operandSize(0x6A03, rest), 4U); // spra 3
    EXPECT_EQ(operandSize(0x840E, rest), 2U); // spra 4
    EXPECT_EQ(operandSize(0xA413, rest), 2U); // spra 5
    EXPECT_EQ(operandSize(0xE000, rest), 3U); // spra 7
}

TEST(Sprm, VariableOperandCountsItselfInItsFirstByte) {
    EXPECT_EQ(operandSize(sprm::CPropRMark90, hex("03 01 02 03 FF")), 4U);
    EXPECT_EQ(operandSize(sprm::CPropRMark90, hex("00")), 1U);
}

TEST(Sprm, TableDefinitionCountsOneByteTooManyInAWord) {
    EXPECT_EQ(operandSize(sprm::TDefTable, hex("04 00 01 02 03 99")), 5U);
    EXPECT_EQ(operandSize(sprm::TDefTable, hex("00 00 99")), 2U);
    EXPECT_EQ(operandSize(sprm::TDefTable10, hex("04 00 01 02 03 99")), 5U);
    EXPECT_EQ(operandSize(sprm::TDefTable, hex("04")), std::nullopt);
}

TEST(Sprm, LongTabListIsMeasuredByItsCounts) {
    // 255, one tab deleted (position and distance), two added (positions, kinds).
    const Bytes operand = hex("FF 01 1111 2222 02 3333 4444 55 66");
    Bytes followed = operand;
    followed.push_back(0x99);
    EXPECT_EQ(operandSize(sprm::PChgTabs, followed), operand.size());
    EXPECT_EQ(operandSize(sprm::PChgTabs, hex("02 00 00 99")), 3U);
    EXPECT_EQ(operandSize(sprm::PChgTabs, hex("FF 01 1111")), std::nullopt);
    // Only this entry has the exception.
    EXPECT_EQ(operandSize(sprm::PChgTabsPapx, hex("FF 01 1111 2222 02")), std::nullopt);
}

TEST(Sprm, OperandThatIsCutShortHasNoSize) {
    EXPECT_EQ(operandSize(0x6A03, hex("01 02 03")), std::nullopt);
    EXPECT_EQ(operandSize(0xC615, hex("")), std::nullopt);
}

TEST(Sprm, ListIsParsedUpToTheFirstEntryThatDoesNotFit) {
    const Bytes list = hex("35 08 01  03 6A 10 00");
    const ParsedSprms parsed = parseSprms(list);
    ASSERT_EQ(parsed.sprms.size(), 1U);
    EXPECT_EQ(parsed.sprms[0].opcode, sprm::CFBold);
    EXPECT_EQ(parsed.sprms[0].operand[0], 1);
    EXPECT_EQ(parsed.sprms[0].whole.size(), 3U);
    EXPECT_EQ(parsed.sprms[0].operandOffset, 2U);
    EXPECT_FALSE(parsed.complete);
}

TEST(Sprm, LonePaddingByteEndsAListCleanly) {
    const Bytes padded = hex("35 08 01 00");
    const Bytes exact = hex("35 08 01");
    EXPECT_TRUE(parseSprms(padded).complete);
    EXPECT_TRUE(parseSprms(exact).complete);
    EXPECT_TRUE(parseSprms({}).complete);
}

TEST(Sprm, LaterEntriesOverruleEarlierOnes) {
    const Bytes list = hex("43 4A 18 00  43 4A 20 00");
    const auto found = findSprm(list, sprm::CHps);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->operand[0], 0x20);
    EXPECT_FALSE(findSprm(list, sprm::CFBold));
}

TEST(Sprm, SettingAnEntryReplacesAllOfItsOpcode) {
    const Bytes list = hex("43 4A 18 00  35 08 01  43 4A 20 00");
    EXPECT_EQ(withSprm16(list, sprm::CHps, 0x24), hex("35 08 01  43 4A 24 00"));
    EXPECT_EQ(withoutSprm(list, sprm::CHps), hex("35 08 01"));
    EXPECT_EQ(withSprm8({}, sprm::CFBold, 1), hex("35 08 01"));
    EXPECT_EQ(withSprm32({}, sprm::CPicLocation, 0x01020304), hex("03 6A 04 03 02 01"));
    EXPECT_EQ(withSprm({}, sprm::PChgTabs, hex("02 00 00")), hex("15 C6 02 00 00"));
}

TEST(Sprm, GroupsFollowFromTheOpcode) {
    EXPECT_EQ(groupOf(sprm::PIstd), SprmGroup::paragraph);
    EXPECT_EQ(groupOf(sprm::CFBold), SprmGroup::character);
    EXPECT_EQ(groupOf(0x6C02), SprmGroup::picture);
    EXPECT_EQ(groupOf(sprm::SBkc), SprmGroup::section);
    EXPECT_EQ(groupOf(sprm::TDefTable), SprmGroup::table);
    EXPECT_EQ(groupOf(sprm::PHugePapx), SprmGroup::paragraph);
    EXPECT_EQ(groupOf(sprm::PTableProps), SprmGroup::paragraph);
    EXPECT_EQ(groupOf(sprm::CPicLocation), SprmGroup::character);
}

} // namespace
} // namespace qvnd::word
