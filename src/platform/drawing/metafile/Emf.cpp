#include "platform/drawing/metafile/CodePages.h"
#include "platform/drawing/metafile/EmfParts.h"
#include "platform/drawing/metafile/Metafile.h"
#include "platform/word/docfile/container/FormatError.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace qvnd::drawing::metafile {

namespace {

using emf::readMap;
using emf::readPoint;
using emf::readRectangle;
using emf::Record;
using emf::Rectangle;
using word::ByteView;
using word::LittleEndianReader;

// Carries out the records of one file.
class EmfPlayer {
public:
    EmfPlayer(ByteView file, VectorPoint unitsPerMillimetre)
        : file_(file), context_(unitsPerMillimetre), bitmaps_(context_) {}

    std::vector<VectorElement> play() {
        try {
            LittleEndianReader reader(file_, "EMF");
            while (!reader.atEnd()) {
                const std::size_t begin = reader.position();
                const auto type = Record{reader.u32()};
                const std::uint32_t size = reader.u32();
                reader.seek(begin);
                if (size < 8 || type == Record::end) {
                    break;
                }
                playWhole(type, reader.view(size));
            }
        } catch (const word::FormatError&) {
            // The file ends within a record: what stands before it is shown.
            return context_.takeElements();
        }
        return context_.takeElements();
    }

private:
    // A record that is shorter than it must be is left out.
    void playWhole(Record type, ByteView bytes) {
        try {
            LittleEndianReader reader(bytes, "EMF record");
            reader.skip(8);
            if (!playState(type, reader) && !playObject(type, reader) && !playPath(type, reader) &&
                !emf::playFigure(type, reader, context_) &&
                !emf::playBitmap(type, bytes, reader, bitmaps_)) {
                playRest(type, bytes, reader);
            }
        } catch (const word::FormatError&) {
            return;
        }
    }

    bool playState(Record type, LittleEndianReader& reader) {
        DeviceContext::State& state = context_.state();
        switch (type) {
        case Record::setWindowExtent:
            state.mapping.windowExtent = readPoint(reader);
            return true;
        case Record::setWindowOrigin:
            state.mapping.windowOrigin = readPoint(reader);
            return true;
        case Record::setViewportExtent:
            state.mapping.viewportExtent = readPoint(reader);
            return true;
        case Record::setViewportOrigin:
            state.mapping.viewportOrigin = readPoint(reader);
            return true;
        case Record::setMapMode:
            state.mapping.mode = reader.u32();
            return true;
        case Record::setPolyFillMode:
            state.winding = reader.u32() == 2;
            return true;
        case Record::setTextAlign:
            state.textAlign = reader.u32();
            return true;
        case Record::setTextColour:
            state.textColour = colourOfRecord(reader.u32());
            return true;
        case Record::setBackground:
            state.background = colourOfRecord(reader.u32());
            return true;
        case Record::setArcDirection:
            state.arcsClockwise = reader.u32() == 2;
            return true;
        case Record::saveContext:
            context_.save();
            return true;
        case Record::restoreContext:
            context_.restore(reader.i32());
            return true;
        case Record::setWorld:
            state.mapping.world = readMap(reader);
            return true;
        case Record::modifyWorld:
            modifyWorld(reader);
            return true;
        default:
            return false;
        }
    }

    void modifyWorld(LittleEndianReader& reader) {
        PlaneMap& world = context_.state().mapping.world;
        const PlaneMap map = readMap(reader);
        switch (reader.u32()) { // ModifyWorldTransformMode
        case 1:
            world = {};
            break;
        case 2:
            world = map.then(world);
            break;
        case 3:
            world = world.then(map);
            break;
        default:
            world = map;
            break;
        }
    }

    bool playObject(Record type, LittleEndianReader& reader) {
        switch (type) {
        case Record::selectObject:
            select(reader.u32());
            return true;
        case Record::deleteObject:
            objects_.erase(reader.u32());
            return true;
        case Record::createPen: {
            const std::uint32_t index = reader.u32();
            const std::uint32_t style = reader.u32();
            const double width = reader.i32();
            reader.skip(4);
            objects_[index] = penOf(style, width, reader.u32());
            return true;
        }
        case Record::createExtendedPen: {
            const std::uint32_t index = reader.u32();
            reader.skip(16);
            const std::uint32_t style = reader.u32();
            const double width = reader.u32();
            reader.skip(4); // the brush of the line
            objects_[index] = penOf(style, width, reader.u32());
            return true;
        }
        case Record::createBrush: {
            const std::uint32_t index = reader.u32();
            const std::uint32_t style = reader.u32();
            objects_[index] = brushOf(style, reader.u32());
            return true;
        }
        case Record::createMonoBrush:
        case Record::createPatternBrush:
            objects_[reader.u32()] = brushOf(patternBrush, 0);
            return true;
        case Record::createFont:
            createFont(reader);
            return true;
        default:
            return false;
        }
    }

    // LogFont, [MS-EMF] 2.2.13.
    void createFont(LittleEndianReader& reader) {
        constexpr double tenths = 1800 / std::numbers::pi; // of a degree, in a radian
        constexpr int boldWeight = 600;
        constexpr std::size_t longestName = 32;
        const std::uint32_t index = reader.u32();
        FontObject font;
        font.height = reader.i32();
        reader.skip(4); // width
        font.angle = reader.i32() / tenths;
        reader.skip(4); // of single letters
        font.bold = reader.i32() >= boldWeight;
        font.italic = reader.u8() != 0;
        font.underlined = reader.u8() != 0;
        font.struckOut = reader.u8() != 0;
        font.charset = reader.u8();
        reader.skip(4);
        font.name = reader.text(longestName);
        font.name.resize(std::min(font.name.find(u'\0'), font.name.size()));
        objects_[index] = font;
    }

    // What the device has from the start, [MS-EMF] 2.1.31.
    void select(std::uint32_t index) {
        constexpr std::uint32_t stock = 0x80000000;
        constexpr std::uint32_t brushes[] = {0xFFFFFF, 0xC0C0C0, 0x808080, 0x404040, 0};
        if (index < stock) {
            const auto found = objects_.find(index);
            if (found != objects_.end()) {
                context_.select(found->second);
            }
            return;
        }
        const std::uint32_t which = index - stock;
        if (which < std::size(brushes)) {
            context_.select(BrushObject{brushes[which]});
        } else if (which == 5) {
            context_.select(BrushObject{});
        } else if (which == 6 || which == 7) {
            context_.select(penOf(0, 0, which == 6 ? 0xFFFFFF : 0));
        } else if (which == 8) {
            context_.select(PenObject{});
        } else if (which >= 10 && which <= 17) {
            context_.select(FontObject{});
        }
    }

    bool playPath(Record type, LittleEndianReader& reader) {
        using Mode = DeviceContext::ClipMode;
        constexpr std::uint32_t regionAnd = 1;
        switch (type) {
        case Record::beginPath:
            context_.beginPath();
            return true;
        case Record::endPath:
            context_.endPath();
            return true;
        case Record::closeFigure:
            context_.closeFigure();
            return true;
        case Record::fillPath:
            context_.drawPath(true, false);
            return true;
        case Record::strokeAndFillPath:
            context_.drawPath(true, true);
            return true;
        case Record::strokePath:
            context_.drawPath(false, true);
            return true;
        case Record::abortPath:
            context_.dropPath();
            return true;
        case Record::selectClipPath:
            context_.clipToPath(reader.u32() == regionAnd ? Mode::intersect : Mode::replace);
            return true;
        case Record::selectClipRegion:
            selectClipRegion(reader);
            return true;
        case Record::intersectClip: {
            const Rectangle area = readRectangle(reader);
            context_.clipToRectangle(area.from, area.to);
            return true;
        }
        default:
            return false;
        }
    }

    // A region as rectangles in units of the device, [MS-EMF] 2.2.24; without one nothing is cut.
    void selectClipRegion(LittleEndianReader& reader) {
        constexpr std::uint32_t regionAnd = 1;
        constexpr std::uint32_t regionCopy = 5;
        constexpr std::size_t regionHead = 32;
        const std::size_t size = reader.u32();
        const std::uint32_t mode = reader.u32();
        if (size < regionHead) {
            if (mode == regionCopy) {
                context_.clipNothing();
            }
            return;
        }
        reader.skip(8);
        const std::size_t count = reader.u32();
        reader.skip(regionHead - 12);
        std::vector<VectorPoint> corners;
        for (std::size_t i = 0; i < count; ++i) {
            const Rectangle area = readRectangle(reader);
            corners.push_back(area.from);
            corners.push_back(area.to);
        }
        if (mode == regionAnd || mode == regionCopy) {
            context_.clipToDeviceRectangles(corners, mode == regionAnd
                                                         ? DeviceContext::ClipMode::intersect
                                                         : DeviceContext::ClipMode::replace);
        }
    }

    void playRest(Record type, ByteView bytes, LittleEndianReader& reader) {
        switch (type) {
        case Record::text:
        case Record::textAnsi:
            playText(type == Record::text, bytes, reader);
            break;
        case Record::smallText:
            playSmallText(reader);
            break;
        default:
            break;
        }
    }

    // EmrText, [MS-EMF] 2.2.5. Offsets count from the record's first byte.
    void playText(bool isWide, ByteView bytes, LittleEndianReader& reader) {
        constexpr std::uint32_t opaque = 2;
        constexpr std::uint32_t glyphIndexes = 0x10;
        constexpr std::uint32_t advancesInPairs = 0x2000;
        reader.skip(emf::boundsSize + 12); // the graphics mode, and scales that it leaves out
        const VectorPoint at = readPoint(reader);
        const std::size_t count = reader.u32();
        const std::size_t textAt = reader.u32();
        const std::uint32_t options = reader.u32();
        const Rectangle area = readRectangle(reader);
        const std::size_t advancesAt = reader.u32();
        if ((options & opaque) != 0) {
            context_.fillRectangle(area.from, area.to, context_.state().background);
        }
        if ((options & glyphIndexes) != 0) {
            return; // numbers of glyphs in a font that is not here
        }
        LittleEndianReader characters(bytes, "EMR_EXTTEXTOUT");
        characters.seek(textAt);
        std::vector<double> steps;
        if (advancesAt != 0) {
            LittleEndianReader advances(bytes, "EMR_EXTTEXTOUT");
            advances.seek(advancesAt);
            const std::size_t perUnit = (options & advancesInPairs) != 0 ? 8 : 4;
            for (std::size_t i = 0; i < count && advances.remaining() >= perUnit; ++i) {
                steps.push_back(advances.i32());
                advances.skip(perUnit - 4);
            }
        }
        if (isWide) {
            show(at, characters.text(count), steps);
        } else {
            showBytes(at, characters.view(count), steps);
        }
    }

    void playSmallText(LittleEndianReader& reader) {
        constexpr std::uint32_t glyphIndexes = 0x10;
        constexpr std::uint32_t noBounds = 0x100;
        constexpr std::uint32_t smallCharacters = 0x200;
        const VectorPoint at = readPoint(reader);
        const std::size_t count = reader.u32();
        const std::uint32_t options = reader.u32();
        reader.skip(12);
        reader.skip((options & noBounds) == 0 ? emf::boundsSize : 0);
        if ((options & glyphIndexes) != 0) {
            return;
        }
        if ((options & smallCharacters) != 0) {
            const ByteView low = reader.view(count);
            show(at, std::u16string(low.begin(), low.end()), {});
        } else {
            show(at, reader.text(count), {});
        }
    }

    void show(VectorPoint at, std::u16string text, std::span<const double> steps) {
        context_.text(at, shownText(std::move(text), context_.state().font.name), steps);
    }

    void showBytes(VectorPoint at, ByteView bytes, std::span<const double> steps) {
        std::vector<unsigned> units;
        std::u16string text = decodedText(bytes, context_.state().font.charset, units);
        std::vector<double> advances = advancesOfUnits(units, steps);
        show(at, std::move(text), advances);
    }

    static constexpr unsigned patternBrush = 3;

    ByteView file_;
    DeviceContext context_;
    BitmapRecords bitmaps_;
    std::map<std::uint32_t, GraphicsObject> objects_;
};

} // namespace

} // namespace qvnd::drawing::metafile

namespace qvnd::drawing {

// Header, [MS-EMF] 2.2.9: the frame is told in hundredths of a millimetre.
std::optional<VectorPicture> readEmf(word::ByteView file) {
    using namespace metafile::emf;
    constexpr std::uint32_t signature = 0x464D4520;
    try {
        word::LittleEndianReader reader(file, "EMR_HEADER");
        if (Record{reader.u32()} != Record::header) {
            return std::nullopt;
        }
        reader.skip(4);
        const Rectangle bounds = readRectangle(reader);
        const Rectangle frame = readRectangle(reader);
        if (reader.u32() != signature) {
            return std::nullopt;
        }
        reader.skip(28);
        const VectorPoint pixels = readPoint(reader);
        const VectorPoint millimetres = readPoint(reader);
        if (pixels.x <= 0 || pixels.y <= 0 || millimetres.x <= 0 || millimetres.y <= 0) {
            return std::nullopt;
        }
        const VectorPoint perMillimetre{pixels.x / millimetres.x, pixels.y / millimetres.y};
        VectorPicture picture;
        picture.left = frame.from.x / 100 * perMillimetre.x;
        picture.top = frame.from.y / 100 * perMillimetre.y;
        picture.width = (frame.to.x - frame.from.x) / 100 * perMillimetre.x;
        picture.height = (frame.to.y - frame.from.y) / 100 * perMillimetre.y;
        if (picture.width <= 0 || picture.height <= 0) {
            picture.left = bounds.from.x;
            picture.top = bounds.from.y;
            picture.width = bounds.to.x - bounds.from.x;
            picture.height = bounds.to.y - bounds.from.y;
        }
        if (picture.width <= 0 || picture.height <= 0) {
            return std::nullopt;
        }
        picture.elements = metafile::EmfPlayer(file, perMillimetre).play();
        return picture;
    } catch (const word::FormatError&) {
        return std::nullopt;
    }
}

} // namespace qvnd::drawing
