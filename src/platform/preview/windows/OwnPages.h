#pragma once

#include "platform/preview/PaintedPages.h"
#include "platform/preview/windows/PageSource.h"

#include <QHash>
#include <QMap>
#include <QTimer>

namespace qvnd::preview {

// The pages of our own layout. Images are kept of the pages that are seen and of those beside them.
class OwnPages : public PageSource {
    Q_OBJECT

public:
    // `firstWidth`: how wide the first page is shown, in device-independent pixels.
    OwnPages(const QString& path, std::shared_ptr<FontShelf> fonts,
             std::function<int(QSizeF)> firstWidth, qreal devicePixelRatio);

    // Whether the first page was there in time; throws as PaintedPages::wait(). To be called at
    // most once, before the first signal.
    bool wait(std::chrono::milliseconds patience);
    // Shows the images of other pages in the place of these until they are painted.
    void standIn(const OwnPages& others);
    // Whether all pages are found.
    bool isWhole() const { return isWhole_; }

    int count() const override { return static_cast<int>(sizes_.size()); }
    QSizeF size(int page) const override { return sizes_[static_cast<std::size_t>(page)]; }
    void paint(QPainter& painter, int page, const QRectF& target) override;

signals:
    // More pages are found.
    void found();
    void failed(const word::DocumentRefusal& refusal);

private:
    struct Image {
        QImage image;
        bool isOutdated = false;
    };

    void take(int page, const QImage& image);
    void setOutdated();
    void ask();
    bool needs(const PaintedPages::Wanted& wanted) const;

    PaintedPages::Sizes sizes_;
    bool isWhole_ = false;
    QHash<int, Image> images_;
    QMap<int, int> seen_; // pages painted since the last time something was asked, their widths
    QTimer asking_;
    PaintedPages work_;
};

} // namespace qvnd::preview
