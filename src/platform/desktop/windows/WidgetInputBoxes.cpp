#include "platform/desktop/windows/WidgetInputBoxes.h"

#include <QApplication>
#include <QInputDialog>
#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace qvnd::desktop {

QString WidgetInputBoxes::ask(const InputQuestion& question) {
    constexpr int textWidth = 320;
    QInputDialog box(parent_ ? parent_.data() : QApplication::activeWindow());
    box.setWindowTitle(question.title);
    box.setLabelText(question.prompt);
    box.setTextValue(question.proposal);
    box.setOkButtonText(u"确定(&O)"_s);
    box.setCancelButtonText(u"取消(&C)"_s);
    if (auto* line = box.findChild<QLineEdit*>()) {
        line->setAccessibleName(question.prompt);
        line->setMinimumWidth(textWidth);
    }
    return box.exec() == QDialog::Accepted ? box.textValue() : QString();
}

} // namespace qvnd::desktop
