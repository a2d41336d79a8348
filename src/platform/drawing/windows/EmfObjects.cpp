#include "platform/drawing/windows/DeviceIndependentBitmap.h"
#include "platform/drawing/windows/EmfPlayer.h"
#include "platform/files/TextDecoding.h"

#include <algorithm>

// The records of an EMF that make and select objects, and those that draw text and pictures of
// pixels.
namespace qvnd::drawing {

namespace {

constexpr std::uint32_t sourceCopy = 0x00CC0020;

} // namespace

// --- objects ------------------------------------------------------------------------------------

namespace {

// StockObject ([MS-EMF] 2.1.31).
LogicalObject stockObject(std::uint32_t number) {
    switch (number) {
    case 0:
        return QBrush(Qt::white);
    case 1:
        return QBrush(QColor(192, 192, 192));
    case 2:
        return QBrush(QColor(128, 128, 128));
    case 3:
        return QBrush(QColor(64, 64, 64));
    case 4:
        return QBrush(Qt::black);
    case 5:
        return QBrush(Qt::NoBrush);
    case 6:
        return LogicalPen{Qt::SolidLine, 0, Qt::white};
    case 7:
        return LogicalPen{};
    case 8:
        return LogicalPen{Qt::NoPen, 0, Qt::black};
    default:
        return number >= 10 && number <= 17 && number != 15 ? LogicalObject(LogicalFont{})
                                                            : LogicalObject();
    }
}

} // namespace

void EmfPlayer::selectObject(In& in) {
    constexpr std::uint32_t stock = 0x80000000;
    const std::uint32_t number = in.u32();
    dc_.select(number & stock ? stockObject(number & ~stock) : objects_.at(number));
}

void EmfPlayer::createPen(In& in) {
    const std::uint32_t number = in.u32();
    const std::uint32_t style = in.u32();
    const double width = in.i32();
    in.skip(4);
    objects_.put(number, penOf(style, width, in.u32()));
}

void EmfPlayer::extCreatePen(In& in) {
    constexpr std::uint32_t geometric = 0x00010000;
    const std::uint32_t number = in.u32();
    in.skip(16);
    const std::uint32_t style = in.u32();
    const double width = in.u32();
    in.skip(4);
    objects_.put(number, penOf(style, style & geometric ? width : 0, in.u32()));
}

void EmfPlayer::createBrush(In& in) {
    const std::uint32_t number = in.u32();
    const std::uint32_t style = in.u32();
    const std::uint32_t color = in.u32();
    objects_.put(number, brushOf(style, color, in.u32()));
}

void EmfPlayer::createPatternBrush(In& in) {
    const std::uint32_t number = in.u32();
    in.skip(4);
    const QImage pattern = bitmap(in);
    objects_.put(number, pattern.isNull() ? QBrush(Qt::gray) : QBrush(pattern));
}

void EmfPlayer::createFont(In& in) {
    constexpr std::size_t faceUnits = 32;
    const std::uint32_t number = in.u32();
    LogicalFont font;
    font.height = in.i32();
    in.skip(4);
    font.escapement = in.i32();
    in.skip(4);
    readFontStyle(in, in.i32(), font);
    font.face = QString::fromStdU16String(in.text(std::min(faceUnits, in.remaining() / 2)))
                    .section(QChar(0), 0, 0);
    objects_.put(number, font);
}

// --- text ---------------------------------------------------------------------------------------

QString EmfPlayer::letters(In& in, std::size_t count, std::size_t letterSize) {
    if (letterSize == 2) {
        return QString::fromStdU16String(in.text(count));
    }
    const word::ByteView bytes = in.view(count);
    return files::decodeText(QByteArray(reinterpret_cast<const char*>(bytes.data()),
                                        static_cast<qsizetype>(bytes.size())));
}

void EmfPlayer::extTextOut(In& in, std::size_t letterSize) {
    constexpr unsigned opaque = 2;
    in.skip(boundsSize + 12);
    const QPointF at = point(in);
    const std::size_t count = in.u32();
    const std::size_t textAt = in.u32();
    const unsigned options = in.u32();
    const QRectF area = box(in);
    const std::size_t advancesAt = in.u32();
    in.seek(textAt);
    const QString text = letters(in, count, letterSize);
    std::vector<double> advances;
    if (advancesAt != 0) {
        in.seek(advancesAt);
        while (in.remaining() >= 4 && advances.size() < count) {
            advances.push_back(in.i32());
        }
    }
    if (options & opaque) {
        dc_.fillBackground(area);
    }
    const bool isWhole = advances.size() == static_cast<std::size_t>(text.size());
    dc_.drawText(at, text, isWhole ? advances : std::vector<double>());
}

void EmfPlayer::smallTextOut(In& in) {
    constexpr unsigned withoutArea = 0x100;
    constexpr unsigned smallLetters = 0x200;
    const QPointF at = point(in);
    const std::size_t count = in.u32();
    const unsigned options = in.u32();
    in.skip(12);
    in.skip(options & withoutArea ? 0 : boundsSize);
    dc_.drawText(at, letters(in, count, options & smallLetters ? 1 : 2), {});
}

// --- pictures of pixels -------------------------------------------------------------------------

// Header and pixels stand where four numbers say, counted from the start of the record.
QImage EmfPlayer::bitmap(In& in) {
    const std::size_t headerAt = in.u32();
    const std::size_t headerSize = in.u32();
    const std::size_t pixelsAt = in.u32();
    const std::size_t pixelsSize = in.u32();
    if (headerSize == 0) {
        return {};
    }
    const std::size_t back = in.position();
    in.seek(headerAt);
    const word::ByteView header = in.view(headerSize);
    in.seek(pixelsAt);
    QImage image = dibImage(header, in.view(pixelsSize));
    in.seek(back);
    return image;
}

void EmfPlayer::blockTransfer(In& in, bool hasSourceSize) {
    in.skip(boundsSize);
    BitmapTransfer transfer;
    const QPointF target = point(in);
    transfer.target = QRectF(target, extentOf(in));
    transfer.rasterOperation = in.u32();
    const QPointF source = point(in);
    in.skip(24 + 4 + 4); // transform, background, usage
    transfer.image = bitmap(in);
    transfer.source = QRectF(source, hasSourceSize ? extentOf(in) : transfer.target.size());
    dc_.drawImage(transfer);
}

void EmfPlayer::alphaBlend(In& in) {
    in.skip(boundsSize);
    BitmapTransfer transfer;
    const QPointF target = point(in);
    transfer.target = QRectF(target, extentOf(in));
    in.skip(2);
    transfer.opacity = in.u8() / 255.0;
    const bool hasAlpha = in.u8() != 0;
    transfer.rasterOperation = sourceCopy;
    const QPointF source = point(in);
    in.skip(24 + 4 + 4);
    transfer.image = bitmap(in);
    if (hasAlpha && transfer.image.format() == QImage::Format_RGB32) {
        transfer.image.reinterpretAsFormat(QImage::Format_ARGB32_Premultiplied);
    }
    transfer.source = QRectF(source, extentOf(in));
    dc_.drawImage(transfer);
}

// What both records of a bitmap without a device begin with. The part of it that is drawn counts
// from its lower edge.
BitmapTransfer EmfPlayer::diBits(In& in) {
    in.skip(boundsSize);
    BitmapTransfer transfer;
    const QPointF target = point(in);
    const QPointF source = point(in);
    const QSizeF size = extentOf(in);
    transfer.image = bitmap(in);
    transfer.rasterOperation = sourceCopy;
    transfer.target = QRectF(target, size);
    transfer.source =
        QRectF(QPointF(source.x(), transfer.image.height() - source.y() - size.height()), size);
    return transfer;
}

void EmfPlayer::stretchDiBits(In& in) {
    BitmapTransfer transfer = diBits(in);
    in.skip(4);
    transfer.rasterOperation = in.u32();
    transfer.target.setSize(extentOf(in));
    dc_.drawImage(transfer);
}

void EmfPlayer::setDiBitsToDevice(In& in) { dc_.drawImage(diBits(in)); }

} // namespace qvnd::drawing
