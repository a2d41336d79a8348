#include "platform/preview/windows/PdfPages.h"

#include <QPainter>

#include <algorithm>
#include <cstdlib>

namespace qvnd::preview {

namespace {

constexpr int keptAroundDrawn = 4; // pages before and behind the one drawn last

} // namespace

PdfPages::PdfPages(const QString& path) : document_(nullptr) {
    document_.load(path);
    renderer_.setDocument(&document_);
    renderer_.setRenderMode(QPdfPageRenderer::RenderMode::MultiThreaded);
    connect(&renderer_, &QPdfPageRenderer::pageRendered, this,
            [this](int page, QSize, const QImage& image) { take(page, image); });
}

bool PdfPages::isValid() const {
    return document_.status() == QPdfDocument::Status::Ready && document_.pageCount() > 0;
}

void PdfPages::prepare(int page, int width, qreal devicePixelRatio) {
    const QSizeF points = size(page);
    const double pixels = std::clamp(width * devicePixelRatio, 1.0, double(mostPixels));
    const double height = points.height() / std::max(1.0, points.width()) * pixels;
    want({page, QSize(qRound(pixels), std::clamp(qRound(height), 1, mostPixels))});
}

void PdfPages::paint(QPainter& painter, int page, const QRectF& target) {
    const auto found = images_.constFind(page);
    if (found != images_.constEnd()) {
        painter.save();
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(target, *found);
        painter.restore();
    }
    prepare(page, qRound(target.width()), painter.device()->devicePixelRatioF());
}

// One page is drawn at a time; of those that are wanted meanwhile the last counts, since whoever
// still wants another will ask again.
void PdfPages::want(const Wanted& wanted) {
    const auto found = images_.constFind(wanted.page);
    if ((found != images_.constEnd() && found->size() == wanted.size) || atWork_ == wanted) {
        return;
    }
    if (atWork_) {
        next_ = wanted;
        return;
    }
    atWork_ = wanted;
    renderer_.requestPage(wanted.page, wanted.size);
}

void PdfPages::take(int page, const QImage& image) {
    images_[page] = image;
    forgetFarFrom(page);
    atWork_.reset();
    if (const auto next = std::exchange(next_, std::nullopt)) {
        want(*next);
    }
    emit drawn(page);
}

void PdfPages::forgetFarFrom(int page) {
    images_.removeIf([page](auto it) { return std::abs(it.key() - page) > keptAroundDrawn; });
}

} // namespace qvnd::preview
