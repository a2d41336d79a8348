#include "platform/word/docfile/pictures/ShapeLinks.h"

#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/format/OfficeArt.h"
#include "platform/word/docfile/format/ShapeProperties.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>
#include <vector>

namespace qvnd::word {

namespace {

constexpr std::array<std::uint8_t, 16> linkClass{0xD0, 0xC9, 0xEA, 0x79, 0xF9, 0xBA, 0xCE, 0x11,
                                                 0x8C, 0x82, 0x00, 0xAA, 0x00, 0x4B, 0xA9, 0x0B};

// The name that a link bears: its length, its characters and a zero at their end.
struct LinkName {
    std::size_t at = 0; // offset in the link
    std::size_t size = 0;
    std::u16string name;
};

// That of a bookmark of the same document, [MS-OSHARED] 2.3.7.1. Nothing for a link to elsewhere.
// Throws FormatError for a link that breaks off.
std::optional<LinkName> bookmarkIn(ByteView link) {
    constexpr std::uint32_t hasMoniker = 0x01;
    constexpr std::uint32_t hasLocation = 0x08;
    constexpr std::uint32_t hasDisplayName = 0x10;
    constexpr std::uint32_t hasFrameName = 0x80;
    LittleEndianReader reader(link, "IHlink");
    const ByteView kind = reader.view(linkClass.size());
    if (!std::equal(kind.begin(), kind.end(), linkClass.begin(), linkClass.end())) {
        return std::nullopt;
    }
    reader.skip(4); // version
    const std::uint32_t flags = reader.u32();
    if ((flags & hasMoniker) != 0 || (flags & hasLocation) == 0) {
        return std::nullopt;
    }
    for (const std::uint32_t inFront : {hasDisplayName, hasFrameName}) {
        if ((flags & inFront) != 0) {
            reader.skip(2 * std::size_t{reader.u32()});
        }
    }
    LinkName found;
    found.at = reader.position();
    found.name = reader.text(reader.u32());
    found.name.resize(std::min(found.name.find(u'\0'), found.name.size()));
    found.size = reader.position() - found.at;
    return found;
}

// A link that nobody can follow has none.
std::optional<LinkName> bookmarkOf(ByteView link) {
    try {
        return bookmarkIn(link);
    } catch (const FormatError&) {
        return std::nullopt;
    }
}

Bytes encodedName(std::u16string_view name) {
    LittleEndianWriter writer;
    writer.u32(static_cast<std::uint32_t>(name.size() + 1));
    writer.text(name);
    writer.u16(0);
    return writer.take();
}

// A name that becomes another one, and the lengths (32 bits each) that count its bytes.
struct Change {
    std::size_t at = 0;
    std::size_t size = 0;
    Bytes name;
    std::vector<std::size_t> lengthsAt;

    std::uint32_t growth() const { return static_cast<std::uint32_t>(name.size() - size); }
};

// Finds the links in bytes that stay as they are meanwhile.
class LinkSearch {
public:
    LinkSearch(ByteView bytes, const NewBookmarkName& newName) : bytes_(bytes), newName_(newName) {}

    // `lengthsAt`: where lengths stand that count the link.
    void link(std::size_t at, std::size_t size, const std::vector<std::size_t>& lengthsAt) {
        const auto found = bookmarkOf(bytes_.subspan(at, size));
        if (!found) {
            return;
        }
        if (const auto name = newName_(found->name)) {
            changes_.push_back({at + found->at, found->size, encodedName(*name), lengthsAt});
        }
    }

    // The links of all shapes among the records from `at` to the end, which are whole.
    void records(std::size_t at, std::vector<std::size_t> lengthsAt) {
        std::vector<std::size_t> ends; // of the containers around a record
        LittleEndianReader reader(bytes_, "OfficeArt");
        reader.seek(at);
        while (reader.remaining() >= art::headerSize) {
            while (!ends.empty() && reader.position() >= ends.back()) {
                ends.pop_back();
                lengthsAt.pop_back();
            }
            const art::RecordHeader header = art::readHeader(reader);
            lengthsAt.push_back(reader.position() - 4);
            if (header.version == art::container) {
                ends.push_back(reader.position() + header.length);
                continue;
            }
            if (isProperties(header.type)) {
                properties(reader.position(), header, lengthsAt);
            }
            lengthsAt.pop_back();
            reader.skip(header.length);
        }
    }

    std::vector<Change> take() { return std::move(changes_); }

private:
    static bool isProperties(std::uint16_t type) {
        return type == art::fopt || type == art::secondaryFopt || type == art::tertiaryFopt;
    }

    void properties(std::size_t at, const art::RecordHeader& header,
                    const std::vector<std::size_t>& lengthsAt) {
        const art::ShapeProperties all(bytes_.subspan(at, header.length), header.instance);
        const auto entries = all.entries();
        const auto found = std::find_if(entries.begin(), entries.end(), [](const auto& entry) {
            return entry.opid == art::shapeLink && entry.complexSize > 0;
        });
        if (found != entries.end()) {
            std::vector<std::size_t> lengths = lengthsAt;
            lengths.push_back(at + found->valueAt);
            link(at + found->complexAt, found->complexSize, lengths);
        }
    }

    ByteView bytes_;
    const NewBookmarkName& newName_;
    std::vector<Change> changes_; // ascending
};

Bytes changed(ByteView bytes, const std::vector<Change>& changes) {
    Bytes counted(bytes.begin(), bytes.end());
    for (const Change& change : changes) {
        for (const std::size_t at : change.lengthsAt) {
            LittleEndianReader reader(counted, "length");
            reader.seek(at);
            const std::uint32_t length = reader.u32() + change.growth();
            for (unsigned i = 0; i < 4; ++i) {
                counted[at + i] = static_cast<std::uint8_t>(length >> (8 * i));
            }
        }
    }
    Bytes result;
    std::size_t done = 0;
    for (const Change& change : changes) {
        const auto from = counted.begin() + static_cast<std::ptrdiff_t>(done);
        const auto to = counted.begin() + static_cast<std::ptrdiff_t>(change.at);
        result.insert(result.end(), from, to);
        result.insert(result.end(), change.name.begin(), change.name.end());
        done = change.at + change.size;
    }
    result.insert(result.end(), counted.begin() + static_cast<std::ptrdiff_t>(done), counted.end());
    return result;
}

// Both ascend.
void moveReferences(std::vector<ShapeReference>& references, const std::vector<Change>& changes) {
    std::uint32_t growth = 0;
    auto next = changes.begin();
    for (ShapeReference& reference : references) {
        for (; next != changes.end() && next->at < reference.at; ++next) {
            growth += next->growth();
        }
        reference.at += growth;
    }
}

// Throws FormatError.
std::vector<Change> changesInBlob(ByteView blob, const NewBookmarkName& newName) {
    constexpr std::size_t headSizeAt = 4;
    constexpr unsigned inlineShape = 0x64; // mfpf.mm of a picture in line
    constexpr unsigned linkedShape = 0x66; // the same with the name of its file in front
    const std::vector<std::size_t> blobLength{0};
    LittleEndianReader reader(blob, "PICF");
    reader.seek(headSizeAt);
    const std::size_t headSize = reader.u16();
    const unsigned kind = reader.u16();
    reader.seek(headSize);
    LinkSearch search(blob, newName);
    if (kind == linkedShape) {
        reader.skip(reader.u8());
    }
    if (kind == inlineShape || kind == linkedShape) {
        search.records(reader.position(), blobLength);
    } else {
        reader.skip(1); // what the field's switches say
        search.link(reader.position(), reader.remaining(), blobLength);
    }
    return search.take();
}

} // namespace

void renameLinks(Drawing& drawing, const NewBookmarkName& newName) {
    LinkSearch search(drawing.records, newName);
    try {
        search.records(0, {});
    } catch (const FormatError&) {
        return;
    }
    const std::vector<Change> changes = search.take();
    if (!changes.empty()) {
        drawing.records = changed(drawing.records, changes);
        moveReferences(drawing.references, changes);
    }
}

std::optional<Bytes> withRenamedLinks(ByteView blob, const NewBookmarkName& newName) {
    try {
        const std::vector<Change> changes = changesInBlob(blob, newName);
        return changes.empty() ? std::nullopt : std::optional(changed(blob, changes));
    } catch (const FormatError&) {
        return std::nullopt;
    }
}

} // namespace qvnd::word
