// Pictures in lines of text and in frames.

#include "platform/layout/PagedDocument.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/pictures/Picture.h"
#include "support/Images.h"

#include <string>

namespace qvnd::layout {
namespace {

using word::Bytes;
using word::withSprm16;
using word::withSprm32;
using word::withSprm8;
namespace sprm = word::sprm;

class PicturesOnPages : public test::PagedDocument {};

TEST_F(PicturesOnPages, APictureStandsInItsLineInItsSize) {
    auto picture = *word::Picture::fromImage(test::png(96, 48));
    picture.setWidth(1000);
    picture.setHeight(500);
    document.tables.blobs.push_back(picture.blob());
    type(u"前\x01\r");
    main.characters = {
        {1, {}},
        {1, intern(withSprm8(withSprm32({}, sprm::CPicLocation, 0), sprm::CFSpec, 1))},
        {1, {}}};
    const Page page = pages().at(0);
    ASSERT_EQ(page.layer.pictures.size(), 1U);
    const PlacedPicture& placed = page.layer.pictures[0];
    EXPECT_EQ(placed.width, 1000);
    EXPECT_EQ(placed.height, 500);
    EXPECT_DOUBLE_EQ(placed.x, 1000 + 200) << "behind the character";
    EXPECT_DOUBLE_EQ(placed.y, 1000);
    EXPECT_EQ(placed.blob, document.tables.blobs[0]);
}

TEST_F(PicturesOnPages, APictureThatIsTooWideForThePlaceBesideAFrameGoesBelow) {
    auto picture = *word::Picture::fromImage(test::png(96, 48));
    picture.setWidth(1500);
    picture.setHeight(500);
    document.tables.blobs.push_back(picture.blob());
    Bytes frame = withSprm16(withSprm16({}, sprm::PDxaWidth, 800), sprm::PWHeightAbs, 0x8000 | 400);
    type(u"框\r", frame);
    type(u"\x01\r");
    main.characters = {
        {2, {}},
        {1, intern(withSprm8(withSprm32({}, sprm::CPicLocation, 0), sprm::CFSpec, 1))},
        {1, {}}};
    const Page page = pages().at(0);
    ASSERT_EQ(page.layer.pictures.size(), 1U);
    EXPECT_DOUBLE_EQ(page.layer.pictures[0].y, 1400);
}

TEST_F(PicturesOnPages, AFrameWithoutAWidthIsAsWideAsItsPictures) {
    auto picture = *word::Picture::fromImage(test::png(96, 48));
    picture.setWidth(400);
    picture.setHeight(200);
    document.tables.blobs.push_back(picture.blob());
    const Bytes shown = withSprm8(withSprm32({}, sprm::CPicLocation, 0), sprm::CFSpec, 1);
    type(u"\x01\x01\r", withSprm16({}, sprm::PDxaAbs, 0xFFFC)); // centred
    type(u"甲\r");
    main.characters = {{2, intern(shown)}, {3, {}}};
    const Page page = pages().at(0);
    ASSERT_EQ(page.layer.pictures.size(), 2U);
    EXPECT_NEAR(page.layer.pictures[0].x, 1600, 1);
    EXPECT_NEAR(page.layer.pictures[1].x, 2000, 1);
}

TEST_F(PicturesOnPages, InTheOfficeSuiteAFrameOfOnePictureHangsInTheNextParagraphsLine) {
    auto picture = *word::Picture::fromImage(test::png(96, 48));
    picture.setWidth(400);
    picture.setHeight(200);
    document.tables.blobs.push_back(picture.blob());
    const Bytes shown = withSprm8(withSprm32({}, sprm::CPicLocation, 0), sprm::CFSpec, 1);
    const auto typeFramed = [&](unsigned across) {
        main = {};
        Bytes frame = withSprm16({}, sprm::PDxaAbs, across);
        frame = withSprm16(withSprm16(frame, sprm::PDxaFromText, 100), sprm::PDyaFromText, 50);
        type(u"\x01\r", frame);
        type(u"甲\r乙\r");
        main.characters = {{1, intern(shown)}, {5, {}}};
    };
    options = officeOptions();
    typeFramed(301);
    const Page page = pages().at(0);
    ASSERT_EQ(page.layer.pictures.size(), 1U);
    EXPECT_DOUBLE_EQ(page.layer.pictures[0].x, 1100);
    EXPECT_DOUBLE_EQ(page.layer.pictures[0].y, 1160 + 50);
    EXPECT_DOUBLE_EQ(textAt(page, u"甲").x, 1600);
    EXPECT_NEAR(textAt(page, u"甲").baseline, 1160, 0.02);
    EXPECT_NEAR(textAt(page, u"乙").baseline, 1160 + 300 + 160, 0.02);
    typeFramed(0xFFF8); // at the right margin
    EXPECT_DOUBLE_EQ(textAt(pages().at(0), u"甲").x, 1500);
    options = {};
    EXPECT_DOUBLE_EQ(textAt(pages().at(0), u"甲").x, 1000);
}

TEST_F(PicturesOnPages, InTheOfficeSuiteAFrameOfAPictureAndTextStaysOne) {
    auto picture = *word::Picture::fromImage(test::png(96, 48));
    document.tables.blobs.push_back(picture.blob());
    type(u"\x01框\r", withSprm16({}, sprm::PDxaAbs, 301));
    type(u"甲\r");
    main.characters = {
        {1, intern(withSprm8(withSprm32({}, sprm::CPicLocation, 0), sprm::CFSpec, 1))}, {4, {}}};
    options = officeOptions();
    const Page page = pages().at(0);
    EXPECT_EQ(page.layer.pictures.size(), 1U);
    EXPECT_NE(textOf(page).find(u'框'), std::u16string::npos);
}

TEST_F(PicturesOnPages, InTheOfficeSuiteAPictureHangsInAParagraphThatShowsNothingElse) {
    auto picture = *word::Picture::fromImage(test::png(96, 48));
    document.tables.blobs.push_back(picture.blob());
    type(u"\x01\r", withSprm16({}, sprm::PDxaAbs, 301));
    type(u"甲\r乙\r");
    main.characters = {
        {2, intern(withSprm8(withSprm32({}, sprm::CPicLocation, 0), sprm::CFSpec, 1))},
        {2, intern(withSprm8({}, sprm::CFVanish, 1))},
        {2, {}}};
    options = officeOptions();
    const Page page = pages().at(0);
    EXPECT_EQ(page.layer.pictures.size(), 1U);
    EXPECT_EQ(textOf(page), u"乙");
}

TEST_F(PicturesOnPages, InTheOfficeSuiteAFrameOfOnePictureThatNothingFollowsStaysOne) {
    document.tables.blobs.push_back(word::Picture::fromImage(test::png(96, 48))->blob());
    const Bytes shown = withSprm8(withSprm32({}, sprm::CPicLocation, 0), sprm::CFSpec, 1);
    type(u"甲\r");
    type(u"\x01\r", withSprm16({}, sprm::PDxaAbs, 301));
    main.characters = {{2, {}}, {1, intern(shown)}, {1, {}}};
    options = officeOptions();
    const Page page = pages().at(0);
    ASSERT_EQ(page.layer.pictures.size(), 1U);
    EXPECT_DOUBLE_EQ(page.layer.pictures[0].x, 1300);
}

} // namespace
} // namespace qvnd::layout
