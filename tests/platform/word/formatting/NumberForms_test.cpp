#include "platform/word/formatting/NumberForms.h"

#include "platform/word/formatting/Symbols.h"

#include <gtest/gtest.h>

#include <utility>

namespace qvnd::word {
namespace {

TEST(NumberForms, NumbersAreWrittenAsTheFormsNamesSay) {
    struct Written {
        int number;
        unsigned form;
        std::u16string_view text;
    };
    for (const auto& [number, form, text] : std::initializer_list<Written>{
             {12, 0, u"12"},
             {14, 1, u"XIV"},
             {14, 2, u"xiv"},
             {28, 3, u"BB"},
             {26, 4, u"z"},
             {22, 5, u"22nd"},
             {11, 5, u"11th"},
             {9, 22, u"09"},
             {10, 22, u"10"},
             {3, 18, u"③"},
             {21, 18, u"21"},
             {4, 30, u"丁"},
             // Chinese numbers are counted as one speaks.
             {10, 39, u"十"},
             {12, 37, u"十二"},
             {20, 39, u"二十"},
             {105, 39, u"一百零五"},
             {1010, 39, u"一千零一十"},
             {12, 38, u"壹拾贰"},
             {102, 10, u"一〇二"},
         }) {
        EXPECT_EQ(numberInForm(number, form), text) << number << " in form " << form;
    }
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

TEST(Symbols, FontsOfSymbolsAreKnownByTheirNames) {
    for (const char16_t* font : {u"Wingdings", u"wingdings 3", u"SYMBOL", u"Webdings"}) {
        EXPECT_TRUE(isSymbolFont(font));
    }
    for (const char16_t* font : {u"宋体", u"Symbola", u"Arial", u""}) {
        EXPECT_FALSE(isSymbolFont(font));
    }
}

TEST(Symbols, TheirPrivateCodesAre256AndThoseBehindThemAreCharacters) {
    EXPECT_EQ(symbolAsText(0xF000, u"宋体"), u'•');
    EXPECT_EQ(symbolAsText(0xF061, u"宋体"), u'α');
    EXPECT_EQ(symbolAsText(0xF0FE, u"宋体"), u'⎭');
    for (const char16_t code : {u'\uEFFF', u'\uF100', u'\u0100', u'工'}) {
        EXPECT_EQ(symbolAsText(code, u"Symbol"), code) << int{code};
    }
    EXPECT_EQ(symbolAsText(0xFF, u"宋体"), u'\u00FF');
    EXPECT_EQ(symbolAsText(0xF020, u"Wingdings"), u' ');
}

TEST(Symbols, EveryCodeOfTheFontSymbolHasItsCharacter) {
    const std::pair<char16_t, char16_t> characters[] = {{0x20, u' '}, {0x2D, u'−'},   {0x40, u'≅'},
                                                        {0x5A, u'Ζ'}, {0x7E, u'∼'},   {0xA0, u'€'},
                                                        {0xCE, u'∈'}, {0xF0DE, u'⇒'}, {0xFE, u'⎭'}};
    for (const auto& [code, character] : characters) {
        EXPECT_EQ(symbolAsText(code, u"Symbol"), character) << int{code};
    }
    EXPECT_EQ(symbolAsText(0xFF, u"Symbol"), u'•') << "of none of them";
    EXPECT_EQ(symbolAsText(0x7F, u"Symbol"), u'•');
}

TEST(NumberForms, AFieldAsksForAFormByItsSwitch) {
    EXPECT_EQ(numberFormOf(u" PAGE "), std::nullopt);
    EXPECT_EQ(numberFormOf(u" PAGE \\* MERGEFORMAT "), std::nullopt);
    EXPECT_EQ(numberFormOf(u" PAGE \\* Roman \\* MERGEFORMAT"), 1U);
    EXPECT_EQ(numberFormOf(u" PAGE \\*roman"), 2U);
    EXPECT_EQ(numberFormOf(u" PAGE \\* ALPHABETIC"), 3U);
    EXPECT_EQ(numberFormOf(u" PAGE \\* alphabetic"), 4U);
    EXPECT_EQ(numberFormOf(u" PAGE \\* MERGEFORMAT \\* ChineseNum2"), 38U);
    EXPECT_EQ(numberFormOf(u"PAGE \\*"), std::nullopt);
}

} // namespace
} // namespace qvnd::word
