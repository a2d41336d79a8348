#include "platform/word/layout/CharacterPlacement.h"

#include "platform/word/layout/BorderRules.h"
#include "platform/word/layout/CharacterClasses.h"
#include "platform/word/layout/EmphasisMarks.h"

#include <algorithm>
#include <string>

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

// Characters side by side with the same border and height stand in one box.
void addBorder(const CharacterPlace& place, FontMetrics& fonts, Layer& layer) {
    const TextItem& item = place.item;
    const word::Border& border = item.format->border;
    if (!border.visible) {
        return;
    }
    const FaceHeights heights = fonts.heights(item.face);
    const double top = place.foot - item.raised - heights.ascent * item.size;
    const double bottom = place.foot - item.raised + heights.descent * item.size;
    const double right = place.x + place.width;
    std::vector<Rule>& rules = layer.rules;
    const std::size_t strokes = ruleCount(border);
    if (!place.goesOn || rules.size() < 4 * strokes ||
        rules[rules.size() - strokes].x1 != place.x) {
        using Order = StrokeOrder;
        const double span = spanOf(border);
        addRule(layer, border, {place.x, top - span}, {right, top - span}, Order::fromOutside);
        addRule(layer, border, {place.x, bottom}, {right, bottom}, Order::fromInside);
        addRule(layer, border, {place.x - span, top}, {place.x - span, bottom}, Order::fromOutside);
        addRule(layer, border, {right, top}, {right, bottom}, Order::fromInside);
        return;
    }
    const std::size_t box = rules.size() - 4 * strokes;
    for (std::size_t i = 0; i < strokes; ++i) {
        rules[box + i].x2 = rules[box + strokes + i].x2 = right;
        Rule& end = rules[box + 3 * strokes + i];
        end.x1 = end.x2 = end.x1 + right - place.x;
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
    text.underline = item.format->underline;
    text.struckOut = item.format->struckOut || item.format->deleted;
    text.effects = item.format->effects;
    text.bold = item.format->bold;
    return text;
}

// The first one of two full-width punctuation marks becomes narrower.
void compressPair(TextItem& mark, const TextItem& next) {
    const bool closes = isClosingMark(mark.character) && isClosingMark(next.character);
    const bool opens = isOpeningMark(next.character) &&
                       (isClosingMark(mark.character) || isOpeningMark(mark.character));
    if ((closes || opens) && mark.width >= mark.size) {
        mark.width -= mark.size / 2;
    }
}

// Of a grid with cells Chinese characters take whole ones.
void fitToGrid(TextItem& item, const Grid& grid) {
    if (grid.cellWidth <= 0) {
        item.width += grid.characterSpacing;
    } else if (isEastAsian(item.character)) {
        item.width = atCell({0, 0, grid.cellWidth, 0}, item.width + grid.characterSpacing);
    }
}

// The space between two adjacent characters, one Chinese and one Latin or a digit, in twips; 0
// between others and where the paragraph wants none. `part`: of the smaller font size.
double gapBetweenScripts(const TextItem& a, const TextItem& b,
                         const word::ResolvedParagraph& format, double part) {
    const TextItem& other = isIdeograph(a.character) ? b : a;
    const char32_t latin = other.character;
    const bool mixed = isIdeograph(a.character) != isIdeograph(b.character);
    const bool wanted = (format.spacesLatin && isLatinLetter(latin) && !other.isSetAsChinese) ||
                        (format.spacesDigits && isDigit(latin));
    return mixed && wanted ? part * std::min(a.size, b.size) : 0;
}

} // namespace

void addCharacter(const CharacterPlace& place, FontMetrics& fonts, Layer& layer) {
    addBackground(place, fonts, layer);
    addBorder(place, fonts, layer);
    addEmphasis(place, fonts, layer);
    if (!place.goesOn || layer.texts.empty()) {
        layer.texts.push_back(textOf(place));
        layer.texts.back().text.reserve(place.run);
        layer.texts.back().advances.reserve(place.run);
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

bool continuesText(const TextItem& before, const TextItem& item) {
    return isText(before) && isText(item) && before.format == item.format &&
           before.face == item.face && before.size == item.size && before.raised == item.raised;
}

std::size_t runOf(std::span<const TextItem> items) {
    std::size_t run = 1;
    while (run < items.size() && continuesText(items[run - 1], items[run])) {
        ++run;
    }
    return run;
}

void joinLigatures(std::vector<TextItem>& items, FontMetrics& fonts) {
    constexpr std::size_t longest = 4;
    for (std::size_t first = 0; first < items.size(); ++first) {
        if (!isText(items[first]) || !isLatinLetter(items[first].character) ||
            items[first].format->spacing != 0) {
            continue;
        }
        std::u32string text(1, items[first].character);
        double own = items[first].width;
        while (text.size() < longest && first + text.size() < items.size() &&
               continuesText(items[first], items[first + text.size()])) {
            text += items[first + text.size()].character;
        }
        const Ligature ligature = fonts.ligature(items[first].face, text);
        for (std::size_t i = 1; i < ligature.characters; ++i) {
            own += items[first + i].width;
        }
        const TextItem& item = items[first];
        const double room = ligature.advance * item.size * item.format->scalePercent / 100;
        for (std::size_t i = 0; i < ligature.characters && own > 0; ++i) {
            items[first + i].width *= room / own;
        }
        first += ligature.characters > 0 ? ligature.characters - 1 : 0;
    }
}

void kern(std::vector<TextItem>& items, FontMetrics& fonts) {
    for (std::size_t i = 0; i + 1 < items.size(); ++i) {
        TextItem& item = items[i];
        const TextItem& next = items[i + 1];
        if (continuesText(item, next) && item.format->isKerned() && !isEastAsian(item.character) &&
            !isEastAsian(next.character)) {
            item.width += fonts.kerning(item.face, item.character, next.character) * item.size *
                          item.format->scalePercent / 100;
        }
    }
}

std::vector<double> gapsBehind(std::vector<TextItem>& items, const word::ResolvedParagraph& format,
                               const LineSetting& setting) {
    std::vector<double> gaps(items.size(), 0);
    const bool inPairs = setting.compressesPunctuation && !setting.options.officeLines;
    const bool hasCells = setting.grid.cellWidth > 0 && format.snapsToGrid;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (!isText(items[i])) {
            continue;
        }
        const bool hasNext = i + 1 < items.size() && isText(items[i + 1]);
        if (inPairs && hasNext) {
            compressPair(items[i], items[i + 1]);
        }
        if (format.snapsToGrid && items[i].format->snapsToGrid) {
            fitToGrid(items[i], setting.grid);
        }
        if (hasNext && !items[i].isLabel && !hasCells) {
            gaps[i] = gapBetweenScripts(items[i], items[i + 1], format, setting.options.latinGap);
        }
    }
    return gaps;
}

bool mayBreakBetween(const TextItem& before, const TextItem& after,
                     const word::ResolvedParagraph& format) {
    using Kind = TextItem::Kind;
    if (after.kind == Kind::optionalHyphen) {
        return before.kind == Kind::optionalHyphen;
    }
    if (!isText(before) || !isText(after)) {
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

} // namespace qvnd::layout
