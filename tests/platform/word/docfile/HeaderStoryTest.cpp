#include "platform/word/docfile/text/HeaderStory.h"

#include "platform/word/docfile/format/Plc.h"
#include "support/ByteText.h"

#include <gtest/gtest.h>

namespace qvnd::word {
namespace {

Story storyOf(std::u16string text) {
    Story story;
    story.text = std::move(text);
    story.characters.push_back({story.size(), PropertyListId::empty});
    story.paragraphs.push_back({story.size(), 2, PropertyListId::empty});
    return story;
}

HeaderSet setWith(HeaderKind kind, std::u16string text) {
    HeaderSet set;
    set[static_cast<std::size_t>(kind)] = slicesOf(storyOf(std::move(text)));
    return set;
}

EncodedHeaders encoded(const std::vector<HeaderSet>& sections, const HeaderSet& separators = {}) {
    return encodeHeaders(separators, sections, std::make_shared<const Story>(storyOf(u"\r")));
}

TEST(HeaderStory, WithoutAnyHeaderThereIsNoHeaderDocument) {
    const std::vector<HeaderSet> sections(3);
    const EncodedHeaders headers = encoded(sections);
    EXPECT_TRUE(headers.text.empty());
    EXPECT_TRUE(headers.plcfHdd.empty());
}

TEST(HeaderStory, SixSeparatorsThenSixStoriesASection) {
    const std::vector<HeaderSet> sections{setWith(HeaderKind::oddHeader, u"H\r"),
                                          setWith(HeaderKind::oddFooter, u"foot\r")};
    const EncodedHeaders headers = encoded(sections);
    const auto positions = decodePlc(headers.plcfHdd, 0).positions;
    // 6 separators, 12 stories, the end of the last one, and the one that counts for nothing.
    ASSERT_EQ(positions.size(), 20U);
    EXPECT_EQ(positions[6], 0U);
    EXPECT_EQ(positions[7], 0U); // the odd header of section 1
    EXPECT_EQ(positions[8], 3U);
    EXPECT_EQ(positions[15], 3U); // the odd footer of section 2
    EXPECT_EQ(positions[16], 9U);
    EXPECT_EQ(positions[18], 9U); // one less than the length of the whole
    EXPECT_EQ(lengthOf(headers.text), 10U);
}

TEST(HeaderStory, EveryStoryHasItsGuardParagraph) {
    const std::vector<HeaderSet> sections{setWith(HeaderKind::firstFooter, u"x\r")};
    const Story story = *joined(encoded(sections).text);
    EXPECT_EQ(story.text, u"x\r\r\r");
    Cp paragraphs = 0;
    for (const ParagraphRun& run : story.paragraphs) {
        paragraphs += run.length;
    }
    EXPECT_EQ(paragraphs, story.size());
    EXPECT_EQ(story.paragraphs.size(), 3U);
    EXPECT_EQ(story.paragraphs[0].style, 2);
}

TEST(HeaderStory, FieldsMoveWithTheirStory) {
    HeaderSet set = setWith(HeaderKind::evenHeader, u"ab\r");
    Story footer = storyOf(u"\x13\x15\r");
    footer.fields = {{0, 0x13, 0x21}, {1, 0x15, 0}};
    set[3] = slicesOf(std::move(footer));
    const std::vector<HeaderSet> sections{set};
    const Story story = *joined(encoded(sections).text);
    ASSERT_EQ(story.fields.size(), 2U);
    EXPECT_EQ(story.fields[0].at, 4U);
    EXPECT_EQ(story.text[story.fields[1].at], u'\x15');
}

TEST(HeaderStory, DecodingGivesThePlacesWithoutTheGuard) {
    const std::vector<HeaderSet> sections{setWith(HeaderKind::oddHeader, u"H\r"),
                                          setWith(HeaderKind::oddFooter, u"foot\r")};
    const EncodedHeaders headers = encoded(sections);
    int damage = 0;
    const auto places = decodeHeaders(headers.plcfHdd, lengthOf(headers.text), 2, &damage);
    ASSERT_EQ(places.size(), 2U);
    EXPECT_EQ(places[0][1], (HeaderPlace{0, 2}));
    EXPECT_FALSE(places[0][3]);
    EXPECT_EQ(places[1][3], (HeaderPlace{3, 5}));
    EXPECT_EQ(damage, 0);
}

TEST(HeaderStory, SeparatorsOfNotesStandInFrontOfAllHeaders) {
    HeaderSet separators;
    separators[0] = slicesOf(storyOf(u"\u0003\r"));
    separators[4] = slicesOf(storyOf(u"next page\r"));
    const EncodedHeaders headers = encoded({setWith(HeaderKind::oddHeader, u"H\r")}, separators);
    EXPECT_EQ(joined(headers.text)->text, u"\u0003\r\rnext page\r\rH\r\r\r");
    int damage = 0;
    const Cp length = lengthOf(headers.text);
    const HeaderPlaces places = decodeSeparators(headers.plcfHdd, length, &damage);
    EXPECT_EQ(places[0], (HeaderPlace{0, 2}));
    EXPECT_FALSE(places[1]);
    EXPECT_EQ(places[4], (HeaderPlace{3, 10}));
    EXPECT_EQ(decodeHeaders(headers.plcfHdd, length, 1, &damage).at(0)[1], (HeaderPlace{14, 2}));
    EXPECT_EQ(damage, 0);
}

TEST(HeaderStory, SeparatorsNeedNoHeader) {
    HeaderSet separators;
    separators[1] = slicesOf(storyOf(u"\u0004\r"));
    const EncodedHeaders headers = encoded(std::vector<HeaderSet>(2), separators);
    EXPECT_EQ(decodePlc(headers.plcfHdd, 0).positions.size(), 20U);
    EXPECT_EQ(decodeSeparators(headers.plcfHdd, lengthOf(headers.text))[1], (HeaderPlace{0, 2}));
}

TEST(HeaderStory, StoriesOutsideOfTheHeaderDocumentAreLeftOutAndCounted) {
    const std::vector<HeaderSet> sections{setWith(HeaderKind::oddHeader, u"H\r")};
    const EncodedHeaders headers = encoded(sections);
    int damage = 0;
    const auto places = decodeHeaders(headers.plcfHdd, 1, 1, &damage);
    ASSERT_EQ(places.size(), 1U);
    EXPECT_FALSE(places[0][1]);
    EXPECT_GT(damage, 0);
}

TEST(HeaderStory, AStoryOverAnotherOneIsLeftOutAndCounted) {
    std::vector<std::uint32_t> positions(6, 0);                // separators
    positions.insert(positions.end(), {0, 9, 0, 9, 4, 9, 12}); // of one section
    int damage = 0;
    const auto places = decodeHeaders(encodePlc(positions, {}), 20, 1, &damage);
    ASSERT_EQ(places.size(), 1U);
    EXPECT_EQ(places[0][0], (HeaderPlace{0, 8}));
    EXPECT_FALSE(places[0][1]);
    EXPECT_FALSE(places[0][2]); // the same place once more
    EXPECT_FALSE(places[0][3]);
    EXPECT_FALSE(places[0][4]); // within it
    EXPECT_EQ(places[0][5], (HeaderPlace{9, 2}));
    EXPECT_EQ(damage, 4);
}

TEST(HeaderStory, StoriesBehindThoseOfTheLastSectionAreNobodys) {
    const std::vector<HeaderSet> sections{setWith(HeaderKind::oddHeader, u"H\r"),
                                          setWith(HeaderKind::oddHeader, u"more\r")};
    const EncodedHeaders headers = encoded(sections);
    int damage = 0;
    EXPECT_EQ(decodeHeaders(headers.plcfHdd, lengthOf(headers.text), 1, &damage).size(), 1U);
}

TEST(HeaderStory, ATableTooShortForASectionGivesNone) {
    EXPECT_TRUE(decodeHeaders({}, 10, 3).empty());
    EXPECT_TRUE(decodeHeaders(Bytes(4 * 12), 10, 3).empty());
    EXPECT_EQ(decodeHeaders(Bytes(4 * 13), 10, 3).size(), 1U);
}

} // namespace
} // namespace qvnd::word
