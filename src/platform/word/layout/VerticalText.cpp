#include "platform/word/layout/VerticalText.h"

#include "platform/word/layout/CharacterClasses.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace qvnd::layout {

namespace {

using word::VerticalAlignment;

constexpr double aboveBaseline = 0.88; // of the square of a Chinese character

double spaceBeside(double rest, VerticalAlignment alignment) {
    switch (alignment) {
    case VerticalAlignment::centre:
        return rest / 2;
    case VerticalAlignment::bottom:
        return rest;
    default:
        return 0;
    }
}

// Turns layers into a room.
class Turning {
public:
    // `aside`: from the side of the room where the first line stands.
    Turning(const TurnedRoom& room, double aside, FontMetrics& fonts)
        : flow_(room.flow), side_(isUp() ? aside : room.width - aside), height_(room.height),
          fonts_(fonts) {}

    // `middle`: of the line, from its top.
    void add(const Layer& line, double top, double middle, Layer& result) const {
        for (const Fill& fill : line.fills) {
            result.fills.push_back(fill);
            turn(result.fills.back(), top);
        }
        for (const Rule& rule : line.rules) {
            Rule turned = rule;
            const PathPoint from = at(rule.x1, top + rule.y1);
            const PathPoint to = at(rule.x2, top + rule.y2);
            turned.x1 = from.x;
            turned.y1 = from.y;
            turned.x2 = to.x;
            turned.y2 = to.y;
            result.rules.push_back(turned);
        }
        for (const PlacedPicture& picture : line.pictures) {
            result.pictures.push_back(picture);
            turn(result.pictures.back(), top);
        }
        for (const Outline& outline : line.outlines) {
            result.outlines.push_back(outline);
            for (PathPoint& point : result.outlines.back().path.points) {
                point = at(point.x, top + point.y);
            }
        }
        for (const PlacedText& text : line.texts) {
            addText(text, top, middle, result);
        }
    }

private:
    bool isUp() const { return flow_ == word::TextFlow::up; }
    // Where a point of the text across comes to stand.
    PathPoint at(double x, double y) const {
        return isUp() ? PathPoint{side_ + y, height_ - x} : PathPoint{side_ - y, x};
    }

    template <class Area>
    void turn(Area& area, double top) const {
        const PathPoint first = at(area.x, top + area.y);
        const PathPoint second = at(area.x + area.width, top + area.y + area.height);
        area.x = std::min(first.x, second.x);
        area.y = std::min(first.y, second.y);
        std::swap(area.width, area.height);
    }

    bool isUpright(char16_t c) const {
        return flow_ == word::TextFlow::down && isEastAsian(c) && !isBracket(c);
    }

    void addText(const PlacedText& text, double top, double middle, Layer& result) const {
        double along = text.x;
        bool goesOn = false; // in the turned text before
        for (std::size_t i = 0; i < text.text.size(); ++i) {
            const char16_t c = text.text[i];
            if (isUpright(c)) {
                result.texts.push_back(part(text));
                PlacedText& upright = result.texts.back();
                const double width = fonts_.advance(text.face, c) * text.size;
                upright.x = at(along, top + middle).x - width / 2;
                upright.baseline = along + aboveBaseline * text.size;
                upright.underline = {};
                upright.struckOut = false;
                append(upright, c, static_cast<float>(width));
            } else {
                if (!goesOn) {
                    const PathPoint begin = at(along, top + text.baseline);
                    result.texts.push_back(part(text));
                    result.texts.back().x = begin.x;
                    result.texts.back().baseline = begin.y;
                    result.texts.back().quarterTurns = isUp() ? -1 : 1;
                }
                append(result.texts.back(), c, text.advances[i]);
            }
            goesOn = !isUpright(c);
            along += text.advances[i];
        }
    }

    static PlacedText part(const PlacedText& text) {
        PlacedText result = text;
        result.text.clear();
        result.advances.clear();
        return result;
    }

    static void append(PlacedText& text, char16_t c, float advance) {
        text.text += c;
        text.advances.push_back(advance);
    }

    word::TextFlow flow_;
    double side_; // of the first line
    double height_;
    FontMetrics& fonts_;
};

} // namespace

Strip turnedText(const Strips& lines, const TurnedRoom& room, FontMetrics& fonts, bool addsSpaces) {
    Strip result = lines.empty() ? Strip{} : lines.front();
    result.layer = {};
    result.notes.clear();
    result.floats.clear();
    result.row = nullptr;
    result.before = result.after = 0;
    const double rest = room.width - heightOf(lines, addsSpaces);
    const Turning turning(room, spaceBeside(rest, room.alignment), fonts);
    double top = 0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const Strip& line = lines[i];
        top += i > 0 ? gapBetween(lines[i - 1], line, addsSpaces) : line.before;
        turning.add(line.layer, top, line.height / 2, result.layer);
        result.notes.insert(result.notes.end(), line.notes.begin(), line.notes.end());
        result.floats.insert(result.floats.end(), line.floats.begin(), line.floats.end());
        top += line.height;
    }
    return result;
}

word::TextFlow flowOfShape(std::uint32_t txfl) {
    using word::TextFlow;
    switch (txfl) {
    case 1:
    case 5:
        return TextFlow::down;
    case 2:
        return TextFlow::up;
    case 3:
        return TextFlow::downTurned;
    default:
        return TextFlow::across;
    }
}

} // namespace qvnd::layout
