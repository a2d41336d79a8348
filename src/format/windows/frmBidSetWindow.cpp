#include "format/windows/frmBidSetWindow.h"

#include "format/windows/BidSetTabs.h"
#include "format/windows/TextField.h"
#include "format/windows/frmMultLevelWindow.h"
#include "platform/desktop/windows/NamedButton.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDateEdit>
#include <QHBoxLayout>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace qvnd::format {

namespace {

constexpr QSize usualSize(960, 620); // fits a screen of 1024 by 700

// The way of the Tab key: each page from its top left to its bottom right.
constexpr QStringView tabOrder[] = {
    u"TxtPrjName",      u"cmbPrjFont",     u"cmbPrjSize",     u"TxtOffName",
    u"cmbOffFont",      u"cmbOffSize",     u"cmbDate",        u"cmbDateFont",
    u"cmbDateSize",     u"cmbPic",         u"cmdBrowse",      u"TxtWidth",
    u"TxtHeight",       u"lstcover",       u"chkCover",       u"cmdSaveCover",
    u"cmdDeleteCover",  u"lstSelf",        u"chkSelf",        u"cmdSelfBld",
    u"cmdSelfDel",      u"cmbClass",       u"cmbChapterFont", u"cmbChapterSize",
    u"Txtformer",       u"cmbMiddle",      u"Txtback",        u"optLeft",
    u"optMiddle",       u"optRight",       u"chkHead",        u"chkMultLevel",
    u"Command1",        u"chkIsNot",       u"chkBlackLine",   u"chkHeader",
    u"TxtHeaderCon",    u"cmbHeaderFont",  u"cmbHeaderSize",  u"optHeaderLeft",
    u"optHeaderMiddle", u"optHeaderRight", u"chkfooter",      u"TxtFooterCon",
    u"cmbFooterFont",   u"cmbFooterSize",  u"optFooterLeft",  u"optFooterMiddle",
    u"optFooterRight",  u"cmbPageClass",   u"cmbPageSign",    u"chkPageIsNot",
    u"chkPageRight",    u"txtPageupdis",   u"TxtPageDownDis", u"TxtPageLeftDis",
    u"TxtPageRightdis", u"Txtheader",      u"TxtFooter",      u"cmbTextFont",
    u"cmbTextSize",     u"TxtBind",        u"optSide",        u"optTop",
    u"Option1(0)",      u"Option1(1)",     u"cboBianHao",     u"txtInde",
    u"lstSet",          u"chkSet",         u"cmdSaveSet",     u"cmdDeleteSet",
    u"cmdDecide",       u"cmdCancel",
};

} // namespace

frmBidSetWindow::frmBidSetWindow(modMain& state, frmBidSet& dialog, desktop::MessageBoxes& messages,
                                 QWidget* parent)
    : QDialog(parent), state_(state), form_(dialog.form()), messages_(messages),
      SSTab1_(new QTabWidget) {
    setObjectName(u"frmBidSet"_s);
    setWindowTitle(u"卷宗编制设置"_s);
    setAccessibleName(windowTitle());
    build();
    setOrder();
    resize(usualSize.expandedTo(minimumSizeHint()));
    bindings_ = std::make_unique<ControlBindings>(form_.controls, *this);
    form_.headings.Command1.Click = [this] { openMultLevel(); };
}

frmBidSetWindow::~frmBidSetWindow() { form_.headings.Command1.Click = nullptr; }

void frmBidSetWindow::build() {
    SSTab1_->setObjectName(u"SSTab1"_s);
    SSTab1_->setAccessibleName(u"卷宗编制设置的各页"_s);
    SSTab1_->tabBar()->setAccessibleName(SSTab1_->accessibleName());
    SSTab1_->addTab(newCoverTab(), u"封面设置"_s);
    SSTab1_->addTab(newPlanTab(), u"方案设置"_s);
    QPushButton* cmdDecide = desktop::namedButton(u"cmdDecide"_s, u"确 定"_s, u"确定"_s);
    QPushButton* cmdCancel = desktop::namedButton(u"cmdCancel"_s, u"取 消"_s, u"取消"_s);
    cmdDecide->setDefault(true);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdDecide);
    buttons->addWidget(cmdCancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(SSTab1_, 1);
    layout->addLayout(buttons);
    connect(cmdDecide, &QPushButton::clicked, this, &frmBidSetWindow::decide);
    connect(cmdCancel, &QPushButton::clicked, this, &frmBidSetWindow::reject);
}

void frmBidSetWindow::setOrder() {
    auto* inner = findChild<QTabWidget*>(u"SSTab2"_s);
    QWidget* before = SSTab1_->tabBar();
    for (const QStringView name : tabOrder) {
        QWidget* next = findChild<QWidget*>(name.toString());
        if (name == u"cmbClass") {
            setTabOrder(before, inner->tabBar());
            before = inner->tabBar();
        }
        setTabOrder(before, next);
        before = next;
    }
    findChild<QWidget*>(tabOrder[0].toString())->setFocus();
}

// A box that the user has typed into is left before the dialog goes, by whatever key. False when
// its text is refused.
bool frmBidSetWindow::finishTyping() {
    QWidget* box = focusWidget();
    auto* field = qobject_cast<TextField*>(box);
    const bool isTaken = !field || field->problem().isEmpty();
    if ((field || qobject_cast<QDateEdit*>(box)) && box->hasFocus()) {
        box->clearFocus();
        QCoreApplication::sendPostedEvents(box, QEvent::MetaCall);
    }
    return isTaken;
}

void frmBidSetWindow::decide() {
    if (finishTyping() && form_.cmdDecide()) {
        accept();
    }
}

// 取消, and Escape as well.
void frmBidSetWindow::reject() {
    finishTyping();
    QDialog::reject();
}

// QDialog would take the close box for Escape.
void frmBidSetWindow::closeEvent(QCloseEvent* event) {
    wasClosed_ = true;
    reject();
    event->accept();
}

void frmBidSetWindow::openMultLevel() {
    frmMultLevelWindow(state_.FormatSwitches, messages_, this).exec();
}

FormatDialog::FormatDialog(modMain& state, frmBidSet& dialog, desktop::MessageBoxes& messages)
    : state_(state), dialog_(dialog), messages_(messages) {}

FormatDialog::~FormatDialog() { delete window_.data(); }

void FormatDialog::show(QWidget* parent) {
    if (dialog_.isOutdated()) {
        delete window_.data();
        dialog_.loadAnew();
        messages_.tell(u"格式设置已被另一个程序或“撤消”改动，现在显示的是改动后的内容。"
                       "要采用封面库、设置库或自定义页，请重新选取。"_s,
                       desktop::Icon::information, u"提示"_s);
    }
    if (!window_) {
        window_ = new frmBidSetWindow(state_, dialog_, messages_, parent);
    }
    const SettingsNow shown(*state_.gDbBidSet);
    const bool isDecided = window_->exec() == QDialog::Accepted;
    dialog_.remarkEnd(shown, isDecided ? frmBidSet::Ended::decided : frmBidSet::Ended::left);
    if (window_ && window_->wasClosed()) {
        delete window_.data();
        dialog_.Unload();
    }
}

} // namespace qvnd::format
