#include "platform/word/engine/DocumentImport.h"

#include "platform/word/docfile/format/Dop.h"
#include "platform/word/engine/DocumentOpening.h"
#include "platform/word/engine/ImportFixture.h"
#include "platform/word/engine/LeftOut.h"

#include <chrono>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>

using namespace qvnd::word;
using namespace qvnd::word::importing;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

Story textBox(const std::u16string& text, PropertyListId characters = PropertyListId::empty) {
    Story story;
    story.text = text;
    story.characters = {{story.size(), characters}};
    story.paragraphs = {{story.size(), 0, PropertyListId::empty}};
    return story;
}

} // namespace

// --- text -----------------------------------------------------------------------------------

TEST(DocumentImport, TextWithItsFormattingComesAsItIs) {
    SourceDocument source;
    source.run(u"plain ");
    source.run(u"bold", sprm8(sprm::CFBold, 1));
    source.run(u"\r");
    source.endParagraph(0, sprm8(sprm::PJc80, 1));
    ImportTarget target;
    target.tables.styles.defaultFonts = {};
    target.import(source.document());
    EXPECT_EQ(target.last.text->text, u"plain bold\r");
    EXPECT_EQ(operand8(target.runList(1), sprm::CFBold), 1);
    EXPECT_EQ(operand8(target.paragraphList(), sprm::PJc80), 1);
    EXPECT_THAT(target.last.leftOut, IsEmpty());
}

TEST(DocumentImport, ARunOverTwoParagraphsIsSplitWhereTheirStylesDiffer) {
    SourceDocument source;
    StyleDefinition quote = styleOf(StyleKind::paragraph, u"引文", StyleDefinition::userDefined, 0);
    const StyleIndex style = source.addStyle(quote);
    source.run(u"a\rb\r");
    source.main.paragraphs = {{2, 0, PropertyListId::empty}, {2, style, PropertyListId::empty}};
    source.style(0).character = source.list(sprm16(sprm::CHps, 30));
    source.style(style).character = source.list(sprm16(sprm::CHps, 24));
    ImportTarget target;
    target.import(source.document());
    EXPECT_EQ(target.last.text->characters.size(), 2U);
    EXPECT_EQ(operand16(target.runList(0), sprm::CHps), 30);
    EXPECT_EQ(operand16(target.runList(1), sprm::CHps), 0xFFFF);
}

TEST(DocumentImport, ACellMarkOutsideOfTablesEndsItsParagraphLikeAnyOther) {
    SourceDocument source;
    source.run(u"a\u0007b\u0007\u0007");
    const Bytes inTable = sprm8(sprm::PFInTable, 1);
    const Bytes rowEnd =
        withSprm(inTable + sprm8(sprm::PFTtp, 1), sprm::TDefTable, Bytes{6, 0, 1, 0, 0, 100, 0});
    source.main.paragraphs = {
        {2, 0, PropertyListId::empty}, {2, 0, source.list(inTable)}, {1, 0, source.list(rowEnd)}};
    ImportTarget target;
    target.import(source.document());
    EXPECT_EQ(target.last.text->text, u"a\rb\u0007\u0007");
    EXPECT_EQ(target.last.text->paragraphs.size(), 3U);
}

TEST(DocumentImport, FormattingThatNoFileHasRoomForComesInPartAndIsTold) {
    SourceDocument source;
    Bytes looks;
    for (unsigned i = 0; i < 3000; ++i) {
        looks = looks + withSprm32({}, static_cast<SprmOpcode>(0x6840 + i % 60), i);
    }
    source.paragraph(u"x", 0, {}, looks);
    ImportTarget target;
    target.import(source.document());
    EXPECT_LE(target.runList(0).size(), 0x3FA2U);
    EXPECT_THAT(target.last.leftOut,
                ElementsAre(u"格式 1 种过于繁复，只带入了一部分，用它们的文字可能与原来不同"));
}

// --- notes and comments -----------------------------------------------------------------------

TEST(ImportedNotes, AFootnoteComesWithItsTextInTermsOfTheTarget) {
    SourceDocument source;
    const std::uint16_t font = source.addFont(u"楷体_GB2312", 134);
    source.run(u"a");
    source.run(u"\u0002", sprm8(sprm::CFSpec, 1));
    source.run(u"\r");
    source.endParagraph();
    Story note = textBox(u"\u0002 note\r", source.list(sprm16(sprm::CRgFtc1, font)));
    note.characters = {{1, source.list(sprm8(sprm::CFSpec, 1))},
                       {6, source.list(sprm16(sprm::CRgFtc1, font))}};
    source.data.tables.sideStories.push_back({std::make_shared<const Story>(note), true, {}, {}});
    source.main.anchors = {{1, AnchorKind::footnote, 0}};
    ImportTarget target;
    target.tables.sideStories.push_back({std::make_shared<const Story>(note), true, {}, {}});
    target.import(source.document());
    EXPECT_EQ(target.last.text->text, u"a\u0002\r");
    const std::vector<Anchor> anchors{{1, AnchorKind::footnote, 1}};
    EXPECT_EQ(target.last.text->anchors, anchors);
    const Story& brought = *target.tables.sideStories.at(1).text;
    EXPECT_EQ(brought.text, u"\u0002 note\r");
    const ByteView list = target.tables.lists[brought.characters.back().properties];
    EXPECT_EQ(target.tables.fonts.at(operand16(list, sprm::CRgFtc1)).name, u"楷体_GB2312");
    EXPECT_THAT(target.last.leftOut, IsEmpty());
}

TEST(ImportedNotes, AReferenceWithoutANoteGoes) {
    SourceDocument source;
    source.run(u"a");
    source.run(u"\u0002\u0005", sprm8(sprm::CFSpec, 1));
    source.run(u"\r");
    source.endParagraph();
    source.data.unread.sideStories = {1, 0, 0, 0};
    ImportTarget target;
    target.import(source.document());
    EXPECT_EQ(target.last.text->text, u"a\r");
    EXPECT_THAT(target.last.leftOut, ElementsAre(u"脚注 1 个未能带入"));
}

TEST(ImportedNotes, ACommentComesWithItsAuthorAndItsRange) {
    SourceDocument source;
    source.run(u"abc");
    source.run(u"\u0005", sprm8(sprm::CFSpec, 1));
    source.run(u"\r");
    source.endParagraph();
    source.data.tables.sideStories.push_back(
        {std::make_shared<const Story>(textBox(u"comment\r")), true, u"王工", u"W", 5});
    source.main.anchors = {{3, AnchorKind::comment, 0}};
    source.data.bookmarks.push_back({u"", 1, 3, 0, 0U});
    source.data.bookmarks.push_back({u"", 0, 2, 0, 7U}); // of a comment that is not there
    ImportTarget target;
    target.tables.sideStories.resize(4);
    target.import(source.document());
    ASSERT_EQ(target.tables.sideStories.size(), 5U);
    EXPECT_EQ(target.tables.sideStories[4].author, u"王工");
    EXPECT_EQ(target.last.text->anchors.at(0).index, 4U);
    ASSERT_EQ(target.last.bookmarks.size(), 1U);
    EXPECT_EQ(target.last.bookmarks[0].comment, 4U);
    EXPECT_EQ(target.last.bookmarks[0].start, 1U);
    EXPECT_EQ(target.last.bookmarks[0].end, 3U);
    EXPECT_THAT(target.last.leftOut, IsEmpty());
}

// --- fonts ----------------------------------------------------------------------------------

TEST(ImportedFonts, AFontOfTheSameNameIsThatOfTheTarget) {
    SourceDocument source;
    const std::uint16_t font = source.addFont(u"宋体");
    source.paragraph(u"x", 0, {}, sprm16(sprm::CRgFtc1, font));
    ImportTarget target;
    target.import(source.document());
    EXPECT_EQ(operand16(target.runList(), sprm::CRgFtc1), 0);
}

TEST(ImportedFonts, ANewNameComesAlongWithItsRecord) {
    SourceDocument source;
    const std::uint16_t font = source.addFont(u"楷体_GB2312", 134);
    source.paragraph(u"x", 0, {}, sprm16(sprm::CRgFtc1, font));
    ImportTarget target;
    target.import(source.document());
    const FontEntry& brought = target.tables.fonts.at(operand16(target.runList(), sprm::CRgFtc1));
    EXPECT_EQ(brought.name, u"楷体_GB2312");
    EXPECT_EQ(brought.record, source.data.tables.fonts.back().record);
}

TEST(ImportedFonts, AFontThatNothingUsesStaysBehind) {
    SourceDocument source;
    source.addFont(u"没人用");
    source.paragraph(u"x");
    ImportTarget target;
    target.import(source.document());
    for (const FontEntry& font : target.tables.fonts) {
        EXPECT_NE(font.name, u"没人用");
    }
}

TEST(ImportedFonts, ASymbolFontIsNotATextFontOfTheSameName) {
    SourceDocument source;
    const std::uint16_t font = source.addFont(u"宋体", 2);
    source.paragraph(u"x", 0, {}, sprm16(sprm::CRgFtc0, font));
    ImportTarget target;
    target.import(source.document());
    EXPECT_NE(operand16(target.runList(), sprm::CRgFtc0), 0);
}

TEST(ImportedFonts, TheDefaultFontsOfTheSourceAreSaidDirectly) {
    SourceDocument source;
    source.paragraph(u"x");
    ImportTarget target;
    target.import(source.document());
    const std::uint16_t font = operand16(target.runList(), sprm::CRgFtc0);
    EXPECT_EQ(target.tables.fonts.at(font).name, u"Times New Roman");
}

// --- styles ---------------------------------------------------------------------------------

TEST(ImportedStyles, ABuiltInStyleIsItsNumberWhateverItIsCalled) {
    for (const char16_t* name : {u"heading 1", u"Überschrift 1", u"标题 1"}) {
        SourceDocument source;
        const StyleIndex heading = source.addStyle(styleOf(StyleKind::paragraph, name, 1, 0));
        source.paragraph(u"x", heading);
        ImportTarget target;
        target.tables.styles.styles[1] = styleOf(StyleKind::paragraph, u"标题 1", 1, 0);
        target.import(source.document());
        EXPECT_EQ(target.last.text->paragraphs.at(0).style, 1);
    }
}

TEST(ImportedStyles, AStyleWithoutNumberUnderABuiltInNameIsThatStyle) {
    SourceDocument source;
    const StyleIndex heading = source.addStyle(
        styleOf(StyleKind::paragraph, u"Heading 2", StyleDefinition::userDefined, 0));
    source.paragraph(u"x", heading);
    ImportTarget target;
    target.import(source.document());
    EXPECT_EQ(target.last.text->paragraphs.at(0).style, 2);
    EXPECT_EQ(target.styleOfParagraph().sti, 2);
}

TEST(ImportedStyles, AUsersStyleIsItsNameAndKind) {
    SourceDocument source;
    const StyleIndex style =
        source.addStyle(styleOf(StyleKind::paragraph, u"我的", StyleDefinition::userDefined, 0));
    source.paragraph(u"x", style);
    ImportTarget target;
    auto& styles = target.tables.styles.styles;
    styles.push_back(styleOf(StyleKind::character, u"我的", StyleDefinition::userDefined));
    styles.push_back(styleOf(StyleKind::paragraph, u"我的", StyleDefinition::userDefined, 0));
    target.import(source.document());
    EXPECT_EQ(target.last.text->paragraphs.at(0).style, 16);
    EXPECT_EQ(styles.size(), 17U);
}

TEST(ImportedStyles, ANewNameComesAlongWithItsBaseItsFollowerAndItsTie) {
    SourceDocument source;
    const StyleIndex base =
        source.addStyle(styleOf(StyleKind::paragraph, u"基", StyleDefinition::userDefined, 0));
    const StyleIndex style =
        source.addStyle(styleOf(StyleKind::paragraph, u"新", StyleDefinition::userDefined, base));
    const StyleIndex next =
        source.addStyle(styleOf(StyleKind::paragraph, u"后", StyleDefinition::userDefined, 0));
    const StyleIndex tied =
        source.addStyle(styleOf(StyleKind::character, u"新 字符", StyleDefinition::userDefined));
    source.style(style).next = next;
    source.style(style).link = tied;
    source.style(tied).link = style;
    source.style(style).character = source.list(sprm8(sprm::CFBold, 1));
    source.run(u"x", sprm16(sprm::CIstd, tied));
    source.run(u"\r");
    source.endParagraph(style);
    ImportTarget target;
    target.import(source.document());
    const auto& styles = target.tables.styles.styles;
    const StyleDefinition& brought = target.styleOfParagraph();
    EXPECT_EQ(brought.name, u"新");
    EXPECT_EQ(styles.at(brought.basedOn)->name, u"基");
    EXPECT_EQ(styles.at(brought.basedOn)->basedOn, 0);
    EXPECT_EQ(styles.at(brought.next)->name, u"后");
    EXPECT_EQ(styles.at(brought.link)->name, u"新 字符");
    EXPECT_EQ(styles.at(brought.link)->link, target.last.text->paragraphs.at(0).style);
    EXPECT_EQ(target.paragraphList().size(), 0U);
}

TEST(ImportedStyles, AStyleThatNothingUsesStaysBehind) {
    SourceDocument source;
    source.addStyle(styleOf(StyleKind::paragraph, u"没人用", StyleDefinition::userDefined, 0));
    source.paragraph(u"x");
    ImportTarget target;
    target.import(source.document());
    EXPECT_EQ(target.tables.styles.styles.size(), 15U);
}

TEST(ImportedStyles, ANewHeadingTakesItsFixedPlace) {
    SourceDocument source;
    const StyleIndex heading = source.addStyle(styleOf(StyleKind::paragraph, u"heading 5", 5, 0));
    source.paragraph(u"x", heading);
    ImportTarget target;
    target.import(source.document());
    EXPECT_EQ(target.last.text->paragraphs.at(0).style, 5);
}

TEST(ImportedStyles, TheTargetsDefinitionStandsAndTheSourcesBecomesDirect) {
    SourceDocument source;
    const StyleIndex heading = source.addStyle(styleOf(StyleKind::paragraph, u"heading 1", 1, 0));
    source.style(heading).character = source.list(sprm8(sprm::CFItalic, 1));
    source.style(heading).paragraph = source.list(sprm8(sprm::PJc80, 1));
    source.paragraph(u"x", heading);
    ImportTarget target;
    StyleDefinition ours = styleOf(StyleKind::paragraph, u"标题 1", 1, 0);
    ours.character = target.tables.lists.intern(sprm8(sprm::CFBold, 1));
    target.tables.styles.styles[1] = ours;
    target.import(source.document());
    EXPECT_EQ(target.styleOfParagraph().character, ours.character);
    EXPECT_EQ(operand8(target.runList(), sprm::CFItalic), 1);
    EXPECT_EQ(operand8(target.runList(), sprm::CFBold), 0);
    EXPECT_EQ(operand8(target.paragraphList(), sprm::PJc80), 1);
}

TEST(ImportedStyles, ANewStyleTakesInWhatItsBaseInTheTargetSaysOtherwise) {
    SourceDocument source;
    const StyleIndex style =
        source.addStyle(styleOf(StyleKind::paragraph, u"新", StyleDefinition::userDefined, 0));
    source.style(style).character = source.list(sprm8(sprm::CFBold, 1));
    source.paragraph(u"x", style);
    ImportTarget target;
    target.tables.styles.styles[0]->character = target.tables.lists.intern(sprm16(sprm::CHps, 21));
    target.import(source.document());
    const ByteView brought = target.tables.lists[target.styleOfParagraph().character];
    EXPECT_EQ(operand16(brought, sprm::CHps), 20);
    EXPECT_EQ(operand8(brought, sprm::CFBold), 1);
    EXPECT_EQ(target.runList().size(), 0U);
}

TEST(ImportedStyles, ACharacterStyleOfBothKeepsItsNameAndTheSourcesLook) {
    SourceDocument source;
    const StyleIndex strong = source.addStyle(styleOf(StyleKind::character, u"Strong", 87, 10));
    source.style(strong).character = source.list(sprm8(sprm::CFItalic, 1));
    source.paragraph(u"x", 0, {}, sprm16(sprm::CIstd, strong));
    ImportTarget target;
    StyleDefinition ours = styleOf(StyleKind::character, u"要点", 87, 10);
    ours.character = target.tables.lists.intern(sprm8(sprm::CFBold, 1));
    target.tables.styles.styles.push_back(ours);
    target.import(source.document());
    EXPECT_EQ(operand16(target.runList(), sprm::CIstd), 15);
    EXPECT_EQ(operand8(target.runList(), sprm::CFBold), 0);
    EXPECT_EQ(operand8(target.runList(), sprm::CFItalic), 1);
}

TEST(ImportedStyles, ANewCharacterStyleOverAnotherBaseIsWrittenOut) {
    SourceDocument source;
    const StyleIndex base = source.addStyle(styleOf(StyleKind::character, u"Strong", 87, 10));
    source.style(base).character = source.list(sprm8(sprm::CFItalic, 1));
    const StyleIndex style =
        source.addStyle(styleOf(StyleKind::character, u"新", StyleDefinition::userDefined, base));
    source.style(style).character = source.list(sprm16(sprm::CHps, 30));
    source.paragraph(u"x", 0, {}, sprm16(sprm::CIstd, style));
    ImportTarget target;
    StyleDefinition ours = styleOf(StyleKind::character, u"要点", 87, 10);
    ours.character = target.tables.lists.intern(sprm8(sprm::CFBold, 1));
    target.tables.styles.styles.push_back(ours);
    target.import(source.document());
    const StyleDefinition& brought =
        *target.tables.styles.styles.at(operand16(target.runList(), sprm::CIstd));
    EXPECT_EQ(brought.basedOn, StyleDefinition::none);
    EXPECT_EQ(bytesOf(target.tables.lists[brought.character]),
              sprm8(sprm::CFItalic, 1) + sprm16(sprm::CHps, 30));
}

TEST(ImportedStyles, ATableStyleWithAnotherDefinitionComesUnderANewName) {
    SourceDocument source;
    const StyleIndex grid = source.addStyle(styleOf(StyleKind::table, u"Table Grid", 154, 11));
    source.style(grid).table = source.list(sprm16(0x9602, 100));
    source.paragraph(u"x", 0, sprm8(sprm::PFTtp, 1) + sprm16(sprm::TIstd, grid));
    ImportTarget target;
    target.tables.styles.styles.push_back(styleOf(StyleKind::table, u"Table Grid", 154, 11));
    target.import(source.document());
    const StyleIndex there = operand16(target.paragraphList(), sprm::TIstd);
    EXPECT_EQ(there, 16);
    EXPECT_EQ(target.tables.styles.styles.at(there)->name, u"Table Grid_2");
    EXPECT_EQ(target.tables.styles.styles.at(there)->sti, StyleDefinition::userDefined);
    target.import(source.document());
    EXPECT_EQ(operand16(target.paragraphList(), sprm::TIstd), there);
}

TEST(ImportedStyles, ATableStyleWithTheSameDefinitionIsThatOfTheTarget) {
    SourceDocument source;
    const StyleIndex grid = source.addStyle(styleOf(StyleKind::table, u"Table Grid", 154, 11));
    source.paragraph(u"x", 0, sprm8(sprm::PFTtp, 1) + sprm16(sprm::TIstd, grid));
    ImportTarget target;
    target.tables.styles.styles.push_back(styleOf(StyleKind::table, u"Table Grid", 154, 11));
    target.import(source.document());
    EXPECT_EQ(operand16(target.paragraphList(), sprm::TIstd), 15);
    EXPECT_EQ(target.tables.styles.styles.size(), 16U);
}

TEST(ImportedStyles, ARowWithoutAStyleNamesTheNormalTableOfItsSource) {
    SourceDocument source;
    source.style(11).table = source.list(sprm16(0x9602, 100));
    const Bytes row = sprm8(sprm::PFTtp, 1) + withSprm({}, sprm::TDefTable, Bytes{1, 0});
    source.paragraph(u"x", 0, row);
    ImportTarget target;
    target.import(source.document());
    const StyleIndex there = operand16(target.paragraphList(), sprm::TIstd);
    ASSERT_LT(there, target.tables.styles.styles.size());
    const PropertyListId table = target.tables.styles.styles.at(there)->table;
    EXPECT_EQ(bytesOf(target.tables.lists[table]), sprm16(0x9602, 100));
}

TEST(ImportedStyles, StylesBasedOnEachOtherInACircleComeWithoutTheCircle) {
    SourceDocument source;
    const StyleIndex one =
        source.addStyle(styleOf(StyleKind::paragraph, u"一", StyleDefinition::userDefined, 16));
    source.addStyle(styleOf(StyleKind::paragraph, u"二", StyleDefinition::userDefined, one));
    source.paragraph(u"x", one);
    ImportTarget target;
    target.import(source.document());
    const StyleDefinition& brought = target.styleOfParagraph();
    ASSERT_NE(brought.basedOn, StyleDefinition::none);
    EXPECT_EQ(target.tables.styles.styles.at(brought.basedOn)->basedOn, StyleDefinition::none);
}

TEST(ImportedStyles, AParagraphWithoutAValidStyleIsNormal) {
    SourceDocument source;
    source.paragraph(u"x", 77);
    source.paragraph(u"y", 10);
    ImportTarget target;
    target.import(source.document());
    EXPECT_EQ(target.last.text->paragraphs.at(0).style, 0);
    EXPECT_EQ(target.last.text->paragraphs.at(1).style, 0);
}

TEST(ImportedStyles, AHeadingWithoutAnOutlineLevelInWordsIsAtItsOwn) {
    SourceDocument source;
    const StyleIndex heading = source.addStyle(styleOf(StyleKind::paragraph, u"heading 2", 2, 0));
    source.paragraph(u"x", heading);
    ImportTarget target;
    StyleDefinition ours = styleOf(StyleKind::paragraph, u"标题 2", 2, 0);
    ours.paragraph = target.tables.lists.intern(sprm8(sprm::POutLvl, 1));
    target.tables.styles.styles[2] = ours;
    target.import(source.document());
    EXPECT_EQ(operand8(target.paragraphList(), sprm::POutLvl), -1);
}

// --- lists ----------------------------------------------------------------------------------

TEST(ImportedLists, EachInsertionBringsListsOfItsOwn) {
    SourceDocument source;
    const std::uint16_t list = source.addList(4711, 0);
    source.paragraph(u"x", 0, sprm16(sprm::PIlfo, list));
    ImportTarget target;
    target.import(source.document());
    EXPECT_EQ(operand16(target.paragraphList(), sprm::PIlfo), 1);
    target.import(source.document());
    EXPECT_EQ(operand16(target.paragraphList(), sprm::PIlfo), 2);
    ASSERT_EQ(target.tables.listDefinitions.size(), 2U);
    EXPECT_EQ(target.tables.listDefinitions[0].lsid, 4711);
    EXPECT_NE(target.tables.listDefinitions[1].lsid, 4711);
    EXPECT_EQ(target.tables.listOverrides[1].lsid, target.tables.listDefinitions[1].lsid);
}

TEST(ImportedLists, NoTwoListsGetOneNumberHoweverOftenADocumentComes) {
    SourceDocument source;
    // The second list has the number that the first one would get next.
    const auto next = static_cast<std::int32_t>(4711U + 2 * 0x9E3779B1U);
    for (const std::int32_t lsid : {4711, next}) {
        source.paragraph(u"x", 0, sprm16(sprm::PIlfo, source.addList(lsid, 0)));
    }
    ImportTarget target;
    for (int i = 0; i < 30; ++i) {
        target.import(source.document());
    }
    std::set<std::int32_t> numbers;
    for (const ListDefinition& list : target.tables.listDefinitions) {
        EXPECT_TRUE(numbers.insert(list.lsid).second) << list.lsid;
        EXPECT_NE(list.lsid, 0);
        EXPECT_NE(list.lsid, -1);
    }
    EXPECT_EQ(numbers.size(), 60U);
}

TEST(ImportedLists, OverridesOfOneListStayOverridesOfOneList) {
    SourceDocument source;
    const std::uint16_t list = source.addList(1, 0);
    source.data.tables.listOverrides.push_back({1, 0, 0, {{5, 0x10, std::nullopt}}});
    source.paragraph(u"x", 0, sprm16(sprm::PIlfo, list));
    source.paragraph(u"y", 0, sprm16(sprm::PIlfo, 2));
    ImportTarget target;
    target.import(source.document());
    ASSERT_EQ(target.tables.listOverrides.size(), 2U);
    EXPECT_EQ(target.tables.listDefinitions.size(), 1U);
    EXPECT_EQ(target.tables.listOverrides[1].lsid, target.tables.listOverrides[0].lsid);
    EXPECT_EQ(target.tables.listOverrides[1].levels.at(0).startAt, 5);
}

TEST(ImportedLists, OverridesThatChangeNothingAreOneAndTheSameList) {
    SourceDocument source;
    const std::uint16_t list = source.addList(1, 0);
    source.data.tables.listOverrides.push_back({1, 0, 0, {}});
    source.paragraph(u"x", 0, sprm16(sprm::PIlfo, list));
    source.paragraph(u"y", 0, sprm16(sprm::PIlfo, list + 1U));
    ImportTarget target;
    target.import(source.document());
    EXPECT_EQ(target.tables.listOverrides.size(), 1U);
    EXPECT_EQ(operand16(target.paragraphList(0), sprm::PIlfo), 1);
    EXPECT_EQ(operand16(target.paragraphList(1), sprm::PIlfo), 1);
}

TEST(ImportedLists, EqualListsOfBulletsAreShared) {
    SourceDocument source;
    const std::uint16_t list = source.addList(9, 23);
    source.paragraph(u"x", 0, sprm16(sprm::PIlfo, list));
    ImportTarget target;
    target.import(source.document());
    target.import(source.document());
    EXPECT_EQ(operand16(target.paragraphList(), sprm::PIlfo), 1);
    EXPECT_EQ(target.tables.listDefinitions.size(), 1U);
}

TEST(ImportedLists, BulletsWhoseLevelsTheTargetChangesAreNotSharedWithPlainOnes) {
    SourceDocument changing;
    const std::uint16_t list = changing.addList(9, 23);
    changing.data.tables.listOverrides.back().levels = {{5, 0x10, std::nullopt}};
    changing.paragraph(u"x", 0, sprm16(sprm::PIlfo, list));
    SourceDocument plain;
    plain.paragraph(u"x", 0, sprm16(sprm::PIlfo, plain.addList(9, 23)));
    ImportTarget target;
    target.import(changing.document());
    target.import(plain.document());
    EXPECT_EQ(operand16(target.paragraphList(), sprm::PIlfo), 2);
    EXPECT_TRUE(target.tables.listOverrides.at(1).levels.empty());
}

TEST(ImportedLists, BulletsOfAStyleThatTheTargetHasAreSharedLikeOthers) {
    SourceDocument source;
    const StyleIndex style =
        source.addStyle(styleOf(StyleKind::paragraph, u"要点", StyleDefinition::userDefined, 0));
    const std::uint16_t list = source.addList(9, 23);
    source.data.tables.listDefinitions.back().linkedStyles[0] = style;
    source.paragraph(u"x", style, sprm16(sprm::PIlfo, list));
    ImportTarget target;
    target.import(source.document()); // the style comes, and the list is tied to it
    target.import(source.document());
    target.import(source.document());
    EXPECT_EQ(operand16(target.paragraphList(), sprm::PIlfo), 2);
    ASSERT_EQ(target.tables.listDefinitions.size(), 2U);
    EXPECT_NE(target.tables.listDefinitions[0].linkedStyles[0], StyleDefinition::none);
    EXPECT_EQ(target.tables.listDefinitions[1].linkedStyles[0], StyleDefinition::none);
}

// Each of them was once held against each that had come before.
TEST(ImportedLists, ThousandsOfListsOfBulletsComeQuickly) {
    SourceDocument source;
    for (int i = 0; i < 2000; ++i) {
        const std::uint16_t list = source.addList(1000 + i, 23);
        source.data.tables.listDefinitions.back().levels[0].text =
            std::u16string(1, static_cast<char16_t>(0x4E00 + i));
        source.paragraph(u"x", 0, sprm16(sprm::PIlfo, list));
    }
    ImportTarget target;
    const auto start = std::chrono::steady_clock::now();
    target.import(source.document());
    target.import(source.document());
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
    EXPECT_EQ(target.tables.listOverrides.size(), 2000U);
}

TEST(ImportedLists, ANumberThatNamesNoListMeansNone) {
    SourceDocument source;
    source.paragraph(u"x", 0, sprm16(sprm::PIlfo, 32514));
    source.paragraph(u"y", 0, sprm16(sprm::PIlfo, 0x07FF)); // numbered as Word 95 did
    ImportTarget target;
    target.import(source.document());
    EXPECT_EQ(operand16(target.paragraphList(0), sprm::PIlfo), 0);
    EXPECT_EQ(operand16(target.paragraphList(1), sprm::PIlfo), 0x07FF);
}

TEST(ImportedLists, ListsThatNothingUsesStayBehind) {
    SourceDocument source;
    source.addList(9, 0);
    source.paragraph(u"x");
    ImportTarget target;
    target.import(source.document());
    EXPECT_TRUE(target.tables.listDefinitions.empty());
}

TEST(ImportedLists, FontsOfTheLevelsAreThoseOfTheTarget) {
    SourceDocument source;
    const std::uint16_t font = source.addFont(u"Wingdings", 2);
    const std::uint16_t list = source.addList(9, 23);
    source.data.tables.listDefinitions[0].levels[0].character =
        source.list(sprm16(sprm::CRgFtc0, font));
    source.paragraph(u"x", 0, sprm16(sprm::PIlfo, list));
    ImportTarget target;
    target.import(source.document());
    const ListLevel& level = target.tables.listDefinitions.at(0).levels.at(0);
    const std::uint16_t there = operand16(target.tables.lists[level.character], sprm::CRgFtc0);
    EXPECT_EQ(target.tables.fonts.at(there).name, u"Wingdings");
}

TEST(ImportedLists, AListOfAStyleThatTheTargetHasWithoutOneBecomesDirect) {
    SourceDocument source;
    const std::uint16_t list = source.addList(9, 0, sprm16(sprm::PDxaLeft80, 420));
    source.style(0).paragraph = source.list(sprm16(sprm::PIlfo, list));
    source.paragraph(u"x");
    ImportTarget target;
    target.import(source.document());
    EXPECT_EQ(operand16(target.paragraphList(), sprm::PIlfo), 1);
    EXPECT_EQ(operand16(target.paragraphList(), sprm::PDxaLeft80), 420);
}

TEST(ImportedLists, AListOfTheTargetsStyleDoesNotReachWhatHadNone) {
    SourceDocument source;
    source.paragraph(u"x");
    ImportTarget target;
    target.tables.listDefinitions.push_back({3, 0, {}, 0, 0, {ListLevel{}}, u""});
    target.tables.listOverrides.push_back({3, 0, 0, {}});
    target.tables.styles.styles[0]->paragraph = target.tables.lists.intern(sprm16(sprm::PIlfo, 1));
    target.import(source.document());
    EXPECT_EQ(operand16(target.paragraphList(), sprm::PIlfo), 0);
}

TEST(ImportedLists, ANewStyleBringsItsListAndIsLinkedToIt) {
    SourceDocument source;
    const std::uint16_t list = source.addList(9, 0);
    const StyleIndex style =
        source.addStyle(styleOf(StyleKind::paragraph, u"条", StyleDefinition::userDefined, 0));
    source.style(style).paragraph = source.list(sprm16(sprm::PIlfo, list));
    source.data.tables.listDefinitions[0].linkedStyles[0] = style;
    source.paragraph(u"x", style);
    ImportTarget target;
    target.import(source.document());
    EXPECT_EQ(target.tables.listDefinitions.at(0).linkedStyles[0],
              target.last.text->paragraphs.at(0).style);
    EXPECT_EQ(target.paragraphList().size(), 0U);
    const ByteView own = target.tables.lists[target.styleOfParagraph().paragraph];
    EXPECT_EQ(operand16(own, sprm::PIlfo), 1);
}

TEST(ImportedLists, ALaterFileWithThatStyleNumbersByItself) {
    SourceDocument source;
    const std::uint16_t list = source.addList(9, 0);
    const StyleIndex style =
        source.addStyle(styleOf(StyleKind::paragraph, u"条", StyleDefinition::userDefined, 0));
    source.style(style).paragraph = source.list(sprm16(sprm::PIlfo, list));
    source.paragraph(u"x", style);
    ImportTarget target;
    target.import(source.document());
    target.import(source.document());
    EXPECT_EQ(operand16(target.paragraphList(), sprm::PIlfo), 2);
}

TEST(ImportedLists, HiddenMembersAndWordsForNoListKeepTheirMeaning) {
    SourceDocument source;
    source.addList(8, 0);
    source.addList(9, 0);
    source.paragraph(u"a", 0, sprm16(sprm::PIlfo, 0x10000 - 2));
    source.paragraph(u"b", 0, sprm16(sprm::PIlfo, 0));
    source.paragraph(u"c", 0, sprm16(sprm::PIlfo, 0x07FF));
    source.paragraph(u"d", 0, sprm16(sprm::PIlfo, 77));
    ImportTarget target;
    target.import(source.document());
    EXPECT_EQ(operand16(target.paragraphList(0), sprm::PIlfo), 0xFFFF);
    EXPECT_EQ(operand16(target.paragraphList(1), sprm::PIlfo), 0);
    EXPECT_EQ(operand16(target.paragraphList(2), sprm::PIlfo), 0x07FF);
    EXPECT_EQ(operand16(target.paragraphList(3), sprm::PIlfo), 0);
}

TEST(ImportedLists, AListTooManyIsNamed) {
    SourceDocument source;
    const std::uint16_t list = source.addList(9, 0);
    source.paragraph(u"x", 0, sprm16(sprm::PIlfo, list));
    ImportTarget target;
    target.tables.listOverrides.resize(0x7FE);
    target.import(source.document());
    EXPECT_EQ(operand16(target.paragraphList(), sprm::PIlfo), 0);
    EXPECT_THAT(target.last.leftOut,
                ElementsAre(u"列表 1 个的编号未能带入，一个文档最多 2046 个列表"));
}

namespace {

// Adds a style of that list, with a name of its own.
void addListStyle(SourceDocument& source, const std::u16string& name, std::uint16_t list) {
    StyleDefinition style = styleOf(StyleKind::list, name, StyleDefinition::userDefined);
    style.paragraph = source.list(sprm16(sprm::PIlfo, list));
    source.addStyle(style);
}

std::vector<const StyleDefinition*> listStylesOf(const DocumentTables& tables) {
    std::vector<const StyleDefinition*> found;
    for (const auto& style : tables.styles.styles) {
        if (style && style->kind == StyleKind::list) {
            found.push_back(&*style);
        }
    }
    return found;
}

// A document with one list of bullets that shows a picture, and two pictures.
SourceDocument withPictureBullet(std::uint32_t picture) {
    SourceDocument source;
    DocumentTables& tables = source.data.tables;
    for (const std::uint8_t content : {std::uint8_t{1}, std::uint8_t{2}}) {
        const auto index = static_cast<std::uint32_t>(tables.blobs.size());
        tables.blobs.push_back(std::make_shared<Bytes>(Bytes{content}));
        tables.bulletPictures.push_back(
            source.list(sprm8(sprm::CFSpec, 1) + sprm32(sprm::CPicLocation, index)));
    }
    const std::uint16_t list = source.addList(9, 23);
    tables.listDefinitions.back().levels.front().character =
        source.list(sprm32(sprm::CPbiIBullet, picture) + sprm16(sprm::CPbiGrf, 1));
    source.paragraph(u"x", 0, sprm16(sprm::PIlfo, list));
    return source;
}

ByteView bulletOf(const ImportTarget& target, std::size_t list = 0) {
    return target.tables.lists[target.tables.listDefinitions.at(list).levels.front().character];
}

} // namespace

TEST(ImportedLists, TheStyleOfAListComesWithItsList) {
    SourceDocument source;
    source.addList(5, 0);
    const std::uint16_t list = source.addList(7, 0);
    addListStyle(source, u"项目列表", list);
    source.paragraph(u"x", 0, sprm16(sprm::PIlfo, list));
    ImportTarget target;
    target.import(source.document());
    const auto styles = listStylesOf(target.tables);
    ASSERT_EQ(styles.size(), 1U);
    EXPECT_EQ(styles[0]->name, u"项目列表");
    EXPECT_EQ(operand16(target.tables.lists[styles[0]->paragraph], sprm::PIlfo),
              operand16(target.paragraphList(), sprm::PIlfo));
}

TEST(ImportedLists, AStyleOfAListComesThoughTheTextNamesTheListByAnOverride) {
    SourceDocument source;
    const std::uint16_t list = source.addList(7, 0);
    source.data.tables.listOverrides.push_back({7, 0, 0, {{5, 0x10, std::nullopt}}});
    addListStyle(source, u"项目列表", list);
    source.paragraph(u"x", 0, sprm16(sprm::PIlfo, list + 1U));
    ImportTarget target;
    target.import(source.document());
    EXPECT_EQ(listStylesOf(target.tables).size(), 1U);
    EXPECT_EQ(target.tables.listDefinitions.size(), 1U);
}

TEST(ImportedLists, AStyleOfAListThatNothingUsesStaysBehind) {
    SourceDocument source;
    addListStyle(source, u"项目列表", source.addList(7, 0));
    addListStyle(source, u"无", 0);
    source.paragraph(u"x");
    ImportTarget target;
    target.import(source.document());
    EXPECT_TRUE(listStylesOf(target.tables).empty());
    EXPECT_TRUE(target.tables.listDefinitions.empty());
    source.paragraph(u"1", 0, sprm16(sprm::PIlfo, source.addList(8, 0)));
    target.import(source.document());
    EXPECT_TRUE(listStylesOf(target.tables).empty()) << "another list came along";
    EXPECT_EQ(target.tables.listDefinitions.size(), 1U);
}

TEST(ImportedLists, UnderTheNameOfAListStyleTheTargetsStands) {
    SourceDocument source;
    const std::uint16_t list = source.addList(7, 0);
    addListStyle(source, u"项目列表", list);
    source.paragraph(u"x", 0, sprm16(sprm::PIlfo, list));
    ImportTarget target;
    target.import(source.document());
    target.import(source.document());
    const auto styles = listStylesOf(target.tables);
    ASSERT_EQ(styles.size(), 1U);
    EXPECT_EQ(operand16(target.tables.lists[styles[0]->paragraph], sprm::PIlfo), 1);
    EXPECT_EQ(operand16(target.paragraphList(), sprm::PIlfo), 2);
}

TEST(ImportedBullets, APictureComesWithItsListInTermsOfTheTarget) {
    ImportTarget target;
    target.import(withPictureBullet(1).document());
    ASSERT_EQ(target.tables.bulletPictures.size(), 2U) << "that no list shows too";
    const ByteView bullet = bulletOf(target);
    EXPECT_EQ(operand16(bullet, sprm::CPbiGrf), 1);
    const auto place = operand16(bullet, sprm::CPbiIBullet);
    ASSERT_LT(place, 2);
    const auto blob =
        operand16(target.tables.lists[target.tables.bulletPictures[place]], sprm::CPicLocation);
    EXPECT_EQ(*target.tables.blobs.at(blob), Bytes{2});
}

TEST(ImportedBullets, EqualPicturesAreKeptOnceAndTheirListsShared) {
    ImportTarget target;
    target.import(withPictureBullet(1).document());
    target.import(withPictureBullet(1).document());
    EXPECT_EQ(target.tables.bulletPictures.size(), 2U);
    EXPECT_EQ(target.tables.listDefinitions.size(), 1U);
    target.import(withPictureBullet(0).document());
    EXPECT_EQ(target.tables.bulletPictures.size(), 2U);
    EXPECT_EQ(target.tables.listDefinitions.size(), 2U) << "another picture, another list";
}

TEST(ImportedBullets, TheEmptyPlaceOfADamagedPictureStaysBehindAndItsBulletShowsItsCharacter) {
    SourceDocument source = withPictureBullet(1);
    source.data.tables.bulletPictures[1] = source.list(sprm8(sprm::CFVanish, 1));
    ImportTarget target;
    target.import(source.document());
    EXPECT_EQ(target.tables.bulletPictures.size(), 1U);
    EXPECT_FALSE(findSprm(bulletOf(target), sprm::CPbiIBullet));
}

TEST(ImportedBullets, OneThatNamesNoPictureShowsItsOwnCharacter) {
    ImportTarget target;
    target.import(withPictureBullet(2).document());
    EXPECT_FALSE(findSprm(bulletOf(target), sprm::CPbiGrf));
    EXPECT_FALSE(findSprm(bulletOf(target), sprm::CPbiIBullet));
    EXPECT_EQ(target.tables.listDefinitions.at(0).levels.front().text, u"\u2022");
}

// --- pictures and authors -------------------------------------------------------------------

TEST(ImportedPictures, APictureIsSharedWithItsSource) {
    SourceDocument source;
    source.data.tables.blobs.push_back(std::make_shared<Bytes>(Bytes{1, 2, 3}));
    const Bytes picture = sprm32(sprm::CPicLocation, 0) + sprm8(sprm::CFSpec, 1);
    source.paragraph(u"\u0001", 0, {}, picture);
    ImportTarget target;
    target.tables.blobs.push_back(std::make_shared<Bytes>(Bytes{9}));
    target.import(source.document());
    EXPECT_EQ(target.last.text->text, u"\u0001\r");
    EXPECT_EQ(operand16(target.runList(), sprm::CPicLocation), 1);
    EXPECT_EQ(target.tables.blobs.at(1), source.data.tables.blobs.at(0));
}

TEST(ImportedPictures, APictureWithoutDataIsTakenOutAndNamed) {
    SourceDocument source;
    source.paragraph(u"a\u0001b", 0, {}, sprm8(sprm::CFSpec, 1));
    ImportTarget target;
    target.import(source.document());
    EXPECT_EQ(target.last.text->text, u"ab\r");
    EXPECT_THAT(target.last.leftOut, ElementsAre(u"图片 1 个没有数据，未能带入"));
}

// Runs: the begin of a field, its code, its separator, its picture, its end. The marks have these
// properties.
void addField(SourceDocument& source, std::uint8_t kind, const Bytes& marks) {
    source.data.tables.blobs.push_back(std::make_shared<Bytes>(Bytes{1, 2, 3}));
    source.data.tables.objects.push_back(std::make_shared<const EmbeddedObject>());
    const Bytes special = sprm8(sprm::CFSpec, 1);
    source.run(u"\u0013", special + marks);
    source.run(u" x ");
    source.run(u"\u0014", special + marks);
    source.run(u"\u0001", special + sprm32(sprm::CPicLocation, 0));
    source.run(u"\u0015", special + marks);
    source.run(u"\r");
    source.endParagraph();
    source.main.fields[0].data = kind;
}

TEST(ImportedPictures, NoMarkOfAFieldLeadsToOne) {
    const Bytes picture = sprm32(sprm::CPicLocation, 0);
    SourceDocument source;
    addField(source, 88, picture); // HYPERLINK
    ImportTarget target;
    target.import(source.document());
    ASSERT_EQ(target.last.text->text, u"\u0013 x \u0014\u0001\u0015\r");
    ASSERT_EQ(target.last.text->characters.size(), 6U);
    EXPECT_EQ(operand16(target.runList(3), sprm::CPicLocation), 0);
    for (const std::size_t mark : {0U, 2U, 4U}) {
        EXPECT_FALSE(findSprm(target.runList(mark), sprm::CPicLocation)) << mark;
        EXPECT_EQ(operand8(target.runList(mark), sprm::CFSpec), 1) << mark;
    }
}

TEST(ImportedObjects, TheSeparatorOfAFieldAloneLeadsToOne) {
    const Bytes object = sprm32(sprm::CObjLocation, 0) + sprm8(sprm::CFObj, 1);
    SourceDocument source;
    addField(source, 58, object); // EMBED
    ImportTarget target;
    target.import(source.document());
    ASSERT_EQ(target.last.text->characters.size(), 6U);
    EXPECT_FALSE(findSprm(target.runList(0), sprm::CObjLocation));
    EXPECT_EQ(operand16(target.runList(2), sprm::CObjLocation), 0);
    EXPECT_FALSE(findSprm(target.runList(4), sprm::CObjLocation));
}

TEST(ImportedRevisions, AuthorsMergeByName) {
    SourceDocument source;
    source.data.tables.authors = {u"甲", u"乙"};
    source.paragraph(u"x", 0, {}, sprm8(sprm::CFRMarkIns, 1) + sprm16(sprm::CIbstRMark, 1));
    ImportTarget target;
    target.tables.authors = {u"丙", u"乙"};
    target.import(source.document());
    EXPECT_EQ(operand16(target.runList(), sprm::CIbstRMark), 1);
    EXPECT_EQ(operand8(target.runList(), sprm::CFRMarkIns), 1);
    EXPECT_EQ(target.tables.authors.size(), 2U);
}

TEST(ImportedRevisions, ARevisionOfNobodyStaysOne) {
    SourceDocument source;
    source.paragraph(u"x", 0, {}, sprm16(sprm::CIbstRMark, 9));
    ImportTarget target;
    target.import(source.document());
    EXPECT_EQ(target.tables.authors.at(operand16(target.runList(), sprm::CIbstRMark)), u"Unknown");
}

// --- sections, bookmarks, fields ------------------------------------------------------------

TEST(ImportedSections, TheyTravelWithTheirProperties) {
    SourceDocument source;
    source.paragraph(u"a\u000C");
    source.paragraph(u"b");
    source.main.paragraphs.clear();
    source.main.paragraphs = {{3, 0, PropertyListId::empty}, {2, 0, PropertyListId::empty}};
    source.data.sections = {{3, source.list(sprm16(sprm::SXaPage, 100))},
                            {2, source.list(sprm16(sprm::SXaPage, 200))}};
    ImportTarget target;
    target.import(source.document());
    ASSERT_EQ(target.last.sections.size(), 2U);
    EXPECT_EQ(target.last.sections[0].length, 3U);
    EXPECT_EQ(target.last.sections[1].length, 2U);
    EXPECT_EQ(operand16(target.tables.lists[target.last.sections[0].properties], sprm::SXaPage),
              100);
}

TEST(ImportedSections, TheyShrinkByWhatIsTakenOut) {
    SourceDocument source;
    source.paragraph(u"a\u0002", 0, {}, sprm8(sprm::CFSpec, 1));
    source.paragraph(u"b");
    source.data.sections = {{3, PropertyListId::empty}, {2, PropertyListId::empty}};
    ImportTarget target;
    target.import(source.document());
    EXPECT_EQ(target.last.sections[0].length, 2U);
    EXPECT_EQ(target.last.sections[1].length, 2U);
}

TEST(ImportedSections, InnerOnesComeWithTheirHeadersAndTheLastOnesStayBehind) {
    SourceDocument source;
    source.paragraph(u"a\u000C");
    source.paragraph(u"b");
    source.main.paragraphs = {{3, 0, PropertyListId::empty}, {2, 0, PropertyListId::empty}};
    source.data.sections = {{3, PropertyListId::empty}, {2, PropertyListId::empty}};
    source.data.headers.resize(2);
    source.data.headers[0][1] = slicesOf(textBox(u"inner\r"));
    source.data.headers[1][1] = slicesOf(textBox(u"last\r"));
    ImportTarget target;
    target.import(source.document());
    ASSERT_EQ(target.last.headers.size(), 2U);
    EXPECT_EQ(joined(target.last.headers[0][1])->text, u"inner\r");
    EXPECT_TRUE(target.last.headers[1][1].empty());
    EXPECT_THAT(target.last.leftOut, ElementsAre(u"文件最后一节的页眉页脚未能带入"));
}

TEST(ImportedBookmarks, ATakenNameGetsANewOneAndReferencesFollow) {
    SourceDocument source;
    source.paragraph(u"\u0013 REF bm \\h \u0014x\u0015\u0013PAGEREF \"bm\"\u0014y\u0015"
                     u"\u0013HYPERLINK \\l \"bm\"\u0014z\u0015\u0013TOC \\o \\b BM\u0014t\u0015");
    source.data.bookmarks = {{u"bm", 0, 3, 0}};
    ImportTarget target;
    target.names.add(u"bm");
    target.import(source.document());
    EXPECT_EQ(target.last.bookmarks.at(0).name, u"bm_2");
    EXPECT_EQ(target.last.text->text,
              u"\u0013 REF bm_2 \\h \u0014x\u0015\u0013PAGEREF \"bm_2\"\u0014y\u0015"
              u"\u0013HYPERLINK \\l \"bm_2\"\u0014z\u0015\u0013TOC \\o \\b bm_2\u0014t\u0015\r");
    for (const FieldMark& mark : target.last.text->fields) {
        EXPECT_EQ(target.last.text->text.at(mark.at), mark.character);
    }
}

TEST(ImportedBookmarks, AFreeNameStaysAndIsTakenFromThenOn) {
    SourceDocument source;
    source.paragraph(u"text");
    source.data.bookmarks = {{u"_Toc1", 1, 3, 0}};
    ImportTarget target;
    target.import(source.document());
    EXPECT_EQ(target.last.bookmarks.at(0).name, u"_Toc1");
    target.import(source.document());
    EXPECT_EQ(target.last.bookmarks.at(0).name, u"_Toc1_2");
}

TEST(ImportedBookmarks, OtherWordsOfAFieldAreNotTakenForNames) {
    SourceDocument source;
    source.paragraph(u"\u0013SEQ bm\u0014x\u0015\u0013HYPERLINK \"bm\"\u0014y\u0015");
    const std::u16string before = source.main.text;
    source.data.bookmarks = {{u"bm", 0, 3, 0}};
    ImportTarget target;
    target.names.add(u"bm");
    target.import(source.document());
    EXPECT_EQ(target.last.text->text, before);
}

TEST(ImportedBookmarks, DataThatRepeatsAnOldNameGoes) {
    SourceDocument source;
    source.data.tables.blobs.push_back(std::make_shared<Bytes>(Bytes{1}));
    source.run(u"\u0013HYPERLINK \\l \"bm\" ");
    source.run(u"\u0001",
               sprm32(sprm::CPicLocation, 0) + sprm8(sprm::CFData, 1) + sprm8(sprm::CFSpec, 1));
    source.run(u"\u0014x\u0015\r");
    source.endParagraph();
    source.data.bookmarks = {{u"bm", 0, 3, 0}};
    ImportTarget target;
    target.import(source.document());
    EXPECT_NE(target.last.text->text.find(u'\u0001'), std::u16string::npos);
    target.import(source.document());
    EXPECT_EQ(target.last.text->text, u"\u0013HYPERLINK \\l \"bm_2\" \u0014x\u0015\r");
}

TEST(ImportedBookmarks, PositionsFollowTheText) {
    SourceDocument source;
    source.paragraph(u"a\u0002bc", 0, {}, sprm8(sprm::CFSpec, 1));
    source.data.bookmarks = {{u"bm", 2, 4, 0}};
    ImportTarget target;
    target.import(source.document());
    EXPECT_EQ(target.last.bookmarks.at(0).start, 1U);
    EXPECT_EQ(target.last.bookmarks.at(0).end, 3U);
}

TEST(ImportedFields, TheirCharactersAreSpecialEvenWhereTheSourceForgotTo) {
    SourceDocument source;
    source.run(u"a\u0013PAGE");
    source.run(u"\u0015", sprm8(sprm::CFSpec, 1));
    source.run(u"\r");
    source.endParagraph();
    ImportTarget target;
    target.import(source.document());
    ASSERT_EQ(target.last.text->characters.size(), 5U);
    EXPECT_EQ(operand8(target.runList(0), sprm::CFSpec), -1);
    EXPECT_EQ(operand8(target.runList(1), sprm::CFSpec), 1);
    EXPECT_EQ(target.last.text->characters[1].length, 1U);
    EXPECT_EQ(operand8(target.runList(3), sprm::CFSpec), 1);
}

TEST(ImportedFields, ATableOfContentsTravelsAsItIs) {
    SourceDocument source;
    source.paragraph(u"\u0013 TOC \\o \"1-3\" \\h \u0014目录\u0015");
    source.main.fields[0].data = 13;
    ImportTarget target;
    target.import(source.document());
    EXPECT_EQ(target.last.text->text, source.main.text);
    EXPECT_EQ(target.last.text->fields, source.main.fields);
}

// --- drawings -------------------------------------------------------------------------------

// A document whose one drawing names one of everything, and a target that holds some already.
class ImportedDrawings : public testing::Test {
protected:
    ImportedDrawings() {
        using Kind = ShapeReference::Kind;
        source.paragraph(u"a\u0008b", 0, {}, sprm8(sprm::CFSpec, 1));
        DocumentTables& tables = source.data.tables;
        tables.shapes = 2;
        tables.shapePictures = {std::make_shared<Bytes>(Bytes{1}),
                                std::make_shared<Bytes>(Bytes{2})};
        tables.objects = {std::make_shared<EmbeddedObject>()};
        const auto text = std::make_shared<Story>(
            textBox(u"x\u0002y\r", source.list(sprm8(sprm::CFSpec, 1) + sprm8(sprm::CFBold, 1))));
        tables.shapeTexts = {{text, {2}}};
        tables.drawings = {{Bytes(22, 7),
                            Bytes(100, 9),
                            {{0, Kind::shape, 0, 0},
                             {4, Kind::otherShape, 1, 0},
                             {8, Kind::picture, 1, 0},
                             {12, Kind::text, 0, 3},
                             {16, Kind::object, 0, 0},
                             {20, Kind::anchor, 0, 0}}}};
        source.main.anchors = {{1, AnchorKind::drawing, 0}};
        target.tables.shapes = 10;
        target.tables.shapePictures = {std::make_shared<Bytes>()};
        target.tables.objects = {std::make_shared<EmbeddedObject>()};
        target.tables.shapeTexts.resize(4);
        target.tables.drawings.resize(6);
    }

    SourceDocument source;
    ImportTarget target;
};

TEST_F(ImportedDrawings, ADrawingComesWithAllThatItNamesInTermsOfTheTarget) {
    target.import(source.document());
    EXPECT_EQ(target.last.text->text, u"a\u0008b\r");
    const std::vector<Anchor> anchors{{1, AnchorKind::drawing, 6}};
    EXPECT_EQ(target.last.text->anchors, anchors);
    const Drawing& drawing = target.tables.drawings.at(6);
    EXPECT_EQ(drawing.place, Bytes(22, 7));
    EXPECT_EQ(drawing.records, Bytes(100, 9));
    std::vector<std::uint32_t> indexes;
    for (const ShapeReference& reference : drawing.references) {
        indexes.push_back(reference.index);
    }
    EXPECT_EQ(indexes, (std::vector<std::uint32_t>{10, 11, 1, 4, 1, 0}));
    EXPECT_EQ(drawing.references[3].link, 3);
    EXPECT_EQ(target.tables.shapes, 12U);
    EXPECT_EQ(*target.tables.shapePictures.at(1), Bytes{2});
    EXPECT_TRUE(target.last.leftOut.empty());
}

// What a store holds is an entry whose digest stands in its bytes 10 to 25.
DataBlob pictureWithDigest(unsigned number) {
    Bytes entry(26);
    entry[10] = static_cast<std::uint8_t>(number);
    entry[11] = static_cast<std::uint8_t>(number >> 8);
    return std::make_shared<const Bytes>(std::move(entry));
}

TEST_F(ImportedDrawings, PicturesBeyondWhatADocumentHoldsAreCountedAndEqualOnesComeAlong) {
    auto& pictures = target.tables.shapePictures;
    pictures.clear();
    for (unsigned i = 0; i < 4094; ++i) {
        pictures.push_back(pictureWithDigest(i));
    }
    source.data.tables.shapePictures = {nullptr, pictureWithDigest(5000)};
    target.import(source.document());
    EXPECT_EQ(pictures.size(), 4095U);
    EXPECT_TRUE(target.last.leftOut.empty());

    source.data.tables.shapePictures = {nullptr, pictureWithDigest(5001)};
    target.import(source.document());
    EXPECT_EQ(pictures.size(), 4095U);
    const auto isPicture = [](const ShapeReference& reference) {
        return reference.kind == ShapeReference::Kind::picture;
    };
    const auto& lost = target.tables.drawings.back().references;
    EXPECT_TRUE(std::none_of(lost.begin(), lost.end(), isPicture));
    EXPECT_THAT(target.last.leftOut, ElementsAre(u"图形的图片 1 张未能带入，一个文档最多 4095 张"));

    source.data.tables.shapePictures = {nullptr, pictureWithDigest(7)};
    target.import(source.document());
    const auto& there = target.tables.drawings.back().references;
    EXPECT_TRUE(std::any_of(there.begin(), there.end(), isPicture));
    EXPECT_TRUE(target.last.leftOut.empty());
}

TEST_F(ImportedDrawings, TheTextOfAShapeIsImportedLikeAnyOther) {
    target.import(source.document());
    const ShapeText& text = target.tables.shapeTexts.at(4);
    EXPECT_EQ(text.text->text, u"xy\r"); // a note cannot stand there
    EXPECT_EQ(text.breaks, std::vector<Cp>{1});
    EXPECT_EQ(operand8(target.tables.lists[text.text->characters.at(0).properties], sprm::CFBold),
              1);
}

TEST_F(ImportedDrawings, ASecondInsertionBringsDrawingsOfItsOwn) {
    target.import(source.document());
    target.import(source.document());
    EXPECT_EQ(target.tables.drawings.size(), 8U);
    EXPECT_EQ(target.tables.drawings[7].references[0].index, 12U);
    EXPECT_EQ(target.tables.shapes, 14U);
}

TEST_F(ImportedDrawings, DrawingsOfASecondInsertionLieOverThoseOfTheFirst) {
    source.data.tables.drawings[0].order = 4;
    source.data.tables.nextOrder = 7; // two more lie over it, in a header that stays behind
    target.tables.nextOrder = 3;
    target.import(source.document());
    target.import(source.document());
    EXPECT_EQ(target.tables.drawings[6].order, 7U);
    EXPECT_EQ(target.tables.drawings[7].order, 14U);
    EXPECT_EQ(target.tables.nextOrder, 17U);
}

TEST_F(ImportedDrawings, TheCharacterOfADrawingIsSpecial) {
    source.main.characters = {{4, PropertyListId::empty}};
    target.import(source.document());
    EXPECT_EQ(target.last.text->text, u"a\u0008b\r");
    EXPECT_EQ(operand8(target.runList(1), sprm::CFSpec), 1);
}

TEST_F(ImportedDrawings, DrawingsOfInnerHeadersCome) {
    source.main.anchors.clear();
    source.main.text[1] = u'\f';
    source.main.paragraphs = {{2, 0, PropertyListId::empty}, {2, 0, PropertyListId::empty}};
    source.data.sections = {{2, PropertyListId::empty}, {2, PropertyListId::empty}};
    Story header = textBox(u"h\u0008\r", source.list(sprm8(sprm::CFSpec, 1)));
    header.anchors = {{1, AnchorKind::drawing, 0}};
    source.data.headers.resize(2);
    source.data.headers[0][1] = slicesOf(header);
    target.import(source.document());
    ASSERT_EQ(target.last.headers.size(), 2U);
    const std::vector<Anchor> anchors{{1, AnchorKind::drawing, 6}};
    EXPECT_EQ(anchorsOf(target.last.headers[0][1]), anchors);
}

// Each code is looked through once, however many others lie in it.
TEST(ImportedReferences, FieldsInEachOtherAreRenamedInOneGo) {
    constexpr std::size_t depth = 30'000;
    SourceDocument source;
    source.run(std::u16string(depth, u'\u0013') + u"REF bm" + std::u16string(depth, u'\u0015'));
    source.run(u"\r");
    source.endParagraph();
    source.data.bookmarks = {{u"bm", 0, 1, 0}};
    ImportTarget target;
    target.names.add(u"bm");
    target.import(source.document());
    EXPECT_EQ(target.last.text->text, std::u16string(depth, u'\u0013') + u"REF bm_2" +
                                          std::u16string(depth, u'\u0015') + u"\r");
}

// --- what does not come along ---------------------------------------------------------------

// The engine leaves room for the bookmarks of the contents.
TEST(LeftOut, BookmarksBeyondWhatADocumentHoldsAreCountedAndHiddenOnesThatNothingNamesGoFirst) {
    SourceDocument source;
    source.paragraph(u"\u0013REF _Ref3\u0014x\u0015");
    source.data.bookmarks = {
        {u"_Ref1", 0, 1, 0}, {u"_Ref2", 0, 1, 0}, {u"_Ref3", 0, 1, 0}, {u"页", 0, 1, 0}};
    ImportTarget target;
    for (std::int64_t i = 0; i < 13'997; ++i) {
        target.names.add(u"m" + digits(i));
    }
    const auto& result = target.import(source.document());
    ASSERT_EQ(result.bookmarks.size(), 2U);
    EXPECT_EQ(result.bookmarks[0].name, u"_Ref3");
    EXPECT_EQ(result.bookmarks[1].name, u"页");
    EXPECT_THAT(result.leftOut,
                ElementsAre(u"书签 2 个未能带入，一个文档最多 16380 个书签，其中 2380 个留给目录"));
    EXPECT_TRUE(target.import(source.document()).bookmarks.empty());
}

TEST(LeftOut, ReferencesToNotesCommentsAndDrawingsAreTakenOutAndNamed) {
    SourceDocument source;
    source.paragraph(u"a\u0002b\u0005c\u0008d", 0, {}, sprm8(sprm::CFSpec, 1));
    source.data.unread.sideStories = {3, 1, 2, 0};
    source.data.unread.textBoxes = 1;
    ImportTarget target;
    target.import(source.document());
    EXPECT_EQ(target.last.text->text, u"abcd\r");
    EXPECT_THAT(target.last.leftOut,
                ElementsAre(u"脚注 3 个未能带入", u"尾注 1 个未能带入", u"批注 2 条未能带入",
                            u"文本框 1 个未能带入", u"浮动图形 1 个未能带入"));
}

TEST(LeftOut, AnOpenedDocumentLosesNeitherItsHeadersNorItsPage) {
    SourceDocument source;
    source.paragraph(u"a\u0008");
    source.data.sections = {{3, source.list(sprm8(sprm::SBOrientation, 2))}};
    source.data.headers.resize(1);
    source.data.headers[0][1] = slicesOf(textBox(u"header\r"));
    EXPECT_THAT(leftOutOfOpened(source.document(), {}), ElementsAre());
    source.data.unread.remarks = {u"remark"};
    source.data.unread.kinds.insert(UnreadKind::macros);
    source.data.unread.textBoxes = 1; // that no shape shows
    EXPECT_THAT(leftOutOfOpened(source.document(), {}),
                ElementsAre(u"remark", u"文本框 1 个未能带入", u"宏未能带入"));
}

TEST(LeftOut, ToolbarsAndDivisionsOfWebPagesAreNamedWhetherInsertedOrOpened) {
    SourceDocument source;
    source.paragraph(u"a", 0, sprm32(sprm::PIpgp, 3));
    source.data.unread.kinds.insert(UnreadKind::toolbars);
    source.data.unread.smartTags = 2;
    source.data.unread.information = true; // of an opened document only
    ImportTarget target;
    target.import(source.document());
    EXPECT_TRUE(target.paragraphList().empty());
    EXPECT_THAT(target.last.leftOut,
                ElementsAre(u"自定义的工具栏或快捷键未能带入", u"网页分区的边距和边框未能带入"));
    std::vector<std::u16string> lost;
    openedDocument(source.take(), &lost);
    EXPECT_THAT(lost,
                ElementsAre(u"智能标记 2 个未能带入，其文字不变", u"自定义的工具栏或快捷键未能带入",
                            u"网页分区的边距和边框未能带入",
                            u"文档属性（标题、作者等）已损坏，未能带入"));
}

TEST(LeftOut, ATableInADivisionOfAWebPageNamesNoneThatIsNotThere) {
    SourceDocument source;
    source.paragraph(u"a", 0, sprm32(sprm::TIpgp, 3));
    ImportTarget target;
    target.import(source.document());
    EXPECT_TRUE(target.paragraphList().empty());
    EXPECT_THAT(target.last.leftOut, ElementsAre(u"网页分区的边距和边框未能带入"));
}

TEST(LeftOut, AParagraphInNoDivisionLosesNothing) {
    SourceDocument source;
    source.paragraph(u"a", 0, sprm32(sprm::PIpgp, 0));
    ImportTarget target;
    EXPECT_THAT(target.import(source.document()).leftOut, IsEmpty());
}

TEST(LeftOut, ATurnedOrDividedPageAtTheEndIsNamed) {
    for (const Bytes& page : {sprm8(sprm::SBOrientation, 2), sprm16(sprm::SCcolumns, 1)}) {
        SourceDocument source;
        source.paragraph(u"a");
        source.data.sections = {{2, source.list(page)}};
        ImportTarget target;
        target.import(source.document());
        EXPECT_THAT(target.last.leftOut,
                    ElementsAre(u"文件最后一节的横向页面或分栏未能带入，按方案的页面排版"));
    }
}

TEST(LeftOut, ATurnedPageInFrontOfTheLastSectionIsNotNamed) {
    SourceDocument source;
    source.paragraph(u"a\fb");
    source.data.sections = {{2, source.list(sprm8(sprm::SBOrientation, 2))}, {2, {}}};
    ImportTarget target;
    EXPECT_THAT(target.import(source.document()).leftOut, IsEmpty());
}

TEST(LeftOut, TheSameCharactersWithoutMeaningStay) {
    SourceDocument source;
    source.paragraph(u"a\u0002b");
    ImportTarget target;
    target.import(source.document());
    EXPECT_EQ(target.last.text->text, u"a\u0002b\r");
}

TEST(ImportedObjects, AnObjectTravelsWithItsField) {
    SourceDocument source;
    source.data.tables.objects.push_back(std::make_shared<EmbeddedObject>());
    source.run(u"\u0013 EMBED Equation.3 ");
    source.run(u"\u0014",
               sprm32(sprm::CObjLocation, 0) + sprm8(sprm::CFOle2, 1) + sprm8(sprm::CFSpec, 1));
    source.run(u"x\u0015\r");
    source.endParagraph();
    ImportTarget target;
    target.tables.objects.push_back(std::make_shared<EmbeddedObject>());
    target.import(source.document());
    EXPECT_EQ(target.last.text->text, source.main.text);
    EXPECT_EQ(operand16(target.runList(2), sprm::CObjLocation), 1);
    EXPECT_EQ(operand8(target.runList(2), sprm::CFOle2), 1);
    EXPECT_EQ(target.tables.objects.at(1), source.data.tables.objects.at(0));
    EXPECT_THAT(target.last.leftOut, IsEmpty());
}

TEST(LeftOut, AnObjectWithoutDataLeavesItsPictureInPlace) {
    SourceDocument source;
    source.data.tables.blobs.push_back(std::make_shared<Bytes>(Bytes{1}));
    source.run(u"a\u0013 EMBED Equation.3 ");
    source.run(u"\u0014", sprm32(sprm::CObjLocation, 123456) + sprm8(sprm::CFOle2, 1) +
                              sprm8(sprm::CFObj, 1) + sprm8(sprm::CFSpec, 1));
    source.run(u"\u0001", sprm32(sprm::CPicLocation, 0) + sprm8(sprm::CFSpec, 1));
    source.run(u"\u0015b\r");
    source.endParagraph();
    ImportTarget target;
    target.import(source.document());
    EXPECT_EQ(target.last.text->text, u"a\u0001b\r");
    EXPECT_TRUE(target.last.text->fields.empty());
    EXPECT_EQ(operand16(target.runList(1), sprm::CPicLocation), 0);
    EXPECT_THAT(target.last.leftOut, ElementsAre(u"嵌入对象 1 个没有数据，只带入了其图片"));
}

// --- what is told of other names and numbers --------------------------------------------------

TEST(Changed, NothingIsToldOfADocumentThatKeepsItsNamesAndHasNoNumbersToChange) {
    SourceDocument source;
    source.paragraph(u"1", 0, sprm16(sprm::PIlfo, source.addList(7, 0)));
    source.data.bookmarks = {{u"图", 0, 1, 0}, {u"_Toc1", 0, 1, 0}};
    ImportTarget target;
    EXPECT_THAT(target.import(source.document()).changed, IsEmpty())
        << "a list keeps its numbers, as it is one of its own";
}

TEST(Changed, BookmarksThatGotAnotherNameAreCountedWithAnExampleAndHiddenOnesAreNot) {
    SourceDocument source;
    source.paragraph(u"text");
    source.data.bookmarks = {{u"图", 0, 1, 0}, {u"表", 1, 2, 0}, {u"_Toc1", 0, 3, 0}};
    ImportTarget target;
    for (const char16_t* taken : {u"图", u"表", u"_Toc1"}) {
        target.names.add(taken);
    }
    EXPECT_THAT(target.import(source.document()).changed,
                ElementsAre(u"书签 2 个改了名（如“图”改为“图_2”），"
                            u"因为别的文档已有同名的书签，引用它们的地方已一并更改"));
}

TEST(Changed, AStyleThatCameUnderAnotherNameIsTold) {
    SourceDocument source;
    const StyleIndex grid = source.addStyle(styleOf(StyleKind::table, u"Table Grid", 154, 11));
    source.style(grid).table = source.list(sprm16(0x9602, 100));
    source.paragraph(u"x", 0, sprm8(sprm::PFTtp, 1) + sprm16(sprm::TIstd, grid));
    ImportTarget target;
    target.tables.styles.styles.push_back(styleOf(StyleKind::table, u"Table Grid", 154, 11));
    EXPECT_THAT(target.import(source.document()).changed,
                ElementsAre(u"样式 1 种改了名（如“Table Grid”改为“Table Grid_2”），"
                            u"因为方案中已有同名而定义不同的样式"));
    EXPECT_THAT(target.import(source.document()).changed, IsEmpty()) << "it is there by now";
}

TEST(Changed, NotesThatTheProgramNumbersAreToldAndThoseWithMarksOfTheirOwnAreNot) {
    SourceDocument source;
    source.run(u"a");
    source.run(u"\u0002\u0002\u0002", sprm8(sprm::CFSpec, 1));
    source.run(u"\r");
    source.endParagraph();
    const auto note = std::make_shared<const Story>(textBox(u"note\r"));
    source.data.tables.sideStories = {
        {note, true, {}, {}}, {note, false, {}, {}}, {note, true, {}, {}}};
    source.main.anchors = {
        {1, AnchorKind::footnote, 0}, {2, AnchorKind::footnote, 1}, {3, AnchorKind::endnote, 2}};
    ImportTarget target;
    EXPECT_THAT(target.import(source.document()).changed,
                ElementsAre(u"脚注 1 个与全文的脚注连续编号，编号可能与原文件不同",
                            u"尾注 1 个与全文的尾注连续编号，编号可能与原文件不同"));
}

TEST(Changed, AFirstPageNumberThatDoesNotCountAnyMoreIsTold) {
    SourceDocument source;
    source.paragraph(u"a\u000C");
    source.paragraph(u"b");
    source.main.paragraphs = {{3, 0, PropertyListId::empty}, {2, 0, PropertyListId::empty}};
    const PropertyListId anew = source.list(sprm8(sprm::SFPgnRestart, 1));
    source.data.sections = {{3, anew}, {2, PropertyListId::empty}};
    ImportTarget target;
    EXPECT_THAT(target.import(source.document()).changed,
                ElementsAre(u"文件自定的起始页码没有采用，页码接着前面的内容"));
    source.data.headers.resize(2);
    source.data.headers[0][1] = slicesOf(textBox(u"inner\r"));
    EXPECT_THAT(target.import(source.document()).changed, IsEmpty())
        << "an inner section with a header of its own keeps it";
    source.data.sections = {{3, PropertyListId::empty}, {2, anew}};
    EXPECT_THAT(target.import(source.document()).changed.size(), 1U) << "the last one never does";
}

TEST(Changed, NumbersOfASectionThatShowsTheHeaderOfAnEarlierOneCount) {
    SourceDocument source;
    source.paragraph(u"a\u000C");
    source.paragraph(u"b\u000C");
    source.paragraph(u"c");
    source.main.paragraphs = {{3, 0, {}}, {3, 0, {}}, {2, 0, {}}};
    const PropertyListId anew = source.list(sprm8(sprm::SFPgnRestart, 1) + sprm8(sprm::SNfcPgn, 2));
    source.data.sections = {{3, {}}, {3, anew}, {2, {}}};
    source.data.headers.resize(3);
    source.data.headers[0][1] = slicesOf(textBox(u"inner\r"));
    ImportTarget target;
    EXPECT_THAT(target.import(source.document()).changed, IsEmpty());
    source.data.headers[0][1] = {};
    EXPECT_THAT(target.import(source.document()).changed,
                ElementsAre(u"文件自定的起始页码没有采用，页码接着前面的内容",
                            u"文件自定的页码形式没有采用，页码与前面的内容形式相同"));
}

TEST(LeftOut, HeadersAreNamedOnlyWhenTheyHoldText) {
    SourceDocument source;
    source.paragraph(u"x");
    source.data.headers.resize(1);
    source.data.headers[0][1] = slicesOf(textBox(u" \r"));
    ImportTarget target;
    EXPECT_THAT(target.import(source.document()).leftOut, IsEmpty());
    source.data.headers[0][1] = slicesOf(textBox(u"第一章\r"));
    EXPECT_THAT(target.import(source.document()).leftOut,
                ElementsAre(u"文件自带的页眉页脚未能带入"));
}

TEST(LeftOut, MacrosAndFormProtectionAreNamedBehindTheReadersRemarks) {
    SourceDocument source;
    source.paragraph(u"x");
    source.data.unread.kinds.insert(UnreadKind::macros);
    writeDop(source.data.settings, dop::protectedForForms, 1);
    source.data.unread.remarks = {u"读时的话"};
    ImportTarget target;
    target.import(source.document());
    EXPECT_THAT(target.last.leftOut, ElementsAre(u"读时的话", u"宏未能带入", u"窗体保护未能带入"));
}
