#include "outline/CurrentPlan.h"

#include "outline/LibraryTree.h"
#include "outline/OutlineKeys.h"
#include "outline/TreeLoading.h"
#include "platform/error/RunTimeError.h"
#include "store/Names.h"
#include "store/TableTransfer.h"

#include <optional>

namespace qvnd::outline {

namespace {

std::optional<QString> currentPlan(jet::Database& db) {
    const auto current = db.OpenRecordset(QStringLiteral("Select * from 当前表"));
    return current->Eof() ? std::nullopt
                          : std::optional(current->Get(store::field::name).TextOrEmpty());
}

void showCurrentPlan(modMain& state, Workbench& workbench, desktop::SplashScreen& splash) {
    const QString name = currentPlan(*state.gDbUser).value_or(QString());
    if (!name.isEmpty() && state.gFso->FolderExists(state.gUserTplPath + name)) {
        const auto rs =
            state.gDbUser->OpenRecordset("Select * from [" + name + "] order by ID asc");
        workbench.TrvCurrent.Clear();
        updateTree(*rs, workbench.TrvCurrent, {}, splash);
    }
}

} // namespace

void setCurrentPlan(jet::Database& db, const QString& name) {
    const auto current = db.OpenRecordset(QStringLiteral("Select * from 当前表"));
    if (current->Eof()) {
        current->AddNew();
    } else if (current->Get(store::field::name).TextOrEmpty() == name) {
        return;
    } else {
        current->Edit();
    }
    current->Set(store::field::name, name);
    current->Update();
}

void offerPlanCommands(Workbench& workbench, bool enabled) {
    workbench.cmdEdit = enabled;
    workbench.mnuEdit = enabled;
    workbench.TbarBid[12] = enabled;
}

void adoptTemplateFolders(modMain& state, Workbench& workbench, desktop::MessageBoxes& messages,
                          desktop::SplashScreen& splash) {
    const auto refresh = [&] {
        updateTreeTemplate(state, *state.gDbTemplate, workbench.TrvTemplate, false, messages,
                           splash);
    };
    store::ImportTemplateFolders(state, {refresh, splash, messages});
}

void adoptPlanFolders(modMain& state, Workbench& workbench, desktop::MessageBoxes& messages,
                      desktop::SplashScreen& splash) {
    const auto refresh = [&] {
        updateTreeTemplate(state, *state.gDbUser, workbench.TrvTemplate_Us, false, messages,
                           splash);
    };
    store::ImportPlanFolders(state, {refresh, splash, messages});
}

void loadWorkbench(modMain& state, Workbench& workbench, desktop::MessageBoxes& messages,
                   desktop::SplashScreen& splash) {
    try {
        showCurrentPlan(state, workbench, splash);
        adoptTemplateFolders(state, workbench, messages, splash);
        adoptPlanFolders(state, workbench, messages, splash);
        const auto name = currentPlan(*state.gDbUser);
        offerPlanCommands(workbench, name && state.gFso->FolderExists(state.gUserTplPath + *name));
        if (workbench.TrvCurrent.Count() > 0) {
            workbench.TrvCurrent.Select(&workbench.TrvCurrent.Item(workbench.TrvCurrent.Count()));
        }
    } catch (const RunTimeError& failure) {
        splash.unload();
        messages.tell(QString::fromStdU16String(failure.description()), desktop::Icon::exclamation,
                      QStringLiteral("提示"));
    }
}

void saveCurrentPlan(modMain& state, const Workbench& workbench) {
    const OutlineTree& tree = workbench.TrvCurrent;
    store::SaveCurrentPlanTables(state, tree.Count() > 0 ? std::optional(tree.Item(1).Text())
                                                         : std::nullopt);
}

void clickUserPlan(modMain& state, Workbench& workbench, desktop::SplashScreen& splash,
                   OutlineNode& node) {
    workbench.TrvTemplate_Us.Select(&node);
    if (node.Image() == image::root) {
        saveCurrentPlan(state, workbench);
        updateTreeView(state, node.Key(), workbench.TrvCurrent, splash);
    }
    workbench.TrvTemplate_Us.Expand(node);
    workbench.cmdEdit = true;
    workbench.mnuEdit = true;
    workbench.TbarBid[9] = true;
    setCurrentPlan(*state.gDbUser, tableOfKey(node.Key()));
    workbench.TbarBid[12] = true;
}

} // namespace qvnd::outline
