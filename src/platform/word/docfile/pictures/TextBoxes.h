#pragma once

#include "platform/word/docfile/document/FrameSpot.h"
#include "platform/word/docfile/document/Story.h"
#include "platform/word/docfile/pictures/Drawings.h"

#include <optional>
#include <vector>

// Text boxes: PlcftxbxTxt with its FTXBXS, [MS-DOC] 2.8.32 and 2.9.106.
namespace qvnd::word {

// Where a text box's text lies in the part of the text boxes.
struct TextBoxPlace {
    Cp at = 0; // its anchor in the main story
    Cp start = 0;
    Cp length = 0;
    std::optional<FrameSpot> spot; // nothing for one in a group, and for what cannot be
};

struct TextBoxTables {
    ByteView boxes;   // PlcftxbxTxt
    ByteView anchors; // PlcSpaMom
};

// How many text boxes a PlcftxbxTxt or PlcfHdrtxbxTxt holds, those kept for reuse not counted.
int countTextBoxes(ByteView boxes);

// How many anchored shapes are a text box and nothing else: plain frames around text.
int countTextFrames(ByteView anchors, const Drawings& drawings);

// The text boxes whose anchor is known, in the order of the anchors; those of one anchor in the
// order of their texts. `length`: of the part of the text boxes.
std::vector<TextBoxPlace> readTextBoxPlaces(const TextBoxTables& tables, const Drawings& drawings,
                                            Cp length);

} // namespace qvnd::word
