#include "platform/word/layout/CharacterFaces.h"

#include "platform/word/formatting/StyleResolver.h"
#include "platform/word/formatting/Symbols.h"
#include "platform/word/layout/CharacterClasses.h"

namespace qvnd::layout {

namespace {

constexpr unsigned boldStyle = 1;
constexpr unsigned italicStyle = 2;
constexpr unsigned chineseStyle = 4;

} // namespace

const std::u16string& CharacterFaces::nameOf(std::uint16_t font) const {
    static const std::u16string none;
    return font < tables_.fonts.size() ? tables_.fonts[font].name : none;
}

bool CharacterFaces::isSetAsChinese(const word::ResolvedText& format, char32_t c) const {
    return format.eastAsianHint && (office_ ? isOfEitherScript(c) : isFullWidthInChineseFonts(c));
}

FaceId CharacterFaces::of(const word::ResolvedText& format, char32_t c) {
    const bool eastAsian = isEastAsian(c) || isSetAsChinese(format, c);
    const bool asksForChinese = eastAsian && !(office_ && format.hasNoLanguage);
    // Symbols stand in the font of Latin letters, whatever sign they are shown as. Letters behind
    // U+007F have the font of other characters (ISO 29500-1, 17.3.2.26); in the office suite they
    // have that of Latin letters.
    const bool latin = c < 0x80 || (office_ && isLatinLetter(c)) ||
                       (!eastAsian && word::isSymbolFont(nameOf(format.latinFont)));
    const std::uint16_t font = eastAsian ? format.eastAsianFont
                               : latin   ? format.latinFont
                                         : format.otherFont;
    return fonts_.shownBy(of(font, asksForChinese, format), c);
}

FaceId CharacterFaces::of(std::uint16_t font, bool asksForChinese,
                          const word::ResolvedText& format) {
    const Key key{font, (format.bold ? boldStyle : 0) | (format.italic ? italicStyle : 0) |
                            (asksForChinese ? chineseStyle : 0)};
    Last& last = last_.at(asksForChinese ? 1 : 0);
    if (last.key != key) {
        last = {key, known(key, format)};
    }
    return last.face;
}

FaceId CharacterFaces::known(const Key& key, const word::ResolvedText& format) {
    const auto [face, isNew] = faces_.try_emplace(key);
    if (isNew) {
        const auto [font, style] = key;
        const bool asksForChinese = (style & chineseStyle) != 0;
        std::u16string name = nameOf(font);
        if (name.empty() && office_ && !asksForChinese) {
            name = u"serif"; // what the office suite takes where no font is named
        }
        face->second = fonts_.face({name, format.bold, format.italic, asksForChinese});
    }
    return face->second;
}

} // namespace qvnd::layout
