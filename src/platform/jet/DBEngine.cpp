#include "platform/jet/DBEngine.h"

#include "platform/jet/Failure.h"

namespace qvnd::jet {

Workspace& DBEngine::Workspaces(int index) {
    if (index != 0) {
        failItemNotFound(QString::number(index));
    }
    return first_;
}

} // namespace qvnd::jet
