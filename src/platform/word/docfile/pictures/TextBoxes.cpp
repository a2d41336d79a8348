#include "platform/word/docfile/pictures/TextBoxes.h"

#include "platform/word/docfile/format/Plc.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <unordered_map>

namespace qvnd::word {

namespace {

constexpr std::size_t textBoxSize = 22; // FTXBXS
constexpr std::size_t breakSize = 6;    // Tbkd
constexpr std::size_t reusableAt = 8;   // fReusable
constexpr std::size_t shapeAt = 14;     // lid
constexpr std::size_t anchorSize = 26;  // Spa

struct Anchor {
    Cp at = 0;
    std::optional<FrameSpot> spot;
};
using Anchors = std::unordered_map<std::uint32_t, Anchor>; // by shape

// The last text box is there for the format's sake only.
std::size_t realCount(const Plc& boxes) { return std::max<std::size_t>(boxes.count(), 1) - 1; }

bool isForReuse(ByteView box) {
    LittleEndianReader reader(box, "FTXBXS");
    reader.seek(reusableAt);
    return (reader.u16() & 1U) != 0;
}

std::uint32_t shapeOf(ByteView box) {
    LittleEndianReader reader(box, "FTXBXS");
    reader.seek(shapeAt);
    return reader.u32();
}

// A frame's properties have 15 bits for each number.
constexpr std::int64_t farthest = 31680; // 22 inches, the most that Word allows

FrameSpot::Across across(unsigned bx) {
    return bx == 0   ? FrameSpot::Across::fromMargin
           : bx == 1 ? FrameSpot::Across::fromPage
                     : FrameSpot::Across::fromColumn;
}

FrameSpot::Down down(unsigned by) {
    return by == 0   ? FrameSpot::Down::fromMargin
           : by == 1 ? FrameSpot::Down::fromPage
                     : FrameSpot::Down::fromParagraph;
}

// What follows the shape's identifier in a Spa.
std::optional<FrameSpot> spotOf(LittleEndianReader& spa) {
    const std::int64_t left = spa.i32();
    const std::int64_t top = spa.i32();
    const std::int64_t width = spa.i32() - left;
    const std::int64_t height = spa.i32() - top;
    const unsigned flags = spa.u16();
    if (width <= 0 || height <= 0 ||
        std::max({width, height, std::abs(left), std::abs(top)}) > farthest) {
        return std::nullopt;
    }
    return FrameSpot{across((flags >> 1U) & 3U), down((flags >> 3U) & 3U),
                     static_cast<int>(left),     static_cast<int>(top),
                     static_cast<int>(width),    static_cast<int>(height)};
}

Anchors anchorsByShape(const Plc& anchors) {
    Anchors result;
    for (std::size_t i = 0; i < anchors.count(); ++i) {
        LittleEndianReader spa(anchors.element(i), "Spa");
        const std::uint32_t shape = spa.u32();
        result.try_emplace(shape, Anchor{anchors.positions[i], spotOf(spa)});
    }
    return result;
}

std::optional<Anchor> anchorOf(std::uint32_t id, const Shape* shape, const Anchors& anchors) {
    if (const auto found = anchors.find(id); found != anchors.end()) {
        return found->second;
    }
    const auto found = shape != nullptr ? anchors.find(shape->outermost) : anchors.end();
    if (found == anchors.end()) {
        return std::nullopt;
    }
    return Anchor{found->second.at, std::nullopt}; // the spot is the group's
}

} // namespace

int countTextBoxes(ByteView table) {
    const Plc boxes = decodePlc(table, textBoxSize);
    int count = 0;
    for (std::size_t i = 0; i < realCount(boxes); ++i) {
        count += isForReuse(boxes.element(i)) ? 0 : 1;
    }
    return count;
}

std::vector<BoxText> readBoxTexts(ByteView table, ByteView breakTable, Cp length) {
    const Plc boxes = decodePlc(table, textBoxSize);
    std::vector<BoxText> texts(boxes.count() == 0 ? 0 : realCount(boxes));
    Cp end = 0; // texts do not overlap, whatever a damaged table says
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const Cp start = std::max(boxes.positions[i], end);
        const Cp limit = std::min(boxes.positions[i + 1], length);
        if (start < limit && !isForReuse(boxes.element(i))) {
            end = limit;
            texts[i] = {start, limit - start, {}};
        }
    }
    const Plc breaks = decodePlc(breakTable, breakSize);
    for (std::size_t i = 0; i + 1 < breaks.count(); ++i) {
        const std::size_t box = LittleEndianReader(breaks.element(i), "Tbkd").u16();
        const Cp at = breaks.positions[i];
        if (box < texts.size() && at > texts[box].start &&
            at < texts[box].start + texts[box].length) {
            texts[box].breaks.push_back(at - texts[box].start);
        }
    }
    return texts;
}

std::vector<TextBoxPlace> readTextBoxPlaces(const TextBoxTables& tables, const Drawings& drawings,
                                            Cp length) {
    const Plc boxes = decodePlc(tables.boxes, textBoxSize);
    const Anchors anchors = anchorsByShape(decodePlc(tables.anchors, anchorSize));
    std::vector<TextBoxPlace> places;
    Cp end = 0; // texts do not overlap, whatever a damaged table says
    for (std::size_t i = 0; i < realCount(boxes); ++i) {
        const Cp start = std::max(boxes.positions[i], end);
        const Cp limit = std::min(boxes.positions[i + 1], length);
        if (start >= limit || isForReuse(boxes.element(i))) {
            continue;
        }
        end = limit;
        const std::uint32_t id = shapeOf(boxes.element(i));
        auto at = anchorOf(id, drawings.shape(id), anchors);
        if (const Shape* shape = drawings.shapeOfText(i + 1); !at && shape != nullptr) {
            at = anchorOf(shape->id, shape, anchors);
        }
        if (at) {
            places.push_back({i + 1, at->at, start, limit - start, at->spot});
        }
    }
    std::stable_sort(places.begin(), places.end(),
                     [](const TextBoxPlace& a, const TextBoxPlace& b) { return a.at < b.at; });
    return places;
}

} // namespace qvnd::word
