#include "platform/word/docfile/writer/DrawingParts.h"

namespace qvnd::word {

namespace {

constexpr std::size_t mostTexts = 0xFFFE; // a shape names its text with 16 bits

} // namespace

const DrawingPart& DrawingGathering::gather(std::span<const Anchor> anchors,
                                            const DocumentTables& tables) {
    if (!goesOn(anchors)) {
        *this = DrawingGathering(closing_);
    }
    if (!part_.slices.empty()) {
        part_.slices.pop_back(); // the mark behind the texts
        part_.length -= closing_->size();
    }
    copies_.resize(tables.drawings.size());
    const std::size_t known = part_.places.size();
    std::size_t seen = 0;
    for (const Anchor& anchor : anchors) {
        if (anchor.kind == AnchorKind::drawing && ++seen > known) {
            add(anchor, tables);
        }
    }
    if (!part_.slices.empty()) {
        part_.slices.push_back({closing_, 0, closing_->size()});
        part_.length += closing_->size();
    }
    return part_;
}

// Whether the drawings of the call before come first. They stand where the anchors say.
bool DrawingGathering::goesOn(std::span<const Anchor> anchors) {
    auto place = part_.places.begin();
    for (auto anchor = anchors.begin(); anchor != anchors.end() && place != part_.places.end();
         ++anchor) {
        if (anchor->kind != AnchorKind::drawing) {
            continue;
        }
        if (anchor->index != place->drawing) {
            return false;
        }
        (place++)->at = anchor->at;
    }
    return place == part_.places.end();
}

void DrawingGathering::add(const Anchor& anchor, const DocumentTables& tables) {
    const std::uint32_t copy = copies_.at(anchor.index)++;
    part_.places.push_back({anchor.at, anchor.index, copy});
    forEachShownText(tables.drawings[anchor.index], [&](std::uint32_t, const ShapeReference& text) {
        if (text.link != 0 || part_.texts.size() == mostTexts ||
            !known_.insert(keyOf(text.index, copy)).second) {
            return;
        }
        const std::shared_ptr<const Story>& story = tables.shapeTexts.at(text.index).text;
        part_.texts.push_back({text.index, copy, part_.length, story->size()});
        part_.slices.push_back({story, 0, story->size()});
        part_.length += story->size();
    });
}

} // namespace qvnd::word
