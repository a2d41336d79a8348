#pragma once

#include "platform/word/docfile/document/DocumentTables.h"
#include "platform/word/docfile/document/FrameSpot.h"

#include <memory>
#include <optional>
#include <span>
#include <vector>

// The texts and pictures of drawings at their anchors, for code that draws no shapes.
namespace qvnd::word {

// The text of a shape, or of a chain of shapes that it flows through.
struct TextBox {
    Cp at = 0; // its anchor; that of the group it is in
    std::shared_ptr<const Story> text;
    std::optional<FrameSpot> spot; // of one in no group
};

// A shape in no group that shows a picture and nothing else.
struct FloatingPicture {
    Cp at = 0;
    DataBlob inlineForm; // the same picture in the same size, as one that stands in a line
};

// Both ascend by their anchors.
struct FlatDrawings {
    std::vector<TextBox> textBoxes;
    std::vector<FloatingPicture> pictures;
};

// `anchors`: those of a story, ascending. Copies the bytes of a picture once for each size. Some
// are left out of a damaged document that shows large pictures in hundreds of sizes.
FlatDrawings flatDrawings(std::span<const Anchor> anchors, const DocumentTables& tables);

} // namespace qvnd::word
