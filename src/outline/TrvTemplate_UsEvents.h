#pragma once

#include "outline/Workbench.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/preview/DocumentPreview.h"
#include "store/modMain.h"

#include <functional>

namespace qvnd::outline {

// The events of TrvTemplate_Us, the tree of the user's plans, but for its NodeClick, which is
// clickUserPlan.
class TrvTemplate_UsEvents {
public:
    TrvTemplate_UsEvents(modMain& state, Workbench& workbench, desktop::MessageBoxes& messages,
                         preview::DocumentPreview& preview);

    // A selected document is shown in the preview pane. When its file is missing, or cannot be
    // shown, the user is told, and nothing is changed.
    void DblClick();
    // `hit` is the node under the pointer, null for none: it is selected and becomes the node to
    // copy.
    void MouseDown(OutlineNode* hit);

private:
    void show(const OutlineNode& document, const std::function<void(const RunTimeError&)>& tell);

    modMain& state_;
    Workbench& workbench_;
    desktop::MessageBoxes& messages_;
    preview::DocumentPreview& preview_;
};

} // namespace qvnd::outline
