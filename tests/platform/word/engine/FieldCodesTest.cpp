#include "platform/word/engine/FieldCodes.h"

#include "platform/word/docfile/text/Fields.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace qvnd::word {
namespace {

using Names = std::vector<std::u16string>;

// A story in which {, | and } stand for the marks of fields.
Story storyOf(std::u16string text) {
    std::replace(text.begin(), text.end(), u'{', u'\x13');
    std::replace(text.begin(), text.end(), u'|', u'\x14');
    std::replace(text.begin(), text.end(), u'}', u'\x15');
    Story story;
    story.text = std::move(text);
    story.fields = matchFields({}, story.text).marks;
    return story;
}

// The words of all codes.
std::vector<Names> wordsOf(const Story& story) {
    std::vector<Names> codes;
    forEachFieldCode(story, [&](const FieldPlace&, const FieldCode& code) {
        Names& words = codes.emplace_back();
        for (std::size_t i = 0; i < code.words.size(); ++i) {
            words.emplace_back(code.word(i));
        }
    });
    return codes;
}

std::vector<FieldPlace> placesOf(const Story& story) {
    std::vector<FieldPlace> places;
    forEachField(story, [&](const FieldPlace& place) { places.push_back(place); });
    return places;
}

// The bookmarks that a field of this code names.
Names namedBy(const std::u16string& code) {
    const Story story = storyOf(u'{' + code + u'}');
    Names names;
    forEachFieldCode(story, [&](const FieldPlace&, const FieldCode& read) {
        forEachBookmarkWord(read,
                            [&](const FieldWord& word) { names.emplace_back(word.in(story)); });
    });
    return names;
}

TEST(FieldCodes, ReferencesNameTheirBookmarkFirst) {
    for (const char16_t* command :
         {u"REF", u"PageRef", u"noteref", u"FTNREF", u"GOTOBUTTON", u"set", u"ASK"}) {
        EXPECT_EQ(namedBy(std::u16string(command) + u" here there"), Names{u"here"});
        EXPECT_EQ(namedBy(command), Names{});
    }
}

TEST(FieldCodes, LinksAndTablesNameBookmarksBehindASwitch) {
    EXPECT_EQ(namedBy(u"HYPERLINK \\L \"here\""), Names{u"here"});
    EXPECT_EQ(namedBy(u"HYPERLINK \\b here"), Names{});
    EXPECT_EQ(namedBy(u"HYPERLINK \\l"), Names{});
    EXPECT_EQ(namedBy(u"TOC \\b one \\B two"), (Names{u"one", u"two"}));
    EXPECT_EQ(namedBy(u"INDEX \\b one"), Names{u"one"});
    EXPECT_EQ(namedBy(u"TOA \\b one"), Names{u"one"});
    EXPECT_EQ(namedBy(u"TOC \\l one"), Names{});
    EXPECT_EQ(namedBy(u"TOC \"\\b\" one"), Names{}) << "no switch but a text";
}

TEST(FieldCodes, APlaceInAnotherFileIsNoBookmarkOfThisDocument) {
    EXPECT_EQ(namedBy(u"HYPERLINK \"D:\\\\other.doc\" \\l \"Total\""), Names{});
    EXPECT_EQ(namedBy(u"HYPERLINK \\\\server\\bids\\other.doc \\l Total"), Names{});
    EXPECT_EQ(namedBy(u"HYPERLINK \\l Total other.doc"), Names{});
    EXPECT_EQ(namedBy(u"HYPERLINK \\n other.doc \\l Total"), Names{}) << "\\n has no argument";
}

TEST(FieldCodes, ALinkWithinTheDocumentMayHaveATipAndAFrame) {
    EXPECT_EQ(namedBy(u"HYPERLINK \\o \"a tip\" \\n \\t frame \\l here"), Names{u"here"});
    EXPECT_EQ(namedBy(u"HYPERLINK \"\" \\l here"), Names{u"here"});
    EXPECT_EQ(namedBy(u"HYPERLINK \\o \\l here"), Names{u"here"});
}

TEST(FieldCodes, EntriesOfAnIndexNameTheBookmarkOfTheirPages) {
    EXPECT_EQ(namedBy(u"XE \"concrete\" \\r Part"), Names{u"Part"});
    EXPECT_EQ(namedBy(u"TA \\l \"Code\" \\c 1 \\R Part"), Names{u"Part"});
    EXPECT_EQ(namedBy(u"XE Part \\b"), Names{});
}

TEST(FieldCodes, ASequenceNamesABookmarkBehindItsOwnName) {
    EXPECT_EQ(namedBy(u"SEQ Figure here \\* ARABIC"), Names{u"here"});
    EXPECT_EQ(namedBy(u"SEQ Figure \\c here"), Names{});
    EXPECT_EQ(namedBy(u"SEQ Figure"), Names{});
}

TEST(FieldCodes, ACommandAloneIsNoBookmarkOfThatName) {
    for (const char16_t* command : {u"PAGE", u"Date", u"title", u"NUMPAGES", u"FormText"}) {
        EXPECT_EQ(namedBy(command), Names{});
    }
}

TEST(FieldCodes, AListNumberMayNameItsList) {
    const auto listOf = [](const std::u16string& code) {
        const Story story = storyOf(u'{' + code + u'}');
        std::u16string name = u"none";
        forEachFieldCode(story, [&](const FieldPlace&, const FieldCode& read) {
            const auto word = listNameWord(read);
            name = word ? word->in(story) : name;
        });
        return name;
    };
    EXPECT_EQ(listOf(u"LISTNUM Clauses \\l 2"), u"Clauses");
    EXPECT_EQ(listOf(u"listnum \"Main clauses\""), u"Main clauses");
    EXPECT_EQ(listOf(u"LISTNUM \\l 2"), u"none");
    EXPECT_EQ(listOf(u"LISTNUM"), u"none");
    EXPECT_EQ(listOf(u"REF Clauses"), u"none");
}

TEST(FieldCodes, ANameAloneIsAReferenceToIt) {
    EXPECT_EQ(namedBy(u" here "), Names{u"here"});
    EXPECT_EQ(namedBy(u"here there"), Names{});
    EXPECT_EQ(namedBy(u"TOC"), Names{});
    EXPECT_EQ(namedBy(u" "), Names{});
}

TEST(FieldCodes, WordsArePartedByBlanksAndQuotes) {
    EXPECT_THAT(wordsOf(storyOf(u"x{REF\t\"a b\"\u3000c\u201Cd e\u201D|f}")),
                testing::ElementsAre(Names{u"REF", u"a b", u"c", u"d e"}));
}

TEST(FieldCodes, AFieldInACodeIsNoPartOfItAndPartsItsWords) {
    EXPECT_THAT(
        wordsOf(storyOf(u"{RE{ASK n|r}F x|{PAGE}y}")),
        testing::ElementsAre(Names{u"RE", u"F", u"x"}, Names{u"ASK", u"n"}, Names{u"PAGE"}));
}

TEST(FieldCodes, MarksBehindNoBeginningAreNoField) {
    Story story;
    story.text = u"\x14\x15{PAGE}";
    story.fields = {{0, fieldSeparator, 0}, {1, fieldEnd, 0}};
    EXPECT_TRUE(wordsOf(story).empty());
    EXPECT_TRUE(placesOf(story).empty());
    story.text = u"\x15\x13PAGE\x15\x15";
    story.fields = {{0, fieldEnd, 0}, {1, fieldBegin, 33}, {6, fieldEnd, 0}, {7, fieldEnd, 0}};
    EXPECT_THAT(wordsOf(story), testing::ElementsAre(Names{u"PAGE"}));
    ASSERT_EQ(placesOf(story).size(), 1U);
    EXPECT_EQ(placesOf(story)[0].begin, 1U);
    EXPECT_EQ(placesOf(story)[0].end, 6U);
}

TEST(FieldCodes, AQuotationGoesOnBehindAFieldInIt) {
    EXPECT_THAT(wordsOf(storyOf(u"{IF \"a b{PAGE}c d\" e}")),
                testing::ElementsAre(Names{u"IF", u"a b", u"c d", u"e"}, Names{u"PAGE"}));
}

TEST(FieldCodes, FieldsAreVisitedInTheOrderInWhichTheyBegin) {
    const auto places = placesOf(storyOf(u"a{b{c}d|e}f"));
    ASSERT_EQ(places.size(), 2U);
    EXPECT_EQ(places[0].begin, 1U);
    EXPECT_EQ(places[0].separator, 7U);
    EXPECT_EQ(places[0].end, 9U);
    EXPECT_EQ(places[1].begin, 3U);
    EXPECT_EQ(places[1].separator, std::nullopt);
    EXPECT_EQ(places[1].end, 5U);
}

TEST(FieldCodes, MarksWithoutCounterpartArePassedOver) {
    Story story;
    story.text = u"}{a{REF b}|";
    std::replace(story.text.begin(), story.text.end(), u'{', u'\x13');
    std::replace(story.text.begin(), story.text.end(), u'}', u'\x15');
    story.fields = {{0, 0x15, 0}, {1, 0x13, 0}, {3, 0x13, 0}, {9, 0x15, 0}, {10, 0x14, 0}};
    std::vector<Cp> begins;
    forEachField(story, [&](const FieldPlace& place) { begins.push_back(place.begin); });
    EXPECT_EQ(begins, std::vector<Cp>{3});
}

} // namespace
} // namespace qvnd::word
