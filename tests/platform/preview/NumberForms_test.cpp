#include "platform/preview/NumberForms.h"

#include "platform/preview/Symbols.h"

#include <gtest/gtest.h>

namespace qvnd::preview {
namespace {

TEST(NumberForms, CountAsTheirNamesSay) {
    EXPECT_EQ(numberInForm(12, 0), "12");
    EXPECT_EQ(numberInForm(14, 1), "XIV");
    EXPECT_EQ(numberInForm(14, 2), "xiv");
    EXPECT_EQ(numberInForm(28, 3), "BB");
    EXPECT_EQ(numberInForm(26, 4), "z");
    EXPECT_EQ(numberInForm(22, 5), "22nd");
    EXPECT_EQ(numberInForm(11, 5), "11th");
    EXPECT_EQ(numberInForm(5, 22), "05");
    EXPECT_EQ(numberInForm(3, 18), "③");
    EXPECT_EQ(numberInForm(21, 18), "21");
    EXPECT_EQ(numberInForm(4, 30), "丁");
}

TEST(NumberForms, ChineseNumbersAreCountedAsOneSpeaks) {
    EXPECT_EQ(numberInForm(10, 39), "十");
    EXPECT_EQ(numberInForm(12, 37), "十二");
    EXPECT_EQ(numberInForm(20, 39), "二十");
    EXPECT_EQ(numberInForm(105, 39), "一百零五");
    EXPECT_EQ(numberInForm(1010, 39), "一千零一十");
    EXPECT_EQ(numberInForm(12, 38), "壹拾贰");
    EXPECT_EQ(numberInForm(102, 10), "一〇二");
}

TEST(NumberForms, NumbersOutsideAFormDoNoHarm) {
    for (unsigned form = 0; form < 64; ++form) {
        for (const int number : {-2147483647 - 1, -1, 0, 40000, 2147483647}) {
            EXPECT_LT(numberInForm(number, form).size(), 40) << form << " " << number;
        }
    }
}

TEST(Symbols, BulletsOfSymbolFontsBecomeCharactersThatOtherFontsHave) {
    EXPECT_EQ(symbolAsText(0xF0B7, "Symbol"), QChar(u'•'));
    EXPECT_EQ(symbolAsText(0xF06C, "Wingdings"), QChar(u'●'));
    EXPECT_EQ(symbolAsText(0x61, "Symbol"), QChar(u'α'));
    EXPECT_EQ(symbolAsText(0x61, "宋体"), QChar(u'a'));
    EXPECT_EQ(symbolAsText(0xF0FA, "Wingdings"), QChar(u'•'));
}

} // namespace
} // namespace qvnd::preview
