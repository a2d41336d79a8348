#include "generate/numbering/NumberText.h"

#include <gtest/gtest.h>

#include <QStringList>

using namespace Qt::StringLiterals;

using namespace qvnd::generate;

namespace {

NumberWords twentyWords() {
    static const QStringList words =
        QStringLiteral(
            "一 二 三 四 五 六 七 八 九 十 十一 十二 十三 十四 十五 十六 十七 十八 十九 二十")
            .split(' ');
    NumberWords result;
    for (int n = 1; n <= NumberWords::last; ++n)
        result.set(n, words.at(n - 1));
    return result;
}

struct LevelNumber : testing::Test {
    NumberWords words = twentyWords();
    ChapterGrid grid;
    LevelCounters counters;

    QString plain(const QString& style, int counter, int level = 1) {
        for (int row = 1; row <= ChapterGrid::lastRow; ++row)
            grid.set(row, ChapterColumn::序号标志, style);
        return FormatLevelNumber({false, counters, grid, words}, level, counter);
    }
    QString multi(int level) { return FormatLevelNumber({true, counters, grid, words}, level, 0); }
};

} // namespace

TEST_F(LevelNumber, ChineseUpToTwentyIsTheTablesOwnWord) {
    words.set(10, u"拾"_s);
    words.set(20, u"贰拾"_s);
    EXPECT_EQ(plain(u"一型"_s, 1), u"一"_s);
    EXPECT_EQ(plain(u"一型"_s, 10), u"拾"_s);
    EXPECT_EQ(plain(u"一型"_s, 20), u"贰拾"_s);
}

TEST_F(LevelNumber, ChineseBeyondTwentyIsComposedOfFirstDigitAndUnits) {
    EXPECT_EQ(plain(u"一型"_s, 21), u"二十一"_s);
    EXPECT_EQ(plain(u"一型"_s, 30), u"三十"_s);
    EXPECT_EQ(plain(u"一型"_s, 99), u"九十九"_s);
}

TEST_F(LevelNumber, ChineseHasNoHundreds) {
    EXPECT_EQ(plain(u"一型"_s, 123), u"一十三"_s);
    EXPECT_EQ(plain(u"一型"_s, 200), u"二十"_s);
}

TEST_F(LevelNumber, ChineseWithAShortTableIsEmptyForTheMissingRows) {
    NumberWords three;
    three.set(1, u"一"_s);
    words = three;
    EXPECT_EQ(plain(u"一型"_s, 1), u"一"_s);
    EXPECT_EQ(plain(u"一型"_s, 2), QString());
}

TEST_F(LevelNumber, TheStyleNamedForRomanFiguresGivesDecimal) {
    EXPECT_EQ(plain(u"I型"_s, 4), u"4"_s);
    EXPECT_EQ(plain(u"I型"_s, 123), u"123"_s);
}

TEST_F(LevelNumber, CapitalLettersRunOnBeyondTheAlphabet) {
    EXPECT_EQ(plain(u"A型"_s, 1), u"A"_s);
    EXPECT_EQ(plain(u"A型"_s, 26), u"Z"_s);
    EXPECT_EQ(plain(u"A型"_s, 27), u"["_s);
}

TEST_F(LevelNumber, SmallLettersRunOnBeyondTheAlphabet) {
    EXPECT_EQ(plain(u"aa型"_s, 1), u"a"_s);
    EXPECT_EQ(plain(u"aa型"_s, 27), u"{"_s);
}

TEST_F(LevelNumber, AnyOtherStyleIsDecimal) {
    EXPECT_EQ(plain(u"a型"_s, 3), u"3"_s);
    EXPECT_EQ(plain(QString(), 30), u"30"_s);
}

TEST_F(LevelNumber, LevelsBelowNineTakeTheStyleOfRowNine) {
    grid.set(9, ChapterColumn::序号标志, u"A型"_s);
    EXPECT_EQ(FormatLevelNumber({false, counters, grid, words}, 9, 2), u"B"_s);
    EXPECT_EQ(FormatLevelNumber({false, counters, grid, words}, 12, 3), u"C"_s);
}

TEST_F(LevelNumber, MultiLevelJoinsTheCountersAndIgnoresTheStyles) {
    plain(u"一型"_s, 1);
    counters.advance(1);
    counters.advance(1);
    counters.advance(2);
    for (int i = 0; i < 4; ++i)
        counters.advance(3);
    EXPECT_EQ(multi(1), u"2"_s);
    EXPECT_EQ(multi(3), u"2.1.4"_s);
    EXPECT_EQ(multi(4), u"2.1.4.0"_s);
}

TEST_F(LevelNumber, MultiLevelOfLevelZeroIsEmpty) { EXPECT_EQ(multi(0), QString()); }

TEST_F(LevelNumber, MultiLevelIsNotLimitedToNine) {
    for (int level = 1; level <= 11; ++level)
        counters.advance(level);
    EXPECT_EQ(multi(11), u"1.1.1.1.1.1.1.1.1.1.1"_s);
}

TEST_F(LevelNumber, AFaultGivesTheTextMadeUntilThen) {
    const QString upToThirty = multi(30);
    EXPECT_EQ(multi(31), upToThirty);
    EXPECT_EQ(upToThirty.count(u'.'), 29);
}
