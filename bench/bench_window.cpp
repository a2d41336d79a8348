// Generates a plan of 400 documents from the plan edit window, with the page numbers of the
// contents and recorded in a history. The first run finds an empty preview, the second one the
// finished document in it. Beside the time stand, of either run,
//   ratio    the time against generating the same plan without a window
//   process  the time against that of the companion's whole process on the same documents
//   events   the part of the time in which events were served
//   longest  the longest time, in milliseconds, for which no event was served
// and where that was. One document of some 300 pages is generated as well, for the longest times
// within a document.

#include "SitePlan.h"
#include "WindowBench.h"

#include "generate/driver/BuildBid.h"
#include "generate/windows/BidEditToolbar.h"
#include "generate/windows/dlgTB.h"
#include "generate/windows/frmBidEdit.h"
#include "platform/desktop/DesktopWindows.h"
#include "platform/desktop/LockFiles.h"
#include "platform/desktop/Processes.h"
#include "platform/desktop/windows/WidgetEvents.h"
#include "platform/history/History.h"
#include "platform/preview/windows/PagePane.h"
#include "startup/GenerationWord.h"
#include "tools/GenerateServices.h"

#include <QDir>
#include <QElapsedTimer>
#include <QLabel>
#include <QProcess>
#include <QProgressBar>
#include <QThread>

#include <algorithm>
#include <iostream>
#include <optional>

namespace qvnd::bench {

namespace {

using namespace Qt::StringLiterals;

// Serves the desktop's events and notes the longest time from one time to the next.
class TimedEvents : public desktop::WidgetEvents {
public:
    void doEvents() override {
        note();
        desktop::WidgetEvents::doEvents();
        serving += static_cast<double>(clock_.nsecsElapsed()) / 1e9;
        note();
    }
    // Begins anew.
    void start() {
        longest = 0;
        serving = 0;
        clock_.start();
    }
    void note() {
        const double passed = static_cast<double>(clock_.nsecsElapsed()) / 1e6;
        clock_.start();
        if (passed > longest) {
            longest = passed;
            place = placeOf ? placeOf() : QString();
        }
    }

    double longest = 0; // milliseconds
    double serving = 0; // seconds
    QString place;
    std::function<QString()> placeOf;

private:
    QElapsedTimer clock_;
};

class NoPdf : public office::PdfPrinter {
    bool isAvailable() const override { return false; }
    void print(const QString& /*document*/, const QString& /*pdf*/) override {}
};
class NoFrame : public generate::BidEditFrame {
    void unloadPlanEditor() override {}
    void showFrmBid() override {}
    void maximizeFrmBid() override {}
    void showStatus(const QString& /*text*/) override {}
};
// Keeps what the work at hand is called, or what work has ended last.
class NamedWork : public desktop::LongRun {
public:
    void begin(const QString& title, int /*pieces*/) override { name = title; }
    void next(const QString& text) override { name = text; }
    bool isCancelled() override { return false; }
    void end() override { name = u"behind "_s + name; }

    QString name;
};
// The plan in its window, and the same generation without one.
class Window {
public:
    explicit Window(int documents, int parts = SiteDocument::usualParts)
        : plan_(documents, parts),
          word_(complaints_, office::OfficeSuite(home_.filePath(u"profile"_s), {}), longRun_,
                events_) {
        recordCommands(plan_.program());
        conversion_ = std::make_unique<preview::PageConversion>(conversionSettings());
        pane_ = new preview::PagePane(*conversion_);
        form_ = std::make_unique<generate::frmBidEdit>(
            generate::frmBidEdit::Parts{{plan_.program(), switches_, session_},
                                        complaints_,
                                        files_,
                                        events_,
                                        longRun_,
                                        word_.factory(),
                                        word_.factory(),
                                        locks_,
                                        windows_,
                                        shell_,
                                        locks_,
                                        pdf_,
                                        word_,
                                        word_.documents(),
                                        controls_,
                                        frame_,
                                        {},
                                        [](long /*step*/) {},
                                        [] {},
                                        *pane_,
                                        *pane_});
        form_->resize(1400, 900);
        form_->show();
        form_->Load();
        QCoreApplication::processEvents();
        events_.placeOf = [this] { return place(); };
    }

    ~Window() { plan_.program().History.reset(); } // observes what goes with the plan
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    modMain& program() { return plan_.program(); }
    double secondsWithout() {
        generate::BidEditState window;
        const generate::GenerationServices services{
            word_.factory(), complaints_, noProgress_, noEvents_, locks_, noScreen_, controls_};
        QElapsedTimer clock;
        clock.start();
        generate::BuildBid({plan_.program(), switches_, session_}, services, window,
                           plan_.TrvEdit());
        return static_cast<double>(clock.nsecsElapsed()) / 1e9;
    }
    double seconds() {
        QElapsedTimer clock;
        events_.start();
        clock.start();
        form_->findChild<generate::BidEditToolbar*>()
            ->at(generate::BidEditToolbar::generate)
            ->trigger();
        const double passed = static_cast<double>(clock.nsecsElapsed()) / 1e9;
        events_.note();
        return passed;
    }
    // Until the preview has got all that it will get of the finished document.
    void settle() const {
        QElapsedTimer clock;
        clock.start();
        while (!pane_->isWhole() && clock.elapsed() < 120'000) {
            QCoreApplication::processEvents();
            QThread::msleep(20);
        }
    }
    int pages() const { return pane_->pageCount(); }
    const TimedEvents& events() const { return events_; }
    const QStringList& complaints() const { return complaints_.texts; }

private:
    // As the program does.
    static void recordCommands(modMain& program) {
        program.History = std::make_unique<history::History>(
            program.gUserTplPath + u".~history"_s,
            history::Places(program.gUserTplPath, {program.gAppPath}), *program.gWs, *program.gFso,
            u"bench"_s);
    }
    preview::ConversionSettings conversionSettings() const {
        preview::ConversionSettings settings;
        settings.profileFolder = home_.filePath(u"preview"_s);
        settings.cacheFolder = home_.filePath(u"pages"_s);
        return settings;
    }
    QString place() const {
        const auto* dialog = form_->findChild<generate::dlgTB*>();
        return dialog && dialog->isVisible()
                   ? dialog->findChild<QLabel*>(u"Label1"_s)->text() + u' ' +
                         QString::number(dialog->findChild<QProgressBar*>()->value())
                   : u"without the dialog, "_s + longRun_.name;
    }

    QTemporaryDir home_;
    SitePlan plan_;
    Complaints complaints_;
    TimedEvents events_;
    tools::NoEvents noEvents_;
    NoFiles files_;
    tools::NoShell shell_;
    NoPdf pdf_;
    NamedWork longRun_;
    NoFrame frame_;
    tools::NoProgress noProgress_;
    tools::NoScreen noScreen_;
    NoControls controls_;
    desktop::SystemProcesses processes_;
    desktop::LockFiles locks_{processes_};
    desktop::DesktopWindows windows_{processes_};
    startup::GenerationWord word_;
    FormatSwitches switches_;
    generate::WordSession session_;
    std::unique_ptr<preview::PageConversion> conversion_;
    preview::PagePane* pane_ = nullptr;
    std::unique_ptr<generate::frmBidEdit> form_;
};

// The companion's process on the same documents, in a program folder of its own.
class Companion {
public:
    explicit Companion(modMain& plan) {
        run({u"init"_s});
        const QString folder = home_.filePath(u"Sys/用户模板/工程/"_s);
        QDir().mkpath(folder);
        for (const QFileInfo& document :
             QDir(plan.gUserTplPath + u"工程"_s).entryInfoList(QDir::Files))
            QFile::copy(document.filePath(), folder + document.fileName());
        const QString database = folder + u"工程.mdb"_s;
        plan.gWs->CreateDatabase(database, {})
            ->TableDefs()
            .Append(store::informationTable(u"工程"_s));
        plan.gDbUser->Execute(u"SELECT * INTO [工程] IN '"_s + database + u"' FROM [工程]"_s);
    }

    // Nothing when it failed.
    std::optional<double> seconds() const {
        QElapsedTimer clock;
        clock.start();
        const bool isDone = run({u"generate"_s, u"工程"_s});
        const double passed = static_cast<double>(clock.nsecsElapsed()) / 1e9;
        return isDone ? std::optional(passed) : std::nullopt;
    }

private:
    bool run(const QStringList& command) const {
        QProcess process;
        process.start(QCoreApplication::applicationDirPath() + u"/qvndctl"_s,
                      QStringList{u"--home"_s, home_.path()} + command);
        return process.waitForFinished(-1) && process.exitStatus() == QProcess::NormalExit &&
               process.exitCode() == 0;
    }

    QTemporaryDir home_;
};

void BM_GenerateFromWindow(benchmark::State& state) {
    Window window(static_cast<int>(state.range(0)));
    const Companion companion(window.program());
    companion.seconds(); // adopts the plan
    const auto process = companion.seconds();
    if (!process) {
        state.SkipWithError("the companion, which has to stand beside the benchmark, failed");
        return;
    }
    window.secondsWithout();
    const double without = window.secondsWithout();
    QStringList places;
    for (int run = 1; state.KeepRunning(); ++run) {
        const double seconds = window.seconds();
        if (!window.complaints().isEmpty()) {
            state.SkipWithError(window.complaints().first().toStdString().c_str());
            return;
        }
        state.SetIterationTime(seconds);
        const std::string number = std::to_string(run);
        state.counters["ratio" + number] = seconds / without;
        state.counters["process" + number] = seconds / *process;
        state.counters["events" + number] = window.events().serving / seconds;
        state.counters["longest" + number] = window.events().longest;
        places << window.events().place;
        window.settle();
    }
    state.SetLabel(places.join(u" | "_s).toStdString());
}

BENCHMARK(BM_GenerateFromWindow)
    ->Arg(400)
    ->Iterations(2)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

// One document of some 300 pages: what takes long within a document.
void BM_GenerateALongDocument(benchmark::State& state) {
    Window window(1, static_cast<int>(state.range(0)));
    QStringList places;
    for (int run = 1; state.KeepRunning(); ++run) {
        state.SetIterationTime(window.seconds());
        if (!window.complaints().isEmpty()) {
            state.SkipWithError(window.complaints().first().toStdString().c_str());
            return;
        }
        state.counters["longest" + std::to_string(run)] = window.events().longest;
        places << window.events().place;
        window.settle();
        state.counters["pages"] = window.pages();
    }
    state.SetLabel(places.join(u" | "_s).toStdString());
}

BENCHMARK(BM_GenerateALongDocument)
    ->Arg(700)
    ->Iterations(2)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
} // namespace

} // namespace qvnd::bench

int main(int argc, char** argv) { return qvnd::bench::runWithoutScreen(argc, argv); }
