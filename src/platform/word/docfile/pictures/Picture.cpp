#include "platform/word/docfile/pictures/Picture.h"

#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/document/DataBlobs.h"
#include "platform/word/docfile/format/OfficeArt.h"
#include "platform/word/docfile/pictures/Blip.h"
#include "platform/word/docfile/pictures/ImageFile.h"

#include <algorithm>
#include <cmath>

namespace qvnd::word {

namespace {

// PICF, [MS-DOC] 2.9.190.
constexpr std::size_t picfSize = 0x44;
constexpr std::size_t headSizeAt = 4;
constexpr std::size_t shapeFlagsAt = 14;
constexpr std::size_t widthGoalAt = 28;     // dxaGoal
constexpr std::size_t heightGoalAt = 30;    // dyaGoal
constexpr std::size_t widthScaleAt = 32;    // mx
constexpr std::size_t heightScaleAt = 34;   // my
constexpr std::uint16_t inlineShape = 0x64; // MM_SHAPE
constexpr std::uint16_t linkedShape = 0x66; // MM_SHAPEFILE
constexpr unsigned shapeFlags = 8;

constexpr std::int32_t fullScale = 1000; // mx and my are in tenths of a percent
constexpr std::int32_t longestGoal = 31680;

constexpr std::uint32_t lockAspectRatio = 0x80;
constexpr std::uint32_t filled = 0x10;
constexpr std::uint32_t lined = 0x08;
constexpr double emuPerPoint = 12700;
constexpr double fixedOne = 65536; // 16.16 fixed point

std::uint32_t fixedPoint(double value) {
    const double scaled = std::clamp(std::round(value * fixedOne), -2147483648.0, 2147483647.0);
    return static_cast<std::uint32_t>(static_cast<std::int32_t>(scaled));
}

std::uint32_t opacity(double transparency) {
    return fixedPoint(1 - std::clamp(transparency, 0.0, 1.0));
}

Bytes shapeRecord() {
    constexpr unsigned pictureFrame = 75;             // MSOSPT
    constexpr std::uint32_t firstShape = 0x401;       // inline shapes stand in no drawing group
    constexpr std::uint32_t anchoredWithType = 0xA00; // fHaveAnchor, fHaveSpt
    LittleEndianWriter content;
    content.u32(firstShape);
    content.u32(anchoredWithType);
    LittleEndianWriter record;
    art::writeRecord(record, 2, pictureFrame, art::fsp, content.data());
    return record.take();
}

Bytes anchorRecord() {
    constexpr std::uint32_t inlineAnchor = 0x80000000;
    LittleEndianWriter content;
    content.u32(inlineAnchor);
    LittleEndianWriter record;
    art::writeRecord(record, 0, 0, art::clientAnchor, content.data());
    return record.take();
}

Bytes newHead() {
    LittleEndianWriter head;
    head.u32(0); // lcb, patched in blob()
    head.u16(picfSize);
    head.u16(inlineShape);
    head.zeros(picfSize - head.position());
    head.patchU16(shapeFlagsAt, shapeFlags);
    head.patchU16(widthScaleAt, fullScale);
    head.patchU16(heightScaleAt, fullScale);
    return head.take();
}

bool isShape(std::uint16_t kind) { return kind == inlineShape || kind == linkedShape; }

// Metafiles and bitmaps that stand behind the head by themselves, as Word 97 still reads them.
bool isBarePicture(std::uint16_t kind) {
    constexpr std::uint16_t metafile = 8;
    constexpr std::uint16_t tiff = 0x62;
    constexpr std::uint16_t bitmap = 0x63;
    return kind == metafile || kind == tiff || kind == bitmap;
}

Bytes copyOf(ByteView view) { return {view.begin(), view.end()}; }

} // namespace

const Picture::Dimension Picture::horizontal{widthGoalAt, widthScaleAt, art::cropFromLeft,
                                             art::cropFromRight};
const Picture::Dimension Picture::vertical{heightGoalAt, heightScaleAt, art::cropFromTop,
                                           art::cropFromBottom};

std::optional<Picture> Picture::fromImage(ByteView imageFile) {
    const std::optional<ImageFile> image = recogniseImage(imageFile);
    if (!image) {
        return std::nullopt;
    }
    Picture picture = framed(encodeBlip(*image), image->width, image->height);
    picture.setLockAspectRatio(true);
    picture.setFillVisible(false);
    picture.setLineVisible(false);
    return picture;
}

Picture Picture::fromStore(Bytes entry, const art::ShapeProperties& shape, std::int64_t width,
                           std::int64_t height) {
    Picture picture = framed(std::move(entry), double(width), double(height));
    for (const std::uint16_t opid :
         {art::cropFromTop, art::cropFromBottom, art::cropFromLeft, art::cropFromRight,
          art::pictureContrast, art::pictureBrightness}) {
        if (const auto value = shape.value(opid)) {
            picture.set(opid, *value);
        }
    }
    for (const Dimension& dimension : {horizontal, vertical}) {
        const double part = std::clamp(picture.visible(dimension), 0.01, 1.0);
        const double shown = picture.headField(dimension.goalAt);
        const double goal = std::min(shown / part, double(longestGoal));
        picture.setHeadField(dimension.goalAt, int(std::lround(goal)));
        picture.setHeadField(dimension.scaleAt,
                             std::max(1, int(std::lround(shown / goal * fullScale))));
    }
    picture.setLockAspectRatio(true);
    picture.setFillVisible(false);
    picture.setLineVisible(false);
    return picture;
}

// A picture as wide and as high, no larger than the format allows, in a shape without properties.
Picture Picture::framed(Bytes bytes, double width, double height) {
    const double scale = std::min(1.0, longestGoal / std::max(width, height));
    Picture picture;
    picture.head_ = newHead();
    picture.setHeadField(widthGoalAt, std::max(1, int(std::lround(width * scale))));
    picture.setHeadField(heightGoalAt, std::max(1, int(std::lround(height * scale))));
    picture.hasShape_ = true;
    picture.beforeProperties_ = shapeRecord();
    picture.properties_.emplace();
    picture.properties_->setBlip(art::pib, 1);
    picture.afterProperties_ = anchorRecord();
    picture.rest_ = std::move(bytes);
    return picture;
}

std::optional<Picture> Picture::fromBlob(ByteView blob) {
    try {
        LittleEndianReader reader(dataBlobAt(blob, 0).value_or(ByteView{}), "PICF");
        reader.seek(headSizeAt);
        const std::size_t headSize = reader.u16();
        const std::uint16_t kind = reader.u16();
        if (headSize < picfSize || (!isShape(kind) && !isBarePicture(kind))) {
            return std::nullopt;
        }
        reader.seek(0);
        Picture picture;
        picture.head_ = copyOf(reader.view(headSize));
        if (kind == linkedShape) {
            const std::uint8_t nameSize = reader.u8();
            const ByteView name = reader.view(nameSize);
            picture.head_.push_back(nameSize);
            picture.head_.insert(picture.head_.end(), name.begin(), name.end());
        }
        if (isShape(kind)) {
            picture.readShape(reader);
        }
        picture.rest_ = copyOf(reader.view(reader.remaining()));
        return picture;
    } catch (const FormatError&) {
        return std::nullopt;
    }
}

void Picture::readShape(LittleEndianReader& reader) {
    const art::RecordHeader shape = art::readHeader(reader);
    if (shape.type != art::spContainer) {
        throw FormatError(FormatError::Kind::damaged, "PICFAndOfficeArtData: no shape");
    }
    hasShape_ = true;
    LittleEndianReader records(reader.view(shape.length), "OfficeArtSpContainer");
    Bytes* other = &beforeProperties_;
    while (records.remaining() >= art::headerSize) {
        const art::RecordHeader header = art::readHeader(records);
        const ByteView content = records.view(header.length);
        if (header.type == art::fopt && !properties_) {
            properties_.emplace(content, header.instance);
            other = &afterProperties_;
            continue;
        }
        LittleEndianWriter record;
        art::writeRecord(record, header.version, header.instance, header.type, content);
        other->insert(other->end(), record.data().begin(), record.data().end());
    }
}

DataBlob Picture::blob() const {
    constexpr unsigned propertyTable = 3; // version of an OfficeArtFOPT
    LittleEndianWriter shape;
    shape.bytes(beforeProperties_);
    if (properties_) {
        art::writeRecord(shape, propertyTable, properties_->count(), art::fopt,
                         properties_->encode());
    }
    shape.bytes(afterProperties_);
    LittleEndianWriter writer;
    writer.bytes(head_);
    if (hasShape_) {
        art::writeRecord(writer, art::container, 0, art::spContainer, shape.data());
    }
    writer.bytes(rest_);
    writer.patchU32(0, static_cast<std::uint32_t>(writer.position()));
    return std::make_shared<const Bytes>(writer.take());
}

std::int32_t Picture::headField(std::size_t at) const { return head_[at] | (head_[at + 1] << 8); }

void Picture::setHeadField(std::size_t at, std::int32_t value) {
    head_[at] = static_cast<std::uint8_t>(value);
    head_[at + 1] = static_cast<std::uint8_t>(value >> 8);
}

std::int32_t Picture::shown(const Dimension& dimension) const {
    const double twips = double{1} * headField(dimension.goalAt) * headField(dimension.scaleAt);
    return std::max(1, static_cast<std::int32_t>(std::lround(twips / fullScale)));
}

// The scale is kept to a tenth of a percent; the goal takes up what that rounds away.
void Picture::setShown(const Dimension& dimension, std::int32_t twips) {
    constexpr double largestScale = 32767;
    const double wanted = std::max(1, twips);
    const double goal = std::max(1, headField(dimension.goalAt));
    const double scale = std::clamp(std::round(wanted / goal * fullScale), 1.0, largestScale);
    const double exactGoal = std::round(wanted / scale * fullScale);
    setHeadField(dimension.scaleAt, static_cast<std::int32_t>(scale));
    setHeadField(dimension.goalAt,
                 static_cast<std::int32_t>(std::clamp(exactGoal, 1.0, double{longestGoal})));
}

double Picture::visible(const Dimension& dimension) const {
    return std::max(0.001, 1 - cropped(dimension.cropStart) - cropped(dimension.cropEnd));
}

double Picture::cropped(std::uint16_t opid) const {
    const auto value = properties_ ? properties_->value(opid) : std::nullopt;
    return value ? static_cast<std::int32_t>(*value) / fixedOne : 0;
}

std::int32_t Picture::width() const { return shown(horizontal); }
std::int32_t Picture::height() const { return shown(vertical); }
void Picture::setWidth(std::int32_t twips) { setShown(horizontal, twips); }
void Picture::setHeight(std::int32_t twips) { setShown(vertical, twips); }
std::int32_t Picture::naturalWidth() const { return headField(horizontal.goalAt); }
std::int32_t Picture::naturalHeight() const { return headField(vertical.goalAt); }

void Picture::setCrop(Side side, double part) {
    const bool sideways = side == Side::left || side == Side::right;
    const Dimension& dimension = sideways ? horizontal : vertical;
    const bool first = side == Side::left || side == Side::top;
    if (hasShape_) {
        const double whole = shown(dimension) / visible(dimension);
        set(first ? dimension.cropStart : dimension.cropEnd, fixedPoint(part));
        setShown(dimension, static_cast<std::int32_t>(std::lround(whole * visible(dimension))));
    }
}

void Picture::setBrightness(double part) {
    constexpr double strongest = 0x7FFF;
    const double value = std::clamp((part - 0.5) * fixedOne, -strongest - 1, strongest);
    set(art::pictureBrightness, static_cast<std::uint32_t>(std::lround(value)));
}

void Picture::setContrast(double part) {
    const double c = std::clamp(part, 0.0, 1.0);
    const double gain = c <= 0.5 ? 2 * c : 1 / std::max(2 * (1 - c), 1e-9);
    set(art::pictureContrast, fixedPoint(gain));
}

void Picture::setLineVisible(bool visible) { setFlag(art::lineFlags, lined, visible); }

void Picture::setLineWeight(double points) {
    set(art::lineWidth, static_cast<std::uint32_t>(std::lround(points * emuPerPoint)));
}

void Picture::setLineTransparency(double part) { set(art::lineOpacity, opacity(part)); }
void Picture::setFillVisible(bool visible) { setFlag(art::fillFlags, filled, visible); }
void Picture::setFillTransparency(double part) { set(art::fillOpacity, opacity(part)); }

void Picture::setLockAspectRatio(bool lock) {
    setFlag(art::protectionFlags, lockAspectRatio, lock);
}

void Picture::set(std::uint16_t opid, std::uint32_t value) {
    if (hasShape_) {
        propertyTable().set(opid, value);
    }
}

void Picture::setFlag(std::uint16_t opid, std::uint32_t flag, bool on) {
    if (hasShape_) {
        propertyTable().setFlag(opid, flag, on);
    }
}

art::ShapeProperties& Picture::propertyTable() {
    return properties_ ? *properties_ : properties_.emplace();
}

} // namespace qvnd::word
