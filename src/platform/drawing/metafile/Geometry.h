#pragma once

#include "platform/drawing/metafile/VectorPicture.h"

#include <cmath>
#include <span>

// Coordinates of metafiles, and the curves that their records describe by rectangles and rays.
namespace qvnd::drawing::metafile {

// x' = a x + c y + e, y' = b x + d y + f
struct PlaneMap {
    double a = 1;
    double b = 0;
    double c = 0;
    double d = 1;
    double e = 0;
    double f = 0;

    VectorPoint at(VectorPoint p) const { return {a * p.x + c * p.y + e, b * p.x + d * p.y + f}; }
    VectorPoint turned(VectorPoint p) const { return {a * p.x + c * p.y, b * p.x + d * p.y}; }
    VectorPath at(VectorPath path) const;
    // First this one, then the other.
    PlaneMap then(const PlaneMap& next) const;
    // By how much an area grows; below 0 where it is turned over.
    double determinant() const { return a * d - b * c; }
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
