#include "platform/word/docfile/pictures/ObjectPicture.h"

#include "support/Images.h"

#include <gtest/gtest.h>

#include <utility>

namespace qvnd::word {
namespace {

// An object of that natural size, shown in thousandths of it.
EmbeddedObject objectOf(std::uint32_t width, std::uint32_t height, std::uint32_t acrossScale,
                        std::uint32_t downScale) {
    LittleEndianWriter sizes;
    sizes.zeros(0x14);
    sizes.u32(width);
    sizes.u32(height);
    sizes.zeros(0x2C - 0x1C);
    sizes.u32(acrossScale);
    sizes.u32(downScale);
    EmbeddedObject object;
    object.entries.push_back(
        {u"\x0003META", false, {}, test::joined({Bytes(8), test::emf(2540, 2540)})});
    object.entries.push_back({u"\x0003PIC", false, {}, sizes.take()});
    return object;
}

std::pair<int, int> shown(const EmbeddedObject& object) {
    const auto picture = pictureOfObject(object);
    return picture
               ? std::pair(static_cast<int>(picture->width()), static_cast<int>(picture->height()))
               : std::pair(0, 0);
}

TEST(PicturesOfObjects, HaveTheirNaturalSizeInItsScale) {
    EXPECT_EQ(shown(objectOf(1440, 720, 1000, 1000)), std::pair(1440, 720));
    EXPECT_EQ(shown(objectOf(1440, 720, 500, 2000)), std::pair(720, 1440));
    EXPECT_EQ(shown(objectOf(1000, 1000, 1, 1)), std::pair(1, 1));
}

TEST(PicturesOfObjects, AreNoneInASizeThatNoPageHolds) {
    constexpr std::pair none{0, 0};
    EXPECT_EQ(shown(objectOf(31680, 31680, 1000, 1000)), std::pair(31680, 31680));
    EXPECT_EQ(shown(objectOf(31681, 100, 500, 1000)), none);
    EXPECT_EQ(shown(objectOf(100, 31681, 1000, 500)), none);
    EXPECT_EQ(shown(objectOf(0, 100, 1000, 1000)), none);
    EXPECT_EQ(shown(objectOf(100, 0, 1000, 1000)), none);
    EXPECT_EQ(shown(objectOf(1, 100, 999, 1000)), none) << "less than a twip wide";
    EXPECT_EQ(shown(objectOf(100, 1, 1000, 999)), none);
    EXPECT_EQ(shown(objectOf(1000, 100, 31680, 1000)), std::pair(31680, 100));
    EXPECT_EQ(shown(objectOf(1001, 100, 31680, 1000)), none);
    EXPECT_EQ(shown(objectOf(1000, 100, 31681, 1000)), none);
    EXPECT_EQ(shown(objectOf(100, 1, 1000, 31680)), std::pair(100, 31));
    EXPECT_EQ(shown(objectOf(100, 1, 1000, 31681)), none);
}

TEST(PicturesOfObjects, AreNoneWithoutAPictureOrItsSize) {
    const EmbeddedObject sound = objectOf(100, 100, 1000, 1000);
    for (const std::size_t entry : {0U, 1U}) {
        EmbeddedObject object = sound;
        object.entries[entry].path += u"x";
        EXPECT_FALSE(pictureOfObject(object));
        object = sound;
        object.entries[entry].storage = true;
        EXPECT_FALSE(pictureOfObject(object));
    }
    EmbeddedObject bare = sound;
    bare.entries[0].content.resize(8);
    EXPECT_FALSE(pictureOfObject(bare)) << "a head alone";
    EmbeddedObject cut = sound;
    cut.entries[1].content.resize(0x33);
    EXPECT_FALSE(pictureOfObject(cut));
    EmbeddedObject other = sound;
    std::fill(other.entries[0].content.begin(), other.entries[0].content.end(), std::uint8_t{1});
    EXPECT_FALSE(pictureOfObject(other)) << "no metafile";
}

} // namespace
} // namespace qvnd::word
