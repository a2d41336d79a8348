#include "outline/windows/WorkbenchToolbar.h"

#include "outline/CommandCaptions.h"
#include "outline/Workbench.h"
#include "outline/windows/OutlineIcons.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace qvnd::outline {

namespace {

std::vector<CommandToolbar::Button> buttons() {
    return {
        {u"同夹"_s, captions::folderBeside, u"folder-beside"_s},
        {u"下夹"_s, captions::folderBelow, u"folder-below"_s},
        {},
        {u"同档"_s, captions::documentBeside, u"document-beside"_s},
        {u"下档"_s, captions::documentBelow, u"document-below"_s},
        {},
        {u"删除"_s, captions::deletion, u"delete"_s},
        {u"重命名"_s, captions::renaming, u"rename"_s},
        {u"浏览"_s, u"浏览文档"_s, u"browse"_s},
        {},
        {u"复制"_s, u"复制"_s, u"copy"_s},
        {u"粘贴"_s, u"粘贴"_s, u"paste"_s},
        {},
        {u"编辑"_s, u"标书编辑"_s, u"edit"_s},
        {u"退出"_s, u"退出"_s, u"exit"_s},
    };
}

} // namespace

WorkbenchToolbar::WorkbenchToolbar(QWidget* parent)
    : CommandToolbar(u"TbarBid"_s, buttons(), parent) {
    addSeparator();
    undo_ = addBehind(u"撤消"_s, u"undo"_s);
    redo_ = addBehind(u"恢复"_s, u"redo"_s);
}

QAction* WorkbenchToolbar::addBehind(const QString& key, const QString& icon) {
    QAction* action = addAction(commandIcon(icon), key);
    action->setObjectName(objectName() + u'_' + key);
    QWidget* face = widgetForAction(action);
    face->setAccessibleName(key);
    face->setFocusPolicy(Qt::TabFocus);
    return action;
}

QString WorkbenchToolbar::tipOf(const QString& key) const {
    const QList<QAction*> all = actions();
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&](const QAction* action) { return action->text() == key; });
    return found == all.end() ? QString() : (*found)->toolTip();
}

void WorkbenchToolbar::applyHistory(const QString& undo, const QString& redo) {
    const auto show = [](QAction* action, const QString& key, const QString& title) {
        action->setEnabled(!title.isEmpty());
        action->setToolTip((key + u' ' + title).trimmed());
    };
    show(undo_, u"撤消"_s, undo);
    show(redo_, u"恢复"_s, redo);
}

void WorkbenchToolbar::apply(const Workbench& workbench) {
    for (int position = 1; position <= positions; ++position) {
        at(position)->setEnabled(workbench.TbarBid[static_cast<std::size_t>(position)]);
    }
}

} // namespace qvnd::outline
