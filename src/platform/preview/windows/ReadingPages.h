#pragma once

#include "platform/preview/windows/PageSource.h"
#include "platform/preview/windows/ReadingText.h"

#include <QThread>

namespace qvnd::preview {

// Pages as our own engine reads the document: close to the exact ones, and available at once. May
// be made in any thread.
class ReadingPages : public PageSource {
public:
    ReadingPages(const DocumentReading& reading, const QString& lastLine);

    // Moves them to the thread that draws them; to be called in the thread that made them.
    void moveTo(QThread* thread) { text_.document->moveToThread(thread); }
    void setImage(std::size_t picture, const QImage& image);
    // The text of the pages, for screen readers.
    QString text() const { return text_.document->toPlainText(); }

    int count() const override { return count_; }
    QSizeF size(int page) const override;
    void paint(QPainter& painter, int page, const QRectF& target, const QRectF& exposed) override;

private:
    ReadingText text_;
    QSizeF paper_; // points
    int count_ = 1;
};

} // namespace qvnd::preview
