// What the preview of a long document costs: until its first page is painted (of a document with
// one long table too), while all pages are found, and while they are scrolled through; and what a
// PDF of it costs. Beside the time stand
//   pages    of the document
//   ratio    the time against reading the file alone
//   longest  the longest time, in milliseconds, for which no event was served
//   painted  the longest time, in milliseconds, from a jump to the page being painted
//   bytes    of memory that the pane takes, for each character

#include "SiteDocument.h"
#include "WindowBench.h"

#include "platform/drawing/PagePainter.h"
#include "platform/preview/PageConversion.h"
#include "platform/preview/windows/PagePane.h"
#include "platform/word/docfile/reader/DocumentReader.h"
#include "platform/word/layout/DocumentLayout.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QScrollBar>
#include <QTemporaryDir>

#include <algorithm>
#include <random>

#include <malloc.h>

namespace qvnd::bench {

namespace {

using namespace Qt::StringLiterals;

double since(const QElapsedTimer& clock) { return static_cast<double>(clock.nsecsElapsed()) / 1e6; }

// Of the allocated blocks, large ones included.
double memoryInUse() {
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

class LongDocument {
public:
    explicit LongDocument(int parts, int rows = 6) {
        SiteDocument(1, parts, rows).saveAs(path().toStdU16String());
        characters_ = word::lengthOf(word::readDocument(path().toStdU16String()).main);
    }
    QString path() const { return folder_.filePath(u"long.doc"_s); }
    QString cache() const { return folder_.filePath(u"cache"_s); }
    double characters() const { return static_cast<double>(characters_); }
    // Milliseconds.
    double readingTime() const {
        QElapsedTimer clock;
        clock.start();
        benchmark::DoNotOptimize(word::readDocument(path().toStdU16String()));
        return since(clock);
    }

private:
    QTemporaryDir folder_;
    std::size_t characters_ = 0;
};

// A pane that notes how long a round of events keeps it.
class WatchedPane {
public:
    explicit WatchedPane(const LongDocument& document) : conversion_(settings(document)) {
        pane.resize(900, 800);
    }
    template <class Done>
    void serveUntil(Done done) {
        QElapsedTimer clock;
        while (!done()) {
            clock.start();
            QCoreApplication::processEvents();
            longest = std::max(longest, since(clock));
        }
    }

    double longest = 0;

private:
    static preview::ConversionSettings settings(const LongDocument& document) {
        preview::ConversionSettings none;
        none.cacheFolder = document.cache();
        return none;
    }
    preview::PageConversion conversion_;

public:
    preview::PagePane pane{conversion_};
};

bool isPainted(preview::PagePane& pane) {
    const QImage seen = pane.grab(QRect(100, 100, 600, 600)).toImage();
    for (int y = 0; y < seen.height(); ++y) {
        for (int x = 0; x < seen.width(); ++x) {
            if (qGray(seen.pixel(x, y)) < 100) {
                return true;
            }
        }
    }
    return false;
}

// With the fonts found already, as for every document but the first of a run.
void measureFirstPage(benchmark::State& state, const LongDocument& document) {
    WatchedPane watched(document);
    watched.pane.show(document.path());
    watched.serveUntil([&] { return watched.pane.pageCount() > 0; });
    double reading = document.readingTime();
    double first = 0;
    for (auto _ : state) {
        watched.pane.hide();
        QCoreApplication::processEvents();
        QElapsedTimer clock;
        clock.start();
        watched.pane.show(document.path());
        watched.serveUntil([&] { return watched.pane.pageCount() > 0; });
        first = since(clock);
        state.SetIterationTime(first / 1e3);
        reading = std::min(reading, document.readingTime());
    }
    state.counters["ratio"] = first / reading;
    watched.serveUntil([&] { return watched.pane.isWhole(); });
    state.counters["pages"] = watched.pane.pageCount();
}

void BM_FirstPage(benchmark::State& state) {
    measureFirstPage(state, LongDocument(static_cast<int>(state.range(0))));
}

void BM_FirstPageOfATable(benchmark::State& state) {
    measureFirstPage(state, LongDocument(1, static_cast<int>(state.range(0))));
}

// From the file to the last byte.
void BM_Pdf(benchmark::State& state) {
    const LongDocument document(static_cast<int>(state.range(0)));
    std::size_t bytes = 0;
    int pages = 0;
    for (auto _ : state) {
        const word::DocumentContent content = word::readDocument(document.path().toStdU16String());
        const layout::LayoutSource source = layout::sourceOf(content);
        drawing::FontFaces fonts(drawing::FontChoice::named);
        layout::DocumentLayout pagesOf(source, fonts, {});
        drawing::PagePainter painter(fonts, nullptr);
        bytes = 0;
        pages = 0;
        const auto pdf = painter.pdf([&](word::ByteView part) { bytes += part.size(); });
        while (const auto page = pagesOf.nextPage()) {
            pdf->add(*page);
            ++pages;
        }
        pdf->finish();
    }
    state.counters["pages"] = pages;
    state.counters["MB"] = static_cast<double>(bytes) / 1024 / 1024;
}

void BM_AllPages(benchmark::State& state) {
    const LongDocument document(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        const double reading = document.readingTime();
        WatchedPane watched(document);
        const double before = memoryInUse();
        QElapsedTimer clock;
        clock.start();
        watched.pane.show(document.path());
        watched.serveUntil([&] { return watched.pane.isWhole(); });
        state.SetIterationTime(since(clock) / 1e3);
        state.counters["ratio"] = since(clock) / reading;
        state.counters["longest"] = watched.longest;
        state.counters["pages"] = watched.pane.pageCount();
        state.counters["bytes"] = (memoryInUse() - before) / document.characters();
    }
}

// From the top on by what is seen, while the pages are still being found, and then to any place.
void BM_Scroll(benchmark::State& state) {
    const LongDocument document(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        WatchedPane watched(document);
        preview::PagePane& pane = watched.pane;
        pane.show(document.path());
        watched.serveUntil([&] { return pane.pageCount() > 0; });
        watched.longest = 0;
        QElapsedTimer clock;
        clock.start();
        for (int i = 0; i < 200; ++i) {
            pane.scrollTo(pane.top() + 700);
            pane.repaint();
            QElapsedTimer turn;
            turn.start();
            watched.serveUntil([&] { return turn.elapsed() > 15; });
        }
        state.SetIterationTime(since(clock) / 1e3);
        state.counters["longest"] = watched.longest;
        watched.serveUntil([&] { return pane.isWhole(); });
        std::mt19937 random(1);
        double painted = 0;
        const int pages = pane.pageCount();
        const int height = pane.findChild<QScrollBar*>()->maximum();
        for (int i = 0; i < 30; ++i) {
            pane.scrollTo(static_cast<int>(random() % static_cast<unsigned>(height)));
            clock.start();
            watched.serveUntil([&] { return isPainted(pane); });
            painted = std::max(painted, since(clock));
        }
        state.counters["painted"] = painted;
        state.counters["pages"] = pages;
    }
}

constexpr int parts = 3750;      // about 1,500 pages
constexpr int pdfParts = 4000;   // about 1,600 pages
constexpr int tableRows = 70000; // about 1,200 pages

BENCHMARK(BM_FirstPage)->Arg(parts)->Iterations(5)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FirstPageOfATable)
    ->Arg(tableRows)
    ->Iterations(5)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Pdf)->Arg(pdfParts)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_AllPages)->Arg(parts)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Scroll)->Arg(parts)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace

} // namespace qvnd::bench

int main(int argc, char** argv) { return qvnd::bench::runWithoutScreen(argc, argv); }
