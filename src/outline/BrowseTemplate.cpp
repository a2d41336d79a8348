#include "outline/BrowseTemplate.h"

#include "outline/BrowseDocument.h"
#include "outline/OutlineKeys.h"
#include "outline/OutlinePaths.h"
#include "outline/QueryText.h"
#include "platform/error/RunTimeError.h"

namespace qvnd::outline {

namespace {

using desktop::Icon;

Browsed dropMissing(modMain& state, Workbench& workbench, desktop::MessageBoxes& messages,
                    const QString& key, const QString& path) {
    messages.tell("找不到 [ " + path + " ]\n此文件可能是被删除了,或是文件、路径名不正确！\n" +
                      nameWithKey(workbench.TrvTemplate.Item(key)),
                  Icon::exclamation, desktop::hintTitle);
    const QString table = bracketedName(workbench.TrvTemplate.Item(1).Text());
    state.gDbTemplate->Execute("DELETE * FROM " + table + " WHERE KEY=" + quoted(key));
    workbench.TrvCurrent.Remove(key);
    return Browsed::fileMissing;
}

void tellFailure(const RunTimeError& failure, const OutlineNode* document,
                 desktop::MessageBoxes& messages) {
    if (failure.number() > 0 && failure.number() != error::elementNotFound) {
        messages.tell(failureText({}, failure, document), Icon::exclamation, desktop::hintTitle);
    }
}

Browsed browse(modMain& state, Workbench& workbench, desktop::MessageBoxes& messages,
               preview::DocumentPreview& preview) {
    // A copy: the node may go while the user is told.
    const QString key = workbench.TrvTemplate.Selected().Key();
    const QString path = templateDocumentPath(state, tableOfKey(key), key);
    if (!state.gFso->FileExists(path)) {
        return dropMissing(state, workbench, messages, key, path);
    }
    showDocument(state, preview, path,
                 [&tree = workbench.TrvTemplate, &messages, key](const RunTimeError& failure) {
                     tellFailure(failure, tree.find(key), messages);
                 });
    return Browsed::shown;
}

} // namespace

Browsed mnuBroTemplate(modMain& state, Workbench& workbench, desktop::MessageBoxes& messages,
                       preview::DocumentPreview& preview) {
    try {
        return browse(state, workbench, messages, preview);
    } catch (const RunTimeError& failure) {
        tellFailure(failure, workbench.TrvTemplate.SelectedItem(), messages);
        return failure.number() == error::elementNotFound ? Browsed::fileMissing : Browsed::failed;
    }
}

} // namespace qvnd::outline
