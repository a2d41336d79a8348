#include "plans/windows/PlanNameBox.h"

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QSignalBlocker>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace qvnd::plans {

namespace {

bool isLegal(QChar typed) {
    return typed.unicode() > 0x7F || (typed >= u'a' && typed <= u'z') ||
           (typed >= u'A' && typed <= u'Z') || (typed >= u'0' && typed <= u'9');
}

bool isEnter(int key) { return key == Qt::Key_Return || key == Qt::Key_Enter; }

// A key of the text: a character, Enter or Backspace, and no command such as Ctrl+V.
bool isKeyPress(const QKeyEvent& event) {
    const QString text = event.text();
    return isEnter(event.key()) || event.key() == Qt::Key_Backspace ||
           (!text.isEmpty() && text.front().isPrint() &&
            !(event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)));
}

} // namespace

PlanNameBox::PlanNameBox(desktop::MessageBoxes& messages, QWidget* parent)
    : QLineEdit(parent), messages_(messages) {
    connect(this, &QLineEdit::textChanged, this, &PlanNameBox::onChange);
}

void PlanNameBox::fixName() {
    fixed_ = true;
    fixedName_ = text();
}

void PlanNameBox::tellFixed() {
    messages_.tell(u"工程名称不能更改！"_s, desktop::Icon::exclamation, u"提示"_s);
}

void PlanNameBox::lookAt(const QString& typed) {
    if (std::all_of(typed.begin(), typed.end(), isLegal)) {
        return;
    }
    messages_.tell(u"对不起，输入字符非法！"_s, desktop::Icon::exclamation);
    IllegalChar_ = true;
}

void PlanNameBox::keyPressEvent(QKeyEvent* event) {
    if (!isKeyPress(*event)) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    if (fixed_) {
        tellFixed();
        event->accept();
        return;
    }
    if (isEnter(event->key())) {
        event->accept();
        emit enterPressed();
        return;
    }
    if (event->key() != Qt::Key_Backspace) {
        lookAt(event->text());
    }
    QLineEdit::keyPressEvent(event);
}

// An input method hands over whole words; each of their characters is a key.
void PlanNameBox::inputMethodEvent(QInputMethodEvent* event) {
    if (!event->commitString().isEmpty()) {
        if (fixed_) {
            tellFixed();
            return;
        }
        lookAt(event->commitString());
    }
    QLineEdit::inputMethodEvent(event);
}

void PlanNameBox::onChange() {
    if (fixed_) {
        tellFixed();
        const QSignalBlocker blocker(this);
        setText(fixedName_);
        return;
    }
    if (IllegalChar_) {
        IllegalChar_ = false;
        backspace();
    }
}

} // namespace qvnd::plans
