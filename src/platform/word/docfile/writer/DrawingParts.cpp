#include "platform/word/docfile/writer/DrawingParts.h"

#include "platform/word/docfile/format/OfficeArt.h"
#include "platform/word/docfile/format/Plc.h"
#include "platform/word/docfile/format/ShapeProperties.h"

#include <algorithm>
#include <array>
#include <map>
#include <unordered_map>
#include <utility>

namespace qvnd::word {

namespace {

using Kind = ShapeReference::Kind;

constexpr std::size_t mostTexts = 0xFFFE; // a shape names its text with 16 bits
constexpr Cp behindTexts = 3;             // where the tables of texts end, as Word has it

using CopyKey = std::pair<std::uint32_t, std::uint32_t>; // of a shape or text: index, copy

// Calls `visit` with each shape of the drawing that shows a text, and the first that it names.
template <class Visit>
void forEachShownText(const Drawing& drawing, Visit visit) {
    std::uint32_t shape = 0;
    bool shows = true;
    for (const ShapeReference& reference : drawing.references) {
        if (reference.kind == Kind::shape) {
            shape = reference.index;
            shows = false;
        } else if (reference.kind == Kind::text && !shows) {
            shows = true;
            visit(shape, reference);
        }
    }
}

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

// The page's own background: nothing.
Bytes background(std::uint32_t id) {
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

class DrawingsEncoding {
public:
    DrawingsEncoding(const DocumentTables& tables, const DrawingStores& stores)
        : tables_(tables), stores_(stores) {}

    // One drawing (OfficeArtWordDrawing) and the tables that belong to it.
    DrawingTables addDrawing(const DrawingPart& part, Cp end, unsigned label) {
        number_ = label + 1;
        ids_.clear();
        LittleEndianWriter group;
        group.bytes(patriarch(newId()));
        const std::uint32_t backgroundId = label == 0 ? newId() : 0;
        nameShapes(part);
        countTexts(part);
        DrawingTables result = textTables(part);
        LittleEndianWriter anchors;
        std::vector<std::uint32_t> positions;
        for (const DrawingPart::Place& place : part.places) {
            addPlace(place, positions, anchors, group);
        }
        positions.push_back(end);
        result.anchors = part.places.empty() ? Bytes{} : encodePlc(positions, anchors.data());
        writeDrawing(label, group.data(), backgroundId);
        return result;
    }

    Bytes content() {
        LittleEndianWriter shared;
        shared.bytes(clusterBlock());
        if (!entries_.empty()) {
            LittleEndianWriter store;
            for (const Entry& entry : entries_) {
                store.bytes(storeEntry(entry));
            }
            shared.bytes(record(art::container, static_cast<unsigned>(entries_.size()),
                                art::bstoreContainer, store.data()));
        }
        LittleEndianWriter all;
        all.bytes(record(art::container, 0, art::dggContainer, shared.data()));
        all.bytes(drawings_.data());
        return all.take();
    }

private:
    struct Entry { // of the store of pictures
        const Bytes* stored = nullptr;
        std::uint32_t offset = 0;
        std::uint32_t references = 0;
    };
    struct Cluster {
        std::uint32_t drawing = 0;
        std::uint32_t used = 0;
    };

    std::uint32_t newId() {
        if (clusters_.empty() || clusters_.back().drawing != number_ ||
            clusters_.back().used == art::clusterSize) {
            clusters_.push_back({number_, 0});
        }
        ++shapeCount_;
        lastId_ = static_cast<std::uint32_t>(clusters_.size()) * art::clusterSize +
                  clusters_.back().used++;
        return lastId_;
    }

    void nameShapes(const DrawingPart& part) {
        for (const DrawingPart::Place& place : part.places) {
            for (const ShapeReference& reference : tables_.drawings[place.drawing].references) {
                if (reference.kind == Kind::shape) {
                    ids_.emplace(CopyKey{reference.index, place.copy}, newId());
                }
            }
        }
    }

    // Which text has which number, and how long its chain of shapes is: as far as it goes on
    // without a gap. Of two shapes that claim one part of a chain the first has it.
    void countTexts(const DrawingPart& part) {
        chains_.clear();
        for (std::size_t i = 0; i < part.texts.size(); ++i) {
            Chain& chain = chains_[{part.texts[i].index, part.texts[i].copy}];
            chain.number = static_cast<std::uint32_t>(i + 1);
        }
        for (const DrawingPart::Place& place : part.places) {
            forEachShownText(tables_.drawings[place.drawing],
                             [&](std::uint32_t shape, const ShapeReference& text) {
                                 claim(text, place.copy, ids_.at({shape, place.copy}));
                             });
        }
        for (auto& [key, chain] : chains_) {
            std::size_t link = 0;
            while (chain.shapes.contains(static_cast<std::uint16_t>(link))) {
                ++link;
            }
            chain.length = static_cast<std::uint32_t>(link);
        }
    }

    void claim(const ShapeReference& reference, std::uint32_t copy, std::uint32_t shape) {
        const auto chain = chains_.find({reference.index, copy});
        if (chain != chains_.end()) {
            chain->second.shapes.try_emplace(reference.link, shape);
        }
    }

    // What a shape writes for the text that it names: number and link, or 0.
    std::uint32_t textNumber(const ShapeReference& reference, std::uint32_t copy,
                             std::uint32_t shape) const {
        const auto chain = chains_.find({reference.index, copy});
        if (chain == chains_.end() || reference.link >= chain->second.length ||
            chain->second.shapes.at(reference.link) != shape) {
            return 0;
        }
        return (chain->second.number << 16) | reference.link;
    }

    DrawingTables textTables(const DrawingPart& part) const {
        DrawingTables tables;
        if (part.texts.empty()) {
            return tables;
        }
        std::vector<std::uint32_t> starts;
        std::vector<std::uint32_t> breaks;
        LittleEndianWriter boxes;
        LittleEndianWriter owners;
        for (const DrawingPart::Text& text : part.texts) {
            const Chain& chain = chains_.at({text.index, text.copy});
            starts.push_back(text.start);
            writeBox(boxes, chain.length, chain.shapes.at(0));
            for (const Cp at : breaksOf(text, chain.length)) {
                breaks.push_back(text.start + at);
                owners.u16(chain.number - 1);
                owners.u32(0);
            }
        }
        writeBox(boxes, 0, 0); // the table ends in one that is none
        owners.u16(0xFFFF);
        owners.u32(0);
        const Cp end = part.texts.back().start + part.texts.back().length;
        for (auto* positions : {&starts, &breaks}) {
            positions->push_back(end);
            positions->push_back(end + behindTexts);
        }
        tables.boxes = encodePlc(starts, boxes.data());
        tables.breaks = encodePlc(breaks, owners.data());
        return tables;
    }

    // FTXBXS; for 0 shapes one that may be used again.
    static void writeBox(LittleEndianWriter& boxes, std::uint32_t shapes, std::uint32_t first) {
        boxes.u32(shapes == 0 ? 0xFFFFFFFF : shapes);
        boxes.u32(0);
        boxes.u16(shapes == 0 ? 1 : 0);
        boxes.u32(0xFFFFFFFF);
        boxes.u32(first);
        boxes.u32(0);
    }

    // Where the parts of a chain begin in their text, the first one included. A program that lays
    // the text out finds the true places itself.
    std::vector<Cp> breaksOf(const DrawingPart::Text& text, std::uint32_t shapes) const {
        std::vector<Cp> result{0};
        for (const Cp at : tables_.shapeTexts[text.index].breaks) {
            if (result.size() < shapes && at > result.back() && at < text.length) {
                result.push_back(at);
            }
        }
        while (result.size() < shapes && text.length - (shapes - result.size()) > result.back() &&
               text.length > shapes) {
            result.push_back(text.length - static_cast<Cp>(shapes - result.size()));
        }
        return result;
    }

    void addPlace(const DrawingPart::Place& place, std::vector<std::uint32_t>& positions,
                  LittleEndianWriter& anchors, LittleEndianWriter& group) {
        const Drawing& drawing = tables_.drawings[place.drawing];
        LittleEndianWriter out;
        out.bytes(drawing.records);
        std::uint32_t shape = 0;
        std::uint32_t text = 0;
        std::uint32_t first = 0;
        bool shows = true;
        for (const ShapeReference& reference : drawing.references) {
            if (reference.kind == Kind::shape) {
                shape = ids_.at({reference.index, place.copy});
                first = first == 0 ? shape : first;
                shows = false;
            } else if (reference.kind == Kind::text && !shows) {
                text = textNumber(reference, place.copy, shape);
                shows = true;
            }
            out.patchU32(reference.at,
                         valueOf(reference, place.copy, shape, text, positions.size()));
        }
        group.bytes(out.data());
        positions.push_back(place.at);
        anchors.u32(first);
        anchors.bytes(drawing.place);
    }

    std::uint32_t valueOf(const ShapeReference& reference, std::uint32_t copy, std::uint32_t shape,
                          std::uint32_t text, std::size_t anchor) {
        switch (reference.kind) {
        case Kind::shape:
            return shape;
        case Kind::otherShape: {
            const auto found = ids_.find({reference.index, copy});
            return found != ids_.end() ? found->second : 0;
        }
        case Kind::picture:
            return pictureNumber(reference.index);
        case Kind::text:
            return text;
        case Kind::object:
            return stores_.object(tables_.objects[reference.index]);
        case Kind::anchor:
            break;
        }
        return static_cast<std::uint32_t>(anchor);
    }

    // Counted from 1. Equal pictures are kept once.
    std::uint32_t pictureNumber(std::uint32_t index) {
        const DataBlob& stored = tables_.shapePictures[index];
        const std::uint32_t offset = stores_.picture(stored);
        const auto [known, isNew] = numbers_.try_emplace(offset, entries_.size());
        if (isNew) {
            entries_.push_back({stored.get(), offset, 0});
        }
        ++entries_[known->second].references;
        return static_cast<std::uint32_t>(known->second + 1);
    }

    static Bytes storeEntry(const Entry& entry) {
        const std::size_t size = entry.stored->size() - art::headerSize - art::fbseSize;
        LittleEndianWriter out;
        LittleEndianReader reader(*entry.stored, "OfficeArtFBSE");
        const art::RecordHeader header = art::readHeader(reader);
        art::writeRecord(out, header.version, header.instance, header.type,
                         reader.view(art::fbseSize));
        out.patchU32(art::headerSize + art::fbseSizeAt, static_cast<std::uint32_t>(size));
        out.patchU32(art::headerSize + art::fbseCountAt, entry.references);
        out.patchU32(art::headerSize + art::fbseDelayAt, entry.offset);
        return out.take();
    }

    void writeDrawing(unsigned label, ByteView group, std::uint32_t backgroundId) {
        LittleEndianWriter head;
        head.u32(static_cast<std::uint32_t>(ids_.size()) + 1);
        head.u32(lastId_);
        LittleEndianWriter drawing;
        drawing.bytes(record(0, number_, art::fdg, head.data()));
        drawing.bytes(record(art::container, 0, art::spgrContainer, group));
        if (backgroundId != 0) {
            drawing.bytes(background(backgroundId));
        }
        drawings_.u8(label);
        drawings_.bytes(record(art::container, 0, art::dgContainer, drawing.data()));
        ++drawingCount_;
    }

    Bytes clusterBlock() const {
        LittleEndianWriter block;
        const auto clusters = static_cast<std::uint32_t>(clusters_.size());
        block.u32((clusters + 1) * art::clusterSize + 2);
        block.u32(clusters + 1);
        block.u32(shapeCount_);
        block.u32(drawingCount_);
        for (const Cluster& cluster : clusters_) {
            block.u32(cluster.drawing);
            block.u32(cluster.used);
        }
        return record(0, 0, art::fdggBlock, block.data());
    }

    struct Chain {
        std::uint32_t number = 0;                      // of the text, counted from 1
        std::uint32_t length = 0;                      // how many shapes
        std::map<std::uint16_t, std::uint32_t> shapes; // by link
    };

    const DocumentTables& tables_;
    const DrawingStores& stores_;
    std::uint32_t number_ = 0; // of the drawing under work
    std::map<CopyKey, std::uint32_t> ids_;
    std::map<CopyKey, Chain> chains_;
    std::vector<Entry> entries_;
    std::unordered_map<std::uint32_t, std::size_t> numbers_; // of entries, by offset
    std::vector<Cluster> clusters_;
    std::uint32_t lastId_ = 0;
    std::uint32_t shapeCount_ = 0;
    std::uint32_t drawingCount_ = 0;
    LittleEndianWriter drawings_;
};

} // namespace

DrawingPart gatherDrawings(std::span<const Anchor> anchors, const DocumentTables& tables,
                           const std::shared_ptr<const Story>& closing) {
    DrawingPart part;
    std::unordered_map<std::uint32_t, std::uint32_t> copies;
    std::map<CopyKey, bool> known;
    for (const Anchor& anchor : anchors) {
        if (anchor.kind != AnchorKind::drawing) {
            continue;
        }
        const std::uint32_t copy = copies[anchor.index]++;
        part.places.push_back({anchor.at, anchor.index, copy});
        forEachShownText(
            tables.drawings.at(anchor.index), [&](std::uint32_t, const ShapeReference& text) {
                if (text.link != 0 || part.texts.size() == mostTexts ||
                    !known.try_emplace({text.index, copy}, true).second) {
                    return;
                }
                const std::shared_ptr<const Story>& story = tables.shapeTexts.at(text.index).text;
                part.texts.push_back({text.index, copy, part.length, story->size()});
                part.slices.push_back({story, 0, story->size()});
                part.length += story->size();
            });
    }
    if (!part.slices.empty()) {
        part.slices.push_back({closing, 0, closing->size()});
        part.length += closing->size();
    }
    return part;
}

EncodedDrawings encodeDrawings(const DrawingPart& main, Cp mainEnd, const DrawingPart& headers,
                               Cp headersEnd, const DocumentTables& tables,
                               const DrawingStores& stores) {
    EncodedDrawings result;
    if (main.places.empty() && headers.places.empty()) {
        return result;
    }
    DrawingsEncoding encoding(tables, stores);
    result.main = encoding.addDrawing(main, mainEnd, 0);
    if (!headers.places.empty()) {
        result.headers = encoding.addDrawing(headers, headersEnd, 1);
    }
    result.content = encoding.content();
    return result;
}

} // namespace qvnd::word
