#include "platform/jet/TextOrder.h"

#include <QChar>

#include <algorithm>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace qvnd::jet {

namespace {

bool isContinuation(char c) { return (static_cast<std::uint8_t>(c) & 0xC0) == 0x80; }

// The code point at `at`, which is moved behind it. The store writes well-formed UTF-8 only.
char32_t codePoint(std::string_view text, std::size_t& at) {
    const auto lead = static_cast<std::uint8_t>(text[at++]);
    if (lead < 0x80) {
        return lead;
    }
    char32_t c = lead & (lead >= 0xF0 ? 0x07 : 0x1F); // bit 4 of 1110xxxx is 0
    while (at < text.size() && isContinuation(text[at])) {
        c = (c << 6) | (static_cast<std::uint8_t>(text[at++]) & 0x3F);
    }
    return c;
}

constexpr char32_t behindAscii = 0x80;

// The Kelvin sign and the long s, which fold to k and s, stay themselves: so the indexes of the
// file, which fold ASCII letters alone, agree with us on every text that has no other letters.
char32_t folded(char32_t c) {
    const char32_t f = QChar::toCaseFolded(c);
    return c >= behindAscii && f < behindAscii ? c : f;
}

// Chinese, Japanese and Korean characters have no case; to know that spares most look-ups.
bool mayHaveCase(char32_t c) {
    const bool isCaseless =
        (c >= 0x2E80 && c < 0xA640) || (c >= 0xAC00 && c < 0xD800) || (c >= 0xF900 && c < 0xFB00);
    return c >= behindAscii && !isCaseless;
}

using Letters = std::vector<char32_t>;

// Letters beyond ASCII that are equal to each other, by the letter that they fold to.
std::unordered_map<char32_t, Letters> lettersByFolding() {
    constexpr char32_t behindLastLetter = 0x1F000;
    std::unordered_map<char32_t, Letters> letters;
    for (char32_t c = behindAscii; c < behindLastLetter; ++c) {
        if (const char32_t f = folded(c); f != c) {
            Letters& equal = letters[f];
            if (equal.empty()) {
                equal.push_back(f);
            }
            equal.push_back(c);
        }
    }
    return letters;
}

// The letter itself first.
Letters equalLetters(char32_t c) {
    static const std::unordered_map<char32_t, Letters> letters = lettersByFolding();
    const auto found = letters.find(folded(c));
    Letters equal = found == letters.end() ? Letters{c} : found->second;
    std::iter_swap(equal.begin(), std::find(equal.begin(), equal.end(), c));
    return equal;
}

void append(QStringList& texts, char32_t letter) {
    const QString text = QString::fromUcs4(&letter, 1);
    for (QString& each : texts) {
        each += text;
    }
}

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

std::optional<QStringList> spellings(const QString& text, qsizetype atMost) {
    const auto caseless = [](QChar c) { return !mayHaveCase(c.unicode()); };
    if (std::all_of(text.begin(), text.end(), caseless)) {
        return QStringList{text};
    }
    QStringList texts{QString()};
    for (const char32_t c : text.toUcs4()) {
        const QStringList before = texts;
        texts.clear();
        for (const char32_t letter : mayHaveCase(c) ? equalLetters(c) : Letters{c}) {
            QStringList continued = before;
            append(continued, letter);
            texts += continued;
        }
        if (texts.size() > atMost) {
            return std::nullopt;
        }
    }
    // A lone surrogate has no place in UTF-8, nor in the list.
    return texts.front() == text ? std::optional(texts) : std::nullopt;
}

int positionOf(QStringView part, QStringView text) {
    if (text.isEmpty()) {
        return 0;
    }
    return static_cast<int>(text.indexOf(part, 0, Qt::CaseInsensitive)) + 1;
}

} // namespace qvnd::jet
