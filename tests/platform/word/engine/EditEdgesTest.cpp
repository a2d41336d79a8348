#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/engine/DocumentInsertion.h"
#include "platform/word/engine/DocumentSections.h"
#include "platform/word/engine/EngineFixture.h"
#include "platform/word/engine/ImportFixture.h"
#include "platform/word/engine/ParagraphChange.h"
#include "platform/word/engine/SectionProperties.h"
#include "support/ContentBuilder.h"
#include "support/Errors.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <utility>
#include <vector>

// Changes of a document where one character, one mark or one level more makes the difference.
namespace qvnd::test {
namespace {

using namespace qvnd::word;

TEST(SectionEdges, ASectionLosesItsBreakWithItsLastCharacterAndNotBefore) {
    std::vector<SectionRun> runs{{5, PropertyListId::empty}, {3, PropertyListId::empty}};
    std::vector<HeaderSet> headers(2);
    DocumentSections sections(runs, headers);
    sections.erased(0, 4);
    EXPECT_EQ(sections.count(), 2U);
    EXPECT_EQ(sections.start(1), 1U);
    sections.erased(0, 1);
    EXPECT_EQ(sections.count(), 1U);
}

TEST(SectionEdges, FromTheMiddleOfASectionOnEveryBreakThatIsErasedIsGone) {
    const auto lengthsAfter = [](Cp from, Cp to) {
        std::vector<SectionRun> runs{
            {5, PropertyListId::empty}, {3, PropertyListId::empty}, {4, PropertyListId::empty}};
        std::vector<HeaderSet> headers(3);
        DocumentSections(runs, headers).erased(from, to);
        EXPECT_EQ(headers.size(), runs.size());
        std::vector<Cp> lengths;
        lengths.reserve(runs.size());
        for (const SectionRun& run : runs) {
            lengths.push_back(run.length);
        }
        return lengths;
    };
    using Lengths = std::vector<Cp>;
    EXPECT_EQ(lengthsAfter(2, 4), (Lengths{3, 3, 4}));
    EXPECT_EQ(lengthsAfter(2, 5), (Lengths{5, 4}));
    EXPECT_EQ(lengthsAfter(2, 7), (Lengths{3, 4}));
    EXPECT_EQ(lengthsAfter(2, 8), (Lengths{6}));
    EXPECT_EQ(lengthsAfter(2, 12), (Lengths{2}));
    EXPECT_EQ(lengthsAfter(0, 8), (Lengths{4}));
    EXPECT_EQ(lengthsAfter(6, 8), (Lengths{5, 5}));
}

TEST(SectionEdges, AHeaderThatCameWithADocumentStaysThatDocumentsWhenItsSectionIsJoined) {
    std::vector<SectionRun> runs{
        {2, PropertyListId::empty}, {3, PropertyListId::empty}, {4, PropertyListId::empty}};
    std::vector<HeaderSet> headers(3);
    const auto header = [](std::u16string text) {
        Story story;
        story.text = std::move(text);
        return slicesOf(std::move(story));
    };
    constexpr auto kind = static_cast<std::size_t>(HeaderKind::oddHeader);
    headers[0][kind] = header(u"plan\r");
    DocumentSections sections(runs, headers);
    sections.bringHeader(1, 2, HeaderKind::oddHeader, header(u"own\r"));
    sections.erased(4, 5); // the break between the document and what follows
    ASSERT_EQ(sections.count(), 2U);
    EXPECT_EQ(sections.headerOwner(1, HeaderKind::oddHeader), 1U);
    sections.fillReturned({});
    EXPECT_EQ(joined(headers[1][kind])->text, u"own\r");
}

TEST(IndentEdges, TheLastListOfTheDocumentGivesItsIndentAsTheOthersDo) {
    word::importing::SourceDocument source;
    for (const unsigned indent : {300U, 420U}) {
        source.addList(static_cast<std::int32_t>(indent), 0,
                       word::importing::sprm16(sprm::PDxaLeft80, indent));
    }
    DocumentTables& tables = source.data.tables;
    const LookChange change = indentChange(tables, 2, 210);
    for (const auto& [list, indent] : {std::pair(1U, 300), {2U, 420}}) {
        const ParagraphLook look{0, source.list(word::importing::sprm16(sprm::PIlfo, list))};
        const ByteView changed = tables.lists[change(look).properties];
        EXPECT_EQ(word::importing::operand16(changed, sprm::PDxaLeft80), indent + 2 * 210) << list;
    }
}

TEST(IndentEdges, AParagraphStartsFromTheIndentOfTheListThatItsStyleJoins) {
    word::importing::SourceDocument source;
    source.addList(7, 0, word::importing::sprm16(sprm::PDxaLeft80, 420));
    DocumentTables& tables = source.data.tables;
    StyleDefinition style;
    style.paragraph = source.list(word::importing::sprm16(sprm::PIlfo, 1));
    const auto index = static_cast<StyleIndex>(tables.styles.styles.size());
    tables.styles.styles.push_back(style);
    const LookChange change = indentChange(tables, 2, 210);
    const ByteView changed = tables.lists[change({index, PropertyListId::empty}).properties];
    EXPECT_EQ(word::importing::operand16(changed, sprm::PDxaLeft80), 420 + 2 * 210);
}

TEST(IndentEdges, NoIndentIsWiderThanTheWidestPage) {
    DocumentTables tables = word::importing::plainTables();
    const auto indented = [&](int count) {
        const LookChange change = indentChange(tables, count, 210);
        const ByteView list = tables.lists[change({0, PropertyListId::empty}).properties];
        EXPECT_EQ(word::importing::operand16(list, sprm::PDxaLeft80),
                  word::importing::operand16(list, sprm::PDxaLeft));
        return static_cast<std::int16_t>(word::importing::operand16(list, sprm::PDxaLeft));
    };
    EXPECT_EQ(indented(150), 31500);
    EXPECT_EQ(indented(151), 31680);
    EXPECT_EQ(indented(400), 31680);
    EXPECT_EQ(indented(-150), -31500);
    EXPECT_EQ(indented(-151), -31680);
    EXPECT_EQ(indented(-400), -31680);
}

TEST(IndentEdges, TheMarkOfATableRowIsNotIndented) {
    DocumentTables tables = word::importing::plainTables();
    const LookChange change = indentChange(tables, 2, 210);
    const ParagraphLook mark{0, tables.lists.intern(withSprm8({}, sprm::PFTtp, 1))};
    EXPECT_EQ(change(mark).properties, mark.properties);
    const ParagraphLook text{0, PropertyListId::empty};
    EXPECT_NE(change(text).properties, text.properties);
}

TEST(IndentEdges, TheMarksOfRowsInTablesAndInCellsKeepTheirLook) {
    DocumentTables tables = word::importing::plainTables();
    const std::vector<LookChange> changes{indentChange(tables, 2, 210),
                                          alignmentChange(tables.lists, Alignment::center),
                                          styleChange(tables.lists, 3)};
    for (const LookChange& change : changes) {
        for (const SprmOpcode kind : {sprm::PFTtp, sprm::PFInnerTtp}) {
            const ParagraphLook mark{0, tables.lists.intern(withSprm8({}, kind, 1))};
            EXPECT_EQ(change(mark), mark) << kind;
            const ParagraphLook text{0, tables.lists.intern(withSprm8({}, kind, 0))};
            EXPECT_NE(change(text), text) << kind;
        }
    }
}

TEST(NoteEdges, ADrawingInTheTextOfANoteIsTakenOutAndNamed) {
    word::importing::SourceDocument source;
    source.run(u"a");
    source.run(u"\u0002", withSprm8({}, sprm::CFSpec, 1));
    source.run(u"\r");
    source.endParagraph();
    const PropertyListId special = source.list(withSprm8({}, sprm::CFSpec, 1));
    Story note;
    note.text = u"\u0002\u0008x\r";
    note.characters = {{2, special}, {2, PropertyListId::empty}};
    note.paragraphs = {{4, 0, PropertyListId::empty}};
    source.data.tables.sideStories.push_back({std::make_shared<const Story>(note), true, {}, {}});
    source.main.anchors = {{1, AnchorKind::footnote, 0}};
    word::importing::ImportTarget target;
    target.import(source.document());
    EXPECT_EQ(target.tables.sideStories.at(0).text->text, u"\u0002x\r");
    EXPECT_THAT(target.last.leftOut, testing::ElementsAre(u"浮动图形 1 个未能带入"));
}

class BookmarkEdges : public EngineTest {};

TEST_F(BookmarkEdges, WhatIsTypedRightBehindABookmarkDoesNotBelongToIt) {
    type(u"abcd");
    document().change().addBookmark({u"标记", 1, 3, 0});
    select(3, 3);
    type(u"x");
    ASSERT_EQ(document().read().bookmarks().size(), 1U);
    EXPECT_EQ(document().read().bookmarks()[0].end, 3U);
    select(2, 2);
    type(u"y");
    EXPECT_EQ(document().read().bookmarks()[0].end, 4U);
}

TEST_F(BookmarkEdges, ABookmarkWithoutTextMovesBehindWhatIsTypedAtIt) {
    type(u"abcd");
    document().change().addBookmark({u"点", 2, 2, 0});
    document().change().addBookmark({u"标记", 1, 3, 0});
    const auto places = [this] {
        std::vector<Cp> result;
        for (const Bookmark& bookmark : document().read().bookmarks()) {
            result.push_back(bookmark.start);
            result.push_back(bookmark.end);
        }
        std::sort(result.begin(), result.end());
        return result;
    };
    select(2, 2);
    type(u"x");
    EXPECT_EQ(places(), (std::vector<Cp>{1, 3, 3, 4}));
    select(1, 1);
    type(u"y");
    EXPECT_EQ(places(), (std::vector<Cp>{2, 4, 4, 5}));
}

TEST_F(BookmarkEdges, APointGoesWithTheCharacterBehindItAndWithNoOther) {
    type(u"abcd");
    document().change().addBookmark({u"点", 2, 2, 0});
    const auto points = [this] { return document().read().bookmarks().size(); };
    select(1, 2);
    selection().Delete(1);
    ASSERT_EQ(points(), 1U);
    EXPECT_EQ(document().read().bookmarks()[0].start, 1U);
    select(1, 2);
    selection().Delete(1);
    EXPECT_EQ(points(), 0U);
}

TEST_F(BookmarkEdges, ABookmarkGoesWithAllOfItsTextAndNotWithLess) {
    type(u"abcd");
    document().change().addBookmark({u"标记", 1, 3, 0});
    select(2, 4);
    selection().Delete(1);
    ASSERT_EQ(document().read().bookmarks().size(), 1U);
    EXPECT_EQ(document().read().bookmarks()[0].end, 2U);
    select(1, 2);
    selection().Delete(1);
    EXPECT_TRUE(document().read().bookmarks().empty());
}

TEST_F(BookmarkEdges, BehindTheLastBookmarkTextMovesNoneAndAPointThereMoves) {
    type(u"abcd");
    document().change().addBookmark({u"全文", 0, 4, 0});
    select(4, 4);
    type(u"x");
    type(u"y");
    EXPECT_EQ(document().read().bookmarks()[0].end, 4U);
    document().change().addBookmark({u"点", 6, 6, 0});
    type(u"z");
    EXPECT_EQ(document().read().bookmarks()[1].start, 7U);
    type(u"!");
    EXPECT_EQ(document().read().bookmarks()[1].start, 8U);
    EXPECT_EQ(document().read().bookmarks()[0].end, 4U);
}

class PageNumberEdges : public EngineTest {};

TEST_F(PageNumberEdges, TheChaptersOfPageNumbersAreHeadingsOneToNine) {
    PageNumbers& numbers = selection().Sections(1).Footers(1).PageNumbers();
    for (const auto& [given, level] : {std::pair(0, 1U), {8, 9U}, {9, 9U}, {-1, 1U}}) {
        numbers.setHeadingLevelForChapter(given);
        numbers.setIncludeChapterNumber(true);
        const PropertyListId page = document().read().sections().properties(0);
        EXPECT_EQ(sprmValue(lists()[page], sprm::SiHeadingPgn, 0), level) << given;
    }
}

TEST_F(PageNumberEdges, ANumberHasTheParagraphStyleOfHeadersAboveAndOfFootersBelow) {
    Section& section = selection().Sections(1);
    section.Headers(1).PageNumbers().Add(PageNumberAlignment::center, true);
    section.Footers(1).PageNumbers().Add(PageNumberAlignment::center, true);
    const auto styleIn = [&](SeekView view) {
        app.ActiveWindow().ActivePane().View().setSeekView(view);
        const StyleIndex style = document().story().paragraphLook(0).style;
        return document().read().tables().styles.styles.at(style)->name;
    };
    EXPECT_EQ(styleIn(SeekView::currentPageHeader), u"页眉");
    EXPECT_EQ(styleIn(SeekView::currentPageFooter), u"页脚");
}

TEST_F(PageNumberEdges, TheFirstNumberIsOneThatTwoBytesHold) {
    PageNumbers& numbers = selection().Sections(1).Footers(1).PageNumbers();
    const auto first = [&] {
        return sprmValue(lists()[document().read().sections().properties(0)], sprm::SPgnStart97, 1);
    };
    for (const int good : {0, 65535, 7}) {
        numbers.setStartingNumber(good);
        EXPECT_EQ(first(), static_cast<unsigned>(good));
    }
    for (const int bad : {-1, 65536}) {
        EXPECT_TRUE(errorNumberOf([&] { numbers.setStartingNumber(bad); })) << bad;
        EXPECT_EQ(first(), 7U);
    }
}

TEST_F(PageNumberEdges, TheSignBehindTheChapterIsTheOneThatIsSet) {
    PageNumbers& numbers = selection().Sections(1).Footers(1).PageNumbers();
    for (const int sign : {3, 0, 4}) {
        numbers.setChapterPageSeparator(sign);
        const PropertyListId page = document().read().sections().properties(0);
        EXPECT_EQ(sprmValue(lists()[page], sprm::ScnsPgn, 9), static_cast<unsigned>(sign));
    }
}

class SelectionEdges : public EngineTest {};

TEST_F(SelectionEdges, AFontForThePointBehindTextIsNotThatOfTheMark) {
    type(u"ab");
    select(2, 2);
    selection().Font().setBold(true);
    EXPECT_FALSE(findSprm(lookAt(2), sprm::CFBold));
    selection().TypeParagraph();
    selection().TypeParagraph();
    select(3, 3); // an empty paragraph
    selection().Font().setSize(20);
    EXPECT_TRUE(findSprm(lookAt(3), sprm::CHps));
}

TEST_F(SelectionEdges, AParagraphBehindTheEndOfTheSelectionKeepsItsLook) {
    type(u"ab");
    selection().TypeParagraph();
    type(u"cd");
    select(0, 3); // up to the first character of the second paragraph
    selection().ParagraphFormat().setAlignment(Alignment::center);
    EXPECT_FALSE(paragraphAt(0).empty());
    EXPECT_TRUE(paragraphAt(3).empty());
    select(0, 4);
    selection().ParagraphFormat().setAlignment(Alignment::center);
    EXPECT_FALSE(paragraphAt(3).empty());
}

TEST_F(SelectionEdges, NumbersOfPagesGoOnWhereTheyDoNotBeginAnew) {
    PageNumbers& numbers = selection().Sections(1).Footers(1).PageNumbers();
    const auto restarts = [&] {
        return sprmValue(lists()[document().read().sections().properties(0)], sprm::SFPgnRestart,
                         9);
    };
    numbers.setRestartNumberingAtSection(true);
    EXPECT_EQ(restarts(), 1U);
    numbers.setRestartNumberingAtSection(false);
    EXPECT_EQ(restarts(), 0U);
}

TEST_F(SelectionEdges, ADocumentIsInsertedBehindAPageBreakOfItsParagraphsStart) {
    type(u"xy");
    WorkingDocument& content = document().change();
    const PropertyListId broken =
        content.tables().lists.intern(withSprm8({}, sprm::PFPageBreakBefore, 1));
    story().changeParagraphs(2, 3, [&](const ParagraphLook& look) {
        return ParagraphLook{look.style, broken};
    });
    const auto insertAt = [&](Cp at) {
        DocumentBody body;
        Story text;
        StoryBuilder builder(text);
        builder.text(u"A", PropertyListId::empty);
        builder.mark(u'\r', {}, PropertyListId::empty);
        body.sections.push_back({2, content.sections().properties(0)});
        body.main = slicesOf(std::move(text));
        insertDocument(content, at, std::move(body));
    };
    insertAt(1);
    EXPECT_EQ(text(), u"xA\ry\r");
    EXPECT_FALSE(findSprm(paragraphAt(0), sprm::PFPageBreakBefore));
    EXPECT_TRUE(findSprm(paragraphAt(3), sprm::PFPageBreakBefore)) << "it stays with its mark";
    insertAt(3);
    EXPECT_EQ(text(), u"xA\rA\ry\r");
    EXPECT_TRUE(findSprm(paragraphAt(3), sprm::PFPageBreakBefore)) << "what is in front begins it";
    EXPECT_FALSE(findSprm(paragraphAt(5), sprm::PFPageBreakBefore));
}

} // namespace
} // namespace qvnd::test
