#include "platform/word/docfile/reader/DocumentReader.h"

#include "platform/word/docfile/StoryChecks.h"
#include "platform/word/docfile/WordFileBuilder.h"
#include "platform/word/docfile/format/Plc.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/format/Sttb.h"
#include "platform/word/docfile/pictures/FlatDrawings.h"
#include "platform/word/docfile/styles/StyleSheetTable.h"
#include "platform/word/docfile/text/BookmarkTables.h"
#include "platform/word/docfile/text/Fields.h"
#include "platform/word/docfile/text/HeaderStory.h"
#include "platform/word/docfile/text/StoryRepair.h"
#include "support/ByteText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace qvnd::word {
namespace {

using test::hex;
using test::PieceText;
using test::plainWordFile;
using test::WordFile;
using testing::IsEmpty;

const Bytes boldOn = hex("35 08 01");
const Bytes italic = hex("36 08 01");
const Bytes centred = hex("61 24 01");
const Bytes keep = hex("05 24 01");

// Reads the file and demands what holds for every document.
DocumentContent readSound(const WordFile& file) {
    DocumentContent document = readDocument(test::wordFile(file));
    EXPECT_THAT(test::documentFaults(document), IsEmpty());
    return document;
}

DocumentContent readWithoutRemarks(const WordFile& file) {
    DocumentContent document = readSound(file);
    EXPECT_THAT(document.unread.remarks, IsEmpty());
    return document;
}

Bytes charactersAt(const DocumentContent& document, Cp position) {
    for (const CharacterRun& run : joined(document.main)->characters) {
        if (position < run.length) {
            const ByteView list = document.tables.lists[run.properties];
            return {list.begin(), list.end()};
        }
        position -= run.length;
    }
    ADD_FAILURE() << "no such character";
    return {};
}

Bytes paragraphList(const DocumentContent& document, std::size_t number) {
    const ByteView list =
        document.tables.lists[joined(document.main)->paragraphs.at(number).properties];
    return {list.begin(), list.end()};
}

Bytes operator+(Bytes left, const Bytes& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

// A picture's record in the Data stream: its length and that of its head, then content.
Bytes blob(std::uint8_t content) {
    LittleEndianWriter writer;
    writer.u32(0x44 + 4);
    writer.u16(0x44);
    writer.zeros(0x44 - 6);
    for (int i = 0; i < 4; ++i) {
        writer.u8(content);
    }
    return writer.take();
}

Bytes sheetWithStyles(std::size_t count) {
    StyleSheet sheet;
    sheet.styles.resize(std::max<std::size_t>(count, 15));
    for (std::size_t i = 0; i < count; ++i) {
        sheet.styles[i] = StyleDefinition{};
        sheet.styles[i]->name = u"s" + std::u16string(1, static_cast<char16_t>(u'a' + i));
    }
    return encodeStyleSheet(sheet, PropertyLists{});
}

TEST(DocumentReader, TextOfOnePieceIsTheMainStory) {
    const DocumentContent document = readWithoutRemarks(plainWordFile(u"第一段\rsecond\r"));
    EXPECT_EQ(joined(document.main)->text, u"第一段\rsecond\r");
    ASSERT_EQ(joined(document.main)->paragraphs.size(), 2U);
    EXPECT_EQ(joined(document.main)->paragraphs[0].length, 4U);
    ASSERT_EQ(document.sections.size(), 1U);
    EXPECT_EQ(document.sections[0].length, joined(document.main)->size());
}

TEST(DocumentReader, CompressedPiecesAreMappedToUnicode) {
    WordFile file = plainWordFile(u"\x93hi\x94\x85\r");
    file.pieces[0].compressed = true;
    EXPECT_EQ(joined(readWithoutRemarks(file).main)->text, u"\u201Chi\u201D\u2026\r");
}

TEST(DocumentReader, PiecesStandInTheirOrderNotInTheFiles) {
    WordFile file;
    file.pieces = {{u"one ", false, 0, {{4, boldOn}}, {}},
                   {u"two ", true, 0, {{4, italic}}, {}},
                   {u"three\r", false, 0, {}, {{6, 0, centred}}}};
    file.storedOrder = {2, 0, 1};
    const DocumentContent document = readWithoutRemarks(file);
    EXPECT_EQ(joined(document.main)->text, u"one two three\r");
    EXPECT_EQ(charactersAt(document, 0), boldOn);
    EXPECT_EQ(charactersAt(document, 4), italic);
    EXPECT_TRUE(charactersAt(document, 8).empty());
    ASSERT_EQ(joined(document.main)->paragraphs.size(), 1U);
}

TEST(DocumentReader, AParagraphHasThePropertiesOfItsMark) {
    WordFile file;
    file.pieces = {{u"begin ", false, 0, {}, {{6, 0, keep}}},
                   {u"end\rnext\r", false, 0, {}, {{4, 0, centred}, {5, 0, keep}}}};
    file.storedOrder = {1, 0};
    const DocumentContent document = readWithoutRemarks(file);
    ASSERT_EQ(joined(document.main)->paragraphs.size(), 2U);
    EXPECT_EQ(joined(document.main)->paragraphs[0].length, 10U);
    EXPECT_EQ(paragraphList(document, 0), centred);
    EXPECT_EQ(paragraphList(document, 1), keep);
}

TEST(DocumentReader, NeighboursThatLookAlikeAreOneRun) {
    WordFile file;
    file.pieces = {{u"ab", false, 0, {{2, boldOn}}, {}},
                   {u"cd\r", false, 0, {{2, boldOn}, {1, {}}}, {}}};
    const DocumentContent document = readWithoutRemarks(file);
    ASSERT_EQ(joined(document.main)->characters.size(), 2U);
    EXPECT_EQ(joined(document.main)->characters[0].length, 4U);
}

TEST(CharacterRuns, GrowWhileTheyLookAlikeAndAreNeverEmpty) {
    constexpr auto bold = static_cast<PropertyListId>(1);
    std::vector<CharacterRun> runs;
    appendRun(runs, {0, bold});
    EXPECT_TRUE(runs.empty());
    appendRun(runs, {2, PropertyListId::empty});
    appendRun(runs, {0, bold});
    appendRun(runs, {3, PropertyListId::empty});
    appendRun(runs, {1, bold});
    EXPECT_EQ(runs, (std::vector<CharacterRun>{{5, PropertyListId::empty}, {1, bold}}));
}

TEST(DocumentReader, APiecesShortModifierIsAddedToItsCharactersOnly) {
    WordFile file;
    file.pieces = {{u"ab", false, 0x01AA, {{2, italic}}, {}},
                   {u"c\r", false, 0, {{2, italic}}, {}}};
    const DocumentContent document = readWithoutRemarks(file);
    EXPECT_EQ(charactersAt(document, 0), italic + boldOn);
    EXPECT_EQ(charactersAt(document, 2), italic);
}

TEST(DocumentReader, APiecesLongModifierIsAddedToCharactersAndToParagraphsThatEndInIt) {
    WordFile file;
    file.modifiers = {keep, boldOn + centred};
    file.pieces = {{u"a", false, 0, {}, {}},
                   {u"b\rc", false, 0x0003, {}, {{2, 0, keep}, {1, 0, keep}}},
                   {u"d\r", false, 0, {}, {{2, 0, keep}}}};
    const DocumentContent document = readWithoutRemarks(file);
    EXPECT_TRUE(charactersAt(document, 0).empty());
    EXPECT_EQ(charactersAt(document, 1), boldOn);
    EXPECT_EQ(charactersAt(document, 3), boldOn);
    EXPECT_EQ(paragraphList(document, 0), keep + centred);
    EXPECT_EQ(paragraphList(document, 1), keep);
}

TEST(DocumentReader, ModifiersThatChangeTheStyleAreAppliedToIt) {
    WordFile file;
    file.parts[FibPair::Stshf] = sheetWithStyles(15);
    // Style 5; one level more; styles 3 and 4 become 7 and 8.
    file.modifiers = {hex("00 46 05 00"), hex("02 26 02"),
                      hex("01 C6 0A 00 00 0300 0400 0700 0800 00")};
    const auto styled = [](StyleIndex style, std::uint16_t modifier) {
        return PieceText{u"x\r", false, modifier, {}, {{2, style, {}}}};
    };
    file.pieces = {styled(2, 0x0001), styled(3, 0x0003), styled(9, 0x0003),
                   styled(4, 0x0005), styled(6, 0x0005), styled(0, 0x0003)};
    const DocumentContent document = readWithoutRemarks(file);
    std::vector<StyleIndex> styles;
    for (const ParagraphRun& run : joined(document.main)->paragraphs) {
        styles.push_back(run.style);
        EXPECT_EQ(run.properties, PropertyListId::empty);
    }
    EXPECT_EQ(styles, (std::vector<StyleIndex>{5, 5, 9, 8, 6, 0}));
}

TEST(DocumentReader, ReferredParagraphPropertiesStandInTheirPlace) {
    WordFile file = plainWordFile(u"a\rb\r");
    file.data = hex("FF FF") + Bytes{3, 0} + centred;
    file.pieces[0].paragraphs = {{2, 1, hex("46 66 02000000")},
                                 {2, 0, keep + hex("6B 64 02000000")}};
    file.parts[FibPair::Stshf] = sheetWithStyles(2);
    const DocumentContent document = readWithoutRemarks(file);
    EXPECT_EQ(paragraphList(document, 0), centred);
    EXPECT_EQ(joined(document.main)->paragraphs[0].style, 1);
    EXPECT_EQ(paragraphList(document, 1), keep + centred);
}

TEST(DocumentReader, AReferralIntoNowhereOrOnwardsIsLeftOutWithARemark) {
    WordFile file = plainWordFile(u"a\rb\r");
    file.data = Bytes{9, 0} + hex("46 66 00000000") + centred;
    file.pieces[0].paragraphs = {{2, 0, keep + hex("46 66 99990000")},
                                 {2, 0, hex("46 66 00000000")}};
    const DocumentContent document = readSound(file);
    EXPECT_EQ(paragraphList(document, 0), keep);
    EXPECT_EQ(paragraphList(document, 1), centred);
    EXPECT_EQ(document.unread.remarks.size(), 1U);
}

TEST(DocumentReader, ALevelThatNoListHasIsLeftOutWithARemark) {
    WordFile file = plainWordFile(u"a\rb\rc\r");
    const Bytes ninth = hex("0A 26 08");
    const Bytes bodyOfOldNumbering = hex("0A 26 0C");
    file.pieces[0].paragraphs = {
        {2, 0, hex("0A 26 09") + centred}, {2, 0, ninth}, {2, 0, bodyOfOldNumbering}};
    const DocumentContent document = readSound(file);
    EXPECT_EQ(paragraphList(document, 0), centred);
    EXPECT_EQ(paragraphList(document, 1), ninth);
    EXPECT_EQ(paragraphList(document, 2), bodyOfOldNumbering);
    EXPECT_EQ(document.unread.remarks.size(), 1U);
}

TEST(DocumentReader, RowEndsKeepTheirTableProperties) {
    const Bytes row = hex("16 24 01 17 24 01 08 D6 06 00 01 00 00 64 00");
    WordFile file = plainWordFile(u"a\x07\x07z\r");
    file.pieces[0].paragraphs = {{2, 0, hex("16 24 01")}, {1, 0, row}, {2, 0, {}}};
    const DocumentContent document = readWithoutRemarks(file);
    ASSERT_EQ(joined(document.main)->paragraphs.size(), 3U);
    EXPECT_EQ(paragraphList(document, 1), row);
}

TEST(DocumentReader, PictureLocationsBecomeIndexesOneForEachOffset) {
    WordFile file = plainWordFile(u"\x01\x01\x01\r");
    file.data = blob(0xAA) + blob(0xBB);
    const Bytes first = hex("03 6A 00000000 55 08 01");
    const Bytes second = hex("55 08 01 03 6A 48000000");
    file.pieces[0].characters = {{1, second}, {1, first}, {1, second}, {1, {}}};
    const DocumentContent document = readWithoutRemarks(file);
    ASSERT_EQ(document.tables.blobs.size(), 2U);
    const auto index = [&](Cp at) {
        const Bytes list = charactersAt(document, at);
        return LittleEndianReader(findSprm(list, sprm::CPicLocation)->operand, "index").u32();
    };
    EXPECT_EQ(index(0), index(2));
    EXPECT_EQ(document.tables.blobs.at(index(0))->back(), 0xBB);
    EXPECT_EQ(document.tables.blobs.at(index(1))->back(), 0xAA);
}

TEST(DocumentReader, APictureWithoutDataBecomesABlankWithARemark) {
    WordFile file = plainWordFile(u"a\x01z\r");
    file.pieces[0].characters = {{4, hex("35 08 01 03 6A 00001000 55 08 01")}};
    const DocumentContent document = readSound(file);
    EXPECT_EQ(joined(document.main)->text, u"a z\r");
    EXPECT_EQ(charactersAt(document, 1), boldOn);
    EXPECT_TRUE(document.tables.blobs.empty());
    ASSERT_EQ(document.unread.remarks.size(), 1U);
    EXPECT_NE(document.unread.remarks[0].find(u"图片"), std::u16string::npos);
}

WordFile fileWithObjectField() {
    WordFile file = plainWordFile(u"\x13 EMBED x \x14\x01\x15\r");
    file.pieces[0].characters = {{10, {}}, {1, hex("0A 08 01 03 6A 39300000 55 08 01")}, {3, {}}};
    return file;
}

TEST(DocumentReader, AnObjectsLocationIsThatOfItsStorage) {
    WordFile file = fileWithObjectField();
    file.storages = {u"ObjectPool", u"ObjectPool/_12345"};
    const DocumentContent document = readSound(file);
    EXPECT_EQ(charactersAt(document, 10), hex("0A 08 01 0E 68 00000000 55 08 01"));
    EXPECT_EQ(document.tables.objects.size(), 1U);
    EXPECT_TRUE(document.tables.blobs.empty());
}

TEST(DocumentReader, AnObjectWithoutStorageHasNoLocation) {
    const DocumentContent document = readSound(fileWithObjectField());
    EXPECT_EQ(charactersAt(document, 10), hex("0A 08 01 55 08 01"));
    EXPECT_TRUE(document.tables.objects.empty());
}

TEST(DocumentReader, FieldsComeWithWhatTheFileSaysOfThem) {
    WordFile file = plainWordFile(u"\x13 PAGE \x14"
                                  u"1\x15\r");
    const std::vector<FieldMark> marks{{0, 0x13, 0x21}, {7, 0x14, 0xFF}, {9, 0x15, 0x80}};
    file.parts[FibPair::PlcfFldMom] = encodeFields(marks, 11);
    EXPECT_EQ(joined(readWithoutRemarks(file).main)->fields, marks);
}

TEST(DocumentReader, StrayFieldCharactersBecomeBlanksWithARemark) {
    const DocumentContent document = readSound(plainWordFile(u"a\x15z\x13\r"));
    EXPECT_EQ(joined(document.main)->text, u"a z \r");
    EXPECT_TRUE(joined(document.main)->fields.empty());
    EXPECT_FALSE(document.unread.remarks.empty());
}

TEST(DocumentReader, AMissingLastMarkIsAppended) {
    WordFile file = plainWordFile(u"one\rtwo");
    file.pieces[0].paragraphs = {{4, 0, keep}, {3, 0, centred}};
    const DocumentContent document = readSound(file);
    EXPECT_EQ(joined(document.main)->text, u"one\rtwo\r");
    ASSERT_EQ(joined(document.main)->paragraphs.size(), 2U);
    EXPECT_EQ(paragraphList(document, 1), centred);
    EXPECT_EQ(document.sections.back().length, 8U);
}

TEST(DocumentReader, AfterATableAtTheVeryEndAParagraphFollows) {
    WordFile file = plainWordFile(u"a\x07\x07");
    file.pieces[0].paragraphs = {{2, 0, hex("16 24 01")}, {1, 0, hex("16 24 01 17 24 01")}};
    const DocumentContent document = readSound(file);
    EXPECT_EQ(joined(document.main)->text, u"a\x07\x07\r");
    ASSERT_EQ(joined(document.main)->paragraphs.size(), 3U);
    EXPECT_TRUE(paragraphList(document, 2).empty());
}

TEST(DocumentReader, AParagraphWhoseStyleDoesNotExistGetsTheFirst) {
    WordFile file = plainWordFile(u"a\rb\r");
    file.pieces[0].paragraphs = {{2, 3, {}}, {2, 999, {}}};
    const DocumentContent document = readSound(file);
    EXPECT_EQ(joined(document.main)->paragraphs[0].style, 0);
    EXPECT_EQ(joined(document.main)->paragraphs[1].style, 0);
    EXPECT_EQ(document.unread.remarks.size(), 1U);
}

TEST(DocumentReader, EqualPropertiesUnderStylesOfTheSameLowByteKeepTheirStyles) {
    WordFile file = plainWordFile(u"a\rb\r");
    file.pieces[0].paragraphs = {{2, 1, centred}, {2, 257, centred}};
    file.parts[FibPair::Stshf] = sheetWithStyles(258);
    const DocumentContent document = readWithoutRemarks(file);
    EXPECT_EQ(joined(document.main)->paragraphs[0].style, 1);
    EXPECT_EQ(joined(document.main)->paragraphs[1].style, 257);
}

TEST(DocumentReader, APageBreakStandsWithinItsParagraph) {
    const DocumentContent document = readWithoutRemarks(plainWordFile(u"a\x0C"
                                                                      u"b\r"));
    EXPECT_EQ(joined(document.main)->paragraphs.size(), 1U);
}

TEST(DocumentReader, ABreakThatThePagesEndAParagraphWithEndsIt) {
    WordFile file = plainWordFile(u"a\x0C"
                                  u"b\r");
    file.pieces[0].paragraphs = {{2, 0, centred}, {2, 0, keep}};
    const DocumentContent document = readWithoutRemarks(file);
    ASSERT_EQ(joined(document.main)->paragraphs.size(), 2U);
    EXPECT_EQ(paragraphList(document, 0), centred);
}

TEST(DocumentReader, SectionsEndInTheirBreakAndKeepTheirProperties) {
    const Bytes landscape = hex("1D 30 02");
    WordFile file = plainWordFile(u"one\x0Ctwo\r");
    file.sections = {{4, landscape}, {4, hex("09 30 00")}};
    const DocumentContent document = readWithoutRemarks(file);
    ASSERT_EQ(document.sections.size(), 2U);
    EXPECT_EQ(document.sections[0].length, 4U);
    const ByteView list = document.tables.lists[document.sections[0].properties];
    EXPECT_EQ(Bytes(list.begin(), list.end()), landscape);
    // The break ends its paragraph, whatever the pages say.
    EXPECT_EQ(joined(document.main)->paragraphs.size(), 2U);
}

TEST(DocumentReader, ASectionWithoutItsBreakIsJoinedToTheNext) {
    WordFile file = plainWordFile(u"one two\x0Cthree\r");
    file.sections = {{4, hex("09 30 00")}, {4, hex("09 30 01")}, {6, hex("09 30 02")}};
    const DocumentContent document = readSound(file);
    ASSERT_EQ(document.sections.size(), 2U);
    EXPECT_EQ(document.sections[0].length, 8U);
    EXPECT_EQ(document.tables.lists[document.sections[0].properties][2], 1);
    EXPECT_EQ(document.unread.remarks.size(), 1U);
}

TEST(DocumentReader, HeadersAreReadBySectionWithoutTheirGuard) {
    Story header;
    header.text = u"\x13 PAGE \x15 head\r";
    header.characters = {{header.size(), PropertyListId::empty}};
    header.paragraphs = {{header.size(), 0, PropertyListId::empty}};
    header.fields = {{0, 0x13, 0x21}, {7, 0x15, 0}};
    std::vector<HeaderSet> sets(2);
    sets[1][static_cast<std::size_t>(HeaderKind::oddFooter)] = slicesOf(header);
    Story mark = header;
    mark.text = u"\r";
    mark.fields.clear();
    const EncodedHeaders encoded = encodeHeaders({}, sets, std::make_shared<const Story>(mark));
    const std::u16string part = joined(encoded.text)->text;

    WordFile file = plainWordFile(u"a\x0Cz\r" + part + u"\r");
    file.sections = {{2, {}}, {2, {}}};
    file.lengths.text = 4;
    file.lengths.headers = lengthOf(encoded.text);
    file.parts[FibPair::PlcfHdd] = encoded.plcfHdd;
    file.parts[FibPair::PlcfFldHdr] = encodeFields(fieldsOf(encoded.text), lengthOf(encoded.text));
    const DocumentContent document = readWithoutRemarks(file);
    EXPECT_EQ(joined(document.main)->text, u"a\x0Cz\r");
    ASSERT_EQ(document.headers.size(), 2U);
    EXPECT_TRUE(document.headers[0][3].empty());
    EXPECT_EQ(joined(document.headers[1][3])->text, header.text);
    EXPECT_EQ(fieldsOf(document.headers[1][3]), header.fields);
}

TEST(DocumentReader, WhatIsNotReadIsCounted) {
    WordFile file = plainWordFile(u"text\r");
    const auto plc = [](std::size_t count, std::size_t size) {
        return encodePlc(std::vector<std::uint32_t>(count + 1), Bytes(count * size));
    };
    file.parts[FibPair::PlcffndRef] = plc(3, 2);
    file.parts[FibPair::PlcfendRef] = plc(2, 2);
    file.parts[FibPair::PlcfandRef] = plc(4, 30);
    file.parts[FibPair::PlcSpaMom] = plc(5, 26);
    file.parts[FibPair::PlcfHdrtxbxTxt] = plc(2, 22);
    file.parts[FibPair::PlcftxbxTxt] = plc(3, 22);
    file.parts[FibPair::PlcfHdrtxbxTxt] = plc(2, 22);
    file.storages = {u"ObjectPool", u"ObjectPool/_1", u"ObjectPool/_2", u"Macros"};
    const DocumentContent document = readSound(file);
    EXPECT_THAT(document.unread.remarks,
                testing::ElementsAre(u"有 9 个脚注、尾注或批注已损坏，未能读出，第一处在“text”。"));
    const UnreadContents& unread = document.unread;
    EXPECT_EQ(unread.sideStories, (std::array<int, anchorKinds>{3, 2, 4, 0}));
    EXPECT_EQ(unread.textBoxes, 3); // which no shape shows, one of them over a header
    EXPECT_THAT(unread.kinds, testing::ElementsAre(UnreadKind::macros));
    EXPECT_THAT(readWithoutRemarks(plainWordFile(u"text\r")).unread.kinds, testing::IsEmpty());
}

TEST(DocumentReader, StructuresThatAreNotReadAreNotedByTheirKind) {
    const auto kindsOf = [](FibPair pair, const Bytes& table) {
        WordFile file = plainWordFile(u"text\r");
        file.parts[pair] = table;
        return readWithoutRemarks(file).unread.kinds;
    };
    const Bytes oneName = hex("FFFF 0100 0000 0100 4100");
    const Bytes noName = hex("FFFF 0000 0000");
    const std::map<FibPair, UnreadKind> stringTables{
        {FibPair::SttbTtmbd, UnreadKind::embeddedFonts},
        {FibPair::SttbfBkmkSdt, UnreadKind::contentControls},
        {FibPair::SttbfBkmkProt, UnreadKind::editableRanges},
        {FibPair::SttbfCaption, UnreadKind::captions},
        {FibPair::SttbfAutoCaption, UnreadKind::captions}};
    for (const auto& [pair, kind] : stringTables) {
        EXPECT_EQ(kindsOf(pair, oneName), std::set{kind}) << static_cast<int>(pair);
        EXPECT_EQ(kindsOf(pair, noName), std::set<UnreadKind>()) << static_cast<int>(pair);
    }
    const std::map<FibPair, UnreadKind> others{
        {FibPair::Pms, UnreadKind::mailMerge},     {FibPair::PmsNew, UnreadKind::mailMerge},
        {FibPair::ODSO, UnreadKind::mailMerge},    {FibPair::PlcfWkb, UnreadKind::subdocuments},
        {FibPair::RouteSlip, UnreadKind::routing}, {FibPair::MsoEnvelope, UnreadKind::envelope}};
    for (const auto& [pair, kind] : others) {
        EXPECT_EQ(kindsOf(pair, Bytes(20)), std::set{kind}) << static_cast<int>(pair);
        EXPECT_EQ(kindsOf(pair, Bytes(4)), std::set<UnreadKind>()) << static_cast<int>(pair);
    }
}

// A file with a place of Word 2007, which this program writes none of.
Bytes fileWithPlaceOfWord2007(FibPair pair, const Bytes& table) {
    constexpr std::size_t pairsAt = 154;
    constexpr std::size_t pairsOfWord2007 = 0xB7;
    test::WordStreams streams = test::wordStreams(plainWordFile(u"text\r"));
    Bytes& head = streams.wordDocument;
    const auto place = [&](std::size_t number) {
        return head.begin() + static_cast<std::ptrdiff_t>(pairsAt + 8 * number);
    };
    constexpr std::ptrdiff_t versionSize = 6; // cswNew and the words behind it
    const Bytes version(place(Fib::pairsOfWord2003), place(Fib::pairsOfWord2003) + versionSize);
    std::fill(place(Fib::pairsOfWord2003), place(pairsOfWord2007), std::uint8_t{0});
    std::copy(version.begin(), version.end(), place(pairsOfWord2007));
    head[pairsAt - 2] = pairsOfWord2007;
    LittleEndianWriter pairBytes;
    pairBytes.u32(static_cast<std::uint32_t>(streams.table.size()));
    pairBytes.u32(static_cast<std::uint32_t>(table.size()));
    const Bytes bytes = pairBytes.take();
    std::copy(bytes.begin(), bytes.end(), place(static_cast<std::size_t>(pair)));
    streams.table.insert(streams.table.end(), table.begin(), table.end());
    return test::compoundFile(streams);
}

TEST(DocumentReader, MarksOfMovedTextAreNoted) {
    const Bytes oneName = hex("FFFF 0100 0000 0100 4100");
    for (const FibPair pair : {FibPair::SttbfBkmkMoveFrom, FibPair::SttbfBkmkMoveTo}) {
        const DocumentContent read = readDocument(fileWithPlaceOfWord2007(pair, oneName));
        EXPECT_EQ(read.unread.kinds, std::set{UnreadKind::moveMarks}) << static_cast<int>(pair);
    }
}

TEST(DocumentReader, WhatTheHeadOfAFileSaysOfItIsNoted) {
    const auto kindsOf = [](std::size_t at, std::uint8_t bits) {
        test::WordStreams streams = test::wordStreams(plainWordFile(u"text\r"));
        streams.wordDocument.at(at) |= bits;
        return readDocument(test::compoundFile(streams)).unread.kinds;
    };
    EXPECT_EQ(kindsOf(8, 3), std::set{UnreadKind::autoText}) << "pnNext";
    EXPECT_EQ(kindsOf(11, 4), std::set{UnreadKind::readOnlyAdvice}) << "fReadOnlyRecommended";
    EXPECT_EQ(kindsOf(11, 8), std::set{UnreadKind::writePassword}) << "fWriteReservation";
}

TEST(DocumentReader, StoragesThatAreNotReadAreNoted) {
    const auto kindsOf = [](const std::u16string& storage) {
        const test::WordStreams streams = test::wordStreams(plainWordFile(u"text\r"));
        return readDocument(test::compoundFile(streams, {storage})).unread.kinds;
    };
    EXPECT_EQ(kindsOf(u"_VBA_PROJECT_CUR"), std::set{UnreadKind::macros});
    EXPECT_EQ(kindsOf(u"_xmlsignatures"), std::set{UnreadKind::signature});
    EXPECT_EQ(kindsOf(u"MsoDataStore"), std::set{UnreadKind::customXml});
    EXPECT_EQ(kindsOf(u"Other"), std::set<UnreadKind>());
}

TEST(DocumentReader, ToolbarsAndKeysAreNotedWhereTheFileChangesThem) {
    const auto toolbars = [](const Bytes& commands) {
        WordFile file = plainWordFile(u"text\r");
        file.parts[FibPair::Cmds] = commands;
        return readWithoutRemarks(file).unread.kinds.contains(UnreadKind::toolbars);
    };
    EXPECT_FALSE(toolbars({}));
    EXPECT_FALSE(toolbars(hex("FF40")));
    EXPECT_FALSE(toolbars(hex("00 12")));
    const Bytes macro = test::joined({hex("FF 01 01000000"), Bytes(24)});
    EXPECT_FALSE(toolbars(test::joined({macro, hex("40")})));
    EXPECT_TRUE(toolbars(test::joined({macro, hex("12 00")})));
    EXPECT_FALSE(toolbars(hex("FF 02 01000000 00000000 03 00000000 40")));
    EXPECT_TRUE(toolbars(test::joined({hex("FF 03 01000000"), Bytes(14), hex("40")})));
    EXPECT_TRUE(toolbars(test::joined({hex("FF 04 01000000"), Bytes(14), hex("40")})));
    const Bytes names = hex("10 FFFF 0100 0200 0100 4100 0000  11 0100 0000 0100 4100 0000");
    EXPECT_FALSE(toolbars(test::joined({hex("FF"), names, hex("40")})));
    EXPECT_TRUE(toolbars(test::joined({hex("FF"), names, hex("12")})));
    EXPECT_FALSE(toolbars(hex("FF 03 FFFFFFFF")));
}

TEST(DocumentReader, SmartTagsAreCounted) {
    WordFile file = plainWordFile(u"text\r");
    file.parts[FibPair::SttbfBkmkFactoid] = hex("FFFF 0200 0000 0000 0000");
    EXPECT_EQ(readWithoutRemarks(file).unread.smartTags, 2);
}

TEST(DocumentReader, TextsThatSpeakOfTheDocumentAreKeptAndPathsAndPasswordsAreNot) {
    WordFile file = plainWordFile(u"text\r");
    Sttb table;
    for (std::int64_t i = 0; i < 18; ++i) {
        table.entries.push_back({u"t" + digits(i), {}});
    }
    table.entries[2].text = std::u16string(300, u'x');
    file.parts[FibPair::SttbfAssoc] = encodeSttb(table);
    const auto texts = readWithoutRemarks(file).information.associated;
    ASSERT_EQ(texts.size(), 18U);
    std::u16string kept;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        kept += texts[i].empty() ? u"" : digits(static_cast<std::int64_t>(i)) + u" ";
    }
    EXPECT_EQ(kept, u"2 3 4 6 7 ");
    EXPECT_EQ(texts[2].size(), 255U);
    EXPECT_EQ(texts[7], u"t7");
}

TEST(DocumentReader, ABookmarkInAPartThatNobodyReadsIsCounted) {
    WordFile file = plainWordFile(u"text\r" + std::u16string(u"macro\r\r"));
    file.lengths.text = 5;
    file.lengths.macros = 6;
    const BookmarkTables tables = encodeBookmarks(std::vector<Bookmark>{{u"x", 6, 8, 0}}, 12);
    file.parts[FibPair::SttbfBkmk] = tables.names;
    file.parts[FibPair::PlcfBkf] = tables.starts;
    file.parts[FibPair::PlcfBkl] = tables.ends;
    EXPECT_THAT(readSound(file).unread.remarks,
                testing::ElementsAre(u"有 1 个书签不在任何文字中，未读入。"));
}

TEST(DocumentReader, TextBoxesWithoutDrawingsAreReadWithTheirFields) {
    const std::u16string boxes = u"one\r\x13 PAGE \x15 two\r";
    WordFile file = plainWordFile(u"m\bi\b\r" + std::u16string(u"head\r") + boxes + u"\r\r");
    file.lengths.text = 5;
    file.lengths.headers = 5;
    file.lengths.textBoxes = static_cast<Cp>(boxes.size()) + 1;
    const std::vector<FieldMark> fields = {{4, 0x13, 0x21}, {11, 0x15, 0}};
    file.parts[FibPair::PlcfFldTxbx] = encodeFields(fields, file.lengths.textBoxes);
    const auto shapes = [](std::size_t size, std::size_t at, std::size_t count) {
        Bytes data(size * count);
        for (std::size_t i = 0; i < 2; ++i) {
            data[i * size + at] = static_cast<std::uint8_t>(i + 7);
        }
        return data;
    };
    file.parts[FibPair::PlcSpaMom] = encodePlc({1, 3, 5}, shapes(26, 0, 2));
    file.parts[FibPair::PlcftxbxTxt] = encodePlc({0, 4, 17, 18}, shapes(22, 14, 3));
    const DocumentContent document = readWithoutRemarks(file);
    const FlatDrawings flat = flatDrawings(joined(document.main)->anchors, document.tables);
    ASSERT_EQ(flat.textBoxes.size(), 2U);
    EXPECT_EQ(flat.textBoxes[0].at, 1U);
    EXPECT_EQ(flat.textBoxes[0].text->text, u"one\r");
    EXPECT_EQ(flat.textBoxes[1].at, 3U);
    EXPECT_EQ(flat.textBoxes[1].text->text, u"\x13 PAGE \x15 two\r");
    const std::vector<FieldMark> own = {{0, 0x13, 0x21}, {7, 0x15, 0}};
    EXPECT_EQ(flat.textBoxes[1].text->fields, own);
    EXPECT_EQ(document.unread.textBoxes, 0);
}

TEST(DocumentReader, TheSettingsAreKeptAsTheyCame) {
    WordFile file = plainWordFile(u"text\r");
    file.parts[FibPair::Dop] = hex("01 02 03 04 05");
    EXPECT_EQ(readWithoutRemarks(file).settings, hex("01 02 03 04 05"));
}

} // namespace
} // namespace qvnd::word
