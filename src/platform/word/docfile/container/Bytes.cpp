#include "platform/word/docfile/container/Bytes.h"

#include "platform/word/docfile/container/FormatError.h"

#include <algorithm>
#include <bit>
#include <stdexcept>
#include <utility>

namespace qvnd::word {

void LittleEndianReader::require(std::size_t count) const {
    if (count > remaining()) {
        throw FormatError(FormatError::Kind::damaged,
                          std::string(structure_) + ": " + std::to_string(count) +
                              " bytes wanted at " + std::to_string(at_) + ", " +
                              std::to_string(remaining()) + " left");
    }
}

void LittleEndianReader::seek(std::size_t position) {
    if (position > bytes_.size()) {
        throw FormatError(FormatError::Kind::damaged, std::string(structure_) + ": offset " +
                                                          std::to_string(position) +
                                                          " lies behind the end");
    }
    at_ = position;
}

void LittleEndianReader::skip(std::size_t count) {
    require(count);
    at_ += count;
}

std::uint8_t LittleEndianReader::u8() {
    require(1);
    return bytes_[at_++];
}

std::uint16_t LittleEndianReader::u16() {
    require(2);
    const auto value = static_cast<std::uint16_t>(bytes_[at_] | (bytes_[at_ + 1] << 8));
    at_ += 2;
    return value;
}

std::uint32_t LittleEndianReader::u32() {
    const std::uint32_t low = u16();
    return low | (std::uint32_t(u16()) << 16);
}

std::uint64_t LittleEndianReader::u64() {
    const std::uint64_t low = u32();
    return low | (std::uint64_t(u32()) << 32);
}

ByteView LittleEndianReader::view(std::size_t count) {
    require(count);
    const ByteView result = bytes_.subspan(at_, count);
    at_ += count;
    return result;
}

std::u16string LittleEndianReader::text(std::size_t count) {
    require(count * 2);
    std::u16string result(count, u'\0');
    if constexpr (std::endian::native == std::endian::little) {
        const ByteView units = view(count * 2);
        std::copy(units.begin(), units.end(), reinterpret_cast<std::uint8_t*>(result.data()));
    } else {
        for (char16_t& c : result) {
            c = static_cast<char16_t>(u16());
        }
    }
    return result;
}

void LittleEndianWriter::grow(std::size_t count) {
    constexpr std::size_t least = 64;
    bytes_.resize(std::max({2 * bytes_.size(), size_ + count, least}));
}

Bytes LittleEndianWriter::take() {
    bytes_.resize(std::exchange(size_, 0));
    return std::exchange(bytes_, {});
}

void LittleEndianWriter::u32s(std::span<const std::uint32_t> values) {
    std::uint8_t* place = room(4 * values.size());
    if constexpr (std::endian::native == std::endian::little) {
        const auto* const raw = reinterpret_cast<const std::uint8_t*>(values.data());
        std::copy(raw, raw + 4 * values.size(), place);
    } else {
        for (const std::uint32_t value : values) {
            for (int shift = 0; shift < 32; shift += 8) {
                *place++ = static_cast<std::uint8_t>(value >> shift);
            }
        }
    }
}

void LittleEndianWriter::bytes(ByteView data) {
    std::copy(data.begin(), data.end(), room(data.size()));
}

void LittleEndianWriter::text(std::u16string_view text) {
    std::uint8_t* place = room(text.size() * 2);
    for (const char16_t c : text) {
        *place++ = static_cast<std::uint8_t>(c);
        *place++ = static_cast<std::uint8_t>(c >> 8);
    }
}

void LittleEndianWriter::zeros(std::size_t count) { room(count); }

void LittleEndianWriter::align(std::size_t unit) {
    const std::size_t over = size_ % unit;
    if (over != 0) {
        zeros(unit - over);
    }
}

void LittleEndianWriter::patchU16(std::size_t at, unsigned value) {
    if (at + 2 > size_) {
        throw std::out_of_range("a number is changed behind the end");
    }
    bytes_[at] = static_cast<std::uint8_t>(value);
    bytes_[at + 1] = static_cast<std::uint8_t>(value >> 8);
}

void LittleEndianWriter::patchU32(std::size_t at, std::uint32_t value) {
    patchU16(at, value & 0xFFFF);
    patchU16(at + 2, value >> 16);
}

} // namespace qvnd::word
