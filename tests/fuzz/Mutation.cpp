#include "fuzz/Mutation.h"

#include "platform/word/docfile/WordFileBuilder.h"
#include "platform/word/docfile/container/CompoundFile.h"
#include "platform/word/docfile/container/FormatError.h"

#include <algorithm>
#include <array>
#include <optional>

namespace qvnd::test {

using namespace word;

namespace {

// The streams of a document; nothing for another file.
std::optional<WordStreams> streamsOf(ByteView file) {
    try {
        const CompoundFile compound = CompoundFile::over(file);
        WordStreams streams;
        streams.wordDocument = compound.stream(u"WordDocument");
        streams.table = compound.stream(readFib(streams.wordDocument).tableStreamName());
        if (compound.has(u"Data")) {
            streams.data = compound.stream(u"Data");
        }
        return streams;
    } catch (const FormatError&) {
        return std::nullopt;
    }
}

} // namespace

std::uint32_t Mutation::below(std::size_t limit) {
    return limit == 0 ? 0 : static_cast<std::uint32_t>(chance_() % limit);
}

Bytes Mutation::mutated(ByteView file) {
    if (below(4) != 0) {
        if (auto streams = streamsOf(file)) {
            const std::array<Bytes*, 6> victims{&streams->table,        &streams->table,
                                                &streams->table,        &streams->wordDocument,
                                                &streams->wordDocument, &streams->data};
            change(*victims[below(victims.size())]);
            return compoundFile(*streams);
        }
    }
    Bytes bytes(file.begin(), file.end());
    change(bytes);
    return bytes;
}

void Mutation::change(Bytes& bytes) {
    for (std::uint32_t changes = 1 + below(6); changes > 0 && !bytes.empty(); --changes) {
        changeOnce(bytes);
    }
}

void Mutation::changeOnce(Bytes& bytes) {
    constexpr std::array<std::uint32_t, 12> limits{0,       1,          0x7F,       0x80,
                                                   0xFF,    0x7FFF,     0x8000,     0xFFFF,
                                                   0x10000, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};
    const std::size_t at = below(bytes.size());
    switch (below(6)) {
    case 0:
    case 1:
        bytes[at] = static_cast<std::uint8_t>(chance_());
        return;
    case 2:
        bytes[at] ^= static_cast<std::uint8_t>(1U << below(8));
        return;
    case 3: { // a number at its limit
        const std::uint32_t value = limits[below(limits.size())];
        const std::size_t size = below(2) == 0 ? 2 : 4;
        for (std::size_t i = 0; i < size && at + i < bytes.size(); ++i) {
            bytes[at + i] = static_cast<std::uint8_t>(value >> (8 * i));
        }
        return;
    }
    case 4: { // one stretch in the place of another
        const std::size_t from = below(bytes.size());
        const std::size_t size =
            std::min<std::size_t>({1 + below(64), bytes.size() - from, bytes.size() - at});
        const Bytes part(bytes.begin() + static_cast<std::ptrdiff_t>(from),
                         bytes.begin() + static_cast<std::ptrdiff_t>(from + size));
        std::copy(part.begin(), part.end(), bytes.begin() + static_cast<std::ptrdiff_t>(at));
        return;
    }
    default: { // a number that is a little off
        bytes[at] = static_cast<std::uint8_t>(bytes[at] + below(5) - 2);
        return;
    }
    }
}

} // namespace qvnd::test
