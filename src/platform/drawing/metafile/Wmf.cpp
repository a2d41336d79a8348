#include "platform/drawing/metafile/BitmapRecords.h"
#include "platform/drawing/metafile/CodePages.h"
#include "platform/drawing/metafile/Metafile.h"
#include "platform/drawing/metafile/WmfRecords.h"
#include "platform/word/docfile/container/FormatError.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace qvnd::drawing::metafile {

namespace {

using wmf::forEachRecord;
using wmf::ObjectTable;
using wmf::readPoint;
using wmf::readTurned;
using wmf::Record;
using word::ByteView;
using word::LittleEndianReader;

// Carries out the records of one file. The window that is set first is the area of the picture.
class WmfPlayer {
public:
    WmfPlayer() : context_({1, 1}), bitmaps_(context_) {}

    void play(ByteView file) {
        forEachRecord(file, [this](Record type, ByteView bytes) {
            try {
                LittleEndianReader reader(bytes, "WMF record");
                reader.skip(6);
                if (!playState(type, reader) && !playObject(type, reader) &&
                    !playFigure(type, reader)) {
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
    bool playState(Record type, LittleEndianReader& reader) {
        DeviceContext::State& state = context_.state();
        switch (type) {
        case Record::setWindowOrigin:
            state.mapping.windowOrigin = readTurned(reader);
            return true;
        case Record::setWindowExtent:
            setWindow(readTurned(reader));
            return true;
        case Record::setMapMode:
            setMode(reader.u16());
            return true;
        case Record::setPolyFillMode:
            state.winding = reader.u16() == 2;
            return true;
        case Record::setTextAlign:
            state.textAlign = reader.u16();
            return true;
        case Record::setTextColour:
            state.textColour = colourOfRecord(reader.u32());
            return true;
        case Record::setBackground:
            state.background = colourOfRecord(reader.u32());
            return true;
        case Record::saveContext:
            context_.save();
            return true;
        case Record::restoreContext:
            context_.restore(reader.i16());
            return true;
        case Record::intersectClip: {
            const VectorPoint to = readTurned(reader);
            context_.clipToRectangle(readTurned(reader), to);
            return true;
        }
        default:
            return false;
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
            objects_.add(brushOf(style, reader.u32()));
            return true;
        }
        case Record::createFont:
            objects_.add(readFont(reader));
            return true;
        case Record::createDibPatternBrush:
        case Record::createPatternBrush:
            objects_.add(brushOf(patternBrush, 0));
            return true;
        case Record::createPalette:
        case Record::createRegion:
            objects_.add(OtherObject());
            return true;
        default:
            return false;
        }
    }

    // Font, [MS-WMF] 2.2.1.2.
    static FontObject readFont(LittleEndianReader& reader) {
        constexpr double tenths = 1800 / std::numbers::pi; // of a degree, in a radian
        constexpr int boldWeight = 600;
        constexpr std::size_t longestName = 32;
        FontObject font;
        font.height = reader.i16();
        reader.skip(2); // width
        font.angle = reader.i16() / tenths;
        reader.skip(2); // of single letters
        font.bold = reader.i16() >= boldWeight;
        font.italic = reader.u8() != 0;
        font.underlined = reader.u8() != 0;
        font.struckOut = reader.u8() != 0;
        font.charset = reader.u8();
        reader.skip(4);
        ByteView name = reader.view(std::min(reader.remaining(), longestName));
        name = name.first(
            static_cast<std::size_t>(std::find(name.begin(), name.end(), 0) - name.begin()));
        std::vector<unsigned> units;
        font.name = decodedText(name, font.charset, units);
        return font;
    }

    bool playFigure(Record type, LittleEndianReader& reader) {
        using Arc = DeviceContext::Arc;
        switch (type) {
        case Record::moveTo:
            context_.moveTo(readTurned(reader));
            return true;
        case Record::lineTo:
            context_.lineTo(readTurned(reader));
            return true;
        case Record::polygon:
        case Record::polyline: {
            const std::size_t count = reader.u16();
            const auto points = readPoints(count, reader);
            if (type == Record::polygon) {
                context_.polygons({points});
            } else {
                context_.polyline(points);
            }
            return true;
        }
        case Record::polyPolygon:
            playPolygons(reader);
            return true;
        case Record::rectangle:
        case Record::ellipse: {
            const VectorPoint to = readTurned(reader);
            const VectorPoint from = readTurned(reader);
            if (type == Record::ellipse) {
                context_.ellipse(from, to);
            } else {
                context_.rectangle(from, to);
            }
            return true;
        }
        case Record::roundRectangle: {
            const VectorPoint corner = readTurned(reader);
            const VectorPoint to = readTurned(reader);
            context_.roundRectangle(readTurned(reader), to, corner);
            return true;
        }
        case Record::arc:
            playArc(reader, Arc::open);
            return true;
        case Record::chord:
            playArc(reader, Arc::chord);
            return true;
        case Record::pie:
            playArc(reader, Arc::pie);
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

    void playArc(LittleEndianReader& reader, DeviceContext::Arc kind) {
        const VectorPoint end = readTurned(reader);
        const VectorPoint start = readTurned(reader);
        const VectorPoint to = readTurned(reader);
        context_.arc(readTurned(reader), to, start, end, kind);
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
        show(readTurned(reader), characters, {});
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
        show(at, characters, steps);
    }

    void show(VectorPoint at, ByteView bytes, const std::vector<double>& steps) {
        const FontObject& font = context_.state().font;
        std::vector<unsigned> units;
        std::u16string text = decodedText(bytes, font.charset, units);
        const std::vector<double> advances = advancesOfUnits(units, steps);
        context_.text(at, shownText(std::move(text), font.name), advances);
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
    static constexpr unsigned patternBrush = 3;

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
