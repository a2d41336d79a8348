// What every command but moving and copying (bench_drag) costs on an outline of ten thousand rows
// with two thousand documents, and how that grows from a tenth of it.

#include "OutlineBench.h"

#include "outline/AddDocument.h"
#include "outline/CurrentPlan.h"
#include "outline/DeleteNode.h"
#include "outline/DeleteTemplate.h"
#include "outline/LibraryTree.h"
#include "outline/OutlinePaths.h"
#include "outline/OutlineRows.h"
#include "outline/RenameNode.h"
#include "outline/StoreTemplate.h"
#include "outline/TreeLoading.h"
#include "outline/TrvCurrentEvents.h"
#include "outline/dlgAddDoc.h"
#include "plans/DeletePlan.h"
#include "platform/desktop/OpenDocuments.h"
#include "platform/files/DiskFileSystem.h"
#include "platform/files/Paths.h"
#include "store/OutlineFolders.h"
#include "store/PlanTables.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace {

using namespace qvnd;
using bench::plan;

// A plan of so many rows in both its databases, with the files of its documents.
class Plan : bench::OutlineWork {
public:
    explicit Plan(int rows) : OutlineWork(desktop::Answer::yes) {
        const auto nameOf = [](int row) { return QStringLiteral("第 %1 项").arg(row); };
        state_.gDbUser->TableDefs().Append(store::informationTable(plan));
        fill(*state_.gDbUser, rows, Files::made, nameOf);
        fill(*state_.gWs->CreateDatabase(store::planDatabasePath(state_, plan), {}), rows,
             Files::none, nameOf);
        outline::FillOutlineTree(
            *state_.gDbUser->OpenRecordset("Select * from " + plan + " order by ID asc"),
            workbench_.TrvCurrent);
        outline::updateTreeTemplate(state_, *state_.gDbUser, workbench_.TrvTemplate_Us, false,
                                    silence_, silence_);
    }

    double click(const QString& key) {
        outline::OutlineNode& node = workbench_.TrvCurrent.Item(key);
        outline::TrvCurrentEvents tree(state_, workbench_, services_, silence_);
        return bench::milliseconds([&] {
            tree.MouseDown(outline::MouseButton::left, &node);
            tree.Click();
            tree.NodeClick(node);
        });
    }
    double rename(const QString& key) {
        click(key);
        return bench::milliseconds(
            [&] { outline::AfterLabelEdit(state_, workbench_, silence_, "新名"); });
    }
    double deleteNode(const QString& key) {
        click(key);
        return bench::milliseconds([&] { outline::mnuEditDelete(state_, workbench_, services_); });
    }
    double dropDocument(const QString& key) {
        QFile::remove(outline::documentPath(state_, plan, key));
        click(key);
        outline::TrvCurrentEvents tree(state_, workbench_, services_, silence_);
        return bench::milliseconds([&] { tree.DblClick(); });
    }
    double addFolder(const QString& key, outline::AddMode mode) {
        click(key);
        return bench::milliseconds([&] {
            outline::dlgAddDoc(state_, workbench_, services_, mode).OK(QStringLiteral("新夹"));
        });
    }
    double addDocument(const QString& key, outline::AddMode mode) {
        click(key);
        silence_.chosen = files::withSeparator(directory_.path()) + "new.doc";
        QFile file(silence_.chosen);
        (void)file.open(QIODevice::WriteOnly);
        file.close();
        outline::AddDocument command(state_, workbench_, services_);
        return bench::milliseconds(
            [&] { mode == outline::AddMode::beside ? command.mnuEQDoc() : command.mnuLTDoc(); });
    }
    double openPlan() {
        return bench::milliseconds([&] {
            outline::clickUserPlan(state_, workbench_, silence_,
                                   workbench_.TrvTemplate_Us.Item(plan));
        });
    }
    double savePlan() {
        return bench::milliseconds([&] { outline::saveCurrentPlan(state_, workbench_); });
    }
    double storeTemplate() {
        return bench::milliseconds(
            [&] { outline::mnuSaveTemplate(state_, workbench_, services_); });
    }
    double deleteTemplate(const QString& key) {
        storeTemplate();
        workbench_.TrvTemplate.Select(&workbench_.TrvTemplate.Item(key));
        return bench::milliseconds([&] { outline::mnuDelTemplate(state_, workbench_, services_); });
    }
    double deletePlan() {
        click(plan);
        return bench::milliseconds([&] { plans::mnuDelete(state_, workbench_, silence_); });
    }
};

constexpr auto beside = outline::AddMode::beside;
constexpr auto below = outline::AddMode::below;

const bench::Times<Plan> commands[] = {
    {"click", [](Plan& p) { return p.click(plan + ".11.13"); }},
    {"folder beside the first", [](Plan& p) { return p.addFolder(plan + ".1", beside); }},
    {"folder below", [](Plan& p) { return p.addFolder(plan + ".21", below); }},
    {"document beside the first", [](Plan& p) { return p.addDocument(plan + ".1", beside); }},
    {"document below", [](Plan& p) { return p.addDocument(plan + ".21", below); }},
    {"open the plan", [](Plan& p) { return p.openPlan(); }},
    {"save to the plan's folder", [](Plan& p) { return p.savePlan(); }},
    {"store as template (copies files)", [](Plan& p) { return p.storeTemplate(); }},
    {"delete a ninth of a template", [](Plan& p) { return p.deleteTemplate(plan + ".1"); }},
    {"delete a template", [](Plan& p) { return p.deleteTemplate(plan); }},
    {"rename", [](Plan& p) { return p.rename(plan + ".11.13"); }},
    {"drop a document without file", [](Plan& p) { return p.dropDocument(plan + ".21.23"); }},
    {"delete a folder of ten", [](Plan& p) { return p.deleteNode(plan + ".31"); }},
    {"delete a ninth of all", [](Plan& p) { return p.deleteNode(plan + ".1"); }},
    {"delete the root", [](Plan& p) { return p.deleteNode(plan); }},
    {"delete the plan", [](Plan& p) { return p.deletePlan(); }},
};

} // namespace

int main() { bench::printTimes<Plan>(commands); }
