#include "platform/word/layout/VerticalText.h"

#include "platform/word/layout/CharacterClasses.h"

#include <cstddef>
#include <utility>

namespace qvnd::layout {

namespace {

using word::VerticalAlignment;

constexpr double aboveBaseline = 0.88; // of the square of a Chinese character

bool isUpright(char16_t c) { return isEastAsian(c) && !isBracket(c); }

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

// Turns a layer clockwise about its upper left corner, which comes to stand at `right`.
class Turning {
public:
    Turning(double right, FontMetrics& fonts) : right_(right), fonts_(fonts) {}

    // `middle`: of the line, from its top.
    void add(const Layer& line, double top, double middle, Layer& result) const {
        for (const Fill& fill : line.fills) {
            result.fills.push_back({right_ - top - fill.y - fill.height, fill.x, fill.height,
                                    fill.width, fill.colour});
        }
        for (const Rule& rule : line.rules) {
            Rule turned = rule;
            turned.x1 = right_ - top - rule.y1;
            turned.x2 = right_ - top - rule.y2;
            turned.y1 = rule.x1;
            turned.y2 = rule.x2;
            result.rules.push_back(turned);
        }
        for (const PlacedPicture& picture : line.pictures) {
            PlacedPicture upright = picture;
            upright.x = right_ - top - picture.y - picture.height;
            upright.y = picture.x;
            std::swap(upright.width, upright.height);
            result.pictures.push_back(std::move(upright));
        }
        for (const Outline& outline : line.outlines) {
            result.outlines.push_back(outline);
            for (PathPoint& point : result.outlines.back().path.points) {
                point = {right_ - top - point.y, point.x};
            }
        }
        for (const PlacedText& text : line.texts) {
            addText(text, top, middle, result);
        }
    }

private:
    void addText(const PlacedText& text, double top, double middle, Layer& result) const {
        double along = text.x;
        bool goesOn = false; // in the turned text before
        for (std::size_t i = 0; i < text.text.size(); ++i) {
            const char16_t c = text.text[i];
            if (isUpright(c)) {
                result.texts.push_back(part(text));
                PlacedText& upright = result.texts.back();
                const double width = fonts_.advance(text.face, c) * text.size;
                upright.x = right_ - top - middle - width / 2;
                upright.baseline = along + aboveBaseline * text.size;
                upright.underline = {};
                upright.struckOut = false;
                append(upright, c, static_cast<float>(width));
            } else {
                if (!goesOn) {
                    result.texts.push_back(part(text));
                    result.texts.back().x = right_ - top - text.baseline;
                    result.texts.back().baseline = along;
                    result.texts.back().isTurned = true;
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

    double right_;
    FontMetrics& fonts_;
};

} // namespace

Strip runningDown(const Strips& lines, double width, VerticalAlignment alignment,
                  FontMetrics& fonts, bool addsSpaces) {
    Strip result = lines.empty() ? Strip{} : lines.front();
    result.layer = {};
    result.notes.clear();
    result.floats.clear();
    result.row = nullptr;
    result.before = result.after = 0;
    const double rest = width - heightOf(lines, addsSpaces);
    const Turning turning(width - spaceBeside(rest, alignment), fonts);
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

} // namespace qvnd::layout
