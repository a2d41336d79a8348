#include "platform/pictures/PageImages.h"

#include "platform/word/docfile/pictures/Picture.h"
#include "support/Metafiles.h"

#include <QBuffer>
#include <QImage>

#include <gtest/gtest.h>

namespace qvnd::pictures {
namespace {

// The left half red, the right half blue.
QImage redAndBlue(int width, int height) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::red);
    for (int y = 0; y < height; ++y) {
        for (int x = width / 2; x < width; ++x) {
            image.setPixelColor(x, y, Qt::blue);
        }
    }
    return image;
}

word::Picture pictureOf(const QImage& image, const char* format) {
    QByteArray file;
    QBuffer buffer(&file);
    image.save(&buffer, format);
    return *word::Picture::fromImage(
        {reinterpret_cast<const std::uint8_t*>(file.constData()), std::size_t(file.size())});
}

std::uint32_t at(const drawing::PixelImage& image, int x, int y) {
    const auto* pixel = image.pixels.data() + (std::size_t(y) * std::size_t(image.width) + x) * 4U;
    return (std::uint32_t{pixel[2]} << 16) | (std::uint32_t{pixel[1]} << 8) | pixel[0];
}

TEST(PageImages, PngAndBitmapAreReadAsTheyAre) {
    for (const char* format : {"PNG", "BMP"}) {
        const auto image = pageImage(pictureOf(redAndBlue(8, 4), format).blob());
        ASSERT_TRUE(image) << format;
        EXPECT_EQ(image->width, 8);
        EXPECT_EQ(image->height, 4);
        EXPECT_EQ(at(*image, 1, 1), 0xFF0000U);
        EXPECT_EQ(at(*image, 6, 3), 0x0000FFU);
    }
}

TEST(PageImages, WhatACropCutsOffIsNotThere) {
    word::Picture picture = pictureOf(redAndBlue(8, 4), "PNG");
    picture.setCrop(word::Picture::Side::left, 0.5);
    const auto image = pageImage(picture.blob());
    ASSERT_TRUE(image);
    EXPECT_EQ(image->width, 4);
    EXPECT_EQ(at(*image, 0, 0), 0x0000FFU);
}

TEST(PageImages, APictureIsAsBrightAndPaleAsItsDocumentShowsIt) {
    word::Picture picture = pictureOf(redAndBlue(8, 4), "PNG");
    picture.setBrightness(0.85); // as a picture that is washed out
    picture.setContrast(0.15);
    const auto pale = pageImage(picture.blob());
    ASSERT_TRUE(pale);
    EXPECT_EQ(at(*pale, 1, 1), 0xFFB3B3U);
    EXPECT_EQ(at(*pale, 6, 3), 0xB3B3FFU);
    picture.setBrightness(0.25);
    picture.setContrast(0.5);
    EXPECT_EQ(at(*pageImage(picture.blob()), 1, 1), 0xBF0000U);
}

TEST(PageImages, AFinePictureIsReadNoFinerThanAsked) {
    word::Picture picture = pictureOf(redAndBlue(3000, 1500), "JPG");
    picture.setWidth(1440);
    picture.setHeight(720);
    const auto image = pageImageAt(picture.blob(), 300);
    ASSERT_TRUE(image);
    EXPECT_NEAR(image->width, 300, 4) << "sizes are kept in thousandths of the natural one";
    EXPECT_NEAR(image->height, 150, 2);
    EXPECT_EQ(pageImage(picture.blob())->width, 3000);
}

TEST(PageImages, OfACroppedPictureTheWholeIsTakenForItsFineness) {
    word::Picture picture = pictureOf(redAndBlue(3000, 1500), "JPG");
    picture.setWidth(1440);
    picture.setCrop(word::Picture::Side::right, 0.5);
    EXPECT_NEAR(pageImageAt(picture.blob(), 300)->width, 150, 2);
}

TEST(PageImages, AMetafileAndDataThatIsNoPictureGiveNothing) {
    const word::Bytes wmf = test::WmfBuilder().window(10, 10).placeable(0, 0, 10, 10, 96);
    const auto picture = word::Picture::fromImage(wmf);
    ASSERT_TRUE(picture);
    EXPECT_FALSE(pageImage(picture->blob()));
    EXPECT_FALSE(pageImage(nullptr));
}

} // namespace
} // namespace qvnd::pictures
