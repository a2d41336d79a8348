#include "platform/pictures/PictureDecoder.h"

#include "support/Gif.h"

#include <gtest/gtest.h>

#include <QImage>

namespace qvnd::pictures {
namespace {

QImage imageOf(const word::Bytes& png) {
    return QImage::fromData(png.data(), static_cast<int>(png.size()), "PNG");
}

TEST(PictureDecoder, OfAnAnimatedGifTheFirstFrameComes) {
    const auto png = PictureDecoder().convert(test::gifOfRedThenBlue());
    ASSERT_TRUE(png.has_value());
    const QImage image = imageOf(*png);
    EXPECT_EQ(image.size(), QSize(1, 1));
    EXPECT_EQ(image.pixelColor(0, 0), QColor(Qt::red));
    EXPECT_EQ(image.dotsPerMeterX(), 3780);
}

TEST(PictureDecoder, ADamagedGifGivesNothing) {
    word::Bytes gif = test::gifOfRedThenBlue();
    gif.resize(20);
    EXPECT_FALSE(PictureDecoder().convert(gif).has_value());
}

TEST(PictureDecoder, WhatIsNoPictureGivesNothing) {
    EXPECT_FALSE(PictureDecoder().convert(test::ascii("no picture at all")).has_value());
    EXPECT_FALSE(PictureDecoder().convert({}).has_value());
}

} // namespace
} // namespace qvnd::pictures
