#include "platform/word/layout/Path.h"

#include <algorithm>
#include <limits>

namespace qvnd::layout {

void Path::moveTo(PathPoint to) {
    steps.push_back(Step::move);
    points.push_back(to);
}

void Path::lineTo(PathPoint to) {
    steps.push_back(isEmpty() ? Step::move : Step::line);
    points.push_back(to);
}

void Path::curveTo(PathPoint first, PathPoint second, PathPoint to) {
    if (isEmpty()) {
        moveTo(first);
    }
    steps.push_back(Step::curve);
    points.insert(points.end(), {first, second, to});
}

void Path::close() {
    if (!isEmpty()) {
        steps.push_back(Step::close);
    }
}

PathPoint upperLeft(const Path& path) {
    constexpr double nowhere = std::numeric_limits<double>::infinity();
    PathPoint corner{nowhere, nowhere};
    for (const PathPoint& point : path.points) {
        corner = {std::min(corner.x, point.x), std::min(corner.y, point.y)};
    }
    return corner;
}

} // namespace qvnd::layout
