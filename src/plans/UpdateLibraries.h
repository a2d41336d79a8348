#pragma once

#include "outline/Workbench.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/desktop/MousePointer.h"
#include "platform/desktop/SplashScreen.h"
#include "store/modMain.h"

namespace qvnd::plans {

// The two update commands: what every load of the workbench does for each library, done again on
// the user's wish. The pointer is an hourglass meanwhile.
class UpdateLibraries {
public:
    UpdateLibraries(modMain& state, outline::Workbench& workbench, desktop::MessageBoxes& messages,
                    desktop::SplashScreen& splash, desktop::MousePointer& pointer);

    // Adopts template folders that Db_Template.mdb does not know, and refills TrvTemplate.
    void templates();
    // Adopts plan folders that Db_UsTemplate.mdb does not know, and refills TrvTemplate_Us.
    void plans();

private:
    modMain& state_;
    outline::Workbench& workbench_;
    desktop::MessageBoxes& messages_;
    desktop::SplashScreen& splash_;
    desktop::MousePointer& pointer_;
};

} // namespace qvnd::plans
