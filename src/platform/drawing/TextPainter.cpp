#include "platform/drawing/TextPainter.h"

#include "platform/drawing/CairoImage.h"
#include "platform/drawing/UnderlinePainter.h"

#include <algorithm>
#include <cstdint>
#include <numbers>
#include <numeric>

namespace qvnd::drawing {

namespace {

using layout::PlacedText;
using Relief = word::LetterEffects::Relief;

constexpr std::uint32_t black = 0x000000;
constexpr std::uint32_t white = 0xFFFFFF;
constexpr std::uint32_t shadow = 0xC0C0C0;
constexpr std::uint32_t shadowOfLight = 0x404040;
constexpr std::uint32_t sideOfRelief = 0x808080; // that lies in the dark
constexpr double farAside = 1.0 / 24;            // of the size: shadows and sides of a relief
constexpr double edge = 1.0 / 40;                // of the size
constexpr double thinnestEdge = 5;               // twips

bool isLight(std::uint32_t rgb) {
    constexpr std::uint32_t middle = 3 * 0xA0;
    return (rgb >> 16U) + ((rgb >> 8U) & 0xFFU) + (rgb & 0xFFU) > middle;
}

std::uint32_t colourOf(const PlacedText& text) { return text.colour.value_or(black); }

// Outlined letters hide what lies behind them. Black ones in relief are as white as paper and are
// seen by their dark side alone.
std::uint32_t colourWithin(const PlacedText& text) {
    const bool isCut = text.effects.relief != Relief::none && colourOf(text) == black;
    return text.effects.outlined || isCut ? white : colourOf(text);
}

void moveTo(cairo_t* context, const PlacedText& text, double aside) {
    cairo_translate(context, text.x + aside, text.baseline + aside);
    if (text.quarterTurns != 0) {
        cairo_rotate(context, text.quarterTurns * std::numbers::pi / 2);
    }
}

// Under and through the text.
void paintLines(cairo_t* context, const PlacedText& text) {
    constexpr double through = -0.28; // of the size
    constexpr double thinnest = 10;
    cairo_save(context);
    moveTo(context, text, 0);
    setColour(context, colourOf(text));
    if (text.underline.isSeen()) {
        paintUnderline(context, text);
    }
    if (text.struckOut) {
        const double width = std::accumulate(text.advances.begin(), text.advances.end(), 0.0);
        cairo_set_line_width(context, std::max(thinnest, text.size / 18));
        cairo_set_line_cap(context, CAIRO_LINE_CAP_SQUARE);
        cairo_move_to(context, 0, through * text.size);
        cairo_line_to(context, width, through * text.size);
        cairo_stroke(context);
    }
    cairo_restore(context);
}

} // namespace

struct TextPainter::Show {
    std::uint32_t colour = black;
    Ink ink = Ink::text;
    double aside = 0; // to the right and down, in twips
};

void TextPainter::paint(cairo_t* context, const PlacedText& text) {
    paintBehind(context, text);
    show(context, text, {colourWithin(text)});
    if (text.effects.outlined) {
        show(context, text, {colourOf(text), Ink::edges});
    }
    paintLines(context, text);
}

// The light comes from the upper left.
void TextPainter::paintBehind(cairo_t* context, const PlacedText& text) {
    const double aside = farAside * text.size;
    if (text.effects.shadowed) {
        const std::uint32_t colour = isLight(colourOf(text)) ? shadowOfLight : shadow;
        show(context, text, {colour, Ink::areas, aside});
    }
    if (text.effects.relief != Relief::none) {
        const bool isRaised = text.effects.relief == Relief::raised;
        show(context, text, {sideOfRelief, Ink::areas, isRaised ? aside : -aside});
    }
}

void TextPainter::show(cairo_t* context, const PlacedText& text, const Show& how) {
    cairo_save(context);
    moveTo(context, text, how.aside);
    setColour(context, how.colour);
    cairo_set_line_width(context, std::max(thinnestEdge, edge * text.size));
    cairo_set_line_join(context, CAIRO_LINE_JOIN_ROUND);
    glyphs_.show(context, {text.face, text.size, text.stretch, text.text, text.advances, how.ink});
    cairo_restore(context);
}

} // namespace qvnd::drawing
