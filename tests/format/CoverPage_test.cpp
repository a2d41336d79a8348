#include "format/CoverPage.h"

#include "support/FormatWorld.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qvnd::format {
namespace {

const QString coverTable = u"封面表"_s;
const QString outsideOfCover = u"对不起，该范围必须在0-40之间！"_s;

class CoverPageTest : public testing::Test, protected test::FormatWorld {
protected:
    CoverPage& page() { return form().cover; }
    QString of(QStringView field) { return value(coverTable, field); }
    void pick(ComboBox& box, const QString& entry) { box.pick(box.entries().indexOf(entry)); }
    void putPicture(const QString& name) { folder.write(u"Sys/图片库/"_s + name, "BM"); }
    QString pictureOf(const QString& name) { return folder.path(u"Sys/图片库/"_s + name); }
    // Browses to a file outsideOfCover the picture folder.
    void browse(const QString& name, const QByteArray& bytes = "BM") {
        folder.write(u"外面/"_s + name, bytes);
        dialogs.chosen = folder.path(u"外面/"_s + name);
        page().cmdBrowse.click();
    }
    static void enter(TextBox& box, const QString& text) {
        box.type(text);
        box.leave();
    }
};

TEST_F(CoverPageTest, LoadTakesTheNamesOfTheOpenPlanOverWhatWasTyped) {
    openPlan(u"滨江工程"_s, u"一建公司"_s);
    EXPECT_EQ(page().TxtPrjName.text(), u"滨江工程"_s);
    EXPECT_EQ(page().TxtOffName.text(), u"一建公司"_s);
    EXPECT_EQ(of(u"工程名称"), u"滨江工程"_s);
    EXPECT_EQ(of(u"单位名称"), u"一建公司"_s);
    EXPECT_EQ(page().lblPrjName.caption(), u"滨江工程"_s);
    EXPECT_EQ(page().lblOffName.caption(), u"一建公司"_s);
}

TEST_F(CoverPageTest, APictureWhoseNameLeadsOutOfTheFolderIsNotShown) {
    folder.write(u"秘密.jpg"_s, "BM");
    page().cmbPic.setText(u"../../秘密.jpg"_s);
    EXPECT_TRUE(page().Image1.picture().isEmpty());
    EXPECT_EQ(of(u"图片"), QString());
}

TEST_F(CoverPageTest, OnlyALoadTakesTheNamesOfThePlan) {
    openPlan(u"滨江工程"_s, u"一建公司"_s);
    enter(page().TxtPrjName, u"改名"_s);
    form();
    EXPECT_EQ(of(u"工程名称"), u"改名"_s);
    dialog.Unload();
    form();
    EXPECT_EQ(of(u"工程名称"), u"滨江工程"_s);
}

TEST_F(CoverPageTest, WithoutAnOpenPlanTheNamesStay) {
    EXPECT_EQ(page().TxtPrjName.text(), u"工程名称"_s);
    EXPECT_EQ(page().TxtOffName.text(), u"单位名称"_s);
}

TEST_F(CoverPageTest, APlanWithoutInformationGivesItsNameAlone) {
    add(*state.gDbUser, u"当前表"_s, {{u"名称"_s, u"滨江工程"_s}});
    EXPECT_EQ(page().TxtPrjName.text(), u"滨江工程"_s);
    EXPECT_EQ(page().TxtOffName.text(), u"单位名称"_s);
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(CoverPageTest, LoadShowsTheRowAndTheLabelsInHalfTheirSize) {
    change(coverTable, u"工程字体", u"黑体");
    change(coverTable, u"工程字号", u"初号");
    change(coverTable, u"单位字号", u"小二");
    change(coverTable, u"日期字体", u"楷体");
    change(coverTable, u"日期字号", u"9");
    EXPECT_EQ(page().cmbPrjFont.text(), u"黑体"_s);
    EXPECT_EQ(page().cmbDateFont.text(), u"楷体"_s);
    EXPECT_EQ(page().TxtWidth.text(), u"10"_s);
    EXPECT_EQ(page().TxtHeight.text(), u"10"_s);
    EXPECT_EQ(page().lblPrjName.fontName(), u"黑体"_s);
    EXPECT_FLOAT_EQ(page().lblPrjName.fontSize(), 24);
    EXPECT_EQ(page().lblOffName.fontName(), u"仿宋_GB2312"_s);
    EXPECT_FLOAT_EQ(page().lblOffName.fontSize(), 9);
    EXPECT_EQ(page().lblDate.fontName(), u"楷体"_s);
    EXPECT_FLOAT_EQ(page().lblDate.fontSize(), 4.5F);
}

TEST_F(CoverPageTest, ASizeOfTheOfficeThatTheDocumentWillNotHaveIsTold) {
    EXPECT_EQ(page().lblOffNote.caption(), QString()) << "both the same";
    page().cmbPrjSize.pick(page().cmbPrjSize.entries().indexOf(u"一号"_s));
    EXPECT_EQ(page().lblOffNote.caption(),
              u"生成的文档中，单位名称和它上下的空行用工程名称的字号“一号”，不用“小四”；"
              "字号很大时，日期会排到第二页。"_s);
    page().cmbOffSize.pick(page().cmbOffSize.entries().indexOf(u"26"_s));
    EXPECT_EQ(page().lblOffNote.caption(), QString()) << "as many points";
}

TEST_F(CoverPageTest, ASizeThatALoadBringsIsToldAsWell) {
    change(coverTable, u"单位字号", u"初号");
    EXPECT_TRUE(page().lblOffNote.caption().contains(u"不用“初号”"_s));
}

TEST_F(CoverPageTest, TheDateIsTodaysWhateverTheTableSaysAndTheNextWriteStoresIt) {
    const QDate today = QDate::currentDate();
    EXPECT_EQ(page().cmbDate.date(), today);
    EXPECT_EQ(page().lblDate.caption(), today.toString(u"yyyy-M-d"_s));
    EXPECT_EQ(of(u"日期"), u"2026-5-1"_s);
    page().TxtPrjName.leave();
    EXPECT_EQ(of(u"日期"), today.toString(u"yyyy-M-d"_s));
}

TEST_F(CoverPageTest, WithoutARowLoadFallsBackAndWritesNothing) {
    empty(coverTable);
    openPlan(u"滨江工程"_s, u"一建公司"_s);
    EXPECT_EQ(page().TxtPrjName.text() + page().TxtOffName.text() + page().cmbPic.text(),
              QString());
    for (const ComboBox* font : {&page().cmbPrjFont, &page().cmbOffFont, &page().cmbDateFont}) {
        EXPECT_EQ(font->text(), u"宋体"_s);
    }
    for (const ComboBox* size : {&page().cmbPrjSize, &page().cmbOffSize, &page().cmbDateSize}) {
        EXPECT_EQ(size->text(), u"二号"_s);
    }
    EXPECT_EQ(page().TxtWidth.text(), u"0"_s);
    EXPECT_EQ(page().TxtHeight.text(), u"0"_s);
    EXPECT_EQ(page().lblPrjName.caption(), u"工程名称"_s);
    EXPECT_FLOAT_EQ(page().lblPrjName.fontSize(), 11);
    EXPECT_EQ(page().lblDate.fontName(), u"宋体"_s);
    EXPECT_EQ(rowCount(coverTable), 0);
    page().cmbPrjFont.pick(0);
    EXPECT_EQ(rowCount(coverTable), 1);
    EXPECT_EQ(of(u"工程字体"), u"仿宋_GB2312"_s);
    EXPECT_EQ(of(u"图片宽度"), u"0"_s);
}

TEST_F(CoverPageTest, EachControlWritesItsFieldAndMovesItsLabel) {
    struct Case {
        std::function<void()> act;
        QStringView field;
        QString written;
    };
    const Case cases[] = {
        {[&] { enter(page().TxtPrjName, u" 滨江 "_s); }, u"工程名称", u"滨江"_s},
        {[&] { enter(page().TxtOffName, u" 一建 "_s); }, u"单位名称", u"一建"_s},
        {[&] { pick(page().cmbPrjFont, u"黑体"_s); }, u"工程字体", u"黑体"_s},
        {[&] { pick(page().cmbPrjSize, u"一号"_s); }, u"工程字号", u"一号"_s},
        {[&] { pick(page().cmbOffFont, u"宋体"_s); }, u"单位字体", u"宋体"_s},
        {[&] { pick(page().cmbOffSize, u"二号"_s); }, u"单位字号", u"二号"_s},
        {[&] { pick(page().cmbDateFont, u"黑体"_s); }, u"日期字体", u"黑体"_s},
        {[&] { pick(page().cmbDateSize, u"三号"_s); }, u"日期字号", u"三号"_s},
        {[&] { page().cmbDate.pick(QDate(2027, 3, 4)); }, u"日期", u"2027-3-4"_s},
        {[&] { enter(page().TxtWidth, u"12"_s); }, u"图片宽度", u"12"_s},
        {[&] { enter(page().TxtHeight, u"15"_s); }, u"图片高度", u"15"_s},
    };
    for (const Case& each : cases) {
        each.act();
        EXPECT_EQ(of(each.field), each.written) << each.field.toString().toStdString();
    }
    EXPECT_EQ(page().lblPrjName.caption(), u"滨江"_s);
    EXPECT_EQ(page().lblOffName.caption(), u"一建"_s);
    EXPECT_EQ(page().lblDate.caption(), u"2027-3-4"_s);
    EXPECT_EQ(page().lblPrjName.fontName(), u"黑体"_s);
    EXPECT_FLOAT_EQ(page().lblPrjName.fontSize(), 13);
    EXPECT_EQ(page().lblOffName.fontName(), u"宋体"_s);
    EXPECT_FLOAT_EQ(page().lblOffName.fontSize(), 11);
    EXPECT_EQ(page().lblDate.fontName(), u"黑体"_s);
    EXPECT_FLOAT_EQ(page().lblDate.fontSize(), 8);
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(CoverPageTest, TypingANameMovesItsLabelAndWritesNothing) {
    page();
    const QString before = dump(coverTable);
    page().TxtPrjName.type(u" 新名 "_s);
    page().TxtOffName.type(QString());
    page().cmbDate.setDate(QDate(2020, 1, 1));
    EXPECT_EQ(page().lblPrjName.caption(), u"新名"_s);
    EXPECT_EQ(page().lblOffName.caption(), QString());
    EXPECT_EQ(page().lblDate.caption(), u"2020-1-1"_s);
    EXPECT_EQ(dump(coverTable), before);
}

TEST_F(CoverPageTest, ASizeOfThePictureIsAWholeNumberBetweenNothingAndForty) {
    const std::pair<QString, QString> taken[] = {
        {u"0"_s, u"0"_s}, {u"40"_s, u"40"_s}, {u"10.4"_s, u"10"_s}, {u" 7 "_s, u"7"_s}};
    for (const auto& [typed, stored] : taken) {
        enter(page().TxtWidth, typed);
        enter(page().TxtHeight, typed);
        EXPECT_EQ(of(u"图片宽度"), stored);
        EXPECT_EQ(of(u"图片高度"), stored);
        EXPECT_EQ(page().TxtWidth.text(), typed);
    }
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(CoverPageTest, ASizeOutsideIsToldTheBoxShowsTenAndNothingIsWritten) {
    for (TextBox* box : {&page().TxtWidth, &page().TxtHeight}) {
        for (const auto& wrong : {u"40.5"_s, u"-1"_s, u"41"_s}) {
            enter(*box, u"3"_s);
            const QString before = dump(coverTable);
            messages.shown.clear();
            enter(*box, wrong);
            ASSERT_EQ(messages.shown.size(), 1U);
            EXPECT_EQ(messages.shown[0].text, outsideOfCover);
            EXPECT_EQ(messages.shown[0].icon, desktop::Icon::exclamation);
            EXPECT_EQ(messages.shown[0].title, u"警告"_s);
            EXPECT_EQ(box->text(), u"10"_s);
            EXPECT_EQ(dump(coverTable), before);
        }
    }
    page().cmbPrjFont.pick(0);
    EXPECT_EQ(of(u"图片宽度"), u"10"_s);
}

TEST_F(CoverPageTest, TheNoteOfARefusedSizeGoesWithTheWriteThatStoresIt) {
    enter(page().TxtWidth, u"41"_s);
    EXPECT_FALSE(page().TxtWidth.note().isEmpty());
    page().TxtHeight.leave();
    EXPECT_EQ(value(u"封面表"_s, u"图片宽度"), u"10"_s);
    EXPECT_EQ(page().TxtWidth.note(), QString());
}

TEST_F(CoverPageTest, ASizeThatIsNoNumberIsToldAndStays) {
    for (const auto& wrong : {QString(), u"大"_s}) {
        messages.shown.clear();
        enter(page().TxtWidth, wrong);
        ASSERT_EQ(messages.shown.size(), 1U);
        EXPECT_EQ(messages.shown[0].title, QString());
        EXPECT_EQ(page().TxtWidth.text(), wrong);
        EXPECT_EQ(of(u"图片宽度"), u"10"_s);
    }
    page().TxtWidth.type(QString());
    page().cmbPrjFont.pick(0);
    EXPECT_EQ(of(u"图片宽度"), u"10"_s);
}

TEST_F(CoverPageTest, LoadShowsThePictureOfTheTable) {
    putPicture(u"楼.bmp"_s);
    change(coverTable, u"图片", u"楼.bmp");
    EXPECT_EQ(page().cmbPic.text(), u"楼.bmp"_s);
    EXPECT_EQ(page().Image1.picture(), pictureOf(u"楼.bmp"_s));
    EXPECT_EQ(of(u"图片"), u"楼.bmp"_s);
    EXPECT_TRUE(page().cmbPic.entries().isEmpty());
}

TEST_F(CoverPageTest, LoadOfAPictureThatIsGoneBlanksItsNameWithoutAWord) {
    change(coverTable, u"图片", u"楼.bmp");
    EXPECT_EQ(page().cmbPic.text(), u"楼.bmp"_s);
    EXPECT_EQ(of(u"图片"), QString());
    EXPECT_EQ(page().Image1.picture(), QString());
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(CoverPageTest, ErasingTheNameClearsTheFieldAtOnceAndThePictureAtTheLast) {
    putPicture(u"楼.bmp"_s);
    change(coverTable, u"图片", u"楼.bmp");
    page().cmbPic.type(u"楼.bm"_s);
    EXPECT_EQ(of(u"图片"), QString());
    EXPECT_EQ(page().Image1.picture(), pictureOf(u"楼.bmp"_s));
    page().cmbPic.type(QString());
    EXPECT_EQ(page().Image1.picture(), QString());
    EXPECT_EQ(of(u"图片"), QString());
}

TEST_F(CoverPageTest, ChangingTheNameWritesItAloneAndWithoutARowMakesNone) {
    putPicture(u"楼.bmp"_s);
    page().TxtPrjName.type(u"未离开"_s);
    page().cmbPic.setText(u" 楼.bmp "_s);
    EXPECT_EQ(of(u"图片"), u"楼.bmp"_s);
    EXPECT_EQ(of(u"工程名称"), u"工程名称"_s);
    empty(coverTable);
    page().cmbPic.setText(QString());
    EXPECT_EQ(rowCount(coverTable), 0);
    drop(coverTable);
    page().cmbPic.setText(u"楼.bmp"_s);
    EXPECT_EQ(page().Image1.picture(), pictureOf(u"楼.bmp"_s));
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(CoverPageTest, BrowsingBringsThePictureInNamesItAndStoresTheCover) {
    page().TxtPrjName.type(u"未离开"_s);
    browse(u"楼.jpg"_s, "JPEG");
    ASSERT_EQ(dialogs.asked.size(), 1U);
    EXPECT_EQ(dialogs.asked[0].filter,
              u"Pictures (*.bmp;*.jpg;*.gif;*.wmf)|*.bmp;*.jpg;*.gif;*.wmf"_s);
    EXPECT_EQ(folder.read(u"Sys/图片库/楼.jpg"_s), "JPEG");
    EXPECT_EQ(page().cmbPic.entries(), QStringList(u"楼.jpg"_s));
    EXPECT_EQ(page().cmbPic.text(), u"楼.jpg"_s);
    EXPECT_EQ(page().Image1.picture(), pictureOf(u"楼.jpg"_s));
    EXPECT_EQ(of(u"图片"), u"楼.jpg"_s);
    EXPECT_EQ(of(u"工程名称"), u"未离开"_s);
}

TEST_F(CoverPageTest, BrowsingToAFileOfTheSameNameOverwritesTheCopyInTheFolder) {
    folder.write(u"Sys/图片库/楼.jpg"_s, "old");
    browse(u"楼.jpg"_s, "new");
    EXPECT_EQ(folder.read(u"Sys/图片库/楼.jpg"_s), "new");
}

TEST_F(CoverPageTest, BrowsingToAListedFileDoesNothingAtAll) {
    browse(u"楼.jpg"_s, "first");
    browse(u"路.jpg"_s);
    const QString before = dump(coverTable);
    page().TxtPrjName.type(u"未离开"_s);
    browse(u"楼.jpg"_s, "second");
    EXPECT_EQ(folder.read(u"Sys/图片库/楼.jpg"_s), "first");
    EXPECT_EQ(page().cmbPic.text(), u"路.jpg"_s);
    EXPECT_EQ(dump(coverTable), before);
}

TEST_F(CoverPageTest, ASixthPictureDropsTheSecondAndStaysUncopiedThoughItsNameIsStored) {
    for (int i = 1; i <= 5; ++i) {
        browse(u"图%1.bmp"_s.arg(i));
    }
    browse(u"图6.bmp"_s);
    EXPECT_EQ(page().cmbPic.entries(),
              QStringList({u"图1.bmp"_s, u"图3.bmp"_s, u"图4.bmp"_s, u"图5.bmp"_s, u"图6.bmp"_s}));
    EXPECT_FALSE(folder.exists(u"Sys/图片库/图6.bmp"_s));
    EXPECT_EQ(page().cmbPic.text(), u"图6.bmp"_s);
    EXPECT_EQ(page().Image1.picture(), pictureOf(u"图5.bmp"_s));
    EXPECT_EQ(of(u"图片"), u"图6.bmp"_s);
}

TEST_F(CoverPageTest, LeavingThePickerWithoutAFileDoesNothing) {
    page();
    const QString before = dump(coverTable);
    page().TxtPrjName.type(u"未离开"_s);
    dialogs.chosen.reset();
    page().cmdBrowse.click();
    EXPECT_EQ(dump(coverTable), before);
    EXPECT_TRUE(page().cmbPic.entries().isEmpty());
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(CoverPageTest, AFileThatCannotBeBroughtInIsToldAndNotListed) {
    dialogs.chosen = folder.path(u"没有.bmp"_s);
    page().cmdBrowse.click();
    EXPECT_EQ(messages.shown.size(), 1U);
    EXPECT_TRUE(page().cmbPic.entries().isEmpty());
    EXPECT_EQ(of(u"图片"), u"Null"_s);
}

TEST_F(CoverPageTest, PickingAListedPictureStoresTheCoverAndShowsItIfItsFileIsThere) {
    browse(u"楼.jpg"_s);
    browse(u"路.jpg"_s);
    page().cmbPic.pick(0);
    EXPECT_EQ(of(u"图片"), u"楼.jpg"_s);
    EXPECT_EQ(page().Image1.picture(), pictureOf(u"楼.jpg"_s));
    QFile::remove(pictureOf(u"路.jpg"_s));
    page().cmbPic.pick(1);
    EXPECT_EQ(of(u"图片"), u"路.jpg"_s);
    EXPECT_EQ(page().Image1.picture(), pictureOf(u"楼.jpg"_s));
}

TEST_F(CoverPageTest, AFailureOfTheStoreIsToldOnceByEachControl) {
    page();
    drop(coverTable);
    page().TxtPrjName.leave();
    page().cmbPrjFont.pick(0);
    page().cmbOffSize.pick(0);
    page().cmbDate.pick(QDate(2020, 1, 1));
    enter(page().TxtWidth, u"3"_s);
    EXPECT_EQ(messages.shown.size(), 5U);
}

} // namespace
} // namespace qvnd::format
