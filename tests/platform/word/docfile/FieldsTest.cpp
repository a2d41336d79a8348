#include "platform/word/docfile/text/Fields.h"

#include "support/ByteText.h"

#include <gtest/gtest.h>

namespace qvnd::word {
namespace {

using test::hex;

constexpr std::uint8_t page = 0x21;
const std::u16string simple = u"a\x13 PAGE \x14"
                              u"1\x15"
                              u"b";

TEST(Fields, EncodeDecodeEncodeGivesEqualBytes) {
    const std::vector<FieldMark> marks{{1, 0x13, page}, {8, 0x14, 0xFF}, {10, 0x15, 0x80}};
    const Bytes bytes = encodeFields(marks, 12);
    EXPECT_EQ(bytes, hex("01000000 08000000 0A000000 0C000000 1321 14FF 1580"));
    EXPECT_EQ(decodeFields(bytes), marks);
    EXPECT_EQ(encodeFields(decodeFields(bytes), 12), bytes);
    EXPECT_TRUE(encodeFields({}, 12).empty());
}

TEST(Fields, OnlyTheLowFiveBitsAreTheCharacter) {
    const auto marks = decodeFields(hex("00000000 05000000 F321"));
    ASSERT_EQ(marks.size(), 1U);
    EXPECT_EQ(marks[0].character, 0x13);
}

TEST(Fields, MarksOfAFragmentsPartMoveWithIt) {
    const std::vector<FieldMark> fragment{{1, 0x13, page}, {8, 0x14, 0}, {10, 0x15, 0}};
    std::vector<FieldMark> marks;
    appendMarks(marks, fragment, 5, 5, 100);
    EXPECT_EQ(marks, (std::vector<FieldMark>{{103, 0x14, 0}}));
    appendMarks(marks, fragment, 0, 11, 200);
    ASSERT_EQ(marks.size(), 4U);
    EXPECT_EQ(marks[1].at, 201U);
    EXPECT_EQ(marks[3].at, 210U);
}

TEST(Fields, SoundFieldsKeepWhatTheFileSaysOfThem) {
    const std::vector<FieldMark> known{{1, 0x13, page}, {8, 0x14, 0xFF}, {10, 0x15, 0x84}};
    const MatchedFields matched = matchFields(known, simple);
    EXPECT_EQ(matched.marks, known);
    EXPECT_TRUE(matched.strays.empty());
    EXPECT_EQ(matched.damage, 0);
}

TEST(Fields, AFieldThatTheFileDoesNotNameIsOfTheUnknownKind) {
    const MatchedFields matched = matchFields({}, simple);
    ASSERT_EQ(matched.marks.size(), 3U);
    EXPECT_EQ(matched.marks[0].data, 1);
    EXPECT_EQ(matched.damage, 3);
}

// Entries of an index or of contents, and other fields without a result, are not listed.
TEST(Fields, AFieldWithoutAResultNeedsNoEntries) {
    const std::u16string text = u"\x13 XE \"a\" \x15 \x13 TC \x13 \x14 \x15 \x15";
    const std::vector<FieldMark> inner{{16, 0x13, 0x0F}, {18, 0x14, 0xFF}, {20, 0x15, 0x80}};
    const MatchedFields matched = matchFields(inner, text);
    EXPECT_EQ(matched.marks.size(), 7U);
    EXPECT_EQ(matched.damage, 0);
    EXPECT_EQ(matchFields(std::vector<FieldMark>{{0, 0x13, 4}}, u"\x13 XE \x15").damage, 1)
        << "its end is missing";
    EXPECT_EQ(matchFields({}, u"\x13 XE ").damage, 1);
}

TEST(Fields, EntriesWithoutTheirCharacterAreDropped) {
    const std::vector<FieldMark> known{{0, 0x13, page}, {1, 0x15, 0}, {500, 0x15, 0}};
    const MatchedFields matched = matchFields(known, u"ab");
    EXPECT_TRUE(matched.marks.empty());
    EXPECT_EQ(matched.damage, 3);
}

TEST(Fields, AnEntryForAnotherCharacterGivesWayToTheText) {
    const std::vector<FieldMark> known{{1, 0x15, page}, {8, 0x14, 0xFF}, {10, 0x15, 0x80}};
    const MatchedFields matched = matchFields(known, simple);
    ASSERT_EQ(matched.marks.size(), 3U);
    EXPECT_EQ(matched.marks[0], (FieldMark{1, 0x13, 1}));
    EXPECT_EQ(matched.damage, 2); // a character without its entry, an entry without its character
}

TEST(Fields, InstructionsEndAtTheSeparatorOrTheEndAndNestedOnesWithThem) {
    const auto seen = [](std::u16string_view text) {
        FieldInstructions instructions;
        std::u16string rest;
        for (const char16_t c : text) {
            if (isFieldCharacter(c)) {
                instructions.take(c);
            } else if (!instructions.isInside()) {
                rest += c;
            }
        }
        return rest;
    };
    EXPECT_EQ(seen(u"a\x13 PAGE \x14"
                   u"7\x15z"),
              u"a7z");
    EXPECT_EQ(seen(u"a\x13 IF \x13 X \x14"
                   u"1\x15 \x15z"),
              u"az");
    EXPECT_EQ(seen(u"a\x13 ASK \x15z"), u"az");
    EXPECT_EQ(seen(u"a\x14z\x15"), u"az");
}

TEST(Fields, CharactersWithoutCounterpartAreStrays) {
    const MatchedFields matched = matchFields({}, u"\x15\x14\x13\x13\x14\x14\x15");
    EXPECT_EQ(matched.strays, (std::vector<Cp>{0, 1, 2, 5}));
    ASSERT_EQ(matched.marks.size(), 3U);
    EXPECT_EQ(matched.marks[0].at, 3U);
    EXPECT_EQ(matched.marks[2].at, 6U);
}

TEST(Fields, TheEndTellsWhetherThereIsASeparator) {
    const MatchedFields with = matchFields({}, u"\x13\x14\x15");
    EXPECT_EQ(with.marks[2].data & 0x80, 0x80);
    const std::vector<FieldMark> wrong{{0, 0x13, page}, {1, 0x15, 0x90}};
    const MatchedFields without = matchFields(wrong, u"\x13\x15");
    EXPECT_EQ(without.marks[1].data, 0x10);
}

TEST(Fields, NestedFieldsBelongTogetherFromTheInside) {
    const MatchedFields matched = matchFields({}, u"\x13\x13\x15\x14\x13\x14\x15\x15");
    EXPECT_EQ(matched.marks.size(), 8U);
    EXPECT_TRUE(matched.strays.empty());
}

} // namespace
} // namespace qvnd::word
