// Inserts documents with ten floating shapes each (about 10 kB of records) into one document, the
// save after each insertion included. Beside the time stand
//   growth  the time against that of half as many documents (2.0 is linear)
//   outMB   the finished document

#include "SiteDocument.h"

#include "platform/error/Utf8.h"
#include "platform/word/docfile/format/OfficeArt.h"
#include "platform/word/docfile/format/ShapeProperties.h"
#include "platform/word/engine/EngineApplication.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <chrono>
#include <map>

namespace qvnd::bench {

namespace {

constexpr int shapes = 10;
constexpr std::size_t nameSize = 900;

class Silence : public word::PageNumberSource,
                public word::ImportReport,
                public word::UnsavedChangesQuestion {
public:
    std::vector<std::u16string> displayedPages(const word::DocumentContent& /*content*/,
                                               std::span<const word::Cp> positions) override {
        return std::vector<std::u16string>(positions.size(), u"1");
    }
    void notCarried(const std::filesystem::path& /*path*/, std::u16string_view /*what*/) override {}
    bool save(const std::filesystem::path& /*document*/) override { return false; }
};

// A rectangle with a long tail of records that nobody reads.
word::Drawing rectangle(std::uint32_t index) {
    using Kind = word::ShapeReference::Kind;
    word::LittleEndianWriter content;
    word::art::writeRecord(content, 2, 1, word::art::fsp, word::Bytes(8));
    word::art::writeRecord(content, 3, 0, word::art::fopt, {});
    const std::size_t anchorAt = content.position();
    word::art::writeRecord(content, 0, 0, word::art::clientAnchor, word::Bytes(4));
    word::art::writeRecord(content, 0, 0, word::art::clientData, word::Bytes(nameSize));
    word::LittleEndianWriter record;
    word::art::writeRecord(record, word::art::container, 0, word::art::spContainer, content.data());
    constexpr std::size_t head = word::art::headerSize;
    return {word::Bytes(22),
            record.take(),
            {{static_cast<std::uint32_t>(2 * head), Kind::shape, index, 0},
             {static_cast<std::uint32_t>(2 * head + anchorAt), Kind::anchor, 0, 0}}};
}

void writeDrawings(const std::filesystem::path& path) {
    word::DocumentContent content = word::normalTemplate();
    word::Story story;
    word::StoryBuilder builder(story);
    const auto special = content.tables.lists.intern(word::withSprm8({}, word::sprm::CFSpec, 1));
    builder.text(std::u16string(shapes, u'\x08'), special);
    builder.mark(u'\r', {}, word::PropertyListId::empty);
    for (std::uint32_t i = 0; i < shapes; ++i) {
        content.tables.drawings.push_back(rectangle(i));
        story.anchors.push_back({i, word::AnchorKind::drawing, i});
    }
    content.tables.shapes = shapes;
    content.main = word::slicesOf(std::move(story));
    content.sections[0].length = word::lengthOf(content.main);
    word::DocumentWriter().saveAs(path, content);
}

void BM_InsertDrawings(benchmark::State& state) {
    static std::map<std::int64_t, double> seconds;
    const QTemporaryDir folder;
    const std::filesystem::path path = folder.path().toStdString();
    writeDrawings(path / "drawings.doc");
    Silence silence;
    for (auto run : state) {
        const auto start = std::chrono::steady_clock::now();
        word::EngineApplication program({silence, silence, silence});
        word::Document& document = program.documents().Add();
        document.SaveAs(path / "out.doc");
        for (std::int64_t i = 0; i < state.range(0); ++i) {
            program.Selection().InsertFile(path / "drawings.doc");
            document.Save();
        }
        const double taken =
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        state.SetIterationTime(taken);
        seconds[state.range(0)] = taken;
    }
    const auto half = seconds.find(state.range(0) / 2);
    if (half != seconds.end())
        state.counters["growth"] = seconds[state.range(0)] / half->second;
    state.counters["outMB"] =
        static_cast<double>(std::filesystem::file_size(path / "out.doc")) / 1024 / 1024;
}

BENCHMARK(BM_InsertDrawings)
    ->Arg(100)
    ->Arg(200)
    ->Arg(400)
    ->Arg(800)
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

} // namespace

} // namespace qvnd::bench

BENCHMARK_MAIN();
