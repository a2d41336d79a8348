#include "generate/numbering/NumberText.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

using qvnd::generate::FormatChildNumber;

namespace {

QString child(int number, const char16_t* style) {
    return FormatChildNumber(QString::number(number), QString::fromUtf16(style));
}

} // namespace

TEST(ChildNumber, StyleNoneIsEmpty) { EXPECT_EQ(child(3, u"无"), QString()); }

TEST(ChildNumber, DecimalStylesKeepTheirPunctuation) {
    EXPECT_EQ(child(3, u"1、"), u"3、"_s);
    EXPECT_EQ(child(12, u"1."), u"12."_s);
    EXPECT_EQ(child(3, u"1)"), u"3)"_s);
}

TEST(ChildNumber, LetterStylesKeepTheirPunctuation) {
    EXPECT_EQ(child(3, u"A."), u"C."_s);
    EXPECT_EQ(child(3, u"A)"), u"C)"_s);
    EXPECT_EQ(child(3, u"a)"), u"c)"_s);
}

TEST(ChildNumber, LetterStylesRunOnBeyondTheAlphabet) {
    EXPECT_EQ(child(27, u"A."), u"[."_s);
    EXPECT_EQ(child(27, u"a)"), u"{)"_s);
}

TEST(ChildNumber, RomanUpToTen) {
    const char16_t* expected[] = {u"I.",  u"II.",  u"III.",  u"IV.", u"V.",
                                  u"VI.", u"VII.", u"VIII.", u"IX.", u"X."};
    for (int n = 1; n <= 10; ++n)
        EXPECT_EQ(child(n, u"I."), QString::fromUtf16(expected[n - 1]));
}

TEST(ChildNumber, RomanFromElevenOnIsAlwaysTen) {
    EXPECT_EQ(child(11, u"I."), u"X."_s);
    EXPECT_EQ(child(25, u"I."), u"X."_s);
    EXPECT_EQ(child(120, u"I."), u"X."_s);
}

TEST(ChildNumber, NothingPickedGivesTheBareNumber) {
    EXPECT_EQ(child(7, u""), u"7"_s);
    EXPECT_EQ(child(7, u"(1)"), u"7"_s);
}
