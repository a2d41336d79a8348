#pragma once

#include "platform/word/docfile/container/Bytes.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qvnd::word {

// A class identifier as its 16 bytes lie in a file.
using ClassId = std::array<std::uint8_t, 16>;

// A compound file ([MS-CFB]) to read from: a tree of storages with streams in them. Tolerates what
// other readers tolerate: versions 3 and 4, any sector size, a last sector that is cut short, a
// directory tree out of order. Streams are judged when they are asked for, so damage in one does
// not hide the others.
class CompoundFile {
public:
    // Each level of storages makes the paths of what lies in it longer, so depth is bounded. An
    // embedded document in an embedded document takes two levels.
    static constexpr std::size_t deepestStorage = 16;

    struct Entry {
        // Names from the root on, joined by '/': "ObjectPool/_1234/\001Ole".
        std::u16string path;
        bool storage = false;
        std::uint64_t size = 0;
        ClassId classId{};
    };

    // Throws FormatError: unreadable, notCompoundFile, damaged.
    static CompoundFile open(const std::filesystem::path& path);
    static CompoundFile fromBytes(Bytes file);
    // Reads from `file` in place; it must outlive the result.
    static CompoundFile over(ByteView file);

    CompoundFile(CompoundFile&&) = default;
    CompoundFile& operator=(CompoundFile&&) = default;
    CompoundFile(const CompoundFile&) = delete;
    CompoundFile& operator=(const CompoundFile&) = delete;
    ~CompoundFile() = default;

    // Storages and streams without the root, a storage before what it holds.
    const std::vector<Entry>& entries() const { return entries_; }
    const ClassId& rootClassId() const { return rootClassId_; }
    // Of the whole file in bytes: more than all its streams together, unless they share sectors.
    std::size_t size() const { return file_.size(); }
    // Storages that were left out with all they hold, because they lie deeper than deepestStorage.
    std::size_t tooDeep() const { return tooDeep_; }

    // Paths are compared without regard to case.
    bool has(std::u16string_view path) const { return find(path) != nullptr; }
    const Entry* find(std::u16string_view path) const;
    // The contents of a stream. Throws FormatError (damaged) when there is no such stream or its
    // chain of sectors runs in a circle or out of the file. A chain that ends early gives the
    // bytes that exist.
    Bytes stream(std::u16string_view path) const;
    // The same for an entry of entries().
    Bytes stream(const Entry& entry) const;

private:
    struct Node;
    struct Header;

    explicit CompoundFile(ByteView file);
    void readFat(const Header& header);
    void readDirectory(const Header& header);
    ByteView sector(std::uint32_t number) const;
    Bytes chain(std::uint32_t first, std::uint64_t size, const char* what) const;
    Bytes miniChain(std::uint32_t first, std::uint64_t size) const;
    const Bytes& miniStream() const;
    // Whether the chain that is followed now meets that sector for the second time.
    static bool isMetAgain(std::vector<std::uint32_t>& met, std::uint32_t sector,
                           std::uint32_t chain);

    Bytes owned_;
    ByteView file_;
    std::size_t sectorSize_ = 512;
    std::size_t miniSectorSize_ = 64;
    std::uint32_t miniCutoff_ = 4096;
    std::uint32_t firstMiniFatSector_ = 0;
    std::vector<std::uint32_t> fat_;
    std::vector<Entry> entries_;
    std::vector<std::uint32_t> firstSectors_; // by entry
    ClassId rootClassId_{};
    std::size_t tooDeep_ = 0;
    std::uint32_t miniStreamStart_ = 0;
    std::uint64_t miniStreamSize_ = 0;
    mutable std::optional<Bytes> miniStream_;
    mutable std::vector<std::uint32_t> miniFat_;
    // By sector the chain that met it last, so that following a chain costs no more than its
    // length.
    mutable std::vector<std::uint32_t> met_;
    mutable std::vector<std::uint32_t> miniMet_;
    mutable std::uint32_t chains_ = 0; // followed so far
};

// The order of names within a storage, [MS-CFB] 2.6.4: the shorter name first, names of one length
// by their upper-case code units.
int compareEntryNames(std::u16string_view left, std::u16string_view right);

// The same order for containers. Paths of one storage to another keep equal names together.
struct EntryNameOrder {
    using is_transparent = void;
    bool operator()(std::u16string_view left, std::u16string_view right) const {
        return compareEntryNames(left, right) < 0;
    }
};

// Whether an entry may bear the name: 1 to 31 UTF-16 code units, none of them one of "/\:!".
bool isEntryName(std::u16string_view name);

} // namespace qvnd::word
