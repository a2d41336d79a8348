#include "platform/word/formatting/DateForms.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <utility>

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

TEST(DateForms, TheHoursOfADayAreTwiceTwelve) {
    const auto at = [](int hour) { return shown(u"h AM/PM", {2026, 1, 1, hour, 0, 0}); };
    EXPECT_EQ(at(0), u"12 AM");
    EXPECT_EQ(at(1), u"1 AM");
    EXPECT_EQ(at(11), u"11 AM");
    EXPECT_EQ(at(12), u"12 PM");
    EXPECT_EQ(at(13), u"1 PM");
    EXPECT_EQ(at(23), u"11 PM");
}

TEST(DateForms, TwoLettersAreShortAndMoreAreLong) {
    const Moment early{2006, 2, 9, 8, 7, 6};
    EXPECT_EQ(shown(u"y|yy|yyy|YY|YYYY", early), u"06|06|2006|06|2006");
    EXPECT_EQ(shown(u"M|MM|d|dd|D|DD", early), u"2|02|9|09|9|09");
    EXPECT_EQ(shown(u"H|HH|h|hh|m|mm|s|ss|S", early), u"8|08|8|08|7|07|6|06|6");
    EXPECT_EQ(shown(u"aaa", early), u"星期四");
    EXPECT_EQ(shown(u"aa", early), u"-");
    EXPECT_EQ(shown(u"DDD", early), u"-");
}

TEST(DateForms, ChineseDaysCountInTens) {
    const auto day = [](int number) { return shown(u"A", {2026, 1, number, 0, 0, 0}); };
    EXPECT_EQ(day(10), u"十");
    EXPECT_EQ(day(11), u"十一");
    EXPECT_EQ(day(19), u"十九");
    EXPECT_EQ(day(20), u"二十");
    EXPECT_EQ(day(31), u"三十一");
}

TEST(DateForms, WeekdaysAreThoseOfTheCalendar) {
    const auto weekday = [](int year, int month, int day) {
        return shown(u"aaaa", {year, month, day, 0, 0, 0});
    };
    EXPECT_EQ(weekday(2000, 1, 1), u"星期六");
    EXPECT_EQ(weekday(2023, 1, 1), u"星期日");
    EXPECT_EQ(weekday(2000, 2, 29), u"星期二");
    EXPECT_EQ(weekday(1900, 3, 1), u"星期四") << "no leap year";
    EXPECT_EQ(weekday(2100, 12, 31), u"星期五");
    for (const auto& [month, name] : std::initializer_list<std::pair<int, const char16_t*>>{
             {4, u"三"}, {5, u"五"}, {6, u"一"}, {7, u"三"}, {8, u"六"}, {9, u"二"}, {10, u"四"}}) {
        EXPECT_EQ(weekday(2026, month, 1), std::u16string(u"星期") + name) << month;
    }
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

TEST(DateForms, EveryLetterStandsForSomethingAndNoOtherSignDoes) {
    for (const char16_t letter : {u'z', u'Z', u'b', u'B'}) {
        EXPECT_EQ(shown(std::u16string(1, letter)), u"-") << "which is not known";
    }
    EXPECT_EQ(shown(u"@d[d`d{d"), u"@22[22`22{22");
}

} // namespace
} // namespace qvnd::word
