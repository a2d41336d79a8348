#include "generate/numbering/HeadingNumber.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

using namespace qvnd::generate;

namespace {

struct HeadingNumber : testing::Test {
    qvnd::FormatSwitches switches;
    ChapterGrid grid;
    QString text = u"前一个"_s;

    HeadingNumber() {
        for (int row = 1; row <= ChapterGrid::lastRow; ++row) {
            grid.set(row, ChapterColumn::前缀, u"第"_s);
            grid.set(row, ChapterColumn::中缀, u"一"_s);
            grid.set(row, ChapterColumn::后缀, u"章"_s);
            grid.set(row, ChapterColumn::带该级标题, u"是"_s);
        }
    }
    const QString& heading(int level, const QString& number) {
        setHeadingNumberText(text, switches, grid, level, number);
        return text;
    }
    const QString& multi(int mode, int level, const QString& number) {
        switches.gMultLevelOn = true;
        switches.gMultLevelMode = mode;
        return heading(level, number);
    }
};

} // namespace

TEST_F(HeadingNumber, PlainWithTheLevelsTitleTakesPrefixAndSuffix) {
    EXPECT_EQ(heading(1, u"一"_s), u"第一章"_s);
}

TEST_F(HeadingNumber, PlainWithoutTheLevelsTitleIsTheBareNumber) {
    grid.set(1, ChapterColumn::带该级标题, u"否"_s);
    EXPECT_EQ(heading(1, u"一"_s), u"一"_s);
    grid.set(1, ChapterColumn::带该级标题, QString());
    EXPECT_EQ(heading(1, u"二"_s), u"二"_s);
    grid.set(1, ChapterColumn::带该级标题, u" 是"_s);
    EXPECT_EQ(heading(1, u"三"_s), u"三"_s);
}

TEST_F(HeadingNumber, MultiLevelModeZeroKeepsTheAffixes) {
    EXPECT_EQ(multi(0, 2, u"2.1"_s), u"第2.1章"_s);
}

TEST_F(HeadingNumber, MultiLevelIgnoresTheLevelsTitleFlag) {
    grid.set(2, ChapterColumn::带该级标题, u"否"_s);
    EXPECT_EQ(multi(0, 2, u"2.1"_s), u"第2.1章"_s);
}

TEST_F(HeadingNumber, MultiLevelModeOneIsTheBareNumber) {
    EXPECT_EQ(multi(1, 2, u"2.1"_s), u"2.1"_s);
}

TEST_F(HeadingNumber, MultiLevelModeTwoSplitsItsTextBehindTheFirstCharacterAtLevelOne) {
    switches.gMultLevelText = u"第章节"_s;
    EXPECT_EQ(multi(2, 1, u"2"_s), u"第2章节"_s);
}

TEST_F(HeadingNumber, MultiLevelModeTwoWithoutATextIsTheBareNumber) {
    EXPECT_EQ(multi(2, 1, u"2"_s), u"2"_s);
}

TEST_F(HeadingNumber, MultiLevelModeTwoIsTheBareNumberAtOtherLevels) {
    switches.gMultLevelText = u"第章"_s;
    EXPECT_EQ(multi(2, 2, u"2.1"_s), u"2.1"_s);
}

TEST_F(HeadingNumber, AnUnknownMultiLevelModeKeepsThePreviousNodesText) {
    EXPECT_EQ(multi(3, 1, u"5"_s), u"前一个"_s);
}
