#include "format/windows/BidSetTabs.h"
#include "format/windows/FieldTable.h"
#include "format/windows/LibraryList.h"
#include "format/windows/TextField.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace qvnd::format {

namespace {

using enum FieldKind;

// --- 章节设置 ------------------------------------------------------------------------------------

constexpr Field levelFields[] = {{combo, u"cmbClass", u"", u"标题级别"}};
constexpr Field fontFields[] = {{font, u"cmbChapterFont", u"", u"标题字体"}};
constexpr Field sizeFields[] = {{combo, u"cmbChapterSize", u"", u"标题字号"}};
constexpr Field affixFields[] = {
    {text, u"Txtformer", u"编号前", u"编号前的文字", 0, 0},
    {combo, u"cmbMiddle", u"", u"编号样式", 0, 1},
    {text, u"Txtback", u"编号后", u"编号后的文字", 0, 2},
};
constexpr Field positionFields[] = {
    {option, u"optLeft", u"居左 ", u"标题居左", 0, 0},
    {option, u"optMiddle", u"居中", u"标题居中", 0, 1},
    {option, u"optRight", u"居右", u"标题居右", 0, 2},
};
constexpr Field headingFields[] = {
    {check, u"chkHead", u"该级置页头", u"", 2, 0, 1, u"这一级的每个标题都另起一页"},
    {check, u"chkIsNot", u"带该级标题", u"", 3, 0, 1,
     u"不选时，生成的标题只有编号和名称，不带编号前、编号后的文字"},
    {check, u"chkMultLevel", u"标题以多级方式显示", u"", 2, 1, 1,
     u"标题编号为各级编号，如 2.1.3；退出程序后不保留"},
    {more, u"Command1", u"...", u"多级标题设置", 2, 2, 1, u"多级标题设置"},
    {check, u"chkBlackLine", u"标题前后插入空行", u"", 3, 1, 1,
     u"按“确 定”后起作用；退出程序后不保留"},
};
constexpr Field treeFields[] = {{label, u"lblTree", u"第1级标题", u""}};
constexpr Field modelFields[] = {{label, u"lblModel", u"第一章 标题 ", u""}};

QGroupBox* newHeadingSettings() {
    QGridLayout* grid = nullptr;
    QGroupBox* frame = newFrame(u"Frame7", u"设置", headingFields, &grid);
    auto* first = new QHBoxLayout;
    first->addWidget(newFrame(u"Frame8", u"级别", levelFields), 1);
    first->addWidget(newFrame(u"Frame9", u"字体", fontFields), 3);
    first->addWidget(newFrame(u"Frame10", u"字号", sizeFields), 2);
    grid->addLayout(first, 0, 0, 1, 6);
    auto* second = new QHBoxLayout;
    second->addWidget(newFrame(u"Frame11", u"标题前缀", affixFields), 3);
    second->addWidget(newFrame(u"Frame12", u"编号、标题位置", positionFields), 2);
    grid->addLayout(second, 1, 0, 1, 6);
    // The button stands right behind its box.
    grid->setColumnStretch(3, 0);
    return frame;
}

QGroupBox* newHeadingPreview() {
    QGridLayout* grid = nullptr;
    QGroupBox* frame = newFrame(u"Frame6", u"预览", {}, &grid);
    QGroupBox* tree = newFrame(u"Frame13", u"投标结构树", treeFields);
    QGroupBox* model = newFrame(u"Frame14", u"标题样式", modelFields);
    auto* heading = model->findChild<QLabel*>(u"lblModel"_s);
    heading->setTextFormat(Qt::PlainText);
    heading->setAlignment(Qt::AlignCenter);
    heading->setWordWrap(true);
    // A long text in a large size is cut off here and does not make the window outgrow the screen.
    heading->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    grid->addWidget(tree, 0, 0);
    grid->addWidget(model, 0, 1);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 4);
    return frame;
}

// --- 页眉、页脚及目录 ----------------------------------------------------------------------------

// What the words of the four fields do not tell: the font of a story is set before the text cursor
// has moved into it.
constexpr QStringView headerFontTip =
    u"带页眉时，页脚的文字用这里的字体；页眉的文字用“页眉”样式的字体";
constexpr QStringView headerSizeTip =
    u"带页眉时，页脚的文字用这里的字号；页眉的文字用“页眉”样式的字号";
constexpr QStringView footerFontTip = u"带页眉时不起作用：页脚的字体随页眉字体";
constexpr QStringView footerSizeTip = u"带页眉时不起作用：页脚的字号随页眉字号";

constexpr Field headerFields[] = {
    {check, u"chkHeader", u"页眉", u"带页眉", 0, 0, 2},
    {text, u"TxtHeaderCon", u"", u"页眉内容", 1, 0, 2},
    {font, u"cmbHeaderFont", u"字体", u"页眉字体", 2, 0, 1, headerFontTip},
    {combo, u"cmbHeaderSize", u"字号", u"页眉字号", 2, 1, 1, headerSizeTip},
    {option, u"optHeaderLeft", u"页眉居左", u"", 3, 0, 2},
    {option, u"optHeaderMiddle", u"页眉居中", u"", 4, 0, 2},
    {option, u"optHeaderRight", u"页眉居右", u"", 5, 0, 2},
};
constexpr Field footerFields[] = {
    {check, u"chkfooter", u"页脚", u"带页脚", 0, 0, 2},
    {text, u"TxtFooterCon", u"", u"页脚内容", 1, 0, 2},
    {font, u"cmbFooterFont", u"字体", u"页脚字体", 2, 0, 1, footerFontTip},
    {combo, u"cmbFooterSize", u"字号", u"页脚字号", 2, 1, 1, footerSizeTip},
    {option, u"optFooterLeft", u"页脚居左", u"", 3, 0, 2},
    {option, u"optFooterMiddle", u"页脚居中", u"", 4, 0, 2, u"页码同时移到右边"},
    {option, u"optFooterRight", u"页脚居右", u"", 5, 0, 2},
};
constexpr Field contentsFields[] = {
    {combo, u"cmbPageClass", u"显示级别", u"目录显示级别", 0, 0, 1, u"目录列出到这一级为止的标题"},
    {combo, u"cmbPageSign", u"制表符前导符", u"目录制表符前导符", 0, 1, 1,
     u"目录中标题与页码之间的线"},
    {check, u"chkPageIsNot", u"显示页码", u"目录显示页码", 1, 0},
    {check, u"chkPageRight", u"页码右对齐", u"目录页码右对齐", 1, 1, 1,
     u"首次打开本对话框时自动选上"},
};

// --- 页面、正文设置 ------------------------------------------------------------------------------

constexpr QStringView centimetres = u"-55.87 到 55.87 厘米";
constexpr Field marginFields[] = {
    {length, u"txtPageupdis", u"上(cm)", u"上边距", 0, 0, 1, centimetres},
    {length, u"TxtPageDownDis", u"下(cm)", u"下边距", 0, 1, 1, centimetres},
    {length, u"TxtPageLeftDis", u"左(cm)", u"左边距", 1, 0, 1, centimetres},
    {length, u"TxtPageRightdis", u"右(cm)", u"右边距", 1, 1, 1, centimetres},
};
constexpr Field edgeFields[] = {
    {length, u"Txtheader", u"页眉(cm)", u"页眉距边界", 0, 0, 1, centimetres},
    {length, u"TxtFooter", u"页脚(cm)", u"页脚距边界", 1, 0, 1, centimetres},
};
constexpr Field bodyFields[] = {
    {font, u"cmbTextFont", u"字体", u"正文字体", 0, 0},
    {combo, u"cmbTextSize", u"字号", u"正文字号", 1, 0},
};
constexpr Field bindingFields[] = {
    {length, u"TxtBind", u"装订线(cm)", u"装订线", 0, 0, 2, centimetres},
    {option, u"optSide", u"边上装定", u"", 1, 0},
    {option, u"optTop", u"顶上装定", u"", 1, 1},
};

// --- 其  它 --------------------------------------------------------------------------------------

constexpr Field childFields[] = {
    {option, u"Option1(0)", u"作为章节处理", u"", 0, 0, 2,
     u"文档下级的文档同其他节点一样，有自己的标题"},
    {option, u"Option1(1)", u"作为编号处理", u"", 1, 0, 2,
     u"文档下级的文档的名称成为带编号的一段，内容缩进；退出程序后不保留"},
    {dropDown, u"cboBianHao", u"编号样式：", u"编号样式", 2, 0},
    {text, u"txtInde", u"缩进：", u"缩进的字符数", 3, 0, 1, u"0 到 100"},
    {unit, u"lblIndeUnit", u"字符", u"", 3, 1},
};

// --- 标书设置库 ----------------------------------------------------------------------------------

constexpr Field settingLibraryFields[] = {
    {check, u"chkSet", u"选用库", u"选用标书设置库", 1, 0, 2,
     u"生成时用列表中选中的页面、页眉、页脚和目录设置，不用这里的设置；章节标题总用这里的设置"},
};

QWidget* newSettingLibrary() {
    QGridLayout* grid = nullptr;
    QGroupBox* frame = newFrame(u"Frame21", u"标书设置库", settingLibraryFields, &grid);
    auto* list = new LibraryList;
    list->setObjectName(u"lstSet"_s);
    list->setAccessibleName(u"标书设置库"_s);
    grid->addWidget(list, 0, 0, 1, 4);

    constexpr Field commands[] = {
        {button, u"cmdSaveSet", u"存入库内", u"存入标书设置库", 0, 0, 1,
         u"把这里的章节、页面、页眉、页脚和目录设置取名保存"},
        {button, u"cmdDeleteSet", u"删    除", u"从标书设置库中删除", 1, 0},
    };
    auto* side = new QWidget;
    auto* column = new QVBoxLayout(side);
    column->setContentsMargins({});
    column->addWidget(frame, 1);
    for (const Field& command : commands) {
        auto* made = new QPushButton(command.caption.toString());
        made->setObjectName(command.name.toString());
        made->setAccessibleName(command.spoken.toString());
        made->setToolTip(command.tip.toString());
        made->setAutoDefault(false);
        column->addWidget(made);
    }
    return side;
}

QGridLayout* newTabGrid(QWidget* tab) {
    auto* grid = new QGridLayout(tab);
    spaceOut(*grid);
    return grid;
}

} // namespace

QWidget* newHeadingTab() {
    auto* tab = new QWidget;
    QGridLayout* grid = newTabGrid(tab);
    grid->addWidget(newHeadingSettings(), 0, 0);
    grid->addWidget(newHeadingPreview(), 1, 0);
    grid->setRowStretch(1, 1);
    return tab;
}

QWidget* newHeaderFooterTab() {
    QGroupBox* const both[] = {newFrame(u"Frame4", u"页眉设置", headerFields),
                               newFrame(u"Frame5", u"页脚设置", footerFields)};
    alignLabels(both);
    auto* tab = new QWidget;
    QGridLayout* grid = newTabGrid(tab);
    grid->addWidget(both[0], 0, 0);
    grid->addWidget(both[1], 0, 1);
    grid->addWidget(newFrame(u"Frame15", u"目录设置", contentsFields), 1, 0, 1, 2);
    grid->setRowStretch(2, 1);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    return tab;
}

QWidget* newPageSetupTab() {
    QGroupBox* const frames[] = {
        newFrame(u"Frame16", u"页边距", marginFields), newFrame(u"Frame17", u"距边界", edgeFields),
        newFrame(u"frame18", u"正文", bodyFields), newFrame(u"Frame19", u"装订", bindingFields)};
    QGroupBox* const left[] = {frames[0], frames[2]};
    QGroupBox* const right[] = {frames[1], frames[3]};
    alignLabels(left);
    alignLabels(right);
    auto* notice = new ProblemNotice;
    auto* tab = new QWidget;
    QGridLayout* grid = newTabGrid(tab);
    for (int i = 0; i < 4; ++i) {
        grid->addWidget(frames[i], i / 2, i % 2);
        for (TextField* field : frames[i]->findChildren<TextField*>()) {
            notice->watch(*field);
        }
    }
    grid->addWidget(notice, 2, 0, 1, 2);
    grid->setRowStretch(3, 1);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    return tab;
}

QWidget* newOtherTab() {
    auto* tab = new QWidget;
    QGridLayout* grid = newTabGrid(tab);
    QGroupBox* frame = newFrame(u"Frame22", u"文档下级的文档", childFields);
    grid->addWidget(frame, 0, 0);
    grid->setRowStretch(1, 1);
    grid->setColumnStretch(1, 1);
    return tab;
}

QWidget* newPlanTab() {
    auto* pages = new QTabWidget;
    pages->setObjectName(u"SSTab2"_s);
    pages->setAccessibleName(u"方案设置的各页"_s);
    pages->tabBar()->setAccessibleName(pages->accessibleName());
    pages->addTab(newHeadingTab(), u"章节设置"_s);
    pages->addTab(newHeaderFooterTab(), u"页眉、页脚及目录"_s);
    pages->addTab(newPageSetupTab(), u"页面、正文设置"_s);
    pages->addTab(newOtherTab(), u"其  它"_s);
    auto* tab = new QWidget;
    auto* row = new QHBoxLayout(tab);
    row->addWidget(pages, 1);
    row->addWidget(newSettingLibrary());
    return tab;
}

} // namespace qvnd::format
