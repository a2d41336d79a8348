#include "platform/word/layout/ShapeReading.h"

#include "platform/word/docfile/format/OfficeArt.h"
#include "platform/word/docfile/format/ShapeProperties.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace qvnd::layout {
namespace {

namespace art = word::art;
using word::Bytes;

constexpr std::uint16_t childAnchor = 0xF00F;
constexpr std::uint32_t on(std::uint32_t flag) { return (flag << 16U) | flag; }

Bytes record(unsigned version, unsigned instance, std::uint16_t type, const Bytes& content) {
    word::LittleEndianWriter writer;
    art::writeRecord(writer, version, instance, type, content);
    return writer.take();
}

Bytes joined(std::initializer_list<Bytes> parts) {
    Bytes all;
    for (const Bytes& part : parts) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

Bytes area(std::initializer_list<std::uint32_t> numbers) {
    word::LittleEndianWriter writer;
    for (const std::uint32_t number : numbers) {
        writer.u32(number);
    }
    return writer.take();
}

// A shape that is placed 100 right and 200 down, 600 wide and 400 high.
class Shapes : public testing::Test {
protected:
    Bytes shape(unsigned kind, const Bytes& more = {}, std::uint32_t flags = 0) const {
        const Bytes properties = look.encode();
        return record(art::container, 0, art::spContainer,
                      joined({record(2, kind, art::fsp, area({1, flags})),
                              record(3, look.count(), art::fopt, properties), more}));
    }
    Bytes place(unsigned flags) const {
        word::LittleEndianWriter writer;
        for (const std::uint32_t number : {100U, 200U, 700U, 600U}) {
            writer.u32(number);
        }
        writer.u16(flags);
        writer.u32(0);
        return writer.take();
    }
    std::optional<ShapeReading> read(const Bytes& records, unsigned flags = 0) const {
        return readShapes({place(flags), records, {}}, tables);
    }

    art::ShapeProperties look;
    word::DocumentTables tables;
};

TEST_F(Shapes, TheirPlaceAndWrapAreThoseOfTheirAnchor) {
    const auto found = read(shape(1), (2U << 1U) | (1U << 3U) | (1U << 5U));
    ASSERT_TRUE(found);
    EXPECT_EQ(found->place.across, word::FrameSpot::Across::fromColumn);
    EXPECT_EQ(found->place.down, word::FrameSpot::Down::fromPage);
    EXPECT_EQ(found->place.wrap, FloatPlace::Wrap::below);
    EXPECT_DOUBLE_EQ(found->place.left, 100);
    EXPECT_DOUBLE_EQ(found->place.height, 400);
    EXPECT_EQ(read(shape(1), 3U << 5U)->place.wrap, FloatPlace::Wrap::none);
    EXPECT_EQ(read(shape(1), 2U << 5U)->place.wrap, FloatPlace::Wrap::beside);
    EXPECT_EQ(read(shape(1), 2U << 5U)->place.side, FloatPlace::Side::both);
    EXPECT_EQ(read(shape(1), (2U << 5U) | (1U << 9U))->place.side, FloatPlace::Side::left);
    EXPECT_EQ(read(shape(1), (2U << 5U) | (2U << 9U))->place.side, FloatPlace::Side::right);
    EXPECT_EQ(read(shape(1), (2U << 5U) | (3U << 9U))->place.side, FloatPlace::Side::wider);
}

TEST_F(Shapes, TheirPropertiesSayHowTheyAreAlignedAndKeptClear) {
    look.set(0x038F, 2);
    look.set(0x0390, 1);
    look.set(0x0384, 63500); // 5 points
    const auto found = read(shape(1));
    EXPECT_EQ(found->place.alignAcross, FloatPlace::Align::centre);
    EXPECT_EQ(found->place.across, word::FrameSpot::Across::fromPage);
    EXPECT_DOUBLE_EQ(found->place.apartAcross, 100);
}

TEST_F(Shapes, FillAndOutlineAreSeenUnlessTheyAreTurnedOff) {
    look.set(0x0181, 0x00332211);
    const auto filled = read(shape(1));
    EXPECT_EQ(filled->parts.at(0).fill, 0x112233U);
    EXPECT_TRUE(filled->parts.at(0).hasLine);
    look.set(art::fillFlags, 0x10U << 16U);
    look.set(art::lineFlags, 0x08U << 16U);
    const auto plain = read(shape(1));
    EXPECT_FALSE(plain->parts.at(0).fill);
    EXPECT_FALSE(plain->parts.at(0).hasLine);
}

TEST_F(Shapes, AHiddenOneIsNotSeen) {
    look.set(0x03BF, on(0x02));
    EXPECT_FALSE(read(shape(1)));
}

TEST_F(Shapes, MembersOfAGroupStandInItsOwnCoordinates) {
    const Bytes group = record(art::container, 0, art::spContainer,
                               joined({record(1, 0, art::fspgr, area({1000, 1000, 1300, 1200})),
                                       record(2, 0, art::fsp, Bytes(8))}));
    const Bytes member = shape(1, record(0, 0, childAnchor, area({1150, 1000, 1300, 1100})));
    const auto found = read(record(art::container, 0, art::spgrContainer, joined({group, member})));
    ASSERT_EQ(found->parts.size(), 1U);
    EXPECT_DOUBLE_EQ(found->parts[0].area.left, 300);
    EXPECT_DOUBLE_EQ(found->parts[0].area.right, 600);
    EXPECT_DOUBLE_EQ(found->parts[0].area.bottom, 200);
}

TEST_F(Shapes, TheirTextIsTheOneThatTheyName) {
    const Bytes records = shape(202, record(0, 0, art::clientTextbox, Bytes(4)));
    const auto at = static_cast<std::uint32_t>(records.size() - 4);
    const auto found =
        readShapes({place(0), records, {{at, word::ShapeReference::Kind::text, 7, 0}}}, tables);
    EXPECT_EQ(found->parts.at(0).text, 7U);
}

TEST_F(Shapes, TheyAreFlippedAndTurnedAsTheirRecordSays) {
    look.set(0x0004, 90U << 16U);
    const auto found = read(shape(20, {}, 0x80));
    EXPECT_FALSE(found->parts.at(0).turn.flippedAcross);
    EXPECT_TRUE(found->parts.at(0).turn.flippedDown);
    EXPECT_NEAR(found->parts.at(0).turn.angle, std::numbers::pi / 2, 1e-9);
}

TEST_F(Shapes, LinesAreNeverFilledAndHaveTheirDashesAndArrows) {
    look.set(0x0181, 0x00332211);
    look.set(0x01CE, 6);
    look.set(0x01D1, 1);
    const auto found = read(shape(20));
    EXPECT_FALSE(found->parts.at(0).fill);
    EXPECT_TRUE(found->parts.at(0).isDashed);
    EXPECT_TRUE(found->parts.at(0).endsWithArrow);
    EXPECT_FALSE(found->parts.at(0).startsWithArrow);
}

// A property table with a text behind it, as readers of the format have it.
Bytes artTable(const std::u16string& text) {
    word::LittleEndianWriter writer;
    writer.u16(0x80C0); // gtextUNICODE, with data of its own
    writer.u32(static_cast<std::uint32_t>(text.size() * 2 + 2));
    writer.u16(0x0182); // half of the fill is seen
    writer.u32(0x8000);
    writer.text(text);
    writer.u16(0);
    return writer.take();
}

TEST_F(Shapes, TextArtHasItsTextAndOpacity) {
    const auto found = read(record(art::container, 0, art::spContainer,
                                   joined({record(2, 136, art::fsp, Bytes(8)),
                                           record(3, 2, art::fopt, artTable(u"投标文件"))})));
    ASSERT_TRUE(found);
    EXPECT_EQ(found->parts.at(0).artText, u"投标文件");
    EXPECT_DOUBLE_EQ(found->parts.at(0).opacity, 0.5);
}

// Numbers of two bytes behind the head of an array.
Bytes arrayOf(unsigned elementSize, std::size_t count, std::initializer_list<int> numbers) {
    word::LittleEndianWriter writer;
    writer.u16(static_cast<unsigned>(count));
    writer.u16(static_cast<unsigned>(count));
    writer.u16(elementSize);
    for (const int number : numbers) {
        writer.u16(static_cast<unsigned>(number) & 0xFFFFU);
    }
    return writer.take();
}

TEST_F(Shapes, PointsOfTheirOwnAreFoundThoughTheSizeOfTheirArrayLeavesOutItsHead) {
    const Bytes vertices = arrayOf(0xFFF0, 2, {0, 0, 21600, 21600});
    const Bytes segments = arrayOf(2, 3, {0x4000, 0x0001, 0x8000});
    word::LittleEndianWriter table;
    table.u16(0x8145);
    table.u32(static_cast<std::uint32_t>(vertices.size() - 6));
    table.u16(0x8146);
    table.u32(static_cast<std::uint32_t>(segments.size()));
    table.bytes(vertices);
    table.bytes(segments);
    const auto found = read(
        record(art::container, 0, art::spContainer,
               joined({record(2, 0, art::fsp, Bytes(8)), record(3, 2, art::fopt, table.take())})));
    ASSERT_TRUE(found);
    const Path& path = found->parts.at(0).outline;
    EXPECT_EQ(path.steps, (std::vector<Path::Step>{Path::Step::move, Path::Step::line}));
    EXPECT_EQ(path.points.back(), (PathPoint{600, 400}));
}

TEST(ShapeOutlines, ARectangleHasNoneUnlessItIsTurned) {
    const PageArea square{0, 0, 100, 100};
    EXPECT_TRUE(shapeOutline(1, square, {}).isEmpty());
    const Path turned = shapeOutline(1, square, {false, false, std::numbers::pi / 4});
    ASSERT_FALSE(turned.isEmpty());
    EXPECT_NEAR(turned.points[0].x, 50, 0.01);
    EXPECT_NEAR(turned.points[0].y, 50 - 50 * std::numbers::sqrt2, 0.01);
}

TEST(ShapeOutlines, TheAreaOfAShapeOnItsSideIsTheOneThatItTakesThere) {
    const PageArea wide{0, 0, 200, 100};
    const Path path = shapeOutline(110, wide, {false, false, std::numbers::pi / 2});
    ASSERT_EQ(path.points.size(), 4U);
    EXPECT_NEAR(path.points[0].x, 200, 0.01); // the upper corner points to the right
    EXPECT_NEAR(path.points[0].y, 50, 0.01);
    EXPECT_NEAR(path.points[1].y, 100, 0.01);
    const Path upright = shapeOutline(110, wide, {false, false, std::numbers::pi * 3 / 4});
    EXPECT_NEAR(std::hypot(upright.points[0].x - 100, upright.points[0].y - 50), 50, 0.01);
}

TEST(ShapeOutlines, AFlippedLineRunsAlongTheOtherDiagonal) {
    const Path line = shapeOutline(20, {10, 20, 110, 220}, {false, true, 0});
    ASSERT_EQ(line.points.size(), 2U);
    EXPECT_EQ(line.points[0], (PathPoint{10, 220}));
    EXPECT_EQ(line.points[1], (PathPoint{110, 20}));
    EXPECT_NE(line.steps.back(), Path::Step::close);
}

TEST(ShapeOutlines, ADecisionIsADiamondInItsArea) {
    const Path path = shapeOutline(110, {0, 0, 200, 100}, {});
    EXPECT_EQ(path.points, (std::vector<PathPoint>{{100, 0}, {200, 50}, {100, 100}, {0, 50}}));
    EXPECT_EQ(path.steps.back(), Path::Step::close);
}

TEST(ShapeOutlines, RoundedCornersAreCirclesWhateverTheArea) {
    const Path path = shapeOutline(2, {0, 0, 600, 300}, {});
    EXPECT_NEAR(path.points[0].x, 50, 0.01);     // a sixth of the shorter side
    EXPECT_NEAR(path.points[4].y - 0, 50, 0.01); // where the first corner ends
}

TEST(ShapeOutlines, EveryKindStaysWithinItsAreaAndHasAsManyPointsAsItsStepsNeed) {
    for (unsigned kind = 0; kind < 203; ++kind) {
        const Path path = shapeOutline(kind, {100, 200, 300, 500}, {});
        std::size_t needed = 0;
        for (const Path::Step step : path.steps) {
            needed += step == Path::Step::curve ? 3 : step == Path::Step::close ? 0 : 1;
        }
        EXPECT_EQ(path.points.size(), needed) << kind;
        for (const PathPoint& point : path.points) {
            EXPECT_GE(point.x, 99.9) << kind;
            EXPECT_LE(point.x, 300.1) << kind;
            EXPECT_GE(point.y, 199.9) << kind;
            EXPECT_LE(point.y, 560.1) << kind; // the control points of a wave lie below it
        }
    }
}

TEST(ShapeOutlines, PointsOfAShapesOwnAreMappedToItsArea) {
    ShapeGeometry geometry;
    geometry.room = {0, 0, 100, 50};
    geometry.vertices = arrayOf(0xFFF0, 3, {0, 0, 100, 0, 50, 50});
    const Path path = ownOutline(geometry, {1000, 1000, 1200, 1100}, {});
    EXPECT_EQ(path.points, (std::vector<PathPoint>{{1000, 1000}, {1200, 1000}, {1100, 1100}}));
    EXPECT_EQ(path.steps.back(), Path::Step::close);
}

TEST(ShapeOutlines, SegmentsTellLinesAndCurvesBetweenThePoints) {
    ShapeGeometry geometry;
    geometry.room = {0, 0, 10, 10};
    geometry.vertices = arrayOf(0xFFF0, 5, {0, 0, 10, 0, 10, 5, 10, 10, 0, 10});
    // To the first point, how it is edited, a line, a curve, and the end.
    geometry.segments = arrayOf(2, 5, {0x4000, 0xAC00, 0x0001, 0x2001, 0x8000});
    const Path path = ownOutline(geometry, {0, 0, 10, 10}, {});
    EXPECT_EQ(path.steps,
              (std::vector<Path::Step>{Path::Step::move, Path::Step::line, Path::Step::curve}));
    EXPECT_EQ(path.points.back(), (PathPoint{0, 10}));
}

TEST(ShapeOutlines, SegmentsWithoutTheirPointsAddNothing) {
    ShapeGeometry geometry;
    geometry.vertices = arrayOf(0xFFF0, 2, {0, 0, 10, 0});
    geometry.segments = arrayOf(2, 3, {0x4000, 0x0005, 0x2001});
    EXPECT_EQ(ownOutline(geometry, {0, 0, 10, 10}, {}).points.size(), 2U);
    geometry.vertices.pop_back();
    EXPECT_EQ(ownOutline(geometry, {0, 0, 10, 10}, {}).points.size(), 1U);
    geometry.vertices.resize(5);
    EXPECT_TRUE(ownOutline(geometry, {0, 0, 10, 10}, {}).isEmpty());
}

TEST(ShapeOutlines, AnArrowsHeadStandsAtItsTip) {
    const Path head = arrowHead({0, 0}, {1000, 0}, 20);
    ASSERT_EQ(head.points.size(), 3U);
    EXPECT_EQ(head.points[0], (PathPoint{1000, 0}));
    EXPECT_EQ(head.points[1], (PathPoint{920, 40}));
    EXPECT_TRUE(arrowHead({5, 5}, {5, 5}, 20).isEmpty());
}

TEST_F(Shapes, DamagedOnesAreLeftOut) {
    Bytes records = shape(1);
    records.resize(records.size() - 1);
    EXPECT_FALSE(read(records));
    EXPECT_FALSE(readShapes({Bytes(3), shape(1), {}}, tables));
    EXPECT_FALSE(read({}));
}

} // namespace
} // namespace qvnd::layout
