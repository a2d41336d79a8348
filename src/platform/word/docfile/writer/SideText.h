#pragma once

#include "platform/word/docfile/document/DocumentContent.h"

#include <map>
#include <memory>
#include <span>
#include <tuple>
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
    // Replaces every repeated slice by a copy of its own. Every save gets the same copies. Linear
    // in the slices.
    void makeDistinct(SlicedText& text);

private:
    using Use = std::tuple<const Story*, Cp, Cp>; // a slice
    struct Copies {
        std::shared_ptr<const Story> original; // kept, so that no other takes its address
        std::vector<std::shared_ptr<const Story>> others;
    };
    std::map<Use, Copies> copies_;
};

} // namespace qvnd::word
