#pragma once

#include <QByteArray>
#include <QImage>
#include <QRectF>
#include <QSizeF>
#include <QString>

class QPainter;

namespace qvnd::drawing {

// A picture of a file: bmp, jpg, gif (its first frame), png, wmf (placeable or plain) or emf, told
// apart by its bytes and not by its name. A metafile is drawn anew for each size, so it stays
// sharp. A plain WMF that never says how large its window is shows no area and is none.
class Picture {
public:
    Picture() = default;
    // Null when the bytes are no picture of these kinds, or a damaged one.
    static Picture fromData(const QByteArray& bytes);
    // Null also when the file cannot be read, or is longer than `largestFile`.
    static Picture fromFile(const QString& path);
    static constexpr qint64 largestFile = 64 * 1024 * 1024;

    bool isNull() const { return image_.isNull() && metafile_.isEmpty(); }
    // The natural size in points.
    QSizeF size() const { return size_; }

    // Stretches the picture over `target`. Draws nothing when null.
    void draw(QPainter& painter, const QRectF& target) const;

private:
    enum class Kind { image, wmf, emf };

    Kind kind_ = Kind::image;
    QImage image_;
    QByteArray metafile_;
    QSizeF size_;
};

} // namespace qvnd::drawing
