#pragma once

#include "platform/desktop/FileDialogs.h"
#include "platform/desktop/Fonts.h"
#include "platform/desktop/InputBoxes.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/desktop/Shell.h"
#include "platform/word/model/Application.h"

namespace qvnd::format {

// What the format dialog reaches the desktop through. All of it outlives the dialog.
struct FormatServices {
    desktop::MessageBoxes& messages;
    desktop::InputBoxes& inputBoxes;
    desktop::FileDialogs& fileDialogs;
    desktop::Fonts& fonts;
    // Opens a custom page for editing.
    desktop::Shell& shell;
    // Makes a custom page.
    word::ApplicationFactory& word;
};

} // namespace qvnd::format
