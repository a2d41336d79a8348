#include "platform/word/engine/EngineFixture.h"
#include "platform/word/engine/StyleLookup.h"

#include "platform/word/docfile/format/Dop.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/objects/OleStreams.h"
#include "platform/word/engine/DocumentMerge.h"
#include "platform/word/engine/EngineFormat.h"
#include "platform/word/engine/NormalTemplate.h"
#include "platform/word/engine/SectionProperties.h"
#include "platform/word/formatting/FormatResolver.h"
#include "support/Errors.h"

#include <fstream>
#include <functional>
#include <iterator>
#include <optional>

namespace qvnd::test {

namespace {

using namespace qvnd::word;

class ApplicationTest : public EngineTest {
protected:
    std::string bytesOf(const std::filesystem::path& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }
    ByteView page() { return lists()[document().read().sections().properties(0)]; }
    View& view() { return app.ActiveWindow().ActivePane().View(); }
};

// A file with a title, and an author in a stream of its own kind.
class DocumentInformationTest : public EngineTest {
protected:
    std::filesystem::path fileWith(const DocumentInformation& information) {
        DocumentContent content = normalTemplate();
        content.information = information;
        DocumentWriter().saveAs(folder.path() / "titled.doc", content);
        return folder.path() / "titled.doc";
    }
    DocumentInformation read(const std::filesystem::path& path) const {
        return readDocument(path).information;
    }

    DocumentInformation titled_{encodeSummary({u"投标书", u"", u"王工"}),
                                encodeSummary({u"x", u"", u""}),
                                std::vector<std::u16string>(associatedTextCount),
                                {}};
    const std::filesystem::path saved_ = folder.path() / "saved.doc";
};

} // namespace

TEST_F(ApplicationTest, EveryCallAfterQuitFindsTheServerGone) {
    app.Quit();
    EXPECT_EQ(errorNumberOf([&] { app.documents(); }), error::automationServerGone);
    EXPECT_EQ(errorNumberOf([&] { app.Selection(); }), error::automationServerGone);
    EXPECT_EQ(errorNumberOf([&] { app.Quit(); }), error::automationServerGone);
    EXPECT_EQ(errorNumberOf([&] { app.setVisible(true); }), error::automationServerGone);
    EXPECT_EQ(errorNumberOf([&] { app.Activate(); }), error::automationServerGone);
    EXPECT_EQ(errorNumberOf([&] { app.CentimetersToPoints(1); }), error::automationServerGone);
    EXPECT_EQ(errorNumberOf([&] { app.ActiveWindow(); }), error::automationServerGone);
}

TEST_F(ApplicationTest, DocumentsThatWereAskedForBeforeQuitOpenNoneBehindIt) {
    const auto file = fileOf("a.doc", {u"text"});
    Documents& documents = app.documents();
    app.Quit();
    EXPECT_EQ(errorNumberOf([&] { documents.Add(); }), error::automationServerGone);
    EXPECT_EQ(errorNumberOf([&] { documents.Add(file); }), error::automationServerGone);
    EXPECT_EQ(errorNumberOf([&] { documents.Open(file); }), error::automationServerGone);
}

TEST_F(ApplicationTest, TheCallsOfAProgramThatRunsAreTaken) {
    app.setVisible(true);
    app.Activate();
    EXPECT_FLOAT_EQ(app.CentimetersToPoints(2.54F), 72);
}

TEST_F(ApplicationTest, AWindowThatIsClosedTakesItsDocumentWithIt) {
    document().setSaved(true);
    app.ActiveWindow().ActivePane().Close();
    EXPECT_EQ(errorNumberOf([&] { app.ActiveDocument(); }), 4248);
}

TEST_F(ApplicationTest, WhatADocumentLosesIsToldAtItsFirstSaveAlone) {
    document().addLosses({u"浮动图形 1 个未能带入"});
    document().SaveAs(folder.path() / "a.doc");
    EXPECT_EQ(report.lines, std::vector<std::u16string>{u"a.doc: 浮动图形 1 个未能带入"});
    document().Save();
    document().SaveAs(folder.path() / "b.doc");
    EXPECT_EQ(report.lines.size(), 1U);
}

TEST_F(ApplicationTest, AStyleOfTablesOrListsIsNoMember) {
    EXPECT_EQ(errorNumberOf([&] { document().styles().Item(u"古典型 1"); }), error::memberNotFound);
    EXPECT_EQ(errorNumberOf([&] { document().styles().Item(u"Table Classic 1"); }),
              error::memberNotFound);
    for (const char16_t* list : {u"文章 / 节", u"Outline List 3"}) {
        EXPECT_EQ(errorNumberOf([&] { document().styles().Item(list); }), error::memberNotFound);
    }
    EXPECT_EQ(errorNumberOf([&] { document().styles().Item(u"超链接"); }), std::nullopt);
}

TEST_F(ApplicationTest, ABuiltInStyleThatTheDocumentLacksIsEnteredWhenItIsAskedFor) {
    const auto entered = [&] {
        return styleNamed(document().read().tables().styles, u"line number").has_value();
    };
    ASSERT_FALSE(entered());
    Style& style = document().styles().Item(u"行号");
    EXPECT_TRUE(entered());
    EXPECT_EQ(&document().styles().Item(u"line number"), &style);
}

TEST_F(ApplicationTest, ADocumentThatIsOpenIsReturnedAsItIs) {
    type(u"甲");
    document().SaveAs(folder.path() / "a.doc");
    type(u"乙");
    Document& again = app.documents().Open(folder.path() / "." / "a.doc");
    EXPECT_EQ(&again, &app.ActiveDocument());
    EXPECT_EQ(text(), u"甲乙\r");
}

TEST_F(ApplicationTest, ClosingAChangedDocumentAsksAndANoLeavesTheFile) {
    document().SaveAs(folder.path() / "a.doc");
    const std::string before = bytesOf(folder.path() / "a.doc");
    type(u"x");
    document().Close(std::nullopt);
    EXPECT_EQ(question.asked.size(), 1U);
    EXPECT_EQ(bytesOf(folder.path() / "a.doc"), before);
}

TEST_F(ApplicationTest, ADocumentMarkedSavedClosesWithoutAQuestion) {
    document().SaveAs(folder.path() / "a.doc");
    type(u"x");
    document().setSaved(true);
    app.Quit();
    EXPECT_TRUE(question.asked.empty());
}

TEST_F(ApplicationTest, ClosingWithSaveWritesTheChanges) {
    document().SaveAs(folder.path() / "a.doc");
    type(u"x");
    document().Close(true);
    EXPECT_EQ(joined(readDocument(folder.path() / "a.doc").main)->text, u"x\r");
}

TEST_F(ApplicationTest, OpeningAndClosingLeavesAFileAsItIs) {
    const auto file = fileOf("a.doc", {u"甲", u"乙"});
    const std::string before = bytesOf(file);
    app.documents().Open(file).Close();
    EXPECT_EQ(bytesOf(file), before);
    EXPECT_TRUE(question.asked.empty());
}

TEST_F(ApplicationTest, AnOpenedDocumentIsSavedWithItsChanges) {
    const auto file = fileOf("a.doc", {u"甲", u"乙"});
    Document& opened = app.documents().Open(file);
    type(u"前");
    opened.Save();
    type(u"后");
    opened.Save();
    EXPECT_EQ(joined(readDocument(file).main)->text, u"前后甲\r乙\r");
}

TEST_F(ApplicationTest, SaveWithoutANameIsRefused) {
    EXPECT_EQ(errorNumberOf([&] { document().Save(); }), error::invalidCall);
}

// A folder in the file's place cannot be replaced.
TEST_F(ApplicationTest, ManySavesBehindAFailedSaveAsTellNothingAnewAndTheNextSaveAsSaves) {
    const auto taken = folder.path() / "a.doc";
    std::filesystem::create_directories(taken / "taken");
    EXPECT_EQ(errorNumberOf([&] { document().SaveAs(taken); }), error::pathAccess);
    type(u"甲");
    EXPECT_EQ(errorNumberOf([&] { document().Save(); }), std::nullopt);
    EXPECT_FALSE(document().isSaved());
    EXPECT_EQ(errorNumberOf([&] { document().SaveAs(taken); }), error::pathAccess);
    std::filesystem::remove_all(taken);
    document().Save();
    EXPECT_FALSE(std::filesystem::exists(taken)) << "it is for SaveAs to begin a file";
    document().SaveAs(taken);
    EXPECT_EQ(joined(readDocument(taken).main)->text, u"甲\r");
}

TEST_F(ApplicationTest, QuitAsksForTheFileThatAFailedSaveAsWantedAndAYesSavesToIt) {
    const auto taken = folder.path() / "a.doc";
    std::filesystem::create_directories(taken / "taken");
    EXPECT_EQ(errorNumberOf([&] { document().SaveAs(taken); }), error::pathAccess);
    type(u"甲");
    std::filesystem::remove_all(taken);
    question.answer = true;
    app.Quit();
    EXPECT_EQ(question.asked, std::vector{taken});
    EXPECT_EQ(joined(readDocument(taken).main)->text, u"甲\r");
}

TEST_F(ApplicationTest, CallsOnAClosedDocumentAreRefused) {
    Document& closed = app.ActiveDocument();
    closed.Close(false);
    EXPECT_TRUE(errorNumberOf([&] { closed.paragraphs().First().Range(); }).has_value());
    EXPECT_EQ(errorNumberOf([&] { app.ActiveDocument(); }), 4248);
}

TEST_F(ApplicationTest, MissingMembersAreNumber5941) {
    EXPECT_EQ(errorNumberOf([&] { document().paragraphs().Item(2); }), error::memberNotFound);
    EXPECT_EQ(errorNumberOf([&] { document().styles().Item(u"没有"); }), error::memberNotFound);
    EXPECT_EQ(errorNumberOf([&] { document().tablesOfContents().Item(1); }), error::memberNotFound);
    EXPECT_EQ(errorNumberOf([&] { app.ActiveWindow().Panes(2).Close(); }), error::memberNotFound);
    EXPECT_EQ(errorNumberOf([&] { selection().HeaderFooter(); }), error::memberNotFound);
}

TEST_F(ApplicationTest, ParagraphsAreCountedFromOne) {
    type(u"甲\r乙\r丙");
    Paragraphs& paragraphs = document().paragraphs();
    EXPECT_EQ(paragraphs.First().Range().End(), 2);
    EXPECT_EQ(paragraphs.Item(2).Range().Start(), 2);
    EXPECT_EQ(paragraphs.Last().Range().Start(), 4);
    EXPECT_EQ(paragraphs.Last().Range().End(), 6);
}

TEST_F(ApplicationTest, ParagraphRangeTakesAFont) {
    type(u"甲\r\r乙");
    document().paragraphs().Item(2).Range().Font().setSize(22);
    EXPECT_EQ(sprmValue(lookAt(2), sprm::CHps, 0), 44U);
    EXPECT_TRUE(lookAt(1).empty());
    EXPECT_TRUE(lookAt(3).empty());
}

TEST_F(ApplicationTest, RangesBeyondTheTextAreRefused) {
    EXPECT_EQ(errorNumberOf([&] { document().Range(0, 2); }), 4608);
    EXPECT_EQ(errorNumberOf([&] { document().Range(1, 0); }), 4608);
    EXPECT_EQ(document().Range(0, 1)->End(), 1);
}

TEST_F(ApplicationTest, HeadingStylesAreFoundUnderBothNames) {
    EXPECT_EQ(&document().styles().Item(u"标题 3"), &document().styles().Item(u"heading 3"));
    EXPECT_EQ(&document().styles().Item(u"标题 3"), &document().styles().Item(u"Heading 3"));
}

TEST_F(ApplicationTest, ChangingAStyleLeavesTheTextAlone) {
    type(u"第一章");
    Style& style = document().styles().Item(u"标题 1");
    selection().setStyle(style);
    style.Font().setName(u"仿宋_GB2312");
    style.Font().setSize(12);
    style.ParagraphFormat().setAlignment(Alignment::center);
    const DocumentTables& tables = document().read().tables();
    const StyleDefinition& heading = *tables.styles.styles.at(1);
    const ByteView look = tables.lists[heading.character];
    EXPECT_EQ(tables.fonts.at(sprmValue(look, sprm::CRgFtc1, 0)).name, u"仿宋_GB2312");
    EXPECT_EQ(sprmValue(look, sprm::CHps, 0), 24U);
    EXPECT_EQ(sprmValue(tables.lists[heading.paragraph], sprm::PJc, 9), 1U);
    EXPECT_TRUE(lookAt(0).empty());
    EXPECT_TRUE(paragraphAt(0).empty());
}

TEST_F(ApplicationTest, ASizeIsFoundAtTheEndOfAChainOfAllStylesAndACircleOfStylesEnds) {
    DocumentTables tables;
    tables.styles.styles.resize(3);
    for (StyleIndex style = 0; style < 3; ++style) {
        tables.styles.styles[style] = StyleDefinition{};
        tables.styles.styles[style]->basedOn = style == 0 ? 2 : style - 1;
    }
    tables.styles.styles[0]->character = tables.lists.intern(withSprm16({}, sprm::CHps, 30));
    EXPECT_EQ(characterSize(tables, PropertyListId::empty, 2), 300);
    EXPECT_EQ(characterSize(tables, tables.lists.intern(withSprm16({}, sprm::CHps, 24)), 2), 240);
    EXPECT_EQ(characterSize(tables, PropertyListId::empty, 3), 200) << "no style says a size";
}

TEST_F(ApplicationTest, AStyleThatIsChangedMakesItsDocumentAChangedOne) {
    const auto asksAfter = [this](const std::function<void(Style&)>& change) {
        question.asked.clear();
        Document& opened = app.documents().Open(fileOf("a.doc", {u"甲"}));
        change(opened.styles().Item(u"标题 1"));
        opened.Close(std::nullopt);
        return !question.asked.empty();
    };
    EXPECT_FALSE(asksAfter([](Style&) {}));
    EXPECT_TRUE(asksAfter([](Style& style) { style.Font().setSize(12); }));
    EXPECT_TRUE(
        asksAfter([](Style& style) { style.ParagraphFormat().setAlignment(Alignment::center); }));
}

TEST_F(ApplicationTest, PageSetupIsWrittenInTwips) {
    PageSetup& setup = document().pageSetup();
    setup.setTopMargin(app.CentimetersToPoints(2.54F));
    setup.setLeftMargin(72);
    setup.setGutter(36);
    setup.setGutterOnTop(true);
    setup.setHeaderDistance(28.35F);
    setup.setFooterDistance(28.35F);
    EXPECT_EQ(sprmValue(page(), sprm::SDyaTop, 0), 1440U);
    EXPECT_EQ(sprmValue(page(), sprm::SDxaLeft, 0), 1440U);
    EXPECT_EQ(sprmValue(page(), sprm::SDzaGutter, 0), 720U);
    EXPECT_EQ(sprmValue(page(), sprm::SDyaHdrTop, 0), 567U);
    EXPECT_EQ(readDop(document().read().settings(), dop::gutterAtTop), 1U);
    EXPECT_EQ(errorNumberOf([&] { setup.setTopMargin(5000); }), 4608);
}

TEST_F(ApplicationTest, AMarginThatLeavesNoRoomForTextIsRefusedAndTheOldOneStays) {
    PageSetup& setup = document().pageSetup();
    setup.setLeftMargin(72);
    setup.setRightMargin(72);
    setup.setBottomMargin(72);
    EXPECT_EQ(errorNumberOf([&] { setup.setLeftMargin(500); }), 4608);
    EXPECT_EQ(errorNumberOf([&] { setup.setGutter(700); }), 4608);
    EXPECT_EQ(errorNumberOf([&] { setup.setTopMargin(750); }), 4608);
    EXPECT_EQ(sprmValue(page(), sprm::SDxaLeft, 0), 1440U);
    setup.setLeftMargin(480);
    EXPECT_EQ(sprmValue(page(), sprm::SDxaLeft, 0), 9600U);
}

TEST_F(ApplicationTest, AGutterTooWideForTheSideIsTakenWhenItIsOnTopWhicheverIsSetFirst) {
    PageSetup& setup = document().pageSetup();
    setup.setGutter(500);
    setup.setGutterOnTop(true);
    EXPECT_EQ(sprmValue(page(), sprm::SDzaGutter, 0), 10000U);
    setup.setGutter(10);
    setup.setGutter(500);
    EXPECT_EQ(sprmValue(page(), sprm::SDzaGutter, 0), 10000U);
}

TEST_F(ApplicationTest, AGutterThatFitsOnTopAloneIsRefusedAtTheSideAndTheTextKeepsItsRoom) {
    PageSetup& setup = document().pageSetup();
    setup.setGutter(500);
    EXPECT_EQ(errorNumberOf([&] { setup.setGutterOnTop(false); }), 4608);
    EXPECT_EQ(sprmValue(page(), sprm::SDzaGutter, 0), 0U);
    EXPECT_EQ(readDop(document().read().settings(), dop::gutterAtTop), 0U);
}

TEST_F(ApplicationTest, AMarginBelowNothingIsOneOfTopAndBottomOnly) {
    PageSetup& setup = document().pageSetup();
    EXPECT_EQ(errorNumberOf([&] { setup.setLeftMargin(-1); }), 4608);
    EXPECT_EQ(errorNumberOf([&] { setup.setRightMargin(-1); }), 4608);
    EXPECT_EQ(errorNumberOf([&] { setup.setGutter(-1); }), 4608);
    EXPECT_EQ(errorNumberOf([&] { setup.setHeaderDistance(-1); }), 4608);
    EXPECT_EQ(errorNumberOf([&] { setup.setFooterDistance(-1); }), 4608);
    setup.setTopMargin(-72);
    EXPECT_EQ(static_cast<std::int16_t>(sprmValue(page(), sprm::SDyaTop, 0)), -1440);
}

TEST_F(ApplicationTest, APageTooSmallForAMarginKeepsItsOwnAndTheOthersTakeIt) {
    type(u"甲乙");
    WorkingDocument& content = document().change();
    PropertyLists& lists = content.tables().lists;
    const Bytes small = withSprm16(lists[content.sections().properties(0)], sprm::SXaPage, 5000);
    content.sections().cut(1, lists.intern(small));
    EXPECT_EQ(errorNumberOf([&] { document().pageSetup().setLeftMargin(200); }), 4608);
    EXPECT_NE(sprmValue(lists[content.sections().properties(0)], sprm::SDxaLeft, 0), 4000U);
    EXPECT_EQ(sprmValue(lists[content.sections().properties(1)], sprm::SDxaLeft, 0), 4000U);
}

TEST_F(ApplicationTest, SelectionFollowsTheViewIntoHeaderAndFooter) {
    type(u"正文");
    view().setSeekView(SeekView::currentPageHeader);
    EXPECT_TRUE(selection().HeaderFooter().IsHeader());
    type(u"眉");
    view().setSeekView(SeekView::currentPageFooter);
    EXPECT_FALSE(selection().HeaderFooter().IsHeader());
    type(u"脚");
    view().setSeekView(SeekView::mainDocument);
    type(u"续");
    EXPECT_EQ(text(), u"正文续\r");
    document().SaveAs(folder.path() / "a.doc");
    const DocumentContent saved = readDocument(folder.path() / "a.doc");
    EXPECT_EQ(joined(saved.headers.at(0)[1])->text, u"眉\r");
    EXPECT_EQ(joined(saved.headers.at(0)[3])->text, u"脚\r");
}

TEST_F(ApplicationTest, FontSetInFrontOfTheMoveIntoTheHeaderStaysBehind) {
    type(u"正文");
    selection().Font().setSize(30);
    view().setSeekView(SeekView::currentPageHeader);
    type(u"眉");
    const Story header = wholeOf(document().story());
    EXPECT_EQ(lists()[header.characters.front().properties].size(), 0U);
}

TEST_F(ApplicationTest, HeaderIsClearedFromItsStart) {
    view().setSeekView(SeekView::currentPageHeader);
    type(u"旧的页眉");
    view().setSeekView(SeekView::currentPageFooter);
    view().setSeekView(SeekView::currentPageHeader);
    selection().Delete(5000);
    type(u"新");
    EXPECT_EQ(wholeOf(document().story()).text, u"新\r");
}

TEST_F(ApplicationTest, OfALongHeaderOnlyTheFirstFiveThousandCharactersGo) {
    view().setSeekView(SeekView::currentPageHeader);
    type(std::u16string(5000, u'旧') + u"余下的");
    view().setSeekView(SeekView::currentPageFooter);
    view().setSeekView(SeekView::currentPageHeader);
    selection().Delete(5000);
    EXPECT_EQ(wholeOf(document().story()).text, u"余下的\r");
}

TEST_F(ApplicationTest, AnEmptyHeaderShowsNoLine) {
    view().setSeekView(SeekView::currentPageHeader);
    selection().Delete(5000);
    const auto& header = document().read().content().headers.at(0)[1];
    ASSERT_FALSE(header.empty());
    EXPECT_EQ(joined(header)->paragraphs.at(0).style, 0);
}

TEST_F(ApplicationTest, PageNumberStandsInAFrameAtItsSideAndNotOnTheFirstPage) {
    view().setSeekView(SeekView::currentPageFooter);
    type(u"脚");
    PageNumbers& numbers = selection().Sections(1).Footers(1).PageNumbers();
    numbers.setRestartNumberingAtSection(true);
    numbers.setStartingNumber(0);
    numbers.Add(PageNumberAlignment::right, false);
    type(u"注");
    const Story footer = wholeOf(document().story());
    EXPECT_EQ(footer.text, u"\x13 PAGE \x14"
                           u"1\x15\r脚注\r");
    const ByteView frame = lists()[footer.paragraphs.at(0).properties];
    EXPECT_EQ(sprmValue(frame, sprm::PDxaAbs, 0), 0xFFF8U);
    EXPECT_EQ(sprmValue(frame, sprm::PWr, 0), 2U);
    EXPECT_EQ(sprmValue(page(), sprm::SFTitlePage, 0), 1U);
    EXPECT_EQ(sprmValue(page(), sprm::SFPgnRestart, 0), 1U);
    EXPECT_EQ(sprmValue(page(), sprm::SPgnStart97, 9), 0U);
    const HeaderSet& stored = document().read().content().headers.at(0);
    EXPECT_EQ(joined(stored[static_cast<std::size_t>(HeaderKind::firstFooter)])->text, u"\r");
}

TEST_F(ApplicationTest, MergedFilesFollowEachOtherWithNothingBetweenOrBehind) {
    const std::vector<std::filesystem::path> files{fileOf("a.doc", {u"甲", u"乙"}),
                                                   fileOf("b.doc", {u"丙"})};
    const auto merged = mergeDocuments(files, {u"楷体_GB2312", 12.0F, std::nullopt}, report);
    const WorkingStory& whole = merged->main();
    EXPECT_EQ(whole.text(0, whole.size()), u"甲\r乙\r丙\r");
    for (Cp at = 0; at < whole.size(); ++at) {
        const ByteView look = merged->tables().lists[whole.characterProperties(at)];
        EXPECT_EQ(sprmValue(look, sprm::CHps, 0), 24U) << at;
    }
}

TEST_F(ApplicationTest, NewDocumentIsAnA4PageInSong) {
    EXPECT_EQ(sprmValue(page(), sprm::SXaPage, 0), 11906U);
    EXPECT_EQ(sprmValue(page(), sprm::SYaPage, 0), 16838U);
    EXPECT_EQ(sprmValue(page(), sprm::SDyaTop, 0), 1440U);
    EXPECT_EQ(sprmValue(page(), sprm::SDxaLeft, 0), 1797U);
    const DocumentTables& tables = document().read().tables();
    FormatResolver formats(tables);
    const ResolvedText& text = formats.text(0, PropertyListId::empty);
    EXPECT_EQ(tables.fonts.at(text.eastAsianFont).name, u"宋体");
    EXPECT_EQ(text.halfPoints, 21);
    EXPECT_EQ(formats.paragraph(0, PropertyListId::empty).alignment, LineAlignment::justified);
    for (unsigned level = 1; level <= 9; ++level) {
        const StyleDefinition& heading = *tables.styles.styles.at(level);
        EXPECT_EQ(heading.sti, level);
        EXPECT_EQ(heading.name, std::u16string(u"标题 ") + static_cast<char16_t>(u'0' + level));
        const ResolvedParagraph& look =
            formats.paragraph(static_cast<StyleIndex>(level), PropertyListId::empty);
        EXPECT_EQ(look.outlineLevel, static_cast<int>(level));
        EXPECT_TRUE(look.keepsWithNext);
    }
}

TEST_F(DocumentInformationTest, TitleAndAuthorOfAnOpenedDocumentStayAsTheyAre) {
    titled_.associated[2] = u"投标书";
    Document& opened = app.documents().Open(fileWith(titled_));
    opened.SaveAs(saved_);
    opened.Save();
    EXPECT_EQ(read(saved_).summary, titled_.summary);
    EXPECT_EQ(read(saved_).documentSummary, titled_.documentSummary);
    EXPECT_EQ(read(saved_).associated, titled_.associated);
    EXPECT_TRUE(report.lines.empty());
}

TEST_F(DocumentInformationTest, AnInsertedDocumentChangesNothingOfThem) {
    selection().InsertFile(fileWith(titled_));
    document().SaveAs(saved_);
    EXPECT_EQ(read(saved_).summary, encodeSummary({}));
    EXPECT_EQ(read(saved_).documentSummary, encodeDocumentSummary());
}

TEST_F(DocumentInformationTest, DamagedOnesAreToldWithTheFirstSaveAndLeftOut) {
    titled_.summary[44] = 0xFF; // the place of the set
    Document& opened = app.documents().Open(fileWith(titled_));
    opened.SaveAs(saved_);
    EXPECT_EQ(read(saved_).summary, encodeSummary({}));
    EXPECT_EQ(read(saved_).documentSummary, titled_.documentSummary);
    EXPECT_EQ(report.lines, (std::vector<std::u16string>{
                                u"saved.doc: 文档属性（标题、作者等）已损坏，未能带入"}));
}

} // namespace qvnd::test
