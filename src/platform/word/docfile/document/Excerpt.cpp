#include "platform/word/docfile/document/Excerpt.h"

#include <algorithm>

namespace qvnd::word {

namespace {

constexpr char16_t firstPrintable = 0x20;
constexpr char16_t wideSpace = 0x3000;

bool isBlank(char16_t c) { return c <= u' ' || c == wideSpace; }

bool isHighSurrogate(char16_t c) { return c >= 0xD800 && c < 0xDC00; }

} // namespace

std::u16string wordsFrom(std::u16string_view text, std::size_t at) {
    constexpr std::size_t longest = 12;
    const auto from = text.begin() + static_cast<std::ptrdiff_t>(std::min(at, text.size()));
    const auto first = std::find_if_not(from, text.end(), isBlank);
    const auto end = std::find_if(first, text.end(), [](char16_t c) { return c < firstPrintable; });
    std::u16string words(first, end);
    if (words.size() > longest) {
        words.resize(isHighSurrogate(words[longest - 1]) ? longest - 1 : longest);
        words += u"…";
    }
    return words;
}

std::u16string wordsOfParagraph(std::u16string_view text, std::size_t at) {
    std::size_t begin = std::min(at, text.size());
    const auto ends = [](char16_t c) { return c == 0x07 || c == 0x0C || c == 0x0D; };
    while (begin > 0 && !ends(text[begin - 1])) {
        --begin;
    }
    return wordsFrom(text, begin);
}

std::u16string firstPlace(const std::u16string& words) {
    return words.empty() ? words : u"，第一处在“" + words + u"”";
}

} // namespace qvnd::word
