#include "platform/jet/TransactionScope.h"

#include "platform/error/IgnoringErrors.h"

namespace qvnd::jet {

TransactionScope::TransactionScope(Workspace& workspace) : workspace_(workspace) {
    if (!workspace_.InTransaction()) {
        workspace_.BeginTrans();
        begun_ = true;
    }
}

TransactionScope::~TransactionScope() {
    ignoringErrors([this] { commit(); });
}

void TransactionScope::commit() {
    if (begun_) {
        begun_ = false;
        workspace_.CommitTrans();
    }
}

} // namespace qvnd::jet
