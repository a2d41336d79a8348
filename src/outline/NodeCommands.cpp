#include "outline/NodeCommands.h"

#include "outline/OutlineKeys.h"

namespace qvnd::outline {

NodeCommands commandsOf(const OutlineNode& node, bool isDocument) {
    NodeCommands commands;
    if (depthOfKey(node.Key()) == 0) {
        commands.mnuLTFolder = true;
        return commands;
    }
    const bool belowDocument = node.Parent() && node.Parent()->Image() == image::document;
    commands.mnuBrowseDoc = isDocument;
    commands.mnuEQFolder = !(isDocument && belowDocument);
    commands.mnuLTFolder = !isDocument;
    commands.mnuEQDoc = true;
    commands.mnuRename = true;
    return commands;
}

} // namespace qvnd::outline
