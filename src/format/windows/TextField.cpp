#include "format/windows/TextField.h"

#include <QFocusEvent>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace qvnd::format {

namespace {

constexpr QColor warning(0xB3, 0x26, 0x1E);

} // namespace

void TextField::setProblem(const QString& problem) {
    if (problem == problem_) {
        return;
    }
    if (problem_.isEmpty()) {
        tip_ = toolTip();
    }
    problem_ = problem;
    setToolTip(problem.isEmpty() ? tip_ : problem);
    setAccessibleDescription(toolTip());
    update();
    emit problemChanged();
}

void TextField::setNote(const QString& note) {
    if (note != note_) {
        note_ = note;
        emit problemChanged();
    }
}

void TextField::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    switch (event->reason()) {
    case Qt::ActiveWindowFocusReason:
    case Qt::PopupFocusReason:
    case Qt::MenuBarFocusReason:
        return;
    default:
        emit left();
    }
}

void TextField::paintEvent(QPaintEvent* event) {
    QLineEdit::paintEvent(event);
    if (!problem_.isEmpty()) {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(warning, 2));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 2, 2);
    }
}

ProblemNotice::ProblemNotice(QWidget* parent) : QLabel(parent) {
    QPalette colours = palette();
    colours.setColor(QPalette::WindowText, warning);
    setPalette(colours);
}

void ProblemNotice::watch(TextField& field) {
    fields_ << &field;
    connect(&field, &TextField::problemChanged, this, &ProblemNotice::tell);
}

void ProblemNotice::tell() {
    for (const auto& told : {&TextField::problem, &TextField::note}) {
        for (const TextField* field : fields_) {
            if (const QString& text = (field->*told)(); !text.isEmpty()) {
                setText(field->accessibleName() + u"："_s + text);
                return;
            }
        }
    }
    clear();
}

QSize ProblemNotice::minimumSizeHint() const {
    return QLabel::minimumSizeHint().expandedTo({0, fontMetrics().height()});
}

} // namespace qvnd::format
