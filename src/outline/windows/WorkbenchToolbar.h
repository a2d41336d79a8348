#pragma once

#include "outline/windows/CommandToolbar.h"

namespace qvnd::outline {

struct Workbench;

// The toolbar (TbarBid), with 15 positions.
class WorkbenchToolbar : public CommandToolbar {
    Q_OBJECT

public:
    explicit WorkbenchToolbar(QWidget* parent = nullptr);

    void apply(const Workbench& workbench);
};

} // namespace qvnd::outline
