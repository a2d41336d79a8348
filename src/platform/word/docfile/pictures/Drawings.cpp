#include "platform/word/docfile/pictures/Drawings.h"

#include "platform/word/docfile/container/FormatError.h"

#include <algorithm>
#include <utility>

namespace qvnd::word {

namespace {

constexpr std::uint16_t drawingGroup = 0xF000;  // OfficeArtDggContainer
constexpr std::uint16_t pictureStore = 0xF001;  // OfficeArtBStoreContainer
constexpr std::uint16_t drawing = 0xF002;       // OfficeArtDgContainer
constexpr std::uint16_t shapeGroup = 0xF003;    // OfficeArtSpgrContainer
constexpr std::uint16_t clientTextbox = 0xF00D; // OfficeArtClientTextbox
constexpr std::uint16_t textOfShape = 0x0080;   // opid lTxid
constexpr std::size_t entrySize = 36;           // OfficeArtFBSE without name and picture
constexpr std::size_t delayAt = 28;             // foDelay
constexpr std::size_t nameSizeAt = 33;          // cbName
constexpr int deepestGroup = 64;

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

Bytes wholeRecord(const art::RecordHeader& header, ByteView content) {
    LittleEndianWriter writer;
    art::writeRecord(writer, header.version, header.instance, header.type, content);
    return writer.take();
}

bool isPicture(std::uint16_t type) { return type >= 0xF018 && type <= 0xF117; }

// The picture record at that offset; nothing when there is none.
Bytes delayedPicture(ByteView stream, std::uint32_t offset) {
    if (offset > stream.size()) {
        return {};
    }
    Bytes found;
    LittleEndianReader reader(stream.subspan(offset), "OfficeArtBlip");
    if (reader.remaining() >= art::headerSize) {
        const art::RecordHeader header = art::readHeader(reader);
        if (isPicture(header.type) && header.length <= reader.remaining()) {
            found = wholeRecord(header, reader.view(header.length));
        }
    }
    return found;
}

// An entry of the store with its picture in it; empty when it has none.
Bytes storeEntry(const art::RecordHeader& header, ByteView content, ByteView wordDocument) {
    if (isPicture(header.type)) {
        return wholeRecord(header, content);
    }
    if (header.type != art::fbse || content.size() < entrySize) {
        return {};
    }
    Bytes entry(content.begin(), content.begin() + entrySize);
    const std::size_t picturesAt = entrySize + entry[nameSizeAt];
    Bytes picture;
    if (content.size() > picturesAt + art::headerSize) {
        picture.assign(content.begin() + static_cast<std::ptrdiff_t>(picturesAt), content.end());
    } else {
        LittleEndianReader reader(content, "OfficeArtFBSE");
        reader.seek(delayAt);
        picture = delayedPicture(wordDocument, reader.u32());
    }
    if (picture.empty()) {
        return {};
    }
    entry[nameSizeAt] = 0;
    std::fill_n(entry.begin() + delayAt, 4, std::uint8_t{0});
    entry.insert(entry.end(), picture.begin(), picture.end());
    return wholeRecord({header.version, header.instance, header.type, 0}, entry);
}

std::optional<ShapeText> shapeText(std::uint32_t id) {
    const auto number = static_cast<std::uint16_t>(id >> 16);
    if (number == 0) {
        return std::nullopt;
    }
    return ShapeText{number, static_cast<std::uint16_t>(id)};
}

} // namespace

Drawings::Drawings(ByteView content, ByteView wordDocument) : wordDocument_(wordDocument) {
    try {
        read(content);
    } catch (const FormatError&) {
        return; // what was read before stands; the rest is counted by its anchors
    }
}

void Drawings::read(ByteView content) {
    LittleEndianReader reader(content, "OfficeArtContent");
    while (reader.remaining() >= art::headerSize) {
        const art::RecordHeader header = art::readHeader(reader);
        const ByteView records = reader.view(header.length);
        if (header.type == drawingGroup) {
            readStore(records);
        } else if (header.type == drawing) {
            readDrawing(records);
        }
        reader.skip(std::min<std::size_t>(reader.remaining(), 1)); // dgglbl of what follows
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

void Drawings::readStore(ByteView records) {
    forEachRecord(records, [&](const art::RecordHeader& header, ByteView content) {
        if (header.type == pictureStore) {
            forEachRecord(content, [&](const art::RecordHeader& entry, ByteView bytes) {
                pictures_.push_back({entry, bytes});
            });
        }
    });
}

void Drawings::readDrawing(ByteView records) {
    forEachRecord(records, [&](const art::RecordHeader& header, ByteView content) {
        if (header.type == shapeGroup) {
            // The drawing's own group is no shape; what it holds is anchored.
            forEachRecord(content, [&](const art::RecordHeader& inner, ByteView shape) {
                if (inner.type == art::spContainer) {
                    readShape(shape, 0);
                } else if (inner.type == shapeGroup) {
                    readGroup(shape, 0, 1);
                }
            });
        }
    });
}

void Drawings::readGroup(ByteView records, std::uint32_t outermost, int depth) {
    // The first shape is the group itself.
    forEachRecord(records, [&](const art::RecordHeader& header, ByteView content) {
        if (header.type == art::spContainer) {
            const std::uint32_t id = readShape(content, outermost);
            outermost = outermost == 0 ? id : outermost;
        } else if (header.type == shapeGroup && depth < deepestGroup) {
            readGroup(content, outermost, depth + 1);
        }
    });
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
        } else if (header.type == clientTextbox) {
            shape.text = shapeText(LittleEndianReader(content, "OfficeArtClientTextbox").u32());
        }
    });
    if (const auto text = shapeText(shape.properties.value(textOfShape).value_or(0))) {
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
