#pragma once

#include "platform/word/docfile/container/Bytes.h"
#include "platform/word/docfile/container/CompoundFile.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace qvnd::word {

// The directory of a compound file to be written, [MS-CFB] 2.6: storages and streams by number in
// the order in which they were added; 0 is the root.
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

    // All entries in sectors of 512 bytes, each storage with a balanced red-black tree.
    Bytes encode();

private:
    struct Entry {
        std::u16string name;
        std::uint8_t kind = 0;
        ClassId classId{};
        std::uint32_t firstSector = 0;
        std::uint32_t size = 0;
        std::map<std::u16string, Number, EntryNameOrder> children;
        bool hasGrown = false; // since its tree was planted
        std::uint32_t left = 0;
        std::uint32_t right = 0;
        std::uint32_t child = 0;
        bool red = false;
    };

    Number add(Number storage, Entry entry);
    void plantTree(Entry& storage);
    std::uint32_t plant(const std::vector<Number>& sorted, std::size_t begin, std::size_t end,
                        std::size_t depth);

    std::vector<Entry> entries_;
};

} // namespace qvnd::word
