#include "format/windows/frmMultLevelWindow.h"

#include "format/windows/FieldTable.h"
#include "platform/desktop/windows/NamedButton.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace qvnd::format {

namespace {

using enum FieldKind;

constexpr Field fields[] = {
    {option, u"Option1(0)", u"沿用以前的标题前、后缀", u"", 0, 0, 4},
    {option, u"Option1(1)", u"不沿用以前的标题前、后缀", u"", 1, 0, 4},
    {option, u"Option1(2)", u"只第一级设为:", u"", 2, 0},
    {text, u"Text1(0)", u"", u"编号前的文字", 2, 1, 1, u"一个字；多出的字会移到编号后面"},
    {between, u"Label1", u"N", u"编号", 2, 2},
    {text, u"Text1(1)", u"", u"编号后的文字", 2, 3},
};

} // namespace

frmMultLevelWindow::frmMultLevelWindow(FormatSwitches& switches, desktop::MessageBoxes& messages,
                                       QWidget* parent)
    : QDialog(parent), dialog_(switches, messages) {
    setObjectName(u"frmMultLevel"_s);
    setWindowTitle(u"多级标题设置"_s);
    setAccessibleName(windowTitle());
    build();
    bindings_ = std::make_unique<ControlBindings>(dialog_.controls, *this);
}

void frmMultLevelWindow::build() {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(newFrame({}, {}, fields));
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    QPushButton* decide = desktop::namedButton(u"Command1(0)"_s, u"确定"_s, u"确定"_s);
    QPushButton* cancel = desktop::namedButton(u"Command1(1)"_s, u"取消"_s, u"取消"_s);
    decide->setDefault(true);
    buttons->addWidget(decide);
    buttons->addWidget(cancel);
    layout->addLayout(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    connect(decide, &QPushButton::clicked, this, [this] {
        dialog_.confirm();
        accept();
    });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

} // namespace qvnd::format
