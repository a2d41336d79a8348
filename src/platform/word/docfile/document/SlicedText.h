#pragma once

#include "platform/word/docfile/document/Story.h"

#include <memory>
#include <span>
#include <vector>

namespace qvnd::word {

// A part of an immutable fragment of text.
struct StorySlice {
    std::shared_ptr<const Story> fragment;
    Cp begin = 0;
    Cp length = 0;
};

// A story under work is a sequence of slices: inserting splits one and puts new ones between,
// nothing is copied. Fragments are known by identity, so a save knows what the file has already.
using SlicedText = std::vector<StorySlice>;

// The whole story as one fragment; no slice for an empty one.
SlicedText slicesOf(Story story);
SlicedText slicesOf(std::shared_ptr<const Story> story);

Cp lengthOf(std::span<const StorySlice> text);
void append(SlicedText& text, const SlicedText& more);

// The text as one story: the fragment itself where one slice holds all of it, else a copy.
std::shared_ptr<const Story> joined(const SlicedText& text);

// With their places in the text, ascending.
std::vector<FieldMark> fieldsOf(std::span<const StorySlice> text);
std::vector<Anchor> anchorsOf(const SlicedText& text);

} // namespace qvnd::word
