#pragma once

namespace qvnd::desktop {

// The mouse pointer over the program's windows.
class MousePointer {
public:
    virtual ~MousePointer() = default;

    virtual void showHourglass() = 0;
    virtual void showUsual() = 0;
};

} // namespace qvnd::desktop
