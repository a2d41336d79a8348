#include "platform/preview/windows/OwnPages.h"

#include <QPainter>

#include <algorithm>

namespace qvnd::preview {

namespace {

constexpr int keptAround = 2; // pages before and behind those that are seen

} // namespace

OwnPages::OwnPages(const QString& path, std::shared_ptr<FontShelf> fonts,
                   std::function<int(QSizeF)> firstWidth, qreal devicePixelRatio)
    : work_(path, std::move(fonts),
            [firstWidth = std::move(firstWidth), devicePixelRatio](QSizeF size) {
                return std::clamp(qRound(firstWidth(size) * devicePixelRatio), 1, mostPixels);
            },
            {[this](const PaintedPages::Sizes& sizes, bool isWhole) {
                 sizes_ = sizes;
                 isWhole_ = isWhole;
                 emit found();
             },
             [this](int page, const QImage& image) { take(page, image); },
             [this] { setOutdated(); },
             [this](const word::DocumentRefusal& refusal) { emit failed(refusal); }}) {
    asking_.setSingleShot(true);
    asking_.setInterval(0);
    connect(&asking_, &QTimer::timeout, this, &OwnPages::ask);
}

bool OwnPages::wait(std::chrono::milliseconds patience) {
    PaintedPages::First first = work_.wait(patience);
    if (first.sizes.empty()) {
        return false;
    }
    sizes_ = std::move(first.sizes);
    isWhole_ = first.isWhole;
    images_[0] = {first.image, false};
    return true;
}

void OwnPages::standIn(const OwnPages& others) {
    for (auto it = others.images_.cbegin(); it != others.images_.cend(); ++it) {
        if (!images_.contains(it.key())) {
            images_[it.key()] = {it->image, true};
        }
    }
}

void OwnPages::paint(QPainter& painter, int page, const QRectF& target) {
    const auto known = images_.constFind(page);
    if (known != images_.constEnd()) {
        painter.save();
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(target, known->image);
        painter.restore();
    }
    const double pixels = target.width() * painter.device()->devicePixelRatioF();
    seen_[page] = std::clamp(qRound(pixels), 1, mostPixels);
    asking_.start();
}

void OwnPages::take(int page, const QImage& image) {
    images_[page] = {image, false};
    emit drawn(page);
}

void OwnPages::setOutdated() {
    for (Image& image : images_) {
        image.isOutdated = true;
    }
    emit drawn(0);
}

// The pages that are seen, then those that come into sight next.
void OwnPages::ask() {
    if (seen_.isEmpty()) {
        return;
    }
    const int first = seen_.firstKey();
    const int last = seen_.lastKey();
    seen_.insert(last + 1, seen_.value(last));
    std::vector<PaintedPages::Wanted> wanted;
    for (auto it = seen_.cbegin(); it != seen_.cend(); ++it) {
        wanted.push_back({it.key(), it.value()});
    }
    if (first > 0) {
        wanted.push_back({first - 1, seen_[first]});
    }
    std::erase_if(wanted, [this](const PaintedPages::Wanted& it) { return !needs(it); });
    work_.want(std::move(wanted));
    images_.removeIf(
        [=](auto it) { return it.key() < first - keptAround || it.key() > last + keptAround; });
    seen_.clear();
}

bool OwnPages::needs(const PaintedPages::Wanted& wanted) const {
    const auto known = images_.constFind(wanted.page);
    return known == images_.constEnd() || known->isOutdated || known->image.width() != wanted.width;
}

} // namespace qvnd::preview
