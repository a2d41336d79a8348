#include "platform/jet/TextOrder.h"
#include "platform/jet/TextPattern.h"

#include <QString>

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string_view>

namespace qvnd::jet {

namespace {

int order(QStringView a, QStringView b) {
    const QByteArray left = a.toUtf8();
    const QByteArray right = b.toUtf8();
    return compareText({left.constData(), static_cast<std::size_t>(left.size())},
                       {right.constData(), static_cast<std::size_t>(right.size())});
}

} // namespace

TEST(TextOrder, LettersOfBothCasesAreEqual) {
    EXPECT_EQ(order(u"Key", u"kEY"), 0);
    EXPECT_EQ(order(u"ÄÖ", u"äö"), 0);
    EXPECT_EQ(order(u"Σ", u"σ"), 0);
}

TEST(TextOrder, FullWidthLettersOfBothCasesAreEqualButNotToHalfWidthOnes) {
    EXPECT_EQ(order(u"Ａｂ", u"ａＢ"), 0);
    EXPECT_NE(order(u"Ａ", u"A"), 0);
}

TEST(TextOrder, ATextEndsWhereItsBytesEndWhateverStandsBehindThem) {
    const auto first = [](std::string_view text, std::size_t count) {
        return text.substr(0, count);
    };
    EXPECT_EQ(compareText(first("Abx", 2), first("aBy", 2)), 0);
    EXPECT_EQ(compareText(first("\xC3\xA4\x84", 2), "\xC3\x84"), 0);
    EXPECT_EQ(compareText("\xC3\x84", first("\xC3\xA4\x84", 2)), 0);
    EXPECT_LT(compareText(first("abx", 2), "abc"), 0);
    EXPECT_GT(compareText("abc", first("abx", 2)), 0);
    EXPECT_LT(compareText(first("abc", 2), "abc"), 0);
    EXPECT_GT(compareText("abc", first("abc", 2)), 0);
}

TEST(TextOrder, ABeginningComesBeforeTheWhole) {
    EXPECT_LT(order(u"工程甲.1", u"工程甲.10"), 0);
    EXPECT_GT(order(u"工程甲.10", u"工程甲.1"), 0);
    EXPECT_LT(order(u"", u"a"), 0);
}

TEST(TextOrder, ChineseCharactersThatShareBytesAreToldApart) {
    EXPECT_NE(order(u"一", u"丁"), 0);
    EXPECT_EQ(order(u"一", u"丁") < 0, order(u"丁", u"一") > 0);
    EXPECT_NE(order(u"𠀀", u"𠀁"), 0);
}

TEST(TextOrder, CharactersAreInTheOrderOfTheirCodePoints) {
    EXPECT_LT(order(u"z", u"ä"), 0);
    EXPECT_LT(order(u"一", u"龥"), 0);
    EXPECT_LT(order(u"\uFFFD", u"𠀀"), 0);
    EXPECT_LT(order(u"甲a乙", u"甲b一"), 0);
    EXPECT_LT(order(u"1", u"q"), 0);
    EXPECT_LT(order(u" ", u"@"), 0);
    EXPECT_LT(order(QString::fromUcs4(U"\U0003FFFF"), QString::fromUcs4(U"\U00040000")), 0);
    EXPECT_LT(order(QString::fromUcs4(U"\U00040000"), QString::fromUcs4(U"\U0010FFFF")), 0);
    EXPECT_GT(order(u"甲B一", u"甲a乙"), 0);
}

TEST(TextOrder, NoLetterBeyondAsciiEqualsAnAsciiLetter) {
    EXPECT_NE(order(u"\u212A", u"k"), 0); // Kelvin
    EXPECT_NE(order(u"\u017F", u"s"), 0); // long s
}

TEST(TextOrder, EverySpellingOfALetterIsEqualToItAndNoneIsMissing) {
    std::map<char32_t, int> equal; // how many letters beyond ASCII fold to this one
    for (char32_t c = 0x80; c <= 0x10FFFF; ++c) {
        if (!QChar::isSurrogate(c)) {
            const char32_t f = QChar::toCaseFolded(c);
            ++equal[f < 0x80 ? c : f];
        }
    }
    for (char32_t c = 0x80; c <= 0x10FFFF; ++c) {
        const char32_t f = QChar::toCaseFolded(c);
        const int expected = QChar::isSurrogate(c) ? 1 : equal[f < 0x80 ? c : f];
        if (expected < 2) {
            continue;
        }
        const QString letter = QString::fromUcs4(&c, 1);
        const auto all = spellings(letter, 10);
        ASSERT_TRUE(all);
        EXPECT_EQ(all->size(), expected) << std::hex << static_cast<std::uint32_t>(c);
        EXPECT_EQ(all->front(), letter);
        for (const QString& spelling : *all) {
            EXPECT_EQ(order(spelling, letter), 0);
        }
    }
}

TEST(TextOrder, ATextHasTheSpellingsOfItsLettersBeyondAscii) {
    EXPECT_EQ(spellings(u"滨江工程.1 Abc"_qs, 1), QStringList{u"滨江工程.1 Abc"_qs});
    EXPECT_EQ(spellings(u"xＡ栋"_qs, 2), (QStringList{u"xＡ栋"_qs, u"xａ栋"_qs}));
    EXPECT_EQ(spellings(u"ÄÖ"_qs, 4)->size(), 4);
    EXPECT_EQ(spellings(u"ÄÖ"_qs, 3), std::nullopt);
    EXPECT_EQ(spellings(QString(), 1), QStringList{QString()});
    EXPECT_EQ(spellings(u"×！"_qs, 1), QStringList{u"×！"_qs});
}

TEST(TextOrder, ATextWithHalfACharacterHasNoListOfSpellings) {
    for (const char16_t half : {u'\xD800', u'\xDFFF'}) {
        EXPECT_EQ(spellings(QString(QChar(half)), 10), std::nullopt);
        EXPECT_EQ(spellings(u"Ä"_qs + QChar(half), 10), std::nullopt);
    }
}

TEST(TextOrder, PositionsCountFromOneWithoutCase) {
    EXPECT_EQ(positionOf(u"T.1.", u"t.1.2"), 1);
    EXPECT_EQ(positionOf(u"乙", u"甲乙"), 2);
    EXPECT_EQ(positionOf(u"丙", u"甲乙"), 0);
    EXPECT_EQ(positionOf(u"", u"甲"), 1);
    EXPECT_EQ(positionOf(u"", u""), 0);
}

TEST(TextPatterns, AStarStandsForAnyCharactersAlsoNone) {
    EXPECT_TRUE(matchesPattern(u"T.1", u"T.1*"));
    EXPECT_TRUE(matchesPattern(u"T.10", u"T.1*"));
    EXPECT_TRUE(matchesPattern(u"T.1.2", u"T.1*"));
    EXPECT_FALSE(matchesPattern(u"T.2", u"T.1*"));
    EXPECT_TRUE(matchesPattern(u"甲乙丙", u"*丙"));
    EXPECT_TRUE(matchesPattern(u"aXbXc", u"a*X*c"));
    EXPECT_FALSE(matchesPattern(u"aXbXd", u"a*X*c"));
    EXPECT_TRUE(matchesPattern(u"", u"*"));
    EXPECT_TRUE(matchesPattern(u"a", u"a**"));
    EXPECT_TRUE(matchesPattern(u"a", u"a*[]*"));
}

TEST(TextPatterns, WhatStandsBehindAStarDoesNotMatchWhatStoodBeforeIt) {
    EXPECT_TRUE(matchesPattern(u"aaab", u"*aa*ab"));
    EXPECT_FALSE(matchesPattern(u"aab", u"*aa*ab"));
}

TEST(TextPatterns, TheWholeTextMustMatch) {
    EXPECT_FALSE(matchesPattern(u"T.1", u"T"));
    EXPECT_FALSE(matchesPattern(u"T", u"T.1"));
    EXPECT_TRUE(matchesPattern(u"", u""));
}

TEST(TextPatterns, LettersMatchWithoutCase) {
    EXPECT_TRUE(matchesPattern(u"Plan.1", u"pLAN*"));
    EXPECT_TRUE(matchesPattern(u"B", u"[a-c]"));
}

TEST(TextPatterns, AQuestionMarkStandsForOneCharacter) {
    EXPECT_TRUE(matchesPattern(u"甲乙", u"甲?"));
    EXPECT_FALSE(matchesPattern(u"甲", u"甲?"));
    EXPECT_FALSE(matchesPattern(u"甲乙丙", u"甲?"));
}

TEST(TextPatterns, ANumberSignStandsForOneDigit) {
    EXPECT_TRUE(matchesPattern(u"T.7", u"T.#"));
    EXPECT_FALSE(matchesPattern(u"T.x", u"T.#"));
    EXPECT_FALSE(matchesPattern(u"T.７", u"T.#"));
    EXPECT_TRUE(matchesPattern(u"0", u"#"));
    EXPECT_TRUE(matchesPattern(u"9", u"#"));
    EXPECT_FALSE(matchesPattern(u"/", u"#"));
    EXPECT_FALSE(matchesPattern(u":", u"#"));
}

TEST(TextPatterns, BracketsStandForOneOfTheirCharacters) {
    EXPECT_TRUE(matchesPattern(u"T.b", u"T.[abc]"));
    EXPECT_TRUE(matchesPattern(u"T.5", u"T.[0-9]"));
    EXPECT_FALSE(matchesPattern(u"T.x", u"T.[0-9]"));
    EXPECT_TRUE(matchesPattern(u"a-", u"a[x-]"));
}

TEST(TextPatterns, BothEndsBelongToARange) {
    EXPECT_TRUE(matchesPattern(u"b", u"[b-d]"));
    EXPECT_TRUE(matchesPattern(u"d", u"[b-d]"));
    EXPECT_FALSE(matchesPattern(u"a", u"[b-d]"));
    EXPECT_FALSE(matchesPattern(u"e", u"[b-d]"));
}

TEST(TextPatterns, AHyphenIsARangeOnlyBetweenTwoCharacters) {
    EXPECT_TRUE(matchesPattern(u"-", u"[-a]"));
    EXPECT_TRUE(matchesPattern(u"a", u"[-a]"));
    EXPECT_TRUE(matchesPattern(u"x", u"[a-cx]"));
    EXPECT_TRUE(matchesPattern(u"x", u"[xa-c]"));
}

TEST(TextPatterns, TheEndOfARangeBeginsNoOther) {
    EXPECT_TRUE(matchesPattern(u"e", u"[a-c-e]"));
    EXPECT_TRUE(matchesPattern(u"-", u"[a-c-e]"));
    EXPECT_FALSE(matchesPattern(u"d", u"[a-c-e]"));
}

TEST(TextPatterns, AnExclamationMarkInBracketsStandsForTheOthers) {
    EXPECT_TRUE(matchesPattern(u"T.x", u"T.[!0-9]"));
    EXPECT_FALSE(matchesPattern(u"T.5", u"T.[!0-9]"));
    EXPECT_TRUE(matchesPattern(u"!", u"[!a]"));
    EXPECT_TRUE(matchesPattern(u"!", u"[a!]"));
}

TEST(TextPatterns, AWildcardInBracketsStandsForItself) {
    EXPECT_TRUE(matchesPattern(u"a*b", u"a[*]b"));
    EXPECT_FALSE(matchesPattern(u"axb", u"a[*]b"));
    EXPECT_TRUE(matchesPattern(u"[", u"[[]"));
}

TEST(TextPatterns, EmptyBracketsStandForNothing) {
    EXPECT_TRUE(matchesPattern(u"ab", u"a[]b"));
    EXPECT_TRUE(matchesPattern(u"ab", u"a[][][]b"));
    EXPECT_TRUE(matchesPattern(u"ab", u"ab[][]"));
}

TEST(TextPatterns, AnOpenBracketIsNoPattern) {
    EXPECT_FALSE(isPattern(u"T.[1*"));
    EXPECT_FALSE(isPattern(u"[1"));
    EXPECT_TRUE(isPattern(u"a[]b"));
    EXPECT_TRUE(isPattern(u"]"));
    EXPECT_TRUE(isPattern(u"T.[1]*"));
    EXPECT_FALSE(isPattern(u"T.[1]["));
    EXPECT_TRUE(isPattern(u"[1][2]"));
    EXPECT_FALSE(matchesPattern(u"T.[1", u"T.[1*"));
}

TEST(TextPatterns, ManyStarsOnALongTextEnd) {
    const QString text(2000, u'a');
    EXPECT_FALSE(matchesPattern(text, u"*a*a*a*a*a*a*b"));
}

} // namespace qvnd::jet
