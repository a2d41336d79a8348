#include "outline/NodeCommands.h"

#include "outline/OutlineKeys.h"
#include "outline/OutlineRows.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/error/RunTimeError.h"

#include <algorithm>

namespace qvnd::outline {

namespace {

void setMenu(Workbench& workbench, const NodeCommands& commands) {
    workbench.mnuBrowseDoc = commands.mnuBrowseDoc;
    workbench.mnuEQFolder = commands.mnuEQFolder;
    workbench.mnuLTFolder = commands.mnuLTFolder;
    workbench.mnuAddDoc = commands.mnuAddDoc;
    workbench.mnuEQDoc = commands.mnuEQDoc;
    workbench.mnuLTDoc = commands.mnuLTDoc;
    workbench.mnuRename = commands.mnuRename;
    workbench.mnuEditDelete = commands.mnuEditDelete;
    workbench.mnuSaveTemplate = commands.mnuSaveTemplate;
}

// The toolbar follows its own positions, separators counted, and not the menu items.
void setToolbar(Workbench& workbench, bool isRoot, bool isDocument) {
    auto& button = workbench.TbarBid;
    button[1] = !isRoot;
    button[2] = !isDocument;
    button[3] = !isRoot;
    button[4] = true;
    button[5] = true;
    button[6] = !isRoot;
    button[7] = isDocument;
    // Closed by a deletion, like the others, until the next click.
    button[8] = true;
    if (!isDocument) {
        button[10] = workbench.pasteArmed;
    }
}

} // namespace

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

void closeNodeCommands(Workbench& workbench) {
    NodeCommands none;
    none.mnuAddDoc = none.mnuLTDoc = none.mnuEditDelete = none.mnuSaveTemplate = false;
    setMenu(workbench, none);
    closeEditButtons(workbench);
    workbench.TbarBid[10] = false;
    workbench.TbarBid[12] = false;
}

void closeEditButtons(Workbench& workbench) {
    constexpr std::size_t lastEditButton = 8;
    std::fill_n(workbench.TbarBid.begin() + 1, lastEditButton, false);
}

void countAsClicked(modMain& state, Workbench& workbench, desktop::MessageBoxes& messages,
                    const OutlineNode& node, Toolbar toolbar) {
    const bool isRoot = depthOfKey(node.Key()) == 0;
    workbench.mnuPaste = workbench.pasteArmed;
    if (isRoot) {
        workbench.mnuDelete = true;
    }
    state.gSelectedPlan = isRoot ? node.Text() : QString();
    workbench.clickedKey = node.Key();
    try {
        if (const auto mark = documentMark(*state.gDbUser, node.Key())) {
            const bool isDocument = !isRoot && *mark == u"是";
            setMenu(workbench, commandsOf(node, isDocument));
            if (toolbar == Toolbar::follows) {
                setToolbar(workbench, isRoot, isDocument);
            }
        }
    } catch (const RunTimeError& failure) {
        messages.tell(desktop::descriptionOf(failure), desktop::Icon::exclamation,
                      QStringLiteral("提示"));
    }
}

void followSelection(modMain& state, Workbench& workbench, desktop::MessageBoxes& messages) {
    const OutlineNode* selected = workbench.TrvCurrent.SelectedItem();
    if (!selected) {
        workbench.clickedKey.clear();
    } else if (selected->Key() != workbench.clickedKey) {
        countAsClicked(state, workbench, messages, *selected);
    }
}

} // namespace qvnd::outline
