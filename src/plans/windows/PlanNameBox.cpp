#include "plans/windows/PlanNameBox.h"

#include "plans/PlanName.h"

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QSignalBlocker>

using namespace Qt::StringLiterals;

namespace qvnd::plans {

namespace {

// The characters of a text that cannot be typed, each once; a blank among them.
QString untypable(const QString& text) {
    QString illegal = illegalCharacters(text);
    return text.contains(u' ') ? illegal + u' ' : illegal;
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

void PlanNameBox::fixName(const QString& name) {
    const QSignalBlocker blocker(this);
    setText(name);
    fixed_ = true;
    fixedName_ = name;
    lookFixed();
}

// It stays enabled, since every key has its message, and looks like a box that is not.
void PlanNameBox::lookFixed() {
    QPalette colours = palette();
    colours.setColor(QPalette::Base, colours.color(QPalette::Disabled, QPalette::Window));
    colours.setColor(QPalette::Text, colours.color(QPalette::Active, QPalette::WindowText));
    setPalette(colours);
    setCursor(Qt::ArrowCursor);
    setToolTip(u"方案建好以后不能改名称"_s);
}

void PlanNameBox::tellFixed() {
    messages_.tell(u"工程名称不能更改！"_s, desktop::Icon::exclamation, u"提示"_s);
}

void PlanNameBox::tellIllegal(const QString& illegal) {
    messages_.tell(illegalCharactersText(illegal), desktop::Icon::exclamation);
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
    const QString typed = event->text();
    if (event->key() != Qt::Key_Backspace && typed.size() == 1 && !mayBeTyped(typed.front())) {
        tellIllegal(typed);
        IllegalChar_ = true;
    }
    QLineEdit::keyPressEvent(event);
}

// An input method hands over whole words, whose blanks are as illegal as typed ones.
void PlanNameBox::inputMethodEvent(QInputMethodEvent* event) {
    const QString committed = event->commitString();
    if (!committed.isEmpty() && fixed_) {
        tellFixed();
        return;
    }
    const QString illegal = untypable(committed);
    if (illegal.isEmpty()) {
        QLineEdit::inputMethodEvent(event);
        return;
    }
    QInputMethodEvent legal(event->preeditString(), event->attributes());
    legal.setCommitString(without(committed, illegal), event->replacementStart(),
                          event->replacementLength());
    QLineEdit::inputMethodEvent(&legal);
    tellIllegal(illegal);
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
        return;
    }
    const QString illegal = illegalCharacters(text());
    if (!illegal.isEmpty()) {
        const qsizetype kept = without(text().left(cursorPosition()), illegal).size();
        setText(without(text(), illegal));
        setCursorPosition(static_cast<int>(kept));
        tellIllegal(illegal);
    }
}

} // namespace qvnd::plans
