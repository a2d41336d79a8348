#include "platform/word/formatting/NumberForms.h"

#include "platform/word/formatting/Symbols.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <string_view>
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

TEST(NumberForms, EachFormEndsWithItsLastNumber) {
    const auto expectForm = [](unsigned form, int number, std::u16string_view text) {
        EXPECT_EQ(numberInForm(number, form), text) << number << " in form " << form;
    };
    expectForm(2, 3888, u"mmmdccclxxxviii");
    expectForm(2, 1944, u"mcmxliv");
    expectForm(2, 2499, u"mmcdxcix");
    EXPECT_EQ(numberInForm(32767, 2).size(), 32U + 8) << "dcclxvii behind the thousands";
    expectForm(2, 32768, u"");
    expectForm(4, 0, u"");
    expectForm(4, 1, u"a");
    expectForm(4, 27, u"aa");
    expectForm(4, 52, u"zz");
    expectForm(4, 53, u"aaa");
    EXPECT_EQ(numberInForm(780, 4), std::u16string(30, u'z'));
    EXPECT_EQ(numberInForm(781, 4), std::u16string(30, u'a'));
    for (const auto& [number, text] :
         std::initializer_list<std::pair<int, std::u16string_view>>{{1, u"1st"},
                                                                    {2, u"2nd"},
                                                                    {3, u"3rd"},
                                                                    {4, u"4th"},
                                                                    {10, u"10th"},
                                                                    {12, u"12th"},
                                                                    {13, u"13th"},
                                                                    {20, u"20th"},
                                                                    {21, u"21st"},
                                                                    {23, u"23rd"},
                                                                    {24, u"24th"},
                                                                    {111, u"111th"},
                                                                    {121, u"121st"}}) {
        expectForm(5, number, text);
    }
    for (const unsigned form : {11U, 33U, 35U, 37U, 39U}) {
        expectForm(form, 0, u"零");
        expectForm(form, 9, u"九");
        expectForm(form, 19, u"十九");
        expectForm(form, 110, u"一百一十");
        expectForm(form, 1001, u"一千零一");
        expectForm(form, 9999, u"九千九百九十九");
        expectForm(form, 10000, u"10000");
        expectForm(form, -1, u"-1");
    }
    expectForm(34, 10, u"壹拾");
    expectForm(34, 3426, u"參仟肆佰貳拾陸");
    expectForm(34, 9999, u"玖仟玖佰玖拾玖");
    for (const unsigned form : {16U, 38U}) {
        expectForm(form, 10, u"壹拾");
        expectForm(form, 3405, u"叁仟肆佰零伍");
    }
    for (const unsigned form : {10U, 36U}) {
        expectForm(form, 1098, u"一〇九八");
    }
    for (const unsigned form : {14U, 19U}) {
        expectForm(form, 1098, u"１０９８");
    }
    for (const unsigned form : {18U, 28U}) {
        expectForm(form, 1, u"①");
        expectForm(form, 20, u"⑳");
        expectForm(form, 0, u"0");
    }
    expectForm(26, 20, u"⒛");
    expectForm(26, 21, u"21");
    expectForm(27, 1, u"⑴");
    expectForm(27, 20, u"⒇");
    expectForm(29, 10, u"㈩");
    expectForm(29, 11, u"11");
    expectForm(30, 10, u"癸");
    expectForm(30, 11, u"11");
    expectForm(31, 12, u"亥");
    expectForm(31, 13, u"13");
    expectForm(31, 0, u"0");
    expectForm(22, 0, u"00");
    expectForm(22, -1, u"-1");
    expectForm(57, 3, u"- 3 -");
}

TEST(NumberForms, NumbersAreWrittenInEnglishWords) {
    const std::initializer_list<std::pair<int, std::u16string_view>> words{
        {0, u"Zero"},
        {1, u"One"},
        {12, u"Twelve"},
        {15, u"Fifteen"},
        {20, u"Twenty"},
        {21, u"Twenty-one"},
        {100, u"One hundred"},
        {345, u"Three hundred forty-five"},
        {1002, u"One thousand two"},
        {999'999, u"Nine hundred ninety-nine thousand nine hundred ninety-nine"},
        {1'000'000, u"1000000"},
        {-1, u"-1"}};
    for (const auto& [number, text] : words) {
        EXPECT_EQ(numberInForm(number, 6), text);
    }
    const std::initializer_list<std::pair<int, std::u16string_view>> ordinals{
        {1, u"First"},           {2, u"Second"},
        {3, u"Third"},           {4, u"Fourth"},
        {5, u"Fifth"},           {8, u"Eighth"},
        {9, u"Ninth"},           {12, u"Twelfth"},
        {20, u"Twentieth"},      {22, u"Twenty-second"},
        {100, u"One hundredth"}, {1000, u"One thousandth"},
        {1'000'000, u"1000000"}, {-1, u"-1"}};
    for (const auto& [number, text] : ordinals) {
        EXPECT_EQ(numberInForm(number, 7), text);
    }
}

TEST(NumberForms, FieldsWriteNumbersInSmallWordsAndAllElseAsListsDo) {
    EXPECT_EQ(numberOfField(21, 6), u"twenty-one");
    EXPECT_EQ(numberOfField(21, 7), u"twenty-first");
    EXPECT_EQ(numberOfField(3, 1), u"III");
}

TEST(NumberForms, LettersOfOtherScriptsEndWithTheirLast) {
    const auto expectEnds = [](unsigned form, std::u16string_view first, int count,
                               std::u16string_view last) {
        EXPECT_EQ(numberInForm(1, form), first);
        EXPECT_EQ(numberInForm(count, form), last);
        EXPECT_EQ(numberInForm(count + 1, form),
                  std::u16string(1, u'0' + (count + 1) / 10) + char16_t(u'0' + (count + 1) % 10));
        EXPECT_EQ(numberInForm(0, form), u"0");
    };
    expectEnds(12, u"ｱ", 46, u"ﾝ");
    expectEnds(13, u"ｲ", 48, u"ﾝ");
    expectEnds(20, u"ア", 46, u"ン");
    expectEnds(21, u"イ", 48, u"ン");
    expectEnds(24, u"가", 14, u"하");
    expectEnds(25, u"ㄱ", 14, u"ㅎ");
    expectEnds(32, u"甲子", 60, u"癸亥");
    EXPECT_EQ(numberInForm(11, 32), u"甲戌");
}

TEST(NumberForms, NumbersMayBeHexadecimalOrMarks) {
    EXPECT_EQ(numberInForm(255, 8), u"FF");
    EXPECT_EQ(numberInForm(-1, 8), u"-1");
    const std::initializer_list<std::pair<int, std::u16string_view>> marks{
        {1, u"*"}, {2, u"†"}, {3, u"‡"}, {4, u"§"}, {5, u"**"}, {8, u"§§"}, {0, u"0"}};
    for (const auto& [number, text] : marks) {
        EXPECT_EQ(numberInForm(number, 9), text);
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

TEST(Symbols, EachOfTheThreeFontsOfWingdingsHasItsOwnSigns) {
    struct Shown {
        char16_t code;
        std::u16string_view font;
        char16_t text;
    };
    for (const auto& [code, font, text] : std::initializer_list<Shown>{
             {0xF0FE, u"Wingdings", u'☑'},   {0xF0FD, u"Wingdings", u'☒'},
             {0xF0A8, u"Wingdings", u'□'},   {0xF0FC, u"Wingdings", u'✓'},
             {0xF081, u"Wingdings", u'①'},   {0x8A, u"Wingdings", u'⑩'},
             {0xF028, u"Wingdings", u'☎'},   {0xF046, u"wingdings", u'☞'},
             {0xF0D8, u"Wingdings", u'➢'},   {0xF0FF, u"Wingdings", u'•'},
             {0xF052, u"Wingdings 2", u'☑'}, {0xF0A3, u"Wingdings 2", u'□'},
             {0xF050, u"Wingdings 2", u'✓'}, {0xF04F, u"Wingdings 2", u'✗'},
             {0xF06A, u"Wingdings 2", u'①'}, {0xF0FE, u"Wingdings 2", u'•'},
             {0xF070, u"Wingdings 3", u'▲'}, {0xF075, u"Wingdings 3", u'▶'},
             {0xF07E, u"Wingdings 3", u'▲'}, {0xF0FC, u"Wingdings 3", u'•'},
         }) {
        EXPECT_EQ(symbolAsText(code, font), text) << std::hex << int{code};
    }
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

TEST(Symbols, DingbatsHaveTheCharactersOfTheirBlockOrElsewhere) {
    const std::pair<char16_t, char16_t> characters[] = {
        {0x20, u' '},      {0x21, u'\u2701'}, {0x33, u'✓'},       {0x48, u'★'}, {0x6E, u'■'},
        {0x7E, u'\u275E'}, {0x7F, u'•'},      {0xA0, u'•'},       {0xA1, u'❡'}, {0xA8, u'♣'},
        {0xC0, u'➀'},      {0xD4, u'➔'},      {0xF0FE, u'\u27BE'}};
    for (const auto& [code, character] : characters) {
        EXPECT_EQ(symbolAsText(code, u"Monotype Sorts"), character) << int{code};
    }
    EXPECT_TRUE(isSymbolFont(u"ITC Zapf Dingbats"));
    EXPECT_TRUE(isSymbolFont(u"ZapfDingbats"));
    EXPECT_FALSE(isSymbolFont(u"Monotype Corsiva"));
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
    EXPECT_EQ(numberFormOf(u"PAGE \\* \"Ordinal\""), 5U);
}

TEST(NumberForms, EachNameOfAFormHasItsNumber) {
    for (const auto& [name, form] : std::initializer_list<std::pair<std::u16string, unsigned>>{
             {u"Arabic", 0},       {u"ordinal", 5},      {u"CardText", 6},
             {u"OrdText", 7},      {u"Hex", 8},          {u"DBNUM1", 10},
             {u"DBNUM2", 11},      {u"DBCHAR", 14},      {u"DBNUM3", 16},
             {u"CIRCLENUM", 18},   {u"GB1", 26},         {u"GB2", 27},
             {u"GB3", 28},         {u"GB4", 29},         {u"ZODIAC1", 30},
             {u"ZODIAC2", 31},     {u"CHINESENUM1", 37}, {u"CHINESENUM2", 38},
             {u"CHINESENUM3", 39}, {u"ArabicDash", 57}}) {
        EXPECT_EQ(numberFormOf(u"PAGE \\* " + name), form);
    }
}

} // namespace
} // namespace qvnd::word
