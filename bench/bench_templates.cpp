// What storing a plan as a template, pruning the template, its mouse events and the list of similar
// documents cost on an outline of ten thousand rows with two thousand documents, and how that grows
// from a tenth of it.

#include "generate/SimilarDocuments.h"
#include "outline/DeleteTemplate.h"
#include "outline/OutlinePaths.h"
#include "outline/OutlineRows.h"
#include "outline/StoreTemplate.h"
#include "outline/TreeLoading.h"
#include "outline/TrvTemplateEvents.h"
#include "platform/desktop/OpenDocuments.h"
#include "platform/files/DiskFileSystem.h"
#include "platform/files/Paths.h"
#include "store/PlanTables.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>
#include <functional>

namespace {

using namespace qvnd;

const QString plan = QStringLiteral("工程甲");
const QString documentName = QStringLiteral("管理目标");

void require(bool well, const char* what) {
    if (!well) {
        std::fprintf(stderr, "%s failed\n", what);
        std::exit(1);
    }
}

class Silence : public desktop::MessageBoxes,
                public desktop::SplashScreen,
                public desktop::FileDialogs,
                public desktop::Events,
                public desktop::LongRun,
                public desktop::WordProcessorWindows,
                public word::ApplicationFactory,
                public preview::DocumentPreview,
                public generate::BidEditScreen {
public:
    desktop::Answer show(const desktop::Message& /*message*/) override {
        return desktop::Answer::ok;
    }
    void show() override {}
    void tell(const QString& /*text*/) override {}
    void unload() override {}
    void show(const QString& /*path*/) override {}
    void hide() override {}
    desktop::ChosenFile open(const desktop::OpenFileQuestion& /*question*/) override { return {}; }
    void doEvents() override {}
    void begin(const QString& /*title*/, int /*pieces*/) override {}
    void next(const QString& /*text*/) override {}
    bool isCancelled() override { return false; }
    void end() override {}
    bool isOpenIn(const QStringList& /*folders*/) override { return false; }
    std::unique_ptr<word::Application> create() override { return nullptr; }
    void showHourglass() override {}
    void showNormalPointer() override {}
    void turnPreviewOn() override {}
    void turnPreviewOff() override {}
    void removePreview() override {}
    void loadPreview(const QString& /*path*/) override {}
    void updatePreview() override {}
    void activatePreview() override {}
};

// A plan of so many rows, ten to a folder, a fifth of them documents of one name with their files.
class Library {
public:
    explicit Library(int rows) {
        const QString root = files::withSeparator(directory_.path());
        QDir(root).mkpath("plans/" + plan);
        QDir(root).mkpath("Sys/标书模板");
        QDir(root).mkpath("Sys/Database");
        state_.gUserTplPath = root + "plans/";
        state_.gSysPath = root + "Sys/";
        state_.gFso =
            std::make_unique<files::DiskFileSystem>(std::make_unique<desktop::OpenDocuments>());
        state_.gWs = &state_.DBEngine.Workspaces(0);
        state_.gDbUser = state_.gWs->CreateDatabase(root + "user.mdb", {});
        state_.gDbUser->TableDefs().Append(store::nameTable(u"当前表"));
        const auto current = state_.gDbUser->OpenRecordset(QStringLiteral("当前表"));
        current->AddNew();
        current->Set(u"名称", plan);
        current->Update();
        state_.gDbTemplate = state_.gWs->CreateDatabase(root + "Sys/Database/Db_Template.mdb", {});
        state_.gDbTemplate->TableDefs().Append(store::nameTable(u"遍历表"));
        fill(rows);
    }

    double storePlan() {
        return timed([&] {
            require(outline::mnuSaveTemplate(state_, workbench_, services_).result ==
                        outline::Stored::stored,
                    "store");
        });
    }
    // The rest is done to the stored template.
    double press(const QString& key) {
        storePlan();
        outline::OutlineNode& node = workbench_.TrvTemplate.Item(key);
        outline::TrvTemplateEvents tree(state_, workbench_, silence_, silence_);
        return timed([&] { tree.MouseDown(outline::MouseButton::right, &node); });
    }
    double remove(const QString& key) {
        storePlan();
        workbench_.TrvTemplate.Select(&workbench_.TrvTemplate.Item(key));
        return timed([&] {
            require(outline::mnuDelTemplate(state_, workbench_, services_).result ==
                        outline::TemplateDeleted::deleted,
                    "delete");
        });
    }
    double listSimilar() {
        storePlan();
        outline::OutlineTree TrvEdit(QStringLiteral("TrvEdit"));
        TrvEdit.Select(&TrvEdit.Add(plan + ".1", documentName, outline::image::document,
                                    outline::image::documentSelected));
        generate::WordSession word;
        generate::SimilarDocuments dialog(state_, TrvEdit,
                                          {silence_, silence_, silence_, silence_, word, silence_});
        return timed([&] {
            dialog.Load();
            require(!dialog.ListView1().empty(), "list");
        });
    }

private:
    static double timed(const std::function<void()>& command) {
        QElapsedTimer timer;
        timer.start();
        command();
        return static_cast<double>(timer.nsecsElapsed()) / 1e6;
    }

    void fill(int rows) {
        state_.gDbUser->TableDefs().Append(store::outlineTable(plan));
        const auto table = state_.gDbUser->OpenRecordset(plan);
        outline::addRow(*table, {plan, plan, false});
        QString parent;
        for (int i = 1; i < rows; ++i) {
            const QString number = QString::number(i);
            const bool isFolder = i % 10 == 1;
            const bool isDocument = i % 5 == 3;
            const QString key = (isFolder ? plan : parent) + '.' + number;
            parent = isFolder ? key : parent;
            outline::addRow(*table, {key, documentName, isDocument});
            if (isDocument) {
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
    double (*measure)(Library&);
};

const Times commands[] = {
    {"store the plan", [](Library& l) { return l.storePlan(); }},
    {"right button on a document", [](Library& l) { return l.press(plan + ".11.13"); }},
    {"right button on the root", [](Library& l) { return l.press(plan); }},
    {"delete a folder of ten", [](Library& l) { return l.remove(plan + ".31"); }},
    {"delete a ninth of all", [](Library& l) { return l.remove(plan + ".1"); }},
    {"delete the template", [](Library& l) { return l.remove(plan); }},
    {"list similar documents", [](Library& l) { return l.listSimilar(); }},
};

} // namespace

int main() {
    constexpr int few = 1000;
    constexpr int many = 10000;
    std::printf("%-32s %12s %12s %8s\n", "command", "1,000 rows", "10,000 rows", "growth");
    for (const Times& times : commands) {
        Library small(few);
        Library large(many);
        const double before = times.measure(small);
        const double after = times.measure(large);
        std::printf("%-32s %9.1f ms %9.1f ms %7.1fx\n", times.command, before, after,
                    after / before);
    }
}
