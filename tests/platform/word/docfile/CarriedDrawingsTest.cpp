#include "platform/word/docfile/pictures/CarriedDrawings.h"

#include "platform/word/docfile/DrawingBytes.h"
#include "platform/word/docfile/pictures/Blip.h"
#include "support/Images.h"

#include <chrono>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace qvnd::word {
namespace {

using namespace drawings;
using namespace test;
using Kind = ShapeReference::Kind;
using qvnd::test::joined;
using testing::Contains;
using testing::Field;

// One file's drawings, taken over by way of their anchors.
class CarriedDrawingsTest : public testing::Test {
protected:
    std::vector<Bytes> shapes;  // of the main text
    std::vector<Bytes> headers; // of the headers
    std::vector<Bytes> pictures;
    Bytes defaults;
    EmbeddedObjects objects;
    DocumentTables tables;
    std::uint32_t namedByRow = 0; // the shape that the table of texts names in its one row

    ShapeBytes shape(std::uint32_t id) const {
        ShapeBytes result;
        result.id = id;
        return result;
    }

    void open() {
        content_ = sharedBytes(pictures);
        if (!defaults.empty()) {
            content_.insert(content_.end(), defaults.begin(), defaults.end());
            const auto size = static_cast<std::uint32_t>(content_.size() - art::headerSize);
            const Bytes length = number32(size);
            std::copy(length.begin(), length.end(), content_.begin() + 4);
        }
        content_ = joined({content_, drawingBytes(0, shapes), drawingBytes(1, headers)});
        drawings_.emplace(content_, ByteView{});
        carried_.emplace(*drawings_, objects, tables);
    }

    std::optional<std::uint32_t> add(std::uint32_t id, DrawingOf part = DrawingOf::main) {
        if (!carried_) {
            open();
        }
        Bytes spa(26, 0x11);
        const Bytes number = number32(id);
        std::copy(number.begin(), number.end(), spa.begin());
        return carried_->add(
            part, spa,
            {[](std::uint16_t row) {
                 return row == 1 ? std::optional<std::uint32_t>(40) : std::nullopt;
             },
             [this](std::uint32_t shape) { return std::uint16_t(shape == namedByRow ? 1 : 0); }});
    }
    // What the file of these shapes fills its pages with.
    std::optional<Drawing> background(const Bytes& record) {
        ShapeBytes first = shape(9);
        first.kind = 0;
        first.flags = art::shapeIsGroup | art::shapeIsPatriarch;
        content_ = joined({sharedBytes(pictures), Bytes{0},
                           artContainer(art::dgContainer, {groupBytes({first.bytes()}), record})});
        drawings_.emplace(content_, ByteView{});
        carried_.emplace(*drawings_, objects, tables);
        return carried_->background();
    }
    bool damagedBackground() const { return carried_->damagedBackground(); }
    int damagedMembers() const { return carried_->damagedMembers(); }

    // Cut off within its last record, which its length admits.
    static Bytes damaged(const ShapeBytes& shape) {
        Bytes cut = shape.bytes();
        cut.resize(cut.size() - 3);
        const Bytes length = number32(static_cast<std::uint32_t>(cut.size() - art::headerSize));
        std::copy(length.begin(), length.end(), cut.begin() + 4);
        return cut;
    }

    const Drawing& drawing(std::uint32_t id) {
        const auto index = add(id);
        EXPECT_TRUE(index.has_value());
        return tables.drawings.at(index.value_or(0));
    }

    static std::vector<std::uint32_t> named(const Drawing& drawing, Kind kind) {
        std::vector<std::uint32_t> result;
        for (const ShapeReference& reference : drawing.references) {
            if (reference.kind == kind) {
                result.push_back(reference.index);
            }
        }
        return result;
    }

    std::optional<CarriedDrawings> carried_;

private:
    Bytes content_;
    std::optional<Drawings> drawings_;
};

using Numbers = std::vector<std::uint32_t>;

// Each record's type was once searched among all those before it.
TEST_F(CarriedDrawingsTest, AShapeOfThousandsOfKindsOfRecordsIsReadQuickly) {
    constexpr std::size_t spContainerHead = 8;
    LittleEndianWriter records;
    records.bytes(shape(0x402).bytes());
    for (unsigned type = 0; type < 0xF000; ++type) {
        art::writeRecord(records, 0, 0, static_cast<std::uint16_t>(type), {});
    }
    records.patchU32(4, static_cast<std::uint32_t>(records.position() - spContainerHead));
    shapes = {records.take()};
    open();
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(drawing(0x402).records.size(), shapes[0].size());
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
}

TEST_F(CarriedDrawingsTest, AShapeKeepsItsPlaceAndNamesItself) {
    shapes = {shape(0x402).bytes()};
    const Drawing& one = drawing(0x402);
    EXPECT_EQ(one.place, Bytes(22, 0x11));
    EXPECT_EQ(named(one, Kind::shape), Numbers{0});
    EXPECT_EQ(named(one, Kind::anchor), Numbers{0});
    EXPECT_EQ(tables.shapes, 1U);
    EXPECT_TRUE(art::recordsAreWhole(one.records, art::spContainer));
}

TEST_F(CarriedDrawingsTest, AShapeKeepsItsOrderWhereverItsAnchorStands) {
    shapes = {shape(0x402).bytes(), shape(0x403).bytes(), shape(0x404).bytes()};
    const std::uint32_t highest = drawing(0x404).order;
    const std::uint32_t lowest = drawing(0x402).order;
    const std::uint32_t middle = drawing(0x403).order;
    EXPECT_LT(lowest, middle);
    EXPECT_LT(middle, highest);
    EXPECT_EQ(tables.nextOrder, highest + 1);
}

TEST_F(CarriedDrawingsTest, WhatIsNamedIsZeroInTheRecords) {
    shapes = {shape(0x402).bytes()};
    const Drawing& one = drawing(0x402);
    for (const ShapeReference& reference : one.references) {
        LittleEndianReader reader(one.records, "records");
        reader.seek(reference.at);
        EXPECT_EQ(reader.u32(), 0U);
    }
}

TEST_F(CarriedDrawingsTest, AGroupComesWithAllItsShapes) {
    ShapeBytes inner = shape(0x404);
    inner.anchor.reset();
    ShapeBytes deeper = shape(0x406);
    deeper.anchor.reset();
    ShapeBytes deeperHead = shape(0x405);
    deeperHead.anchor.reset();
    shapes = {groupBytes(
        {shape(0x403).bytes(), inner.bytes(), groupBytes({deeperHead.bytes(), deeper.bytes()})})};
    const Drawing& group = drawing(0x403);
    EXPECT_EQ(named(group, Kind::shape), (Numbers{0, 1, 2, 3}));
    EXPECT_TRUE(art::recordsAreWhole(group.records, art::spgrContainer));
}

TEST_F(CarriedDrawingsTest, PicturesComeOnceAndBringTheirBytes) {
    pictures = {encodeBlip(*recogniseImage(qvnd::test::png(4, 2)))};
    ShapeBytes first = shape(0x402);
    first.properties.setBlip(art::pib, 1);
    ShapeBytes second = shape(0x403);
    second.properties.setBlip(art::pib, 1);
    shapes = {first.bytes(), second.bytes()};
    EXPECT_EQ(named(drawing(0x402), Kind::picture), Numbers{0});
    EXPECT_EQ(named(drawing(0x403), Kind::picture), Numbers{0});
    ASSERT_EQ(tables.shapePictures.size(), 1U);
    EXPECT_EQ(*tables.shapePictures[0], pictures[0]);
}

TEST_F(CarriedDrawingsTest, APictureThatIsMissingIsNoneAndTheShapeStays) {
    ShapeBytes one = shape(0x402);
    one.properties.setBlip(art::pib, 7);
    shapes = {one.bytes()};
    EXPECT_EQ(named(drawing(0x402), Kind::picture), Numbers{});
}

TEST_F(CarriedDrawingsTest, TextsAreNamedWithTheirPlaceInTheChain) {
    ShapeBytes one = shape(0x402);
    one.text = 0x10002;
    ShapeBytes other = shape(0x403);
    other.text = 0x90000;
    shapes = {one.bytes(), other.bytes()};
    const Drawing& first = drawing(0x402);
    EXPECT_EQ(named(first, Kind::text), (Numbers{40, 40})); // property and text box record
    EXPECT_THAT(first.references, Contains(Field(&ShapeReference::link, 2)));
    EXPECT_EQ(named(drawing(0x403), Kind::text), Numbers{});
}

TEST_F(CarriedDrawingsTest, AChainNamesItsNextShapeBeforeThatComes) {
    ShapeBytes one = shape(0x402);
    one.properties.set(art::nextShape, 0x403);
    shapes = {one.bytes(), shape(0x403).bytes()};
    EXPECT_EQ(named(drawing(0x402), Kind::otherShape), Numbers{1});
    EXPECT_EQ(named(drawing(0x403), Kind::shape), Numbers{1});
    EXPECT_EQ(tables.shapes, 2U);
}

TEST_F(CarriedDrawingsTest, OnlyNumbersOfObjectsAreTakenForThem) {
    objects.emplace(77, std::make_shared<EmbeddedObject>());
    ShapeBytes one = shape(0x402);
    one.properties.set(art::pictureId, 77);
    ShapeBytes other = shape(0x403);
    other.properties.set(art::pictureId, 1);
    shapes = {one.bytes(), other.bytes()};
    EXPECT_EQ(named(drawing(0x402), Kind::object), Numbers{0});
    EXPECT_EQ(named(drawing(0x403), Kind::object), Numbers{});
    EXPECT_EQ(tables.objects.size(), 1U);
}

TEST_F(CarriedDrawingsTest, WhatAllShapesHaveComesAlongWhereAShapeSaysNothing) {
    art::ShapeProperties all;
    all.set(0x0181, 0x123456);
    all.set(0x01C0, 0x654321);
    all.set(art::fillFlags, 0x00110011);
    defaults = artRecord(3, all.count(), art::fopt, all.encode());
    ShapeBytes one = shape(0x402);
    one.properties.set(0x0181, 0xFF);
    one.properties.set(art::fillFlags, 0x00100000); // not filled
    shapes = {one.bytes()};
    const Bytes records = drawing(0x402).records;
    LittleEndianReader reader(records, "records");
    art::readHeader(reader);
    reader.skip(art::headerSize + 8); // FSP
    const art::RecordHeader header = art::readHeader(reader);
    const art::ShapeProperties now(reader.view(header.length), header.instance);
    EXPECT_EQ(now.value(0x0181), 0xFFU);
    EXPECT_EQ(now.value(0x01C0), 0x654321U);
    EXPECT_EQ(now.value(art::fillFlags), 0x00110001U);
}

TEST_F(CarriedDrawingsTest, AShapeOfTheHeadersIsNoneOfTheMainText) {
    headers = {shape(0x802).bytes()};
    EXPECT_FALSE(add(0x802));
    EXPECT_TRUE(add(0x802, DrawingOf::headers));
}

TEST_F(CarriedDrawingsTest, OneShapeHasOneAnchor) {
    shapes = {shape(0x402).bytes()};
    EXPECT_TRUE(add(0x402));
    EXPECT_FALSE(add(0x402));
    EXPECT_FALSE(add(0x499));
}

TEST_F(CarriedDrawingsTest, TwoShapesOfOneIdentifierBecomeTwo) {
    ShapeBytes inner = shape(0x402);
    inner.anchor.reset();
    shapes = {groupBytes({shape(0x402).bytes(), inner.bytes(), inner.bytes()})};
    EXPECT_EQ(named(drawing(0x402), Kind::shape), (Numbers{0, 1, 2}));
}

TEST_F(CarriedDrawingsTest, DamagedShapesWithoutTextAndPictureAreNone) {
    ShapeBytes deleted = shape(0x403);
    deleted.flags |= art::shapeIsDeleted;
    shapes = {damaged(shape(0x402)), deleted.bytes()};
    EXPECT_FALSE(add(0x402));
    EXPECT_FALSE(add(0x403));
    EXPECT_TRUE(tables.drawings.empty());
}

TEST_F(CarriedDrawingsTest, ADamagedShapeLeavesItsTextInAPlainBox) {
    ShapeBytes one = shape(0x402);
    one.text = 0x10000;
    shapes = {damaged(one)};
    const Drawing& box = drawing(0x402);
    EXPECT_TRUE(art::recordsAreWhole(box.records, art::spContainer));
    EXPECT_EQ(box.place, Bytes(22, 0x11));
    EXPECT_EQ(named(box, Kind::text), (Numbers{40, 40}));
}

TEST_F(CarriedDrawingsTest, ATextWhoseShapeDoesNotExistGetsAPlainBox) {
    namedByRow = 0x402;
    EXPECT_EQ(named(drawing(0x402), Kind::text), (Numbers{40, 40}));
    EXPECT_FALSE(add(0x402)); // not a second time
}

TEST_F(CarriedDrawingsTest, ADamagedShapeLeavesItsPictureAsItWasCropped) {
    pictures = {encodeBlip(*recogniseImage(qvnd::test::png(4, 2)))};
    ShapeBytes one = shape(0x402);
    one.kind = 75;
    one.properties.setBlip(art::pib, 1);
    one.properties.set(art::cropFromLeft, 0x8000);
    shapes = {damaged(one)};
    const Drawing& frame = drawing(0x402);
    EXPECT_EQ(named(frame, Kind::picture), Numbers{0});
    LittleEndianReader reader(frame.records, "records");
    art::readHeader(reader);
    EXPECT_EQ(art::readHeader(reader).instance, 75U);
    reader.skip(8); // FSP
    const art::RecordHeader header = art::readHeader(reader);
    const art::ShapeProperties now(reader.view(header.length), header.instance);
    EXPECT_EQ(now.value(art::cropFromLeft), 0x8000U);
}

TEST_F(CarriedDrawingsTest, ASecondAnchorOfAPictureShowsItAgain) {
    pictures = {encodeBlip(*recogniseImage(qvnd::test::png(4, 2)))};
    ShapeBytes one = shape(0x402);
    one.kind = 75;
    one.properties.setBlip(art::pib, 1);
    shapes = {one.bytes()};
    EXPECT_EQ(named(drawing(0x402), Kind::shape), Numbers{0});
    const Drawing& again = drawing(0x402);
    EXPECT_EQ(named(again, Kind::shape), Numbers{1});
    EXPECT_EQ(named(again, Kind::picture), Numbers{0});
}

TEST_F(CarriedDrawingsTest, AShapeShowsTheTextThatOnlyTheTableOfTextsTiesToIt) {
    namedByRow = 0x402;
    shapes = {shape(0x402).bytes(), shape(0x403).bytes()};
    const Drawing& one = drawing(0x402);
    EXPECT_TRUE(art::recordsAreWhole(one.records, art::spContainer));
    EXPECT_EQ(named(one, Kind::text), Numbers{40});
    EXPECT_EQ(named(drawing(0x403), Kind::text), Numbers{});
}

TEST_F(CarriedDrawingsTest, ATextStaysWithTheShapeThatNamesIt) {
    namedByRow = 0x402;
    ShapeBytes owner = shape(0x403);
    owner.text = 0x10000;
    shapes = {shape(0x402).bytes(), owner.bytes()};
    EXPECT_EQ(named(drawing(0x402), Kind::text), Numbers{});
}

TEST_F(CarriedDrawingsTest, ADamagedMemberStaysOutOfItsGroupAndIsCounted) {
    ShapeBytes inner = shape(0x404);
    inner.anchor.reset();
    ShapeBytes bad = shape(0x405);
    bad.anchor.reset();
    shapes = {groupBytes({shape(0x403).bytes(), damaged(bad), inner.bytes()})};
    const Drawing& group = drawing(0x403);
    EXPECT_EQ(named(group, Kind::shape), (Numbers{0, 1}));
    EXPECT_TRUE(art::recordsAreWhole(group.records, art::spgrContainer));
    EXPECT_EQ(damagedMembers(), 1);
}

TEST_F(CarriedDrawingsTest, GroupsNestedTooDeeplyStayOutOfTheirGroup) {
    ShapeBytes inner = shape(0x404);
    inner.anchor.reset();
    Bytes nested = groupBytes({inner.bytes()});
    for (int i = 0; i < 100; ++i) {
        nested = groupBytes({inner.bytes(), nested});
    }
    shapes = {groupBytes({shape(0x402).bytes(), nested})};
    EXPECT_LT(named(drawing(0x402), Kind::shape).size(), 65U);
    EXPECT_EQ(damagedMembers(), 1);
}

TEST_F(CarriedDrawingsTest, AShapeWithoutAnAnchorOfItsOwnGetsOne) {
    ShapeBytes one = shape(0x402);
    one.anchor.reset();
    shapes = {one.bytes()};
    EXPECT_EQ(named(drawing(0x402), Kind::anchor), Numbers{0});
}

TEST_F(CarriedDrawingsTest, TheShapeThatFillsThePagesComesWithItsPicture) {
    pictures = {encodeBlip(*recogniseImage(qvnd::test::png(3, 3)))};
    ShapeBytes page = shape(50);
    page.flags = art::shapeIsBackground | art::shapeHasKind;
    page.anchor.reset();
    page.properties.setBlip(0x0186, 1); // fillBlip
    page.properties.set(art::fillFlags, 0x00100010);
    const auto found = background(page.bytes());
    ASSERT_TRUE(found);
    ASSERT_EQ(found->references.size(), 2U);
    EXPECT_EQ(found->references[0].kind, Kind::shape);
    EXPECT_EQ(found->references[1].kind, Kind::picture);
    EXPECT_EQ(tables.shapePictures.size(), 1U);
    EXPECT_TRUE(found->place.empty());
    EXPECT_FALSE(damagedBackground());
}

TEST_F(CarriedDrawingsTest, ABackgroundThatFillsNothingIsNone) {
    ShapeBytes page = shape(50);
    page.flags = art::shapeIsBackground | art::shapeHasKind;
    page.anchor.reset();
    page.properties.set(art::fillFlags, 0x00100000);
    EXPECT_FALSE(background(page.bytes()));
    EXPECT_FALSE(damagedBackground());
    page.properties.set(art::fillFlags, 0x00000000); // says nothing of it: it is filled
    EXPECT_TRUE(background(page.bytes()));
    EXPECT_FALSE(background({}));
}

TEST_F(CarriedDrawingsTest, ADamagedBackgroundIsTold) {
    ShapeBytes page = shape(50);
    page.flags = art::shapeIsBackground | art::shapeHasKind;
    EXPECT_FALSE(background(damaged(page)));
    EXPECT_TRUE(damagedBackground());
    page.flags = art::shapeHasKind; // no background, whatever it stands for
    EXPECT_FALSE(background(page.bytes()));
    EXPECT_TRUE(damagedBackground());
}

TEST_F(CarriedDrawingsTest, APictureThatStandsInTheStoreByItselfGetsAnEntry) {
    const Bytes entry = encodeBlip(*recogniseImage(qvnd::test::png(4, 2)));
    const Bytes bare(entry.begin() + art::headerSize + art::fbseSize, entry.end());
    pictures = {bare};
    ShapeBytes one = shape(0x402);
    one.properties.setBlip(art::pib, 1);
    shapes = {one.bytes()};
    EXPECT_EQ(named(drawing(0x402), Kind::picture), Numbers{0});
    Bytes expected = entry;
    expected.at(art::headerSize + art::fbseCountAt) = 0; // it counts no use yet
    ASSERT_EQ(tables.shapePictures.size(), 1U);
    EXPECT_EQ(*tables.shapePictures[0], expected);
}

TEST_F(CarriedDrawingsTest, APictureInTheStoreWithoutADigestIsNone) {
    for (const std::size_t size : {15U, 16U}) {
        pictures.push_back(artRecord(0, 0x6E0, art::blipPng, Bytes(size)));
        ShapeBytes one = shape(0x401 + static_cast<std::uint32_t>(pictures.size()));
        one.properties.setBlip(art::pib, static_cast<std::uint32_t>(pictures.size()));
        shapes.push_back(one.bytes());
    }
    EXPECT_EQ(named(drawing(0x402), Kind::picture), Numbers{});
    EXPECT_EQ(named(drawing(0x403), Kind::picture), Numbers{0});
}

TEST_F(CarriedDrawingsTest, AShapeWhoseRecordsBeginOtherwiseThanWithItselfIsDamaged) {
    LittleEndianWriter head;
    head.u32(0x402);
    head.u32(art::shapeHasAnchor | art::shapeHasKind);
    const Bytes shapeRecord = artRecord(2, 1, art::fsp, head.data());
    const Bytes anchor = artRecord(0, 0, art::clientAnchor, number32(0));
    shapes = {artContainer(art::spContainer, {anchor, shapeRecord})};
    EXPECT_FALSE(add(0x402));
}

TEST_F(CarriedDrawingsTest, APlainBoxHasARecordOfEachThingThatItNeeds) {
    ShapeBytes one = shape(0x402);
    one.text = 0x10000;
    shapes = {damaged(one)};
    LittleEndianReader reader(drawing(0x402).records, "records");
    EXPECT_EQ(art::readHeader(reader).type, art::spContainer);
    std::vector<std::pair<std::uint16_t, std::uint32_t>> records; // kind and length
    while (!reader.atEnd()) {
        const art::RecordHeader header = art::readHeader(reader);
        records.emplace_back(header.type, header.length);
        reader.skip(header.length);
    }
    EXPECT_EQ(records,
              (std::vector<std::pair<std::uint16_t, std::uint32_t>>{{art::fsp, 8},
                                                                    {art::fopt, 6},
                                                                    {art::clientAnchor, 4},
                                                                    {art::clientData, 4},
                                                                    {art::clientTextbox, 4}}));
}

TEST_F(CarriedDrawingsTest, AGroupsShapeMayBeginWithThePlaceOfItsMembers) {
    LittleEndianWriter head;
    head.u32(0x402);
    head.u32(art::shapeIsGroup | art::shapeHasAnchor);
    const Bytes group =
        artContainer(art::spContainer, {artRecord(1, 0, art::fspgr, Bytes(16)),
                                        artRecord(2, 0, art::fsp, head.data()),
                                        artRecord(0, 0, art::clientAnchor, number32(0))});
    ShapeBytes member = shape(0x403);
    member.anchor.reset();
    shapes = {groupBytes({group, member.bytes()})};
    EXPECT_EQ(named(drawing(0x402), Kind::shape).size(), 2U);
}

TEST_F(CarriedDrawingsTest, AShapeNamesTheOneThatItTakesItsLookFrom) {
    for (const std::uint16_t opid : {art::nextShape, art::masterShape}) {
        ShapeBytes one = shape(opid == art::nextShape ? 0x402 : 0x404);
        one.properties.set(opid, 0x403);
        shapes.push_back(one.bytes());
    }
    const auto next = named(drawing(0x402), Kind::otherShape);
    ASSERT_EQ(next.size(), 1U);
    EXPECT_EQ(named(drawing(0x404), Kind::otherShape), next);
}

TEST_F(CarriedDrawingsTest, AShapeNamesThoseThatItIsRelatedTo) {
    const auto relatedTo = [this](std::size_t size) {
        LittleEndianWriter table;
        table.u16(art::shapeRelations | 0x8000U);
        table.u32(static_cast<std::uint32_t>(size));
        Bytes relations = test::hex("0100 0100 0C00 03040000 00000000 05040000 0604");
        relations.resize(size);
        table.bytes(relations);
        const auto id = static_cast<std::uint32_t>(0x440 + size);
        ShapeBytes one = shape(id);
        one.properties = art::ShapeProperties(table.data(), 1);
        shapes = {one.bytes()};
        carried_.reset();
        return named(drawing(id), Kind::otherShape).size();
    };
    EXPECT_EQ(relatedTo(18), 2U) << "a place of 0 names none";
    EXPECT_EQ(relatedTo(9), 0U);
}

} // namespace
} // namespace qvnd::word
