#include "platform/word/docfile/pictures/Md4.h"

#include <algorithm>
#include <bit>

namespace qvnd::word {

namespace {

constexpr std::size_t blockSize = 64;

using State = std::array<std::uint32_t, 4>;
using Block = std::array<std::uint32_t, 16>;

std::uint32_t choose(std::uint32_t x, std::uint32_t y, std::uint32_t z) {
    return (x & y) | (~x & z);
}
std::uint32_t majority(std::uint32_t x, std::uint32_t y, std::uint32_t z) {
    return (x & y) | (x & z) | (y & z);
}
std::uint32_t parity(std::uint32_t x, std::uint32_t y, std::uint32_t z) { return x ^ y ^ z; }

struct Round {
    std::uint32_t (*mix)(std::uint32_t, std::uint32_t, std::uint32_t);
    std::uint32_t constant;
    std::array<int, 16> order;
    std::array<int, 4> shifts;
};

const std::array<Round, 3> rounds{
    {{choose, 0, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15}, {3, 7, 11, 19}},
     {majority, 0x5A827999, {0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15}, {3, 5, 9, 13}},
     {parity, 0x6ED9EBA1, {0, 8, 4, 12, 2, 10, 6, 14, 1, 9, 5, 13, 3, 11, 7, 15}, {3, 9, 11, 15}}}};

void digestBlock(State& state, const Block& block) {
    State s = state;
    for (const Round& round : rounds) {
        for (std::size_t i = 0; i < 16; ++i) {
            // The four words take turns: a, d, c, b.
            std::uint32_t& target = s[(16 - i) % 4];
            const std::uint32_t mixed =
                round.mix(s[(17 - i) % 4], s[(18 - i) % 4], s[(19 - i) % 4]);
            const auto word = static_cast<std::size_t>(round.order[i]);
            target = std::rotl(target + mixed + block[word] + round.constant, round.shifts[i % 4]);
        }
    }
    for (std::size_t i = 0; i < 4; ++i) {
        state[i] += s[i];
    }
}

Block wordsOf(const std::uint8_t* bytes) {
    Block block{};
    for (std::size_t i = 0; i < blockSize; ++i) {
        block[i / 4] |= static_cast<std::uint32_t>(bytes[i]) << (8 * (i % 4));
    }
    return block;
}

// What is left of the message, a one bit, zeros, and the length in bits.
Bytes tailOf(ByteView message) {
    const std::size_t whole = message.size() / blockSize * blockSize;
    LittleEndianWriter writer;
    writer.bytes(message.subspan(whole));
    writer.u8(0x80);
    while (writer.position() % blockSize != blockSize - 8) {
        writer.u8(0);
    }
    writer.u64(static_cast<std::uint64_t>(message.size()) * 8);
    return writer.take();
}

} // namespace

std::array<std::uint8_t, 16> md4(ByteView message) {
    State state{0x67452301, 0xEFCDAB89, 0x98BADCFE, 0x10325476};
    for (std::size_t at = 0; message.size() - at >= blockSize; at += blockSize) {
        digestBlock(state, wordsOf(message.data() + at));
    }
    const Bytes tail = tailOf(message);
    for (std::size_t at = 0; at < tail.size(); at += blockSize) {
        digestBlock(state, wordsOf(tail.data() + at));
    }
    std::array<std::uint8_t, 16> digest{};
    for (std::size_t i = 0; i < digest.size(); ++i) {
        digest[i] = static_cast<std::uint8_t>(state[i / 4] >> (8 * (i % 4)));
    }
    return digest;
}

} // namespace qvnd::word
