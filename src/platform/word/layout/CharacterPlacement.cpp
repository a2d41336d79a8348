#include "platform/word/layout/CharacterPlacement.h"

#include "platform/word/layout/CharacterClasses.h"

#include <algorithm>

namespace qvnd::layout {

namespace {

void addBackground(const CharacterPlace& place, FontMetrics& fonts, Layer& layer) {
    const TextItem& item = place.item;
    if (item.format->background) {
        const FaceHeights heights = fonts.heights(item.face);
        layer.fills.push_back({place.x, place.foot - heights.ascent * item.size, place.width,
                               (heights.ascent + heights.descent) * item.size,
                               *item.format->background});
    }
}

PlacedText textOf(const CharacterPlace& place) {
    const TextItem& item = place.item;
    PlacedText text;
    text.x = place.x;
    text.baseline = place.foot - item.raised;
    text.size = item.size;
    text.stretch = item.format->scalePercent / 100.0;
    text.face = item.face;
    text.colour = item.format->colour;
    text.underlined = item.format->underlined;
    text.struckOut = item.format->struckOut || item.format->deleted;
    text.bold = item.format->bold;
    return text;
}

} // namespace

void addCharacter(const CharacterPlace& place, FontMetrics& fonts, Layer& layer) {
    addBackground(place, fonts, layer);
    if (!place.goesOn || layer.texts.empty()) {
        layer.texts.push_back(textOf(place));
    }
    PlacedText& text = layer.texts.back();
    const char32_t character = place.item.character;
    if (character >= 0x10000) {
        const char32_t rest = character - 0x10000;
        text.text += static_cast<char16_t>(0xD800 + (rest >> 10));
        text.text += static_cast<char16_t>(0xDC00 + (rest & 0x3FF));
        text.advances.push_back(static_cast<float>(place.width));
        text.advances.push_back(0);
    } else {
        text.text += static_cast<char16_t>(character);
        text.advances.push_back(static_cast<float>(place.width));
    }
}

void compressPair(TextItem& mark, const TextItem& next) {
    const bool closes = isClosingMark(mark.character) && isClosingMark(next.character);
    const bool opens = isOpeningMark(next.character) &&
                       (isClosingMark(mark.character) || isOpeningMark(mark.character));
    if ((closes || opens) && mark.width >= mark.size) {
        mark.width -= mark.size / 2;
    }
}

bool mayBreakBetween(const TextItem& before, const TextItem& after,
                     const word::ResolvedParagraph& format) {
    if (!isText(before) || !isText(after)) {
        using Kind = TextItem::Kind;
        const TextItem& text = isText(before) ? before : after;
        const bool joins = (before.kind == Kind::picture || after.kind == Kind::picture) &&
                           isText(text) && !isBlankItem(before) && !isEastAsian(text.character);
        return !joins && (before.kind != Kind::tab || !before.isLabel);
    }
    return mayBreakBetween(before.character, after.character,
                           {format.forbidsLineEnds, format.breaksWords});
}

bool mayStretchBetween(const TextItem& before, const TextItem& after) {
    return isText(before) && isText(after) &&
           (isBlank(before.character) || isEastAsian(before.character) ||
            isEastAsian(after.character));
}

double gapBetweenScripts(const TextItem& a, const TextItem& b,
                         const word::ResolvedParagraph& format, double part) {
    const TextItem& other = isIdeograph(a.character) ? b : a;
    const char32_t latin = other.character;
    const bool mixed = isIdeograph(a.character) != isIdeograph(b.character);
    const bool wanted = (format.spacesLatin && isLatinLetter(latin) && !other.isSetAsChinese) ||
                        (format.spacesDigits && isDigit(latin));
    return mixed && wanted ? part * std::min(a.size, b.size) : 0;
}

} // namespace qvnd::layout
