#pragma once

#include "platform/word/docfile/document/DocumentData.h"

#include <functional>
#include <memory>
#include <span>
#include <vector>

// The texts of notes and comments as a file needs them: one behind the other in the order of
// their references, each part closed by a paragraph mark of its own.
namespace qvnd::word {

// The anchors of the main story, ascending.
std::vector<Anchor> anchorsOf(const std::vector<StorySlice>& main);

struct SideReference {
    Cp at = 0;               // in the main story
    std::uint32_t index = 0; // in the pool of its kind
    Cp start = 0;            // of its text in the part
    Cp length = 0;
};

struct SideText {
    std::vector<SideReference> references;
    std::vector<StorySlice> slices;
    Cp length = 0; // with the mark that closes the part; 0 when there is no text
};

using TextOf = std::function<const std::shared_ptr<const Story>&(std::uint32_t index)>;

// `closing`: a story of one paragraph mark, the same with every save.
SideText gatherSideText(std::span<const Anchor> anchors, AnchorKind kind, const TextOf& textOf,
                        const std::shared_ptr<const Story>& closing);

// A story of one paragraph mark.
std::shared_ptr<const Story> lonelyMark();

} // namespace qvnd::word
