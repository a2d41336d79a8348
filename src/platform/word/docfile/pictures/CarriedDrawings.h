#pragma once

#include "platform/word/docfile/document/DocumentTables.h"
#include "platform/word/docfile/pictures/Drawings.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <unordered_map>
#include <unordered_set>

namespace qvnd::word {

// Turns the anchored shapes of a file into drawings that any document can take over.
class CarriedDrawings {
public:
    // Which of DocumentTables::shapeTexts has that number in the part's table of text boxes,
    // counted from 1. Nothing: there is no such text.
    using TextOf = std::function<std::optional<std::uint32_t>(std::uint16_t number)>;

    // All outlive the object; pictures and objects are added to `tables`.
    CarriedDrawings(const Drawings& drawings, const EmbeddedObjects& objects,
                    DocumentTables& tables)
        : drawings_(drawings), objects_(objects), tables_(tables) {}

    // The place in DocumentTables::drawings of what an anchor (Spa) stands for. Nothing when its
    // shape does not exist, is damaged, or has an anchor already.
    std::optional<std::uint32_t> add(DrawingOf part, ByteView spa, const TextOf& textOf);

private:
    // The references of `drawing` are still the file's numbers.
    void resolve(DrawingOf part, Drawing& drawing, const TextOf& textOf);
    std::optional<std::uint32_t> pictureOf(std::uint32_t number);
    std::optional<std::uint32_t> objectOf(std::uint32_t number);
    std::uint32_t newShape(DrawingOf part, std::uint32_t id);
    std::uint32_t shapeOf(DrawingOf part, std::uint32_t id);

    const Drawings& drawings_;
    const EmbeddedObjects& objects_;
    DocumentTables& tables_;
    // By number in the store.
    std::unordered_map<std::uint32_t, std::optional<std::uint32_t>> pictures_;
    // By identifier; those of the two drawings may be the same in a damaged file.
    std::array<std::unordered_map<std::uint32_t, std::uint32_t>, 2> shapes_;
    std::array<std::unordered_set<std::uint32_t>, 2> anchored_;
    std::unordered_set<std::uint32_t> present_; // shapes that are part of a drawing
};

} // namespace qvnd::word
