#include "platform/word/check/SoundDocument.h"

#include "platform/word/docfile/format/OfficeArt.h"
#include "platform/word/docfile/format/Plc.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/styles/ListTables.h"
#include "support/ByteText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <utility>

// Rules at their edge: what just passes, and the smallest step beyond it.
namespace qvnd::test {
namespace {

using namespace word;
using Rules = std::set<std::string>;

void putFib(WordStreams& streams, const Fib& fib) {
    const Bytes head = encodeFib(fib);
    std::copy(head.begin(), head.end(), streams.wordDocument.begin());
}

// --- pieces -------------------------------------------------------------------------------------

std::size_t pieceTableAt(const Fib& fib) { return fib.at(FibPair::Clx).fc + 5; }

std::uint32_t lengthOfText(const WordStreams& streams, const Fib& fib) {
    return get32(streams.table, pieceTableAt(fib) + 4);
}

// The file with another piece table in place of its own; `rest` stands behind it.
Bytes withPieces(const std::vector<std::uint32_t>& positions, const Bytes& rest = {}) {
    return changed(SoundDocument(), [&](WordStreams& streams, const Fib& before) {
        const auto pcd = streams.table.begin() + static_cast<long>(pieceTableAt(before)) + 8;
        Bytes pieces;
        for (std::size_t i = 1; i < positions.size(); ++i) {
            pieces.insert(pieces.end(), pcd, pcd + 8);
        }
        const Bytes table = encodePlc(positions, pieces);
        LittleEndianWriter clx;
        clx.u8(2);
        clx.u32(static_cast<std::uint32_t>(table.size()));
        clx.bytes(table);
        clx.bytes(rest);
        const Bytes bytes = clx.take();
        Fib fib = before;
        fib.set(FibPair::Clx, {static_cast<std::uint32_t>(streams.table.size()),
                               static_cast<std::uint32_t>(bytes.size())});
        streams.table = joined({streams.table, bytes});
        putFib(streams, fib);
    });
}

std::uint32_t soundLength() {
    const WordStreams streams = SoundDocument().streams();
    return lengthOfText(streams, readFib(streams.wordDocument));
}

TEST(PieceEdges, PieceMayReachToTheEndOfTheStreamAndNoByteFurther) {
    const auto rulesWithEnd = [](std::uint32_t beyond) {
        return brokenRules(changed(SoundDocument(), [&](WordStreams& streams, const Fib& fib) {
            const auto end = static_cast<std::uint32_t>(streams.wordDocument.size()) + beyond;
            put32(streams.table, pieceTableAt(fib) + 8 + 2, end - 2 * lengthOfText(streams, fib));
        }));
    };
    EXPECT_EQ(rulesWithEnd(0).count("piece.place"), 0U);
    EXPECT_EQ(rulesWithEnd(1), Rules{"piece.place"});
}

TEST(PieceEdges, PieceWithoutAnyCharacterIsOutOfOrder) {
    EXPECT_EQ(brokenRules(withPieces({0, soundLength()})), Rules{});
    EXPECT_EQ(brokenRules(withPieces({0, soundLength(), soundLength()})), Rules{"piece.order"});
}

TEST(PieceEdges, OfPiecesThatGoBackNoTextIsPutTogether) {
    const std::uint32_t length = soundLength();
    EXPECT_EQ(brokenRules(withPieces({0, length + 9, length})), Rules{"piece.order"});
}

TEST(PieceEdges, OneByteBehindTheTableIsTooMany) {
    EXPECT_EQ(brokenRules(withPieces({0, soundLength()}, {0})), Rules{"piece.clx"});
}

TEST(PieceEdges, OneCharacterMoreThanTheFibCountsIsTooMany) {
    const Bytes file = changed(SoundDocument(), [](WordStreams& streams, const Fib& before) {
        Fib fib = before;
        --fib.ccp.headers;
        putFib(streams, fib);
    });
    EXPECT_EQ(brokenRules(file).count("piece.total"), 1U);
}

TEST(PieceEdges, TheFirstModifierThatIsNotThereIsMissed) {
    const Bytes file = changed(SoundDocument(), [](WordStreams& streams, const Fib& fib) {
        put16(streams.table, pieceTableAt(fib) + 8 + 6, 1); // the first one of none
    });
    EXPECT_EQ(brokenRules(file), Rules{"piece.prm"});
}

// --- fields -------------------------------------------------------------------------------------

TEST(FieldEdges, FieldHasOneSeparator) {
    SoundDocument document;
    const Cp separator = document.find(u"\x14");
    document.text().text[separator + 1] = u'\x14';
    document.text().characters[separator + 1].properties = special();
    document.file.parts[FibPair::PlcfFldMom] =
        encodePlc({document.find(u"\x13"), separator, separator + 1, document.find(u"\x15"),
                   document.file.lengths.text},
                  hex("1321 14FF 14FF 1580"));
    EXPECT_EQ(brokenRules(document.bytes()), Rules{"field.balance"});
}

TEST(FieldEdges, TableNamesNothingBehindItsPart) {
    SoundDocument document;
    const Cp length = document.file.lengths.text; // there the notes begin, with a character 2
    document.file.parts[FibPair::PlcfFldMom] =
        encodePlc({document.find(u"\x13"), document.find(u"\x14"), document.find(u"\x15"), length,
                   length + 1},
                  hex("1321 14FF 1580 0200"));
    EXPECT_EQ(brokenRules(document.bytes()).count("field.mark"), 1U);
}

TEST(FieldEdges, SeparatorInTheTableWantsItsBeginningThereToo) {
    SoundDocument document;
    document.file.parts[FibPair::PlcfFldMom] =
        encodePlc({document.find(u"\x14"), document.find(u"\x15"), document.file.lengths.text},
                  hex("14FF 1580"));
    EXPECT_EQ(brokenRules(document.bytes()), Rules{"field.table"});
}

// --- lists --------------------------------------------------------------------------------------

class ListEdges : public ::testing::Test {
protected:
    ListLevel& level(std::size_t index) { return document.listDefinitions[0].levels[index]; }
    Rules rules() const { return brokenRules(document.bytes()); }
    SoundDocument document;
};

TEST_F(ListEdges, PlacesInTheNumberTextAscendAndAreNeverEqual) {
    level(1).text = {0, 1};
    level(1).head[6] = 1;
    level(1).head[7] = 2;
    EXPECT_EQ(rules(), Rules{});
    level(1).head[7] = 1;
    EXPECT_EQ(rules(), Rules{"list.text"});
}

TEST_F(ListEdges, PlaceMayBeTheLastOfTheNumberTextAndNotTheNext) {
    level(0).text = {u'.', 0};
    level(0).head[6] = 2;
    EXPECT_EQ(rules(), Rules{});
    level(0).head[6] = 3;
    EXPECT_EQ(rules(), Rules{"list.text"});
}

TEST_F(ListEdges, PlaceNamesOneOfNineLevels) {
    level(8).text = {8, u'.'};
    EXPECT_EQ(rules(), Rules{});
    level(8).text = {9, u'.'};
    EXPECT_EQ(rules(), Rules{"list.text"});
}

TEST_F(ListEdges, ChangedLevelIsOneOfNine) {
    document.listOverrides[0].levels[0].flags = 0x18; // the ninth
    EXPECT_EQ(rules(), Rules{});
    document.listOverrides[0].levels[0].flags = 0x19;
    EXPECT_EQ(rules(), Rules{"list.override"});
}

TEST_F(ListEdges, NamesAreUniqueAndAtMost255Characters) {
    document.listDefinitions.push_back(document.listDefinitions[0]);
    document.listDefinitions[1].lsid = 78;
    const auto rulesWithNames = [this](const std::vector<std::u16string>& names) {
        document.file.parts[FibPair::SttbListNames] = encodeListNames(names);
        return rules();
    };
    EXPECT_EQ(rulesWithNames({u"Clauses", u"clauses"}), Rules{});
    EXPECT_EQ(rulesWithNames({u"Clauses", u"Clauses"}), Rules{"list.name"});
    EXPECT_EQ(rulesWithNames({u"", u""}), Rules{}) << "lists without a name";
    EXPECT_EQ(rulesWithNames({std::u16string(255, u'x'), u""}), Rules{});
    EXPECT_EQ(rulesWithNames({std::u16string(256, u'x'), u""}), Rules{"list.name"});
    EXPECT_EQ(rulesWithNames({u"a", u"b", u"b"}), Rules{}) << "those of no list do not count";
    document.file.parts[FibPair::SttbListNames] = hex("FFFF 0200 0000 0100 4100");
    EXPECT_EQ(rules(), Rules{"list.name"});
}

TEST_F(ListEdges, OneReferenceMoreThanTheTableHoldsIsTooMany) {
    document.file.parts[FibPair::PlfLfo] = hex("02000000 4D000000 00000000 00000000 00000000");
    EXPECT_EQ(rules().count("list.size"), 1U);
}

// --- the container ------------------------------------------------------------------------------

class ContainerEdges : public ::testing::Test {
protected:
    std::size_t sectorAt(std::uint32_t sector) const { return (std::size_t{sector} + 1) * 512; }
    std::size_t entryAt(std::u16string_view name) const {
        Bytes sought;
        for (const char16_t c : name) {
            sought.push_back(static_cast<std::uint8_t>(c));
            sought.push_back(0);
        }
        const auto directory = file.begin() + static_cast<long>(sectorAt(get32(file, 48)));
        const auto found = std::search(directory, file.end(), sought.begin(), sought.end());
        return static_cast<std::size_t>(found - file.begin());
    }
    std::size_t miniFatEntryAt(std::uint32_t sector) const {
        return sectorAt(get32(file, 60)) + std::size_t{4} * sector;
    }
    bool breaks(const char* rule) const { return brokenRules(file).count(rule) == 1; }

    Bytes file = SoundDocument().bytes();
};

TEST_F(ContainerEdges, StreamOfTheSmallLimitHasSectorsOfItsOwn) {
    file = changed(SoundDocument(),
                   [](WordStreams& streams, const Fib&) { streams.table.resize(4096); });
    EXPECT_EQ(get32(file, entryAt(u"1Table") + 120), 4096U);
    EXPECT_EQ(brokenRules(file), Rules{});
}

TEST_F(ContainerEdges, LastSmallSectorMustLieInTheSmallStream) {
    constexpr std::uint32_t freeSector = 0xFFFFFFFF;
    std::uint32_t last = 127;
    while (get32(file, miniFatEntryAt(last)) == freeSector) {
        --last;
    }
    const std::size_t size = entryAt(u"Root Entry") + 120;
    put32(file, size, (last + 1) * 64);
    EXPECT_FALSE(breaks("cfb.sector"));
    put32(file, size, last * 64);
    EXPECT_TRUE(breaks("cfb.sector"));
}

TEST_F(ContainerEdges, HeaderMustNotCountFewerSmallTablesThanThereAre) {
    put32(file, 64, get32(file, 64) - 1);
    EXPECT_TRUE(breaks("cfb.minifat"));
}

TEST_F(ContainerEdges, NamesInOneStorageAreNeverEqual) {
    const auto from = file.begin() + static_cast<long>(entryAt(u"1Table"));
    std::copy(from, from + 66, file.begin() + static_cast<long>(entryAt(u"Data")));
    EXPECT_TRUE(breaks("cfb.directory.order"));
}

TEST_F(ContainerEdges, OnlyTheFirstEntryIsARoot) {
    file[entryAt(u"1Table") + 66] = 5;
    EXPECT_TRUE(breaks("cfb.directory.kind"));
}

TEST_F(ContainerEdges, StreamThatIsNotInTheTreeOwnsNoSectors) {
    put32(file, entryAt(u"Root Entry") + 76, 0xFFFFFFFF);
    EXPECT_TRUE(breaks("cfb.directory.lost"));
    EXPECT_TRUE(breaks("cfb.orphan"));
}

TEST_F(ContainerEdges, LengthOfANameIsEven) {
    file[entryAt(u"Data") + 64] = 11; // its zero, and half a character
    EXPECT_TRUE(breaks("cfb.directory.name"));
}

TEST_F(ContainerEdges, NameMayFillItsPlaceAndStillEndsInAZero) {
    const std::size_t root = entryAt(u"Root Entry");
    for (std::size_t i = 0; i < 31; ++i) {
        put16(file, root + 2 * i, u'R');
    }
    put16(file, root + 64, 64);
    EXPECT_EQ(brokenRules(file), Rules{});
    put16(file, root + 62, u'R');
    EXPECT_EQ(brokenRules(file), Rules{"cfb.directory.name"});
}

TEST_F(ContainerEdges, NameHasACharacterBesidesItsZero) {
    const std::size_t entry = entryAt(u"Data");
    put16(file, entry, 0);
    put16(file, entry + 64, 2);
    EXPECT_TRUE(breaks("cfb.directory.name"));
}

TEST_F(ContainerEdges, EachFixedValueOfTheHeaderCountsAlone) {
    for (const auto& [at, value] : {std::pair(28U, 0xFEFFU), std::pair(32U, 5U)}) {
        file = SoundDocument().bytes();
        put16(file, at, value);
        EXPECT_TRUE(breaks("cfb.header")) << at;
    }
    file = SoundDocument().bytes();
    put32(file, 56, 4095);
    EXPECT_TRUE(breaks("cfb.header"));
}

TEST_F(ContainerEdges, StreamWithoutABytesNamesNoSector) {
    const std::size_t data = entryAt(u"Data");
    put32(file, data + 120, 0);
    EXPECT_TRUE(breaks("cfb.chain.long"));
    EXPECT_FALSE(breaks("cfb.chain.end"));
    for (const std::uint32_t nowhere : {0xFFFFFFFEU, 0xFFFFFFFFU}) {
        put32(file, data + 116, nowhere);
        EXPECT_FALSE(breaks("cfb.chain.end"));
        EXPECT_FALSE(breaks("cfb.chain.long"));
    }
}

TEST_F(ContainerEdges, EntryThatIsUnusedMustNotStandInTheTree) {
    file[entryAt(u"1Table") + 66] = 0;
    EXPECT_TRUE(breaks("cfb.directory.link"));
}

TEST_F(ContainerEdges, EntriesOfAStorageAreInTheTreeToo) {
    file = compoundFile(SoundDocument().streams(), {u"ObjectPool/_1", u"ObjectPool/_2"});
    EXPECT_EQ(brokenRules(file), Rules{});
    put32(file, entryAt(u"ObjectPool") + 76, 0xFFFFFFFF);
    EXPECT_TRUE(breaks("cfb.directory.lost"));
}

TEST_F(ContainerEdges, EachOfFourSignsIsForbiddenInAName) {
    for (const char16_t sign : {u'/', u'\\', u':', u'!'}) {
        file = SoundDocument().bytes();
        put16(file, entryAt(u"Data") + 2, sign);
        EXPECT_TRUE(breaks("cfb.directory.name")) << int{sign};
    }
}

// --- the FIB ------------------------------------------------------------------------------------

Rules rulesWithFib(const std::function<void(Fib&, const WordStreams&)>& change) {
    return brokenRules(changed(SoundDocument(), [&](WordStreams& streams, const Fib& before) {
        Fib fib = before;
        change(fib, streams);
        putFib(streams, fib);
    }));
}

TEST(FibEdges, LengthMayBeThatOfTheStreamAndNoByteMore) {
    const auto rulesBeyond = [](std::uint32_t beyond) {
        return rulesWithFib([&](Fib& fib, const WordStreams& streams) {
            fib.cbMac = static_cast<std::uint32_t>(streams.wordDocument.size()) + beyond;
        });
    };
    EXPECT_EQ(rulesBeyond(0), Rules{});
    EXPECT_EQ(rulesBeyond(1), Rules{"fib.size"});
}

TEST(FibEdges, PlaceMayReachToTheEndOfTheTableStreamAndNoByteFurther) {
    const auto rulesWith = [](std::uint32_t beyond, std::uint32_t length) {
        return rulesWithFib([&](Fib& fib, const WordStreams& streams) {
            const auto end = static_cast<std::uint32_t>(streams.table.size());
            fib.set(FibPair::Cmds, {end - length + beyond, length});
        });
    };
    EXPECT_EQ(rulesWith(0, 4).count("fib.place"), 0U);
    EXPECT_EQ(rulesWith(1, 4).count("fib.place"), 1U);
    EXPECT_EQ(rulesWith(1, 0).count("fib.place"), 0U) << "an empty place is nowhere";
}

TEST(FibEdges, NumberOfCharactersIsNotNegative) {
    const auto counts = [](Cp length) {
        return rulesWithFib([&](Fib& fib, const WordStreams&) { fib.ccp.endnotes = length; })
            .count("fib.count");
    };
    EXPECT_EQ(counts(0x7FFFFFFF), 0U);
    EXPECT_EQ(counts(0x80000000), 1U);
}

// --- tables -------------------------------------------------------------------------------------

TEST(TableEdges, RowMustNotHaveACellMoreThanItsDefinition) {
    SoundDocument document;
    document.setParagraph(u"\a\x13", rowDefinition(1));
    EXPECT_EQ(brokenRules(document.bytes()), Rules{"table.cells"});
}

TEST(TableEdges, RowsAreFollowedDownToTheSixtyFourthTable) {
    const auto rulesAtDepth = [](std::uint32_t depth) {
        SoundDocument document;
        document.setParagraph(u"标题", joined({flag(sprm::PFInTable), flag(sprm::PFInnerTableCell),
                                               withSprm32({}, sprm::PItap, depth)}));
        return brokenRules(document.bytes());
    };
    EXPECT_EQ(rulesAtDepth(64), Rules{"table.row"});
    EXPECT_EQ(rulesAtDepth(65), Rules{});
}

TEST(TableEdges, MarkOfAnOuterCellMustNotStandInAnInnerTable) {
    SoundDocument document;
    document.setParagraph(u"a\a", joined({flag(sprm::PFInTable), withSprm32({}, sprm::PItap, 2)}));
    EXPECT_EQ(brokenRules(document.bytes()).count("table.mark"), 1U);
}

TEST(TableEdges, TextOfACellThatNeverEndsIsARowWithoutAnEnd) {
    SoundDocument document;
    document.setParagraph(u"标题", flag(sprm::PFInTable));
    EXPECT_EQ(brokenRules(document.bytes()), Rules{"table.row"});
}

TEST(TableEdges, DeletedColumnsReachUpToTheirEndAndNotBeyond) {
    SoundDocument document;
    document.setParagraph(u"\a\x13", withSprm16(rowDefinition(3), sprm::TDelete, 0x0100));
    EXPECT_EQ(brokenRules(document.bytes()), Rules{});
}

// --- pictures -----------------------------------------------------------------------------------

constexpr std::size_t headSize = 68;

class PictureEdges : public ::testing::Test {
protected:
    // A picture of these records alone.
    void setRecords(const Bytes& records) {
        data().resize(headSize);
        data() = joined({data(), records});
        put32(data(), 0, static_cast<std::uint32_t>(data().size()));
    }
    static Bytes container(const Bytes& content) {
        LittleEndianWriter out;
        out.u16(0x000F);
        out.u16(art::spContainer);
        out.u32(static_cast<std::uint32_t>(content.size()));
        out.bytes(content);
        return out.take();
    }
    Bytes& data() { return document.file.data; }
    Rules rules() const { return brokenRules(document.bytes()); }
    SoundDocument document;
};

TEST_F(PictureEdges, LengthReachesOverTheHead) {
    put32(data(), 0, headSize - 1);
    EXPECT_EQ(rules(), Rules{"picture.size"});
    put32(data(), 0, headSize);
    EXPECT_EQ(rules(), Rules{"picture.records"});
}

TEST_F(PictureEdges, HeadHasItsOneLength) {
    put16(data(), 4, headSize + 1);
    EXPECT_EQ(rules(), Rules{"picture.size"});
}

TEST_F(PictureEdges, RecordMayFillWhatIsLeftAndNoByteMore) {
    setRecords(container({}));
    EXPECT_EQ(rules(), Rules{});
    put32(data(), headSize + 4, 1);
    EXPECT_EQ(rules(), Rules{"picture.records"});
}

TEST_F(PictureEdges, RecordsWithinAContainerFillItToo) {
    setRecords(container(container({})));
    EXPECT_EQ(rules(), Rules{});
    put32(data(), headSize + 8 + 4, 1);
    EXPECT_EQ(rules(), Rules{"picture.records"});
}

TEST_F(PictureEdges, FirstRecordIsAShape) {
    put16(data(), headSize + 2, art::spContainer + 1);
    EXPECT_EQ(rules(), Rules{"picture.records"});
}

TEST_F(PictureEdges, RecordsNestSixteenDeepAndNoDeeper) {
    Bytes records;
    for (int i = 0; i < 16; ++i) {
        records = container(records);
    }
    setRecords(records);
    EXPECT_EQ(rules(), Rules{});
    setRecords(container(records));
    EXPECT_EQ(rules(), Rules{"picture.records"});
}

TEST_F(PictureEdges, RecordsOfALinkedPictureStandBehindItsName) {
    const Bytes records(data().begin() + headSize, data().end());
    setRecords(joined({Bytes{2, 'x', 'y'}, records}));
    put16(data(), 6, 0x66);
    EXPECT_EQ(rules(), Rules{});
    data()[headSize] = 3;
    EXPECT_EQ(rules(), Rules{"picture.records"});
}

} // namespace
} // namespace qvnd::test
