#include "platform/word/docfile/DrawingBytes.h"
#include "platform/word/engine/ImportFixture.h"

#include <gtest/gtest.h>

// Links that are no text: those of shapes, and the data that fields keep of theirs.
namespace qvnd::word {
namespace {

using namespace importing;
using qvnd::test::hex;

// A link to that bookmark as the data of a field have it.
Bytes fieldData(const std::u16string& bookmark) {
    LittleEndianWriter writer;
    writer.u32(0);
    writer.u16(0x44);
    writer.zeros(0x44 - 6);
    writer.u8(8);
    writer.bytes(hex("D0C9EA79F9BACE118C8200AA004BA90B 02000000 08000000"));
    writer.u32(static_cast<std::uint32_t>(bookmark.size() + 1));
    writer.text(bookmark);
    writer.u16(0);
    writer.patchU32(0, static_cast<std::uint32_t>(writer.position()));
    return writer.take();
}

// A shape that leads to that bookmark.
Bytes linkedShape(const std::u16string& bookmark) {
    const Bytes data = fieldData(bookmark);
    const Bytes link(data.begin() + 0x45, data.end());
    LittleEndianWriter properties;
    properties.u16(art::shapeLink | 0x8000U);
    properties.u32(static_cast<std::uint32_t>(link.size()));
    properties.bytes(link);
    return drawings::artContainer(art::spContainer,
                                  {drawings::artRecord(2, 1, art::fsp, Bytes(8)),
                                   drawings::artRecord(3, 1, art::fopt, properties.data())});
}

TEST(LinkImport, LinksOfShapesAndOfFieldsLeadToTheirOwnBookmarks) {
    SourceDocument source;
    source.data.tables.blobs = {std::make_shared<const Bytes>(fieldData(u"图1"))};
    source.data.tables.drawings = {{Bytes(22), linkedShape(u"图1"), {}}};
    source.run(u"\u0008", sprm8(sprm::CFSpec, 1));
    source.run(u"\u0013 HYPERLINK \\l 图1 ");
    source.run(u"\u0001",
               sprm8(sprm::CFSpec, 1) + sprm8(sprm::CFData, 1) + sprm32(sprm::CPicLocation, 0));
    source.run(u"\u0014x\u0015\r");
    source.endParagraph();
    source.main.anchors = {{0, AnchorKind::drawing, 0}};
    source.data.bookmarks = {{u"图1", 0, 1, 0}};
    ImportTarget target;
    target.import(source.document());
    target.import(source.document());
    ASSERT_EQ(target.tables.drawings.size(), 2U);
    EXPECT_EQ(target.tables.drawings[0].records, linkedShape(u"图1"));
    EXPECT_EQ(target.tables.drawings[1].records, linkedShape(u"图1_2"));
    EXPECT_EQ(*target.tables.blobs.back(), fieldData(u"图1_2"));
    EXPECT_EQ(*target.tables.blobs.front(), fieldData(u"图1"));
}

} // namespace
} // namespace qvnd::word
