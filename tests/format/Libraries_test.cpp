#include "format/FormatLibraries.h"

#include "support/FormatWorld.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qvnd::format {
namespace {

class SettingLibraries : public testing::Test, protected test::FormatWorld {
protected:
    SettingLibraryFrame& frame() { return form().settingLibrary; }
    void save(const QString& name) {
        inputs.answers << name;
        frame().cmdSaveSet.click();
    }
    bool hasTable(const QString& name) { return settings().TableDefs().Contains(name); }
    // A library of the settings as they stand, as another run has left it.
    void leave(const QString& name) {
        copySettingTables(settings(), name);
        registerSettingLibrary(settings(), name);
    }
};

TEST_F(SettingLibraries, WithoutAnEntryNothingCanBeChosenOrDeleted) {
    EXPECT_FALSE(frame().chkSet.enabled());
    EXPECT_FALSE(frame().cmdDeleteSet.enabled());
    EXPECT_EQ(frame().lstSet.selected(), -1);
}

TEST_F(SettingLibraries, LoadListsThemSelectsTheFirstAndShowsTheWorkingTables) {
    leave(u"乙"_s);
    leave(u"甲"_s);
    change(u"乙页面"_s, u"页边距上", 9.0F);
    EXPECT_EQ(frame().lstSet.entries(), QStringList({u"乙"_s, u"甲"_s}));
    EXPECT_EQ(frame().lstSet.text(), u"乙"_s);
    EXPECT_TRUE(frame().chkSet.enabled());
    EXPECT_TRUE(frame().cmdDeleteSet.enabled());
    EXPECT_FALSE(frame().chkSet.checked());
    EXPECT_EQ(form().page.txtPageupdis.text(), u"1.5"_s);
}

TEST_F(SettingLibraries, SavingCopiesTheThreeTablesAndSelectsTheFirstEntry) {
    save(u" A "_s);
    ASSERT_EQ(inputs.asked.size(), 1U);
    EXPECT_EQ(inputs.asked[0].prompt, u"请输入标书设置库名称"_s);
    EXPECT_EQ(inputs.asked[0].title, u"添加库"_s);
    EXPECT_EQ(dump(u"A章节"_s), dump(u"章节设置表"_s));
    EXPECT_EQ(dump(u"A页面"_s), dump(u"页面设置表"_s));
    EXPECT_EQ(dump(u"A眉脚"_s), dump(u"页眉页脚表"_s));
    EXPECT_EQ(settingLibraries(settings()), QStringList(u"A"_s));
    EXPECT_TRUE(frame().chkSet.enabled());
    EXPECT_TRUE(frame().cmdDeleteSet.enabled());
    EXPECT_EQ(frame().lstSet.selected(), 0);
}

TEST_F(SettingLibraries, SavingShowsTheFirstLibraryWhenThatMovesTheSelection) {
    leave(u"甲"_s);
    change(u"甲页面"_s, u"页边距上", 9.0F);
    leave(u"乙"_s);
    frame().lstSet.click(1);
    save(u"丙"_s);
    EXPECT_EQ(frame().lstSet.text(), u"甲"_s);
    EXPECT_EQ(form().page.txtPageupdis.text(), u"9"_s);
}

TEST_F(SettingLibraries, AnEmptyNameEndsTheSavingAndNothingHappens) {
    for (const auto& none : {QString(), u"   "_s}) {
        save(none);
        EXPECT_FALSE(frame().chkSet.enabled());
        EXPECT_TRUE(frame().lstSet.entries().isEmpty());
    }
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(SettingLibraries, ANameInUseIsToldByTheStoreAndListedOnce) {
    save(u"A"_s);
    save(u"A"_s);
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_TRUE(messages.shown[0].text.contains(u"A章节"_s));
    EXPECT_EQ(messages.shown[0].icon, desktop::Icon::none);
    EXPECT_EQ(frame().lstSet.entries(), QStringList(u"A"_s));
    EXPECT_EQ(settingLibraries(settings()), QStringList(u"A"_s));
}

TEST_F(SettingLibraries, ANameThatMakesBadSqlIsToldAndTheEnablingStays) {
    save(u"甲 乙"_s);
    EXPECT_EQ(messages.shown.size(), 1U);
    EXPECT_TRUE(frame().chkSet.enabled());
    EXPECT_TRUE(frame().lstSet.entries().isEmpty());
}

TEST_F(SettingLibraries, AFailureHalfWayLeavesTheTablesThatWereMade) {
    copyCoverTable(settings(), u"A页面"_s);
    save(u"A"_s);
    EXPECT_TRUE(hasTable(u"A章节"_s));
    EXPECT_FALSE(hasTable(u"A眉脚"_s));
    EXPECT_TRUE(settingLibraries(settings()).isEmpty());
}

TEST_F(SettingLibraries, DeletingTakesTheRowTheTablesAndTheEntryAway) {
    save(u"A"_s);
    save(u"B"_s);
    frame().cmdDeleteSet.click();
    EXPECT_EQ(settingLibraries(settings()), QStringList(u"B"_s));
    for (const auto& gone : {u"A章节"_s, u"A页面"_s, u"A眉脚"_s}) {
        EXPECT_FALSE(hasTable(gone));
    }
    EXPECT_EQ(frame().lstSet.entries(), QStringList(u"B"_s));
    EXPECT_EQ(frame().lstSet.selected(), 0);
    EXPECT_TRUE(frame().chkSet.enabled());
}

TEST_F(SettingLibraries, DeletingTheLastLeavesItsCheckAndTheSelectionFallsBack) {
    save(u"A"_s);
    frame().chkSet.click();
    frame().cmdDeleteSet.click();
    EXPECT_TRUE(frame().chkSet.checked());
    EXPECT_FALSE(frame().chkSet.enabled());
    EXPECT_FALSE(frame().cmdDeleteSet.enabled());
    EXPECT_TRUE(form().cmdDecide());
    EXPECT_EQ(value(u"是否设置表"_s, u"是否设置"), u"是"_s);
    EXPECT_EQ(value(u"是否设置表"_s, u"设置名称"), QString());
}

TEST_F(SettingLibraries, DeletingLooksAtNoSelectionRow) {
    save(u"A"_s);
    frame().chkSet.click();
    form().cmdDecide();
    frame().cmdDeleteSet.click();
    EXPECT_EQ(value(u"是否设置表"_s, u"设置名称"), u"A"_s);
}

TEST_F(SettingLibraries, ATableThatIsMissingEndsTheDeletionWithItsError) {
    save(u"A"_s);
    drop(u"A眉脚"_s);
    frame().cmdDeleteSet.click();
    EXPECT_EQ(messages.shown.size(), 1U);
    EXPECT_TRUE(settingLibraries(settings()).isEmpty());
    EXPECT_FALSE(hasTable(u"A章节"_s));
    EXPECT_TRUE(hasTable(u"A页面"_s));
    EXPECT_EQ(frame().lstSet.entries(), QStringList(u"A"_s));
}

TEST_F(SettingLibraries, ShowingPutsTheTablesIntoTheControls) {
    leave(u"甲"_s);
    change(u"甲章节"_s, u"级别", u"3", u"级别='1'"_s);
    change(u"甲章节"_s, u"字体", u"黑体", u"级别='3' and 后缀='章'"_s);
    change(u"甲页面"_s, u"页边距左", 4.5F);
    change(u"甲页面"_s, u"正文字号", u"五号");
    change(u"甲眉脚"_s, u"页眉内容", u"甲的页眉");
    change(u"甲眉脚"_s, u"显示级别", 2);
    change(u"甲眉脚"_s, u"制表样式", u"断连线");
    frame().lstSet.click(0);
    EXPECT_EQ(form().headings.cmbClass.text(), u"3"_s);
    EXPECT_EQ(form().headings.cmbChapterFont.text(), u"黑体"_s);
    EXPECT_EQ(form().page.TxtPageLeftDis.text(), u"4.5"_s);
    EXPECT_EQ(form().page.cmbTextSize.text(), u"五号"_s);
    EXPECT_EQ(form().headerFooter.TxtHeaderCon.text(), u"甲的页眉"_s);
    EXPECT_EQ(form().headerFooter.cmbPageClass.text(), u"2"_s);
    EXPECT_EQ(form().headerFooter.cmbPageSign.text(), u"------"_s);
    EXPECT_TRUE(messages.shown.empty());
}

// Texts and combo boxes alone: the library is shown, not copied.
TEST_F(SettingLibraries, ShowingWritesNothingWhenNoBoxOrOptionChanges) {
    form();
    leave(u"甲"_s);
    change(u"甲章节"_s, u"字体", u"黑体", u"级别='1'"_s);
    change(u"甲页面"_s, u"页边距左", 4.5F);
    change(u"甲眉脚"_s, u"页眉内容", u"甲的页眉");
    dialog.Unload();
    frame();
    // The load has turned the right alignment on, the copy was made before.
    change(u"甲眉脚"_s, u"是否右对齐", u"是");
    const QString before = dumpWorkingTables();
    frame().lstSet.click(0);
    EXPECT_EQ(dumpWorkingTables(), before);
}

TEST_F(SettingLibraries, ShowingWritesTheFieldOfEachBoxAndOptionThatReallyChanges) {
    form();
    leave(u"甲"_s);
    change(u"甲章节"_s, u"级别", u"2", u"级别='1'"_s);
    change(u"甲章节"_s, u"位置", u"左", u"级别='2' and 后缀='章'"_s);
    change(u"甲章节"_s, u"置页头", u"否", u"级别='2' and 后缀='章'"_s);
    change(u"甲章节"_s, u"带该级标题", u"否", u"级别='2' and 后缀='章'"_s);
    for (const auto& flag :
         {u"是否带页眉"_s, u"是否带页脚"_s, u"是否显示页码"_s, u"是否右对齐"_s}) {
        change(u"甲眉脚"_s, flag, u"否");
    }
    change(u"甲眉脚"_s, u"页眉位置", u"左");
    change(u"甲眉脚"_s, u"页脚位置", u"右");
    change(u"甲眉脚"_s, u"页眉内容", u"甲的页眉");
    dialog.Unload();
    frame().lstSet.click(0);
    const QString chapters = u"章节设置表"_s;
    EXPECT_EQ(value(chapters, u"位置", 1), u"左"_s);
    EXPECT_EQ(value(chapters, u"置页头", 1), u"否"_s);
    EXPECT_EQ(value(chapters, u"带该级标题", 1), u"否"_s);
    EXPECT_EQ(value(chapters, u"位置", 0), u"中"_s);
    EXPECT_EQ(value(chapters, u"置页头", 0), u"是"_s);
    EXPECT_EQ(value(chapters, u"带该级标题", 0), u"是"_s);
    const QString headers = u"页眉页脚表"_s;
    for (const auto& flag :
         {u"是否带页眉"_s, u"是否带页脚"_s, u"是否显示页码"_s, u"是否右对齐"_s}) {
        EXPECT_EQ(value(headers, flag), u"否"_s) << flag.toStdString();
    }
    EXPECT_EQ(value(headers, u"页眉位置"), u"左"_s);
    EXPECT_EQ(value(headers, u"页脚位置"), u"右"_s);
    EXPECT_EQ(value(headers, u"页眉内容"), u"页眉"_s);
}

TEST_F(SettingLibraries, AChangedGutterSideWritesThePageFromTheBoxesAsTheyStandAtThatMoment) {
    leave(u"甲"_s);
    change(u"甲页面"_s, u"装订位置", u"顶");
    change(u"甲页面"_s, u"页边距上", 3.0F);
    change(u"甲页面"_s, u"装订距离", 2.0F);
    change(u"甲页面"_s, u"距页眉", 4.0F);
    change(u"甲页面"_s, u"距页脚", 5.0F);
    change(u"甲页面"_s, u"正文字体", u"黑体");
    change(u"甲页面"_s, u"正文字号", u"五号");
    frame().lstSet.click(0);
    EXPECT_EQ(dump(u"页面设置表"_s),
              u"页边距上=3 页边距下=1.5 页边距左=1.5 页边距右=1.5 装订距离=2 "
              "装订位置=顶 正文字体=仿宋_GB2312 正文字号=小四 距页眉=1 距页脚=1"_s);
    EXPECT_EQ(form().page.Txtheader.text(), u"4"_s);
    EXPECT_EQ(form().page.cmbTextFont.text(), u"黑体"_s);
}

TEST_F(SettingLibraries, ATableThatIsMissingIsToldWhenItsLibraryIsShown) {
    leave(u"甲"_s);
    drop(u"甲页面"_s);
    frame().lstSet.click(0);
    EXPECT_EQ(messages.shown.size(), 1U);
}

TEST_F(SettingLibraries, AnEmptyPageTableIsToldAndEmptyOthersArePassedOver) {
    leave(u"甲"_s);
    empty(u"甲章节"_s);
    empty(u"甲眉脚"_s);
    frame().lstSet.click(0);
    EXPECT_TRUE(messages.shown.empty());
    empty(u"甲页面"_s);
    frame().lstSet.click(0);
    EXPECT_EQ(messages.shown.size(), 1U);
}

class CoverLibraries : public testing::Test, protected test::FormatWorld {
protected:
    CoverLibraryFrame& frame() { return form().coverLibrary; }
    void save(const QString& name) {
        inputs.answers << name;
        frame().cmdSaveCover.click();
    }
    void leave(const QString& name) {
        copyCoverTable(settings(), name);
        registerCoverLibrary(settings(), name);
    }
};

TEST_F(CoverLibraries, WithoutAnEntryNothingCanBeChosenOrDeleted) {
    EXPECT_FALSE(frame().chkCover.enabled());
    EXPECT_FALSE(frame().cmdDeleteCover.enabled());
}

TEST_F(CoverLibraries, LoadSelectsTheFirstAndShowsTheWorkingCover) {
    leave(u"甲"_s);
    change(u"甲"_s, u"工程名称", u"甲的工程");
    EXPECT_EQ(frame().lstcover.text(), u"甲"_s);
    EXPECT_TRUE(frame().chkCover.enabled());
    EXPECT_TRUE(frame().cmdDeleteCover.enabled());
    EXPECT_EQ(form().cover.TxtPrjName.text(), u"工程名称"_s);
}

TEST_F(CoverLibraries, SavingCopiesTheCoverSelectsTheNewEntryAndShowsWhatWasSaved) {
    leave(u"甲"_s);
    form().cover.TxtPrjName.type(u"未离开"_s);
    save(u" 乙 "_s);
    ASSERT_EQ(inputs.asked.size(), 1U);
    EXPECT_EQ(inputs.asked[0].prompt, u"请输入封面库名称"_s);
    EXPECT_EQ(inputs.asked[0].title, u"添加库"_s);
    EXPECT_EQ(dump(u"乙"_s), dump(u"封面表"_s));
    EXPECT_EQ(coverLibraries(settings()), QStringList({u"甲"_s, u"乙"_s}));
    EXPECT_EQ(frame().lstcover.text(), u"乙"_s);
    EXPECT_EQ(form().cover.TxtPrjName.text(), u"工程名称"_s);
}

TEST_F(CoverLibraries, ANameOfAnyTableOfTheDatabaseIsRefusedByTheStore) {
    for (const auto& taken : {u"章节设置表"_s, u"设置库"_s}) {
        messages.shown.clear();
        save(taken);
        EXPECT_EQ(messages.shown.size(), 1U);
        EXPECT_TRUE(frame().lstcover.entries().isEmpty());
        EXPECT_TRUE(frame().chkCover.enabled());
    }
}

TEST_F(CoverLibraries, DeletingTheLastUnchecksAndClosesItsBox) {
    save(u"甲"_s);
    frame().chkCover.click();
    frame().cmdDeleteCover.click();
    EXPECT_FALSE(frame().chkCover.checked());
    EXPECT_FALSE(frame().chkCover.enabled());
    EXPECT_FALSE(frame().cmdDeleteCover.enabled());
    EXPECT_FALSE(settings().TableDefs().Contains(u"甲"_s));
    EXPECT_TRUE(coverLibraries(settings()).isEmpty());
}

TEST_F(CoverLibraries, DeletingOneOfSeveralSelectsAndShowsTheFirst) {
    leave(u"甲"_s);
    change(u"甲"_s, u"工程名称", u"甲的工程");
    leave(u"乙"_s);
    frame().lstcover.click(1);
    frame().cmdDeleteCover.click();
    EXPECT_EQ(frame().lstcover.text(), u"甲"_s);
    EXPECT_EQ(form().cover.TxtPrjName.text(), u"甲的工程"_s);
    EXPECT_TRUE(frame().chkCover.enabled());
}

TEST_F(CoverLibraries, ShowingPutsTheCoverIntoTheControlsAndWritesNothingWithoutAPicture) {
    folder.write(u"Sys/图片库/旧.bmp"_s, "BM");
    leave(u"甲"_s);
    change(u"甲"_s, u"工程名称", u"甲的工程");
    change(u"甲"_s, u"工程字号", u"初号");
    change(u"甲"_s, u"日期", QDate(2003, 5, 1));
    change(u"甲"_s, u"图片宽度", 7);
    form().cover.cmbPic.setText(u"旧.bmp"_s);
    const QString before = dumpWorkingTables();
    const float size = form().cover.lblPrjName.fontSize();
    frame().lstcover.click(0);
    EXPECT_EQ(form().cover.TxtPrjName.text(), u"甲的工程"_s);
    EXPECT_EQ(form().cover.lblPrjName.caption(), u"甲的工程"_s);
    EXPECT_EQ(form().cover.cmbPrjSize.text(), u"初号"_s);
    EXPECT_EQ(form().cover.lblPrjName.fontSize(), size);
    EXPECT_EQ(form().cover.cmbDate.date(), QDate(2003, 5, 1));
    EXPECT_EQ(form().cover.TxtWidth.text(), u"7"_s);
    EXPECT_EQ(form().cover.Image1.picture(), QString());
    EXPECT_EQ(form().cover.cmbPic.text(), u"旧.bmp"_s);
    EXPECT_EQ(dumpWorkingTables(), before);
}

TEST_F(CoverLibraries, ShowingALibraryWithAPictureWritesItsNameAndNothingElse) {
    folder.write(u"Sys/图片库/楼.bmp"_s, "BM");
    leave(u"甲"_s);
    change(u"甲"_s, u"图片", u"楼.bmp");
    change(u"甲"_s, u"工程名称", u"甲的工程");
    frame().lstcover.click(0);
    EXPECT_EQ(form().cover.cmbPic.text(), u"楼.bmp"_s);
    EXPECT_EQ(form().cover.Image1.picture(), folder.path(u"Sys/图片库/楼.bmp"_s));
    EXPECT_EQ(value(u"封面表"_s, u"图片"), u"楼.bmp"_s);
    EXPECT_EQ(value(u"封面表"_s, u"工程名称"), u"工程名称"_s);
}

TEST_F(CoverLibraries, ATableThatIsMissingIsToldWhenShownAndWhenDeleted) {
    leave(u"甲"_s);
    drop(u"甲"_s);
    frame().lstcover.click(0);
    EXPECT_EQ(messages.shown.size(), 1U);
    frame().cmdDeleteCover.click();
    EXPECT_EQ(messages.shown.size(), 2U);
    EXPECT_EQ(frame().lstcover.entries(), QStringList(u"甲"_s));
}

class CustomPages : public testing::Test, protected test::FormatWorld {
protected:
    CustomPageFrame& frame() { return form().customPage; }
    void create(const QStringList& names) {
        inputs.answers << names;
        frame().cmdSelfBld.click();
    }
    QString current() {
        return rowCount(u"当前自定义"_s) == 0 ? u"none"_s : value(u"当前自定义"_s, u"路径");
    }
    QString pageFile(const QString& name) {
        return folder.path(u"Sys/自定义/"_s + name + u".doc"_s);
    }
};

TEST_F(CustomPages, WithoutAPageNothingCanBeChosenOrDeleted) {
    EXPECT_FALSE(frame().chkSelf.enabled());
    EXPECT_FALSE(frame().cmdSelfDel.enabled());
}

TEST_F(CustomPages, LoadListsThemByTheirNumberAndSelectsTheFirst) {
    for (const auto& name : {u"乙"_s, u"甲"_s}) {
        registerCustomPage(settings(), name);
    }
    EXPECT_EQ(frame().lstSelf.entries(), QStringList({u"乙"_s, u"甲"_s}));
    EXPECT_EQ(frame().lstSelf.text(), u"乙"_s);
    EXPECT_TRUE(frame().chkSelf.enabled());
    EXPECT_EQ(current(), u"none"_s);
}

TEST_F(CustomPages, CreatingMakesTheDocumentListsItAndOpensItForEditing) {
    create({u" 扉页 "_s});
    ASSERT_EQ(inputs.asked.size(), 1U);
    EXPECT_EQ(inputs.asked[0].prompt, u"请输入自定义名称："_s);
    EXPECT_EQ(inputs.asked[0].title, u"添加"_s);
    EXPECT_EQ(log.lines, std::vector<std::string>({"create Word.Application", "Documents.Add",
                                                   "ActiveDocument.SaveAs Sys/自定义/扉页.doc",
                                                   "ActiveDocument.Close", "Application.Quit",
                                                   "Application dropped"}));
    EXPECT_EQ(customPages(settings()), QStringList(u"扉页"_s));
    EXPECT_EQ(frame().lstSelf.text(), u"扉页"_s);
    EXPECT_TRUE(frame().chkSelf.enabled());
    EXPECT_TRUE(frame().cmdSelfDel.enabled());
    EXPECT_EQ(shell.opened, QStringList(pageFile(u"扉页"_s)));
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(CustomPages, CreatingMakesTheFolderWhenItIsMissing) {
    QDir(folder.path()).rmdir(u"Sys/自定义"_s);
    create({u"扉页"_s});
    EXPECT_TRUE(folder.exists(u"Sys/自定义"_s));
}

TEST_F(CustomPages, ANameInUseIsAskedForAgainUntilItIsNewOrEmpty) {
    create({u"扉页"_s});
    create({u"扉页"_s, u"扉页"_s, u"封底"_s});
    ASSERT_EQ(messages.shown.size(), 2U);
    EXPECT_EQ(messages.shown[0].text, u"对不起，[扉页]自定义已经存在！"_s);
    EXPECT_EQ(messages.shown[0].icon, desktop::Icon::exclamation);
    EXPECT_EQ(customPages(settings()), QStringList({u"扉页"_s, u"封底"_s}));
    create({u"扉页"_s, QString()});
    EXPECT_EQ(customPages(settings()).size(), 2);
    create({u"  "_s});
    EXPECT_EQ(customPages(settings()).size(), 2);
}

TEST_F(CustomPages, ANameThatLeadsOutOfTheFolderIsRefused) {
    for (const auto& name : {u"../扉页"_s, u"a/b"_s, u"a\\b"_s, u"a:b"_s, u"NUL"_s, u"com1"_s}) {
        messages.shown.clear();
        create({name});
        EXPECT_EQ(messages.shown.size(), 1U) << name.toStdString();
    }
    EXPECT_TRUE(customPages(settings()).isEmpty());
    EXPECT_TRUE(log.lines.empty());
}

TEST_F(CustomPages, AFailureOfTheWordProcessorIsToldAndNothingIsListed) {
    log.failAt("ActiveDocument.SaveAs", 70, u"没有权限");
    create({u"扉页"_s});
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, u"没有权限"_s);
    EXPECT_TRUE(frame().lstSelf.entries().isEmpty());
    EXPECT_TRUE(customPages(settings()).isEmpty());
}

TEST_F(CustomPages, ADoubleClickOpensThePageAndDoesNothingInAnEmptyList) {
    frame().lstSelf.doubleClick();
    EXPECT_TRUE(shell.opened.isEmpty());
    create({u"扉页"_s});
    frame().lstSelf.doubleClick();
    EXPECT_EQ(shell.opened.size(), 2);
    shell.isBroken = true;
    frame().lstSelf.doubleClick();
    EXPECT_EQ(messages.shown.size(), 1U);
}

TEST_F(CustomPages, CheckingTheBoxStoresTheSelectedPageAndUncheckingWritesNothing) {
    registerCustomPage(settings(), u" 扉页 "_s);
    frame().chkSelf.click();
    EXPECT_EQ(current(), u"扉页"_s);
    frame().chkSelf.click();
    EXPECT_EQ(current(), u"扉页"_s);
}

TEST_F(CustomPages, SelectingAPageStoresItUntrimmedWhileTheBoxIsChecked) {
    registerCustomPage(settings(), u"扉页"_s);
    registerCustomPage(settings(), u" 封底 "_s);
    frame().lstSelf.click(1);
    EXPECT_EQ(current(), u"none"_s);
    frame().chkSelf.click();
    frame().lstSelf.click(0);
    EXPECT_EQ(current(), u"扉页"_s);
    frame().lstSelf.click(1);
    EXPECT_EQ(current(), u" 封底 "_s);
    EXPECT_EQ(rowCount(u"当前自定义"_s), 1);
}

TEST_F(CustomPages, APageAndACoverLibraryExcludeEachOther) {
    registerCustomPage(settings(), u"扉页"_s);
    copyCoverTable(settings(), u"甲"_s);
    registerCoverLibrary(settings(), u"甲"_s);
    CheckBox& cover = form().coverLibrary.chkCover;
    CheckBox& self = frame().chkSelf;
    cover.click();
    self.click();
    EXPECT_FALSE(cover.checked());
    EXPECT_TRUE(self.checked());
    cover.click();
    EXPECT_TRUE(cover.checked());
    EXPECT_FALSE(self.checked());
}

TEST_F(CustomPages, DeletingTakesTheRowAndTheEntryAndLeavesTheDocument) {
    registerCustomPage(settings(), u"扉页"_s);
    registerCustomPage(settings(), u"封底"_s);
    folder.write(u"Sys/自定义/扉页.doc"_s, "doc");
    frame().chkSelf.click();
    frame().cmdSelfDel.click();
    EXPECT_EQ(customPages(settings()), QStringList(u"封底"_s));
    EXPECT_TRUE(folder.exists(u"Sys/自定义/扉页.doc"_s));
    EXPECT_EQ(frame().lstSelf.text(), u"封底"_s);
    EXPECT_EQ(current(), u"封底"_s);
    frame().cmdSelfDel.click();
    EXPECT_FALSE(frame().chkSelf.checked());
    EXPECT_FALSE(frame().chkSelf.enabled());
    EXPECT_FALSE(frame().cmdSelfDel.enabled());
    EXPECT_EQ(current(), u"封底"_s);
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(CustomPages, DeletingRemovesAFileOfTheBareNameInTheCurrentFolder) {
    const QString before = QDir::currentPath();
    folder.write(u"当前/扉页"_s, "x");
    folder.write(u"外面"_s, "x");
    QDir::setCurrent(folder.path(u"当前"_s));
    registerCustomPage(settings(), u"扉页"_s);
    registerCustomPage(settings(), u"../外面"_s);
    frame().cmdSelfDel.click();
    frame().cmdSelfDel.click();
    QDir::setCurrent(before);
    EXPECT_FALSE(folder.exists(u"当前/扉页"_s));
    EXPECT_TRUE(folder.exists(u"外面"_s));
}

TEST_F(CustomPages, AFailureOfTheDeletionIsTold) {
    registerCustomPage(settings(), u"扉'页"_s);
    frame().cmdSelfDel.click();
    EXPECT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(frame().lstSelf.entries().size(), 1);
}

} // namespace
} // namespace qvnd::format
