#include "generate/GenerationReport.h"

#include "generate/GenerationWorld.h"

using namespace Qt::StringLiterals;
using namespace qvnd;
using namespace qvnd::test;

namespace {

class Report : public GenerationWorld {
protected:
    Report() {
        folder(u"工程.1"_s, u"概况"_s);
        document(u"工程.1.1"_s, u"说明"_s);
        document(u"工程.2"_s, u"附则"_s);
    }
    generate::GenerationReport report() { return reportOf(TrvEdit, window, losses.losses()); }

    generate::CollectedLosses losses;
};

} // namespace

TEST_F(Report, OfARunWithoutFailuresIsEmpty) {
    build();
    const auto told = report();
    EXPECT_EQ(told.nodes, 3);
    EXPECT_EQ(told.documents, 2);
    EXPECT_TRUE(told.missing.empty() && told.leftOut.empty());
    EXPECT_EQ(summaryOf(told), u"3 个节点，2 个文档全部放入，3 个标题。"_s);
}

TEST_F(Report, NamesTheDocumentThatDidNotComeInAndWhy) {
    log.failAt("Selection.InsertFile plans/工程/工程.1.1.doc", 5174, u"找不到该文件");
    build();
    const auto told = report();
    ASSERT_EQ(told.missing.size(), 1U);
    EXPECT_EQ(told.missing[0].key, u"工程.1.1"_s);
    EXPECT_EQ(told.missing[0].name, u"说明"_s);
    EXPECT_EQ(told.missing[0].what, u"找不到该文件"_s);
    EXPECT_EQ(summaryOf(told), u"3 个节点，2 个文档放入 1 个，1 个没有放入，3 个标题。"_s);
}

TEST_F(Report, CountsTheHeadingsOfTheContentsAndNoTitleThatStaysPlainText) {
    document(u"工程.2.1"_s, u"附表"_s);
    switches.gChildDocAsNumber = true;
    log.failAt("Selection.Style = Styles(标题 2)", 5834, u"没有这个样式");
    build();
    EXPECT_EQ(report().headings, 2);
}

TEST_F(Report, NamesWhatWasLeftOutOfADocumentByItsFile) {
    losses.notCarried(u"/方案/工程/工程.2.doc", u"2 个脚注");
    build();
    const auto told = report();
    ASSERT_EQ(told.leftOut.size(), 1U);
    EXPECT_EQ(told.leftOut[0].name, u"附则"_s);
    EXPECT_EQ(told.leftOut[0].what, u"2 个脚注"_s);
}

TEST_F(Report, NamesWhatFailedOfTheCoverTheContentsAndTheSettings) {
    change(settings(), u"封面表"_s, u"图片"_s, u"楼.jpg");
    log.failAt("Selection.InlineShapes.AddPicture app/sys/图片库/楼.jpg", 5152, u"图片没有找到");
    build();
    const auto told = report();
    EXPECT_TRUE(told.missing.empty());
    EXPECT_TRUE(told.leftOut.empty());
    ASSERT_EQ(told.failed.size(), 1U);
    EXPECT_EQ(told.failed[0].key, QString()) << "a click on it selects no node";
    EXPECT_EQ(told.failed[0].name, u"整份文档"_s);
    EXPECT_EQ(told.failed[0].what, u"图片没有找到"_s);
    EXPECT_TRUE(told.wantsAttention());
    change(settings(), u"封面表"_s, u"图片"_s, u"");
    build();
    EXPECT_TRUE(report().failed.empty()) << "the next run begins anew";
}

TEST_F(Report, NamesWhatWasLeftOutOfTheCustomPageUnderTheCover) {
    losses.notCarried(u"/自定义/公司首页.doc", u"1 个控件");
    losses.notCarried(u"/方案/工程/工程.2.doc", u"2 个脚注");
    build();
    const auto told = report();
    ASSERT_EQ(told.leftOut.size(), 2U);
    EXPECT_EQ(told.leftOut[0].name, u"封面"_s);
    EXPECT_EQ(told.leftOut[0].key, QString()) << "a click on it selects no node";
    EXPECT_EQ(told.leftOut[0].what, u"1 个控件"_s);
    EXPECT_EQ(told.leftOut[1].name, u"附则"_s);
}

TEST_F(Report, TellsWhatWasConvertedAndWhatGotOtherNumbersApartFromWhatWasLeftOut) {
    losses.converted(u"/方案/工程/工程.1.1.doc", u"原文件是RTF 文档");
    losses.changed(u"/方案/工程/工程.2.doc", u"脚注 2 个连续编号");
    losses.changed(u"/自定义/公司首页.doc", u"书签 1 个改了名");
    build();
    const auto told = report();
    EXPECT_TRUE(told.leftOut.empty());
    ASSERT_EQ(told.converted.size(), 1U);
    EXPECT_EQ(told.converted[0].key, u"工程.1.1"_s);
    EXPECT_EQ(told.converted[0].what, u"原文件是RTF 文档"_s);
    ASSERT_EQ(told.changed.size(), 2U);
    EXPECT_EQ(told.changed[0].name, u"附则"_s);
    EXPECT_EQ(told.changed[0].what, u"脚注 2 个连续编号"_s);
    EXPECT_EQ(told.changed[1].name, u"封面"_s);
}

TEST_F(Report, OtherNumbersAloneAreNothingThatAUserHasToSee) {
    build();
    EXPECT_FALSE(report().wantsAttention());
    losses.changed(u"/方案/工程/工程.2.doc", u"脚注 2 个连续编号");
    EXPECT_FALSE(report().wantsAttention());
    losses.converted(u"/方案/工程/工程.1.1.doc", u"原文件是RTF 文档");
    EXPECT_TRUE(report().wantsAttention());
}

TEST_F(Report, TellsPagesAndWhyTheirNumbersAreEstimated) {
    build();
    auto told = report();
    told.pages = 12;
    told.whyEstimated = u"没有安装办公套件。"_s;
    EXPECT_EQ(
        summaryOf(told),
        u"3 个节点，2 个文档全部放入，3 个标题，12 页。\n目录的页码是估计的：没有安装办公套件。"_s);
    EXPECT_TRUE(told.wantsAttention());
}
