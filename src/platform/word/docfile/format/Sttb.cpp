#include "platform/word/docfile/format/Sttb.h"

#include "platform/word/docfile/container/FormatError.h"

#include <array>

namespace qvnd::word {

namespace {

constexpr std::uint16_t extended = 0xFFFF;

// Windows-1252 from 0x80 to 0x9F; the rest of that code page equals Unicode.
constexpr std::array<char16_t, 32> upperControls{
    0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

char16_t fromWindows1252(std::uint8_t c) {
    return c >= 0x80 && c < 0xA0 ? upperControls[c - 0x80] : char16_t{c};
}

std::u16string readText(LittleEndianReader& reader, bool wide) {
    if (wide) {
        const std::size_t length = reader.u16();
        return reader.text(length);
    }
    std::u16string text;
    for (const std::uint8_t c : reader.view(reader.u8())) {
        text.push_back(fromWindows1252(c));
    }
    return text;
}

} // namespace

DecodedSttb decodeSttb(ByteView bytes) {
    DecodedSttb result;
    if (bytes.empty()) {
        return result;
    }
    try {
        LittleEndianReader reader(bytes, "STTB");
        const std::uint16_t first = reader.u16();
        const bool wide = first == extended;
        const std::size_t count = wide ? reader.u16() : first;
        result.table.extraSize = reader.u16();
        for (std::size_t i = 0; i < count; ++i) {
            std::u16string text = readText(reader, wide);
            const ByteView extra = reader.view(result.table.extraSize);
            result.table.entries.push_back({std::move(text), Bytes(extra.begin(), extra.end())});
        }
    } catch (const FormatError&) {
        result.complete = false;
    }
    return result;
}

Bytes encodeSttb(const Sttb& table) {
    LittleEndianWriter writer;
    writer.u16(extended);
    writer.u16(static_cast<unsigned>(table.entries.size()));
    writer.u16(table.extraSize);
    for (const Sttb::Entry& entry : table.entries) {
        writer.u16(static_cast<unsigned>(entry.text.size()));
        writer.text(entry.text);
        Bytes extra = entry.extra;
        extra.resize(table.extraSize);
        writer.bytes(extra);
    }
    return writer.take();
}

} // namespace qvnd::word
