#pragma once

#include "outline/OutlineTree.h"

#include <array>
#include <cstdint>

namespace qvnd::outline {

// As the mouse events of the trees count the buttons.
enum class MouseButton { left = 1, right = 2 };

// What the workbench window (frmBid) holds: its trees, which of its commands are open to the user,
// and what its events hand on to each other. The events set these values; they are not derived from
// the data. Members bear the names of the controls that show them.
struct Workbench {
    OutlineTree TrvCurrent{QStringLiteral("TrvCurrent")};
    OutlineTree TrvTemplate{QStringLiteral("TrvTemplate")};
    OutlineTree TrvTemplate_Us{QStringLiteral("TrvTemplate_Us")};

    // Enabled, for the button and for the items of the menus.
    bool cmdEdit = true;
    bool mnuEdit = true;
    bool mnuDelete = false;
    bool mnuEQFolder = false;
    bool mnuLTFolder = false;
    bool mnuAddDoc = false;
    bool mnuEQDoc = false;
    bool mnuLTDoc = false;
    bool mnuPaste = false;
    bool mnuBrowseDoc = false;
    bool mnuRename = false;
    bool mnuEditDelete = false;
    bool mnuSaveTemplate = false;
    // Visible: the pop-up of TrvTemplate, and the item in it.
    bool mnuDelBrowse = false;
    bool mnuBroTemplate = true;

    // The buttons of TbarBid by their positions, which are counted from 1 with the separators. At
    // first those are open that no event but a deletion closes; the others wait for a node.
    std::array<bool, 16> TbarBid{false, false, false, false, false, false, false, false,
                                 true,  true,  false, true,  false, true,  true,  true};

    // The key of the TrvCurrent node that was clicked last; a node that a command selects counts as
    // clicked.
    QString clickedKey;
    // The text of a node when its in-place renaming began.
    QString textBeforeEdit;
    // The template whose root was clicked last in TrvTemplate; empty otherwise.
    QString selectedTemplate;

    // The TrvCurrent node being dragged, and its Index; the key is empty when none is.
    QString dragKey;
    std::int16_t dragIndex = 0;
    // The drag has ended outside every node, which leaves the key: the next drop moves that node.
    bool isDragLeft = false;
    // The node of a template tree that a drop or a paste copies, and its text.
    QString copySourceKey;
    QString copySourceText;
    // Set by the first mnuCopy, never cleared.
    bool pasteArmed = false;
    // The TrvCurrent node that a drop or a paste goes to, and its Image; 0 when none is under way.
    QString dropTargetKey;
    std::int16_t dropTargetImage = 0;
};

} // namespace qvnd::outline
