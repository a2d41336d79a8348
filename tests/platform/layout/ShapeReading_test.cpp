#include "platform/word/layout/ShapeReading.h"

#include "platform/word/docfile/format/OfficeArt.h"
#include "platform/word/docfile/format/ShapeProperties.h"
#include "platform/word/docfile/pictures/Blip.h"
#include "platform/word/layout/ShapeOutlines.h"
#include "support/Images.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <numbers>
#include <optional>
#include <utility>
#include <vector>

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
    // What a group begins with: its own coordinates, and its place in the group around it.
    static Bytes groupRecord(std::initializer_list<std::uint32_t> coordinates,
                             const Bytes& anchor) {
        return record(
            art::container, 0, art::spContainer,
            joined({record(1, 0, art::fspgr, area(coordinates)), record(2, 0, art::fsp, Bytes(8)),
                    anchor.empty() ? Bytes{} : record(0, 0, childAnchor, anchor)}));
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

TEST_F(Shapes, TheyStandBehindTheTextWhereItsAnchorSaysSoAndNoTextGivesThemRoom) {
    EXPECT_FALSE(read(shape(1), 3U << 5U)->place.isBehindText);
    EXPECT_TRUE(read(shape(1), (3U << 5U) | 0x4000U)->place.isBehindText);
    EXPECT_FALSE(read(shape(1), (2U << 5U) | 0x4000U)->place.isBehindText);
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
    const Bytes group = groupRecord({1000, 1000, 1300, 1200}, {});
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
    const double straight = read(shape(20, {}, 0x80))->place.apartDown;
    look.set(0x0004, 30U << 16U);
    EXPECT_GT(read(shape(20, {}, 0x80))->place.apartDown, straight);
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

TEST_F(Shapes, TextArtHasItsFontBoldOrItalic) {
    const auto face = [&](unsigned kind, std::uint32_t flags) {
        word::LittleEndianWriter table;
        table.u16(0x80C5); // gtextFont, with data of its own
        table.u32(6);
        table.u16(0x00FF);
        table.u32(flags);
        table.text(u"黑体");
        table.u16(0);
        const auto found = read(record(
            art::container, 0, art::spContainer,
            joined({record(2, kind, art::fsp, Bytes(8)), record(3, 2, art::fopt, table.take())})));
        return found ? found->parts.at(0).artFace : FaceRequest{u"damaged", false, false, false};
    };
    EXPECT_EQ(face(136, 0), (FaceRequest{u"黑体", false, false, false}));
    EXPECT_EQ(face(175, on(0x20)), (FaceRequest{u"黑体", true, false, false}));
    EXPECT_EQ(face(136, on(0x10)), (FaceRequest{u"黑体", false, true, false}));
    EXPECT_EQ(face(176, on(0x20)), FaceRequest{}) << "no text art";
    EXPECT_EQ(face(135, on(0x20)), FaceRequest{});
}

TEST_F(Shapes, APictureFrameShowsThePictureThatItsPropertiesName) {
    tables.shapePictures = {
        std::make_shared<const Bytes>(word::encodeBlip(*word::recogniseImage(test::png(96, 48))))};
    look.setBlip(art::pib, 1);
    const Bytes frame = shape(75);
    const auto begin = static_cast<std::uint32_t>(8 + 16 + 8); // of the properties
    const auto end = static_cast<std::uint32_t>(frame.size());
    const auto shows = [&](const Bytes& records, std::uint32_t at, std::uint32_t picture) {
        const auto found = readShapes(
            {place(0), records, {{at, word::ShapeReference::Kind::picture, picture, 0}}}, tables);
        return found && found->parts.at(0).picture != nullptr;
    };
    EXPECT_TRUE(shows(frame, begin, 0));
    EXPECT_TRUE(shows(frame, end - 1, 0));
    EXPECT_FALSE(shows(frame, begin - 1, 0)) << "in front of the properties";
    EXPECT_FALSE(shows(frame, end, 0));
    EXPECT_FALSE(shows(frame, begin, 1)) << "not in the store";
    EXPECT_FALSE(shows(shape(1), begin, 0)) << "a rectangle";
    tables.shapePictures = {nullptr};
    EXPECT_FALSE(shows(frame, begin, 0));
}

TEST_F(Shapes, APictureFrameHasNeitherFillNorAnOutlineUnlessItSaysSo) {
    EXPECT_FALSE(read(shape(75))->parts.at(0).fill);
    EXPECT_FALSE(read(shape(75))->parts.at(0).hasLine);
    look.set(art::lineFlags, on(0x08));
    EXPECT_TRUE(read(shape(75))->parts.at(0).hasLine);
}

TEST_F(Shapes, AHiddenMemberOfAGroupIsNotSeenAndTheOthersAre) {
    const Bytes group = groupRecord({0, 0, 600, 400}, {});
    const Bytes seen = shape(1, record(0, 0, childAnchor, area({0, 0, 100, 100})));
    look.set(0x03BF, on(0x02));
    const Bytes hidden = shape(3, record(0, 0, childAnchor, area({0, 0, 100, 100})));
    const auto found =
        read(record(art::container, 0, art::spgrContainer, joined({group, hidden, seen})));
    ASSERT_TRUE(found);
    ASSERT_EQ(found->parts.size(), 1U);
    EXPECT_EQ(found->parts[0].kind, 1U);
}

TEST_F(Shapes, AMemberWithoutAPlaceInItsGroupIsLeftOut) {
    const Bytes group = groupRecord({0, 0, 600, 400}, {});
    const auto found =
        read(record(art::container, 0, art::spgrContainer, joined({group, shape(1)})));
    ASSERT_TRUE(found);
    EXPECT_TRUE(found->parts.empty());
}

TEST_F(Shapes, AGroupWithoutAnExtentLeavesItsMembersTheirSize) {
    const Bytes group = groupRecord({50, 60, 50, 60}, {});
    const Bytes member = shape(1, record(0, 0, childAnchor, area({60, 80, 160, 280})));
    const auto found = read(record(art::container, 0, art::spgrContainer, joined({group, member})));
    const PageArea& at = found->parts.at(0).area;
    EXPECT_DOUBLE_EQ(at.left, 10);
    EXPECT_DOUBLE_EQ(at.top, 20);
    EXPECT_DOUBLE_EQ(at.right, 110);
    EXPECT_DOUBLE_EQ(at.bottom, 220);
}

TEST_F(Shapes, GroupsStandInGroupsUpToADepthThatNobodyReaches) {
    const auto nested = [&](int groups) {
        Bytes content = shape(1, record(0, 0, childAnchor, area({0, 0, 300, 200})));
        for (int i = 0; i < groups; ++i) {
            const Bytes head = groupRecord({0, 0, 600, 400}, area({0, 0, 600, 400}));
            content = record(art::container, 0, art::spgrContainer, joined({head, content}));
        }
        return read(content)->parts;
    };
    const auto inTwo = nested(2);
    ASSERT_EQ(inTwo.size(), 1U);
    EXPECT_DOUBLE_EQ(inTwo[0].area.right, 300);
    EXPECT_DOUBLE_EQ(inTwo[0].area.bottom, 200);
    EXPECT_EQ(nested(61).size(), 1U);
    EXPECT_EQ(nested(62).size(), 0U);
}

TEST_F(Shapes, AnAreaThatNoPaperHoldsIsDamaged) {
    const auto isRead = [&](std::int32_t left, std::int32_t top, std::int32_t right,
                            std::int32_t bottom) {
        word::LittleEndianWriter spa;
        for (const std::int32_t side : {left, top, right, bottom}) {
            spa.u32(static_cast<std::uint32_t>(side));
        }
        spa.zeros(6);
        return readShapes({spa.take(), shape(1), {}}, tables).has_value();
    };
    EXPECT_TRUE(isRead(0, 0, 31680, 31680));
    EXPECT_TRUE(isRead(-31680, -31680, 0, 0));
    EXPECT_TRUE(isRead(7, 7, 7, 7)) << "a line may be without a width";
    EXPECT_FALSE(isRead(0, 0, 31681, 0));
    EXPECT_FALSE(isRead(0, 0, 0, 31681));
    EXPECT_FALSE(isRead(-31681, 0, 0, 0));
    EXPECT_FALSE(isRead(0, -31681, 0, 0));
    EXPECT_FALSE(isRead(1, 0, 0, 0));
    EXPECT_FALSE(isRead(0, 1, 0, 0));
}

TEST_F(Shapes, EachAlignmentAndOriginHasItsNumber) {
    using Align = FloatPlace::Align;
    using Spot = word::FrameSpot;
    const auto placed = [&](std::uint16_t property, std::uint32_t value) {
        look = {};
        look.set(property, value);
        return read(shape(1))->place;
    };
    const std::vector<Align> aligned{Align::none,  Align::start, Align::centre, Align::end,
                                     Align::start, Align::end,   Align::none};
    for (std::uint32_t value = 0; value < aligned.size(); ++value) {
        EXPECT_EQ(placed(0x038F, value).alignAcross, aligned[value]) << value;
        EXPECT_EQ(placed(0x0391, value).alignDown, aligned[value]) << value;
    }
    EXPECT_EQ(placed(0x0390, 0).across, Spot::Across::fromMargin);
    EXPECT_EQ(placed(0x0390, 1).across, Spot::Across::fromPage);
    EXPECT_EQ(placed(0x0390, 2).across, Spot::Across::fromColumn);
    EXPECT_EQ(placed(0x0392, 0).down, Spot::Down::fromMargin);
    EXPECT_EQ(placed(0x0392, 1).down, Spot::Down::fromPage);
    EXPECT_EQ(placed(0x0392, 2).down, Spot::Down::fromParagraph);
    look = {};
    EXPECT_EQ(read(shape(1), 0)->place.across, Spot::Across::fromMargin);
    EXPECT_EQ(read(shape(1), 1U << 1U)->place.across, Spot::Across::fromPage);
    EXPECT_EQ(read(shape(1), 0)->place.down, Spot::Down::fromMargin);
    EXPECT_EQ(read(shape(1), 2U << 3U)->place.down, Spot::Down::fromParagraph);
    EXPECT_DOUBLE_EQ(read(shape(1))->place.apartAcross, 180);
    EXPECT_DOUBLE_EQ(read(shape(1))->place.apartDown, 0);
}

TEST_F(Shapes, ColoursOfSchemesAreThoseOfPlainShapes) {
    look.set(0x0181, 0x08000003);
    look.set(0x01C0, 0x01000000);
    EXPECT_EQ(read(shape(1))->parts.at(0).fill, 0xFFFFFFU);
    EXPECT_EQ(read(shape(1))->parts.at(0).lineColour, std::nullopt);
    look.set(0x01C0, 0x00FFFFFF);
    EXPECT_EQ(read(shape(1))->parts.at(0).lineColour, 0xFFFFFFU);
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

TEST(ShapeOutlines, ASegmentThatTakesPointsInAWayOfItsOwnEndsThePath) {
    const auto stepsBehind = [](int segment) {
        ShapeGeometry geometry;
        geometry.vertices = arrayOf(0xFFF0, 2, {0, 0, 10, 0});
        geometry.segments = arrayOf(2, 3, {0x4000, segment, 0x0001});
        return ownOutline(geometry, {0, 0, 10, 10}, {}).steps.size();
    };
    EXPECT_EQ(stepsBehind(0xA900), 1U);
    EXPECT_EQ(stepsBehind(0xAA00), 2U) << "how a point is edited";
    EXPECT_EQ(stepsBehind(0x6000), 3U) << "the path is closed";
    EXPECT_EQ(stepsBehind(0x8000), 1U) << "the path ends";
    EXPECT_EQ(stepsBehind(0xC000), 1U);
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

TEST_F(Shapes, DamagedOnesAreLeftOut) {
    Bytes records = shape(1);
    records.resize(records.size() - 1);
    EXPECT_FALSE(read(records));
    EXPECT_FALSE(readShapes({Bytes(3), shape(1), {}}, tables));
    EXPECT_FALSE(read({}));
}

} // namespace
} // namespace qvnd::layout
