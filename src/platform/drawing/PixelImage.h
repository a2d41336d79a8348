#pragma once

#include <cstdint>
#include <vector>

namespace qvnd::drawing {

// A picture ready to be painted: four bytes a pixel, blue, green, red, opacity, the colours
// multiplied by the opacity; rows follow each other without gaps.
struct PixelImage {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels;
};

} // namespace qvnd::drawing
