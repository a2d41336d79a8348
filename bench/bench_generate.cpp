// Generates plans of 100, 200 and 400 documents of about 32 kB, the save after each document
// included, with the pages of the contents estimated. Beside the time stand
//   copies  the time against copying the same documents as files
//   growth  the time against that of half as many documents (2.0 is linear)
//   outMB   the finished document, peakMB the process's memory at its highest
// BM_GenerateOfficePages does the same with exact pages from the office suite.

#include "SiteDocument.h"

#include "generate/driver/BuildBid.h"
#include "platform/desktop/LockFiles.h"
#include "platform/desktop/Processes.h"
#include "platform/files/DiskFileSystem.h"
#include "platform/files/Paths.h"
#include "platform/office/OfficePageNumbers.h"
#include "platform/word/engine/EngineApplication.h"
#include "platform/word/layout/LayoutEstimate.h"
#include "store/DatabaseCreation.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <chrono>
#include <iostream>
#include <map>

#if __has_include(<sys/resource.h>)
#include <sys/resource.h>
#endif

using namespace Qt::StringLiterals;

namespace qvnd::bench {

namespace {

namespace fs = std::filesystem;

class NoProgress : public desktop::ProgressDialog {
public:
    void show() override {}
    void hide() override {}
    void unload() override {}
    void setProgress(double /*part*/) override {}
    void setLabel(const QString& /*text*/) override {}
};

class NoScreen : public generate::BidEditScreen {
public:
    void showHourglass() override {}
    void showNormalPointer() override {}
    void turnPreviewOn() override {}
    void turnPreviewOff() override {}
    void removePreview() override {}
    void loadPreview(const QString& /*path*/) override {}
    void updatePreview() override {}
    void activatePreview() override {}
};

class NoEvents : public desktop::Events {
public:
    void doEvents() override {}
};

class NoControls : public generate::ChildDocumentControls {
public:
    QString cboBianHao() override { return {}; }
    QString txtInde() override { return u"2"_s; }
};

class NoQuestion : public word::UnsavedChangesQuestion {
public:
    bool save(const fs::path& /*document*/) override { return false; }
};

// A message would mean that something went wrong: it ends the benchmark.
class Complaints : public desktop::MessageBoxes, public word::ImportReport {
public:
    desktop::Answer show(const desktop::Message& message) override {
        texts << message.text;
        return desktop::Answer::ok;
    }
    void notCarried(const fs::path& /*path*/, std::u16string_view what) override {
        texts << QString::fromUtf16(what.data(), static_cast<qsizetype>(what.size()));
    }
    QStringList texts;
};

// A plan of so many documents, ten to a chapter, with its files and settings in a folder.
class Plan {
public:
    explicit Plan(int documents) {
        const QString root = files::withSeparator(home_.path());
        for (const char* folder : {"work", "plans/工程", "copies"})
            fs::create_directories(files::toPath(root + QString::fromUtf8(folder)));
        program_.AppPath = home_.path();
        program_.gAppPath = root;
        program_.gWorkPath = files::withSeparator(root + u"work"_s);
        program_.gUserTplPath = files::withSeparator(root + u"plans"_s);
        program_.gFso = std::make_unique<files::DiskFileSystem>();
        program_.gWs = &program_.DBEngine.Workspaces(0);
        store::CreateBidSetDb(program_, root + u"Db_BidSet.mdb"_s, QDate(2026, 5, 1));
        fill(documents);
    }

    bool generate(word::PageNumberSource& pages) {
        word::EngineApplicationFactory factory({pages, complaints_, question_});
        const generate::GenerationServices services{factory, complaints_, dlgTB_,   events_,
                                                    locks_,  screen_,     controls_};
        return generate::BuildBid({program_, switches_, word_}, services, window_, TrvEdit_) ==
               generate::BuildOutcome::finished;
    }
    void copyDocuments() const {
        const fs::path target = files::toPath(program_.gAppPath + u"copies"_s);
        for (const fs::path& document : documents_)
            fs::copy_file(document, target / document.filename(),
                          fs::copy_options::overwrite_existing);
    }

    const QStringList& complaints() const { return complaints_.texts; }
    double documentBytes() const { return static_cast<double>(fs::file_size(documents_.front())); }
    double outputBytes() const {
        return static_cast<double>(
            fs::file_size(files::toPath(program_.gWorkPath + u"施工方案.doc"_s)));
    }

private:
    void fill(int documents) {
        TrvEdit_.Add(u"工程"_s, u"工程"_s, 1, 2);
        QString chapter;
        for (int i = 0; i < documents; ++i) {
            if (i % 10 == 0) {
                chapter = u"工程.%1"_s.arg(i / 10 + 1);
                TrvEdit_.AddChild(u"工程"_s, chapter, u"分部工程"_s, outline::image::folder,
                                  outline::image::folderSelected);
            }
            const QString key = chapter + u".%1"_s.arg(i % 10 + 1);
            TrvEdit_.AddChild(chapter, key, u"施工方法"_s, outline::image::document,
                              outline::image::documentSelected);
            documents_.push_back(
                files::toPath(program_.gUserTplPath + u"工程/"_s + key + u".doc"_s));
            SiteDocument(i + 1).saveAs(documents_.back());
        }
    }

    QTemporaryDir home_;
    modMain program_;
    std::vector<fs::path> documents_;
    outline::OutlineTree TrvEdit_{u"TrvEdit"_s};

    generate::FormatSwitches switches_;
    generate::WordSession word_;
    generate::BidEditState window_;
    Complaints complaints_;
    NoQuestion question_;
    NoProgress dlgTB_;
    NoEvents events_;
    NoScreen screen_;
    NoControls controls_;
    desktop::SystemProcesses processes_;
    desktop::LockFiles locks_{processes_};
};

template <class Work>
double secondsOf(Work work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double peakMegabytes() {
#if __has_include(<sys/resource.h>)
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024;
#else
    return 0;
#endif
}

void measure(benchmark::State& state, word::PageNumberSource& pages,
             std::map<std::int64_t, double>& fastest) {
    Plan plan(static_cast<int>(state.range(0)));
    plan.copyDocuments();
    const double copying = secondsOf([&] { plan.copyDocuments(); });
    double best = 0;
    while (state.KeepRunning()) {
        bool finished = false;
        const double seconds = secondsOf([&] { finished = plan.generate(pages); });
        if (!finished || !plan.complaints().isEmpty()) {
            state.SkipWithError(
                plan.complaints().value(0, u"not finished"_s).toStdString().c_str());
            return;
        }
        state.SetIterationTime(seconds);
        best = best == 0 ? seconds : std::min(best, seconds);
    }
    fastest[state.range(0)] = best;
    const auto half = fastest.find(state.range(0) / 2);
    state.counters["copies"] = best / copying;
    if (half != fastest.end())
        state.counters["growth"] = best / half->second;
    state.counters["docKB"] = plan.documentBytes() / 1024;
    state.counters["outMB"] = plan.outputBytes() / 1024 / 1024;
    state.counters["pages"] = pages.pages();
    state.counters["peakMB"] = peakMegabytes();
}

void BM_Generate(benchmark::State& state) {
    static std::map<std::int64_t, double> fastest;
    word::LayoutEstimate pages;
    measure(state, pages, fastest);
}

void BM_GenerateOfficePages(benchmark::State& state) {
    static std::map<std::int64_t, double> fastest;
    const QTemporaryDir profile;
    office::OfficePageNumbers pages{office::OfficeSuite(profile.path())};
    measure(state, pages, fastest);
}

BENCHMARK(BM_Generate)
    ->Arg(100)
    ->Arg(200)
    ->Arg(400)
    ->Iterations(3)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

} // namespace

} // namespace qvnd::bench

int main(int argc, char** argv) {
    using qvnd::bench::BM_GenerateOfficePages;
    if (qvnd::office::OfficeSuite::installedProgram().isEmpty())
        std::cerr << "No office suite: exact pages are left out.\n";
    else
        benchmark::RegisterBenchmark("BM_GenerateOfficePages", BM_GenerateOfficePages)
            ->Arg(100)
            ->Arg(200)
            ->Arg(400)
            ->Iterations(1)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
