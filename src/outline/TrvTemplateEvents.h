#pragma once

#include "outline/Workbench.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/error/RunTimeError.h"
#include "platform/preview/DocumentPreview.h"
#include "store/modMain.h"

namespace qvnd::outline {

// The events of TrvTemplate, the tree of the system templates. A looked-up row that is not there
// counts as no document; a failure of the look-up is told and ends the event.
class TrvTemplateEvents {
public:
    TrvTemplateEvents(modMain& state, Workbench& workbench, desktop::MessageBoxes& messages,
                      preview::DocumentPreview& preview);

    // The node becomes the selected one. A root is kept as the selected template, and opens
    // mnuDelete; any other node closes it.
    void NodeClick(OutlineNode& node);
    // A document is shown in the preview pane (mnuBroTemplate).
    void DblClick();
    // `hit` is the node under the pointer, null for none: it is selected and becomes the node to
    // copy. True when the menu mnuDelBrowse is to pop up, which it does on the right button for the
    // node to copy, hit or not; without one in this tree nothing pops up.
    bool MouseDown(MouseButton button, OutlineNode* hit);
    void MouseUp();
    void Click();

private:
    bool readyMenu();
    bool isDocument(const QString& query);
    void tell(const RunTimeError& failure);

    modMain& state_;
    Workbench& workbench_;
    desktop::MessageBoxes& messages_;
    preview::DocumentPreview& preview_;
};

} // namespace qvnd::outline
