#pragma once

#include "platform/desktop/Events.h"
#include "platform/desktop/FileDialogs.h"
#include "platform/desktop/LongRun.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/desktop/SplashScreen.h"
#include "platform/word/model/Application.h"

namespace qvnd::outline {

// What the outline commands reach the desktop through. All of it outlives them.
struct Services {
    desktop::MessageBoxes& messages;
    desktop::SplashScreen& splash;
    desktop::FileDialogs& fileDialogs;
    desktop::Events& events;
    word::ApplicationFactory& word;
    desktop::LongRun& longRun;
};

} // namespace qvnd::outline
