#include "platform/drawing/windows/DeviceIndependentBitmap.h"
#include "platform/drawing/windows/WmfPlayer.h"
#include "platform/files/TextDecoding.h"

#include <algorithm>

// The records of a WMF that draw text and pictures of pixels, and those that make objects.
namespace qvnd::drawing {

namespace {

constexpr unsigned gb2312Charset = 134;

} // namespace

// --- text ---------------------------------------------------------------------------------------

QString WmfPlayer::decoded(word::ByteView letters) const {
    const QByteArray bytes(reinterpret_cast<const char*>(letters.data()),
                           static_cast<qsizetype>(letters.size()));
    return dc_.state.font.charset == gb2312Charset ? files::decodeGbk(bytes)
                                                   : files::decodeText(bytes);
}

// A letter of two bytes has two widths.
std::vector<double> WmfPlayer::byUnits(const QString& text, const std::vector<double>& byBytes) {
    std::vector<double> widths;
    std::size_t at = 0;
    for (const QChar letter : text) {
        double width = 0;
        for (int byte = letter.unicode() < 0x80 ? 1 : 2; byte > 0 && at < byBytes.size(); --byte) {
            width += byBytes[at++];
        }
        widths.push_back(width);
    }
    return widths;
}

void WmfPlayer::textOut(In& in) {
    const std::size_t count = in.u16();
    const QString text = decoded(in.view(count));
    in.skip(count % 2);
    dc_.drawText(point(in), text, {});
}

void WmfPlayer::extTextOut(In& in) {
    constexpr unsigned opaque = 2;
    constexpr unsigned clipped = 4;
    const QPointF at = point(in);
    const std::size_t count = in.u16();
    const unsigned options = in.u16();
    QRectF area;
    if (options & (opaque | clipped)) {
        const QPointF first = forwardPoint(in);
        area = QRectF(first, forwardPoint(in));
    }
    const QString text = decoded(in.view(count));
    in.skip(std::min(count % 2, in.remaining()));
    std::vector<double> advances;
    while (in.remaining() >= 2 && advances.size() < count) {
        advances.push_back(in.i16());
    }
    if (options & opaque) {
        dc_.fillBackground(area);
    }
    dc_.drawText(at, text,
                 advances.size() == count ? byUnits(text, advances) : std::vector<double>());
}

// --- pictures of pixels -------------------------------------------------------------------------

// Lines of a bitmap count from its lower edge.
QRectF fromBelow(const QImage& image, QPointF at, QPointF size) {
    return {at.x(), image.height() - at.y() - size.y(), size.x(), size.y()};
}

void WmfPlayer::dibBitBlt(In& in) {
    constexpr std::size_t withoutBitmap = 18;
    const bool hasBitmap = in.remaining() > withoutBitmap;
    BitmapTransfer transfer;
    transfer.rasterOperation = in.u32();
    const QPointF source = point(in);
    in.skip(hasBitmap ? 0 : 2);
    const QPointF size = point(in);
    const QPointF target = point(in);
    transfer.target = QRectF(target, QSizeF(size.x(), size.y()));
    transfer.image = hasBitmap ? packedDibImage(in.view(in.remaining())) : QImage();
    transfer.source = QRectF(source, QSizeF(size.x(), size.y()));
    dc_.drawImage(transfer);
}

void WmfPlayer::dibStretchBlt(In& in) {
    constexpr std::size_t withoutBitmap = 22;
    const bool hasBitmap = in.remaining() > withoutBitmap;
    BitmapTransfer transfer;
    transfer.rasterOperation = in.u32();
    const QPointF size = point(in);
    const QPointF source = point(in);
    in.skip(hasBitmap ? 0 : 2);
    const QPointF targetSize = point(in);
    const QPointF target = point(in);
    transfer.target = QRectF(target, QSizeF(targetSize.x(), targetSize.y()));
    transfer.image = hasBitmap ? packedDibImage(in.view(in.remaining())) : QImage();
    transfer.source = QRectF(source, QSizeF(size.x(), size.y()));
    dc_.drawImage(transfer);
}

void WmfPlayer::stretchDib(In& in) {
    BitmapTransfer transfer;
    transfer.rasterOperation = in.u32();
    in.skip(2);
    const QPointF size = point(in);
    const QPointF source = point(in);
    const QPointF targetSize = point(in);
    const QPointF target = point(in);
    transfer.target = QRectF(target, QSizeF(targetSize.x(), targetSize.y()));
    transfer.image = packedDibImage(in.view(in.remaining()));
    transfer.source = fromBelow(transfer.image, source, size);
    dc_.drawImage(transfer);
}

void WmfPlayer::setDibToDev(In& in) {
    constexpr std::uint32_t sourceCopy = 0x00CC0020;
    in.skip(6);
    const QPointF source = point(in);
    const QPointF size = point(in);
    const QPointF target = point(in);
    BitmapTransfer transfer;
    transfer.rasterOperation = sourceCopy;
    transfer.target = QRectF(target, QSizeF(size.x(), size.y()));
    transfer.image = packedDibImage(in.view(in.remaining()));
    transfer.source = fromBelow(transfer.image, source, size);
    dc_.drawImage(transfer);
}

// --- objects ------------------------------------------------------------------------------------

void WmfPlayer::createPen(In& in) {
    const unsigned style = in.u16();
    const double width = in.i16();
    in.skip(2);
    objects_.add(penOf(style, width, in.u32()));
}

void WmfPlayer::createBrush(In& in) {
    const unsigned style = in.u16();
    const std::uint32_t color = in.u32();
    objects_.add(brushOf(style, color, in.u16()));
}

void WmfPlayer::createFont(In& in) {
    LogicalFont font;
    font.height = in.i16();
    in.skip(2);
    font.escapement = in.i16();
    in.skip(2);
    readFontStyle(in, in.i16(), font);
    QByteArray face;
    while (in.remaining() > 0) {
        const char letter = static_cast<char>(in.u8());
        if (letter == 0) {
            break;
        }
        face.append(letter);
    }
    font.face = files::decodeText(face);
    objects_.add(font);
}

void WmfPlayer::createPatternBrush(In& in) {
    in.skip(4);
    const QImage pattern = packedDibImage(in.view(in.remaining()));
    objects_.add(pattern.isNull() ? QBrush(Qt::gray) : QBrush(pattern));
}

// Scan lines of the page: each has its top, its bottom, and pairs of left and right.
void WmfPlayer::createRegion(In& in) {
    in.skip(10);
    const std::size_t scans = in.u16();
    in.skip(2 + 8);
    LogicalRegion region;
    for (std::size_t scan = 0; scan < scans && in.remaining() >= 8; ++scan) {
        const std::size_t count = in.u16();
        const double top = in.i16();
        const double bottom = in.i16();
        for (std::size_t i = 0; i + 1 < count; i += 2) {
            const double left = in.i16();
            region.path.addRect(QRectF(QPointF(left, top), QPointF(in.i16(), bottom)));
        }
        in.skip(2);
    }
    region.path = dc_.toDevice().map(region.path);
    objects_.add(region);
}

void WmfPlayer::selectClipRegion(In& in) {
    if (const auto* region = std::get_if<LogicalRegion>(&objects_.at(in.u16()))) {
        dc_.clip(*region, DeviceContext::Clip::replace);
    } else {
        dc_.clearClip();
    }
}

void WmfPlayer::fillRegion(In& in) {
    const auto* region = std::get_if<LogicalRegion>(&objects_.at(in.u16()));
    const auto* brush = std::get_if<QBrush>(&objects_.at(in.u16()));
    if (region && brush) {
        dc_.fillRegion(*region, *brush);
    }
}

void WmfPlayer::paintRegion(In& in) {
    if (const auto* region = std::get_if<LogicalRegion>(&objects_.at(in.u16()))) {
        dc_.fillRegion(*region, dc_.state.brush);
    }
}

} // namespace qvnd::drawing
