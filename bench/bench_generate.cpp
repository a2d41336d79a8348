// Generates plans of 100, 200 and 400 documents of about 32 kB, the save after each document
// included, with the pages of the contents by the program's own layout. Beside the time stand
//   copies  the time against copying the same documents as files
//   growth  the time against that of half as many documents (2.0 is linear)
//   outMB   the finished document, peakMB the process's memory at its highest
//   times   the time against that without page numbers, which BM_GenerateNoPages takes
// BM_GenerateOfficePages does the same with pages from the office suite.

#include "PeakMemory.h"
#include "SitePlan.h"

#include "generate/driver/BuildBid.h"
#include "platform/desktop/LockFiles.h"
#include "platform/desktop/Processes.h"
#include "platform/drawing/FontFaces.h"
#include "platform/office/OfficePageNumbers.h"
#include "platform/word/engine/EngineApplication.h"
#include "platform/word/layout/LayoutPageNumbers.h"
#include "tools/GenerateServices.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <chrono>
#include <iostream>
#include <map>
#include <span>
#include <string>
#include <vector>

using namespace Qt::StringLiterals;

namespace qvnd::bench {

namespace {

// A plan with everything that generating it reaches for.
class Plan {
public:
    explicit Plan(int documents) : plan_(documents) {}

    bool generate(word::PageNumberSource& pages) {
        word::EngineApplicationFactory factory({pages, complaints_, question_});
        const generate::GenerationServices services{factory, complaints_, dlgTB_,   events_,
                                                    locks_,  screen_,     controls_};
        return generate::BuildBid({plan_.program(), switches_, word_}, services, window_,
                                  plan_.TrvEdit()) == generate::BuildOutcome::finished;
    }
    void copyDocuments() const { plan_.copyDocuments(); }

    const QStringList& complaints() const { return complaints_.texts; }
    double documentBytes() const { return plan_.documentBytes(); }
    double outputBytes() const { return plan_.outputBytes(); }

private:
    SitePlan plan_;
    FormatSwitches switches_;
    generate::WordSession word_;
    generate::BidEditState window_;
    Complaints complaints_;
    NoQuestion question_;
    tools::NoProgress dlgTB_;
    tools::NoEvents events_;
    tools::NoScreen screen_;
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

// Page numbers that nobody works out.
class NoPages : public word::PageNumberSource {
public:
    std::vector<std::u16string> displayedPages(const word::DocumentContent& /*content*/,
                                               std::span<const word::Cp> /*positions*/) override {
        return {};
    }
};

// Seconds without page numbers, by the number of documents.
std::map<std::int64_t, double>& withoutPages() {
    static std::map<std::int64_t, double> fastest;
    return fastest;
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
    const auto without = withoutPages().find(state.range(0));
    if (without != withoutPages().end())
        state.counters["times"] = best / without->second;
    state.counters["docKB"] = plan.documentBytes() / 1024;
    state.counters["outMB"] = plan.outputBytes() / 1024 / 1024;
    state.counters["pages"] = pages.pages();
    state.counters["peakMB"] = peakMegabytes();
}

void BM_GenerateNoPages(benchmark::State& state) {
    NoPages pages;
    measure(state, pages, withoutPages());
}

void BM_Generate(benchmark::State& state) {
    static std::map<std::int64_t, double> fastest;
    layout::LayoutPageNumbers pages{drawing::openNamedFonts};
    measure(state, pages, fastest);
}

void BM_GenerateOfficePages(benchmark::State& state) {
    static std::map<std::int64_t, double> fastest;
    const QTemporaryDir profile;
    office::OfficePageNumbers pages{office::OfficeSuite(profile.path())};
    measure(state, pages, fastest);
}

BENCHMARK(BM_GenerateNoPages)
    ->Arg(100)
    ->Arg(200)
    ->Arg(400)
    ->Iterations(3)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

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
