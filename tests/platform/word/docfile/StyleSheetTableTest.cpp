#include "platform/word/docfile/styles/StyleSheetTable.h"

#include "support/ByteText.h"

#include <chrono>
#include <gtest/gtest.h>

namespace qvnd::word {
namespace {

using test::hex;

class StyleSheetTable : public ::testing::Test {
protected:
    StyleSheet sheetOf(const std::vector<std::pair<std::size_t, StyleDefinition>>& styles) {
        StyleSheet sheet;
        sheet.styles.resize(20);
        sheet.styles[0] = StyleDefinition{};
        sheet.styles[0]->name = u"Normal";
        for (const auto& [istd, style] : styles) {
            sheet.styles.resize(std::max(sheet.styles.size(), istd + 1));
            sheet.styles[istd] = style;
        }
        return sheet;
    }
    StyleSheet throughFile(const StyleSheet& sheet) {
        return decodeStyleSheet(encodeStyleSheet(sheet, lists), lists, remarks);
    }
    PropertyListId list(const char* text) { return lists.intern(hex(text)); }

    PropertyLists lists;
    Remarks remarks;
};

StyleDefinition named(std::u16string name, StyleKind kind) {
    StyleDefinition style;
    style.name = std::move(name);
    style.kind = kind;
    return style;
}

StyleDefinition based(std::u16string name, StyleKind kind, StyleIndex on) {
    StyleDefinition style = named(std::move(name), kind);
    style.basedOn = on;
    return style;
}

TEST_F(StyleSheetTable, ASheetKeepsAsManyStylesAsTheFormatHoldsAndCountsTheOthers) {
    StyleSheet sheet = sheetOf({});
    sheet.styles.resize(0x2000);
    sheet.styles[0x0FFC] = named(u"last", StyleKind::paragraph);
    sheet.styles[0x0FFD] = named(u"beyond", StyleKind::paragraph);
    sheet.styles[0x1FFF] = named(u"far beyond", StyleKind::paragraph);
    const StyleSheet read = throughFile(sheet);
    ASSERT_EQ(read.styles.size(), mostStyles);
    EXPECT_EQ(read.styles.back()->name, u"last");
    EXPECT_EQ(remarks, Remarks{u"有 2 种样式未读入，一个文档最多 4093 种样式"});
}

TEST_F(StyleSheetTable, EmptyPlacesBehindTheLastAreCutWithoutAWord) {
    StyleSheet sheet = sheetOf({});
    sheet.styles.resize(0x2000);
    EXPECT_EQ(throughFile(sheet).styles.size(), mostStyles);
    EXPECT_EQ(remarks, Remarks{});
}

TEST_F(StyleSheetTable, AListThatAStyleHasNoRoomForIsCutBetweenEntriesAndTold) {
    Bytes list;
    for (std::size_t i = 0; i < longestStyleList / 4 + 1; ++i) {
        const Bytes entry = hex("434A 2C00");
        list.insert(list.end(), entry.begin(), entry.end());
    }
    StyleDefinition style = named(u"rich", StyleKind::character);
    style.character = lists.intern(ByteView(list).first(longestStyleList));
    EXPECT_EQ(throughFile(sheetOf({{15, style}})).styles[15]->character, style.character);
    EXPECT_EQ(remarks, Remarks{});
    StyleDefinition richer = style;
    richer.character = lists.intern(list);
    EXPECT_EQ(throughFile(sheetOf({{15, richer}})).styles[15]->character, style.character);
    EXPECT_EQ(remarks,
              Remarks{u"样式“rich”的格式过于繁复，只读入了一部分，用它的文字可能与原来不同"});
}

TEST_F(StyleSheetTable, AnAliasThatAnotherStyleBearsGoes) {
    StyleDefinition first = named(u"First", StyleKind::paragraph);
    first.aliases = u"one,Second,1st";
    StyleDefinition second = named(u"Second", StyleKind::paragraph);
    second.aliases = u"two,one";
    const StyleSheet read = throughFile(sheetOf({{15, first}, {16, second}}));
    EXPECT_EQ(read.styles[15]->aliases, u"one,1st");
    EXPECT_EQ(read.styles[16]->aliases, u"two");
    EXPECT_EQ(read.styles[16]->name, u"Second");
}

TEST_F(StyleSheetTable, ANameLeavesRoomForANumberBehindIt) {
    const StyleSheet read =
        throughFile(sheetOf({{15, named(std::u16string(300, u'名'), StyleKind::paragraph)}}));
    EXPECT_EQ(read.styles[15]->name, std::u16string(240, u'名'));
}

TEST_F(StyleSheetTable, ParagraphStyleKeepsEverythingIncludingOddLists) {
    StyleDefinition heading = named(u"heading 1", StyleKind::paragraph);
    heading.aliases = u"标题 1,h1";
    heading.sti = 1;
    heading.basedOn = 0;
    heading.next = 0;
    heading.link = 15;
    heading.flags = 0x0042;
    heading.priority = 9;
    heading.paragraph = list("0324 01"); // three bytes: padded in the file
    heading.character = list("3508 01 434A 2C00");

    const StyleSheet read =
        throughFile(sheetOf({{1, heading}, {15, named(u"Heading 1 Char", StyleKind::character)}}));

    ASSERT_TRUE(read.styles.at(1));
    const StyleDefinition& style = *read.styles[1];
    EXPECT_EQ(style.name, u"heading 1");
    EXPECT_EQ(style.aliases, u"标题 1,h1");
    EXPECT_EQ(style.sti, 1);
    EXPECT_EQ(style.basedOn, 0);
    EXPECT_EQ(style.link, 15);
    EXPECT_EQ(style.flags, 0x0042);
    EXPECT_EQ(style.priority, 9);
    EXPECT_EQ(style.paragraph, heading.paragraph);
    EXPECT_EQ(style.character, heading.character);
    EXPECT_TRUE(remarks.empty());
}

TEST_F(StyleSheetTable, EveryKindKeepsItsLists) {
    StyleDefinition character = named(u"Strong", StyleKind::character);
    character.character = list("3508 01");
    StyleDefinition table = named(u"Table Grid", StyleKind::table);
    table.table = list("0A34 01");
    table.paragraph = list("0324 01");
    table.character = list("3608 01");
    StyleDefinition numbering = named(u"List 1", StyleKind::list);
    numbering.paragraph = list("0B46 0300");

    const StyleSheet read = throughFile(sheetOf({{15, character}, {16, table}, {17, numbering}}));

    EXPECT_EQ(read.styles.at(15)->character, character.character);
    EXPECT_EQ(read.styles.at(16)->table, table.table);
    EXPECT_EQ(read.styles.at(16)->paragraph, table.paragraph);
    EXPECT_EQ(read.styles.at(16)->character, table.character);
    EXPECT_EQ(read.styles.at(17)->kind, StyleKind::list);
    EXPECT_EQ(read.styles.at(17)->paragraph, numbering.paragraph);
}

TEST_F(StyleSheetTable, RevisionMarkedStyleKeepsWhatItWasBefore) {
    StyleDefinition style = named(u"Body", StyleKind::paragraph);
    style.original = OriginalStyle{0x12345678, 2, list("0324 02"), list("3508 00")};
    StyleDefinition character = named(u"Mark", StyleKind::character);
    character.original = OriginalStyle{1, 1, PropertyListId::empty, list("3608 01")};

    const StyleSheet read = throughFile(sheetOf({{15, style}, {16, character}}));

    ASSERT_TRUE(read.styles.at(15)->original);
    EXPECT_EQ(read.styles[15]->original->date, 0x12345678U);
    EXPECT_EQ(read.styles[15]->original->author, 2);
    EXPECT_EQ(read.styles[15]->original->paragraph, style.original->paragraph);
    EXPECT_EQ(read.styles[15]->original->character, style.original->character);
    ASSERT_TRUE(read.styles.at(16)->original);
    EXPECT_EQ(read.styles[16]->original->character, character.original->character);
}

TEST_F(StyleSheetTable, EncodingWhatWasDecodedGivesEqualBytes) {
    StyleDefinition style = named(u"Body", StyleKind::paragraph);
    style.original = OriginalStyle{7, 1, list("0324 02"), list("3508 00")};
    StyleSheet sheet = sheetOf({{18, style}});
    sheet.defaultFonts = {0, 1, 2, 3};
    sheet.latent = {0x11, 0x22, 0x33};

    const Bytes first = encodeStyleSheet(sheet, lists);
    const StyleSheet read = decodeStyleSheet(first, lists, remarks);

    EXPECT_EQ(read.latent, sheet.latent);
    EXPECT_EQ(read.defaultFonts, sheet.defaultFonts);
    EXPECT_EQ(encodeStyleSheet(read, lists), first);
}

TEST_F(StyleSheetTable, FewerThanFifteenStylesAreFilledUpWithEmptySlots) {
    StyleSheet sheet;
    sheet.styles.resize(2);
    sheet.styles[0] = named(u"Normal", StyleKind::paragraph);

    const Bytes bytes = encodeStyleSheet(sheet, lists);

    EXPECT_EQ(bytes[2], 15); // cstd
    const StyleSheet read = decodeStyleSheet(bytes, lists, remarks);
    EXPECT_EQ(read.styles.size(), 15U);
    EXPECT_FALSE(read.styles[1]);
}

TEST_F(StyleSheetTable, ReadsTheShortFormOfWord97) {
    // STSHI of 18 bytes, Stdf of 10; one style "A" with a paragraph and a character UPX.
    const Bytes bytes = hex("1200 0100 0A00 0100 5B00 0F00 0000 0100 0200 0300"
                            "1A00  0000 F1FF 0200 1A00 0000  0100 4100 0000"
                            "0500 0000 0324 01 00  0000");
    const StyleSheet sheet = decodeStyleSheet(bytes, lists, remarks);

    ASSERT_TRUE(sheet.styles.at(0));
    EXPECT_EQ(sheet.styles[0]->name, u"A");
    EXPECT_EQ(sheet.styles[0]->basedOn, StyleDefinition::none);
    EXPECT_EQ(sheet.styles[0]->paragraph, list("0324 01"));
    EXPECT_EQ(sheet.defaultFonts[2], 3);
}

TEST_F(StyleSheetTable, DamagedStyleIsDroppedAndCountedWhileOthersStay) {
    StyleSheet sheet = sheetOf(
        {{15, named(u"Bad", StyleKind::paragraph)}, {16, named(u"Good", StyleKind::paragraph)}});
    Bytes bytes = encodeStyleSheet(sheet, lists);
    const Bytes sought = hex("4200 6100 6400"); // "Bad"; stk stands 18 bytes before its length
    const auto at = std::search(bytes.begin(), bytes.end(), sought.begin(), sought.end());
    ASSERT_NE(at, bytes.end());
    *(at - 18) = 0xFF;

    const StyleSheet read = decodeStyleSheet(bytes, lists, remarks);

    EXPECT_FALSE(read.styles.at(15));
    EXPECT_EQ(read.styles.at(16)->name, u"Good");
    ASSERT_EQ(remarks.size(), 1U);
    EXPECT_EQ(remarks[0], u"有 1 种样式已损坏，未读入，用它们的段落改用正文样式");
}

TEST_F(StyleSheetTable, DamagedFormattingKeepsTheStyleAndIsNamed) {
    StyleDefinition style = named(u"Bad", StyleKind::character);
    style.character = list("3508 01");
    Bytes bytes = encodeStyleSheet(sheetOf({{15, style}}), lists);
    const Bytes sought = hex("0300 3508 01");
    const auto at = std::search(bytes.begin(), bytes.end(), sought.begin(), sought.end());
    ASSERT_NE(at, bytes.end());
    *at = 0x70;

    const StyleSheet read = decodeStyleSheet(bytes, lists, remarks);

    EXPECT_EQ(read.styles.at(15)->name, u"Bad");
    EXPECT_EQ(read.styles[15]->character, PropertyListId::empty);
    EXPECT_EQ(remarks.at(0), u"样式“Bad”的格式已损坏，用它的文字可能与原来不同");
}

TEST_F(StyleSheetTable, PropertiesThatAreNotWholeOrOfAnotherKindAreLeftOut) {
    StyleDefinition style = named(u"Body", StyleKind::paragraph);
    style.character = list("3508 01 0324 01 434A");
    const StyleSheet read = throughFile(sheetOf({{15, style}}));
    EXPECT_EQ(read.styles.at(15)->character, list("3508 01"));
}

// It would lead from one style to the next without an end. They stand on their bases alone.
TEST_F(StyleSheetTable, TheListsOfAStyleNameNoStyle) {
    StyleDefinition style = named(u"Table", StyleKind::table);
    style.character = list("304A 1000 3508 01");
    style.paragraph = list("0046 1000 0324 01");
    style.table = list("3A56 1000 0454 0100");
    const StyleSheet read = throughFile(sheetOf({{15, style}}));
    EXPECT_EQ(read.styles.at(15)->character, list("3508 01"));
    EXPECT_EQ(read.styles[15]->paragraph, list("0324 01"));
    EXPECT_EQ(read.styles[15]->table, list("0454 0100"));
}

TEST_F(StyleSheetTable, TheListsOfAStyleNameNoStyleInsideAnEntry) {
    StyleDefinition style = named(u"Table", StyleKind::table);
    style.character = list("85CA 09 0100 304A 1000 3508 01");
    const StyleSheet read = throughFile(sheetOf({{15, style}}));
    EXPECT_EQ(read.styles.at(15)->character, list("85CA 05 0100 3508 01"));
}

TEST_F(StyleSheetTable, EveryStyleGetsANameOfItsOwn) {
    const StyleSheet read = throughFile(sheetOf({{15, named(u"Body", StyleKind::paragraph)},
                                                 {16, named(u"Body", StyleKind::character)},
                                                 {17, named(u"Body", StyleKind::list)},
                                                 {18, named(u"", StyleKind::paragraph)}}));
    EXPECT_EQ(read.styles.at(15)->name, u"Body");
    EXPECT_EQ(read.styles.at(16)->name, u"Body 2");
    EXPECT_EQ(read.styles.at(17)->name, u"Body 3");
    EXPECT_EQ(read.styles.at(18)->name, u"样式 18");
    EXPECT_TRUE(remarks.empty());
}

TEST_F(StyleSheetTable, BaseThatIsMissingOfAnotherKindOrInACircleIsGivenUpAndNamed) {
    const StyleDefinition missing = based(u"missing", StyleKind::paragraph, 19);
    const StyleDefinition other = based(u"other", StyleKind::character, 0);
    const StyleDefinition circle = based(u"circle", StyleKind::paragraph, 18);
    const StyleDefinition sound = based(u"sound", StyleKind::paragraph, 17);

    const StyleSheet read =
        throughFile(sheetOf({{15, missing}, {16, other}, {17, circle}, {18, sound}}));

    EXPECT_EQ(read.styles.at(15)->basedOn, StyleDefinition::none);
    EXPECT_EQ(read.styles.at(16)->basedOn, StyleDefinition::none);
    EXPECT_EQ(read.styles.at(17)->basedOn, StyleDefinition::none);
    EXPECT_EQ(read.styles.at(18)->basedOn, 17);
    ASSERT_EQ(remarks.size(), 3U);
    EXPECT_EQ(remarks[2], u"样式“circle”的基准样式不合规定，不再沿用");
}

TEST_F(StyleSheetTable, AParagraphStyleBasedOnAStyleOfCharactersIsBasedOnTheStandardOne) {
    const StyleDefinition bullets = based(u"bullets", StyleKind::paragraph, 16);
    const StyleSheet read =
        throughFile(sheetOf({{15, bullets}, {16, named(u"mark", StyleKind::character)}}));
    EXPECT_EQ(read.styles.at(15)->basedOn, 0);
    EXPECT_TRUE(read.styles.at(15)->namesCharacterBase);
    EXPECT_FALSE(read.styles.at(0)->namesCharacterBase);
    ASSERT_EQ(remarks.size(), 1U);
    EXPECT_EQ(remarks[0], u"样式“bullets”的基准样式不合规定，不再沿用");
}

TEST_F(StyleSheetTable, StyleKeepsItsBaseWhenOnlyThatOnesOwnBaseIsGivenUp) {
    const StyleDefinition upper = based(u"upper", StyleKind::paragraph, 16);
    StyleDefinition middle = named(u"middle", StyleKind::paragraph);
    const StyleDefinition letters = named(u"letters", StyleKind::character);
    for (const auto& [wrong, instead] :
         {std::pair(StyleIndex{17}, StyleIndex{0}), {StyleIndex{40}, StyleDefinition::none}}) {
        remarks.clear();
        middle.basedOn = wrong;
        const StyleSheet read = throughFile(sheetOf({{15, upper}, {16, middle}, {17, letters}}));
        EXPECT_EQ(read.styles.at(15)->basedOn, 16);
        EXPECT_EQ(read.styles.at(16)->basedOn, instead);
        ASSERT_EQ(remarks.size(), 1U);
        EXPECT_EQ(remarks[0], u"样式“middle”的基准样式不合规定，不再沿用");
    }
}

TEST_F(StyleSheetTable, TheStandardStyleBasedOnAStyleThatComesToStandOnItIsNoCircle) {
    const StyleDefinition standard = based(u"Normal", StyleKind::paragraph, 16);
    const StyleDefinition bullets = based(u"bullets", StyleKind::paragraph, 17);
    const StyleSheet read = throughFile(
        sheetOf({{0, standard}, {16, bullets}, {17, named(u"mark", StyleKind::character)}}));
    EXPECT_EQ(read.styles.at(0)->basedOn, StyleDefinition::none);
    EXPECT_EQ(read.styles.at(16)->basedOn, 0);
    EXPECT_EQ(remarks.size(), 2U);
}

// 4,095 styles, each over the next, took seconds and as many nested calls to bring in.
TEST_F(StyleSheetTable, NoChainOfBasesIsLongerThan64) {
    std::vector<std::pair<std::size_t, StyleDefinition>> styles;
    for (StyleIndex istd = 15; istd < 1000; ++istd) {
        StyleDefinition style = named(u"s" + digits(istd), StyleKind::paragraph);
        style.basedOn = istd + 1 < 1000 ? static_cast<StyleIndex>(istd + 1) : StyleIndex{0};
        styles.emplace_back(istd, style);
    }
    const StyleSheet read = throughFile(sheetOf(styles));
    for (std::size_t istd = 15; istd < 1000; ++istd) {
        int depth = 1;
        for (StyleIndex at = read.styles[istd]->basedOn; at != StyleDefinition::none;
             at = read.styles[at]->basedOn) {
            ++depth;
        }
        ASSERT_LE(depth, 64) << istd;
    }
    EXPECT_EQ(read.styles[999]->basedOn, 0);
    EXPECT_EQ(read.styles[990]->basedOn, 991);
    EXPECT_EQ(remarks.front(), u"样式“s15”的基准样式不合规定，不再沿用");
}

// Each of them once tried every number before it.
TEST_F(StyleSheetTable, ThousandsOfStylesOfOneNameAreToldApartQuickly) {
    std::vector<std::pair<std::size_t, StyleDefinition>> styles;
    for (std::size_t istd = 15; istd < mostStyles; ++istd) {
        styles.emplace_back(istd, named(u"Body", StyleKind::paragraph));
    }
    const auto start = std::chrono::steady_clock::now();
    const StyleSheet read = throughFile(sheetOf(styles));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    EXPECT_EQ(read.styles[15]->name, u"Body");
    EXPECT_EQ(read.styles.back()->name, u"Body 4078");
}

TEST_F(StyleSheetTable, NextAndLinkedStylesExistAfterwards) {
    StyleDefinition style = named(u"Body", StyleKind::paragraph);
    style.next = 19;
    style.link = 19;
    const StyleSheet read = throughFile(sheetOf({{15, style}}));
    EXPECT_EQ(read.styles.at(15)->next, 15);
    EXPECT_EQ(read.styles.at(15)->link, 0);
}

TEST_F(StyleSheetTable, SheetThatEndsEarlyStillHasANormalStyle) {
    const StyleSheet read = decodeStyleSheet(hex("1400 FF00"), lists, remarks);

    EXPECT_EQ(read.styles.size(), 15U);
    EXPECT_EQ(read.styles[0]->name, u"Normal");
    EXPECT_EQ(
        remarks.at(0),
        u"文件的样式已损坏，未能全部读出，没有读出的样式改用正文样式，请核对标题和段落的格式");
}

// Paragraphs name it without saying so.
TEST_F(StyleSheetTable, AStandardStyleOfAnotherKindBecomesAPlainOneAndIsNamed) {
    const StyleSheet read = throughFile(
        sheetOf({{0, named(u"Normal", StyleKind::list)}, {15, named(u"x", StyleKind::paragraph)}}));
    EXPECT_EQ(read.styles[0]->kind, StyleKind::paragraph);
    EXPECT_EQ(read.styles[0]->sti, 0);
    EXPECT_EQ(read.styles[15]->name, u"x");
    EXPECT_EQ(remarks, (Remarks{u"样式“Normal”已损坏，改用默认的正文格式"}));
}

TEST_F(StyleSheetTable, EveryCutIsReadWithoutAFault) {
    const Bytes bytes = encodeStyleSheet(sheetOf({{15, named(u"x", StyleKind::table)}}), lists);
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        EXPECT_GE(decodeStyleSheet(ByteView(bytes).first(size), lists, remarks).styles.size(), 15U);
    }
}

TEST_F(StyleSheetTable, AHeadThatHasNoRoomForItsLatentStylesHasNone) {
    StyleSheet written = sheetOf({{15, named(u"Body", StyleKind::paragraph)}});
    written.latent = {1, 2, 3};
    Bytes sheet = encodeStyleSheet(written, lists);
    EXPECT_EQ(decodeStyleSheet(sheet, lists, remarks).latent, written.latent);
    ASSERT_EQ(sheet.at(8), 3); // stiMax
    sheet.at(8) = 4;
    const StyleSheet read = decodeStyleSheet(sheet, lists, remarks);
    EXPECT_EQ(read.styles.at(15)->name, u"Body");
    EXPECT_TRUE(read.latent.empty());
    EXPECT_TRUE(remarks.empty());
}

TEST_F(StyleSheetTable, BytesBehindTheListsOfAStyleWithoutRevisionSayNothing) {
    Bytes sheet = encodeStyleSheet(sheetOf({{19, named(u"Body", StyleKind::paragraph)}}), lists);
    const StyleSheet whole = decodeStyleSheet(sheet, lists, remarks);
    // Its entry is the last: Stdf, name, two lists.
    const std::size_t size = 18 + 2 + 2 * 4 + 2 + (2 + 2) + 2;
    const std::size_t at = sheet.size() - size;
    ASSERT_EQ(sheet.at(at - 2), size);
    sheet.at(at - 2) = sheet.at(at + 6) = static_cast<std::uint8_t>(size + 2);
    sheet.push_back(9);
    sheet.push_back(0);
    const StyleSheet read = decodeStyleSheet(sheet, lists, remarks);
    EXPECT_EQ(read.styles.at(19)->name, u"Body");
    EXPECT_FALSE(read.styles.at(19)->original);
    EXPECT_TRUE(remarks.empty());
}

TEST_F(StyleSheetTable, AParagraphStyleBasedOnAStyleOfTablesIsBasedOnNone) {
    const StyleSheet read = throughFile(sheetOf(
        {{15, named(u"Grid", StyleKind::table)}, {16, based(u"Body", StyleKind::paragraph, 15)}}));
    EXPECT_EQ(read.styles.at(16)->basedOn, StyleDefinition::none);
    EXPECT_FALSE(read.styles.at(16)->namesCharacterBase);
    EXPECT_EQ(remarks.size(), 1U);
}

} // namespace
} // namespace qvnd::word
