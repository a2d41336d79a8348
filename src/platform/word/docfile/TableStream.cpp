#include "platform/word/docfile/TableStream.h"

#include <algorithm>

namespace qvnd::word {

namespace {

constexpr std::size_t sectorSize = CompoundStore::sectorSize;
constexpr std::size_t leastSize = 4096;

std::size_t wholeSectors(std::size_t size) {
    return (size + sectorSize - 1) / sectorSize * sectorSize;
}

} // namespace

void TableStream::put(FibPair pair, const Bytes& bytes) { put(pair, bytes, bytes.size()); }

void TableStream::put(FibPair pair, const Bytes& bytes, std::size_t counted) {
    Extent& extent = extents_[pair];
    extent.counted = static_cast<std::uint32_t>(counted);
    if (bytes.size() > extent.bytes.size()) {
        appendExtent(extent, bytes);
    } else {
        changeExtent(extent, bytes);
    }
}

// A structure that has outgrown its place gets a new one of twice the size, so that growing step by
// step costs no more than a constant times its last size.
void TableStream::appendExtent(Extent& extent, const Bytes& bytes) {
    const bool outgrown = !extent.bytes.empty();
    extent.offset = store_.size(stream_);
    extent.bytes = bytes;
    extent.bytes.resize(wholeSectors(outgrown ? 2 * bytes.size() : bytes.size()));
    store_.append(stream_, extent.bytes);
}

void TableStream::changeExtent(Extent& extent, const Bytes& bytes) {
    Bytes now = bytes;
    now.resize(std::min(wholeSectors(bytes.size()), extent.bytes.size()));
    for (std::size_t at = 0; at < now.size(); at += sectorSize) {
        const ByteView sector = ByteView(now).subspan(at, sectorSize);
        const auto place = extent.bytes.begin() + static_cast<std::ptrdiff_t>(at);
        if (!std::equal(sector.begin(), sector.end(), place)) {
            store_.overwrite(stream_, extent.offset + static_cast<std::uint32_t>(at), sector);
            std::copy(sector.begin(), sector.end(), place);
        }
    }
}

void TableStream::finish() {
    if (store_.size(stream_) < leastSize) {
        store_.append(stream_, Bytes(leastSize - store_.size(stream_)));
    }
}

FcLcb TableStream::place(FibPair pair) const {
    const auto found = extents_.find(pair);
    if (found == extents_.end() || found->second.counted == 0) {
        return {};
    }
    return {found->second.offset, found->second.counted};
}

} // namespace qvnd::word
