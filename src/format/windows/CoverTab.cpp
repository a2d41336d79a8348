#include "format/windows/BidSetTabs.h"
#include "format/windows/CoverPreview.h"
#include "format/windows/FieldTable.h"
#include "format/windows/LibraryList.h"
#include "format/windows/TextField.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace qvnd::format {

namespace {

using enum FieldKind;

constexpr Field projectFields[] = {
    {text, u"TxtPrjName", u"", u"工程名称", 0, 0, 2, u"首次打开本对话框时，自动填入当前方案的名称"},
    {font, u"cmbPrjFont", u"字体", u"工程名称的字体", 1, 0},
    {combo, u"cmbPrjSize", u"字号", u"工程名称的字号", 1, 1},
};
constexpr Field officeFields[] = {
    {text, u"TxtOffName", u"", u"单位名称", 0, 0, 2,
     u"首次打开本对话框时，自动填入当前方案的施工单位"},
    {font, u"cmbOffFont", u"字体", u"单位名称的字体", 1, 0},
    {combo, u"cmbOffSize", u"字号", u"单位名称的字号", 1, 1, 1,
     u"用于左边的预览和文档中工程名称上方的空行；文档中的单位名称用工程名称的字号"},
};
constexpr Field dateFields[] = {
    {date, u"cmbDate", u"日期", u"编制日期", 0, 0, 2, u"首次打开本对话框时，是当天的日期"},
    {font, u"cmbDateFont", u"字体", u"编制日期的字体", 1, 0},
    {combo, u"cmbDateSize", u"字号", u"编制日期的字号", 1, 1},
};
constexpr Field pictureFields[] = {
    {picture, u"cmbPic", u"图片", u"封面图片", 0, 0, 1,
     u"封面图片的文件名。名称不能键入；按退格键删去名称，封面就不带图片"},
    {button, u"cmdBrowse", u"浏览...", u"浏览图片", 0, 1, 1,
     u"选一个图片文件（bmp、jpg、gif、wmf），复制到图片库"},
    {length, u"TxtWidth", u"宽度(cm)", u"图片宽度", 1, 0, 1,
     u"图片打印出来的宽度，0 到 40 厘米，只保存整数；不影响左边的预览"},
    {length, u"TxtHeight", u"高度(cm)", u"图片高度", 1, 1, 1,
     u"图片打印出来的高度，0 到 40 厘米，只保存整数；不影响左边的预览"},
};

constexpr Field coverLibraryFields[] = {
    {check, u"chkCover", u"选用库", u"选用封面格式库", 1, 0, 2,
     u"生成时用列表中选中的封面，不用这里的设置；与自定义库只能选用一个"},
    {button, u"cmdSaveCover", u"存入库内", u"存入封面格式库", 2, 0, 1, u"把这里的封面设置取名保存"},
    {button, u"cmdDeleteCover", u"删除", u"从封面格式库中删除", 2, 1},
};
constexpr Field customFields[] = {
    {check, u"chkSelf", u"选用库", u"选用自定义库", 1, 0, 2,
     u"生成时用列表中选中的文档代替封面；与封面格式库只能选用一个"},
    {button, u"cmdSelfBld", u"创建", u"创建自定义页", 2, 0, 1, u"新建一个文档，取名并打开它"},
    {button, u"cmdSelfDel", u"删除", u"从自定义库中删除", 2, 1},
    {label, u"Oleself", u"双击名称，打开文档编辑", u"", 3, 0, 2},
};

QGroupBox* newPreviewFrame() {
    QGridLayout* grid = nullptr;
    QGroupBox* frame = newFrame(u"Frame1", u"封面预览 ", {}, &grid);
    grid->addWidget(new CoverSheet, 0, 0, Qt::AlignCenter);
    auto* note = new QLabel;
    note->setObjectName(u"lblOffNote"_s);
    note->setTextFormat(Qt::PlainText);
    note->setWordWrap(true);
    grid->addWidget(note, 1, 0);
    grid->setRowStretch(0, 1);
    return frame;
}

QGroupBox* newLibraryFrame(QStringView name, QStringView title, std::span<const Field> fields,
                           QStringView listName) {
    QGridLayout* grid = nullptr;
    QGroupBox* frame = newFrame(name, title, fields, &grid);
    auto* list = new LibraryList;
    list->setObjectName(listName.toString());
    list->setAccessibleName(title.toString());
    grid->addWidget(list, 0, 0, 1, 4);
    grid->setRowStretch(0, 1);
    return frame;
}

// The frames one below the other, each of the same height.
QVBoxLayout* newColumn(std::span<QGroupBox* const> frames) {
    auto* column = new QVBoxLayout;
    for (QGroupBox* frame : frames) {
        column->addWidget(frame, 1);
    }
    return column;
}

void watchLengths(ProblemNotice& notice, const QWidget& frame) {
    for (const char* name : {"TxtWidth", "TxtHeight"}) {
        notice.watch(*frame.findChild<TextField*>(QLatin1String(name)));
    }
}

} // namespace

QWidget* newCoverTab() {
    QGroupBox* const middle[] = {newFrame(u"Frame2", u"工程名称", projectFields),
                                 newFrame(u"Frame3", u"单位名称 ", officeFields),
                                 newFrame(u"Fradate", u"编制日期", dateFields),
                                 newFrame(u"fraPic", u"图片", pictureFields)};
    alignLabels(middle);
    auto* notice = new ProblemNotice;
    watchLengths(*notice, *middle[3]);

    auto* tab = new QWidget;
    auto* grid = new QGridLayout(tab);
    spaceOut(*grid);
    grid->addWidget(newPreviewFrame(), 0, 0);
    grid->addLayout(newColumn(middle), 0, 1);
    QGroupBox* const right[] = {
        newLibraryFrame(u"Frame20", u"封面格式库", coverLibraryFields, u"lstcover"),
        newLibraryFrame(u"FraSelf", u"自定义库", customFields, u"lstSelf")};
    grid->addLayout(newColumn(right), 0, 2);
    grid->addWidget(notice, 1, 0, 1, 3);
    grid->setColumnStretch(1, 1);
    return tab;
}

} // namespace qvnd::format
