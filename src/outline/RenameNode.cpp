#include "outline/RenameNode.h"

#include "outline/OutlineRows.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/error/RunTimeError.h"
#include "store/Names.h"

namespace qvnd::outline {

using desktop::Icon;

namespace {

void tellFailure(const RunTimeError& failure, desktop::MessageBoxes& messages) {
    messages.tell(desktop::descriptionOf(failure), Icon::exclamation, QStringLiteral("提示"));
}

void rename(modMain& state, Workbench& workbench, const QString& newString) {
    OutlineNode& selected = workbench.TrvCurrent.Selected();
    const auto row = rowOfKey(*state.gDbUser, workbench.clickedKey);
    row->Edit();
    row->Set(store::field::name, newString);
    row->Update();
    workbench.TrvCurrent.setText(selected, newString);
}

} // namespace

OutlineNode* mnuRename(Workbench& workbench, desktop::MessageBoxes& messages) {
    try {
        return &workbench.TrvCurrent.Selected();
    } catch (const RunTimeError& failure) {
        tellFailure(failure, messages);
        return nullptr;
    }
}

void BeforeLabelEdit(Workbench& workbench, const OutlineNode& node) {
    workbench.textBeforeEdit = node.Text();
}

bool AfterLabelEdit(modMain& state, Workbench& workbench, desktop::MessageBoxes& messages,
                    const QString& newString) {
    bool isTaken = false;
    if (newString.isEmpty()) {
        messages.tell(QStringLiteral("对不起，名称不能为空"), Icon::information);
    } else {
        try {
            rename(state, workbench, newString);
            isTaken = true;
        } catch (const RunTimeError& failure) {
            tellFailure(failure, messages);
            return false;
        }
    }
    workbench.mnuRename = true;
    return isTaken;
}

} // namespace qvnd::outline
