#pragma once

#include "platform/word/docfile/document/DocumentContent.h"

#include <memory>
#include <span>
#include <unordered_map>
#include <vector>

// The texts of notes and comments as a file needs them: one behind the other in the order of
// their references, each part closed by a paragraph mark of its own.
namespace qvnd::word {

struct SideReference {
    Cp at = 0;               // in the main story
    std::uint32_t index = 0; // DocumentTables::sideStories
    Cp start = 0;            // of its text in the part
    Cp length = 0;
};

struct SideText {
    std::vector<SideReference> references;
    SlicedText slices;
    Cp length = 0; // with the mark that closes the part; 0 when there is no text
};

// `closing`: a story of one paragraph mark, the same with every save.
SideText gatherSideText(std::span<const Anchor> anchors, AnchorKind kind,
                        const std::vector<SideStory>& stories,
                        const std::shared_ptr<const Story>& closing);

// A story of one paragraph mark.
std::shared_ptr<const Story> lonelyMark();

// Text that stands twice in a document (a paragraph mark that closes a part, a header that two
// sections have) has two places in its file.
class FragmentCopies {
public:
    // Replaces every repeated slice by a copy of its own. Every save gets the same copies. Slices
    // in front that are those of the call before are only compared with them.
    void makeDistinct(SlicedText& text);

private:
    struct Use { // a slice
        const Story* fragment = nullptr;
        Cp begin = 0;
        Cp length = 0;
        bool operator==(const Use&) const = default;
    };
    struct UseHash {
        std::size_t operator()(const Use& use) const;
    };
    struct Copies {
        std::size_t used = 0; // how often the slice stands in `asked_`
        // Kept once there are copies, so that no other takes its address.
        std::shared_ptr<const Story> original;
        std::vector<std::shared_ptr<const Story>> others;
    };
    static Use useOf(const StorySlice& slice);
    std::size_t takeBack(const SlicedText& text);
    StorySlice distinct(const StorySlice& slice);

    // The call before: what it was given, which keeps the addresses of its fragments taken, and
    // what it made of that.
    SlicedText asked_;
    SlicedText answered_;
    std::unordered_map<Use, Copies, UseHash> copies_;
};

} // namespace qvnd::word
