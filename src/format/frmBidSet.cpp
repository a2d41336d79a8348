#include "format/frmBidSet.h"

namespace qvnd::format {

frmBidSet::frmBidSet(modMain& state, const FormatServices& services)
    : state_(state), services_(services) {}

BidSetForm& frmBidSet::form() {
    if (!form_) {
        form_ = std::make_unique<BidSetForm>(state_, services_);
    }
    return *form_;
}

void frmBidSet::Unload() {
    form_.reset();
    state_.FormatSwitches.gBidSetLoaded = false;
}

} // namespace qvnd::format
