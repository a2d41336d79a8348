#include "outline/CurrentPlan.h"

#include "outline/LibraryTree.h"
#include "outline/NodeCommands.h"
#include "outline/OutlineKeys.h"
#include "outline/QueryText.h"
#include "outline/TreeLoading.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/error/IgnoringErrors.h"
#include "store/Names.h"
#include "store/OutlineFolders.h"
#include "store/PlanLists.h"
#include "store/TableTransfer.h"

#include <QFileInfo>
#include <QStringList>

#include <algorithm>
#include <optional>

namespace qvnd::outline {

namespace {

// More rows are only counted, so that the box stays on the screen.
constexpr qsizetype mostRows = 20;

bool hasPlanFolder(const modMain& state, const QString& name) {
    return store::stateOfPlanFolder(state, name) == store::FolderState::there;
}

void showCurrentPlan(modMain& state, Workbench& workbench, desktop::SplashScreen& splash) {
    const QString name = store::currentPlan(*state.gDbUser).value_or(QString());
    if (hasPlanFolder(state, name)) {
        const auto rs =
            state.gDbUser->OpenRecordset("Select * from [" + name + "] order by ID asc");
        workbench.TrvCurrent.Clear();
        updateTree(*rs, workbench.TrvCurrent, {}, splash);
    }
}

QStringList listed(jet::Database& db) {
    QStringList names;
    ignoringErrors([&] { names = store::listedNames(db); });
    return names;
}

// The rows of an outline as the user reads them, in order.
struct OutlineFaults {
    QStringList oddKeys; // not the outline's name with numbers behind
    QStringList hidden;  // from the first on whose parent is not there
};

OutlineFaults faultsOf(jet::Database& db, const QString& table) {
    OutlineFaults faults;
    QStringList rows;
    ignoringErrors([&] {
        const auto rs =
            db.OpenRecordset("Select * from " + bracketedName(table) + " order by ID asc");
        for (; !rs->Eof(); rs->MoveNext()) {
            const QString key = rs->Get(store::field::key).TextOrEmpty();
            rows << QStringLiteral("%1（%2）").arg(rs->Get(store::field::name).TextOrEmpty(), key);
            if (!isKeyOf(table, key)) {
                faults.oddKeys << rows.back();
            }
        }
        OutlineTree shown(table);
        rs->MoveFirst();
        FillOutlineTree(*rs, shown);
        // A root that the tree refuses lacks no parent.
        faults.hidden = shown.Count() > 0 ? rows.mid(shown.Count()) : QStringList();
    });
    return faults;
}

QString textOf(const QString& outline, const OutlineFaults& faults) {
    QStringList lines;
    if (!faults.oddKeys.isEmpty()) {
        lines << QStringLiteral("收入的“%1”中，下列 %2 个节点的编号不合规则，它们没有对应的文件，"
                                "不能浏览、复制或生成：\n%3")
                     .arg(outline, QString::number(faults.oddKeys.size()),
                          faults.oddKeys.mid(0, mostRows).join(u'\n'));
    }
    if (!faults.hidden.isEmpty()) {
        lines << QStringLiteral("“%1”中有 %2 个节点没有显示，从“%3”起：它的上级不在大纲中。")
                     .arg(outline, QString::number(faults.hidden.size()), faults.hidden.front());
    }
    return lines.join(u'\n');
}

// Of the outlines that have come since `before`. They may have been made by anyone.
void tellFaults(jet::Database& db, const QStringList& before, desktop::MessageBoxes& messages) {
    for (const QString& name : listed(db)) {
        const QString text = before.contains(name) ? QString() : textOf(name, faultsOf(db, name));
        if (!text.isEmpty()) {
            messages.tell(text, desktop::Icon::exclamation, QStringLiteral("提示"));
        }
    }
}

// A database of an older installation, all of whose outlines have come with this start.
void tellFaultsOfTakenOver(const modMain& state, jet::Database& db,
                           desktop::MessageBoxes& messages) {
    const QString file = QFileInfo(db.Name()).fileName();
    const auto& all = state.LegacyTakeovers;
    if (std::any_of(all.begin(), all.end(), [&](const store::LegacyTakeover& taken) {
            return taken.Kind == store::LegacyKind::central && taken.Name == file;
        })) {
        tellFaults(db, {}, messages);
    }
}

} // namespace

void setCurrentPlan(jet::Database& db, const QString& name) {
    const auto current = store::openCurrentPlan(db);
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
    const auto refresh = [&] { refreshTemplates(state, workbench, messages, splash); };
    const QStringList before = listed(*state.gDbTemplate);
    store::ImportTemplateFolders(state, {refresh, splash, messages});
    tellFaults(*state.gDbTemplate, before, messages);
}

void adoptPlanFolders(modMain& state, Workbench& workbench, desktop::MessageBoxes& messages,
                      desktop::SplashScreen& splash) {
    const auto refresh = [&] { refreshUserPlans(state, workbench, messages, splash); };
    const QStringList before = listed(*state.gDbUser);
    store::ImportPlanFolders(state, {refresh, splash, messages});
    tellFaults(*state.gDbUser, before, messages);
}

void loadWorkbench(modMain& state, Workbench& workbench, desktop::MessageBoxes& messages,
                   desktop::SplashScreen& splash) {
    try {
        showCurrentPlan(state, workbench, splash);
        tellFaultsOfTakenOver(state, *state.gDbTemplate, messages);
        tellFaultsOfTakenOver(state, *state.gDbUser, messages);
        adoptTemplateFolders(state, workbench, messages, splash);
        adoptPlanFolders(state, workbench, messages, splash);
        const auto name = store::currentPlan(*state.gDbUser);
        offerPlanCommands(workbench, name && hasPlanFolder(state, *name));
        if (workbench.TrvCurrent.Count() > 0) {
            workbench.TrvCurrent.Select(&workbench.TrvCurrent.Item(workbench.TrvCurrent.Count()));
        }
    } catch (const RunTimeError& failure) {
        splash.unload();
        messages.tell(desktop::descriptionOf(failure), desktop::Icon::exclamation,
                      QStringLiteral("提示"));
    }
}

void saveCurrentPlan(modMain& state, const Workbench& workbench) {
    const OutlineTree& tree = workbench.TrvCurrent;
    if (tree.Count() > 0 && hasPlanFolder(state, tree.Item(1).Text())) {
        store::SaveCurrentPlanTables(state, tree.Item(1).Text());
    }
}

void forgetPlan(modMain& state, Workbench& workbench) {
    workbench.clickedKey.clear();
    state.gSelectedPlan.clear();
    offerPlanCommands(workbench, false);
    closeNodeCommands(workbench);
    workbench.TbarBid[9] = false;
    workbench.mnuDelete = false;
    workbench.mnuPaste = false;
}

bool opensPlan(modMain& state, const OutlineNode& node) {
    return node.Image() == image::root ||
           store::currentPlan(*state.gDbUser) != tableOfKey(node.Key());
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
