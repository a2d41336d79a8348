#include "format/HeadingPage.h"

#include "support/FormatWorld.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qvnd::format {
namespace {

const QString table = u"章节设置表"_s;

class HeadingPageTest : public testing::Test, protected test::FormatWorld {
protected:
    HeadingPage& page() { return form().headings; }
    // Shows a level as the user does.
    void show(int level) { page().cmbClass.pick(level - 1); }
    QString of(int level, QStringView field) { return value(table, field, level - 1); }
};

TEST_F(HeadingPageTest, LoadShowsTheRowOfLevelOne) {
    change(table, u"字体", u"黑体", u"级别='1'"_s);
    EXPECT_EQ(page().cmbClass.text(), u"1"_s);
    EXPECT_EQ(page().cmbChapterFont.text(), u"黑体"_s);
    EXPECT_EQ(page().cmbChapterSize.text(), u"小四"_s);
    EXPECT_EQ(page().Txtformer.text(), u"第"_s);
    EXPECT_EQ(page().cmbMiddle.text(), u"一"_s);
    EXPECT_EQ(page().Txtback.text(), u"章"_s);
    EXPECT_TRUE(page().optMiddle.value());
    EXPECT_TRUE(page().chkHead.checked());
    EXPECT_TRUE(page().chkIsNot.checked());
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(HeadingPageTest, LoadWritesBackNothingButWhatWasRead) {
    const QString before = dump(table);
    page();
    EXPECT_EQ(dump(table), before);
}

TEST_F(HeadingPageTest, LoadOfARowThatStandsElsewhereFindsItByItsLevel) {
    settings().Execute(u"Delete * from 章节设置表 where 级别='1'"_s);
    add(settings(), table, {{u"级别"_s, u"1"_s}, {u"前缀"_s, u"卷"_s}});
    EXPECT_EQ(page().Txtformer.text(), u"卷"_s);
}

TEST_F(HeadingPageTest, WithoutTheRowLoadFallsBackAndWritesNothing) {
    empty(table);
    EXPECT_EQ(page().cmbClass.text(), u"1"_s);
    EXPECT_EQ(page().cmbChapterFont.text(), u"宋体"_s);
    EXPECT_EQ(page().cmbChapterSize.text(), u"小四"_s);
    EXPECT_EQ(page().Txtformer.text(), QString());
    EXPECT_EQ(page().cmbMiddle.text(), u"一"_s);
    EXPECT_EQ(page().Txtback.text(), QString());
    EXPECT_TRUE(page().optMiddle.value());
    EXPECT_TRUE(page().chkHead.checked());
    EXPECT_TRUE(page().chkIsNot.checked());
    EXPECT_EQ(rowCount(table), 0);
}

TEST_F(HeadingPageTest, WithoutTheTableTheDialogOpensAndTheControlsStayAsTheyWere) {
    drop(table);
    EXPECT_EQ(page().cmbClass.text(), QString());
    EXPECT_FALSE(page().chkHead.checked());
    EXPECT_TRUE(state.FormatSwitches.gBidSetLoaded);
    EXPECT_TRUE(messages.shown.empty());
}

} // namespace
} // namespace qvnd::format
