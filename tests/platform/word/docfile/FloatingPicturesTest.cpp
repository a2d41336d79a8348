#include "platform/word/docfile/pictures/FloatingPictures.h"

#include "platform/word/docfile/format/OfficeArt.h"
#include "platform/word/docfile/format/Plc.h"
#include "platform/word/docfile/pictures/Blip.h"
#include "platform/word/docfile/pictures/Drawings.h"
#include "platform/word/docfile/pictures/ImageFile.h"
#include "platform/word/docfile/pictures/Picture.h"
#include "support/Images.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace qvnd::word {
namespace {

using test::joined;
using testing::IsEmpty;

Bytes record(unsigned version, unsigned instance, std::uint16_t type, ByteView content) {
    LittleEndianWriter writer;
    art::writeRecord(writer, version, instance, type, content);
    return writer.take();
}

// A document with one drawing: pictures in its store, shapes anchored in the text.
class DrawingBuilder {
public:
    unsigned kind = 75; // a picture frame
    art::ShapeProperties properties;
    bool delayed = false;

    DrawingBuilder() { properties.setBlip(art::pib, 1); }

    std::vector<FloatingPicture> pictures() {
        const Bytes drawings = content();
        LittleEndianWriter anchor;
        anchor.u32(0x402);
        for (const std::uint32_t side : {100U, 200U, 100U + 1440U, 200U + 720U}) {
            anchor.u32(side);
        }
        anchor.zeros(6);
        const Bytes anchors = encodePlc({7, 20}, anchor.data());
        return readFloatingPictures(anchors, Drawings(drawings, wordDocument_));
    }

private:
    Bytes content() {
        Bytes entry = encodeBlip(*recogniseImage(test::png(4, 2)));
        if (delayed) {
            entry = withPictureElsewhere(entry);
        }
        const Bytes store = record(15, 1, 0xF001, entry);
        LittleEndianWriter fsp;
        fsp.u32(0x402);
        fsp.u32(0xA00);
        const Bytes shape =
            record(15, 0, art::spContainer,
                   joined({record(2, kind, art::fsp, fsp.data()),
                           record(3, properties.count(), art::fopt, properties.encode())}));
        const Bytes group = record(15, 0, 0xF003, shape);
        return joined({record(15, 0, 0xF000, store), Bytes{0}, record(15, 0, 0xF002, group)});
    }
    // The picture moves to the document's main stream, where Word keeps it.
    Bytes withPictureElsewhere(const Bytes& entry) {
        const auto picturesAt = entry.begin() + art::headerSize + 36;
        wordDocument_.assign(100, 0);
        wordDocument_.insert(wordDocument_.end(), picturesAt, entry.end());
        Bytes head(entry.begin() + art::headerSize, picturesAt);
        head[28] = 100;
        return record(2, 6, art::fbse, head);
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

TEST(FloatingPictures, APictureKeepsItsSizeAndItsAnchor) {
    const auto pictures = DrawingBuilder().pictures();
    const Picture picture = only(pictures);
    EXPECT_EQ(pictures[0].at, 7U);
    EXPECT_EQ(picture.width(), 1440);
    EXPECT_EQ(picture.height(), 720);
    EXPECT_TRUE(holds(pictures[0].inlineForm, test::png(4, 2)));
}

TEST(FloatingPictures, APictureInTheMainStreamIsFoundThere) {
    DrawingBuilder drawing;
    drawing.delayed = true;
    const auto pictures = drawing.pictures();
    ASSERT_EQ(pictures.size(), 1U);
    EXPECT_TRUE(holds(pictures[0].inlineForm, test::png(4, 2)));
}

TEST(FloatingPictures, ARecordThatClaimsToHoldOthersHoldsNone) {
    Bytes entry = encodeBlip(*recogniseImage(test::png(4, 2)));
    entry[0] |= 0x0F;
    entry[art::headerSize + art::fbseSize] |= 0x0F;
    const Bytes content = record(15, 0, 0xF000, record(15, 1, 0xF001, entry));
    const Bytes picture = Drawings(content, {}).picture(1);
    ASSERT_FALSE(picture.empty());
    EXPECT_EQ(picture[0] & 0x0F, 2);
    EXPECT_EQ(picture[art::headerSize + art::fbseSize] & 0x0F, 0);
}

TEST(FloatingPictures, ACroppedPictureIsShownInTheSameSize) {
    DrawingBuilder drawing;
    drawing.properties.set(art::cropFromLeft, 0x8000); // half
    const Picture picture = only(drawing.pictures());
    EXPECT_EQ(picture.width(), 1440);
    EXPECT_EQ(picture.naturalWidth(), 2880);
    EXPECT_EQ(picture.properties()->value(art::cropFromLeft), 0x8000U);
}

TEST(FloatingPictures, OtherShapesAndShapesWithTextAreNone) {
    DrawingBuilder drawing;
    drawing.kind = 1;
    EXPECT_THAT(drawing.pictures(), IsEmpty());
    drawing.kind = 75;
    drawing.properties.set(0x0080, 5);
    EXPECT_THAT(drawing.pictures(), IsEmpty());
}

TEST(FloatingPictures, AShapeWhosePictureIsMissingIsNone) {
    DrawingBuilder drawing;
    drawing.properties.setBlip(art::pib, 2);
    EXPECT_THAT(drawing.pictures(), IsEmpty());
}

TEST(FloatingPictures, DamagedDrawingsHoldNone) {
    const Bytes anchors = encodePlc({7, 20}, Bytes(26, 1));
    const Bytes damaged(9, 0xFF);
    EXPECT_THAT(readFloatingPictures(anchors, Drawings(damaged, {})), IsEmpty());
    EXPECT_THAT(readFloatingPictures(anchors, Drawings({}, {})), IsEmpty());
}

} // namespace
} // namespace qvnd::word
