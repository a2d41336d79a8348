#include "generate/windows/BidEditLayout.h"

#include <algorithm>

namespace qvnd::generate {

namespace {

constexpr int twipsPerPixel = 15;
constexpr double leastSize = 4000;
constexpr double leastWidthToSplit = 6000;
constexpr double leastHeightToSplit = 5000;
constexpr double left = 100;
constexpr double top = 450; // under the toolbar
constexpr double bottomMargin = 500;
constexpr double splitterWidth = 50;
constexpr double rightMargin = 250;
constexpr double lowest = 0.3; // parts of the form's width
constexpr double highest = 0.7;

int pixels(double twips) { return qRound(twips / twipsPerPixel); }

// By its edges, so that neighbours meet without a gap of rounding.
QRect rect(double x, double y, double width, double height) {
    return {QPoint(pixels(x), pixels(y)), QPoint(pixels(x + width) - 1, pixels(y + height) - 1)};
}

} // namespace

bool BidEditLayout::resize(const QSize& form, int toolbarHeight) {
    const double width = form.width() * twipsPerPixel;
    const double height = form.height() * twipsPerPixel;
    isSplitterFree_ = width > leastWidthToSplit && height > leastHeightToSplit;
    if (width <= leastSize || height <= leastSize)
        return false;
    width_ = width;
    height_ = height;
    paneHeight_ = height - toolbarHeight * twipsPerPixel - bottomMargin;
    treeWidth_ = lowest * width;
    splitter_ = wanted_ = left + treeWidth_;
    previewLeft_ = left + treeWidth_ + splitterWidth;
    previewWidth_ = width - treeWidth_ - 350;
    return true;
}

void BidEditLayout::drag(int x) {
    if (!isSplitterFree_)
        return;
    wanted_ = splitter_ + x * twipsPerPixel;
    if (wanted_ > lowest * width_ && wanted_ < highest * width_)
        splitter_ = wanted_;
}

void BidEditLayout::drop() {
    if (!isSplitterFree_)
        return;
    splitter_ = wanted_ = std::clamp(wanted_, lowest * width_, highest * width_);
    treeWidth_ = splitter_ - left;
    previewLeft_ = splitter_ + splitterWidth;
    previewWidth_ = width_ - previewLeft_ - rightMargin;
}

BidEditLayout::Places BidEditLayout::places() const {
    Places places;
    places.TbarBidSet = rect(0, 0, width_, top);
    places.TrvEdit = rect(left, top, treeWidth_, paneHeight_);
    places.Image1 = rect(splitter_, top, splitterWidth, paneHeight_);
    places.PicEdit = rect(previewLeft_, top, previewWidth_, paneHeight_);
    return places;
}

} // namespace qvnd::generate
