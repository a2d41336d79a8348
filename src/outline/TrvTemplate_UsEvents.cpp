#include "outline/TrvTemplate_UsEvents.h"

#include "outline/BrowseDocument.h"
#include "outline/OutlineKeys.h"
#include "outline/OutlinePaths.h"
#include "platform/error/RunTimeError.h"

namespace qvnd::outline {

TrvTemplate_UsEvents::TrvTemplate_UsEvents(modMain& state, Workbench& workbench,
                                           desktop::MessageBoxes& messages,
                                           preview::DocumentPreview& preview)
    : state_(state), workbench_(workbench), messages_(messages), preview_(preview) {}

void TrvTemplate_UsEvents::DblClick() {
    const OutlineNode* selected = workbench_.TrvTemplate_Us.SelectedItem();
    if (!selected || selected->Image() != image::document) {
        return;
    }
    const auto tell = [&tree = workbench_.TrvTemplate_Us, &messages = messages_,
                       key = selected->Key()](const RunTimeError& failure) {
        messages.tell(
            failureText(QStringLiteral("打开文档时出现意外的错误！"), failure, tree.find(key)));
    };
    try {
        show(*selected, tell);
    } catch (const RunTimeError& failure) {
        tell(failure);
    }
}

void TrvTemplate_UsEvents::show(const OutlineNode& document,
                                const std::function<void(const RunTimeError&)>& tell) {
    const QString path = documentPath(state_, tableOfKey(document.Key()), document.Key());
    if (state_.gFso->FileExists(path)) {
        showDocument(state_, preview_, path, tell);
    } else {
        messages_.tell("文件没找到。可能是被删除或是文件路径不正确！\n" + nameWithKey(document),
                       desktop::Icon::exclamation, QStringLiteral("提示"));
    }
}

void TrvTemplate_UsEvents::MouseDown(OutlineNode* hit) {
    if (hit) {
        workbench_.TrvTemplate_Us.Select(hit);
        workbench_.copySourceKey = hit->Key();
        workbench_.copySourceText = hit->Text();
    }
}

} // namespace qvnd::outline
