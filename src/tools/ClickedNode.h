#pragma once

#include <QString>

namespace qvnd::outline {
class OutlineNode;
}

namespace qvnd::tools {

class Session;

// Opens the plan and clicks the node as a user does, so that it is selected and the workbench
// enables what it enables there. Null, with a note on standard error, when there is no such node.
outline::OutlineNode* clickNode(Session& session, const QString& plan, const QString& key);

} // namespace qvnd::tools
