#pragma once

#include "platform/word/docfile/container/Bytes.h"
#include "platform/word/docfile/container/CompoundFile.h"

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace qvnd::word {

// The directory of a compound file to be written, [MS-CFB] 2.6: storages and streams by number in
// the order in which they were added; 0 is the root. The entries of a storage are a left-leaning
// red-black tree in which a new one changes few others, so that a directory that grows is written
// by the sectors that have changed.
class CompoundDirectory {
public:
    using Number = std::uint32_t;
    static constexpr Number root = 0;

    explicit CompoundDirectory(const ClassId& rootClass);

    // Names are isEntryName() and unique within their storage without regard to case; anything else
    // is a std::invalid_argument.
    Number addStorage(Number storage, std::u16string_view name, const ClassId& classId);
    Number addStream(Number storage, std::u16string_view name);

    // For the root, where the mini stream lies.
    void place(Number stream, std::uint32_t firstSector, std::uint32_t size);

    // The sectors of 512 bytes that it fills, and one of them.
    std::size_t sectorCount() const;
    Bytes encodeSector(std::size_t sector) const;
    // The sectors that have changed since the call before, all with the first one.
    std::set<std::size_t> takeChangedSectors();

private:
    struct Entry {
        std::u16string name;
        std::uint8_t kind = 0;
        ClassId classId{};
        std::uint32_t firstSector = 0;
        std::uint32_t size = 0;
        Number left = 0;
        Number right = 0;
        Number child = 0;
        bool red = false;
    };

    Number add(Number storage, Entry entry);
    bool has(Number storage, std::u16string_view name) const;
    // Put `added` into the tree below `top`, or restore its rules there; answer the tree's top.
    Number insert(Number top, Number added);
    Number balanced(Number top);
    Number turned(Number top, Number Entry::*from, Number Entry::*to);
    bool isRed(Number entry) const;
    void paint(Number entry, bool red);
    void link(Number entry, Number Entry::*side, Number other);
    void touch(Number entry);
    static void write(const Entry& entry, LittleEndianWriter& out);

    std::vector<Entry> entries_;
    std::set<std::size_t> changed_; // sectors
};

} // namespace qvnd::word
