#include "platform/word/engine/TemplateStyles.h"

#include "platform/word/engine/ImportFixture.h"

#include <gtest/gtest.h>

// The styles of the normal template.
namespace qvnd::word {
namespace {

TEST(TemplateStyles, HeadingsAndContentsAreFollowedByTextAndOthersByThemselves) {
    DocumentTables tables = importing::plainTables();
    const auto isFollowedByText = [&](unsigned number) {
        const StyleIndex place = requireStyle(tables, static_cast<std::uint16_t>(number));
        const StyleIndex next = tables.styles.styles.at(place)->next;
        EXPECT_TRUE(next == 0 || next == place) << number;
        return next == 0;
    };
    EXPECT_TRUE(isFollowedByText(sti::heading1));
    EXPECT_TRUE(isFollowedByText(sti::heading1 + 8U));
    EXPECT_FALSE(isFollowedByText(sti::heading1 + 9U));
    EXPECT_FALSE(isFollowedByText(sti::contents1 - 1U));
    EXPECT_TRUE(isFollowedByText(sti::contents1));
    EXPECT_TRUE(isFollowedByText(sti::contents1 + 8U));
    EXPECT_FALSE(isFollowedByText(sti::contents1 + 9U));
    EXPECT_FALSE(isFollowedByText(sti::header));
}

TEST(TemplateStyles, HeadersHaveALineBelowThemAndFootersNone) {
    DocumentTables tables = importing::plainTables();
    const auto listOf = [&](std::uint16_t number) {
        const StyleIndex place = requireStyle(tables, number);
        return tables.lists[tables.styles.styles.at(place)->paragraph];
    };
    EXPECT_TRUE(findSprm(listOf(sti::header), sprm::PBrcBottom80));
    EXPECT_FALSE(findSprm(listOf(sti::footer), sprm::PBrcBottom80));
    EXPECT_TRUE(findSprm(listOf(sti::header), sprm::PChgTabsPapx));
    EXPECT_TRUE(findSprm(listOf(sti::footer), sprm::PChgTabsPapx));
    const StyleIndex link = requireStyle(tables, sti::hyperlink);
    const ByteView looks = tables.lists[tables.styles.styles.at(link)->character];
    EXPECT_TRUE(findSprm(looks, sprm::CKul));
}

} // namespace
} // namespace qvnd::word
