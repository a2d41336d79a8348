#include "platform/word/formatting/DateForms.h"

#include <gtest/gtest.h>

namespace qvnd::word {
namespace {

constexpr Moment sunday{2026, 11, 22, 15, 4, 9};

std::u16string shown(const std::u16string& picture, const Moment& moment = sunday) {
    return dateShown(u" DATE \\@ \"" + picture + u"\" \\* MERGEFORMAT ", moment).value_or(u"-");
}

TEST(DateForms, EachLetterStandsForAPartOfTheTime) {
    EXPECT_EQ(shown(u"yyyy-MM-dd"), u"2026-11-22");
    EXPECT_EQ(shown(u"M/d/yy", {2006, 2, 9, 0, 0, 0}), u"2/9/06");
    EXPECT_EQ(shown(u"yyyy年M月d日"), u"2026年11月22日");
    EXPECT_EQ(shown(u"HH:mm:ss"), u"15:04:09");
    EXPECT_EQ(shown(u"H时m分"), u"15时4分");
    EXPECT_EQ(shown(u"h:mm AM/PM"), u"3:04 PM");
    EXPECT_EQ(shown(u"h:mm am/pm", {2026, 1, 1, 0, 30, 0}), u"12:30 AM");
}

TEST(DateForms, ChineseFormsAreWrittenInCharacters) {
    EXPECT_EQ(shown(u"EEEE年O月A日"), u"二〇二六年十一月二十二日");
    EXPECT_EQ(shown(u"EEEE'年'O'月'A'日'", {2010, 10, 30, 0, 0, 0}), u"二〇一〇年十月三十日");
    EXPECT_EQ(shown(u"O月A日", {2026, 1, 9, 0, 0, 0}), u"一月九日");
    EXPECT_EQ(shown(u"O月A日", {2026, 12, 20, 0, 0, 0}), u"十二月二十日");
    EXPECT_EQ(shown(u"aaaa"), u"星期日");
    EXPECT_EQ(shown(u"aaaa", {2024, 2, 29, 0, 0, 0}), u"星期四");
    EXPECT_EQ(shown(u"aaaa", {2024, 3, 1, 0, 0, 0}), u"星期五");
}

TEST(DateForms, WhatOnlyALanguageTellsIsLeftToTheStoredResult) {
    EXPECT_FALSE(dateShown(u"DATE \\@ \"MMMM d\"", sunday));
    EXPECT_FALSE(dateShown(u"DATE \\@ \"dddd\"", sunday));
    EXPECT_FALSE(dateShown(u"DATE \\@ jj/MM/aa", sunday));
    EXPECT_FALSE(dateShown(u"DATE \\* MERGEFORMAT", sunday));
    EXPECT_FALSE(dateShown(u"DATE \\@", sunday));
    EXPECT_FALSE(dateShown(u"DATE \\@ \"", sunday));
}

TEST(DateForms, APictureWithoutQuotationMarksEndsAtABlank) {
    EXPECT_EQ(dateShown(u"DATE \\@ yyyy/M/d \\* MERGEFORMAT", sunday), u"2026/11/22");
    EXPECT_EQ(shown(u"'第'd"), u"第22");
    EXPECT_EQ(shown(u"d'日"), u"22日") << "an open quotation";
}

} // namespace
} // namespace qvnd::word
