#include "format/HeadingPage.h"

#include "support/FormatWorld.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qvnd::format {
namespace {

const QString headingTable = u"章节设置表"_s;

class HeadingPageTest : public testing::Test, protected test::FormatWorld {
protected:
    HeadingPage& page() { return form().headings; }
    // Shows a level as the user does.
    void show(int level) { page().cmbClass.pick(level - 1); }
    QString of(int level, QStringView field) { return value(headingTable, field, level - 1); }
    void removeLevel(int level) {
        settings().Execute(u"Delete * from 章节设置表 where 级别='%1'"_s.arg(level));
    }
    // The row that was made last.
    QString made(QStringView field) {
        return value(headingTable, field, rowCount(headingTable) - 1);
    }
    void pick(ComboBox& box, const QString& entry) { box.pick(box.entries().indexOf(entry)); }
};

TEST_F(HeadingPageTest, LoadShowsTheRowOfLevelOne) {
    change(headingTable, u"字体", u"黑体", u"级别='1'"_s);
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
    const QString before = dump(headingTable);
    page();
    EXPECT_EQ(dump(headingTable), before);
}

TEST_F(HeadingPageTest, LoadOfARowThatStandsElsewhereFindsItByItsLevel) {
    removeLevel(1);
    add(settings(), headingTable, {{u"级别"_s, u"1"_s}, {u"前缀"_s, u"卷"_s}});
    EXPECT_EQ(page().Txtformer.text(), u"卷"_s);
}

TEST_F(HeadingPageTest, WithoutTheRowLoadFallsBackAndWritesNothing) {
    empty(headingTable);
    EXPECT_EQ(page().cmbClass.text(), u"1"_s);
    EXPECT_EQ(page().cmbChapterFont.text(), u"宋体"_s);
    EXPECT_EQ(page().cmbChapterSize.text(), u"小四"_s);
    EXPECT_EQ(page().Txtformer.text(), QString());
    EXPECT_EQ(page().cmbMiddle.text(), u"一"_s);
    EXPECT_EQ(page().Txtback.text(), QString());
    EXPECT_TRUE(page().optMiddle.value());
    EXPECT_TRUE(page().chkHead.checked());
    EXPECT_TRUE(page().chkIsNot.checked());
    EXPECT_EQ(rowCount(headingTable), 0);
}

TEST_F(HeadingPageTest, WithoutTheTableTheDialogOpensAndTheControlsStayAsTheyWere) {
    drop(headingTable);
    EXPECT_EQ(page().cmbClass.text(), QString());
    EXPECT_FALSE(page().chkHead.checked());
    EXPECT_TRUE(state.FormatSwitches.gBidSetLoaded);
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(HeadingPageTest, WithoutAnAffixThePreviewKeepsItsFirstTextsUntilTheFirstClick) {
    change(headingTable, u"前缀", u"", u"级别='1'"_s);
    change(headingTable, u"后缀", u"", u"级别='1'"_s);
    for (const char16_t* withTitle : {u"是", u"否"}) {
        change(headingTable, u"带该级标题", withTitle, u"级别='1'"_s);
        dialog.Unload();
        EXPECT_EQ(page().lblModel.caption(), u"第一章 标题 "_s);
        EXPECT_EQ(page().lblTree.caption(), u"第1级标题"_s);
    }
    page().chkIsNot.click();
    EXPECT_EQ(page().lblModel.caption(), u"一 标题"_s);
}

TEST_F(HeadingPageTest, ThePreviewOfAFallbackKeepsItsFirstTexts) {
    empty(headingTable);
    EXPECT_EQ(page().lblModel.caption(), u"第一章 标题 "_s);
}

TEST_F(HeadingPageTest, ThePreviewIsMovedByTheAffixesOfTheLoad) {
    change(headingTable, u"字体", u"黑体", u"级别='1'"_s);
    EXPECT_EQ(page().lblModel.caption(), u"第一章 标题"_s);
    EXPECT_EQ(page().lblModel.fontName(), u"黑体"_s);
    EXPECT_FLOAT_EQ(page().lblModel.fontSize(), 12 * 0.7F);
    EXPECT_EQ(page().lblModel.alignment(), TextAlign::middle);
}

// What each control writes at once, into the row of the level shown alone.
TEST_F(HeadingPageTest, EachControlWritesItsFieldAndTheLevelShownAlone) {
    struct Case {
        const char16_t* what;
        std::function<void()> act;
        QStringView field;
        QString written;
    };
    show(2);
    const QString others = of(1, u"字体") + of(3, u"字体");
    const Case cases[] = {
        {u"cmbChapterFont", [&] { pick(page().cmbChapterFont, u"黑体"_s); }, u"字体", u"黑体"_s},
        {u"cmbChapterSize", [&] { pick(page().cmbChapterSize, u"三号"_s); }, u"字号", u"三号"_s},
        {u"cmbMiddle", [&] { pick(page().cmbMiddle, u"A"_s); }, u"中缀", u"A"_s},
        {u"cmbMiddle", [] {}, u"序号标志", u"A型"_s},
        {u"Txtformer",
         [&] {
             page().Txtformer.type(u" 卷 "_s);
             page().Txtformer.leave();
         },
         u"前缀", u"卷"_s},
        {u"Txtback",
         [&] {
             page().Txtback.type(u"　篇 "_s);
             page().Txtback.leave();
         },
         u"后缀", u"　篇"_s},
        {u"optLeft", [&] { page().optLeft.click(); }, u"位置", u"左"_s},
        {u"optRight", [&] { page().optRight.click(); }, u"位置", u"右"_s},
        {u"optMiddle", [&] { page().optMiddle.click(); }, u"位置", u"中"_s},
        {u"chkHead", [&] { page().chkHead.click(); }, u"置页头", u"是"_s},
        {u"chkHead", [&] { page().chkHead.click(); }, u"置页头", u"否"_s},
        {u"chkIsNot", [&] { page().chkIsNot.click(); }, u"带该级标题", u"否"_s},
        {u"chkIsNot", [&] { page().chkIsNot.click(); }, u"带该级标题", u"是"_s},
    };
    for (const Case& each : cases) {
        each.act();
        EXPECT_EQ(of(2, each.field), each.written) << QString::fromUtf16(each.what).toStdString();
    }
    EXPECT_EQ(of(1, u"字体") + of(3, u"字体"), others);
    EXPECT_EQ(of(1, u"前缀"), u"第"_s);
    EXPECT_EQ(rowCount(headingTable), 9);
}

TEST_F(HeadingPageTest, TheNarrowControlsWriteTheirOneFieldAndNoOther) {
    page().Txtformer.type(u"未离开"_s);
    page().cmbMiddle.setText(u"A"_s);
    const QString before = of(1, u"前缀") + of(1, u"中缀");
    page().chkHead.click();
    page().chkIsNot.click();
    page().optLeft.click();
    page().optRight.click();
    page().optMiddle.click();
    EXPECT_EQ(of(1, u"前缀") + of(1, u"中缀"), before);
    page().cmbChapterFont.pick(0);
    EXPECT_EQ(of(1, u"前缀") + of(1, u"中缀"), u"未离开A"_s);
}

TEST_F(HeadingPageTest, TypingAnAffixMovesThePreviewAndWritesNothing) {
    show(2);
    page().Txtformer.type(u"卷 "_s);
    page().Txtback.type(u"篇"_s);
    EXPECT_EQ(page().lblModel.caption(), u"卷 一篇 标题"_s);
    EXPECT_EQ(page().lblTree.caption(), u"第2级标题"_s);
    EXPECT_EQ(of(2, u"前缀"), u"第"_s);
    EXPECT_EQ(of(2, u"后缀"), u"节"_s);
}

TEST_F(HeadingPageTest, LeavingAnAffixStoresItInTheOldLevelBeforeTheLevelChanges) {
    page().Txtformer.type(u"卷"_s);
    page().Txtformer.leave();
    show(2);
    EXPECT_EQ(of(1, u"前缀"), u"卷"_s);
    EXPECT_EQ(of(2, u"前缀"), u"第"_s);
    EXPECT_EQ(page().Txtformer.text(), u"第"_s);
}

TEST_F(HeadingPageTest, AFontOrSizeMovesThePreviewByItself) {
    pick(page().cmbChapterFont, u"黑体"_s);
    EXPECT_EQ(page().lblModel.fontName(), u"黑体"_s);
    pick(page().cmbChapterSize, u"10.5"_s);
    EXPECT_FLOAT_EQ(page().lblModel.fontSize(), 10.5F * 0.7F);
    page().optRight.click();
    EXPECT_EQ(page().lblModel.alignment(), TextAlign::right);
    page().optLeft.click();
    EXPECT_EQ(page().lblModel.alignment(), TextAlign::left);
    page().optMiddle.click();
    EXPECT_EQ(page().lblModel.alignment(), TextAlign::middle);
}

TEST_F(HeadingPageTest, TheSampleIsWrittenWithTheNumberingThatBelongsToIt) {
    const std::pair<QString, QString> map[] = {
        {u"一"_s, u"一型"_s}, {u"1"_s, u"I型"_s}, {u"A"_s, u"A型"_s}, {u"a"_s, u"aa型"_s}};
    for (const auto& [sample, style] : map) {
        pick(page().cmbMiddle, sample);
        EXPECT_EQ(of(1, u"中缀"), sample);
        EXPECT_EQ(of(1, u"序号标志"), style);
        EXPECT_EQ(page().lblModel.caption(), u"第"_s + sample + u"章 标题"_s);
    }
}

TEST_F(HeadingPageTest, TheSampleSmallAMakesAMissingRowWithAStyleThatGenerationDoesNotKnow) {
    removeLevel(1);
    pick(page().cmbMiddle, u"a"_s);
    EXPECT_EQ(rowCount(headingTable), 9);
    EXPECT_EQ(made(u"中缀"), u"a"_s);
    EXPECT_EQ(made(u"序号标志"), u"a型"_s);
    pick(page().cmbMiddle, u"a"_s);
    EXPECT_EQ(made(u"序号标志"), u"aa型"_s);
}

TEST_F(HeadingPageTest, ASampleThatIsNoneOfTheListLeavesTheNumberingAsItWas) {
    change(headingTable, u"中缀", u"甲", u"级别='1'"_s);
    page().chkHead.click();
    page().cmbChapterFont.pick(0);
    EXPECT_EQ(of(1, u"中缀"), u"甲"_s);
    EXPECT_EQ(of(1, u"序号标志"), u"一型"_s);
}

TEST_F(HeadingPageTest, ShowingALevelTakesItsRowAndComposesThePreview) {
    change(headingTable, u"字体", u"黑体", u"级别='5'"_s);
    change(headingTable, u"字号", u"二号", u"级别='5'"_s);
    change(headingTable, u"位置", u"右", u"级别='5'"_s);
    page();
    const QString before = dump(headingTable);
    show(5);
    EXPECT_EQ(page().cmbChapterFont.text(), u"黑体"_s);
    EXPECT_EQ(page().cmbChapterSize.text(), u"二号"_s);
    EXPECT_EQ(page().Txtformer.text(), u"("_s);
    EXPECT_EQ(page().Txtback.text(), u")"_s);
    EXPECT_TRUE(page().optRight.value());
    EXPECT_FALSE(page().chkHead.checked());
    EXPECT_EQ(page().lblTree.caption(), u"第5级标题"_s);
    EXPECT_EQ(page().lblModel.caption(), u"(一) 标题"_s);
    EXPECT_EQ(page().lblModel.fontName(), u"黑体"_s);
    EXPECT_FLOAT_EQ(page().lblModel.fontSize(), 22 * 0.7F);
    EXPECT_EQ(page().lblModel.alignment(), TextAlign::right);
    EXPECT_EQ(dump(headingTable), before);
}

TEST_F(HeadingPageTest, ARowWithoutAPositionLeavesTheOptionShownBefore) {
    change(headingTable, u"位置", u"右", u"级别='1'"_s);
    change(headingTable, u"位置", u"", u"级别='2'"_s);
    page();
    show(2);
    EXPECT_TRUE(page().optRight.value());
    EXPECT_EQ(of(2, u"位置"), QString());
}

TEST_F(HeadingPageTest, AMissingLevelIsMadeByTheFirstBoxThatReallyChanges) {
    removeLevel(4);
    change(headingTable, u"位置", u"左", u"级别='1'"_s);
    page();
    show(4);
    EXPECT_EQ(page().Txtformer.text(), QString());
    EXPECT_EQ(page().Txtback.text(), QString());
    EXPECT_TRUE(page().optMiddle.value());
    EXPECT_TRUE(page().chkHead.checked());
    EXPECT_TRUE(page().chkIsNot.checked());
    EXPECT_EQ(rowCount(headingTable), 9);
    EXPECT_EQ(made(u"级别"), u"4"_s);
    EXPECT_EQ(made(u"位置"), u"中"_s);
    EXPECT_EQ(made(u"中缀"), u"一"_s);
    EXPECT_EQ(made(u"字体"), u"仿宋_GB2312"_s);
    EXPECT_EQ(page().lblModel.caption(), u"一 标题"_s);
}

TEST_F(HeadingPageTest, AMissingLevelIsNotMadeWhenNoBoxReallyChanges) {
    removeLevel(4);
    page();
    show(4);
    EXPECT_EQ(rowCount(headingTable), 8);
    page().chkHead.click();
    EXPECT_EQ(rowCount(headingTable), 9);
    EXPECT_EQ(made(u"置页头"), u"否"_s);
    EXPECT_EQ(made(u"序号标志"), u"一型"_s);
}

TEST_F(HeadingPageTest, TheTitleIsLeftOutOfThePreviewByTheClickOnItsBoxAlone) {
    page().chkIsNot.click();
    EXPECT_EQ(page().lblModel.caption(), u"第一章"_s);
    page().Txtformer.type(u"卷"_s);
    EXPECT_EQ(page().lblModel.caption(), u"卷一章 标题"_s);
    EXPECT_EQ(of(1, u"带该级标题"), u"否"_s);
    page().chkIsNot.click();
    EXPECT_EQ(page().lblModel.caption(), u"卷一章 标题"_s);
}

TEST_F(HeadingPageTest, MultiLevelNumberingIsAFlagAndOpensItsButton) {
    const QString before = dump(headingTable);
    EXPECT_FALSE(page().Command1.enabled());
    page().chkMultLevel.click();
    EXPECT_TRUE(state.FormatSwitches.gMultLevelOn);
    EXPECT_TRUE(page().Command1.enabled());
    page().chkMultLevel.click();
    EXPECT_FALSE(state.FormatSwitches.gMultLevelOn);
    EXPECT_FALSE(page().Command1.enabled());
    EXPECT_EQ(dump(headingTable), before);
}

TEST_F(HeadingPageTest, AfterTheCloseBoxTheFlagOfMultiLevelNumberingStaysWhileItsBoxIsUnchecked) {
    page().chkMultLevel.click();
    dialog.Unload();
    EXPECT_FALSE(page().chkMultLevel.checked());
    EXPECT_TRUE(state.FormatSwitches.gMultLevelOn);
}

TEST_F(HeadingPageTest, AFailureOfTheStoreIsToldOnceAndTheDialogGoesOn) {
    page();
    drop(headingTable);
    page().cmbChapterFont.pick(1);
    page().chkHead.click();
    ASSERT_EQ(messages.shown.size(), 2U);
    EXPECT_TRUE(messages.shown[0].text.contains(headingTable));
    EXPECT_EQ(messages.shown[0].title, QString());
}

TEST_F(HeadingPageTest, AnAffixTooLongForItsFieldIsToldAndTheRowStays) {
    page().Txtformer.type(QString(256, u'长'));
    page().Txtformer.leave();
    EXPECT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(of(1, u"前缀"), u"第"_s);
}

} // namespace
} // namespace qvnd::format
