#include "platform/word/docfile/writer/SideText.h"

#include "platform/word/docfile/document/StoryParts.h"

#include <algorithm>
#include <functional>
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

std::size_t FragmentCopies::UseHash::operator()(const Use& use) const {
    constexpr std::size_t spread = 0x9E3779B97F4A7C15;
    const std::size_t place = (std::size_t{use.begin} << 32) | use.length;
    return std::hash<const Story*>{}(use.fragment) ^ (place * spread);
}

FragmentCopies::Use FragmentCopies::useOf(const StorySlice& slice) {
    return {slice.fragment.get(), slice.begin, slice.length};
}

void FragmentCopies::makeDistinct(SlicedText& text) {
    const std::size_t kept = takeBack(text);
    for (std::size_t i = 0; i < kept; ++i) {
        if (text[i].fragment != answered_[i].fragment) {
            text[i] = answered_[i];
        }
    }
    for (std::size_t i = kept; i < text.size(); ++i) {
        asked_.push_back(text[i]);
        text[i] = distinct(text[i]);
        answered_.push_back(text[i]);
    }
}

// Forgets the answers from the first slice on that differs, and says where that is.
std::size_t FragmentCopies::takeBack(const SlicedText& text) {
    const auto differs = std::mismatch(asked_.begin(), asked_.end(), text.begin(), text.end(),
                                       [](const StorySlice& before, const StorySlice& now) {
                                           return useOf(before) == useOf(now);
                                       });
    for (auto gone = differs.first; gone != asked_.end(); ++gone) {
        const auto known = copies_.find(useOf(*gone));
        if (--known->second.used == 0 && known->second.others.empty()) {
            copies_.erase(known);
        }
    }
    asked_.erase(differs.first, asked_.end());
    answered_.resize(asked_.size());
    return asked_.size();
}

StorySlice FragmentCopies::distinct(const StorySlice& slice) {
    Copies& copies = copies_[useOf(slice)];
    const std::size_t before = copies.used++;
    if (before == 0) {
        return slice;
    }
    copies.original = slice.fragment;
    if (copies.others.size() < before) {
        Story copy = partOf(*slice.fragment, slice.begin, slice.length);
        copy.bookmarks.clear(); // which stand once
        copies.others.push_back(std::make_shared<const Story>(std::move(copy)));
    }
    return {copies.others[before - 1], 0, slice.length};
}

} // namespace qvnd::word
