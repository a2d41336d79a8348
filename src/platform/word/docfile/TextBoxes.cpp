#include "platform/word/docfile/TextBoxes.h"

#include "platform/word/docfile/Plc.h"

#include <algorithm>
#include <optional>
#include <unordered_map>

namespace qvnd::word {

namespace {

constexpr std::size_t textBoxSize = 22; // FTXBXS
constexpr std::size_t reusableAt = 8;   // fReusable
constexpr std::size_t shapeAt = 14;     // lid
constexpr std::size_t anchorSize = 26;  // Spa
constexpr unsigned textFrame = 202;     // MSOSPT: a text box

using Anchors = std::unordered_map<std::uint32_t, Cp>; // by shape

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

Anchors anchorsByShape(const Plc& anchors) {
    Anchors result;
    for (std::size_t i = 0; i < anchors.count(); ++i) {
        const std::uint32_t shape = LittleEndianReader(anchors.element(i), "Spa").u32();
        result.try_emplace(shape, anchors.positions[i]);
    }
    return result;
}

std::optional<Cp> anchorOf(std::uint32_t id, const Shape* shape, const Anchors& anchors) {
    auto found = anchors.find(id);
    if (found == anchors.end() && shape != nullptr) {
        found = anchors.find(shape->outermost);
    }
    return found != anchors.end() ? std::optional(found->second) : std::nullopt;
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

int countTextFrames(ByteView anchorTable, const Drawings& drawings) {
    const Plc anchors = decodePlc(anchorTable, anchorSize);
    int count = 0;
    for (std::size_t i = 0; i < anchors.count(); ++i) {
        const Shape* shape = drawings.shape(LittleEndianReader(anchors.element(i), "Spa").u32());
        count += shape != nullptr && shape->kind == textFrame && shape->text ? 1 : 0;
    }
    return count;
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
            at = anchorOf(shape->outermost, shape, anchors);
        }
        if (at) {
            places.push_back({*at, start, limit - start});
        }
    }
    std::stable_sort(places.begin(), places.end(),
                     [](const TextBoxPlace& a, const TextBoxPlace& b) { return a.at < b.at; });
    return places;
}

} // namespace qvnd::word
