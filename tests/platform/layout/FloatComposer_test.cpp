#include "platform/word/layout/FloatComposer.h"

#include "platform/layout/PagedDocument.h"
#include "platform/word/docfile/format/OfficeArt.h"
#include "platform/word/docfile/format/ShapeProperties.h"

#include <numbers>

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
        word::LittleEndianWriter place;
        for (const std::uint32_t side : {0U, 0U, 1000U, 1000U}) {
            place.u32(side);
        }
        place.zeros(6);
        word::Bytes content = shapeRecord(2, kind, art::fsp, word::Bytes(8));
        const word::Bytes properties = shapeRecord(3, count, art::fopt, table);
        content.insert(content.end(), properties.begin(), properties.end());
        word::Drawing drawing;
        drawing.place = place.take();
        drawing.records = shapeRecord(art::container, 0, art::spContainer, content);
        document.tables.drawings = {drawing};
        StoryReader::Shared shared(sourceOfAll(), fonts);
        const auto floating = FloatComposer(shared).drawing(0, {}, {});
        EXPECT_TRUE(floating);
        return floating ? floating->layer : Layer();
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

TEST_F(FloatingShape, UprightTextArtFillsItsArea) {
    const Layer layer = composedArt(0);
    ASSERT_EQ(layer.textArt.size(), 1U);
    EXPECT_TRUE(layer.fills.empty());
    EXPECT_DOUBLE_EQ(layer.textArt[0].width, 1000);
    EXPECT_DOUBLE_EQ(layer.textArt[0].height, 1000);
    EXPECT_EQ(layer.textArt[0].texts.at(0).text, u"AB");
}

TEST_F(FloatingShape, TurnedTextArtKeepsItsProportionsAndTakesItsAreaAsItIsTurned) {
    const TextArt art = composedArt(45).textArt.at(0);
    EXPECT_NEAR(art.angle, std::numbers::pi / 4, 1e-9);
    EXPECT_NEAR(art.width, 1000 / std::numbers::sqrt2, 0.01);
    EXPECT_NEAR(art.height, art.width, 0.01);
    EXPECT_NEAR(art.x + art.width / 2, 500, 0.01);
    EXPECT_NEAR(art.y + art.height / 2, 500, 0.01);
}

} // namespace
} // namespace qvnd::layout
