#include "platform/word/layout/FloatComposer.h"

#include "platform/word/layout/CharacterClasses.h"
#include "platform/word/layout/ShapeOutlines.h"
#include "platform/word/layout/VerticalText.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace qvnd::layout {

namespace {

constexpr double narrowest = 200;   // twips that a text has at least
constexpr double largestArt = 4000; // twips that text art is high before it is stretched

double widthOf(const PageArea& area) { return area.right - area.left; }
double heightOf(const PageArea& area) { return area.bottom - area.top; }

void addSides(const ShapePart& part, Layer& layer) {
    const PageArea& area = part.area;
    const auto rule = [&](double x1, double y1, double x2, double y2) {
        layer.rules.push_back({x1, y1, x2, y2, part.lineWidth, part.lineColour});
    };
    rule(area.left, area.top, area.right, area.top);
    rule(area.left, area.bottom, area.right, area.bottom);
    rule(area.left, area.top, area.left, area.bottom);
    rule(area.right, area.top, area.right, area.bottom);
}

// Heads of arrows, at the ends of lines and connectors.
void addArrows(const ShapePart& part, const Path& path, Layer& layer) {
    const auto add = [&](PathPoint from, PathPoint tip) {
        Outline head;
        head.path = arrowHead(from, tip, part.lineWidth);
        head.fill = part.lineColour.value_or(0);
        head.hasLine = false;
        layer.outlines.push_back(std::move(head));
    };
    const auto& points = path.points;
    if (points.size() >= 2 && part.startsWithArrow) {
        add(points[1], points[0]);
    }
    if (points.size() >= 2 && part.endsWithArrow) {
        add(points[points.size() - 2], points.back());
    }
}

// Rectangles that stand upright are fills and rules; all other shapes have an outline.
void addShape(const ShapePart& part, Layer& layer) {
    Outline outline;
    outline.path =
        part.outline.isEmpty() ? shapeOutline(part.kind, part.area, part.turn) : part.outline;
    if (outline.path.isEmpty()) {
        if (part.fill) {
            layer.fills.push_back({part.area.left, part.area.top, widthOf(part.area),
                                   heightOf(part.area), *part.fill});
        }
        if (part.hasLine) {
            addSides(part, layer);
        }
        return;
    }
    outline.fill = part.fill;
    outline.hasLine = part.hasLine;
    outline.lineWidth = part.lineWidth;
    outline.lineColour = part.lineColour;
    outline.isDashed = part.isDashed;
    if (part.hasLine && isOpenShape(part.kind)) {
        addArrows(part, outline.path, layer);
    }
    layer.outlines.push_back(std::move(outline));
}

void addPicture(const ShapePart& part, Layer& layer) {
    const PageArea area = uprightArea(part.area, part.turn.angle);
    PlacedPicture picture{area.left, area.top, widthOf(area), heightOf(area), part.picture};
    picture.turn = part.turn;
    layer.pictures.push_back(std::move(picture));
}

// Text that is turned keeps its proportions: its area is the one that it takes when it is turned.
void fitTurned(TextArt& art) {
    constexpr double notTurned = 0.01;
    const double sin = std::abs(std::sin(art.angle));
    const double cos = std::abs(std::cos(art.angle));
    if (sin < notTurned) {
        return;
    }
    const double scale = std::min(art.width / (art.ownWidth * cos + art.ownHeight * sin),
                                  art.height / (art.ownWidth * sin + art.ownHeight * cos));
    art.x += (art.width - art.ownWidth * scale) / 2;
    art.y += (art.height - art.ownHeight * scale) / 2;
    art.width = art.ownWidth * scale;
    art.height = art.ownHeight * scale;
}

// The text of a shape ends with a paragraph mark that is not seen. Behind a table it is the
// paragraph that has to stand there.
void dropEndMark(const word::Story& story, Strips& strips) {
    const bool isMark = story.text.ends_with(u"\r\r") && strips.size() > 1 &&
                        strips.back().at + 1 == story.text.size();
    if (isMark) {
        strips.pop_back();
    }
}

// What floats in a text that stands in that part of its holder.
void hold(std::vector<AnchoredFloat> floats, const PageArea& area, AnchoredFloat& holder) {
    for (AnchoredFloat& floating : floats) {
        floating.columnWidth = floating.columnWidth > 0 ? floating.columnWidth : widthOf(area);
        floating.x += area.left;
        floating.y += area.top;
        holder.held.push_back(std::move(floating));
    }
}

FloatPlace::Align alignOf(word::ParagraphFrame::Place place) {
    using Place = word::ParagraphFrame::Place;
    switch (place) {
    case Place::start:
        return FloatPlace::Align::start;
    case Place::centre:
        return FloatPlace::Align::centre;
    case Place::end:
        return FloatPlace::Align::end;
    default:
        return FloatPlace::Align::none;
    }
}

} // namespace

std::optional<AnchoredFloat> FloatComposer::drawing(std::uint32_t index, const PageFields& fields,
                                                    const LineSetting& setting) {
    const word::DocumentTables& tables = *shared_.source.tables;
    if (index >= tables.drawings.size()) {
        return std::nullopt;
    }
    auto shapes = readShapes(tables.drawings[index], tables);
    if (!shapes) {
        return std::nullopt;
    }
    AnchoredFloat result;
    result.place = shapes->place;
    const std::uint32_t order = tables.drawings[index].order;
    for (std::size_t i = 0; i < shapes->parts.size(); ++i) {
        ShapePart& part = shapes->parts[i];
        Layer layer;
        addPart(part, fields, setting, layer, result);
        layer.movePlanes(planeOfDrawing(result.place.isBehindText, order, i));
        result.layer.append(std::move(layer), 0, 0);
        result.place.height = std::max(result.place.height, part.area.bottom);
    }
    return result;
}

void FloatComposer::addPart(ShapePart& part, const PageFields& fields, const LineSetting& setting,
                            Layer& layer, AnchoredFloat& holder) {
    Stack text = textOf(part, fields, setting);
    if (part.growsWithText) {
        part.area.bottom = part.area.top + part.padding.top + text.height + part.padding.bottom;
    }
    const double room = heightOf(part.area) - part.padding.top;
    const bool isFixed =
        !part.growsWithText && part.textFlow == word::TextFlow::across && part.turn.angle == 0;
    if (part.text && isFixed && text.height > room && !shared_.isLinked(*part.text)) {
        constexpr double anywhere = std::numeric_limits<double>::infinity();
        text.layer.cutBelow(room, -anywhere, anywhere);
    }
    if (isTextArt(part.kind)) {
        addArt(part, layer);
        return;
    }
    if (part.picture) {
        addPicture(part, layer);
    }
    addShape(part, layer);
    const double left = part.area.left + part.padding.left;
    const double top = part.area.top + part.padding.top;
    layer.append(text.layer, left, top);
    hold(std::move(text.floats), {left, top, part.area.right - part.padding.right, 0}, holder);
}

// The text on one line, in the size that its area is high. Without its fill it is not seen.
void FloatComposer::addArt(const ShapePart& part, Layer& layer) {
    TextArt art;
    art.x = part.area.left;
    art.y = part.area.top;
    art.width = widthOf(part.area);
    art.height = heightOf(part.area);
    art.angle = part.turn.angle;
    art.opacity = part.opacity;
    const double size = std::clamp(art.height, narrowest, largestArt);
    double ascent = 0;
    double descent = 0;
    for (const char16_t c : part.artText) {
        FaceRequest wanted = part.artFace;
        wanted.eastAsian = isEastAsian(c);
        const FaceId face = shared_.fonts.shownBy(shared_.fonts.face(wanted), c);
        const FaceHeights heights = shared_.fonts.heights(face);
        const double width = shared_.fonts.advance(face, c) * size;
        ascent = std::max(ascent, heights.ascent * size);
        descent = std::max(descent, heights.descent * size);
        if (art.texts.empty() || art.texts.back().face != face) {
            PlacedText text;
            text.x = art.ownWidth;
            text.size = size;
            text.face = face;
            text.colour = part.fill;
            art.texts.push_back(std::move(text));
        }
        art.texts.back().text += c;
        art.texts.back().advances.push_back(static_cast<float>(width));
        art.ownWidth += width;
    }
    for (PlacedText& text : art.texts) {
        text.baseline = ascent;
    }
    art.ownHeight = ascent + descent;
    const bool hasRoom = art.width > 0 && art.height > 0;
    if (part.fill && hasRoom && art.ownWidth > 0 && art.ownHeight > 0) {
        fitTurned(art);
        layer.textArt.push_back(std::move(art));
    }
}

Stack FloatComposer::textOf(const ShapePart& part, const PageFields& fields,
                            const LineSetting& setting) {
    const auto& texts = shared_.source.tables->shapeTexts;
    if (!part.text || *part.text >= texts.size() || !texts[*part.text].text) {
        return {};
    }
    const bool isAcross = part.textFlow == word::TextFlow::across;
    const double width = widthOf(part.area) - part.padding.left - part.padding.right;
    const double height = heightOf(part.area) - part.padding.top - part.padding.bottom;
    LineSetting inner = setting;
    inner.grid = {};
    inner.obstacles.clear();
    inner.isTurned = !isAcross;
    inner.width = std::max(narrowest, isAcross ? width : height);
    const word::Story& story = *texts[*part.text].text;
    BlockComposer composer(shared_, story);
    composer.setPage(fields);
    Strips strips = composer.composeAll(inner);
    dropEndMark(story, strips);
    if (isAcross) {
        return stacked(strips, shared_.addsSpaces);
    }
    using Alignment = word::VerticalAlignment;
    Strip turned = turnedText(strips, {width, inner.width, Alignment::top, part.textFlow},
                              shared_.fonts, shared_.addsSpaces);
    return {std::move(turned.layer), std::move(turned.floats), height};
}

AnchoredFloat framed(const word::ParagraphFrame& frame, double width, Stack content) {
    AnchoredFloat result;
    FloatPlace& place = result.place;
    place.across = frame.across;
    place.down = frame.down;
    place.alignAcross = alignOf(frame.placeAcross);
    place.alignDown = alignOf(frame.placeDown);
    place.left = frame.left;
    place.top = frame.top;
    place.width = width;
    place.height =
        frame.exactHeight ? frame.height : std::max<double>(frame.height, content.height);
    place.wrap = frame.textBeside ? FloatPlace::Wrap::beside : FloatPlace::Wrap::below;
    place.apartAcross = frame.apartAcross;
    place.apartDown = frame.apartDown;
    result.layer = std::move(content.layer);
    hold(std::move(content.floats), {0, 0, width, 0}, result);
    return result;
}

double textWidth(const Strips& strips) {
    double left = 0;
    double right = 0;
    bool isFirst = true;
    for (const Strip& strip : strips) {
        for (const PlacedText& text : strip.layer.texts) {
            const double end = std::accumulate(text.advances.begin(), text.advances.end(), text.x);
            left = isFirst ? text.x : std::min(left, text.x);
            right = isFirst ? end : std::max(right, end);
            isFirst = false;
        }
        for (const PlacedPicture& picture : strip.layer.pictures) {
            left = isFirst ? picture.x : std::min(left, picture.x);
            right =
                isFirst ? picture.x + picture.width : std::max(right, picture.x + picture.width);
            isFirst = false;
        }
    }
    return right - left;
}

} // namespace qvnd::layout
