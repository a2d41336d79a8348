// Rows that go over several pages.

#include "platform/layout/PlainStrips.h"
#include "platform/word/layout/ColumnFlow.h"
#include "platform/word/layout/RowComposer.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace qvnd::layout {
namespace {

using test::lineHeight;
using test::rowWith;

// Lines of one paragraph with a fill each.
Strips filledLines(std::size_t count) {
    Strips lines = test::paragraph(0, count);
    for (Strip& line : lines) {
        line.layer.fills.resize(1);
    }
    return lines;
}

// A row may go over hundreds of pages.
TEST(PartedRows, TheRestOfARowSharesItsLinesAndGetsItsContentWhereItIsPlaced) {
    const Strip whole = completed(rowWith(filledLines(25)));
    const auto first = partRow(whole, 10 * lineHeight);
    ASSERT_TRUE(first);
    EXPECT_EQ(first->head.layer.fills.size(), 10U);
    EXPECT_FALSE(first->head.lacksContent);
    const Strip& rest = first->rest;
    EXPECT_TRUE(rest.lacksContent);
    EXPECT_TRUE(rest.layer.fills.empty());
    ASSERT_EQ(rest.row->cells[0].strips.size(), 15U);
    EXPECT_EQ(&rest.row->cells[0].strips[0], &whole.row->cells[0].strips[10]);
    const auto second = partRow(rest, 10 * lineHeight);
    ASSERT_TRUE(second);
    EXPECT_EQ(second->head.layer.fills.size(), 10U);
    ColumnFlow flow(true, [](std::uint32_t, bool) { return NoteRoom{}; });
    flow.begin(10 * lineHeight, true, 0);
    Strips overflow;
    EXPECT_TRUE(flow.add(second->rest, overflow));
    ASSERT_EQ(flow.strips().size(), 1U);
    EXPECT_FALSE(flow.strips()[0].strip.lacksContent);
    EXPECT_EQ(flow.strips()[0].strip.layer.fills.size(), 5U);
}

TEST(PartedRows, TheRestOfARowInACellGetsItsContentToo) {
    const Strip outer = rowWith({rowWith(filledLines(25))});
    const auto first = partRow(outer, 10 * lineHeight);
    ASSERT_TRUE(first);
    const auto second = partRow(first->rest, 10 * lineHeight);
    ASSERT_TRUE(second);
    EXPECT_EQ(second->head.layer.fills.size(), 10U);
    EXPECT_EQ(completed(second->rest).layer.fills.size(), 5U);
}

} // namespace
} // namespace qvnd::layout
