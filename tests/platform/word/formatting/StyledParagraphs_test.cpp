#include "platform/word/formatting/StyledParagraphs.h"

#include "support/ContentBuilder.h"

#include <gtest/gtest.h>

namespace qvnd::word {
namespace {

std::vector<StyledParagraph> at(const std::vector<Cp>& positions) {
    std::vector<StyledParagraph> paragraphs;
    paragraphs.reserve(positions.size());
    for (const Cp position : positions) {
        paragraphs.push_back({position, {}, {}, {}});
    }
    return paragraphs;
}

TEST(StyledText, TheNearestIsTheFirstOrLastOnThePageElseTheLastBeforeIt) {
    const auto paragraphs = at({10, 20, 30, 40});
    EXPECT_EQ(nearest(paragraphs, {20, 35})->at, 20U);
    EXPECT_EQ(nearest(paragraphs, {20, 35}, true)->at, 30U);
    EXPECT_EQ(nearest(paragraphs, {20, 30}, true)->at, 30U);
    EXPECT_EQ(nearest(paragraphs, {21, 29})->at, 20U);
    EXPECT_EQ(nearest(paragraphs, {21, 29}, true)->at, 20U);
    EXPECT_EQ(nearest(paragraphs, {50, 60})->at, 40U);
    EXPECT_EQ(nearest(paragraphs, {0, 9}), nullptr);
    EXPECT_EQ(nearest({}, {0, 9}), nullptr);
}

TEST(StyledText, ParagraphsAreToldByTheirStylesWithoutThoseThatAreHidden) {
    test::ContentBuilder builder;
    const Bytes hidden = withSprm8({}, sprm::CFVanish, 1);
    builder.add({test::plain(u"甲\t乙\v\r")}, 1);
    builder.add({{u"丙\r", hidden}}, 1);
    builder.add({{u"丁", hidden}, test::plain(u"\r")}, 1);
    builder.add({test::plain(u"戊\r")}, 999);
    const StyledParagraphs found(builder.content.tables, *joined(builder.content.main));
    const auto& headings = found.of(1);
    ASSERT_EQ(headings.size(), 2U);
    EXPECT_EQ(headings[0].text, u"甲\t乙");
    EXPECT_EQ(headings[0].at, 0U);
    EXPECT_EQ(headings[1].text, u"");
    EXPECT_EQ(headings[1].at, 7U);
    EXPECT_TRUE(found.of(2).empty());
    EXPECT_TRUE(found.of(999).empty()) << "no style of the sheet";
}

} // namespace
} // namespace qvnd::word
