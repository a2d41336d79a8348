#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/engine/EngineFixture.h"
#include "platform/word/engine/SectionProperties.h"

// The look of what is typed over a selection.
namespace qvnd::test {
namespace {

using namespace qvnd::word;

class TypingLook : public EngineTest {
protected:
    // Three characters, the second of them bold.
    TypingLook() {
        type(u"abc");
        select(1, 2);
        selection().Font().setBold(true);
    }
    bool boldAt(Cp at) { return sprmValue(lookAt(at), sprm::CFBold, 0) == 1; }
};

TEST_F(TypingLook, IsThatOfTheFirstCharacterThatTheSelectionWasMovedOver) {
    select(1, 1);
    selection().MoveRightExtending();
    type(u"x");
    EXPECT_EQ(text(), u"axc\r");
    EXPECT_TRUE(boldAt(1));
}

TEST_F(TypingLook, FollowsTheSelectionsStartAsItMovesBack) {
    select(3, 3);
    selection().MoveLeftExtending();
    selection().MoveLeftExtending();
    type(u"x");
    EXPECT_EQ(text(), u"ax\r");
    EXPECT_TRUE(boldAt(1));
    select(2, 2);
    selection().MoveLeftExtending();
    selection().MoveLeftExtending();
    type(u"y");
    EXPECT_EQ(text(), u"y\r");
    EXPECT_FALSE(boldAt(0));
}

TEST_F(TypingLook, StaysThatOfTheTextThatItReplaces) {
    select(1, 2);
    type(u"xy");
    EXPECT_EQ(text(), u"axyc\r");
    EXPECT_TRUE(boldAt(1) && boldAt(2));
    EXPECT_FALSE(boldAt(3));
}

} // namespace
} // namespace qvnd::test
