#include "platform/word/docfile/WordFileBuilder.h"

#include "platform/word/docfile/document/Excerpt.h"
#include "platform/word/docfile/format/Plc.h"
#include "platform/word/docfile/formatting/Sections.h"
#include "platform/word/docfile/reader/DocumentReader.h"
#include "support/ByteText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

// Remarks on what a file has lost say where: with the words that stand there.
namespace qvnd::word {
namespace {

using test::plainWordFile;
using test::WordFile;
using testing::Contains;
using testing::ElementsAre;

Remarks remarksOf(const WordFile& file) { return readDocument(wordFile(file)).unread.remarks; }

TEST(RemarkPlaces, ThePlaceIsToldByTheFirstWordsThere) {
    EXPECT_EQ(wordsFrom(u"\r\u3000 第一章 概况\r第二章\r", 0), u"第一章 概况");
    EXPECT_EQ(wordsFrom(u"第一章\r第二章\r", 4), u"第二章");
    EXPECT_EQ(wordsFrom(u"第一章\r", 4), u"");
    EXPECT_EQ(wordsFrom(u"第一章\r", 400), u"");
    EXPECT_EQ(wordsOfParagraph(u"第一章\r第二章\r", 6), u"第二章");
    EXPECT_EQ(wordsOfParagraph(u"第一章\r", 0), u"第一章");
}

TEST(RemarkPlaces, LongWordsAreCutBetweenCharacters) {
    EXPECT_EQ(wordsFrom(u"一二三四五六七八九十甲乙\r", 0), u"一二三四五六七八九十甲乙");
    EXPECT_EQ(wordsFrom(u"一二三四五六七八九十甲乙丙\r", 0), u"一二三四五六七八九十甲乙…");
    EXPECT_EQ(wordsFrom(u"一二三四五六七八九十甲\U00020000丙\r", 0), u"一二三四五六七八九十甲…");
}

TEST(RemarkPlaces, WithoutWordsThereIsNoPlace) {
    EXPECT_EQ(firstPlace(u""), u"");
    EXPECT_EQ(firstPlace(u"第一章"), u"，第一处在“第一章”");
}

TEST(RemarkPlaces, OfTextWithoutFormattingTheFirstWordsAreNamed) {
    WordFile file = plainWordFile(u"\r第一章 工程概况\r第二章\r");
    file.parts[FibPair::PlcfBteChpx] = {};
    file.parts[FibPair::PlcfBtePapx] = {};
    EXPECT_THAT(remarksOf(file),
                Contains(u"部分文字没有格式记录，按默认格式读出，第一处在“第一章 工程概况”。"));
}

TEST(RemarkPlaces, OfSectionsWithoutTheirPageTheFirstIsNamed) {
    WordFile file = plainWordFile(u"甲\f乙\f丙\r");
    constexpr std::uint32_t nowhere = 0x7FFFFFF;
    file.parts[FibPair::PlcfSed] =
        encodeSections(std::vector<SectionPlace>{{2, std::nullopt}, {2, nowhere}, {2, nowhere}});
    EXPECT_THAT(remarksOf(file),
                ElementsAre(u"有 2 节的页面设置已损坏，改用默认的纸张和页边距，第一处在“乙”。"));
}

TEST(RemarkPlaces, OfNotesWithoutTextTheParagraphOfTheFirstIsNamed) {
    WordFile file = plainWordFile(u"甲\r见注\u0002处\r");
    file.parts[FibPair::PlcffndRef] = encodePlc({4, 7}, test::hex("0100"));
    EXPECT_THAT(remarksOf(file),
                Contains(u"有 1 个脚注、尾注或批注已损坏，未能读出，第一处在“见注”。"));
}

TEST(RemarkPlaces, WordsAreNotCutWithinACharacterOfTwoUnits) {
    const auto lengthWith = [](char16_t twelfth) {
        const std::u16string text = std::u16string(11, u'a') + twelfth + u"bb";
        return wordsFrom(text, 0).size() - 1; // the dots behind them
    };
    EXPECT_EQ(lengthWith(u'a'), 12U);
    EXPECT_EQ(lengthWith(0xD7FF), 12U);
    EXPECT_EQ(lengthWith(0xD800), 11U);
    EXPECT_EQ(lengthWith(0xDBFF), 11U);
    EXPECT_EQ(lengthWith(0xDC00), 12U);
    EXPECT_EQ(wordsFrom(std::u16string(12, u'a'), 0), std::u16string(12, u'a'));
}

} // namespace
} // namespace qvnd::word
