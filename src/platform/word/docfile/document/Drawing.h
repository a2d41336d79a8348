#pragma once

#include "platform/word/docfile/container/Bytes.h"
#include "platform/word/docfile/document/Story.h"

#include <cstdint>
#include <memory>
#include <vector>

// Shapes that float over the text, each with the character that it is anchored at.
namespace qvnd::word {

// A number of 32 bits in the records of a drawing that names something. The records have 0 in its
// place.
struct ShapeReference {
    enum class Kind : std::uint8_t {
        shape,      // the identifier of a shape of this drawing
        otherShape, // one that is named, of this or another drawing
        picture,    // DocumentTables::shapePictures
        text,       // DocumentTables::shapeTexts
        object,     // DocumentTables::objects
        anchor      // the drawing's place in the table of anchors
    };
    std::uint32_t at = 0; // offset in the records
    Kind kind = Kind::shape;
    std::uint32_t index = 0; // shapes are numbered through all drawings of a document
    std::uint16_t link = 0;  // text: the part of its chain, counted from 0
};

// A shape, or a group of shapes, that is anchored at one character (U+0008).
struct Drawing {
    Bytes place;   // Spa without its shape, [MS-DOC] 2.9.253: 22 bytes
    Bytes records; // OfficeArtSpContainer or OfficeArtSpgrContainer, [MS-ODRAW] 2.2.14 and 2.2.16
    std::vector<ShapeReference> references; // ascending
    // A higher one lies over a lower one. Those of the main text and those of headers are apart.
    std::uint32_t order = 0;
};

// The text of a shape, or of a chain of shapes that it flows through. It is never changed.
struct ShapeText {
    std::shared_ptr<const Story> text; // ends in a paragraph mark
    std::vector<Cp>
        breaks; // where the second shape's part begins, the third's, ...; may be unknown
};

} // namespace qvnd::word
