#pragma once

#include "platform/drawing/metafile/VectorPicture.h"

#include <cmath>
#include <span>

// Coordinates of metafiles, and the curves that their records describe by rectangles and rays.
namespace qvnd::drawing::metafile {

// Where the plane's unit along each axis comes to lie, and its origin.
struct PlaneMap {
    VectorPoint right{1, 0};
    VectorPoint down{0, 1};
    VectorPoint origin{};

    VectorPoint turned(VectorPoint p) const {
        return {right.x * p.x + down.x * p.y, right.y * p.x + down.y * p.y};
    }
    VectorPoint at(VectorPoint p) const {
        const VectorPoint moved = turned(p);
        return {moved.x + origin.x, moved.y + origin.y};
    }
    VectorPath at(VectorPath path) const;
    // First this one, then the other.
    PlaneMap then(const PlaneMap& next) const;
    // By how much an area grows; below 0 where it is turned over.
    double determinant() const { return right.x * down.y - right.y * down.x; }
};

// Neither infinite nor so large that it could only come from a damaged file.
bool isSound(VectorPoint p);
bool isSound(const VectorPath& path);

struct Ellipse {
    VectorPoint centre;
    double rx = 0;
    double ry = 0;

    // That of a rectangle with those two corners.
    static Ellipse within(VectorPoint from, VectorPoint to);
    // Angles grow from the right downwards, in radians of the circle that the ellipse was.
    double angleOf(VectorPoint place) const;
    VectorPoint at(double angle) const { return beside(angle, 0); }
    // Goes on in a path by a line to where the arc begins, and by curves of a quarter at most.
    void addArc(VectorPath& path, double begin, double turn) const;

private:
    VectorPoint beside(double angle, double along) const;
};

// Through the points, or nothing where there are none.
VectorPath linesThrough(std::span<const VectorPoint> points);
// Appends the rectangle with those two corners.
void addRectangle(VectorPath& path, VectorPoint from, VectorPoint to);
// Each with two corners, one rectangle after the other.
VectorPath rectanglesBetween(std::span<const VectorPoint> corners);
// `corner`: width and height of the whole ellipse of which each corner has a quarter.
VectorPath roundedRectangle(VectorPoint from, VectorPoint to, VectorPoint corner);

} // namespace qvnd::drawing::metafile
