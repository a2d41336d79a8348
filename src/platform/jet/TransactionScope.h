#pragma once

#include "platform/jet/Workspace.h"

namespace qvnd::jet {

// Begins a transaction of the workspace and commits it, so that a killed process leaves all changes
// of a command or none. There is no rollback: the destructor commits as well, so that a failure
// keeps what was done before it. Does nothing while a transaction of an earlier command is open.
class TransactionScope {
public:
    explicit TransactionScope(Workspace& workspace);
    ~TransactionScope(); // as commit, but swallows errors
    TransactionScope(const TransactionScope&) = delete;
    TransactionScope& operator=(const TransactionScope&) = delete;

    // Errors of the store pass through. A second call does nothing.
    void commit();

private:
    Workspace& workspace_;
    bool begun_ = false;
};

} // namespace qvnd::jet
