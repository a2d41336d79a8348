#include "platform/word/engine/StoryEdits.h"

#include <gtest/gtest.h>

using namespace qvnd::word;

namespace {

Story story() {
    Story result;
    result.text = u"ab\u0013cd\u0015ef\r";
    result.characters = {{2, PropertyListId{1}}, {4, PropertyListId{2}}, {3, PropertyListId{3}}};
    result.paragraphs = {{9, 0, PropertyListId::empty}};
    result.fields = {{2, 0x13, 3}, {5, 0x15, 0}};
    return result;
}

} // namespace

TEST(StoryEdits, WithoutEditsNothingMoves) {
    Story text = story();
    StoryEdits edits;
    edits.applyTo(text);
    EXPECT_EQ(text.text, story().text);
    EXPECT_EQ(edits.moved(7), 7U);
}

TEST(StoryEdits, RemovedCharactersTakeTheirRunsAndFieldMarksAlong) {
    Story text = story();
    StoryEdits edits;
    edits.remove(2, 4);
    edits.applyTo(text);
    EXPECT_EQ(text.text, u"abef\r");
    const std::vector<CharacterRun> runs{{2, PropertyListId{1}}, {3, PropertyListId{3}}};
    EXPECT_EQ(text.characters, runs);
    EXPECT_TRUE(text.fields.empty());
    EXPECT_EQ(text.paragraphs.at(0).length, 5U);
}

TEST(StoryEdits, FieldMarksBehindAnEditMoveAlong) {
    Story text = story();
    StoryEdits edits;
    edits.replace(3, 2, u"longer");
    edits.applyTo(text);
    EXPECT_EQ(text.text, u"ab\u0013longer\u0015ef\r");
    const std::vector<FieldMark> marks{{2, 0x13, 3}, {9, 0x15, 0}};
    EXPECT_EQ(text.fields, marks);
    EXPECT_EQ(text.characters.at(1).length, 8U);
}

TEST(StoryEdits, AnchorsMoveWithTheirCharactersAndGoWithThem) {
    Story text = story();
    text.anchors = {
        {1, AnchorKind::footnote, 4}, {3, AnchorKind::comment, 5}, {7, AnchorKind::endnote, 6}};
    StoryEdits edits;
    edits.replace(3, 2, u"longer");
    edits.applyTo(text);
    const std::vector<Anchor> anchors{{1, AnchorKind::footnote, 4}, {11, AnchorKind::endnote, 6}};
    EXPECT_EQ(text.anchors, anchors);
}

TEST(StoryEdits, PositionsAreFoundAgain) {
    Story text = story();
    StoryEdits edits;
    edits.remove(0);
    edits.replace(3, 2, u"xyz");
    edits.applyTo(text);
    EXPECT_EQ(edits.moved(0), 0U);
    EXPECT_EQ(edits.moved(1), 0U);
    EXPECT_EQ(edits.moved(3), 2U);
    EXPECT_EQ(edits.moved(4), 5U);
    EXPECT_EQ(edits.moved(9), 9U);
}

TEST(StoryEdits, AnEditWithinARemovedPartCountsNothing) {
    Story text = story();
    StoryEdits edits;
    edits.replace(3, 1, u"xyz");
    edits.remove(2, 4);
    edits.applyTo(text);
    EXPECT_EQ(text.text, u"abef\r");
    EXPECT_EQ(edits.moved(6), 2U);
}

TEST(StoryEdits, OfEditsOverEachOtherTheSecondAddsNoText) {
    Story text = story();
    StoryEdits edits;
    edits.replace(0, 4, u"12345");
    edits.replace(3, 3, u"xyz");
    edits.applyTo(text);
    EXPECT_EQ(text.text, u"12345ef\r");
    EXPECT_EQ(edits.moved(6), 5U);
    EXPECT_EQ(edits.moved(9), 8U);
}

TEST(StoryEdits, EditsBesideEachOtherKeepTheirTexts) {
    Story text = story();
    StoryEdits edits;
    edits.replace(1, 2, u"12");
    edits.replace(3, 1, u"x");
    edits.applyTo(text);
    EXPECT_EQ(text.text, u"a12xd\u0015ef\r");
    EXPECT_EQ(text.fields, (std::vector<FieldMark>{{5, 0x15, 0}}));
}

TEST(StoryEdits, WhatIsRemovedNextToEachOtherIsOne) {
    Story text = story();
    StoryEdits edits;
    edits.remove(0);
    edits.remove(1);
    edits.remove(6);
    edits.applyTo(text);
    EXPECT_EQ(text.text, u"\u0013cd\u0015f\r");
    EXPECT_EQ(text.characters,
              (std::vector<CharacterRun>{{4, PropertyListId{2}}, {2, PropertyListId{3}}}));
    EXPECT_EQ(edits.moved(1), 0U);
    EXPECT_EQ(edits.moved(2), 0U);
    EXPECT_EQ(edits.moved(3), 1U);
}

TEST(StoryEdits, BookmarksMoveWithTheirText) {
    Story text = story();
    text.bookmarks = {{u"a", 0, 1}, {u"b", 3, 5}, {u"c", 5, 8}};
    StoryEdits edits;
    edits.replace(3, 2, u"longer");
    edits.applyTo(text);
    EXPECT_EQ(text.bookmarks, (std::vector<Bookmark>{{u"a", 0, 1}, {u"b", 3, 9}, {u"c", 9, 12}}));
}
