#include "platform/word/engine/EngineFixture.h"

#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/engine/SectionProperties.h"
#include "support/ByteText.h"
#include "support/Errors.h"
#include "support/Images.h"

namespace qvnd::test {

namespace {

using namespace qvnd::word;

// Knows one file.
class ConverterOf : public PictureConverter {
public:
    ConverterOf(Bytes known, Bytes result) : known_(std::move(known)), result_(std::move(result)) {}
    std::optional<Bytes> convert(ByteView file) const override {
        return std::equal(file.begin(), file.end(), known_.begin(), known_.end())
                   ? std::optional(result_)
                   : std::nullopt;
    }

private:
    Bytes known_;
    Bytes result_;
};

class SelectionTest : public EngineTest {
protected:
    unsigned halfPointsAt(Cp at) { return sprmValue(lookAt(at), sprm::CHps, 0); }
    bool boldAt(Cp at) { return sprmValue(lookAt(at), sprm::CFBold, 0) == 1; }
    bool breaksAt(Cp at) { return hasPageBreak(lists(), story().paragraphLook(at)); }
    std::u16string fontAt(Cp at, SprmOpcode slot) {
        return document().read().tables().fonts.at(sprmValue(lookAt(at), slot, 0)).name;
    }
};

} // namespace

TEST_F(SelectionTest, TypedTextReplacesTheSelection) {
    type(u"甲乙丙");
    select(1, 2);
    type(u"--");
    EXPECT_EQ(text(), u"甲--丙\r");
}

TEST_F(SelectionTest, TheLastParagraphMarkIsNeverReplaced) {
    select(0, 1);
    selection().TypeParagraph();
    selection().TypeParagraph();
    EXPECT_EQ(text(), u"\r\r\r");
    EXPECT_EQ(selection().Range().Start(), 2);
}

TEST_F(SelectionTest, SelectedFirstParagraphGivesWayToWhatIsTyped) {
    selection().TypeParagraph();
    type(u"正文");
    app.ActiveDocument().paragraphs().First().Range().Select();
    selection().TypeParagraph();
    selection().TypeParagraph();
    EXPECT_EQ(text(), u"\r\r正文\r");
    EXPECT_EQ(selection().Range().Start(), 2);
}

TEST_F(SelectionTest, FontOnAPointAppliesToWhatIsTypedNext) {
    type(u"a");
    selection().Font().setName(u"楷体_GB2312");
    selection().Font().setSize(10.5F);
    selection().Font().setBold(true);
    type(u"b");
    EXPECT_TRUE(lookAt(0).empty());
    EXPECT_EQ(halfPointsAt(1), 21U);
    EXPECT_TRUE(boldAt(1));
    for (const SprmOpcode slot : {sprm::CRgFtc0, sprm::CRgFtc1, sprm::CRgFtc2}) {
        EXPECT_EQ(fontAt(1, slot), u"楷体_GB2312");
    }
}

TEST_F(SelectionTest, FontOnAPointIsLostWhenTheSelectionMoves) {
    type(u"ab");
    selection().Font().setSize(20);
    select(1, 1);
    type(u"x");
    EXPECT_EQ(halfPointsAt(1), 0U);
}

TEST_F(SelectionTest, FontSetInAnEmptyParagraphStaysWithItsMark) {
    selection().Font().setSize(20);
    select(0, 0);
    type(u"x");
    EXPECT_EQ(halfPointsAt(0), 40U);
}

TEST_F(SelectionTest, FontOnASelectionChangesItsText) {
    type(u"abc");
    select(1, 2);
    selection().Font().setBold(true);
    EXPECT_FALSE(boldAt(0));
    EXPECT_TRUE(boldAt(1));
    EXPECT_FALSE(boldAt(2));
}

TEST_F(SelectionTest, TypingTakesTheFontOfTheTextInFront) {
    selection().Font().setSize(20);
    type(u"ab");
    select(1, 1);
    type(u"x");
    EXPECT_EQ(halfPointsAt(1), 40U);
}

TEST_F(SelectionTest, StyleGoesToTheParagraphAndKeepsItsPageBreak) {
    selection().TypeParagraph();
    selection().InsertBreak(BreakType::page);
    type(u"第一章");
    selection().ParagraphFormat().setAlignment(Alignment::right);
    selection().setStyle(document().styles().Item(u"heading 1"));
    EXPECT_EQ(styleAt(1), u"标题 1");
    EXPECT_TRUE(breaksAt(1));
    EXPECT_EQ(sprmValue(paragraphAt(1), sprm::PJc, 9), 9U);
}

TEST_F(SelectionTest, StyleTakesFormattingAwayThatMostOfTheParagraphHas) {
    selection().Font().setSize(20);
    type(u"第一章");
    selection().Font().setBold(true);
    type(u"注");
    selection().setStyle(document().styles().Item(u"标题 2"));
    EXPECT_EQ(halfPointsAt(0), 0U);
    EXPECT_EQ(halfPointsAt(3), 0U);
    EXPECT_TRUE(boldAt(3));
}

TEST_F(SelectionTest, StyleLeavesFormattingThatOnlyHalfOfTheParagraphHas) {
    type(u"第一");
    selection().Font().setBold(true);
    type(u"章节");
    selection().setStyle(document().styles().Item(u"标题 2"));
    EXPECT_FALSE(boldAt(1));
    EXPECT_TRUE(boldAt(2));
    EXPECT_TRUE(boldAt(3));
}

TEST_F(SelectionTest, ParagraphBehindAHeadingIsNormalAgain) {
    type(u"第一章");
    selection().setStyle(document().styles().Item(u"标题 1"));
    selection().TypeParagraph();
    type(u"正文");
    EXPECT_EQ(styleAt(0), u"标题 1");
    EXPECT_EQ(styleAt(4), u"正文");
    EXPECT_TRUE(lookAt(4).empty());
}

TEST_F(SelectionTest, PageBreakEndsAParagraphWithTextAndAddsNoEmptyOne) {
    type(u"2026-05-01");
    selection().InsertBreak(BreakType::page);
    type(u"目录");
    EXPECT_EQ(text(), u"2026-05-01\r目录\r");
    EXPECT_FALSE(breaksAt(0));
    EXPECT_TRUE(breaksAt(11));
}

TEST_F(SelectionTest, PageBreakAtTheStartOfTheDocumentLeavesABlankPageInFront) {
    selection().InsertBreak(BreakType::page);
    type(u"目录");
    EXPECT_EQ(text(), u"\r目录\r");
    EXPECT_FALSE(breaksAt(0));
    EXPECT_TRUE(breaksAt(1));
}

TEST_F(SelectionTest, PageBreakBehindAPageBreakAddsNothing) {
    type(u"a");
    selection().InsertBreak(BreakType::page);
    selection().InsertBreak(BreakType::page);
    type(u"b");
    EXPECT_EQ(text(), u"a\rb\r");
}

TEST_F(SelectionTest, PageBreakStaysWithTheFirstPartOfAParagraph) {
    type(u"a");
    selection().InsertBreak(BreakType::page);
    type(u"b");
    selection().TypeParagraph();
    type(u"c");
    EXPECT_TRUE(breaksAt(2));
    EXPECT_FALSE(breaksAt(4));
}

TEST_F(SelectionTest, PageBreakMovesOnToAnInsertedFile) {
    const auto file = fileOf("a.doc", {u"甲", u"乙"});
    type(u"a");
    selection().InsertBreak(BreakType::page);
    selection().InsertFile(file);
    EXPECT_EQ(text(), u"a\r甲\r乙\r\r");
    EXPECT_TRUE(breaksAt(2));
    EXPECT_FALSE(breaksAt(4));
    EXPECT_FALSE(breaksAt(6));
}

TEST_F(SelectionTest, InsertedFileEndsInItsOwnMarkAndThePointBehindIt) {
    const auto file = fileOf("a.doc", {u"甲", u"乙"});
    selection().InsertFile(file);
    EXPECT_EQ(text(), u"甲\r乙\r\r");
    EXPECT_EQ(selection().Range().Start(), 4);
}

TEST_F(SelectionTest, MissingFileIsReportedByNameAndLeavesTheDocumentAsItWas) {
    type(u"abc");
    select(0, 2);
    try {
        selection().InsertFile(folder.path() / "无.doc");
        FAIL() << "a missing file was inserted";
    } catch (const RunTimeError& refusal) {
        EXPECT_EQ(refusal.number(), error::fileNotFound);
        EXPECT_NE(refusal.description().find(u"无.doc"), std::u16string::npos);
    }
    EXPECT_EQ(text(), u"abc\r");
}

TEST_F(SelectionTest, FileThatIsNoDocumentIsRefusedWithItsReason) {
    const auto file = folder.write("文.doc", ascii("{\\rtf1 plain}"));
    type(u"abc");
    try {
        selection().InsertFile(file);
        FAIL() << "a text file was inserted";
    } catch (const RunTimeError& refusal) {
        EXPECT_EQ(refusal.description(),
                  u"不能打开文件“文.doc”：不是 Word 97-2003 格式的文档，而是RTF 文档。"
                  u"安装办公套件（LibreOffice）后程序会自动转换它；"
                  u"也可以用相应的程序打开后另存为 Word 97-2003 文档。");
    }
    EXPECT_EQ(text(), u"abc\r");
}

TEST_F(SelectionTest, DeleteTakesUpToThatManyCharactersAndNeverTheLastMark) {
    type(u"abc");
    select(1, 1);
    selection().Delete(1);
    EXPECT_EQ(text(), u"ac\r");
    selection().Delete(5000);
    EXPECT_EQ(text(), u"a\r");
}

TEST_F(SelectionTest, DeletingHalfAFieldTakesAllOfIt) {
    auto field = std::make_shared<Story>();
    StoryBuilder builder(*field);
    builder.fieldBegin(field::page, PropertyListId::empty);
    builder.text(u" PAGE ", PropertyListId::empty);
    builder.fieldEnd(0, PropertyListId::empty);
    type(u"ab");
    story().insertFragment(1, field);
    select(0, 0);
    selection().Delete(3);
    EXPECT_EQ(text(), u"b\r");
}

TEST_F(SelectionTest, MovingExtendsAndComesBackToAPoint) {
    type(u"abc");
    selection().MoveLeftExtending();
    selection().MoveLeftExtending();
    EXPECT_EQ(selection().Range().Start(), 1);
    EXPECT_EQ(selection().Range().End(), 3);
    selection().MoveRightExtending();
    selection().MoveRightExtending();
    EXPECT_EQ(selection().Range().Start(), 3);
    EXPECT_EQ(selection().Range().End(), 3);
}

TEST_F(SelectionTest, TypedLineBreaksEndParagraphs) {
    type(u"a\r\nb\nc\x07");
    EXPECT_EQ(text(), u"a\rb\rc\r");
}

TEST_F(SelectionTest, IndentInCharactersIsTakenBackByANegativeCount) {
    type(u"abc");
    auto range = document().Range(0, 3);
    range->ParagraphFormat().IndentCharWidth(2);
    EXPECT_EQ(sprmValue(paragraphAt(0), sprm::PDxaLeft, 0), 420U);
    EXPECT_EQ(sprmValue(paragraphAt(0), sprm::PDcxaLeft, 0), 200U);
    range->ParagraphFormat().IndentCharWidth(-2);
    EXPECT_EQ(sprmValue(paragraphAt(0), sprm::PDxaLeft, 1), 0U);
    EXPECT_EQ(sprmValue(paragraphAt(0), sprm::PDcxaLeft, 1), 0U);
}

TEST_F(SelectionTest, AlignmentIsThatOfTheSelectedParagraphs) {
    type(u"a\rb\rc");
    select(0, 3);
    selection().ParagraphFormat().setAlignment(Alignment::center);
    EXPECT_EQ(sprmValue(paragraphAt(0), sprm::PJc, 9), 1U);
    EXPECT_EQ(sprmValue(paragraphAt(2), sprm::PJc80, 9), 1U);
    EXPECT_EQ(sprmValue(paragraphAt(4), sprm::PJc, 9), 9U);
}

TEST_F(SelectionTest, TextBehindAPictureIsNoPicture) {
    selection().InlineShapes().AddPicture(folder.write("a.png", png(10, 10)), false, true);
    type(u"x");
    EXPECT_EQ(text(), u"\x01x\r");
    EXPECT_TRUE(findSprm(lookAt(0), sprm::CPicLocation).has_value());
    select(2, 2);
    type(u"y");
    EXPECT_TRUE(lookAt(1).empty());
    EXPECT_TRUE(lookAt(2).empty());
}

TEST_F(SelectionTest, APictureOfAnotherFormatComesInAsTheConverterGivesIt) {
    const ConverterOf converter{ascii("GIF89a"), png(20, 10)};
    services.pictures = &converter;
    EngineApplication other(services);
    other.documents().Add();
    other.Selection().InlineShapes().AddPicture(folder.write("a.gif", ascii("GIF89a")), false,
                                                true);
    const DocumentTables& tables = other.active().read().tables();
    ASSERT_EQ(tables.blobs.size(), 1U);
    EXPECT_EQ(Picture::fromBlob(*tables.blobs[0])->naturalWidth(), 300);
    EXPECT_EQ(errorNumberOf([&] {
                  other.Selection().InlineShapes().AddPicture(
                      folder.write("b.gif", ascii("GIF87a")), false, true);
              }),
              error::invalidCall);
}

TEST_F(SelectionTest, ASideThatNoPictureCanHaveIsToldInWordsAndTheOldOneStays) {
    InlineShape& shape =
        selection().InlineShapes().AddPicture(folder.write("a.png", png(96, 96)), false, true);
    for (const float side : {0.0F, -1.0F, 0.01F, 1585.0F}) {
        EXPECT_EQ(descriptionOf([&] { shape.setHeight(side); }),
                  u"图片的高度要大于 0、不超过 55.88 厘米。没有设置，图片保持原来的高度。");
        EXPECT_EQ(descriptionOf([&] { shape.setWidth(side); }),
                  u"图片的宽度要大于 0、不超过 55.88 厘米。没有设置，图片保持原来的宽度。");
    }
    const Picture picture = *Picture::fromBlob(*document().read().tables().blobs.at(0));
    EXPECT_EQ(picture.height(), 1440);
    EXPECT_EQ(picture.width(), 1440);
}

TEST_F(SelectionTest, FileThatIsNoPictureIsRefused) {
    const auto file = folder.write("a.png", ascii("no picture"));
    EXPECT_EQ(errorNumberOf([&] { selection().InlineShapes().AddPicture(file, false, true); }),
              error::invalidCall);
    EXPECT_EQ(errorNumberOf([&] { selection().InlineShapes().Item(1); }), error::memberNotFound);
}

} // namespace qvnd::test
