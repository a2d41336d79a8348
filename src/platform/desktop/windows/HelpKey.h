#pragma once

#include "platform/desktop/HelpWindow.h"
#include "platform/desktop/MessageBoxes.h"

#include <QObject>
#include <QString>

#include <functional>

class QWidget;

namespace qvnd::desktop {

// F1 anywhere in the program shows the page of the window that the user is in. Install it on the
// application as an event filter.
//
// In a child window of the frame that is the child; in a message box it is the page of messages
// ("messages"); a menu, a file dialog and other windows without a page of their own count for the
// window that they belong to.
class HelpKey : public QObject {
    Q_OBJECT

public:
    // `helpFile` tells the help file of the program; empty while it has none. What it reaches for
    // outlives the object.
    HelpKey(HelpWindow& help, std::function<QString()> helpFile, MessageBoxes& messages);

    bool eventFilter(QObject* watched, QEvent* event) override;

    // The name under which the window of a widget has its page; empty when it has none.
    static QString pageOwner(const QWidget* widget);

private:
    void show(const QWidget& widget);

    HelpWindow& help_;
    std::function<QString()> helpFile_;
    MessageBoxes& messages_;
};

} // namespace qvnd::desktop
