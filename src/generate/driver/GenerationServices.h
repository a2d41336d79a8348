#pragma once

#include "format/ChildDocumentControls.h"
#include "generate/driver/BidEditScreen.h"
#include "platform/desktop/Events.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/desktop/ProgressDialog.h"
#include "platform/desktop/WordProcessorWindows.h"
#include "platform/word/model/Application.h"

namespace qvnd::generate {

// What generation needs of the platform and of the windows around it.
struct GenerationServices {
    word::ApplicationFactory& wordProcessor;
    desktop::MessageBoxes& messages;
    desktop::ProgressDialog& dlgTB;
    desktop::Events& events;
    desktop::WordProcessorWindows& wordProcessorWindows;
    BidEditScreen& screen;
    format::ChildDocumentControls& frmBidSet;
};

} // namespace qvnd::generate
