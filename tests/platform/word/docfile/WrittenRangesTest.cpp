// Which parts of fragments a save writes, with which formatting, and where they lie afterwards.

#include "platform/word/docfile/writer/FragmentPlaces.h"
#include "platform/word/docfile/writer/RangeFormatting.h"
#include "support/ContentBuilder.h"
#include "support/MemoryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace qvnd::word {
namespace {

class WrittenRanges : public testing::Test {
protected:
    using Told = std::vector<std::pair<Cp, StyleIndex>>;
    using ToldCharacters = std::vector<std::pair<Cp, bool>>;

    static std::shared_ptr<const Story> storyOf(std::u16string text,
                                                std::vector<ParagraphRun> paragraphs) {
        Story story;
        story.text = std::move(text);
        story.characters = {{story.size(), PropertyListId::empty}};
        story.paragraphs = std::move(paragraphs);
        return std::make_shared<const Story>(std::move(story));
    }
    PropertyListId boldId() {
        return builder.content.tables.lists.intern(withSprm8({}, sprm::CFBold, 1));
    }
    // Lengths and styles of the paragraphs that are told.
    Told paragraphs(const std::vector<TextRange>& ranges) {
        const RangeFormatting formatting(ranges, sectionEnds, properties);
        open = formatting.leftOpen();
        Told told;
        formatting.tellParagraphs([&](const FormattedParagraph& paragraph) {
            told.emplace_back(paragraph.length, paragraph.style);
        });
        return told;
    }
    // Lengths of the runs, and whether they have properties.
    ToldCharacters characters(const std::vector<TextRange>& ranges) {
        const RangeFormatting formatting(ranges, sectionEnds, properties);
        ToldCharacters told;
        formatting.tellCharacters([&](const FormattedCharacters& run) {
            told.emplace_back(run.length, !run.properties.empty());
        });
        return told;
    }

    test::ContentBuilder builder;
    test::MemoryFolder folder;
    std::filesystem::path path;
    CompoundStore store{folder.createBeside("/folder/target", &path), {}};
    DataStream data{store};
    ObjectPool objects{store};
    FileProperties properties{builder.content.tables, data, objects};
    std::vector<Cp> sectionEnds;
    std::vector<bool> open; // what keeps its last paragraph open
    const std::shared_ptr<const Story> three =
        storyOf(u"甲\r乙\r丙\r", {{2, 1, {}}, {2, 2, {}}, {2, 3, {}}});
    const std::shared_ptr<const Story> begun = storyOf(u"一", {{1, 5, {}}});
};

TEST_F(WrittenRanges, ParagraphsInFrontOfARangeAndBehindItDoNotCount) {
    EXPECT_EQ(paragraphs({{begun, 0, 1, 0}, {three, 4, 2, 1}}), (Told{{3, 3}}));
    EXPECT_EQ(open, (std::vector{false, false}));
    EXPECT_EQ(paragraphs({{three, 0, 3, 0}}), (Told{{2, 1}, {2, 2}}));
    EXPECT_EQ(open, (std::vector{true}));
    EXPECT_EQ(paragraphs({{three, 2, 2, 7}}), (Told{{2, 2}}));
    EXPECT_EQ(open, (std::vector{false}));
}

TEST_F(WrittenRanges, AParagraphGoesOnInTheNextRangeWhereTheDocumentDoes) {
    EXPECT_EQ(paragraphs({{begun, 0, 1, 10}, {three, 0, 6, 11}}), (Told{{3, 1}, {2, 2}, {2, 3}}));
    EXPECT_EQ(paragraphs({{begun, 0, 1, 10}, {three, 0, 6, 12}}),
              (Told{{2, 5}, {2, 1}, {2, 2}, {2, 3}}));
    EXPECT_EQ(open, (std::vector{true, false}));
    EXPECT_EQ(paragraphs({{begun, 0, 1, 10}}), (Told{{2, 5}}));
    EXPECT_EQ(paragraphs({}), Told{});
}

TEST_F(WrittenRanges, ABreakEndsAParagraphWithinAFragmentAndWhereASectionEnds) {
    const auto within = storyOf(u"甲\f乙\r", {{2, 1, {}}, {2, 2, {}}});
    EXPECT_EQ(paragraphs({{within, 0, 4, 0}}), (Told{{2, 1}, {2, 2}}));
    const auto atEnd = storyOf(u"甲乙\f", {{3, 1, {}}});
    EXPECT_EQ(paragraphs({{atEnd, 1, 2, 10}}), (Told{{3, 1}}));
    EXPECT_EQ(open, (std::vector{true}));
    sectionEnds = {12};
    EXPECT_EQ(paragraphs({{atEnd, 1, 2, 10}}), (Told{{2, 1}}));
    EXPECT_EQ(open, (std::vector{false}));
    sectionEnds = {11, 13};
    EXPECT_EQ(paragraphs({{atEnd, 1, 2, 10}}), (Told{{3, 1}}));
}

TEST_F(WrittenRanges, ACellMarkEndsAParagraphAndATextThatIsCutDoesNot) {
    const auto cell = storyOf(u"甲\a乙", {{2, 1, {}}, {1, 2, {}}});
    EXPECT_EQ(paragraphs({{cell, 0, 2, 0}}), (Told{{2, 1}}));
    EXPECT_EQ(paragraphs({{cell, 0, 1, 0}}), (Told{{2, 1}}));
    EXPECT_EQ(open, (std::vector{true})) << "the second character is the one that keeps it open";
}

TEST_F(WrittenRanges, NeighboursOfEqualLookAreOneRunWhateverRangeTheyStandIn) {
    Story looks = *storyOf(u"甲乙丙丁戊己庚辛\r", {{9, 1, {}}});
    looks.characters = {{3, PropertyListId::empty}, {3, boldId()}, {3, PropertyListId::empty}};
    const auto story = std::make_shared<const Story>(looks);
    EXPECT_EQ(characters({{story, 0, 9, 0}}), (ToldCharacters{{3, false}, {3, true}, {3, false}}));
    EXPECT_EQ(characters({{story, 2, 5, 0}}), (ToldCharacters{{1, false}, {3, true}, {2, false}}))
        << "with one behind the end";
    EXPECT_EQ(characters({{story, 6, 3, 0}}), (ToldCharacters{{3, false}}));
    EXPECT_EQ(characters({{story, 0, 2, 0}, {story, 7, 2, 2}}), (ToldCharacters{{4, false}}));
    EXPECT_EQ(characters({{story, 0, 2, 0}, {story, 7, 2, 3}}), (ToldCharacters{{5, false}}));
    EXPECT_EQ(characters({}), ToldCharacters{});
}

class PlacesOfFragments : public testing::Test {
protected:
    using Ranges = std::vector<std::tuple<Cp, Cp, Cp>>;
    using Pieces = std::vector<std::pair<std::uint32_t, Cp>>;

    static std::shared_ptr<const Story> storyOf(std::size_t length) {
        Story story;
        story.text.assign(length, u'一');
        return std::make_shared<const Story>(std::move(story));
    }
    // Where the missing parts begin, how long they are, and their positions.
    Ranges missing(const std::vector<StorySlice>& slices) const {
        Ranges ranges;
        for (const TextRange& range : places.missing(slices)) {
            ranges.emplace_back(range.begin, range.length, range.position);
        }
        return ranges;
    }
    Pieces pieces(const std::vector<StorySlice>& slices) {
        Pieces found;
        for (const Piece& piece : places.pieces(slices)) {
            found.emplace_back(piece.fc, piece.length);
        }
        return found;
    }

    const std::shared_ptr<const Story> one = storyOf(10);
    const std::shared_ptr<const Story> other = storyOf(10);
    FragmentPlaces places;
};

TEST_F(PlacesOfFragments, WhatIsWrittenIsNotMissing) {
    EXPECT_EQ(missing({{one, 2, 5}}), (Ranges{{2, 5, 0}}));
    places.add({one, 2, 5, 0}, 1000);
    EXPECT_EQ(missing({{one, 2, 5}}), Ranges{});
    EXPECT_EQ(missing({{one, 3, 4}}), Ranges{});
    EXPECT_EQ(missing({{other, 0, 3}, {one, 1, 6}}), (Ranges{{0, 3, 0}, {1, 1, 3}}));
    EXPECT_EQ(missing({{other, 0, 3}, {one, 2, 6}}), (Ranges{{0, 3, 0}, {7, 1, 8}}));
    EXPECT_EQ(missing({{one, 0, 10}}), (Ranges{{0, 2, 0}, {7, 3, 7}}));
}

TEST_F(PlacesOfFragments, WhatTheDocumentHasTwiceIsMissingOnce) {
    EXPECT_EQ(missing({{one, 0, 4}, {one, 0, 4}}), (Ranges{{0, 4, 0}}));
    EXPECT_EQ(missing({{one, 0, 4}, {other, 0, 1}, {one, 2, 4}}),
              (Ranges{{0, 4, 0}, {0, 1, 4}, {4, 2, 7}}));
}

TEST_F(PlacesOfFragments, SlicesThatFollowEachOtherInTheFileAreOnePiece) {
    places.add({one, 0, 4, 0}, 1000);
    places.add({one, 4, 6, 4}, 3000);
    places.add({other, 0, 10, 10}, 1008);
    EXPECT_EQ(pieces({{one, 0, 4}, {other, 0, 10}}), (Pieces{{1000, 14}}));
    EXPECT_EQ(pieces({{one, 2, 5}}), (Pieces{{1004, 2}, {3000, 3}}));
    EXPECT_EQ(pieces({{one, 0, 3}, {other, 0, 10}}), (Pieces{{1000, 3}, {1008, 10}}));
    EXPECT_EQ(pieces({{other, 1, 2}, {other, 3, 1}, {other, 5, 1}}),
              (Pieces{{1010, 3}, {1018, 1}}));
}

TEST_F(PlacesOfFragments, TheFrontThatIsAsBeforeNeedNotBeLookedAtAgain) {
    places.add({one, 0, 10, 0}, 1000);
    places.add({other, 0, 10, 10}, 1020);
    EXPECT_EQ(pieces({{one, 0, 10}, {other, 0, 2}}), (Pieces{{1000, 12}}));
    EXPECT_EQ(pieces({{one, 0, 10}, {other, 0, 2}, {one, 1, 1}}), (Pieces{{1000, 12}, {1002, 1}}));
    EXPECT_EQ(pieces({{one, 0, 10}, {other, 5, 2}}), (Pieces{{1000, 10}, {1030, 2}}));
    EXPECT_EQ(pieces({{one, 0, 9}}), (Pieces{{1000, 9}}));
    EXPECT_EQ(missing({{one, 0, 9}, {storyOf(2), 0, 2}}), (Ranges{{0, 2, 9}}));
    EXPECT_EQ(pieces({}), Pieces{});
    EXPECT_EQ(pieces({{one, 0, 1}}), (Pieces{{1000, 1}}));
}

} // namespace
} // namespace qvnd::word
