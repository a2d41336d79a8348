#include "platform/desktop/windows/WidgetMessageBoxes.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QWindow>

#include <map>
#include <utility>

using namespace Qt::StringLiterals;

namespace qvnd::desktop {

namespace {

QMessageBox::Icon iconOf(Icon icon) {
    switch (icon) {
    case Icon::information:
        return QMessageBox::Information;
    case Icon::question:
        return QMessageBox::Question;
    case Icon::exclamation:
        return QMessageBox::Warning;
    case Icon::critical:
        return QMessageBox::Critical;
    case Icon::none:
        break;
    }
    return QMessageBox::NoIcon;
}

using Offered = std::map<QAbstractButton*, Answer>;

QPushButton* add(QMessageBox& box, Offered& offered, const QString& text,
                 QMessageBox::ButtonRole role, Answer answer) {
    QPushButton* button = box.addButton(text, role);
    offered.emplace(button, answer);
    return button;
}

Offered addButtons(QMessageBox& box, Buttons buttons) {
    Offered offered;
    if (buttons == Buttons::yesNo) {
        add(box, offered, u"是(&Y)"_s, QMessageBox::YesRole, Answer::yes);
        box.setEscapeButton(add(box, offered, u"否(&N)"_s, QMessageBox::NoRole, Answer::no));
        return offered;
    }
    QPushButton* ok = add(box, offered, u"确定(&O)"_s, QMessageBox::AcceptRole, Answer::ok);
    box.setEscapeButton(buttons == Buttons::ok ? ok
                                               : add(box, offered, u"取消(&C)"_s,
                                                     QMessageBox::RejectRole, Answer::cancel));
    return offered;
}

// A box opens behind a window that stays on top unless it belongs to that window.
void putInFront(QMessageBox& box) {
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && window->windowFlags().testFlag(Qt::WindowStaysOnTopHint)) {
            box.setWindowFlag(Qt::WindowStaysOnTopHint);
            box.winId(); // makes its window
            box.windowHandle()->setTransientParent(window->windowHandle());
            return;
        }
    }
}

} // namespace

Answer WidgetMessageBoxes::show(const Message& message) {
    QMessageBox box(parent_);
    box.setIcon(iconOf(message.icon));
    box.setTextFormat(Qt::PlainText);
    box.setText(message.text);
    box.setWindowTitle(message.title.isEmpty() ? QApplication::applicationDisplayName()
                                               : message.title);
    const Offered offered = addButtons(box, message.buttons);
    putInFront(box);
    box.exec();
    QAbstractButton* pressed = box.clickedButton();
    return offered.at(pressed != nullptr ? pressed : box.escapeButton());
}

} // namespace qvnd::desktop
