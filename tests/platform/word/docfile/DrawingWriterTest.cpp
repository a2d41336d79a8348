#include "platform/word/docfile/DrawingBytes.h"
#include "platform/word/docfile/check/DocumentCheck.h"
#include "platform/word/docfile/pictures/Blip.h"
#include "platform/word/docfile/reader/DocumentReader.h"
#include "platform/word/docfile/writer/DocumentWriter.h"
#include "support/ContentBuilder.h"
#include "support/Images.h"
#include "support/MemoryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

namespace qvnd::word {
namespace {

using namespace drawings;
using namespace test;
using Kind = ShapeReference::Kind;
using qvnd::test::ContentBuilder;
using qvnd::test::plain;
using qvnd::test::Words;

// Drawings of a document under work, as a file gives them back.
class DrawingWriter : public testing::Test {
protected:
    // A shape whose references are the places of the numbers in its bytes.
    Drawing drawing() {
        ShapeBytes shape;
        shape.id = 0;
        Drawing result{Bytes(22, 0x22), shape.bytes(), {}};
        const auto head = static_cast<std::uint32_t>(2 * art::headerSize);
        result.references.push_back({head, Kind::shape, builder.content.tables.shapes++, 0});
        const auto end = static_cast<std::uint32_t>(result.records.size());
        result.references.push_back({end - 4, Kind::anchor, 0, 0});
        return result;
    }
    // A shape that shows the part `link` of a text.
    Drawing drawingOfText(std::uint32_t text, std::uint16_t link = 0) {
        ShapeBytes shape;
        shape.text = 1;
        Drawing result = drawing();
        result.records = shape.bytes();
        const auto valueAt = static_cast<std::uint32_t>(2 * art::headerSize + 8 + 8 + 2);
        const auto end = static_cast<std::uint32_t>(result.records.size());
        result.references.back() = {valueAt, Kind::text, text, link};
        result.references.push_back({end - 16, Kind::anchor, 0, 0});
        result.references.push_back({end - 4, Kind::text, text, link});
        return result;
    }
    Drawing drawingOfPicture(std::uint32_t picture) {
        ShapeBytes shape;
        shape.kind = 75;
        shape.properties.setBlip(art::pib, 1);
        Drawing result = drawing();
        const ShapeReference anchor = result.references.back();
        result.records = shape.bytes();
        const auto valueAt = static_cast<std::uint32_t>(2 * art::headerSize + 8 + 8 + 2);
        const auto end = static_cast<std::uint32_t>(result.records.size());
        result.references.back() = {valueAt, Kind::picture, picture, 0};
        result.references.push_back({end - 4, anchor.kind, 0, 0});
        return result;
    }
    // A shape of a chain that names the next one, which may be anywhere or nowhere.
    Drawing drawingBefore(std::uint32_t next) {
        ShapeBytes shape;
        shape.properties.set(art::nextShape, 1);
        Drawing result = drawing();
        const ShapeReference anchor = result.references.back();
        result.records = shape.bytes();
        const auto valueAt = static_cast<std::uint32_t>(2 * art::headerSize + 8 + 8 + 2);
        const auto end = static_cast<std::uint32_t>(result.records.size());
        result.references.back() = {valueAt, Kind::otherShape, next, 0};
        result.references.push_back({end - 4, anchor.kind, 0, 0});
        return result;
    }
    // A shape with a long record that nobody reads.
    Drawing largeDrawing(std::size_t size) {
        Drawing result = drawing();
        const Bytes tail = artRecord(0, 0, art::clientData, Bytes(size));
        const auto content = static_cast<std::uint32_t>(result.records.size() - art::headerSize);
        result.records.insert(result.records.end(), tail.begin(), tail.end());
        const Bytes length = number32(content + static_cast<std::uint32_t>(tail.size()));
        std::copy(length.begin(), length.end(), result.records.begin() + 4);
        return result;
    }
    std::uint32_t addText(const std::u16string& text, std::vector<Cp> breaks = {}) {
        auto& texts = builder.content.tables.shapeTexts;
        texts.push_back({builder.fragment({plain(text)}), std::move(breaks)});
        return static_cast<std::uint32_t>(texts.size() - 1);
    }
    std::uint32_t addPicture(unsigned width) {
        auto& pictures = builder.content.tables.shapePictures;
        pictures.push_back(
            std::make_shared<const Bytes>(encodeBlip(*recogniseImage(qvnd::test::png(width, 2)))));
        return static_cast<std::uint32_t>(pictures.size() - 1);
    }
    // A shape that can be told from others by its place.
    Drawing drawingOfOrder(std::uint32_t order, std::uint8_t place) {
        Drawing result = drawing();
        result.place = Bytes(22, place);
        result.order = order;
        return result;
    }
    // The places of the shapes that are anchored there, the lowest shape first.
    static Bytes fromTheLowest(const DocumentContent& document, const SlicedText& text) {
        std::map<std::uint32_t, std::uint8_t> places;
        for (const Anchor& anchor : anchorsOf(text)) {
            const Drawing& drawing = document.tables.drawings.at(anchor.index);
            places.emplace(drawing.order, drawing.place.at(0));
        }
        Bytes result;
        result.reserve(places.size());
        for (const auto& [order, place] : places) {
            result.push_back(place);
        }
        return result;
    }
    Story anchored(const std::u16string& text, Drawing one) {
        auto& drawings = builder.content.tables.drawings;
        drawings.push_back(std::move(one));
        const Words mark{u"\u0008", withSprm8({}, sprm::CFSpec, 1)};
        Story story = *builder.fragment({plain(text), mark, plain(u"\r")});
        story.anchors = {{static_cast<Cp>(text.size()), AnchorKind::drawing,
                          static_cast<std::uint32_t>(drawings.size() - 1)}};
        return story;
    }
    // Adds a paragraph whose last character is the anchor.
    void add(const std::u16string& text, Drawing one) {
        builder.add(std::make_shared<const Story>(anchored(text, std::move(one))));
    }
    DocumentContent read() const {
        const Bytes& file = folder->bytes(path);
        for (const Finding& finding : checkDocument(file)) {
            ADD_FAILURE() << finding.rule << ": "
                          << std::string(finding.text.begin(), finding.text.end());
        }
        return readDocument(file);
    }
    // What was saved step by step is what is written of the same document at once.
    void expectAsWrittenAtOnce() {
        const DocumentContent stepwise = read();
        DocumentWriter(folder).saveAs("/folder/whole.doc", builder.content);
        const DocumentContent whole = readDocument(folder->bytes("/folder/whole.doc"));
        ASSERT_EQ(stepwise.tables.drawings.size(), whole.tables.drawings.size());
        for (std::size_t i = 0; i < whole.tables.drawings.size(); ++i) {
            expectAlike(stepwise.tables.drawings[i], whole.tables.drawings[i]);
        }
        EXPECT_EQ(textsOf(stepwise), textsOf(whole));
        EXPECT_EQ(anchorsOf(stepwise.main), anchorsOf(whole.main));
    }
    static void expectAlike(const Drawing& one, const Drawing& other) {
        EXPECT_EQ(one.place, other.place);
        EXPECT_EQ(one.order, other.order);
        EXPECT_EQ(one.records, other.records);
        EXPECT_TRUE(std::equal(
            one.references.begin(), one.references.end(), other.references.begin(),
            other.references.end(), [](const ShapeReference& a, const ShapeReference& b) {
                return a.at == b.at && a.kind == b.kind && a.index == b.index && a.link == b.link;
            }));
    }
    static std::vector<std::u16string> textsOf(const DocumentContent& document) {
        std::vector<std::u16string> result;
        for (const ShapeText& text : document.tables.shapeTexts) {
            result.push_back(text.text->text);
        }
        return result;
    }
    std::ptrdiff_t occurrences(std::string_view text) const {
        const Bytes words(text.begin(), text.end());
        const Bytes& file = folder->bytes(path);
        std::ptrdiff_t count = 0;
        for (auto at = file.begin();; ++at, ++count) {
            at = std::search(at, file.end(), words.begin(), words.end());
            if (at == file.end()) {
                return count;
            }
        }
    }

    std::shared_ptr<qvnd::test::MemoryFolder> folder = std::make_shared<qvnd::test::MemoryFolder>();
    const std::filesystem::path path = "/folder/a.doc";
    DocumentWriter writer{folder};
    ContentBuilder builder;
};

using Texts = std::vector<std::u16string>;

TEST_F(DrawingWriter, AShapeComesBackAtItsAnchor) {
    add(u"one", drawing());
    writer.saveAs(path, builder.content);
    const DocumentContent document = read();
    ASSERT_EQ(joined(document.main)->anchors.size(), 1U);
    EXPECT_EQ(joined(document.main)->anchors[0].at, 3U);
    EXPECT_EQ(joined(document.main)->anchors[0].kind, AnchorKind::drawing);
    ASSERT_EQ(document.tables.drawings.size(), 1U);
    EXPECT_EQ(document.tables.drawings[0].place, Bytes(22, 0x22));
    EXPECT_EQ(document.tables.drawings[0].records.size(),
              builder.content.tables.drawings[0].records.size());
}

TEST_F(DrawingWriter, TextsOfShapesAreTextOfTheFile) {
    add(u"one", drawingOfText(addText(u"first\r")));
    add(u"two", drawing());
    add(u"three", drawingOfText(addText(u"second\r")));
    writer.saveAs(path, builder.content);
    const DocumentContent document = read();
    EXPECT_EQ(joined(document.main)->text, builder.text());
    EXPECT_EQ(textsOf(document), (Texts{u"first\r", u"second\r"}));
    EXPECT_EQ(document.tables.drawings.size(), 3U);
    EXPECT_TRUE(document.unread.remarks.empty());
}

TEST_F(DrawingWriter, AChainOfShapesSharesOneTextAndItsBreaks) {
    const std::uint32_t text = addText(u"first second third\r", {6, 13});
    add(u"a", drawingOfText(text, 0));
    add(u"b", drawingOfText(text, 1));
    add(u"c", drawingOfText(text, 2));
    writer.saveAs(path, builder.content);
    const DocumentContent document = read();
    ASSERT_EQ(document.tables.shapeTexts.size(), 1U);
    EXPECT_EQ(document.tables.shapeTexts[0].breaks, (std::vector<Cp>{6, 13}));
}

TEST_F(DrawingWriter, PartsOfAChainWhoseBreaksNobodyKnowsAreTheLastCharactersOfItsText) {
    const auto breaksOfFour = [this](const std::u16string& words, const std::vector<Cp>& known) {
        builder = {};
        const std::uint32_t text = addText(words, known);
        for (const std::uint32_t link : {0U, 1U, 2U, 3U}) {
            add(u"a", drawingOfText(text, link));
        }
        DocumentWriter(folder).saveAs(path, builder.content);
        return readDocument(folder->bytes(path)).tables.shapeTexts.at(0).breaks;
    };
    using Breaks = std::vector<Cp>;
    EXPECT_EQ(breaksOfFour(u"first second third\r", {6}), (Breaks{6, 17, 18}));
    EXPECT_EQ(breaksOfFour(u"first second third\r", {6, 13, 15, 16}), (Breaks{6, 13, 15}));
    EXPECT_EQ(breaksOfFour(u"abcd\r", {}), (Breaks{2, 3, 4}));
    EXPECT_EQ(breaksOfFour(u"abc\r", {}), Breaks{}) << "no more characters than parts";
    EXPECT_EQ(breaksOfFour(u"abcde\r", {3}), (Breaks{3, 4, 5}));
    EXPECT_EQ(breaksOfFour(u"abcde\r", {4}), Breaks{4});
    EXPECT_EQ(breaksOfFour(u"abcde\r", {5}), Breaks{5});
    EXPECT_EQ(breaksOfFour(u"abcde\r", {6}), (Breaks{3, 4, 5})) << "behind the text is none";
}

TEST_F(DrawingWriter, AChainWhoseFirstShapeIsGoneShowsNoText) {
    const std::uint32_t text = addText(u"first second\r", {6});
    add(u"a", drawingOfText(text, 0));
    add(u"b", drawingOfText(text, 1));
    builder.content.main.erase(builder.content.main.begin());
    builder.content.sections.back().length -= 3;
    writer.saveAs(path, builder.content);
    const DocumentContent document = read();
    EXPECT_EQ(document.tables.drawings.size(), 1U);
    EXPECT_TRUE(document.tables.shapeTexts.empty());
}

TEST_F(DrawingWriter, EqualPicturesAreStoredOnceAndCountTheirUses) {
    add(u"a", drawingOfPicture(addPicture(4)));
    add(u"b", drawingOfPicture(addPicture(4)));
    add(u"c", drawingOfPicture(addPicture(5)));
    writer.saveAs(path, builder.content);
    const DocumentContent document = read();
    EXPECT_EQ(document.tables.shapePictures.size(), 2U);
    EXPECT_EQ(occurrences("\x89PNG"), 2);
    LittleEndianReader entry(*document.tables.shapePictures[0], "entry");
    entry.seek(art::headerSize + art::fbseCountAt);
    EXPECT_EQ(entry.u32(), 2U);
}

TEST_F(DrawingWriter, HeadersHaveDrawingsAndTextsOfTheirOwn) {
    add(u"body", drawingOfText(addText(u"in the body\r")));
    HeaderSet set;
    set[1] = slicesOf(anchored(u"header", drawingOfText(addText(u"in the header\r"))));
    builder.content.headers = {set};
    writer.saveAs(path, builder.content);
    const DocumentContent document = read();
    EXPECT_EQ(textsOf(document), (Texts{u"in the body\r", u"in the header\r"}));
    const std::vector<Anchor> anchors = anchorsOf(document.headers.at(0)[1]);
    ASSERT_EQ(anchors.size(), 1U);
    EXPECT_EQ(anchors[0].at, 6U);
}

TEST_F(DrawingWriter, ACopiedHeaderHasItsOwnShapes) {
    HeaderSet set;
    set[1] = slicesOf(anchored(u"header", drawingOfText(addText(u"text\r"))));
    set[3] = set[1];
    builder.content.headers = {set};
    writer.saveAs(path, builder.content);
    builder.add({plain(u"more\r")});
    writer.save(builder.content);
    const DocumentContent document = read();
    EXPECT_EQ(document.tables.drawings.size(), 2U);
    EXPECT_EQ(textsOf(document), (Texts{u"text\r", u"text\r"}));
}

TEST_F(DrawingWriter, MoreShapesThanAClusterHoldsAreTakenBack) {
    for (int i = 0; i < 1500; ++i) {
        add(u"x", drawing());
    }
    HeaderSet set;
    set[1] = slicesOf(anchored(u"header", drawing()));
    builder.content.headers = {set};
    writer.saveAs(path, builder.content);
    EXPECT_EQ(read().tables.drawings.size(), 1501U);
}

TEST_F(DrawingWriter, EverySaveAddsWhatIsNewAndNothingTwice) {
    writer.saveAs(path, builder.content);
    Texts expected;
    for (unsigned i = 0; i < 6; ++i) {
        const std::u16string words = u"words of box " + std::u16string(1, char16_t(u'a' + i));
        expected.push_back(words + u"\r");
        add(u"text", drawingOfText(addText(words + u"\r")));
        add(u"picture", drawingOfPicture(addPicture(4 + i)));
        writer.save(builder.content);
        ASSERT_EQ(textsOf(read()), expected);
    }
    EXPECT_EQ(occurrences("\x89PNG"), 6);
}

TEST_F(DrawingWriter, AChainGrowsWithLaterSavesAndAtItsFront) {
    writer.saveAs(path, builder.content);
    const std::uint32_t text = addText(u"first second third\r", {6, 13});
    add(u"c", drawingOfText(text, 2));
    writer.save(builder.content);
    EXPECT_TRUE(textsOf(read()).empty());
    add(u"a", drawingOfText(text, 0));
    writer.save(builder.content);
    EXPECT_TRUE(read().tables.shapeTexts.at(0).breaks.empty());
    add(u"b", drawingOfText(text, 1));
    writer.save(builder.content);
    EXPECT_EQ(read().tables.shapeTexts.at(0).breaks, (std::vector<Cp>{6, 13}));
    expectAsWrittenAtOnce();
}

TEST_F(DrawingWriter, AShapeThatIsNamedBeforeItIsThereIsFoundWhenItComes) {
    writer.saveAs(path, builder.content);
    add(u"a", drawingBefore(1));
    writer.save(builder.content);
    expectAsWrittenAtOnce();
    add(u"b", drawing());
    writer.save(builder.content);
    expectAsWrittenAtOnce();
    const DocumentContent document = read();
    const auto& references = document.tables.drawings.at(0).references;
    const auto next =
        std::find_if(references.begin(), references.end(),
                     [](const ShapeReference& one) { return one.kind == Kind::otherShape; });
    ASSERT_NE(next, references.end());
    EXPECT_EQ(next->index, document.tables.drawings.at(1).references.at(0).index);
}

TEST_F(DrawingWriter, ShapesThatComeInFrontAreInFront) {
    for (int i = 0; i < 3; ++i) {
        add(u"text", drawingOfText(addText(u"behind\r")));
    }
    writer.saveAs(path, builder.content);
    add(u"a", drawingOfText(addText(u"in front\r")));
    std::rotate(builder.content.main.begin(), builder.content.main.end() - 2,
                builder.content.main.end() - 1);
    writer.save(builder.content);
    expectAsWrittenAtOnce();
    EXPECT_EQ(textsOf(read()).at(0), u"in front\r");
}

TEST_F(DrawingWriter, TextThatComesInFrontMovesTheShapesThatWereThere) {
    add(u"a", drawing());
    add(u"b", drawingOfText(addText(u"text\r")));
    writer.saveAs(path, builder.content);
    builder.add({plain(u"in front\r")});
    std::rotate(builder.content.main.begin(), builder.content.main.end() - 2,
                builder.content.main.end() - 1);
    writer.save(builder.content);
    expectAsWrittenAtOnce();
    const std::vector<Anchor> anchors = anchorsOf(read().main);
    ASSERT_EQ(anchors.size(), 2U);
    EXPECT_EQ(anchors[0].at, 10U);
    EXPECT_EQ(anchors[1].at, 13U);
}

TEST_F(DrawingWriter, ShapesLieOverEachOtherByTheirOrderWhereverTheirAnchorsStand) {
    add(u"a", drawingOfOrder(8, 'a'));
    add(u"b", drawingOfOrder(3, 'b'));
    add(u"c", drawingOfOrder(5, 'c'));
    HeaderSet set;
    set[1] = slicesOf(anchored(u"d", drawingOfOrder(7, 'd')));
    set[1].push_back(slicesOf(anchored(u"e", drawingOfOrder(2, 'e'))).front());
    builder.content.headers = {set};
    writer.saveAs(path, builder.content);
    const DocumentContent document = read();
    EXPECT_EQ(fromTheLowest(document, document.main), (Bytes{'b', 'c', 'a'}));
    EXPECT_EQ(fromTheLowest(document, document.headers.at(0)[1]), (Bytes{'e', 'd'}));
    std::map<Cp, std::uint8_t> anchored;
    for (const Anchor& anchor : anchorsOf(document.main)) {
        anchored.emplace(anchor.at, document.tables.drawings.at(anchor.index).place.at(0));
    }
    EXPECT_EQ(anchored, (std::map<Cp, std::uint8_t>{{1, 'a'}, {4, 'b'}, {7, 'c'}}));
}

TEST_F(DrawingWriter, ShapesOfOneOrderLieOverEachOtherAsTheirAnchorsFollow) {
    for (const std::uint8_t place : {'a', 'b', 'c'}) {
        add(u"x", drawingOfOrder(4, place));
    }
    writer.saveAs(path, builder.content);
    const DocumentContent document = read();
    EXPECT_EQ(fromTheLowest(document, document.main), (Bytes{'a', 'b', 'c'}));
}

TEST_F(DrawingWriter, ShapesOfALaterSaveComeOverAndBelowThoseThatWereThere) {
    HeaderSet set;
    set[1] = slicesOf(anchored(u"h", drawingOfOrder(5, 'h')));
    builder.content.headers = {set};
    add(u"a", drawingOfOrder(4, 'a'));
    writer.saveAs(path, builder.content);
    add(u"b", drawingOfOrder(6, 'b'));
    add(u"c", drawingOfOrder(5, 'c'));
    set[3] = slicesOf(anchored(u"i", drawingOfOrder(3, 'i')));
    builder.content.headers = {set};
    writer.save(builder.content);
    expectAsWrittenAtOnce();
    EXPECT_EQ(fromTheLowest(read(), read().main), (Bytes{'a', 'c', 'b'}));
    add(u"d", drawingOfOrder(5, 'd'));
    set[4] = slicesOf(anchored(u"j", drawingOfOrder(4, 'j')));
    builder.content.headers = {set};
    writer.save(builder.content);
    expectAsWrittenAtOnce();
    EXPECT_EQ(fromTheLowest(read(), read().main), (Bytes{'a', 'c', 'd', 'b'}));
}

TEST_F(DrawingWriter, BothPartsOfTheTextGetShapesWithEverySave) {
    writer.saveAs(path, builder.content);
    for (unsigned i = 0; i < 700; ++i) {
        add(u"x", drawing());
    }
    for (unsigned i = 0; i < 4; ++i) {
        HeaderSet set;
        set[1] = slicesOf(anchored(u"header", drawingOfPicture(addPicture(4 + i))));
        builder.content.headers = {set};
        for (unsigned count = 0; count < 120; ++count) {
            add(u"x", count % 40 == 0 ? drawingOfPicture(addPicture(20 + i)) : drawing());
        }
        writer.save(builder.content);
        expectAsWrittenAtOnce();
    }
}

// Of those only the rows of tables: where they are anchored, where their characters stand.
TEST_F(DrawingWriter, ASaveDoesNotWriteTheRecordsOfShapesThatWereThere) {
    const auto writtenBehind = [&](int shapes) {
        for (int i = 0; i < shapes; ++i) {
            add(u"x", largeDrawing(4000));
        }
        writer.save(builder.content);
        const std::size_t before = folder->trouble.bytesWritten;
        add(u"x", drawing());
        writer.save(builder.content);
        return folder->trouble.bytesWritten - before;
    };
    writer.saveAs(path, builder.content);
    writtenBehind(1);
    const std::size_t behindFew = writtenBehind(20);
    EXPECT_LT(writtenBehind(200), behindFew + std::size_t{200} * 100);
    expectAsWrittenAtOnce();
}

TEST_F(DrawingWriter, ADrawingWhoseAnchorIsGoneIsNotWritten) {
    add(u"a", drawingOfPicture(addPicture(4)));
    writer.saveAs(path, builder.content);
    builder.content.main.erase(builder.content.main.begin());
    builder.content.sections.back().length -= 3;
    writer.save(builder.content);
    EXPECT_TRUE(read().tables.drawings.empty());
}

TEST_F(DrawingWriter, TheBackgroundOfThePagesComesBackWithItsPictureThroughEverySave) {
    ShapeBytes page;
    page.flags = art::shapeIsBackground | art::shapeHasKind;
    page.anchor.reset();
    page.properties.setBlip(0x0186, 1); // fillBlip
    page.properties.set(art::fillFlags, 0x00100010);
    const std::uint32_t picture = addPicture(3);
    const auto valueAt = static_cast<std::uint32_t>(2 * art::headerSize + 8 + 8 + 2);
    builder.content.tables.background =
        Drawing{{},
                page.bytes(),
                {{2 * art::headerSize, Kind::shape, builder.content.tables.shapes++, 0},
                 {valueAt, Kind::picture, picture, 0}}};
    writer.saveAs(path, builder.content);
    const auto check = [&](std::size_t drawings) {
        const DocumentContent document = read();
        const DocumentTables& tables = document.tables;
        ASSERT_TRUE(tables.background);
        ASSERT_EQ(tables.background->references.size(), 2U);
        EXPECT_EQ(tables.background->records.size(), page.bytes().size());
        EXPECT_EQ(tables.shapePictures.size(), 1U);
        EXPECT_EQ(tables.drawings.size(), drawings);
    };
    check(0);
    add(u"a", drawing());
    writer.save(builder.content);
    check(1);
}

TEST_F(DrawingWriter, APictureBeyondThoseThatAStoreCountsIsNone) {
    constexpr unsigned most = 4095;
    for (unsigned i = 0; i <= most; ++i) {
        // Entries without a picture that anybody could look at, but different ones.
        LittleEndianWriter blip;
        art::writeRecord(blip, 0, 0x6E0, art::blipPng, number32(i));
        LittleEndianWriter entry;
        entry.zeros(art::fbseSize);
        entry.bytes(blip.data());
        LittleEndianWriter whole;
        art::writeRecord(whole, 2, 6, art::fbse, entry.data());
        builder.content.tables.shapePictures.push_back(std::make_shared<const Bytes>(whole.take()));
        add(u"a", drawingOfPicture(i));
    }
    writer.saveAs(path, builder.content);
    EXPECT_TRUE(checkDocument(folder->bytes(path)).empty());
    const DocumentContent document = readDocument(folder->bytes(path));
    EXPECT_EQ(document.tables.shapePictures.size(), most);
    EXPECT_EQ(document.tables.drawings.size(), most + 1);
}

} // namespace
} // namespace qvnd::word
