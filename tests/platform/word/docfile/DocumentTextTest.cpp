#include "platform/word/docfile/text/DocumentText.h"

#include "platform/word/docfile/text/Fields.h"
#include "platform/word/docfile/writer/DocumentSummary.h"
#include "support/ByteText.h"

#include <gtest/gtest.h>

namespace qvnd::word {
namespace {

using test::hex;

// A document under construction, paragraph by paragraph.
struct Sample {
    DocumentContent document; // all but the main story
    Story main;

    // `text` with its mark; all characters alike.
    Sample& add(const std::u16string& text, const Bytes& paragraph = {},
                const Bytes& characters = {}, StyleIndex style = 0) {
        PropertyLists& lists = document.tables.lists;
        const auto length = static_cast<Cp>(text.size());
        main.text += text;
        main.characters.push_back({length, lists.intern(characters)});
        main.paragraphs.push_back({length, style, lists.intern(paragraph)});
        return *this;
    }

    std::u16string text() { return documentText(whole().main, document.tables); }
    const DocumentContent& whole() {
        main.fields = matchFields({}, main.text).marks;
        document.main = slicesOf(main);
        return document;
    }
};

const Bytes cell = hex("16 24 01");
const Bytes rowEnd = hex("16 24 01 17 24 01");
const Bytes inner = hex("16 24 01 49 66 02000000");
const Bytes innerCell = hex("16 24 01 49 66 02000000 4B 24 01");
const Bytes innerRowEnd = hex("16 24 01 49 66 02000000 4B 24 01 4C 24 01");

// Two rows of two cells; the second cell of the first row holds a table of one row.
Sample nestedTables() {
    Sample sample;
    sample.add(u"before\r")
        .add(u"a\x07", cell)
        .add(u"x\r", innerCell)
        .add(u"y1\r", inner)
        .add(u"y2\r", innerCell)
        .add(u"\r", innerRowEnd)
        .add(u"\x07", cell)
        .add(u"\x07", rowEnd)
        .add(u"c\x07", cell)
        .add(u"d\x07", cell)
        .add(u"\x07", rowEnd)
        .add(u"after\r");
    return sample;
}

TEST(DocumentText, ParagraphsAreLines) {
    EXPECT_EQ(Sample().add(u"一\r").add(u"two\r").add(u"\r").text(), u"一\ntwo\n\n");
}

TEST(DocumentText, BreaksAreLineEnds) {
    EXPECT_EQ(Sample()
                  .add(u"a\x0B"
                       u"b\x0C"
                       u"c\x0E"
                       u"d\r")
                  .text(),
              u"a\nb\nc\nd\n");
    EXPECT_EQ(Sample().add(u"a\x0C").add(u"b\r").text(), u"a\nb\n");
}

TEST(DocumentText, CellsAreSeparatedByTabsAndRowsAreLines) {
    Sample sample;
    sample.add(u"a\x07", cell).add(u"b\x07", cell).add(u"\x07", rowEnd);
    sample.add(u"c\x07", cell).add(u"\x07", cell).add(u"\x07", rowEnd).add(u"end\r");
    EXPECT_EQ(sample.text(), u"a\tb\nc\t\nend\n");
}

TEST(DocumentText, TheEndOfARowWithoutACellIsALineOfItsOwn) {
    EXPECT_EQ(Sample().add(u"a\r").add(u"\x07", rowEnd).add(u"b\r").text(), u"a\n\nb\n");
}

TEST(DocumentText, NestedTablesHaveTheirOwnCellsAndRows) {
    EXPECT_EQ(nestedTables().text(), u"before\na\tx\ty1\ny2\n\nc\td\nafter\n");
}

TEST(DocumentText, FieldsShowTheirResultAndNotTheirInstructions) {
    EXPECT_EQ(Sample()
                  .add(u"p.\x13 PAGE \x14"
                       u"7\x15!\r")
                  .text(),
              u"p.7!\n");
    EXPECT_EQ(Sample().add(u"[\x13 TC x \x15]\r").text(), u"[]\n");
    EXPECT_EQ(Sample()
                  .add(u"\x13 IF \x13 PAGE \x14"
                       u"1\x15 \x14yes \x13 A \x14no\x15\x15\r")
                  .text(),
              u"yes no\n");
}

TEST(DocumentText, ParagraphsWithinInstructionsAreHiddenToo) {
    EXPECT_EQ(Sample().add(u"a\x13 QUOTE\r").add(u"b \x14shown\x15\r").text(), u"ashown\n");
}

TEST(DocumentText, SpecialCharactersAreLeftOut) {
    EXPECT_EQ(Sample()
                  .add(u"a\x01\x02\x05\x08\x1F"
                       u"b\tc\x1E"
                       u"d\u00A0\r")
                  .text(),
              u"ab\tc-d\u00A0\n");
}

TEST(DocumentText, ASymbolIsTheCodeOfItsFont) {
    Sample sample;
    sample.add(u"(a)\r").add(u"((\r", {}, hex("09 6A 0300 B7F0"));
    EXPECT_EQ(sample.text(), u"(a)\n\uF0B7\uF0B7\n");
}

TEST(DocumentText, AStoryWithoutItsLastMarkIsWholeAsWell) {
    EXPECT_EQ(Sample().add(u"a\r").add(u"bc").text(), u"a\nbc");
    EXPECT_EQ(Sample().text(), u"");
}

TEST(DocumentSummary, ParagraphsCountWithoutTheEndsOfRows) {
    const DocumentSummary summary = summarize(nestedTables().whole());
    EXPECT_EQ(summary.paragraphs, 9);
}

TEST(DocumentSummary, NestedTablesAndTheirCellsCount) {
    const DocumentSummary summary = summarize(nestedTables().whole());
    EXPECT_EQ(summary.tables, 2);
    EXPECT_EQ(summary.cells, 6);
}

TEST(DocumentSummary, ATextBetweenRowsMakesTwoTables) {
    Sample sample;
    sample.add(u"a\x07", cell).add(u"\x07", rowEnd).add(u"between\r");
    sample.add(u"b\x07", cell).add(u"\x07", rowEnd).add(u"\r");
    EXPECT_EQ(summarize(sample.whole()).tables, 2);
}

TEST(DocumentSummary, TablesInTwoCellsOfOneRowAreTwo) {
    Sample sample;
    for (int i = 0; i < 2; ++i) {
        sample.add(u"x\r", innerCell).add(u"\r", innerRowEnd).add(u"\x07", cell);
    }
    sample.add(u"\x07", rowEnd).add(u"\r");
    EXPECT_EQ(summarize(sample.whole()).tables, 3);
}

TEST(DocumentSummary, AParagraphThatOnlyClaimsToStandInATableMakesNone) {
    Sample sample;
    sample.add(u"a\r", cell).add(u"b\r");
    EXPECT_EQ(summarize(sample.whole()).tables, 0);
    EXPECT_EQ(summarize(sample.whole()).cells, 0);
}

TEST(DocumentSummary, OnlyThePictureCharactersThatLeadToAPictureCount) {
    Sample sample;
    sample.add(u"\x01\x01\r", {}, hex("03 6A 00000000 55 08 01"));
    sample.add(u"\x01\r", {}, hex("03 6A 00000000 06 08 01 55 08 01")); // form data
    sample.add(u"\x01\r");
    EXPECT_EQ(summarize(sample.whole()).pictures, 2);
}

TEST(DocumentSummary, ListsInUseCountOnceEachWhetherNamedDirectlyOrByStyle) {
    Sample sample;
    DocumentTables& tables = sample.document.tables;
    tables.listOverrides.resize(4);
    for (std::int32_t i = 0; i < 4; ++i) {
        tables.listOverrides[static_cast<std::size_t>(i)].lsid = i / 2; // two lists, twice each
    }
    tables.styles.styles.resize(3);
    tables.styles.styles[0] = StyleDefinition{};
    tables.styles.styles[1] = StyleDefinition{};
    tables.styles.styles[1]->paragraph = tables.lists.intern(hex("0B 46 0400"));
    tables.styles.styles[2] = StyleDefinition{};
    tables.styles.styles[2]->basedOn = 1;

    sample.add(u"a\r", hex("0B 46 0100"));
    EXPECT_EQ(summarize(sample.whole()).lists, 1);
    sample.add(u"b\r", hex("0B 46 0200")).add(u"c\r", hex("0B 46 0900"));
    sample.add(u"d\r", hex("0B 46 0000"), {}, 2).add(u"e\r", hex("0B 46 01F8"));
    EXPECT_EQ(summarize(sample.whole()).lists, 1);
    sample.add(u"f\r", {}, {}, 2);
    EXPECT_EQ(summarize(sample.whole()).lists, 2);
}

TEST(DocumentSummary, StylesBasedOnEachOtherInACircleEndTheSearch) {
    Sample sample;
    auto& styles = sample.document.tables.styles.styles;
    styles.resize(2);
    styles[0] = StyleDefinition{};
    styles[0]->basedOn = 1;
    styles[1] = StyleDefinition{};
    styles[1]->basedOn = 0;
    sample.add(u"a\r");
    EXPECT_EQ(summarize(sample.whole()).lists, 0);
}

TEST(DocumentSummary, TheRestIsWhatTheDocumentHolds) {
    Sample sample;
    sample.add(u"\x13 A \x13 B \x15\x14x\x15\r");
    DocumentContent& document = sample.document;
    document.sections.resize(3);
    document.bookmarks.resize(4);
    const auto anchor = [&](AnchorKind kind, int count) {
        sample.main.anchors.insert(sample.main.anchors.end(), static_cast<std::size_t>(count),
                                   {0, kind, 0});
    };
    anchor(AnchorKind::footnote, 5);
    anchor(AnchorKind::endnote, 6);
    anchor(AnchorKind::comment, 7);
    anchor(AnchorKind::drawing, 9);
    document.tables.objects.resize(10);
    document.tables.styles.styles.resize(3);
    document.tables.styles.styles[1] = StyleDefinition{};
    const DocumentSummary summary = summarize(sample.whole());
    EXPECT_EQ(summary.fields, 2);
    EXPECT_EQ(summary.sections, 3);
    EXPECT_EQ(summary.bookmarks, 4);
    EXPECT_EQ(summary.anchors, (std::array<int, anchorKinds>{5, 6, 7, 9}));
    EXPECT_EQ(summary.embeddedObjects, 10);
    EXPECT_EQ(summary.styles, 1);
}

} // namespace
} // namespace qvnd::word
