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
    std::size_t number = 0; // in its table, counted from 1
    Cp at = 0;              // its anchor in the main story
    Cp start = 0;
    Cp length = 0;
    std::optional<FrameSpot> spot; // nothing for one in a group, and for what cannot be
};

struct TextBoxTables {
    ByteView boxes;   // PlcftxbxTxt
    ByteView anchors; // PlcSpaMom
};

// How many text boxes a PlcftxbxTxt holds, those kept for reuse not counted.
int countTextBoxes(ByteView boxes);

// A stretch of the part of the text boxes that belongs to a shape or to a chain of shapes.
struct BoxText {
    Cp start = 0;
    Cp length = 0;          // 0 for one that is kept for reuse
    std::vector<Cp> breaks; // where the second shape's part begins, the third's, ...
};

// By their numbers in the table, from the first on; the one that closes the table is not counted.
// `breaks`: PlcfTxbxBkd or PlcfTxbxHdrBkd. `length`: of the part.
std::vector<BoxText> readBoxTexts(ByteView boxes, ByteView breaks, Cp length);

// The text boxes whose anchor is known, in the order of the anchors; those of one anchor in the
// order of their texts. `length`: of the part of the text boxes.
std::vector<TextBoxPlace> readTextBoxPlaces(const TextBoxTables& tables, const Drawings& drawings,
                                            Cp length);

} // namespace qvnd::word
