#pragma once

#include "platform/word/docfile/document/DocumentContent.h"

#include <functional>
#include <span>
#include <vector>

// The drawings of a document as a file needs them.
namespace qvnd::word {

// The drawings that float over one part of the text, and the part of the text that their own texts
// make, one behind the other.
struct DrawingPart {
    struct Place {
        Cp at = 0;
        std::uint32_t drawing = 0; // in the pool
        std::uint32_t copy = 0;    // how often it was placed before: headers may be copied
    };
    struct Text {
        std::uint32_t index = 0; // in the pool
        std::uint32_t copy = 0;
        Cp start = 0;
        Cp length = 0;
    };
    std::vector<Place> places; // by their positions
    std::vector<Text> texts;
    SlicedText slices;
    Cp length = 0; // with the mark that closes the part; 0 when there is no text
};

// `closing`: a story of one paragraph mark, the same with every save.
DrawingPart gatherDrawings(std::span<const Anchor> anchors, const DocumentTables& tables,
                           const std::shared_ptr<const Story>& closing);

// Where a file keeps what drawings name.
struct DrawingStores {
    // The offset of a picture in the WordDocument stream, by its entry of
    // DocumentTables::shapePictures; the same for equal pictures.
    std::function<std::uint32_t(const DataBlob& entry)> picture;
    // The number of an embedded object's storage.
    std::function<std::uint32_t(const EmbeddedObjectRef& object)> object;
};

// The structures of one part: PlcSpaMom, PlcftxbxTxt, PlcfTxbxBkd, or their likes for headers.
struct DrawingTables {
    Bytes anchors;
    Bytes boxes;
    Bytes breaks;
};

struct EncodedDrawings {
    Bytes content; // OfficeArtContent, [MS-DOC] 2.9.172; empty when there is no drawing
    DrawingTables main;
    DrawingTables headers;
};

// `mainEnd`, `headersEnd`: lengths of the two parts of the text. Linear in the drawings' records.
EncodedDrawings encodeDrawings(const DrawingPart& main, Cp mainEnd, const DrawingPart& headers,
                               Cp headersEnd, const DocumentTables& tables,
                               const DrawingStores& stores);

} // namespace qvnd::word
