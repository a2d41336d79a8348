#pragma once

#include "outline/windows/CommandToolbar.h"

namespace qvnd::generate {

// The toolbar of the plan edit window (TbarBidSet), with 9 positions.
class BidEditToolbar : public outline::CommandToolbar {
    Q_OBJECT

public:
    static constexpr int generate = 2;
    static constexpr int openDocument = 4;

    explicit BidEditToolbar(QWidget* parent = nullptr);
};

} // namespace qvnd::generate
