#include "outline/DeleteTemplate.h"

#include "outline/BeyondAsked.h"
#include "outline/LibraryTree.h"
#include "outline/OutlineKeys.h"
#include "outline/QueryText.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/error/IgnoringErrors.h"
#include "platform/jet/TextPattern.h"
#include "store/OutlineFolders.h"

#include <QStringList>

namespace qvnd::outline {

namespace {

using desktop::Icon;

bool isMeant(const OutlineNode& node, desktop::MessageBoxes& messages) {
    return messages.show({"您真的要删除‘" + node.Text() + "’吗？",
                          Icon::none,
                          {},
                          desktop::Buttons::okCancel}) == desktop::Answer::ok;
}

void deleteFolder(modMain& state, const QString& folder, desktop::MessageBoxes& messages) {
    for (;;) {
        try {
            state.gFso->DeleteFolder(folder, false);
            return;
        } catch (const RunTimeError& failure) {
            if (failure.number() != error::permissionDenied ||
                !messages.askForRetry(QStringLiteral("请关闭你正在使用的东西！"), Icon::exclamation,
                                      QStringLiteral("提示"))) {
                throw;
            }
        }
    }
}

void deleteTemplate(modMain& state, Workbench& workbench, const QString& name,
                    desktop::MessageBoxes& messages) {
    const QString folder = store::templateFolder(state, name);
    state.gDbTemplate->TableDefs().Delete(name);
    workbench.TrvTemplate.Remove(name);
    workbench.mnuBroTemplate = false;
    {
        const auto listed =
            state.gDbTemplate->OpenRecordset("Select * from 遍历表 Where 名称=" + quoted(name));
        listed->Delete();
    }
    state.gWs->CommitTrans();
    deleteFolder(state, folder, messages);
}

void deleteRows(modMain& state, const QString& name, const QString& key) {
    const QString statement = "Delete * from " + bareName(name) + subtreeCondition(name, key);
    {
        const auto copy = state.gWs->OpenDatabase(store::templateDatabasePath(state, name));
        copy->Execute(statement);
        copy->Close();
    }
    state.gDbTemplate->Execute(statement);
}

// A file in use stays, and only the Remarks tell it. File names are compared without case, as the
// rows' keys were.
void deleteFiles(modMain& state, const QString& name, const QString& key) {
    if (!isKeyOf(name, key)) {
        return; // it names no file
    }
    std::vector<files::Entry> entries;
    ignoringError(error::permissionDenied,
                  [&] { entries = state.gFso->Files(store::templateFolder(state, name)); });
    QStringList staying;
    for (const files::Entry& file : entries) {
        if (jet::matchesPattern(file.Name, key + u'*') &&
            !ignoringError(error::permissionDenied, [&] { state.gFso->DeleteFile(file.Path); })) {
            staying << file.Name;
        }
    }
    if (!staying.isEmpty()) {
        state.Remarks << QStringLiteral("%1 个文件没有删去，可能正在使用：%2")
                             .arg(QString::number(staying.size()), listed(staying));
    }
}

void deleteNode(modMain& state, Workbench& workbench, const QString& key,
                const Services& services) {
    const QString name = tableOfKey(key);
    deleteRows(state, name, key);
    state.gWs->CommitTrans();
    deleteFiles(state, name, key);
    workbench.TrvTemplate.Remove(key);
    refreshTemplates(state, workbench, services.messages, services.splash);
}

} // namespace

DeleteOutcome mnuDelTemplate(modMain& state, Workbench& workbench, const Services& services) {
    try {
        const OutlineNode& selected = workbench.TrvTemplate.Selected();
        // The node goes before the work is over, and may be another object before it begins.
        const QString key = selected.Key();
        if (!isMeant(selected, services.messages)) {
            return {TemplateDeleted::cancelled, {}};
        }
        state.gWs->BeginTrans();
        if (depthOfKey(key) == 0) {
            deleteTemplate(state, workbench, key, services.messages);
        } else {
            deleteNode(state, workbench, key, services);
        }
        return {};
    } catch (const RunTimeError& failure) {
        return {TemplateDeleted::failed, desktop::descriptionOf(failure)};
    }
}

} // namespace qvnd::outline
