#include "platform/word/engine/CommonLooks.h"

#include "platform/word/CountedMemory.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

namespace qvnd::word {
namespace {

class CommonLooks : public testing::Test {
protected:
    PropertyListId size(unsigned halfPoints) {
        return lists.intern(withSprm16({}, sprm::CHps, halfPoints));
    }
    // A paragraph of such runs; the last one has its mark.
    static void add(Story& story, const std::vector<CharacterRun>& runs) {
        Cp length = 0;
        for (const CharacterRun& run : runs) {
            length += run.length;
            story.characters.push_back(run);
        }
        story.text += std::u16string(length - 1, u'x') + u"\r";
        story.paragraphs.push_back({length});
    }

    PropertyLists lists;
};

TEST_F(CommonLooks, WhatMostCharactersHaveGoesFromAllThatHaveIt) {
    Story story;
    const auto large = lists.intern(withSprm8(withSprm16({}, sprm::CHps, 40), sprm::CFBold, 1));
    add(story, {{3, size(40)}, {2, large}, {1, size(40)}});
    EXPECT_TRUE(dropCommonLooks(story, lists));
    const auto boldOnly = lists.intern(withSprm8({}, sprm::CFBold, 1));
    EXPECT_EQ(story.characters,
              (std::vector<CharacterRun>{{3, PropertyListId::empty}, {2, boldOnly}, {1}}));
}

TEST_F(CommonLooks, OtherValuesOfTheSamePropertyStay) {
    Story story;
    add(story, {{3, size(40)}, {2, size(24)}, {1}});
    EXPECT_TRUE(dropCommonLooks(story, lists));
    EXPECT_EQ(story.characters,
              (std::vector<CharacterRun>{{3, PropertyListId::empty}, {2, size(24)}, {1}}));
}

TEST_F(CommonLooks, ValuesThatNoMajorityHasAllStay) {
    Story story;
    add(story, {{2, size(40)}, {2, size(24)}, {1}});
    const Story before = story;
    EXPECT_FALSE(dropCommonLooks(story, lists));
    EXPECT_EQ(story, before);
}

TEST_F(CommonLooks, EachParagraphCountsForItself) {
    Story story;
    const std::vector<CharacterRun> most{{4, size(40)}, {1}};
    const std::vector<CharacterRun> few{{1, size(40)}, {4}};
    add(story, most);
    add(story, few);
    add(story, {{1, size(40)}}); // a mark alone
    EXPECT_TRUE(dropCommonLooks(story, lists));
    EXPECT_EQ(story.characters, (std::vector<CharacterRun>{{5}, {1, size(40)}, {5}}));
}

TEST_F(CommonLooks, TwiceAsManyParagraphsAreTwiceTheWork) {
    const auto work = [&](std::size_t paragraphs) {
        Story story;
        for (std::size_t i = 0; i < paragraphs; ++i) {
            add(story, {{4, size(40)}, {1, size(24)}});
        }
        return test::memoryUseOf([&] { dropCommonLooks(story, lists); }).allocations;
    };
    EXPECT_LE(work(400), 2 * work(200) + 10);
}

} // namespace
} // namespace qvnd::word
