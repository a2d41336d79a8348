#pragma once

#include <cstdint>
#include <vector>

namespace qvnd::layout {

struct PathPoint {
    double x = 0;
    double y = 0;
    bool operator==(const PathPoint&) const = default;
};

// Lines and curves one after the other, of one figure or of several.
struct Path {
    enum class Step : std::uint8_t { move, line, curve, close };
    std::vector<Step> steps;
    std::vector<PathPoint> points; // one for each move and line, three for each curve

    void moveTo(PathPoint to);
    // The first point of a path begins it.
    void lineTo(PathPoint to);
    void curveTo(PathPoint first, PathPoint second, PathPoint to);
    void close();
    bool isEmpty() const { return steps.empty(); }
};

} // namespace qvnd::layout
