#pragma once

#include "platform/desktop/Events.h"
#include "platform/desktop/LongRun.h"
#include "platform/desktop/SplashScreen.h"
#include "platform/files/WorkSpaceTurn.h"

namespace qvnd::startup {

// The start waits for its turn: the splash says for what, and stays alive. The services outlive the
// object.
class StartWait : public files::TurnWait {
public:
    StartWait(desktop::SplashScreen& splash, desktop::Events& events)
        : splash_(splash), events_(events) {}

    void begin(const QString& reason) override;
    bool goesOn() override;
    void end() override;

private:
    desktop::SplashScreen& splash_;
    desktop::Events& events_;
};

// A command waits for its turn: the windows stay painted, and soon a progress says for what it
// waits and lets the user cancel. The services outlive the object.
class CommandWait : public files::TurnWait {
public:
    CommandWait(desktop::LongRun& longRun, desktop::Events& events)
        : longRun_(longRun), events_(events) {}

    void begin(const QString& reason) override;
    bool goesOn() override;
    void end() override { longRun_.end(); }

private:
    desktop::LongRun& longRun_;
    desktop::Events& events_;
};

} // namespace qvnd::startup
