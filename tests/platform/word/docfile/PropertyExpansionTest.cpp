#include "platform/word/docfile/formatting/PropertyExpansion.h"

#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/formatting/FormattingRuns.h"
#include "support/ByteText.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

namespace qvnd::word {
namespace {

using test::hex;
using test::joined;

// Property lists as a file has them, with room for so many bytes of them.
class Expansion : public testing::Test {
protected:
    PropertyExpansion& expansion(std::size_t mainSize = 10000) {
        if (!made_) {
            made_ = std::make_unique<PropertyExpansion>(PropertyExpansion::Streams{data, mainSize},
                                                        objects, tables);
        }
        return *made_;
    }
    Bytes characters(const Bytes& list) {
        const ByteView result = tables.lists[expansion().characters(list)];
        return {result.begin(), result.end()};
    }
    Bytes paragraph(const Bytes& list) {
        const ByteView result = tables.lists[expansion().paragraph(0, list).properties];
        return {result.begin(), result.end()};
    }
    StyleIndex styleBehind(StyleIndex style, const Bytes& list) {
        return expansion().paragraph(style, list).style;
    }
    int damaged() { return expansion().damagedLists(); }

    Bytes data;
    EmbeddedObjects objects;
    DocumentTables tables;

private:
    std::unique_ptr<PropertyExpansion> made_;
};

const Bytes keepEntry = withSprm8({}, sprm::PFKeep, 1);
const Bytes boldEntry = withSprm8({}, sprm::CFBold, 1);

TEST_F(Expansion, AHeadingMovesByLevelsAndStaysOneOfNine) {
    const auto moved = [this](StyleIndex style, int levels) {
        return styleBehind(style, withSprm8({}, sprm::PIncLvl, static_cast<std::uint8_t>(levels)));
    };
    EXPECT_EQ(moved(1, 1), 2);
    EXPECT_EQ(moved(1, -1), 1);
    EXPECT_EQ(moved(5, -2), 3);
    EXPECT_EQ(moved(9, -1), 8);
    EXPECT_EQ(moved(9, 1), 9);
    EXPECT_EQ(moved(3, 127), 9);
    EXPECT_EQ(moved(3, -128), 1);
    EXPECT_EQ(moved(0, 1), 0);
    EXPECT_EQ(moved(10, -1), 10);
}

TEST_F(Expansion, APermutationGivesOtherStylesToThoseItNames) {
    // The styles 3 and 4 become 20 and 21.
    const Bytes list = hex("01C6 0A 00 00 0300 0400 1400 1500");
    EXPECT_EQ(styleBehind(2, list), 2);
    EXPECT_EQ(styleBehind(3, list), 20);
    EXPECT_EQ(styleBehind(4, list), 21);
    EXPECT_EQ(styleBehind(5, list), 5);
}

TEST_F(Expansion, APermutationThatIsCutOffChangesTheStylesItTells) {
    const Bytes list = hex("01C6 09 00 00 0300 0400 1400 15");
    EXPECT_EQ(styleBehind(3, list), 20);
    EXPECT_EQ(styleBehind(4, list), 4);
    EXPECT_EQ(styleBehind(3, hex("01C6 05 00 00 0300 04")), 3);
}

TEST_F(Expansion, ChangesOfTheStyleHoldInTheirOrderAndAreNoProperties) {
    const Bytes list =
        joined({withSprm16({}, sprm::PIstd, 4), keepEntry, withSprm8({}, sprm::PIncLvl, 2)});
    const auto result = expansion().paragraph(0, list);
    EXPECT_EQ(result.style, 6);
    EXPECT_EQ(tables.lists[result.properties].size(), keepEntry.size());
}

TEST_F(Expansion, AListKeepsWhatIsOfItsKind) {
    const Bytes row = withSprm8({}, sprm::TFCantSplit, 1);
    const Bytes section = withSprm8({}, sprm::SBkc, 1);
    const Bytes all = joined({boldEntry, keepEntry, row, section});
    EXPECT_EQ(characters(all), boldEntry);
    EXPECT_EQ(damaged(), 1);
    EXPECT_EQ(paragraph(all), joined({keepEntry, row}));
    EXPECT_EQ(damaged(), 2);
}

TEST_F(Expansion, AListThatIsDamagedIsCountedOnce) {
    const Bytes list = joined({boldEntry, keepEntry});
    (void)characters(list);
    (void)characters(list);
    EXPECT_EQ(damaged(), 1);
    (void)paragraph(list);
    (void)paragraph(list);
    EXPECT_EQ(damaged(), 2);
}

TEST_F(Expansion, OneByteBehindAListOrNoughtsAreNoDamage) {
    (void)characters(joined({boldEntry, Bytes{7}}));
    (void)characters(joined({boldEntry, Bytes{0, 0}}));
    EXPECT_EQ(damaged(), 0);
    (void)characters(joined({boldEntry, Bytes{0x35, 0x08}}));
    EXPECT_EQ(damaged(), 1);
    EXPECT_EQ(characters(joined({boldEntry, Bytes{0, 0x68}})), boldEntry);
    EXPECT_EQ(damaged(), 2);
}

TEST_F(Expansion, PropertiesInTheDataStreamStandWhereTheyAreNamed) {
    data = joined({hex("FFFF 0300"), keepEntry});
    const Bytes named = withSprm32({}, sprm::PHugePapx, 2);
    EXPECT_EQ(paragraph(joined({withSprm8({}, sprm::PIlvl, 2), named})),
              joined({withSprm8({}, sprm::PIlvl, 2), keepEntry}));
    EXPECT_EQ(damaged(), 0);
}

TEST_F(Expansion, PropertiesOutsideOfTheDataStreamAreLeftOutAndCounted) {
    data = joined({hex("0300"), keepEntry});
    EXPECT_EQ(paragraph(joined({withSprm32({}, sprm::PHugePapx, 1), keepEntry})), keepEntry);
    EXPECT_EQ(damaged(), 1);
}

TEST_F(Expansion, PropertiesInTheDataStreamNameNoOthersThere) {
    const Bytes onwards = withSprm32({}, sprm::PHugePapx, 0);
    data = joined({Bytes{static_cast<std::uint8_t>(onwards.size() + keepEntry.size()), 0}, onwards,
                   keepEntry});
    EXPECT_EQ(paragraph(onwards), keepEntry);
    EXPECT_EQ(damaged(), 1);
}

TEST_F(Expansion, ALevelOfAListBeyondTheNinthIsLeftOutUnlessItIsThatOfBodyText) {
    const auto level = [](unsigned number) { return withSprm8({}, sprm::PIlvl, number); };
    EXPECT_EQ(paragraph(level(8)), level(8));
    EXPECT_EQ(paragraph(level(9)), Bytes());
    EXPECT_EQ(paragraph(level(12)), level(12));
    EXPECT_EQ(paragraph(level(13)), Bytes());
    EXPECT_EQ(damaged(), 2);
}

TEST_F(Expansion, APictureThatLeadsNowhereIsLeftOut) {
    EXPECT_EQ(characters(joined({boldEntry, withSprm32({}, sprm::CPicLocation, 77)})), boldEntry);
    EXPECT_EQ(characters(joined({boldEntry, withSprm32({}, sprm::CObjLocation, 0)})), boldEntry);
}

TEST_F(Expansion, AnObjectIsNamedByItsPlaceAmongThoseThatAreUsed) {
    objects[700] = std::make_shared<EmbeddedObject>();
    objects[800] = std::make_shared<EmbeddedObject>();
    const auto named = [this](SprmOpcode kind, std::uint32_t number) {
        const Bytes object = withSprm8({}, kind, 1);
        const Bytes result =
            characters(joined({object, withSprm32({}, sprm::CPicLocation, number)}));
        return Bytes(result.begin() + static_cast<long>(object.size()), result.end());
    };
    EXPECT_EQ(named(sprm::CFOle2, 800), withSprm32({}, sprm::CObjLocation, 0));
    EXPECT_EQ(named(sprm::CFObj, 700), withSprm32({}, sprm::CObjLocation, 1));
    EXPECT_EQ(named(sprm::CFObj, 800), withSprm32({}, sprm::CObjLocation, 0));
    EXPECT_EQ(named(sprm::CFObj, 900), Bytes()) << "there is none";
    ASSERT_EQ(tables.objects.size(), 2U);
    EXPECT_EQ(tables.objects[0], objects[800]);
}

TEST_F(Expansion, ListsTakeTwiceTheRoomOfTheirStreamAtMost) {
    expansion(boldEntry.size());
    EXPECT_EQ(characters(boldEntry), boldEntry);
    EXPECT_EQ(paragraph(keepEntry), keepEntry);
    EXPECT_EQ(damaged(), 0);
    EXPECT_EQ(characters(withSprm8({}, sprm::CFItalic, 1)), Bytes());
    EXPECT_EQ(styleBehind(3, withSprm8({}, sprm::PFKeepFollow, 1)), 3);
    EXPECT_EQ(damaged(), 2);
    EXPECT_EQ(characters(boldEntry), boldEntry) << "which is known";
}

TEST_F(Expansion, ThePropertiesOfAPieceComeBehindThoseOfItsText) {
    const std::vector<Bytes> modifiers{
        joined({boldEntry, keepEntry, withSprm16({}, sprm::PIstd, 4)})};
    PieceModifiers pieces(modifiers, expansion(), tables.lists);
    constexpr std::uint16_t first = 1; // of the lists
    const Bytes plain = withSprm8({}, sprm::CFBold, 0);
    const PropertyListId text = tables.lists.intern(plain);
    const auto bytesOf = [this](PropertyListId id) {
        const ByteView list = tables.lists[id];
        return Bytes(list.begin(), list.end());
    };
    EXPECT_EQ(bytesOf(pieces.characters(text, first)), joined({plain, boldEntry}));
    EXPECT_EQ(pieces.characters(text, 0), text);
    EXPECT_EQ(pieces.characters(text, 3), text) << "a list that is not there";
    const auto changed = pieces.paragraph({1, PropertyListId::empty}, first);
    EXPECT_EQ(changed.style, 4);
    EXPECT_EQ(bytesOf(changed.properties), keepEntry);
    EXPECT_EQ(pieces.paragraph({1, PropertyListId::empty}, 0).style, 1);
    EXPECT_EQ(pieces.paragraph({1, text}, 3).properties, text);
}

// Pages that say where their runs lie: a run from each even byte to the next, by the page's bytes.
class FormattedPages : public testing::Test {
protected:
    static constexpr std::size_t pageSize = 512;

    // A page with one run between these offsets.
    void addPage(std::uint8_t first, std::uint8_t limit) {
        stream.push_back(first);
        stream.push_back(limit);
        stream.resize((stream.size() / pageSize + 1) * pageSize);
    }
    FormattingRuns read(const std::vector<BinTable::Entry>& entries, std::uint32_t limit) {
        return readFormattingRuns(stream, {entries, limit}, [](ByteView page, bool& sound) {
            sound = page[2] == 0;
            return std::vector<FormattingRun>{{page[0], page[1], 0, PropertyListId::empty, true}};
        });
    }
    // The offsets of all runs, one after the other.
    std::vector<std::uint32_t> offsets(const std::vector<BinTable::Entry>& entries,
                                       std::uint32_t limit) {
        std::vector<std::uint32_t> result;
        for (const FormattingRun& run : read(entries, limit).runs) {
            result.push_back(run.firstFc);
            result.push_back(run.limitFc);
        }
        return result;
    }

    Bytes stream;
};

using Offsets = std::vector<std::uint32_t>;

TEST_F(FormattedPages, APageFormatsTheTextThatTheTableGivesIt) {
    addPage(10, 50);
    addPage(20, 90);
    EXPECT_EQ(offsets({{15, 0}, {30, 1}}, 60), (Offsets{15, 30, 30, 60}));
    EXPECT_EQ(offsets({{0, 0}, {50, 1}}, 100), (Offsets{10, 50, 50, 90}));
    EXPECT_EQ(offsets({{50, 0}, {90, 1}}, 100), Offsets{});
}

TEST_F(FormattedPages, APageMayFormatTwoStretches) {
    addPage(10, 90);
    addPage(40, 50);
    EXPECT_EQ(offsets({{10, 0}, {40, 1}, {50, 0}}, 80), (Offsets{10, 40, 40, 50, 50, 80}));
}

TEST_F(FormattedPages, APageThatIsNamedOverAndOverIsDecodedOnce) {
    addPage(10, 90);
    addPage(20, 80);
    std::vector<BinTable::Entry> entries;
    for (std::uint32_t fc = 10; fc < 90; ++fc) {
        entries.push_back({fc, 7}); // of no text: a page that is not there
        entries.push_back({fc, fc % 2});
    }
    int decoded = 0;
    const FormattingRuns runs =
        readFormattingRuns(stream, {entries, 90}, [&](ByteView page, bool&) {
            ++decoded;
            return std::vector<FormattingRun>{{page[0], page[1], 0, PropertyListId::empty, true}};
        });
    EXPECT_EQ(decoded, 2);
    EXPECT_EQ(runs.damagedPages, 0);
    EXPECT_EQ(runs.runs.size(), 40U + 30U);
}

TEST_F(FormattedPages, OfATableOutOfOrderEachPageFormatsWhatItSays) {
    addPage(10, 50);
    addPage(40, 90);
    EXPECT_EQ(offsets({{30, 0}, {20, 1}, {25, 0}}, 60), (Offsets{10, 50, 50, 90}));
    EXPECT_EQ(offsets({{30, 0}}, 29), (Offsets{10, 50}));
    EXPECT_EQ(offsets({{30, 0}}, 30), Offsets{});
    EXPECT_EQ(offsets({{30, 0}, {30, 1}}, 45), (Offsets{40, 45})) << "equal ones are in order";
}

TEST_F(FormattedPages, PagesThatAreNotWholeAreCounted) {
    addPage(10, 50);
    EXPECT_EQ(read({{0, 0}}, 60).damagedPages, 0);
    EXPECT_EQ(read({{0, 0}, {50, 1}}, 60).damagedPages, 1);
    EXPECT_EQ(offsets({{0, 0}, {50, 1}}, 60), (Offsets{10, 50}));
    stream[2] = 1; // which the page says of itself
    EXPECT_EQ(read({{0, 0}}, 60).damagedPages, 1);
    stream.pop_back();
    EXPECT_EQ(offsets({{0, 0}}, 60), Offsets{});
}

TEST(FormattingLookups, TextBetweenTheRunsIsPlainToTheNextOne) {
    const std::vector<FormattingRun> runs{{10, 20, 1, PropertyListId::empty, true},
                                          {20, 30, 2, PropertyListId::empty, true},
                                          {40, 50, 3, PropertyListId::empty, true}};
    // Both forward and back, since the last answer is tried first.
    FormattingLookup lookup(runs);
    for (const std::uint32_t fc : {19U, 10U, 29U, 20U, 49U, 40U}) {
        EXPECT_TRUE(lookup.at(fc).known);
        EXPECT_EQ(lookup.at(fc).style, fc < 20 ? 1 : fc < 30 ? 2 : 3) << fc;
    }
    for (const auto& [fc, limit] : {std::pair(0U, 10U),
                                    {9U, 10U},
                                    {30U, 40U},
                                    {39U, 40U},
                                    {50U, std::numeric_limits<std::uint32_t>::max()}}) {
        EXPECT_FALSE(lookup.at(fc).known) << fc;
        EXPECT_EQ(lookup.at(fc).firstFc, fc);
        EXPECT_EQ(lookup.at(fc).limitFc, limit) << fc;
    }
    EXPECT_EQ(lookup.at(15).style, 1) << "far behind the last answer";
}

} // namespace
} // namespace qvnd::word
