#include "platform/word/formatting/Symbols.h"

#include "platform/word/formatting/NameFolding.h"

#include <algorithm>
#include <array>
#include <span>

namespace qvnd::word {

namespace {

struct Pair {
    std::uint8_t code;
    char16_t text;
};

constexpr std::array<Pair, 22> wingdings{{
    {0x6C, u'●'}, {0x6D, u'○'}, {0x6E, u'■'}, {0x6F, u'□'}, {0x70, u'□'}, {0x71, u'❑'},
    {0x72, u'❒'}, {0x74, u'◆'}, {0x75, u'◆'}, {0x76, u'❖'}, {0x77, u'◆'}, {0x9F, u'•'},
    {0xA1, u'○'}, {0xA7, u'▪'}, {0xA8, u'□'}, {0xD8, u'➢'}, {0xDC, u'➲'}, {0xE0, u'→'},
    {0xF0, u'⇨'}, {0xFC, u'✓'}, {0xFB, u'✗'}, {0xFE, u'☑'},
}};

// Greek letters and signs of the font Symbol.
constexpr std::array<Pair, 44> symbol{{
    {0x61, u'α'}, {0x62, u'β'}, {0x63, u'χ'}, {0x64, u'δ'}, {0x65, u'ε'}, {0x66, u'φ'},
    {0x67, u'γ'}, {0x68, u'η'}, {0x6B, u'κ'}, {0x6C, u'λ'}, {0x6D, u'μ'}, {0x6E, u'ν'},
    {0x70, u'π'}, {0x71, u'θ'}, {0x72, u'ρ'}, {0x73, u'σ'}, {0x74, u'τ'}, {0x77, u'ω'},
    {0x44, u'Δ'}, {0x46, u'Φ'}, {0x47, u'Γ'}, {0x4C, u'Λ'}, {0x50, u'Π'}, {0x51, u'Θ'},
    {0x53, u'Σ'}, {0x57, u'Ω'}, {0xA3, u'≤'}, {0xA5, u'∞'}, {0xAC, u'←'}, {0xAD, u'↑'},
    {0xAE, u'→'}, {0xAF, u'↓'}, {0xB0, u'°'}, {0xB1, u'±'}, {0xB3, u'≥'}, {0xB4, u'×'},
    {0xB7, u'•'}, {0xB8, u'÷'}, {0xB9, u'≠'}, {0xBB, u'≈'}, {0xD6, u'√'}, {0xE5, u'∑'},
    {0xF2, u'∫'}, {0xC5, u'⊕'},
}};

constexpr char16_t privateArea = 0xF000;

char16_t counterpart(std::span<const Pair> pairs, std::uint8_t code, char16_t otherwise) {
    const auto found = std::find_if(pairs.begin(), pairs.end(),
                                    [&](const Pair& pair) { return pair.code == code; });
    return found != pairs.end() ? found->text : otherwise;
}

bool isWingdings(std::u16string_view font) { return foldedName(font).starts_with(u"wingdings"); }

bool isSymbol(std::u16string_view font) { return foldedName(font) == u"symbol"; }

} // namespace

bool isSymbolFont(std::u16string_view font) {
    return isWingdings(font) || isSymbol(font) || foldedName(font).starts_with(u"webdings");
}

char16_t symbolAsText(char16_t code, std::u16string_view font) {
    constexpr char16_t bullet = u'•';
    const bool isPrivate = code >= privateArea && code < privateArea + 0x100;
    if (!isPrivate && code >= 0x100) {
        return code;
    }
    const auto low = static_cast<std::uint8_t>(code);
    if (isWingdings(font)) {
        return counterpart(wingdings, low, bullet);
    }
    if (isSymbol(font) || isPrivate) {
        const bool isPlain =
            low >= 0x20 && low < 0x41; // digits and signs are where they always are
        return counterpart(symbol, low, isPlain ? char16_t{low} : bullet);
    }
    return code;
}

} // namespace qvnd::word
