#include "platform/word/engine/FieldCodes.h"

#include "platform/word/docfile/text/Fields.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace qvnd::word {
namespace {

using Names = std::vector<std::u16string>;

Names textsOf(const std::vector<FieldWord>& words) {
    Names texts;
    for (const FieldWord& word : words) {
        texts.push_back(word.text);
    }
    return texts;
}

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

// The bookmarks that a field of this code names.
Names namedBy(const std::u16string& code) {
    const auto words = fieldWords(storyOf(u'{' + code + u'}'));
    return words.size() == 1 ? textsOf(bookmarkWords(words[0])) : Names{u"no field"};
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
        const auto word = listNameWord(fieldWords(storyOf(u'{' + code + u'}')).at(0));
        return word ? word->text : u"none";
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
    const auto words = fieldWords(storyOf(u"x{REF\t\"a b\"\u3000c\u201Cd e\u201D|f}"));
    ASSERT_EQ(words.size(), 1U);
    EXPECT_EQ(textsOf(words[0]), (Names{u"REF", u"a b", u"c", u"d e"}));
    EXPECT_EQ(words[0][0].at, 2U);
    EXPECT_EQ(words[0][1].at, 7U);
}

TEST(FieldCodes, AFieldInACodeIsNoPartOfItAndPartsItsWords) {
    const auto words = fieldWords(storyOf(u"{RE{ASK n|r}F x|{PAGE}y}"));
    ASSERT_EQ(words.size(), 3U); // in the order in which they end
    EXPECT_EQ(textsOf(words[0]), (Names{u"ASK", u"n"}));
    EXPECT_EQ(textsOf(words[1]), (Names{u"PAGE"}));
    EXPECT_EQ(textsOf(words[2]), (Names{u"RE", u"F", u"x"}));
}

TEST(FieldCodes, MarksBehindNoBeginningAreNoField) {
    Story story;
    story.text = u"\x14\x15{PAGE}";
    story.fields = {{0, fieldSeparator, 0}, {1, fieldEnd, 0}};
    EXPECT_TRUE(fieldWords(story).empty());
    EXPECT_TRUE(fieldPlaces(story).empty());
    story.text = u"\x15\x13PAGE\x15\x15";
    story.fields = {{0, fieldEnd, 0}, {1, fieldBegin, 33}, {6, fieldEnd, 0}, {7, fieldEnd, 0}};
    ASSERT_EQ(fieldWords(story).size(), 1U);
    EXPECT_EQ(textsOf(fieldWords(story)[0]), Names{u"PAGE"});
    ASSERT_EQ(fieldPlaces(story).size(), 1U);
    EXPECT_EQ(fieldPlaces(story)[0].begin, 1U);
    EXPECT_EQ(fieldPlaces(story)[0].end, 6U);
}

TEST(FieldCodes, PlacesOfFieldsComeInTheOrderInWhichTheyEnd) {
    const auto places = fieldPlaces(storyOf(u"a{b{c}d|e}f"));
    ASSERT_EQ(places.size(), 2U);
    EXPECT_EQ(places[0].begin, 3U);
    EXPECT_EQ(places[0].separator, std::nullopt);
    EXPECT_EQ(places[0].end, 5U);
    EXPECT_EQ(places[1].begin, 1U);
    EXPECT_EQ(places[1].separator, 7U);
    EXPECT_EQ(places[1].end, 9U);
}

} // namespace
} // namespace qvnd::word
