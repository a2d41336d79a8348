#pragma once

#include <QString>
#include <QStringView>

#include <span>

class QGridLayout;
class QGroupBox;
class QWidget;

// How the pages of the format dialog are laid out: each frame is a table of its fields.
namespace qvnd::format {

enum class FieldKind {
    text,     // TextField
    length,   // TextField for a short number
    combo,    // ClosedComboBox
    font,     // ClosedComboBox wide enough for the name of a font
    picture,  // ClosedComboBox whose text can be erased
    dropDown, // a plain list to choose from
    date,
    check,
    option,
    button,
    more,    // a button for the dialog behind it, no wider than it needs
    label,   // text of a preview
    unit,    // plain words behind a field
    between, // plain words in the middle of their columns
};

// One control of a frame. It bears the name that the design gives it as its object name, by which
// it is tied to its logic.
struct Field {
    FieldKind kind;
    QStringView name;
    // The label before the field, or the text of a control that bears one; empty for none.
    QStringView caption;
    // The accessible name.
    QStringView spoken;
    // The place on the frame's grid. A column is a label with its field.
    int row = 0;
    int column = 0;
    int span = 1;
    // What the control does, where its name does not tell or misleads.
    QStringView tip = {};
};

// A frame with its fields on a grid. The grid is given back through `grid` for what is no field.
QGroupBox* newFrame(QStringView name, QStringView title, std::span<const Field> fields,
                    QGridLayout** grid = nullptr);

// Gives the labels of a column the same width in all frames that stand below each other.
void alignLabels(std::span<QGroupBox* const> frames);

// The same widths, distances and edges everywhere.
void spaceOut(QGridLayout& grid);

} // namespace qvnd::format
