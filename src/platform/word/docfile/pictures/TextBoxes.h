#pragma once

#include "platform/word/docfile/container/Bytes.h"
#include "platform/word/docfile/document/Story.h"

#include <vector>

// Text boxes: PlcftxbxTxt with its FTXBXS, [MS-DOC] 2.8.32 and 2.9.106.
namespace qvnd::word {

// How many text boxes a PlcftxbxTxt holds, those kept for reuse not counted.
int countTextBoxes(ByteView boxes);

// A stretch of the part of the text boxes that belongs to a shape or to a chain of shapes.
struct BoxText {
    Cp start = 0;
    Cp length = 0;           // 0 for one that is kept for reuse
    std::uint32_t shape = 0; // first shape of the chain by the table; may be wrong in damaged files
    std::vector<Cp> breaks;  // where the second shape's part begins, the third's, ...
};

// By their numbers in the table, from the first on; the one that closes the table is not counted.
// `breaks`: PlcfTxbxBkd or PlcfTxbxHdrBkd. `length`: of the part.
std::vector<BoxText> readBoxTexts(ByteView boxes, ByteView breaks, Cp length);

} // namespace qvnd::word
