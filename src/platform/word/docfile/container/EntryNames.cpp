#include "platform/word/docfile/container/CompoundFile.h"

namespace qvnd::word {

namespace {

// Simple upper case of one code unit for the scripts whose letters names are made of in practice:
// Latin-1, Greek and Cyrillic. All others compare as they are.
char16_t upper(char16_t c) {
    if ((c >= u'a' && c <= u'z') || (c >= 0xE0 && c <= 0xFE && c != 0xF7) ||
        (c >= 0x3B1 && c <= 0x3C9 && c != 0x3C2) || (c >= 0x430 && c <= 0x44F)) {
        return static_cast<char16_t>(c - 0x20);
    }
    if (c >= 0x450 && c <= 0x45F) {
        return static_cast<char16_t>(c - 0x50);
    }
    return c == 0xFF ? u'\x178' : c;
}

} // namespace

int compareEntryNames(std::u16string_view left, std::u16string_view right) {
    if (left.size() != right.size()) {
        return left.size() < right.size() ? -1 : 1;
    }
    for (std::size_t i = 0; i < left.size(); ++i) {
        const char16_t a = upper(left[i]);
        const char16_t b = upper(right[i]);
        if (a != b) {
            return a < b ? -1 : 1;
        }
    }
    return 0;
}

bool isEntryName(std::u16string_view name) {
    constexpr std::size_t longest = 31;
    return !name.empty() && name.size() <= longest &&
           name.find_first_of(u"/\\:!") == std::u16string_view::npos;
}

} // namespace qvnd::word
