#include "fuzz/Mutation.h"

#include "platform/word/docfile/container/CompoundFile.h"
#include "platform/word/docfile/container/FormatError.h"

#include <algorithm>
#include <array>

namespace qvnd::test {

using namespace word;

namespace {

// Places in the parts of a document.
constexpr std::size_t mainPart = 0;
constexpr std::size_t tablePart = 1;
constexpr std::size_t dataPart = 2;

// The streams of a document; the bytes of another file.
DamagedFile::Parts partsOf(ByteView file) {
    try {
        const CompoundFile compound = CompoundFile::over(file);
        Bytes document = compound.stream(u"WordDocument");
        Bytes tables = compound.stream(readFib(document).tableStreamName());
        Bytes blobs = compound.has(u"Data") ? compound.stream(u"Data") : Bytes();
        return {std::move(document), std::move(tables), std::move(blobs)};
    } catch (const FormatError&) {
        return {Bytes(file.begin(), file.end())};
    }
}

void putNumber(Bytes& bytes, std::size_t at, std::uint32_t value, std::size_t size) {
    for (std::size_t i = 0; i < size && at + i < bytes.size(); ++i) {
        bytes[at + i] = static_cast<std::uint8_t>(value >> (8 * i));
    }
}

} // namespace

DamagedFile DamagedFile::without(std::size_t change) const {
    DamagedFile fewer = *this;
    fewer.changes_.erase(fewer.changes_.begin() + static_cast<std::ptrdiff_t>(change));
    return fewer;
}

Bytes DamagedFile::bytes() const {
    Parts parts = parts_;
    for (const auto& [part, change] : changes_) {
        change(parts[part]);
    }
    return isDocument() ? compoundFile({parts[mainPart], parts[tablePart], parts[dataPart]})
                        : parts[0];
}

std::uint32_t Mutation::below(std::size_t limit) {
    return limit == 0 ? 0 : static_cast<std::uint32_t>(chance_() % limit);
}

DamagedFile Mutation::damaged(ByteView file) {
    DamagedFile::Parts parts{Bytes(file.begin(), file.end())};
    if (below(4) != 0) {
        parts = partsOf(file);
    }
    constexpr std::array<std::size_t, 6> victims{tablePart, tablePart, tablePart,
                                                 mainPart,  mainPart,  dataPart};
    const std::size_t victim = parts.size() > 1 ? victims[below(victims.size())] : 0;
    DamagedFile result(std::move(parts));
    const std::size_t size = result.part(victim).size();
    for (std::uint32_t changes = 1 + below(6); changes > 0 && size > 0; --changes) {
        result.add(victim, change(size));
    }
    return result;
}

// Of bytes of that size, which it leaves as many.
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
            bytes[at] ^= static_cast<std::uint8_t>(1U << bit);
        };
    case 3: { // a number at its limit
        const std::uint32_t value = limits[below(limits.size())];
        return [at, value, width = below(2) == 0 ? std::size_t{2} : std::size_t{4}](Bytes& bytes) {
            putNumber(bytes, at, value, width);
        };
    }
    case 4: { // one stretch in the place of another
        const std::size_t from = below(size);
        const std::size_t length = std::min<std::size_t>({1 + below(64), size - from, size - at});
        return [at, from, length](Bytes& bytes) {
            const auto begin = bytes.begin() + static_cast<std::ptrdiff_t>(from);
            const Bytes part(begin, begin + static_cast<std::ptrdiff_t>(length));
            std::copy(part.begin(), part.end(), bytes.begin() + static_cast<std::ptrdiff_t>(at));
        };
    }
    default: // a number that is a little off
        return [at, by = below(5)](Bytes& bytes) {
            bytes[at] = static_cast<std::uint8_t>(bytes[at] + by - 2);
        };
    }
}

} // namespace qvnd::test
