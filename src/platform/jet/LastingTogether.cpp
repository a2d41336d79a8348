#include "platform/jet/LastingTogether.h"

#include "platform/error/IgnoringErrors.h"

namespace qvnd::jet {

LastingTogether::LastingTogether(Workspace& workspace) : workspace_(workspace) {
    if (!workspace_.InTransaction()) {
        workspace_.BeginTrans();
        begun_ = true;
    }
}

LastingTogether::~LastingTogether() {
    ignoringErrors([this] { end(); });
}

void LastingTogether::end() {
    if (begun_) {
        begun_ = false;
        workspace_.CommitTrans();
    }
}

} // namespace qvnd::jet
