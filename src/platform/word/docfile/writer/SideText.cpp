#include "platform/word/docfile/writer/SideText.h"

#include "platform/word/docfile/document/StoryParts.h"

#include <utility>

namespace qvnd::word {

SideText gatherSideText(std::span<const Anchor> anchors, AnchorKind kind,
                        const std::vector<SideStory>& stories,
                        const std::shared_ptr<const Story>& closing) {
    SideText part;
    for (const Anchor& anchor : anchors) {
        if (anchor.kind != kind) {
            continue;
        }
        const std::shared_ptr<const Story>& text = stories.at(anchor.index).text;
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

void FragmentCopies::makeDistinct(SlicedText& text) {
    std::map<Use, std::size_t> uses;
    for (StorySlice& slice : text) {
        const Use use{slice.fragment.get(), slice.begin, slice.length};
        const std::size_t before = uses[use]++;
        if (before == 0) {
            continue;
        }
        Copies& copies = copies_[use];
        copies.original = slice.fragment;
        if (copies.others.size() < before) {
            Story copy = partOf(*slice.fragment, slice.begin, slice.length);
            copy.bookmarks.clear(); // which stand once
            copies.others.push_back(std::make_shared<const Story>(std::move(copy)));
        }
        slice = {copies.others[before - 1], 0, slice.length};
    }
}

} // namespace qvnd::word
