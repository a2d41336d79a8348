#pragma once

namespace qvnd::word {

// Whether a level of a list may show its number that way: an MSONFC ([MS-OSHARED] 2.2.1.3) but
// for the four that [MS-DOC] 2.9.150 rules out, or no number at all.
constexpr bool isNumberFormatOfLists(unsigned nfc) {
    constexpr unsigned last = 0x3B;
    constexpr unsigned none = 0xFF;
    const bool excluded = nfc == 0x08 || nfc == 0x09 || nfc == 0x0F || nfc == 0x13;
    return nfc == none || (nfc <= last && !excluded);
}

// What may stand between a number and its paragraph: 0 a tab, 1 a space, 2 nothing.
constexpr bool isFollowedSoundly(unsigned follow) { return follow <= 2; }

} // namespace qvnd::word
