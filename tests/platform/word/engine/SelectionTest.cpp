#include "platform/word/engine/EngineFixture.h"

#include "platform/word/docfile/WordFileBuilder.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/engine/DocumentInsertion.h"
#include "platform/word/engine/SectionProperties.h"
#include "platform/word/engine/StoryEditor.h"
#include "platform/word/formatting/PropertyValues.h"
#include "support/ByteText.h"
#include "support/Errors.h"
#include "support/Images.h"

#include <algorithm>
#include <memory>

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

TEST_F(SelectionTest, TheMarkBehindAHeadingHasNotTheHeadingsFont) {
    selection().setStyle(document().styles().Item(u"标题 1"));
    selection().Font().setSize(20);
    type(u"章");
    ASSERT_EQ(halfPointsAt(1), 40U) << "the heading's own mark";
    selection().TypeParagraph();
    EXPECT_EQ(halfPointsAt(1), 40U);
    EXPECT_TRUE(lookAt(2).empty());
    type(u"文");
    EXPECT_TRUE(lookAt(2).empty());
    EXPECT_TRUE(lookAt(3).empty());
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

TEST_F(SelectionTest, SmartTagsAreToldOfTheFirstFileThatHasThem) {
    WordFile tagged = plainWordFile(u"text\r");
    tagged.parts[word::FibPair::SttbfBkmkFactoid] = hex("FFFF 0200 0000 0000 0000");
    const auto file = folder.write("a.doc", wordFile(tagged));
    selection().InsertFile(fileOf("b.doc", {u"甲"}));
    selection().InsertFile(file);
    selection().InsertFile(file);
    EXPECT_EQ(report.lines,
              (std::vector<std::u16string>{
                  u"a.doc: 智能标记未能带入，文字不变；其他文档中的智能标记不再逐一说明"}));
}

TEST_F(SelectionTest, CharacterFormatsThatTheFileHasNoRoomForAreToldOnceWithTheSave) {
    constexpr word::Cp room = 32'768;
    word::PropertyLists& all = document().change().tables().lists;
    Bytes longList{0x47, 0xCA, 250};
    longList.resize(longList.size() + 250);
    word::Story text;
    text.text = std::u16string(room + 2, u'x');
    for (word::Cp i = 0; i < text.size(); ++i) {
        text.characters.push_back({1, all.intern(word::withSprm16(longList, word::sprm::CHps, i))});
    }
    text.paragraphs = {{text.size(), 0, word::PropertyListId::empty}};
    story().insert(0, word::slicesOf(std::move(text)));
    document().SaveAs(folder.path() / "a.doc");
    document().Save();
    EXPECT_EQ(report.lines,
              (std::vector<std::u16string>{
                  u"a.doc: 文字的格式 2 种过于繁复，只写入了一部分，用它们的文字可能与原来不同"}));
}

TEST_F(SelectionTest, CommentsWhoseTextTheFileCannotNameAreToldOnceWithTheSave) {
    constexpr word::Cp most = 16'379;
    word::DocumentTables& tables = document().change().tables();
    word::Story comment;
    comment.text = u"\u0005\r";
    comment.characters = {{2}};
    comment.paragraphs = {{2}};
    const auto commentText = std::make_shared<const word::Story>(comment);
    const auto special = tables.lists.intern(word::withSprm8({}, word::sprm::CFSpec, 1));
    word::DocumentBody body;
    word::Story text;
    for (word::Cp i = 0; i < most + 2; ++i) {
        text.text += u"x\u0005";
        text.characters.push_back({1});
        text.characters.push_back({1, special});
        const auto index = static_cast<std::uint32_t>(tables.sideStories.size());
        text.anchors.push_back({2 * i + 1, word::AnchorKind::comment, index});
        tables.sideStories.push_back({commentText, true, u"王工", u"W", 0});
        body.bookmarks.push_back({u"", 2 * i, 2 * i + 1, 0, index});
    }
    text.text += u"\r";
    text.characters.push_back({1});
    text.paragraphs = {{text.size()}};
    body.sections = {{text.size()}};
    body.main = word::slicesOf(std::move(text));
    insertDocument(document().change(), 0, std::move(body));
    document().SaveAs(folder.path() / "a.doc");
    document().Save();
    EXPECT_EQ(report.lines,
              (std::vector<std::u16string>{u"a.doc: 批注所指的文字 2 处未能标出，一个文档最多 "
                                           u"16379 处，批注仍在原来的位置"}));
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

TEST_F(SelectionTest, MovingBackOverAPointExtendsToItsOtherSide) {
    type(u"abc");
    select(1, 1);
    selection().MoveLeftExtending();
    EXPECT_EQ(selection().Range().Start(), 0);
    EXPECT_EQ(selection().Range().End(), 1);
    selection().MoveRightExtending();
    selection().MoveRightExtending();
    EXPECT_EQ(selection().Range().Start(), 1);
    EXPECT_EQ(selection().Range().End(), 2);
    selection().MoveLeftExtending();
    selection().MoveLeftExtending();
    EXPECT_EQ(selection().Range().Start(), 0);
    EXPECT_EQ(selection().Range().End(), 1);
}

TEST_F(SelectionTest, ThePointMovesNotBeyondTheTextsEnds) {
    type(u"a");
    select(0, 0);
    selection().MoveLeftExtending();
    EXPECT_EQ(selection().Range().Start(), 0);
    select(2, 2);
    selection().MoveRightExtending();
    EXPECT_EQ(selection().Range().End(), 2);
}

// A field in a field: a{X{Y}Z}b.
TEST_F(SelectionTest, DeletingAnEndOfAFieldTakesTheFieldAndNoMore) {
    const auto textWithout = [this](int start, int end) {
        app.documents().Add();
        auto field = std::make_shared<Story>();
        StoryBuilder builder(*field);
        builder.fieldBegin(field::page, PropertyListId::empty);
        builder.text(u"X", PropertyListId::empty);
        builder.fieldBegin(field::page, PropertyListId::empty);
        builder.text(u"Y", PropertyListId::empty);
        builder.fieldEnd(0, PropertyListId::empty);
        builder.text(u"Z", PropertyListId::empty);
        builder.fieldEnd(0, PropertyListId::empty);
        type(u"ab");
        story().insertFragment(1, field);
        select(start, end);
        selection().Delete(1);
        std::u16string shown = text();
        std::replace(shown.begin(), shown.end(), u'\x13', u'{');
        std::replace(shown.begin(), shown.end(), u'\x15', u'}');
        return shown;
    };
    EXPECT_EQ(textWithout(7, 8), u"ab\r");
    EXPECT_EQ(textWithout(1, 2), u"ab\r");
    EXPECT_EQ(textWithout(5, 6), u"a{XZ}b\r");
    EXPECT_EQ(textWithout(3, 4), u"a{XZ}b\r");
    EXPECT_EQ(textWithout(4, 5), u"a{X{}Z}b\r");
    EXPECT_EQ(textWithout(5, 8), u"ab\r");
    EXPECT_EQ(textWithout(0, 2), u"b\r");
    EXPECT_EQ(textWithout(7, 9), u"a\r");
}

TEST_F(SelectionTest, ACharacterStyleGoesToTheSelectedCharactersAndWhatIsTypedNext) {
    type(u"abcd");
    select(1, 3);
    selection().setStyle(document().styles().Item(u"超链接"));
    const auto styleOfCharacter = [this](Cp at) {
        const auto& styles = document().read().tables().styles.styles;
        const auto style = findSprm(lookAt(at), sprm::CIstd);
        return style ? int{styles.at(numberOf(*style))->sti} : -1;
    };
    EXPECT_EQ(styleOfCharacter(0), -1);
    EXPECT_EQ(styleOfCharacter(1), 85);
    EXPECT_EQ(styleOfCharacter(2), 85);
    EXPECT_EQ(styleOfCharacter(3), -1);
    EXPECT_EQ(styleAt(0), styleAt(3));
    select(0, 0);
    selection().setStyle(document().styles().Item(u"超链接"));
    type(u"x");
    EXPECT_EQ(styleOfCharacter(0), 85);
    EXPECT_EQ(styleOfCharacter(1), -1);
}

TEST_F(SelectionTest, AStyleThatIsNotThereChangesNothing) {
    type(u"ab");
    DocumentTables& tables = document().change().tables();
    Insertion all{0, 2};
    StoryEditor editor(story(), tables, all);
    const ParagraphLook look = story().paragraphLook(0);
    editor.applyStyle(static_cast<StyleIndex>(tables.styles.styles.size()));
    EXPECT_EQ(story().paragraphLook(0), look);
    tables.styles.styles.emplace_back();
    editor.applyStyle(static_cast<StyleIndex>(tables.styles.styles.size() - 1));
    EXPECT_EQ(story().paragraphLook(0), look);
    EXPECT_TRUE(lookAt(0).empty());
}

TEST_F(SelectionTest, AParagraphsMarkDoesNotCountForTheFormattingThatItsStyleTakesAway) {
    type(u"x\rabcd\ry");
    select(4, 7); // half of the text, and the mark
    selection().Font().setBold(true);
    select(2, 2);
    selection().setStyle(document().styles().Item(u"标题 1"));
    EXPECT_FALSE(boldAt(3));
    EXPECT_TRUE(boldAt(4));
    EXPECT_TRUE(boldAt(5));
    select(3, 6); // three quarters
    selection().Font().setBold(true);
    selection().setStyle(document().styles().Item(u"标题 1"));
    EXPECT_FALSE(boldAt(3));
    EXPECT_FALSE(boldAt(5));
}

TEST_F(SelectionTest, EachSettingOfAPictureReachesItsPicture) {
    InlineShape& shape =
        selection().InlineShapes().AddPicture(folder.write("a.png", png(96, 96)), false, true);
    const auto blob = [this] { return *document().read().tables().blobs.at(0); };
    Picture expected = *Picture::fromBlob(blob());
    shape.Fill().setTransparency(0.5F);
    expected.setFillTransparency(0.5);
    EXPECT_EQ(blob(), *expected.blob());
    shape.Fill().setVisible(true);
    expected.setFillVisible(true);
    EXPECT_EQ(blob(), *expected.blob());
    shape.Line().setWeight(3);
    expected.setLineWeight(3);
    EXPECT_EQ(blob(), *expected.blob());
    shape.Line().setTransparency(0.25F);
    expected.setLineTransparency(0.25);
    EXPECT_EQ(blob(), *expected.blob());
    shape.Line().setVisible(true);
    expected.setLineVisible(true);
    EXPECT_EQ(blob(), *expected.blob());
    shape.PictureFormat().setBrightness(0.75F);
    expected.setBrightness(0.75);
    EXPECT_EQ(blob(), *expected.blob());
    shape.PictureFormat().setContrast(0.25F);
    expected.setContrast(0.25);
    EXPECT_EQ(blob(), *expected.blob());
    shape.setLockAspectRatio(false);
    expected.setLockAspectRatio(false);
    EXPECT_EQ(blob(), *expected.blob());
}

TEST_F(SelectionTest, APictureIsCroppedByPartsOfItsNaturalSize) {
    // 72 points wide and 36 high.
    InlineShape& shape =
        selection().InlineShapes().AddPicture(folder.write("a.png", png(96, 48)), false, true);
    const auto blob = [this] { return *document().read().tables().blobs.at(0); };
    Picture expected = *Picture::fromBlob(blob());
    shape.PictureFormat().setCropLeft(18);
    expected.setCrop(Picture::Side::left, 0.25);
    EXPECT_EQ(blob(), *expected.blob());
    shape.PictureFormat().setCropRight(9);
    expected.setCrop(Picture::Side::right, 0.125);
    EXPECT_EQ(blob(), *expected.blob());
    shape.PictureFormat().setCropTop(18);
    expected.setCrop(Picture::Side::top, 0.5);
    EXPECT_EQ(blob(), *expected.blob());
    shape.PictureFormat().setCropBottom(9);
    expected.setCrop(Picture::Side::bottom, 0.25);
    EXPECT_EQ(blob(), *expected.blob());
}

TEST_F(SelectionTest, TheLongestSideOfAPictureIs1584Points) {
    InlineShape& shape =
        selection().InlineShapes().AddPicture(folder.write("a.png", png(96, 96)), false, true);
    shape.setHeight(1584);
    shape.setWidth(0.05F);
    const Picture picture = *Picture::fromBlob(*document().read().tables().blobs.at(0));
    EXPECT_EQ(picture.height(), 31680);
    EXPECT_EQ(picture.width(), 1);
}

TEST_F(SelectionTest, APictureWhoseDataAreLostOrDamagedIsNoMember) {
    InlineShape& shape =
        selection().InlineShapes().AddPicture(folder.write("a.png", png(96, 96)), false, true);
    auto& blobs = document().change().tables().blobs;
    for (const DataBlob& blob : {DataBlob(), std::make_shared<const Bytes>(Bytes{1, 2, 3})}) {
        blobs.at(0) = blob;
        EXPECT_EQ(errorNumberOf([&] { shape.setHeight(10); }), error::memberNotFound);
    }
    blobs.clear();
    EXPECT_EQ(errorNumberOf([&] { shape.setHeight(10); }), error::memberNotFound);
}

TEST_F(SelectionTest, PicturesOfTheSelectionAreCountedFromOne) {
    for (const char* name : {"a.png", "b.png"}) {
        type(u"\x01x"); // a control character that is typed is none of a picture
        selection().InlineShapes().AddPicture(folder.write(name, png(96, 96)), false, true);
    }
    select(0, 5);
    selection().InlineShapes().Item(2).setWidth(10);
    const auto width = [this](std::size_t blob) {
        return Picture::fromBlob(*document().read().tables().blobs.at(blob))->width();
    };
    EXPECT_EQ(width(0), 1440);
    EXPECT_EQ(width(1), 200);
    EXPECT_EQ(errorNumberOf([&] { selection().InlineShapes().Item(3); }), error::memberNotFound);
    EXPECT_EQ(errorNumberOf([&] { selection().InlineShapes().Item(0); }), error::memberNotFound);
    select(2, 4);
    selection().InlineShapes().Item(1).setWidth(20);
    EXPECT_EQ(width(0), 1440);
    EXPECT_EQ(width(1), 400);
}

} // namespace qvnd::test
