#include "format/windows/FieldTable.h"

#include "format/windows/ClosedComboBox.h"
#include "format/windows/TextField.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QEvent>
#include <QFontMetrics>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace qvnd::format {

namespace {

constexpr int gap = 8;            // pixels
constexpr int betweenFields = 14; // pixels
constexpr int shortField = 72;    // pixels
constexpr int lettersOfFont = 11;
constexpr int widthOfFontList = 36; // average letters
// Of a row's free room a name of a font takes more than the field beside it.
constexpr int stretchOfField = 2;
constexpr int stretchOfFont = 3;
const char* const columnOfLabel = "columnOfLabel";

// Leaves the wheel to what is below, so that no value changes by scrolling.
class WithoutWheel : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        if (event->type() != QEvent::Wheel) {
            return false;
        }
        event->ignore();
        return true;
    }
};

void takeWheelFrom(QWidget& control) { control.installEventFilter(new WithoutWheel(&control)); }

QWidget* newControl(const Field& field) {
    const QString caption = field.caption.toString();
    switch (field.kind) {
    case FieldKind::text:
        return new TextField;
    case FieldKind::length: {
        auto* made = new TextField;
        made->setMinimumWidth(shortField);
        return made;
    }
    case FieldKind::combo:
        return new ClosedComboBox(ClosedComboBox::Typing::none);
    case FieldKind::font: {
        auto* made = new ClosedComboBox(ClosedComboBox::Typing::none);
        made->setMinimumContentsLength(lettersOfFont);
        made->view()->setMinimumWidth(widthOfFontList * made->fontMetrics().averageCharWidth());
        return made;
    }
    case FieldKind::picture:
        return new ClosedComboBox(ClosedComboBox::Typing::erasing);
    case FieldKind::dropDown: {
        auto* made = new QComboBox;
        takeWheelFrom(*made);
        return made;
    }
    case FieldKind::date: {
        auto* made = new QDateEdit;
        made->setCalendarPopup(true);
        made->setKeyboardTracking(false);
        takeWheelFrom(*made);
        return made;
    }
    case FieldKind::check:
        return new QCheckBox(caption);
    case FieldKind::option:
        return new QRadioButton(caption);
    case FieldKind::button: {
        auto* made = new QPushButton(caption);
        made->setAutoDefault(false);
        return made;
    }
    case FieldKind::more: {
        auto* made = new QPushButton(caption);
        made->setAutoDefault(false);
        made->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        return made;
    }
    case FieldKind::between: {
        auto* made = new QLabel(caption);
        made->setAlignment(Qt::AlignCenter);
        return made;
    }
    case FieldKind::label:
    case FieldKind::unit:
        break;
    }
    return new QLabel(caption);
}

bool bearsItsCaption(FieldKind kind) {
    return kind == FieldKind::check || kind == FieldKind::option || kind == FieldKind::button ||
           kind == FieldKind::more || kind == FieldKind::label || kind == FieldKind::unit ||
           kind == FieldKind::between;
}

void place(QGridLayout& grid, const Field& field) {
    QWidget* control = newControl(field);
    control->setObjectName(field.name.toString());
    control->setAccessibleName((field.spoken.isEmpty() ? field.caption : field.spoken).toString());
    if (auto* combo = qobject_cast<ClosedComboBox*>(control)) {
        combo->lineEdit()->setAccessibleName(control->accessibleName());
    }
    control->setToolTip(field.tip.toString());
    control->setAccessibleDescription(field.tip.toString());
    const int column = field.column * 2;
    const int columns = field.span * 2;
    if (field.caption.isEmpty() || bearsItsCaption(field.kind)) {
        grid.addWidget(control, field.row, column, 1, columns);
        return;
    }
    auto* label = new QLabel(field.caption.toString());
    label->setBuddy(control);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    label->setProperty(columnOfLabel, field.column);
    grid.addWidget(label, field.row, column);
    grid.addWidget(control, field.row, column + 1, 1, columns - 1);
}

void stretch(QGridLayout& grid, const Field& field) {
    const int wish = field.kind == FieldKind::font ? stretchOfFont : stretchOfField;
    for (int column = field.column; column < field.column + field.span; ++column) {
        const int place = column * 2 + 1;
        grid.setColumnStretch(place, std::max(grid.columnStretch(place), wish));
    }
}

} // namespace

void spaceOut(QGridLayout& grid) {
    grid.setHorizontalSpacing(gap);
    grid.setVerticalSpacing(gap);
    grid.setContentsMargins(betweenFields, gap, betweenFields, betweenFields);
}

QGroupBox* newFrame(QStringView name, QStringView title, std::span<const Field> fields,
                    QGridLayout** grid) {
    auto* frame = new QGroupBox(title.toString());
    frame->setObjectName(name.toString());
    frame->setAccessibleName(title.trimmed().toString());
    auto* inside = new QGridLayout(frame);
    spaceOut(*inside);
    for (const Field& field : fields) {
        place(*inside, field);
        stretch(*inside, field);
    }
    if (grid) {
        *grid = inside;
    }
    return frame;
}

void alignLabels(std::span<QGroupBox* const> frames) {
    for (int column = 0;; ++column) {
        QList<QLabel*> labels;
        int width = 0;
        for (const QGroupBox* frame : frames) {
            for (QLabel* label : frame->findChildren<QLabel*>()) {
                const QVariant at = label->property(columnOfLabel);
                if (at.isValid() && at.toInt() == column) {
                    labels << label;
                    width = std::max(width, label->sizeHint().width());
                }
            }
        }
        if (labels.isEmpty()) {
            return;
        }
        for (QLabel* label : labels) {
            label->setMinimumWidth(width);
        }
    }
}

} // namespace qvnd::format
