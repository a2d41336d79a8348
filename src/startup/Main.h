#pragma once

#include "platform/desktop/MessageBoxes.h"
#include "platform/desktop/SplashScreen.h"
#include "platform/registry/Registry.h"
#include "store/modMain.h"

#include <QString>

namespace qvnd::startup {

// The windows that start-up shows; both loads run within the call and may throw RunTimeError.
class ProgramWindows {
public:
    virtual ~ProgramWindows() = default;
    virtual void showMainForm() = 0;
    virtual void showFrmBid() = 0;
};

struct MainServices {
    registry::Registry& registry;
    desktop::SplashScreen& splash;
    desktop::MessageBoxes& messages;
    ProgramWindows& windows;
};

// The entry point of the program: works out the folders, extends the turn to the plans' folder,
// opens the three databases (making those that are missing, taking over those of an older
// installation), shows the windows and takes the splash down. `appPath` is the program's own
// folder. A turn, where there is one, has been taken by the caller.
//
// At the first run-time error a box shows its number directly followed by its description, under
// the title "提示"; later steps do not run, the splash stays up and the databases not reached stay
// unopened. No configuration, or one that names a folder that is gone, is no failure: the default
// work folder beside the program serves. True without a failure.
bool Main(modMain& state, const QString& appPath, const MainServices& services);

// Whether a file lies in the program's folder or in the work folder that Main would use, so that
// the history covers it. Nothing is made or opened.
bool isInWorkSpace(const QString& appPath, registry::Registry& registry, const QString& file);

} // namespace qvnd::startup
