#pragma once

#include "outline/OutlineTree.h"

#include <array>

namespace qvnd::outline {

// What the workbench window (frmBid) holds: its trees, and which of its commands are open to the
// user. Nothing here is derived from the data at any time: it stays as the last event left it.
struct Workbench {
    OutlineTree TrvCurrent{QStringLiteral("TrvCurrent")};
    OutlineTree TrvTemplate{QStringLiteral("TrvTemplate")};
    OutlineTree TrvTemplate_Us{QStringLiteral("TrvTemplate_Us")};

    bool cmdEdit = true;
    bool mnuEdit = true;
    // The buttons of TbarBid by their positions, which are counted from 1 with the separators.
    std::array<bool, 16> TbarBid{};
};

} // namespace qvnd::outline
