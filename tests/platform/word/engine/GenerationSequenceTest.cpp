#include "platform/word/engine/EngineFixture.h"

#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/engine/SectionProperties.h"
#include "support/Images.h"

// The calls that generation makes, in its order, and the document that comes out.
namespace qvnd::test {

namespace {

using namespace qvnd::word;

struct Node {
    int level = 1;
    std::u16string heading;
    std::filesystem::path file; // empty for a folder
};

class GenerationSequence : public EngineTest {
protected:
    void begin() {
        document().SaveAs(folder.path() / "out.doc");
        Document& active = app.ActiveDocument();
        active
            .Range(active.paragraphs().First().Range().Start(),
                   active.paragraphs().Last().Range().End())
            ->Select();
        selection().TypeParagraph();
        selection().TypeParagraph();
    }

    void insert(const Node& node) {
        Document& active = app.ActiveDocument();
        if (node.level == 1) {
            selection().InsertBreak(BreakType::page);
        }
        selection().TypeText(node.heading);
        Style& style = active.styles().Item(u"标题 " + std::u16string(1, u'0' + node.level));
        selection().setStyle(style);
        style.Font().setName(u"仿宋_GB2312");
        style.Font().setSize(12);
        style.ParagraphFormat().setAlignment(Alignment::center);
        if (!node.file.empty()) {
            insertDocumentOf(node);
        }
        if (afterNode_) {
            selection().TypeParagraph();
        }
        afterNode_ = true;
    }

    void insertDocumentOf(const Node& node) {
        afterNode_ = false;
        Document& active = app.ActiveDocument();
        selection().TypeParagraph();
        const int start = active.paragraphs().Last().Range().End();
        selection().InsertFile(node.file);
        const int end = active.paragraphs().Last().Range().End();
        auto inserted = active.Range(start, end);
        inserted->Select();
        inserted->Font().setName(u"仿宋_GB2312");
        inserted->Font().setSize(12);
        active.Range(end - 1, end)->Select();
        active.Save();
    }

    void typeCover(const std::filesystem::path& picture) {
        app.ActiveDocument().paragraphs().First().Range().Select();
        word::Selection& at = selection();
        at.TypeParagraph();
        at.TypeParagraph();
        at.Font().setName(u"黑体");
        at.Font().setSize(26);
        at.Font().setBold(true);
        at.ParagraphFormat().setAlignment(Alignment::center);
        at.TypeParagraph();
        at.TypeText(u"跨河大桥施工方案");
        at.TypeParagraph();
        at.TypeParagraph();
        if (!picture.empty()) {
            typePicture(picture);
        }
        typeSpace(picture.empty() ? 8 : 3);
        at.Font().setName(u"楷体_GB2312");
        at.Font().setBold(true);
        at.TypeText(u"第一建筑公司");
        at.ParagraphFormat().setAlignment(Alignment::center);
        app.ActiveDocument().paragraphs().Item(3).Range().Font().setSize(15);
        typeSpace(picture.empty() ? 8 : 3);
        at.ParagraphFormat().setAlignment(Alignment::center);
        at.Font().setName(u"仿宋_GB2312");
        at.Font().setSize(12);
        at.TypeText(u"2026-05-01");
        at.ParagraphFormat().setAlignment(Alignment::center);
        at.Font().setName(u"仿宋_GB2312");
        at.Font().setBold(true);
        at.Font().setSize(12);
        at.InsertBreak(BreakType::page);
    }

    void typeSpace(int paragraphs) {
        for (int i = 0; i < paragraphs; ++i) {
            selection().TypeParagraph();
        }
    }

    void typePicture(const std::filesystem::path& picture) {
        selection().InlineShapes().AddPicture(picture, false, true);
        selection().MoveLeftExtending();
        InlineShape& shape = selection().InlineShapes().Item(1);
        shape.Fill().setVisible(false);
        shape.Fill().setTransparency(0);
        shape.Line().setWeight(0.75F);
        shape.Line().setTransparency(0);
        shape.Line().setVisible(false);
        shape.setLockAspectRatio(false);
        shape.setHeight(static_cast<float>(10 * 28.345));
        shape.setWidth(static_cast<float>(10 * 28.345));
        shape.PictureFormat().setBrightness(0.5F);
        shape.PictureFormat().setContrast(0.5F);
        shape.PictureFormat().setCropLeft(0);
        shape.PictureFormat().setCropRight(0);
        shape.PictureFormat().setCropTop(0);
        shape.PictureFormat().setCropBottom(0);
        selection().ParagraphFormat().setAlignment(Alignment::center);
        selection().MoveRightExtending();
    }

    void typeContentsHeading() {
        selection().ParagraphFormat().setAlignment(Alignment::center);
        selection().Font().setSize(16);
        selection().Font().setBold(true);
        selection().TypeText(u"目录");
    }

    void setPage() {
        PageSetup& page = app.ActiveDocument().pageSetup();
        const auto cm = [&](float length) { return app.CentimetersToPoints(length); };
        page.setTopMargin(cm(2));
        page.setBottomMargin(cm(2));
        page.setLeftMargin(cm(2.5F));
        page.setRightMargin(cm(2.5F));
        page.setGutter(cm(0));
        page.setGutterOnTop(false);
        page.setHeaderDistance(cm(1));
        page.setFooterDistance(cm(1));
    }

    void addContents() {
        TableOfContentsOptions options;
        app.ActiveDocument().tablesOfContents().Add(selection().Range(), options);
        app.ActiveDocument().tablesOfContents().Item(1).setTabLeader(TabLeader::dots);
    }

    void typeHeaders() {
        View& view = app.ActiveWindow().ActivePane().View();
        view.setSeekView(SeekView::currentPageHeader);
        selection().Delete(5000);
        view.setSeekView(selection().HeaderFooter().IsHeader() ? SeekView::currentPageFooter
                                                               : SeekView::currentPageHeader);
        selection().Delete(5000);
        selection().Font().setName(u"楷体_GB2312");
        selection().Font().setSize(12);
        view.setSeekView(SeekView::currentPageHeader);
        selection().TypeText(u"跨河大桥");
        selection().ParagraphFormat().setAlignment(Alignment::center);
        selection().Font().setName(u"仿宋_GB2312");
        selection().Font().setSize(12);
        view.setSeekView(SeekView::currentPageFooter);
        selection().TypeText(u"第一建筑公司");
        selection().ParagraphFormat().setAlignment(Alignment::center);
        PageNumbers& numbers = selection().Sections(1).Headers(1).PageNumbers();
        numbers.setNumberStyle(0);
        numbers.setHeadingLevelForChapter(0);
        numbers.setIncludeChapterNumber(false);
        numbers.setChapterPageSeparator(0);
        numbers.setRestartNumberingAtSection(true);
        numbers.setStartingNumber(0);
        selection().Sections(1).Footers(1).PageNumbers().Add(PageNumberAlignment::right, false);
        view.setSeekView(SeekView::mainDocument);
    }

    void finish() {
        Document& active = app.ActiveDocument();
        active.SaveAs(folder.path() / "out.doc");
        Document& opened = app.documents().Open(folder.path() / "out.doc");
        EXPECT_EQ(&opened, &active);
        opened.Close();
        app.Quit();
    }

    bool afterNode_ = false;
};

} // namespace

TEST_F(GenerationSequence, GivesCoverContentsHeadingsAndDocumentsEachInParagraphsOfTheirOwn) {
    begin();
    insert({1, u"第一章 总则", fileOf("a.doc", {u"一、依据", u"二、范围"})});
    insert({2, u"第一节 部署", {}});
    insert({3, u"1 人员", fileOf("b.doc", {u"三、人员"})});
    insert({1, u"第二章 安全", {}});
    typeCover({});
    typeContentsHeading();
    setPage();
    pages.numbers = {2, 3, 4, 5};
    addContents();
    typeHeaders();
    app.ActiveDocument().SaveAs(folder.path() / "out.doc");

    const DocumentContent saved = readDocument(folder.path() / "out.doc");
    const std::u16string blank(8, u'\r');
    const std::u16string front =
        u"\r\r\r跨河大桥施工方案\r\r" + blank + u"第一建筑公司" + blank + u"2026-05-01\r目录\r";
    ASSERT_TRUE(joined(saved.main)->text.starts_with(front));
    const auto body = joined(saved.main)->text.rfind(u"第一章 总则");
    EXPECT_EQ(joined(saved.main)->text.substr(body),
              u"第一章 总则\r一、依据\r二、范围\r第一节 部署\r1 人员\r三、人员\r第二章 安全\r\r");
    EXPECT_EQ(joined(saved.main)->text.substr(body - 2, 2), u"\x15\r");
    EXPECT_EQ(pages.asksFor, (std::vector<std::u16string>{u"第一章 总则", u"第一节 部署", u"1 人员",
                                                          u"第二章 安全"}));
}

TEST_F(GenerationSequence, BeginsPagesOnlyAtTheContentsAndAtChapters) {
    begin();
    insert({1, u"第一章", fileOf("a.doc", {u"正文甲"})});
    insert({2, u"第一节", fileOf("b.doc", {u"正文乙"})});
    insert({1, u"第二章", fileOf("c.doc", {u"正文丙"})});
    typeCover({});
    typeContentsHeading();
    addContents();
    std::vector<std::u16string> broken;
    story().forEachParagraph([&](Cp start, Cp end, const ParagraphLook& look) {
        if (hasPageBreak(lists(), look)) {
            broken.push_back(story().text(start, end - 1));
        }
    });
    EXPECT_EQ(broken, (std::vector<std::u16string>{u"目录", u"第一章", u"第二章"}));
    EXPECT_EQ(text().find(u'\f'), std::u16string::npos);
}

TEST_F(GenerationSequence, HeadingsStandInTheFontOfTheirStyleNotOfTheDocumentBefore) {
    begin();
    insert({1, u"第一章", fileOf("a.doc", {u"正文甲"})});
    insert({1, u"第二章", fileOf("b.doc", {u"正文乙"})});
    const auto second = static_cast<Cp>(text().find(u"第二章"));
    EXPECT_EQ(styleAt(second), u"标题 1");
    EXPECT_TRUE(lookAt(second).empty());
    const auto body = static_cast<Cp>(text().find(u"文乙"));
    EXPECT_EQ(sprmValue(lookAt(body), sprm::CHps, 0), 24U);
}

TEST_F(GenerationSequence, OpenReturnsTheSavedDocumentAndQuitLeavesNothingOpen) {
    begin();
    insert({1, u"第一章", fileOf("a.doc", {u"正文甲"})});
    typeCover({});
    typeContentsHeading();
    addContents();
    typeHeaders();
    finish();
    EXPECT_TRUE(question.asked.empty());
    const DocumentContent saved = readDocument(folder.path() / "out.doc");
    EXPECT_EQ(joined(saved.headers.at(0)[1])->text, u"跨河大桥\r");
    EXPECT_EQ(joined(saved.headers[0][3])->text, u"\x13 PAGE \x14"
                                                 u"1\x15\r第一建筑公司\r");
    EXPECT_EQ(joined(saved.headers[0][4])->text, u"\r");
}

// The three parts of the cover stand as they were called for, a picture between them.
TEST_F(GenerationSequence, PictureOnTheCoverStandsInAParagraphOfItsOwn) {
    begin();
    typeCover(folder.write("cover.png", png(100, 50)));
    EXPECT_EQ(text(), u"\r\r\r跨河大桥施工方案\r\r\x01\r\r\r第一建筑公司\r\r\r2026-05-01\r\r\r");
    const auto at = static_cast<Cp>(text().find(u'\x01'));
    const auto blob = sprmValue(lookAt(at), sprm::CPicLocation, 99);
    const auto picture = Picture::fromBlob(*document().read().tables().blobs.at(blob));
    ASSERT_TRUE(picture.has_value());
    EXPECT_EQ(picture->width(), 5669);
    EXPECT_EQ(picture->height(), 5669);
    EXPECT_EQ(sprmValue(paragraphAt(at), sprm::PJc, 9), 1U);
}

} // namespace qvnd::test
