#include "platform/word/docfile/FloatingPictures.h"

#include "platform/word/docfile/FormatError.h"
#include "platform/word/docfile/OfficeArt.h"
#include "platform/word/docfile/Picture.h"
#include "platform/word/docfile/Plc.h"

#include <algorithm>
#include <unordered_map>

namespace qvnd::word {

namespace {

constexpr std::uint16_t drawingGroup = 0xF000; // OfficeArtDggContainer
constexpr std::uint16_t pictureStore = 0xF001; // OfficeArtBStoreContainer
constexpr std::uint16_t drawing = 0xF002;      // OfficeArtDgContainer
constexpr std::uint16_t shapeGroup = 0xF003;   // OfficeArtSpgrContainer
constexpr unsigned pictureFrame = 75;          // MSOSPT
constexpr std::uint16_t textOfShape = 0x0080;  // opid lTxid
constexpr std::size_t anchorSize = 26;         // Spa
constexpr std::size_t entrySize = 36;          // OfficeArtFBSE without name and picture
constexpr std::size_t delayAt = 28;            // foDelay
constexpr std::size_t nameSizeAt = 33;         // cbName

struct Shape {
    unsigned kind = 0;
    art::ShapeProperties properties;
};

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

// The drawings of a document: pictures by number, shapes by identifier.
class Drawings {
public:
    explicit Drawings(const DrawingStreams& streams) : wordDocument_(streams.wordDocument) {
        LittleEndianReader reader(streams.drawings, "OfficeArtContent");
        while (reader.remaining() >= art::headerSize) {
            const art::RecordHeader header = art::readHeader(reader);
            const ByteView content = reader.view(header.length);
            if (header.type == drawingGroup) {
                readGroup(content);
            } else if (header.type == drawing) {
                readDrawing(content);
            }
            reader.skip(std::min<std::size_t>(reader.remaining(), 1)); // dgglbl of what follows
        }
    }

    const Shape* shape(std::uint32_t id) const {
        const auto found = shapes_.find(id);
        return found != shapes_.end() ? &found->second : nullptr;
    }
    // Counted from 1; empty when there is no such picture.
    Bytes picture(std::uint32_t number) const {
        return number >= 1 && number <= pictures_.size() ? pictures_[number - 1] : Bytes{};
    }

private:
    void readGroup(ByteView records) {
        forEachRecord(records, [&](const art::RecordHeader& header, ByteView content) {
            if (header.type == pictureStore) {
                forEachRecord(content, [&](const art::RecordHeader& entry, ByteView bytes) {
                    pictures_.push_back(storeEntry(entry, bytes, wordDocument_));
                });
            }
        });
    }

    // Shapes of groups within the drawing are placed by their groups and stay out.
    void readDrawing(ByteView records) {
        forEachRecord(records, [&](const art::RecordHeader& header, ByteView content) {
            if (header.type == shapeGroup) {
                forEachRecord(content, [&](const art::RecordHeader& inner, ByteView shape) {
                    if (inner.type == art::spContainer) {
                        readShape(shape);
                    }
                });
            }
        });
    }

    void readShape(ByteView records) {
        Shape shape;
        std::uint32_t id = 0;
        forEachRecord(records, [&](const art::RecordHeader& header, ByteView content) {
            if (header.type == art::fsp) {
                shape.kind = header.instance;
                id = LittleEndianReader(content, "OfficeArtFSP").u32();
            } else if (header.type == art::fopt) {
                shape.properties = art::ShapeProperties(content, header.instance);
            }
        });
        shapes_.insert_or_assign(id, std::move(shape));
    }

    ByteView wordDocument_;
    std::vector<Bytes> pictures_;
    std::unordered_map<std::uint32_t, Shape> shapes_;
};

DataBlob inlineForm(const Drawings& drawings, ByteView anchor) {
    LittleEndianReader reader(anchor, "Spa");
    const Shape* shape = drawings.shape(reader.u32());
    const std::int64_t left = reader.i32();
    const std::int64_t top = reader.i32();
    const std::int64_t width = reader.i32() - left;
    const std::int64_t height = reader.i32() - top;
    if (shape == nullptr || shape->kind != pictureFrame || shape->properties.value(textOfShape)) {
        return nullptr;
    }
    const Bytes entry = drawings.picture(shape->properties.value(art::pib).value_or(0));
    if (entry.empty() || width <= 0 || height <= 0) {
        return nullptr;
    }
    return Picture::fromStore(entry, shape->properties, width, height).blob();
}

} // namespace

std::vector<FloatingPicture> readFloatingPictures(const DrawingStreams& streams) {
    std::vector<FloatingPicture> pictures;
    const Plc anchors = decodePlc(streams.anchors, anchorSize);
    if (anchors.count() == 0) {
        return pictures;
    }
    try {
        const Drawings drawings(streams);
        for (std::size_t i = 0; i < anchors.count(); ++i) {
            if (DataBlob form = inlineForm(drawings, anchors.element(i))) {
                pictures.push_back({anchors.positions[i], std::move(form)});
            }
        }
    } catch (const FormatError&) {
        pictures.clear(); // the drawings stay uncarried, and are counted as such
    }
    std::sort(pictures.begin(), pictures.end(),
              [](const FloatingPicture& a, const FloatingPicture& b) { return a.at < b.at; });
    return pictures;
}

} // namespace qvnd::word
