#include "platform/word/docfile/writer/DrawingParts.h"

#include <unordered_set>

namespace qvnd::word {

namespace {

constexpr std::size_t mostTexts = 0xFFFE; // a shape names its text with 16 bits

} // namespace

DrawingPart gatherDrawings(std::span<const Anchor> anchors, const DocumentTables& tables,
                           const std::shared_ptr<const Story>& closing) {
    DrawingPart part;
    part.places.reserve(anchors.size());
    std::vector<std::uint32_t> copies(tables.drawings.size());
    std::unordered_set<CopyKey> known;
    for (const Anchor& anchor : anchors) {
        if (anchor.kind != AnchorKind::drawing) {
            continue;
        }
        const std::uint32_t copy = copies.at(anchor.index)++;
        part.places.push_back({anchor.at, anchor.index, copy});
        forEachShownText(
            tables.drawings[anchor.index], [&](std::uint32_t, const ShapeReference& text) {
                if (text.link != 0 || part.texts.size() == mostTexts ||
                    !known.insert(keyOf(text.index, copy)).second) {
                    return;
                }
                const std::shared_ptr<const Story>& story = tables.shapeTexts.at(text.index).text;
                part.texts.push_back({text.index, copy, part.length, story->size()});
                part.slices.push_back({story, 0, story->size()});
                part.length += story->size();
            });
    }
    if (!part.slices.empty()) {
        part.slices.push_back({closing, 0, closing->size()});
        part.length += closing->size();
    }
    return part;
}

} // namespace qvnd::word
