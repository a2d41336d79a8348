#pragma once

#include <cstdint>
#include <string>

namespace qvnd::layout {

// Names a face of a FontMetrics.
using FaceId = std::uint32_t;

// A face as a document asks for it.
struct FaceRequest {
    std::u16string name;
    bool bold = false;
    bool italic = false;
    bool eastAsian = false; // for Chinese characters
    bool operator==(const FaceRequest&) const = default;
};

// Room of a line of one face above and below its foot, and the leading that stands above a line
// unless the document wants none; in parts of the font size.
struct FaceHeights {
    double ascent = 0.8;
    double descent = 0.2;
    double leading = 0;
};

// What the layout asks of fonts. All measures are parts of the font size. Calls for the same face
// are cheap after the first.
class FontMetrics {
public:
    virtual ~FontMetrics() = default;

    virtual FaceId face(const FaceRequest& request) = 0;
    // The face that shows a character which the given one is to show: itself, or a stand-in.
    virtual FaceId shownBy(FaceId face, char32_t character) = 0;
    virtual double advance(FaceId face, char32_t character) = 0;
    virtual FaceHeights heights(FaceId face) = 0;
};

} // namespace qvnd::layout
