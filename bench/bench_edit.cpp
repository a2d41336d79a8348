// What every command but moving and copying (bench_drag) costs on an outline of ten thousand rows
// with two thousand documents, and how that grows from a tenth of it.

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
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdio>
#include <functional>

namespace {

using namespace qvnd;

const QString plan = QStringLiteral("工程甲");

class Silence : public desktop::MessageBoxes,
                public desktop::SplashScreen,
                public desktop::FileDialogs,
                public desktop::Events,
                public desktop::LongRun,
                public word::ApplicationFactory,
                public preview::DocumentPreview {
public:
    desktop::Answer show(const desktop::Message& message) override {
        if (message.buttons == desktop::Buttons::ok) {
            std::fprintf(stderr, "%s\n", qPrintable(message.text));
        }
        if (message.buttons != desktop::Buttons::yesNo) {
            return desktop::Answer::ok;
        }
        return desktop::Answer::yes;
    }
    void show() override {}
    void tell(const QString& /*text*/) override {}
    void unload() override {}
    void show(const QString& /*path*/) override {}
    void hide() override {}
    desktop::ChosenFile open(const desktop::OpenFileQuestion& /*question*/) override {
        return {chosen, QFileInfo(chosen).fileName()};
    }
    void doEvents() override {}
    void begin(const QString& /*title*/, int /*pieces*/) override {}
    void next(const QString& /*text*/) override {}
    bool isCancelled() override { return false; }
    void end() override {}
    std::unique_ptr<word::Application> create() override { return nullptr; }

    QString chosen;
};

// A plan of so many rows, ten to a folder, a fifth of them documents with their files.
class Plan {
public:
    explicit Plan(int rows) {
        const QString root = files::withSeparator(directory_.path());
        QDir(root).mkpath("plans/" + plan);
        QDir(root).mkpath(QStringLiteral("Sys/标书模板"));
        QDir(root).mkpath(QStringLiteral("Sys/Database"));
        state_.AppPath = root;
        state_.gSysPath = root + "Sys/";
        state_.gUserTplPath = root + "plans/";
        state_.gFso =
            std::make_unique<files::DiskFileSystem>(std::make_unique<desktop::OpenDocuments>());
        state_.gWs = &state_.DBEngine.Workspaces(0);
        state_.gDbUser = state_.gWs->CreateDatabase(root + "user.mdb", {});
        for (const char* table : {"遍历表", "当前表"}) {
            state_.gDbUser->TableDefs().Append(store::nameTable(QString(table)));
            const auto rs = state_.gDbUser->OpenRecordset(QString(table));
            rs->AddNew();
            rs->Set(u"名称", plan);
            rs->Update();
        }
        state_.gDbUser->TableDefs().Append(store::outlineTable(QStringLiteral("temp")));
        state_.gDbTemplate = state_.gWs->CreateDatabase(store::templateLibraryPath(state_), {});
        state_.gDbTemplate->TableDefs().Append(store::nameTable(QStringLiteral("遍历表")));
        state_.gDbUser->TableDefs().Append(store::informationTable(plan));
        fill(*state_.gDbUser, rows, true);
        fill(*state_.gWs->CreateDatabase(store::planDatabasePath(state_, plan), {}), rows, false);
        outline::FillOutlineTree(
            *state_.gDbUser->OpenRecordset("Select * from " + plan + " order by ID asc"),
            workbench_.TrvCurrent);
        outline::updateTreeTemplate(state_, *state_.gDbUser, workbench_.TrvTemplate_Us, false,
                                    silence_, silence_);
    }

    double click(const QString& key) {
        outline::OutlineNode& node = workbench_.TrvCurrent.Item(key);
        outline::TrvCurrentEvents tree(state_, workbench_, services_, silence_);
        return timed([&] {
            tree.MouseDown(outline::MouseButton::left, &node);
            tree.Click();
            tree.NodeClick(node);
        });
    }
    double rename(const QString& key) {
        click(key);
        return timed([&] { outline::AfterLabelEdit(state_, workbench_, silence_, "新名"); });
    }
    double deleteNode(const QString& key) {
        click(key);
        return timed([&] { outline::mnuEditDelete(state_, workbench_, services_); });
    }
    double dropDocument(const QString& key) {
        QFile::remove(outline::documentPath(state_, plan, key));
        click(key);
        outline::TrvCurrentEvents tree(state_, workbench_, services_, silence_);
        return timed([&] { tree.DblClick(); });
    }
    double addFolder(const QString& key, outline::AddMode mode) {
        click(key);
        return timed([&] {
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
        return timed(
            [&] { mode == outline::AddMode::beside ? command.mnuEQDoc() : command.mnuLTDoc(); });
    }
    double openPlan() {
        return timed([&] {
            outline::clickUserPlan(state_, workbench_, silence_,
                                   workbench_.TrvTemplate_Us.Item(plan));
        });
    }
    double savePlan() {
        return timed([&] { outline::saveCurrentPlan(state_, workbench_); });
    }
    double storeTemplate() {
        return timed([&] { outline::mnuSaveTemplate(state_, workbench_, services_); });
    }
    double deleteTemplate(const QString& key) {
        storeTemplate();
        workbench_.TrvTemplate.Select(&workbench_.TrvTemplate.Item(key));
        return timed([&] { outline::mnuDelTemplate(state_, workbench_, services_); });
    }
    double deletePlan() {
        click(plan);
        return timed([&] { plans::mnuDelete(state_, workbench_, silence_); });
    }

private:
    static double timed(const std::function<void()>& command) {
        QElapsedTimer timer;
        timer.start();
        command();
        return static_cast<double>(timer.nsecsElapsed()) / 1e6;
    }

    void fill(jet::Database& db, int rows, bool withFiles) {
        db.TableDefs().Append(store::outlineTable(plan));
        const auto table = db.OpenRecordset(plan);
        outline::addRow(*table, {plan, plan, false});
        QString parent;
        for (int i = 1; i < rows; ++i) {
            const QString number = QString::number(i);
            const bool isFolder = i % 10 == 1;
            const bool isDocument = i % 5 == 3;
            const QString key = (isFolder ? plan : parent) + '.' + number;
            parent = isFolder ? key : parent;
            outline::addRow(*table, {key, "第" + number + "项", isDocument});
            if (isDocument && withFiles) {
                QFile file(outline::documentPath(state_, plan, key));
                (void)file.open(QIODevice::WriteOnly);
            }
        }
    }

    QTemporaryDir directory_;
    modMain state_;
    outline::Workbench workbench_;
    Silence silence_;
    outline::Services services_{silence_, silence_, silence_, silence_, silence_, silence_};
};

struct Times {
    const char* command;
    double (*measure)(Plan&);
};

constexpr auto beside = outline::AddMode::beside;
constexpr auto below = outline::AddMode::below;

const Times commands[] = {
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

int main() {
    constexpr int few = 1000;
    constexpr int many = 10000;
    std::printf("%-32s %12s %12s %8s\n", "command", "1,000 rows", "10,000 rows", "growth");
    for (const Times& times : commands) {
        Plan small(few);
        Plan large(many);
        const double before = times.measure(small);
        const double after = times.measure(large);
        std::printf("%-32s %9.1f ms %9.1f ms %7.1fx\n", times.command, before, after,
                    after / before);
    }
}
