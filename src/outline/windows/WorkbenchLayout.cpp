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
// The limits of the bars, as shares of the form's width and height.
constexpr double leastLeft = 0.4;
constexpr double leastUpper = 0.3;
constexpr double highest = 0.7;

int pixels(double twips) { return qRound(twips / twipsPerPixel); }

// By its edges, so that neighbours meet without a gap of rounding.
QRect rect(double left, double from, double right, double to) {
    return {QPoint(pixels(left), pixels(from)), QPoint(pixels(right) - 1, pixels(to) - 1)};
}

} // namespace

void WorkbenchLayout::Bar::put(double at, double lowest, double size) {
    place = wanted = at;
    low = lowest * size;
    high = highest * size;
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
    form_ = form;
    width_ = width;
    height_ = height;
    putBars();
    return true;
}

void WorkbenchLayout::putBars() {
    left_.put(leastLeft * width_ + barGap, leastLeft, width_);
    upper_.put(height_ * 3 / 5 - 300, leastUpper, height_);
    if (restored_ && restored_->form == form_ && left_.allows(restored_->vertical) &&
        upper_.allows(restored_->horizontal)) {
        left_.place = left_.wanted = restored_->vertical;
        upper_.place = upper_.wanted = restored_->horizontal;
    }
}

WorkbenchLayout::Bars WorkbenchLayout::bars() const { return {form_, left_.place, upper_.place}; }

void WorkbenchLayout::restore(const Bars& bars) {
    restored_ = bars;
    putBars();
}

QSize WorkbenchLayout::leastSize(int toolbarWidth, const QSize& plan, const QSize& preview,
                                 const QSize& libraries) {
    const auto twips = [](int pixels) { return double(pixels) * twipsPerPixel; };
    const double width =
        std::max({twips(toolbarWidth), (twips(plan.width()) + margin) / leastLeft,
                  (twips(preview.width()) + barWidth + margin) / (1 - highest),
                  margin + twips(libraries.width()) + paneGap + buttonWidth + margin});
    const double above = std::max(twips(plan.height()), twips(preview.height()));
    const double below = std::max(twips(libraries.height()), buttonHeight + margin + buttonHeight);
    const double height =
        std::max(above / leastUpper, (top + barWidth + below + margin) / (1 - highest));
    return {pixels(width), pixels(height)};
}

void WorkbenchLayout::dragVertical(int x) {
    restored_.reset();
    left_.drag(left_.place + x * twipsPerPixel + barGap);
}

void WorkbenchLayout::dragHorizontal(int y) {
    restored_.reset();
    upper_.drag(upper_.place + y * twipsPerPixel);
}

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
