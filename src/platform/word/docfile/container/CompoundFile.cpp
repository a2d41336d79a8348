#include "platform/word/docfile/container/CompoundFile.h"

#include "platform/word/docfile/container/CompoundFormat.h"
#include "platform/word/docfile/container/FormatError.h"

#include <algorithm>
#include <fstream>
#include <utility>

namespace qvnd::word {

namespace {

constexpr std::size_t noFolder = static_cast<std::size_t>(-1);

[[noreturn]] void throwDamaged(const std::string& detail) {
    throw FormatError(FormatError::Kind::damaged, "compound file: " + detail);
}

Bytes readWholeFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    const std::streamoff size = file ? static_cast<std::streamoff>(file.tellg()) : -1;
    std::error_code ignored;
    if (size < 0 || std::filesystem::is_directory(path, ignored)) {
        throw FormatError(FormatError::Kind::unreadable, "the file cannot be opened");
    }
    Bytes bytes(static_cast<std::size_t>(size));
    file.seekg(0);
    file.read(reinterpret_cast<char*>(bytes.data()), size);
    if (!file) {
        throw FormatError(FormatError::Kind::unreadable, "the file cannot be read");
    }
    return bytes;
}

std::vector<std::uint32_t> asNumbers(ByteView bytes) {
    LittleEndianReader reader(bytes, "sector numbers");
    std::vector<std::uint32_t> numbers(bytes.size() / 4);
    for (std::uint32_t& number : numbers) {
        number = reader.u32();
    }
    return numbers;
}

} // namespace

struct CompoundFile::Header {
    unsigned majorVersion = 3;
    std::uint32_t fatSectorCount = 0;
    std::uint32_t firstDirectorySector = 0;
    std::uint32_t firstDifatSector = 0;
    std::vector<std::uint32_t> difat; // the 109 places of the header
    std::size_t sectorShift = 9;
    std::size_t miniSectorShift = 6;
    std::uint32_t miniCutoff = 4096;
    std::uint32_t firstMiniFatSector = 0;

    explicit Header(ByteView file);
};

CompoundFile::Header::Header(ByteView file) {
    LittleEndianReader reader(file, "compound file header");
    reader.seek(26);
    majorVersion = reader.u16();
    reader.skip(2);
    sectorShift = reader.u16();
    miniSectorShift = reader.u16();
    reader.skip(10);
    fatSectorCount = reader.u32();
    firstDirectorySector = reader.u32();
    reader.skip(4);
    miniCutoff = reader.u32();
    firstMiniFatSector = reader.u32();
    reader.skip(4);
    firstDifatSector = reader.u32();
    reader.skip(4);
    for (std::size_t i = 0; i < cfb::difatPlacesInHeader; ++i) {
        difat.push_back(reader.u32());
    }
    if (sectorShift < 7 || sectorShift > 16 || miniSectorShift < 2 ||
        miniSectorShift >= sectorShift) {
        throwDamaged("sector sizes make no sense");
    }
}

struct CompoundFile::Node {
    std::u16string name;
    std::uint8_t kind = 0;
    std::uint32_t left = cfb::noEntry;
    std::uint32_t right = cfb::noEntry;
    std::uint32_t child = cfb::noEntry;
    ClassId classId{};
    std::uint32_t firstSector = cfb::endOfChain;
    std::uint64_t size = 0;

    Node(ByteView record, unsigned majorVersion);
};

CompoundFile::Node::Node(ByteView record, unsigned majorVersion) {
    LittleEndianReader reader(record, "directory entry");
    name = reader.text(32);
    const std::size_t nameBytes = reader.u16();
    name.resize(std::min<std::size_t>(nameBytes < 2 ? 0 : nameBytes / 2 - 1, 31));
    kind = reader.u8();
    reader.skip(1);
    left = reader.u32();
    right = reader.u32();
    child = reader.u32();
    const ByteView id = reader.view(16);
    std::copy(id.begin(), id.end(), classId.begin());
    reader.skip(20);
    firstSector = reader.u32();
    size = reader.u64();
    if (majorVersion < 4) {
        size &= 0xFFFFFFFF; // old writers leave rubbish in the upper half
    }
}

CompoundFile CompoundFile::open(const std::filesystem::path& path) {
    return fromBytes(readWholeFile(path));
}

CompoundFile CompoundFile::fromBytes(Bytes file) {
    CompoundFile result{ByteView(file)};
    result.owned_ = std::move(file);
    return result;
}

CompoundFile CompoundFile::over(ByteView file) { return CompoundFile(file); }

CompoundFile::CompoundFile(ByteView file) : file_(file) {
    if (file.size() < cfb::signature.size() ||
        !std::equal(cfb::signature.begin(), cfb::signature.end(), file.begin())) {
        throw FormatError(FormatError::Kind::notCompoundFile, "no compound file signature");
    }
    const Header header(file);
    sectorSize_ = std::size_t{1} << header.sectorShift;
    miniSectorSize_ = std::size_t{1} << header.miniSectorShift;
    miniCutoff_ = header.miniCutoff;
    firstMiniFatSector_ = header.firstMiniFatSector;
    readFat(header);
    readDirectory(header);
}

void CompoundFile::readFat(const Header& header) {
    std::vector<std::uint32_t> sectors = header.difat;
    const std::size_t most = file_.size() / sectorSize_ + 1;
    std::uint32_t next = header.firstDifatSector;
    for (std::size_t read = 0; next <= cfb::lastSector; ++read) {
        if (read > most) {
            throwDamaged("the DIFAT runs in a circle");
        }
        const auto places = asNumbers(sector(next));
        if (places.size() < 2) {
            throwDamaged("a DIFAT sector is cut off");
        }
        sectors.insert(sectors.end(), places.begin(), places.end() - 1);
        next = places.back();
    }
    std::erase_if(sectors, [](std::uint32_t s) { return s > cfb::lastSector; });
    if (header.fatSectorCount != 0 && header.fatSectorCount < sectors.size()) {
        sectors.resize(header.fatSectorCount);
    }
    if (sectors.size() > most) {
        throwDamaged("more FAT sectors than the file can hold");
    }
    for (const std::uint32_t s : sectors) {
        auto part = asNumbers(sector(s));
        part.resize(sectorSize_ / 4, cfb::freeSector); // the last one of a file may be cut
        fat_.insert(fat_.end(), part.begin(), part.end());
    }
}

// Turns the directory's tree into entries with their paths.
void CompoundFile::readDirectory(const Header& header) {
    const Bytes directory = chain(header.firstDirectorySector, file_.size(), "the directory");
    std::vector<Node> nodes;
    for (std::size_t at = 0; at + cfb::entrySize <= directory.size(); at += cfb::entrySize) {
        nodes.emplace_back(ByteView(directory).subspan(at, cfb::entrySize), header.majorVersion);
    }
    if (nodes.empty()) {
        throwDamaged("no directory");
    }
    rootClassId_ = nodes[0].classId;
    miniStreamStart_ = nodes[0].firstSector;
    miniStreamSize_ = nodes[0].size;

    std::vector<bool> seen(nodes.size(), false);
    seen[0] = true;
    // Names in one storage lie in a tree of their own; `folder` is where in the entries they are.
    struct Open {
        std::uint32_t index = 0;
        std::size_t folder = noFolder;
        std::size_t depth = 0;
    };
    std::vector<Open> open{{nodes[0].child, noFolder, 0}};
    while (!open.empty()) {
        const auto [index, folder, depth] = open.back();
        open.pop_back();
        if (index >= nodes.size() || seen[index]) {
            continue;
        }
        seen[index] = true;
        const Node& node = nodes[index];
        open.push_back({node.left, folder, depth});
        open.push_back({node.right, folder, depth});
        if (node.kind != cfb::kindStorage && node.kind != cfb::kindStream) {
            continue;
        }
        const bool storage = node.kind == cfb::kindStorage;
        if (storage && depth >= deepestStorage) {
            ++tooDeep_;
            continue;
        }
        std::u16string path =
            folder == noFolder ? node.name : entries_[folder].path + u"/" + node.name;
        entries_.push_back({std::move(path), storage, storage ? 0 : node.size, node.classId});
        firstSectors_.push_back(node.firstSector);
        if (storage) {
            open.push_back({node.child, entries_.size() - 1, depth + 1});
        }
    }
}

ByteView CompoundFile::sector(std::uint32_t number) const {
    // The header takes the place of one sector, also where sectors are larger than 512 bytes.
    const std::uint64_t begin = (std::uint64_t{number} + 1) * sectorSize_;
    if (begin >= file_.size()) {
        throwDamaged("sector " + std::to_string(number) + " lies behind the end of the file");
    }
    const auto at = static_cast<std::size_t>(begin);
    return file_.subspan(at, std::min(sectorSize_, file_.size() - at));
}

bool CompoundFile::isMetAgain(std::vector<std::uint32_t>& met, std::uint32_t sector,
                              std::uint32_t chain) {
    return std::exchange(met[sector], chain) == chain;
}

Bytes CompoundFile::chain(std::uint32_t first, std::uint64_t size, const char* what) const {
    Bytes result;
    result.reserve(static_cast<std::size_t>(std::min<std::uint64_t>(size, file_.size())));
    met_.resize(fat_.size());
    const std::uint32_t thisOne = ++chains_;
    for (std::uint32_t s = first; s <= cfb::lastSector && result.size() < size;) {
        if (s >= fat_.size() || isMetAgain(met_, s, thisOne)) {
            throwDamaged(std::string(what) + " has a chain of sectors that " +
                         (s >= fat_.size() ? "leaves the allocation table" : "runs in a circle"));
        }
        const ByteView part = sector(s);
        const auto wanted = std::min<std::uint64_t>(size - result.size(), part.size());
        result.insert(result.end(), part.begin(), part.begin() + static_cast<long>(wanted));
        s = fat_[s];
    }
    return result;
}

const Bytes& CompoundFile::miniStream() const {
    if (!miniStream_) {
        miniFat_ = asNumbers(chain(firstMiniFatSector_, file_.size(), "the mini FAT"));
        miniStream_ = chain(miniStreamStart_, miniStreamSize_, "the mini stream");
    }
    return *miniStream_;
}

Bytes CompoundFile::miniChain(std::uint32_t first, std::uint64_t size) const {
    const ByteView all = miniStream();
    Bytes result;
    miniMet_.resize(miniFat_.size());
    const std::uint32_t thisOne = ++chains_;
    for (std::uint32_t s = first; s <= cfb::lastSector && result.size() < size;) {
        const std::uint64_t begin = std::uint64_t{s} * miniSectorSize_;
        if (s >= miniFat_.size() || begin >= all.size() || isMetAgain(miniMet_, s, thisOne)) {
            throwDamaged("a small stream has a chain that leaves the mini stream or runs in a "
                         "circle");
        }
        const ByteView rest = all.subspan(static_cast<std::size_t>(begin));
        const auto wanted = static_cast<std::size_t>(
            std::min<std::uint64_t>({size - result.size(), miniSectorSize_, rest.size()}));
        result.insert(result.end(), rest.begin(), rest.begin() + static_cast<long>(wanted));
        s = miniFat_[s];
    }
    return result;
}

const CompoundFile::Entry* CompoundFile::find(std::u16string_view path) const {
    const auto found = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) {
        return compareEntryNames(entry.path, path) == 0;
    });
    return found == entries_.end() ? nullptr : &*found;
}

Bytes CompoundFile::stream(std::u16string_view path) const {
    const Entry* entry = find(path);
    if (entry == nullptr) {
        throwDamaged("a stream that is needed is not there");
    }
    return stream(*entry);
}

Bytes CompoundFile::stream(const Entry& entry) const {
    if (entry.storage) {
        throwDamaged("a storage stands where a stream is needed");
    }
    const std::uint32_t first = firstSectors_[static_cast<std::size_t>(&entry - entries_.data())];
    return entry.size < miniCutoff_ ? miniChain(first, entry.size)
                                    : chain(first, entry.size, "a stream");
}

} // namespace qvnd::word
