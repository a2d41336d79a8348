#pragma once

#include "platform/error/RunTimeError.h"

#include <QScopedValueRollback>

#include <functional>
#include <utility>

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

// How a failure that turns out late is told: never within a command. Answers false, and has told
// nothing, while one runs; whoever knows of the failure asks again later. The command outlives it.
using LateFailure = std::function<bool(const RunTimeError&)>;
inline LateFailure toldBetweenCommands(OneCommand& command,
                                       std::function<void(const RunTimeError&)> tell) {
    return [&command, tell = std::move(tell)](const RunTimeError& failure) {
        return command.run([&] { tell(failure); });
    };
}

} // namespace qvnd::desktop
