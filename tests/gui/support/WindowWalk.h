#pragma once

#include <QList>
#include <QString>
#include <QStringList>

class QWidget;

namespace qvnd::test {

// What a look at a window finds. The window is shown; where it has tabs, each of them is looked
// into in turn. What belongs to it but is hidden, and what Qt keeps inside its own widgets, is left
// out. A control is told by its object name.

// A text that the user can see, and whose it is.
struct SeenText {
    QString owner;
    QString text;
};

// Titles, captions, labels, tabs, menu items (with their keys behind a "|"), tool tips and hints.
QList<SeenText> seenTexts(QWidget& window);

// Controls that a screen reader has no name for.
QStringList namelessControls(QWidget& window);

// Controls that neither the Tab key, really pressed, nor a mnemonic reaches, and menus of the menu
// bar without a mnemonic. Opens every command of the window first.
QStringList unreachable(QWidget& window);

// Mnemonics that two items of a menu, or two of a window's own controls and menus, share.
QStringList sharedMnemonics(QWidget& window);

// Texts that do not fit where they stand. One that a tool tip repeats may be cut.
QStringList cutTexts(QWidget& window);

} // namespace qvnd::test
