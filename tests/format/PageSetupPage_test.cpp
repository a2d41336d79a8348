#include "format/PageSetupPage.h"

#include "support/FormatWorld.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qvnd::format {
namespace {

const QString pageTable = u"页面设置表"_s;
const QString outsideOfPage = u"对不起，该范围必须在-55.87-55.87之间！"_s;

class PageSetupPageTest : public testing::Test, protected test::FormatWorld {
protected:
    struct Box {
        TextBox& box;
        QStringView field;
    };
    PageSetupPage& page() { return form().page; }
    std::vector<Box> boxes() {
        return {{page().txtPageupdis, u"页边距上"},   {page().TxtPageDownDis, u"页边距下"},
                {page().TxtPageLeftDis, u"页边距左"}, {page().TxtPageRightdis, u"页边距右"},
                {page().TxtBind, u"装订距离"},        {page().Txtheader, u"距页眉"},
                {page().TxtFooter, u"距页脚"}};
    }
    QString of(QStringView field) { return value(pageTable, field); }
    static void enter(TextBox& box, const QString& text) {
        box.type(text);
        box.leave();
    }
};

TEST_F(PageSetupPageTest, LoadShowsTheRowAndChangesNothing) {
    change(pageTable, u"页边距左", 2.54F);
    change(pageTable, u"装订位置", u"顶");
    const QString before = dump(pageTable);
    EXPECT_EQ(page().txtPageupdis.text(), u"1.5"_s);
    EXPECT_EQ(page().TxtPageDownDis.text(), u"1.5"_s);
    EXPECT_EQ(page().TxtPageLeftDis.text(), u"2.54"_s);
    EXPECT_EQ(page().TxtPageRightdis.text(), u"1.5"_s);
    EXPECT_EQ(page().TxtBind.text(), u"0"_s);
    EXPECT_TRUE(page().optTop.value());
    EXPECT_EQ(page().cmbTextFont.text(), u"仿宋_GB2312"_s);
    EXPECT_EQ(page().cmbTextSize.text(), u"小四"_s);
    EXPECT_EQ(page().Txtheader.text(), u"1"_s);
    EXPECT_EQ(page().TxtFooter.text(), u"1"_s);
    EXPECT_EQ(dump(pageTable), before);
}

TEST_F(PageSetupPageTest, WithoutATopMarginTheRightOneStaysAsItWasHoweverItReads) {
    change(pageTable, u"页边距上", jet::Value());
    change(pageTable, u"页边距右", 3.0F);
    EXPECT_EQ(page().txtPageupdis.text(), QString());
    EXPECT_EQ(page().TxtPageRightdis.text(), QString());
    EXPECT_EQ(page().TxtPageDownDis.text(), u"1.5"_s);
    EXPECT_EQ(of(u"页边距右"), u"3"_s);
}

TEST_F(PageSetupPageTest, AnySideOfTheGutterButTheSideIsTheTop) {
    change(pageTable, u"装订位置", u"别处");
    EXPECT_TRUE(page().optTop.value());
    EXPECT_EQ(of(u"装订位置"), u"顶"_s);
}

TEST_F(PageSetupPageTest, WithoutARowLoadFallsBackAndWritesNothing) {
    empty(pageTable);
    for (TextBox* box : {&page().txtPageupdis, &page().TxtPageDownDis, &page().TxtPageLeftDis,
                         &page().TxtPageRightdis, &page().Txtheader, &page().TxtFooter}) {
        EXPECT_EQ(box->text(), u"2.5"_s);
    }
    EXPECT_EQ(page().TxtBind.text(), u"3"_s);
    EXPECT_EQ(page().cmbTextFont.text(), u"宋体"_s);
    EXPECT_EQ(page().cmbTextSize.text(), u"小四"_s);
    EXPECT_TRUE(page().optSide.value());
    EXPECT_EQ(rowCount(pageTable), 0);
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(PageSetupPageTest, EachBoxStoresItsLengthWhenItLosesFocusAndNotBefore) {
    float length = 2.25F;
    for (const Box& each : boxes()) {
        const QString before = of(each.field);
        const QString text = QString::number(length);
        each.box.type(text);
        EXPECT_EQ(of(each.field), before);
        each.box.leave();
        EXPECT_EQ(of(each.field), text) << each.box.name().toStdString();
        length += 0.25F;
    }
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(PageSetupPageTest, TheLimitsPassInEachBox) {
    for (const Box& each : boxes()) {
        for (const auto& limit : {u"55.87"_s, u"-55.87"_s}) {
            enter(each.box, limit);
            EXPECT_EQ(of(each.field), limit) << each.box.name().toStdString();
        }
    }
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(PageSetupPageTest, ALengthOutsideIsToldTheBoxShowsZeroAndNothingIsWritten) {
    for (const Box& each : boxes()) {
        for (const auto& wrong : {u"55.88"_s, u"-55.88"_s, u"100"_s}) {
            const QString before = dump(pageTable);
            messages.shown.clear();
            enter(each.box, wrong);
            ASSERT_EQ(messages.shown.size(), 1U) << each.box.name().toStdString();
            EXPECT_EQ(messages.shown[0].text, outsideOfPage);
            EXPECT_EQ(messages.shown[0].icon, desktop::Icon::exclamation);
            EXPECT_EQ(messages.shown[0].title, u"警告"_s);
            EXPECT_EQ(each.box.text(), u"0"_s);
            EXPECT_EQ(dump(pageTable), before);
            each.box.type(u"1"_s);
        }
    }
}

TEST_F(PageSetupPageTest, BehindARefusalTheBoxSaysWhatWasRefusedAndWhatStandsThere) {
    enter(page().txtPageupdis, u"99"_s);
    EXPECT_EQ(page().txtPageupdis.note(),
              u"“99”不在 -55.87 到 55.87 厘米之间，现在是 0；请改成需要的数，"
              "否则改动或离开这一页的其他框时就保存 0。"_s);
    EXPECT_EQ(page().TxtPageDownDis.note(), QString());
    enter(page().txtPageupdis, u"2"_s);
    EXPECT_EQ(page().txtPageupdis.note(), QString());
}

TEST_F(PageSetupPageTest, TheNoteGoesWithTheWriteThatStoresTheValue) {
    enter(page().txtPageupdis, u"99"_s);
    page().txtPageupdis.leave();
    EXPECT_EQ(of(u"页边距上"), u"0"_s);
    EXPECT_EQ(page().txtPageupdis.note(), QString()) << "by leaving the box";
    enter(page().TxtFooter, u"99"_s);
    page().cmbTextSize.pick(0);
    EXPECT_EQ(of(u"距页脚"), u"0"_s);
    EXPECT_EQ(page().TxtFooter.note(), QString()) << "by any other change of the page";
    enter(page().TxtBind, u"99"_s);
    enter(page().TxtBind, u"2"_s);
    page().TxtBind.type(u"0"_s);
    EXPECT_EQ(page().TxtBind.note(), QString()) << "this 0 is the user's own";
}

TEST_F(PageSetupPageTest, AWriteThatFailsLeavesTheNote) {
    enter(page().txtPageupdis, u"99"_s);
    empty(pageTable);
    page().txtPageupdis.leave();
    EXPECT_FALSE(page().txtPageupdis.note().isEmpty());
}

TEST_F(PageSetupPageTest, AfterARefusalTheNextChangeOnThePageStoresTheZero) {
    enter(page().TxtPageLeftDis, u"99"_s);
    EXPECT_EQ(of(u"页边距左"), u"1.5"_s);
    page().cmbTextSize.pick(0);
    EXPECT_EQ(of(u"页边距左"), u"0"_s);
}

TEST_F(PageSetupPageTest, ATextThatIsNoNumberIsToldByItsOwnErrorAndStays) {
    for (const Box& each : boxes()) {
        const QString before = of(each.field);
        for (const auto& wrong : {QString(), u"宽"_s, u"1 2"_s}) {
            messages.shown.clear();
            enter(each.box, wrong);
            ASSERT_EQ(messages.shown.size(), 1U);
            EXPECT_EQ(messages.shown[0].icon, desktop::Icon::none);
            EXPECT_EQ(messages.shown[0].title, QString());
            EXPECT_FALSE(messages.shown[0].text.isEmpty());
            EXPECT_EQ(each.box.text(), wrong);
        }
        each.box.type(u"1"_s);
        EXPECT_EQ(of(each.field), before);
    }
}

TEST_F(PageSetupPageTest, AnEmptiedBoxKeepsItsFieldThroughLaterWrites) {
    enter(page().TxtBind, QString());
    page().cmbTextFont.pick(2);
    EXPECT_EQ(of(u"装订距离"), u"0"_s);
    EXPECT_EQ(of(u"正文字体"), u"黑体"_s);
}

TEST_F(PageSetupPageTest, AnythingMayBeTypedUntilTheFocusLeaves) {
    page().TxtBind.type(u"一厘米"_s);
    EXPECT_EQ(page().TxtBind.text(), u"一厘米"_s);
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(PageSetupPageTest, TheProblemOfABoxIsKnownBeforeTheFocusLeaves) {
    page().TxtBind.type(u"56"_s);
    EXPECT_EQ(page().TxtBind.problem(), outsideOfPage);
    page().TxtBind.type(QString());
    EXPECT_FALSE(page().TxtBind.problem().isEmpty());
    page().TxtBind.type(u" 2.5 "_s);
    EXPECT_EQ(page().TxtBind.problem(), QString());
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(PageSetupPageTest, FontSizeAndGutterSideAreWrittenAtOnce) {
    page().cmbTextFont.pick(1);
    EXPECT_EQ(of(u"正文字体"), u"宋体"_s);
    page().cmbTextSize.pick(8);
    EXPECT_EQ(of(u"正文字号"), u"四号"_s);
    page().optTop.click();
    EXPECT_EQ(of(u"装订位置"), u"顶"_s);
    page().optSide.click();
    EXPECT_EQ(of(u"装订位置"), u"边"_s);
}

TEST_F(PageSetupPageTest, WithoutARowEveryControlTellsTheErrorAndMakesNone) {
    empty(pageTable);
    page();
    enter(page().TxtBind, u"2"_s);
    page().cmbTextFont.pick(0);
    page().cmbTextSize.pick(0);
    page().optTop.click();
    page().optSide.click();
    EXPECT_EQ(messages.shown.size(), 5U);
    EXPECT_EQ(rowCount(pageTable), 0);
}

class ChildDocuments : public testing::Test, protected test::FormatWorld {
protected:
    ChildDocumentPage& page() { return form().childDocuments; }
};

TEST_F(ChildDocuments, NeitherOptionIsSelectedAtFirstAndNothingIsPicked) {
    EXPECT_FALSE(page().Option1_0.value());
    EXPECT_FALSE(page().Option1_1.value());
    EXPECT_EQ(page().cboBianHao.text(), QString());
    EXPECT_EQ(page().cboBianHao.entries(), QStringList({u"无"_s, u"1、"_s, u"1."_s, u"A."_s,
                                                        u"1)"_s, u"a)"_s, u"A)"_s, u"I."_s}));
    EXPECT_EQ(page().txtInde.text(), u"2"_s);
    EXPECT_FALSE(page().cboBianHao.enabled());
    EXPECT_FALSE(page().txtInde.enabled());
    EXPECT_FALSE(state.FormatSwitches.gChildDocAsNumber);
}

TEST_F(ChildDocuments, TheSecondOptionOpensStyleAndIndentAndIsTheFlag) {
    page().Option1_1.click();
    EXPECT_TRUE(page().cboBianHao.enabled());
    EXPECT_TRUE(page().txtInde.enabled());
    EXPECT_TRUE(state.FormatSwitches.gChildDocAsNumber);
    page().Option1_0.click();
    EXPECT_FALSE(page().cboBianHao.enabled());
    EXPECT_FALSE(page().txtInde.enabled());
    EXPECT_FALSE(state.FormatSwitches.gChildDocAsNumber);
}

TEST_F(ChildDocuments, AFreshLoadSetsTheFlagFalse) {
    page().Option1_1.click();
    dialog.Unload();
    EXPECT_TRUE(state.FormatSwitches.gChildDocAsNumber);
    page();
    EXPECT_FALSE(state.FormatSwitches.gChildDocAsNumber);
}

TEST_F(ChildDocuments, TheIndentStaysWithinItsBounds) {
    const std::pair<QString, QString> cases[] = {
        {u"0"_s, u"0"_s},       {u"100"_s, u"100"_s},     {u"101"_s, u"100"_s},
        {QString(), u"2"_s},    {u"100.4"_s, u"100.4"_s}, {u"100.6"_s, u"100"_s},
        {u"40000"_s, u"100"_s}, {u"7"_s, u"7"_s},
    };
    for (const auto& [typed, shown] : cases) {
        page().txtInde.type(typed);
        EXPECT_EQ(page().txtInde.text(), shown) << typed.toStdString();
    }
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(ChildDocuments, TheIndentTakesDigitsAndPointAlone) {
    page().txtInde.type(u"1a2 三.5-"_s);
    EXPECT_EQ(page().txtInde.text(), u"12.5"_s);
}

TEST_F(ChildDocuments, APointAloneFailsInItsConversionAndIsTold) {
    page().txtInde.type(u"."_s);
    EXPECT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(page().txtInde.text(), u"."_s);
}

TEST_F(ChildDocuments, NoneOfItReachesATable) {
    page();
    const QString before = dumpWorkingTables();
    page().Option1_1.click();
    page().cboBianHao.pick(3);
    page().txtInde.type(u"5"_s);
    EXPECT_EQ(dumpWorkingTables(), before);
    EXPECT_EQ(dialog.cboBianHao(), u"A."_s);
    EXPECT_EQ(dialog.txtInde(), u"5"_s);
}

} // namespace
} // namespace qvnd::format
