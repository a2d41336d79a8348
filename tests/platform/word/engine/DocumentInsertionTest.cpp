#include "platform/word/engine/EngineFixture.h"

#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/engine/DocumentInsertion.h"
#include "platform/word/engine/NormalTemplate.h"
#include "platform/word/engine/SectionProperties.h"
#include "platform/word/engine/SprmList.h"

#include <utility>
#include <vector>

namespace qvnd::test {

namespace {

using namespace qvnd::word;

// Insertion of documents whose sections differ from the page around them.
class SectionInsertion : public EngineTest {
protected:
    PropertyLists& pool() { return document().read().tables().lists; }
    PropertyListId portrait() { return document().read().sections().properties(0); }
    PropertyListId landscape() {
        return SprmList()
            .byte(sprm::SBOrientation, 2)
            .word(sprm::SXaPage, 16838)
            .word(sprm::SYaPage, 11906)
            .byte(sprm::SFTitlePage, 1)
            .byte(sprm::SFPgnRestart, 1)
            .in(pool());
    }
    PropertyListId twoColumns() {
        return pool().intern(withSprm16(pool()[portrait()], sprm::SCcolumns, 1));
    }

    // One paragraph a section; all but the last end in the break.
    DocumentBody sectionsOf(const std::vector<PropertyListId>& formats) {
        DocumentBody text;
        Story story;
        StoryBuilder builder(story);
        for (std::size_t i = 0; i < formats.size(); ++i) {
            builder.text(std::u16string(1, static_cast<char16_t>(u'A' + i)), PropertyListId::empty);
            builder.mark(i + 1 < formats.size() ? u'\f' : u'\r', {}, PropertyListId::empty);
            text.sections.push_back({2, formats[i]});
        }
        text.main = slicesOf(std::move(story));
        return text;
    }

    static Story headerOf(const std::u16string& text) {
        Story story;
        StoryBuilder builder(story);
        builder.text(text, PropertyListId::empty);
        builder.mark(u'\r', {}, PropertyListId::empty);
        return story;
    }
    // What the sections show as their primary header, as a file would have it.
    std::vector<std::u16string> headers() {
        std::vector<std::u16string> result;
        std::u16string shown;
        for (const HeaderSet& set : document().change().content().headers) {
            const auto& header = set[static_cast<std::size_t>(HeaderKind::oddHeader)];
            shown = header.empty() ? shown : joined(header)->text;
            result.push_back(shown);
        }
        return result;
    }
    void insertWithHeader(const std::vector<PropertyListId>& formats, std::size_t section) {
        DocumentBody text = sectionsOf(formats);
        text.headers.resize(formats.size());
        text.headers[section][static_cast<std::size_t>(HeaderKind::oddHeader)] =
            slicesOf(headerOf(u"own"));
        insertDocument(document().change(), static_cast<Cp>(selection().Range().Start()),
                       std::move(text));
        select(static_cast<int>(story().size() - 1), static_cast<int>(story().size() - 1));
    }
    void typeHeader(const std::u16string& text) {
        WorkingStory& header = document().change().header(0, HeaderKind::oddHeader);
        header.insertText(0, text, PropertyListId::empty);
    }

    void insert(const std::vector<PropertyListId>& formats) {
        const auto at = static_cast<Cp>(selection().Range().Start());
        const Cp behind = insertDocument(document().change(), at, sectionsOf(formats));
        select(static_cast<int>(behind), static_cast<int>(behind));
    }

    // "L" landscape, "P" portrait, "2" two columns, one letter a character of the text.
    std::u16string formats() {
        DocumentSections& sections = document().read().sections();
        std::u16string result;
        for (Cp at = 0; at < story().size(); ++at) {
            const ByteView page = pool()[sections.properties(sections.indexAt(at))];
            const bool wide = sprmValue(page, sprm::SBOrientation, 1) == 2;
            result += wide ? u'L' : sprmValue(page, sprm::SCcolumns, 0) == 1 ? u'2' : u'P';
        }
        return result;
    }
    ByteView sectionAt(Cp at) {
        DocumentSections& sections = document().read().sections();
        return pool()[sections.properties(sections.indexAt(at))];
    }

    PropertyListId portraitWith(SprmOpcode opcode, const Bytes& operand) {
        return pool().intern(withSprm(pool()[portrait()], opcode, operand));
    }
    // Inserts two sections behind a line of text, the first of which has a page of that kind.
    void insertBehindText(PropertyListId page) {
        type(u"x");
        selection().TypeParagraph();
        insert({page, portrait()});
        type(u"y");
    }
    // What stands in front keeps its page, and that of the document begins so.
    void expectAPageOfItsOwn(SprmOpcode opcode, const Bytes& operand, SectionBreak begins) {
        select(0, static_cast<int>(story().size() - 1));
        selection().Delete(1);
        const Bytes before(pool()[portrait()].begin(), pool()[portrait()].end());
        insertBehindText(portraitWith(opcode, operand));
        EXPECT_EQ(text(), u"x\fA\fB\ry\r");
        EXPECT_EQ(Bytes(sectionAt(0).begin(), sectionAt(0).end()), before);
        const auto own = findSprm(sectionAt(2), opcode);
        ASSERT_TRUE(own.has_value());
        EXPECT_EQ(Bytes(own->operand.begin(), own->operand.end()), operand);
        EXPECT_EQ(sprmValue(sectionAt(2), sprm::SBkc, 2), static_cast<unsigned>(begins));
        EXPECT_EQ(findSprm(sectionAt(4), opcode).has_value(), findSprm(before, opcode).has_value());
    }
};

} // namespace

TEST_F(SectionInsertion, ADocumentOfTheSamePageFormatJoinsTheSection) {
    type(u"x");
    selection().TypeParagraph();
    insert({portrait()});
    type(u"y");
    EXPECT_EQ(text(), u"x\rA\ry\r");
    EXPECT_EQ(document().read().sections().count(), 1U);
}

TEST_F(SectionInsertion, TheLastSectionsOwnFormatStaysBehind) {
    type(u"x");
    selection().TypeParagraph();
    insert({landscape()});
    type(u"y");
    EXPECT_EQ(text(), u"x\rA\ry\r");
    EXPECT_EQ(formats(), u"PPPPPP");
    EXPECT_EQ(document().read().sections().count(), 1U);
}

TEST_F(SectionInsertion, BehindTheLastInnerSectionThePageIsThatOfTheDocument) {
    type(u"x");
    selection().TypeParagraph();
    insert({landscape(), landscape()});
    type(u"y");
    EXPECT_EQ(text(), u"x\fA\fB\ry\r");
    EXPECT_EQ(formats(), u"PPLLPPPP");
}

TEST_F(SectionInsertion, AFirstSectionWithPageBordersBeginsBehindWhatStandsInFront) {
    expectAPageOfItsOwn(sprm::SBrcTop80, {6, 1, 0, 0}, SectionBreak::nextPage);
    expectAPageOfItsOwn(sprm::SBrcLeft, {8, 0, 0, 0, 0, 6, 1, 0, 0}, SectionBreak::nextPage);
}

TEST_F(SectionInsertion, AFirstSectionWithAnotherDirectionOrAlignmentBeginsOnAPageOfItsOwn) {
    expectAPageOfItsOwn(sprm::STextFlow, {1, 0}, SectionBreak::nextPage);
    expectAPageOfItsOwn(sprm::SVjc, {1}, SectionBreak::nextPage);
}

// What does not need another page begins on the same one.
TEST_F(SectionInsertion, AFirstSectionWithOtherLineNumbersGridOrNotesIsASectionOfItsOwn) {
    expectAPageOfItsOwn(sprm::SNLnnMod, {5, 0}, SectionBreak::continuous);
    expectAPageOfItsOwn(sprm::SClm, {2, 0}, SectionBreak::continuous);
    expectAPageOfItsOwn(sprm::SNfcFtnRef, {1, 0}, SectionBreak::continuous);
    expectAPageOfItsOwn(sprm::SRncFtn, {1}, SectionBreak::continuous);
}

TEST_F(SectionInsertion, MarginsAndWhatHoldsUnsaidMakeNoSection) {
    const auto none = static_cast<std::uint8_t>(0);
    const std::vector<std::pair<SprmOpcode, Bytes>> entries{
        {sprm::SDyaTop, {0, 4}},
        {sprm::SDyaHdrTop, {0, 2}},
        {sprm::SVjc, {none}},
        {sprm::SBrcTop80, {none, none, none, none}},
        {sprm::SBrcTop80, {0xFF, 0xFF, 0xFF, 0xFF}}, // BrcNil
        {sprm::SBrcTop, {8, none, none, none, 0xFF, none, none, none, none}},
        {sprm::SLnnMin, {9, none}},       // of lines that bear no numbers
        {sprm::SDyaLinePitch, {0x90, 1}}, // of a page without a grid
        {sprm::SFpc, {1}}};
    for (const auto& [opcode, operand] : entries) {
        SCOPED_TRACE(opcode);
        select(0, static_cast<int>(story().size() - 1));
        selection().Delete(1);
        insertBehindText(portraitWith(opcode, operand));
        EXPECT_EQ(text(), u"x\rA\fB\ry\r");
    }
}

TEST_F(SectionInsertion, HeadingsInFrontGoOntoTheLandscapePage) {
    type(u"x");
    selection().TypeParagraph();
    for (const char16_t* heading : {u"一", u"二"}) {
        type(heading);
        selection().setStyle(document().styles().Item(u"标题 1"));
        selection().TypeParagraph();
    }
    insert({landscape(), portrait()});
    type(u"y");
    EXPECT_EQ(text(), u"x\f一\r二\rA\fB\ry\r");
    EXPECT_EQ(formats(), u"PPLLLLLLPPPP");
}

TEST_F(SectionInsertion, AHeadingInFrontOfOtherTextStaysWithIt) {
    type(u"w");
    selection().TypeParagraph();
    type(u"一");
    selection().setStyle(document().styles().Item(u"标题 1"));
    selection().TypeParagraph();
    type(u"x");
    selection().TypeParagraph();
    insert({landscape(), portrait()});
    EXPECT_EQ(text(), u"w\r一\rx\fA\fB\r\r");
    EXPECT_EQ(formats(), u"PPPPPPLLPPP");
}

TEST_F(SectionInsertion, AnEmptyParagraphBehindAHeadingGoesWithIt) {
    type(u"w");
    selection().TypeParagraph();
    type(u"一");
    selection().setStyle(document().styles().Item(u"标题 1"));
    selection().TypeParagraph();
    selection().TypeParagraph();
    insert({landscape(), portrait()});
    EXPECT_EQ(text(), u"w\f一\r\rA\fB\r\r");
    EXPECT_EQ(formats(), u"PPLLLLLPPP");
}

TEST_F(SectionInsertion, AHeadingThatEndsTheSectionInFrontStaysThere) {
    type(u"x");
    selection().TypeParagraph();
    insert({landscape(), portrait()});
    select(2, 2);
    selection().setStyle(document().styles().Item(u"标题 1"));
    select(4, 4);
    insert({landscape(), portrait()});
    EXPECT_EQ(text(), u"x\fA\fA\fB\rB\r\r");
    EXPECT_EQ(formats(), u"PPLLLLPPPPP");
    EXPECT_EQ(styleAt(2), u"标题 1");
}

TEST_F(SectionInsertion, InnerSectionsKeepTheirBreaksAndFormats) {
    type(u"x");
    selection().TypeParagraph();
    insert({portrait(), landscape(), portrait()});
    type(u"y");
    EXPECT_EQ(text(), u"x\rA\fB\fC\ry\r");
    EXPECT_EQ(formats(), u"PPPPLLPPPP");
}

TEST_F(SectionInsertion, WhereASectionShowsTheHeaderOfAnEarlierOneThatIsTheOneToTypeInto) {
    typeHeader(u"眉");
    type(u"x");
    selection().TypeParagraph();
    insert({landscape(), landscape()});
    type(u"y");
    ASSERT_EQ(document().read().sections().count(), 3U);
    app.ActiveWindow().ActivePane().View().setSeekView(SeekView::currentPageHeader);
    type(u"新");
    EXPECT_EQ(headers(), (std::vector<std::u16string>(3, u"新眉\r")));
}

TEST_F(SectionInsertion, PageNumbersSetInAnEarlierSectionsFooterAreThatSections) {
    type(u"x");
    selection().TypeParagraph();
    insert({landscape(), landscape()});
    ASSERT_EQ(document().read().sections().count(), 3U);
    app.ActiveWindow().ActivePane().View().setSeekView(SeekView::currentPageFooter);
    selection().Sections(1).Footers(1).PageNumbers().setStartingNumber(7);
    EXPECT_EQ(sprmValue(sectionAt(0), sprm::SPgnStart97, 0), 7U);
    EXPECT_EQ(sprmValue(sectionAt(story().size() - 1), sprm::SPgnStart97, 0), 0U);
}

TEST_F(SectionInsertion, ColumnsOfAnInnerSectionEndAsTheirDocumentSays) {
    type(u"x");
    selection().TypeParagraph();
    const PropertyListId continuous =
        pool().intern(withBreak(pool()[portrait()], SectionBreak::continuous));
    insert({twoColumns(), continuous});
    type(u"y");
    EXPECT_EQ(formats(), u"PP22PPPP");
    EXPECT_EQ(sprmValue(sectionAt(4), sprm::SBkc, 9), 0U);
}

TEST_F(SectionInsertion, DocumentsWithSectionsOneAfterAnotherDoNotMix) {
    type(u"x");
    selection().TypeParagraph();
    insert({landscape(), portrait()});
    insert({landscape(), portrait()});
    type(u"y");
    EXPECT_EQ(text(), u"x\fA\fB\fA\fB\ry\r");
    EXPECT_EQ(formats(), u"PPLLPPLLPPPP");
}

// They show the header and footer of the document, and its numbers go on.
TEST_F(SectionInsertion, InsertedSectionsHaveNoTitlePageAndNoNumberRestart) {
    type(u"x");
    selection().TypeParagraph();
    insert({landscape(), portrait(), landscape()});
    type(u"y");
    DocumentSections& sections = document().read().sections();
    ASSERT_GT(sections.count(), 2U);
    for (std::size_t i = 0; i < sections.count(); ++i) {
        EXPECT_FALSE(findSprm(pool()[sections.properties(i)], sprm::SFTitlePage)) << i;
        EXPECT_FALSE(findSprm(pool()[sections.properties(i)], sprm::SFPgnRestart)) << i;
        EXPECT_EQ(sections.headerOwner(i, HeaderKind::oddHeader), 0U) << i;
    }
}

TEST_F(SectionInsertion, NumberingOfTheDocumentStaysWithItsFirstPages) {
    selection().Sections(1).Footers(1).PageNumbers().setRestartNumberingAtSection(true);
    insert({landscape(), portrait()});
    type(u"y");
    EXPECT_EQ(formats().substr(0, 2), u"LL");
    EXPECT_EQ(sprmValue(sectionAt(0), sprm::SFPgnRestart, 0), 1U);
    EXPECT_FALSE(findSprm(sectionAt(2), sprm::SFPgnRestart).has_value());
}

TEST_F(SectionInsertion, NumberingOfTheDocumentStaysWhereTheFirstSectionGoesOnInIt) {
    selection().Sections(1).Footers(1).PageNumbers().setRestartNumberingAtSection(true);
    type(u"x");
    selection().TypeParagraph();
    insert({portrait(), landscape(), portrait()});
    EXPECT_EQ(formats(), u"PPPPLLPPP");
    EXPECT_EQ(sprmValue(sectionAt(0), sprm::SFPgnRestart, 0), 1U);
    EXPECT_FALSE(findSprm(sectionAt(4), sprm::SFPgnRestart).has_value());
    EXPECT_FALSE(findSprm(sectionAt(6), sprm::SFPgnRestart).has_value());
}

TEST_F(SectionInsertion, AnInnerSectionShowsItsOwnHeaderAndWhatFollowsThatOfTheDocument) {
    type(u"x");
    selection().TypeParagraph();
    insertWithHeader({portrait(), landscape(), portrait()}, 1);
    type(u"y");
    typeHeader(u"plan");
    EXPECT_EQ(formats(), u"PPPPLLPPPP");
    EXPECT_EQ(headers(), (std::vector<std::u16string>{u"plan\r", u"own\r", u"plan\r"}));
    EXPECT_EQ(sprmValue(sectionAt(4), sprm::SFTitlePage, 0), 1U);
}

// Cover, contents, text: the pages of a contents count i, ii, iii under the footer of the cover.
TEST_F(SectionInsertion, ASectionThatShowsTheHeaderOfAnEarlierOneKeepsItsPageNumbers) {
    type(u"x");
    selection().TypeParagraph();
    const PropertyListId roman =
        pool().intern(withSprm8(pool()[portraitWith(sprm::SNfcPgn, {2})], sprm::SFTitlePage, 1));
    insertWithHeader({portrait(), roman, portrait()}, 0);
    EXPECT_EQ(text(), u"x\fA\fB\fC\r\r");
    EXPECT_EQ(sprmValue(sectionAt(4), sprm::SNfcPgn, 0), 2U);
    EXPECT_EQ(sprmValue(sectionAt(4), sprm::SFTitlePage, 0), 1U);
}

TEST_F(SectionInsertion, ASectionInFrontOfTheFirstHeaderGoesOnWithThePageNumbers) {
    type(u"x");
    selection().TypeParagraph();
    insertWithHeader({portraitWith(sprm::SNfcPgn, {2}), portrait(), portrait()}, 1);
    EXPECT_EQ(sprmValue(sectionAt(0), sprm::SNfcPgn, 0), 0U);
    EXPECT_EQ(sprmValue(sectionAt(2), sprm::SNfcPgn, 0), 0U);
}

TEST_F(SectionInsertion, AFirstSectionWithAHeaderOfItsOwnBeginsAnew) {
    typeHeader(u"plan");
    type(u"x");
    selection().TypeParagraph();
    insertWithHeader({portrait(), portrait()}, 0);
    EXPECT_EQ(headers(), (std::vector<std::u16string>{u"plan\r", u"own\r", u"plan\r"}));
}

TEST_F(SectionInsertion, AtTheVeryStartTheDocumentsHeaderGoesToWhatFollows) {
    typeHeader(u"plan");
    insertWithHeader({portrait(), portrait()}, 0);
    EXPECT_EQ(headers(), (std::vector<std::u16string>{u"own\r", u"plan\r"}));
}

TEST_F(SectionInsertion, TwoDocumentsWithHeadersOfTheirOwnDoNotMix) {
    type(u"x");
    selection().TypeParagraph();
    insertWithHeader({landscape(), portrait()}, 0);
    insertWithHeader({landscape(), portrait()}, 0);
    typeHeader(u"plan");
    EXPECT_EQ(headers(),
              (std::vector<std::u16string>{u"plan\r", u"own\r", u"plan\r", u"own\r", u"plan\r"}));
}

TEST_F(SectionInsertion, DeletingTheBreakGivesTheTextToTheNextSection) {
    type(u"x");
    selection().TypeParagraph();
    insert({landscape(), portrait()});
    type(u"y");
    select(3, 4);
    selection().Delete(1);
    EXPECT_EQ(text(), u"x\fAB\ry\r");
    EXPECT_EQ(formats(), u"PPPPPPP");
}

TEST_F(SectionInsertion, PageSetupGoesToAllSections) {
    type(u"x");
    selection().TypeParagraph();
    insert({landscape(), portrait()});
    type(u"y");
    document().pageSetup().setTopMargin(app.CentimetersToPoints(1.5F));
    for (const Cp at : {0U, 2U, 4U}) {
        EXPECT_EQ(sprmValue(sectionAt(at), sprm::SDyaTop, 0), 850U);
    }
    EXPECT_EQ(formats(), u"PPLLPPPP");
}

TEST_F(SectionInsertion, BookmarksOfAnInsertedDocumentMoveWithIt) {
    type(u"x");
    selection().TypeParagraph();
    DocumentBody text = sectionsOf({portrait()});
    text.bookmarks.push_back({u"mark", 0, 1, 0});
    insertDocument(document().change(), 2, std::move(text));
    select(0, 0);
    type(u"abc");
    ASSERT_EQ(document().read().bookmarks().size(), 1U);
    EXPECT_EQ(document().read().bookmarks()[0].start, 5U);
    EXPECT_EQ(document().read().bookmarks()[0].end, 6U);
    select(5, 6);
    selection().Delete(1);
    EXPECT_TRUE(document().read().bookmarks().empty());
}

TEST_F(SectionInsertion, APageOfAnotherFormatBeginsAParagraphOfItsOwn) {
    type(u"xy");
    select(1, 1);
    insert({landscape(), portrait()});
    EXPECT_EQ(text(), u"x\fA\fB\ry\r");
    EXPECT_EQ(formats(), u"PPLLPPPP");
}

TEST_F(SectionInsertion, ATableBeginsBehindTheParagraphThatItIsPutInto) {
    type(u"x");
    DocumentBody body;
    Story table;
    StoryBuilder builder(table);
    const PropertyListId cell = pool().intern(withSprm8({}, sprm::PFInTable, 1));
    const PropertyListId row = pool().intern(withSprm8(pool()[cell], sprm::PFTtp, 1));
    builder.text(u"c", PropertyListId::empty);
    builder.mark(u'\a', {0, cell}, PropertyListId::empty);
    builder.mark(u'\a', {0, row}, PropertyListId::empty);
    builder.mark(u'\r', {}, PropertyListId::empty);
    body.sections.push_back({table.size(), portrait()});
    body.main = slicesOf(std::move(table));
    insertDocument(document().change(), 1, std::move(body));
    EXPECT_EQ(text(), u"x\rc\a\a\r\r");
    EXPECT_TRUE(paragraphAt(0).empty());
}

TEST_F(SectionInsertion, BehindATableTheSectionEndsInAParagraphOfItsOwn) {
    type(u"x");
    selection().TypeParagraph();
    auto table = std::make_shared<Story>();
    StoryBuilder builder(*table);
    const PropertyListId cell = pool().intern(withSprm8({}, sprm::PFInTable, 1));
    const PropertyListId row = pool().intern(withSprm8(pool()[cell], sprm::PFTtp, 1));
    builder.text(u"c", PropertyListId::empty);
    builder.mark(u'\a', {0, cell}, PropertyListId::empty);
    builder.mark(u'\a', {0, row}, PropertyListId::empty);
    story().insertFragment(2, table);
    select(5, 5);
    insert({landscape(), portrait()});
    type(u"y");
    EXPECT_EQ(text(), u"x\rc\a\a\fA\fB\ry\r");
    EXPECT_EQ(formats(), u"PPPPPPLLPPPP");
    EXPECT_TRUE(paragraphAt(5).empty());
}

} // namespace qvnd::test
