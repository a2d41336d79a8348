#pragma once

#include "platform/desktop/Processes.h"
#include "platform/desktop/WindowLookup.h"

#include <functional>
#include <utility>

namespace qvnd::desktop {

// The windows of the desktop: by title through the tool "wmctrl" where it is installed, else by the
// running processes. While the tool is waited for, at most two seconds, the windows stay painted.
class DesktopWindows : public WindowLookup {
public:
    // Brings the window with exactly that title to front; false when there is none or no way to
    // ask.
    using Activation = std::function<bool(const QString& title)>;

    // The processes must outlive the object.
    explicit DesktopWindows(Processes& processes, Activation byTitle = activateByTool)
        : processes_(processes), byTitle_(std::move(byTitle)) {}

    bool activate(const QString& title, const QString& program) override;

private:
    static bool activateByTool(const QString& title);

    Processes& processes_;
    Activation byTitle_;
};

} // namespace qvnd::desktop
