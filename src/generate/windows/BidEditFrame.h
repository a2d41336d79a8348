#pragma once

#include <QString>

namespace qvnd::generate {

// What the plan edit window asks of the program around it.
class BidEditFrame {
public:
    virtual ~BidEditFrame() = default;

    // Ends the plan edit window, behind the event that it is in.
    virtual void unloadPlanEditor() = 0;
    // Shows the workbench as it was.
    virtual void showFrmBid() = 0;
    // Gives the workbench the whole frame.
    virtual void maximizeFrmBid() = 0;
    // Tells on the status bar what a command has done that is not to be seen.
    virtual void showStatus(const QString& text) = 0;
};

} // namespace qvnd::generate
