#include "platform/word/layout/FloatPlace.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace qvnd::layout {

namespace {

using Align = FloatPlace::Align;
using Spot = word::FrameSpot;

// The start of something of that length between two ends.
double startOf(Align align, double from, double to, double distance, double length) {
    switch (align) {
    case Align::start:
        return from;
    case Align::centre:
        return (from + to - length) / 2;
    case Align::end:
        return to - length;
    default:
        return from + distance;
    }
}

const PageArea& acrossFrame(const FloatPlace& place, const FloatFrame& frame) {
    return place.across == Spot::Across::fromPage     ? frame.page
           : place.across == Spot::Across::fromMargin ? frame.margins
                                                      : frame.column;
}

double topOf(const FloatPlace& place, const FloatFrame& frame) {
    if (place.down == Spot::Down::fromParagraph) {
        return frame.anchorTop + place.top;
    }
    const PageArea& area = place.down == Spot::Down::fromPage ? frame.page : frame.margins;
    return startOf(place.alignDown, area.top, area.bottom, place.top, place.height);
}

bool overlaps(const Obstacle& obstacle, const LineGap& line, double height) {
    return obstacle.area.top < line.top + height && obstacle.area.bottom > line.top &&
           obstacle.area.left < line.right && obstacle.area.right > line.left;
}

// The parts of the line that nothing is in the way of.
std::vector<LineGap> freeParts(const std::vector<Obstacle>& obstacles, const LineGap& line,
                               double height, double narrowest) {
    std::vector<std::pair<double, double>> taken;
    for (const Obstacle& obstacle : obstacles) {
        if (overlaps(obstacle, line, height)) {
            const bool all = !obstacle.beside;
            taken.emplace_back(all ? line.left : obstacle.area.left,
                               all ? line.right : obstacle.area.right);
        }
    }
    std::sort(taken.begin(), taken.end());
    taken.emplace_back(line.right, line.right);
    std::vector<LineGap> parts;
    double free = line.left;
    for (const auto& [from, to] : taken) {
        if (from - free >= narrowest) {
            parts.push_back({line.top, free, from});
        }
        free = std::max(free, to);
    }
    return parts;
}

} // namespace

PageArea areaOf(const FloatPlace& place, const FloatFrame& frame) {
    const PageArea& across = acrossFrame(place, frame);
    const double left =
        startOf(place.alignAcross, across.left, across.right, place.left, place.width);
    const double top = topOf(place, frame);
    return {left, top, left + place.width, top + place.height};
}

void keepCornersClear(double degrees, FloatPlace& place) {
    constexpr double halfTurn = 180;
    constexpr double toItsSide = 45;
    const double turn = std::abs(std::remainder(degrees, halfTurn));
    const double angle = turn * std::numbers::pi / halfTurn;
    const bool isSwapped = turn > toItsSide;
    const double width = isSwapped ? place.height : place.width;
    const double height = isSwapped ? place.width : place.height;
    const double across = width * std::cos(angle) + height * std::sin(angle);
    const double down = width * std::sin(angle) + height * std::cos(angle);
    place.apartAcross += (across - place.width) / 2;
    place.apartDown += (down - place.height) / 2;
}

double endOfObstacle(const std::vector<Obstacle>& obstacles, const LineGap& line, double height) {
    double end = line.top;
    for (const Obstacle& obstacle : obstacles) {
        if (overlaps(obstacle, line, height)) {
            const double below = obstacle.area.bottom;
            end = end > line.top ? std::min(end, below) : below;
        }
    }
    return end;
}

std::vector<LineGap> gapsFor(const std::vector<Obstacle>& obstacles, const LineGap& wanted,
                             double height, double narrowest) {
    LineGap line = wanted;
    // Each step leaves at least one obstacle above.
    for (std::size_t step = 0; step <= obstacles.size(); ++step) {
        const double below = endOfObstacle(obstacles, line, height);
        if (below == line.top) {
            return {line};
        }
        std::vector<LineGap> parts = freeParts(obstacles, line, height, narrowest);
        if (!parts.empty()) {
            return parts;
        }
        line.top = below;
    }
    return {line};
}

} // namespace qvnd::layout
