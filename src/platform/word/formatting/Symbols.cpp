#include "platform/word/formatting/Symbols.h"

#include "platform/word/formatting/NameFolding.h"
#include "platform/word/formatting/Wingdings.h"

#include <algorithm>
#include <array>
#include <span>

namespace qvnd::word {

namespace {

struct Pair {
    std::uint8_t code;
    char16_t text;
};

// What the font Symbol shows, as its encoding vector names it: codes 0x20 to 0x7E, and from 0xA0.
constexpr std::u16string_view symbolLow = u" !∀#∃%&∋()∗+,−./0123456789:;<=>?"
                                          u"≅ΑΒΧΔΕΦΓΗΙϑΚΛΜΝΟΠΘΡΣΤΥςΩΞΨΖ[∴]⊥_"
                                          u"‾αβχδεφγηιϕκλμνοπθρστυϖωξψζ{|}∼";
constexpr std::u16string_view symbolHigh = u"€ϒ′≤⁄∞ƒ♣♦♥♠↔←↑→↓°±″≥×∝∂•÷≠≡≈…⏐⎯↵"
                                           u"ℵℑℜ℘⊗⊕∅∩∪⊃⊇⊄⊂⊆∈∉∠∇®©™∏√⋅¬∧∨⇔⇐⇑⇒⇓"
                                           u"◊〈®©™∑⎛⎜⎝⎡⎢⎣⎧⎨⎩⎪•〉∫⌠⎮⌡⎞⎟⎠⎤⎥⎦⎫⎬⎭";

// What the dingbats show that Unicode has not in its block of them, in their order.
constexpr std::array<Pair, 27> dingbatsElsewhere{{
    {0x25, u'☎'}, {0x2A, u'☛'}, {0x2B, u'☞'}, {0x48, u'★'}, {0x6C, u'●'}, {0x6E, u'■'},
    {0x73, u'▲'}, {0x74, u'▼'}, {0x75, u'◆'}, {0x77, u'◗'}, {0xA8, u'♣'}, {0xA9, u'♦'},
    {0xAA, u'♥'}, {0xAB, u'♠'}, {0xAC, u'①'}, {0xAD, u'②'}, {0xAE, u'③'}, {0xAF, u'④'},
    {0xB0, u'⑤'}, {0xB1, u'⑥'}, {0xB2, u'⑦'}, {0xB3, u'⑧'}, {0xB4, u'⑨'}, {0xB5, u'⑩'},
    {0xD5, u'→'}, {0xD6, u'↔'}, {0xD7, u'↕'},
}};

constexpr char16_t privateArea = 0xF000;

char16_t counterpart(std::span<const Pair> pairs, std::uint8_t code, char16_t otherwise) {
    const auto found = std::find_if(pairs.begin(), pairs.end(),
                                    [&](const Pair& pair) { return pair.code == code; });
    return found != pairs.end() ? found->text : otherwise;
}

char16_t symbolOf(std::uint8_t code, char16_t otherwise) {
    constexpr std::uint8_t low = 0x20;
    constexpr std::uint8_t high = 0xA0;
    if (code >= high && code - high < static_cast<int>(symbolHigh.size())) {
        return symbolHigh[static_cast<std::size_t>(code - high)];
    }
    const bool isLow = code >= low && code - low < static_cast<int>(symbolLow.size());
    return isLow ? symbolLow[static_cast<std::size_t>(code - low)] : otherwise;
}

// Unicode has the codes of the dingbats in their order, those from 0xA1 on behind the others.
char16_t dingbatOf(std::uint8_t code, char16_t otherwise) {
    constexpr std::uint8_t low = 0x21;
    constexpr std::uint8_t lastLow = 0x7E;
    constexpr std::uint8_t high = 0xA1;
    constexpr std::uint8_t lastHigh = 0xFE;
    constexpr char16_t lowBlock = 0x2700 - 0x20;
    constexpr char16_t highBlock = 0x2700 - 0x40;
    const bool isHigh = code >= high && code <= lastHigh;
    if (!isHigh && (code < low || code > lastLow)) {
        return otherwise;
    }
    return counterpart(dingbatsElsewhere, code,
                       static_cast<char16_t>((isHigh ? highBlock : lowBlock) + code));
}

bool isDingbats(std::u16string_view font) {
    const std::u16string name = foldedName(font);
    return name == u"monotype sorts" || name == u"itc zapf dingbats" || name == u"zapfdingbats";
}

bool isSymbol(std::u16string_view font) { return foldedName(font) == u"symbol"; }

} // namespace

bool isSymbolFont(std::u16string_view font) {
    return isWingdings(font) || isSymbol(font) || isDingbats(font) ||
           foldedName(font).starts_with(u"webdings");
}

char16_t symbolAsText(char16_t code, std::u16string_view font) {
    constexpr char16_t bullet = u'•';
    const bool isPrivate = code >= privateArea && code < privateArea + 0x100;
    if (!isPrivate && code >= 0x100) {
        return code;
    }
    const auto low = static_cast<std::uint8_t>(code);
    if (low == u' ') {
        return u' ';
    }
    if (isWingdings(font)) {
        return wingdingsAsText(low, font);
    }
    if (isDingbats(font)) {
        return dingbatOf(low, bullet);
    }
    if (isSymbol(font) || isPrivate) {
        return symbolOf(low, bullet);
    }
    return code;
}

} // namespace qvnd::word
