#include "outline/CopyPaste.h"

namespace qvnd::outline {

namespace {

constexpr std::size_t positionBehindPaste = 10;

} // namespace

void mnuCopy(Workbench& workbench) {
    if (const OutlineNode* selected = workbench.TrvTemplate.SelectedItem()) {
        workbench.copySourceKey = selected->Key();
        workbench.copySourceText = selected->Text();
        workbench.pasteArmed = true;
    }
}

Pasted mnuPaste(modMain& state, Workbench& workbench, const Services& services) {
    const OutlineNode* target = workbench.TrvCurrent.SelectedItem();
    workbench.dropTargetKey = target ? target->Key() : QString();
    workbench.dropTargetImage = static_cast<std::int16_t>(target ? target->Image() : 0);
    TemplateCopy copy(state, workbench, services);
    Pasted pasted;
    pasted.outcome = copy.DragDrop(workbench.dropTargetKey, workbench.copySourceKey);
    pasted.newKeys = copy.newKeys();
    workbench.dropTargetKey.clear();
    workbench.dropTargetImage = 0;
    workbench.TbarBid[positionBehindPaste] = false;
    return pasted;
}

Pasted toolbarPaste(modMain& state, Workbench& workbench, const Services& services) {
    return mnuPaste(state, workbench, services);
}

} // namespace qvnd::outline
