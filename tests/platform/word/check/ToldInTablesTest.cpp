#include "platform/word/check/SoundDocument.h"

#include "platform/word/docfile/format/Plc.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/styles/FontTable.h"
#include "platform/word/docfile/styles/ListTables.h"
#include "platform/word/docfile/styles/StyleSheetTable.h"
#include "platform/word/docfile/text/CommentTables.h"
#include "support/ByteText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

// What a finding in the tables, the FIB or the container says.
namespace qvnd::test {
namespace {

using namespace word;
using Told = std::vector<std::string>;

// --- the FIB and the tables of positions --------------------------------------------------------

Bytes withHead(const std::function<void(Fib&, WordStreams&)>& change) {
    return changed(SoundDocument(), [&](WordStreams& streams, const Fib& before) {
        Fib fib = before;
        change(fib, streams);
        const Bytes head = encodeFib(fib);
        std::copy(head.begin(), head.end(), streams.wordDocument.begin());
    });
}

TEST(ToldNumber, OfAPlaceOfTheFibIsThatOfItsPair) {
    EXPECT_EQ(toldOf("fib.place", withHead([](Fib& fib, WordStreams&) {
                         fib.set(FibPair::Cmds, {0x7FFFFFF0, 4});
                     })),
              Told{"FIB 第 24 个位置（0x7FFFFFF0，长 4）超出表流"});
    EXPECT_EQ(toldOf("fib.size", withHead([](Fib& fib, WordStreams& streams) {
                         streams.wordDocument.resize(4096);
                         fib.cbMac = 4098;
                     })),
              Told{"FIB 写明的长度 4098 大于 WordDocument 流的长度 4096"});
}

TEST(PositionRules, EveryTableMustHaveASizeOfWholeElements) {
    struct Sized {
        FibPair pair;
        std::size_t element; // with its position
        const char* name;
    };
    constexpr std::array tables{Sized{FibPair::PlcffndRef, 6, "PlcffndRef"},
                                Sized{FibPair::PlcffndTxt, 4, "PlcffndTxt"},
                                Sized{FibPair::PlcfandRef, 34, "PlcfandRef"},
                                Sized{FibPair::PlcfHdd, 4, "PlcfHdd"},
                                Sized{FibPair::PlcfFldMom, 6, "PlcfFldMom"},
                                Sized{FibPair::PlcfBkf, 8, "PlcfBkf"},
                                Sized{FibPair::PlcSpaMom, 30, "PlcSpaMom"},
                                Sized{FibPair::PlcftxbxTxt, 26, "PlcftxbxTxt"},
                                Sized{FibPair::PlcfTxbxBkd, 10, "PlcfTxbxBkd"}};
    for (const Sized& table : tables) {
        const auto told = [&](std::size_t size) {
            SoundDocument document;
            document.file.parts[table.pair] = Bytes(size);
            return toldOf("plc.size", document.bytes());
        };
        const std::string name = table.name;
        EXPECT_EQ(told(4 + table.element), Told{}) << name;
        EXPECT_EQ(told(4), Told{}) << name;
        EXPECT_EQ(told(3), Told{name + " 的长度 3 不对"});
        EXPECT_EQ(told(5 + table.element),
                  Told{name + " 的长度 " + std::to_string(5 + table.element) + " 不对"});
    }
}

TEST(PositionRules, EachPositionCountsAgainstTheOneInFrontOfIt) {
    const auto told = [](const char* rule, const std::vector<std::uint32_t>& positions) {
        SoundDocument document;
        document.file.parts[FibPair::PlcfFldMom] =
            encodePlc(positions, Bytes(2 * (positions.size() - 1)));
        return toldOf(rule, document.bytes());
    };
    EXPECT_EQ(told("plc.order", {11, 11, 20, 31}), Told{}) << "may be equal";
    EXPECT_EQ(told("plc.order", {11, 10, 20, 31}), Told{"PlcfFldMom 的第 1 个位置没有递增"});
    EXPECT_EQ(told("plc.order", {11, 18, 17, 31}), Told{"PlcfFldMom 的第 2 个位置没有递增"});
    EXPECT_EQ(told("plc.order", {11, 18, 20, 3}), Told{}) << "the last closes the table";
    EXPECT_EQ(told("plc.limit", {11, 18, 33, 99}), Told{});
    EXPECT_EQ(told("plc.limit", {11, 18, 34, 99}),
              Told{"PlcfFldMom 的第 2 个位置 34 超出文本末尾"});
}

TEST(PositionRules, PositionsOfSectionsAreNeverEqual) {
    const Bytes file = changed(SoundDocument(), [](WordStreams& streams, const Fib& fib) {
        put32(streams.table, fib.at(FibPair::PlcfSed).fc + 4, 0);
    });
    EXPECT_EQ(toldOf("plc.order", file), Told{"PlcfSed 的第 1 个位置没有递增"});
}

TEST(PositionRules, PositionsLieInTheTextThatTheyCount) {
    // Each in a part that has no text: two are free for the marks that close text and table.
    constexpr std::array pairs{FibPair::PlcfFldEdn, FibPair::PlcfFldAtn, FibPair::PlcfFldTxbx,
                               FibPair::PlcffldHdrTxbx};
    for (const FibPair pair : pairs) {
        const auto told = [pair](std::uint32_t position) {
            SoundDocument document;
            document.file.parts[pair] = encodePlc({position, 99}, Bytes(2));
            return toldOf("plc.limit", document.bytes()).size();
        };
        EXPECT_EQ(told(2), 0U);
        EXPECT_EQ(told(3), 1U);
    }
    const auto toldOfNotes = [](FibPair pair, std::uint32_t position) {
        SoundDocument document;
        document.file.parts[pair] = encodePlc({position, 99}, Bytes(2));
        return toldOf("plc.limit", document.bytes()).size();
    };
    EXPECT_EQ(toldOfNotes(FibPair::PlcfFldFtn, 7), 0U);
    EXPECT_EQ(toldOfNotes(FibPair::PlcfFldFtn, 8), 1U);
    EXPECT_EQ(toldOfNotes(FibPair::PlcfFldHdr, 6), 0U);
    EXPECT_EQ(toldOfNotes(FibPair::PlcfFldHdr, 7), 1U);
}

// --- fonts and styles ---------------------------------------------------------------------------

TEST(FontRules, AnEntryEndsInAZeroAndHasACharacterInFrontOfIt) {
    const auto told = [](const std::function<void(Bytes&)>& change) {
        SoundDocument document;
        change(document.fonts[1].record);
        return toldOf("font.entry", document.bytes());
    };
    constexpr std::size_t nameAt = 39;
    const Told second{"字体表第 1 项没有完整的名称"};
    const auto setName = [](Bytes& record, std::string_view bytes) {
        record.resize(nameAt);
        record = joined({record, hex(bytes)});
    };
    EXPECT_EQ(told([&](Bytes& record) { setName(record, "4100 0000"); }), Told{});
    EXPECT_EQ(told([&](Bytes& record) { setName(record, "0041 0000"); }), Told{});
    EXPECT_EQ(told([&](Bytes& record) { setName(record, "0000 0000"); }), second) << "no name";
    EXPECT_EQ(told([&](Bytes& record) { setName(record, "4100 4200"); }), second) << "no zero";
    EXPECT_EQ(told([&](Bytes& record) { setName(record, "4100 0042"); }), second) << "no zero";
    EXPECT_EQ(told([&](Bytes& record) { setName(record, "4100 00"); }), second) << "half a zero";
}

class ToldStyle : public ::testing::Test {
protected:
    StyleDefinition& style(std::size_t istd) { return *document.styles.styles.at(istd); }
    Told told(const char* rule) const { return toldOf(rule, document.bytes()); }
    SoundDocument document;
};

TEST_F(ToldStyle, HasItsNumberAndItsName) {
    style(16).basedOn = 18;
    style(16).next = 18;
    style(16).link = 18;
    EXPECT_EQ(told("style.base"), Told{"样式 16“Body”的基准样式不存在"});
    EXPECT_EQ(told("style.next"), Told{"样式 16“Body”的后续样式不存在"});
    EXPECT_EQ(told("style.link"), Told{"样式 16“Body”的链接样式不存在"});
    style(16).basedOn = 15;
    EXPECT_EQ(told("style.base"), Told{"样式 16“Body”与其基准样式种类不同"});
}

TEST_F(ToldStyle, OfACircleIsEachThatRunsIntoIt) {
    style(1).basedOn = 16;
    style(16).basedOn = 1;
    EXPECT_EQ(told("style.cycle"),
              (Told{"样式 1“heading 1”的基准样式成环", "样式 16“Body”的基准样式成环"}));
    style(16).basedOn = 16;
    EXPECT_EQ(told("style.cycle"),
              (Told{"样式 1“heading 1”的基准样式成环", "样式 16“Body”的基准样式成环"}));
}

TEST_F(ToldStyle, OfANameUsedTwiceIsTheSecond) {
    style(16).name = u"Strong";
    EXPECT_EQ(told("style.unique"), Told{"样式 16“Strong”的名称重复"});
}

TEST_F(ToldStyle, OfABuiltInNumberIsTheOneThatStandsElsewhere) {
    style(15).sti = 65;
    EXPECT_EQ(told("style.number"), Told{"样式 15“Strong”的内置编号 65 不该在此"});
}

TEST_F(ToldStyle, StylesOfCharactersNameNoNextOne) {
    style(15).next = 18;
    EXPECT_EQ(told("style.next"), Told{});
    style(16).next = StyleDefinition::none;
    EXPECT_EQ(told("style.next"), Told{});
}

TEST_F(ToldStyle, OfPropertiesIsTheirStyle) {
    style(16).character = document.lists.intern(withSprm16({}, sprm::CRgFtc0, 9));
    EXPECT_EQ(told("sprm.font"), Told{"样式 16“Body”：字体 9 不存在"});
    document.styles.defaultFonts[1] = 2;
    EXPECT_EQ(told("style.font"), Told{"样式表的默认字体 2 不存在"});
}

TEST_F(ToldStyle, SheetsOfTooFewOrTooManyStylesAreTold) {
    const auto toldWith = [this](unsigned count) {
        Bytes sheet = encodeStyleSheet(document.styles, document.lists);
        put16(sheet, 2, count);
        document.file.parts[FibPair::Stshf] = sheet;
        return told("style.head").size();
    };
    EXPECT_EQ(toldWith(15), 0U);
    EXPECT_EQ(toldWith(14), 1U);
    EXPECT_EQ(toldWith(0x0FFD), 0U);
    EXPECT_EQ(toldWith(0x0FFE), 1U);
}

// --- lists --------------------------------------------------------------------------------------

class ToldList : public ::testing::Test {
protected:
    ListLevel& level(std::size_t index) { return document.listDefinitions[0].levels[index]; }
    Told told(const char* rule) const { return toldOf(rule, document.bytes()); }
    SoundDocument document;
};

TEST_F(ToldList, LevelsAreCountedFromOne) {
    level(1).head[6] = 3;
    EXPECT_EQ(told("list.text"), Told{"列表定义 0 第 2 级：编号文字中的位置不对"});
    level(0).head[4] = 8;
    level(2).head[15] = 3;
    EXPECT_EQ(told("list.form"), (Told{"列表定义 0 第 1 级：没有第 8 种编号格式",
                                       "列表定义 0 第 3 级：编号之后的间隔不对"}));
    level(3).character =
        document.lists.intern(withSprm32(withSprm16({}, sprm::CPbiGrf, 1), sprm::CPbiIBullet, 0));
    EXPECT_EQ(told("list.bullet"), Told{"列表定义 0 第 4 级：项目符号的图片 0 不存在"});
}

TEST_F(ToldList, PlacesOfANumberTextEndAtAZero) {
    level(0).text = {0, u'.', 0};
    level(0).head[6] = 0;
    level(0).head[7] = 9;
    EXPECT_EQ(told("list.text"), Told{}) << "what stands behind the zero counts nothing";
}

TEST_F(ToldList, DefinitionsAreCountedFromNone) {
    document.listDefinitions.push_back(document.listDefinitions[0]);
    EXPECT_EQ(told("list.unique"), Told{"列表定义 1 的标识重复"});
    document.listDefinitions[1].lsid = -1;
    EXPECT_EQ(told("list.unique"), Told{"列表定义 1 没有标识"});
    document.listDefinitions[1].linkedStyles[8] = 18;
    EXPECT_EQ(told("list.style"), Told{"列表定义 1 所连的样式 18 不存在或种类不对"});
    document.listDefinitions[1].linkedStyles[8] = StyleDefinition::none;
    document.file.parts[FibPair::SttbListNames] = encodeListNames({u"", std::u16string(256, u'x')});
    EXPECT_EQ(told("list.name"), Told{"列表定义 1 的名称过长"});
    document.file.parts[FibPair::SttbListNames] = encodeListNames({u"Same", u"Same"});
    EXPECT_EQ(told("list.name"), Told{"列表名称“Same”重复"});
}

TEST_F(ToldList, ASimpleDefinitionHasOneLevel) {
    document.listDefinitions[0].levels.resize(1);
    EXPECT_EQ(brokenRules(document.bytes()), std::set<std::string>{});
}

TEST_F(ToldList, ReferencesAreCountedFromOne) {
    document.listOverrides.push_back(document.listOverrides[0]);
    document.listOverrides[1].lsid = 78;
    EXPECT_EQ(told("list.lsid"), Told{"列表引用 2 的列表定义不存在"});
    document.listOverrides[1].lsid = 77;
    document.listOverrides[1].levels[0].flags = 0x19;
    EXPECT_EQ(told("list.override"), Told{"列表引用 2：所改的级别不存在"});
    document.listOverrides[1].levels = document.listOverrides[0].levels;
    document.listOverrides[1].levels.push_back(document.listOverrides[1].levels[0]);
    EXPECT_EQ(told("list.override"), Told{"列表引用 2：一个级别改了两次"});
}

TEST_F(ToldList, TheLevelsOfAReferenceBeginWithAHead) {
    Bytes table = encodeListOverrides(document.listOverrides, document.lists);
    ASSERT_EQ(get32(table, 4 + 16), 0xFFFFFFFFU);
    put32(table, 4 + 16, 0xFFFFFFFE);
    document.file.parts[FibPair::PlfLfo] = table;
    EXPECT_EQ(told("list.override"), Told{"列表引用 1：级别设置的开头不对"});
}

TEST_F(ToldList, LevelsThatAReferenceFormatsAreCheckedToo) {
    ListLevel changed = level(0);
    changed.head[4] = 8;
    document.listOverrides[0].levels[0] = {1, 0x30, changed};
    EXPECT_EQ(told("list.form"), Told{"列表引用 1：没有第 8 种编号格式"});
}

// --- comments -----------------------------------------------------------------------------------

TEST(ToldNumber, OfACommentIsCountedFromOne) {
    SoundDocument document;
    document.mark(u"节", 0x05);
    document.mark(u"末", 0x05);
    constexpr std::u16string_view texts = u"\x05甲\r\x05乙\r\r";
    document.append(texts);
    document.file.lengths.comments = static_cast<Cp>(texts.size());
    const std::vector<CommentPlace> comments{
        {document.find(u"\x05\f"), {0, 3}, u"王", u"W", 0, CommentRange{0, 2}},
        {document.find(u"\x05\r"), {3, 3}, u"李", u"L", 0, CommentRange{1, 3}}};
    CommentTables tables = encodeComments(comments, document.file.lengths.text);
    constexpr std::size_t secondAt = 3 * 4 + 30; // ATRDPre10, behind the positions
    put16(tables.references, secondAt, 10);
    put16(tables.references, secondAt + 20, 2);
    put32(tables.references, secondAt + 26, 7);
    auto& parts = document.file.parts;
    parts[FibPair::PlcfandRef] = tables.references;
    parts[FibPair::PlcfandTxt] = tables.texts;
    parts[FibPair::GrpXstAtnOwners] = tables.owners;
    parts[FibPair::AtrdExtra] = tables.dates;
    parts[FibPair::SttbfAtnBkmk] = tables.rangeTags;
    parts[FibPair::PlcfAtnBkf] = tables.rangeStarts;
    parts[FibPair::PlcfAtnBkl] = tables.rangeEnds;
    const Bytes file = document.bytes();
    EXPECT_EQ(toldOf("comment.initials", file), Told{"批注 2的作者缩写多于 9 个字符"});
    EXPECT_EQ(toldOf("comment.author", file), Told{"批注 2的作者 2 不存在"});
    EXPECT_EQ(toldOf("comment.tag", file), Told{"批注 2所指的范围 7 不存在"});
}

// --- the container ------------------------------------------------------------------------------

class ToldSector : public ::testing::Test {
protected:
    std::size_t sectorAt(std::uint32_t sector) const { return (std::size_t{sector} + 1) * 512; }
    std::size_t fatAt(std::uint32_t sector) const {
        return sectorAt(get32(file, 76)) + std::size_t{4} * sector;
    }
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
    Told told(const char* rule) const { return toldOf(rule, file); }

    Bytes file = changed(SoundDocument(), [](WordStreams& streams, const Fib&) {
        streams.wordDocument.resize(8192);
    });
};

TEST_F(ToldSector, IsThatWhichAChainReachesTwice) {
    const std::uint32_t first = get32(file, entryAt(u"WordDocument") + 116);
    put32(file, fatAt(first + 1), first);
    EXPECT_EQ(told("cfb.chain.cycle"),
              Told{"流“WordDocument”：扇区 " + std::to_string(first) + " 使扇区链成环"});
}

TEST_F(ToldSector, IsThatWhichTwoChainsHold) {
    const std::uint32_t directory = get32(file, 48);
    put32(file, entryAt(u"WordDocument") + 116, directory);
    EXPECT_EQ(told("cfb.chain.shared"),
              Told{"流“WordDocument”：扇区 " + std::to_string(directory) + " 已属于别的流"});
}

TEST_F(ToldSector, CountsAreThoseOfTheChainAndOfTheStream) {
    const std::size_t size = entryAt(u"WordDocument") + 120;
    put32(file, size, 8193);
    EXPECT_EQ(told("cfb.chain.short"), Told{"流“WordDocument”：需要 17 个扇区，链中只有 16 个"});
    put32(file, size, 8192 - 512);
    EXPECT_EQ(told("cfb.chain.long"), Told{"流“WordDocument”：只需 15 个扇区，链中却有 16 个"});
    put32(file, size, 8192 - 511);
    EXPECT_EQ(told("cfb.chain.long"), Told{});
}

TEST_F(ToldSector, OfSmallStreamsAreSmallOnes) {
    const std::size_t size = entryAt(u"1Table") + 120;
    const std::uint32_t sectors = (get32(file, size) + 63) / 64;
    put32(file, size, sectors * 64 + 1);
    EXPECT_EQ(told("cfb.chain.short"),
              Told{"流“1Table”：需要 " + std::to_string(sectors + 1) + " 个扇区，链中只有 " +
                   std::to_string(sectors) + " 个"});
}

TEST_F(ToldSector, LinksNameNoEntryBehindTheLast) {
    const std::size_t root = entryAt(u"Root Entry");
    const std::size_t top = sectorAt(get32(file, 48)) + std::size_t{128} * get32(file, root + 76);
    std::uint32_t entries = 0; // of the directory's sectors
    for (std::uint32_t sector = get32(file, 48); sector != 0xFFFFFFFE;
         sector = get32(file, fatAt(sector))) {
        entries += 4;
    }
    put32(file, top + 68, entries);
    EXPECT_EQ(told("cfb.directory.link"), Told{"目录项 " + std::to_string(entries) + " 不存在"});
}

TEST_F(ToldSector, FatSectorsAreCounted) {
    put32(file, 44, 2);
    EXPECT_EQ(told("cfb.difat"), Told{"文件头写明 2 个 FAT 扇区，实有 1 个"});
}

TEST_F(ToldSector, OfADirectoryOutsideOfTheFileIsToldOnce) {
    ASSERT_LT(file.size() / 512, 120U);
    std::uint32_t last = get32(file, 48);
    while (get32(file, fatAt(last)) != 0xFFFFFFFE) {
        last = get32(file, fatAt(last));
    }
    put32(file, fatAt(last), 120);
    put32(file, fatAt(120), 121);
    put32(file, fatAt(121), 0xFFFFFFFE);
    EXPECT_EQ(told("cfb.sector"), Told{"目录：扇区 120 超出文件末尾"});
}

TEST_F(ToldStyle, WithoutParagraphPropertiesNamesNoStyle) {
    Bytes sheet = encodeStyleSheet(document.styles, document.lists);
    const Bytes name = hex("4200 6F00 6400 7900 0000"); // "Body" with its zero
    const auto found = std::search(sheet.begin(), sheet.end(), name.begin(), name.end());
    ASSERT_NE(found, sheet.end());
    const auto at = static_cast<std::size_t>(found - sheet.begin()) + name.size();
    ASSERT_EQ(sheet.at(at), 2); // bytes: the number of the style
    put16(sheet, at, 0);
    put16(sheet, at + 2, 0);
    document.file.parts[FibPair::Stshf] = sheet;
    EXPECT_EQ(brokenRules(document.bytes()), std::set<std::string>{});
}

TEST_F(ToldStyle, NamesMayEndInACommaWithoutAnAliasBehindIt) {
    Bytes sheet = encodeStyleSheet(document.styles, document.lists);
    for (const char* name : {"4200 6F00 6400 7900 0000", "5300 7400 7200 6F00 6E00 6700 0000"}) {
        const Bytes text = hex(name); // "Body", "Strong"
        const auto found = std::search(sheet.begin(), sheet.end(), text.begin(), text.end());
        ASSERT_NE(found, sheet.end());
        *(found + static_cast<std::ptrdiff_t>(text.size()) - 4) = ',';
    }
    document.file.parts[FibPair::Stshf] = sheet;
    EXPECT_EQ(told("style.unique"), Told{});
}

} // namespace
} // namespace qvnd::test
