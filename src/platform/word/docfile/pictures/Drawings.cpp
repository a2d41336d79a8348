#include "platform/word/docfile/pictures/Drawings.h"

#include "platform/word/docfile/container/FormatError.h"

#include <algorithm>
#include <utility>

namespace qvnd::word {

namespace {

constexpr int deepestRead = 64;
constexpr unsigned entryVersion = 2; // of OfficeArtFBSE

// Calls `visit` with each record of a container, up to the first that does not fit.
template <class Visit>
void forEachRecord(ByteView records, Visit visit) {
    LittleEndianReader reader(records, "OfficeArt");
    while (reader.remaining() >= art::headerSize) {
        const art::RecordHeader header = art::readHeader(reader);
        if (header.length > reader.remaining()) {
            return;
        }
        visit(header, reader.view(header.length));
    }
}

// The record whose content that is.
ByteView wholeView(ByteView content) {
    return {content.data() - art::headerSize, content.size() + art::headerSize};
}

Bytes wholeRecord(const art::RecordHeader& header, ByteView content) {
    LittleEndianWriter writer;
    art::writeRecord(writer, header.version, header.instance, header.type, content);
    return writer.take();
}

// The picture record at that offset; nothing when there is none.
Bytes pictureAt(ByteView stream, std::uint32_t offset) {
    if (offset > stream.size()) {
        return {};
    }
    Bytes found;
    LittleEndianReader reader(stream.subspan(offset), "OfficeArtBlip");
    if (reader.remaining() >= art::headerSize) {
        const art::RecordHeader header = art::readHeader(reader);
        if (art::isBlip(header.type) && header.length <= reader.remaining()) {
            // No picture holds records, whatever a damaged one says.
            found = wholeRecord({0, header.instance, header.type, 0}, reader.view(header.length));
        }
    }
    return found;
}

// An entry of a store around a picture that has none: its kind, its digest.
Bytes entryAround(ByteView blip) {
    LittleEndianReader reader(blip, "OfficeArtBlip");
    const art::RecordHeader header = art::readHeader(reader);
    constexpr std::size_t digestSize = 16;
    if (reader.remaining() < digestSize) {
        return {};
    }
    constexpr unsigned firstKind = art::blipEmf - 2; // MSOBLIPTYPE: 2 for EMF, and so on
    const unsigned kind = (header.type - firstKind) & 0xFF;
    LittleEndianWriter entry;
    entry.u8(kind);
    entry.u8(kind);
    entry.bytes(reader.view(digestSize));
    entry.u16(0xFF);
    entry.u32(static_cast<std::uint32_t>(blip.size()));
    entry.zeros(art::fbseSize - entry.position());
    entry.bytes(blip);
    LittleEndianWriter whole;
    art::writeRecord(whole, entryVersion, kind, art::fbse, entry.data());
    return whole.take();
}

// An entry of the store with its picture in it; empty when it has none.
Bytes storeEntry(const art::RecordHeader& header, ByteView content, ByteView wordDocument) {
    if (art::isBlip(header.type)) {
        return entryAround(wholeRecord({0, header.instance, header.type, 0}, content));
    }
    if (header.type != art::fbse || content.size() < art::fbseSize) {
        return {};
    }
    Bytes entry(content.begin(), content.begin() + art::fbseSize);
    const std::size_t picturesAt = art::fbseSize + entry[art::fbseNameAt];
    Bytes picture;
    if (content.size() > picturesAt + art::headerSize) {
        picture = pictureAt(content, static_cast<std::uint32_t>(picturesAt));
    } else {
        LittleEndianReader reader(content, "OfficeArtFBSE");
        reader.seek(art::fbseDelayAt);
        picture = pictureAt(wordDocument, reader.u32());
    }
    if (picture.empty()) {
        return {};
    }
    entry[art::fbseNameAt] = 0;
    std::fill_n(entry.begin() + art::fbseDelayAt, 4, std::uint8_t{0});
    entry.insert(entry.end(), picture.begin(), picture.end());
    return wholeRecord({entryVersion, header.instance, header.type, 0}, entry);
}

std::optional<TextOfShape> shapeText(std::uint32_t id) {
    const auto number = static_cast<std::uint16_t>(id >> 16);
    if (number == 0) {
        return std::nullopt;
    }
    return TextOfShape{number, static_cast<std::uint16_t>(id)};
}

} // namespace

Drawings::Drawings(ByteView content, ByteView wordDocument)
    : wordDocument_(wordDocument), contentSize_(content.size()) {
    try {
        read(content);
    } catch (const FormatError&) {
        return; // what was read before stands; the rest is counted by its anchors
    }
}

void Drawings::read(ByteView content) {
    LittleEndianReader reader(content, "OfficeArtContent");
    unsigned label = 0; // dgglbl
    while (reader.remaining() >= art::headerSize) {
        const art::RecordHeader header = art::readHeader(reader);
        const ByteView records = reader.view(header.length);
        if (header.type == art::dggContainer) {
            readShared(records);
        } else if (header.type == art::dgContainer) {
            readDrawing(label == 0 ? DrawingOf::main : DrawingOf::headers, records);
        }
        label = reader.atEnd() ? 0 : reader.u8();
    }
}

const Shape* Drawings::shape(std::uint32_t id) const {
    const auto found = shapes_.find(id);
    return found != shapes_.end() ? &found->second : nullptr;
}

const Shape* Drawings::shapeOfText(std::size_t number) const {
    const auto found = shapesOfTexts_.find(number);
    return found != shapesOfTexts_.end() ? shape(found->second) : nullptr;
}

Bytes Drawings::picture(std::uint32_t number) const {
    if (number < 1 || number > pictures_.size()) {
        return {};
    }
    const StoreEntry& entry = pictures_[number - 1];
    return storeEntry(entry.header, entry.content, wordDocument_);
}

ByteView Drawings::anchored(DrawingOf part, std::uint32_t id) const {
    const auto& shapes = anchored_[static_cast<std::size_t>(part)];
    const auto found = shapes.find(id);
    return found == shapes.end() ? ByteView() : found->second.record;
}

std::uint32_t Drawings::orderOf(DrawingOf part, std::uint32_t id) const {
    const auto& shapes = anchored_[static_cast<std::size_t>(part)];
    const auto found = shapes.find(id);
    return found == shapes.end() ? 0 : found->second.order;
}

void Drawings::readShared(ByteView records) {
    forEachRecord(records, [&](const art::RecordHeader& header, ByteView content) {
        if (header.type == art::bstoreContainer) {
            forEachRecord(content, [&](const art::RecordHeader& entry, ByteView bytes) {
                pictures_.push_back({entry, bytes});
            });
        } else if (header.type == art::fopt) {
            defaults_ = art::ShapeProperties(content, header.instance);
        }
    });
}

void Drawings::readDrawing(DrawingOf part, ByteView records) {
    auto& anchored = anchored_[static_cast<std::size_t>(part)];
    forEachRecord(records, [&](const art::RecordHeader& header, ByteView content) {
        if (header.type == art::spContainer && part == DrawingOf::main) {
            background_ = wholeView(content);
        }
        if (header.type != art::spgrContainer) {
            return;
        }
        // The drawing's own group is no shape; what it holds is anchored.
        forEachRecord(content, [&](const art::RecordHeader& inner, ByteView shape) {
            std::uint32_t id = 0;
            if (inner.type == art::spContainer) {
                id = readShape(shape, 0);
            } else if (inner.type == art::spgrContainer) {
                id = readGroup(shape, 0, 1);
            }
            const auto order = static_cast<std::uint32_t>(anchored.size());
            anchored.try_emplace(id, Anchored{wholeView(shape), order});
        });
    });
}

std::uint32_t Drawings::readGroup(ByteView records, std::uint32_t outermost, int depth) {
    // The first shape is the group itself.
    forEachRecord(records, [&](const art::RecordHeader& header, ByteView content) {
        if (header.type == art::spContainer) {
            const std::uint32_t id = readShape(content, outermost);
            outermost = outermost == 0 ? id : outermost;
        } else if (header.type == art::spgrContainer && depth < deepestRead) {
            readGroup(content, outermost, depth + 1);
        }
    });
    return outermost;
}

std::uint32_t Drawings::readShape(ByteView records, std::uint32_t outermost) {
    Shape shape;
    std::uint32_t id = 0;
    forEachRecord(records, [&](const art::RecordHeader& header, ByteView content) {
        if (header.type == art::fsp) {
            shape.kind = header.instance;
            id = LittleEndianReader(content, "OfficeArtFSP").u32();
        } else if (header.type == art::fopt) {
            shape.properties = art::ShapeProperties(content, header.instance);
        } else if (header.type == art::clientTextbox) {
            shape.text = shapeText(LittleEndianReader(content, "OfficeArtClientTextbox").u32());
        }
    });
    if (const auto text = shapeText(shape.properties.value(art::textOfShape).value_or(0))) {
        shape.text = text;
    }
    if (shape.text && shape.text->link == 0) {
        shapesOfTexts_.try_emplace(shape.text->number, id);
    }
    shape.id = id;
    shape.outermost = outermost == 0 ? id : outermost;
    shapes_.insert_or_assign(id, std::move(shape));
    return id;
}

} // namespace qvnd::word
