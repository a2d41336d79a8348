#include "platform/desktop/windows/HelpSearch.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace qvnd;
using desktop::HelpSearch;

namespace {

HelpSearch search() {
    return HelpSearch({{QUrl("a"), "删除与重命名", "选中节点，按 Delete 键。"},
                       {QUrl("b"), "模板库", "删除模板的节点，文件也一起删除。模板可以浏览。"},
                       {QUrl("c"), "启动与退出", "用 qvndctl 命令。删除"},
                       {QUrl("d"), "添加文档", "从文件管理器拖动文档。"}});
}

QStringList pagesWith(const QString& words) {
    QStringList pages;
    for (const desktop::HelpHit& hit : search().find(words)) {
        pages << hit.page.toString();
    }
    return pages;
}

TEST(HelpSearch, FindsAChineseWordInTheMiddleOfASentence) {
    EXPECT_EQ(pagesWith("文件管理器"), QStringList{"d"});
}

TEST(HelpSearch, PagesWithTheWordInTheTitleComeFirstThenThoseThatNameItOften) {
    EXPECT_EQ(pagesWith("删除"), (QStringList{"a", "b", "c"}));
}

TEST(HelpSearch, EveryWordMustStandInThePage) {
    EXPECT_EQ(pagesWith("删除 浏览"), QStringList{"b"});
    EXPECT_EQ(pagesWith("删除　浏览，模板"), QStringList{"b"}) << "blanks and commas of Chinese";
}

TEST(HelpSearch, CapitalsAndSmallLettersAreTheSame) {
    EXPECT_EQ(pagesWith("DELETE"), QStringList{"a"});
    EXPECT_EQ(pagesWith("Qvndctl"), QStringList{"c"});
}

TEST(HelpSearch, WithoutAWholeMatchPagesWithMostPairsOfCharactersAreFound) {
    EXPECT_EQ(pagesWith("浏览模板"), QStringList{"b"});
}

TEST(HelpSearch, NothingIsFoundForWordsThatNoPageHoldsOrForNone) {
    EXPECT_EQ(pagesWith("钢筋混凝土"), QStringList());
    EXPECT_EQ(pagesWith("字"), QStringList());
    EXPECT_EQ(pagesWith("  "), QStringList());
}

TEST(HelpSearch, AnExcerptShowsTheWordWithTheTextAroundIt) {
    const HelpSearch long_(
        {{QUrl("a"), "题", QString("前").repeated(100) + "词" + QString("后").repeated(100)}});
    const auto hits = long_.find("词");
    ASSERT_EQ(hits.size(), 1U);
    EXPECT_TRUE(hits[0].excerpt.startsWith("…前")) << hits[0].excerpt.toStdString();
    EXPECT_TRUE(hits[0].excerpt.contains("前词后"));
    EXPECT_TRUE(hits[0].excerpt.endsWith("后…"));
    EXPECT_LT(hits[0].excerpt.size(), 70);
}

} // namespace
