#pragma once

#include "platform/word/docfile/format/OfficeArt.h"
#include "platform/word/docfile/format/Plc.h"
#include "platform/word/docfile/format/ShapeProperties.h"
#include "support/ByteText.h"

#include <vector>

// Drawings as files hold them, put together record by record.
namespace qvnd::word::drawings {

inline Bytes artRecord(unsigned version, unsigned instance, std::uint16_t type, ByteView content) {
    LittleEndianWriter writer;
    art::writeRecord(writer, version, instance, type, content);
    return writer.take();
}

inline Bytes number32(std::uint32_t value) {
    LittleEndianWriter writer;
    writer.u32(value);
    return writer.take();
}

inline Bytes artContainer(std::uint16_t type, const std::vector<Bytes>& records) {
    Bytes content;
    for (const Bytes& one : records) {
        content.insert(content.end(), one.begin(), one.end());
    }
    return artRecord(art::container, 0, type, content);
}

// A shape, anchored unless it stands in a group.
struct ShapeBytes {
    std::uint32_t id = 0;
    unsigned kind = 1;
    std::uint32_t flags = art::shapeHasAnchor | art::shapeHasKind;
    art::ShapeProperties properties;
    std::uint32_t text = 0; // lTxid
    std::optional<std::uint32_t> anchor = 0;

    Bytes bytes() const {
        LittleEndianWriter head;
        head.u32(id);
        head.u32(flags);
        art::ShapeProperties all = properties;
        if (text != 0) {
            all.set(art::textOfShape, text);
        }
        std::vector<Bytes> records{artRecord(2, kind, art::fsp, head.data()),
                                   artRecord(3, all.count(), art::fopt, all.encode())};
        if (anchor) {
            records.push_back(artRecord(0, 0, art::clientAnchor, number32(*anchor)));
        }
        if (text != 0) {
            records.push_back(artRecord(0, 0, art::clientTextbox, number32(text)));
        }
        return artContainer(art::spContainer, records);
    }
};

// A group; the first shape is the group itself.
inline Bytes groupBytes(const std::vector<Bytes>& shapes) {
    return artContainer(art::spgrContainer, shapes);
}

// How many shapes stand in the records, those of groups too.
inline std::uint32_t countShapes(ByteView records) {
    std::uint32_t count = 0;
    LittleEndianReader reader(records, "OfficeArt");
    while (!reader.atEnd()) {
        const art::RecordHeader header = art::readHeader(reader);
        const ByteView content = reader.view(header.length);
        count += header.type == art::spContainer     ? 1
                 : header.type == art::spgrContainer ? countShapes(content)
                                                     : 0;
    }
    return count;
}

// The drawing of a part of the text with all its shapes, its label in front.
inline Bytes drawingBytes(unsigned label, std::vector<Bytes> shapes) {
    ShapeBytes patriarch;
    patriarch.id = art::clusterSize * (label + 1);
    patriarch.kind = 0;
    patriarch.flags = art::shapeIsGroup | art::shapeIsPatriarch;
    patriarch.anchor.reset();
    shapes.insert(shapes.begin(), patriarch.bytes());
    const Bytes group = groupBytes(shapes);
    const Bytes head =
        qvnd::test::joined({number32(countShapes(group)), number32(patriarch.id + 99)});
    const Bytes drawing =
        artContainer(art::dgContainer, {artRecord(0, label + 1, art::fdg, head), group});
    return qvnd::test::joined({Bytes{static_cast<std::uint8_t>(label)}, drawing});
}

// What the drawings share: one cluster of 100 identifiers for each of the two parts, and a store.
inline Bytes sharedBytes(const std::vector<Bytes>& pictures = {}, std::uint32_t drawings = 1) {
    LittleEndianWriter block;
    for (const std::uint32_t value : {3 * art::clusterSize, 3U, 9U, drawings, 1U, 100U, 2U, 100U}) {
        block.u32(value);
    }
    return artContainer(art::dggContainer, {artRecord(0, 0, art::fdggBlock, block.data()),
                                            artContainer(art::bstoreContainer, pictures)});
}

// A table of anchors over shapes; their rectangles are 0.
struct AnchorBytes {
    std::uint32_t at = 0;
    std::uint32_t shape = 0;
};
inline Bytes anchorTable(const std::vector<AnchorBytes>& anchors, std::uint32_t end = 1000) {
    std::vector<std::uint32_t> positions;
    LittleEndianWriter data;
    for (const AnchorBytes& anchor : anchors) {
        positions.push_back(anchor.at);
        data.u32(anchor.shape);
        data.zeros(22);
    }
    positions.push_back(end);
    return encodePlc(positions, data.data());
}

// FTXBXS of a text; that of no shapes is for reuse.
struct BoxBytes {
    std::uint32_t start = 0;
    std::uint32_t shapes = 1;
    std::uint32_t first = 0;
};
inline Bytes boxTable(std::vector<BoxBytes> boxes, std::uint32_t end) {
    std::vector<std::uint32_t> positions;
    LittleEndianWriter data;
    boxes.push_back({end, 0, 0});
    for (const BoxBytes& box : boxes) {
        positions.push_back(box.start);
        data.u32(box.shapes);
        data.u32(0);
        data.u16(box.shapes == 0 ? 1 : 0);
        data.u32(0xFFFFFFFF);
        data.u32(box.first);
        data.u32(0);
    }
    positions.push_back(end + 3);
    return encodePlc(positions, data.data());
}

} // namespace qvnd::word::drawings
