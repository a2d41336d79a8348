#include "outline/windows/dlgAddDocWindow.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace qvnd::outline {

namespace {

constexpr int textWidth = 320;

QPushButton* addButton(QBoxLayout& row, const QString& name, const QString& text) {
    auto* button = new QPushButton(text);
    button->setObjectName(name);
    button->setAccessibleName(QString(text).remove(u'&').section(u'(', 0, 0));
    row.addWidget(button);
    return button;
}

} // namespace

dlgAddDocWindow::dlgAddDocWindow(modMain& state, Workbench& workbench, const Services& services,
                                 AddMode mode, QWidget* parent)
    : QDialog(parent), dialog_(state, workbench, services, mode), TxtAdd_(new QLineEdit) {
    setObjectName(u"dlgAddDoc"_s);
    setWindowTitle(mode == AddMode::beside ? u"添加同级文件夹"_s : u"添加下级文件夹"_s);
    setAccessibleName(windowTitle());

    TxtAdd_->setObjectName(u"TxtAdd"_s);
    TxtAdd_->setAccessibleName(u"文件夹名称"_s);
    TxtAdd_->setMinimumWidth(textWidth);
    auto* label = new QLabel(u"文件夹名称(&N)："_s);
    label->setBuddy(TxtAdd_);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    QPushButton* ok = addButton(*buttons, u"OKButton"_s, u"确定(&O)"_s);
    QPushButton* cancel = addButton(*buttons, u"CancelButton"_s, u"取消(&C)"_s);
    ok->setDefault(true);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(TxtAdd_);
    layout->addSpacing(8);
    layout->addLayout(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    TxtAdd_->setFocus();

    // Enter in the text box comes to the default button.
    connect(ok, &QPushButton::clicked, this, &dlgAddDocWindow::OK);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

void dlgAddDocWindow::OK() {
    if (dialog_.OK(TxtAdd_->text()) == Added::added) {
        accept();
    } else {
        TxtAdd_->setFocus();
        TxtAdd_->selectAll();
    }
}

} // namespace qvnd::outline
