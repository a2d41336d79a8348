#pragma once

#include "platform/desktop/MessageBoxes.h"

#include <QPointer>
#include <QWidget>

namespace qvnd::desktop {

// Message boxes as windows of the desktop, their buttons in Chinese. A box without a title bears
// the name of the program; the close box answers as the button that changes nothing. A box stands
// in front of every window of the program, also of one that stays on top, as the splash does.
class WidgetMessageBoxes : public MessageBoxes {
public:
    explicit WidgetMessageBoxes(QWidget* parent = nullptr) : parent_(parent) {}

    Answer show(const Message& message) override;

private:
    QPointer<QWidget> parent_;
};

} // namespace qvnd::desktop
