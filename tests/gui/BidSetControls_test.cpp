#include "gui/support/FormatWindow.h"

#include <QDate>
#include <QDateEdit>
#include <QFont>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include <ostream>

// The tables of the dialog's controls: what each of them writes, when, and what else it moves.
namespace qvnd::test {
namespace {

enum class Act { pick, type, click };

// A control that writes: the user's act, and what then differs in the tables.
struct Writing {
    const char* control;
    Act act;
    const char* value;
    QStringList written;
    // Clicked before, so that the act changes something.
    const char* before = nullptr;
};

void PrintTo(const Writing& row, std::ostream* out) { *out << row.control << ' ' << row.value; }

const Writing writings[] = {
    // --- headings ---
    {"cmbChapterFont", Act::pick, "宋体", {"章节设置表 1.字体=宋体"}},
    {"cmbChapterSize", Act::pick, "三号", {"章节设置表 1.字号=三号"}},
    {"cmbMiddle", Act::pick, "1", {"章节设置表 1.中缀=1", "章节设置表 1.序号标志=I型"}},
    {"cmbMiddle", Act::pick, "A", {"章节设置表 1.中缀=A", "章节设置表 1.序号标志=A型"}},
    {"cmbMiddle", Act::pick, "a", {"章节设置表 1.中缀=a", "章节设置表 1.序号标志=aa型"}},
    {"cmbMiddle", Act::pick, "一", {}},
    {"Txtformer", Act::type, " 卷 ", {"章节设置表 1.前缀=卷"}},
    {"Txtback", Act::type, "篇", {"章节设置表 1.后缀=篇"}},
    {"optLeft", Act::click, "", {"章节设置表 1.位置=左"}},
    {"optRight", Act::click, "", {"章节设置表 1.位置=右"}},
    {"optMiddle", Act::click, "", {"章节设置表 1.位置=中"}, "optLeft"},
    {"chkHead", Act::click, "", {"章节设置表 1.置页头=否"}},
    {"chkHead", Act::click, "", {"章节设置表 1.置页头=是"}, "chkHead"},
    {"chkIsNot", Act::click, "", {"章节设置表 1.带该级标题=否"}},
    {"chkIsNot", Act::click, "", {"章节设置表 1.带该级标题=是"}, "chkIsNot"},
    {"cmbClass", Act::pick, "4", {}},
    {"chkMultLevel", Act::click, "", {}},
    {"chkBlackLine", Act::click, "", {}},
    // --- header, footer, contents ---
    {"chkHeader", Act::click, "", {"页眉页脚表.是否带页眉=否"}},
    {"TxtHeaderCon", Act::type, " 滨江 ", {"页眉页脚表.页眉内容=滨江"}},
    {"cmbHeaderFont", Act::pick, "黑体", {"页眉页脚表.页眉字体=黑体"}},
    {"cmbHeaderSize", Act::pick, "小五", {"页眉页脚表.页眉字号=小五"}},
    {"optHeaderLeft", Act::click, "", {"页眉页脚表.页眉位置=左"}},
    {"optHeaderRight", Act::click, "", {"页眉页脚表.页眉位置=右"}},
    {"optHeaderMiddle", Act::click, "", {"页眉页脚表.页眉位置=中"}, "optHeaderLeft"},
    {"chkfooter", Act::click, "", {"页眉页脚表.是否带页脚=否"}},
    {"TxtFooterCon", Act::type, "机密", {"页眉页脚表.页脚内容=机密"}},
    {"cmbFooterFont", Act::pick, "黑体", {"页眉页脚表.页脚字体=黑体"}},
    {"cmbFooterSize", Act::pick, "9", {"页眉页脚表.页脚字号=9"}},
    {"optFooterLeft", Act::click, "", {"页眉页脚表.页脚位置=左"}},
    {"optFooterRight", Act::click, "", {"页眉页脚表.页脚位置=右"}},
    {"optFooterMiddle", Act::click, "", {"页眉页脚表.页脚位置=中"}, "optFooterRight"},
    {"cmbPageClass", Act::pick, "5", {"页眉页脚表.显示级别=5"}},
    {"cmbPageSign", Act::pick, "(无)", {"页眉页脚表.制表样式=无"}},
    {"cmbPageSign", Act::pick, "------", {"页眉页脚表.制表样式=断连线"}},
    {"cmbPageSign", Act::pick, "———", {"页眉页脚表.制表样式=连连线"}},
    {"cmbPageSign", Act::pick, "．．．．．", {"页眉页脚表.制表样式=重虚线"}},
    {"cmbPageSign", Act::pick, "......", {}},
    {"chkPageIsNot", Act::click, "", {"页眉页脚表.是否显示页码=否"}},
    {"chkPageRight", Act::click, "", {"页眉页脚表.是否右对齐=否"}},
    // --- page ---
    {"txtPageupdis", Act::type, "2.5", {"页面设置表.页边距上=2.5"}},
    {"TxtPageDownDis", Act::type, "-3", {"页面设置表.页边距下=-3"}},
    {"TxtPageLeftDis", Act::type, "55.87", {"页面设置表.页边距左=55.87"}},
    {"TxtPageRightdis", Act::type, "-55.87", {"页面设置表.页边距右=-55.87"}},
    {"TxtBind", Act::type, "0.5", {"页面设置表.装订距离=0.5"}},
    {"Txtheader", Act::type, "1.25", {"页面设置表.距页眉=1.25"}},
    {"TxtFooter", Act::type, "0", {"页面设置表.距页脚=0"}},
    {"cmbTextFont", Act::pick, "宋体", {"页面设置表.正文字体=宋体"}},
    {"cmbTextSize", Act::pick, "五号", {"页面设置表.正文字号=五号"}},
    {"optTop", Act::click, "", {"页面设置表.装订位置=顶"}},
    {"optSide", Act::click, "", {"页面设置表.装订位置=边"}, "optTop"},
    // --- what no table holds ---
    {"Option1(1)", Act::click, "", {}},
    {"Option1(0)", Act::click, "", {}},
    {"cboBianHao", Act::pick, "a)", {}, "Option1(1)"},
    {"txtInde", Act::type, "4", {}, "Option1(1)"},
    // --- cover ---
    {"TxtPrjName", Act::type, " 滨江中心 ", {"封面表.工程名称=滨江中心"}},
    {"cmbPrjFont", Act::pick, "黑体", {"封面表.工程字体=黑体"}},
    {"cmbPrjSize", Act::pick, "一号", {"封面表.工程字号=一号"}},
    {"TxtOffName", Act::type, "一建公司", {"封面表.单位名称=一建公司"}},
    {"cmbOffFont", Act::pick, "宋体", {"封面表.单位字体=宋体"}},
    {"cmbOffSize", Act::pick, "36", {"封面表.单位字号=36"}},
    {"cmbDateFont", Act::pick, "黑体", {"封面表.日期字体=黑体"}},
    {"cmbDateSize", Act::pick, "六号", {"封面表.日期字号=六号"}},
    {"TxtWidth", Act::type, "40", {"封面表.图片宽度=40"}},
    {"TxtHeight", Act::type, "0", {"封面表.图片高度=0"}},
    // --- libraries ---
    {"chkSet", Act::click, "", {}},
    {"chkCover", Act::click, "", {}},
};

class EveryWriting : public FormatWindow, public testing::WithParamInterface<Writing> {
protected:
    // A library of each kind, so that their boxes are open; the cover bears today's date, as the
    // dialog writes it with the first change of the page.
    EveryWriting() {
        world.settings().Execute("Select * into 甲章节 from 章节设置表");
        world.settings().Execute("Select * into 甲页面 from 页面设置表");
        world.settings().Execute("Select * into 甲眉脚 from 页眉页脚表");
        FormatWorld::add(world.settings(), "设置库", {{"名称", "甲"}});
        world.settings().Execute("Select * into 乙 from 封面表");
        FormatWorld::add(world.settings(), "封面库", {{"名称", "乙"}});
        world.change("封面表", u"日期", QDate::currentDate());
    }
};

TEST_P(EveryWriting, ComesWhenTheValueIsCommittedAndTouchesNothingElse) {
    const Writing& row = GetParam();
    open();
    if (row.before) {
        click(row.before);
    }
    const auto before = tables();
    switch (row.act) {
    case Act::pick:
        pick(row.control, row.value);
        break;
    case Act::click:
        click(row.control);
        break;
    case Act::type:
        type(row.control, row.value);
        EXPECT_EQ(changesSince(before), QStringList()) << "typing writes nothing";
        leave(row.control);
        break;
    }
    QStringList written = row.written;
    written.sort();
    EXPECT_EQ(changesSince(before), written);
    EXPECT_EQ(told(), QStringList());
}

INSTANTIATE_TEST_SUITE_P(BidSet, EveryWriting, testing::ValuesIn(writings));

// What else an act moves on the screen.
struct BidSetEffect : FormatWindow {
    BidSetEffect() { open(); }
    QLabel& label(const QString& name) { return part<QLabel>(name); }
};

TEST_F(BidSetEffect, AHeadingsFontAndSizeMoveItsPreviewAtSevenTenths) {
    pick("cmbChapterFont", "黑体");
    pick("cmbChapterSize", "小四");
    EXPECT_EQ(label("lblModel").font().family(), "黑体");
    EXPECT_NEAR(label("lblModel").font().pointSizeF(), 12 * 0.7, 0.01);
    pick("cmbChapterSize", "72");
    EXPECT_NEAR(label("lblModel").font().pointSizeF(), 72 * 0.7, 0.01);
}

TEST_F(BidSetEffect, TheLinesOfTheCoverAreShownAtHalfTheirSize) {
    const char* const lines[][3] = {{"cmbPrjFont", "cmbPrjSize", "lblPrjName"},
                                    {"cmbOffFont", "cmbOffSize", "lblOffName"},
                                    {"cmbDateFont", "cmbDateSize", "lblDate"}};
    for (const auto& [font, size, name] : lines) {
        EXPECT_NEAR(label(name).font().pointSizeF(), 6, 0.01) << name;
        pick(font, "黑体");
        pick(size, "二号");
        EXPECT_EQ(label(name).font().family(), "黑体") << name;
        EXPECT_NEAR(label(name).font().pointSizeF(), 11, 0.01) << name;
        EXPECT_TRUE(label(name).alignment() & Qt::AlignHCenter) << name;
    }
}

TEST_F(BidSetEffect, TypingANameMovesItsLineAtOnce) {
    type("TxtPrjName", " 滨江 ");
    type("TxtOffName", " 一建 ");
    EXPECT_EQ(label("lblPrjName").text(), "滨江");
    EXPECT_EQ(label("lblOffName").text(), "一建");
}

TEST_F(BidSetEffect, AnotherDateMovesItsLineAndIsWritten) {
    reach("cmbDate");
    part<QDateEdit>("cmbDate").setDate(QDate(2027, 3, 9));
    EXPECT_EQ(label("lblDate").text(), "2027-3-9");
    EXPECT_TRUE(tables()["封面表.日期"].startsWith("2027-3-9"));
}

TEST_F(BidSetEffect, TypingAroundTheNumberComposesThePreview) {
    type("Txtformer", "卷");
    EXPECT_EQ(label("lblModel").text(), "卷一章 标题");
    type("Txtback", " 篇");
    EXPECT_EQ(label("lblModel").text(), "卷一 篇 标题");
    pick("cmbMiddle", "A");
    EXPECT_EQ(label("lblModel").text(), "卷A 篇 标题");
    EXPECT_EQ(label("lblTree").text(), "第1级标题");
}

TEST_F(BidSetEffect, AnOptionAlignsThePreview) {
    click("optLeft");
    EXPECT_TRUE(label("lblModel").alignment() & Qt::AlignLeft);
    click("optRight");
    EXPECT_TRUE(label("lblModel").alignment() & Qt::AlignRight);
    click("optMiddle");
    EXPECT_TRUE(label("lblModel").alignment() & Qt::AlignHCenter);
}

TEST_F(BidSetEffect, ALevelShowsItsRow) {
    pick("cmbClass", "5");
    EXPECT_EQ(text("Txtformer"), "(");
    EXPECT_EQ(text("cmbMiddle"), "一");
    EXPECT_EQ(text("Txtback"), ")");
    EXPECT_FALSE(isChecked("chkHead"));
    EXPECT_TRUE(isChecked("chkIsNot"));
    EXPECT_TRUE(isChecked("optMiddle"));
    EXPECT_EQ(label("lblTree").text(), "第5级标题");
    EXPECT_EQ(label("lblModel").text(), "(一) 标题");
}

TEST_F(BidSetEffect, MultiLevelNumbersOpenTheirButton) {
    EXPECT_FALSE(part("Command1").isEnabled());
    click("chkMultLevel");
    EXPECT_TRUE(part("Command1").isEnabled());
    EXPECT_TRUE(world.state.FormatSwitches.gMultLevelOn);
    click("chkMultLevel");
    EXPECT_FALSE(part("Command1").isEnabled());
    EXPECT_FALSE(world.state.FormatSwitches.gMultLevelOn);
}

TEST_F(BidSetEffect, NumberedChildrenOpenTheirFields) {
    EXPECT_FALSE(isChecked("Option1(0)") || isChecked("Option1(1)"));
    EXPECT_FALSE(part("cboBianHao").isEnabled() || part("txtInde").isEnabled());
    EXPECT_EQ(text("txtInde"), "2");
    EXPECT_EQ(text("cboBianHao"), "");
    click("Option1(1)");
    EXPECT_TRUE(part("cboBianHao").isEnabled() && part("txtInde").isEnabled());
    EXPECT_TRUE(world.state.FormatSwitches.gChildDocAsNumber);
    click("Option1(0)");
    EXPECT_FALSE(part("cboBianHao").isEnabled() || part("txtInde").isEnabled());
    EXPECT_FALSE(world.state.FormatSwitches.gChildDocAsNumber);
}

TEST_F(BidSetEffect, TheIndentTakesDigitsWithinItsBounds) {
    click("Option1(1)");
    type("txtInde", "");
    EXPECT_EQ(text("txtInde"), "2");
    type("txtInde", "101");
    EXPECT_EQ(text("txtInde"), "100");
    type("txtInde", "7x");
    EXPECT_EQ(text("txtInde"), "7");
    EXPECT_EQ(world.dialog.txtInde(), "7");
}

TEST_F(BidSetEffect, GenerationReadsTheChildStyleFromTheDialog) {
    EXPECT_EQ(world.dialog.cboBianHao(), "");
    click("Option1(1)");
    pick("cboBianHao", "1、");
    EXPECT_EQ(world.dialog.cboBianHao(), "1、");
}

TEST_F(BidSetEffect, ThePlainDropDownListIsChosenByTheArrowKeysToo) {
    click("Option1(1)");
    key("cboBianHao", Qt::Key_Down);
    EXPECT_EQ(text("cboBianHao"), "无");
    EXPECT_EQ(world.dialog.cboBianHao(), "无");
}

} // namespace
} // namespace qvnd::test
