#include "platform/word/layout/CharacterClasses.h"

#include <algorithm>
#include <string_view>

namespace qvnd::layout {

namespace {

constexpr std::u32string_view noStart =
    U"!%),.:;>?]}"
    U"¢¨°·ˇˉ―‖’”…‰′″›℃∶、。〃〉》」』】〕〗〞︶︺︾﹀﹄﹚﹜﹞！＂％＇），．：；？］｀｜｝～￠";
constexpr std::u32string_view noEnd = U"$([{£¥·‘“〈《「『【〔〖〝﹗﹙﹛＄（．［｛￡￥";
constexpr std::u32string_view hanging = U"、。，．";
constexpr std::u32string_view hangingInOffice = U"、。，．！？：；,.";

bool contains(std::u32string_view list, char32_t c) {
    return list.find(c) != std::u32string_view::npos;
}

bool within(char32_t c, char32_t first, char32_t last) { return c >= first && c <= last; }

} // namespace

bool isIdeograph(char32_t c) {
    return within(c, 0x2E80, 0x2FDF) || within(c, 0x3005, 0x3007) || within(c, 0x3021, 0x3029) ||
           within(c, 0x3041, 0x318F) || within(c, 0x31A0, 0x31BF) || within(c, 0x31F0, 0x31FF) ||
           within(c, 0x3400, 0x4DBF) || within(c, 0x4E00, 0x9FFF) || within(c, 0xAC00, 0xD7A3) ||
           within(c, 0xF900, 0xFAFF) || within(c, 0x20000, 0x3FFFD);
}

bool isEastAsian(char32_t c) {
    return isIdeograph(c) || within(c, 0x3000, 0x303F) || within(c, 0x3190, 0x33FF) ||
           within(c, 0xFE30, 0xFE6F) || within(c, 0xFF00, 0xFFEF) || within(c, 0x2460, 0x24FF) ||
           within(c, 0x2550, 0x2573) || within(c, 0x2581, 0x2595);
}

bool isOfEitherScript(char32_t c) {
    constexpr std::u32string_view signs =
        U"¤§¨°±·×÷ˇˉ‐–—―‖‘’“”…‰′″※℃№℡←↑→↓↖↗↘↙∈∏∑√∝∞∟∠∥∧∨∩∪∫∮∴∵∶∷∽≈≌≠≡≤≥⊕⊥■□▲△▼▽◆◇○◎●★☆♀♂";
    return contains(signs, c) || within(c, 0x2160, 0x217F);
}

bool isFullWidthInChineseFonts(char32_t c) {
    return isOfEitherScript(c) || within(c, 0x391, 0x3A9) || within(c, 0x3B1, 0x3C9) ||
           within(c, 0x410, 0x44F) || within(c, 0x2500, 0x254F) || contains(U"Ёё≮≯⊙⌒∣", c);
}

bool isLatinLetter(char32_t c) {
    return within(c, U'a', U'z') || within(c, U'A', U'Z') || within(c, 0xC0, 0x24F) ||
           within(c, 0x370, 0x52F);
}

bool isDigit(char32_t c) { return within(c, U'0', U'9'); }

bool isBlank(char32_t c) { return c == U' ' || c == 0x2002 || c == 0x2003 || c == 0x2009; }

bool beginsNoLine(char32_t c) { return contains(noStart, c); }
bool endsNoLine(char32_t c) { return contains(noEnd, c); }
bool mayHang(char32_t c) { return contains(hanging, c); }
bool mayHangInOffice(char32_t c) { return contains(hangingInOffice, c); }

bool isClosingMark(char32_t c) { return contains(U"、。〉》」』】〕〗），．：；］｝’”", c); }
bool isOpeningMark(char32_t c) { return contains(U"〈《「『【〔〖（［｛‘“", c); }

bool isSqueezable(char32_t c) {
    return contains(U"、。〈〉《》「」『』【】〔〕〖〗〘〙〚〛〝〞〟", c);
}

bool mayBreakBetween(char32_t before, char32_t after, const BreakRules& rules) {
    constexpr char32_t noBreakSpace = 0xA0;
    if (before == noBreakSpace || after == noBreakSpace || isBlank(after)) {
        return false;
    }
    if (isBlank(before)) {
        return true;
    }
    const bool isForbidden = rules.forbidsLineEnds && (beginsNoLine(after) || endsNoLine(before));
    const bool eastAsian = isEastAsian(before) || isEastAsian(after);
    const bool behindHyphen =
        (before == U'-' || before == U'–' || before == U'—') && after != before && !isDigit(after);
    return !isForbidden && (eastAsian || behindHyphen || rules.breaksWords);
}

} // namespace qvnd::layout
