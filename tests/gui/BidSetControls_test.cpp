#include "format/controls/PreviewControls.h"
#include "gui/support/FormatWindow.h"
#include "gui/support/ModalWindow.h"

#include <QDate>
#include <QPushButton>
#include <QTest>

#include <ostream>

// The tables of the dialog's controls: what each of them writes, when, and what else it moves.
namespace qvnd::test {
namespace {

enum class Act { pick, type, click, entry, open, day, answer, browse, erase };

// A control: the user's act, what then differs in the tables, and what differs on the screen and in
// the program's memory beside the control itself.
struct Control {
    const char* name;
    Act act;
    const char* value;
    QStringList written;
    QStringList moved;
    // Clicked before, so that the act changes something.
    const char* before = nullptr;
};

void PrintTo(const Control& row, std::ostream* out) { *out << row.name << ' ' << row.value; }

const Control headings[] = {
    {"cmbClass",
     Act::pick,
     "4",
     {},
     {"Txtback.text=", "Txtformer.text=", "chkHead.checked=否", "lblModel.text=一 标题",
      "lblTree.text=第4级标题"}},
    {"cmbChapterFont", Act::pick, "宋体", {"章节设置表 1.字体=宋体"}, {"lblModel.font=宋体"}},
    {"cmbChapterSize", Act::pick, "三号", {"章节设置表 1.字号=三号"}, {"lblModel.size=11.2"}},
    {"cmbMiddle",
     Act::pick,
     "1",
     {"章节设置表 1.中缀=1", "章节设置表 1.序号标志=I型"},
     {"lblModel.text=第1章 标题"}},
    {"cmbMiddle",
     Act::pick,
     "A",
     {"章节设置表 1.中缀=A", "章节设置表 1.序号标志=A型"},
     {"lblModel.text=第A章 标题"}},
    {"cmbMiddle",
     Act::pick,
     "a",
     {"章节设置表 1.中缀=a", "章节设置表 1.序号标志=aa型"},
     {"lblModel.text=第a章 标题"}},
    {"cmbMiddle", Act::pick, "一", {}, {}},
    {"Txtformer", Act::type, " 卷 ", {"章节设置表 1.前缀=卷"}, {"lblModel.text= 卷 一章 标题"}},
    {"Txtback", Act::type, "篇", {"章节设置表 1.后缀=篇"}, {"lblModel.text=第一篇 标题"}},
    {"optLeft",
     Act::click,
     "",
     {"章节设置表 1.位置=左"},
     {"lblModel.place=左", "optMiddle.checked=否"}},
    {"optRight",
     Act::click,
     "",
     {"章节设置表 1.位置=右"},
     {"lblModel.place=右", "optMiddle.checked=否"}},
    {"optMiddle",
     Act::click,
     "",
     {"章节设置表 1.位置=中"},
     {"lblModel.place=中", "optLeft.checked=否"},
     "optLeft"},
    {"chkHead", Act::click, "", {"章节设置表 1.置页头=否"}, {}},
    {"chkHead", Act::click, "", {"章节设置表 1.置页头=是"}, {}, "chkHead"},
    {"chkIsNot", Act::click, "", {"章节设置表 1.带该级标题=否"}, {"lblModel.text=第一章"}},
    {"chkIsNot",
     Act::click,
     "",
     {"章节设置表 1.带该级标题=是"},
     {"lblModel.text=第一章 标题"},
     "chkIsNot"},
    {"chkMultLevel", Act::click, "", {}, {"Command1.enabled=是", "gMultLevelOn=是"}},
    {"chkMultLevel",
     Act::click,
     "",
     {},
     {"Command1.enabled=否", "gMultLevelOn=否"},
     "chkMultLevel"},
    {"chkBlackLine", Act::click, "", {}, {}},
};

const Control headerFooterContents[] = {
    {"chkHeader", Act::click, "", {"页眉页脚表.是否带页眉=否"}, {}},
    {"chkHeader", Act::click, "", {"页眉页脚表.是否带页眉=是"}, {}, "chkHeader"},
    {"TxtHeaderCon", Act::type, " 滨江 ", {"页眉页脚表.页眉内容=滨江"}, {}},
    {"cmbHeaderFont", Act::pick, "黑体", {"页眉页脚表.页眉字体=黑体"}, {}},
    {"cmbHeaderSize", Act::pick, "小五", {"页眉页脚表.页眉字号=小五"}, {}},
    {"optHeaderLeft", Act::click, "", {"页眉页脚表.页眉位置=左"}, {"optHeaderMiddle.checked=否"}},
    {"optHeaderRight", Act::click, "", {"页眉页脚表.页眉位置=右"}, {"optHeaderMiddle.checked=否"}},
    {"optHeaderMiddle",
     Act::click,
     "",
     {"页眉页脚表.页眉位置=中"},
     {"optHeaderLeft.checked=否"},
     "optHeaderLeft"},
    {"chkfooter", Act::click, "", {"页眉页脚表.是否带页脚=否"}, {}},
    {"chkfooter", Act::click, "", {"页眉页脚表.是否带页脚=是"}, {}, "chkfooter"},
    {"TxtFooterCon", Act::type, "机密", {"页眉页脚表.页脚内容=机密"}, {}},
    {"cmbFooterFont", Act::pick, "黑体", {"页眉页脚表.页脚字体=黑体"}, {}},
    {"cmbFooterSize", Act::pick, "9", {"页眉页脚表.页脚字号=9"}, {}},
    {"optFooterLeft", Act::click, "", {"页眉页脚表.页脚位置=左"}, {"optFooterMiddle.checked=否"}},
    {"optFooterRight", Act::click, "", {"页眉页脚表.页脚位置=右"}, {"optFooterMiddle.checked=否"}},
    {"optFooterMiddle",
     Act::click,
     "",
     {"页眉页脚表.页脚位置=中"},
     {"optFooterRight.checked=否"},
     "optFooterRight"},
    {"cmbPageClass", Act::pick, "5", {"页眉页脚表.显示级别=5"}, {}},
    {"cmbPageSign", Act::pick, "(无)", {"页眉页脚表.制表样式=无"}, {}},
    {"cmbPageSign", Act::pick, "------", {"页眉页脚表.制表样式=断连线"}, {}},
    {"cmbPageSign", Act::pick, "———", {"页眉页脚表.制表样式=连连线"}, {}},
    {"cmbPageSign", Act::pick, "．．．．．", {"页眉页脚表.制表样式=重虚线"}, {}},
    {"cmbPageSign", Act::pick, "......", {}, {}},
    {"chkPageIsNot", Act::click, "", {"页眉页脚表.是否显示页码=否"}, {}},
    {"chkPageIsNot", Act::click, "", {"页眉页脚表.是否显示页码=是"}, {}, "chkPageIsNot"},
    {"chkPageRight", Act::click, "", {"页眉页脚表.是否右对齐=否"}, {}},
    {"chkPageRight", Act::click, "", {"页眉页脚表.是否右对齐=是"}, {}, "chkPageRight"},
};

const Control pageAndOther[] = {
    {"txtPageupdis", Act::type, "2.5", {"页面设置表.页边距上=2.5"}, {}},
    {"TxtPageDownDis", Act::type, "-3", {"页面设置表.页边距下=-3"}, {}},
    {"TxtPageLeftDis", Act::type, "55.87", {"页面设置表.页边距左=55.87"}, {}},
    {"TxtPageRightdis", Act::type, "-55.87", {"页面设置表.页边距右=-55.87"}, {}},
    {"TxtBind", Act::type, "0.5", {"页面设置表.装订距离=0.5"}, {}},
    {"Txtheader", Act::type, "1.25", {"页面设置表.距页眉=1.25"}, {}},
    {"TxtFooter", Act::type, "0", {"页面设置表.距页脚=0"}, {}},
    {"cmbTextFont", Act::pick, "宋体", {"页面设置表.正文字体=宋体"}, {}},
    {"cmbTextSize", Act::pick, "五号", {"页面设置表.正文字号=五号"}, {}},
    {"optTop", Act::click, "", {"页面设置表.装订位置=顶"}, {"optSide.checked=否"}},
    {"optSide", Act::click, "", {"页面设置表.装订位置=边"}, {"optTop.checked=否"}, "optTop"},
    {"Option1(0)", Act::click, "", {}, {}},
    {"Option1(1)",
     Act::click,
     "",
     {},
     {"cboBianHao.enabled=是", "gChildDocAsNumber=是", "txtInde.enabled=是"}},
    {"Option1(0)",
     Act::click,
     "",
     {},
     {"Option1(1).checked=否", "cboBianHao.enabled=否", "gChildDocAsNumber=否",
      "txtInde.enabled=否"},
     "Option1(1)"},
    {"cboBianHao", Act::pick, "a)", {}, {}, "Option1(1)"},
    {"txtInde", Act::type, "4", {}, {}, "Option1(1)"},
};

const Control cover[] = {
    {"TxtPrjName",
     Act::type,
     " 滨江中心 ",
     {"封面表.工程名称=滨江中心"},
     {"lblPrjName.text=滨江中心"}},
    {"cmbPrjFont", Act::pick, "黑体", {"封面表.工程字体=黑体"}, {"lblPrjName.font=黑体"}},
    {"cmbPrjSize",
     Act::pick,
     "一号",
     {"封面表.工程字号=一号"},
     {"lblOffNote.text=生成的文档中，单位名称和它上下的空行用工程名称的字号“一号”，不用“小四”；"
      "字号很大时，日期会排到第二页。",
      "lblPrjName.size=13.0"}},
    {"TxtOffName",
     Act::type,
     "一建公司 ",
     {"封面表.单位名称=一建公司"},
     {"lblOffName.text=一建公司"}},
    {"cmbOffFont", Act::pick, "宋体", {"封面表.单位字体=宋体"}, {"lblOffName.font=宋体"}},
    {"cmbOffSize",
     Act::pick,
     "36",
     {"封面表.单位字号=36"},
     {"lblOffName.size=18.0",
      "lblOffNote.text=生成的文档中，单位名称和它上下的空行用工程名称的字号“小四”，不用“36”；"
      "字号很大时，日期会排到第二页。"}},
    {"cmbDate", Act::day, "2027-03-09", {"封面表.日期=2027-3-9"}, {"lblDate.text=2027-3-9"}},
    {"cmbDateFont", Act::pick, "黑体", {"封面表.日期字体=黑体"}, {"lblDate.font=黑体"}},
    {"cmbDateSize", Act::pick, "二号", {"封面表.日期字号=二号"}, {"lblDate.size=11.0"}},
    {"cmdBrowse",
     Act::browse,
     "红.bmp",
     {"封面表.图片=红.bmp"},
     {"cmbPic.count=1", "cmbPic.text=红.bmp"}},
    {"cmdBrowse", Act::browse, "", {}, {}},
    {"cmbPic", Act::erase, "旧.bm", {"封面表.图片="}, {}},
    {"cmbPic", Act::erase, "", {"封面表.图片="}, {"Image1.picture=否"}},
    {"TxtWidth", Act::type, "40", {"封面表.图片宽度=40"}, {}},
    {"TxtHeight", Act::type, "0", {"封面表.图片高度=0"}, {}},
};

const Control libraryControls[] = {
    {"lstSet",
     Act::entry,
     "0",
     {"页眉页脚表.是否带页脚=否"},
     {"TxtHeaderCon.text=甲的页眉", "chkfooter.checked=否"}},
    {"chkSet", Act::click, "", {}, {}},
    {"cmdSaveSet", Act::answer, "新", {"设置库 2.名称=新"}, {"lstSet.entries=甲 新"}},
    {"cmdSaveSet", Act::answer, "", {}, {}},
    {"cmdDeleteSet",
     Act::click,
     "",
     {"设置库.名称 gone"},
     {"chkSet.enabled=否", "lstSet.entries=", "lstSet.text="}},
    {"lstcover",
     Act::entry,
     "0",
     {},
     {"TxtPrjName.text=乙的工程", "cmbDate.date=2026-05-01", "lblDate.text=2026-5-1",
      "lblPrjName.text=乙的工程"}},
    {"chkCover", Act::click, "", {}, {}},
    {"chkCover", Act::click, "", {}, {"chkSelf.checked=否"}, "chkSelf"},
    {"cmdSaveCover",
     Act::answer,
     "新",
     {"封面库 2.名称=新"},
     {"lstcover.entries=乙 新", "lstcover.text=新"}},
    {"cmdSaveCover", Act::answer, "", {}, {}},
    {"cmdDeleteCover",
     Act::click,
     "",
     {"封面库.名称 gone"},
     {"chkCover.checked=否", "chkCover.enabled=否", "lstcover.entries=", "lstcover.text="},
     "chkCover"},
    {"lstSelf", Act::entry, "1", {}, {}},
    {"lstSelf", Act::entry, "1", {"当前自定义.路径=丁"}, {}, "chkSelf"},
    {"lstSelf", Act::open, "0", {}, {"opened=丙.doc"}},
    {"chkSelf", Act::click, "", {"当前自定义.路径=丙"}, {}},
    {"chkSelf", Act::click, "", {"当前自定义.路径=丙"}, {"chkCover.checked=否"}, "chkCover"},
    {"chkSelf", Act::click, "", {}, {}, "chkSelf"},
    {"cmdSelfBld",
     Act::answer,
     "新",
     {"自定义表 3.路径=新"},
     {"lstSelf.entries=丙 丁 新", "lstSelf.text=新", "opened=新.doc"}},
    {"cmdSelfBld", Act::answer, "", {}, {}},
    {"cmdSelfDel",
     Act::click,
     "",
     {"自定义表.路径=丁", "自定义表 2.路径 gone"},
     {"lstSelf.entries=丁", "lstSelf.text=丁"}},
    {"cmdSelfDel",
     Act::click,
     "",
     {"当前自定义.路径=丁", "自定义表.路径=丁", "自定义表 2.路径 gone"},
     {"lstSelf.entries=丁", "lstSelf.text=丁"},
     "chkSelf"},
};

const Control pushButtons[] = {
    {"cmdDecide",
     Act::click,
     "",
     {"是否设置表.封面名称=", "是否设置表.是否定义=否", "是否设置表.是否封面=否",
      "是否设置表.是否设置=否", "是否设置表.设置名称="},
     {"visible=否"}},
    {"cmdDecide",
     Act::click,
     "",
     {"是否设置表.封面名称=", "是否设置表.是否定义=否", "是否设置表.是否封面=否",
      "是否设置表.是否设置=是", "是否设置表.设置名称=甲"},
     {"visible=否"},
     "chkSet"},
    {"cmdDecide",
     Act::click,
     "",
     {"是否设置表.封面名称=乙", "是否设置表.是否定义=否", "是否设置表.是否封面=是",
      "是否设置表.是否设置=否", "是否设置表.设置名称="},
     {"visible=否"},
     "chkCover"},
    {"cmdDecide",
     Act::click,
     "",
     {"是否设置表.封面名称=", "是否设置表.是否定义=是", "是否设置表.是否封面=否",
      "是否设置表.是否设置=否", "是否设置表.设置名称="},
     {"visible=否"},
     "chkSelf"},
    {"cmdDecide",
     Act::click,
     "",
     {"是否设置表.封面名称=", "是否设置表.是否定义=否", "是否设置表.是否封面=否",
      "是否设置表.是否设置=否", "是否设置表.设置名称="},
     {"gBlankLineAroundTitle=是", "visible=否"},
     "chkBlackLine"},
    {"cmdCancel", Act::click, "", {}, {"visible=否"}},
};

// An entry in each library and a picture on the cover, so that every control is open. The cover
// bears today's date, as the dialog writes it with the first change of the page.
class EveryControl : public FormatWindow, public testing::WithParamInterface<Control> {
protected:
    EveryControl() {
        world.settings().Execute("Select * into 甲章节 from 章节设置表");
        world.settings().Execute("Select * into 甲页面 from 页面设置表");
        world.settings().Execute("Select * into 甲眉脚 from 页眉页脚表");
        world.change("甲眉脚", u"页眉内容", QString("甲的页眉"));
        world.change("甲眉脚", u"是否带页脚", QString("否"));
        world.change("甲眉脚", u"是否右对齐", QString("是"));
        FormatWorld::add(world.settings(), "设置库", {{"名称", "甲"}});
        writePicture("Sys/图片库/旧.bmp", Qt::blue);
        world.change("封面表", u"图片", QString("旧.bmp"));
        world.settings().Execute("Select * into 乙 from 封面表");
        world.change("乙", u"工程名称", QString("乙的工程"));
        FormatWorld::add(world.settings(), "封面库", {{"名称", "乙"}});
        FormatWorld::add(world.settings(), "自定义表", {{"路径", "丙"}});
        FormatWorld::add(world.settings(), "自定义表", {{"路径", "丁"}});
        world.change("封面表", u"日期", QDate::currentDate());
    }

    void act(const Control& row) {
        switch (row.act) {
        case Act::pick:
            return pick(row.name, row.value);
        case Act::click:
            return click(row.name);
        case Act::type:
            return type(row.name, row.value);
        case Act::entry:
            return clickEntry(row.name, QString(row.value).toInt());
        case Act::open:
            return doubleClickEntry(row.name, QString(row.value).toInt());
        case Act::day:
            return clickDay(row.name, QDate::fromString(row.value, Qt::ISODate));
        case Act::answer:
            return keepLibrary(row.name, row.value);
        case Act::browse:
            return browse(row.value);
        case Act::erase:
            return erase(row.name, row.value);
        }
    }

    void browse(const QString& picture) {
        if (!picture.isEmpty()) {
            world.dialogs.chosen = writePicture(picture, Qt::red);
        }
        click("cmdBrowse");
    }

    void erase(const QString& name, const QString& rest) {
        reach(name);
        while (text(name) != rest) {
            const qsizetype length = text(name).size();
            key(name, Qt::Key_Backspace);
            ASSERT_LT(text(name).size(), length);
        }
    }

    // What an act has moved, without the value of the control itself.
    QStringList movedSince(const QMap<QString, QString>& before, const Control& row) {
        QStringList moved = changes(before, shown());
        moved.removeIf(
            [&](const QString& change) { return change.startsWith(QString(row.name) + '.'); });
        return moved;
    }
};

TEST_P(EveryControl, WritesWhenItsValueIsCommittedAndMovesWhatItIsToMove) {
    const Control& row = GetParam();
    open();
    if (row.before) {
        click(row.before);
    }
    reach(row.name);
    const auto stored = tables();
    const auto visible = shown();
    act(row);
    EXPECT_EQ(movedSince(visible, row), row.moved);
    if (row.act == Act::type) {
        EXPECT_EQ(changesSince(stored), QStringList()) << "typing writes nothing";
        leave(row.name);
        EXPECT_EQ(movedSince(visible, row), row.moved) << "leaving moves nothing";
    }
    EXPECT_EQ(changesSince(stored), row.written);
    EXPECT_EQ(told(), QStringList());
}

INSTANTIATE_TEST_SUITE_P(Headings, EveryControl, testing::ValuesIn(headings));
INSTANTIATE_TEST_SUITE_P(HeaderFooterContents, EveryControl,
                         testing::ValuesIn(headerFooterContents));
INSTANTIATE_TEST_SUITE_P(PageAndOther, EveryControl, testing::ValuesIn(pageAndOther));
INSTANTIATE_TEST_SUITE_P(Cover, EveryControl, testing::ValuesIn(cover));
INSTANTIATE_TEST_SUITE_P(Libraries, EveryControl, testing::ValuesIn(libraryControls));
INSTANTIATE_TEST_SUITE_P(Buttons, EveryControl, testing::ValuesIn(pushButtons));

using BidSetTables = FormatWindow;

// The button of the multi-level numbers opens a dialog of its own, FrmMultLevel tests it.
TEST_F(BidSetTables, LeaveNoControlOut) {
    open();
    QStringList listed{"Command1"};
    const auto add = [&](const auto& rows) {
        for (const Control& row : rows) {
            listed << row.name;
        }
    };
    add(headings);
    add(headerFooterContents);
    add(pageAndOther);
    add(cover);
    add(libraryControls);
    for (const format::Control* control : world.form().controls.all()) {
        const bool onlyShows = dynamic_cast<const format::Label*>(control) ||
                               dynamic_cast<const format::Image*>(control);
        EXPECT_TRUE(onlyShows || listed.contains(control->name())) << qPrintable(control->name());
    }
}

} // namespace
} // namespace qvnd::test
