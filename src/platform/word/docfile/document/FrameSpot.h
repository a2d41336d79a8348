#pragma once

#include <cstdint>

namespace qvnd::word {

// Where something stands that floats: as Spa ([MS-DOC] 2.9.253) says it of a shape, and a
// paragraph's properties of a frame. In twips, right and down.
struct FrameSpot {
    enum class Across : std::uint8_t { fromMargin, fromPage, fromColumn };
    enum class Down : std::uint8_t { fromMargin, fromPage, fromParagraph };

    Across across = Across::fromColumn;
    Down down = Down::fromParagraph;
    int left = 0;
    int top = 0;
    int width = 0; // both more than 0, and small enough for a frame's properties
    int height = 0;
};

} // namespace qvnd::word
