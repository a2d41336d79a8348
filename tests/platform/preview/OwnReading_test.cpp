#include "WrittenDocument.h"

#include "platform/error/RunTimeError.h"
#include "platform/word/docfile/pictures/Blip.h"
#include "platform/word/docfile/pictures/Picture.h"
#include "platform/word/engine/SprmList.h"
#include "support/Images.h"

#include <gtest/gtest.h>

namespace qvnd::preview {
namespace {

using test::paragraphOf;
using test::tableOf;
using test::textOf;
using word::SprmList;
namespace sprm = word::sprm;

DocumentReading readingOf(const test::ContentBuilder& builder, const ReadingLimits& limits = {}) {
    return ownReading(test::readBack(builder.content), limits);
}

word::Bytes listOf(const SprmList& list) {
    const word::ByteView view = list.data();
    return {view.begin(), view.end()};
}

const TextLook& lookOf(const DocumentReading& reading, const TextRun& run) {
    return reading.looks.at(run.look);
}

TEST(OwnReading, RunsBearTheLooksOfStyleAndCharacters) {
    test::ContentBuilder builder;
    auto& heading = *builder.content.tables.styles.styles[1];
    heading.character =
        SprmList().byte(sprm::CFBold, 1).word(sprm::CHps, 32).in(builder.content.tables.lists);
    builder.add({{u"第一章", {}},
                 {u"红", listOf(SprmList().byte(sprm::CIco, 6).byte(sprm::CFItalic, 1))},
                 {u"蓝\r", listOf(SprmList().dword(sprm::CCv, 0x00FF0000).byte(sprm::CKul, 1))}},
                1);
    const DocumentReading reading = readingOf(builder);
    const Paragraph& paragraph = paragraphOf(reading.blocks.at(0));
    ASSERT_EQ(paragraph.runs.size(), 3U);
    const TextLook& plain = lookOf(reading, paragraph.runs[0]);
    EXPECT_TRUE(plain.bold);
    EXPECT_EQ(plain.points, 16);
    EXPECT_EQ(plain.fonts, QStringList({"Times New Roman", "宋体"}));
    EXPECT_EQ(plain.colour, std::nullopt);
    EXPECT_EQ(lookOf(reading, paragraph.runs[1]).colour, 0xFF0000U);
    EXPECT_TRUE(lookOf(reading, paragraph.runs[1]).italic);
    EXPECT_TRUE(lookOf(reading, paragraph.runs[1]).bold);
    EXPECT_EQ(lookOf(reading, paragraph.runs[2]).colour, 0x0000FFU);
    EXPECT_TRUE(lookOf(reading, paragraph.runs[2]).underlined);
    EXPECT_EQ(paragraph.look.headingLevel, 1);
}

TEST(OwnReading, ParagraphsBearIndentsSpacingAndAlignmentInPoints) {
    test::ContentBuilder builder;
    builder.add({test::plain(u"正文\r")}, 0,
                listOf(SprmList()
                           .byte(sprm::PJc, 1)
                           .word(sprm::PDxaLeft, 420)
                           .word(sprm::PDxaLeft1, 0xFE5C) // -420
                           .word(sprm::PDyaBefore, 120)
                           .dword(sprm::PDyaLine, 0x00010168)));
    const DocumentReading reading = readingOf(builder);
    const ParagraphLook& look = paragraphOf(reading.blocks.at(0)).look;
    EXPECT_EQ(look.alignment, Alignment::centre);
    EXPECT_EQ(look.left, 21);
    EXPECT_EQ(look.firstLine, -21);
    EXPECT_EQ(look.before, 6);
    EXPECT_EQ(look.spacing, ParagraphLook::Spacing::lines);
    EXPECT_EQ(look.line, 1.5);
}

TEST(OwnReading, HiddenTextIsNotShown) {
    test::ContentBuilder builder;
    builder.add({test::plain(u"看"),
                 {u"不", word::withSprm8({}, sprm::CFVanish, 1)},
                 test::plain(u"见\r")});
    const DocumentReading reading = readingOf(builder);
    EXPECT_EQ(textOf(paragraphOf(reading.blocks.at(0))), "看见");
}

TEST(OwnReading, FieldsShowTheirResultAndNotTheirInstructions) {
    test::ContentBuilder builder;
    word::Story story = *builder.fragment({test::plain(u"共\x13 NUMPAGES \x14"
                                                       u"12\x15页\r")});
    story.fields = {{1, 0x13, 26}, {12, 0x14, 0}, {15, 0x15, 0}};
    builder.add(std::make_shared<const word::Story>(story));
    EXPECT_EQ(textOf(paragraphOf(readingOf(builder).blocks.at(0))), "共12页");
}

TEST(OwnReading, APageBreakStartsAPageAndLineBreaksStayInTheParagraph) {
    test::ContentBuilder builder;
    builder.add({test::plain(u"上\x0C下\x0B行\r")});
    const DocumentReading reading = readingOf(builder);
    EXPECT_EQ(textOf(paragraphOf(reading.blocks.at(0))), "上");
    EXPECT_FALSE(paragraphOf(reading.blocks.at(0)).look.startsPage);
    EXPECT_EQ(textOf(paragraphOf(reading.blocks.at(1))),
              QString("下") + QChar::LineSeparator + "行");
    EXPECT_TRUE(paragraphOf(reading.blocks.at(1)).look.startsPage);
}

// A list of numbers: "第%1章" and below it "%1.%2".
void addList(test::ContentBuilder& builder, unsigned flags = 0) {
    const auto level = [](unsigned form, std::u16string text, unsigned follows) {
        word::ListLevel made;
        made.head[0] = 1; // starts at 1
        made.head[4] = static_cast<std::uint8_t>(form);
        made.head[15] = static_cast<std::uint8_t>(follows);
        std::uint8_t place = 0;
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (text[i] < 9) {
                made.head[6 + place++] = static_cast<std::uint8_t>(i + 1);
            }
        }
        made.text = std::move(text);
        return made;
    };
    word::ListDefinition list;
    list.lsid = 77;
    list.linkedStyles.fill(word::StyleDefinition::none);
    list.levels.assign(9, level(0, u"", 2));
    list.levels[0] = level(39, std::u16string(u"第") + char16_t(0) + u"章", 1);
    list.levels[1] = level(0, std::u16string{char16_t(0), u'.', char16_t(1)}, 0);
    list.levels[1].head[5] = static_cast<std::uint8_t>(flags);
    builder.content.tables.listDefinitions.push_back(list);
    builder.content.tables.listOverrides.push_back({77, 0, 0, {}});
}

word::Bytes inList(unsigned level) {
    return listOf(SprmList().byte(sprm::PIlvl, level).word(sprm::PIlfo, 1));
}

QStringList labelsOf(const test::ContentBuilder& builder) {
    QStringList labels;
    for (const Block& block : readingOf(builder).blocks) {
        labels << paragraphOf(block).label.text;
    }
    labels.removeLast(); // of the paragraph that ends every document
    return labels;
}

TEST(OwnReading, ListsCountTheirNumbersLevelByLevel) {
    test::ContentBuilder builder;
    addList(builder);
    for (const unsigned level : {0U, 1U, 1U, 0U, 1U}) {
        builder.add({test::plain(u"条\r")}, 0, inList(level));
    }
    EXPECT_EQ(labelsOf(builder), QStringList({"第一章 ", "一.1\t", "一.2\t", "第二章 ", "二.1\t"}));
}

TEST(OwnReading, ALevelInLegalFormShowsAllItsNumbersInDigits) {
    test::ContentBuilder builder;
    addList(builder, 0x04);
    for (const unsigned level : {0U, 0U, 1U}) {
        builder.add({test::plain(u"条\r")}, 0, inList(level));
    }
    EXPECT_EQ(labelsOf(builder), QStringList({"第一章 ", "第二章 ", "2.1\t"}));
}

// Text of cells, and the row's end with edges at the given places.
void addRow(test::ContentBuilder& builder, const std::vector<std::u16string>& cells,
            const std::vector<int>& edges, const std::vector<unsigned>& flags = {}) {
    const word::Bytes inTable = listOf(SprmList().byte(sprm::PFInTable, 1).dword(sprm::PItap, 1));
    word::LittleEndianWriter definition;
    const std::size_t size = 2 + edges.size() * 2 + cells.size() * 20;
    definition.u16(static_cast<unsigned>(size));
    definition.u8(static_cast<unsigned>(cells.size()));
    for (const int edge : edges) {
        definition.u16(static_cast<unsigned>(edge) & 0xFFFF);
    }
    for (std::size_t i = 0; i < cells.size(); ++i) {
        definition.u16(i < flags.size() ? flags[i] : 0);
        definition.zeros(2);
        definition.u32(i == 0 ? 0x0104 : 0); // the first has a border on its top
        definition.zeros(12);
    }
    const word::Bytes rowEnd = listOf(SprmList()
                                          .byte(sprm::PFInTable, 1)
                                          .dword(sprm::PItap, 1)
                                          .byte(sprm::PFTtp, 1)
                                          .word(0x9602, 40) // sprmTDxaGapHalf
                                          .bytes(sprm::TDefTable, definition.data()));
    for (const std::u16string& cell : cells) {
        builder.add({test::plain(cell + u"\x07")}, 0, inTable);
    }
    builder.add({test::plain(u"\x07")}, 0, rowEnd);
}

TEST(OwnReading, RowsWithDifferentEdgesShareOneGrid) {
    test::ContentBuilder builder;
    addRow(builder, {u"宽", u"窄"}, {0, 4000, 6000});
    addRow(builder, {u"一", u"二", u"三"}, {0, 2000, 4010, 6000});
    const DocumentReading reading = readingOf(builder);
    const Table& table = tableOf(reading.blocks.at(0));
    EXPECT_EQ(table.columnWidths, (std::vector<double>{100, 100, 100}));
    ASSERT_EQ(table.rows.size(), 2U);
    ASSERT_EQ(table.rows[0].size(), 2U);
    EXPECT_EQ(table.rows[0][0].columnSpan, 2U);
    EXPECT_EQ(table.rows[0][1].column, 2U);
    EXPECT_EQ(table.rows[1].size(), 3U);
    EXPECT_EQ(textOf(paragraphOf(table.rows[1][2].blocks.at(0))), "三");
}

TEST(OwnReading, CellsHaveTheBordersAndPaddingThatTheRowSays) {
    test::ContentBuilder builder;
    addRow(builder, {u"甲", u"乙"}, {0, 2000, 4000});
    const DocumentReading reading = readingOf(builder);
    const Table& table = tableOf(reading.blocks.at(0));
    EXPECT_EQ(table.rows.at(0).at(0).borders, (Borders{false, true, false, false}));
    EXPECT_EQ(table.rows.at(0).at(1).borders, Borders{});
    EXPECT_EQ(table.padding, 2);
}

TEST(OwnReading, CellsMergedDownBecomeOne) {
    test::ContentBuilder builder;
    addRow(builder, {u"高", u"甲"}, {0, 2000, 4000}, {0x60, 0});
    addRow(builder, {u"", u"乙"}, {0, 2000, 4000}, {0x20, 0});
    const DocumentReading reading = readingOf(builder);
    const Table& table = tableOf(reading.blocks.at(0));
    EXPECT_EQ(table.rows.at(0).at(0).rowSpan, 2U);
    ASSERT_EQ(table.rows.at(1).size(), 1U);
    EXPECT_EQ(table.rows[1][0].column, 1U);
}

TEST(OwnReading, CellsMergedAcrossBecomeOne) {
    test::ContentBuilder builder;
    addRow(builder, {u"并", u"", u"后"}, {0, 2000, 4000, 6000}, {1, 2, 0});
    addRow(builder, {u"一", u"二", u"三"}, {0, 2000, 4000, 6000});
    const Table table = tableOf(readingOf(builder).blocks.at(0));
    ASSERT_EQ(table.rows.at(0).size(), 2U);
    EXPECT_EQ(table.rows[0][0].columnSpan, 2U);
    EXPECT_EQ(table.rows[0][1].column, 2U);
}

TEST(OwnReading, EveryPlaceOfTheGridBelongsToOneCell) {
    test::ContentBuilder builder;
    addRow(builder, {u"短"}, {0, 2000}, {0x60});
    addRow(builder, {u"", u"长", u"尾"}, {0, 2000, 4000, 9000}, {0x20, 0, 0x20});
    addRow(builder, {u"右"}, {5000, 9000});
    const Table table = tableOf(readingOf(builder).blocks.at(0));
    std::vector<std::vector<int>> taken(table.rows.size(),
                                        std::vector<int>(table.columnWidths.size()));
    for (std::size_t row = 0; row < table.rows.size(); ++row) {
        for (const Cell& cell : table.rows[row]) {
            for (std::size_t i = 0; i < cell.rowSpan * cell.columnSpan; ++i) {
                ++taken.at(row + i / cell.columnSpan).at(cell.column + i % cell.columnSpan);
            }
        }
    }
    for (const std::vector<int>& row : taken) {
        EXPECT_EQ(row, std::vector<int>(table.columnWidths.size(), 1));
    }
}

TEST(OwnReading, AnInlinePictureComesWithItsFileAndSize) {
    test::ContentBuilder builder;
    const word::Bytes file = test::png(96, 48);
    auto picture = *word::Picture::fromImage(file);
    picture.setWidth(2000);
    builder.content.tables.blobs.push_back(picture.blob());
    builder.add({{u"\x01", listOf(SprmList().dword(sprm::CPicLocation, 0).byte(sprm::CFSpec, 1))},
                 test::plain(u"\r")});
    const DocumentReading reading = readingOf(builder);
    const Paragraph& paragraph = paragraphOf(reading.blocks.at(0));
    ASSERT_EQ(paragraph.runs.size(), 1U);
    ASSERT_TRUE(paragraph.runs[0].picture);
    const Picture& read = reading.pictures.at(*paragraph.runs[0].picture);
    EXPECT_EQ(read.width, 100);
    EXPECT_EQ(read.height, 36);
    EXPECT_EQ(read.file, QByteArray(reinterpret_cast<const char*>(file.data()),
                                    static_cast<qsizetype>(file.size())));
}

TEST(OwnReading, ALongDocumentIsCutBetweenParagraphsAndSaysSo) {
    test::ContentBuilder builder;
    for (int i = 0; i < 20; ++i) {
        builder.add({test::plain(u"段\r")});
    }
    const DocumentReading cut = readingOf(builder, {5, 1000});
    EXPECT_EQ(cut.blocks.size(), 5U);
    EXPECT_TRUE(cut.isCut);
    EXPECT_EQ(readingOf(builder, {1000, 10}).blocks.size(), 5U);
    const DocumentReading whole = readingOf(builder);
    EXPECT_EQ(whole.blocks.size(), 21U);
    EXPECT_FALSE(whole.isCut);
}

TEST(OwnReading, ACutTearsNoRow) {
    test::ContentBuilder builder;
    addRow(builder, {u"一", u"二", u"三"}, {0, 2000, 4000, 6000});
    addRow(builder, {u"四", u"五", u"六"}, {0, 2000, 4000, 6000});
    const DocumentReading reading = readingOf(builder, {2, 1000});
    const Table& table = tableOf(reading.blocks.at(0));
    ASSERT_EQ(table.rows.size(), 1U);
    EXPECT_EQ(table.rows[0].size(), 3U);
    EXPECT_TRUE(reading.isCut);
}

TEST(OwnReading, TheFirstSectionTellsThePaper) {
    test::ContentBuilder builder;
    builder.content.sections[0].properties = SprmList()
                                                 .word(sprm::SXaPage, 11900)
                                                 .word(sprm::SYaPage, 16840)
                                                 .word(sprm::SDxaLeft, 1440)
                                                 .in(builder.content.tables.lists);
    const Paper paper = readingOf(builder).paper;
    EXPECT_EQ(paper.width, 595);
    EXPECT_EQ(paper.height, 842);
    EXPECT_EQ(paper.left, 72);
}

TEST(OwnReading, AGutterOnTopStandsAboveTheTextAndNotBesideIt) {
    test::ContentBuilder builder;
    builder.content.sections[0].properties = SprmList()
                                                 .word(sprm::SDxaLeft, 1440)
                                                 .word(sprm::SDyaTop, 1440)
                                                 .word(sprm::SDzaGutter, 720)
                                                 .in(builder.content.tables.lists);
    EXPECT_EQ(readingOf(builder).paper.left, 108);
    EXPECT_EQ(readingOf(builder).paper.top, 72);
    word::writeDop(builder.content.settings, word::dop::gutterAtTop, 1);
    EXPECT_EQ(readingOf(builder).paper.left, 72);
    EXPECT_EQ(readingOf(builder).paper.top, 108);
}

TEST(OwnReading, AFileThatCannotBeOpenedIsRefusedWithTheReason) {
    const test::ScratchFolder folder;
    const auto path = folder.write("a.doc", test::ascii("no document"));
    try {
        ownReading(QString::fromStdString(path.string()));
        FAIL();
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.description(), u"不能打开文件“a.doc”：不是 Word 97-2003 格式的文档。");
    }
    try {
        ownReading(QString::fromStdString((folder.path() / "b.doc").string()));
        FAIL();
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number(), error::fileNotFound);
    }
}

} // namespace
} // namespace qvnd::preview
