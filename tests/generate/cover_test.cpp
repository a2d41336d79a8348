#include "generate/GenerationWorld.h"

using namespace Qt::StringLiterals;
using namespace qvnd::test;
using qvnd::jet::Value;

namespace {

std::string paragraphs(int count) {
    std::string lines;
    for (int i = 0; i < count; ++i)
        lines += "Selection.TypeParagraph\n";
    return lines;
}

class CoverPage : public GenerationWorld {
protected:
    CoverPage() { smallPlan(); }

    void cover(const QString& field, const Value& value) {
        change(settings(), u"封面表"_s, field, value);
    }
    void wantCustomPage() {
        putTable(settings(), u"是否设置表"_s,
                 {selectionRow(u"否", nullptr, u"否", nullptr, u"是")});
    }
    std::string behindPicture() const {
        return linesBetween("progress 0.81", "Selection.Font.Name");
    }
    std::string behindOrganisation() const {
        return linesBetween("Paragraphs(3).Range.Font.Size", "Selection.ParagraphFormat");
    }
    std::string wholeCover() const {
        return linesBetween("Paragraphs.First.Range.Select", "progress 0.83");
    }
};

} // namespace

TEST_F(CoverPage, APictureWhoseNameLeadsOutOfTheFolderIsToldAndNotInserted) {
    cover(u"图片"_s, u"../../秘密.jpg");
    build();
    EXPECT_FALSE(logged("Selection.InlineShapes.AddPicture"));
    EXPECT_TRUE(logged("message [none] “../../秘密.jpg”不能用作文件或文件夹的名称"));
}

TEST_F(CoverPage, ACustomPageWhoseNameLeadsOutOfTheFolderIsToldAndNothingIsInsertedForIt) {
    wantCustomPage();
    putTable(settings(), u"当前自定义"_s, {{{u"路径"_s, u"../../秘密"}}});
    build();
    EXPECT_TRUE(logged("message [none] “../../秘密.doc”不能用作文件或文件夹的名称"));
    EXPECT_EQ(wholeCover().find("InsertFile plans"), std::string::npos) << wholeCover();
    EXPECT_EQ(wholeCover().find("秘密.doc, "), std::string::npos) << wholeCover();
}

TEST_F(CoverPage, ACustomPageWithoutANameIsToldAndNothingIsInsertedForIt) {
    wantCustomPage();
    putTable(settings(), u"当前自定义"_s, {{{u"路径"_s, u"扉页"}}});
    const auto rows = settings().OpenRecordset(u"Select * from 当前自定义"_s);
    rows->Edit();
    rows->Set(u"路径", Value());
    rows->Update();
    build();
    EXPECT_EQ(wholeCover().find("InsertFile plans"), std::string::npos) << wholeCover();
    EXPECT_FALSE(window.Told.empty());
}

TEST_F(CoverPage, APictureIsInsertedSetInOrderAndLeftBehind) {
    cover(u"图片"_s, u" 楼.jpg ");
    build();
    EXPECT_EQ(linesBetween("events", "Selection.Font.Name"),
              R"(Selection.InlineShapes.AddPicture app/sys/图片库/楼.jpg, false, true
Selection.MoveLeftExtending
Selection.InlineShapes(1).Fill.Visible = false
Selection.InlineShapes(1).Fill.Transparency = 0
Selection.InlineShapes(1).Line.Weight = 0.75
Selection.InlineShapes(1).Line.Transparency = 0
Selection.InlineShapes(1).Line.Visible = false
Selection.InlineShapes(1).LockAspectRatio = false
Selection.InlineShapes(1).Height = 283.45
Selection.InlineShapes(1).Width = 566.9
Selection.InlineShapes(1).PictureFormat.Brightness = 0.5
Selection.InlineShapes(1).PictureFormat.Contrast = 0.5
Selection.InlineShapes(1).PictureFormat.CropLeft = 0
Selection.InlineShapes(1).PictureFormat.CropRight = 0
Selection.InlineShapes(1).PictureFormat.CropTop = 0
Selection.InlineShapes(1).PictureFormat.CropBottom = 0
Selection.ParagraphFormat.Alignment = 1
Selection.MoveRightExtending
progress 0.81
Selection.TypeParagraph
Selection.TypeParagraph
Selection.TypeParagraph
)");
    EXPECT_EQ(behindOrganisation(), paragraphs(3));
}

TEST_F(CoverPage, WithoutAPictureEightParagraphsStandBeforeAndBehindTheOrganisation) {
    for (const char16_t* blank : {u"", u"  "}) {
        log.lines.clear();
        cover(u"图片"_s, blank);
        build();
        EXPECT_FALSE(logged("Selection.InlineShapes"));
        EXPECT_EQ(behindPicture(), paragraphs(8));
        EXPECT_EQ(behindOrganisation(), paragraphs(8));
    }
}

TEST_F(CoverPage, APictureNameKeepsItsWideBlanks) {
    cover(u"图片"_s, u"\u3000楼.jpg ");
    build();
    EXPECT_TRUE(
        logged("Selection.InlineShapes.AddPicture app/sys/图片库/\u3000楼.jpg, false, true"));
    EXPECT_EQ(behindPicture(), paragraphs(3));
    log.lines.clear();
    cover(u"图片"_s, u"\u3000");
    build();
    EXPECT_TRUE(logged("Selection.InlineShapes.AddPicture"));
    EXPECT_EQ(behindPicture(), paragraphs(3));
}

TEST_F(CoverPage, APictureOfNullShowsNoneAndSpacesLikeOne) {
    cover(u"图片"_s, Value());
    build();
    EXPECT_FALSE(logged("Selection.InlineShapes"));
    EXPECT_FALSE(logged("message"));
    EXPECT_EQ(behindPicture(), paragraphs(3));
    EXPECT_EQ(behindOrganisation(), paragraphs(3));
}

TEST_F(CoverPage, TheOrganisationsSizeGoesToTheThirdParagraph) {
    build();
    EXPECT_EQ(linesBetween("Selection.TypeText 建设公司", "Selection.TypeParagraph"),
              "Selection.ParagraphFormat.Alignment = 1\nParagraphs(3).Range.Font.Size = 16\n");
}

TEST_F(CoverPage, ADateOfNullTypesNoDateButItsFormatIsSetStill) {
    cover(u"日期"_s, Value());
    build();
    EXPECT_FALSE(logged("message"));
    EXPECT_EQ(linesBetween("Selection.Font.Size = 14", "progress 0.83"),
              "Selection.ParagraphFormat.Alignment = 1\nSelection.Font.Name = 宋体\n"
              "Selection.Font.Bold = true\nSelection.Font.Size = 14\nSelection.InsertBreak 7\n");
}

TEST_F(CoverPage, ADateFieldIsTypedAsText) {
    Row row = coverRow();
    row[9].value = QDate(2003, 5, 1);
    putTable(settings(), u"封面表"_s, {row});
    build();
    EXPECT_TRUE(logged("Selection.TypeText 2003-5-1"));
}

TEST_F(CoverPage, ACustomPageTakesTheCoversPlace) {
    wantCustomPage();
    putTable(settings(), u"当前自定义"_s, {{{u"路径"_s, u"扉页"}}});
    build();
    EXPECT_EQ(wholeCover(),
              "Selection.InsertFile app/sys/自定义/扉页.doc\nSelection.InsertBreak 7\n");
    EXPECT_FALSE(logged("progress 0.81"));
}

TEST_F(CoverPage, WithoutACurrentCustomPageTheLastDocumentComesASecondTime) {
    wantCustomPage();
    build();
    EXPECT_EQ(wholeCover(),
              "Selection.InsertFile plans/工程/工程.1.2.doc\nSelection.InsertBreak 7\n");
}

TEST_F(CoverPage, WithoutACurrentCustomPageAndDocumentsTheTargetIsInserted) {
    TrvEdit.Remove(u"工程.1.2"_s);
    wantCustomPage();
    build();
    EXPECT_EQ(wholeCover(), "Selection.InsertFile work/施工方案.doc\nSelection.InsertBreak 7\n");
}

TEST_F(CoverPage, ACustomPageIsWantedWhateverTheCoverChoiceSays) {
    putTable(settings(), u"是否设置表"_s, {selectionRow(u"是", u"封面表", u"否", nullptr, u"是")});
    putTable(settings(), u"当前自定义"_s, {{{u"路径"_s, u"扉页"}}});
    build();
    EXPECT_FALSE(logged("Selection.TypeText 新楼工程"));
}

TEST_F(CoverPage, AnEmptyCoverTableFailsAtEachReadAndTheRestIsTyped) {
    putEmptyTable(settings(), u"封面表"_s, coverRow());
    EXPECT_EQ(build(), qvnd::generate::BuildOutcome::finished);
    EXPECT_TRUE(logged("message [none]"));
    std::string typed;
    for (const std::string& line : log.lines)
        if (line.starts_with("Selection.Font.Name") || line.starts_with("Selection.TypeText "))
            typed += line + "\n";
    EXPECT_EQ(typed, "Selection.TypeText 第一章 概况\nSelection.TypeText 第一节 说明\n"
                     "Selection.TypeText 目录\nSelection.Font.Name = 仿宋_GB2312\n"
                     "Selection.TypeText 页眉\nSelection.Font.Name = 黑体\n"
                     "Selection.TypeText 页脚\n");
    EXPECT_EQ(linesBetween("progress 0.81", "progress 0.83").find("InlineShapes"),
              std::string::npos);
}
