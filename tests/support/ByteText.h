#pragma once

#include "platform/word/docfile/container/Bytes.h"

#include <random>
#include <string_view>

namespace qvnd::test {

// "0A FF 41" as bytes; blanks are for the eye.
inline word::Bytes hex(std::string_view text) {
    word::Bytes bytes;
    const auto digit = [](char c) { return c <= '9' ? c - '0' : (c | 0x20) - 'a' + 10; };
    int high = -1;
    for (const char c : text) {
        if (c == ' ') {
            continue;
        }
        if (high < 0) {
            high = digit(c);
        } else {
            bytes.push_back(static_cast<std::uint8_t>(high * 16 + digit(c)));
            high = -1;
        }
    }
    return bytes;
}

// Bytes that tell their origin and their place.
inline word::Bytes pattern(std::size_t size, unsigned seed) {
    std::mt19937 random(seed);
    word::Bytes bytes(size);
    for (auto& byte : bytes) {
        byte = static_cast<std::uint8_t>(random());
    }
    return bytes;
}

// The characters as bytes.
inline word::Bytes ascii(std::string_view text) { return {text.begin(), text.end()}; }

inline word::Bytes joined(std::initializer_list<word::Bytes> parts) {
    word::Bytes all;
    for (const word::Bytes& part : parts) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

} // namespace qvnd::test
