#include "format/windows/CoverPreview.h"

#include "format/CoverPage.h"
#include "platform/error/IgnoringErrors.h"

#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace qvnd::format {

namespace {

constexpr int twipsPerPixel = 15;
// Image1 lies in Picture1, which clips it.
constexpr QSize boxSize(CoverPreviewBox::pictureWidth / twipsPerPixel,
                        CoverPreviewBox::pictureHeight / twipsPerPixel);
constexpr QRect pictureInBox(CoverPreviewBox::imageLeft / twipsPerPixel,
                             CoverPreviewBox::imageTop / twipsPerPixel,
                             CoverPreviewBox::imageWidth / twipsPerPixel,
                             CoverPreviewBox::imageHeight / twipsPerPixel);
constexpr QSize sheetSize(280, 396); // A4
constexpr int margin = 16;

} // namespace

void PictureView::setPicture(const QString& path) {
    picture_ = path.isEmpty() ? pictures::Picture() : pictures::Picture::fromFile(path);
    shown_ = {};
    triedAt_ = {};
    update();
}

void PictureView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), Qt::white);
    const QSize pixels = (QSizeF(size()) * devicePixelRatioF()).toSize();
    if (hasPicture() && triedAt_ != pixels) {
        triedAt_ = pixels;
        shown_ = painted(pixels);
    }
    painter.drawImage(rect(), shown_);
}

QImage PictureView::painted(QSize pixels) {
    QImage image;
    ignoringErrors([&] {
        if (!fonts_) {
            fonts_ = std::make_unique<drawing::FontFaces>(drawing::FontChoice::named);
        }
        image = picture_.image(pixels, *fonts_);
    });
    return image;
}

// A sheet is white and its text black, whatever colours the desktop has.
CoverSheet::CoverSheet(QWidget* parent) : QFrame(parent) {
    setFixedSize(sheetSize);
    setFrameStyle(QFrame::Box | QFrame::Plain);
    QPalette paper(palette());
    paper.setColor(QPalette::Window, Qt::white);
    paper.setColor(QPalette::WindowText, Qt::black);
    setPalette(paper);
    setAutoFillBackground(true);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->addStretch(2);
    layout->addWidget(line(u"lblPrjName"_s, u"工程名称"_s));
    layout->addStretch(2);
    layout->addWidget(pictureBox(), 0, Qt::AlignHCenter);
    layout->addStretch(3);
    layout->addWidget(line(u"lblOffName"_s, u"单位名称"_s));
    layout->addSpacing(margin / 2);
    layout->addWidget(line(u"lblDate"_s, u"2001-8-31"_s));
    layout->addStretch(1);
}

QLabel* CoverSheet::line(const QString& name, const QString& text) {
    auto* label = new QLabel(text);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
    return label;
}

QWidget* CoverSheet::pictureBox() {
    auto* box = new QWidget;
    box->setObjectName(u"Picture1"_s);
    box->setFixedSize(boxSize);
    auto* picture = new PictureView(box);
    picture->setObjectName(u"Image1"_s);
    picture->setAccessibleName(u"封面图片"_s);
    picture->setGeometry(pictureInBox);
    return box;
}

} // namespace qvnd::format
