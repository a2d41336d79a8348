#pragma once

#include "platform/word/docfile/document/DocumentContent.h"

#include <cstdint>
#include <memory>
#include <span>
#include <unordered_set>
#include <utility>
#include <vector>

// The drawings of a document in the order in which a file has them.
namespace qvnd::word {

// A shape or a text of the tables, and which copy of it: what drawings name, they name anew with
// each place that they have.
using CopyKey = std::uint64_t;
constexpr CopyKey keyOf(std::uint32_t index, std::uint32_t copy) {
    return (CopyKey{copy} << 32) | index;
}

// The drawings that float over one part of the text, and the part of the text that their own texts
// make, one behind the other.
struct DrawingPart {
    struct Place {
        Cp at = 0;
        std::uint32_t drawing = 0; // in the pool
        std::uint32_t copy = 0;    // how often it was placed before: headers may be copied
    };
    struct Text {
        std::uint32_t index = 0; // in the pool
        std::uint32_t copy = 0;
        Cp start = 0;
        Cp length = 0;
    };
    std::vector<Place> places; // by their positions
    std::vector<Text> texts;
    SlicedText slices;
    Cp length = 0; // with the mark that closes the part; 0 when there is no text
};

// Gathers the drawings of one part of a growing document, save after save: what was there with the
// call before is not gathered again. All calls get the same tables.
class DrawingGathering {
public:
    // `closing`: a story of one paragraph mark, behind the texts of the part.
    explicit DrawingGathering(std::shared_ptr<const Story> closing)
        : closing_(std::move(closing)) {}

    // Valid until the next call.
    const DrawingPart& gather(std::span<const Anchor> anchors, const DocumentTables& tables);

private:
    bool goesOn(std::span<const Anchor> anchors);
    void add(const Anchor& anchor, const DocumentTables& tables);

    std::shared_ptr<const Story> closing_;
    DrawingPart part_;
    std::vector<std::uint32_t> copies_; // by drawing, how often it has been placed
    std::unordered_set<CopyKey> known_; // texts that have their place
};

// Calls `visit` with each shape of the drawing that shows a text, and the first text that it names.
template <class Visit>
void forEachShownText(const Drawing& drawing, Visit visit) {
    std::uint32_t shape = 0;
    bool shows = true;
    for (const ShapeReference& reference : drawing.references) {
        if (reference.kind == ShapeReference::Kind::shape) {
            shape = reference.index;
            shows = false;
        } else if (reference.kind == ShapeReference::Kind::text && !shows) {
            shows = true;
            visit(shape, reference);
        }
    }
}

} // namespace qvnd::word
