#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace qvnd::word {

using Bytes = std::vector<std::uint8_t>;
using ByteView = std::span<const std::uint8_t>;

inline void append(Bytes& bytes, ByteView more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
}

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
    std::size_t position() const { return size_; }
    void u8(unsigned value) { *room(1) = static_cast<std::uint8_t>(value); }
    void u16(unsigned value) { number<2>(value); }
    void u32(std::uint32_t value) { number<4>(value); }
    void u64(std::uint64_t value) { number<8>(value); }
    void u32s(std::span<const std::uint32_t> values);
    void bytes(ByteView data);
    void text(std::u16string_view text);
    void zeros(std::size_t count);
    // Zeros up to the next multiple of `unit`.
    void align(std::size_t unit);
    void patchU16(std::size_t at, unsigned value);
    void patchU32(std::size_t at, std::uint32_t value);

    // What is there so far, until more is appended.
    ByteView data() const { return {bytes_.data(), size_}; }
    // What is there so far; the writer is empty again.
    Bytes take();

private:
    // `count` more bytes, zero, to be filled before the next are asked for.
    std::uint8_t* room(std::size_t count) {
        if (count > bytes_.size() - size_) {
            grow(count);
        }
        std::uint8_t* const place = bytes_.data() + size_;
        size_ += count;
        return place;
    }
    void grow(std::size_t count);

    template <std::size_t size>
    void number(std::uint64_t value) {
        std::uint8_t* const place = room(size);
        for (std::size_t i = 0; i < size; ++i) {
            place[i] = static_cast<std::uint8_t>(value >> (8 * i));
        }
    }

    // Larger than what is there, so that a number is stored and not pushed: tables of positions
    // are written anew with every save.
    Bytes bytes_;
    std::size_t size_ = 0;
};

} // namespace qvnd::word
