#pragma once

#include "platform/word/docfile/container/Bytes.h"

#include <cstdint>
#include <string>
#include <vector>

namespace qvnd::word {

// A string table (STTB, [MS-DOC] 2.2.4): strings, each followed by extra data of one size.
struct Sttb {
    struct Entry {
        std::u16string text;
        Bytes extra; // cbExtra bytes
    };
    std::vector<Entry> entries;
    std::uint16_t extraSize = 0; // cbExtra
};

// Reads as many entries as are whole. Both kinds are read, that of UTF-16 strings (fExtend
// 0xFFFF) and that of single-byte ones; the latter are taken as Windows-1252.
// `complete` of the answer is false when the bytes end before the last counted entry.
struct DecodedSttb {
    Sttb table;
    bool complete = true;
};
DecodedSttb decodeSttb(ByteView bytes);

// Always writes UTF-16 strings (fExtend 0xFFFF). An extra of another size than `extraSize` is cut
// or filled with zeros.
Bytes encodeSttb(const Sttb& table);

} // namespace qvnd::word
