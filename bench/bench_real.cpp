// Puts real documents one after the other into one, the save after each included, by the engine
// alone. QVND_CORPUS names the folder that they lie in; without it nothing is measured. Beside the
// time stand
//   copies  the time against copying the same documents as files
//   inMB    the documents, outMB the finished one, peakMB the process's memory at its highest
//   refused documents that are none, or locked

#include "PeakMemory.h"

#include "platform/error/RunTimeError.h"
#include "platform/word/engine/EngineApplication.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <vector>

namespace qvnd::bench {

namespace {

namespace fs = std::filesystem;

class NoPages : public word::PageNumberSource {
public:
    std::vector<std::u16string> displayedPages(const word::DocumentContent&,
                                               std::span<const word::Cp> positions) override {
        return std::vector<std::u16string>(positions.size(), u"1");
    }
};

class NoReport : public word::ImportReport {
public:
    void notCarried(const fs::path&, std::u16string_view) override {}
};

class NoQuestion : public word::UnsavedChangesQuestion {
public:
    bool save(const fs::path&) override { return false; }
};

constexpr double megabyte = 1 << 20;

// As many documents of the folder as wanted, by name.
std::vector<fs::path> realDocuments(std::size_t most) {
    std::vector<fs::path> files;
    if (const char* folder = std::getenv("QVND_CORPUS")) {
        for (const auto& entry : fs::directory_iterator(folder)) {
            if (entry.path().extension() == ".doc") {
                files.push_back(entry.path());
            }
        }
    }
    std::sort(files.begin(), files.end());
    files.resize(std::min(files.size(), most));
    return files;
}

template <class Work>
double secondsOf(Work work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// How many were refused.
int insertAll(const std::vector<fs::path>& files, const fs::path& target) {
    NoPages pages;
    NoReport report;
    NoQuestion question;
    word::EngineServices services{pages, report, question};
    word::EngineApplication engine(services);
    word::Document& document = engine.documents().Add();
    document.SaveAs(target);
    int refused = 0;
    for (const fs::path& file : files) {
        try {
            engine.Selection().InsertFile(file);
            document.Save();
        } catch (const RunTimeError&) {
            ++refused;
        }
    }
    return refused;
}

void BM_InsertReal(benchmark::State& state) {
    const std::vector<fs::path> files = realDocuments(static_cast<std::size_t>(state.range(0)));
    if (files.empty()) {
        state.SkipWithError("QVND_CORPUS names no folder with documents");
        return;
    }
    const fs::path folder = fs::temp_directory_path() / "qvnd-bench-real";
    fs::create_directories(folder / "copies");
    double bytes = 0;
    const auto copy = [&] {
        for (const fs::path& file : files) {
            fs::copy_file(file, folder / "copies" / file.filename(),
                          fs::copy_options::overwrite_existing);
        }
    };
    copy();
    const double copying = secondsOf(copy);
    for (const fs::path& file : files) {
        bytes += static_cast<double>(fs::file_size(file));
    }
    int refused = 0;
    double best = 0;
    for (auto _ : state) {
        const double seconds = secondsOf([&] { refused = insertAll(files, folder / "all.doc"); });
        state.SetIterationTime(seconds);
        best = best == 0 ? seconds : std::min(best, seconds);
    }
    state.counters["copies"] = best / copying;
    state.counters["inMB"] = bytes / megabyte;
    state.counters["outMB"] = static_cast<double>(fs::file_size(folder / "all.doc")) / megabyte;
    state.counters["refused"] = refused;
    state.counters["peakMB"] = peakMegabytes();
    fs::remove_all(folder);
}

BENCHMARK(BM_InsertReal)
    ->Arg(25)
    ->Arg(50)
    ->Arg(100)
    ->Iterations(3)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

} // namespace

} // namespace qvnd::bench

BENCHMARK_MAIN();
