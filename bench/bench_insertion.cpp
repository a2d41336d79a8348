// Inserts documents into one document, the save after each insertion included: with ten floating
// shapes each (about 10 kB of records), with ten embedded objects each (about 20 kB), with five
// sections each that have headers of their own. Beside the time stand
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

// A document of one paragraph, which `write` puts together.
template <class Write>
void writeDocument(const std::filesystem::path& path, Write write) {
    word::DocumentContent content = word::normalTemplate();
    word::Story story;
    word::StoryBuilder builder(story);
    write(content, story, builder);
    builder.mark(u'\r', {}, word::PropertyListId::empty);
    content.main = word::slicesOf(std::move(story));
    word::Cp before = 0;
    for (std::size_t i = 0; i + 1 < content.sections.size(); ++i)
        before += content.sections[i].length;
    content.sections.back().length = word::lengthOf(content.main) - before;
    word::DocumentWriter().saveAs(path, content);
}

word::Bytes special() { return word::withSprm8({}, word::sprm::CFSpec, 1); }

void writeDrawings(const std::filesystem::path& path) {
    writeDocument(
        path, [](word::DocumentContent& content, word::Story& story, word::StoryBuilder& builder) {
            builder.text(std::u16string(shapes, u'\x08'), content.tables.lists.intern(special()));
            for (std::uint32_t i = 0; i < shapes; ++i) {
                content.tables.drawings.push_back(rectangle(i));
                story.anchors.push_back({i, word::AnchorKind::drawing, i});
            }
            content.tables.shapes = shapes;
        });
}

// Objects in the line of the text, each in a field of its own: a storage with two streams.
void writeObjects(const std::filesystem::path& path) {
    constexpr std::uint32_t objects = 10;
    constexpr std::size_t contentsSize = 2000;
    writeDocument(path,
                  [](word::DocumentContent& content, word::Story&, word::StoryBuilder& builder) {
                      word::PropertyLists& lists = content.tables.lists;
                      const auto mark = lists.intern(special());
                      for (std::uint32_t i = 0; i < objects; ++i) {
                          auto object = std::make_shared<word::EmbeddedObject>();
                          object->entries = {
                              {u"\u0001Ole", false, {}, word::Bytes(20)},
                              {u"Contents", false, {}, word::Bytes(contentsSize, std::uint8_t(i))}};
                          content.tables.objects.push_back(std::move(object));
                          builder.fieldBegin(58, mark); // EMBED
                          builder.text(u" EMBED Equation.3 ", word::PropertyListId::empty);
                          const word::Bytes ole = word::withSprm8(special(), word::sprm::CFOle2, 1);
                          builder.fieldSeparator(
                              lists.intern(word::withSprm32(ole, word::sprm::CObjLocation, i)));
                          builder.text(u"x", word::PropertyListId::empty);
                          builder.fieldEnd(0, mark);
                      }
                  });
}

void writeSections(const std::filesystem::path& path) {
    constexpr std::size_t sections = 5;
    writeDocument(path,
                  [](word::DocumentContent& content, word::Story&, word::StoryBuilder& builder) {
                      const auto plain = word::PropertyListId::empty;
                      const std::u16string text = u"本节施工要求";
                      content.sections.clear();
                      for (std::size_t i = 0; i < sections; ++i) {
                          builder.text(text, plain);
                          const bool isLast = i + 1 == sections;
                          if (!isLast)
                              builder.mark(u'\f', {}, plain);
                          const auto page = content.tables.lists.intern(
                              word::withSprm8({}, word::sprm::SBOrientation, i % 2 == 0 ? 1 : 2));
                          content.sections.push_back(
                              {static_cast<word::Cp>(text.size() + (isLast ? 0 : 1)), page});
                          word::Story header;
                          word::StoryBuilder line(header);
                          line.text(u"页眉", plain);
                          line.mark(u'\r', {}, plain);
                          content.headers.resize(i + 1);
                          content.headers[i][1] = word::slicesOf(std::move(header));
                      }
                  });
}

// `write` makes the document that is inserted again and again.
template <class Write>
void insertAndSave(benchmark::State& state, std::map<std::int64_t, double>& seconds, Write write) {
    const QTemporaryDir folder;
    const std::filesystem::path path = folder.path().toStdString();
    write(path / "part.doc");
    Silence silence;
    for (auto run : state) {
        const auto start = std::chrono::steady_clock::now();
        word::EngineApplication program({silence, silence, silence});
        word::Document& document = program.documents().Add();
        document.SaveAs(path / "out.doc");
        for (std::int64_t i = 0; i < state.range(0); ++i) {
            program.Selection().InsertFile(path / "part.doc");
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

void BM_InsertDrawings(benchmark::State& state) {
    static std::map<std::int64_t, double> seconds;
    insertAndSave(state, seconds, writeDrawings);
}

void BM_InsertObjects(benchmark::State& state) {
    static std::map<std::int64_t, double> seconds;
    insertAndSave(state, seconds, writeObjects);
}

void BM_InsertSections(benchmark::State& state) {
    static std::map<std::int64_t, double> seconds;
    insertAndSave(state, seconds, writeSections);
}

void fromHundredToEightHundred(benchmark::internal::Benchmark* benchmark) {
    for (const std::int64_t documents : {100, 200, 400, 800})
        benchmark->Arg(documents);
    benchmark->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
}

BENCHMARK(BM_InsertDrawings)->Apply(fromHundredToEightHundred);
BENCHMARK(BM_InsertObjects)->Apply(fromHundredToEightHundred);
BENCHMARK(BM_InsertSections)->Apply(fromHundredToEightHundred);

} // namespace

} // namespace qvnd::bench

BENCHMARK_MAIN();
