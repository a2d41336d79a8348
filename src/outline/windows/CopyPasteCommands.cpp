#include "outline/CopyPaste.h"
#include "outline/windows/WorkbenchCommands.h"

namespace qvnd::outline {

void WorkbenchCommands::mnuCopy() { outline::mnuCopy(parts_.workbench); }

void WorkbenchCommands::mnuPaste() {
    outline::mnuPaste(parts_.state, parts_.workbench, parts_.services);
}

void WorkbenchCommands::toolbarPaste() {
    outline::toolbarPaste(parts_.state, parts_.workbench, parts_.services);
}

} // namespace qvnd::outline
