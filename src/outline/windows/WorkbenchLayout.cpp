#include "outline/windows/WorkbenchLayout.h"

#include <algorithm>

namespace qvnd::outline {

namespace {

constexpr int twipsPerPixel = 15;
constexpr double leastWidth = 5000;
constexpr double leastHeight = 4000;
constexpr double top = 450; // under the toolbar
constexpr double barWidth = 80;
constexpr double barGap = 20;
constexpr double margin = 100;
constexpr double paneGap = 200;
constexpr double buttonWidth = 2100;
constexpr double buttonHeight = 500;

int pixels(double twips) { return qRound(twips / twipsPerPixel); }

// By its edges, so that neighbours meet without a gap of rounding.
QRect rect(double left, double from, double right, double to) {
    return {QPoint(pixels(left), pixels(from)), QPoint(pixels(right) - 1, pixels(to) - 1)};
}

} // namespace

void WorkbenchLayout::Bar::put(double at, double size) {
    place = wanted = at;
    high = 0.7 * size;
}

void WorkbenchLayout::Bar::drag(double to) {
    wanted = to;
    if (to > low && to < high) {
        place = to;
    }
}

void WorkbenchLayout::Bar::drop() { place = wanted = std::clamp(wanted, low, high); }

bool WorkbenchLayout::resize(const QSize& form) {
    const double width = form.width() * twipsPerPixel;
    const double height = form.height() * twipsPerPixel;
    if (width < leastWidth || height < leastHeight) {
        return false;
    }
    width_ = width;
    height_ = height;
    left_.low = 0.4 * width;
    left_.put(0.4 * width + barGap, width);
    upper_.low = 0.3 * height;
    upper_.put(height * 3 / 5 - 300, height);
    return true;
}

void WorkbenchLayout::dragVertical(int x) { left_.drag(left_.place + x * twipsPerPixel + barGap); }

void WorkbenchLayout::dragHorizontal(int y) { upper_.drag(upper_.place + y * twipsPerPixel); }

void WorkbenchLayout::drop() {
    left_.drop();
    upper_.drop();
}

WorkbenchLayout::Places WorkbenchLayout::places() const {
    const double bar = left_.place;
    const double middle = top + upper_.place;
    const double lower = middle + barWidth;
    const double bottom = height_ - margin;
    const double right = width_ - margin;
    const double buttons = right - buttonWidth;

    Places places;
    places.TbarBid = rect(0, 0, width_, top);
    places.TabCurrent = rect(margin, top, bar, middle);
    places.lblResize = rect(bar, top, bar + barWidth, middle);
    places.fraSee = rect(bar + barWidth, top, right, middle);
    places.imgSpliter = rect(margin, middle, right, lower);
    places.TabTemplate = rect(margin, lower, buttons - paneGap, bottom);
    const double exitTop = bottom - buttonHeight;
    places.cmdExit = rect(buttons, exitTop, right, bottom);
    places.cmdEdit = rect(buttons, exitTop - margin - buttonHeight, right, exitTop - margin);
    return places;
}

} // namespace qvnd::outline
