#pragma once

#include "platform/word/docfile/container/Bytes.h"
#include "platform/word/docfile/container/NumberSet.h"

#include <cstdint>
#include <vector>

namespace qvnd::word {

// A sector with what belongs into it.
struct SectorWrite {
    std::uint32_t sector = 0;
    Bytes bytes;
};

// The allocation table (FAT) of a compound file with 512-byte sectors that is never changed in
// place ([MS-CFB] 2.3 and 2.5). Between two commits the file is in the state of the earlier one,
// so no sector that this state uses is handed out; what is released becomes free with the next
// commit. The table's own sectors follow the same rule.
class AllocationTable {
public:
    static constexpr std::size_t sectorSize = 512;

    // A sector that the committed state does not use, marked as the end of a chain.
    // Throws RunTimeError 61 when the file would leave the 2 GB that the format gives it.
    std::uint32_t allocate();
    // Sets what follows `sector` in its chain.
    void link(std::uint32_t sector, std::uint32_t next);
    void release(std::uint32_t sector);
    // Allocated since the last commit: may be written in place.
    bool fresh(std::uint32_t sector) const { return fresh_[sector]; }

    // Places the table itself and answers its sectors that have to be written. Nothing may be
    // allocated or released between this and committed() or the end of the object.
    std::vector<SectorWrite> layOut();
    // What layOut() placed has become the state of the file.
    void committed();

    // As layOut() left it, for the header.
    const std::vector<std::uint32_t>& tableSectors() const { return tableSectors_; }
    const std::vector<std::uint32_t>& difatSectors() const { return difatSectors_; }
    // Sectors that the file has or will have, used or free.
    std::uint32_t sectorCount() const { return static_cast<std::uint32_t>(entries_.size()); }

private:
    std::uint32_t takeFree();
    void addFree(std::uint32_t sector);
    void set(std::uint32_t sector, std::uint32_t value);
    bool moveTouchedParts();
    bool replaceDifat();
    Bytes part(std::size_t index) const;
    Bytes difatPart(std::size_t index) const;

    std::vector<std::uint32_t> entries_; // by sector
    std::vector<bool> fresh_;            // by sector
    std::vector<std::uint32_t> freshList_;
    NumberSet free_;
    NumberSet partsWithFree_; // parts that have entries of free_
    std::vector<std::uint32_t> freeAfterCommit_;
    std::vector<std::uint32_t> tableSectors_; // where part i of the table lies
    std::vector<std::uint32_t> difatSectors_;
    NumberSet touched_; // parts with changed entries
    NumberSet moved_;   // parts that have their place for the next state
    bool difatTouched_ = false;
    bool difatMoved_ = false;
};

} // namespace qvnd::word
