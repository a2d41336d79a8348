#include "platform/word/formatting/NumberForms.h"

#include "platform/word/formatting/Symbols.h"

#include <gtest/gtest.h>

namespace qvnd::word {
namespace {

TEST(NumberForms, CountAsTheirNamesSay) {
    EXPECT_EQ(numberInForm(12, 0), u"12");
    EXPECT_EQ(numberInForm(14, 1), u"XIV");
    EXPECT_EQ(numberInForm(14, 2), u"xiv");
    EXPECT_EQ(numberInForm(28, 3), u"BB");
    EXPECT_EQ(numberInForm(26, 4), u"z");
    EXPECT_EQ(numberInForm(22, 5), u"22nd");
    EXPECT_EQ(numberInForm(11, 5), u"11th");
    EXPECT_EQ(numberInForm(5, 22), u"05");
    EXPECT_EQ(numberInForm(3, 18), u"③");
    EXPECT_EQ(numberInForm(21, 18), u"21");
    EXPECT_EQ(numberInForm(4, 30), u"丁");
}

TEST(NumberForms, ChineseNumbersAreCountedAsOneSpeaks) {
    EXPECT_EQ(numberInForm(10, 39), u"十");
    EXPECT_EQ(numberInForm(12, 37), u"十二");
    EXPECT_EQ(numberInForm(20, 39), u"二十");
    EXPECT_EQ(numberInForm(105, 39), u"一百零五");
    EXPECT_EQ(numberInForm(1010, 39), u"一千零一十");
    EXPECT_EQ(numberInForm(12, 38), u"壹拾贰");
    EXPECT_EQ(numberInForm(102, 10), u"一〇二");
}

TEST(NumberForms, NumbersOutsideAFormDoNoHarm) {
    for (unsigned form = 0; form < 64; ++form) {
        for (const int number : {-2147483647 - 1, -1, 0, 40000, 2147483647}) {
            EXPECT_LT(numberInForm(number, form).size(), 40U) << form << " " << number;
        }
    }
}

TEST(Symbols, BulletsOfSymbolFontsBecomeCharactersThatOtherFontsHave) {
    EXPECT_EQ(symbolAsText(0xF0B7, u"Symbol"), u'•');
    EXPECT_EQ(symbolAsText(0xF06C, u"Wingdings"), u'●');
    EXPECT_EQ(symbolAsText(0x61, u"Symbol"), u'α');
    EXPECT_EQ(symbolAsText(0x61, u"宋体"), u'a');
    EXPECT_EQ(symbolAsText(0xF0FA, u"Wingdings"), u'•');
}

} // namespace
} // namespace qvnd::word
