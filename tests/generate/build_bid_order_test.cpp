#include "generate/GenerationWorld.h"

#include <fstream>

using namespace Qt::StringLiterals;
using namespace qvnd::test;
using qvnd::generate::BuildOutcome;

namespace {

class BuildBidOrder : public GenerationWorld {
protected:
    // Folders, documents, a document under a document; six nodes with the root.
    void plan() {
        folder(u"工程.1"_s, u"概况"_s);
        document(u"工程.1.2"_s, u"编制说明"_s);
        document(u"工程.1.2.3"_s, u"附件"_s);
        folder(u"工程.1.4"_s, u"范围"_s);
        document(u"工程.5"_s, u"进度"_s);
    }
};

const char* const beforeTheWalk = R"(pointer hourglass
preview on
dlgTB.show
progress 0.05
create Word.Application
Documents.Add
ActiveDocument.Activate
ActiveDocument.SaveAs work/施工方案.doc
Application.Visible = true
progress 0.1
Paragraphs.First.Range.Start -> 0
Paragraphs.Last.Range.End -> 1
Range(0, 1).Select
Selection.TypeParagraph
Selection.TypeParagraph
progress 0.15
)";

const char* const behindTheWalk = R"(progress 0.8
label 正在设置封面...
Paragraphs.First.Range.Select
Selection.TypeParagraph
Selection.TypeParagraph
Selection.Font.Name = 黑体
Selection.Font.Size = 26
Selection.Font.Bold = true
Selection.ParagraphFormat.Alignment = 1
Selection.TypeParagraph
Selection.TypeText 新楼工程
Selection.TypeParagraph
Selection.TypeParagraph
events
progress 0.81
Selection.TypeParagraph
Selection.TypeParagraph
Selection.TypeParagraph
Selection.TypeParagraph
Selection.TypeParagraph
Selection.TypeParagraph
Selection.TypeParagraph
Selection.TypeParagraph
Selection.Font.Name = 楷体
Selection.Font.Bold = true
Selection.TypeText 建设公司
Selection.ParagraphFormat.Alignment = 1
Paragraphs(3).Range.Font.Size = 16
Selection.TypeParagraph
Selection.TypeParagraph
Selection.TypeParagraph
Selection.TypeParagraph
Selection.TypeParagraph
Selection.TypeParagraph
Selection.TypeParagraph
Selection.TypeParagraph
Selection.ParagraphFormat.Alignment = 1
Selection.Font.Name = 宋体
Selection.Font.Size = 14
Selection.Font.Bold = false
Selection.TypeText 2003-5-1
Selection.ParagraphFormat.Alignment = 1
Selection.Font.Name = 宋体
Selection.Font.Bold = true
Selection.Font.Size = 14
Selection.InsertBreak 7
progress 0.83
Selection.ParagraphFormat.Alignment = 1
Selection.Font.Size = 16
Selection.Font.Bold = true
Selection.TypeText 目录
events
progress 0.86
label 正在设置页面格式...
PageSetup.TopMargin = 15
PageSetup.BottomMargin = 20
PageSetup.LeftMargin = 25
PageSetup.RightMargin = 30
PageSetup.Gutter = 5
PageSetup.GutterOnTop = false
PageSetup.HeaderDistance = 10
PageSetup.FooterDistance = 7.5
events
progress 0.88
TablesOfContents.Add Selection.Range, UseHeadingStyles true, levels 1 to 3, RightAlignPageNumbers true, IncludePageNumbers true, AddedStyles ""
TablesOfContents(1).TabLeader = 1
progress 0.9
ActiveWindow.View.SplitSpecial -> 0
ActiveWindow.ActivePane.View.Type -> 3
ActiveWindow.ActivePane.View.SeekView = 9
Selection.Delete 5000
Selection.HeaderFooter.IsHeader -> true
ActiveWindow.ActivePane.View.SeekView = 10
Selection.Delete 5000
label 正在设置页眉页脚...
Selection.Font.Name = 仿宋_GB2312
Selection.Font.Size = 9
ActiveWindow.ActivePane.View.SeekView = 9
Selection.TypeText 页眉
Selection.ParagraphFormat.Alignment = 0
Selection.Font.Name = 黑体
Selection.Font.Size = 10.5
ActiveWindow.ActivePane.View.SeekView = 10
Selection.TypeText 页脚
Selection.ParagraphFormat.Alignment = 1
Sections(1).Headers(1).PageNumbers.NumberStyle = 0
Sections(1).Headers(1).PageNumbers.HeadingLevelForChapter = 0
Sections(1).Headers(1).PageNumbers.IncludeChapterNumber = false
Sections(1).Headers(1).PageNumbers.ChapterPageSeparator = 0
Sections(1).Headers(1).PageNumbers.RestartNumberingAtSection = true
Sections(1).Headers(1).PageNumbers.StartingNumber = 0
Sections(1).Footers(1).PageNumbers.Add 2, false
progress 0.95
ActiveWindow.ActivePane.View.SeekView = 0
progress 1
dlgTB.unload
ActiveDocument.SaveAs work/施工方案.doc
Documents.Open work/施工方案.doc
OpenedDocument.Close
Application.Quit
preview remove
preview load work/施工方案.doc
preview update
preview off
Application dropped
pointer normal
)";

} // namespace

TEST_F(BuildBidOrder, FoldersDocumentsAndDocumentsUnderDocumentsAsChapters) {
    plan();
    EXPECT_EQ(build(), BuildOutcome::finished);
    const char* const walk = R"(progress 0.1083
Selection.InsertBreak 7
Selection.TypeText 第一章 概况
Selection.Style = Styles(标题 1)
Styles(标题 1).Font.Name = 仿宋_GB2312
Styles(标题 1).Font.Size = 12
Styles(标题 1).ParagraphFormat.Alignment = 1
progress 0.2167
Selection.TypeText 第一节 编制说明
Selection.Style = Styles(标题 2)
Styles(标题 2).Font.Name = 仿宋_GB2312
Styles(标题 2).Font.Size = 12
Styles(标题 2).ParagraphFormat.Alignment = 1
Selection.TypeParagraph
Paragraphs.Last.Range.End -> 19
Selection.InsertFile plans/工程/工程.1.2.doc
Paragraphs.Last.Range.End -> 119
Range(18, 119).Select
Range(18, 119).Font.Name = 仿宋_GB2312
Range(18, 119).Font.Size = 12
Paragraphs.Last.Range.End -> 119
Range(118, 119).Select
ActiveDocument.Save
progress 0.325
Selection.TypeText 第一小节 附件
Selection.Style = Styles(标题 3)
Styles(标题 3).Font.Name = 仿宋_GB2312
Styles(标题 3).Font.Size = 12
Styles(标题 3).ParagraphFormat.Alignment = 1
Selection.TypeParagraph
Paragraphs.Last.Range.End -> 127
Selection.InsertFile plans/工程/工程.1.2.3.doc
Paragraphs.Last.Range.End -> 227
Range(126, 227).Select
Range(126, 227).Font.Name = 仿宋_GB2312
Range(126, 227).Font.Size = 12
Paragraphs.Last.Range.End -> 227
Range(226, 227).Select
Range(226, 227).ParagraphFormat.IndentCharWidth -2
ActiveDocument.Save
progress 0.4333
Selection.TypeText 第二节 范围
Selection.Style = Styles(标题 2)
Styles(标题 2).Font.Name = 仿宋_GB2312
Styles(标题 2).Font.Size = 12
Styles(标题 2).ParagraphFormat.Alignment = 1
Selection.TypeParagraph
progress 0.5417
Selection.InsertBreak 7
Selection.TypeText 第二章 进度
Selection.Style = Styles(标题 1)
Styles(标题 1).Font.Name = 仿宋_GB2312
Styles(标题 1).Font.Size = 12
Styles(标题 1).ParagraphFormat.Alignment = 1
Selection.TypeParagraph
Paragraphs.Last.Range.End -> 242
Selection.InsertFile plans/工程/工程.5.doc
Paragraphs.Last.Range.End -> 342
Range(241, 342).Select
Range(241, 342).Font.Name = 仿宋_GB2312
Range(241, 342).Font.Size = 12
Paragraphs.Last.Range.End -> 342
Range(341, 342).Select
ActiveDocument.Save
)";
    EXPECT_EQ(wholeLog(), std::string(beforeTheWalk) + walk + behindTheWalk);
}

TEST_F(BuildBidOrder, DocumentsUnderDocumentsAsNumbersWithBlankLines) {
    plan();
    switches.gChildDocAsNumber = true;
    switches.gBlankLineAroundTitle = true;
    controls.style = u"1、"_s;
    controls.indent = u"4"_s;
    EXPECT_EQ(build(), BuildOutcome::finished);
    const char* const walk = R"(progress 0.1083
Selection.InsertBreak 7
Selection.TypeText 第一章 概况
Selection.Style = Styles(标题 1)
Styles(标题 1).Font.Name = 仿宋_GB2312
Styles(标题 1).Font.Size = 12
Styles(标题 1).ParagraphFormat.Alignment = 1
Selection.TypeParagraph
progress 0.2167
Selection.TypeText 第一节 编制说明
Selection.Style = Styles(标题 2)
Styles(标题 2).Font.Name = 仿宋_GB2312
Styles(标题 2).Font.Size = 12
Styles(标题 2).ParagraphFormat.Alignment = 1
Selection.TypeParagraph
Selection.TypeParagraph
Paragraphs.Last.Range.End -> 21
Selection.InsertFile plans/工程/工程.1.2.doc
Paragraphs.Last.Range.End -> 121
Range(20, 121).Select
Range(20, 121).Font.Name = 仿宋_GB2312
Range(20, 121).Font.Size = 12
Paragraphs.Last.Range.End -> 121
Range(120, 121).Select
ActiveDocument.Save
Selection.TypeParagraph
progress 0.325
Selection.TypeText 1、 附件
Selection.TypeParagraph
Selection.TypeParagraph
Paragraphs.Last.Range.End -> 129
Selection.InsertFile plans/工程/工程.1.2.3.doc
Paragraphs.Last.Range.End -> 229
Range(128, 229).Select
Range(128, 229).Font.Name = 仿宋_GB2312
Range(128, 229).Font.Size = 12
Range(128, 229).ParagraphFormat.IndentCharWidth 4
Paragraphs.Last.Range.End -> 229
Range(228, 229).Select
Range(228, 229).ParagraphFormat.IndentCharWidth -4
ActiveDocument.Save
Selection.TypeParagraph
progress 0.4333
Selection.TypeText 第二节 范围
Selection.Style = Styles(标题 2)
Styles(标题 2).Font.Name = 仿宋_GB2312
Styles(标题 2).Font.Size = 12
Styles(标题 2).ParagraphFormat.Alignment = 1
Selection.TypeParagraph
progress 0.5417
Selection.InsertBreak 7
Selection.TypeText 第二章 进度
Selection.Style = Styles(标题 1)
Styles(标题 1).Font.Name = 仿宋_GB2312
Styles(标题 1).Font.Size = 12
Styles(标题 1).ParagraphFormat.Alignment = 1
Selection.TypeParagraph
Selection.TypeParagraph
Paragraphs.Last.Range.End -> 246
Selection.InsertFile plans/工程/工程.5.doc
Paragraphs.Last.Range.End -> 346
Range(245, 346).Select
Range(245, 346).Font.Name = 仿宋_GB2312
Range(245, 346).Font.Size = 12
Paragraphs.Last.Range.End -> 346
Range(345, 346).Select
ActiveDocument.Save
Selection.TypeParagraph
)";
    EXPECT_EQ(wholeLog(), std::string(beforeTheWalk) + walk + behindTheWalk);
}

TEST_F(BuildBidOrder, AnEarlierDocumentIsDeletedBeforeTheNewOneIsMade) {
    smallPlan();
    std::ofstream(place("work") / "施工方案.doc") << "earlier";
    build();
    EXPECT_EQ(linesBetween("create Word.Application", "ActiveDocument.Activate"),
              "delete work/施工方案.doc\nDocuments.Add\n");
    EXPECT_FALSE(std::filesystem::exists(place("work") / "施工方案.doc"));
}

TEST_F(BuildBidOrder, AServerStillHeldIsDroppedBetweenEventsBeforeTheNewOneStarts) {
    smallPlan();
    word.hold(factory.create());
    log.lines.clear();
    build();
    EXPECT_EQ(linesBetween("progress 0.05", "Documents.Add"),
              "events\nApplication dropped\nevents\ncreate Word.Application\n");
}

TEST_F(BuildBidOrder, ASecondRunOfAWindowClosesItsFirstFolderHeading) {
    smallPlan();
    build();
    EXPECT_EQ(linesBetween("Styles(标题 1).ParagraphFormat", "progress"), "");
    log.lines.clear();
    build();
    EXPECT_EQ(linesBetween("Styles(标题 1).ParagraphFormat", "progress"),
              "Selection.TypeParagraph\n");
}

TEST_F(BuildBidOrder, TheCountersStartAnewInEveryRun) {
    smallPlan();
    build();
    log.lines.clear();
    build();
    EXPECT_TRUE(logged("Selection.TypeText 第一章 概况"));
    EXPECT_TRUE(logged("progress 0.2167"));
    EXPECT_EQ(window.LevelCounters.at(1), 0);
}

TEST_F(BuildBidOrder, HeadingsOfLevelOneWithoutTheirOwnPageGetOneBreakAtTheEnd) {
    smallPlan();
    change(settings(), u"章节设置表"_s, u"置页头"_s, u"否");
    build();
    EXPECT_EQ(linesBetween("ActiveWindow.ActivePane.View.SeekView = 0", "progress 1"),
              "Selection.InsertBreak 7\n");
    EXPECT_EQ(linesOf("Selection.InsertBreak"),
              "Selection.InsertBreak 7\nSelection.InsertBreak 7\n");
}

TEST_F(BuildBidOrder, WithoutARowForLevelOneThereIsNoLastBreak) {
    smallPlan();
    change(settings(), u"章节设置表"_s, u"级别"_s, u"一");
    change(settings(), u"章节设置表"_s, u"置页头"_s, u"否");
    build();
    EXPECT_EQ(linesBetween("ActiveWindow.ActivePane.View.SeekView = 0", "progress 1"), "");
}
