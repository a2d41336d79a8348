#include "platform/word/docfile/container/AllocationTable.h"

#include "platform/error/RunTimeError.h"
#include "platform/word/docfile/container/CompoundFormat.h"

#include <algorithm>

namespace qvnd::word {

namespace {

constexpr std::size_t entriesInPart = AllocationTable::sectorSize / 4;
constexpr std::size_t placesInDifatSector = entriesInPart - 1;
// The format's limit for files with small sectors.
constexpr std::size_t mostSectors = (std::size_t{1} << 31) / AllocationTable::sectorSize - 1;

std::size_t difatSectorsFor(std::size_t tableSectors) {
    const std::size_t beyond = tableSectors - std::min(tableSectors, cfb::difatPlacesInHeader);
    return (beyond + placesInDifatSector - 1) / placesInDifatSector;
}

} // namespace

void AllocationTable::set(std::uint32_t sector, std::uint32_t value) {
    if (entries_[sector] != value) {
        entries_[sector] = value;
        touched_.insert(sector / entriesInPart);
    }
}

// Free sectors in parts that are written anyway come first, so that few parts are touched.
std::uint32_t AllocationTable::takeFree() {
    const auto near = NumberSet::firstOfBoth(touched_, partsWithFree_);
    const std::size_t part = near ? *near : partsWithFree_.firstFrom(0).value();
    const std::size_t sector = free_.firstFrom(part * entriesInPart).value();
    free_.erase(sector);
    const auto following = free_.firstFrom(sector);
    if (!following || *following / entriesInPart != part) {
        partsWithFree_.erase(part);
    }
    return static_cast<std::uint32_t>(sector);
}

void AllocationTable::addFree(std::uint32_t sector) {
    free_.insert(sector);
    partsWithFree_.insert(sector / entriesInPart);
}

std::uint32_t AllocationTable::allocate() {
    std::uint32_t sector = 0;
    if (free_.empty()) {
        if (entries_.size() >= mostSectors) {
            throw RunTimeError(error::diskFull, u"文档超过 2 GB,Word 97-2003 格式无法保存。");
        }
        sector = sectorCount();
        entries_.push_back(cfb::freeSector);
        fresh_.push_back(false);
    } else {
        sector = takeFree();
    }
    fresh_[sector] = true;
    freshList_.push_back(sector);
    set(sector, cfb::endOfChain);
    return sector;
}

void AllocationTable::link(std::uint32_t sector, std::uint32_t next) { set(sector, next); }

void AllocationTable::release(std::uint32_t sector) {
    set(sector, cfb::freeSector);
    if (fresh_[sector]) {
        fresh_[sector] = false;
        addFree(sector);
    } else {
        freeAfterCommit_.push_back(sector);
    }
}

// Gives every touched part of the table, and parts that have become necessary, a fresh sector.
// Answers whether it had anything to do: placing a part touches others.
bool AllocationTable::moveTouchedParts() {
    bool any = false;
    while (tableSectors_.size() * entriesInPart < entries_.size()) {
        const std::size_t index = tableSectors_.size();
        tableSectors_.push_back(cfb::freeSector);
        touched_.insert(index);
    }
    const NumberSet touched = touched_;
    for (auto next = touched.firstFrom(0); next; next = touched.firstFrom(*next + 1)) {
        const std::size_t index = *next;
        if (!moved_.insert(index)) {
            continue;
        }
        any = true;
        const std::uint32_t sector = allocate();
        set(sector, cfb::fatSector);
        if (tableSectors_[index] != cfb::freeSector) {
            release(tableSectors_[index]);
        }
        tableSectors_[index] = sector;
        difatTouched_ = difatTouched_ || index >= cfb::difatPlacesInHeader;
    }
    return any;
}

// The DIFAT is a chain of its own, so a change in one of its sectors changes all before it.
bool AllocationTable::replaceDifat() {
    if (!difatTouched_) {
        return false;
    }
    bool any = false;
    if (!difatMoved_) {
        difatMoved_ = true;
        any = !difatSectors_.empty();
        for (const std::uint32_t sector : difatSectors_) {
            release(sector);
        }
        difatSectors_.clear();
    }
    while (difatSectors_.size() < difatSectorsFor(tableSectors_.size())) {
        any = true;
        const std::uint32_t sector = allocate();
        set(sector, cfb::difatSector);
        difatSectors_.push_back(sector);
    }
    return any;
}

Bytes AllocationTable::part(std::size_t index) const {
    const std::size_t begin = index * entriesInPart;
    const std::size_t count = std::min(entriesInPart, entries_.size() - begin);
    LittleEndianWriter out;
    out.u32s(std::span(entries_).subspan(begin, count));
    for (std::size_t i = count; i < entriesInPart; ++i) {
        out.u32(cfb::freeSector);
    }
    return out.take();
}

Bytes AllocationTable::difatPart(std::size_t index) const {
    LittleEndianWriter out;
    for (std::size_t i = 0; i < placesInDifatSector; ++i) {
        const std::size_t at = cfb::difatPlacesInHeader + index * placesInDifatSector + i;
        out.u32(at < tableSectors_.size() ? tableSectors_[at] : cfb::freeSector);
    }
    out.u32(index + 1 < difatSectors_.size() ? difatSectors_[index + 1] : cfb::endOfChain);
    return out.take();
}

std::vector<SectorWrite> AllocationTable::layOut() {
    for (bool changed = true; changed;) {
        changed = moveTouchedParts();
        changed = replaceDifat() || changed;
    }
    std::vector<SectorWrite> writes;
    for (auto index = moved_.firstFrom(0); index; index = moved_.firstFrom(*index + 1)) {
        writes.push_back({tableSectors_[*index], part(*index)});
    }
    for (std::size_t i = 0; difatMoved_ && i < difatSectors_.size(); ++i) {
        writes.push_back({difatSectors_[i], difatPart(i)});
    }
    return writes;
}

void AllocationTable::committed() {
    for (const std::uint32_t sector : freshList_) {
        fresh_[sector] = false;
    }
    freshList_.clear();
    for (const std::uint32_t sector : freeAfterCommit_) {
        addFree(sector);
    }
    freeAfterCommit_.clear();
    touched_.clear();
    moved_.clear();
    difatTouched_ = false;
    difatMoved_ = false;
}

} // namespace qvnd::word
