#include "platform/word/layout/LineHeights.h"
#include "platform/word/formatting/PropertyValues.h"

#include <algorithm>
#include <cmath>

namespace qvnd::layout {

namespace {

using Spacing = word::ResolvedParagraph::Spacing;

constexpr double lineUnits = 240;      // of a multiple
constexpr double partAbove = 0.8;      // of an exact line, above its foot
constexpr double officePixel = 6;      // of the office suite, in a twip
constexpr double gridRounding = 0.001; // of a grid's unit

bool isOnGrid(const word::ResolvedParagraph& format, const LineSetting& setting) {
    return setting.grid.linePitch > 0 && format.snapsToGrid;
}

// The least number of whole units that hold it.
double inUnits(double height, double unit) {
    return std::ceil(height / unit - gridRounding) * unit;
}

// What is added to the height that the content needs stands above it; on a grid around it.
LineRoom wordProcessorRoom(const ContentHeights& content, const word::ResolvedParagraph& format,
                           const LineSetting& setting) {
    const double natural = content.sum();
    const bool isMultiple = format.spacing == Spacing::multiple;
    const double multiple = isMultiple ? format.line / lineUnits : 1;
    if (!isOnGrid(format, setting)) {
        const double height = isMultiple ? content.pictures + content.text() * multiple
                                         : std::max<double>(natural, format.line);
        return {height, height - content.descent};
    }
    // The line's own distance is the unit: at one and a half lines, one and a half of them.
    const double onGrid = inUnits(natural, setting.grid.linePitch * multiple);
    const double height = isMultiple ? onGrid : std::max<double>(onGrid, format.line);
    return {height, (height - natural) / 2 + content.ascent};
}

// The office suite cuts what a multiple gives down to whole twips.
double wholeTwips(double height) {
    constexpr double rounding = 0.001; // of a twip
    return std::floor(height + rounding);
}

// A line set tighter than its content needs loses what stands above, the first one more evenly.
LineRoom tightRoom(const ContentHeights& content, double height, const LineOrder& order) {
    return {height, order.isFirst ? partAbove * height : height - content.descent};
}

// The office suite takes over whole percents.
double officeMultiple(const word::ResolvedParagraph& format) {
    constexpr double whole = 100;
    return format.spacing == Spacing::multiple ? std::floor(format.line * whole / lineUnits) / whole
                                               : 1;
}

LineRoom officeRoom(const ContentHeights& content, const word::ResolvedParagraph& format,
                    const LineSetting& setting, const LineOrder& order) {
    const double natural = content.sum();
    const double multiple = officeMultiple(format);
    if (isOnGrid(format, setting)) {
        const double onGrid = inUnits(natural, setting.grid.linePitch);
        const double unit = order.isLast ? natural : onGrid;
        const double spare = wholeTwips(std::max(1.0, multiple) * unit) - unit; // below the line
        return {onGrid + spare, (onGrid - natural) / 2 + content.ascent, spare};
    }
    if (format.spacing == Spacing::atLeast) {
        const double height = std::max<double>(natural, format.line);
        return {height, height - content.descent};
    }
    const double height = content.pictures + wholeTwips(multiple * content.text());
    if (multiple < 1) {
        return tightRoom(content, height, order);
    }
    return {height, content.ascent, height - natural};
}

bool isScript(const TextItem& item) {
    return item.format->script != word::ResolvedText::Script::normal;
}

bool isOneLook(const TextItem& a, const TextItem& b) {
    return a.format == b.format && a.face == b.face && a.size == b.size && a.raised == b.raised;
}

// Small capitals take the room of the letters that they stand for, in the office suite raised and
// lowered text that of the text around it.
double lineSize(const TextItem& item, bool office) {
    const bool standsForLarger = isScript(item) ? office : item.format->smallCapitals;
    return standsForLarger ? item.format->halfPoints * twipsPerHalfPoint : item.size;
}

double lineRise(const TextItem& item, bool office) {
    return isScript(item) && office ? item.format->raisedBy * twipsPerHalfPoint : item.raised;
}

// In the office suite the border around text makes its line higher.
double borderRoom(const TextItem& item, bool office) {
    const word::Border& border = item.format->border;
    return office && border.visible ? border.thickness + border.space : 0;
}

// The office suite measures faces in pixels of a sixth of a twip, and keeps whole twips of that.
double officePixels(double twips) { return std::round(twips * officePixel); }
double twipsOf(double pixels) { return std::round(pixels / officePixel); }

ContentHeights heightsIn(FaceHeights face, double size, const LineSetting& setting) {
    if (setting.options.officeLines) {
        return officeHeights(face, size, setting.hasLeading);
    }
    return {(face.ascent + (setting.hasLeading ? face.leading : 0)) * size, face.descent * size};
}

} // namespace

ContentHeights officeHeights(FaceHeights face, double size, bool hasLeading) {
    const double above = officePixels(face.ascent * size);
    const double ascent = twipsOf(above);
    const double height = twipsOf(above + officePixels(face.descent * size));
    const double leading = hasLeading ? twipsOf(officePixels(face.leading * size)) : 0;
    return {ascent + leading, height - ascent};
}

ScriptText officeScript(FaceHeights face, double size, bool isRaised, bool hasLeading) {
    constexpr double part = 0.58;
    const double own = part * size;
    const ContentHeights around = officeHeights(face, size, hasLeading);
    const ContentHeights small = officeHeights(face, own, hasLeading);
    return {own, isRaised ? around.ascent - small.ascent : small.descent - around.descent};
}

ContentHeights contentOf(std::span<const TextItem> items, const ParagraphItems& paragraph,
                         bool isLast, FontMetrics& fonts, const LineSetting& setting) {
    ContentHeights content;
    ContentHeights text;
    const auto add = [&](FaceId face, double size, double raised, double border = 0) {
        const ContentHeights own = heightsIn(fonts.heights(face), size, setting);
        text.add(own.ascent + raised + border, own.descent - raised + border);
    };
    const bool office = setting.options.officeLines;
    // Blanks and tabs count only where nothing else stands. In the office suite blanks count but
    // where a line is broken behind them.
    const bool hasText = std::any_of(items.begin(), items.end(), isSeen);
    const bool isBroken = !isLast && !items.empty() && !endsLine(items.back());
    const auto brokenBehind =
        isBroken ? std::find_if(items.rbegin(), items.rend(), isSeen).base() : items.end();
    const TextItem* last = nullptr; // whose height has been added
    for (auto at = items.begin(); at != items.end(); ++at) {
        const TextItem& item = *at;
        const bool isBlankOfOffice = office && isBlankItem(item) && at < brokenBehind;
        if (item.kind == TextItem::Kind::picture) {
            content.add(item.height + item.raised, -item.raised);
        } else if ((isSeen(item) || !hasText || isBlankOfOffice) &&
                   (last == nullptr || !isOneLook(*last, item))) {
            add(item.face, lineSize(item, office), lineRise(item, office),
                borderRoom(item, office));
            last = &item;
        }
    }
    if (setting.grid.cellWidth > 0 && !items.empty()) { // the space in front of the first cell
        add(items.front().face, items.front().size, 0);
    }
    if (items.empty() || (isLast && setting.options.marksCount)) {
        add(paragraph.markFace, paragraph.markSize, 0);
    }
    content.add(text.ascent, text.descent);
    // A line of pictures alone is as high as the mark's text to a multiple.
    const double textHeight =
        text.sum() > 0
            ? text.sum()
            : heightsIn(fonts.heights(paragraph.markFace), paragraph.markSize, setting).sum();
    content.pictures = std::max(0.0, content.sum() - textHeight);
    return content;
}

Grid gridOf(const word::ResolvedSection& section) {
    Grid grid;
    if (section.grid == word::GridKind::none) {
        return grid;
    }
    grid.linePitch = section.linePitch;
    grid.cellWidth = section.cellWidth;
    if (section.grid == word::GridKind::linesAndCharacters) {
        constexpr double unitsPerPoint = 4096;
        grid.characterSpacing = section.characterSpacing / unitsPerPoint * word::twipsPerPoint;
    }
    return grid;
}

double atCell(const Grid& grid, double x) {
    constexpr double rounding = 0.001; // of a cell
    if (grid.cellWidth <= 0) {
        return x;
    }
    const double cells = std::ceil((x + grid.offset) / grid.cellWidth - rounding);
    return std::max(0.0, cells) * grid.cellWidth - grid.offset;
}

double spaceAround(const ParagraphSpace& space, const Grid& grid) {
    constexpr double plainLine = 240;      // twips of a line without a grid
    constexpr double automaticSpace = 280; // twips
    constexpr double hundredth = 100;
    if (space.automatic) {
        return automaticSpace;
    }
    const double line = grid.linePitch > 0 ? grid.linePitch : plainLine;
    return space.lines > 0 ? space.lines * line / hundredth : space.twips;
}

LineRoom roomOf(const ContentHeights& content, const word::ResolvedParagraph& format,
                const LineSetting& setting, const LineOrder& order) {
    const bool gridCounts = setting.options.officeLines && isOnGrid(format, setting);
    if (format.spacing == Spacing::exact && !gridCounts) {
        return {static_cast<double>(format.line), partAbove * format.line};
    }
    return setting.options.officeLines ? officeRoom(content, format, setting, order)
                                       : wordProcessorRoom(content, format, setting);
}

} // namespace qvnd::layout
