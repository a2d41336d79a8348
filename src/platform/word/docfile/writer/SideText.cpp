#include "platform/word/docfile/writer/SideText.h"

namespace qvnd::word {

std::vector<Anchor> anchorsOf(const std::vector<StorySlice>& main) {
    std::vector<Anchor> anchors;
    Cp at = 0;
    for (const StorySlice& slice : main) {
        if (!slice.fragment->anchors.empty()) {
            appendMarks(anchors, slice.fragment->anchors, slice.begin, slice.length, at);
        }
        at += slice.length;
    }
    return anchors;
}

SideText gatherSideText(std::span<const Anchor> anchors, AnchorKind kind, const TextOf& textOf,
                        const std::shared_ptr<const Story>& closing) {
    SideText part;
    for (const Anchor& anchor : anchors) {
        if (anchor.kind != kind) {
            continue;
        }
        const std::shared_ptr<const Story>& text = textOf(anchor.index);
        part.references.push_back({anchor.at, anchor.index, part.length, text->size()});
        part.slices.push_back({text, 0, text->size()});
        part.length += text->size();
    }
    if (!part.slices.empty()) {
        part.slices.push_back({closing, 0, closing->size()});
        part.length += closing->size();
    }
    return part;
}

std::shared_ptr<const Story> lonelyMark() {
    Story story;
    story.text = u"\r";
    story.characters.push_back({1, PropertyListId::empty});
    story.paragraphs.push_back({1, 0, PropertyListId::empty});
    return std::make_shared<const Story>(std::move(story));
}

} // namespace qvnd::word
