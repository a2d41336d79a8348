#include "platform/jet/TextOrder.h"

#include <QChar>

#include <cstdint>

namespace qvnd::jet {

namespace {

bool isContinuation(char c) { return (static_cast<std::uint8_t>(c) & 0xC0) == 0x80; }

// The code point at `at`, which is moved behind it. The store writes well-formed UTF-8 only.
char32_t codePoint(std::string_view text, std::size_t& at) {
    const auto lead = static_cast<std::uint8_t>(text[at++]);
    if (lead < 0x80) {
        return lead;
    }
    char32_t c = lead >= 0xF0 ? lead & 0x07 : lead >= 0xE0 ? lead & 0x0F : lead & 0x1F;
    while (at < text.size() && isContinuation(text[at])) {
        c = (c << 6) | (static_cast<std::uint8_t>(text[at++]) & 0x3F);
    }
    return c;
}

char32_t folded(char32_t c) { return QChar::toCaseFolded(c); }

} // namespace

int compareText(std::string_view a, std::string_view b) {
    // Most keys share a long beginning byte for byte; only what differs is decoded.
    std::size_t same = 0;
    const std::size_t shorter = std::min(a.size(), b.size());
    while (same < shorter && a[same] == b[same]) {
        ++same;
    }
    while (same > 0 && same < shorter && isContinuation(a[same])) {
        --same;
    }
    std::size_t i = same;
    std::size_t j = same;
    while (i < a.size() && j < b.size()) {
        const char32_t left = folded(codePoint(a, i));
        const char32_t right = folded(codePoint(b, j));
        if (left != right) {
            return left < right ? -1 : 1;
        }
    }
    return static_cast<int>(i < a.size()) - static_cast<int>(j < b.size());
}

int positionOf(QStringView part, QStringView text) {
    if (text.isEmpty()) {
        return 0;
    }
    return static_cast<int>(text.indexOf(part, 0, Qt::CaseInsensitive)) + 1;
}

} // namespace qvnd::jet
