#pragma once

#include <QImage>
#include <QObject>
#include <QTextObjectInterface>

#include <map>

namespace qvnd::preview {

// Draws the pictures of a text. A grey rectangle stands in for one that is not decoded yet.
class PictureObjects : public QObject, public QTextObjectInterface {
    Q_OBJECT
    Q_INTERFACES(QTextObjectInterface)

public:
    static constexpr int objectType = QTextFormat::UserObject + 1;

    using QObject::QObject;

    // The format of a picture's place in the text, in the text's own units.
    static QTextCharFormat place(std::size_t picture, QSizeF size);
    void setImage(std::size_t picture, const QImage& image) { images_[picture] = image; }

    QSizeF intrinsicSize(QTextDocument* document, int position, const QTextFormat& format) override;
    void drawObject(QPainter* painter, const QRectF& area, QTextDocument* document, int position,
                    const QTextFormat& format) override;

private:
    std::map<std::size_t, QImage> images_;
};

} // namespace qvnd::preview
