#include "platform/word/docfile/AllocationTable.h"

#include "platform/error/RunTimeError.h"
#include "platform/word/docfile/CompoundFormat.h"

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
    auto found = free_.begin();
    for (const std::size_t part : touched_) {
        const auto near = free_.lower_bound(static_cast<std::uint32_t>(part * entriesInPart));
        if (near != free_.end() && *near / entriesInPart == part) {
            found = near;
            break;
        }
    }
    const std::uint32_t sector = *found;
    free_.erase(found);
    return sector;
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
        free_.insert(sector);
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
    const std::set<std::size_t> touched = touched_;
    for (const std::size_t index : touched) {
        if (!moved_.insert(index).second) {
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
    LittleEndianWriter out;
    for (std::size_t i = 0; i < entriesInPart; ++i) {
        const std::size_t sector = index * entriesInPart + i;
        out.u32(sector < entries_.size() ? entries_[sector] : cfb::freeSector);
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
    for (const std::size_t index : moved_) {
        writes.push_back({tableSectors_[index], part(index)});
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
    free_.insert(freeAfterCommit_.begin(), freeAfterCommit_.end());
    freeAfterCommit_.clear();
    touched_.clear();
    moved_.clear();
    difatTouched_ = false;
    difatMoved_ = false;
}

} // namespace qvnd::word
