// Where a line may break, stretch or lose width, by the classes of its characters.

#include "platform/word/layout/CharacterClasses.h"
#include "platform/word/layout/CharacterPlacement.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace qvnd::layout {
namespace {

// Both ends of each range are in it, and their neighbours are not.
void expectRanges(bool (*isIn)(char32_t),
                  const std::vector<std::pair<std::uint32_t, std::uint32_t>>& ranges) {
    for (const auto& [first, last] : ranges) {
        EXPECT_FALSE(isIn(first - 1)) << std::hex << first - 1;
        EXPECT_TRUE(isIn(first)) << std::hex << first;
        EXPECT_TRUE(isIn(last)) << std::hex << last;
        EXPECT_FALSE(isIn(last + 1)) << std::hex << last + 1;
    }
}

TEST(CharacterClasses, ReachFromTheirFirstToTheirLastCharacter) {
    expectRanges(isIdeograph, {{0x2E80, 0x2FDF},
                               {0x3005, 0x3007},
                               {0x3021, 0x3029},
                               {0x3041, 0x318F},
                               {0x31A0, 0x31BF},
                               {0x31F0, 0x31FF},
                               {0x3400, 0x4DBF},
                               {0x4E00, 0x9FFF},
                               {0xAC00, 0xD7A3},
                               {0xF900, 0xFAFF},
                               {0x20000, 0x3FFFD}});
    expectRanges(isEastAsian, {{0x3000, 0x303F},
                               {0xFE30, 0xFE6F},
                               {0xFF00, 0xFFEF},
                               {0x2460, 0x24FF},
                               {0x2550, 0x2573},
                               {0x2581, 0x2595}});
    expectRanges(isLatinLetter, {{U'a', U'z'}, {U'A', U'Z'}, {0xC0, 0x24F}, {0x370, 0x52F}});
    expectRanges(isDigit, {{U'0', U'9'}});
    expectRanges(isFullWidthInChineseFonts, {{0x391, 0x3A9},
                                             {0x3B1, 0x3C9},
                                             {0x401, 0x401},
                                             {0x410, 0x44F},
                                             {0x451, 0x451},
                                             {0x2500, 0x254F}});
}

TEST(CharacterClasses, BlanksAreTheOneOfLatinTextAndThoseOfAnEmAndItsParts) {
    for (const char32_t c : std::u32string_view(U" \u2002\u2003\u2009")) {
        EXPECT_TRUE(isBlank(c)) << std::hex << std::uint32_t{c};
    }
    for (const char32_t c : std::u32string_view(U"\u00A0\u2001\u2004\u200A\u3000!")) {
        EXPECT_FALSE(isBlank(c)) << std::hex << std::uint32_t{c};
    }
}

TEST(LineBreaks, StandBehindBlanksAndNotInFrontOfThem) {
    EXPECT_TRUE(mayBreakBetween(U' ', U'a', {}));
    EXPECT_TRUE(mayBreakBetween(U' ', U'。', {})) << "whatever follows";
    EXPECT_FALSE(mayBreakBetween(U'a', U' ', {}));
    EXPECT_FALSE(mayBreakBetween(U'一', U' ', {}));
    EXPECT_FALSE(mayBreakBetween(U' ', U' ', {}));
}

TEST(LineBreaks, NeverStandBesideABlankThatJoins) {
    EXPECT_FALSE(mayBreakBetween(U'一', 0xA0, {}));
    EXPECT_FALSE(mayBreakBetween(0xA0, U'一', {}));
    EXPECT_FALSE(mayBreakBetween(U' ', 0xA0, {true, true}));
}

TEST(LineBreaks, StandOnBothSidesOfChineseCharacters) {
    EXPECT_TRUE(mayBreakBetween(U'一', U'二', {}));
    EXPECT_TRUE(mayBreakBetween(U'一', U'a', {}));
    EXPECT_TRUE(mayBreakBetween(U'a', U'一', {}));
    EXPECT_FALSE(mayBreakBetween(U'a', U'b', {}));
    EXPECT_TRUE(mayBreakBetween(U'a', U'b', {true, true}));
}

TEST(LineBreaks, StandNeitherInFrontOfClosingMarksNorBehindOpeningOnes) {
    EXPECT_FALSE(mayBreakBetween(U'一', U'。', {}));
    EXPECT_FALSE(mayBreakBetween(U'（', U'一', {}));
    EXPECT_TRUE(mayBreakBetween(U'。', U'一', {}));
    EXPECT_TRUE(mayBreakBetween(U'一', U'（', {}));
    EXPECT_TRUE(mayBreakBetween(U'一', U'。', {false, false}));
    EXPECT_TRUE(mayBreakBetween(U'（', U'一', {false, false}));
    EXPECT_FALSE(mayBreakBetween(U'a', U'!', {true, true}));
}

TEST(LineBreaks, StandBehindHyphensAlsoBeforeDigits) {
    for (const char32_t hyphen : {U'-', U'–'}) {
        EXPECT_TRUE(mayBreakBetween(hyphen, U'a', {}));
        EXPECT_TRUE(mayBreakBetween(hyphen, U'5', {})) << "as in C-22 or a telephone number";
        EXPECT_FALSE(mayBreakBetween(hyphen, hyphen, {}));
        EXPECT_FALSE(mayBreakBetween(U'a', hyphen, {}));
    }
    EXPECT_TRUE(mayBreakBetween(U'—', U'a', {}));
    EXPECT_FALSE(mayBreakBetween(U'_', U'a', {}));
}

TextItem itemOf(char32_t character, double width = 200) {
    TextItem item;
    item.character = character;
    item.size = 200;
    item.width = width;
    return item;
}

TextItem pictureItem() {
    TextItem item;
    item.kind = TextItem::Kind::picture;
    return item;
}

TEST(LineBreaks, StandBesidePicturesButForLatinWords) {
    const word::ResolvedParagraph format;
    EXPECT_TRUE(mayBreakBetween(pictureItem(), itemOf(U'一'), format));
    EXPECT_TRUE(mayBreakBetween(itemOf(U'一'), pictureItem(), format));
    EXPECT_TRUE(mayBreakBetween(pictureItem(), pictureItem(), format));
    EXPECT_TRUE(mayBreakBetween(itemOf(U' '), pictureItem(), format));
    EXPECT_FALSE(mayBreakBetween(itemOf(U'a'), pictureItem(), format));
    EXPECT_FALSE(mayBreakBetween(pictureItem(), itemOf(U'a'), format));
    EXPECT_FALSE(mayBreakBetween(pictureItem(), itemOf(U' '), format));
}

TEST(LineBreaks, StandBehindTabsButForThatOfALabel) {
    const word::ResolvedParagraph format;
    TextItem tab;
    tab.kind = TextItem::Kind::tab;
    EXPECT_TRUE(mayBreakBetween(tab, itemOf(U'a'), format));
    EXPECT_TRUE(mayBreakBetween(itemOf(U'a'), tab, format));
    tab.isLabel = true;
    EXPECT_FALSE(mayBreakBetween(tab, itemOf(U'a'), format));
    TextItem label = itemOf(U'1');
    label.isLabel = true;
    EXPECT_TRUE(mayBreakBetween(label, tab, format));
}

TEST(RunsOfText, GoOnInTextOfOneLookAlone) {
    const word::ResolvedText look;
    const word::ResolvedText other;
    const auto goesOn = [&](auto change) {
        TextItem before = itemOf(U'a');
        TextItem item = itemOf(U'b');
        before.format = item.format = &look;
        change(before, item);
        return continuesText(before, item);
    };
    using Item = TextItem;
    EXPECT_TRUE(goesOn([](Item&, Item&) {}));
    EXPECT_FALSE(goesOn([](Item& before, Item&) { before.kind = Item::Kind::tab; }));
    EXPECT_FALSE(goesOn([](Item&, Item& item) { item.kind = Item::Kind::optionalHyphen; }));
    EXPECT_FALSE(goesOn([&](Item&, Item& item) { item.format = &other; }));
    EXPECT_FALSE(goesOn([](Item&, Item& item) { item.face = 1; }));
    EXPECT_FALSE(goesOn([](Item&, Item& item) { item.size = 180; }));
    EXPECT_FALSE(goesOn([](Item&, Item& item) { item.raised = 20; }));
}

TEST(Stretching, IsBehindBlanksAndBesideChineseCharacters) {
    EXPECT_TRUE(mayStretchBetween(itemOf(U' '), itemOf(U'a')));
    EXPECT_FALSE(mayStretchBetween(itemOf(U'a'), itemOf(U' ')));
    EXPECT_TRUE(mayStretchBetween(itemOf(U'一'), itemOf(U'a')));
    EXPECT_TRUE(mayStretchBetween(itemOf(U'a'), itemOf(U'一')));
    EXPECT_FALSE(mayStretchBetween(itemOf(U'a'), itemOf(U'b')));
    EXPECT_FALSE(mayStretchBetween(itemOf(U'一'), pictureItem()));
    EXPECT_FALSE(mayStretchBetween(pictureItem(), itemOf(U'一')));
}

double widthBeside(char32_t mark, char32_t next, double width = 200) {
    const word::ResolvedText look;
    std::vector<TextItem> items{itemOf(mark, width), itemOf(next)};
    items[0].format = items[1].format = &look;
    LineSetting setting;
    setting.compressesPunctuation = true;
    gapsBehind(items, {}, setting);
    return items[0].width;
}

TEST(CompressedPairs, LoseTheEmptyHalfBetweenThem) {
    EXPECT_DOUBLE_EQ(widthBeside(U'。', U'”'), 100);
    EXPECT_DOUBLE_EQ(widthBeside(U'。', U'（'), 100);
    EXPECT_DOUBLE_EQ(widthBeside(U'（', U'《'), 100);
    EXPECT_DOUBLE_EQ(widthBeside(U'（', U'）'), 200) << "nothing empty is between them";
    EXPECT_DOUBLE_EQ(widthBeside(U'。', U'一'), 200);
    EXPECT_DOUBLE_EQ(widthBeside(U'一', U'（'), 200);
    EXPECT_DOUBLE_EQ(widthBeside(U'。', U'”', 199), 199) << "it is not of full width";
}

TEST(GapsBetweenScripts, StandWhereTheParagraphWantsThem) {
    word::ResolvedParagraph format;
    LineSetting setting;
    setting.options.latinGap = 0.25;
    const word::ResolvedText look;
    const auto gap = [&](const TextItem& a, const TextItem& b) {
        std::vector<TextItem> items{a, b};
        items[0].format = items[1].format = &look;
        return gapsBehind(items, format, setting).at(0);
    };
    EXPECT_DOUBLE_EQ(gap(itemOf(U'一'), itemOf(U'a')), 50);
    EXPECT_DOUBLE_EQ(gap(itemOf(U'a'), itemOf(U'一')), 50);
    EXPECT_DOUBLE_EQ(gap(itemOf(U'一'), itemOf(U'7')), 50);
    EXPECT_DOUBLE_EQ(gap(itemOf(U'一'), itemOf(U'二')), 0);
    EXPECT_DOUBLE_EQ(gap(itemOf(U'a'), itemOf(U'b')), 0);
    EXPECT_DOUBLE_EQ(gap(itemOf(U'一'), itemOf(U'。')), 0);
    EXPECT_DOUBLE_EQ(gap(itemOf(U'一'), itemOf(U'(')), 0);
    TextItem small = itemOf(U'a');
    small.size = 100;
    EXPECT_DOUBLE_EQ(gap(itemOf(U'一'), small), 25);
    TextItem chinese = itemOf(U'Φ');
    EXPECT_DOUBLE_EQ(gap(itemOf(U'一'), chinese), 50);
    chinese.isSetAsChinese = true;
    EXPECT_DOUBLE_EQ(gap(itemOf(U'一'), chinese), 0);
    format.spacesLatin = false;
    EXPECT_DOUBLE_EQ(gap(itemOf(U'一'), itemOf(U'a')), 0);
    EXPECT_DOUBLE_EQ(gap(itemOf(U'一'), itemOf(U'7')), 50);
    format.spacesLatin = true;
    format.spacesDigits = false;
    EXPECT_DOUBLE_EQ(gap(itemOf(U'一'), itemOf(U'7')), 0);
}

TEST(GapsBetweenScripts, StandNeitherBehindTheLastItemNorBesideWhatIsNoText) {
    const word::ResolvedText look;
    LineSetting setting;
    setting.options.latinGap = 0.25;
    std::vector<TextItem> items{itemOf(U'一'), itemOf(U'a'), itemOf(U'一'), itemOf(U'a')};
    for (TextItem& item : items) {
        item.format = &look;
    }
    items[1].kind = TextItem::Kind::picture;
    items.pop_back();
    EXPECT_EQ(gapsBehind(items, {}, setting), (std::vector<double>{0, 0, 0}));
    items[1].kind = TextItem::Kind::character;
    EXPECT_EQ(gapsBehind(items, {}, setting), (std::vector<double>{50, 50, 0}));
}

} // namespace
} // namespace qvnd::layout
