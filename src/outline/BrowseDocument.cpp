#include "outline/BrowseDocument.h"

#include "outline/BareNames.h"
#include "outline/LibraryTree.h"
#include "outline/OutlineKeys.h"
#include "outline/OutlineRows.h"
#include "outline/QueryText.h"
#include "platform/error/RunTimeError.h"
#include "store/Names.h"

namespace qvnd::outline {

using desktop::Icon;

namespace {

// The document view's own "cannot open the file".
constexpr long documentNotShown = 31024;

OutlineNode& selectedNode(const Workbench& workbench) {
    OutlineNode* selected = workbench.TrvCurrent.SelectedItem();
    if (!selected) {
        throw RunTimeError(error::objectNotSet, u"未设置对象变量：没有选中节点");
    }
    return *selected;
}

void dropDocument(modMain& state, Workbench& workbench, const Services& services,
                  const QString& key, const QString& path) {
    services.messages.tell("找不到 [ " + path + " ] \n此文件可能是被删除了,或是文件路径名不正确！",
                           Icon::exclamation, QStringLiteral("提示"));
    OutlineTree& tree = workbench.TrvCurrent;
    const QString table = bracketedName(tree.Item(1).Text());
    state.gDbUser->Execute("DELETE * FROM " + table + " WHERE KEY=" + quoted(key));
    tree.Remove(key);
    updateTreeTemplate(state, *state.gDbUser, workbench.TrvTemplate_Us, false, services.messages,
                       services.splash);
}

void tellFailure(const RunTimeError& failure, desktop::MessageBoxes& messages) {
    if (failure.number() == documentNotShown) {
        messages.tell(
            QStringLiteral("浏览文档时发生错误。可能是你的系统不稳定所造成，请重新启动计算机！"),
            Icon::exclamation, QStringLiteral("错误提示"));
    } else if (failure.number() != error::objectNotSet && failure.number() != 0) {
        messages.tell(QString::fromStdU16String(failure.description()), Icon::none,
                      QStringLiteral("提示"));
    }
}

} // namespace

void mnuBrowseDoc(modMain& state, Workbench& workbench, desktop::MessageBoxes& messages,
                  preview::DocumentPreview& preview) {
    try {
        const QString& key = selectedNode(workbench).Key();
        const QString plan = tableOfKey(key);
        const auto row = state.gDbUser->OpenRecordset(rowQuery(plan, key));
        if (row->Get(store::field::isDocument).TextOrEmpty() == u"是") {
            preview.show(documentPath(state, plan, key));
        }
    } catch (const RunTimeError&) {
        messages.tell(QStringLiteral("打开文档时出现意外的错误！"));
    }
}

void browseOrDropDocument(modMain& state, Workbench& workbench, const Services& services,
                          preview::DocumentPreview& preview) {
    try {
        const OutlineNode& selected = selectedNode(workbench);
        if (selected.Image() != image::document) {
            return;
        }
        const QString key = selected.Key();
        const QString path = documentPath(state, workbench.TrvCurrent.Item(1).Text(), key);
        if (state.gFso->FileExists(path)) {
            preview.show(path);
        } else {
            dropDocument(state, workbench, services, key, path);
        }
    } catch (const RunTimeError& failure) {
        tellFailure(failure, services.messages);
    }
}

} // namespace qvnd::outline
