#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace qvnd::word {

using Bytes = std::vector<std::uint8_t>;
using ByteView = std::span<const std::uint8_t>;

// Reads integers of a file, least significant byte first. Every access is checked: reading past
// the end throws FormatError (damaged) and names the structure being read.
class LittleEndianReader {
public:
    LittleEndianReader(ByteView bytes, const char* structure)
        : bytes_(bytes), structure_(structure) {}

    std::size_t position() const { return at_; }
    std::size_t remaining() const { return bytes_.size() - at_; }
    bool atEnd() const { return at_ == bytes_.size(); }
    void seek(std::size_t position);
    void skip(std::size_t count);

    std::uint8_t u8();
    std::uint16_t u16();
    std::uint32_t u32();
    std::uint64_t u64();
    std::int16_t i16() { return static_cast<std::int16_t>(u16()); }
    std::int32_t i32() { return static_cast<std::int32_t>(u32()); }
    ByteView view(std::size_t count);
    // `count` UTF-16 code units.
    std::u16string text(std::size_t count);

private:
    void require(std::size_t count) const;

    ByteView bytes_;
    const char* structure_;
    std::size_t at_ = 0;
};

// Appends integers, least significant byte first.
class LittleEndianWriter {
public:
    std::size_t position() const { return bytes_.size(); }
    void u8(unsigned value);
    void u16(unsigned value);
    void u32(std::uint32_t value);
    void u64(std::uint64_t value);
    void bytes(ByteView data);
    void text(std::u16string_view text);
    void zeros(std::size_t count);
    // Zeros up to the next multiple of `unit`.
    void align(std::size_t unit);
    void patchU16(std::size_t at, unsigned value);
    void patchU32(std::size_t at, std::uint32_t value);

    const Bytes& data() const { return bytes_; }
    Bytes take() { return std::move(bytes_); }

private:
    void number(std::uint64_t value, std::size_t size);

    Bytes bytes_;
};

} // namespace qvnd::word
