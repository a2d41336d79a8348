#include "platform/jet/Value.h"
#include "support/JetStore.h"

#include <limits>

namespace qvnd::jet {

using test::errorOf;

TEST(Values, AreNullUntilTheyHoldSomething) {
    EXPECT_TRUE(Value().IsNull());
    EXPECT_FALSE(Value(u""_qs).IsNull());
    EXPECT_EQ(Value().TextOrEmpty(), u""_qs);
}

TEST(Values, NullAsTextNumberOrDateIs94) {
    EXPECT_EQ(errorOf([] { (void)Value().ToText(); }), 94);
    EXPECT_EQ(errorOf([] { (void)Value().ToLong(); }), 94);
    EXPECT_EQ(errorOf([] { (void)Value().ToSingle(); }), 94);
    EXPECT_EQ(errorOf([] { (void)Value().ToDate(); }), 94);
}

TEST(Values, ATextThatIsNoNumberIs13) {
    for (const QString& text :
         {u"小四"_qs, u""_qs,     u"1 2"_qs,  u"1.2.3"_qs, u"-"_qs,   u"1e"_qs,
          u"."_qs,    u"12pt"_qs, u"&H"_qs,   u"&HXY"_qs,  u"nan"_qs, u"inf"_qs,
          u",5"_qs,   u"5,"_qs,   u",5.5"_qs, u"5,,5"_qs,  u"e5"_qs,  u".e5"_qs,
          u"1e+"_qs,  u"1e5x"_qs, u"&H-1"_qs, u"&H+1"_qs}) {
        EXPECT_EQ(errorOf([&] { (void)Value(text).ToDouble(); }), 13) << text.toStdString();
    }
}

TEST(Values, ATextSpellsItsNumber) {
    EXPECT_EQ(Value(u" 12 "_qs).ToDouble(), 12);
    EXPECT_EQ(Value(u"-0.5"_qs).ToDouble(), -0.5);
    EXPECT_EQ(Value(u"-12"_qs).ToDouble(), -12);
    EXPECT_EQ(Value(u"+3,000"_qs).ToDouble(), 3000);
    EXPECT_EQ(Value(u"+.5"_qs).ToDouble(), 0.5);
    EXPECT_EQ(Value(u"5."_qs).ToDouble(), 5);
    EXPECT_EQ(Value(u"1,234.5"_qs).ToDouble(), 1234.5);
    EXPECT_EQ(Value(u"1e3"_qs).ToDouble(), 1000);
    EXPECT_EQ(Value(u"1E+3"_qs).ToDouble(), 1000);
    EXPECT_EQ(Value(u"2d+2"_qs).ToDouble(), 200);
    EXPECT_EQ(Value(u"1D-2"_qs).ToDouble(), 0.01);
    EXPECT_EQ(Value(u"&H1F"_qs).ToDouble(), 31);
    EXPECT_EQ(Value(u"&hF"_qs).ToDouble(), 15);
}

TEST(Values, ANumberMayHaveACommaBeforeEachGroupOfItsDigits) {
    EXPECT_EQ(Value(u"1,2"_qs).ToDouble(), 12);
    EXPECT_EQ(Value(u"1,234,567"_qs).ToDouble(), 1234567);
    EXPECT_EQ(Value(u"1,234,567,890.25"_qs).ToDouble(), 1234567890.25);
}

TEST(Values, AFractionIsRoundedAndAHalfToTheEvenNeighbour) {
    EXPECT_EQ(Value(10.4).ToLong(), 10);
    EXPECT_EQ(Value(10.6).ToLong(), 11);
    EXPECT_EQ(Value(0.5).ToLong(), 0);
    EXPECT_EQ(Value(1.5).ToLong(), 2);
    EXPECT_EQ(Value(-2.5).ToLong(), -2);
}

TEST(Values, ANumberTooWideIs6) {
    EXPECT_EQ(Value(32767).ToInteger(), 32767);
    EXPECT_EQ(errorOf([] { (void)Value(32768).ToInteger(); }), 6);
    EXPECT_EQ(errorOf([] { (void)Value(-32769).ToInteger(); }), 6);
    EXPECT_EQ(errorOf([] { (void)Value(2147483648.0).ToLong(); }), 6);
    EXPECT_EQ(errorOf([] { (void)Value(1e39).ToSingle(); }), 6);
    constexpr float widest = std::numeric_limits<float>::max();
    EXPECT_EQ(Value(double{widest}).ToSingle(), widest);
    EXPECT_EQ(errorOf([] { (void)Value(u"1e400"_qs).ToDouble(); }), 6);
}

TEST(Values, TheWidestWholeNumbersArePartOfTheirTypes) {
    EXPECT_EQ(Value(32767.4).ToInteger(), 32767);
    EXPECT_EQ(errorOf([] { (void)Value(32767.5).ToInteger(); }), 6);
    EXPECT_EQ(Value(-32768.5).ToInteger(), -32768);
    EXPECT_EQ(Value(2147483647.0).ToLong(), 2147483647);
    EXPECT_EQ(Value(-2147483648.0).ToLong(), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(errorOf([] { (void)Value(-2147483649.0).ToLong(); }), 6);
}

TEST(Values, ANumberTooSmallIsZero) { EXPECT_EQ(Value(u"1e-400"_qs).ToDouble(), 0); }

TEST(Values, NumbersAreTextInPlainDecimal) {
    EXPECT_EQ(Value(3).ToText(), u"3"_qs);
    EXPECT_EQ(Value(1.5F).ToText(), u"1.5"_qs);
    EXPECT_EQ(Value(0.1F).ToText(), u"0.1"_qs);
    EXPECT_EQ(Value(0.1).ToText(), u"0.1"_qs);
}

TEST(Values, DatesAreTextInTheShortFormWithTheTimeIfThereIsOne) {
    EXPECT_EQ(Value(QDate(2001, 8, 31)).ToText(), u"2001-8-31"_qs);
    EXPECT_EQ(Value(QDateTime(QDate(2001, 8, 31), QTime(7, 5, 9))).ToText(),
              u"2001-8-31 7:05:09"_qs);
}

TEST(Values, ATextSpellsItsDate) {
    const QDateTime day = QDate(2001, 8, 31).startOfDay();
    for (const QString& text : {u"2001-8-31"_qs, u"2001/08/31"_qs, u"2001.8.31"_qs,
                                u"2001年8月31日"_qs, u" 2001-08-31 0:00 "_qs}) {
        EXPECT_EQ(Value(text).ToDate(), day) << text.toStdString();
    }
    EXPECT_EQ(Value(u"2001-8-31 7:05:09"_qs).ToDate(),
              QDateTime(QDate(2001, 8, 31), QTime(7, 5, 9)));
}

TEST(Values, ATextThatIsNoDateIs13) {
    for (const QString& text :
         {u"2001-13-1"_qs, u"2001-2-29"_qs, u"今天"_qs, u""_qs, u"2001-8-31 25:00"_qs}) {
        EXPECT_EQ(errorOf([&] { (void)Value(text).ToDate(); }), 13) << text.toStdString();
    }
}

TEST(Values, ADateIsTheNumberOfItsDaysSinceTheEndOf1899) {
    EXPECT_EQ(Value(QDate(1900, 1, 1)).ToDouble(), 2);
    EXPECT_EQ(Value(QDateTime(QDate(1899, 12, 31), QTime(12, 0))).ToDouble(), 1.5);
    EXPECT_EQ(Value(1.5).ToDate(), QDateTime(QDate(1899, 12, 31), QTime(12, 0)));
    EXPECT_EQ(Value(QDateTime(QDate(1899, 12, 30), QTime(6, 0))).ToDouble(), 0.25);
    EXPECT_EQ(Value(QDateTime(QDate(1899, 12, 29), QTime(6, 0))).ToDouble(), -1.25);
    EXPECT_EQ(Value(-1.25).ToDate(), QDateTime(QDate(1899, 12, 29), QTime(6, 0)));
    EXPECT_EQ(errorOf([] { (void)Value(1e9).ToDate(); }), 6);
}

TEST(Values, TheDatesOfNumbersReachFromTheYear100ToTheYear9999) {
    EXPECT_EQ(Value(-657434.0).ToDate().date(), QDate(100, 1, 1));
    EXPECT_EQ(Value(-657434.5).ToDate(), QDateTime(QDate(100, 1, 1), QTime(12, 0)));
    EXPECT_EQ(errorOf([] { (void)Value(-657435.0).ToDate(); }), 6);
    EXPECT_EQ(Value(2958465.5).ToDate(), QDateTime(QDate(9999, 12, 31), QTime(12, 0)));
    EXPECT_EQ(errorOf([] { (void)Value(2958466.0).ToDate(); }), 6);
}

TEST(Values, ADateIsGivenBackAsItWasToTheMillisecond) {
    const QDateTime moment(QDate(2024, 2, 29), QTime(23, 59, 58, 123));
    EXPECT_EQ(Value(moment).ToDate(), moment);
}

TEST(Values, AFractionThatRoundsToAWholeDayIsTheNextMidnight) {
    EXPECT_EQ(Value(1.9999999).ToDate(), QDate(1900, 1, 1).startOfDay());
    EXPECT_EQ(Value(QDateTime(QDate(1899, 12, 31), QTime(23, 59, 59))).ToDate().time(),
              QTime(23, 59, 59));
}

} // namespace qvnd::jet
