#include "platform/word/docfile/writer/TableStream.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <utility>

namespace qvnd::word {

namespace {

constexpr std::size_t sectorSize = CompoundStore::sectorSize;
constexpr std::size_t leastSize = 4096;

std::size_t wholeSectors(std::size_t size) {
    return (size + sectorSize - 1) / sectorSize * sectorSize;
}

// A structure that has outgrown its place gets half as much again, so that growing step by step
// costs no more than a constant times its last size. Places that it has left make room for a later
// one.
std::size_t roomFor(std::size_t size, bool outgrown) {
    return wholeSectors(outgrown ? size + size / 2 : size);
}

} // namespace

void TableStream::put(FibPair pair, const std::array<ByteView, 2>& parts) {
    Extent& extent = extents_[pair];
    const std::size_t size = parts[0].size() + parts[1].size();
    extent.counted = static_cast<std::uint32_t>(size);
    if (size > extent.bytes.size()) {
        Bytes place(roomFor(size, !extent.bytes.empty()));
        const auto behind = std::copy(parts[0].begin(), parts[0].end(), place.begin());
        std::copy(parts[1].begin(), parts[1].end(), behind);
        move(extent, std::move(place));
    } else {
        change(extent, 0, parts);
    }
}

void TableStream::putFront(FibPair pair, ByteView front, std::size_t kept, std::size_t counted) {
    Extent& extent = extents_[pair];
    const std::size_t size = front.size() + kept;
    if (kept > extent.bytes.size() - extent.begin) {
        throw std::invalid_argument("more of a structure is kept than there is");
    }
    extent.counted = static_cast<std::uint32_t>(counted);
    if (size > extent.bytes.size()) {
        Bytes place(roomFor(size, !extent.bytes.empty()));
        std::copy(extent.bytes.end() - static_cast<std::ptrdiff_t>(kept), extent.bytes.end(),
                  place.end() - static_cast<std::ptrdiff_t>(kept));
        std::copy(front.begin(), front.end(), place.end() - static_cast<std::ptrdiff_t>(size));
        move(extent, std::move(place));
    } else {
        change(extent, extent.bytes.size() - size, {front, ByteView{}});
    }
    extent.begin = extent.bytes.size() - size;
}

void TableStream::putAround(FibPair pair, ByteView front, const Kept& kept, ByteView back) {
    Extent& extent = extents_[pair];
    if (kept.from + kept.count > extent.counted) {
        throw std::invalid_argument("more of a structure is kept than there is");
    }
    const std::size_t size = front.size() + kept.count + back.size();
    const std::size_t room = extent.bytes.size();
    const std::size_t keptAt =
        kept.count == 0 ? std::min(front.size(), room) : extent.begin + kept.from;
    extent.counted = static_cast<std::uint32_t>(size);
    if (front.size() <= keptAt && back.size() <= room - keptAt - kept.count) {
        extent.begin = keptAt - front.size();
        change(extent, extent.begin, {front, ByteView{}});
        change(extent, keptAt + kept.count, {back, ByteView{}});
        return;
    }
    Bytes place(roomFor(size, room != 0));
    // Both ends have room to grow by the same part of what they are.
    const std::size_t left = place.size() - size;
    extent.begin = room == 0 ? 0 : left * front.size() / (front.size() + kept.count + back.size());
    const auto keptFrom = extent.bytes.begin() + static_cast<std::ptrdiff_t>(keptAt);
    auto out = place.begin() + static_cast<std::ptrdiff_t>(extent.begin);
    out = std::copy(front.begin(), front.end(), out);
    out = std::copy_n(keptFrom, kept.count, out);
    std::copy(back.begin(), back.end(), out);
    move(extent, std::move(place));
}

// Gives the structure another place. The former one is free at once: the store keeps its sectors
// until the next commit.
void TableStream::move(Extent& extent, Bytes bytes) {
    addFree(extent.offset, static_cast<std::uint32_t>(extent.bytes.size()));
    extent.bytes = std::move(bytes);
    extent.offset = takeFree(static_cast<std::uint32_t>(extent.bytes.size()));
    if (extent.offset == store_.size(stream_)) {
        store_.append(stream_, extent.bytes);
    } else {
        write(extent, 0, extent.bytes.size());
    }
}

// The first place that is large enough, else the end of the stream.
std::uint32_t TableStream::takeFree(std::uint32_t size) {
    const auto found = std::find_if(free_.begin(), free_.end(),
                                    [&](const auto& place) { return place.second >= size; });
    if (found == free_.end()) {
        return store_.size(stream_);
    }
    const auto [offset, room] = *found;
    free_.erase(found);
    if (room > size) {
        free_.emplace(offset + size, room - size);
    }
    return offset;
}

void TableStream::addFree(std::uint32_t offset, std::uint32_t size) {
    if (size == 0) {
        return;
    }
    auto place = free_.emplace(offset, size).first;
    const auto next = std::next(place);
    if (next != free_.end() && next->first == offset + size) {
        place->second += next->second;
        free_.erase(next);
    }
    if (place != free_.begin()) {
        const auto before = std::prev(place);
        if (before->first + before->second == offset) {
            before->second += place->second;
            free_.erase(place);
        }
    }
}

// Neighbouring sectors that change are written at once.
void TableStream::change(Extent& extent, std::size_t at, const std::array<ByteView, 2>& parts) {
    std::size_t begin = 0; // of the sectors that have changed and are not yet written
    std::size_t end = 0;
    for (ByteView rest : parts) {
        while (!rest.empty()) {
            const std::size_t count = std::min(rest.size(), sectorSize - at % sectorSize);
            std::uint8_t* const place = extent.bytes.data() + at;
            if (!std::equal(rest.begin(), rest.begin() + static_cast<std::ptrdiff_t>(count),
                            place)) {
                std::copy_n(rest.begin(), count, place);
                const std::size_t sector = at / sectorSize * sectorSize;
                if (begin == end || sector > end) {
                    write(extent, begin, end);
                    begin = sector;
                }
                end = sector + sectorSize;
            }
            at += count;
            rest = rest.subspan(count);
        }
    }
    write(extent, begin, end);
}

void TableStream::write(const Extent& extent, std::size_t begin, std::size_t end) {
    if (begin < end) {
        store_.overwrite(stream_, extent.offset + static_cast<std::uint32_t>(begin),
                         ByteView(extent.bytes).subspan(begin, end - begin));
    }
}

void TableStream::finish() {
    if (!free_.empty()) {
        const auto [offset, size] = *free_.rbegin();
        if (offset + size == store_.size(stream_) && offset >= leastSize) {
            store_.shrink(stream_, offset);
            free_.erase(offset);
        }
    }
    if (store_.size(stream_) < leastSize) {
        store_.append(stream_, Bytes(leastSize - store_.size(stream_)));
    }
}

FcLcb TableStream::place(FibPair pair) const {
    const auto found = extents_.find(pair);
    if (found == extents_.end() || found->second.counted == 0) {
        return {};
    }
    const Extent& extent = found->second;
    return {extent.offset + static_cast<std::uint32_t>(extent.begin), extent.counted};
}

} // namespace qvnd::word
