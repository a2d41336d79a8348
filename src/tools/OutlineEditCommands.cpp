#include "tools/OutlineEditCommands.h"

#include "outline/CommandCaptions.h"
#include "outline/DeleteNode.h"
#include "outline/OutlineKeys.h"
#include "outline/RenameNode.h"
#include "tools/Arguments.h"
#include "tools/ClickedNode.h"
#include "tools/ProgramRun.h"
#include "tools/Session.h"

#include <QJsonObject>

namespace qvnd::tools {

namespace {

ExitStatus refuse(Session& session, const QString& reason) {
    session.output().note(reason);
    return ExitStatus::refused;
}

ExitStatus deleteNode(Session& session, const QStringList& words) {
    const Arguments arguments(words, {});
    arguments.expectPositions(2, 2);
    const QString key = arguments.position(1);
    if (!clickNode(session, arguments.position(0), key)) {
        return ExitStatus::refused;
    }
    ProgramRun& run = session.program();
    if (!run.workbench().mnuEditDelete) {
        return refuse(session, QStringLiteral("此节点不能删除"));
    }
    const int shownBefore = session.messages().count();
    const auto outcome = outline::mnuEditDelete(run.state(), run.workbench(), run.services());
    if (outcome != outline::Deleted::deleted) {
        const bool onlyAsked = session.messages().count() == shownBefore + 1;
        return outcome == outline::Deleted::failed && onlyAsked
                   ? refuse(session, QStringLiteral("没有全部删除：方案缺少应有的表"))
                   : ExitStatus::refused;
    }
    session.output().result(key, key);
    return ExitStatus::done;
}

ExitStatus renameNode(Session& session, const QStringList& words) {
    const Arguments arguments(words, {});
    arguments.expectPositions(3, 3);
    const outline::OutlineNode* node =
        clickNode(session, arguments.position(0), arguments.position(1));
    if (!node) {
        return ExitStatus::refused;
    }
    ProgramRun& run = session.program();
    if (!run.workbench().mnuRename) {
        return refuse(session, outline::depthOfKey(node->Key()) == 0
                                   ? QStringLiteral("根节点不能重命名")
                                   : QStringLiteral("此节点不能重命名"));
    }
    outline::BeforeLabelEdit(run.workbench(), *node);
    if (!outline::AfterLabelEdit(run.state(), run.workbench(), session.messages(),
                                 arguments.position(2))) {
        return ExitStatus::refused;
    }
    session.output().result(QJsonObject{{"Key", node->Key()}, {"名称", node->Text()}},
                            node->Text());
    return ExitStatus::done;
}

} // namespace

std::vector<Command> outlineEditCommands() {
    return {
        {"outline delete", "方案 键",
         "删除节点，连同键以此开头的所有行，文档文件留在文件夹里；根节点即整个方案", deleteNode,
         outline::captions::deletion},
        {"outline rename", "方案 键 名称", "改节点的名称，键和文件不变", renameNode,
         outline::captions::renaming},
    };
}

} // namespace qvnd::tools
