#include "platform/word/docfile/pictures/Picture.h"

#include "platform/word/docfile/format/OfficeArt.h"
#include "platform/word/docfile/pictures/Blip.h"
#include "platform/word/docfile/pictures/Md4.h"
#include "platform/word/docfile/pictures/PictureFile.h"
#include "support/Images.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <utility>

namespace qvnd::word {
namespace {

constexpr std::size_t headSize = 68;

Picture newPicture(std::uint32_t width = 96, std::uint32_t height = 48) {
    return *Picture::fromImage(test::png(width, height));
}

std::uint32_t property(const Picture& picture, std::uint16_t opid) {
    const auto blob = picture.blob();
    return Picture::fromBlob(*blob)->properties()->value(opid).value_or(0xDEADBEEF);
}

TEST(Picture, BlobSaysItsLengthAndHoldsShapeAndPicture) {
    const DataBlob blob = newPicture().blob();
    LittleEndianReader reader(*blob, "blob");
    EXPECT_EQ(reader.u32(), blob->size());
    EXPECT_EQ(reader.u16(), headSize);
    EXPECT_EQ(reader.u16(), 0x64);
    reader.seek(headSize);
    const art::RecordHeader shape = art::readHeader(reader);
    EXPECT_EQ(shape.type, art::spContainer);
    EXPECT_EQ(shape.version, art::container);
    reader.skip(shape.length);
    const art::RecordHeader entry = art::readHeader(reader);
    EXPECT_EQ(entry.type, art::fbse);
    EXPECT_EQ(entry.instance, 6U); // PNG
    EXPECT_EQ(entry.length, reader.remaining());
}

TEST(Picture, ItsShapeSaysThatItHasAnAnchorAndAKind) {
    const DataBlob blob = newPicture().blob();
    LittleEndianReader reader(*blob, "blob");
    reader.seek(headSize);
    art::readHeader(reader);
    const art::RecordHeader first = art::readHeader(reader);
    EXPECT_EQ(first.type, art::fsp);
    EXPECT_EQ(first.instance, 75U); // a picture frame
    reader.skip(4);                 // the shape's number
    EXPECT_EQ(reader.u32(), 0x0A00U);
}

TEST(Blips, EntriesOfMetafilesNameAFormForTheOtherSystem) {
    const auto forms = [](const Bytes& file) {
        constexpr std::size_t formsAt = 8; // behind the head of the record
        const Bytes entry = encodeBlip(recogniseImage(file).value());
        return std::pair(entry.at(formsAt), entry.at(formsAt + 1));
    };
    using Forms = std::pair<std::uint8_t, std::uint8_t>;
    EXPECT_EQ(forms(test::emf(900, 900)), (Forms{2, 4}));
    EXPECT_EQ(forms(test::placeableWmf(9, 9, 10)), (Forms{3, 4}));
    EXPECT_EQ(forms(test::jpeg(9, 9)), (Forms{5, 5}));
    EXPECT_EQ(forms(test::png(9, 9)), (Forms{6, 6}));
}

struct BlipCase {
    Bytes file;
    std::uint16_t type;
    unsigned instance;
    std::size_t dropped; // bytes of the file's own header
};

TEST(Picture, EveryKindOfFileGetsItsRecordAndDigest) {
    const std::vector<BlipCase> cases{{test::png(9, 9), 0xF01E, 0x6E0, 0},
                                      {test::jpeg(9, 9), 0xF01D, 0x46A, 0},
                                      {test::jpeg(9, 9, 0, 1, 4), 0xF01D, 0x6E2, 0},
                                      {test::bmp(9, 9), 0xF01F, 0x7A8, 14},
                                      {test::emf(900, 900), 0xF01A, 0x3D4, 0},
                                      {test::bareWmf(9, 9), 0xF01B, 0x216, 0},
                                      {test::placeableWmf(9, 9, 9), 0xF01B, 0x216, 22}};
    for (const BlipCase& expected : cases) {
        const DataBlob blob = Picture::fromImage(expected.file)->blob();
        LittleEndianReader reader(*blob, "blob");
        reader.seek(headSize);
        reader.skip(art::readHeader(reader).length);
        reader.skip(8 + 36); // FBSE and its fields
        const art::RecordHeader blip = art::readHeader(reader);
        EXPECT_EQ(blip.type, expected.type);
        EXPECT_EQ(blip.instance, expected.instance);
        EXPECT_EQ(blip.length, reader.remaining());
        const auto digest = md4(ByteView(expected.file).subspan(expected.dropped));
        const ByteView written = reader.view(16);
        EXPECT_TRUE(std::equal(digest.begin(), digest.end(), written.begin()));
    }
}

TEST(Picture, MetafileIsWrappedAsDeflatedData) {
    const Bytes file = test::emf(2540, 2540);
    const DataBlob blob = Picture::fromImage(file)->blob();
    LittleEndianReader reader(*blob, "blob");
    reader.seek(headSize);
    reader.skip(art::readHeader(reader).length);
    reader.skip(8 + 36 + 8 + 16);
    EXPECT_EQ(reader.u32(), file.size()); // cbSize
    reader.skip(16);
    EXPECT_EQ(reader.u32(), 914400U); // one inch in EMU
    reader.skip(4);
    EXPECT_EQ(reader.u32(), file.size() + 11); // zlib head, one block, checksum
    EXPECT_EQ(reader.u16(), 0xFE00);
    EXPECT_EQ(reader.u16(), 0x0178);
    EXPECT_EQ(reader.u8(), 1); // last block, stored
    EXPECT_EQ(reader.u16(), file.size());
}

TEST(Picture, OtherFilesAreRefused) {
    EXPECT_FALSE(Picture::fromImage(test::ascii("no picture at all")));
}

TEST(Picture, NewPictureHasNaturalSizeLockedRatioNoLineNoFill) {
    const Picture picture = newPicture(96, 48);
    EXPECT_EQ(picture.width(), 1440);
    EXPECT_EQ(picture.height(), 720);
    EXPECT_EQ(property(picture, art::pib), 1U);
    EXPECT_EQ(property(picture, art::protectionFlags), 0x00800080U);
    EXPECT_EQ(property(picture, art::lineFlags), 0x00080000U);
    EXPECT_EQ(property(picture, art::fillFlags), 0x00100000U);
}

TEST(Picture, LargePictureIsScaledDownInProportion) {
    const Picture picture = newPicture(9600, 2400);
    EXPECT_EQ(picture.width(), 31680);
    EXPECT_EQ(picture.height(), 7920);
}

TEST(Picture, TheNarrowestPictureIsATwipWide) {
    const auto goals = [](std::uint32_t width, std::uint32_t height) {
        const DataBlob blob = newPicture(width, height).blob();
        LittleEndianReader reader(*blob, "blob");
        reader.seek(28);
        const unsigned wide = reader.u16();
        return std::pair(wide, unsigned{reader.u16()});
    };
    EXPECT_EQ(goals(200000, 1), std::pair(31680U, 1U));
    EXPECT_EQ(goals(1, 200000), std::pair(1U, 31680U));
}

TEST(Picture, ALinkedPictureIsReadBehindItsNameAndWrittenTheSame) {
    Bytes bytes = *newPicture().blob();
    const Bytes name{2, 'x', 'y'};
    bytes.insert(bytes.begin() + headSize, name.begin(), name.end());
    bytes[6] = 0x66;
    bytes[0] = static_cast<std::uint8_t>(bytes.size());
    bytes[1] = static_cast<std::uint8_t>(bytes.size() >> 8);
    const auto picture = Picture::fromBlob(bytes);
    ASSERT_TRUE(picture);
    EXPECT_TRUE(picture->properties());
    EXPECT_EQ(*picture->blob(), bytes);
}

TEST(Picture, SizeIsKeptToTheTwip) {
    Picture picture = newPicture(96, 48);
    for (const std::int32_t twips : {1, 20, 777, 1441, 5669, 14400}) {
        picture.setWidth(twips);
        picture.setHeight(twips + 1);
        const Picture read = *Picture::fromBlob(*picture.blob());
        EXPECT_NEAR(read.width(), twips, 1 + twips / 2000.0);
        EXPECT_NEAR(read.height(), twips + 1, 1 + twips / 2000.0);
    }
}

TEST(Picture, CropCutsTheNaturalSizeAndKeepsTheScale) {
    Picture picture = newPicture(96, 48);
    picture.setCrop(Picture::Side::left, 0.25);
    picture.setCrop(Picture::Side::bottom, 0.5);

    EXPECT_EQ(property(picture, art::cropFromLeft), 0x4000U);
    EXPECT_EQ(property(picture, art::cropFromBottom), 0x8000U);
    EXPECT_NEAR(picture.width(), 1080, 1);
    EXPECT_NEAR(picture.height(), 360, 1);

    picture.setCrop(Picture::Side::left, 0);
    picture.setWidth(2000);
    EXPECT_NEAR(picture.width(), 2000, 1);
}

TEST(Picture, BrightnessAndContrastAreNeutralAtOneHalf) {
    Picture picture = newPicture();
    picture.setBrightness(0.5);
    picture.setContrast(0.5);
    EXPECT_EQ(property(picture, art::pictureBrightness), 0U);
    EXPECT_EQ(property(picture, art::pictureContrast), 0x10000U);

    picture.setBrightness(1);
    picture.setContrast(0.25);
    EXPECT_EQ(property(picture, art::pictureBrightness), 0x7FFFU);
    EXPECT_EQ(property(picture, art::pictureContrast), 0x8000U);

    picture.setBrightness(0);
    picture.setContrast(1);
    EXPECT_EQ(property(picture, art::pictureBrightness), 0xFFFF8000U);
    EXPECT_EQ(property(picture, art::pictureContrast), 0x7FFFFFFFU);
}

TEST(Picture, LineFillAndLockAreSetOneByOne) {
    Picture picture = newPicture();
    picture.setLineVisible(true);
    picture.setLineWeight(0.75);
    picture.setLineTransparency(0.25);
    picture.setFillVisible(true);
    picture.setFillTransparency(1);
    picture.setLockAspectRatio(false);

    EXPECT_EQ(property(picture, art::lineFlags), 0x00080008U);
    EXPECT_EQ(property(picture, art::lineWidth), 9525U);
    EXPECT_EQ(property(picture, art::lineOpacity), 0xC000U);
    EXPECT_EQ(property(picture, art::fillFlags), 0x00100010U);
    EXPECT_EQ(property(picture, art::fillOpacity), 0U);
    EXPECT_EQ(property(picture, art::protectionFlags), 0x00800000U);
}

TEST(Picture, ReadingAndWritingKeepsEveryByte) {
    Picture picture = newPicture();
    picture.setCrop(Picture::Side::top, 0.1);
    const DataBlob blob = picture.blob();
    EXPECT_EQ(*Picture::fromBlob(*blob)->blob(), *blob);
}

TEST(PictureFiles, ABitmapGetsBackTheHeadThatTellsWhereItsPixelsBegin) {
    const auto pixelsAt = [](unsigned head, unsigned depth, unsigned compression, unsigned used) {
        Bytes file = test::bmp(2, 2);
        file.resize(14 + 124);
        file.at(14) = static_cast<std::uint8_t>(head);
        file.at(28) = static_cast<std::uint8_t>(depth);
        file.at(30) = static_cast<std::uint8_t>(compression);
        file.at(46) = static_cast<std::uint8_t>(used);
        const Bytes written = pictureFile(*Picture::fromImage(file));
        EXPECT_EQ(written.size(), file.size());
        LittleEndianReader reader(written, "BMP");
        EXPECT_EQ(reader.u16(), 0x4D42U);
        EXPECT_EQ(reader.u32(), file.size());
        reader.skip(4);
        return reader.u32();
    };
    EXPECT_EQ(pixelsAt(40, 24, 0, 0), 54U);
    EXPECT_EQ(pixelsAt(40, 8, 0, 0), 54U + 256 * 4) << "all colours of the palette";
    EXPECT_EQ(pixelsAt(40, 1, 0, 0), 54U + 2 * 4);
    EXPECT_EQ(pixelsAt(40, 8, 0, 3), 54U + 3 * 4) << "those that are used";
    EXPECT_EQ(pixelsAt(40, 16, 3, 0), 54U + 12) << "the masks of the colours";
    EXPECT_EQ(pixelsAt(124, 16, 3, 0), 14U + 124) << "masks within the head";
    EXPECT_EQ(pixelsAt(40, 16, 2, 0), 54U);
}

TEST(PictureFiles, OthersAreAsTheyCameAndMetafilesAreNone) {
    const Bytes png = test::png(8, 8);
    EXPECT_EQ(pictureFile(*Picture::fromImage(png)), png);
    const Bytes jpeg = test::jpeg(8, 8);
    EXPECT_EQ(pictureFile(*Picture::fromImage(jpeg)), jpeg);
    EXPECT_TRUE(pictureFile(*Picture::fromImage(test::emf(100, 100))).empty());
}

TEST(PictureFiles, ACropIsAPartOfEachSideAndLeavesATwentieth) {
    Picture picture = newPicture();
    EXPECT_EQ(cropOf(picture), PictureCrop{});
    picture.setCrop(Picture::Side::left, 0.125);
    picture.setCrop(Picture::Side::top, 0.25);
    picture.setCrop(Picture::Side::right, -0.5);
    picture.setCrop(Picture::Side::bottom, 0.96875);
    EXPECT_EQ(cropOf(picture), (PictureCrop{0.125, 0.25, 0, 0.95}));
}

TEST(Picture, OtherBlobsAreNoPicture) {
    Bytes formField = *newPicture().blob();
    formField[6] = 0;
    EXPECT_FALSE(Picture::fromBlob(formField));
    EXPECT_FALSE(Picture::fromBlob({}));
    const DataBlob whole = newPicture().blob();
    for (std::size_t size = 0; size < whole->size(); ++size) {
        EXPECT_FALSE(Picture::fromBlob(ByteView(*whole).first(size)));
    }
}

TEST(Picture, OldBitmapWithoutAShapeStillTakesASize) {
    const auto bare = [](unsigned kind) {
        LittleEndianWriter writer;
        writer.u32(100);
        writer.u16(headSize);
        writer.u16(kind);
        writer.zeros(92);
        writer.patchU16(28, 1000);
        writer.patchU16(32, 1000);
        writer.patchU16(30, 1000);
        writer.patchU16(34, 1000);
        return Picture::fromBlob(writer.data());
    };
    for (const unsigned kind : {0x08U, 0x62U, 0x63U}) { // a metafile, a TIFF, a bitmap
        Picture picture = *bare(kind);
        picture.setWidth(500);
        picture.setLineVisible(true);
        EXPECT_EQ(picture.width(), 500);
        EXPECT_FALSE(picture.properties());
        EXPECT_EQ(picture.blob()->size(), 100U);
    }
    for (const unsigned kind : {0x07U, 0x09U, 0x61U, 0x65U}) {
        EXPECT_FALSE(bare(kind)) << kind;
    }
}

TEST(Picture, AMetafileIsWrappedInBlocksWithItsChecksumBehindThem) {
    const auto deflated = [](const Bytes& file) {
        const DataBlob blob = Picture::fromImage(file)->blob();
        const std::size_t blocks = file.size() / 65536 + 1;
        return Bytes(blob->end() - static_cast<std::ptrdiff_t>(file.size() + 6 + 5 * blocks),
                     blob->end());
    };
    const auto at = [](const Bytes& bytes, std::size_t from, std::size_t count) {
        const auto begin = bytes.begin() + static_cast<std::ptrdiff_t>(from);
        return Bytes(begin, begin + static_cast<std::ptrdiff_t>(count));
    };
    Bytes file = test::emf(2540, 2540);
    const Bytes small = deflated(file);
    EXPECT_EQ(at(small, 0, 7), test::hex("7801 01 6C00 93FF"));
    EXPECT_EQ(at(small, small.size() - 4, 4), test::hex("FA790350"));
    file.resize(file.size() + 70000, 0xA5);
    const Bytes large = deflated(file);
    EXPECT_EQ(at(large, 0, 7), test::hex("7801 00 FFFF 0000"));
    EXPECT_EQ(at(large, 2 + 5 + 65535, 5), test::hex("01 DD11 22EE"));
    EXPECT_EQ(at(large, large.size() - 4, 4), test::hex("B73D4AD0"));
}

} // namespace
} // namespace qvnd::word
