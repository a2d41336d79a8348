#include "platform/word/layout/TextWidth.h"

#include <array>
#include <cstdint>

namespace qvnd::word {

namespace {

// Widths of U+0020 to U+007E in a Times-like face, in thousandths of the size.
constexpr std::array<std::uint16_t, 95> latin{
    250, 333, 408, 500, 500, 833, 778, 180, 333, 333, 500, 564, 250, 333, 250, 278, //
    500, 500, 500, 500, 500, 500, 500, 500, 500, 500, 278, 278, 564, 564, 564, 444, //
    921, 722, 667, 667, 722, 611, 556, 722, 722, 333, 389, 722, 611, 889, 722, 722, //
    556, 722, 667, 556, 611, 722, 722, 944, 722, 722, 611, 333, 278, 333, 469, 500, //
    333, 444, 500, 444, 500, 444, 333, 500, 500, 278, 278, 500, 278, 778, 500, 500, //
    500, 500, 333, 389, 278, 500, 500, 722, 500, 500, 444, 480, 200, 480, 541};

} // namespace

bool isEastAsian(char16_t c) {
    return (c >= 0x1100 && c <= 0x11FF) || (c >= 0x2E80 && c <= 0xA4CF) ||
           (c >= 0xAC00 && c <= 0xD7A3) || (c >= 0xF900 && c <= 0xFAFF) ||
           (c >= 0xFE30 && c <= 0xFE4F) || (c >= 0xFF00 && c <= 0xFFEF);
}

int characterWidth(char16_t c) {
    if (c >= 0x20 && c <= 0x7E) {
        return latin[c - 0x20];
    }
    if (c >= 0x0300 && c <= 0x036F) {
        return 0;
    }
    if (c >= 0xD800 && c <= 0xDFFF) {
        return 500; // either half of a pair that makes one full width
    }
    if (isEastAsian(c) || (c >= 0x2010 && c <= 0x27BF)) {
        return 1000;
    }
    return c < 0x20 ? 0 : 520;
}

bool breaksBehind(char16_t c) { return c == u' ' || c == u'-' || c == u'\t' || isEastAsian(c); }

int lineHeight(int fontSize, bool eastAsian) { return fontSize * (eastAsian ? 130 : 115) / 100; }

} // namespace qvnd::word
