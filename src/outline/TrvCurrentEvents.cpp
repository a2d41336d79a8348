#include "outline/TrvCurrentEvents.h"

#include "outline/BrowseDocument.h"
#include "outline/DeleteNode.h"
#include "outline/NodeCommands.h"
#include "outline/OutlineRows.h"
#include "platform/error/IgnoringErrors.h"
#include "store/Names.h"

namespace qvnd::outline {

TrvCurrentEvents::TrvCurrentEvents(modMain& state, Workbench& workbench, const Services& services,
                                   preview::DocumentPreview& preview)
    : state_(state), workbench_(workbench), services_(services), preview_(preview) {}

void TrvCurrentEvents::NodeClick(const OutlineNode& node) {
    countAsClicked(state_, workbench_, services_.messages, node);
}

PopUp TrvCurrentEvents::MouseDown(MouseButton button, OutlineNode* hit) {
    workbench_.selectedTemplate.clear();
    if (!hit) {
        return button == MouseButton::right ? PopUp::onlyMnuNew : PopUp::none;
    }
    workbench_.TrvCurrent.Select(hit);
    workbench_.clickedKey = hit->Key();
    lookUpForBrowsing(*hit);
    if (button != MouseButton::right) {
        return PopUp::none;
    }
    NodeClick(*hit);
    return PopUp::mnuSysEdit;
}

// NodeClick, which follows, tells of a failure.
void TrvCurrentEvents::lookUpForBrowsing(const OutlineNode& node) {
    ignoringErrors([&] {
        if (const auto mark = documentMark(*state_.gDbUser, node.Key())) {
            workbench_.mnuBrowseDoc = *mark != u"否";
        }
    });
}

void TrvCurrentEvents::Click() { state_.gSelectedPlan.clear(); }

void TrvCurrentEvents::KeyDown(int keyCode) {
    if (keyCode == deleteKey) {
        mnuEditDelete(state_, workbench_, services_);
    }
}

void TrvCurrentEvents::DblClick() { browseOrDropDocument(state_, workbench_, services_, preview_); }

} // namespace qvnd::outline
