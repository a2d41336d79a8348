#include "platform/word/docfile/document/DataBlobs.h"

#include "platform/word/docfile/format/OfficeArt.h"

namespace qvnd::word {

namespace {

constexpr std::size_t smallestHead = 14; // lcb, cbHeader, mfpf
constexpr std::size_t headSizeAt = 4;
constexpr std::size_t kindAt = 6;
constexpr std::size_t picfSize = 0x44;
constexpr unsigned inlineShape = 0x64; // mfpf.mm of a picture in line
constexpr unsigned linkedShape = 0x66; // the same with the name of its file in front

// Whether what lies behind the PICF is whole; other kinds than pictures are looked at by nobody.
bool isWhole(ByteView blob) {
    LittleEndianReader reader(blob, "PICF");
    reader.seek(kindAt);
    const unsigned kind = reader.u16();
    if (kind != inlineShape && kind != linkedShape) {
        return true;
    }
    reader.seek(picfSize);
    if (kind == linkedShape) {
        const std::size_t name = reader.remaining() > 0 ? reader.u8() : 0;
        if (name > reader.remaining()) {
            return false;
        }
        reader.skip(name);
    }
    return art::recordsAreWhole(reader.view(reader.remaining()), art::spContainer);
}

// The blob with the head that every one of them has; nothing when it is not whole.
std::optional<Bytes> soundBlob(ByteView found) {
    if (found.size() < picfSize) {
        return std::nullopt;
    }
    Bytes blob(found.begin(), found.end());
    blob[headSizeAt] = picfSize;
    blob[headSizeAt + 1] = 0;
    return isWhole(blob) ? std::optional(std::move(blob)) : std::nullopt;
}

} // namespace

std::optional<ByteView> dataBlobAt(ByteView dataStream, std::uint32_t offset) {
    if (offset > dataStream.size() || dataStream.size() - offset < smallestHead) {
        return std::nullopt;
    }
    LittleEndianReader reader(dataStream.subspan(offset), "PICF");
    const std::size_t size = reader.u32();
    const std::size_t headSize = reader.u16();
    if (headSize < smallestHead || size < headSize || size > dataStream.size() - offset) {
        return std::nullopt;
    }
    return dataStream.subspan(offset, size);
}

std::optional<std::uint32_t> DataBlobCollector::indexOf(std::uint32_t offset) {
    if (const auto known = known_.find(offset); known != known_.end()) {
        return known->second;
    }
    std::optional<std::uint32_t> index;
    const auto found = dataBlobAt(dataStream_, offset);
    const bool fits = found && budget_.take(found->size());
    if (auto blob = fits ? soundBlob(*found) : std::nullopt) {
        index = static_cast<std::uint32_t>(blobs_.size());
        blobs_.push_back(std::make_shared<const Bytes>(*std::move(blob)));
    }
    known_.emplace(offset, index);
    return index;
}

std::vector<std::uint32_t> encodeDataBlobs(const std::vector<DataBlob>& blobs, std::size_t start,
                                           LittleEndianWriter& dataStream) {
    std::vector<std::uint32_t> offsets;
    const std::size_t before = dataStream.position();
    for (const DataBlob& blob : blobs) {
        offsets.push_back(static_cast<std::uint32_t>(start + dataStream.position() - before));
        dataStream.bytes(*blob);
    }
    return offsets;
}

} // namespace qvnd::word
