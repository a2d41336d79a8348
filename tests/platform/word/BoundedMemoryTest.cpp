// What damaged or hostile files may ask of memory, whatever they claim.

#include "platform/word/BoundedMemory.h"
#include "platform/word/CountedMemory.h"
#include "platform/word/docfile/DrawingBytes.h"
#include "platform/word/docfile/WordFileBuilder.h"
#include "platform/word/docfile/container/CompoundStore.h"
#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/format/Plc.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/pictures/Blip.h"
#include "platform/word/docfile/pictures/FlatDrawings.h"
#include "platform/word/docfile/pictures/ImageFile.h"
#include "platform/word/docfile/reader/DocumentReader.h"
#include "platform/word/docfile/styles/StyleSheetTable.h"
#include "platform/word/docfile/writer/DocumentWriter.h"
#include "platform/word/engine/DocumentOpening.h"
#include "platform/word/layout/PagesOnDemand.h"
#include "support/ContentBuilder.h"
#include "support/FixedFonts.h"
#include "support/Images.h"
#include "support/MemoryFolder.h"

#include <gtest/gtest.h>

#include <numeric>

namespace qvnd::word {
namespace {

using drawings::anchorTable;
using drawings::drawingBytes;
using drawings::ShapeBytes;
using drawings::sharedBytes;
using test::compoundFile;
using test::expectBounded;
using test::FilesElsewhere;
using test::megabyte;
using test::MemoryUse;
using test::memoryUseOf;
using test::mostFor;
using test::PieceText;
using test::plainWordFile;
using test::WordFile;
using test::wordFile;

// A paragraph for each, its characters with these properties.
PieceText paragraphsWith(const std::vector<Bytes>& characters) {
    PieceText piece;
    for (const Bytes& properties : characters) {
        piece.text += u"\u0001\r";
        piece.characters.push_back({1, properties});
        piece.characters.push_back({1, {}});
        piece.paragraphs.push_back({2, 0, {}});
    }
    return piece;
}

TEST(BoundedMemory, IsCounted) {
    const MemoryUse use = memoryUseOf([] {
        Bytes block(megabyte);
        block = Bytes();
        block.resize(megabyte);
    });
    EXPECT_GE(use.peak, megabyte);
    EXPECT_LT(use.peak, 2 * megabyte + 1000);
    EXPECT_GE(use.allocations, 2U);
}

// A small document with the storage of an embedded object, which the test fills.
class FileWithObject {
public:
    FileWithObject() : store(folder_.createBeside("/x", &path_), {}) {
        const auto streams = test::wordStreams(plainWordFile(u"x\r"));
        store.append(store.addStream(u"WordDocument"), streams.wordDocument);
        store.append(store.addStream(u"1Table"), streams.table);
        const auto pool = store.addStorage(CompoundDirectory::root, u"ObjectPool", {});
        object = store.addStorage(pool, u"_1000000001", {});
    }
    Bytes bytes() {
        store.commit(CompoundStore::Durability::killedProcess);
        return folder_.bytes(path_);
    }

private:
    test::MemoryFolder folder_;
    std::filesystem::path path_;

public:
    CompoundStore store;
    CompoundStore::Stream object;
};

TEST(BoundedMemory, TenThousandStoragesInEachOther) {
    FileWithObject file;
    CompoundStore::Stream inner = file.object;
    for (int depth = 0; depth < 10'000; ++depth) {
        inner = file.store.addStorage(inner, u"a_storage_with_a_very_long_name", {});
    }
    expectBounded(file.bytes());
}

// All streams of the object are the one that is really there.
TEST(BoundedMemory, StreamsOfAnObjectThatShareTheirSectors) {
    FileWithObject document;
    for (int i = 0; i < 500; ++i) {
        document.store.addStream(document.object, u"s" + qvnd::word::digits(i));
    }
    document.store.append(document.store.addStream(document.object, u"large"), Bytes(megabyte));
    Bytes file = document.bytes();
    std::size_t large = 0;
    const std::u16string name = u"large";
    const auto isEntry = [&](std::size_t at, char16_t first) {
        return file[at] == first && file[at + 1] == 0 && file[at + 66] == 2;
    };
    for (std::size_t at = 512; at + 128 <= file.size(); at += 128) {
        large = isEntry(at, u'l') ? at : large;
    }
    ASSERT_NE(large, 0U);
    for (std::size_t at = 512; at + 128 <= file.size(); at += 128) {
        if (isEntry(at, u's')) {
            std::copy_n(file.begin() + static_cast<long>(large) + 116, 12,
                        file.begin() + static_cast<long>(at) + 116);
        }
    }
    expectBounded(file);
}

// Each reaches from its place to the end of the Data stream.
TEST(BoundedMemory, DataOfPicturesThatLieOverEachOther) {
    WordFile file;
    LittleEndianWriter data;
    std::vector<Bytes> places;
    constexpr std::uint32_t count = 4000;
    constexpr std::uint32_t step = 0x44;
    const Bytes special = withSprm8({}, sprm::CFSpec, 1);
    for (std::uint32_t i = 0; i < count; ++i) {
        places.push_back(withSprm32(special, sprm::CPicLocation, i * step));
        data.u32((count - i) * step);
        data.u16(step);
        data.zeros(step - 6);
    }
    file.data = data.take();
    file.pieces.push_back(paragraphsWith(places));
    expectBounded(wordFile(file));
}

// A document with a picture of that size in its main stream and shapes that show it.
WordFile shapesOver(std::size_t pictureSize, std::uint32_t shapes, bool entryEach) {
    constexpr std::size_t entryHead = 36;
    const Bytes whole = encodeBlip(*recogniseImage(test::png(4, 2)));
    Bytes entry(whole.begin() + art::headerSize,
                whole.begin() + static_cast<long>(art::headerSize + entryHead));
    Bytes blip = drawings::artRecord(0, 0x6E0, art::blipPng, Bytes(pictureSize));
    WordFile file;
    PieceText piece;
    piece.text = std::u16string(shapes, u'\u0008') + u"\r";
    piece.characters = {{shapes, withSprm8({}, sprm::CFSpec, 1)}, {1, {}}};
    file.pieces.push_back(piece);
    // The text begins behind the FIB; the picture is more text of a piece that nothing names.
    PieceText hidden;
    hidden.text.assign(blip.size() / 2 + 1, u'\0');
    for (std::size_t i = 0; i < blip.size(); ++i) {
        hidden.text[i / 2] = static_cast<char16_t>(hidden.text[i / 2] | (blip[i] << (i % 2 * 8)));
    }
    file.pieces.push_back(hidden);
    file.lengths.text = shapes + 1;
    constexpr std::uint32_t textStart = 2048;
    const std::uint32_t at = textStart + 2 * (shapes + 1);
    for (unsigned i = 0; i < 4; ++i) {
        entry[28 + i] = static_cast<std::uint8_t>(at >> (8 * i));
    }
    std::vector<Bytes> entries;
    std::vector<Bytes> records;
    std::vector<drawings::AnchorBytes> anchors;
    for (std::uint32_t i = 0; i < shapes; ++i) {
        if (entryEach || i == 0) {
            entries.push_back(drawings::artRecord(2, 6, art::fbse, entry));
        }
        ShapeBytes shape;
        shape.id = 1025 + i;
        shape.kind = 75;
        shape.properties.setBlip(art::pib, entryEach ? i + 1 : 1);
        records.push_back(shape.bytes());
        anchors.push_back({i, shape.id});
    }
    file.parts[FibPair::DggInfo] = test::joined({sharedBytes(entries), drawingBytes(0, records)});
    Bytes places = anchorTable(anchors, shapes + 1);
    const std::size_t first = 4 * (std::size_t{shapes} + 1);
    for (std::uint32_t i = 0; i < shapes; ++i) { // a rectangle for each
        places[first + 26 * i + 13] = 4;
        places[first + 26 * i + 17] = 4;
    }
    file.parts[FibPair::PlcSpaMom] = places;
    return file;
}

TEST(BoundedMemory, EntriesOfPicturesThatNameOnePlace) {
    expectBounded(wordFile(shapesOver(megabyte, 500, true)));
}

TEST(BoundedMemory, ShapesThatShowOnePicture) {
    const WordFile file = shapesOver(megabyte, 500, false);
    const DocumentContent read = readDocument(wordFile(file));
    EXPECT_EQ(read.tables.drawings.size(), 500U);
    EXPECT_EQ(read.tables.shapePictures.size(), 1U);
    FlatDrawings flat;
    const MemoryUse use =
        memoryUseOf([&] { flat = flatDrawings(anchorsOf(read.main), read.tables); });
    EXPECT_EQ(flat.pictures.size(), 500U);
    EXPECT_LT(use.peak, 10 * megabyte);
    expectBounded(wordFile(file));
}

// Every second header of every section reaches over all text of headers.
TEST(BoundedMemory, HeadersThatLieOverEachOther) {
    constexpr Cp sections = 2000;
    constexpr Cp length = 100'000;
    WordFile file = plainWordFile(std::u16string(sections, u'\f') + std::u16string(length, u'\r'));
    file.lengths.text = sections;
    file.lengths.headers = length;
    for (Cp i = 0; i < sections; ++i) {
        file.sections.push_back({1, {}});
    }
    std::vector<std::uint32_t> stories(6 * (sections + 1) + 1);
    for (std::size_t i = 1; i < stories.size(); i += 2) {
        stories[i] = length - 1;
    }
    stories.push_back(length);
    file.parts[FibPair::PlcfHdd] = encodePlc(stories, {});
    expectBounded(wordFile(file));
}

// All of them at one place, a character each.
TEST(BoundedMemory, NotesAtOnePlace) {
    constexpr Cp notes = 200'000;
    WordFile file = plainWordFile(std::u16string(u"x\r") + std::u16string(notes + 2, u'\r'));
    file.pieces[0].compressed = true;
    file.lengths.text = 2;
    file.lengths.footnotes = notes + 2;
    std::vector<std::uint32_t> texts(notes + 2);
    std::iota(texts.begin(), texts.end(), 0U);
    std::vector<std::uint32_t> references(notes, 0);
    references.push_back(2);
    file.parts[FibPair::PlcffndRef] = encodePlc(references, Bytes(std::size_t{2} * notes));
    file.parts[FibPair::PlcffndTxt] = encodePlc(texts, {});
    expectBounded(wordFile(file));
}

TEST(BoundedMemory, NamesOfNobodyAmongTheAuthorsOfComments) {
    WordFile file = plainWordFile(u"x\r");
    file.parts[FibPair::GrpXstAtnOwners] = Bytes(3 * megabyte);
    expectBounded(wordFile(file));
}

TEST(BoundedMemory, ListsThatNothingDefines) {
    constexpr std::uint32_t count = 100'000;
    LittleEndianWriter table;
    table.u32(count);
    for (std::uint32_t i = 0; i < count; ++i) {
        table.u32(i + 1);
        table.zeros(12);
    }
    WordFile file = plainWordFile(u"x\r");
    file.parts[FibPair::PlfLfo] = table.take();
    expectBounded(wordFile(file));
}

TEST(BoundedMemory, DefinitionsOfListsThatNothingNames) {
    constexpr std::uint32_t count = 65'535;
    LittleEndianWriter table;
    table.u16(count);
    for (std::uint32_t i = 0; i < count; ++i) {
        table.u32(i + 1);
        table.u32(0);
        for (int level = 0; level < 9; ++level) {
            table.u16(StyleDefinition::none);
        }
        table.u16(0);
    }
    WordFile file = plainWordFile(u"x\r");
    file.parts[FibPair::PlfLst] = table.take();
    const Bytes bytes = wordFile(file);
    expectBounded(bytes);
    const MemoryUse opened = memoryUseOf([&] {
        const DocumentContent content = openedDocument(readDocument(bytes));
        EXPECT_TRUE(content.tables.listDefinitions.empty());
        DocumentWriter(std::make_shared<FilesElsewhere>()).saveAs("/a.doc", content);
    });
    EXPECT_LE(opened.peak, mostFor(bytes));
}

// A group of many shapes, and so many defaults that each of them would have to say.
TEST(BoundedMemory, DefaultsOfAllShapes) {
    WordFile file = plainWordFile(u"\u0008\r");
    file.pieces[0].characters = {{1, withSprm8({}, sprm::CFSpec, 1)}, {1, {}}};
    art::ShapeProperties defaults;
    for (std::uint16_t opid = 1; opid <= 4000; ++opid) {
        defaults.set(opid, opid);
    }
    std::vector<Bytes> members;
    for (std::uint32_t i = 0; i < 5'000; ++i) {
        ShapeBytes member;
        member.id = 1025 + i;
        member.anchor.reset();
        members.push_back(member.bytes());
    }
    const Bytes shared = drawings::artContainer(
        art::dggContainer,
        {drawings::artRecord(3, defaults.count(), art::fopt, defaults.encode())});
    file.parts[FibPair::DggInfo] =
        test::joined({shared, drawingBytes(0, {drawings::groupBytes(members)})});
    file.parts[FibPair::PlcSpaMom] = anchorTable({{0, 1025}}, 2);
    const DocumentContent read = readDocument(wordFile(file));
    ASSERT_EQ(read.tables.drawings.size(), 1U);
    EXPECT_FALSE(read.unread.remarks.empty());
    expectBounded(wordFile(file));
}

// In the form of one byte a character, all of them marked as special.
Bytes nothingBut(char16_t character) {
    const auto count = static_cast<Cp>(megabyte + megabyte / 4);
    PieceText piece;
    piece.text = std::u16string(count, character);
    piece.compressed = true;
    piece.characters = {{count, withSprm8({}, sprm::CFSpec, 1)}};
    WordFile file;
    file.pieces.push_back(piece);
    return wordFile(file);
}

TEST(BoundedMemory, NothingButParagraphMarks) { expectBounded(nothingBut(u'\r')); }

TEST(BoundedMemory, NothingButMarksOfCells) { expectBounded(nothingBut(u'\a')); }

TEST(BoundedMemory, NothingButCharactersThatStandForWhatIsNotThere) {
    for (const char16_t character : std::u16string(u"\u0001\u0008\u0013")) {
        SCOPED_TRACE(static_cast<int>(character));
        expectBounded(nothingBut(character));
    }
}

// A file of paragraph marks whose text is that stretch of them so many times over.
Bytes marksInPieces(int pieces) {
    auto streams = test::wordStreams(plainWordFile(std::u16string(megabyte, u'\r')));
    PieceTable table;
    Piece piece;
    piece.fc = 2048;
    piece.length = 2 * megabyte;
    piece.compressed = true;
    table.pieces.assign(static_cast<std::size_t>(pieces), piece);
    LittleEndianWriter changed;
    changed.bytes(streams.table);
    const auto place = static_cast<std::uint32_t>(changed.position());
    const Bytes clx = encodeClx(table);
    changed.bytes(clx);
    streams.table = changed.take();
    Fib claimed = readFib(streams.wordDocument);
    claimed.set(FibPair::Clx, {place, static_cast<std::uint32_t>(clx.size())});
    claimed.ccp.text = static_cast<std::uint32_t>(pieces) * 2 * megabyte;
    const Bytes head = encodeFib(claimed);
    std::copy(head.begin(), head.end(), streams.wordDocument.begin());
    return compoundFile(streams);
}

TEST(BoundedMemory, PiecesThatLieOverEachOtherAreReadAsMuchAsTheFileHolds) {
    const Bytes once = marksInPieces(1);
    const Bytes often = marksInPieces(16);
    const std::size_t honest = memoryUseOf([&] { readDocument(once); }).peak;
    EXPECT_LE(memoryUseOf([&] { readDocument(often); }).peak, 2 * honest);
}

// Every combination of two styles, each with many properties.
TEST(BoundedMemory, EveryPairOfTwoHundredParagraphAndTwoHundredCharacterStyles) {
    StyleSheet sheet;
    PropertyLists lists;
    Bytes rich;
    for (SprmOpcode opcode = sprm::CFBold; opcode < sprm::CFBold + 8; ++opcode) {
        rich = withSprm8(rich, opcode, 1);
    }
    for (const SprmOpcode opcode : {sprm::CHps, sprm::CRgFtc0, sprm::CRgFtc1, sprm::CRgFtc2}) {
        rich = withSprm16(rich, opcode, 40);
    }
    sheet.styles.resize(415);
    sheet.styles[0] = StyleDefinition{};
    sheet.styles[0]->name = u"Normal";
    sheet.styles[0]->sti = 0;
    for (std::size_t i = 15; i < sheet.styles.size(); ++i) {
        StyleDefinition style;
        style.kind = i % 2 == 0 ? StyleKind::paragraph : StyleKind::character;
        style.name = u"S" + digits(static_cast<std::int64_t>(i));
        style.sti = StyleDefinition::userDefined;
        style.character = lists.intern(withSprm16(rich, sprm::CHps, static_cast<unsigned>(i)));
        sheet.styles[i] = style;
    }
    WordFile file;
    file.parts[FibPair::Stshf] = encodeStyleSheet(sheet, lists);
    PieceText piece;
    for (StyleIndex paragraph = 16; paragraph < 415; paragraph += 2) {
        for (StyleIndex character = 15; character < 415; character += 2) {
            piece.text += u'x';
            piece.characters.push_back({1, withSprm16({}, sprm::CIstd, character)});
        }
        piece.text += u'\r';
        piece.characters.push_back({1, {}});
        piece.paragraphs.push_back({201, paragraph, {}});
    }
    file.pieces.push_back(piece);
    expectBounded(wordFile(file));
}

// Every place in the midst of a long paragraph takes along the lines that are still to come.
TEST(BoundedMemory, PlacesFromWhichPagesAreLaidOutAgain) {
    constexpr std::size_t characters = 8000;
    test::ContentBuilder builder;
    builder.add({test::plain(std::u16string(characters, u'文') + u"\r")});
    Bytes paper = withSprm16(withSprm16({}, sprm::SXaPage, 4000), sprm::SYaPage, 4000);
    for (const auto side : {sprm::SDxaLeft, sprm::SDxaRight, sprm::SDyaTop, sprm::SDyaBottom}) {
        paper = withSprm16(paper, side, 1000);
    }
    builder.content.sections.back().properties = builder.content.tables.lists.intern(paper);
    const layout::LayoutSource source = layout::sourceOf(builder.content);
    test::FixedFonts fonts;
    const MemoryUse once = memoryUseOf([&] {
        layout::DocumentLayout pages(source, fonts, {});
        while (pages.nextPage()) {
        }
    });
    const MemoryUse again = memoryUseOf([&] {
        layout::PagesOnDemand pages(source, fonts, {});
        while (pages.findNext()) {
        }
    });
    EXPECT_LT(again.peak, once.peak + 2 * (64 * 1024 + 40 * characters));
}

} // namespace
} // namespace qvnd::word
