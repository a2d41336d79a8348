#include "gui/support/FormatWindow.h"

#include <QAbstractButton>
#include <QGroupBox>
#include <QLabel>
#include <QTabWidget>

// The frames, tabs and captions of the format dialog, to the character.
namespace qvnd::test {
namespace {

class BidSetTexts : public FormatWindow {
protected:
    // The text of a control that bears one, else that of the label before it.
    QString captionOf(QWidget& control) {
        if (const auto* button = qobject_cast<QAbstractButton*>(&control)) {
            return button->text();
        }
        if (const auto* label = qobject_cast<QLabel*>(&control)) {
            return label->text();
        }
        for (const QLabel* label : window->findChildren<QLabel*>()) {
            if (label->buddy() == &control) {
                return label->text();
            }
        }
        return {};
    }
};

TEST_F(BidSetTexts, HoldsEachControlInItsFrameOnItsTab) {
    open();
    EXPECT_EQ(window->windowTitle(), "卷宗编制设置");
    const std::pair<const char*, QStringList> frames[] = {
        {"Frame1",
         {"封面预览 ", "lblPrjName", "Picture1", "Image1", "lblOffName", "lblDate", "lblOffNote"}},
        {"Frame2", {"工程名称", "TxtPrjName", "cmbPrjFont", "cmbPrjSize"}},
        {"Frame3", {"单位名称 ", "TxtOffName", "cmbOffFont", "cmbOffSize"}},
        {"Fradate", {"编制日期", "cmbDate", "cmbDateFont", "cmbDateSize"}},
        {"fraPic", {"图片", "cmbPic", "cmdBrowse", "TxtWidth", "TxtHeight"}},
        {"Frame20", {"封面格式库", "lstcover", "chkCover", "cmdSaveCover", "cmdDeleteCover"}},
        {"FraSelf", {"自定义库", "lstSelf", "chkSelf", "cmdSelfBld", "cmdSelfDel", "Oleself"}},
        {"Frame21", {"标书设置库", "lstSet", "chkSet"}},
        {"Frame7",
         {"设置", "Frame8", "Frame9", "Frame10", "Frame11", "Frame12", "chkHead", "chkIsNot",
          "chkMultLevel", "Command1", "chkBlackLine"}},
        {"Frame8", {"级别", "cmbClass"}},
        {"Frame9", {"字体", "cmbChapterFont"}},
        {"Frame10", {"字号", "cmbChapterSize"}},
        {"Frame11", {"标题前缀", "Txtformer", "cmbMiddle", "Txtback"}},
        {"Frame12", {"编号、标题位置", "optLeft", "optMiddle", "optRight"}},
        {"Frame6", {"预览", "Frame13", "Frame14"}},
        {"Frame13", {"投标结构树", "lblTree"}},
        {"Frame14", {"标题样式", "lblModel"}},
        {"Frame4",
         {"页眉设置", "chkHeader", "TxtHeaderCon", "cmbHeaderFont", "cmbHeaderSize",
          "optHeaderLeft", "optHeaderMiddle", "optHeaderRight"}},
        {"Frame5",
         {"页脚设置", "chkfooter", "TxtFooterCon", "cmbFooterFont", "cmbFooterSize",
          "optFooterLeft", "optFooterMiddle", "optFooterRight"}},
        {"Frame15", {"目录设置", "cmbPageClass", "cmbPageSign", "chkPageIsNot", "chkPageRight"}},
        {"Frame16",
         {"页边距", "txtPageupdis", "TxtPageDownDis", "TxtPageLeftDis", "TxtPageRightdis"}},
        {"Frame17", {"距边界", "Txtheader", "TxtFooter"}},
        {"frame18", {"正文", "cmbTextFont", "cmbTextSize"}},
        {"Frame19", {"装订", "TxtBind", "optSide", "optTop"}},
        {"Frame22", {"文档下级的文档", "Option1(0)", "Option1(1)", "cboBianHao", "txtInde"}},
    };
    for (const auto& [name, contents] : frames) {
        const auto& frame = part<QGroupBox>(name);
        EXPECT_EQ(frame.title(), contents.front()) << name;
        for (const QString& control : contents.mid(1)) {
            EXPECT_TRUE(frame.findChild<QWidget*>(control)) << control.toStdString();
        }
    }
    const auto tabsOf = [&](const QString& name) {
        QStringList titles;
        for (int i = 0; i < part<QTabWidget>(name).count(); ++i) {
            titles << part<QTabWidget>(name).tabText(i);
        }
        return titles;
    };
    EXPECT_EQ(tabsOf("SSTab1"), (QStringList{"封面设置", "方案设置"}));
    EXPECT_EQ(tabsOf("SSTab2"),
              (QStringList{"章节设置", "页眉、页脚及目录", "页面、正文设置", "其  它"}));
}

TEST_F(BidSetTexts, BearsTheCaptionsOfItsControls) {
    open();
    const std::pair<const char*, const char*> captions[] = {
        {"cmbPrjFont", "字体"},
        {"cmbPrjSize", "字号"},
        {"cmbOffFont", "字体"},
        {"cmbOffSize", "字号"},
        {"cmbDate", "日期"},
        {"cmbDateFont", "字体"},
        {"cmbDateSize", "字号"},
        {"cmbPic", "图片"},
        {"TxtWidth", "宽度(cm)"},
        {"TxtHeight", "高度(cm)"},
        {"chkCover", "选用库"},
        {"cmdSaveCover", "存入库内"},
        {"cmdDeleteCover", "删除"},
        {"chkSelf", "选用库"},
        {"cmdSelfBld", "创建"},
        {"cmdSelfDel", "删除"},
        {"Txtformer", "编号前"},
        {"Txtback", "编号后"},
        {"optLeft", "居左 "},
        {"optMiddle", "居中"},
        {"optRight", "居右"},
        {"chkHead", "该级置页头"},
        {"chkIsNot", "带该级标题"},
        {"chkMultLevel", "标题以多级方式显示"},
        {"Command1", "..."},
        {"chkBlackLine", "标题前后插入空行"},
        {"chkHeader", "页眉"},
        {"cmbHeaderFont", "字体"},
        {"cmbHeaderSize", "字号"},
        {"optHeaderLeft", "页眉居左"},
        {"optHeaderMiddle", "页眉居中"},
        {"optHeaderRight", "页眉居右"},
        {"chkfooter", "页脚"},
        {"cmbFooterFont", "字体"},
        {"cmbFooterSize", "字号"},
        {"optFooterLeft", "页脚居左"},
        {"optFooterMiddle", "页脚居中"},
        {"optFooterRight", "页脚居右"},
        {"cmbPageClass", "显示级别"},
        {"cmbPageSign", "制表符前导符"},
        {"chkPageIsNot", "显示页码"},
        {"chkPageRight", "页码右对齐"},
        {"txtPageupdis", "上(cm)"},
        {"TxtPageDownDis", "下(cm)"},
        {"TxtPageLeftDis", "左(cm)"},
        {"TxtPageRightdis", "右(cm)"},
        {"Txtheader", "页眉(cm)"},
        {"TxtFooter", "页脚(cm)"},
        {"TxtBind", "装订线(cm)"},
        {"optSide", "边上装定"},
        {"optTop", "顶上装定"},
        {"cmbTextFont", "字体"},
        {"cmbTextSize", "字号"},
        {"Option1(0)", "作为章节处理"},
        {"Option1(1)", "作为编号处理"},
        {"cboBianHao", "编号样式："},
        {"txtInde", "缩进："},
        {"lblIndeUnit", "字符"},
        {"chkSet", "选用库"},
        {"cmdSaveSet", "存入库内"},
        {"cmdDeleteSet", "删    除"},
        {"cmdDecide", "确 定"},
        {"cmdCancel", "取 消"},
    };
    for (const auto& [name, caption] : captions) {
        EXPECT_EQ(captionOf(part(name)), caption) << name;
    }
    for (const auto& [name, text] :
         {std::pair("lblPrjName", "工程名称"), std::pair("lblOffName", "单位名称"),
          std::pair("lblTree", "第1级标题")}) {
        EXPECT_EQ(part<QLabel>(name).text(), text) << name;
    }
}

} // namespace
} // namespace qvnd::test
