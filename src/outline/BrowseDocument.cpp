#include "outline/BrowseDocument.h"

#include "outline/LibraryTree.h"
#include "outline/OutlineKeys.h"
#include "outline/OutlinePaths.h"
#include "outline/OutlineRows.h"
#include "outline/QueryText.h"
#include "platform/error/RunTimeError.h"
#include "store/Names.h"

namespace qvnd::outline {

using desktop::Icon;

namespace {

QString selectedKey(const OutlineTree& tree) {
    const OutlineNode* selected = tree.SelectedItem();
    return selected == nullptr ? QString() : selected->Key();
}

void dropDocument(modMain& state, Workbench& workbench, const Services& services,
                  const QString& key, const QString& path) {
    OutlineTree& tree = workbench.TrvCurrent;
    services.messages.tell("找不到 [ " + path +
                               " ] \n此文件可能是被删除了,或是文件路径名不正确！\n" +
                               nameWithKey(tree.Item(key)),
                           Icon::exclamation, QStringLiteral("提示"));
    const QString table = bracketedName(tree.Item(1).Text());
    state.gDbUser->Execute("DELETE * FROM " + table + " WHERE KEY=" + quoted(key));
    OutlineNode* neighbour = neighbourOf(tree, tree.Item(key));
    tree.Remove(key);
    tree.Select(neighbour);
    refreshUserPlans(state, workbench, services.messages, services.splash);
}

void tellFailure(const RunTimeError& failure, const OutlineNode* document,
                 desktop::MessageBoxes& messages) {
    if (failure.number() == error::documentNotShown) {
        const auto sentence =
            QStringLiteral("浏览文档时发生错误。可能是你的系统不稳定所造成，请重新启动计算机！");
        messages.tell(failureText(sentence, failure, document), Icon::exclamation,
                      QStringLiteral("错误提示"));
    } else if (failure.number() != error::objectNotSet && failure.number() != 0) {
        messages.tell(failureText({}, failure, document), Icon::none, QStringLiteral("提示"));
    }
}

} // namespace

void showDocument(modMain& state, preview::DocumentPreview& preview, const QString& path,
                  const std::function<void(const RunTimeError&)>& tell) {
    preview.show(path);
    preview.onLateFailure(desktop::toldBetweenCommands(state.Command, tell));
}

void mnuBrowseDoc(modMain& state, Workbench& workbench, desktop::MessageBoxes& messages,
                  preview::DocumentPreview& preview) {
    OutlineTree& tree = workbench.TrvCurrent;
    const auto tell = [&tree, &messages, key = selectedKey(tree)](const RunTimeError& failure) {
        messages.tell(
            failureText(QStringLiteral("打开文档时出现意外的错误！"), failure, tree.find(key)));
    };
    try {
        const QString& key = tree.Selected().Key();
        const auto row = rowOfKey(*state.gDbUser, key);
        if (row->Get(store::field::isDocument).TextOrEmpty() == u"是") {
            showDocument(state, preview, documentPath(state, tableOfKey(key), key), tell);
        }
    } catch (const RunTimeError& failure) {
        tell(failure);
    }
}

void browseOrDropDocument(modMain& state, Workbench& workbench, const Services& services,
                          preview::DocumentPreview& preview) {
    OutlineTree& tree = workbench.TrvCurrent;
    const auto tell = [&tree, &messages = services.messages,
                       key = selectedKey(tree)](const RunTimeError& failure) {
        tellFailure(failure, tree.find(key), messages);
    };
    try {
        const OutlineNode& selected = tree.Selected();
        if (selected.Image() != image::document) {
            return;
        }
        const QString key = selected.Key();
        const QString path = documentPath(state, tree.Item(1).Text(), key);
        if (state.gFso->FileExists(path)) {
            showDocument(state, preview, path, tell);
        } else {
            dropDocument(state, workbench, services, key, path);
        }
    } catch (const RunTimeError& failure) {
        tell(failure);
    }
}

} // namespace qvnd::outline
