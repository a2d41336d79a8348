#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace qvnd::layout {

// Identifies a face within one FontMetrics.
using FaceId = std::uint32_t;

// The face that a document specifies.
struct FaceRequest {
    std::u16string name;
    bool bold = false;
    bool italic = false;
    bool eastAsian = false; // used for Chinese characters
    bool operator==(const FaceRequest&) const = default;
};

// Ascent and descent of a face, and the leading, which is added above a line unless the document
// disables it. All are fractions of the font size.
struct FaceHeights {
    double ascent = 0.8;
    double descent = 0.2;
    double leading = 0;
};

// One glyph for several characters, such as that for f and i. Without characters: there is none.
struct Ligature {
    std::size_t characters = 0;
    double advance = 0;
};

// The font measures that the layout needs, as fractions of the font size. Results are cached for
// each face.
class FontMetrics {
public:
    virtual ~FontMetrics() = default;

    virtual FaceId face(const FaceRequest& request) = 0;
    // The face that displays a character: the given face, or a fallback that has the character.
    virtual FaceId shownBy(FaceId face, char32_t character) = 0;
    virtual double advance(FaceId face, char32_t character) = 0;
    virtual FaceHeights heights(FaceId face) = 0;
    // The ligature of the face that a text begins with.
    virtual Ligature ligature(FaceId /*face*/, std::u32string_view /*text*/) { return {}; }
    // What is added to the advance of a character before another one where pairs are kerned.
    virtual double kerning(FaceId /*face*/, char32_t /*before*/, char32_t /*after*/) { return 0; }
};

} // namespace qvnd::layout
