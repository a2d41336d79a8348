#pragma once

#include "platform/desktop/Events.h"
#include "platform/desktop/LongRun.h"
#include "platform/desktop/SplashScreen.h"
#include "platform/files/WorkSpaceTurn.h"

namespace qvnd::startup {

// The wait of the start for its turn. The splash names what it waits for and is kept painted. The
// services outlive the object.
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

// The wait of a command for its turn. The windows stay painted; after a moment a progress dialog
// names what the command waits for and lets the user cancel. The services outlive the object.
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
