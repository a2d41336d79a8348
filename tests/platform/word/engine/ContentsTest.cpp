#include "platform/word/engine/ContentsFixture.h"

#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/text/Fields.h"
#include "platform/word/engine/ContentsField.h"
#include "platform/word/engine/SectionProperties.h"
#include "platform/word/engine/StoryBuilder.h"
#include "platform/word/engine/StyleLookup.h"
#include "support/Errors.h"

#include <algorithm>
#include <string>
#include <vector>

namespace qvnd::test {

namespace {

using namespace qvnd::word;

Story withPageNumbers(Story contents, const PageOfBookmark& pageOf) {
    pageNumberEdits(contents, pageOf).applyTo(contents);
    return contents;
}

} // namespace

TEST_F(ContentsTest, StandInParagraphsOfTheirOwnBelowTheText) {
    twoHeadings();
    addAt(2);
    const auto field = contentsFields(story()).at(0);
    EXPECT_EQ(field.start, 3U);
    EXPECT_EQ(story().paragraphStart(field.start), field.start);
    EXPECT_EQ(story().text(field.end, story().size()), u"\r\r第一章\r第一节\r\r");
    EXPECT_EQ(styleAt(field.start), u"目录 1");
    EXPECT_EQ(styleAt(field.end), u"目录 2");
    EXPECT_EQ(selection().Range().Start(), static_cast<int>(field.end + 1));
}

TEST_F(ContentsTest, DoNotContinueTheFormattingOfTheTextAboveThem) {
    selection().Font().setBold(true);
    type(u"目录");
    addAt(2);
    EXPECT_FALSE(lookAt(1).empty());
    EXPECT_TRUE(lookAt(2).empty()); // the mark
}

TEST_F(ContentsTest, ListHeadingsWithTheirPages) {
    twoHeadings();
    addAt(2);
    pages.numbers = {3, 12};
    document().SaveAs(folder.path() / "a.doc");
    EXPECT_EQ(shown(), u"第一章>3|第一节>12|");
    EXPECT_EQ(pages.asksFor, (std::vector<std::u16string>{u"第一章", u"第一节"}));
}

TEST_F(ContentsTest, AllOfADocumentGetTheirPages) {
    twoHeadings();
    addAt(2);
    addAt(static_cast<int>(story().size()) - 1);
    pages.numbers = {100, 2000};
    document().SaveAs(folder.path() / "a.doc");
    ASSERT_EQ(contentsFields(story()).size(), 2U);
    EXPECT_EQ(shown(0), u"第一章>100|第一节>2000|");
    EXPECT_EQ(shown(1), u"第一章>100|第一节>2000|");
}

TEST_F(ContentsTest, StandInThePlaceOfTheTextThatTheyAreGiven) {
    type(u"目录");
    selection().TypeParagraph();
    type(u"占位");
    selection().TypeParagraph();
    heading(u"第一章", u'1');
    document().tablesOfContents().Add(*document().Range(3, 5), {});
    EXPECT_EQ(text().find(u"占位"), std::u16string::npos);
    EXPECT_EQ(contentsFields(story()).at(0).start, 3U);
    EXPECT_EQ(shown(), u"第一章>1|");
}

TEST_F(ContentsTest, AreLeftAsTheyAreWhenNoPagesAreKnown) {
    twoHeadings();
    addAt(2);
    document().SaveAs(folder.path() / "a.doc");
    EXPECT_EQ(shown(), u"第一章>1|第一节>1|");
}

TEST_F(ContentsTest, NobodyIsAskedForPagesWithoutAContents) {
    twoHeadings();
    document().SaveAs(folder.path() / "a.doc");
    EXPECT_EQ(pages.calls, 0);
}

TEST_F(ContentsTest, SelectionStaysAtItsTextWhenPageNumbersGrow) {
    twoHeadings();
    addAt(2);
    const auto behind = selection().Range().Start();
    pages.numbers = {100, 200};
    document().SaveAs(folder.path() / "a.doc");
    EXPECT_EQ(selection().Range().Start(), behind + 4);
    EXPECT_EQ(story().at(static_cast<Cp>(behind + 4)), u'\r');
}

TEST_F(ContentsTest, GoDownToTheLowestLevelAskedFor) {
    TableOfContentsOptions options;
    options.LowerHeadingLevel = 1;
    expectContents(options, u"第一章>1|", u" TOC \\o \"1-1\" \\h \\z ");
}

TEST_F(ContentsTest, WithoutRightAlignmentABlankStandsBeforeTheNumber) {
    TableOfContentsOptions options;
    options.RightAlignPageNumbers = false;
    expectContents(options, u"第一章 1|第一节 1|", u" TOC \\o \"1-3\" \\p \" \" \\h \\z ");
}

TEST_F(ContentsTest, WithoutPageNumbersOnlyHeadingsAreListed) {
    TableOfContentsOptions options;
    options.IncludePageNumbers = false;
    expectContents(options, u"第一章|第一节|", u" TOC \\o \"1-3\" \\n \\h \\z ");
}

TEST_F(ContentsTest, AddedStylesAreListedUnderTheirLevel) {
    twoHeadings();
    TableOfContentsOptions options;
    options.UseHeadingStyles = false;
    options.AddedStyles = u"标题 2,1";
    addAt(2, options);
    EXPECT_EQ(shown(), u"第一节>1|");
    EXPECT_EQ(styleAt(contentsFields(story()).at(0).start), u"目录 1");
    EXPECT_EQ(instruction(), u" TOC \\t \"标题 2,1\" \\h \\z ");
}

TEST_F(ContentsTest, EmptyHeadingsAreNoEntries) {
    twoHeadings();
    heading(u"", u'1');
    heading(u"\t", u'1');
    addAt(2);
    EXPECT_EQ(shown(), u"第一章>1|第一节>1|");
}

TEST_F(ContentsTest, TextThatItsStyleHidesIsNotListed) {
    twoHeadings();
    DocumentTables& tables = document().read().tables();
    const auto number = styleNamed(tables.styles, u"标题 2");
    auto& style = *tables.styles.styles.at(number.value());
    style.character =
        tables.lists.intern(withSprm8(tables.lists[style.character], sprm::CFVanish, 1));
    addAt(2);
    EXPECT_EQ(shown(), u"第一章>1|");
}

TEST_F(ContentsTest, SayThatThereIsNothingToList) {
    type(u"目录");
    selection().TypeParagraph();
    addAt(2);
    EXPECT_EQ(shown(), u"未找到目录项。|");
}

TEST_F(ContentsTest, EntriesLinkToBookmarksOnTheHeadings) {
    twoHeadings();
    addAt(2);
    const auto& bookmarks = document().read().bookmarks();
    ASSERT_EQ(bookmarks.size(), 2U);
    EXPECT_TRUE(bookmarks[0].name.starts_with(u"_Toc"));
    EXPECT_NE(bookmarks[0].name, bookmarks[1].name);
    EXPECT_EQ(story().text(bookmarks[0].start, bookmarks[0].end), u"第一章");
    EXPECT_EQ(story().text(bookmarks[1].start, bookmarks[1].end), u"第一节");
    EXPECT_NE(text().find(u"HYPERLINK \\l \"" + bookmarks[0].name), std::u16string::npos);
    EXPECT_NE(text().find(u"PAGEREF " + bookmarks[1].name), std::u16string::npos);
}

TEST_F(ContentsTest, FieldsAreProperlyNested) {
    twoHeadings();
    addAt(2);
    int depth = 0;
    int deepest = 0;
    story().forEachFieldMark([&](Cp at, const FieldMark& mark) {
        EXPECT_EQ(story().at(at), mark.character);
        depth += mark.character == 0x13 ? 1 : mark.character == 0x15 ? -1 : 0;
        deepest = std::max(deepest, depth);
        if (mark.character == 0x15) {
            EXPECT_EQ((mark.data & field::nested) != 0, depth > 0);
        }
    });
    EXPECT_EQ(depth, 0);
    EXPECT_EQ(deepest, 3);
}

TEST_F(ContentsTest, TheRightTabStandsAtTheEdgeOfTheTextWhereverTheGutterIs) {
    document().pageSetup().setGutter(50);
    twoHeadings();
    addAt(3);
    EXPECT_EQ(tabPosition(), 11906 - 2 * 1797 - 1000);
    document().tablesOfContents().Item(1).Delete();
    document().pageSetup().setGutterOnTop(true);
    addAt(3);
    EXPECT_EQ(tabPosition(), 11906 - 2 * 1797);
}

TEST_F(ContentsTest, TabLeaderIsThatOfTheContentsStyles) {
    twoHeadings();
    addAt(2).setTabLeader(TabLeader::heavy);
    const DocumentTables& tables = document().read().tables();
    for (const char16_t level : {u'1', u'9'}) {
        const auto style = styleNamed(tables.styles, std::u16string(u"目录 ") + level);
        const auto tabs =
            findSprm(tables.lists[tables.styles.styles.at(*style)->paragraph], sprm::PChgTabsPapx);
        ASSERT_TRUE(tabs.has_value());
        EXPECT_EQ(tabs->operand[5], 2 | (4 << 3));
        EXPECT_EQ(tabs->operand[3] | (tabs->operand[4] << 8), 11906 - 2 * 1797);
    }
}

TEST_F(ContentsTest, TabsOfTheirStyleThatAreNoneOfTheirOwnGiveWayToOneAtTheEdgeOfTheText) {
    twoHeadings();
    TableOfContents& contents = addAt(2);
    DocumentTables& tables = document().read().tables();
    auto& style = *tables.styles.styles.at(styleNamed(tables.styles, u"目录 1").value());
    const auto positionBehind = [&](const Bytes& tabs) {
        const Bytes list = withSprm({}, sprm::PChgTabsPapx, tabs);
        style.paragraph = tables.lists.intern(withSprm16(list, sprm::PDxaLeft80, 420));
        contents.setTabLeader(TabLeader::heavy);
        return tabPosition();
    };
    constexpr int edge = 11906 - 2 * 1797;
    EXPECT_EQ(positionBehind({5, 0, 1, 0x10, 0x20, 2}), 0x2010);
    EXPECT_EQ(positionBehind({2, 0, 0}), edge) << "there is none";
    EXPECT_EQ(positionBehind({4, 1, 0x10, 0x20, 0}), edge) << "one is taken away";
    EXPECT_EQ(positionBehind({7, 1, 0x30, 0x40, 1, 0x10, 0x20, 2}), edge);
}

TEST_F(ContentsTest, DeleteTakesTheContentsWithTheirParagraphs) {
    twoHeadings();
    const std::u16string before = text();
    addAt(2);
    document().tablesOfContents().Item(1).Delete();
    EXPECT_EQ(text(), u"目录\r\r第一章\r第一节\r\r");
    EXPECT_EQ(before, u"目录\r\r第一章\r第一节\r\r");
    EXPECT_EQ(errorNumberOf([&] { document().tablesOfContents().Item(1); }), error::memberNotFound);
}

TEST_F(ContentsTest, ContentsMadeAnewUseTheBookmarksThatAreThere) {
    twoHeadings();
    addAt(2);
    document().tablesOfContents().Item(1).Delete();
    addAt(2);
    EXPECT_EQ(document().read().bookmarks().size(), 2U);
}

TEST_F(ContentsTest, ABookmarkOfTheUsersIsNotTakenForOneOfTheContents) {
    twoHeadings();
    document().change().addBookmark({u"总则", 4, 7, 0});
    addAt(2);
    const auto& bookmarks = document().read().bookmarks();
    EXPECT_EQ(std::count_if(bookmarks.begin(), bookmarks.end(),
                            [](const Bookmark& one) { return one.name.starts_with(u"_Toc"); }),
              2);
    EXPECT_EQ(text().find(u"总则"), std::u16string::npos);
}

TEST_F(ContentsTest, PageBreakOfTheParagraphStandsInFrontOfTheContents) {
    type(u"封面");
    selection().InsertBreak(BreakType::page);
    heading(u"第一章", u'1');
    addAt(3);
    const auto field = contentsFields(story()).at(0);
    EXPECT_TRUE(hasPageBreak(lists(), story().paragraphLook(field.start)));
    EXPECT_FALSE(hasPageBreak(lists(), story().paragraphLook(field.end + 1)));
    EXPECT_EQ(story().text(field.end, story().size()), u"\r第一章\r\r");
}

TEST_F(ContentsTest, EntriesShowTextAndNoSpecialCharacters) {
    EXPECT_EQ(entryText(u"一\t二\v三\x02"), u"一 二 三");
    EXPECT_EQ(entryText(u"\x13 SEQ \x13 X \x15\x14"
                        u"5\x15 节"),
              u"5 节");
    EXPECT_EQ(entryText(u"\x01 　"), u"");
}

TEST_F(ContentsTest, ANumberThatHoldsAFieldOfItsOwnIsLeftToIt) {
    Story contents;
    contents.text = u"\x13 PAGEREF _Toc1 \x14\x13 X \x15"
                    u"5\x15\r";
    contents.fields = matchFields({}, contents.text).marks;
    contents.fields.at(0).data = field::pageRef;
    EXPECT_EQ(withPageNumbers(contents, [](const std::u16string&) { return u"9"; }).text,
              contents.text);
    contents.fields.erase(contents.fields.begin() + 2, contents.fields.begin() + 4);
    EXPECT_EQ(withPageNumbers(contents, [](const std::u16string&) { return u"9"; }).text,
              u"\x13 PAGEREF _Toc1 \x14"
              u"9\x15\r");
}

TEST_F(ContentsTest, ANumberOfSeveralParagraphsIsNone) {
    Story contents;
    contents.text = u"\x13 PAGEREF _Toc1 \x14"
                    u"5\r6\x15\r";
    contents.fields = matchFields({}, contents.text).marks;
    contents.fields.at(0).data = field::pageRef;
    EXPECT_EQ(withPageNumbers(contents, [](const std::u16string&) { return u"9"; }), contents);
}

TEST_F(ContentsTest, AreFoundAgainInASavedFile) {
    twoHeadings();
    addAt(2);
    pages.numbers = {3, 4};
    document().SaveAs(folder.path() / "a.doc");
    EngineApplication other(services);
    Document& opened = other.documents().Open(folder.path() / "a.doc");
    opened.tablesOfContents().Item(1).Delete();
    opened.tablesOfContents().Add(other.Selection().Range(), {});
    opened.setSaved(true);
    other.Quit();
    EXPECT_TRUE(question.asked.empty());
}

TEST_F(ContentsTest, TheNameOfABookmarkEndsAtABlankAQuoteOrTheCodesEnd) {
    const auto nameIn = [](const std::u16string& code) {
        Story contents;
        contents.text = u'\x13' + code + u"\x14" + u"5\x15\r";
        contents.fields = matchFields({}, contents.text).marks;
        contents.fields.at(0).data = field::pageRef;
        std::u16string asked = u"none";
        withPageNumbers(contents, [&](const std::u16string& name) {
            asked = name;
            return u"9";
        });
        return asked;
    };
    EXPECT_EQ(nameIn(u" PAGEREF _Toc1 \\h "), u"_Toc1");
    EXPECT_EQ(nameIn(u" PAGEREF _Toc1"), u"_Toc1");
    EXPECT_EQ(nameIn(u"PAGEREF \"_Toc 1\""), u"_Toc");
    EXPECT_EQ(nameIn(u"PAGEREF "), u"");
    EXPECT_EQ(nameIn(u" REF _Toc1"), u"");
}

TEST_F(ContentsTest, AnEntryWithoutANumberStaysWithoutOne) {
    Story contents;
    contents.text = u"\x13 PAGEREF _Toc1 \x14\x15\r";
    contents.fields = matchFields({}, contents.text).marks;
    contents.fields.at(0).data = field::pageRef;
    EXPECT_EQ(withPageNumbers(contents, [](const std::u16string&) { return u"9"; }).text,
              contents.text);
}

// The template's headings and entries of contents, level by level.
TEST_F(ContentsTest, HeadingsGetSmallerAndEntriesMoveInWithTheirLevel) {
    const std::vector<unsigned> sizes{44, 32, 30, 28, 28, 24, 24, 24, 24};
    const std::vector<unsigned> spaces{240, 180, 180, 120, 120, 120, 120, 120, 120};
    const auto styleOf = [this](const std::u16string& name) {
        document().styles().Item(name);
        const StyleSheet& sheet = document().read().tables().styles;
        return *sheet.styles.at(styleNamed(sheet, name).value_or(0));
    };
    for (unsigned level = 0; level < 9; ++level) {
        const std::u16string number{static_cast<char16_t>(u'1' + level)};
        const StyleDefinition heading = styleOf(u"标题 " + number);
        EXPECT_EQ(sprmValue(lists()[heading.character], sprm::CHps, 0), sizes[level]);
        EXPECT_EQ(sprmValue(lists()[heading.character], sprm::CHpsBi, 0), sizes[level]);
        EXPECT_EQ(sprmValue(lists()[heading.paragraph], sprm::PDyaBefore, 0), spaces[level]);
        EXPECT_EQ(sprmValue(lists()[heading.paragraph], sprm::PDyaAfter, 0), spaces[level]);
        EXPECT_EQ(sprmValue(lists()[heading.paragraph], sprm::POutLvl, 9), level);
        const StyleDefinition entry = styleOf(u"目录 " + number);
        EXPECT_EQ(sprmValue(lists()[entry.paragraph], sprm::PDxaLeft80, 0), 420 * level);
        EXPECT_EQ(sprmValue(lists()[entry.paragraph], sprm::PDxaLeft, 0), 420 * level);
    }
}

} // namespace qvnd::test
