#include "fuzz/Mutation.h"

#include "platform/word/docfile/container/CompoundStore.h"
#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/objects/OleStreams.h"
#include "support/MemoryFolder.h"

#include <algorithm>
#include <array>
#include <map>

namespace qvnd::test {

using namespace word;

namespace {

void putNumber(Bytes& bytes, std::size_t at, std::uint32_t value, std::size_t size) {
    for (std::size_t i = 0; i < size && at + i < bytes.size(); ++i) {
        bytes[at + i] = static_cast<std::uint8_t>(value >> (8 * i));
    }
}

std::uint32_t byteAt(const Bytes& bytes, std::size_t at) {
    return at < bytes.size() ? bytes[at] : 0U;
}

// The bytes [at, at + length), as far as there are any.
Bytes stretch(const Bytes& bytes, std::size_t at, std::size_t length) {
    const std::size_t begin = std::min(at, bytes.size());
    const std::size_t end = std::min(begin + length, bytes.size());
    return {bytes.begin() + static_cast<std::ptrdiff_t>(begin),
            bytes.begin() + static_cast<std::ptrdiff_t>(end)};
}

Bytes rebuilt(const std::vector<CompoundFile::Entry>& entries, const std::vector<Bytes>& parts) {
    MemoryFolder folder;
    std::filesystem::path path;
    CompoundStore store(folder.createBeside("/folder/a", &path), wordDocumentClass);
    std::map<std::u16string_view, CompoundStore::Stream> storages{{{}, CompoundDirectory::root}};
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const std::u16string_view whole = entries[i].path;
        const std::size_t slash = whole.rfind(u'/');
        const bool isInside = slash != std::u16string_view::npos;
        const CompoundStore::Stream above = storages.at(isInside ? whole.substr(0, slash) : u"");
        const std::u16string_view name = isInside ? whole.substr(slash + 1) : whole;
        if (entries[i].storage) {
            storages[whole] = store.addStorage(above, name, entries[i].classId);
        } else {
            store.append(store.addStream(above, name), parts[i]);
        }
    }
    store.commit(CompoundStore::Durability::killedProcess);
    return folder.bytes(path);
}

} // namespace

DamagedFile::DamagedFile(const CompoundFile& file) : entries_(file.entries()) {
    for (const CompoundFile::Entry& entry : file.entries()) {
        parts_.push_back(entry.storage ? Bytes() : file.stream(entry));
    }
}

std::optional<std::size_t> DamagedFile::partAt(std::u16string_view path) const {
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        if (entries_[i].path == path) {
            return i;
        }
    }
    return std::nullopt;
}

DamagedFile DamagedFile::without(std::size_t change) const {
    DamagedFile fewer = *this;
    fewer.changes_.erase(fewer.changes_.begin() + static_cast<std::ptrdiff_t>(change));
    return fewer;
}

Bytes DamagedFile::bytes() const {
    std::vector<Bytes> parts = parts_;
    for (const auto& [part, change] : changes_) {
        change(parts[part]);
    }
    return entries_.empty() ? parts[0] : rebuilt(entries_, parts);
}

std::uint32_t Mutation::below(std::size_t limit) {
    return limit == 0 ? 0 : static_cast<std::uint32_t>(chance_() % limit);
}

DamagedFile Mutation::damaged(ByteView file) {
    if (below(4) != 0) {
        try {
            const CompoundFile compound = CompoundFile::over(file);
            DamagedFile result(compound);
            if (const auto main = result.partAt(u"WordDocument")) {
                changeStreams(result, *main);
                return result;
            }
        } catch (const FormatError&) {
            // No document: the file itself is changed.
        }
    }
    DamagedFile result(Bytes(file.begin(), file.end()));
    changePart(result, 0);
    return result;
}

// Most structures lie in the table stream, fewer in the main one, fewest elsewhere.
void Mutation::changeStreams(DamagedFile& file, std::size_t main) {
    const std::size_t table = file.partAt(u"1Table").value_or(main);
    const std::array<std::size_t, 7> victims{
        table, table, table, main, main, file.partAt(u"Data").value_or(table), below(file.parts())};
    changePart(file, victims[below(victims.size())]);
}

void Mutation::changePart(DamagedFile& file, std::size_t part) {
    const std::size_t size = file.part(part).size();
    for (std::uint32_t changes = 1 + below(6); changes > 0 && size > 0; --changes) {
        file.add(part, below(12) == 0 ? changeOfSize(size) : change(size));
    }
}

// Others may have made the bytes fewer when it comes to this change.
DamagedFile::Change Mutation::changeOfSize(std::size_t size) {
    const std::size_t at = below(size);
    if (below(2) == 0) {
        return [at, length = 1 + below(size)](Bytes& bytes) {
            const std::size_t begin = std::min(at, bytes.size());
            const std::size_t end = std::min(begin + length, bytes.size());
            bytes.erase(bytes.begin() + static_cast<std::ptrdiff_t>(begin),
                        bytes.begin() + static_cast<std::ptrdiff_t>(end));
        };
    }
    return [at, length = 1 + below(64), times = 1 + below(2000)](Bytes& bytes) {
        const Bytes part = stretch(bytes, at, length);
        Bytes more;
        for (std::uint32_t i = 0; i < times; ++i) {
            more.insert(more.end(), part.begin(), part.end());
        }
        bytes.insert(bytes.begin() + static_cast<std::ptrdiff_t>(std::min(at, bytes.size())),
                     more.begin(), more.end());
    };
}

// Of bytes of that size, which it leaves as many; there may be fewer when it comes to it.
DamagedFile::Change Mutation::change(std::size_t size) {
    constexpr std::array<std::uint32_t, 12> limits{0,       1,          0x7F,       0x80,
                                                   0xFF,    0x7FFF,     0x8000,     0xFFFF,
                                                   0x10000, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};
    const std::size_t at = below(size);
    switch (below(6)) {
    case 0:
    case 1:
        return [at, value = below(256)](Bytes& bytes) { putNumber(bytes, at, value, 1); };
    case 2:
        return [at, bit = below(8)](Bytes& bytes) {
            putNumber(bytes, at, byteAt(bytes, at) ^ (1U << bit), 1);
        };
    case 3: { // a number at its limit
        const std::uint32_t value = limits[below(limits.size())];
        return [at, value, width = below(2) == 0 ? std::size_t{2} : std::size_t{4}](Bytes& bytes) {
            putNumber(bytes, at, value, width);
        };
    }
    case 4: // one stretch in the place of another
        return [at, from = below(size), length = 1 + below(64)](Bytes& bytes) {
            const Bytes part = stretch(bytes, from, length);
            for (std::size_t i = 0; i < part.size(); ++i) {
                putNumber(bytes, at + i, part[i], 1);
            }
        };
    default: // a number that is a little off
        return [at, by = below(5)](Bytes& bytes) {
            putNumber(bytes, at, byteAt(bytes, at) + by - 2, 1);
        };
    }
}

} // namespace qvnd::test
