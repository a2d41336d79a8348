#include "platform/word/layout/ShapeReading.h"

#include "platform/word/docfile/format/OfficeArt.h"
#include "platform/word/docfile/format/ShapeProperties.h"

#include <gtest/gtest.h>

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
    Bytes shape(unsigned kind, const Bytes& more = {}) const {
        const Bytes properties = look.encode();
        return record(art::container, 0, art::spContainer,
                      joined({record(2, kind, art::fsp, Bytes(8)),
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

TEST_F(Shapes, DamagedOnesAreLeftOut) {
    Bytes records = shape(1);
    records.resize(records.size() - 1);
    EXPECT_FALSE(read(records));
    EXPECT_FALSE(readShapes({Bytes(3), shape(1), {}}, tables));
    EXPECT_FALSE(read({}));
}

} // namespace
} // namespace qvnd::layout
