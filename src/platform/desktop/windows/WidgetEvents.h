#pragma once

#include "platform/desktop/Events.h"

#include <QCoreApplication>

namespace qvnd::desktop {

// The events of the window system.
class WidgetEvents : public Events {
public:
    void doEvents() override { QCoreApplication::processEvents(); }
};

} // namespace qvnd::desktop
