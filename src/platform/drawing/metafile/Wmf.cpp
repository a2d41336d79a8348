#include "platform/drawing/metafile/BitmapRecords.h"
#include "platform/drawing/metafile/Metafile.h"
#include "platform/drawing/metafile/WmfRecords.h"
#include "platform/word/docfile/container/FormatError.h"

#include <algorithm>
#include <cmath>

namespace qvnd::drawing::metafile {

namespace {

using wmf::forEachRecord;
using wmf::readPoint;
using wmf::readTurned;
using wmf::Record;
using word::ByteView;
using word::LittleEndianReader;

// Carries out the records of one file. The window that is set first is the area of the picture; the
// bounds of a placeable file are a window until a record sets another.
class WmfPlayer {
public:
    WmfPlayer() : context_({1, 1}), bitmaps_(context_) {}

    void play(ByteView file) {
        if (const auto bounds = wmf::placeableBounds(file)) {
            context_.state().mapping.windowOrigin = bounds->origin;
            setWindow(bounds->extent);
        }
        forEachRecord(file, [this](Record type, ByteView bytes) {
            try {
                LittleEndianReader reader(bytes, "WMF record");
                reader.skip(6);
                if (const CallRecord* call = callOfWmf(static_cast<std::uint32_t>(type))) {
                    playCall(*call, reader);
                } else if (!playObject(type, reader) && !playFigure(type, reader)) {
                    playRest(type, bytes, reader);
                }
            } catch (const word::FormatError&) {
                // A record that is shorter than it must be is left out.
                return;
            }
        });
    }

    const std::optional<VectorPoint>& window() const { return window_; }
    std::vector<VectorElement> takeElements() { return context_.takeElements(); }

private:
    // A record holds the arguments of its call from the last to the first.
    void playCall(const CallRecord& call, LittleEndianReader& reader) {
        Arguments arguments;
        std::size_t left = call.numbers;
        if (call.endsInColour) {
            arguments.numbers[--left] = reader.i32();
        }
        while (left > 0) {
            arguments.numbers[--left] = reader.i16();
        }
        if (call.call == Call::setWindowExtent) {
            setWindow(arguments.point(0));
        } else if (call.call == Call::setMapMode) {
            setMode(arguments.unsignedAt(0));
        } else {
            carryOut(call.call, arguments, context_);
        }
    }

    // The device is as large as the first window, so that whatever window follows fills it.
    void setWindow(VectorPoint extent) {
        DeviceContext::Mapping& mapping = context_.state().mapping;
        if (extent.x == 0 || extent.y == 0) {
            return;
        }
        if (!window_) {
            window_ = VectorPoint{std::abs(extent.x), std::abs(extent.y)};
        }
        mapping.windowExtent = extent;
        mapping.viewportExtent = *window_;
        mapping.mode = anisotropic;
    }

    // A fixed unit upwards matters only while no window is set.
    void setMode(unsigned mode) {
        if (!window_) {
            context_.state().mapping.mode = mode;
        }
    }

    bool playObject(Record type, LittleEndianReader& reader) {
        switch (type) {
        case Record::selectObject:
            if (const GraphicsObject* object = objects_.find(reader.u16())) {
                context_.select(*object);
            }
            return true;
        case Record::deleteObject:
            objects_.remove(reader.u16());
            return true;
        case Record::createPen: {
            const unsigned style = reader.u16();
            const double width = reader.i16();
            reader.skip(2);
            objects_.add(penOf(style, width, reader.u32()));
            return true;
        }
        case Record::createBrush: {
            const unsigned style = reader.u16();
            const std::uint32_t colour = reader.u32();
            objects_.add(brushOf(style, colour, reader.u16()));
            return true;
        }
        case Record::createFont:
            objects_.add(readFont(reader, false));
            return true;
        case Record::createDibPatternBrush:
            reader.skip(4); // the style, and what its colours mean
            objects_.add(patternBrush(bitmaps_.whole(reader.view(reader.remaining()), {})));
            return true;
        case Record::createPatternBrush:
            objects_.add(patternBrush(std::nullopt));
            return true;
        case Record::createPalette:
            objects_.add(OtherObject());
            return true;
        case Record::createRegion:
            objects_.add(readRegion(reader));
            return true;
        default:
            return false;
        }
    }

    // Region, [MS-WMF] 2.2.1.5: rows of rectangles, each with its top, its bottom, and pairs of
    // left and right. One that is cut off has those that are there: the objects behind it keep
    // their numbers.
    RegionObject readRegion(LittleEndianReader& reader) {
        reader.skip(10);
        const std::size_t rows = reader.u16();
        reader.skip(10);
        std::vector<VectorPoint> corners;
        for (std::size_t row = 0; row < rows && reader.remaining() >= 6; ++row) {
            const std::size_t ends = reader.u16();
            const double top = reader.i16();
            const double bottom = reader.i16();
            for (std::size_t i = 0; i + 1 < ends && reader.remaining() >= 4; i += 2) {
                corners.push_back({static_cast<double>(reader.i16()), top});
                corners.push_back({static_cast<double>(reader.i16()), bottom});
            }
            reader.skip(std::min<std::size_t>(2, reader.remaining()));
        }
        return {context_.toDevice(rectanglesBetween(corners))};
    }

    void fillRegion(LittleEndianReader& reader) {
        const auto* region = objects_.get<RegionObject>(reader.u16());
        const auto* brush = objects_.get<BrushObject>(reader.u16());
        if (region != nullptr && brush != nullptr) {
            context_.fillRegion(*region, *brush);
        }
    }

    void paintRegion(LittleEndianReader& reader) {
        if (const auto* region = objects_.get<RegionObject>(reader.u16())) {
            context_.fillRegion(*region, context_.state().brush);
        }
    }

    // A number that is no region's takes the clip away.
    void selectClipRegion(LittleEndianReader& reader) {
        if (const auto* region = objects_.get<RegionObject>(reader.u16())) {
            context_.clipToRegion(*region, DeviceContext::ClipMode::replace);
        } else {
            context_.clipNothing();
        }
    }

    bool playFigure(Record type, LittleEndianReader& reader) {
        switch (type) {
        case Record::polygon:
            context_.polygons({readPoints(reader.u16(), reader)});
            return true;
        case Record::polyline:
            context_.polyline(readPoints(reader.u16(), reader));
            return true;
        case Record::polyPolygon:
            playPolygons(reader);
            return true;
        case Record::fillRegion:
            fillRegion(reader);
            return true;
        case Record::paintRegion:
            paintRegion(reader);
            return true;
        case Record::selectClipRegion:
            selectClipRegion(reader);
            return true;
        default:
            return false;
        }
    }

    static std::vector<VectorPoint> readPoints(std::size_t count, LittleEndianReader& reader) {
        std::vector<VectorPoint> points;
        for (std::size_t i = 0; i < count; ++i) {
            points.push_back(readPoint(reader));
        }
        return points;
    }

    void playPolygons(LittleEndianReader& reader) {
        const std::size_t count = reader.u16();
        std::vector<std::size_t> sizes;
        for (std::size_t i = 0; i < count; ++i) {
            sizes.push_back(reader.u16());
        }
        std::vector<std::vector<VectorPoint>> figures;
        figures.reserve(sizes.size());
        for (const std::size_t size : sizes) {
            figures.push_back(readPoints(size, reader));
        }
        context_.polygons({figures.begin(), figures.end()});
    }

    void playRest(Record type, ByteView bytes, LittleEndianReader& reader) {
        switch (type) {
        case Record::text:
            playText(reader);
            break;
        case Record::extendedText:
            playExtendedText(reader);
            break;
        case Record::patternBlock: {
            const std::uint32_t operation = reader.u32();
            const VectorPoint extent = readTurned(reader);
            bitmaps_.fill(readTurned(reader), extent, operation);
            break;
        }
        case Record::dibBitBlock:
        case Record::dibStretchBlock:
        case Record::stretchBits:
            playBlock(type, bytes, reader);
            break;
        case Record::bitsToDevice:
            playBitsToDevice(reader);
            break;
        default:
            break;
        }
    }

    void playText(LittleEndianReader& reader) {
        const std::size_t count = reader.u16();
        const ByteView characters = reader.view(count);
        reader.skip(count % 2);
        context_.textOfBytes(readTurned(reader), characters, {});
    }

    // META_EXTTEXTOUT, [MS-WMF] 2.3.3.5: a rectangle where the options speak of one, and advances
    // where the record is long enough.
    void playExtendedText(LittleEndianReader& reader) {
        constexpr unsigned opaque = 2;
        constexpr unsigned clipped = 4;
        const VectorPoint at = readTurned(reader);
        const std::size_t count = reader.u16();
        const unsigned options = reader.u16();
        if ((options & (opaque | clipped)) != 0) {
            const VectorPoint from = readPoint(reader);
            const VectorPoint to = readPoint(reader);
            if ((options & opaque) != 0) {
                context_.fillRectangle(from, to, context_.state().background);
            }
        }
        const ByteView characters = reader.view(count);
        reader.skip(std::min(count % 2, reader.remaining()));
        std::vector<double> steps;
        for (std::size_t i = 0; i < count && reader.remaining() >= 2; ++i) {
            steps.push_back(reader.i16());
        }
        context_.textOfBytes(at, characters, steps);
    }

    // Records without a bitmap are as long as their arguments ([MS-WMF] 2.3.1.2 and 2.3.1.3).
    void playBlock(Record type, ByteView bytes, LittleEndianReader& reader) {
        const bool isStretched = type != Record::dibBitBlock;
        const std::size_t arguments = static_cast<std::size_t>(type) >> 8;
        const bool hasBitmap = bytes.size() / 2 != arguments + 3;
        BitmapPlace place;
        place.operation = reader.u32();
        reader.skip(type == Record::stretchBits ? 2 : 0); // what its colours mean
        VectorPoint size;
        if (isStretched) {
            size = readTurned(reader);
        }
        const VectorPoint from = readTurned(reader);
        reader.skip(hasBitmap ? 0 : 2);
        place.extent = readTurned(reader);
        place.to = readTurned(reader);
        size = isStretched ? size : place.extent;
        place.part = {static_cast<int>(from.x), static_cast<int>(from.y),
                      static_cast<int>(std::abs(size.x)), static_cast<int>(std::abs(size.y))};
        place.partFromBelow = type == Record::stretchBits;
        if (hasBitmap) {
            bitmaps_.draw(place, reader.view(reader.remaining()), {});
        } else {
            bitmaps_.fill(place.to, place.extent, place.operation);
        }
    }

    void playBitsToDevice(LittleEndianReader& reader) {
        reader.skip(6); // what its colours mean, and which rows are there
        BitmapPlace place;
        const VectorPoint from = readTurned(reader);
        place.extent = readTurned(reader);
        place.to = readTurned(reader);
        place.part = {static_cast<int>(from.x), static_cast<int>(from.y),
                      static_cast<int>(place.extent.x), static_cast<int>(place.extent.y)};
        place.partFromBelow = true;
        bitmaps_.draw(place, reader.view(reader.remaining()), {});
    }

    static constexpr unsigned anisotropic = 8;

    DeviceContext context_;
    BitmapRecords bitmaps_;
    ObjectTable objects_;
    std::optional<VectorPoint> window_;
};

// The area that paths, places of texts and images cover.
void frameContent(VectorPicture& picture) {
    std::vector<VectorPoint> points;
    for (const VectorElement& element : picture.elements) {
        if (const auto* shape = std::get_if<VectorShape>(&element.what)) {
            points.insert(points.end(), shape->path.points.begin(), shape->path.points.end());
        } else if (const auto* text = std::get_if<VectorText>(&element.what)) {
            points.push_back(text->at);
        } else if (const auto* image = std::get_if<VectorImage>(&element.what)) {
            points.push_back(image->corner);
            points.push_back({image->corner.x + image->across.x + image->down.x,
                              image->corner.y + image->across.y + image->down.y});
        }
    }
    if (points.empty()) {
        return;
    }
    const auto [left, right] = std::minmax_element(
        points.begin(), points.end(), [](const auto& a, const auto& b) { return a.x < b.x; });
    const auto [top, bottom] = std::minmax_element(
        points.begin(), points.end(), [](const auto& a, const auto& b) { return a.y < b.y; });
    picture.left = left->x;
    picture.top = top->y;
    picture.width = right->x - left->x;
    picture.height = bottom->y - top->y;
}

bool isWmf(ByteView file) {
    constexpr std::size_t leastSize = 18;
    return file.size() >= leastSize && ((file[0] == 0xD7 && file[1] == 0xCD) ||
                                        ((file[0] == 1 || file[0] == 2) && file[2] == 9));
}

} // namespace

} // namespace qvnd::drawing::metafile

namespace qvnd::drawing {

std::optional<VectorPicture> readWmf(word::ByteView file) {
    if (!metafile::isWmf(file)) {
        return std::nullopt;
    }
    try {
        metafile::WmfPlayer player;
        player.play(file);
        VectorPicture picture;
        picture.elements = player.takeElements();
        if (player.window()) {
            picture.width = player.window()->x;
            picture.height = player.window()->y;
        } else {
            metafile::frameContent(picture);
        }
        return picture.width > 0 && picture.height > 0 ? std::optional(std::move(picture))
                                                       : std::nullopt;
    } catch (const word::FormatError&) {
        return std::nullopt;
    }
}

} // namespace qvnd::drawing
