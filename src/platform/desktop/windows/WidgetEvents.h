#pragma once

#include "platform/desktop/Events.h"

#include <QCoreApplication>

namespace qvnd::desktop {

// The events of the window system.
class WidgetEvents : public Events {
public:
    void doEvents() override { QCoreApplication::processEvents(); }
    void keepPainted() override {
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    }
};

} // namespace qvnd::desktop
