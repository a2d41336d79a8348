#include "platform/word/docfile/document/DataBlobs.h"

namespace qvnd::word {

namespace {

constexpr std::size_t smallestHead = 14; // lcb, cbHeader, mfpf

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
    if (const auto found = dataBlobAt(dataStream_, offset)) {
        index = static_cast<std::uint32_t>(blobs_.size());
        blobs_.push_back(std::make_shared<const Bytes>(found->begin(), found->end()));
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
