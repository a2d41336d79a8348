#include "platform/word/docfile/container/CompoundDirectory.h"

#include "platform/word/docfile/container/CompoundFormat.h"

#include <algorithm>
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
    touch(root);
}

CompoundDirectory::Number CompoundDirectory::add(Number storage, Entry entry) {
    if (!isEntryName(entry.name)) {
        throw std::invalid_argument("no name for an entry of a compound file");
    }
    if (has(storage, entry.name)) {
        throw std::invalid_argument("two entries of one name in a storage");
    }
    const auto number = static_cast<Number>(entries_.size());
    entry.left = entry.right = entry.child = cfb::noEntry;
    entry.red = true;
    entries_.push_back(std::move(entry));
    touch(number);
    const Number top = insert(entries_[storage].child, number);
    paint(top, false);
    link(storage, &Entry::child, top);
    return number;
}

bool CompoundDirectory::has(Number storage, std::u16string_view name) const {
    Number at = entries_.at(storage).child;
    while (at != cfb::noEntry) {
        const int order = compareEntryNames(name, entries_[at].name);
        if (order == 0) {
            return true;
        }
        at = order < 0 ? entries_[at].left : entries_[at].right;
    }
    return false;
}

// Goes down as many steps as the tree is high, twice the logarithm of its size at most.
CompoundDirectory::Number CompoundDirectory::insert(Number top, Number added) {
    if (top == cfb::noEntry) {
        return added;
    }
    const bool before = compareEntryNames(entries_[added].name, entries_[top].name) < 0;
    Number Entry::*const side = before ? &Entry::left : &Entry::right;
    link(top, side, insert(entries_[top].*side, added));
    return balanced(top);
}

// A red entry hangs on the left side only, and none below another.
CompoundDirectory::Number CompoundDirectory::balanced(Number top) {
    if (isRed(entries_[top].right) && !isRed(entries_[top].left)) {
        top = turned(top, &Entry::right, &Entry::left);
    }
    if (isRed(entries_[top].left) && isRed(entries_[entries_[top].left].left)) {
        top = turned(top, &Entry::left, &Entry::right);
    }
    if (isRed(entries_[top].left) && isRed(entries_[top].right)) {
        paint(top, true);
        paint(entries_[top].left, false);
        paint(entries_[top].right, false);
    }
    return top;
}

// The entry on the side `from` comes to the top, and the top goes to its other side, red.
CompoundDirectory::Number CompoundDirectory::turned(Number top, Number Entry::*from,
                                                    Number Entry::*to) {
    const Number risen = entries_[top].*from;
    link(top, from, entries_[risen].*to);
    link(risen, to, top);
    paint(risen, entries_[top].red);
    paint(top, true);
    return risen;
}

bool CompoundDirectory::isRed(Number entry) const {
    return entry != cfb::noEntry && entries_[entry].red;
}

void CompoundDirectory::paint(Number entry, bool red) {
    if (entries_[entry].red != red) {
        entries_[entry].red = red;
        touch(entry);
    }
}

void CompoundDirectory::link(Number entry, Number Entry::*side, Number other) {
    if (entries_[entry].*side != other) {
        entries_[entry].*side = other;
        touch(entry);
    }
}

void CompoundDirectory::touch(Number entry) { changed_.insert(entry / entriesInSector); }

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
    Entry& entry = entries_.at(stream);
    if (entry.firstSector != firstSector || entry.size != size) {
        entry.firstSector = firstSector;
        entry.size = size;
        touch(stream);
    }
}

std::set<std::size_t> CompoundDirectory::takeChangedSectors() {
    return std::exchange(changed_, {});
}

std::size_t CompoundDirectory::sectorCount() const {
    return (entries_.size() + entriesInSector - 1) / entriesInSector;
}

Bytes CompoundDirectory::encodeSector(std::size_t sector) const {
    LittleEndianWriter out;
    const std::size_t begin = sector * entriesInSector;
    const std::size_t end = std::min(begin + entriesInSector, entries_.size());
    for (std::size_t i = begin; i < end; ++i) {
        write(entries_[i], out);
    }
    for (std::size_t i = end; i < begin + entriesInSector; ++i) {
        writeUnused(out);
    }
    return out.take();
}

void CompoundDirectory::write(const Entry& entry, LittleEndianWriter& out) {
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

} // namespace qvnd::word
