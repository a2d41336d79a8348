#include "platform/word/docfile/pictures/TextBoxes.h"

#include "platform/word/docfile/format/OfficeArt.h"
#include "platform/word/docfile/format/Plc.h"
#include "support/ByteText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace qvnd::word {

namespace {

using test::joined;
using testing::AllOf;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;

Bytes inARow(const std::vector<Bytes>& parts) {
    Bytes all;
    for (const Bytes& part : parts) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

Bytes record(unsigned version, unsigned instance, std::uint16_t type, ByteView content) {
    LittleEndianWriter writer;
    art::writeRecord(writer, version, instance, type, content);
    return writer.take();
}

constexpr unsigned textFrame = 202;
constexpr std::uint16_t shapeGroup = 0xF003;

Bytes fsp(unsigned kind, std::uint32_t id) {
    LittleEndianWriter writer;
    writer.u32(id);
    writer.u32(0xA00);
    return record(2, kind, art::fsp, writer.data());
}

// `text`: lTxid, 0 for none.
Bytes shape(std::uint32_t id, std::uint32_t text = 0, unsigned kind = textFrame) {
    art::ShapeProperties properties;
    if (text != 0) {
        properties.set(0x0080, text);
    }
    return record(
        15, 0, art::spContainer,
        joined({fsp(kind, id), record(3, properties.count(), art::fopt, properties.encode())}));
}

Bytes group(const std::vector<Bytes>& shapes) { return record(15, 0, shapeGroup, inARow(shapes)); }

// The main story's drawing; its own group begins with a shape that is none.
Bytes drawing(std::vector<Bytes> shapes) {
    shapes.insert(shapes.begin(), shape(0x400, 0, 0));
    return joined({record(15, 0, 0xF000, {}), Bytes{0}, record(15, 0, 0xF002, group(shapes))});
}

struct Anchor {
    Cp at = 0;
    std::uint32_t shape = 0;
};

Bytes anchorTable(const std::vector<Anchor>& anchors) {
    std::vector<std::uint32_t> positions;
    LittleEndianWriter data;
    for (const Anchor& anchor : anchors) {
        positions.push_back(anchor.at);
        data.u32(anchor.shape);
        data.zeros(22);
    }
    positions.push_back(1000);
    return encodePlc(positions, data.data());
}

struct Box {
    Cp start = 0;
    std::uint32_t shape = 0;
    bool reusable = false;
};

// The last box is the one for the format's sake.
Bytes boxTable(const std::vector<Box>& boxes, Cp end) {
    std::vector<std::uint32_t> positions;
    LittleEndianWriter data;
    for (const Box& box : boxes) {
        positions.push_back(box.start);
        data.u32(1);
        data.u32(0);
        data.u16(box.reusable ? 1 : 0);
        data.zeros(4);
        data.u32(box.shape);
        data.zeros(4);
    }
    positions.push_back(end);
    positions.push_back(end + 3);
    data.zeros(22);
    return encodePlc(positions, data.data());
}

std::vector<TextBoxPlace> places(const Bytes& boxes, const Bytes& anchors, const Bytes& drawings,
                                 Cp length = 100) {
    return readTextBoxPlaces({boxes, anchors}, Drawings(drawings, {}), length);
}

auto at(Cp anchor, Cp start, Cp length) {
    return AllOf(Field(&TextBoxPlace::at, anchor), Field(&TextBoxPlace::start, start),
                 Field(&TextBoxPlace::length, length));
}

TEST(TextBoxes, ATextBoxStandsAtItsShapesAnchor) {
    EXPECT_THAT(places(boxTable({{0, 0x402}}, 8), anchorTable({{5, 0x402}}), drawing({})),
                ElementsAre(at(5, 0, 8)));
}

TEST(TextBoxes, TheSpotIsWhatTheAnchorSaysOfTheShapeItself) {
    Bytes anchors = anchorTable({{5, 0x402}});
    LittleEndianWriter spa;
    for (const std::uint32_t side : {100U, 200U, 100U + 1440U, 200U + 720U}) {
        spa.u32(side);
    }
    spa.u16((1U << 1U) | (2U << 3U)); // from the page's edge and from the paragraph
    std::copy(spa.data().begin(), spa.data().end(), anchors.begin() + 12);
    const auto own = places(boxTable({{0, 0x402}}, 8), anchors, drawing({}));
    ASSERT_TRUE(own.at(0).spot);
    EXPECT_EQ(own[0].spot->across, FrameSpot::Across::fromPage);
    EXPECT_EQ(own[0].spot->down, FrameSpot::Down::fromParagraph);
    EXPECT_EQ(own[0].spot->left, 100);
    EXPECT_EQ(own[0].spot->top, 200);
    EXPECT_EQ(own[0].spot->width, 1440);
    EXPECT_EQ(own[0].spot->height, 720);
    const auto grouped =
        places(boxTable({{0, 0x405}}, 8), anchors, drawing({group({shape(0x402), shape(0x405)})}));
    EXPECT_FALSE(grouped.at(0).spot);
    const auto empty = places(boxTable({{0, 0x402}}, 8), anchorTable({{5, 0x402}}), drawing({}));
    EXPECT_FALSE(empty.at(0).spot);
}

TEST(TextBoxes, TheyComeInTheOrderOfTheirAnchors) {
    const Bytes boxes = boxTable({{0, 0x403}, {4, 0x402}, {6, 0x404}}, 9);
    const Bytes anchors = anchorTable({{2, 0x402}, {7, 0x404}, {20, 0x403}});
    EXPECT_THAT(places(boxes, anchors, drawing({})),
                ElementsAre(at(2, 4, 2), at(7, 6, 3), at(20, 0, 4)));
}

TEST(TextBoxes, OneInAGroupStandsAtTheOutermostGroupsAnchor) {
    const Bytes inner = group({shape(0x406), shape(0x407)});
    const Bytes outer = group({shape(0x402), shape(0x405), inner});
    const Bytes boxes = boxTable({{0, 0x405}, {3, 0x407}}, 5);
    EXPECT_THAT(places(boxes, anchorTable({{9, 0x402}}), drawing({outer})),
                ElementsAre(at(9, 0, 3), at(9, 3, 2)));
}

TEST(TextBoxes, AShapeThatNamesTheTextStandsInForOneThatTheTextDoesNotName) {
    const Bytes boxes = boxTable({{0, 0}, {3, 0}}, 5);
    const Bytes drawings = drawing({shape(0x402, 0x20000), shape(0x403, 0x10000)});
    EXPECT_THAT(places(boxes, anchorTable({{4, 0x402}, {6, 0x403}}), drawings),
                ElementsAre(at(4, 3, 2), at(6, 0, 3)));
}

TEST(TextBoxes, AChainStandsAtItsFirstShapesAnchor) {
    const Bytes drawings = drawing({shape(0x403, 0x10001), shape(0x402, 0x10000)});
    EXPECT_THAT(places(boxTable({{0, 0}}, 5), anchorTable({{4, 0x403}, {6, 0x402}}), drawings),
                ElementsAre(at(6, 0, 5)));
}

TEST(TextBoxes, OnesForReuseAndOnesWithoutAnchorStayOut) {
    const Bytes boxes = boxTable({{0, 0x402, true}, {3, 0x403}, {5, 0x404}}, 9);
    EXPECT_THAT(places(boxes, anchorTable({{4, 0x402}, {6, 0x404}}), drawing({})),
                ElementsAre(at(6, 5, 4)));
    EXPECT_EQ(countTextBoxes(boxes), 2);
    EXPECT_EQ(countTextBoxes({}), 0);
}

TEST(TextBoxes, TextsDoNotOverlapAndEndWithTheirPart) {
    const Bytes boxes = boxTable({{0, 0x402}, {20, 0x403}, {4, 0x404}}, 30);
    const Bytes anchors = anchorTable({{1, 0x402}, {2, 0x403}, {3, 0x404}});
    EXPECT_THAT(places(boxes, anchors, drawing({}), 25), ElementsAre(at(1, 0, 20), at(3, 20, 5)));
}

TEST(TextBoxes, DamagedDrawingsLeaveThoseWhoseAnchorNamesTheirShape) {
    const Bytes boxes = boxTable({{0, 0x402}, {3, 0x405}}, 5);
    EXPECT_THAT(places(boxes, anchorTable({{4, 0x402}}), Bytes(9, 0xFF)), ElementsAre(at(4, 0, 3)));
    EXPECT_THAT(places({}, {}, {}), IsEmpty());
}

TEST(Drawings, GroupsNestedWithoutEndAreReadToABound) {
    Bytes nested = shape(0x500);
    for (int i = 0; i < 10000; ++i) {
        nested = group({nested});
    }
    EXPECT_EQ(Drawings(drawing({nested}), {}).shape(0x500), nullptr);
}

} // namespace
} // namespace qvnd::word
