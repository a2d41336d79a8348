#include "platform/word/docfile/Bytes.h"

#include "platform/word/docfile/FormatError.h"

#include <array>

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
    for (char16_t& c : result) {
        c = static_cast<char16_t>(u16());
    }
    return result;
}

void LittleEndianWriter::u8(unsigned value) { bytes_.push_back(static_cast<std::uint8_t>(value)); }

// All bytes of a number at once: tables of positions are written anew with every save.
void LittleEndianWriter::number(std::uint64_t value, std::size_t size) {
    std::array<std::uint8_t, 8> raw{};
    for (std::size_t i = 0; i < raw.size(); ++i) {
        raw[i] = static_cast<std::uint8_t>(value >> (8 * i));
    }
    bytes_.insert(bytes_.end(), raw.begin(), raw.begin() + static_cast<std::ptrdiff_t>(size));
}

void LittleEndianWriter::u16(unsigned value) { number(value, 2); }

void LittleEndianWriter::u32(std::uint32_t value) { number(value, 4); }

void LittleEndianWriter::u64(std::uint64_t value) { number(value, 8); }

void LittleEndianWriter::bytes(ByteView data) {
    bytes_.insert(bytes_.end(), data.begin(), data.end());
}

void LittleEndianWriter::text(std::u16string_view text) {
    // No reserve(): one for each of many short texts would copy everything each time.
    std::size_t at = bytes_.size();
    bytes_.resize(at + text.size() * 2);
    for (const char16_t c : text) {
        bytes_[at++] = static_cast<std::uint8_t>(c);
        bytes_[at++] = static_cast<std::uint8_t>(c >> 8);
    }
}

void LittleEndianWriter::zeros(std::size_t count) { bytes_.resize(bytes_.size() + count); }

void LittleEndianWriter::align(std::size_t unit) {
    const std::size_t over = bytes_.size() % unit;
    if (over != 0) {
        zeros(unit - over);
    }
}

void LittleEndianWriter::patchU16(std::size_t at, unsigned value) {
    bytes_.at(at) = static_cast<std::uint8_t>(value);
    bytes_.at(at + 1) = static_cast<std::uint8_t>(value >> 8);
}

void LittleEndianWriter::patchU32(std::size_t at, std::uint32_t value) {
    patchU16(at, value & 0xFFFF);
    patchU16(at + 2, value >> 16);
}

} // namespace qvnd::word
