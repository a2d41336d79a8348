#include "platform/word/docfile/pictures/FlatDrawings.h"

#include "platform/word/docfile/DrawingBytes.h"
#include "platform/word/docfile/pictures/Blip.h"
#include "platform/word/docfile/pictures/CarriedDrawings.h"
#include "platform/word/docfile/pictures/ImageFile.h"
#include "platform/word/docfile/pictures/Picture.h"
#include "support/Images.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>

namespace qvnd::word {
namespace {

using namespace drawings;
using namespace test;
using testing::IsEmpty;

// A document with one drawing: pictures in its store, a shape or group anchored at the eighth
// character, and texts that shapes may show.
class DrawingBuilder {
public:
    ShapeBytes shape;
    Bytes stored = encodeBlip(*recogniseImage(qvnd::test::png(4, 2))); // in the store
    bool delayed = false;
    bool grouped = false;
    std::int32_t left = 100;
    std::int32_t top = 200;
    std::int32_t width = 1440;
    std::int32_t height = 720;

    DrawingBuilder() {
        shape.id = 0x402;
        shape.kind = 75; // a picture frame
        shape.properties.setBlip(art::pib, 1);
    }

    FlatDrawings flat() {
        DocumentTables tables;
        tables.shapeTexts.resize(3);
        tables.shapeTexts[1].text = std::make_shared<const Story>(Story{u"text\r", {}, {}, {}, {}});
        const std::vector<Anchor> anchors{{7, AnchorKind::drawing, carriedInto(tables)}};
        return flatDrawings(anchors, tables);
    }
    // Its index there.
    std::uint32_t carriedInto(DocumentTables& tables) {
        const Bytes drawings = content();
        const EmbeddedObjects none;
        const Drawings read(drawings, wordDocument_);
        CarriedDrawings carried(read, none, tables);
        return carried
            .add(DrawingOf::main, spa(),
                 {[](std::uint16_t row) { return std::optional<std::uint32_t>(row); },
                  [](std::uint32_t) { return std::uint16_t{0}; }})
            .value();
    }
    std::vector<FloatingPicture> pictures() { return flat().pictures; }

private:
    Bytes spa() const {
        LittleEndianWriter spa;
        spa.u32(0x402);
        for (const std::int32_t side : {left, top, left + width, top + height}) {
            spa.u32(static_cast<std::uint32_t>(side));
        }
        spa.u16((1U << 1U) | (2U << 3U)); // from the page's edge and from the paragraph
        spa.zeros(4);
        return spa.take();
    }
    Bytes content() {
        Bytes entry = stored;
        if (delayed) {
            entry = withPictureElsewhere(entry);
        }
        ShapeBytes head;
        head.id = 0x402;
        head.kind = 0;
        ShapeBytes member = shape;
        member.id = 0x403;
        member.anchor.reset();
        const Bytes one = grouped ? groupBytes({head.bytes(), member.bytes()}) : shape.bytes();
        return qvnd::test::joined({sharedBytes({entry}), drawingBytes(0, {one})});
    }
    // The picture moves to the document's main stream, where Word keeps it.
    Bytes withPictureElsewhere(const Bytes& entry) {
        const auto picturesAt = entry.begin() + art::headerSize + 36;
        wordDocument_.assign(100, 0);
        wordDocument_.insert(wordDocument_.end(), picturesAt, entry.end());
        Bytes head(entry.begin() + art::headerSize, picturesAt);
        head[28] = 100;
        return artRecord(2, 6, art::fbse, head);
    }

    Bytes wordDocument_;
};

Picture only(const std::vector<FloatingPicture>& pictures) {
    EXPECT_EQ(pictures.size(), 1U);
    return *Picture::fromBlob(*pictures.at(0).inlineForm);
}

bool holds(const DataBlob& blob, const Bytes& bytes) {
    return std::search(blob->begin(), blob->end(), bytes.begin(), bytes.end()) != blob->end();
}

TEST(FlatDrawings, APictureKeepsItsSizeAndItsAnchor) {
    const auto pictures = DrawingBuilder().pictures();
    const Picture picture = only(pictures);
    EXPECT_EQ(pictures[0].at, 7U);
    EXPECT_EQ(picture.width(), 1440);
    EXPECT_EQ(picture.height(), 720);
    EXPECT_TRUE(holds(pictures[0].inlineForm, qvnd::test::png(4, 2)));
}

// Each property of a shape was once held against all that the shape names.
TEST(FlatDrawings, AShapeThatNamesManyOthersIsReadQuickly) {
    ShapeBytes shape;
    shape.kind = 75;
    for (unsigned opid = 0x0400; opid < 0x1000; ++opid) {
        shape.properties.set(static_cast<std::uint16_t>(opid), 1);
    }
    LittleEndianWriter place;
    for (const std::uint32_t side : {0U, 0U, 1440U, 720U}) {
        place.u32(side);
    }
    place.zeros(6);
    ShapeReference other;
    other.kind = ShapeReference::Kind::otherShape;
    DocumentTables tables;
    tables.drawings.push_back(
        {place.take(), shape.bytes(), std::vector<ShapeReference>(500'000, other)});
    const std::vector<Anchor> anchors{{7, AnchorKind::drawing, 0}};
    const auto start = std::chrono::steady_clock::now();
    EXPECT_THAT(flatDrawings(anchors, tables).pictures, IsEmpty());
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
}

TEST(FlatDrawings, APictureInTheMainStreamIsFoundThere) {
    DrawingBuilder drawing;
    drawing.delayed = true;
    const auto pictures = drawing.pictures();
    ASSERT_EQ(pictures.size(), 1U);
    EXPECT_TRUE(holds(pictures[0].inlineForm, qvnd::test::png(4, 2)));
}

TEST(FlatDrawings, ARecordThatClaimsToHoldOthersHoldsNone) {
    Bytes entry = encodeBlip(*recogniseImage(qvnd::test::png(4, 2)));
    entry[0] |= 0x0F;
    entry[art::headerSize + art::fbseSize] |= 0x0F;
    const Bytes content = sharedBytes({entry});
    const Bytes picture = Drawings(content, {}).picture(1);
    ASSERT_FALSE(picture.empty());
    EXPECT_EQ(picture[0] & 0x0F, 2);
    EXPECT_EQ(picture[art::headerSize + art::fbseSize] & 0x0F, 0);
}

TEST(FlatDrawings, ACroppedPictureIsShownInTheSameSize) {
    DrawingBuilder drawing;
    drawing.shape.properties.set(art::cropFromLeft, 0x8000); // half
    const Picture picture = only(drawing.pictures());
    EXPECT_EQ(picture.width(), 1440);
    EXPECT_EQ(picture.naturalWidth(), 2880);
    EXPECT_EQ(picture.properties()->value(art::cropFromLeft), 0x8000U);
}

TEST(FlatDrawings, OtherShapesGroupsAndShapesWithTextAreNoPictures) {
    DrawingBuilder drawing;
    drawing.shape.kind = 1;
    EXPECT_THAT(drawing.pictures(), IsEmpty());
    drawing.shape.kind = 75;
    drawing.grouped = true;
    EXPECT_THAT(drawing.pictures(), IsEmpty());
    drawing.grouped = false;
    drawing.shape.text = 0x10000;
    EXPECT_THAT(drawing.pictures(), IsEmpty());
}

TEST(FlatDrawings, AShapeWhosePictureIsMissingIsNone) {
    DrawingBuilder drawing;
    drawing.shape.properties.setBlip(art::pib, 2);
    EXPECT_THAT(drawing.pictures(), IsEmpty());
}

TEST(FlatDrawings, ATextBoxStandsAtItsAnchorWhereTheAnchorSaysThatItIs) {
    DrawingBuilder drawing;
    drawing.shape.text = 0x10000;
    const auto boxes = drawing.flat().textBoxes;
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_EQ(boxes[0].at, 7U);
    EXPECT_EQ(boxes[0].text->text, u"text\r");
    ASSERT_TRUE(boxes[0].spot);
    EXPECT_EQ(boxes[0].spot->across, FrameSpot::Across::fromPage);
    EXPECT_EQ(boxes[0].spot->down, FrameSpot::Down::fromParagraph);
    EXPECT_EQ(boxes[0].spot->left, 100);
    EXPECT_EQ(boxes[0].spot->top, 200);
    EXPECT_EQ(boxes[0].spot->width, 1440);
    EXPECT_EQ(boxes[0].spot->height, 720);
}

TEST(FlatDrawings, ATextBoxInAGroupOrWithoutASizeHasNoSpot) {
    DrawingBuilder drawing;
    drawing.shape.text = 0x10000;
    drawing.width = 0;
    EXPECT_FALSE(drawing.flat().textBoxes.at(0).spot);
    drawing.width = 1440;
    drawing.height = 0;
    EXPECT_FALSE(drawing.flat().textBoxes.at(0).spot);
    drawing.height = 720;
    EXPECT_TRUE(drawing.flat().textBoxes.at(0).spot);
    drawing.grouped = true;
    EXPECT_FALSE(drawing.flat().textBoxes.at(0).spot);
}

// 22 inches are the most that a page or a frame may have.
TEST(FlatDrawings, ATextBoxHasASpotUpToTwentyTwoInchesFromItsAnchorAndNotBeyond) {
    constexpr std::int32_t farthest = 31680;
    using Side = std::int32_t DrawingBuilder::*;
    for (const Side side : {&DrawingBuilder::left, &DrawingBuilder::top, &DrawingBuilder::width,
                            &DrawingBuilder::height}) {
        DrawingBuilder drawing;
        drawing.shape.text = 0x10000;
        drawing.*side = farthest;
        EXPECT_TRUE(drawing.flat().textBoxes.at(0).spot);
        drawing.*side = farthest + 1;
        EXPECT_FALSE(drawing.flat().textBoxes.at(0).spot);
    }
    for (const Side side : {&DrawingBuilder::left, &DrawingBuilder::top}) {
        DrawingBuilder drawing;
        drawing.shape.text = 0x10000;
        drawing.*side = -farthest;
        EXPECT_TRUE(drawing.flat().textBoxes.at(0).spot);
        drawing.*side = -farthest - 1;
        EXPECT_FALSE(drawing.flat().textBoxes.at(0).spot);
    }
}

TEST(FlatDrawings, ALaterPartOfAChainShowsNoTextOfItsOwn) {
    DrawingBuilder drawing;
    drawing.shape.text = 0x10001;
    EXPECT_THAT(drawing.flat().textBoxes, IsEmpty());
}

TEST(FlatDrawings, OtherAnchorsStandForNoDrawing) {
    const DocumentTables tables;
    const std::vector<Anchor> anchors{{3, AnchorKind::footnote, 9}, {5, AnchorKind::comment, 9}};
    const FlatDrawings flat = flatDrawings(anchors, tables);
    EXPECT_TRUE(flat.pictures.empty());
    EXPECT_TRUE(flat.textBoxes.empty());
}

TEST(FlatDrawings, ALargePictureIsCopiedInAFewSizesAlone) {
    constexpr std::size_t megabyte = std::size_t{1} << 20; // sixteen are copied, and four more
    constexpr std::size_t heads = 2 * art::headerSize + art::fbseSize;
    Bytes head(art::fbseSize);
    head[0] = head[1] = 6;
    DrawingBuilder builder;
    builder.stored = artRecord(
        2, 6, art::fbse,
        qvnd::test::joined({head, artRecord(0, 0x6E0, art::blipPng, Bytes(megabyte - heads))}));
    DocumentTables tables;
    const std::uint32_t index = builder.carriedInto(tables);
    const Drawing drawing = tables.drawings.at(index);
    constexpr std::uint32_t sizes = 22;
    std::vector<Anchor> anchors;
    anchors.reserve(sizes);
    tables.drawings.clear();
    for (std::uint32_t i = 0; i < sizes; ++i) {
        tables.drawings.push_back(drawing);
        tables.drawings.back().place.at(8) = static_cast<std::uint8_t>(i); // its right side
        anchors.push_back({i, AnchorKind::drawing, i});
    }
    EXPECT_EQ(flatDrawings(anchors, tables).pictures.size(), 20U);
}

} // namespace
} // namespace qvnd::word
