#include "format/BidSetForm.h"

#include "format/FormatLibraries.h"
#include "format/FormatLists.h"
#include "store/FontSizeToPoints.h"
#include "support/FormatWorld.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qvnd::format {
namespace {

class BidSetFormTest : public testing::Test, protected test::FormatWorld {
protected:
    QString selection() { return dump(u"是否设置表"_s); }
    std::vector<ComboBox*> fontBoxes() {
        return {&form().cover.cmbPrjFont,
                &form().cover.cmbDateFont,
                &form().headings.cmbChapterFont,
                &form().cover.cmbOffFont,
                &form().headerFooter.cmbHeaderFont,
                &form().headerFooter.cmbFooterFont,
                &form().page.cmbTextFont};
    }
    void leaveLibraries() {
        copySettingTables(settings(), u"甲"_s);
        registerSettingLibrary(settings(), u"甲"_s);
        copyCoverTable(settings(), u"乙"_s);
        registerCoverLibrary(settings(), u"乙"_s);
        registerCustomPage(settings(), u"扉页"_s);
    }
};

const QString nothingChosen = u"封面名称=Null 是否封面=否 设置名称=Null 是否设置=否 是否定义=否"_s;

TEST_F(BidSetFormTest, TheSevenFontBoxesOfferThePrintersFontsInTheirOrder) {
    for (const ComboBox* box : fontBoxes()) {
        EXPECT_EQ(box->entries(), fonts.ofPrinter) << box->name().toStdString();
    }
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(BidSetFormTest, WithoutAPrinterTheUserIsToldOnceAndTheScreensFontsServe) {
    fonts.withPrinter = false;
    for (const ComboBox* box : fontBoxes()) {
        EXPECT_EQ(box->entries(), fonts.ofScreen) << box->name().toStdString();
    }
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text,
              u"你没有安装打印机，以后在打印的时候可能对你所选的字体会不支持！"_s);
    EXPECT_EQ(messages.shown[0].icon, desktop::Icon::information);
    EXPECT_EQ(messages.shown[0].title, u"提示"_s);
}

TEST_F(BidSetFormTest, TheSizeListHasThirtySevenEntriesThatAllHavePoints) {
    const QStringList& sizes = sizeList();
    ASSERT_EQ(sizes.size(), 37);
    EXPECT_EQ(sizes.first(), u"初号"_s);
    EXPECT_EQ(sizes.at(15), u"八号"_s);
    EXPECT_EQ(sizes.mid(16),
              u"5 5.5 6.5 7.5 8 9 10 10.5 11 12 14 16 18 20 22 24 26 28 36 48 72"_s.split(u' '));
    EXPECT_EQ(store::FontSizeToPoints(sizes.at(15)), 5);
    for (const auto name : {u"cmbPrjSize", u"cmbOffSize", u"cmbDateSize", u"cmbChapterSize",
                            u"cmbHeaderSize", u"cmbFooterSize", u"cmbTextSize"}) {
        EXPECT_EQ(form().controls.find<ComboBox>(name)->entries(), sizes);
    }
}

TEST_F(BidSetFormTest, TheClosedListsHaveTheirEntries) {
    const QStringList levels = u"1 2 3 4 5 6 7 8 9"_s.split(u' ');
    EXPECT_EQ(form().headings.cmbClass.entries(), levels);
    EXPECT_EQ(form().headerFooter.cmbPageClass.entries(), levels);
    EXPECT_EQ(form().headings.cmbMiddle.entries(), QStringList({u"一"_s, u"1"_s, u"A"_s, u"a"_s}));
    EXPECT_EQ(form().headerFooter.cmbPageSign.entries(),
              QStringList({u"(无)"_s, u"......"_s, u"------"_s, u"———"_s, u"．．．．．"_s}));
}

TEST_F(BidSetFormTest, EveryControlIsFoundByItsName) {
    for (const auto name :
         {u"cmbClass",     u"Txtformer",    u"optMiddle",    u"chkBlackLine", u"lblModel",
          u"TxtHeaderCon", u"chkPageRight", u"txtPageupdis", u"optTop",       u"Option1(0)",
          u"Option1(1)",   u"cboBianHao",   u"txtInde",      u"TxtPrjName",   u"cmbPic",
          u"Image1",       u"lblDate",      u"lstSet",       u"cmdSaveSet",   u"lstcover",
          u"chkCover",     u"lstSelf",      u"cmdSelfBld",   u"cmdBrowse",    u"Command1"}) {
        EXPECT_NE(form().controls.find<Control>(name), nullptr)
            << QString::fromUtf16(name).toStdString();
    }
}

TEST_F(BidSetFormTest, EveryLoadTurnsTheRightAlignmentOn) {
    form();
    EXPECT_EQ(value(u"页眉页脚表"_s, u"是否右对齐"), u"是"_s);
    form().headerFooter.chkPageRight.click();
    EXPECT_TRUE(form().cmdDecide());
    EXPECT_EQ(value(u"页眉页脚表"_s, u"是否右对齐"), u"否"_s);
    dialog.Unload();
    EXPECT_TRUE(form().headerFooter.chkPageRight.checked());
    EXPECT_EQ(value(u"页眉页脚表"_s, u"是否右对齐"), u"是"_s);
}

TEST_F(BidSetFormTest, TheLoadReadsNeitherTheSelectionNorTheCurrentPage) {
    leaveLibraries();
    writeSelection(settings(), {u"乙"_s, u"甲"_s, true});
    storeCurrentPage(settings(), u"扉页"_s);
    EXPECT_FALSE(form().coverLibrary.chkCover.checked());
    EXPECT_FALSE(form().settingLibrary.chkSet.checked());
    EXPECT_FALSE(form().customPage.chkSelf.checked());
}

TEST_F(BidSetFormTest, ConfirmingAtOnceInAFreshRunClearsEveryStoredChoice) {
    leaveLibraries();
    writeSelection(settings(), {u"乙"_s, u"甲"_s, true});
    EXPECT_TRUE(form().cmdDecide());
    EXPECT_EQ(selection(), nothingChosen);
}

TEST_F(BidSetFormTest, ConfirmingStoresWhichEntriesApplyInOneRow) {
    leaveLibraries();
    form().coverLibrary.chkCover.click();
    form().settingLibrary.chkSet.click();
    EXPECT_TRUE(form().cmdDecide());
    EXPECT_EQ(selection(), u"封面名称=乙 是否封面=是 设置名称=甲 是否设置=是 是否定义=否"_s);
    form().customPage.chkSelf.click();
    form().settingLibrary.chkSet.click();
    EXPECT_TRUE(form().cmdDecide());
    EXPECT_EQ(selection(), u"封面名称=Null 是否封面=否 设置名称=Null 是否设置=否 是否定义=是"_s);
}

TEST_F(BidSetFormTest, ConfirmingThatFailsIsToldAndTheDialogStays) {
    form();
    drop(u"是否设置表"_s);
    EXPECT_FALSE(form().cmdDecide());
    EXPECT_EQ(messages.shown.size(), 1U);
}

TEST_F(BidSetFormTest, BlankLinesAreTakenOverByConfirmingAlone) {
    form().headings.chkBlackLine.click();
    EXPECT_FALSE(state.FormatSwitches.gBlankLineAroundTitle);
    form().cmdDecide();
    EXPECT_TRUE(state.FormatSwitches.gBlankLineAroundTitle);
    form().headings.chkBlackLine.click();
    dialog.Unload();
    EXPECT_TRUE(state.FormatSwitches.gBlankLineAroundTitle);
    EXPECT_TRUE(form().headings.chkBlackLine.checked());
}

TEST_F(BidSetFormTest, AHiddenDialogKeepsWhatItsControlsHold) {
    form().page.txtPageupdis.type(u"未离开"_s);
    form().cmdDecide();
    EXPECT_EQ(form().page.txtPageupdis.text(), u"未离开"_s);
    EXPECT_TRUE(dialog.isLoaded());
}

TEST_F(BidSetFormTest, TheCloseBoxUnloadsAndTheNextLoadStartsAfresh) {
    form().page.txtPageupdis.type(u"未离开"_s);
    EXPECT_TRUE(state.FormatSwitches.gBidSetLoaded);
    const QString before = dumpWorkingTables();
    dialog.Unload();
    EXPECT_FALSE(state.FormatSwitches.gBidSetLoaded);
    EXPECT_FALSE(dialog.isLoaded());
    EXPECT_EQ(dumpWorkingTables(), before);
    EXPECT_EQ(form().page.txtPageupdis.text(), u"1.5"_s);
}

TEST_F(BidSetFormTest, WhatAControlHasWrittenStaysWithoutConfirming) {
    form().headings.cmbChapterFont.pick(2);
    dialog.Unload();
    EXPECT_EQ(value(u"章节设置表"_s, u"字体"), u"黑体"_s);
}

TEST_F(BidSetFormTest, TouchingAControlFromOutsideLoadsTheDialogWithEveryEffect) {
    openPlan(u"滨江工程"_s, u"一建公司"_s);
    state.FormatSwitches.gChildDocAsNumber = true;
    EXPECT_EQ(dialog.txtInde(), u"2"_s);
    EXPECT_TRUE(dialog.isLoaded());
    EXPECT_EQ(dialog.cboBianHao(), QString());
    EXPECT_EQ(value(u"封面表"_s, u"工程名称"), u"滨江工程"_s);
    EXPECT_EQ(value(u"封面表"_s, u"单位名称"), u"一建公司"_s);
    EXPECT_EQ(value(u"页眉页脚表"_s, u"是否右对齐"), u"是"_s);
    EXPECT_FALSE(state.FormatSwitches.gChildDocAsNumber);
}

TEST_F(BidSetFormTest, TouchingAControlOfALoadedDialogLoadsNothing) {
    form().headerFooter.chkPageRight.click();
    dialog.txtInde();
    EXPECT_EQ(value(u"页眉页脚表"_s, u"是否右对齐"), u"否"_s);
}

TEST_F(BidSetFormTest, EachMissingTableLeavesItsControlsAndTheDialogOpens) {
    for (const auto& table : {u"章节设置表"_s, u"页眉页脚表"_s, u"页面设置表"_s, u"封面表"_s,
                              u"设置库"_s, u"封面库"_s, u"自定义表"_s}) {
        drop(table);
    }
    form();
    EXPECT_TRUE(state.FormatSwitches.gBidSetLoaded);
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(form().headings.cmbMiddle.text(), QString());
    EXPECT_TRUE(form().headerFooter.chkPageRight.checked());
    EXPECT_EQ(form().page.cmbTextFont.text(), QString());
    EXPECT_EQ(form().cover.TxtPrjName.text(), QString());
    EXPECT_FALSE(form().settingLibrary.chkSet.enabled());
}

TEST_F(BidSetFormTest, AFieldThatIsMissingSkipsItsControlAlone) {
    settings().Execute(u"select 页边距上, 正文字体, 装订位置 into 副本 from 页面设置表"_s);
    drop(u"页面设置表"_s);
    settings().Execute(u"select * into 页面设置表 from 副本"_s);
    EXPECT_EQ(form().page.txtPageupdis.text(), u"1.5"_s);
    EXPECT_EQ(form().page.TxtPageDownDis.text(), QString());
    EXPECT_EQ(form().page.cmbTextFont.text(), u"仿宋_GB2312"_s);
    EXPECT_TRUE(form().page.optSide.value());
}

} // namespace
} // namespace qvnd::format
