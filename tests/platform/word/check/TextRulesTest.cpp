#include "platform/word/check/SoundDocument.h"

#include "platform/word/docfile/format/Plc.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/formatting/ParagraphPages.h"
#include "support/ByteText.h"

#include <gtest/gtest.h>

// Each rule about text and formatting: a sound document with one thing broken breaks that rule and
// no other.
namespace qvnd::test {
namespace {

using namespace word;
using Rules = std::set<std::string>;

Bytes flag(SprmOpcode opcode) { return withSprm8({}, opcode, 1); }

std::size_t pageAt(const WordStreams& streams, const Fib& fib, FibPair pair) {
    const std::size_t bins = fib.at(pair).lcb / 8;
    return get32(streams.table, fib.at(pair).fc + (bins + 1) * 4) * std::size_t{512};
}

// --- pieces -------------------------------------------------------------------------------------

std::size_t pieceTableAt(const Fib& fib) { return fib.at(FibPair::Clx).fc + 5; }

TEST(PieceRules, TextMustHaveAsManyCharactersAsTheFibCounts) {
    const Bytes file = changed(SoundDocument(), [](WordStreams& streams, const Fib& fib) {
        Fib longer = fib;
        ++longer.ccp.headers;
        const Bytes head = encodeFib(longer);
        std::copy(head.begin(), head.end(), streams.wordDocument.begin());
    });
    EXPECT_EQ(brokenRules(file), Rules{"piece.total"});
}

TEST(PieceRules, PieceMustLieInTheStream) {
    const Bytes file = changed(SoundDocument(), [](WordStreams& streams, const Fib& fib) {
        put32(streams.table, pieceTableAt(fib) + 8 + 2, 0x3FFFFF0);
    });
    EXPECT_EQ(brokenRules(file), Rules{"piece.place"});
}

TEST(PieceRules, PositionsMustAscend) {
    const Bytes file = changed(SoundDocument(), [](WordStreams& streams, const Fib& fib) {
        const std::size_t at = pieceTableAt(fib);
        put32(streams.table, at, get32(streams.table, at + 4) + 1);
    });
    EXPECT_EQ(brokenRules(file), (Rules{"piece.order", "piece.total"}));
}

TEST(PieceRules, ModifierMustExist) {
    const Bytes file = changed(SoundDocument(), [](WordStreams& streams, const Fib& fib) {
        put16(streams.table, pieceTableAt(fib) + 8 + 6, 3);
    });
    EXPECT_EQ(brokenRules(file), Rules{"piece.prm"});
}

TEST(PieceRules, ModifierMustNotBeLongerThanTheFormatHolds) {
    const auto rulesWith = [](std::size_t size) {
        SoundDocument document;
        document.file.modifiers = {Bytes(size / 3 * 3)};
        for (std::size_t at = 0; at < document.file.modifiers[0].size(); at += 3) {
            put16(document.file.modifiers[0], at, sprm::CFBold);
        }
        return brokenRules(document.bytes());
    };
    EXPECT_EQ(rulesWith(0x3FA2), Rules{});
    EXPECT_EQ(rulesWith(0x3FA5), Rules{"piece.prc"});
}

TEST(PieceRules, TableMustBeWhole) {
    const Bytes file = changed(SoundDocument(), [](WordStreams& streams, const Fib& fib) {
        streams.table[fib.at(FibPair::Clx).fc] = 7;
    });
    EXPECT_EQ(brokenRules(file), Rules{"piece.clx"});
}

// --- formatting pages ---------------------------------------------------------------------------

TEST(FormattingRules, IndexMustExist) {
    const Bytes file = changed(SoundDocument(), [](WordStreams& streams, const Fib& fib) {
        Fib without = fib;
        without.set(FibPair::PlcfBteChpx, {});
        const Bytes head = encodeFib(without);
        std::copy(head.begin(), head.end(), streams.wordDocument.begin());
    });
    EXPECT_EQ(brokenRules(file).count("bte.none"), 1U);
}

TEST(FormattingRules, PageMustLieInTheStream) {
    const Bytes file = changed(SoundDocument(), [](WordStreams& streams, const Fib& fib) {
        put32(streams.table, fib.at(FibPair::PlcfBteChpx).fc + 8, 0xFFFF);
    });
    EXPECT_EQ(brokenRules(file).count("bte.page"), 1U);
}

TEST(FormattingRules, PageMustCoverWhatItsIndexSays) {
    const Bytes file = changed(SoundDocument(), [](WordStreams& streams, const Fib& fib) {
        const std::size_t at = fib.at(FibPair::PlcfBtePapx).fc + 4;
        put32(streams.table, at, get32(streams.table, at) + 2);
    });
    EXPECT_EQ(brokenRules(file), Rules{"bte.range"});
}

TEST(FormattingRules, AllTextMustHaveFormatting) {
    const Bytes file = changed(SoundDocument(), [](WordStreams& streams, const Fib& fib) {
        const std::size_t page = pageAt(streams, fib, FibPair::PlcfBtePapx);
        const std::size_t last = page + std::size_t{4} * streams.wordDocument[page + 511];
        put32(streams.wordDocument, last, get32(streams.wordDocument, last) - 1);
        const std::size_t bin = fib.at(FibPair::PlcfBtePapx).fc + 4;
        put32(streams.table, bin, get32(streams.table, bin) - 1);
    });
    EXPECT_EQ(brokenRules(file), Rules{"bte.cover"});
}

TEST(FormattingRules, PositionsOfAPageMustAscend) {
    const Bytes file = changed(SoundDocument(), [](WordStreams& streams, const Fib& fib) {
        const std::size_t page = pageAt(streams, fib, FibPair::PlcfBteChpx);
        put32(streams.wordDocument, page + 4, get32(streams.wordDocument, page + 8));
    });
    EXPECT_EQ(brokenRules(file).count("fkp.order"), 1U);
}

TEST(FormattingRules, PageMustHaveAPossibleCount) {
    for (const std::uint8_t count : {std::uint8_t{0}, std::uint8_t{200}}) {
        const Bytes file = changed(SoundDocument(), [&](WordStreams& streams, const Fib& fib) {
            streams.wordDocument[pageAt(streams, fib, FibPair::PlcfBtePapx) + 511] = count;
        });
        EXPECT_EQ(brokenRules(file).count("fkp.count"), 1U) << int{count};
    }
}

TEST(FormattingRules, PropertiesMustLieInThePage) {
    const Bytes file = changed(SoundDocument(), [](WordStreams& streams, const Fib& fib) {
        const std::size_t page = pageAt(streams, fib, FibPair::PlcfBteChpx);
        const std::size_t runs = streams.wordDocument[page + 511];
        streams.wordDocument[page + 4 * (runs + 1)] = 255; // the last byte but one of the page
        streams.wordDocument[page + 510] = 9;
    });
    EXPECT_EQ(brokenRules(file).count("fkp.place"), 1U);
}

TEST(FormattingRules, ParagraphStyleMustExist) {
    SoundDocument document;
    document.text().paragraphs[0].style = 17;
    EXPECT_EQ(brokenRules(document.bytes()), Rules{"fkp.style"});
    document.text().paragraphs[0].style = 15; // a character style
    EXPECT_EQ(brokenRules(document.bytes()), Rules{"fkp.style"});
}

// --- property lists -----------------------------------------------------------------------------

Rules rulesWith(const Bytes& characters) {
    SoundDocument document;
    document.setCharacters(u"标题", characters);
    return brokenRules(document.bytes());
}

Rules rulesWithParagraph(const Bytes& paragraph) {
    SoundDocument document;
    document.setParagraph(u"标题", paragraph);
    return brokenRules(document.bytes());
}

TEST(PropertyRules, ListMustEndCleanly) {
    EXPECT_EQ(rulesWith(hex("3508 01 434A 01")), Rules{"sprm.parse"});
}

TEST(PropertyRules, GroupMustFitThePlace) {
    EXPECT_EQ(rulesWith(flag(sprm::PFPageBreakBefore)), Rules{"sprm.group"});
    EXPECT_EQ(rulesWithParagraph(flag(sprm::CFBold)), Rules{"sprm.group"});
    SoundDocument document;
    document.file.sections[0].properties = flag(sprm::CFBold);
    EXPECT_EQ(brokenRules(document.bytes()), Rules{"sprm.group"});
}

TEST(PropertyRules, FontMustExist) {
    EXPECT_EQ(rulesWith(withSprm16({}, sprm::CRgFtc1, 2)), Rules{"sprm.font"});
    EXPECT_EQ(rulesWith(withSprm16({}, sprm::CRgFtc1, 1)), Rules{});
}

TEST(PropertyRules, CharacterStyleMustExist) {
    EXPECT_EQ(rulesWith(withSprm16({}, sprm::CIstd, 17)), Rules{"sprm.style"});
    EXPECT_EQ(rulesWith(withSprm16({}, sprm::CIstd, 1)), Rules{"sprm.style"}); // of a paragraph
}

TEST(PropertyRules, AuthorMustExist) {
    EXPECT_EQ(rulesWith(withSprm16({}, sprm::CIbstRMark, 1)), Rules{"sprm.author"});
    EXPECT_EQ(rulesWith(withSprm({}, sprm::CPropRMark, hex("07 01 0500 00000000"))),
              Rules{"sprm.author"});
    EXPECT_EQ(rulesWith(withSprm({}, sprm::CPropRMark, hex("07 01 0000 00000000"))), Rules{});
}

TEST(PropertyRules, ListReferenceMustExist) {
    EXPECT_EQ(rulesWithParagraph(withSprm16({}, sprm::PIlfo, 2)), Rules{"sprm.list"});
    EXPECT_EQ(rulesWithParagraph(withSprm16({}, sprm::PIlfo, 0)), Rules{});
    EXPECT_EQ(rulesWithParagraph(withSprm16({}, sprm::PIlfo, 0xFFFF)), Rules{}); // 1, not shown
    EXPECT_EQ(rulesWithParagraph(withSprm16({}, sprm::PIlfo, 0x07FF)), Rules{}); // as in Word 95
}

TEST(PropertyRules, ListReferenceMayBeNegatedAndStillMustExist) {
    EXPECT_EQ(rulesWithParagraph(withSprm16({}, sprm::PIlfo, 0xFFFE)), Rules{"sprm.list"});
    EXPECT_EQ(rulesWithParagraph(withSprm16({}, sprm::PIlfo, 0xF801)), Rules{});
    EXPECT_EQ(rulesWithParagraph(withSprm16({}, sprm::PIlfo, 0xF800)), Rules{"sprm.list"});
    EXPECT_EQ(rulesWithParagraph(withSprm16({}, sprm::PIlfo, 0x07FE)), Rules{"sprm.list"});
}

TEST(PropertyRules, ListLevelMustExist) {
    EXPECT_EQ(rulesWithParagraph(withSprm8({}, sprm::PIlvl, 13)), Rules{"sprm.level"});
    EXPECT_EQ(rulesWithParagraph(withSprm8({}, sprm::PIlvl, 12)), Rules{});
    EXPECT_EQ(rulesWithParagraph(withSprm8({}, sprm::PIlvl, 9)), Rules{});
    EXPECT_EQ(rulesWithParagraph(withSprm8({}, sprm::PIlvl, 8)), Rules{});
}

TEST(PropertyRules, StylesOfParagraphsAndTablesMustExistAndBeOfTheirKind) {
    EXPECT_EQ(rulesWithParagraph(withSprm16({}, sprm::PIstd, 16)), Rules{});
    EXPECT_EQ(rulesWithParagraph(withSprm16({}, sprm::PIstd, 0x0FFF)), Rules{});
    EXPECT_EQ(rulesWithParagraph(withSprm16({}, sprm::PIstd, 15)), Rules{"sprm.style"});
    EXPECT_EQ(rulesWithParagraph(withSprm16({}, sprm::PIstd, 20)), Rules{"sprm.style"});
    const auto rulesWithTable = [](unsigned style) {
        SoundDocument document;
        document.styles.styles[17] = document.styles.styles[16];
        document.styles.styles[17]->name = u"Grid";
        document.styles.styles[17]->kind = StyleKind::table;
        document.setParagraph(u"\a\x13", withSprm16(rowDefinition(2), sprm::TIstd, style));
        return brokenRules(document.bytes());
    };
    EXPECT_EQ(rulesWithTable(17), rulesWithTable(0x0FFF));
    EXPECT_EQ(rulesWithTable(16).count("sprm.style"), 1U);
    EXPECT_EQ(rulesWithTable(17).count("sprm.style"), 0U);
}

TEST(PropertyRules, AnAuthorCountsWhereThereIsAChange) {
    EXPECT_EQ(rulesWith(withSprm({}, sprm::CPropRMark, hex("07 00 0500 00000000"))), Rules{});
    EXPECT_EQ(rulesWith(withSprm16({}, sprm::CIbstRMark, 0)), Rules{});
}

TEST(PropertyRules, PropertiesOfAPieceAreOfAnyKindAndCheckedToo) {
    const auto rulesOf = [](const Bytes& list) {
        SoundDocument document;
        document.file.modifiers = {list};
        document.text().modifier = 1;
        return brokenRules(document.bytes());
    };
    EXPECT_EQ(rulesOf(joined({flag(sprm::CFBold), flag(sprm::PFKeep)})), Rules{});
    EXPECT_EQ(rulesOf(withSprm16({}, sprm::CRgFtc1, 2)), Rules{"sprm.font"});
}

// --- text and paragraphs ------------------------------------------------------------------------

TEST(TextRules, EveryPartMustEndWithAParagraphMark) {
    SoundDocument document;
    document.text().text[document.find(u"\x02说明") + 4] = u'x';
    EXPECT_EQ(brokenRules(document.bytes()), (Rules{"text.end", "text.boundary"}));
}

TEST(TextRules, ParagraphMustEndAtAMark) {
    SoundDocument document;
    document.text().paragraphs[0].length -= 1;
    document.text().paragraphs[1].length += 1;
    EXPECT_EQ(brokenRules(document.bytes()), Rules{"text.boundary"});
}

TEST(TextRules, PropertiesKeptApartMustLieInTheDataStream) {
    EXPECT_EQ(rulesWithParagraph(withSprm32({}, sprm::PHugePapx, 0x7FFFFFF)), Rules{"text.huge"});
}

TEST(TextRules, ASectionsBreakEndsAParagraphWithPropertiesOfItsOwn) {
    SoundDocument document;
    document.setParagraph(u"节\f", withSprm32({}, sprm::PHugePapx, 0x7FFFFFF));
    EXPECT_EQ(brokenRules(document.bytes()), Rules{"text.huge"});
}

TEST(TextRules, PropertiesKeptApartAreCheckedToo) {
    SoundDocument document;
    const auto offset = static_cast<std::uint32_t>(document.file.data.size());
    const Bytes stored = encodePrcData(flag(sprm::CFBold));
    document.file.data = joined({document.file.data, stored});
    document.setParagraph(u"标题", withSprm32({}, sprm::PHugePapx, offset));
    EXPECT_EQ(brokenRules(document.bytes()), Rules{"sprm.group"});
}

TEST(TextRules, PropertiesKeptApartMustNotBeLongerThanTheFormatHolds) {
    const auto rulesWith = [](std::size_t size) {
        Bytes list;
        while (list.size() < size) {
            list = joined({list, withSprm16({}, sprm::PDxaLeft, 1)});
        }
        list.insert(list.end(), size % 4, 0);
        SoundDocument document;
        const auto offset = static_cast<std::uint32_t>(document.file.data.size());
        document.file.data = joined({document.file.data, encodePrcData(list)});
        document.setParagraph(u"标题", withSprm32({}, sprm::PHugePapx, offset));
        return brokenRules(document.bytes());
    };
    EXPECT_EQ(rulesWith(0x3FA0), Rules{});
    EXPECT_EQ(rulesWith(0x3FA4), Rules{"text.huge"});
}

// --- tables -------------------------------------------------------------------------------------

TEST(TableRules, CellMarkMustStandInATable) {
    SoundDocument document;
    document.setParagraph(u"a\a", {});
    EXPECT_EQ(brokenRules(document.bytes()), (Rules{"table.cells", "table.mark"}));
}

TEST(TableRules, RowMustEnd) {
    SoundDocument document;
    document.setParagraph(u"\a\x13", flag(sprm::PFInTable)); // another cell instead
    EXPECT_EQ(brokenRules(document.bytes()), Rules{"table.row"});
}

TEST(TableRules, RowMustHaveAsManyCellsAsItsDefinition) {
    SoundDocument document;
    document.setParagraph(u"\a\x13", rowDefinition(3));
    EXPECT_EQ(brokenRules(document.bytes()), Rules{"table.cells"});
}

TEST(TableRules, InsertedAndDeletedColumnsCountIntoTheDefinition) {
    SoundDocument document;
    const Bytes inserted = withSprm32(rowDefinition(1), 0x7621, 0x00640101); // one more at 1
    document.setParagraph(u"\a\x13", inserted);
    EXPECT_EQ(brokenRules(document.bytes()), Rules{});
    document.setParagraph(u"\a\x13", withSprm16(rowDefinition(4), 0x5622, 0x0200)); // first two
    EXPECT_EQ(brokenRules(document.bytes()), Rules{});
}

TEST(TableRules, EdgesOfCellsMustNotDecrease) {
    SoundDocument document;
    constexpr std::size_t secondEdge = 2 + 1 + 2; // in the operand
    Bytes row = rowDefinition(2);
    const auto definition = findSprm(row, sprm::TDefTable);
    ASSERT_TRUE(definition);
    const std::size_t operand = definition->operandOffset;
    put16(row, operand + secondEdge, 0);
    document.setParagraph(u"\a\x13", row);
    EXPECT_EQ(brokenRules(document.bytes()), Rules{});
    put16(row, operand + secondEdge, 0xFFFF); // -1
    document.setParagraph(u"\a\x13", row);
    EXPECT_EQ(brokenRules(document.bytes()), Rules{"table.edges"});
}

TEST(TableRules, RowEndMustHaveADefinition) {
    SoundDocument document;
    document.setParagraph(u"\a\x13", joined({flag(sprm::PFInTable), flag(sprm::PFTtp)}));
    EXPECT_EQ(brokenRules(document.bytes()), Rules{"table.definition"});
}

TEST(TableRules, LastCellMustEnd) {
    SoundDocument document;
    document.text().text[document.find(u"b\a") + 1] = u'\r';
    document.setParagraph(u"\a\x13", rowDefinition(1));
    EXPECT_EQ(brokenRules(document.bytes()), Rules{"table.cell"});
}

// The text "内", a cell of an inner table, in the first cell of the outer one.
SoundDocument nested(bool rowEnds) {
    SoundDocument document;
    const auto depth = [](const Bytes& more) {
        return joined({flag(sprm::PFInTable), withSprm32({}, sprm::PItap, 2), more});
    };
    document.setParagraph(u"标题", depth(flag(sprm::PFInnerTableCell)));
    const Bytes end = joined({flag(sprm::PFInnerTtp), rowDefinition(1)});
    document.setParagraph(u"项目", rowEnds ? joined({end, withSprm32({}, sprm::PItap, 2)})
                                           : depth(flag(sprm::PFInnerTableCell)));
    return document;
}

TEST(TableRules, InnerTableIsSound) { EXPECT_EQ(brokenRules(nested(true).bytes()), Rules{}); }

TEST(TableRules, InnerRowMustEndBeforeTheOuterGoesOn) {
    EXPECT_EQ(brokenRules(nested(false).bytes()), Rules{"table.row"});
}

// --- fields -------------------------------------------------------------------------------------

TEST(FieldRules, TableMustNameFieldCharacters) {
    SoundDocument document;
    const Cp field = document.find(u"\x13");
    document.file.parts[FibPair::PlcfFldMom] =
        encodePlc({field, field + 1, document.find(u"\x14"), document.find(u"\x15"), 99},
                  hex("1321 1321 14FF 1580"));
    EXPECT_EQ(brokenRules(document.bytes()), Rules{"field.mark"});
}

TEST(FieldRules, FieldWithAResultMustBeInTheTable) {
    SoundDocument document;
    document.file.parts.erase(FibPair::PlcfFldMom);
    EXPECT_EQ(brokenRules(document.bytes()), Rules{"field.table"});
}

TEST(FieldRules, ObjectMustHaveItsStorage) {
    SoundDocument document;
    document.setCharacters(
        u"\x14", withSprm8(withSprm32(special(), sprm::CPicLocation, 12), sprm::CFOle2, 1));
    EXPECT_EQ(brokenRules(document.bytes()), Rules{"object.storage"});
    EXPECT_EQ(brokenRules(compoundFile(document.streams(), {u"ObjectPool/_12"})), Rules{});
}

TEST(FieldRules, FieldThatOnlyMarksAPlaceNeedsNoTable) {
    SoundDocument document;
    document.file.parts.erase(FibPair::PlcfFldMom);
    document.text().text[document.find(u"\x14")] = u' ';
    EXPECT_EQ(brokenRules(document.bytes()), Rules{});
}

TEST(FieldRules, FieldMustEnd) {
    SoundDocument document;
    const Cp field = document.find(u"\x13");
    const Cp separator = document.find(u"\x14");
    document.text().text[document.find(u"\x15")] = u'x';
    document.file.parts[FibPair::PlcfFldMom] = encodePlc({field, separator, 99}, hex("1321 14FF"));
    EXPECT_EQ(brokenRules(document.bytes()), Rules{"field.balance"});
}

TEST(FieldRules, FieldEndMustHaveABeginning) {
    SoundDocument document;
    const Cp end = document.find(u"\x15");
    document.text().text[document.find(u"\x13")] = u'x';
    document.text().text[document.find(u"\x14")] = u'x';
    document.file.parts[FibPair::PlcfFldMom] = encodePlc({end, 99}, hex("1580"));
    EXPECT_EQ(brokenRules(document.bytes()), Rules{"field.balance"});
}

// --- pictures -----------------------------------------------------------------------------------

TEST(PictureRules, PictureMustLieInTheDataStream) {
    SoundDocument document;
    document.setCharacters(u"\x01\r", withSprm32(flag(sprm::CFSpec), sprm::CPicLocation, 9999));
    EXPECT_EQ(brokenRules(document.bytes()), Rules{"picture.place"});
}

TEST(PictureRules, LengthMustReachOverTheHead) {
    SoundDocument document;
    put32(document.file.data, 0, 20);
    EXPECT_EQ(brokenRules(document.bytes()), Rules{"picture.size"});
}

TEST(PictureRules, RecordsMustNest) {
    SoundDocument document;
    put32(document.file.data, 68 + 4, 7); // the shape's length
    EXPECT_EQ(brokenRules(document.bytes()), Rules{"picture.records"});
}

TEST(PictureRules, OtherDataNeedsNoRecords) {
    SoundDocument document;
    put32(document.file.data, 68 + 4, 7);
    const Bytes data = joined({flag(sprm::CFSpec), flag(sprm::CFData)});
    document.setCharacters(u"\x01\r", withSprm32(data, sprm::CPicLocation, 0));
    EXPECT_EQ(brokenRules(document.bytes()), Rules{});
}

TEST(PictureRules, CharacterThatNamesNoPlaceShowsNoPicture) {
    SoundDocument document;
    document.setCharacters(u"\x01\r", special());
    EXPECT_EQ(brokenRules(document.bytes()), Rules{});
}

TEST(PictureRules, ObjectHasItsPictureElsewhere) {
    for (const SprmOpcode kind : {sprm::CFOle2, sprm::CFObj}) {
        SoundDocument document;
        document.setCharacters(u"\x01\r",
                               withSprm32(withSprm8(special(), kind, 1), sprm::CPicLocation, 9999));
        EXPECT_EQ(brokenRules(document.bytes()), Rules{});
        document.setCharacters(u"\x01\r",
                               withSprm32(withSprm8(special(), kind, 0), sprm::CPicLocation, 9999));
        EXPECT_EQ(brokenRules(document.bytes()), Rules{"picture.place"});
    }
}

} // namespace
} // namespace qvnd::test
