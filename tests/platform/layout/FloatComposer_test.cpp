#include "platform/word/layout/FloatComposer.h"

#include "platform/layout/PagedDocument.h"
#include "platform/word/docfile/format/OfficeArt.h"
#include "platform/word/docfile/format/ShapeProperties.h"
#include "platform/word/docfile/pictures/Blip.h"
#include "support/Images.h"

#include <memory>
#include <numbers>
#include <utility>
#include <vector>

namespace qvnd::layout {
namespace {

namespace art = word::art;

// One shape, 1000 twips wide and as high.
class FloatingShape : public test::PagedDocument {
protected:
    FloatingShape() { paragraphs(1); }

    static word::Bytes shapeRecord(unsigned version, unsigned instance, std::uint16_t type,
                                   const word::Bytes& content) {
        word::LittleEndianWriter writer;
        art::writeRecord(writer, version, instance, type, content);
        return writer.take();
    }

    // `count` properties in `table`.
    Layer composed(unsigned kind, unsigned count, const word::Bytes& table) {
        return composed(drawingOf(kind, count, table)).layer;
    }
    // `more`: records behind the properties.
    static word::Drawing drawingOf(unsigned kind, unsigned count, const word::Bytes& table,
                                   const word::Bytes& more = {}) {
        word::LittleEndianWriter place;
        for (const std::uint32_t side : {0U, 0U, 1000U, 1000U}) {
            place.u32(side);
        }
        place.zeros(6);
        word::Bytes content = shapeRecord(2, kind, art::fsp, word::Bytes(8));
        const word::Bytes properties = shapeRecord(3, count, art::fopt, table);
        content.insert(content.end(), properties.begin(), properties.end());
        content.insert(content.end(), more.begin(), more.end());
        word::Drawing drawing;
        drawing.place = place.take();
        drawing.records = shapeRecord(art::container, 0, art::spContainer, content);
        return drawing;
    }
    AnchoredFloat composed(const word::Drawing& drawing) {
        document.tables.drawings = {drawing};
        StoryReader::Shared shared(sourceOfAll(), fonts);
        const auto floating = FloatComposer(shared).drawing(0, {}, {});
        EXPECT_TRUE(floating);
        return floating.value_or(AnchoredFloat());
    }
    Layer composed(unsigned kind) { return composed(kind, look.count(), look.encode()); }

    // Text art of two letters, half as wide as high: a square.
    Layer composedArt(std::uint32_t degrees) {
        word::LittleEndianWriter table;
        table.u16(0x0004);
        table.u32(degrees << 16U);
        table.u16(0x80C0);
        table.u32(6);
        table.text(u"AB");
        table.u16(0);
        return composed(136, 2, table.take());
    }

    // A rectangle that names the first text of the document.
    AnchoredFloat composedText(const std::u16string& text) { return composedText(story(text)); }
    AnchoredFloat composedText(const word::Story& text) {
        document.tables.shapeTexts = {{std::make_shared<const word::Story>(text), {}}};
        word::Drawing drawing = drawingOf(1, look.count(), look.encode(),
                                          shapeRecord(0, 0, art::clientTextbox, word::Bytes(4)));
        const auto at = static_cast<std::uint32_t>(drawing.records.size() - 4);
        drawing.references = {{at, word::ShapeReference::Kind::text, 0, 0}};
        return composed(drawing);
    }

    art::ShapeProperties look;
};

TEST_F(FloatingShape, ARectangleIsAFillWithFourSidesAndADiamondAnOutline) {
    const Layer rectangle = composed(1);
    EXPECT_EQ(rectangle.fills.size(), 1U);
    EXPECT_EQ(rectangle.rules.size(), 4U);
    EXPECT_TRUE(rectangle.outlines.empty());
    const Layer diamond = composed(110);
    EXPECT_TRUE(diamond.fills.empty());
    ASSERT_EQ(diamond.outlines.size(), 1U);
    EXPECT_EQ(diamond.outlines[0].fill, 0xFFFFFFU);
    EXPECT_EQ(diamond.outlines[0].path.points[0], (PathPoint{500, 0}));
}

// A picture frame 1000 twips wide and 400 high.
TEST_F(FloatingShape, APictureIsTurnedAboutTheMiddleOfItsArea) {
    document.tables.shapePictures = {std::make_shared<const word::Bytes>(
        word::encodeBlip(*word::recogniseImage(test::png(96, 48))))};
    const auto turnedBy = [&](std::uint32_t degrees) {
        look.setBlip(art::pib, 1);
        look.set(0x0004, degrees << 16U);
        word::Drawing drawing = drawingOf(75, look.count(), look.encode());
        drawing.place[12] = 400 & 0xFF;
        drawing.place[13] = 400 >> 8;
        const auto at = static_cast<std::uint32_t>(drawing.records.size() - 1);
        drawing.references = {{at, word::ShapeReference::Kind::picture, 0, 0}};
        return composed(drawing).layer.pictures.at(0);
    };
    const PlacedPicture straight = turnedBy(0);
    EXPECT_EQ(straight.turn, ShapeTurn{});
    EXPECT_DOUBLE_EQ(straight.width, 1000);
    const PlacedPicture oblique = turnedBy(30);
    EXPECT_NEAR(oblique.turn.angle, std::numbers::pi / 6, 1e-9);
    EXPECT_DOUBLE_EQ(oblique.width, 1000);
    const PlacedPicture onItsSide = turnedBy(90);
    EXPECT_NEAR(onItsSide.turn.angle, std::numbers::pi / 2, 1e-9);
    EXPECT_DOUBLE_EQ(onItsSide.width, 400) << "its area is told as it lies";
    EXPECT_DOUBLE_EQ(onItsSide.height, 1000);
    EXPECT_DOUBLE_EQ(onItsSide.x, 300);
    EXPECT_DOUBLE_EQ(onItsSide.y, -300);
}

TEST_F(FloatingShape, ALinesArrowStandsAtItsEndInTheLinesColour) {
    look.set(0x01C0, 0x000000FF);
    look.set(0x01D1, 1);
    const Layer line = composed(20);
    ASSERT_EQ(line.outlines.size(), 2U);
    EXPECT_EQ(line.outlines[0].fill, 0xFF0000U);
    EXPECT_EQ(line.outlines[0].path.points[0], (PathPoint{1000, 1000}));
    EXPECT_FALSE(line.outlines[1].fill);
    EXPECT_EQ(line.outlines[1].lineColour, 0xFF0000U);
}

TEST_F(FloatingShape, AnArrowAtALinesStartPointsAwayFromIt) {
    look.set(0x01D0, 1);
    const Layer line = composed(20);
    ASSERT_EQ(line.outlines.size(), 2U);
    EXPECT_EQ(line.outlines[0].path.points[0], (PathPoint{0, 0}));
    EXPECT_GT(line.outlines[0].path.points[1].x, 0);
    look.set(0x01D1, 1);
    EXPECT_EQ(composed(20).outlines.size(), 3U);
    EXPECT_EQ(composed(4).outlines.size(), 1U) << "a diamond has no ends";
}

TEST_F(FloatingShape, TheMarkThatEndsTheTextOfABoxTakesNoLine) {
    look.setFlag(0x00BF, 0x02, true);
    const auto foot = [&](const std::u16string& text) {
        return composedText(text).layer.rules.at(1).y1; // of the box
    };
    EXPECT_DOUBLE_EQ(foot(u"一\r\r"), 72 + 200 + 72);
    EXPECT_DOUBLE_EQ(foot(u"一\r\r\r"), 72 + 400 + 72);
    EXPECT_DOUBLE_EQ(foot(u"一\r"), 72 + 200 + 72);
    EXPECT_DOUBLE_EQ(foot(u"\r"), 72 + 200 + 72);
}

TEST_F(FloatingShape, TextThatHasNoRoomInABoxOfFixedHeightIsCutOff) {
    const std::u16string text = u"一\r二\r三\r四\r五\r六\r七\r";
    const auto cut = composedText(text).layer.texts;
    ASSERT_EQ(cut.size(), 5U);
    EXPECT_FALSE(cut[3].endsAt);
    EXPECT_EQ(cut[4].endsAt, 1000);
    look.setFlag(0x00BF, 0x02, true); // the box is as high as its text
    EXPECT_EQ(composedText(text).layer.texts.size(), 7U);
}

TEST_F(FloatingShape, ALineWithoutHeightOrTextIsALine) {
    constexpr unsigned line = 20;
    word::Drawing drawing = drawingOf(line, look.count(), look.encode());
    constexpr std::size_t bottom = 12; // of the place
    drawing.place[bottom] = drawing.place[bottom + 1] = 0;
    EXPECT_EQ(composed(drawing).layer.outlines.size(), 1U);
}

TEST_F(FloatingShape, TextThatGoesOnInALinkedBoxIsNotCutOff) {
    composedText(u"一\r二\r三\r四\r五\r六\r七\r");
    word::Drawing next = document.tables.drawings[0];
    next.references[0].link = 1;
    document.tables.drawings.push_back(next);
    StoryReader::Shared shared(sourceOfAll(), fonts);
    const Layer layer = FloatComposer(shared).drawing(0, {}, {}).value().layer;
    ASSERT_EQ(layer.texts.size(), 7U);
    EXPECT_FALSE(layer.texts[6].endsAt);
}

TEST_F(FloatingShape, ItsTextStandsWithinItsPadding) {
    look.set(0x0081, 100 * 635);
    look.set(0x0082, 50 * 635);
    look.set(0x0083, 200 * 635);
    const Layer layer = composedText(u"一二三四\r").layer;
    ASSERT_EQ(layer.texts.size(), 2U) << "of three characters in a line of 700 twips";
    EXPECT_EQ(layer.texts[0].text, u"一二三");
    EXPECT_DOUBLE_EQ(layer.texts[0].x, 100);
    EXPECT_DOUBLE_EQ(layer.texts[0].baseline, 50 + 160);
    EXPECT_EQ(layer.fills.size(), 1U);
}

TEST_F(FloatingShape, OneThatFitsItsTextIsAsHighAsThatAndItsPadding) {
    look.set(0x00BF, 0x00020002);
    const AnchoredFloat small = composedText(u"一二三四\r");
    EXPECT_DOUBLE_EQ(small.layer.fills.at(0).height, 72 + 400 + 72);
    EXPECT_DOUBLE_EQ(small.place.height, 1000);
    const AnchoredFloat large = composedText(u"一二三四五六七八九十一二三四五六\r");
    EXPECT_DOUBLE_EQ(large.layer.fills.at(0).height, 72 + 1200 + 72);
    EXPECT_DOUBLE_EQ(large.place.height, 1344);
}

TEST_F(FloatingShape, ATextOrDrawingThatIsNotThereIsNone) {
    composedText(u"一\r");
    const word::Drawing named = document.tables.drawings[0];
    document.tables.shapeTexts = {{nullptr, {}}};
    EXPECT_TRUE(composed(named).layer.texts.empty());
    document.tables.shapeTexts.clear();
    EXPECT_TRUE(composed(named).layer.texts.empty());
    StoryReader::Shared shared(source, fonts);
    EXPECT_FALSE(FloatComposer(shared).drawing(1, {}, {}));
}

TEST_F(FloatingShape, OneThatNamesNoTextShowsNoneOfTheDocument) {
    document.tables.shapeTexts = {{std::make_shared<const word::Story>(story(u"一\r")), {}}};
    EXPECT_TRUE(composed(1).texts.empty());
}

Strip stripOf(std::vector<PlacedText> texts, std::vector<PlacedPicture> pictures) {
    Strip strip;
    strip.layer.texts = std::move(texts);
    strip.layer.pictures = std::move(pictures);
    return strip;
}

TEST(TextWidth, ReachesFromTheFirstToTheLastOfAllTextsAndPictures) {
    PlacedText near;
    near.x = 100;
    near.advances = {50, 50};
    PlacedText far;
    far.x = 300;
    far.advances = {20};
    PlacedPicture picture;
    picture.x = 500;
    picture.width = 30;
    EXPECT_DOUBLE_EQ(textWidth({}), 0);
    EXPECT_DOUBLE_EQ(textWidth({stripOf({near, far}, {})}), 220);
    EXPECT_DOUBLE_EQ(textWidth({stripOf({far, near}, {})}), 220);
    EXPECT_DOUBLE_EQ(textWidth({stripOf({near}, {}), stripOf({far}, {picture})}), 430);
    PlacedPicture left = picture;
    left.x = 10;
    EXPECT_DOUBLE_EQ(textWidth({stripOf({}, {left, picture})}), 520);
    EXPECT_DOUBLE_EQ(textWidth({stripOf({}, {picture, left})}), 520);
    EXPECT_DOUBLE_EQ(textWidth({stripOf({}, {picture})}), 30);
}

TEST(TextWidth, OfWhatStandsInFrontOfTheLinesBeginIsItsOwn) {
    PlacedText text;
    text.x = -500;
    text.advances = {200};
    PlacedPicture picture;
    picture.x = -400;
    picture.width = 50;
    EXPECT_DOUBLE_EQ(textWidth({stripOf({text}, {})}), 200);
    EXPECT_DOUBLE_EQ(textWidth({stripOf({}, {picture})}), 50);
    EXPECT_DOUBLE_EQ(textWidth({stripOf({text}, {picture})}), 200);
}

TEST_F(FloatingShape, UprightTextArtFillsItsArea) {
    const Layer layer = composedArt(0);
    ASSERT_EQ(layer.textArt.size(), 1U);
    EXPECT_TRUE(layer.fills.empty());
    EXPECT_DOUBLE_EQ(layer.textArt[0].width, 1000);
    EXPECT_DOUBLE_EQ(layer.textArt[0].height, 1000);
    EXPECT_EQ(layer.textArt[0].texts.at(0).text, u"AB");
}

// Fonts of these measures, without height or width where they are 0.
class FlatFonts : public test::FixedFonts {
public:
    FlatFonts(double height, double width) : height_(height), width_(width) {}
    double advance(FaceId, char32_t) override { return width_; }
    FaceHeights heights(FaceId) override { return {height_, 0}; }

private:
    double height_;
    double width_;
};

TEST_F(FloatingShape, TextArtWithoutHeightOrWidthIsNotShown) {
    composedArt(0);
    const auto countWith = [&](FlatFonts flat) {
        StoryReader::Shared shared(source, flat);
        const auto floating = FloatComposer(shared).drawing(0, {}, {});
        return floating ? floating->layer.textArt.size() : 99;
    };
    EXPECT_EQ(countWith({0.8, 0.5}), 1U);
    EXPECT_EQ(countWith({0, 0.5}), 0U);
    EXPECT_EQ(countWith({0.8, 0}), 0U);
}

TEST_F(FloatingShape, ItIsInFrontOfTheTextOrBehindItInTheOrderOfItsFile) {
    const auto planeOf = [&](std::uint32_t order, bool isBehind) {
        word::Drawing drawing = drawingOf(1, look.count(), look.encode());
        drawing.order = order;
        drawing.place[16] = 3U << 5U;
        drawing.place[17] = isBehind ? 0x40 : 0;
        const Layer layer = composed(drawing).layer;
        EXPECT_EQ(layer.fills.at(0).plane, layer.rules.at(0).plane);
        return layer.fills[0].plane;
    };
    EXPECT_LT(0, planeOf(0, false));
    EXPECT_LT(planeOf(0, false), planeOf(1, false));
    EXPECT_LT(planeOf(1, true), 0);
    EXPECT_LT(planeOf(0, true), planeOf(1, true));
}

TEST_F(FloatingShape, ItsTextStandsOnItsPlane) {
    const Layer layer = composedText(u"一\r").layer;
    EXPECT_EQ(layer.texts.at(0).plane, layer.fills.at(0).plane);
}

TEST(Planes, PartsOfADrawingLieInOrderBelowThoseOfTheNext) {
    EXPECT_LT(planeOfDrawing(false, 1, 0), planeOfDrawing(false, 1, 1));
    EXPECT_LT(planeOfDrawing(false, 1, 100'000), planeOfDrawing(false, 2, 0));
    EXPECT_LT(planeOfDrawing(true, 0xFFFFFFFF, 100'000), 0);
    EXPECT_LT(planeOfDrawing(false, 0xFFFFFFFF, 100'000) + toHeader, planeOfDrawing(true, 0, 0));
}

TEST_F(FloatingShape, TurnedTextArtKeepsItsProportionsAndTakesItsAreaAsItIsTurned) {
    const TextArt art = composedArt(45).textArt.at(0);
    EXPECT_NEAR(art.angle, std::numbers::pi / 4, 1e-9);
    EXPECT_NEAR(art.width, 1000 / std::numbers::sqrt2, 0.01);
    EXPECT_NEAR(art.height, art.width, 0.01);
    EXPECT_NEAR(art.x + art.width / 2, 500, 0.01);
    EXPECT_NEAR(art.y + art.height / 2, 500, 0.01);
}

// A drawing at the upper left corner of its column and paragraph.
word::Drawing byItsAnchor(word::Drawing drawing) {
    constexpr std::uint8_t byColumnAndParagraph = 0x14;
    drawing.place[16] = byColumnAndParagraph;
    return drawing;
}

TEST_F(FloatingShape, OneThatIsAnchoredInAFrameStandsInIt) {
    document.tables.drawings = {byItsAnchor(drawingOf(1, look.count(), look.encode()))};
    word::Bytes frame = word::withSprm16({}, word::sprm::PDxaWidth, 800);
    frame = word::withSprm8(frame, word::sprm::PPc, (1U << 4U) | (2U << 6U)); // on the page
    frame = word::withSprm16(frame, word::sprm::PDxaAbs, 301);
    frame = word::withSprm16(frame, word::sprm::PDyaAbs, 501);
    main = {};
    type(u"框\r乙\b\r", frame);
    main.anchors = {{3, word::AnchorKind::drawing, 0}};
    type(u"甲\r");
    const Page page = pages().at(0);
    ASSERT_EQ(page.layer.fills.size(), 1U);
    EXPECT_DOUBLE_EQ(page.layer.fills[0].x, textAt(page, u"乙").x);
    EXPECT_DOUBLE_EQ(page.layer.fills[0].y, textAt(page, u"乙").baseline - 160);
}

TEST_F(FloatingShape, WhatFloatsInAHeadersFrameLiesBelowTheText) {
    document.tables.drawings = {byItsAnchor(drawingOf(1, look.count(), look.encode()))};
    word::Story header = story(u"框\b\r", word::withSprm16({}, word::sprm::PDxaWidth, 800));
    header.anchors = {{1, word::AnchorKind::drawing, 0}};
    append(header, u"\r");
    putHeader(word::HeaderKind::oddHeader, header);
    const Page page = pages().at(0);
    ASSERT_EQ(page.layer.fills.size(), 1U);
    EXPECT_LT(page.layer.fills[0].plane, toHeader / 2);
}

TEST_F(FloatingShape, AFrameInItsTextStandsInIt) {
    word::Story text = story(u"框\r", word::withSprm16({}, word::sprm::PDxaWidth, 300));
    append(text, u"文\r");
    const AnchoredFloat floating = composedText(text);
    ASSERT_EQ(floating.held.size(), 1U);
    EXPECT_EQ(floating.held[0].layer.texts.at(0).text, u"框");
    EXPECT_DOUBLE_EQ(floating.held[0].x, 144) << "of the text's room";
    EXPECT_DOUBLE_EQ(floating.held[0].y, 72);
}

TEST_F(FloatingShape, ItsTextMayRunDownwardsOrUpwards) {
    constexpr unsigned downwards = 1;
    constexpr unsigned upwards = 2;
    constexpr unsigned turnedDownwards = 3;
    look.set(0x0088, downwards);
    const auto down = composedText(u"一二三四五六\r").layer.texts;
    ASSERT_EQ(down.size(), 6U);
    EXPECT_EQ(down[0].text, u"一");
    EXPECT_DOUBLE_EQ(down[0].x, 1000 - 144 - 200);
    EXPECT_DOUBLE_EQ(down[0].baseline, 72 + 176);
    EXPECT_DOUBLE_EQ(down[3].baseline, 72 + 600 + 176) << "four have room in 1000 - 72 - 72";
    EXPECT_DOUBLE_EQ(down[4].x, 1000 - 144 - 400);
    look.set(0x0088, upwards);
    const auto up = composedText(u"一二三四五六\r").layer.texts;
    ASSERT_EQ(up.size(), 2U);
    EXPECT_DOUBLE_EQ(up[0].x, 144 + 160);
    EXPECT_DOUBLE_EQ(up[0].baseline, 1000 - 72);
    EXPECT_DOUBLE_EQ(up[1].x, 144 + 200 + 160);
    EXPECT_EQ(up[0].quarterTurns, -1);
    look.set(0x0088, turnedDownwards);
    const auto turned = composedText(u"一二三四五六\r").layer.texts;
    ASSERT_EQ(turned.size(), 2U);
    EXPECT_DOUBLE_EQ(turned[0].x, 1000 - 144 - 160);
    EXPECT_DOUBLE_EQ(turned[0].baseline, 72);
    EXPECT_EQ(turned[0].quarterTurns, 1);
}

} // namespace
} // namespace qvnd::layout
