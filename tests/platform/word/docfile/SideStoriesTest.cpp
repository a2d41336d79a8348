#include "platform/word/docfile/text/SideStories.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

namespace qvnd::word {
namespace {

TEST(SideStories, EveryKindOfAnchorButDrawingsHasAPartWithItsTables) {
    for (std::size_t i = 0; i < anchorKinds; ++i) {
        const auto kind = static_cast<AnchorKind>(i);
        const auto rows = std::count_if(sideParts.begin(), sideParts.end(),
                                        [&](const SidePart& row) { return row.kind == kind; });
        EXPECT_EQ(rows, kind == AnchorKind::drawing ? 0 : 1) << "kind " << i;
    }
    for (const SidePart& row : sideParts) {
        const TextPartFacts& facts = factsOf(row.part);
        EXPECT_TRUE(facts.references && facts.texts);
        EXPECT_EQ(facts.host, TextPart::main);
        EXPECT_NE(facts.anchor, 0);
    }
}

TEST(SideStories, WhatTheTablesOfAPartSayComesBackForEveryKind) {
    for (const SidePart& row : sideParts) {
        const bool comment = row.kind == AnchorKind::comment;
        const SidePlace place{
            3, {0, 4}, {nullptr, comment, u"王工", u"W", 99, 0, comment}, std::nullopt};
        std::map<FibPair, Bytes> tables;
        encodeSidePlaces(row.kind, std::span(&place, 1), 10, 20,
                         [&](FibPair pair, const Bytes& bytes) { tables[pair] = bytes; });
        SideDamage damage;
        const auto found = decodeSidePlaces(
            row.kind, [&](FibPair pair) { return ByteView(tables[pair]); }, 10, 5, damage);
        ASSERT_EQ(found.size(), 1U);
        EXPECT_EQ(damage.texts + damage.ranges, 0);
        EXPECT_EQ(found[0].at, 3U);
        EXPECT_EQ(found[0].text.start, 0U);
        EXPECT_EQ(found[0].text.length, 4U);
        EXPECT_EQ(found[0].story.automatic, comment);
        EXPECT_EQ(found[0].story.author, comment ? u"王工" : u"");
        EXPECT_EQ(found[0].story.ink, comment);
    }
}

} // namespace
} // namespace qvnd::word
