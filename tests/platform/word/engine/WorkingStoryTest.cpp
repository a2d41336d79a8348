#include "platform/word/engine/WorkingStory.h"

#include "platform/word/engine/StoryBuilder.h"

#include <gtest/gtest.h>

namespace qvnd::test {

namespace {

using namespace qvnd::word;

constexpr auto bold = static_cast<PropertyListId>(1);
constexpr auto big = static_cast<PropertyListId>(2);
constexpr auto none = PropertyListId::empty;

std::shared_ptr<const Story> paragraphs(std::initializer_list<std::u16string_view> texts) {
    auto story = std::make_shared<Story>();
    StoryBuilder builder(*story);
    StyleIndex style = 0;
    for (const auto text : texts) {
        builder.text(text, none);
        builder.mark(u'\r', {++style, none}, none);
    }
    return story;
}

class WorkingStoryTest : public testing::Test {
protected:
    WorkingStoryTest() { story.insertFragment(0, paragraphs({u"ab", u"cd", u""})); }
    std::u16string text() const { return story.text(0, story.size()); }

    std::vector<StorySlice> slices;
    WorkingStory story{slices};
};

} // namespace

TEST(SlicedText, OfAnEmptyStoryHasNoSlice) {
    EXPECT_TRUE(slicesOf(Story{}).empty());
    EXPECT_TRUE(slicesOf(std::make_shared<const Story>()).empty());
}

TEST_F(WorkingStoryTest, TypingOnGoesIntoOneSlice) {
    story.insertText(6, u"x", none);
    story.insertText(7, u"y", bold);
    story.insertMark(8, u'\r', {5, none}, none);
    EXPECT_EQ(text(), u"ab\rcd\rxy\r\r");
    EXPECT_EQ(slices.size(), 3U);
}

TEST_F(WorkingStoryTest, InsertingCutsASliceAndCopiesNothing) {
    const auto fragment = slices[0].fragment;
    story.insertText(1, u"-", bold);
    EXPECT_EQ(text(), u"a-b\rcd\r\r");
    ASSERT_EQ(slices.size(), 3U);
    EXPECT_EQ(slices[0].fragment, fragment);
    EXPECT_EQ(slices[2].fragment, fragment);
    EXPECT_EQ(story.characterProperties(1), bold);
}

TEST_F(WorkingStoryTest, AnchorsStayWithTheirCharactersWhereverASliceIsCut) {
    Story noted = *paragraphs({u"abc"});
    noted.anchors = {{0, AnchorKind::footnote, 7}, {2, AnchorKind::endnote, 8}};
    story.insertFragment(0, std::make_shared<const Story>(std::move(noted)));
    story.insertText(1, u"--", bold);
    const std::vector<Anchor> both{{0, AnchorKind::footnote, 7}, {4, AnchorKind::endnote, 8}};
    EXPECT_EQ(joined(slices)->anchors, both);
    story.erase(0, 2);
    const std::vector<Anchor> one{{2, AnchorKind::endnote, 8}};
    EXPECT_EQ(joined(slices)->anchors, one);
}

TEST_F(WorkingStoryTest, SealedFragmentsDoNotGrowAnyMore) {
    story.insertText(6, u"x", none);
    const auto sealed = slices[1].fragment;
    story.seal();
    story.insertText(7, u"y", none);
    EXPECT_EQ(sealed->text, u"x");
    EXPECT_EQ(text(), u"ab\rcd\rxy\r");
}

TEST_F(WorkingStoryTest, ParagraphsAreFoundAcrossSlices) {
    story.insertText(4, u"---", none); // within "cd"
    EXPECT_EQ(story.paragraphStart(5), 3U);
    EXPECT_EQ(story.paragraphEnd(3), 9U);
    EXPECT_EQ(story.paragraphLook(5).style, 2);
    EXPECT_EQ(story.paragraphStart(9), 9U);
    EXPECT_EQ(story.paragraphEnd(9), 10U);
    EXPECT_EQ(story.paragraphStart(story.size()), story.size());
}

TEST_F(WorkingStoryTest, AMarkTypedWithinAParagraphEndsItsFirstPart) {
    story.insertMark(4, u'\r', {7, none}, none);
    EXPECT_EQ(text(), u"ab\rc\rd\r\r");
    EXPECT_EQ(story.paragraphLook(3).style, 7);
    EXPECT_EQ(story.paragraphLook(5).style, 2);
}

TEST_F(WorkingStoryTest, EachDistinctListIsChangedOnce) {
    story.insertText(0, u"x", bold);
    story.insertText(2, u"y", bold);
    int asked = 0;
    story.changeCharacters(0, story.size(), [&](PropertyListId) {
        ++asked;
        return big;
    });
    EXPECT_LE(asked, static_cast<int>(slices.size()));
    EXPECT_EQ(asked, 2);
    EXPECT_EQ(story.characterProperties(0), big);
    EXPECT_EQ(story.characterProperties(story.size() - 1), big);
}

TEST_F(WorkingStoryTest, ChangesKeepWithinTheirRange) {
    story.changeCharacters(1, 4, [](PropertyListId) { return bold; });
    EXPECT_EQ(story.characterProperties(0), none);
    EXPECT_EQ(story.characterProperties(1), bold);
    EXPECT_EQ(story.characterProperties(3), bold);
    EXPECT_EQ(story.characterProperties(4), none);
    EXPECT_EQ(text(), u"ab\rcd\r\r");
}

TEST_F(WorkingStoryTest, OnlyParagraphsWhoseMarkLiesInTheRangeChange) {
    story.changeParagraphs(0, 5, [](const ParagraphLook& look) {
        return ParagraphLook{static_cast<StyleIndex>(look.style + 10), look.properties};
    });
    EXPECT_EQ(story.paragraphLook(0).style, 11);
    EXPECT_EQ(story.paragraphLook(3).style, 2);
}

TEST_F(WorkingStoryTest, ErasingAMarkJoinsTwoParagraphsUnderTheSecondOnesLook) {
    story.erase(2, 3);
    EXPECT_EQ(text(), u"abcd\r\r");
    EXPECT_EQ(story.paragraphLook(0).style, 2);
    EXPECT_EQ(story.paragraphStart(4), 0U);
}

TEST_F(WorkingStoryTest, AnotherVersionOfAPartStandsInItsPlace) {
    story.replace(1, 4, paragraphs({u"x", u"yz"}), [](Cp at) { return at; });
    EXPECT_EQ(text(), u"ax\ryz\rd\r\r");
    EXPECT_EQ(story.size(), 9U);
    EXPECT_EQ(slices.size(), 3U);
}

TEST_F(WorkingStoryTest, FlattenedTextIsOneSoundFragment) {
    story.insertText(4, u"---", bold);
    story.erase(2, 3);
    const Story whole = *joined(slices);
    EXPECT_EQ(whole.text, u"abc---d\r\r");
    ASSERT_EQ(whole.paragraphs.size(), 2U);
    EXPECT_EQ(whole.paragraphs[0].length, 8U);
    EXPECT_EQ(whole.paragraphs[0].style, 2);
    Cp characters = 0;
    for (const CharacterRun& run : whole.characters) {
        characters += run.length;
    }
    EXPECT_EQ(characters, whole.size());
}

// A page field put in at 3, and where its marks stand once something else was put in.
class WorkingStoryFields : public WorkingStoryTest {
protected:
    WorkingStoryFields() {
        auto field = std::make_shared<Story>();
        StoryBuilder builder(*field);
        builder.fieldBegin(field::page, none);
        builder.text(u" PAGE ", none);
        builder.fieldEnd(0, none);
        story.insertFragment(3, field);
    }
    std::vector<Cp> placesBehindTextAt(Cp at) {
        story.insertText(at, u"xyz", none);
        std::vector<Cp> places;
        story.forEachFieldMark([&](Cp place, const FieldMark&) { places.push_back(place); });
        return places;
    }
};

TEST_F(WorkingStoryFields, MoveWithTheirText) {
    EXPECT_EQ(placesBehindTextAt(0), (std::vector<Cp>{6, 13}));
}

TEST_F(WorkingStoryFields, AreVisitedOnceRightBehindACut) {
    EXPECT_EQ(placesBehindTextAt(10), (std::vector<Cp>{3, 13}));
}

} // namespace qvnd::test
