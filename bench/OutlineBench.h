#pragma once

#include "generate/driver/GenerationServices.h"
#include "outline/CurrentPlan.h"
#include "outline/OutlinePaths.h"
#include "outline/OutlineRows.h"
#include "outline/Services.h"
#include "platform/desktop/OpenDocuments.h"
#include "platform/desktop/WordProcessorWindows.h"
#include "platform/files/DiskFileSystem.h"
#include "platform/files/Paths.h"
#include "platform/preview/DocumentPreview.h"
#include "store/Names.h"
#include "store/OutlineFolders.h"
#include "store/PlanLists.h"
#include "store/PlanTables.h"
#include "tools/GenerateServices.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdio>
#include <functional>
#include <span>

// What the benchmarks of the outline's commands share.
namespace qvnd::bench {

// Stands for every service that such a command reaches for. A message without a choice goes to
// standard error: it tells of a command that did not work.
class Silence : public desktop::MessageBoxes,
                public desktop::SplashScreen,
                public desktop::FileDialogs,
                public desktop::Events,
                public desktop::LongRun,
                public desktop::WordProcessorWindows,
                public word::ApplicationFactory,
                public preview::DocumentPreview,
                public tools::NoScreen {
public:
    explicit Silence(desktop::Answer toYesNo = desktop::Answer::no) : toYesNo_(toYesNo) {}

    desktop::Answer show(const desktop::Message& message) override {
        if (message.buttons == desktop::Buttons::ok) {
            std::fprintf(stderr, "%s\n", qPrintable(message.text));
        }
        return message.buttons == desktop::Buttons::yesNo ? toYesNo_ : desktop::Answer::ok;
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
    bool isOpenIn(const QStringList& /*folders*/) override { return false; }
    std::unique_ptr<word::Application> create() override { return nullptr; }

    QString chosen; // the file that a dialog answers with

private:
    desktop::Answer toYesNo_;
};

inline const QString plan = QStringLiteral("工程甲");

// A started program without windows in a folder of its own: its central databases with their lists,
// in which the plan stands and is the open one. Its table is for the benchmark to make.
class OutlineWork {
protected:
    explicit OutlineWork(desktop::Answer toYesNo = desktop::Answer::no) : silence_(toYesNo) {
        const QString root = files::withSeparator(directory_.path());
        for (const QString& folder :
             {"plans/" + plan, QStringLiteral("Sys/标书模板"), QStringLiteral("Sys/Database")})
            QDir(root).mkpath(folder);
        state_.AppPath = directory_.path();
        state_.gSysPath = root + "Sys/";
        state_.gUserTplPath = root + "plans/";
        state_.gFso =
            std::make_unique<files::DiskFileSystem>(std::make_unique<desktop::OpenDocuments>());
        state_.gWs = &state_.DBEngine.Workspaces(0);
        state_.gDbUser = state_.gWs->CreateDatabase(root + "user.mdb", {});
        jet::TableDefs tables = state_.gDbUser->TableDefs();
        tables.Append(store::nameTable(store::table::planList));
        tables.Append(store::nameTable(store::table::currentPlan));
        tables.Append(store::outlineTable(store::table::scratch.toString()));
        store::enlist(*state_.gDbUser, plan);
        outline::setCurrentPlan(*state_.gDbUser, plan);
        state_.gDbTemplate = state_.gWs->CreateDatabase(store::templateLibraryPath(state_), {});
        state_.gDbTemplate->TableDefs().Append(store::nameTable(store::table::planList));
    }

    enum class Files { made, none };
    // Makes the plan's table of so many rows, ten to a folder, a fifth of them documents. `nameOf`
    // gives a row's name by its number.
    void fill(jet::Database& db, int rows, Files files,
              const std::function<QString(int)>& nameOf) const {
        db.TableDefs().Append(store::outlineTable(plan));
        const auto table = db.OpenRecordset(plan);
        outline::addRow(*table, {plan, plan, false});
        QString parent;
        for (int i = 1; i < rows; ++i) {
            const bool isFolder = i % 10 == 1;
            const bool isDocument = i % 5 == 3;
            const QString key = (isFolder ? plan : parent) + '.' + QString::number(i);
            parent = isFolder ? key : parent;
            outline::addRow(*table, {key, nameOf(i), isDocument});
            if (isDocument && files == Files::made) {
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

inline double milliseconds(const std::function<void()>& command) {
    QElapsedTimer timer;
    timer.start();
    command();
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

// A command, and how to measure it on an outline, in milliseconds.
template <class Outline>
struct Times {
    const char* command;
    double (*measure)(Outline&);
};

// Each command on an outline of 1,000 rows and on one of 10,000, made for it, and the growth.
template <class Outline>
void printTimes(std::span<const Times<Outline>> commands) {
    constexpr int few = 1000;
    constexpr int many = 10000;
    std::printf("%-32s %12s %12s %8s\n", "command", "1,000 rows", "10,000 rows", "growth");
    for (const Times<Outline>& times : commands) {
        Outline small(few);
        Outline large(many);
        const double before = times.measure(small);
        const double after = times.measure(large);
        std::printf("%-32s %9.1f ms %9.1f ms %7.1fx\n", times.command, before, after,
                    after / before);
    }
}

} // namespace qvnd::bench
