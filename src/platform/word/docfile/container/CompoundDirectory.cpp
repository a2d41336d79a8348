#include "platform/word/docfile/container/CompoundDirectory.h"

#include "platform/word/docfile/container/CompoundFormat.h"

#include <bit>
#include <stdexcept>
#include <utility>

namespace qvnd::word {

namespace {

constexpr std::size_t nameField = 64;
constexpr std::size_t entriesInSector = 4;

void writeUnused(LittleEndianWriter& out) {
    out.zeros(68);
    out.u32(cfb::noEntry);
    out.u32(cfb::noEntry);
    out.u32(cfb::noEntry);
    out.zeros(48);
}

} // namespace

CompoundDirectory::CompoundDirectory(const ClassId& rootClass) {
    Entry entry;
    entry.name = u"Root Entry";
    entry.kind = cfb::kindRoot;
    entry.classId = rootClass;
    entry.firstSector = cfb::endOfChain;
    entry.left = entry.right = entry.child = cfb::noEntry;
    entries_.push_back(std::move(entry));
}

CompoundDirectory::Number CompoundDirectory::add(Number storage, Entry entry) {
    if (!isEntryName(entry.name)) {
        throw std::invalid_argument("no name for an entry of a compound file");
    }
    const auto number = static_cast<Number>(entries_.size());
    Entry& above = entries_.at(storage);
    if (!above.children.emplace(entry.name, number).second) {
        throw std::invalid_argument("two entries of one name in a storage");
    }
    above.hasGrown = true;
    entry.left = entry.right = entry.child = cfb::noEntry;
    entries_.push_back(std::move(entry));
    return number;
}

CompoundDirectory::Number CompoundDirectory::addStorage(Number storage, std::u16string_view name,
                                                        const ClassId& classId) {
    Entry entry;
    entry.name = name;
    entry.kind = cfb::kindStorage;
    entry.classId = classId;
    return add(storage, std::move(entry));
}

CompoundDirectory::Number CompoundDirectory::addStream(Number storage, std::u16string_view name) {
    Entry entry;
    entry.name = name;
    entry.kind = cfb::kindStream;
    entry.firstSector = cfb::endOfChain;
    return add(storage, std::move(entry));
}

void CompoundDirectory::place(Number stream, std::uint32_t firstSector, std::uint32_t size) {
    entries_.at(stream).firstSector = firstSector;
    entries_.at(stream).size = size;
}

void CompoundDirectory::plantTree(Entry& storage) {
    std::vector<Number> sorted;
    for (const auto& [name, number] : storage.children) {
        sorted.push_back(number);
    }
    // Halving fills every level but the last; the nodes of a last level with gaps are red, all
    // others black, so every way down meets the same number of black ones.
    const auto levels = static_cast<std::size_t>(std::bit_width(sorted.size()));
    storage.child = plant(sorted, 0, sorted.size(), levels);
    const bool gaps = std::popcount(sorted.size() + 1) != 1;
    for (const Number number : sorted) {
        entries_[number].red = entries_[number].red && gaps;
    }
    storage.hasGrown = false;
}

// `depth` counts down to 1, the last level.
std::uint32_t CompoundDirectory::plant(const std::vector<Number>& sorted, std::size_t begin,
                                       std::size_t end, std::size_t depth) {
    if (begin == end) {
        return cfb::noEntry;
    }
    const std::size_t middle = begin + (end - begin) / 2;
    Entry& entry = entries_[sorted[middle]];
    entry.left = plant(sorted, begin, middle, depth - 1);
    entry.right = plant(sorted, middle + 1, end, depth - 1);
    entry.red = depth == 1;
    return sorted[middle];
}

Bytes CompoundDirectory::encode() {
    for (Entry& entry : entries_) {
        if (entry.hasGrown) {
            plantTree(entry);
        }
    }
    LittleEndianWriter out;
    for (const Entry& entry : entries_) {
        const std::size_t start = out.position();
        out.text(entry.name);
        out.zeros(start + nameField - out.position());
        out.u16(static_cast<unsigned>(2 * (entry.name.size() + 1)));
        out.u8(entry.kind);
        out.u8(entry.red ? cfb::colourRed : cfb::colourBlack);
        out.u32(entry.left);
        out.u32(entry.right);
        out.u32(entry.child);
        out.bytes(entry.classId);
        out.zeros(20); // state bits, times
        out.u32(entry.firstSector);
        out.u64(entry.size);
    }
    for (std::size_t i = entries_.size(); i % entriesInSector != 0; ++i) {
        writeUnused(out);
    }
    return out.take();
}

} // namespace qvnd::word
