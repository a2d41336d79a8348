#include "platform/word/docfile/styles/ListTables.h"

#include "platform/word/docfile/styles/ListLevels.h"
#include "support/ByteText.h"

#include <gtest/gtest.h>

namespace qvnd::word {
namespace {

using test::hex;

class ListTables : public ::testing::Test {
protected:
    ListLevel level(const char16_t* text) {
        ListLevel result;
        result.head[0] = 1; // iStartAt
        result.head[6] = 1; // rgbxchNums
        result.text = text;
        result.paragraph = lists.intern(hex("0F84 A401"));
        result.character = lists.intern(hex("3508 01"));
        return result;
    }
    std::vector<ListDefinition> definitions() {
        ListDefinition outline;
        outline.lsid = -7;
        outline.tplc = 99;
        outline.linkedStyles = {1, 2, 3, 0xFFF, 0xFFF, 0xFFF, 0xFFF, 0xFFF, 0xFFF};
        outline.grfhic = 4;
        outline.levels.resize(9, level(u"\1.\0"));
        ListDefinition simple;
        simple.lsid = 1234567;
        simple.levels = {level(u"\u2022")};
        simple.levels[0].head[6] = 0; // a bullet has no number
        return {outline, simple};
    }

    PropertyLists lists;
    Remarks remarks;
};

TEST_F(ListTables, OverridesBeyondThoseThatParagraphsCanNameAreLeftOutAndCounted) {
    std::vector<ListOverride> overrides(2049);
    for (std::size_t i = 0; i < overrides.size(); ++i) {
        overrides[i].lsid = static_cast<std::int32_t>(i);
    }
    overrides[2045].levels = {{7, 0x10, std::nullopt}};
    const auto read = decodeListOverrides(encodeListOverrides(overrides, lists), lists, remarks);
    ASSERT_EQ(read.size(), 2046U);
    EXPECT_EQ(read.back().lsid, 2045);
    ASSERT_EQ(read.back().levels.size(), 1U);
    EXPECT_EQ(read.back().levels[0].startAt, 7);
    EXPECT_EQ(remarks, Remarks{u"有 3 个列表引用未读入，一个文档最多 2046 个列表"});
}

TEST_F(ListTables, NamesAreNoLongerThanTheFormatAllows) {
    std::vector<ListDefinition> read = definitions();
    decodeListNames(encodeListNames({std::u16string(300, u'x'), u"short"}), read);
    EXPECT_EQ(read[0].name, std::u16string(255, u'x'));
    EXPECT_EQ(read[1].name, u"short");
}

TEST_F(ListTables, AnOverrideChangesEachLevelOnceAtMost) {
    std::vector<ListOverride> overrides(1);
    for (std::uint32_t i = 0; i < 20; ++i) {
        overrides[0].levels.push_back({static_cast<std::int32_t>(i), 0x10U | (i % 10), {}});
    }
    const auto read = decodeListOverrides(encodeListOverrides(overrides, lists), lists, remarks);
    ASSERT_EQ(read.at(0).levels.size(), levelCount);
    for (std::size_t i = 0; i < levelCount; ++i) {
        EXPECT_EQ(read[0].levels[i].startAt, static_cast<std::int32_t>(i));
    }
}

TEST_F(ListTables, OfMoreDefinitionsThanADocumentHoldsThoseStayThatAnOverrideNames) {
    std::vector<ListOverride> overrides(2);
    overrides[0].lsid = 2046;
    overrides[1].lsid = 5;
    std::vector<ListDefinition> few(2046);
    for (std::size_t i = 0; i < few.size(); ++i) {
        few[i].lsid = static_cast<std::int32_t>(i);
    }
    std::vector<ListDefinition> many = few;
    EXPECT_EQ(leaveOutUnnamedLists(few, overrides), 0);
    EXPECT_EQ(few.size(), 2046U);
    many.push_back(many[5]); // the first of equal ones stays
    many.back().tplc = 1;
    many.emplace_back().lsid = 2046;
    EXPECT_EQ(leaveOutUnnamedLists(many, overrides), 2046);
    ASSERT_EQ(many.size(), 2U);
    EXPECT_EQ(many[0].lsid, 5);
    EXPECT_EQ(many[0].tplc, 0);
    EXPECT_EQ(many[1].lsid, 2046);
}

TEST_F(ListTables, ALevelNamesNeitherAStyleNorAList) {
    std::vector<ListDefinition> one = definitions();
    one[0].levels[0].paragraph = lists.intern(hex("0046 0500 0B46 0100 0F84 A401"));
    const auto read =
        decodeListDefinitions(encodeListDefinitions(one, lists).bytes, lists, remarks);
    EXPECT_EQ(read.at(0).levels.at(0).paragraph, lists.intern(hex("0F84 A401")));
}

TEST_F(ListTables, DefinitionsCountTheirLevelsOutsideTheTablesSize) {
    const EncodedListDefinitions encoded = encodeListDefinitions(definitions(), lists);

    EXPECT_EQ(encoded.size, 2U + 2 * 28);
    EXPECT_GT(encoded.bytes.size(), encoded.size);
}

TEST_F(ListTables, EncodingDecodedDefinitionsGivesEqualBytes) {
    const Bytes first = encodeListDefinitions(definitions(), lists).bytes;
    const std::vector<ListDefinition> read = decodeListDefinitions(first, lists, remarks);

    ASSERT_EQ(read.size(), 2U);
    EXPECT_EQ(read[0].lsid, -7);
    EXPECT_EQ(read[0].linkedStyles[2], 3);
    ASSERT_EQ(read[0].levels.size(), 9U);
    EXPECT_EQ(read[1].levels.size(), 1U);
    EXPECT_EQ(read[1].flags & 1, 1); // fSimpleList
    EXPECT_EQ(read[1].levels[0].text, u"\u2022");
    EXPECT_EQ(read[1].levels[0].paragraph, lists.intern(hex("0F84 A401")));
    EXPECT_EQ(encodeListDefinitions(read, lists).bytes, first);
    EXPECT_TRUE(remarks.empty());
}

// Lists that differ in them alone are equal.
TEST_F(ListTables, TheLengthsOfALevelsPropertiesAreTheWriters) {
    const Bytes bytes = encodeListDefinitions(definitions(), lists).bytes;
    const std::vector<ListDefinition> read = decodeListDefinitions(bytes, lists, remarks);

    EXPECT_EQ(read.at(1).levels.at(0).head, definitions()[1].levels[0].head);
}

TEST_F(ListTables, DefinitionWhoseLevelsAreCutKeepsItsPlaceWithoutNumbers) {
    Bytes bytes = encodeListDefinitions(definitions(), lists).bytes;
    bytes.resize(bytes.size() - 1);

    const std::vector<ListDefinition> read = decodeListDefinitions(bytes, lists, remarks);

    ASSERT_EQ(read.size(), 2U);
    EXPECT_EQ(read[0].levels.size(), 9U);
    EXPECT_EQ(read[1].lsid, 1234567);
    ASSERT_EQ(read[1].levels.size(), 1U);
    EXPECT_EQ(read[1].levels[0].head, levelWithoutNumber().head);
    EXPECT_EQ(remarks.at(0), u"有 1 种编号的格式已损坏，用它们的段落没有编号或项目符号");
}

TEST_F(ListTables, FormOfANumberThatNoProgramKnowsBecomesThePlainOne) {
    std::vector<ListDefinition> unknown = definitions();
    unknown[0].levels[0].head[4] = 0x13; // nfc
    unknown[0].levels[1].head[4] = 0x3C;
    unknown[0].levels[2].head[4] = 0x3B;
    unknown[0].levels[3].head[15] = 3; // ixchFollow
    unknown[0].levels[4].head[15] = 2;
    const Bytes bytes = encodeListDefinitions(unknown, lists).bytes;
    const auto levels = decodeListDefinitions(bytes, lists, remarks).at(0).levels;
    EXPECT_EQ(levels.at(0).head[4], 0);
    EXPECT_EQ(levels.at(1).head[4], 0);
    EXPECT_EQ(levels.at(2).head[4], 0x3B);
    EXPECT_EQ(levels.at(3).head[15], 0);
    EXPECT_EQ(levels.at(4).head[15], 2);
}

TEST_F(ListTables, AListUnderTheNumberOfNoneIsOneLikeAnyOther) {
    std::vector<ListDefinition> none = definitions();
    none[0].lsid = -1;
    const Bytes bytes = encodeListDefinitions(none, lists).bytes;
    const Bytes naming = encodeListOverrides({{-1, 0, 0, {}}}, lists);
    const std::int32_t lsid = decodeListDefinitions(bytes, lists, remarks).at(0).lsid;
    EXPECT_NE(lsid, -1);
    EXPECT_EQ(decodeListOverrides(naming, lists, remarks).at(0).lsid, lsid);
}

TEST_F(ListTables, CountBeyondTheBytesIsCut) {
    EXPECT_TRUE(decodeListDefinitions(hex("FF7F 0000"), lists, remarks).empty());
    EXPECT_TRUE(decodeListOverrides(hex("FFFFFF7F 0000"), lists, remarks).empty());
    EXPECT_EQ(remarks.size(), 2U);
}

TEST_F(ListTables, EncodingDecodedOverridesGivesEqualBytes) {
    ListOverride plain;
    plain.lsid = -7;
    ListOverride restarted;
    restarted.lsid = 1234567;
    restarted.fieldKind = 0xFC;
    restarted.levels = {{5, 0x10, std::nullopt}, {1, 0x31, level(u"\1)")}};
    const Bytes first = encodeListOverrides({plain, restarted, plain}, lists);

    const std::vector<ListOverride> read = decodeListOverrides(first, lists, remarks);

    ASSERT_EQ(read.size(), 3U);
    EXPECT_EQ(read[0].lsid, -7);
    ASSERT_EQ(read[1].levels.size(), 2U);
    EXPECT_EQ(read[1].levels[0].startAt, 5);
    EXPECT_FALSE(read[1].levels[0].level);
    ASSERT_TRUE(read[1].levels[1].level);
    EXPECT_EQ(read[1].levels[1].level->text, u"\1)");
    EXPECT_EQ(encodeListOverrides(read, lists), first);
    EXPECT_TRUE(remarks.empty());
}

TEST_F(ListTables, AnOverrideOfALevelThatThereIsNotIsLeftOut) {
    ListOverride entry;
    entry.lsid = -7;
    entry.levels = {{5, 0x1C, std::nullopt}, {6, 0x12, std::nullopt}};
    const auto read = decodeListOverrides(encodeListOverrides({entry}, lists), lists, remarks);
    ASSERT_EQ(read.at(0).levels.size(), 1U);
    EXPECT_EQ(read[0].levels[0].startAt, 6);
}

TEST_F(ListTables, OverrideWhoseLevelsAreCutKeepsItsPlace) {
    ListOverride restarted;
    restarted.lsid = 5;
    restarted.levels = {{1, 0x30, level(u"\1)")}};
    Bytes bytes = encodeListOverrides({restarted}, lists);
    bytes.resize(bytes.size() - 3);

    const std::vector<ListOverride> read = decodeListOverrides(bytes, lists, remarks);

    ASSERT_EQ(read.size(), 1U);
    EXPECT_EQ(read[0].lsid, 5);
    EXPECT_TRUE(read[0].levels.empty());
    EXPECT_EQ(remarks.at(0), u"有 1 个列表的起始编号或格式已损坏，编号可能与原来不同");
}

TEST_F(ListTables, OverrideWithoutADefinitionGetsOneThatShowsNoNumber) {
    std::vector<ListDefinition> known = definitions();
    completeListDefinitions(known, {{-7, 0, 0, {}}, {8, 0, 0, {}}, {8, 0, 0, {}}});
    ASSERT_EQ(known.size(), 3U);
    EXPECT_EQ(known[2].lsid, 8);
    ASSERT_EQ(known[2].levels.size(), 9U);
    EXPECT_EQ(known[2].levels[8].head, levelWithoutNumber().head);
}

TEST_F(ListTables, ALevelWithoutANumberStartsAtOneAndIsFollowedByNothing) {
    std::array<std::uint8_t, 28> head{};
    head[0] = 1;
    head[4] = 0xFF;
    head[15] = 2;
    EXPECT_EQ(levelWithoutNumber().head, head);
    EXPECT_EQ(levelWithoutNumber().text, u"");
}

TEST_F(ListTables, PropertiesOfALevelThatAreNotWholeAreLeftOut) {
    std::vector<ListDefinition> damaged = definitions();
    damaged[1].levels[0].character = lists.intern(hex("3508 01 434A 01"));
    const Bytes bytes = encodeListDefinitions(damaged, lists).bytes;
    const auto read = decodeListDefinitions(bytes, lists, remarks);
    EXPECT_EQ(read[1].levels[0].character, lists.intern(hex("3508 01")));
}

TEST_F(ListTables, PlacesOfNumbersThatAreWrongAreReadFromTheText) {
    std::vector<ListDefinition> wrong = definitions();
    wrong[0].levels[2].text = u"第\u0001.\u0002条";
    wrong[0].levels[2].head[6] = 4;
    wrong[0].levels[2].head[7] = 2;
    wrong[1].levels[0].head[6] = 9;
    const auto read =
        decodeListDefinitions(encodeListDefinitions(wrong, lists).bytes, lists, remarks);
    EXPECT_EQ(read[0].levels[2].head[6], 2);
    EXPECT_EQ(read[0].levels[2].head[7], 4);
    EXPECT_EQ(read[0].levels[2].head[8], 0);
    EXPECT_EQ(read[1].levels[0].head[6], 0);
}

TEST_F(ListTables, NamesBelongToDefinitionsInOrder) {
    std::vector<ListDefinition> read = definitions();
    decodeListNames(encodeListNames({u"", u"编号"}), read);

    EXPECT_EQ(read[0].name, u"");
    EXPECT_EQ(read[1].name, u"编号");
}

TEST_F(ListTables, DefinitionsThatTheTableHasNoRoomForAreCounted) {
    const EncodedListDefinitions encoded = encodeListDefinitions(definitions(), lists);
    Bytes cut(encoded.bytes.begin(),
              encoded.bytes.begin() + static_cast<std::ptrdiff_t>(encoded.size));
    cut.at(0) = 5;
    decodeListDefinitions(cut, lists, remarks);
    ASSERT_FALSE(remarks.empty());
    EXPECT_EQ(remarks[0], u"有 3 种编号已损坏，未读入，用它们的段落没有编号或项目符号");
}

} // namespace
} // namespace qvnd::word
