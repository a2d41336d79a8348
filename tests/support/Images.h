#pragma once

#include "support/ByteText.h"

// The smallest heads of picture files that tell their size; no picture behind them.
namespace qvnd::test {

inline word::Bytes bigEndian(std::uint32_t value, std::size_t size) {
    word::Bytes bytes(size);
    for (std::size_t i = 0; i < size; ++i) {
        bytes[size - 1 - i] = static_cast<std::uint8_t>(value >> (8 * i));
    }
    return bytes;
}

inline word::Bytes littleEndian(std::uint32_t value, std::size_t size) {
    word::Bytes bytes = bigEndian(value, size);
    return {bytes.rbegin(), bytes.rend()};
}

// `perMetre` 0: without a resolution.
inline word::Bytes png(std::uint32_t width, std::uint32_t height, std::uint32_t perMetre = 0) {
    const word::Bytes resolution = joined({hex("00000009 70485973"), bigEndian(perMetre, 4),
                                           bigEndian(perMetre, 4), hex("01 00000000")});
    return joined({hex("89504E470D0A1A0A 0000000D 49484452"), bigEndian(width, 4),
                   bigEndian(height, 4), hex("0802000000 00000000"),
                   perMetre == 0 ? word::Bytes{} : resolution, hex("00000000 49454E44 AE426082")});
}

// `unit` 0: without a resolution, 1: dots an inch, 2: dots a centimetre.
inline word::Bytes jpeg(unsigned width, unsigned height, unsigned unit = 0, unsigned density = 1,
                        unsigned components = 3) {
    return joined({hex("FFD8 FFE0 0010 4A46494600 0101"), bigEndian(unit, 1), bigEndian(density, 2),
                   bigEndian(density, 2), hex("0000"), hex("FFC0 0011 08"), bigEndian(height, 2),
                   bigEndian(width, 2), bigEndian(components, 1), hex("01110002110103110100"),
                   hex("FFD9")});
}

// A negative height counts rows from the top.
inline word::Bytes bmp(std::int32_t width, std::int32_t height, std::uint32_t perMetre = 0) {
    return joined({hex("424D 00000000 00000000 36000000  28000000"),
                   littleEndian(static_cast<std::uint32_t>(width), 4),
                   littleEndian(static_cast<std::uint32_t>(height), 4),
                   hex("0100 1800 00000000 00000000"), littleEndian(perMetre, 4),
                   littleEndian(perMetre, 4), hex("00000000 00000000")});
}

// Its frame in hundredths of a millimetre.
inline word::Bytes emf(std::uint32_t width, std::uint32_t height) {
    return joined({hex("01000000 6C000000"), word::Bytes(16, 0), hex("00000000 00000000"),
                   littleEndian(width, 4), littleEndian(height, 4), hex("20454D46"),
                   word::Bytes(64, 0)});
}

inline word::Bytes bareWmf(unsigned width, unsigned height) {
    return joined({hex("0100 0900 0003 17000000 0000 05000000 0000"), hex("05000000 0C02"),
                   littleEndian(height, 2), littleEndian(width, 2), hex("03000000 0000")});
}

inline word::Bytes placeableWmf(unsigned width, unsigned height, unsigned unitsPerInch) {
    return joined({hex("D7CDC69A 0000 0000 0000"), littleEndian(width, 2), littleEndian(height, 2),
                   littleEndian(unitsPerInch, 2), hex("00000000 0000"), bareWmf(1, 1)});
}

} // namespace qvnd::test
