#pragma once

#include "outline/Workbench.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/preview/DocumentPreview.h"
#include "store/modMain.h"

namespace qvnd::outline {

enum class Browsed {
    shown,
    fileMissing, // the user has been told
    failed       // the user has been told
};

// mnuBroTemplate: shows the document of the node selected in TrvTemplate in the preview pane.
//
// When its file is missing, its row is deleted from the table that the text of the tree's first
// node names, so that a row of any other template stays; and a node of that key is taken out of
// TrvCurrent, not out of TrvTemplate, where it stays on the screen until the next refresh.
Browsed mnuBroTemplate(modMain& state, Workbench& workbench, desktop::MessageBoxes& messages,
                       preview::DocumentPreview& preview);

} // namespace qvnd::outline
