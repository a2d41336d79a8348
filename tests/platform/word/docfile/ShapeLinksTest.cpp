#include "platform/word/docfile/pictures/ShapeLinks.h"

#include "platform/word/docfile/DrawingBytes.h"
#include "platform/word/docfile/document/DataBlobs.h"

#include <gtest/gtest.h>

namespace qvnd::word {
namespace {

using namespace drawings;
using qvnd::test::hex;

constexpr std::uint32_t toABookmark = 0x08;
constexpr std::uint32_t withDisplayName = 0x18;
constexpr std::uint32_t toAnotherFile = 0x0B;

Bytes linkTo(const std::u16string& bookmark, std::uint32_t flags = toABookmark) {
    LittleEndianWriter link;
    link.bytes(hex("D0C9EA79F9BACE118C8200AA004BA90B 02000000"));
    link.u32(flags);
    if (flags == withDisplayName) {
        link.u32(3);
        link.text(std::u16string(u"ab\0", 3));
    }
    if (flags == toAnotherFile) {
        link.bytes(Bytes(40)); // a moniker
    }
    link.u32(static_cast<std::uint32_t>(bookmark.size() + 1));
    link.text(bookmark);
    link.u16(0);
    return link.take();
}

// A shape with that link, and with the names of two shapes in its relations behind it.
Bytes shapeWith(const Bytes& link) {
    constexpr unsigned complex = 0x8000;
    LittleEndianWriter properties;
    properties.u16(art::shapeLink | complex);
    properties.u32(static_cast<std::uint32_t>(link.size()));
    properties.u16(art::shapeRelations | complex);
    properties.u32(14);
    properties.bytes(link);
    properties.zeros(14);
    return artContainer(art::spContainer, {artRecord(2, 1, art::fsp, Bytes(8)),
                                           artRecord(3, 2, art::fopt, properties.data())});
}

ShapeReference referenceAt(std::size_t at) {
    ShapeReference reference;
    reference.at = static_cast<std::uint32_t>(at);
    reference.kind = ShapeReference::Kind::otherShape;
    return reference;
}

// A group of two shapes with links, with a reference in front of the links, between and behind.
Drawing groupWith(const Bytes& first, const Bytes& second) {
    const Bytes head = shapeWith(first);
    Drawing drawing;
    drawing.records = groupBytes({head, shapeWith(second)});
    drawing.references = {referenceAt(16), referenceAt(art::headerSize + head.size() - 4),
                          referenceAt(drawing.records.size() - 4)};
    return drawing;
}

std::optional<std::u16string> renamed(std::u16string_view name) {
    return name == u"图1" ? std::optional<std::u16string>(u"图1_22") : std::nullopt;
}

void expectEqual(const Drawing& drawing, const Drawing& expected) {
    EXPECT_EQ(drawing.records, expected.records);
    ASSERT_EQ(drawing.references.size(), expected.references.size());
    for (std::size_t i = 0; i < expected.references.size(); ++i) {
        EXPECT_EQ(drawing.references[i].at, expected.references[i].at) << i;
    }
}

TEST(ShapeLinks, LeadToABookmarkUnderItsNewName) {
    for (const std::uint32_t flags : {toABookmark, withDisplayName}) {
        Drawing drawing = groupWith(linkTo(u"图1", flags), linkTo(u"图1", flags));
        renameLinks(drawing, renamed);
        expectEqual(drawing, groupWith(linkTo(u"图1_22", flags), linkTo(u"图1_22", flags)));
    }
    Drawing one = groupWith(linkTo(u"图2"), linkTo(u"图1"));
    renameLinks(one, renamed);
    expectEqual(one, groupWith(linkTo(u"图2"), linkTo(u"图1_22")));
}

TEST(ShapeLinks, KeepTheirPlaceInAnotherFile) {
    const Drawing before = groupWith(linkTo(u"图1", toAnotherFile), {1, 2, 3});
    Drawing drawing = before;
    renameLinks(drawing, renamed);
    expectEqual(drawing, before);
}

TEST(ShapeLinks, ThatBreakOffStayAsTheyAreAndOthersAreRenamed) {
    const Bytes whole = linkTo(u"图1", withDisplayName);
    for (std::size_t size = 0; size < whole.size() - 2; ++size) {
        const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        Drawing drawing = groupWith(cut, linkTo(u"图1"));
        renameLinks(drawing, renamed);
        expectEqual(drawing, groupWith(cut, linkTo(u"图1_22")));
    }
}

// A blob of the Data stream of that kind (mfpf.mm).
Bytes blobOf(unsigned kind, const Bytes& content) {
    constexpr std::size_t picfSize = 0x44;
    LittleEndianWriter blob;
    blob.u32(static_cast<std::uint32_t>(picfSize + content.size()));
    blob.u16(picfSize);
    blob.u16(kind);
    blob.zeros(picfSize - 8);
    blob.bytes(content);
    return blob.take();
}

TEST(ShapeLinks, OfPicturesInLineAndOfFieldsLeadToTheNewNameAsWell) {
    const auto picture = [](const std::u16string& name) {
        return qvnd::test::joined({shapeWith(linkTo(name)), artRecord(2, 6, art::fbse, Bytes(36))});
    };
    const auto linked = [&](const std::u16string& name) {
        return qvnd::test::joined({Bytes{3, 'a', 'b', 'c'}, picture(name)});
    };
    const auto field = [](const std::u16string& name) {
        return qvnd::test::joined({Bytes{8}, linkTo(name)});
    };
    EXPECT_EQ(withRenamedLinks(blobOf(0x64, picture(u"图1")), renamed),
              blobOf(0x64, picture(u"图1_22")));
    EXPECT_EQ(withRenamedLinks(blobOf(0x66, linked(u"图1")), renamed),
              blobOf(0x66, linked(u"图1_22")));
    EXPECT_EQ(withRenamedLinks(blobOf(0, field(u"图1")), renamed), blobOf(0, field(u"图1_22")));
    EXPECT_EQ(withRenamedLinks(blobOf(0x64, picture(u"图2")), renamed), std::nullopt);
    EXPECT_EQ(withRenamedLinks(blobOf(0, {}), renamed), std::nullopt);
    EXPECT_EQ(withRenamedLinks(Bytes(3), renamed), std::nullopt);
}

} // namespace
} // namespace qvnd::word
