#include "platform/word/docfile/pictures/TextBoxes.h"

#include "platform/word/docfile/format/OfficeArt.h"
#include "platform/word/docfile/format/Plc.h"
#include "platform/word/docfile/pictures/Drawings.h"
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

auto text(std::uint32_t shape, Cp start, Cp length) {
    return AllOf(Field(&BoxText::shape, shape), Field(&BoxText::start, start),
                 Field(&BoxText::length, length));
}

TEST(TextBoxes, EachRowHasItsTextAndItsShape) {
    EXPECT_THAT(readBoxTexts(boxTable({{0, 0x403}, {4, 0x402}}, 9), {}, 100),
                ElementsAre(text(0x403, 0, 4), text(0x402, 4, 5)));
    EXPECT_THAT(readBoxTexts({}, {}, 0), IsEmpty());
}

TEST(TextBoxes, OnesForReuseHaveNoText) {
    const Bytes boxes = boxTable({{0, 0x402, true}, {3, 0x403}}, 9);
    EXPECT_THAT(readBoxTexts(boxes, {}, 100), ElementsAre(text(0, 0, 0), text(0x403, 3, 6)));
    EXPECT_EQ(countTextBoxes(boxes), 1);
    EXPECT_EQ(countTextBoxes({}), 0);
}

TEST(TextBoxes, TextsDoNotOverlapAndEndWithTheirPart) {
    const Bytes boxes = boxTable({{0, 0x402}, {20, 0x403}, {4, 0x404}}, 30);
    EXPECT_THAT(readBoxTexts(boxes, {}, 25),
                ElementsAre(text(0x402, 0, 20), text(0, 0, 0), text(0x404, 20, 5)));
}

// Where the text of a chain goes on in its next box: the box's number, then four bytes of flags.
TEST(TextBoxes, ATextBreaksWithinItselfAlone) {
    const auto breaksAt = [](Cp at, unsigned box) {
        LittleEndianWriter data;
        data.u16(box);
        data.u32(0);
        data.zeros(6); // the last one is for the format's sake
        const auto texts = readBoxTexts(boxTable({{0, 0x402}, {4, 0x403}}, 9),
                                        encodePlc({at, 20, 23}, data.data()), 100);
        return texts.at(1).breaks;
    };
    EXPECT_THAT(breaksAt(4, 1), IsEmpty());
    EXPECT_THAT(breaksAt(5, 1), ElementsAre(1));
    EXPECT_THAT(breaksAt(8, 1), ElementsAre(4));
    EXPECT_THAT(breaksAt(9, 1), IsEmpty());
    EXPECT_THAT(breaksAt(5, 0), IsEmpty());
    EXPECT_THAT(breaksAt(5, 2), IsEmpty()) << "a box that is not there";
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
