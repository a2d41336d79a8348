#include "platform/word/check/SoundDocument.h"

#include "platform/word/docfile/document/Remarks.h"
#include "platform/word/docfile/format/Plc.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/objects/OleStreams.h"
#include "platform/word/docfile/styles/StyleSheetTable.h"
#include "platform/word/docfile/text/BookmarkTables.h"
#include "platform/word/docfile/writer/DocumentWriter.h"
#include "platform/word/engine/NormalTemplate.h"
#include "support/ByteText.h"
#include "support/MemoryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

// Each rule about the structures of the table stream: one thing broken breaks that rule and no
// other.
namespace qvnd::test {
namespace {

using namespace word;
using Rules = std::set<std::string>;

// The FIB with a change.
Rules rulesWithFib(const std::function<void(Fib&)>& change) {
    return brokenRules(changed(SoundDocument(), [&](WordStreams& streams, const Fib& before) {
        Fib fib = before;
        change(fib);
        const Bytes head = encodeFib(fib);
        std::copy(head.begin(), head.end(), streams.wordDocument.begin());
    }));
}

// --- FIB ----------------------------------------------------------------------------------------

TEST(FibRules, PlacesMustLieInTheTableStream) {
    EXPECT_EQ(rulesWithFib([](Fib& fib) {
                  fib.set(FibPair::Wss, {0x7FFFFFF, 10});
              }),
              Rules{"fib.place"});
}

TEST(FibRules, TimeOfTheLastSaveIsNoPlace) {
    EXPECT_EQ(rulesWithFib([](Fib& fib) { fib.set(FibPair::DateTime, {0x7FFFFFF, 10}); }), Rules{});
}

TEST(FibRules, LengthMustNotExceedTheStream) {
    EXPECT_EQ(rulesWithFib([](Fib& fib) { fib.cbMac = 0x7FFFFFF; }), Rules{"fib.size"});
}

TEST(FibRules, VersionMustHaveItsNumberOfPlaces) {
    const Bytes file = changed(SoundDocument(), [](WordStreams& streams, const Fib&) {
        constexpr std::size_t newVersionAt = 32 + 2 + 28 + 2 + 88 + 2 + 0xA4 * 8 + 2;
        put16(streams.wordDocument, newVersionAt, 0x0112);
    });
    EXPECT_EQ(brokenRules(file), Rules{"fib.pairs"});
}

TEST(FibRules, MainTextMustHaveCharacters) {
    EXPECT_EQ(rulesWithFib([](Fib& fib) { fib.ccp.text = 0; }).count("fib.count"), 1U);
}

// --- tables of positions ------------------------------------------------------------------------

TEST(PositionRules, SizeMustFit) {
    EXPECT_EQ(brokenRulesWithTable(FibPair::PlcfSpl, Bytes(11, 0)), Rules{"plc.size"});
}

TEST(PositionRules, PositionsMustAscend) {
    EXPECT_EQ(
        brokenRulesWithTable(FibPair::PlcfSpl, encodePlc({0, 9, 5, 20}, hex("0000 0000 0000"))),
        Rules{"plc.order"});
}

TEST(PositionRules, PositionsMustLieInTheText) {
    EXPECT_EQ(brokenRulesWithTable(FibPair::PlcfSpl, encodePlc({0, 5000, 6000}, hex("0000 0000"))),
              Rules{"plc.limit"});
}

TEST(PositionRules, PositionsMayReachOverTheLastMarkAndTheTablesOwnEnd) {
    const PartLengths ccp = readFib(SoundDocument().streams().wordDocument).ccp;
    const Cp all = ccp.text + ccp.sideTotal();
    const auto rulesReaching = [](Cp last) {
        return brokenRulesWithTable(FibPair::PlcfSpl,
                                    encodePlc({0, last, last + 9}, hex("0000 0000")));
    };
    EXPECT_EQ(rulesReaching(all + 2), Rules{});
    EXPECT_EQ(rulesReaching(all + 3), Rules{"plc.limit"});
}

// --- fonts and authors --------------------------------------------------------------------------

TEST(FontRules, TableMustBeWhole) {
    EXPECT_EQ(brokenRulesWithTable(FibPair::SttbfFfn, hex("0200 0000")).count("font.table"), 1U);
}

TEST(FontRules, EntryMustHaveAName) {
    SoundDocument document;
    document.fonts[0].record.resize(45); // in the middle of the name
    EXPECT_EQ(brokenRules(document.bytes()), Rules{"font.entry"});
}

TEST(AuthorRules, TableMustBeWhole) {
    EXPECT_EQ(brokenRulesWithTable(FibPair::SttbfRMark, hex("FFFF 0200 0000 0100 4100")),
              Rules{"author.table"});
}

// --- lists --------------------------------------------------------------------------------------

class ListRules : public ::testing::Test {
protected:
    Rules rules() const { return brokenRules(document.bytes()); }
    SoundDocument document;
};

TEST_F(ListRules, ReferenceMustNameADefinition) {
    document.listOverrides[0].lsid = 78;
    EXPECT_EQ(rules(), Rules{"list.lsid"});
}

TEST_F(ListRules, IdentifiersMustBeUnique) {
    document.listDefinitions.push_back(document.listDefinitions[0]);
    EXPECT_EQ(rules(), Rules{"list.unique"});
}

TEST_F(ListRules, LinkedStyleMustExist) {
    document.listDefinitions[0].linkedStyles[2] = 18;
    EXPECT_EQ(rules(), Rules{"list.style"});
}

TEST_F(ListRules, LinkedStyleMustBeOfParagraphsOrCharacters) {
    StyleDefinition table;
    table.name = u"Grid";
    table.kind = StyleKind::table;
    document.styles.styles[17] = table;
    document.listDefinitions[0].linkedStyles[2] = 15;
    EXPECT_EQ(rules(), Rules{}) << "characters";
    document.listDefinitions[0].linkedStyles[2] = 17;
    EXPECT_EQ(rules(), Rules{"list.style"});
}

TEST_F(ListRules, IdentifierMustNotBeTheOneThatStandsForNone) {
    document.listDefinitions[0].lsid = document.listOverrides[0].lsid = -1;
    EXPECT_EQ(rules(), Rules{"list.unique"});
}

TEST_F(ListRules, FormOfANumberMustBeKnown) {
    const auto rulesWith = [this](std::size_t at, std::uint8_t value) {
        std::uint8_t& byte = document.listDefinitions[0].levels[0].head[at];
        const std::uint8_t before = std::exchange(byte, value);
        Rules broken = rules();
        byte = before;
        return broken;
    };
    constexpr std::size_t format = 4;
    constexpr std::size_t follow = 15;
    for (const std::uint8_t known : {0x00, 0x17, 0x3B, 0xFF}) {
        EXPECT_EQ(rulesWith(format, known), Rules{}) << int{known};
    }
    for (const std::uint8_t unknown : {0x08, 0x09, 0x0F, 0x13, 0x3C, 0xFE}) {
        EXPECT_EQ(rulesWith(format, unknown), Rules{"list.form"}) << int{unknown};
    }
    EXPECT_EQ(rulesWith(follow, 2), Rules{});
    EXPECT_EQ(rulesWith(follow, 3), Rules{"list.form"});
}

TEST_F(ListRules, PlacesInTheNumberTextMustBeInRange) {
    document.listDefinitions[0].levels[0].head[6] = 3; // behind the text's end
    EXPECT_EQ(rules(), Rules{"list.text"});
    document.listDefinitions[0].levels[0].head[6] = 2; // the full stop: no level
    EXPECT_EQ(rules(), Rules{"list.text"});
}

TEST_F(ListRules, PropertiesOfALevelAreChecked) {
    document.listDefinitions[0].levels[3].character =
        document.lists.intern(withSprm16({}, sprm::CRgFtc0, 9));
    EXPECT_EQ(rules(), Rules{"sprm.font"});
}

TEST_F(ListRules, PictureOfABulletMustExist) {
    const Bytes first = withSprm32(withSprm16({}, sprm::CPbiGrf, 1), sprm::CPbiIBullet, 0);
    document.listDefinitions[0].levels[3].character = document.lists.intern(first);
    EXPECT_EQ(rules(), Rules{"list.bullet"});
    const std::vector<Bookmark> pictures{{u"_PictureBullets", 1, 2}};
    const BookmarkTables tables = encodeBookmarks(pictures, document.file.lengths.text);
    document.file.parts[FibPair::SttbfBkmk] = tables.names;
    document.file.parts[FibPair::PlcfBkf] = tables.starts;
    document.file.parts[FibPair::PlcfBkl] = tables.ends;
    EXPECT_EQ(rules(), Rules{});
    document.listDefinitions[0].levels[3].character =
        document.lists.intern(withSprm32(withSprm16({}, sprm::CPbiGrf, 1), sprm::CPbiIBullet, 1));
    EXPECT_EQ(rules(), Rules{"list.bullet"});
    document.listDefinitions[0].levels[3].character =
        document.lists.intern(withSprm32(withSprm16({}, sprm::CPbiGrf, 2), sprm::CPbiIBullet, 1));
    EXPECT_EQ(rules(), Rules{}) << "no picture shows";
}

TEST_F(ListRules, ChangedLevelMustExist) {
    document.listOverrides[0].levels[0].flags = 0x1A; // level 10
    EXPECT_EQ(rules(), Rules{"list.override"});
}

TEST_F(ListRules, LevelMustNotBeChangedTwice) {
    document.listOverrides[0].levels.push_back(document.listOverrides[0].levels[0]);
    EXPECT_EQ(rules(), Rules{"list.override"});
}

TEST_F(ListRules, ThereMustNotBeMoreReferencesThanParagraphsCanName) {
    document.listOverrides.resize(2046, document.listOverrides[0]);
    EXPECT_EQ(rules(), Rules{});
    document.listOverrides.push_back(document.listOverrides[0]);
    EXPECT_EQ(rules(), Rules{"list.number"});
}

TEST_F(ListRules, SizeMustFitTheCount) {
    const Bytes file = changed(document, [](WordStreams& streams, const Fib& before) {
        Fib fib = before;
        const FcLcb place = fib.at(FibPair::PlfLst);
        fib.set(FibPair::PlfLst, {place.fc, place.lcb + 2});
        const Bytes head = encodeFib(fib);
        std::copy(head.begin(), head.end(), streams.wordDocument.begin());
    });
    EXPECT_EQ(brokenRules(file), Rules{"list.size"});
}

TEST_F(ListRules, TablesMustBeWhole) {
    document.file.parts[FibPair::PlfLfo] = hex("01000000 4D000000 00000000 00000000 01000000");
    EXPECT_EQ(rules(), Rules{"list.parse"});
}

// --- sections -----------------------------------------------------------------------------------

TEST(SectionRules, DocumentMustHaveOne) {
    SoundDocument document;
    document.file.sections.clear();
    EXPECT_EQ(brokenRules(document.bytes()).count("section.none"), 1U);
}

TEST(SectionRules, SectionMustEndWithItsBreak) {
    SoundDocument document;
    document.file.sections[0].length -= 2;
    document.file.sections[1].length += 2;
    EXPECT_EQ(brokenRules(document.bytes()).count("section.mark"), 1U);
}

TEST(SectionRules, FirstSectionMustBeginWithTheText) {
    const Bytes file = changed(SoundDocument(), [](WordStreams& streams, const Fib& fib) {
        put32(streams.table, fib.at(FibPair::PlcfSed).fc, 1);
    });
    EXPECT_EQ(brokenRules(file), Rules{"section.range"});
}

TEST(SectionRules, LastSectionMustReachTheEnd) {
    SoundDocument document;
    document.file.sections[1].length -= 1;
    EXPECT_EQ(brokenRules(document.bytes()), Rules{"section.range"});
}

TEST(SectionRules, PropertiesMustLieInTheStream) {
    const Bytes file = changed(SoundDocument(), [](WordStreams& streams, const Fib& fib) {
        put32(streams.table, fib.at(FibPair::PlcfSed).fc + 12 + 2, 0x7FFFFFF);
    });
    EXPECT_EQ(brokenRules(file), Rules{"section.place"});
}

// --- bookmarks ----------------------------------------------------------------------------------

class BookmarkRules : public ::testing::Test {
protected:
    Rules rulesOf(std::vector<Bookmark> bookmarks,
                  const std::function<void(BookmarkTables&)>& change = {}) {
        SoundDocument document;
        BookmarkTables tables = encodeBookmarks(bookmarks, document.file.lengths.text);
        if (change) {
            change(tables);
        }
        document.file.parts[FibPair::SttbfBkmk] = tables.names;
        document.file.parts[FibPair::PlcfBkf] = tables.starts;
        document.file.parts[FibPair::PlcfBkl] = tables.ends;
        return brokenRules(document.bytes());
    }
};

TEST_F(BookmarkRules, NamesMustBeUniqueWhateverTheirCase) {
    EXPECT_EQ(rulesOf({{u"Mark", 0, 1, 0}, {u"mARK", 2, 3, 0}}), Rules{"bookmark.unique"});
}

TEST_F(BookmarkRules, NamesMustNotBeLongerThanFortyCharacters) {
    EXPECT_EQ(rulesOf({{std::u16string(41, u'x'), 0, 1, 0}}), Rules{"bookmark.name"});
    EXPECT_EQ(rulesOf({{std::u16string(40, u'x'), 0, 1, 0}}), Rules{});
}

TEST_F(BookmarkRules, EndMustNotStandBeforeTheStart) {
    EXPECT_EQ(rulesOf({{u"x", 5, 3, 0}}), Rules{"bookmark.order"});
}

TEST_F(BookmarkRules, EachMustBeginAndEndInOneText) {
    const PartLengths lengths = SoundDocument().file.lengths;
    const Cp note = lengths.text;
    const Cp header = note + lengths.footnotes;
    EXPECT_EQ(rulesOf({{u"x", note - 1, note, 0}, {u"y", note, header - 1, 0}}), Rules{});
    EXPECT_EQ(rulesOf({{u"x", note - 1, note + 1, 0}}), Rules{"bookmark.text"});
    EXPECT_EQ(rulesOf({{u"x", header - 1, header + 1, 0}}), Rules{"bookmark.text"});
}

TEST_F(BookmarkRules, EachMustBeginAndEndInOneHeader) {
    SoundDocument document;
    const Cp headers = document.file.lengths.text + document.file.lengths.footnotes;
    const Plc places = decodePlc(document.file.parts.at(FibPair::PlcfHdd), 0);
    const auto second = std::find_if(places.positions.begin(), places.positions.end(),
                                     [](std::uint32_t position) { return position > 0; });
    ASSERT_NE(second, places.positions.end());
    const Cp begin = headers + *second;
    EXPECT_EQ(rulesOf({{u"x", begin - 1, begin, 0}}), Rules{});
    EXPECT_EQ(rulesOf({{u"x", begin - 1, begin + 1, 0}}), Rules{"bookmark.text"});
}

TEST_F(BookmarkRules, EveryBookmarkMustHaveItsOwnEnd) {
    EXPECT_EQ(rulesOf({{u"x", 1, 3, 0}, {u"y", 2, 5, 0}},
                      [](BookmarkTables& tables) { put16(tables.starts, 12 + 4, 0); }),
              Rules{"bookmark.end"});
}

TEST_F(BookmarkRules, ThereMustNotBeMoreThan16380) {
    std::vector<Bookmark> bookmarks(16380, Bookmark{u"", 0, 1, 0});
    for (std::size_t i = 0; i < bookmarks.size(); ++i) {
        bookmarks[i].name = u"m" + digits(static_cast<std::int64_t>(i));
    }
    EXPECT_EQ(rulesOf(bookmarks), Rules{});
    bookmarks.push_back({u"one more", 0, 1, 0});
    EXPECT_EQ(rulesOf(bookmarks), Rules{"bookmark.number"});
}

TEST_F(BookmarkRules, RangesOfCommentsMustHaveTheirOwnEndsBehindTheirStarts) {
    const auto rulesWithRange = [](Cp start, Cp end, const Bytes& tags) {
        SoundDocument document;
        document.file.parts[FibPair::SttbfAtnBkmk] = tags;
        document.file.parts[FibPair::PlcfAtnBkf] =
            encodePlc({start, document.file.lengths.text}, hex("00000000"));
        document.file.parts[FibPair::PlcfAtnBkl] = encodePlc({end, document.file.lengths.text}, {});
        return brokenRules(document.bytes());
    };
    const Bytes one = hex("FFFF 0100 0A00 0000 0001 00000000 FFFFFFFF");
    EXPECT_EQ(rulesWithRange(1, 3, one), Rules{});
    EXPECT_EQ(rulesWithRange(3, 1, one), Rules{"bookmark.comments"});
    EXPECT_EQ(rulesWithRange(1, 3, hex("FFFF 0000 0A00")), Rules{"bookmark.comments"});
}

TEST_F(BookmarkRules, ThereMustBeAsManyNamesStartsAndEnds) {
    EXPECT_EQ(rulesOf({{u"x", 1, 3, 0}},
                      [](BookmarkTables& tables) { tables.names = hex("FFFF 0000 0000"); }),
              Rules{"bookmark.count"});
}

// --- headers and notes --------------------------------------------------------------------------

TEST(HeaderRules, HeaderTextMustHaveItsTable) {
    SoundDocument document;
    document.file.parts.erase(FibPair::PlcfHdd);
    EXPECT_EQ(brokenRules(document.bytes()), Rules{"header.table"});
}

TEST(HeaderRules, WithoutHeaderTextEveryStoryIsEmpty) {
    const auto breaks = [](const std::vector<std::uint32_t>& stories) {
        SoundDocument document;
        document.file.parts[FibPair::PlcfHdd] = encodePlc(stories, {});
        const Bytes file = changed(document, [](WordStreams& streams, const Fib& before) {
            Fib fib = before;
            fib.ccp.headers = 0;
            const Bytes head = encodeFib(fib);
            std::copy(head.begin(), head.end(), streams.wordDocument.begin());
        });
        return brokenRules(file).count("header.table") == 1;
    };
    EXPECT_FALSE(breaks(std::vector<std::uint32_t>(20, 0)));
    std::vector<std::uint32_t> last(20, 0);
    last[19] = 1; // which closes the table
    EXPECT_FALSE(breaks(last));
    last[18] = 1;
    EXPECT_TRUE(breaks(last));
}

TEST(HeaderRules, ThereMustBeSixStoriesASection) {
    std::vector<std::uint32_t> stories(8, 0);
    stories.resize(13, 3);
    stories.push_back(4);
    EXPECT_EQ(brokenRulesWithTable(FibPair::PlcfHdd, encodePlc(stories, {})),
              Rules{"header.count"});
    for (const std::size_t positions : {18U, 19U, 20U}) { // and one that closes the table
        stories.assign(8, 0);
        stories.resize(positions, 3);
        stories.push_back(4);
        EXPECT_EQ(brokenRulesWithTable(FibPair::PlcfHdd, encodePlc(stories, {})),
                  positions == 19 ? Rules{} : Rules{"header.count"})
            << positions;
    }
}

TEST(HeaderRules, StoryMustEndWithAParagraphMark) {
    std::vector<std::uint32_t> stories(8, 0);
    stories.resize(19, 1); // in the middle of the text
    stories.push_back(4);
    EXPECT_EQ(brokenRulesWithTable(FibPair::PlcfHdd, encodePlc(stories, {})), Rules{"header.mark"});
}

TEST(InformationRules, ValuesMustLieInTheirPropertySet) {
    const auto rulesWithSummary = [](Bytes summary) {
        DocumentContent content = normalTemplate();
        content.information.summary = std::move(summary);
        const auto folder = std::make_shared<MemoryFolder>();
        DocumentWriter(folder).saveAs("/folder/a.doc", content);
        return brokenRules(folder->bytes("/folder/a.doc"));
    };
    Bytes summary = encodeSummary({u"title", u"", u""});
    EXPECT_EQ(rulesWithSummary(summary), Rules{});
    put32(summary, 48 + 12, 4096); // the place of the first value
    EXPECT_EQ(rulesWithSummary(summary), Rules{"information.form"});
}

TEST(DivisionRules, ADivisionMustBeInItsTable) {
    SoundDocument document;
    document.setParagraph(u"标题", withSprm32({}, sprm::PIpgp, 1));
    EXPECT_EQ(brokenRules(document.bytes()), Rules{"sprm.division"});
    document.setParagraph(u"标题", withSprm32({}, sprm::PIpgp, 0));
    EXPECT_EQ(brokenRules(document.bytes()), Rules{});
    document.setParagraph(u"标题", withSprm32({}, sprm::TIpgp, 1));
    EXPECT_EQ(brokenRules(document.bytes()), Rules{"sprm.division"});
}

TEST(PropertyRules, WhatAListInsideAnEntryNamesMustExist) {
    SoundDocument document;
    const auto withFont = [](unsigned font) {
        Bytes operand{4};
        const Bytes inner = withSprm16({}, sprm::CRgFtc0, font);
        operand.insert(operand.end(), inner.begin(), inner.end());
        return withSprm({}, sprm::CMajority, operand);
    };
    document.setCharacters(u"标题", withFont(0));
    EXPECT_EQ(brokenRules(document.bytes()), Rules{});
    document.setCharacters(u"标题", withFont(999));
    EXPECT_EQ(brokenRules(document.bytes()), Rules{"sprm.font"});
}

} // namespace
} // namespace qvnd::test
