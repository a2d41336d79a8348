#include "platform/word/docfile/document/StoryParts.h"

#include <gtest/gtest.h>

namespace qvnd::word {
namespace {

std::vector<Bookmark> bookmarksOfPart(const Bookmark& bookmark, Cp begin, Cp length) {
    Story story;
    story.text = u"abcdefgh\r";
    story.characters = {{9, PropertyListId::empty}};
    story.paragraphs = {{9, 0, PropertyListId::empty}};
    story.bookmarks = {bookmark};
    return partOf(story, begin, length).bookmarks;
}

TEST(PartOfAStory, HasWhatItHoldsOfABookmark) {
    const auto part = [](Cp start, Cp end) { return bookmarksOfPart({u"b", start, end}, 2, 3); };
    EXPECT_EQ(part(0, 9), (std::vector<Bookmark>{{u"b", 0, 3}}));
    EXPECT_EQ(part(3, 4), (std::vector<Bookmark>{{u"b", 1, 2}}));
    EXPECT_EQ(part(0, 3), (std::vector<Bookmark>{{u"b", 0, 1}}));
    EXPECT_EQ(part(4, 9), (std::vector<Bookmark>{{u"b", 2, 3}}));
    EXPECT_TRUE(part(0, 2).empty()) << "ends where the part begins";
    EXPECT_TRUE(part(5, 9).empty()) << "begins where the part ends";
}

TEST(PartOfAStory, HasAPointThatStandsInItOrAtItsEnds) {
    const auto part = [](Cp at) { return bookmarksOfPart({u"p", at, at}, 2, 3); };
    EXPECT_TRUE(part(1).empty());
    EXPECT_EQ(part(2), (std::vector<Bookmark>{{u"p", 0, 0}}));
    EXPECT_EQ(part(4), (std::vector<Bookmark>{{u"p", 2, 2}}));
    EXPECT_EQ(part(5), (std::vector<Bookmark>{{u"p", 3, 3}}));
    EXPECT_TRUE(part(6).empty());
}

TEST(PartOfAStory, GoesOnWithoutAnEndWhereItsParagraphIsCut) {
    Story story;
    story.text = u"ab\rcd\r";
    story.characters = {{1, PropertyListId{1}}, {5, PropertyListId{2}}};
    story.paragraphs = {{3, 4, PropertyListId{3}}, {3, 5, PropertyListId{6}}};
    const Story part = partOf(story, 1, 4);
    EXPECT_EQ(part.text, u"b\rcd");
    EXPECT_EQ(part.characters, (std::vector<CharacterRun>{{4, PropertyListId{2}}}));
    EXPECT_EQ(part.paragraphs,
              (std::vector<ParagraphRun>{{2, 4, PropertyListId{3}}, {2, 5, PropertyListId{6}}}));
    Story whole = partOf(story, 0, 1);
    appendStory(whole, part);
    appendStory(whole, partOf(story, 5, 1));
    EXPECT_EQ(whole.text, story.text);
    EXPECT_EQ(whole.paragraphs, story.paragraphs);
}

} // namespace
} // namespace qvnd::word
