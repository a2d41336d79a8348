#pragma once

#include "platform/preview/windows/PageSource.h"

#include <QHash>
#include <QImage>
#include <QPdfDocument>
#include <QPdfPageRenderer>

#include <optional>

namespace qvnd::preview {

// The pages of a PDF. Another thread draws a page at the resolution of the screen when the
// page is first wanted; until then an image of another size stands in for it, or white paper.
class PdfPages : public PageSource {
    Q_OBJECT

public:
    explicit PdfPages(const QString& path);

    // False for a file that is no PDF; then nothing else may be called.
    bool isValid() const;
    // Has the page drawn at that width, in device-independent pixels; drawn() tells when.
    void prepare(int page, int width, qreal devicePixelRatio);

    int count() const override { return document_.pageCount(); }
    QSizeF size(int page) const override { return document_.pagePointSize(page); }
    void paint(QPainter& painter, int page, const QRectF& target) override;

private:
    struct Wanted {
        int page;
        QSize size;
        bool operator==(const Wanted&) const = default;
    };
    void want(const Wanted& wanted);
    void take(int page, const QImage& image);
    void forgetFarFrom(int page);

    QPdfDocument document_;
    QPdfPageRenderer renderer_;
    QHash<int, QImage> images_;
    std::optional<Wanted> atWork_;
    std::optional<Wanted> next_;
};

} // namespace qvnd::preview
