#include "platform/word/docfile/document/DataBlobs.h"

#include "platform/word/docfile/format/OfficeArt.h"

namespace qvnd::word {

namespace {

constexpr std::size_t smallestHead = 14; // lcb, cbHeader, mfpf
constexpr std::size_t headSizeAt = 4;
constexpr std::size_t kindAt = 6;
constexpr std::size_t picfSize = 0x44;
constexpr std::size_t formFieldHead = 12; // version, bits, cch, hps, length of the name
constexpr unsigned inlineShape = 0x64;    // mfpf.mm of a picture in line
constexpr unsigned linkedShape = 0x66;    // the same with the name of its file in front

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

std::optional<std::u16string> formFieldName(ByteView blob) {
    constexpr std::size_t beforeName = 6; // bits, cch, hps
    if (blob.size() < picfSize + formFieldHead) {
        return std::nullopt;
    }
    LittleEndianReader reader(blob, "FFData");
    reader.seek(picfSize);
    if (reader.u32() != 0xFFFFFFFF) {
        return std::nullopt;
    }
    reader.skip(beforeName);
    const std::size_t length = reader.u16();
    return 2 * length <= reader.remaining() ? std::optional(reader.text(length)) : std::nullopt;
}

Bytes withFormFieldName(ByteView blob, std::u16string_view name) {
    constexpr std::size_t longestName = 20;
    const std::u16string_view fits = name.size() <= longestName ? name : std::u16string_view();
    const std::size_t nameAt = picfSize + formFieldHead;
    LittleEndianReader former(blob, "FFData");
    former.seek(nameAt - 2);
    const std::size_t behind = nameAt + std::size_t{2} * former.u16();
    LittleEndianWriter changed;
    changed.bytes(blob.first(nameAt - 2));
    changed.u16(static_cast<unsigned>(fits.size()));
    changed.text(fits);
    changed.bytes(blob.subspan(behind));
    changed.patchU32(0, static_cast<std::uint32_t>(changed.position()));
    return changed.take();
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
