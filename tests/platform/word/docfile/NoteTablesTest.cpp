#include "platform/word/docfile/text/NoteTables.h"

#include "platform/word/docfile/text/CommentTables.h"
#include "support/ByteText.h"

#include <gtest/gtest.h>

namespace qvnd::word {
namespace {

using test::hex;

TEST(NoteTables, ReferencesAndTextsComeBack) {
    const std::vector<NotePlace> notes{{3, true, {0, 5}}, {8, false, {5, 2}}};
    const NoteTables tables = encodeNotes(notes, 20);
    EXPECT_EQ(tables.references, hex("03000000 08000000 14000000 0100 0000"));
    EXPECT_EQ(tables.texts, hex("00000000 05000000 07000000 08000000"));
    const auto read = decodeNotes(tables.references, tables.texts, 8);
    ASSERT_EQ(read.size(), 2U);
    EXPECT_EQ(read[0].at, 3U);
    EXPECT_TRUE(read[0].automatic);
    EXPECT_EQ(read[1].text.start, 5U);
    EXPECT_EQ(read[1].text.length, 2U);
    EXPECT_FALSE(read[1].automatic);
}

TEST(NoteTables, NoNotesAreNoBytes) {
    EXPECT_TRUE(encodeNotes({}, 20).references.empty());
    EXPECT_TRUE(encodeNotes({}, 20).texts.empty());
    EXPECT_TRUE(decodeNotes({}, {}, 0).empty());
}

TEST(NoteTables, TextsOutsideOfThePartAndThoseThatAreMissingAreCounted) {
    const Bytes references = hex("01000000 02000000 03000000 09000000 0100 0100 0100");
    const Bytes texts = hex("00000000 04000000 FFFFFF7F 05000000 06000000");
    int damage = 0;
    const auto read = decodeNotes(references, texts, 6, &damage);
    ASSERT_EQ(read.size(), 2U);
    EXPECT_EQ(read[1].text.start, 4U);
    EXPECT_EQ(read[1].text.length, 2U);
    EXPECT_EQ(damage, 1);
}

TEST(NoteTables, OfTwoAtOnePlaceTheFirstStaysAndTheOtherIsCounted) {
    const NoteTables tables = encodeNotes(
        std::vector<NotePlace>{{3, true, {0, 5}}, {3, false, {5, 2}}, {8, true, {7, 1}}}, 20);
    int damage = 0;
    const auto read = decodeNotes(tables.references, tables.texts, 9, &damage);
    ASSERT_EQ(read.size(), 2U);
    EXPECT_TRUE(read[0].automatic);
    EXPECT_EQ(read[1].at, 8U);
    EXPECT_EQ(damage, 1);
}

TEST(CommentTables, OfTwoAtOnePlaceTheFirstStaysAndTheOtherIsCounted) {
    const CommentTables tables = encodeComments(
        std::vector<CommentPlace>{{3, {0, 5}, u"A", u"a", 0, {}}, {3, {5, 2}, u"B", u"b", 0, {}}},
        20);
    SideDamage damage;
    const auto read = decodeComments(
        {tables.references, tables.texts, tables.owners, tables.dates, {}, {}, {}}, 20, 9, &damage);
    ASSERT_EQ(read.size(), 1U);
    EXPECT_EQ(read[0].author, u"A");
    EXPECT_EQ(damage.texts, 1);
}

TEST(CommentTables, RangesBeyondThoseThatAFileHoldsLeaveTheirCommentItsPlace) {
    constexpr std::size_t most = 0x3FFB;
    std::vector<CommentPlace> comments;
    for (Cp i = 0; i <= most; ++i) {
        comments.push_back({i, {i, 1}, u"A", u"a", 0, CommentRange{i, i + 1}});
    }
    const CommentTables tables = encodeComments(comments, 20'000);
    const auto read = decodeComments({tables.references, tables.texts, tables.owners, tables.dates,
                                      tables.rangeTags, tables.rangeStarts, tables.rangeEnds},
                                     20'000, 20'000);
    ASSERT_EQ(read.size(), most + 1);
    EXPECT_TRUE(read[most - 1].range);
    EXPECT_FALSE(read[most].range);
}

TEST(CommentTables, StartsAndEndsOfRangesAscendThoughOneLiesInAnother) {
    const std::vector<CommentPlace> comments{{9, {0, 1}, u"A", u"a", 0, CommentRange{1, 9}},
                                             {9, {1, 1}, u"A", u"a", 0, CommentRange{2, 4}},
                                             {9, {2, 1}, u"A", u"a", 0, CommentRange{0, 6}}};
    const CommentTables tables = encodeComments(comments, 12);
    EXPECT_EQ(tables.rangeStarts, hex("00000000 01000000 02000000 0C000000"
                                      "01000000 02000000 00000000")); // with the places of the ends
    EXPECT_EQ(tables.rangeEnds, hex("04000000 06000000 09000000 0C000000"));
}

TEST(CommentTables, AuthorsDatesAndRangesComeBack) {
    const std::vector<CommentPlace> comments{
        {4, {0, 3}, u"王工", u"W", 0x12345678, CommentRange{1, 4}},
        {6, {3, 2}, u"Li", u"more than nine", 0, std::nullopt},
        {9, {5, 2}, u"王工", u"W", 7, CommentRange{0, 9}}};
    const CommentTables tables = encodeComments(comments, 12);
    SideDamage damage;
    const auto read = decodeComments({tables.references, tables.texts, tables.owners, tables.dates,
                                      tables.rangeTags, tables.rangeStarts, tables.rangeEnds},
                                     10, 8, &damage);
    ASSERT_EQ(read.size(), 3U);
    EXPECT_EQ(damage.texts + damage.ranges, 0);
    EXPECT_EQ(read[0].at, 4U);
    EXPECT_EQ(read[0].author, u"王工");
    EXPECT_EQ(read[0].initials, u"W");
    EXPECT_EQ(read[0].date, 0x12345678U);
    ASSERT_TRUE(read[0].range);
    EXPECT_EQ(read[0].range->start, 1U);
    EXPECT_EQ(read[0].range->end, 4U);
    EXPECT_EQ(read[1].author, u"Li");
    EXPECT_EQ(read[1].initials, u"more than");
    EXPECT_FALSE(read[1].range);
    EXPECT_EQ(read[2].author, u"王工");
    ASSERT_TRUE(read[2].range);
    EXPECT_EQ(read[2].range->start, 0U);
    EXPECT_EQ(read[2].range->end, 9U);
    EXPECT_EQ(tables.owners.size(), 2U * 2 + 2 * 4);
}

std::vector<CommentPlace> throughFile(const std::vector<CommentPlace>& comments) {
    const CommentTables tables = encodeComments(comments, 12);
    return decodeComments({tables.references, tables.texts, tables.owners, tables.dates,
                           tables.rangeTags, tables.rangeStarts, tables.rangeEnds},
                          11, 20);
}

CommentPlace answer(Cp at, std::uint32_t depth, bool ink = false) {
    return {at, {at, 1}, u"a", u"b", 7, std::nullopt, depth, ink};
}

TEST(CommentTables, AnswersAndCommentsByHandComeBack) {
    const std::vector<CommentPlace> comments{answer(1, 0), answer(2, 1), answer(3, 2, true),
                                             answer(4, 1), answer(5, 0)};
    const auto read = throughFile(comments);
    ASSERT_EQ(read.size(), comments.size());
    for (std::size_t i = 0; i < read.size(); ++i) {
        EXPECT_EQ(read[i].depth, comments[i].depth) << i;
        EXPECT_EQ(read[i].ink, comments[i].ink) << i;
    }
    EXPECT_EQ(encodeComments(comments, 12).dates, hex("07000000 0000 00000000 00000000 00000000"
                                                      "07000000 0000 01000000 FFFFFFFF 00000000"
                                                      "07000000 0000 02000000 FFFFFFFF 02000000"
                                                      "07000000 0000 01000000 FDFFFFFF 00000000"
                                                      "07000000 0000 00000000 00000000 00000000"));
}

TEST(CommentTables, AnAnswerIsNoMoreThanOneDeeperThanTheCommentBeforeIt) {
    const auto read = throughFile({answer(1, 3), answer(2, 0xFFFFFFFF), answer(3, 1)});
    ASSERT_EQ(read.size(), 3U);
    EXPECT_EQ(read[0].depth, 0U);
    EXPECT_EQ(read[1].depth, 1U);
    EXPECT_EQ(read[2].depth, 1U);
    Bytes torn = encodeComments(std::vector{answer(1, 0), answer(2, 1)}, 12).dates;
    const CommentTables tables = encodeComments(std::vector{answer(1, 0), answer(2, 1)}, 12);
    torn[6] = 9; // the first one
    const auto sound =
        decodeComments({tables.references, tables.texts, tables.owners, torn, {}, {}, {}}, 11, 20);
    ASSERT_EQ(sound.size(), 2U);
    EXPECT_EQ(sound[0].depth, 0U);
}

TEST(CommentTables, ARangeMayReachToTheEndOfTheTextAndNotBeyond) {
    for (const Cp end : {10U, 11U}) {
        const std::vector<CommentPlace> comments{{4, {0, 3}, u"a", u"b", 1, CommentRange{2, end}}};
        const CommentTables tables = encodeComments(comments, 12);
        const auto read =
            decodeComments({tables.references, tables.texts, tables.owners, tables.dates,
                            tables.rangeTags, tables.rangeStarts, tables.rangeEnds},
                           10, 4);
        ASSERT_EQ(read.size(), 1U);
        EXPECT_EQ(read[0].range.has_value(), end == 10) << end;
    }
}

TEST(CommentTables, CommentsWithoutTheRangeThatTheyNameAreCountedAndThoseOnAPlaceAreNot) {
    const std::vector<CommentPlace> comments{{1, {0, 1}, u"a", u"b", 1, CommentRange{0, 1}},
                                             {3, {1, 1}, u"a", u"b", 1, CommentRange{2, 3}},
                                             {5, {2, 1}, u"a", u"b", 1, CommentRange{4, 5}},
                                             {7, {3, 1}, u"a", u"b", 1, std::nullopt},
                                             {9, {4, 1}, u"a", u"b", 1, CommentRange{9, 9}}};
    const CommentTables tables = encodeComments(comments, 12);
    const auto ranges = [&](const Bytes& tags, const Bytes& starts, const Bytes& ends) {
        SideDamage damage;
        decodeComments(
            {tables.references, tables.texts, tables.owners, tables.dates, tags, starts, ends}, 10,
            6, &damage);
        EXPECT_EQ(damage.texts, 0);
        return damage.ranges;
    };
    EXPECT_EQ(ranges(tables.rangeTags, tables.rangeStarts, tables.rangeEnds), 0);
    EXPECT_EQ(ranges({}, tables.rangeStarts, tables.rangeEnds), 4);
    Bytes falling = tables.rangeStarts;
    falling[4] = 8; // the second one begins behind its end
    EXPECT_EQ(ranges(tables.rangeTags, falling, tables.rangeEnds), 1);
}

TEST(CommentTables, ARangeWithoutACharacterIsNone) {
    const std::vector<CommentPlace> comments{{4, {0, 3}, u"a", u"b", 1, CommentRange{2, 4}}};
    const CommentTables tables = encodeComments(comments, 12);
    const auto hasRange = [&](std::uint8_t start) {
        Bytes starts = tables.rangeStarts;
        starts[0] = start;
        const auto read = decodeComments({tables.references, tables.texts, tables.owners,
                                          tables.dates, tables.rangeTags, starts, tables.rangeEnds},
                                         10, 4);
        return read.at(0).range.has_value();
    };
    EXPECT_TRUE(hasRange(3));
    EXPECT_FALSE(hasRange(4));
    EXPECT_FALSE(hasRange(5));
}

TEST(CommentTables, ARangeWithoutATagOrAnEndLeavesTheOthers) {
    const std::vector<CommentPlace> comments{{1, {0, 1}, u"a", u"b", 1, CommentRange{0, 1}},
                                             {3, {1, 1}, u"a", u"b", 1, CommentRange{2, 3}}};
    const CommentTables tables = encodeComments(comments, 12);
    const auto rangesWith = [&](const Bytes& tags, const Bytes& starts) {
        const auto read = decodeComments({tables.references, tables.texts, tables.owners,
                                          tables.dates, tags, starts, tables.rangeEnds},
                                         99, 4);
        return std::pair(read.at(0).range.has_value(), read.at(1).range.has_value());
    };
    EXPECT_EQ(rangesWith(tables.rangeTags, tables.rangeStarts), std::pair(true, true));
    Bytes starts = tables.rangeStarts;
    starts.at(12) = 2; // the end of the first one, of two
    EXPECT_EQ(rangesWith(tables.rangeTags, starts), std::pair(false, true));
    Bytes shorter = tables.rangeTags;
    shorter.at(4) = 9; // bytes that each entry has behind its text
    shorter.erase(shorter.begin() + 17);
    shorter.pop_back();
    EXPECT_EQ(rangesWith(shorter, tables.rangeStarts), std::pair(false, false));
}

TEST(CommentTables, EveryCutIsReadWithoutAFault) {
    const std::vector<CommentPlace> comments{{4, {0, 3}, u"a", u"b", 1, CommentRange{1, 4}}};
    const CommentTables tables = encodeComments(comments, 12);
    for (std::size_t size = 0; size < 64; ++size) {
        const auto cut = [&](const Bytes& bytes) {
            return ByteView(bytes).first(std::min(size, bytes.size()));
        };
        const auto read = decodeComments(
            {cut(tables.references), cut(tables.texts), cut(tables.owners), cut(tables.dates),
             cut(tables.rangeTags), cut(tables.rangeStarts), cut(tables.rangeEnds)},
            10, 4);
        EXPECT_LE(read.size(), 1U);
    }
}

} // namespace
} // namespace qvnd::word
