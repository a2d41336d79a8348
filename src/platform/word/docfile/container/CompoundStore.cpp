#include "platform/word/docfile/container/CompoundStore.h"

#include "platform/error/RunTimeError.h"
#include "platform/word/docfile/container/CompoundFormat.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace qvnd::word {

namespace {

constexpr std::size_t smallLimit = 4096;
constexpr std::size_t miniSectorSize = 64;
constexpr std::size_t sectorSize = CompoundStore::sectorSize;
constexpr std::size_t nextsInSector = sectorSize / 4; // of a table of sectors

std::uint64_t fileOffset(std::uint32_t sector) { return (std::uint64_t{sector} + 1) * sectorSize; }

std::size_t roundedUp(std::size_t size, std::size_t unit) {
    return (size + unit - 1) / unit * unit;
}

} // namespace

CompoundStore::CompoundStore(std::unique_ptr<OutputFile> file, const ClassId& rootClass)
    : file_(std::move(file)), directory_(rootClass) {}

void CompoundStore::detach() {
    file_->close();
    file_.reset();
}

void CompoundStore::attach(std::unique_ptr<OutputFile> file) { file_ = std::move(file); }

CompoundStore::Stream CompoundStore::addStream(std::u16string_view name) {
    return addStream(CompoundDirectory::root, name);
}

CompoundStore::Stream CompoundStore::addStream(Stream storage, std::u16string_view name) {
    const Stream stream = directory_.addStream(storage, name);
    streams_[stream];
    touched_.insert(stream);
    return stream;
}

CompoundStore::Stream CompoundStore::addStorage(Stream storage, std::u16string_view name,
                                                const ClassId& classId) {
    return directory_.addStorage(storage, name, classId);
}

void CompoundStore::append(Stream number, ByteView bytes) {
    StreamState& stream = streams_.at(number);
    touched_.insert(number);
    if (!stream.small) {
        appendToChain(stream, bytes);
        return;
    }
    stream.content.insert(stream.content.end(), bytes.begin(), bytes.end());
    stream.size = static_cast<std::uint32_t>(stream.content.size());
    stream.changed = true;
    if (stream.size >= smallLimit) {
        growOutOfMiniStream(stream);
    }
}

void CompoundStore::growOutOfMiniStream(StreamState& stream) {
    releaseMini(stream);
    stream.small = false;
    stream.size = 0;
    const Bytes content = std::exchange(stream.content, {});
    appendToChain(stream, content);
}

void CompoundStore::overwrite(Stream number, std::uint32_t offset, ByteView bytes) {
    StreamState& stream = streams_.at(number);
    touched_.insert(number);
    const std::uint64_t end = std::uint64_t{offset} + bytes.size();
    const bool whole = bytes.size() % sectorSize == 0 || end == stream.size;
    if (stream.small || offset % sectorSize != 0 || !whole || end > stream.size) {
        throw std::invalid_argument("a stream is overwritten in whole sectors");
    }
    overwriteSectors(stream, offset / sectorSize, bytes);
    if (end == stream.size) {
        const ByteView tail = bytes.last(bytes.size() % sectorSize);
        stream.tail.assign(tail.begin(), tail.end());
    }
}

void CompoundStore::replace(Stream number, ByteView bytes) {
    StreamState& stream = streams_.at(number);
    touched_.insert(number);
    if (!stream.small) {
        releaseChain(stream);
    }
    releaseMini(stream);
    stream.small = true;
    stream.size = 0;
    stream.content.clear();
    append(number, bytes);
    stream.changed = stream.small;
}

void CompoundStore::shrink(Stream number, std::uint32_t size) {
    StreamState& stream = streams_.at(number);
    touched_.insert(number);
    if (stream.small || size < smallLimit || size % sectorSize != 0 || size > stream.size) {
        throw std::invalid_argument("a stream is shrunk by whole sectors");
    }
    const std::size_t kept = size / sectorSize;
    if (kept == stream.sectors.size()) {
        return;
    }
    for (std::size_t i = kept; i < stream.sectors.size(); ++i) {
        table_.release(stream.sectors[i]);
    }
    stream.sectors.resize(kept);
    table_.link(stream.sectors.back(), cfb::endOfChain);
    stream.size = size;
    stream.tail.clear();
}

void CompoundStore::appendToChain(Chain& chain, ByteView bytes) {
    if (bytes.empty()) {
        return;
    }
    Bytes joined;
    if (!chain.tail.empty()) {
        // The last sector is written anew, the bytes that it has in front.
        joined = std::exchange(chain.tail, {});
        const std::size_t room = std::min(sectorSize - joined.size(), bytes.size());
        joined.insert(joined.end(), bytes.begin(), bytes.begin() + static_cast<long>(room));
        overwriteSectors(chain, chain.sectors.size() - 1, joined);
        chain.size += static_cast<std::uint32_t>(room);
        bytes = bytes.subspan(room);
        chain.tail = joined.size() < sectorSize ? std::move(joined) : Bytes{};
    }
    if (bytes.empty()) {
        return;
    }
    const std::size_t first = chain.sectors.size();
    for (std::size_t done = 0; done < bytes.size(); done += sectorSize) {
        const std::uint32_t sector = table_.allocate();
        if (!chain.sectors.empty()) {
            table_.link(chain.sectors.back(), sector);
        }
        chain.sectors.push_back(sector);
    }
    chain.size += static_cast<std::uint32_t>(bytes.size());
    const ByteView tail = bytes.last(bytes.size() % sectorSize);
    chain.tail.assign(tail.begin(), tail.end());
    writeSectors(chain.sectors, first, bytes);
}

// Puts fresh sectors in place of those that the committed state uses.
void CompoundStore::overwriteSectors(Chain& chain, std::size_t index, ByteView bytes) {
    const std::size_t count = roundedUp(bytes.size(), sectorSize) / sectorSize;
    for (std::size_t i = index; i < index + count; ++i) {
        const std::uint32_t old = chain.sectors[i];
        if (table_.fresh(old)) {
            continue;
        }
        const std::uint32_t sector = table_.allocate();
        table_.link(sector, i + 1 < chain.sectors.size() ? chain.sectors[i + 1] : cfb::endOfChain);
        if (i > 0) {
            table_.link(chain.sectors[i - 1], sector);
        }
        table_.release(old);
        chain.sectors[i] = sector;
    }
    writeSectors(chain.sectors, index, bytes);
}

void CompoundStore::releaseChain(Chain& chain) {
    for (const std::uint32_t sector : chain.sectors) {
        table_.release(sector);
    }
    chain.sectors.clear();
    chain.size = 0;
    chain.tail.clear();
}

// Writes neighbouring sectors at once; the end of the last one is filled with zeros.
void CompoundStore::writeSectors(const std::vector<std::uint32_t>& sectors, std::size_t first,
                                 ByteView bytes) {
    const std::size_t whole = bytes.size() / sectorSize;
    for (std::size_t i = 0; i < whole;) {
        std::size_t run = 1;
        while (i + run < whole && sectors[first + i + run] == sectors[first + i] + run) {
            ++run;
        }
        file_->writeAt(fileOffset(sectors[first + i]),
                       bytes.subspan(i * sectorSize, run * sectorSize));
        i += run;
    }
    if (bytes.size() % sectorSize != 0) {
        const ByteView rest = bytes.subspan(whole * sectorSize);
        Bytes padded(rest.begin(), rest.end());
        padded.resize(sectorSize);
        file_->writeAt(fileOffset(sectors[first + whole]), padded);
    }
}

void CompoundStore::releaseMini(StreamState& stream) {
    for (const std::uint32_t sector : stream.miniSectors) {
        setMini(sector, cfb::freeSector);
        firstFreeMini_ = std::min<std::size_t>(firstFreeMini_, sector);
    }
    stream.miniSectors.clear();
}

void CompoundStore::setMini(std::size_t sector, std::uint32_t next) {
    miniFat_[sector] = next;
    changedOfMiniFat_.insert(sector / nextsInSector);
}

// Sectors of the mini stream may be used again at once: the sectors that hold them are fresh.
void CompoundStore::placeInMiniStream(StreamState& stream) {
    releaseMini(stream);
    stream.changed = false;
    std::size_t& place = firstFreeMini_;
    for (std::size_t at = 0; at < stream.content.size(); at += miniSectorSize) {
        while (place < miniFat_.size() && miniFat_[place] != cfb::freeSector) {
            ++place;
        }
        if (place == miniFat_.size()) {
            miniFat_.push_back(cfb::freeSector);
            miniStream_.resize(miniFat_.size() * miniSectorSize);
        }
        const auto sector = static_cast<std::uint32_t>(place);
        setMini(sector, cfb::endOfChain);
        if (!stream.miniSectors.empty()) {
            setMini(stream.miniSectors.back(), sector);
        }
        stream.miniSectors.push_back(sector);
        const std::size_t count = std::min(miniSectorSize, stream.content.size() - at);
        std::copy_n(stream.content.begin() + static_cast<long>(at), count,
                    miniStream_.begin() + static_cast<long>(sector * miniSectorSize));
        changedOfMiniStream_.insert(sector * miniSectorSize / sectorSize);
    }
}

void CompoundStore::updateMiniStream() {
    Chain& chain = miniStreamChain_;
    const std::size_t known = chain.sectors.size();
    const auto from = [&](std::size_t sector) {
        return ByteView(miniStream_).subspan(std::min(sector * sectorSize, miniStream_.size()));
    };
    for (const std::size_t sector : changedOfMiniStream_) {
        if (sector < known) {
            const ByteView rest = from(sector);
            overwriteSectors(chain, sector, rest.first(std::min(rest.size(), sectorSize)));
        }
    }
    changedOfMiniStream_.clear();
    Bytes added(from(known).begin(), from(known).end());
    added.resize(roundedUp(added.size(), sectorSize));
    appendToChain(chain, added);
}

void CompoundStore::updateMiniFat() {
    Chain& chain = miniFatChain_;
    const auto sectorAt = [&](std::size_t sector) {
        LittleEndianWriter out;
        for (std::size_t i = sector * nextsInSector; i < (sector + 1) * nextsInSector; ++i) {
            out.u32(i < miniFat_.size() ? miniFat_[i] : cfb::freeSector);
        }
        return out.take();
    };
    const std::size_t known = chain.sectors.size();
    for (const std::size_t sector : changedOfMiniFat_) {
        if (sector < known) {
            overwriteSectors(chain, sector, sectorAt(sector));
        } else {
            appendToChain(chain, sectorAt(sector));
        }
    }
    changedOfMiniFat_.clear();
}

void CompoundStore::placeStreams() {
    for (const Stream number : touched_) {
        StreamState& stream = streams_.at(number);
        if (stream.small && stream.changed) {
            placeInMiniStream(stream);
        }
        const auto& sectors = stream.small ? stream.miniSectors : stream.sectors;
        directory_.place(number, sectors.empty() ? cfb::endOfChain : sectors.front(), stream.size);
    }
    touched_.clear();
    updateMiniStream();
    updateMiniFat();
    const auto& mini = miniStreamChain_.sectors;
    directory_.place(CompoundDirectory::root, mini.empty() ? cfb::endOfChain : mini.front(),
                     static_cast<std::uint32_t>(miniStream_.size()));
}

void CompoundStore::updateDirectory() {
    const std::size_t known = directoryChain_.sectors.size();
    for (const std::size_t sector : directory_.takeChangedSectors()) {
        if (sector < known) {
            overwriteSectors(directoryChain_, sector, directory_.encodeSector(sector));
        }
    }
    Bytes added;
    for (std::size_t sector = known; sector < directory_.sectorCount(); ++sector) {
        qvnd::word::append(added, directory_.encodeSector(sector));
    }
    appendToChain(directoryChain_, added);
}

Bytes CompoundStore::header() const {
    const auto firstOf = [](const std::vector<std::uint32_t>& sectors) {
        return sectors.empty() ? cfb::endOfChain : sectors.front();
    };
    const auto& miniFat = miniFatChain_.sectors;
    LittleEndianWriter out;
    out.bytes(cfb::signature);
    out.zeros(16);
    out.u16(0x003E);
    out.u16(3); // version
    out.u16(0xFFFE);
    out.u16(9); // sectors of 512 bytes, small ones of 64
    out.u16(6);
    out.zeros(6);
    out.u32(0); // directory sectors: not counted in version 3
    out.u32(static_cast<std::uint32_t>(table_.tableSectors().size()));
    out.u32(firstOf(directoryChain_.sectors));
    out.u32(0);
    out.u32(smallLimit);
    out.u32(firstOf(miniFat));
    out.u32(static_cast<std::uint32_t>(miniFat.size()));
    out.u32(firstOf(table_.difatSectors()));
    out.u32(static_cast<std::uint32_t>(table_.difatSectors().size()));
    for (std::size_t i = 0; i < cfb::difatPlacesInHeader; ++i) {
        out.u32(i < table_.tableSectors().size() ? table_.tableSectors()[i] : cfb::freeSector);
    }
    return out.take();
}

// Neighbouring sectors at once.
void CompoundStore::writeTable(std::vector<SectorWrite> writes) {
    std::sort(writes.begin(), writes.end(),
              [](const SectorWrite& a, const SectorWrite& b) { return a.sector < b.sector; });
    Bytes run;
    for (std::size_t i = 0; i < writes.size(); ++i) {
        run.insert(run.end(), writes[i].bytes.begin(), writes[i].bytes.end());
        const bool goesOn = i + 1 < writes.size() && writes[i + 1].sector == writes[i].sector + 1;
        if (!goesOn) {
            file_->writeAt(fileOffset(writes[i].sector + 1) - run.size(), run);
            run.clear();
        }
    }
}

void CompoundStore::commit(Durability durability) {
    placeStreams();
    updateDirectory();
    writeTable(table_.layOut());
    if (durability == Durability::lostPower) {
        file_->sync();
    }
    committing_ = true;
    file_->writeAt(0, header());
    if (durability == Durability::lostPower) {
        file_->sync();
    }
    committing_ = false;
    committedSize_ = fileOffset(table_.sectorCount());
    table_.committed();
}

void CompoundStore::abandon() noexcept {
    try {
        if (file_ != nullptr && !committing_) {
            file_->truncate(committedSize_);
        }
    } catch (const RunTimeError&) {
        // The space stays taken; the state of the file is the same with or without it.
    }
    file_.reset();
}

} // namespace qvnd::word
