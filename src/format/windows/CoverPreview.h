#pragma once

#include "platform/pictures/Picture.h"

#include <QFrame>
#include <QImage>
#include <QWidget>

#include <memory>

class QLabel;

namespace qvnd::format {

// A picture stretched over the whole widget; white without one, or with one that cannot be drawn.
class PictureView : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

    // Reads the file anew, also under the same path; an empty path shows none.
    void setPicture(const QString& path);
    bool hasPicture() const { return !picture_.isNull(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    // The picture in that many pixels; null when it cannot be drawn. Asked for once a file and
    // size.
    virtual QImage painted(QSize pixels);

private:
    pictures::Picture picture_;
    QImage shown_;  // the picture in the size that was painted last
    QSize triedAt_; // that size, also of a picture that could not be drawn
    std::unique_ptr<drawing::FontFaces> fonts_;
};

// The miniature of the cover: a sheet with the three centred lines and, between the first and the
// second, the clipped box of the picture. The texts are set in half their size; the box has one
// size, whatever the picture's.
class CoverSheet : public QFrame {
    Q_OBJECT

public:
    explicit CoverSheet(QWidget* parent = nullptr);

private:
    QLabel* line(const QString& name, const QString& text);
    QWidget* pictureBox();
};

} // namespace qvnd::format
