#include "platform/word/check/SoundDocument.h"

#include "platform/word/docfile/format/Plc.h"
#include "platform/word/docfile/format/SpecialCharacters.h"
#include "platform/word/docfile/format/Sttb.h"
#include "platform/word/docfile/text/CommentTables.h"
#include "support/ByteText.h"

#include <gtest/gtest.h>

// Each rule about notes, comments and settings: one thing broken breaks that rule and no other.
namespace qvnd::test {
namespace {

using namespace word;
using Rules = std::set<std::string>;

// --- notes --------------------------------------------------------------------------------------

TEST(NoteRules, EveryReferenceMustHaveItsText) {
    EXPECT_EQ(brokenRulesWithTable(FibPair::PlcffndTxt, encodePlc({0, 4}, {})),
              Rules{"note.count"});
}

TEST(NoteRules, ReferenceMustStandAtItsMark) {
    const auto rulesWith = [](std::string_view automatic) {
        SoundDocument document;
        document.setCharacters(u"\x02\r", {}); // no mark, but a character
        document.file.parts[FibPair::PlcffndRef] = encodePlc({1, 30}, hex(automatic));
        return brokenRules(document.bytes());
    };
    EXPECT_EQ(rulesWith("0100"), Rules{"note.mark"});
    EXPECT_EQ(rulesWith("0000"), Rules{}) << "a mark of the user's own may be any character";
}

TEST(NoteRules, EveryMarkMustHaveItsText) {
    for (const char16_t mark : {special::noteReference, special::commentReference}) {
        SoundDocument plain;
        plain.text().text[plain.find(u"题")] = mark;
        EXPECT_EQ(brokenRules(plain.bytes()), Rules{}) << "a character like any other";
        SoundDocument marked;
        marked.mark(u"题", mark);
        EXPECT_EQ(brokenRules(marked.bytes()), Rules{"note.stray"});
    }
}

TEST(NoteRules, PartWithTextMustHaveItsTables) {
    SoundDocument document;
    document.file.parts.erase(FibPair::PlcffndRef);
    document.file.parts.erase(FibPair::PlcffndTxt);
    EXPECT_EQ(brokenRules(document.bytes()), (Rules{"note.stray", "note.table"}));
}

// Two endnotes.
class EndnoteRules : public ::testing::Test {
protected:
    Rules rules() {
        SoundDocument document;
        const Cp first = document.find(u"节");
        const Cp second = document.find(u"末");
        document.mark(u"节", 0x02);
        document.mark(u"末", 0x02);
        document.append(text);
        document.file.lengths.endnotes = static_cast<Cp>(text.size());
        document.file.parts[FibPair::PlcfendRef] =
            encodePlc({twiceAtOnePlace ? second : first, second, document.file.lengths.text},
                      hex("0100 0100"));
        document.file.parts[FibPair::PlcfendTxt] = encodePlc(texts, {});
        return brokenRules(document.bytes());
    }

    std::u16string text = u"\x02甲\r\x02乙\r\r";
    std::vector<std::uint32_t> texts{0, 3, 6, 7};
    bool twiceAtOnePlace = false;
};

TEST_F(EndnoteRules, SoundOnesBreakNone) { EXPECT_EQ(rules(), Rules{}); }

TEST_F(EndnoteRules, TextMustEndInAParagraphMark) {
    texts = {0, 2, 6, 7};
    EXPECT_EQ(rules(), Rules{"note.text"});
}

TEST_F(EndnoteRules, TextMustNotBeEmpty) {
    texts = {0, 6, 6, 7};
    EXPECT_EQ(rules(), Rules{"note.text"});
}

TEST_F(EndnoteRules, TextsMustReachTheMarkThatClosesThePart) {
    text += u"\r";
    EXPECT_EQ(rules(), Rules{"note.end"});
}

TEST_F(EndnoteRules, TwoMustNotStandAtOnePlace) {
    twiceAtOnePlace = true;
    EXPECT_EQ(rules(), (Rules{"note.order", "note.stray"}));
}

TEST(NoteRules, AFieldOfANoteStandsInTheTableOfItsPartAlone) {
    SoundDocument document;
    document.mark(u"末", 0x02);
    document.append(u"\x02甲乙丙\r\r");
    document.mark(u"甲", 0x13);
    document.mark(u"乙", 0x14);
    document.mark(u"丙", 0x15);
    document.file.lengths.endnotes = 6;
    auto& parts = document.file.parts;
    parts[FibPair::PlcfendRef] = encodePlc({29, document.file.lengths.text}, hex("0100"));
    parts[FibPair::PlcfendTxt] = encodePlc({0, 5, 6}, {});
    parts[FibPair::PlcfFldEdn] = encodePlc({1, 2, 3, 6}, hex("1321 14FF 1580"));
    EXPECT_EQ(brokenRules(document.bytes()), Rules{});
    parts.erase(FibPair::PlcfFldEdn);
    EXPECT_EQ(toldOf("field.table", document.bytes()),
              (std::vector<std::string>{"尾注第 3 个字符：域字符不在域表中",
                                        "尾注第 4 个字符：域字符不在域表中"}));
}

// --- comments -----------------------------------------------------------------------------------

// Two comments, each on a range.
class CommentRules : public ::testing::Test {
protected:
    CommentRules() {
        document.mark(u"节", 0x05);
        document.mark(u"末", 0x05);
        constexpr std::u16string_view texts = u"\x05甲\r\x05乙\r\r";
        document.append(texts);
        document.file.lengths.comments = static_cast<Cp>(texts.size());
        const std::vector<CommentPlace> comments{
            {first, {0, 3}, u"王", u"W", 0, CommentRange{0, 2}},
            {second, {3, 3}, u"李", u"L", 0, CommentRange{1, 3}}};
        tables = encodeComments(comments, document.file.lengths.text);
    }
    Rules rules() {
        auto& parts = document.file.parts;
        parts[FibPair::PlcfandRef] = tables.references;
        parts[FibPair::PlcfandTxt] = tables.texts;
        parts[FibPair::GrpXstAtnOwners] = tables.owners;
        parts[FibPair::AtrdExtra] = tables.dates;
        parts[FibPair::SttbfAtnBkmk] = tables.rangeTags;
        parts[FibPair::PlcfAtnBkf] = tables.rangeStarts;
        parts[FibPair::PlcfAtnBkl] = tables.rangeEnds;
        return brokenRules(document.bytes());
    }

    static constexpr std::size_t firstAt = 3 * 4; // ATRDPre10, behind the positions
    SoundDocument document;
    Cp first = document.find(u"节");
    Cp second = document.find(u"末");
    CommentTables tables;
};

TEST_F(CommentRules, SoundOnesBreakNone) { EXPECT_EQ(rules(), Rules{}); }

TEST_F(CommentRules, AuthorMustBeListed) {
    put16(tables.references, firstAt + 20, 2);
    EXPECT_EQ(rules(), Rules{"comment.author"});
}

TEST_F(CommentRules, AuthorsMustBeThere) {
    tables.owners.clear();
    EXPECT_EQ(rules(), Rules{"comment.author"});
}

TEST_F(CommentRules, NamesOfAuthorsMustBeWhole) {
    tables.owners.push_back(0);
    EXPECT_EQ(rules(), Rules{"comment.authors"});
}

TEST_F(CommentRules, InitialsHaveAtMostNineCharacters) {
    put16(tables.references, firstAt, 9);
    EXPECT_EQ(rules(), Rules{});
    put16(tables.references, firstAt, 10);
    EXPECT_EQ(rules(), Rules{"comment.initials"});
}

TEST_F(CommentRules, RangeMustExist) {
    constexpr std::size_t tagAt = firstAt + 26;
    put32(tables.references, tagAt, 0xFFFFFFFF);
    EXPECT_EQ(rules(), Rules{}) << "a comment without a range";
    put32(tables.references, tagAt, 2);
    EXPECT_EQ(rules(), Rules{"comment.tag"});
}

TEST_F(CommentRules, RangesMustBeToldApart) {
    constexpr std::size_t secondTagAt = 6 + 2 + 10 + 2 + 2; // head, an entry, length, bmc
    put32(tables.rangeTags, secondTagAt, 0);
    EXPECT_EQ(rules(), Rules{"comment.tag"});
}

TEST_F(CommentRules, EveryCommentMustHaveItsDate) {
    tables.dates.resize(tables.dates.size() - 1);
    EXPECT_EQ(rules(), Rules{"comment.extra"});
    tables.dates.clear();
    EXPECT_EQ(rules(), Rules{"comment.extra"});
}

// --- settings -----------------------------------------------------------------------------------

TEST(SettingsRules, SettingsMustHaveTheSizeOfWord97) {
    EXPECT_EQ(brokenRulesWithTable(FibPair::Dop, Bytes(500)), Rules{});
    EXPECT_EQ(brokenRulesWithTable(FibPair::Dop, Bytes(499)), Rules{"settings.size"});
    EXPECT_EQ(brokenRulesWithTable(FibPair::Dop, {}), Rules{"settings.size"});
}

TEST(SettingsRules, AssociatedStringsMustBeEighteen) {
    Sttb strings;
    strings.entries.resize(18);
    Bytes table = encodeSttb(strings);
    EXPECT_EQ(brokenRulesWithTable(FibPair::SttbfAssoc, table), Rules{});
    table.pop_back();
    EXPECT_EQ(brokenRulesWithTable(FibPair::SttbfAssoc, table), Rules{"settings.strings"});
    strings.entries.resize(17);
    EXPECT_EQ(brokenRulesWithTable(FibPair::SttbfAssoc, encodeSttb(strings)),
              Rules{"settings.strings"});
}

} // namespace
} // namespace qvnd::test
