#pragma once

#include "outline/Services.h"
#include "outline/Workbench.h"
#include "platform/preview/DocumentPreview.h"
#include "store/modMain.h"

namespace qvnd::outline {

// What a mouse button brings up over TrvCurrent: nothing, the menu mnuSysEdit, or mnuSys with
// mnuNew as its only item (the others are hidden as long as it is up).
enum class PopUp { none, mnuSysEdit, onlyMnuNew };

// The code of the Delete key.
inline constexpr int deleteKey = 46;

// The events of TrvCurrent, but for those of dragging and of label editing. They set what the
// workbench offers, which then stays until the next of them.
//
// A click on a node raises MouseDown, Click and NodeClick in this order, so that gSelectedPlan
// names the plan after a click on its root; one on empty space raises the first two alone. Moving
// the selection by the keyboard raises NodeClick.
class TrvCurrentEvents {
public:
    TrvCurrentEvents(modMain& state, Workbench& workbench, const Services& services,
                     preview::DocumentPreview& preview);

    // See countAsClicked.
    void NodeClick(const OutlineNode& node);
    // `hit` is the node under the pointer, null for none: it is selected. Answers what to pop up.
    PopUp MouseDown(MouseButton button, OutlineNode* hit);
    void Click();
    void KeyDown(int keyCode);
    void DblClick();

private:
    void lookUpForBrowsing(const OutlineNode& node);

    modMain& state_;
    Workbench& workbench_;
    Services services_;
    preview::DocumentPreview& preview_;
};

} // namespace qvnd::outline
