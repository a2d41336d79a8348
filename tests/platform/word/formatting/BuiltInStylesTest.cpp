#include "platform/word/formatting/BuiltInStyles.h"
#include "platform/word/engine/BookmarkNames.h"

#include <gtest/gtest.h>

using namespace qvnd::word;

TEST(BuiltInStyles, EveryNumberNamesItsOwnPlaceInTheTable) {
    for (std::uint16_t number = 0; number <= 266; ++number) {
        ASSERT_TRUE(builtInStyle(number)) << number;
        EXPECT_EQ(builtInStyle(number)->number, number);
    }
    EXPECT_FALSE(builtInStyle(267));
    EXPECT_FALSE(builtInStyle(StyleDefinition::userDefined));
}

TEST(BuiltInStyles, HeadingsAndContentsStylesAreNumberedByLevel) {
    EXPECT_EQ(builtInStyle(sti::heading1 + 8)->chineseName, u"标题 9");
    EXPECT_EQ(builtInStyle(sti::contents1)->chineseName, u"目录 1");
    EXPECT_EQ(builtInStyle(sti::contents1 + 8)->englishName, u"toc 9");
}

TEST(BuiltInStyles, AreFoundByChineseAndEnglishNamesWithoutCase) {
    EXPECT_EQ(builtInStyleNamed(u"标题 3")->number, 3);
    EXPECT_EQ(builtInStyleNamed(u"Heading 3")->number, 3);
    EXPECT_EQ(builtInStyleNamed(u"超链接")->number, sti::hyperlink);
    EXPECT_EQ(builtInStyleNamed(u"page number")->kind, StyleKind::character);
    EXPECT_FALSE(builtInStyleNamed(u"我的样式"));
}

TEST(BuiltInStyles, TheFirstPlacesOfTheStyleSheetAreFixed) {
    EXPECT_EQ(fixedStyleIndex(sti::normal), 0);
    EXPECT_EQ(fixedStyleIndex(9), 9);
    EXPECT_EQ(fixedStyleIndex(sti::defaultParagraphFont), 10);
    EXPECT_EQ(fixedStyleIndex(sti::normalTable), 11);
    EXPECT_EQ(fixedStyleIndex(sti::noList), 12);
    EXPECT_FALSE(fixedStyleIndex(sti::header));
}

TEST(BookmarkNames, ATakenNameGetsANumberBehindIt) {
    BookmarkNames names;
    EXPECT_EQ(names.addUnique(u"_Toc1234"), u"_Toc1234");
    EXPECT_EQ(names.addUnique(u"_Toc1234"), u"_Toc1234_2");
    EXPECT_EQ(names.addUnique(u"_toc1234"), u"_toc1234_3");
    EXPECT_TRUE(names.contains(u"_TOC1234_2"));
}

TEST(BookmarkNames, ANumberThatIsTakenTooIsPassedOver) {
    BookmarkNames names;
    names.add(u"a");
    names.add(u"a_2");
    EXPECT_EQ(names.addUnique(u"a"), u"a_3");
}

TEST(BookmarkNames, ALongNameIsCutToFortyCharacters) {
    BookmarkNames names;
    const std::u16string name(40, u'x');
    names.add(name);
    const std::u16string unique = names.addUnique(name);
    EXPECT_EQ(unique.size(), 40U);
    EXPECT_EQ(unique.substr(38), u"_2");
}
