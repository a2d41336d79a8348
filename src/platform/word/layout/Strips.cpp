#include "platform/word/layout/Strips.h"

#include <algorithm>

namespace qvnd::layout {

namespace {

std::size_t sizeOf(const std::vector<PlacedText>& texts) {
    std::size_t size = 0;
    for (const PlacedText& text : texts) {
        size += sizeof(text) + text.text.size() * (sizeof(char16_t) + sizeof(float));
    }
    return size;
}

std::size_t sizeOf(const AnchoredFloat& floating) {
    std::size_t size = sizeof(floating) + qvnd::layout::sizeOf(floating.layer) +
                       floating.notes.size() * sizeof(floating.notes.front());
    for (const AnchoredFloat& held : floating.held) {
        size += sizeOf(held);
    }
    return size;
}

// Of Strips or SharedStrips.
template <class List>
double heightOfAll(const List& strips, bool addsSpaces) {
    double height = 0;
    for (std::size_t i = 0; i < strips.size(); ++i) {
        height += i > 0 ? gapBetween(strips[i - 1], strips[i], addsSpaces) : strips[i].before;
        height += strips[i].height;
    }
    return height + (strips.empty() ? 0 : strips.back().after);
}

} // namespace

SharedStrips::SharedStrips(Strips strips) {
    strips_.reserve(strips.size());
    for (Strip& strip : strips) {
        push_back(std::move(strip));
    }
}

void SharedStrips::append(const SharedStrips& others, std::size_t from, std::size_t to) {
    strips_.insert(strips_.end(), others.strips_.begin() + static_cast<std::ptrdiff_t>(from),
                   others.strips_.begin() + static_cast<std::ptrdiff_t>(to));
}

std::size_t sizeOf(const Layer& layer) {
    std::size_t size = layer.fills.size() * sizeof(Fill) + layer.rules.size() * sizeof(Rule) +
                       layer.pictures.size() * sizeof(PlacedPicture);
    for (const Outline& outline : layer.outlines) {
        size += sizeof(outline) + outline.path.points.size() * sizeof(PathPoint);
    }
    size += sizeOf(layer.texts);
    for (const TextArt& art : layer.textArt) {
        size += sizeof(art) + sizeOf(art.texts);
    }
    return size;
}

void movePlanes(AnchoredFloat& floating, Plane by) {
    floating.layer.movePlanes(by);
    for (AnchoredFloat& held : floating.held) {
        movePlanes(held, by);
    }
}

std::size_t sizeOf(const Strip& strip) {
    std::size_t size = sizeof(strip) + sizeOf(strip.layer);
    for (const AnchoredFloat& floating : strip.floats) {
        size += sizeOf(floating);
    }
    if (strip.row) {
        size += sizeof(RowParts) + sizeOf(strip.row->frame);
        for (const RowParts::Cell& cell : strip.row->cells) {
            for (std::size_t i = 0; i < cell.strips.size(); ++i) {
                size += sizeOf(cell.strips[i]);
            }
        }
    }
    return size;
}

double gapBetween(const Strip& above, const Strip& below, bool addsSpaces) {
    const bool oneStyle = above.style == below.style && above.paragraph != below.paragraph;
    const double after = above.contextual && oneStyle ? 0 : above.after;
    const double before = below.contextual && oneStyle ? 0 : below.before;
    return addsSpaces ? after + before : std::max(after, before);
}

Stack stacked(const Strips& strips, bool addsSpaces) {
    Stack stack;
    for (std::size_t i = 0; i < strips.size(); ++i) {
        const Strip& strip = strips[i];
        stack.height += i > 0 ? gapBetween(strips[i - 1], strip, addsSpaces) : strip.before;
        stack.layer.append(strip.layer, 0, stack.height);
        for (AnchoredFloat floating : strip.floats) {
            floating.y += stack.height;
            stack.floats.push_back(std::move(floating));
        }
        stack.height += strip.height;
    }
    stack.height += strips.empty() ? 0 : strips.back().after;
    return stack;
}

double heightOf(const Strips& strips, bool addsSpaces) { return heightOfAll(strips, addsSpaces); }

double heightOf(const SharedStrips& strips, bool addsSpaces) {
    return heightOfAll(strips, addsSpaces);
}

} // namespace qvnd::layout
