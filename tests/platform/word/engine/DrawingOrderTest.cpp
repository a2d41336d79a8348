#include "platform/word/docfile/DrawingBytes.h"
#include "platform/word/docfile/check/DocumentCheck.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/writer/DocumentWriter.h"
#include "platform/word/engine/EngineFixture.h"
#include "platform/word/engine/NormalTemplate.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

namespace qvnd::test {

namespace {

using namespace qvnd::word;

// Which of the floating shapes lies over which, in files of documents that came from others. A
// shape is told from others by a letter, which its place bears.
class DrawingOrder : public EngineTest {
protected:
    struct Named {
        std::uint8_t letter = 0;
        std::uint32_t order = 0;
    };

    // A document of one line with these shapes, anchored one behind the other; those of the header
    // are in the header of a first section.
    std::filesystem::path shapesFile(const std::string& name, const std::vector<Named>& shapes,
                                     const std::vector<Named>& ofHeader = {}) {
        DocumentContent content = normalTemplate();
        Story story = lineOf(content, shapes);
        content.sections = {{story.size(), content.sections.back().properties}};
        content.headers.clear();
        if (!ofHeader.empty()) {
            story.text.back() = u'\f';
            content.sections.push_back({2, content.sections.back().properties});
            StoryBuilder rest(story);
            rest.text(u"x", PropertyListId::empty);
            rest.mark(u'\r', {}, PropertyListId::empty);
            content.headers.resize(2);
            content.headers[0][oddHeader] = slicesOf(lineOf(content, ofHeader));
        }
        content.main = slicesOf(std::move(story));
        DocumentWriter().saveAs(folder.path() / name, content);
        return folder.path() / name;
    }

    // What lies over what in the document's file, the lowest first.
    std::string saved() {
        app.active().Save();
        return shapesOf(file, [](const DocumentContent& content) { return content.main; });
    }
    std::string savedInHeader(std::size_t section) {
        app.active().Save();
        return shapesOf(file, [section](const DocumentContent& content) {
            return content.headers.at(section)[oddHeader];
        });
    }

    std::filesystem::path file = folder.path() / "saved.doc";

private:
    static constexpr auto oddHeader = static_cast<std::size_t>(HeaderKind::oddHeader);

    static Story lineOf(DocumentContent& content, const std::vector<Named>& shapes) {
        const Bytes special = withSprm8({}, sprm::CFSpec, 1);
        Story story;
        StoryBuilder line(story);
        line.text(std::u16string(shapes.size(), u'\x08'), content.tables.lists.intern(special));
        line.mark(u'\r', {}, PropertyListId::empty);
        for (const Named& shape : shapes) {
            const auto at = static_cast<Cp>(story.anchors.size());
            const auto index = static_cast<std::uint32_t>(content.tables.drawings.size());
            story.anchors.push_back({at, AnchorKind::drawing, index});
            content.tables.drawings.push_back(drawingOf(shape, content.tables.shapes++));
        }
        return story;
    }

    static Drawing drawingOf(const Named& named, std::uint32_t shape) {
        using Kind = ShapeReference::Kind;
        Drawing result{Bytes(22, named.letter), drawings::ShapeBytes().bytes(), {}, named.order};
        const auto end = static_cast<std::uint32_t>(result.records.size());
        result.references = {{2 * art::headerSize, Kind::shape, shape, 0},
                             {end - 4, Kind::anchor, 0, 0}};
        return result;
    }

    template <class TextOf>
    static std::string shapesOf(const std::filesystem::path& path, TextOf textOf) {
        std::ifstream stream(path, std::ios::binary);
        const Bytes bytes{std::istreambuf_iterator<char>(stream), {}};
        EXPECT_TRUE(checkDocument(bytes).empty());
        const DocumentContent content = readDocument(bytes);
        std::map<std::uint32_t, char> shapes;
        for (const Anchor& anchor : anchorsOf(textOf(content))) {
            const Drawing& drawing = content.tables.drawings.at(anchor.index);
            shapes.emplace(drawing.order, static_cast<char>(drawing.place.at(0)));
        }
        std::string result;
        for (const auto& [order, letter] : shapes) {
            result += letter;
        }
        return result;
    }
};

TEST_F(DrawingOrder, AnOpenedDocumentIsSavedWithTheOrderOfItsShapes) {
    const auto path = shapesFile("a.doc", {{'a', 9}, {'b', 2}, {'c', 5}});
    app.documents().Open(path).SaveAs(file);
    EXPECT_EQ(saved(), "bca");
}

TEST_F(DrawingOrder, ShapesOfADocumentLieOverThoseOfTheDocumentsThatCameInBefore) {
    const auto first = shapesFile("a.doc", {{'a', 9}, {'b', 2}, {'c', 5}});
    const auto second = shapesFile("b.doc", {{'d', 3}, {'e', 8}, {'f', 1}});
    document().SaveAs(file);
    selection().InsertFile(first);
    selection().InsertFile(second);
    EXPECT_EQ(saved(), "bcafde");
    select(0, 0);
    selection().InsertFile(shapesFile("c.doc", {{'g', 2}, {'h', 1}}));
    EXPECT_EQ(saved(), "bcafdehg") << "also where it stands in front";
}

TEST_F(DrawingOrder, ASaveBehindEachInsertionKeepsTheOrderOfAll) {
    const auto first = shapesFile("a.doc", {{'a', 9}, {'b', 2}, {'c', 5}});
    document().SaveAs(file);
    selection().InsertFile(first);
    EXPECT_EQ(saved(), "bca");
    selection().InsertFile(shapesFile("b.doc", {{'d', 3}, {'e', 8}, {'f', 1}}));
    EXPECT_EQ(saved(), "bcafde");
    app.documents().Open(first).SaveAs(file.parent_path() / "opened.doc");
    file = file.parent_path() / "opened.doc";
    selection().InsertFile(shapesFile("c.doc", {{'g', 2}, {'h', 1}}));
    EXPECT_EQ(saved(), "bcahg");
}

TEST_F(DrawingOrder, TheHeaderOfASectionThatComesInKeepsTheOrderOfItsShapes) {
    const auto path = shapesFile("a.doc", {{'a', 2}, {'b', 1}}, {{'c', 7}, {'d', 4}, {'e', 5}});
    document().SaveAs(file);
    selection().InsertFile(path);
    EXPECT_EQ(saved(), "ba");
    EXPECT_EQ(savedInHeader(0), "dec");
    selection().InsertFile(path);
    EXPECT_EQ(saved(), "baba");
    EXPECT_EQ(savedInHeader(0), "dec");
}

} // namespace

} // namespace qvnd::test
