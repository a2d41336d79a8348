#include "format/windows/ClosedComboBox.h"

#include <QCompleter>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QStringListModel>

namespace qvnd::format {

namespace {

constexpr int shownEntries = 16;
constexpr int usualLetters = 6;

bool opensList(const QKeyEvent& event) {
    return event.key() == Qt::Key_F4 ||
           (event.key() == Qt::Key_Down && event.modifiers() & Qt::AltModifier);
}

bool belongsToDialog(const QKeyEvent& event) {
    return event.key() == Qt::Key_Escape || event.key() == Qt::Key_Return ||
           event.key() == Qt::Key_Enter || event.key() == Qt::Key_F1;
}

} // namespace

ClosedComboBox::ClosedComboBox(Typing typing, QWidget* parent)
    : QComboBox(parent), typing_(typing) {
    setModel(new QStringListModel(this));
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    setCompleter(nullptr);
    setMaxVisibleItems(shownEntries);
    // Not by its entries: measuring thousands of them takes its time.
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(usualLetters);
    if (auto* list = qobject_cast<QListView*>(view())) {
        list->setUniformItemSizes(true);
    }
    lineEdit()->setReadOnly(typing == Typing::none);
    lineEdit()->setContextMenuPolicy(Qt::NoContextMenu);
    lineEdit()->setAcceptDrops(false);
    lineEdit()->setAttribute(Qt::WA_InputMethodEnabled, false);
    setAttribute(Qt::WA_InputMethodEnabled, false);
    lineEdit()->installEventFilter(this);
    connect(lineEdit(), &QLineEdit::textEdited, this, &ClosedComboBox::erased);
}

void ClosedComboBox::setEntries(const QStringList& entries) {
    if (entries_ != entries) {
        entries_ = entries;
        static_cast<QStringListModel*>(model())->setStringList(entries);
    }
}

void ClosedComboBox::setShownText(const QString& text) {
    setEditText(text);
    if (typing_ == Typing::none) {
        lineEdit()->setCursorPosition(0);
    }
}

bool ClosedComboBox::erases(const QKeyEvent& event) const {
    return typing_ == Typing::erasing &&
           (event.key() == Qt::Key_Backspace || event.key() == Qt::Key_Delete);
}

void ClosedComboBox::keyPressEvent(QKeyEvent* event) {
    if (opensList(*event)) {
        showPopup();
    } else if (erases(*event)) {
        lineEdit()->event(event);
    } else if (belongsToDialog(*event)) {
        event->ignore();
        return;
    }
    event->accept();
}

void ClosedComboBox::wheelEvent(QWheelEvent* event) { event->ignore(); }

// A click anywhere opens the list, as in a box without a text of its own.
bool ClosedComboBox::eventFilter(QObject* watched, QEvent* event) {
    if (watched == lineEdit() && typing_ == Typing::none &&
        event->type() == QEvent::MouseButtonPress && isEnabled() &&
        static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
        showPopup();
        return true;
    }
    return QComboBox::eventFilter(watched, event);
}

} // namespace qvnd::format
