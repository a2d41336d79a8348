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
