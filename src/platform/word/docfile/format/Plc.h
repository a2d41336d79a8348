#pragma once

#include "platform/word/docfile/container/Bytes.h"

#include <vector>

// A PLC, [MS-DOC] 2.2.2: n + 1 ascending positions (CP or FC), then n data elements of one size.
namespace qvnd::word {

// Of an FBKF, the element of a range's start.
inline constexpr std::size_t fbkfSize = 4;

struct Plc {
    std::vector<std::uint32_t> positions; // one more than there are elements; empty for no PLC
    ByteView data;                        // of the bytes that were decoded
    std::size_t dataSize = 0;             // of one element; may be 0

    std::size_t count() const { return positions.empty() ? 0 : positions.size() - 1; }
    ByteView element(std::size_t index) const { return data.subspan(index * dataSize, dataSize); }
};

// As many elements as `bytes` holds; left-over bytes behind them are ignored. Nothing is said
// about the positions' order. The result refers to `bytes`.
Plc decodePlc(ByteView bytes, std::size_t dataSize);

// `data` holds dataSize bytes for every position but the last.
Bytes encodePlc(const std::vector<std::uint32_t>& positions, ByteView data);

} // namespace qvnd::word
