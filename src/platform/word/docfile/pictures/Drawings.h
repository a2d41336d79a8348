#pragma once

#include "platform/word/docfile/container/Bytes.h"
#include "platform/word/docfile/format/OfficeArt.h"
#include "platform/word/docfile/format/ShapeProperties.h"

#include <array>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

namespace qvnd::word {

// What a shape shows when it is text: a story of text boxes, or a later part of one that flows
// through a chain of shapes.
struct TextOfShape {
    std::uint16_t number = 0; // of the story in PlcftxbxTxt, counted from 1
    std::uint16_t link = 0;   // place in the chain, counted from 0
};

struct Shape {
    std::uint32_t id = 0;
    unsigned kind = 0; // MSOSPT
    art::ShapeProperties properties;
    std::optional<TextOfShape> text;
    std::uint32_t outermost = 0; // the shape or group that has the anchor; itself when in no group
};

// Which part of the text a drawing floats over.
enum class DrawingOf : std::uint8_t { main, headers };

// The shapes and pictures of a document's drawings (OfficeArtContent, [MS-DOC] 2.9.172). Reads up
// to the first damage. The views must outlive it.
class Drawings {
public:
    // `wordDocument`: the main stream, where most pictures of drawings lie.
    Drawings(ByteView content, ByteView wordDocument);

    // By its identifier; null when there is none.
    const Shape* shape(std::uint32_t id) const;
    // The first shape that shows a story, by the story's number; null when there is none.
    const Shape* shapeOfText(std::size_t number) const;
    // The record of a shape or group that is in no group; empty when there is none.
    ByteView anchored(DrawingOf part, std::uint32_t id) const;
    // How many such records stand in front of it.
    std::uint32_t orderOf(DrawingOf part, std::uint32_t id) const;
    // The record of the shape that fills the pages of the main story; empty when there is none.
    ByteView background() const { return background_; }
    // The properties of shapes that do not set them themselves.
    const art::ShapeProperties& defaults() const { return defaults_; }
    // An entry of the store of pictures with its picture in it, counted from 1; empty when there
    // is no such picture.
    Bytes picture(std::uint32_t number) const;
    // An upper bound for the bytes of all pictures, as long as they do not overlap in the file.
    std::size_t picturesAtMost() const { return 2 * (contentSize_ + wordDocument_.size()); }

private:
    struct StoreEntry {
        art::RecordHeader header;
        ByteView content;
    };

    void read(ByteView content);
    void readShared(ByteView records);
    void readDrawing(DrawingOf part, ByteView records);
    // `outermost` is 0 for the groups of the drawing itself. Both answer the outermost shape.
    std::uint32_t readGroup(ByteView records, std::uint32_t outermost, int depth);
    std::uint32_t readShape(ByteView records, std::uint32_t outermost);

    ByteView wordDocument_;
    std::size_t contentSize_;
    std::vector<StoreEntry> pictures_;
    std::unordered_map<std::uint32_t, Shape> shapes_;
    std::unordered_map<std::size_t, std::uint32_t> shapesOfTexts_;
    struct Anchored {
        ByteView record;
        std::uint32_t order = 0;
    };
    std::array<std::unordered_map<std::uint32_t, Anchored>, 2> anchored_; // by DrawingOf
    ByteView background_;
    art::ShapeProperties defaults_;
};

} // namespace qvnd::word
