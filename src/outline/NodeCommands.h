#pragma once

#include "outline/OutlineNode.h"

namespace qvnd::outline {

// Which commands of the workbench a node of the open plan offers. A folder below a document and
// anything beside a root are not among them.
struct NodeCommands {
    bool mnuBrowseDoc = false;
    bool mnuEQFolder = false;
    bool mnuLTFolder = false;
    bool mnuAddDoc = true;
    bool mnuEQDoc = false;
    bool mnuLTDoc = true;
    bool mnuRename = false;
    bool mnuEditDelete = true;
    bool mnuSaveTemplate = true;
};

// By the node's depth and the kind of its row: a key without a point is a root whatever its row
// says; `isDocument` is what the row says.
NodeCommands commandsOf(const OutlineNode& node, bool isDocument);

} // namespace qvnd::outline
