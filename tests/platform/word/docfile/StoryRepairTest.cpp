#include "platform/word/docfile/text/StoryRepair.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace qvnd::word {
namespace {

constexpr PropertyListId own{1};

Story storyOf(const std::u16string& text) {
    Story story;
    story.text = text;
    if (!text.empty()) {
        story.characters = {{story.size(), own}};
        story.paragraphs = {{story.size(), 3, own}};
    }
    return story;
}

TEST(StoryRepair, ATextEndsInAParagraphMark) {
    Story sound = storyOf(u"a\r");
    EXPECT_FALSE(closeWithParagraphMark(sound));
    EXPECT_EQ(sound, storyOf(u"a\r"));

    Story open = storyOf(u"ab");
    EXPECT_TRUE(closeWithParagraphMark(open));
    EXPECT_EQ(open.text, u"ab\r");
    EXPECT_EQ(open.characters, (std::vector<CharacterRun>{{2, own}, {1, PropertyListId::empty}}));
    EXPECT_EQ(open.paragraphs, (std::vector<ParagraphRun>{{3, 3, own}}));
}

TEST(StoryRepair, BehindACellABreakOrNothingTheLastMarkIsAParagraphOfItsOwn) {
    for (const char16_t last : {u'\a', u'\f'}) {
        Story story = storyOf(std::u16string(u"a") + last);
        EXPECT_TRUE(closeWithParagraphMark(story));
        EXPECT_EQ(story.paragraphs,
                  (std::vector<ParagraphRun>{{2, 3, own}, {1, 0, PropertyListId::empty}}));
    }
    Story empty;
    EXPECT_TRUE(closeWithParagraphMark(empty));
    EXPECT_EQ(empty.text, u"\r");
    EXPECT_EQ(empty.characters, (std::vector<CharacterRun>{{1, PropertyListId::empty}}));
    EXPECT_EQ(empty.paragraphs, (std::vector<ParagraphRun>{{1, 0, PropertyListId::empty}}));
}

TEST(StoryRepair, PropertiesOfSingleCharactersChangeAndTheOthersStay) {
    const auto changed = [](const std::vector<Cp>& positions) {
        Story story = storyOf(u"abcd\r");
        story.characters = {{2, own}, {3, PropertyListId{2}}};
        changeProperties(story, positions, [](Cp at, PropertyListId before) {
            return PropertyListId{static_cast<std::uint32_t>(before) * 10 + at};
        });
        return story.characters;
    };
    using Runs = std::vector<CharacterRun>;
    EXPECT_EQ(changed({}), (Runs{{2, own}, {3, PropertyListId{2}}}));
    EXPECT_EQ(changed({0}), (Runs{{1, PropertyListId{10}}, {1, own}, {3, PropertyListId{2}}}));
    EXPECT_EQ(changed({1}), (Runs{{1, own}, {1, PropertyListId{11}}, {3, PropertyListId{2}}}));
    EXPECT_EQ(changed({2}), (Runs{{2, own}, {1, PropertyListId{22}}, {2, PropertyListId{2}}}));
    EXPECT_EQ(
        changed({1, 4}),
        (Runs{{1, own}, {1, PropertyListId{11}}, {2, PropertyListId{2}}, {1, PropertyListId{24}}}));
}

TEST(StoryRepair, RunsOfOneLookAreOne) {
    std::vector<CharacterRun> runs;
    appendRun(runs, {0, own});
    EXPECT_TRUE(runs.empty());
    appendRun(runs, {2, own});
    appendRun(runs, {3, own});
    appendRun(runs, {0, PropertyListId{2}});
    appendRun(runs, {1, PropertyListId{2}});
    EXPECT_EQ(runs, (std::vector<CharacterRun>{{5, own}, {1, PropertyListId{2}}}));
}

} // namespace
} // namespace qvnd::word
