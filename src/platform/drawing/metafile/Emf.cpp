#include "platform/drawing/metafile/EmfParts.h"
#include "platform/drawing/metafile/Metafile.h"
#include "platform/word/docfile/container/FormatError.h"

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
            if (const CallRecord* call = callOfEmf(static_cast<std::uint32_t>(type))) {
                playCall(*call, reader);
            } else if (!playObject(type, bytes, reader) &&
                       !emf::playFigure(type, reader, context_) &&
                       !emf::playBitmap(type, bytes, reader, bitmaps_)) {
                playRest(type, bytes, reader);
            }
        } catch (const word::FormatError&) {
            return;
        }
    }

    void playCall(const CallRecord& call, LittleEndianReader& reader) {
        Arguments arguments;
        for (std::size_t i = 0; i < call.numbers; ++i) {
            arguments.numbers[i] = reader.i32();
        }
        carryOut(call.call, arguments, context_);
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

    bool playObject(Record type, ByteView bytes, LittleEndianReader& reader) {
        switch (type) {
        case Record::selectObject:
            select(reader.u32());
            return true;
        case Record::deleteObject:
            objects_.remove(reader.u32());
            return true;
        case Record::createPen:
            createPen(reader);
            return true;
        case Record::createExtendedPen:
            createExtendedPen(reader);
            return true;
        case Record::createBrush:
            createBrush(reader);
            return true;
        case Record::createMonoBrush:
        case Record::createPatternBrush: {
            const std::uint32_t number = reader.u32();
            objects_.put(number, patternBrush(emf::readPattern(bytes, reader, bitmaps_)));
            return true;
        }
        case Record::createFont: {
            const std::uint32_t number = reader.u32();
            objects_.put(number, readFont(reader, true));
            return true;
        }
        default:
            return false;
        }
    }

    void createPen(LittleEndianReader& reader) {
        const std::uint32_t number = reader.u32();
        const std::uint32_t style = reader.u32();
        const double width = reader.i32();
        reader.skip(4);
        objects_.put(number, penOf(style, width, reader.u32()));
    }

    void createExtendedPen(LittleEndianReader& reader) {
        const std::uint32_t number = reader.u32();
        reader.skip(16);
        const std::uint32_t style = reader.u32();
        const double width = reader.u32();
        reader.skip(4); // the brush of the line
        objects_.put(number, penOf(style, width, reader.u32()));
    }

    void createBrush(LittleEndianReader& reader) {
        const std::uint32_t number = reader.u32();
        const std::uint32_t style = reader.u32();
        const std::uint32_t colour = reader.u32();
        objects_.put(number, brushOf(style, colour, reader.u32()));
    }

    void select(std::uint32_t number) {
        constexpr std::uint32_t stock = 0x80000000;
        if (number < stock) {
            if (const GraphicsObject* object = objects_.find(number)) {
                context_.select(*object);
            }
        } else if (const auto object = stockObject(number - stock)) {
            context_.select(*object);
        }
    }

    // Rectangles, [MS-EMF] 2.2.24.
    static VectorPath readRegion(LittleEndianReader& reader) {
        constexpr std::size_t head = 32;
        reader.skip(8);
        const std::size_t count = reader.u32();
        reader.skip(head - 12);
        std::vector<VectorPoint> corners;
        for (std::size_t i = 0; i < count; ++i) {
            const Rectangle area = readRectangle(reader);
            corners.push_back(area.from);
            corners.push_back(area.to);
        }
        return rectanglesBetween(corners);
    }

    // The region counts in units of the device; without one nothing is cut.
    void selectClipRegion(LittleEndianReader& reader) {
        const std::size_t size = reader.u32();
        const std::uint32_t mode = reader.u32();
        if (size == 0) {
            context_.clipNothing();
        } else {
            context_.clipToRegion({readRegion(reader)}, clipModeOf(mode));
        }
    }

    void fillRegion(LittleEndianReader& reader) {
        reader.skip(emf::boundsSize + 4);
        const auto* brush = objects_.get<BrushObject>(reader.u32());
        if (brush != nullptr) {
            context_.fillRegion({context_.toDevice(readRegion(reader))}, *brush);
        }
    }

    void paintRegion(LittleEndianReader& reader) {
        reader.skip(emf::boundsSize + 4);
        context_.fillRegion({context_.toDevice(readRegion(reader))}, context_.state().brush);
    }

    void playRest(Record type, ByteView bytes, LittleEndianReader& reader) {
        switch (type) {
        case Record::setWorld:
            context_.state().mapping.world = readMap(reader);
            break;
        case Record::modifyWorld:
            modifyWorld(reader);
            break;
        case Record::selectClipRegion:
            selectClipRegion(reader);
            break;
        case Record::fillRegion:
            fillRegion(reader);
            break;
        case Record::paintRegion:
            paintRegion(reader);
            break;
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
            context_.text(at, characters.text(count), steps);
        } else {
            context_.textOfBytes(at, characters.view(count), steps);
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
            context_.text(at, std::u16string(low.begin(), low.end()), {});
        } else {
            context_.text(at, reader.text(count), {});
        }
    }

    ByteView file_;
    DeviceContext context_;
    BitmapRecords bitmaps_;
    ObjectTable objects_;
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
            picture.width = bounds.to.x + 1 - bounds.from.x; // which hold their last pixels
            picture.height = bounds.to.y + 1 - bounds.from.y;
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
