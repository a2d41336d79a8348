#include "platform/word/docfile/document/DataBlobs.h"

#include "support/ByteText.h"

#include <gtest/gtest.h>

namespace qvnd::word {
namespace {

Bytes blob(std::size_t size, std::uint8_t filling) {
    LittleEndianWriter writer;
    writer.u32(static_cast<std::uint32_t>(size));
    writer.u16(0x44);
    Bytes bytes = writer.take();
    bytes.resize(size, filling);
    return bytes;
}

TEST(DataBlobs, TakesAsManyBytesAsTheBlobSays) {
    const Bytes stream = test::joined({Bytes(3, 9), blob(80, 1), blob(100, 2)});

    ASSERT_TRUE(dataBlobAt(stream, 3));
    EXPECT_EQ(dataBlobAt(stream, 3)->size(), 80U);
    EXPECT_EQ(dataBlobAt(stream, 83)->size(), 100U);
}

TEST(DataBlobs, LengthsThatContradictTheStreamAreNoBlob) {
    const Bytes stream = blob(80, 1);
    EXPECT_FALSE(dataBlobAt(ByteView(stream).first(79), 0)); // cut
    EXPECT_FALSE(dataBlobAt(stream, 80));                    // at the end
    EXPECT_FALSE(dataBlobAt(stream, 0xFFFFFFFF));
    EXPECT_FALSE(dataBlobAt(blob(20, 0), 0)); // shorter than its head
}

TEST(DataBlobs, AHeadOfFourteenBytesIsTheShortestBlob) {
    const auto sizeOf = [](std::uint8_t size, std::uint8_t headSize) {
        Bytes stream(size, 0);
        stream[0] = size;
        stream[4] = headSize;
        const auto found = dataBlobAt(stream, 0);
        return found ? found->size() : 0;
    };
    EXPECT_EQ(sizeOf(14, 14), 14U);
    EXPECT_EQ(sizeOf(15, 14), 15U);
    EXPECT_EQ(sizeOf(13, 13), 0U);
    EXPECT_EQ(sizeOf(15, 13), 0U);
    EXPECT_EQ(sizeOf(14, 15), 0U);
}

TEST(DataBlobs, CollectorTakesEachOffsetOnce) {
    const Bytes stream = test::joined({blob(80, 1), blob(100, 2)});
    std::vector<DataBlob> blobs;
    DataBlobCollector collector(stream, blobs);

    EXPECT_EQ(collector.indexOf(80), 0U);
    EXPECT_EQ(collector.indexOf(0), 1U);
    EXPECT_EQ(collector.indexOf(80), 0U);
    EXPECT_EQ(collector.indexOf(5), std::nullopt);
    ASSERT_EQ(blobs.size(), 2U);
    EXPECT_EQ(*blobs[1], blob(80, 1));
}

Bytes picture(std::uint32_t lengthOfShape) {
    LittleEndianWriter writer;
    writer.u32(0x44 + 8);
    writer.u16(0x44);
    writer.u16(0x64); // a picture in line
    writer.zeros(0x44 - 8);
    writer.u16(0x0F);
    writer.u16(0xF004); // OfficeArtSpContainer
    writer.u32(lengthOfShape);
    return writer.take();
}

TEST(DataBlobs, APictureWhoseRecordsAreNotWholeIsNone) {
    std::vector<DataBlob> blobs;
    const Bytes whole = picture(0);
    EXPECT_EQ(DataBlobCollector(whole, blobs).indexOf(0), 0U);
    const Bytes cut = picture(100);
    EXPECT_EQ(DataBlobCollector(cut, blobs).indexOf(0), std::nullopt);
}

TEST(DataBlobs, TheNameOfALinkedPictureEndsWithinTheBlob) {
    const auto indexOf = [](std::uint8_t nameSize) {
        Bytes stream = picture(0);
        stream[6] = 0x66;
        const Bytes name{nameSize, 'x', 'y'};
        stream.insert(stream.begin() + 0x44, name.begin(), name.end());
        stream[0] = static_cast<std::uint8_t>(stream.size());
        std::vector<DataBlob> blobs;
        return DataBlobCollector(stream, blobs).indexOf(0);
    };
    EXPECT_EQ(indexOf(2), 0U);
    EXPECT_EQ(indexOf(11), std::nullopt); // one more than there is
}

TEST(DataBlobs, AHeadOfAWrongSizeIsMended) {
    Bytes stream = picture(0);
    stream[4] = 0x20;
    std::vector<DataBlob> blobs;
    EXPECT_EQ(DataBlobCollector(stream, blobs).indexOf(0), 0U);
    EXPECT_EQ(*blobs.at(0), picture(0));
}

TEST(DataBlobs, WrittenBlobsAreFoundAtTheirOffsets) {
    const std::vector<DataBlob> blobs{std::make_shared<const Bytes>(blob(80, 1)),
                                      std::make_shared<const Bytes>(blob(70, 2))};
    LittleEndianWriter writer;
    const auto offsets = encodeDataBlobs(blobs, 1000, writer);

    EXPECT_EQ(offsets, (std::vector<std::uint32_t>{1000, 1080}));
    EXPECT_EQ(dataBlobAt(writer.data(), offsets[1] - 1000)->size(), 70U);
}

} // namespace
} // namespace qvnd::word
