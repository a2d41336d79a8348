#include "generate/GenerationWorld.h"

#include "platform/files/Paths.h"
#include "support/Text.h"

using namespace Qt::StringLiterals;
using namespace qvnd::test;

namespace {

class NodeInsertion : public GenerationWorld {
protected:
    void levelOne(const QString& field, const char16_t* value) {
        change(settings(), u"章节设置表"_s, field, value);
    }
    void childOfADocument() {
        document(u"工程.1"_s, u"甲"_s);
        document(u"工程.1.1"_s, u"乙"_s);
    }
};

} // namespace

TEST_F(NodeInsertion, AnEmptyNumberTextMakesNeitherBreakNorHeading) {
    levelOne(u"带该级标题"_s, u"否");
    putTable(settings(), u"序号表"_s, {{{u"一型"_s, u""}}});
    document(u"工程.1"_s, u"甲"_s);
    build();
    EXPECT_EQ(linesBetween("progress 0.325", "Selection.InsertFile"),
              "Selection.TypeParagraph\nParagraphs.Last.Range.End -> 4\n");
}

TEST_F(NodeInsertion, TheWindowKeepsWhatBecameOfEachNode) {
    smallPlan();
    log.failAt("Selection.InsertFile", 53, u"找不到文件");
    build();
    ASSERT_EQ(window.Visited.size(), 2U);
    EXPECT_EQ(window.Visited[0].Failure, std::nullopt);
    EXPECT_EQ(window.Visited[1].Failure, u"找不到文件"_s);
    EXPECT_EQ(window.Visited[1].Key, TrvEdit.Item(3).Key());
    build();
    EXPECT_EQ(window.Visited.size(), 2U);
}

TEST_F(NodeInsertion, AffixesAloneMakeAHeading) {
    putTable(settings(), u"序号表"_s, {{{u"一型"_s, u""}}});
    folder(u"工程.1"_s, u"甲"_s);
    build();
    EXPECT_TRUE(logged("Selection.TypeText 第章 甲"));
}

TEST_F(NodeInsertion, PositionsOfAHeadingSetItsStylesAlignment) {
    levelOne(u"位置"_s, u"左");
    folder(u"工程.1"_s, u"甲"_s);
    build();
    EXPECT_TRUE(logged("Styles(标题 1).ParagraphFormat.Alignment = 0"));
    log.lines.clear();
    levelOne(u"位置"_s, u"右");
    build();
    EXPECT_TRUE(logged("Styles(标题 1).ParagraphFormat.Alignment = 2"));
    log.lines.clear();
    levelOne(u"位置"_s, u"别处");
    build();
    EXPECT_FALSE(logged("Styles(标题 1).ParagraphFormat"));
}

TEST_F(NodeInsertion, ChildrenAsChaptersAreOnlyOutdentedAtTheirLastMark) {
    childOfADocument();
    build();
    EXPECT_TRUE(logged("Selection.TypeText 第一节 乙"));
    EXPECT_FALSE(logged("Range(115, 216).ParagraphFormat"));
    EXPECT_TRUE(logged("Range(215, 216).ParagraphFormat.IndentCharWidth -2"));
}

TEST_F(NodeInsertion, ADocumentUnderAFolderIsNeverIndented) {
    switches.gChildDocAsNumber = true;
    smallPlan();
    build();
    EXPECT_TRUE(logged("Selection.TypeText 第一节 说明"));
    EXPECT_EQ(linesBetween("progress 0.15", "progress 0.8").find("IndentCharWidth"),
              std::string::npos);
}

TEST_F(NodeInsertion, ChildrenAsNumbersTakeNoStyleButKeepTheirLevelsPageBreak) {
    switches.gChildDocAsNumber = true;
    controls.style = u"A)"_s;
    putTable(settings(), u"章节设置表"_s,
             {{{u"级别"_s, u"1"},
               {u"字体"_s, u"黑体"},
               {u"字号"_s, u"小四"},
               {u"前缀"_s, u""},
               {u"中缀"_s, u""},
               {u"序号标志"_s, u"I型"},
               {u"后缀"_s, u""},
               {u"位置"_s, u"左"},
               {u"置页头"_s, u"否"},
               {u"带该级标题"_s, u"是"}},
              {{u"级别"_s, u"2"}, {u"序号标志"_s, u"I型"}, {u"置页头"_s, u"是"}}});
    childOfADocument();
    build();
    EXPECT_EQ(linesBetween("progress 0.4333", "Paragraphs"),
              "Selection.InsertBreak 7\nSelection.TypeText A) 乙\nSelection.TypeParagraph\n");
}

TEST_F(NodeInsertion, TheStyleWithoutANumberBeginsWithTheBlank) {
    switches.gChildDocAsNumber = true;
    controls.style = u"无"_s;
    childOfADocument();
    build();
    EXPECT_TRUE(logged("Selection.TypeText  乙"));
}

TEST_F(NodeInsertion, WithNothingPickedAChildHasItsBareNumber) {
    switches.gChildDocAsNumber = true;
    childOfADocument();
    build();
    EXPECT_TRUE(logged("Selection.TypeText 1 乙"));
}

TEST_F(NodeInsertion, AnIndentThatIsNoNumberIsTheNodesError) {
    controls.indent = u"."_s;
    childOfADocument();
    build();
    EXPECT_EQ(linesOf("message").rfind("message [information] ", 0), 0U);
    EXPECT_EQ(linesOf("ActiveDocument.Save"),
              "ActiveDocument.SaveAs work/施工方案.doc\nActiveDocument.Save\n"
              "ActiveDocument.SaveAs work/施工方案.doc\n");
}

TEST_F(NodeInsertion, LevelsBelowNineTakeTheStyleAndTheChildCounterOfLevelNine) {
    switches.gChildDocAsNumber = true;
    controls.style = u"1."_s;
    QString key = u"工程"_s;
    for (int level = 1; level <= 10; ++level) {
        key += u".1"_s;
        if (level < 9)
            folder(key, u"层"_s);
        else
            document(key, u"文%1"_s.arg(level));
    }
    document(key.chopped(1) + u"2"_s, u"文十之二"_s);
    build();
    EXPECT_TRUE(logged("Selection.TypeText [1] 文9"));
    EXPECT_TRUE(logged("Styles(标题 9).Font.Name"));
    EXPECT_TRUE(logged("Selection.TypeText 1. 文10"));
    EXPECT_TRUE(logged("Selection.TypeText 1. 文十之二"));
    EXPECT_FALSE(logged("Styles(标题 10)"));
}

TEST_F(NodeInsertion, LevelsBelowNineAreNumberedWithTheirOwnCounter) {
    QString key = u"工程"_s;
    for (int level = 1; level <= 9; ++level) {
        key += u".1"_s;
        folder(key, u"层"_s);
    }
    folder(key + u".1"_s, u"十之一"_s);
    folder(key + u".2"_s, u"十之二"_s);
    build();
    EXPECT_TRUE(logged("Selection.TypeText [1] 十之一"));
    EXPECT_TRUE(logged("Selection.TypeText [2] 十之二"));
}

TEST_F(NodeInsertion, AFolderAsTheFirstNodeOfAWindowRunsOnIntoTheNextNode) {
    folder(u"工程.1"_s, u"甲"_s);
    folder(u"工程.2"_s, u"乙"_s);
    build();
    EXPECT_EQ(linesBetween("Styles(标题 1).ParagraphFormat", "progress 0.4333"), "");
    EXPECT_EQ(linesBetween("Selection.TypeText 第二章 乙", "progress 0.8"),
              "Selection.Style = Styles(标题 1)\nStyles(标题 1).Font.Name = 仿宋_GB2312\n"
              "Styles(标题 1).Font.Size = 12\nStyles(标题 1).ParagraphFormat.Alignment = 1\n"
              "Selection.TypeParagraph\n");
}

TEST_F(NodeInsertion, TheInsertedTextTakesTheBodyFontFromItsFirstCharacter) {
    change(settings(), u"页面设置表"_s, u"正文字体"_s, u"宋体");
    change(settings(), u"页面设置表"_s, u"正文字号"_s, u"10.5");
    document(u"工程.1"_s, u"甲"_s);
    build();
    EXPECT_TRUE(logged("Range(9, 110).Font.Name = 宋体"));
    EXPECT_TRUE(logged("Range(9, 110).Font.Size = 10.5"));
}

TEST_F(NodeInsertion, AnUnknownMultiLevelModeRepeatsThePreviousNumber) {
    switches.gMultLevelOn = true;
    switches.gMultLevelMode = 7;
    window.HeadingNumberText = u"旧"_s;
    folder(u"工程.1"_s, u"甲"_s);
    build();
    EXPECT_TRUE(logged("Selection.TypeText 旧 甲"));
}

TEST_F(NodeInsertion, ATextThatIsNoKeyIsToldAndInsertsNoFile) {
    for (const auto& key : {u"工程./外"_s, u"工程.\\外"_s, u"工程.NUL"_s}) {
        document(key, u"外"_s);
    }
    build();
    EXPECT_FALSE(logged("Selection.InsertFile"));
    EXPECT_TRUE(logged("message [information] “工程./外”不是文档的编号，没有对应的文件"));
    EXPECT_TRUE(logged("message [information] “工程.NUL”不是文档的编号，没有对应的文件"));
}
