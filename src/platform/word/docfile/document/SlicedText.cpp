#include "platform/word/docfile/document/SlicedText.h"

#include "platform/word/docfile/document/StoryParts.h"

#include <algorithm>

namespace qvnd::word {

namespace {

template <class Mark>
std::vector<Mark> marksOf(std::span<const StorySlice> text, std::vector<Mark> Story::*marks) {
    std::size_t most = 0;
    for (const StorySlice& slice : text) {
        const std::size_t ofFragment = ((*slice.fragment).*marks).size();
        most += std::min<std::size_t>(ofFragment, slice.length);
    }
    std::vector<Mark> result;
    result.reserve(most);
    Cp at = 0;
    for (const StorySlice& slice : text) {
        if (!((*slice.fragment).*marks).empty()) {
            appendMarks(result, (*slice.fragment).*marks, slice.begin, slice.length, at);
        }
        at += slice.length;
    }
    return result;
}

bool isWhole(const StorySlice& slice) {
    return slice.begin == 0 && slice.length == slice.fragment->size();
}

} // namespace

SlicedText slicesOf(Story story) {
    return slicesOf(std::make_shared<const Story>(std::move(story)));
}

SlicedText slicesOf(std::shared_ptr<const Story> story) {
    const Cp length = story->size();
    return length == 0 ? SlicedText{} : SlicedText{{std::move(story), 0, length}};
}

Cp lengthOf(std::span<const StorySlice> text) {
    Cp length = 0;
    for (const StorySlice& slice : text) {
        length += slice.length;
    }
    return length;
}

void append(SlicedText& text, const SlicedText& more) {
    text.insert(text.end(), more.begin(), more.end());
}

std::shared_ptr<const Story> joined(const SlicedText& text) {
    if (text.size() == 1 && isWhole(text.front())) {
        return text.front().fragment;
    }
    auto whole = std::make_shared<Story>();
    for (const StorySlice& slice : text) {
        appendStory(*whole, isWhole(slice) ? *slice.fragment
                                           : partOf(*slice.fragment, slice.begin, slice.length));
    }
    return whole;
}

std::vector<FieldMark> fieldsOf(std::span<const StorySlice> text) {
    return marksOf(text, &Story::fields);
}

std::vector<Anchor> anchorsOf(const SlicedText& text) { return marksOf(text, &Story::anchors); }

} // namespace qvnd::word
