#pragma once

#include <QScopedValueRollback>

namespace qvnd::desktop {

// Sees to it that one command runs at a time. A command that asks the user something, or lets the
// desktop's events run, has not ended yet, and another one would change what it works on. A box
// keeps mouse and keyboard away from the other windows, but not a screen reader, a menu bar that
// the desktop shows, or a drop of files.
class OneCommand {
public:
    bool isRunning() const { return running_; }

    // Runs the command, or answers false and leaves it when one is running. What it throws passes.
    template <class Command>
    bool run(Command&& command) {
        if (running_) {
            return false;
        }
        const QScopedValueRollback running(running_, true);
        command();
        return true;
    }

private:
    bool running_ = false;
};

} // namespace qvnd::desktop
