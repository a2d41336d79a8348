#include "platform/word/docfile/writer/DrawingEncoder.h"

#include "platform/word/docfile/format/OfficeArt.h"
#include "platform/word/docfile/format/Plc.h"
#include "platform/word/docfile/format/ShapeProperties.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace qvnd::word {

namespace {

using Kind = ShapeReference::Kind;

constexpr Cp behindTexts = 3; // where the tables of texts end, as Word has it
constexpr std::size_t pictureEntrySize = art::headerSize + art::fbseSize;

Bytes record(unsigned version, unsigned instance, std::uint16_t type, ByteView content) {
    LittleEndianWriter writer;
    art::writeRecord(writer, version, instance, type, content);
    return writer.take();
}

Bytes shapeHead(std::uint32_t id, unsigned kind, std::uint32_t flags) {
    LittleEndianWriter content;
    content.u32(id);
    content.u32(flags);
    return record(2, kind, art::fsp, content.data());
}

// The group of a whole drawing, which all its shapes are in.
Bytes patriarch(std::uint32_t id) {
    LittleEndianWriter content;
    content.bytes(record(1, 0, art::fspgr, Bytes(16)));
    content.bytes(shapeHead(id, 0, art::shapeIsGroup | art::shapeIsPatriarch));
    return record(art::container, 0, art::spContainer, content.data());
}

// A background of the pages that shows nothing.
Bytes plainBackground(std::uint32_t id) {
    constexpr std::uint16_t blackAndWhiteMode = 0x0304;
    constexpr std::uint16_t shapeFlags = 0x033F;
    constexpr unsigned rectangle = 1;
    art::ShapeProperties properties;
    properties.set(art::fillFlags, 0x00100000);
    properties.set(art::lineWidth, 0);
    properties.set(art::lineFlags, 0x00080000);
    properties.set(blackAndWhiteMode, 9);
    properties.set(shapeFlags, 0x00010001);
    LittleEndianWriter data;
    data.u32(1);
    LittleEndianWriter content;
    content.bytes(
        shapeHead(id, rectangle, art::shapeIsBackground | art::shapeHasKind | art::shapeHasAnchor));
    content.bytes(record(3, properties.count(), art::fopt, properties.encode()));
    content.bytes(record(0, 0, art::clientData, data.data()));
    return record(art::container, 0, art::spContainer, content.data());
}

// OfficeArtWordDrawing up to its shapes; `behind` bytes follow these within it.
Bytes drawingHead(std::uint32_t number, std::size_t shapes, std::uint32_t lastId,
                  std::size_t shapesSize, std::size_t behind) {
    LittleEndianWriter counts;
    counts.u32(static_cast<std::uint32_t>(shapes) + 1);
    counts.u32(lastId);
    const Bytes fdg = record(0, number, art::fdg, counts.data());
    LittleEndianWriter head;
    head.u8(number - 1);
    art::writeHeader(head, art::container, 0, art::dgContainer,
                     fdg.size() + art::headerSize + shapesSize + behind);
    head.bytes(fdg);
    art::writeHeader(head, art::container, 0, art::spgrContainer, shapesSize);
    return head.take();
}

// FTXBXS; for 0 shapes one that may be used again.
void writeBox(LittleEndianWriter& boxes, std::uint32_t shapes, std::uint32_t first) {
    boxes.u32(shapes == 0 ? 0xFFFFFFFF : shapes);
    boxes.u32(0);
    boxes.u16(shapes == 0 ? 1 : 0);
    boxes.u32(0xFFFFFFFF);
    boxes.u32(first);
    boxes.u32(0);
}

// Where the parts of a chain begin in their text, the first one included. A program that lays
// the text out finds the true places itself.
std::vector<Cp> breaksOf(const std::vector<Cp>& known, Cp length, std::uint32_t shapes) {
    std::vector<Cp> result{0};
    for (const Cp at : known) {
        if (result.size() < shapes && at > result.back() && at < length) {
            result.push_back(at);
        }
    }
    while (result.size() < shapes && length - (shapes - result.size()) > result.back() &&
           length > shapes) {
        result.push_back(length - static_cast<Cp>(shapes - result.size()));
    }
    return result;
}

// A table of texts over positions, which end in two more behind the last text.
Bytes textTable(std::vector<std::uint32_t> positions, Cp end, ByteView rows, ByteView lastRow) {
    positions.push_back(end);
    positions.push_back(end + behindTexts);
    LittleEndianWriter data;
    data.bytes(rows);
    data.bytes(lastRow);
    return encodePlc(positions, data.data());
}

} // namespace

DrawingEncoder::Encoded DrawingEncoder::encode(const DrawingPart& main, Cp mainEnd,
                                               const DrawingPart& headers, Cp headersEnd,
                                               const DocumentTables& tables,
                                               const DrawingStores& stores) {
    const bool any =
        !main.places.empty() || !headers.places.empty() || tables.background.has_value();
    if (!any || !goesOn(main_, main, tables) || !goesOn(headers_, headers, tables) ||
        !liesOver(main, tables)) {
        *this = {};
    }
    Encoded result;
    if (!any) {
        return result;
    }
    main_.number = 1;
    headers_.number = 2;
    result.keptFrom = frontSize_;
    result.kept = main_.size;
    const Call call{tables, stores};
    LittleEndianWriter back;
    back.bytes(begin(main_));
    if (background_.empty()) {
        background_ = background(call);
    }
    for (const auto& [order, records] : add(main_, main, call)) {
        back.bytes(records);
        topmost_ = order;
    }
    back.bytes(background_);
    if (!headers.places.empty()) {
        if (headersHead_.empty()) {
            headersHead_ = begin(headers_);
        }
        headerRecords_.merge(add(headers_, headers, call));
        back.bytes(
            drawingHead(headers_.number, headers_.ids.size(), headers_.lastId, headers_.size, 0));
        back.bytes(headersHead_);
        for (const auto& [order, records] : headerRecords_) {
            back.bytes(records);
        }
    }
    LittleEndianWriter front;
    front.bytes(sharedRecords());
    front.bytes(
        drawingHead(main_.number, main_.ids.size(), main_.lastId, main_.size, background_.size()));
    frontSize_ = front.position();
    result.front = front.take();
    result.back = back.take();
    result.main = tablesOf(main_, main, mainEnd);
    result.headers = tablesOf(headers_, headers, headersEnd);
    return result;
}

// Whether the part has the drawings of the group in front, and nothing behind them changes what
// these say.
bool DrawingEncoder::goesOn(const Group& group, const DrawingPart& part,
                            const DocumentTables& tables) {
    const bool begins = part.places.size() >= group.placed.size() &&
                        std::equal(group.placed.begin(), group.placed.end(), part.places.begin(),
                                   [](std::uint32_t known, const DrawingPart::Place& place) {
                                       return known == place.drawing;
                                   });
    if (!begins) {
        return false;
    }
    for (std::size_t i = group.placed.size(); i < part.places.size(); ++i) {
        for (const ShapeReference& reference : tables.drawings[part.places[i].drawing].references) {
            const CopyKey key = keyOf(reference.index, part.places[i].copy);
            if ((reference.kind == Kind::shape && group.absentShapes.contains(key)) ||
                (reference.kind == Kind::text &&
                 (group.chains.contains(key) || group.absentTexts.contains(key)))) {
                return false;
            }
        }
    }
    return true;
}

// Whether new drawings of the main text lie over those that are there, whose records are not
// touched again.
bool DrawingEncoder::liesOver(const DrawingPart& main, const DocumentTables& tables) const {
    const auto added = main.places.begin() + static_cast<std::ptrdiff_t>(main_.placed.size());
    return std::all_of(added, main.places.end(), [&](const DrawingPart::Place& place) {
        return tables.drawings[place.drawing].order >= topmost_;
    });
}

// The records that stand in front of the group's first shape, once.
Bytes DrawingEncoder::begin(Group& group) {
    if (group.size != 0) {
        return {};
    }
    Bytes records = patriarch(newId(group));
    group.size = records.size();
    return records;
}

// The records of what the part has and the group has not.
DrawingEncoder::Records DrawingEncoder::add(Group& group, const DrawingPart& part,
                                            const Call& call) {
    nameShapes(group, part, call.tables);
    linkTexts(group, part, call.tables);
    addTexts(group, part, call.tables);
    Records result;
    for (std::size_t i = group.placed.size(); i < part.places.size(); ++i) {
        const DrawingPart::Place& place = part.places[i];
        Bytes records = addPlace(group, place, call);
        group.size += records.size();
        result.emplace(call.tables.drawings[place.drawing].order, std::move(records));
    }
    return result;
}

Bytes DrawingEncoder::background(const Call& call) {
    const std::uint32_t id = newId(main_);
    if (!call.tables.background) {
        return plainBackground(id);
    }
    const Drawing& drawing = *call.tables.background;
    LittleEndianWriter records;
    records.bytes(drawing.records);
    for (const ShapeReference& reference : drawing.references) {
        records.patchU32(reference.at,
                         reference.kind == Kind::shape ? id : valueOf(main_, reference, 0, call));
    }
    return records.take();
}

std::uint32_t DrawingEncoder::newId(Group& group) {
    if (group.cluster == 0 || clusters_[group.cluster - 1].used == art::clusterSize) {
        clusters_.push_back({group.number, 0});
        group.cluster = clusters_.size();
    }
    ++shapeCount_;
    group.lastId = static_cast<std::uint32_t>(group.cluster) * art::clusterSize +
                   clusters_[group.cluster - 1].used++;
    return group.lastId;
}

void DrawingEncoder::nameShapes(Group& group, const DrawingPart& part,
                                const DocumentTables& tables) {
    for (std::size_t i = group.placed.size(); i < part.places.size(); ++i) {
        const DrawingPart::Place& place = part.places[i];
        for (const ShapeReference& reference : tables.drawings[place.drawing].references) {
            if (reference.kind == Kind::shape) {
                group.ids.emplace(keyOf(reference.index, place.copy), newId(group));
            }
        }
    }
}

// Which new text has which number, and how long its chain of shapes is: as far as it goes on
// without a gap. Of two shapes that claim one part of a chain the first has it.
void DrawingEncoder::linkTexts(Group& group, const DrawingPart& part,
                               const DocumentTables& tables) {
    const std::size_t before = group.textStarts.size();
    for (std::size_t i = before; i < part.texts.size(); ++i) {
        group.chains[keyOf(part.texts[i].index, part.texts[i].copy)].number =
            static_cast<std::uint32_t>(i + 1);
    }
    for (std::size_t i = group.placed.size(); i < part.places.size(); ++i) {
        const DrawingPart::Place& place = part.places[i];
        forEachShownText(tables.drawings[place.drawing], [&](std::uint32_t shape,
                                                             const ShapeReference& text) {
            const auto chain = group.chains.find(keyOf(text.index, place.copy));
            if (chain != group.chains.end()) {
                chain->second.shapes.try_emplace(text.link, group.ids.at(keyOf(shape, place.copy)));
            }
        });
    }
    for (std::size_t i = before; i < part.texts.size(); ++i) {
        Chain& chain = group.chains.at(keyOf(part.texts[i].index, part.texts[i].copy));
        while (chain.shapes.contains(static_cast<std::uint16_t>(chain.length))) {
            ++chain.length;
        }
    }
}

// The rows of new texts.
void DrawingEncoder::addTexts(Group& group, const DrawingPart& part, const DocumentTables& tables) {
    for (std::size_t i = group.textStarts.size(); i < part.texts.size(); ++i) {
        const DrawingPart::Text& text = part.texts[i];
        const Chain& chain = group.chains.at(keyOf(text.index, text.copy));
        group.textStarts.push_back(text.start);
        writeBox(group.boxes, chain.length, chain.shapes.at(0));
        for (const Cp at :
             breaksOf(tables.shapeTexts[text.index].breaks, text.length, chain.length)) {
            group.breaks.push_back(text.start + at);
            group.owners.u16(chain.number - 1);
            group.owners.u32(0);
        }
    }
}

Bytes DrawingEncoder::addPlace(Group& group, const DrawingPart::Place& place, const Call& call) {
    const Drawing& drawing = call.tables.drawings[place.drawing];
    LittleEndianWriter records;
    records.bytes(drawing.records);
    std::uint32_t shape = 0;
    std::uint32_t text = 0;
    std::uint32_t first = 0;
    bool shows = true;
    for (const ShapeReference& reference : drawing.references) {
        std::uint32_t value = 0;
        if (reference.kind == Kind::shape) {
            shape = group.ids.at(keyOf(reference.index, place.copy));
            first = first == 0 ? shape : first;
            shows = false;
            value = shape;
        } else if (reference.kind == Kind::text) {
            text = shows ? text : textNumber(group, reference, place.copy, shape);
            shows = true;
            value = text;
        } else {
            value = valueOf(group, reference, place.copy, call);
        }
        records.patchU32(reference.at, value);
    }
    group.placed.push_back(place.drawing);
    group.anchors.u32(first);
    group.anchors.bytes(drawing.place);
    return records.take();
}

// What a reference says that does not depend on the shape that it stands in.
std::uint32_t DrawingEncoder::valueOf(Group& group, const ShapeReference& reference,
                                      std::uint32_t copy, const Call& call) {
    switch (reference.kind) {
    case Kind::otherShape: {
        const CopyKey key = keyOf(reference.index, copy);
        const auto found = group.ids.find(key);
        if (found == group.ids.end()) {
            group.absentShapes.insert(key);
            return 0;
        }
        return found->second;
    }
    case Kind::picture:
        return pictureNumber(call.tables.shapePictures[reference.index], call.stores);
    case Kind::object:
        return call.stores.object(call.tables.objects[reference.index]);
    default: // the place in the table of anchors
        return static_cast<std::uint32_t>(group.placed.size());
    }
}

// What a shape writes for the text that it names: number and link, or 0.
std::uint32_t DrawingEncoder::textNumber(Group& group, const ShapeReference& reference,
                                         std::uint32_t copy, std::uint32_t shape) {
    const CopyKey key = keyOf(reference.index, copy);
    const auto chain = group.chains.find(key);
    if (chain == group.chains.end()) {
        group.absentTexts.insert(key);
        return 0;
    }
    const bool shown =
        reference.link < chain->second.length && chain->second.shapes.at(reference.link) == shape;
    return shown ? (chain->second.number << 16) | reference.link : 0;
}

// Counted from 1; 0, which is none, where the store is full. Equal pictures are kept once.
std::uint32_t DrawingEncoder::pictureNumber(const DataBlob& stored, const DrawingStores& stores) {
    const std::uint32_t offset = stores.picture(stored);
    if (pictureNumbers_.size() >= art::mostPictures && !pictureNumbers_.contains(offset)) {
        return 0;
    }
    const auto number = static_cast<std::uint32_t>(pictureNumbers_.size() + 1);
    const auto [known, isNew] = pictureNumbers_.try_emplace(offset, number);
    const std::size_t at = (known->second - 1) * pictureEntrySize;
    constexpr std::size_t countAt = art::headerSize + art::fbseCountAt;
    if (isNew) {
        LittleEndianReader reader(*stored, "OfficeArtFBSE");
        const art::RecordHeader header = art::readHeader(reader);
        art::writeRecord(pictures_, header.version, header.instance, header.type,
                         reader.view(art::fbseSize));
        pictures_.patchU32(at + art::headerSize + art::fbseSizeAt,
                           static_cast<std::uint32_t>(stored->size() - pictureEntrySize));
        pictures_.patchU32(at + art::headerSize + art::fbseDelayAt, offset);
        pictures_.patchU32(at + countAt, 0);
    }
    LittleEndianReader entry(pictures_.data(), "OfficeArtFBSE");
    entry.seek(at + countAt);
    pictures_.patchU32(at + countAt, entry.u32() + 1);
    return known->second;
}

// OfficeArtDggContainer: identifiers given out, and the store of pictures.
Bytes DrawingEncoder::sharedRecords() const {
    LittleEndianWriter block;
    const auto clusters = static_cast<std::uint32_t>(clusters_.size());
    block.u32((clusters + 1) * art::clusterSize + 2);
    block.u32(clusters + 1);
    block.u32(shapeCount_);
    block.u32(headers_.size == 0 ? 1 : 2);
    for (const Cluster& cluster : clusters_) {
        block.u32(cluster.drawing);
        block.u32(cluster.used);
    }
    LittleEndianWriter content;
    art::writeRecord(content, 0, 0, art::fdggBlock, block.data());
    if (!pictureNumbers_.empty()) {
        art::writeRecord(content, art::container, static_cast<unsigned>(pictureNumbers_.size()),
                         art::bstoreContainer, pictures_.data());
    }
    return record(art::container, 0, art::dggContainer, content.data());
}

DrawingTables DrawingEncoder::tablesOf(Group& group, const DrawingPart& part, Cp end) {
    DrawingTables result;
    if (part.places.empty()) {
        return result;
    }
    std::vector<std::uint32_t> positions;
    positions.reserve(part.places.size() + 1);
    for (const DrawingPart::Place& place : part.places) {
        positions.push_back(place.at);
    }
    positions.push_back(end);
    const ByteView anchors = group.anchors.data();
    const ByteView added = anchors.subspan(group.anchorsSize);
    result.keptFrom = group.positionsSize;
    result.kept = group.anchorsSize;
    result.positions = encodePlc(positions, {});
    result.anchors.assign(added.begin(), added.end());
    group.positionsSize = result.positions.size();
    group.anchorsSize = anchors.size();
    if (!part.texts.empty()) {
        const Cp textEnd = part.texts.back().start + part.texts.back().length;
        LittleEndianWriter none; // the tables end in a row that is none
        writeBox(none, 0, 0);
        LittleEndianWriter noOwner;
        noOwner.u16(0xFFFF);
        noOwner.u32(0);
        result.boxes = textTable(group.textStarts, textEnd, group.boxes.data(), none.data());
        result.breaks = textTable(group.breaks, textEnd, group.owners.data(), noOwner.data());
    }
    return result;
}

} // namespace qvnd::word
