#include "format/windows/ControlBindings.h"

#include "format/controls/ChoiceControls.h"
#include "format/controls/PreviewControls.h"
#include "format/controls/TextControls.h"
#include "format/windows/ClosedComboBox.h"
#include "format/windows/CoverPreview.h"
#include "format/windows/LibraryList.h"
#include "format/windows/TextField.h"

#include <QCalendarWidget>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>

namespace qvnd::format {

namespace {

// --- what a control shows ------------------------------------------------------------------------

void show(const TextBox& box, TextField& field) {
    if (field.text() != box.text()) {
        const int cursor = field.cursorPosition();
        field.setText(box.text());
        field.setCursorPosition(cursor);
    }
    field.setProblem(box.problem());
    field.setNote(box.note());
}

void show(const ComboBox& box, ClosedComboBox& field) {
    const QSignalBlocker blocker(field);
    field.setEntries(box.entries());
    field.setCurrentIndex(static_cast<int>(box.entries().indexOf(box.text())));
    field.setShownText(box.text());
}

void show(const ComboBox& box, QComboBox& field) {
    const QSignalBlocker blocker(field);
    if (field.count() != box.entries().size()) {
        field.clear();
        field.addItems(box.entries());
    }
    field.setCurrentIndex(static_cast<int>(box.entries().indexOf(box.text())));
}

void show(const ListBox& list, LibraryList& field) {
    field.setEntries(list.entries(), list.selected());
}

void show(const DatePicker& picker, QDateEdit& field) {
    const QSignalBlocker blocker(field);
    field.setDate(picker.date());
}

void show(const CheckBox& box, QCheckBox& field) {
    const QSignalBlocker blocker(field);
    field.setChecked(box.checked());
}

void show(const OptionButton& option, QRadioButton& field) {
    const QSignalBlocker blocker(field);
    field.setChecked(option.value());
}

void show(const Label& label, QLabel& field) {
    QFont font = field.font();
    if (!label.fontName().isEmpty()) {
        font.setFamily(label.fontName());
    }
    if (label.fontSize() > 0) {
        font.setPointSizeF(label.fontSize());
    }
    field.setFont(font);
    const Qt::Alignment across = label.alignment() == TextAlign::left    ? Qt::AlignLeft
                                 : label.alignment() == TextAlign::right ? Qt::AlignRight
                                                                         : Qt::AlignHCenter;
    field.setAlignment(across | Qt::AlignVCenter);
    field.setText(label.caption());
}

void show(const Image& image, PictureView& field) { field.setPicture(image.picture()); }

void show(const Button& /*button*/, const QPushButton& /*field*/) {}

// --- what the user does --------------------------------------------------------------------------

void leave(TextBox& box, TextField& field) {
    if (box.problem().isEmpty()) {
        box.leave();
    } else {
        QMetaObject::invokeMethod(
            &field, [&box] { box.leave(); }, Qt::QueuedConnection);
    }
}

void listen(TextBox& box, TextField& field) {
    QObject::connect(&field, &QLineEdit::textEdited, &field,
                     [&box](const QString& text) { box.type(text); });
    QObject::connect(&field, &TextField::left, &field, [&] { leave(box, field); });
}

void listen(ComboBox& box, QComboBox& field) {
    QObject::connect(&field, &QComboBox::activated, &field, [&box](int entry) { box.pick(entry); });
}

void listen(ComboBox& box, ClosedComboBox& field) {
    listen(box, static_cast<QComboBox&>(field));
    QObject::connect(&field, &ClosedComboBox::erased, &field,
                     [&box](const QString& text) { box.type(text); });
}

void listen(ListBox& list, LibraryList& field) {
    QObject::connect(&field, &LibraryList::entryClicked, &field,
                     [&list](int entry) { list.click(entry); });
    QObject::connect(&field, &LibraryList::entryOpened, &field, [&list] { list.doubleClick(); });
}

void listen(DatePicker& picker, QDateEdit& field) {
    QObject::connect(&field, &QDateEdit::dateChanged, &field,
                     [&picker](QDate date) { picker.pick(date); });
    // A click on the day that is shown already is a pick too, and changes no date.
    QObject::connect(field.calendarWidget(), &QCalendarWidget::clicked, &field,
                     [&picker](QDate date) { picker.pick(date); });
}

void listen(CheckBox& box, QCheckBox& field) {
    QObject::connect(&field, &QCheckBox::clicked, &field, [&box] { box.click(); });
}

void listen(OptionButton& option, QRadioButton& field) {
    QObject::connect(&field, &QRadioButton::clicked, &field, [&option] { option.click(); });
}

void listen(Button& button, QPushButton& field) {
    QObject::connect(&field, &QPushButton::clicked, &field, [&button] { button.click(); });
}

void listen(const Label& /*label*/, const QLabel& /*field*/) {}

void listen(const Image& /*image*/, const PictureView& /*field*/) {}

// ------------------------------------------------------------------------------------------------

// False when the pair is not of these kinds.
template <class Kind, class Field>
bool tie(Control& control, QWidget& window) {
    auto* kind = dynamic_cast<Kind*>(&control);
    auto* field = kind ? window.findChild<Field*>(control.name()) : nullptr;
    if (!field) {
        return false;
    }
    const auto update = [kind, field] {
        field->setEnabled(kind->enabled());
        show(*kind, *field);
    };
    control.changed = update;
    update();
    listen(*kind, *field);
    return true;
}

bool tieByKind(Control& control, QWidget& window) {
    return tie<TextBox, TextField>(control, window) ||
           tie<ComboBox, ClosedComboBox>(control, window) ||
           tie<ComboBox, QComboBox>(control, window) ||
           tie<ListBox, LibraryList>(control, window) ||
           tie<DatePicker, QDateEdit>(control, window) ||
           tie<CheckBox, QCheckBox>(control, window) ||
           tie<OptionButton, QRadioButton>(control, window) ||
           tie<Button, QPushButton>(control, window) || tie<Label, QLabel>(control, window) ||
           tie<Image, PictureView>(control, window);
}

} // namespace

ControlBindings::ControlBindings(Controls& controls, QWidget& window) : controls_(controls) {
    for (Control* control : controls.all()) {
        [[maybe_unused]] const bool isTied = tieByKind(*control, window);
        Q_ASSERT_X(isTied, "ControlBindings", qPrintable(control->name()));
    }
}

ControlBindings::~ControlBindings() {
    for (Control* control : controls_.all()) {
        control->changed = nullptr;
    }
}

} // namespace qvnd::format
