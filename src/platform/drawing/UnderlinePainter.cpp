#include "platform/drawing/UnderlinePainter.h"

#include "platform/drawing/CairoImage.h"
#include "platform/word/layout/CharacterClasses.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace qvnd::drawing {

namespace {

using layout::PlacedText;
using Kind = word::Underline::Kind;

struct Stretch {
    double from = 0;
    double to = 0;
};

// The parts of a text that have a line.
std::vector<Stretch> stretchesOf(const PlacedText& text) {
    std::vector<Stretch> stretches;
    double from = 0;
    for (std::size_t i = 0; i < text.text.size(); ++i) {
        const double to = from + text.advances[i];
        const bool isLeftOut = text.underline.skipsBlanks && layout::isBlank(text.text[i]);
        if (!isLeftOut && !stretches.empty() && stretches.back().to == from) {
            stretches.back().to = to;
        } else if (!isLeftOut) {
            stretches.push_back({from, to});
        }
        from = to;
    }
    return stretches;
}

// Strokes and gaps in parts of the line's width.
std::vector<double> dashesOf(Kind kind) {
    switch (kind) {
    case Kind::dotted:
        return {1, 1};
    case Kind::dashed:
        return {4, 2};
    case Kind::longDashed:
        return {8, 3};
    case Kind::dotDash:
        return {4, 1.5, 1, 1.5};
    case Kind::dotDotDash:
        return {4, 1, 1, 1, 1, 1};
    default:
        return {};
    }
}

void strokeStraight(cairo_t* context, const Stretch& stretch, double y) {
    cairo_move_to(context, stretch.from, y);
    cairo_line_to(context, stretch.to, y);
    cairo_stroke(context);
}

// Up and down by a part of the width of a plain line.
void strokeWave(cairo_t* context, const Stretch& stretch, double y, double line) {
    constexpr double step = 1.5;
    constexpr double height = 0.6;
    double side = -1;
    cairo_move_to(context, stretch.from, y);
    for (double x = stretch.from; x < stretch.to; side = -side) {
        x += step * line;
        cairo_line_to(context, std::min(x, stretch.to), y + side * height * line);
    }
    cairo_stroke(context);
}

} // namespace

void paintUnderline(cairo_t* context, const PlacedText& text) {
    constexpr double below = 0.12; // of the size
    constexpr double thinnest = 10;
    constexpr double narrow = 0.5; // of the width of a plain line: one of two, and a wave
    const word::Underline& underline = text.underline;
    const double line = std::max(thinnest, text.size / 18) * (underline.isThick ? 2 : 1);
    const double y = below * text.size;
    const bool isWavy = underline.kind == Kind::wavy || underline.kind == Kind::twofoldWavy;
    const bool isTwofold = underline.kind == Kind::twofold || underline.kind == Kind::twofoldWavy;
    cairo_save(context);
    if (underline.colour) {
        setColour(context, *underline.colour);
    }
    cairo_set_line_width(context, isWavy || isTwofold ? narrow * line : line);
    cairo_set_line_cap(context,
                       underline.kind == Kind::plain ? CAIRO_LINE_CAP_SQUARE : CAIRO_LINE_CAP_BUTT);
    std::vector<double> dashes = dashesOf(underline.kind);
    for (double& dash : dashes) {
        dash *= line;
    }
    cairo_set_dash(context, dashes.data(), static_cast<int>(dashes.size()), 0);
    const double apart = isTwofold ? (isWavy ? 1.1 : 0.75) * line : 0;
    for (const Stretch& stretch : stretchesOf(text)) {
        for (const double aside : isTwofold ? std::vector{-apart, apart} : std::vector{0.0}) {
            if (isWavy) {
                strokeWave(context, stretch, y + aside, line);
            } else {
                strokeStraight(context, stretch, y + aside);
            }
        }
    }
    cairo_restore(context);
}

} // namespace qvnd::drawing
