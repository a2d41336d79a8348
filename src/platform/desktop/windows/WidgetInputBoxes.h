#pragma once

#include "platform/desktop/InputBoxes.h"

#include <QPointer>
#include <QWidget>

namespace qvnd::desktop {

// Asks for a line of text in a small dialog of the desktop, its buttons in Chinese.
class WidgetInputBoxes : public InputBoxes {
public:
    explicit WidgetInputBoxes(QWidget* parent = nullptr) : parent_(parent) {}

    QString ask(const InputQuestion& question) override;

private:
    QPointer<QWidget> parent_;
};

} // namespace qvnd::desktop
