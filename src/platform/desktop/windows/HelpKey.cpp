#include "platform/desktop/windows/HelpKey.h"

#include "platform/desktop/MessageBoxes.h"
#include "platform/error/RunTimeError.h"

#include <QFileDialog>
#include <QKeyEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace qvnd::desktop {

namespace {

bool isHelpKey(const QEvent& event) {
    const auto& key = static_cast<const QKeyEvent&>(event);
    return key.key() == Qt::Key_F1 && key.modifiers() == Qt::NoModifier;
}

bool hasNoPage(const QWidget& window) {
    return window.windowType() == Qt::Popup || window.windowType() == Qt::ToolTip ||
           qobject_cast<const QFileDialog*>(&window) || window.objectName().isEmpty();
}

// The child that the user sees in front of a frame, where the frame itself has the keyboard.
const QWidget* activeChild(const QWidget& frame) {
    const auto* area = frame.findChild<QMdiArea*>();
    const QMdiSubWindow* child = area ? area->currentSubWindow() : nullptr;
    return child ? child->widget() : nullptr;
}

} // namespace

HelpKey::HelpKey(HelpWindow& help, std::function<QString()> helpFile, MessageBoxes& messages)
    : help_(help), helpFile_(std::move(helpFile)), messages_(messages) {}

QString HelpKey::pageOwner(const QWidget* widget) {
    for (; widget; widget = widget->parentWidget()) {
        if (qobject_cast<const QMessageBox*>(widget)) {
            return u"messages"_s;
        }
        if (qobject_cast<const QMdiSubWindow*>(widget->parentWidget())) {
            return widget->objectName();
        }
        if (widget->isWindow() && !hasNoPage(*widget)) {
            const QWidget* child = activeChild(*widget);
            return child ? child->objectName() : widget->objectName();
        }
    }
    return {};
}

// The key is claimed before a shortcut can take it; its press then comes to the widget.
bool HelpKey::eventFilter(QObject* watched, QEvent* event) {
    if (!watched->isWidgetType()) {
        return false;
    }
    const auto& widget = static_cast<const QWidget&>(*watched);
    if (event->type() == QEvent::ShortcutOverride && isHelpKey(*event)) {
        event->accept();
        return true;
    }
    if ((event->type() == QEvent::KeyPress && isHelpKey(*event)) ||
        event->type() == QEvent::HelpRequest) {
        show(widget);
        return true;
    }
    return false;
}

void HelpKey::show(const QWidget& widget) {
    const QString file = helpFile_();
    if (file.isEmpty()) {
        messages_.tell(u"无法显示帮助目录，该工程没有相关联的帮助。"_s, Icon::information,
                       widget.window()->windowTitle());
        return;
    }
    try {
        help_.showPage(file, pageOwner(&widget));
    } catch (const RunTimeError& failure) {
        messages_.tell(descriptionOf(failure));
    }
}

} // namespace qvnd::desktop
