#pragma once

#include "platform/word/docfile/document/DocumentContent.h"

#include <array>
#include <optional>
#include <span>
#include <vector>

// The header document: the separators of notes, then six stories a section, [MS-DOC] 2.3.3 and
// 2.8.22 Plcfhdd.
namespace qvnd::word {

inline constexpr std::size_t separatorStories = 6;
inline constexpr std::size_t headersPerSection = 6;
static_assert(separatorStories == headersPerSection); // both come in sets of one size

// The header document as it is written: each header or footer with the guard paragraph behind it
// that the format demands, and one more paragraph mark at the very end. Both are empty when there
// is no separator and no section has a header or footer.
struct EncodedHeaders {
    SlicedText text; // its length is ccpHdd
    Bytes plcfHdd;
};

// A separator, a header or a footer in `sections` ends in a paragraph mark of its own (the guard is
// not part of it). `mark`: a story of one paragraph mark, for the guards.
EncodedHeaders encodeHeaders(const std::array<SlicedText, separatorStories>& separators,
                             std::span<const HeaderSet> sections,
                             const std::shared_ptr<const Story>& mark);

// Where a story of the header document lies, without its guard paragraph.
struct HeaderPlace {
    Cp start = 0;
    Cp length = 0;
    bool operator==(const HeaderPlace&) const = default;
};
using HeaderPlaces = std::array<std::optional<HeaderPlace>, headersPerSection>;

// The separators of notes, under the same conditions as decodeHeaders().
HeaderPlaces decodeSeparators(ByteView plcfHdd, Cp length, int* damage = nullptr);

// One entry a section, at most `sections`, for a header document of `length` characters. Stories
// that lie outside of it or over one before are left out, and counted in `*damage` where given.
std::vector<HeaderPlaces> decodeHeaders(ByteView plcfHdd, Cp length, std::size_t sections,
                                        int* damage = nullptr);

} // namespace qvnd::word
