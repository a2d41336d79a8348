#pragma once

#include "platform/jet/Workspace.h"

namespace qvnd::jet {

// What a command changes while this stands lasts together, so that a killed process leaves all of
// it or nothing. A failure on the way takes nothing back: what was done up to there lasts at the
// end of this object. In a transaction that an earlier command has left open nothing is begun, and
// nothing committed.
class LastingTogether {
public:
    explicit LastingTogether(Workspace& workspace);
    ~LastingTogether(); // as end, a failure going unnoticed
    LastingTogether(const LastingTogether&) = delete;
    LastingTogether& operator=(const LastingTogether&) = delete;

    // Makes it all lasting; errors of the store pass through.
    void end();

private:
    Workspace& workspace_;
    bool begun_ = false;
};

} // namespace qvnd::jet
