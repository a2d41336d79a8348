#pragma once

#include "outline/Services.h"
#include "outline/Workbench.h"
#include "platform/preview/DocumentPreview.h"
#include "store/modMain.h"

#include <functional>

// Looking at a document of the plan open in TrvCurrent.
namespace qvnd::outline {

// Shows a document in the pane. `tell` is told of a failure that turns out later, once no command
// runs; one at once passes.
void showDocument(modMain& state, preview::DocumentPreview& preview, const QString& path,
                  const std::function<void(const RunTimeError&)>& tell);

// mnuBrowseDoc: shows the document of the selected node in the preview pane when its row says that
// it is one; nothing happens for a folder. Any failure is told in one fixed sentence, with its
// cause behind.
void mnuBrowseDoc(modMain& state, Workbench& workbench, desktop::MessageBoxes& messages,
                  preview::DocumentPreview& preview);

// A double click in TrvCurrent. A selected document is shown in the preview pane. When its file is
// gone, the user is told, and the document goes from the working table (its own row alone) and from
// the tree (with all below it), whose neighbour is then selected. The plan's name is taken from the
// text of the tree's first node. Nothing happens on a folder, on a root and without a selection. A
// failure is told; nothing passes.
void browseOrDropDocument(modMain& state, Workbench& workbench, const Services& services,
                          preview::DocumentPreview& preview);

} // namespace qvnd::outline
