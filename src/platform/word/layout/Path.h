#pragma once

#include <cstdint>
#include <vector>

namespace qvnd::layout {

struct PathPoint {
    double x = 0;
    double y = 0;
    bool operator==(const PathPoint&) const = default;
};

// A path of lines and Bézier curves, with one figure or several.
struct Path {
    enum class Step : std::uint8_t { move, line, curve, close };
    std::vector<Step> steps;
    std::vector<PathPoint> points; // one for each move and line, three for each curve

    void moveTo(PathPoint to);
    // In an empty path this starts a figure.
    void lineTo(PathPoint to);
    void curveTo(PathPoint first, PathPoint second, PathPoint to);
    void close();
    bool isEmpty() const { return steps.empty(); }
};

// The upper left corner of the smallest rectangle around all points; of an empty path, nowhere.
PathPoint upperLeft(const Path& path);

} // namespace qvnd::layout
