#include "platform/error/Utf8.h"

#include <cstdint>

namespace qvnd {

namespace {

constexpr char32_t replacement = 0xFFFD;

void appendUtf8(std::string& out, char32_t c) {
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        out += static_cast<char>(0xE0 | (c >> 12));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (c >> 18));
        out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
}

void appendUtf16(std::u16string& out, char32_t c) {
    if (c < 0x10000) {
        out += static_cast<char16_t>(c);
    } else {
        out += static_cast<char16_t>(0xD7C0 + (c >> 10));
        out += static_cast<char16_t>(0xDC00 + (c & 0x3FF));
    }
}

bool isHighSurrogate(char16_t c) { return (c & 0xFC00) == 0xD800; }
bool isLowSurrogate(char16_t c) { return (c & 0xFC00) == 0xDC00; }

// Reads one code point at `at` and moves behind it.
char32_t nextCodePoint(std::string_view text, std::size_t& at) {
    const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(text[i]); };
    const std::uint8_t lead = byte(at++);
    if (lead < 0x80) {
        return lead;
    }
    const int extra = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC2 ? 1 : -1;
    if (extra < 0 || lead > 0xF4) {
        return replacement;
    }
    char32_t c = lead & (0x3F >> extra);
    for (int i = 0; i < extra; ++i) {
        if (at >= text.size() || (byte(at) & 0xC0) != 0x80) {
            return replacement;
        }
        c = (c << 6) | (byte(at++) & 0x3F);
    }
    constexpr char32_t smallest[] = {0, 0x80, 0x800, 0x10000};
    const bool valid = c >= smallest[extra] && c <= 0x10FFFF && (c < 0xD800 || c > 0xDFFF);
    return valid ? c : replacement;
}

} // namespace

std::string toUtf8(std::u16string_view text) {
    std::string out;
    out.reserve(text.size() * 3);
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t c = text[i];
        if (isHighSurrogate(c) && i + 1 < text.size() && isLowSurrogate(text[i + 1])) {
            ++i;
            appendUtf8(out, 0x10000 + ((char32_t(c) & 0x3FF) << 10) + (text[i] & 0x3FF));
        } else {
            appendUtf8(out, isHighSurrogate(c) || isLowSurrogate(c) ? replacement : c);
        }
    }
    return out;
}

std::u16string fromUtf8(std::string_view text) {
    std::u16string out;
    out.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        appendUtf16(out, nextCodePoint(text, at));
    }
    return out;
}

} // namespace qvnd
