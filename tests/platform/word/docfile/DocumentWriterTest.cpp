#include "platform/word/docfile/writer/DocumentWriter.h"

#include "platform/word/docfile/CompoundChecks.h"
#include "platform/word/docfile/container/CompoundFile.h"
#include "platform/word/docfile/format/Fib.h"
#include "platform/word/docfile/formatting/FormattingPage.h"
#include "platform/word/docfile/reader/DocumentReader.h"
#include "platform/word/docfile/text/PieceTable.h"
#include "support/ContentBuilder.h"
#include "support/MemoryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace qvnd::word {
namespace {

using test::bold;
using test::compoundFaults;
using test::ContentBuilder;
using test::FileCall;
using test::FileTrouble;
using test::plain;
using testing::IsEmpty;

class DocumentWriterTest : public testing::Test {
protected:
    void saveAs() { writer.saveAs(path, builder.content); }
    void save() { writer.save(builder.content); }
    const Bytes& file() const { return folder->bytes(path); }
    DocumentContent read() const {
        EXPECT_THAT(compoundFaults(file()), IsEmpty());
        return readDocument(file());
    }
    Bytes stream(const std::u16string& name) const {
        return CompoundFile::over(file()).stream(name);
    }
    Fib fib() const { return readFib(stream(u"WordDocument")); }
    std::vector<Piece> pieces() const {
        const FcLcb clx = fib().at(FibPair::Clx);
        const Bytes table = stream(u"1Table");
        return decodeClx(ByteView(table).subspan(clx.fc, clx.lcb), 1 << 30).pieces;
    }
    // The characters that are bold, one after the other.
    static std::u16string boldText(const DocumentContent& document) {
        std::u16string result;
        Cp at = 0;
        for (const CharacterRun& run : joined(document.main)->characters) {
            const auto entry = findSprm(document.tables.lists[run.properties], sprm::CFBold);
            if (entry && entry->operand[0] == 1) {
                result += joined(document.main)->text.substr(at, run.length);
            }
            at += run.length;
        }
        return result;
    }

    std::shared_ptr<test::MemoryFolder> folder = std::make_shared<test::MemoryFolder>();
    const std::filesystem::path path = "/folder/施工方案.doc";
    DocumentWriter writer{folder};
    ContentBuilder builder;
};

TEST_F(DocumentWriterTest, AnEmptyDocumentIsOneParagraph) {
    saveAs();
    const DocumentContent document = read();
    EXPECT_EQ(joined(document.main)->text, u"\r");
    EXPECT_THAT(document.unread.remarks, IsEmpty());
    EXPECT_EQ(document.settings, builder.content.settings);
}

TEST_F(DocumentWriterTest, TextAndFormattingComeBack) {
    builder.add({plain(u"第一章 "), bold(u"总则"), plain(u"\r")}, 1);
    builder.add({plain(u"正文 plain text 𠀀\r")});
    saveAs();
    const DocumentContent document = read();
    EXPECT_EQ(joined(document.main)->text, builder.text());
    EXPECT_EQ(boldText(document), u"总则");
    ASSERT_EQ(joined(document.main)->paragraphs.size(), 3U);
    EXPECT_EQ(joined(document.main)->paragraphs[0].style, 1);
    EXPECT_EQ(joined(document.main)->paragraphs[1].style, 0);
    EXPECT_THAT(document.unread.remarks, IsEmpty());
}

TEST_F(DocumentWriterTest, TheWholeDocumentIsOnePieceInReadingOrder) {
    builder.add({plain(u"one\r")});
    builder.add({plain(u"two\r")});
    saveAs();
    EXPECT_EQ(pieces().size(), 1U);
    EXPECT_EQ(pieces().front().fc, 2048U);
    EXPECT_FALSE(fib().fComplex);
    EXPECT_EQ(fib().ccp.text, 9U);
}

TEST_F(DocumentWriterTest, ASaveAppendsAndChangesNoTextThatIsThere) {
    builder.add({plain(u"one\r")});
    saveAs();
    const Bytes before = stream(u"WordDocument");
    builder.add({bold(u"two"), plain(u"\r")});
    save();
    const Bytes after = stream(u"WordDocument");
    ASSERT_GT(after.size(), before.size());
    EXPECT_TRUE(std::equal(before.begin() + 2048, before.end(), after.begin() + 2048));
    EXPECT_EQ(joined(read().main)->text, u"one\rtwo\r\r");
    EXPECT_EQ(boldText(read()), u"two");
    EXPECT_EQ(pieces().size(), 3U);
    EXPECT_TRUE(fib().fComplex);
}

TEST_F(DocumentWriterTest, ALongListOfManyParagraphsIsInTheFileOnceHoweverOftenItIsSaved) {
    Bytes list;
    for (unsigned i = 0; i < 200; ++i) {
        const Bytes entry = withSprm16({}, sprm::PDxaLeft, i);
        list.insert(list.end(), entry.begin(), entry.end());
    }
    builder.add({plain(u"one\r")}, 0, list);
    builder.add({plain(u"two\r")}, 0, list);
    saveAs();
    const Bytes once = stream(u"Data");
    EXPECT_EQ(once.size(), 2 + list.size());
    builder.add({plain(u"three\r")}, 0, list);
    save();
    EXPECT_EQ(stream(u"Data"), once);
    const DocumentContent document = read();
    for (std::size_t i = 0; i < 3; ++i) {
        const ByteView there =
            document.tables.lists[joined(document.main)->paragraphs.at(i).properties];
        EXPECT_EQ(Bytes(there.begin(), there.end()), list);
    }
}

TEST_F(DocumentWriterTest, EverySaveOfManyIsReadBack) {
    saveAs();
    for (int i = 0; i < 40; ++i) {
        const std::string number = std::to_string(i);
        const std::u16string name(number.begin(), number.end());
        builder.add({plain(u"文档"), bold(name), plain(u"\r" + std::u16string(500, u'文') + u"\r")},
                    i % 2 == 0 ? 1 : 0);
        save();
        const DocumentContent document = read();
        ASSERT_EQ(joined(document.main)->text, builder.text());
        EXPECT_THAT(document.unread.remarks, IsEmpty());
    }
    EXPECT_EQ(joined(read().main)->paragraphs[2].style, 0);
    EXPECT_EQ(joined(read().main)->paragraphs[4].style, 1);
}

TEST_F(DocumentWriterTest, SavingAsWritesTheWholeDocumentAnew) {
    saveAs();
    for (int i = 0; i < 10; ++i) {
        builder.add({plain(u"text\r")});
        save();
    }
    EXPECT_EQ(fib().quickSaves, 10U);
    const std::size_t grown = file().size();
    const DocumentContent before = read();
    saveAs();
    EXPECT_EQ(fib().quickSaves, 0U);
    EXPECT_EQ(pieces().size(), 1U);
    EXPECT_LT(file().size(), grown);
    EXPECT_EQ(joined(read().main)->text, joined(before.main)->text);
}

TEST_F(DocumentWriterTest, OfAFragmentThatComesInPartByPartEachPartIsWrittenOnce) {
    const auto story = builder.fragment({plain(u"first"), bold(u"second"), plain(u"\r")});
    auto& main = builder.content.main;
    main.insert(main.begin(), {story, 0, 5});
    builder.content.sections.back().length += 5;
    saveAs();
    EXPECT_EQ(joined(read().main)->text, u"first\r");
    main.insert(main.begin() + 1, {story, 5, story->size() - 5});
    builder.content.sections.back().length += story->size() - 5;
    save();
    EXPECT_EQ(joined(read().main)->text, u"firstsecond\r\r");
    EXPECT_EQ(boldText(read()), u"second");
}

// Files of which it cannot be told whether another program has changed them.
class FolderWithoutStamps final : public OutputFolder {
public:
    explicit FolderWithoutStamps(std::shared_ptr<OutputFolder> files) : files_(std::move(files)) {}

    std::unique_ptr<OutputFile> createBeside(const std::filesystem::path& target,
                                             std::filesystem::path* path) override {
        return files_->createBeside(target, path);
    }
    std::unique_ptr<OutputFile> openForUpdate(const std::filesystem::path& path) override {
        return files_->openForUpdate(path);
    }
    void replace(const std::filesystem::path& from, const std::filesystem::path& to) override {
        files_->replace(from, to);
    }
    void remove(const std::filesystem::path& path) noexcept override { files_->remove(path); }
    std::optional<FileStamp> stamp(const std::filesystem::path&) override { return std::nullopt; }

private:
    std::shared_ptr<OutputFolder> files_;
};

TEST_F(DocumentWriterTest, AFileWhoseStateCannotBeToldIsWrittenWhole) {
    DocumentWriter unsure(std::make_shared<FolderWithoutStamps>(folder));
    unsure.saveAs(path, builder.content);
    builder.add({plain(u"two\r")});
    unsure.save(builder.content);
    EXPECT_EQ(joined(read().main)->text, u"two\r\r");
    EXPECT_EQ(fib().quickSaves, 0U);
    EXPECT_EQ(pieces().size(), 1U);
}

TEST_F(DocumentWriterTest, TheMainStreamConsistsOfWholeSectorsAfterEverySave) {
    for (int i = 0; i < 4; ++i) {
        builder.add({plain(std::u16string(1000, u'文') + u"\r")});
        i == 0 ? saveAs() : save();
        EXPECT_GT(stream(u"WordDocument").size(), 4096U);
        EXPECT_EQ(stream(u"WordDocument").size() % 512, 0U) << "save " << i;
    }
}

TEST_F(DocumentWriterTest, AFragmentThatIsSplitIsNotWrittenAgain) {
    auto story = builder.fragment({plain(u"before"), bold(u"after"), plain(u"\r")});
    builder.add(story);
    saveAs();
    auto& main = builder.content.main;
    main[0].length = 6;
    main.insert(main.begin() + 1, {story, 6, story->size() - 6});
    const auto middle = builder.fragment({plain(u" middle ")});
    main.insert(main.begin() + 1, {middle, 0, middle->size()});
    builder.content.sections.back().length += middle->size();
    const std::size_t size = stream(u"WordDocument").size();
    save();
    EXPECT_EQ(joined(read().main)->text, u"before middle after\r\r");
    EXPECT_EQ(boldText(read()), u"after");
    // One sector of text, a page of each kind.
    EXPECT_EQ(stream(u"WordDocument").size(), size + 3 * 512);
}

TEST_F(DocumentWriterTest, AnotherPartOfAFragmentIsWrittenThoughItIsAsLongAsTheOneBefore) {
    builder.add({plain(u"one\rtwo\r")});
    saveAs();
    StorySlice& slice = builder.content.main[0];
    slice.length = 4;
    builder.content.sections.back().length -= 4;
    save();
    EXPECT_EQ(joined(read().main)->text, u"one\r\r");
    slice.begin = 4;
    save();
    EXPECT_EQ(joined(read().main)->text, u"two\r\r");
}

TEST_F(DocumentWriterTest, PiecesThatWereJoinedComeApartAndTogetherAgain) {
    builder.add({plain(u"one\r")});
    builder.add({plain(u"two\r")});
    saveAs();
    EXPECT_EQ(pieces().size(), 1U);
    std::vector<StorySlice>& slices = builder.content.main;
    const StorySlice two = slices[1];
    builder.content.sections.back().length -= two.length;
    slices.erase(slices.begin() + 1);
    save();
    EXPECT_EQ(joined(read().main)->text, u"one\r\r");
    EXPECT_EQ(pieces().size(), 2U);
    builder.content.sections.back().length += two.length;
    slices.insert(slices.begin() + 1, two);
    save();
    EXPECT_EQ(joined(read().main)->text, u"one\rtwo\r\r");
    EXPECT_EQ(pieces().size(), 1U);
}

TEST_F(DocumentWriterTest, AParagraphInPartsHasThePropertiesOfItsMark) {
    auto& main = builder.content.main;
    const auto heading = builder.fragment({plain(u"tail\r")}, 1);
    builder.add(heading);
    saveAs();
    const auto front = builder.fragment({plain(u"front ")});
    main.insert(main.begin(), {front, 0, front->size()});
    builder.content.sections.back().length += front->size();
    save();
    ASSERT_EQ(joined(read().main)->paragraphs.size(), 2U);
    EXPECT_EQ(joined(read().main)->paragraphs[0].style, 1);
    EXPECT_EQ(joined(read().main)->paragraphs[0].length, 11U);
    saveAs();
    ASSERT_EQ(joined(read().main)->paragraphs.size(), 2U);
    EXPECT_EQ(joined(read().main)->paragraphs[0].style, 1);
}

TEST_F(DocumentWriterTest, AParagraphThatGoesOnElsewhereReachesBeyondItsPieceInThePages) {
    builder.add({plain(u"tail\r")});
    saveAs();
    auto& main = builder.content.main;
    const auto front = builder.fragment({plain(u"page break\x0C")});
    main.insert(main.begin(), {front, 0, front->size()});
    builder.content.sections.back().length += front->size();
    save();
    const Bytes table = stream(u"1Table");
    const FcLcb place = fib().at(FibPair::PlcfBtePapx);
    const BinTable pages = decodeBinTable(ByteView(table).subspan(place.fc, place.lcb));
    EXPECT_EQ(pages.limitFc, pieces().front().limitFc() + 2);
    ASSERT_EQ(joined(read().main)->paragraphs.size(), 2U);
    EXPECT_EQ(joined(read().main)->paragraphs[0].length, front->size() + 5);
}

TEST_F(DocumentWriterTest, ABreakOfASectionEndsItsParagraphInAPartOfAFragmentToo) {
    const auto story = builder.fragment({plain(u"gone\rkept\x0C")}, 1);
    builder.content.main.insert(builder.content.main.begin(), {story, 5, 5});
    auto& sections = builder.content.sections;
    sections.insert(sections.begin(), {5, sections.front().properties});
    saveAs();
    const std::vector<ParagraphRun> paragraphs = joined(read().main)->paragraphs;
    ASSERT_EQ(paragraphs.size(), 2U);
    EXPECT_EQ(paragraphs[0].length, 5U);
    EXPECT_EQ(paragraphs[0].style, 1);
    EXPECT_EQ(paragraphs[1].style, 0);
}

TEST_F(DocumentWriterTest, ThePagesOfFormattingLeaveNoGapBetweenTheTextsOfTwoSaves) {
    builder.add({plain(u"one\r")});
    saveAs();
    builder.add({plain(u"two\r")});
    save();
    const Bytes text = stream(u"WordDocument");
    const Bytes table = stream(u"1Table");
    for (const FibPair pair : {FibPair::PlcfBteChpx, FibPair::PlcfBtePapx}) {
        const FcLcb place = fib().at(pair);
        const BinTable pages = decodeBinTable(ByteView(table).subspan(place.fc, place.lcb));
        ASSERT_EQ(pages.entries.size(), 2U);
        std::uint32_t limit = pages.entries.front().firstFc;
        for (const BinTable::Entry& entry : pages.entries) {
            const std::size_t runSize = pair == FibPair::PlcfBteChpx ? 1 : 13;
            const auto page = decodeFormattingPage(
                ByteView(text).subspan(entry.page * formattingPageSize, formattingPageSize),
                runSize);
            EXPECT_EQ(entry.firstFc, limit);
            EXPECT_EQ(page.entries.front().firstFc, limit);
            limit = page.entries.back().limitFc;
        }
        EXPECT_EQ(pages.limitFc, limit);
    }
}

TEST_F(DocumentWriterTest, ACellMarkEndsItsParagraphAsAParagraphMarkDoes) {
    const PropertyListId inCell =
        builder.content.tables.lists.intern(withSprm8({}, sprm::PFInTable, 1));
    Story story;
    story.text = u"a\u0007b\r";
    story.characters = {{4, PropertyListId::empty}};
    story.paragraphs = {{2, 1, inCell}, {2, 0, PropertyListId::empty}};
    builder.add(std::make_shared<const Story>(story));
    saveAs();
    const std::vector<ParagraphRun> paragraphs = joined(read().main)->paragraphs;
    ASSERT_GE(paragraphs.size(), 2U);
    EXPECT_EQ(paragraphs[0].length, 2U);
    EXPECT_EQ(paragraphs[0].style, 1);
    EXPECT_EQ(paragraphs[1].style, 0);
}

TEST_F(DocumentWriterTest, AFragmentUsedTwiceIsWrittenOnce) {
    const auto story = builder.fragment({plain(u"again\r")});
    builder.add(story);
    builder.add(story);
    saveAs();
    EXPECT_EQ(joined(read().main)->text, u"again\ragain\r\r");
    builder.add(story);
    save();
    EXPECT_EQ(joined(read().main)->text, u"again\ragain\ragain\r\r");
}

TEST_F(DocumentWriterTest, APictureIsInTheDataStreamOnceAndNamedByItsOffset) {
    Bytes picture(3000, 7);
    LittleEndianWriter head;
    head.u32(3000);
    head.u16(68);
    std::copy(head.data().begin(), head.data().end(), picture.begin());
    builder.content.tables.blobs = {std::make_shared<const Bytes>(100, std::uint8_t{1}),
                                    std::make_shared<const Bytes>(picture)};
    const Bytes at = withSprm32(withSprm8({}, sprm::CFSpec, 1), sprm::CPicLocation, 1);
    builder.add({plain(u"图"), {u"\x01", at}, plain(u"\r")});
    saveAs();
    EXPECT_TRUE(fib().fHasPic);
    EXPECT_EQ(stream(u"Data"), picture);
    builder.add({plain(u"又"), {u"\x01", at}, plain(u"\r")});
    save();
    EXPECT_EQ(stream(u"Data"), picture);
    const DocumentContent document = read();
    ASSERT_EQ(document.tables.blobs.size(), 1U);
    EXPECT_EQ(*document.tables.blobs[0], picture);
    EXPECT_EQ(joined(document.main)->text, u"图\x01\r又\x01\r\r");
}

TEST_F(DocumentWriterTest, ParagraphPropertiesTooLongForAPageGoToTheDataStream) {
    Bytes tabs{0x15, 0xC6, 0xFF, 0}; // sprmPChgTabs, many added tabs
    tabs.push_back(60);
    for (int i = 0; i < 60; ++i) {
        tabs.push_back(static_cast<std::uint8_t>(i * 100));
        tabs.push_back(static_cast<std::uint8_t>((i * 100) >> 8));
    }
    tabs.insert(tabs.end(), 60, std::uint8_t{0});
    Bytes list = tabs;
    for (int i = 0; i < 3; ++i) {
        list.insert(list.end(), tabs.begin(), tabs.end());
    }
    builder.add({plain(u"many tabs\r")}, 0, list);
    saveAs();
    const DocumentContent document = read();
    const ByteView back = document.tables.lists[joined(document.main)->paragraphs[0].properties];
    EXPECT_EQ(Bytes(back.begin(), back.end()), list);
    EXPECT_TRUE(CompoundFile::over(file()).has(u"Data"));
}

TEST_F(DocumentWriterTest, CharacterPropertiesTooLongForAPageComeBackWhole) {
    Bytes looks;
    for (unsigned i = 0; i < 60; ++i) {
        looks = withSprm32(looks, static_cast<SprmOpcode>(0x6840 + i), i);
    }
    builder.add({plain(u"before "), {u"long", looks}, plain(u" behind\r")});
    saveAs();
    ASSERT_EQ(pieces().size(), 3U);
    EXPECT_EQ(pieces()[1].length, 4U);
    EXPECT_NE(pieces()[1].modifier, 0);
    EXPECT_TRUE(fib().fComplex) << "else a reader may pass over what pieces say";
    builder.add({{u"again", looks}, plain(u"\r")});
    save();
    const DocumentContent document = read();
    const auto main = joined(document.main);
    EXPECT_EQ(main->text, builder.text());
    std::vector<std::size_t> sizes;
    for (const CharacterRun& run : main->characters) {
        const ByteView list = document.tables.lists[run.properties];
        sizes.push_back(list.size());
        for (unsigned i = 0; i < 60 && !list.empty(); ++i) {
            const auto entry = findSprm(list, static_cast<SprmOpcode>(0x6840 + i));
            ASSERT_TRUE(entry);
            EXPECT_EQ(LittleEndianReader(entry->operand, "look").u32(), i);
        }
    }
    EXPECT_EQ(sizes, (std::vector<std::size_t>{0, looks.size(), 0, looks.size(), 0}));
}

SlicedText headerText(ContentBuilder& builder, const std::u16string& text) {
    return slicesOf(builder.fragment({bold(text), plain(u"\r")}));
}

TEST_F(DocumentWriterTest, HeadersLieBehindTheMainTextWithOneMoreParagraphMark) {
    builder.add({plain(u"text\r")});
    HeaderSet headers;
    headers[static_cast<std::size_t>(HeaderKind::oddHeader)] = headerText(builder, u"页眉");
    builder.content.headers = {headers};
    saveAs();
    const Fib block = fib();
    ASSERT_EQ(pieces().size(), 1U);
    EXPECT_EQ(pieces()[0].length, block.ccp.text + block.ccp.headers + 1);
    const DocumentContent document = read();
    ASSERT_EQ(document.headers.size(), 1U);
    EXPECT_EQ(joined(document.headers[0][1])->text, u"页眉\r");
    EXPECT_TRUE(document.headers[0][3].empty());
}

TEST_F(DocumentWriterTest, HeadersAreWrittenAgainOnlyWhenTheyChange) {
    HeaderSet headers;
    headers[1] = headerText(builder, u"页眉");
    builder.content.headers = {headers};
    saveAs();
    const std::size_t size = stream(u"WordDocument").size();
    save();
    EXPECT_EQ(stream(u"WordDocument").size(), size);
    builder.content.headers[0][1] = headerText(builder, u"另一个页眉");
    save();
    EXPECT_EQ(stream(u"WordDocument").size(), size + 3 * 512);
    EXPECT_EQ(joined(read().headers.at(0)[1])->text, u"另一个页眉\r");
    builder.content.headers.clear();
    save();
    EXPECT_EQ(fib().ccp.headers, 0U);
    EXPECT_EQ(joined(read().main)->text, u"\r");
}

TEST_F(DocumentWriterTest, SectionsKeepTheirProperties) {
    auto& content = builder.content;
    builder.add({plain(u"first\x0C")});
    content.sections.back().length -= 6;
    const auto wide = content.tables.lists.intern(withSprm16({}, sprm::SXaPage, 16838));
    content.sections.insert(content.sections.begin(), {6, wide});
    saveAs();
    const DocumentContent document = read();
    ASSERT_EQ(document.sections.size(), 2U);
    EXPECT_EQ(document.sections[0].length, 6U);
    const auto width =
        findSprm(document.tables.lists[document.sections[0].properties], sprm::SXaPage);
    ASSERT_TRUE(width);
    EXPECT_EQ(LittleEndianReader(width->operand, "width").u16(), 16838);
}

TEST_F(DocumentWriterTest, FieldsAndBookmarksMoveWithTheText) {
    Story story = *builder.fragment({plain(u"\x13 PAGE \x14\x31\x15\r")});
    story.fields = {{0, 0x13, 33}, {7, 0x14, 0xFF}, {9, 0x15, 0x80}};
    builder.add({plain(u"front\r")});
    builder.add(std::make_shared<const Story>(story));
    builder.content.bookmarks = {{u"_Toc1", 6, 10, 0}};
    saveAs();
    DocumentContent document = read();
    ASSERT_EQ(joined(document.main)->fields.size(), 3U);
    EXPECT_EQ(joined(document.main)->fields[0], (FieldMark{6, 0x13, 33}));
    ASSERT_EQ(document.bookmarks.size(), 1U);
    EXPECT_EQ(document.bookmarks[0].name, u"_Toc1");
    auto& main = builder.content.main;
    const auto front = builder.fragment({plain(u"very first\r")});
    main.insert(main.begin(), {front, 0, front->size()});
    builder.content.sections.back().length += front->size();
    builder.content.bookmarks[0].start += front->size();
    builder.content.bookmarks[0].end += front->size();
    save();
    document = read();
    ASSERT_EQ(joined(document.main)->fields.size(), 3U);
    EXPECT_EQ(joined(document.main)->fields[0].at, 6 + front->size());
    EXPECT_EQ(document.bookmarks.at(0).start, 6 + front->size());
}

TEST_F(DocumentWriterTest, TheSmallStreamsAndTheClassSayWord) {
    saveAs();
    const CompoundFile read = CompoundFile::over(file());
    EXPECT_EQ(read.rootClassId()[0], 0x06);
    EXPECT_EQ(read.rootClassId()[1], 0x09);
    EXPECT_EQ(read.rootClassId()[15], 0x46);
    EXPECT_TRUE(read.has(u"\001CompObj"));
    EXPECT_EQ(read.stream(u"\005SummaryInformation").size(), 4096U);
    EXPECT_EQ(read.stream(u"\005DocumentSummaryInformation").size(), 4096U);
}

TEST_F(DocumentWriterTest, StructuresThatDidNotChangeAreNotWrittenAgain) {
    std::u16string name = u"样式";
    auto& styles = builder.content.tables.styles.styles;
    for (int i = 0; i < 500; ++i) {
        StyleDefinition style = *styles[0];
        style.sti = StyleDefinition::userDefined;
        style.name = name + std::u16string(i % 40 + 1, u'x') + char16_t(u'一' + i);
        styles.push_back(style);
    }
    builder.add({plain(u"text\r")});
    saveAs();
    builder.add({plain(u"more\r")});
    save();
    folder->trouble.bytesWritten = 0;
    builder.add({plain(u"more\r")});
    save();
    EXPECT_LE(folder->trouble.bytesWritten, 24U * 512);
}

TEST_F(DocumentWriterTest, ListsOfEverySaveAreReadBackWithTheirNamesAndLevels) {
    builder.add({plain(u"one\r")});
    saveAs();
    constexpr int saves = 12;
    for (int i = 1; i <= saves; ++i) {
        ListDefinition list;
        list.lsid = i;
        list.levels.resize(i % 2 == 0 ? 1 : 9);
        list.levels[0].text = std::u16string(static_cast<std::size_t>(i), u'.');
        list.name = std::u16string(1, static_cast<char16_t>(u'a' + i));
        builder.content.tables.listDefinitions.push_back(list);
        builder.content.tables.listOverrides.push_back({i, 0, 0, {}});
        save();
    }
    const DocumentContent document = read();
    EXPECT_THAT(document.unread.remarks, IsEmpty());
    ASSERT_EQ(document.tables.listDefinitions.size(), std::size_t{saves});
    for (int i = 1; i <= saves; ++i) {
        EXPECT_EQ(document.tables.listOverrides[static_cast<std::size_t>(i - 1)].lsid, i);
        const auto& lists = document.tables.listDefinitions;
        const auto list = std::find_if(lists.begin(), lists.end(),
                                       [&](const ListDefinition& l) { return l.lsid == i; });
        ASSERT_NE(list, lists.end());
        EXPECT_EQ(list->name, std::u16string(1, static_cast<char16_t>(u'a' + i)));
        ASSERT_EQ(list->levels.size(), i % 2 == 0 ? 1U : 9U);
        EXPECT_EQ(list->levels[0].text, std::u16string(static_cast<std::size_t>(i), u'.'));
    }
}

TEST_F(DocumentWriterTest, SavesOfEqualFragmentsCostAboutTheSameEach) {
    const auto bytesOf = [&](int saves) {
        folder = std::make_shared<test::MemoryFolder>();
        writer = DocumentWriter(folder);
        builder = ContentBuilder();
        saveAs();
        for (int i = 0; i < saves; ++i) {
            std::u16string text;
            for (int line = 0; line < 100; ++line) {
                text += std::u16string(80, u'文') + u"\r";
            }
            builder.add({plain(text.substr(0, 3000)), bold(text.substr(3000))});
            save();
        }
        EXPECT_EQ(joined(read().main)->text, builder.text());
        return static_cast<double>(folder->trouble.bytesWritten);
    };
    const double few = bytesOf(50);
    const double twice = bytesOf(100);
    EXPECT_LT(twice / few, 2.1);
    EXPECT_LT(twice / (100 * 16200.0), 2.0); // against the bytes of the text alone
}

TEST_F(DocumentWriterTest, SeparatorsOfNotesComeBackAfterEverySave) {
    const test::Words line{u"\u0003", withSprm8({}, sprm::CFSpec, 1)};
    builder.content.headers.resize(1);
    builder.content.separators[0] = slicesOf(builder.fragment({line, plain(u"\r")}));
    builder.content.separators[4] = slicesOf(builder.fragment({plain(u"see behind\r")}));
    saveAs();
    builder.add({plain(u"one\r")});
    save();
    EXPECT_EQ(joined(read().separators[0])->text, u"\u0003\r");
    EXPECT_TRUE(read().separators[1].empty());
    EXPECT_EQ(joined(read().separators[4])->text, u"see behind\r");
}

TEST_F(DocumentWriterTest, SavingBeforeTheFirstSaveAsIsALogicError) {
    EXPECT_THROW(save(), std::logic_error);
}

TEST_F(DocumentWriterTest, AFailedSaveLeavesTheOldStateAndTheNextOneSucceeds) {
    for (std::size_t failing = 0; failing < 40; ++failing) {
        folder = std::make_shared<test::MemoryFolder>();
        writer = DocumentWriter(folder);
        builder = ContentBuilder();
        builder.add({plain(u"one\r")});
        saveAs();
        builder.add({plain(u"two\r")});
        folder->trouble.failingWrite = folder->trouble.writes + failing;
        bool failed = false;
        try {
            save();
        } catch (const RunTimeError&) {
            failed = true;
        }
        folder->trouble.failingWrite.reset();
        EXPECT_EQ(joined(read().main)->text, failed ? u"one\r\r" : u"one\rtwo\r\r");
        save();
        EXPECT_EQ(joined(read().main)->text, u"one\rtwo\r\r");
        builder.add({plain(u"three\r")});
        save();
        EXPECT_EQ(joined(read().main)->text, u"one\rtwo\rthree\r\r");
        EXPECT_EQ(folder->files.size(), 1U);
    }
}

TEST_F(DocumentWriterTest, AFullDiskKeepsTheOldStateAndGivesBackWhatWasAppended) {
    builder.add({plain(u"one\r")});
    saveAs();
    const Bytes before = file();
    builder.add({plain(std::u16string(100000, u'x') + u"\r")});
    folder->trouble.capacity = before.size() + 20000;
    try {
        save();
        FAIL() << "the disk is full";
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number(), error::diskFull);
    }
    EXPECT_EQ(file().size(), before.size());
    EXPECT_EQ(joined(read().main)->text, u"one\r\r");
}

TEST_F(DocumentWriterTest, AFailedSaveAsKeepsTheOldFileAndLeavesNoOther) {
    builder.add({plain(u"one\r")});
    saveAs();
    const Bytes before = file();
    builder.add({plain(u"two\r")});
    for (std::size_t failing = 0; failing < 20; ++failing) {
        folder->trouble.failingWrite = folder->trouble.writes + failing;
        try {
            saveAs();
            break;
        } catch (const RunTimeError&) {
            EXPECT_EQ(file(), before);
            EXPECT_EQ(folder->files.size(), 1U);
        }
    }
    folder->trouble.failingWrite.reset();
    folder->trouble.failingSync = folder->trouble.syncs;
    EXPECT_THROW(saveAs(), RunTimeError);
    EXPECT_EQ(folder->files.size(), 1U);
}

TEST_F(DocumentWriterTest, ASaveAsThatFailsAtItsEndKeepsTheOldFileAndLeavesNoOther) {
    builder.add({plain(u"one\r")});
    saveAs();
    const Bytes before = file();
    builder.add({plain(u"two\r")});
    for (bool FileTrouble::*failing : {&FileTrouble::failingClose, &FileTrouble::failingReplace}) {
        folder->trouble.*failing = true;
        EXPECT_THROW(saveAs(), RunTimeError);
        folder->trouble.*failing = false;
        EXPECT_EQ(file(), before);
        EXPECT_EQ(folder->files.size(), 1U);
    }
    saveAs();
    EXPECT_EQ(joined(read().main)->text, u"one\rtwo\r\r");
}

TEST_F(DocumentWriterTest, ASaveWhoseCloseFailsLeavesAWholeFileAndTheNextOneSucceeds) {
    builder.add({plain(u"one\r")});
    saveAs();
    builder.add({plain(u"two\r")});
    folder->trouble.failingClose = true;
    EXPECT_THROW(save(), RunTimeError);
    folder->trouble.failingClose = false;
    EXPECT_EQ(joined(read().main)->text, u"one\rtwo\r\r");
    builder.add({plain(u"three\r")});
    save();
    EXPECT_EQ(joined(read().main)->text, u"one\rtwo\rthree\r\r");
}

TEST_F(DocumentWriterTest, ASaveThatFailsAndCannotTakeBackWhatItWroteLeavesTheOldState) {
    builder.add({plain(u"one\r")});
    saveAs();
    builder.add({plain(std::u16string(3000, u'x') + u"\r")});
    folder->trouble.failingWrite = folder->trouble.writes + 1;
    folder->trouble.failingTruncate = true;
    EXPECT_THROW(save(), RunTimeError);
    EXPECT_EQ(folder->trouble.calls.back(), FileCall::truncate);
    folder->trouble = {};
    EXPECT_EQ(joined(read().main)->text, u"one\r\r");
    save();
    EXPECT_EQ(joined(read().main)->text, builder.text());
}

TEST_F(DocumentWriterTest, TheFileIsClosedBeforeItTakesTheOldOnesPlace) {
    saveAs();
    const std::vector<FileCall>& calls = folder->trouble.calls;
    ASSERT_GE(calls.size(), 3U);
    EXPECT_EQ(std::vector(calls.end() - 3, calls.end()),
              (std::vector{FileCall::sync, FileCall::close, FileCall::replace}));
}

// More have no number in the FIB.
TEST_F(DocumentWriterTest, MoreThanFifteenSavesCountAsFifteen) {
    saveAs();
    for (unsigned saves = 1; saves <= 17; ++saves) {
        builder.add({plain(u"x\r")});
        save();
        EXPECT_EQ(fib().quickSaves, std::min(saves, 15U)) << saves;
    }
}

TEST_F(DocumentWriterTest, AFileThatOthersChangedOrRemovedIsWrittenWhole) {
    builder.add({plain(u"one\r")});
    saveAs();
    folder->files[path]->bytes.assign(10, 0);
    ++folder->files[path]->version;
    builder.add({plain(u"two\r")});
    save();
    EXPECT_EQ(joined(read().main)->text, u"one\rtwo\r\r");
    folder->files.erase(path);
    save();
    EXPECT_EQ(joined(read().main)->text, u"one\rtwo\r\r");
    EXPECT_EQ(pieces().size(), 1U);
}

TEST_F(DocumentWriterTest, FragmentsOfOneParagraphThatAreSavedTogetherAreOneParagraph) {
    builder.add({plain(u"头\r")});
    saveAs();
    builder.add({bold(u"一")});
    builder.add({plain(u"二\r")}, 1);
    save();
    const DocumentContent document = read();
    EXPECT_EQ(joined(document.main)->text, u"头\r一二\r\r");
    EXPECT_EQ(boldText(document), u"一");
    const auto whole = joined(document.main);
    ASSERT_EQ(whole->paragraphs.size(), 3U);
    EXPECT_EQ(whole->paragraphs[1].length, 3U);
    EXPECT_EQ(whole->paragraphs[1].style, 1);
}

TEST_F(DocumentWriterTest, PicturesAndObjectsThatAreNotThereAreNotWritten) {
    builder.content.tables.blobs = {nullptr};
    builder.content.tables.objects = {nullptr};
    for (const SprmOpcode location : {sprm::CPicLocation, sprm::CObjLocation}) {
        for (const std::uint32_t index : {0U, 1U, 1000000U}) {
            const Bytes special = withSprm8({}, sprm::CFSpec, 1);
            builder.add({{u"\u0001", withSprm32(special, location, index)}, plain(u"\r")});
        }
    }
    saveAs();
    const DocumentContent document = read();
    for (const CharacterRun& run : joined(document.main)->characters) {
        EXPECT_FALSE(findSprm(document.tables.lists[run.properties], sprm::CPicLocation));
    }
}

} // namespace
} // namespace qvnd::word
