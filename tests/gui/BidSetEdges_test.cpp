#include "gui/support/FormatWindow.h"

#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

#include <algorithm>

// The edge cases of headings, header, footer, lengths and picture, on the real dialog.
namespace qvnd::test {
namespace {

using BidSetEdge = FormatWindow;

// --- headings ------------------------------------------------------------------------------------

TEST_F(BidSetEdge, MovingStraightToAnotherLevelStoresTheTextInTheOldOne) {
    open();
    type("Txtformer", "卷");
    pick("cmbClass", "2");
    EXPECT_EQ(saved("章节设置表 1.前缀"), "卷");
    EXPECT_EQ(saved("章节设置表 2.前缀"), "第");
}

TEST_F(BidSetEdge, AMissingLevelIsMadeByTheFirstBoxThatChanges) {
    world.settings().Execute("Delete * from 章节设置表 where 级别='2'");
    open();
    pick("cmbMiddle", "a");
    EXPECT_EQ(saved("章节设置表 1.序号标志"), "aa型");
    click("chkHead");
    pick("cmbClass", "2");
    EXPECT_EQ(saved("章节设置表 2.中缀"), "a");
    EXPECT_EQ(saved("章节设置表 2.序号标志"), "a型");
    EXPECT_EQ(text("Txtformer"), "");
}

TEST_F(BidSetEdge, ARowWithoutAPositionKeepsTheOptionShownBefore) {
    world.change("章节设置表", u"位置", QString(""), "级别='2'");
    open();
    click("optRight");
    pick("cmbClass", "2");
    EXPECT_TRUE(isChecked("optRight"));
}

TEST_F(BidSetEdge, TypingBringsTheTitleBackIntoThePreviewOfAnUncheckedBox) {
    open();
    click("chkIsNot");
    EXPECT_EQ(text("lblModel"), "第一章");
    type("Txtformer", "卷");
    EXPECT_EQ(text("lblModel"), "卷一章 标题");
    EXPECT_EQ(saved("章节设置表 1.带该级标题"), "否");
}

TEST_F(BidSetEdge, ThePreviewKeepsItsFirstTextsWithoutAffixes) {
    world.change("章节设置表", u"前缀", QString(""), "级别='1'");
    world.change("章节设置表", u"后缀", QString(""), "级别='1'");
    open();
    EXPECT_EQ(text("lblModel"), "第一章 标题 ");
    EXPECT_EQ(text("lblTree"), "第1级标题");
}

TEST_F(BidSetEdge, AFailureOfTheStoreIsOneMessageAndTheDialogGoesOn) {
    open();
    world.drop("章节设置表");
    pick("cmbChapterFont", "黑体");
    EXPECT_EQ(told().size(), 1);
    EXPECT_TRUE(window->isVisible());
    click("chkHeader");
    EXPECT_EQ(world.value("页眉页脚表", u"是否带页眉"), "否");
}

// --- header and footer ---------------------------------------------------------------------------

TEST_F(BidSetEdge, AnEmptyTableGetsItsRowWithoutTheUsersChoice) {
    world.empty("页眉页脚表");
    open();
    click("optFooterRight");
    EXPECT_EQ(saved("页眉页脚表.页脚位置"), "中");
    EXPECT_TRUE(isChecked("optFooterRight"));
    pick("cmbPageClass", "4");
    EXPECT_EQ(saved("页眉页脚表.页脚位置"), "右");
}

TEST_F(BidSetEdge, AStoredLeaderOutsideTheTableKeepsTheEntryShown) {
    world.change("页眉页脚表", u"制表样式", QString("波浪线"));
    open();
    EXPECT_EQ(text("cmbPageSign"), "");
    pick("cmbPageSign", "———");
    EXPECT_EQ(saved("页眉页脚表.制表样式"), "连连线");
}

TEST_F(BidSetEdge, OuterBlanksAreStoredAwayAndStayInTheBox) {
    open();
    type("TxtHeaderCon", "  甲  ");
    leave("TxtHeaderCon");
    EXPECT_EQ(saved("页眉页脚表.页眉内容"), "甲");
    EXPECT_EQ(text("TxtHeaderCon"), "  甲  ");
    openAgain();
    EXPECT_EQ(text("TxtHeaderCon"), "甲");
}

TEST_F(BidSetEdge, WithoutAHeaderItsTextStays) {
    open();
    click("chkHeader");
    EXPECT_EQ(text("TxtHeaderCon"), "页眉");
    EXPECT_EQ(saved("页眉页脚表.页眉内容"), "页眉");
    EXPECT_TRUE(part("TxtHeaderCon").isEnabled());
}

TEST_F(BidSetEdge, FieldsWhoseNamesMisleadTellWhatTheyDo) {
    open();
    EXPECT_TRUE(part("cmbHeaderFont").toolTip().contains("页脚"));
    EXPECT_TRUE(part("cmbHeaderSize").toolTip().contains("页脚"));
    EXPECT_TRUE(part("cmbFooterFont").toolTip().contains("不起作用"));
    EXPECT_TRUE(part("cmbFooterSize").toolTip().contains("不起作用"));
    EXPECT_EQ(part("cmbFooterSize").accessibleDescription(), part("cmbFooterSize").toolTip());
}

// --- lengths -------------------------------------------------------------------------------------

TEST_F(BidSetEdge, ALengthOutOfRangeIsToldAtTheFieldWhileItIsTyped) {
    open();
    type("txtPageupdis", "55.88");
    auto& box = part<QLineEdit>("txtPageupdis");
    EXPECT_TRUE(box.toolTip().contains("-55.87-55.87"));
    const auto labels = window->findChildren<QLabel*>();
    EXPECT_TRUE(std::any_of(labels.begin(), labels.end(), [](const QLabel* label) {
        return label->isVisible() &&
               label->text() == "上边距：对不起，该范围必须在-55.87-55.87之间！";
    }));
    EXPECT_EQ(told(), QStringList()) << "no box yet";
    type("txtPageupdis", "55.87");
    EXPECT_FALSE(box.toolTip().contains("对不起"));
}

TEST_F(BidSetEdge, BehindARefusalThePageSaysWhichFieldHasBecomeNought) {
    open();
    type("txtPageupdis", "99");
    leave("txtPageupdis");
    const auto says = [this](const QString& begin) {
        const auto labels = window->findChildren<QLabel*>();
        return std::any_of(labels.begin(), labels.end(), [&](const QLabel* label) {
            return label->isVisible() && label->text().startsWith(begin);
        });
    };
    EXPECT_TRUE(says("上边距：“99”不在 -55.87 到 55.87 厘米之间，现在是 0；"));
    type("TxtPageDownDis", "99");
    EXPECT_TRUE(says("下边距：对不起，该范围必须在")) << "a problem goes first";
    type("TxtPageDownDis", "2");
    type("txtPageupdis", "2");
    EXPECT_FALSE(says("上边距：“99”"));
}

TEST_F(BidSetEdge, ARefusedLengthIsToldAndResetAndNotWritten) {
    open();
    type("txtPageupdis", "55.88");
    leave("txtPageupdis");
    EXPECT_EQ(told(), QStringList{"对不起，该范围必须在-55.87-55.87之间！"});
    EXPECT_EQ(world.messages.shown.back().icon, desktop::Icon::exclamation);
    EXPECT_EQ(world.messages.shown.back().title, "警告");
    EXPECT_EQ(text("txtPageupdis"), "0");
    EXPECT_EQ(saved("页面设置表.页边距上"), "1.5");
    pick("cmbTextSize", "五号");
    EXPECT_EQ(saved("页面设置表.页边距上"), "0");
}

TEST_F(BidSetEdge, AnEmptiedMarginIsToldAndKeepsItsValueInTheTable) {
    open();
    type("TxtPageLeftDis", "");
    leave("TxtPageLeftDis");
    EXPECT_EQ(told().size(), 1);
    EXPECT_EQ(text("TxtPageLeftDis"), "");
    pick("cmbTextSize", "五号");
    EXPECT_EQ(saved("页面设置表.页边距左"), "1.5");
}

TEST_F(BidSetEdge, ASizeOfThePictureIsWithinFortyCentimetresAndWhole) {
    open();
    type("TxtWidth", "40.5");
    leave("TxtWidth");
    EXPECT_EQ(told(), QStringList{"对不起，该范围必须在0-40之间！"});
    EXPECT_EQ(text("TxtWidth"), "10");
    type("TxtWidth", "10.4");
    leave("TxtWidth");
    EXPECT_EQ(saved("封面表.图片宽度"), "10");
}

// --- the date of the cover
// ------------------------------------------------------------------------

TEST_F(BidSetEdge, AClickOnTheDayThatIsShownStoresIt) {
    open();
    EXPECT_EQ(saved("封面表.日期"), "2026-5-1");
    clickDay("cmbDate", QDate::currentDate());
    EXPECT_EQ(saved("封面表.日期"), QDate::currentDate().toString("yyyy-M-d"));
}

// --- the picture of the cover --------------------------------------------------------------------

TEST_F(BidSetEdge, ABrowsedPictureIsCopiedShownAndStored) {
    world.dialogs.chosen = writePicture("红.bmp", Qt::red);
    open();
    click("cmdBrowse");
    EXPECT_EQ(world.dialogs.asked.back().filter,
              "Pictures (*.bmp;*.jpg;*.gif;*.wmf)|*.bmp;*.jpg;*.gif;*.wmf");
    EXPECT_TRUE(QFile::exists(world.folder.path("Sys/图片库/红.bmp")));
    EXPECT_EQ(text("cmbPic"), "红.bmp");
    EXPECT_EQ(saved("封面表.图片"), "红.bmp");
    EXPECT_EQ(previewed(), QColor(Qt::red));
}

TEST_F(BidSetEdge, ThePictureIsStretchedAndClippedInItsBox) {
    world.dialogs.chosen = writePicture("红.bmp", Qt::red);
    open();
    click("cmdBrowse");
    EXPECT_EQ(part("Picture1").size(), QSize(41, 49));
    EXPECT_EQ(part("Image1").geometry(), QRect(-9, -9, 57, 65));
    const QImage seen = part("Picture1").grab().toImage();
    EXPECT_EQ(seen.pixelColor(1, 1), QColor(Qt::red));
    EXPECT_EQ(seen.pixelColor(seen.width() - 2, seen.height() - 2), QColor(Qt::red));
}

TEST_F(BidSetEdge, ErasingTheNameClearsThePictureOnlyWithItsLastLetter) {
    writePicture("Sys/图片库/红.bmp", Qt::red);
    world.change("封面表", u"图片", QString("红.bmp"));
    open();
    EXPECT_EQ(previewed(), QColor(Qt::red));
    reach("cmbPic").setFocus();
    QTest::keyClick(&part("cmbPic"), Qt::Key_End);
    auto& box = part<QComboBox>("cmbPic");
    box.lineEdit()->end(false);
    key("cmbPic", Qt::Key_Backspace);
    EXPECT_EQ(text("cmbPic"), "红.bm");
    EXPECT_EQ(saved("封面表.图片"), "");
    EXPECT_EQ(previewed(), QColor(Qt::red));
    for (int i = 0; i < 4; ++i) {
        key("cmbPic", Qt::Key_Backspace);
    }
    EXPECT_EQ(text("cmbPic"), "");
    EXPECT_EQ(previewed(), QColor(Qt::white));
}

TEST_F(BidSetEdge, ALoadWithAPictureThatIsGoneBlanksItsName) {
    world.change("封面表", u"图片", QString("没有.bmp"));
    open();
    EXPECT_EQ(saved("封面表.图片"), "");
    EXPECT_EQ(text("cmbPic"), "没有.bmp");
    EXPECT_EQ(previewed(), QColor(Qt::white));
}

TEST_F(BidSetEdge, ADamagedPictureLeavesItsPlaceWhite) {
    QFile file(world.folder.path("Sys/图片库/坏.jpg"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("not a picture");
    file.close();
    world.change("封面表", u"图片", QString("坏.jpg"));
    open();
    EXPECT_EQ(previewed(), QColor(Qt::white));
    EXPECT_EQ(saved("封面表.图片"), "坏.jpg");
    EXPECT_EQ(told(), QStringList());
}

TEST_F(BidSetEdge, APictureOutOfItsListIsShownAgain) {
    world.dialogs.chosen = writePicture("红.bmp", Qt::red);
    open();
    click("cmdBrowse");
    world.dialogs.chosen = writePicture("蓝.bmp", Qt::blue);
    click("cmdBrowse");
    EXPECT_EQ(previewed(), QColor(Qt::blue));
    pick("cmbPic", "红.bmp");
    EXPECT_EQ(previewed(), QColor(Qt::red));
    EXPECT_EQ(saved("封面表.图片"), "红.bmp");
}

} // namespace
} // namespace qvnd::test
