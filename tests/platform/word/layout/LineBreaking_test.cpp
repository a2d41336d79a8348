#include "platform/word/layout/LineBreaking.h"

#include <chrono>
#include <gtest/gtest.h>
#include <string>

namespace qvnd::word {
namespace {

std::size_t linesOf(const std::u16string& text) {
    const CharacterSize size;
    const ParagraphPlace place;
    return lineHeights({{text.data(), static_cast<Cp>(text.size()), &size}}, place, 9000).size();
}

std::u16string fields(std::size_t count, const std::u16string& field) {
    std::u16string text;
    for (std::size_t i = 0; i < count; ++i) {
        text += field;
    }
    return text;
}

TEST(LineBreaking, OnlyTheResultOfAFieldTakesRoom) {
    const std::u16string shown(200, u'文');
    const std::size_t lines = linesOf(shown);
    EXPECT_EQ(linesOf(u"\u0013" + shown + u"\u0014\u0015"), 1U);
    EXPECT_EQ(linesOf(u"\u0013code\u0014" + shown + u"\u0015"), lines);
    EXPECT_EQ(linesOf(u"\u0013co\u0013" + shown + u"\u0014" + shown + u"\u0015de\u0014x\u0015"),
              1U);
    EXPECT_EQ(linesOf(u"\u0013a\u0014\u0013b\u0014" + shown + u"\u0015\u0015"), lines);
    EXPECT_EQ(linesOf(u"\u0013no result" + shown + u"\u0015" + shown), lines);
}

// Each character once looked through all fields that were open.
TEST(LineBreaking, FieldsOpenedByTheHundredThousandTakeLinearTime) {
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(linesOf(fields(400000, u"\u0013\u0014")), 1U);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(3));
}

} // namespace
} // namespace qvnd::word
