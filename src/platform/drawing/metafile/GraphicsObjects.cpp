#include "platform/drawing/metafile/GraphicsObjects.h"

#include "platform/drawing/metafile/CodePages.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace qvnd::drawing::metafile {

std::uint32_t colourOfRecord(std::uint32_t bgr) {
    return ((bgr & 0xFF) << 16) | (bgr & 0xFF00) | ((bgr >> 16) & 0xFF);
}

PenObject penOf(unsigned style, double width, std::uint32_t bgr) {
    constexpr unsigned none = 5;
    constexpr unsigned endsMask = 0xF00;
    constexpr unsigned geometric = 0x10000;
    const unsigned line = style & 0xF;
    if (line == none) {
        return {};
    }
    VectorPen pen;
    pen.colour = colourOfRecord(bgr);
    pen.width = std::abs(width);
    pen.isRound = (style & endsMask) == 0;
    if (line >= 1 && line <= 4) {
        const std::vector<double> patterns[] = {
            {6, 3}, {2, 2}, {5, 2, 1, 2}, {5, 2, 1, 2, 1, 2}}; // dash, dot, and both
        pen.dashes = patterns[line - 1];
    }
    return {pen, width == 0 || ((style & geometric) == 0 && width <= 1)};
}

namespace {

// By HatchStyle.
constexpr VectorHatch hatches[] = {{true, false, false, false}, {false, true, false, false},
                                   {false, false, true, false}, {false, false, false, true},
                                   {true, true, false, false},  {false, false, true, true}};

} // namespace

BrushObject brushOf(unsigned style, std::uint32_t bgr, unsigned hatch) {
    constexpr unsigned none = 1;
    constexpr unsigned hatched = 2;
    if (style == none) {
        return {};
    }
    if (style == hatched && hatch < std::size(hatches)) {
        BrushObject brush{{}, hatches[hatch]};
        brush.hatch->colour = colourOfRecord(bgr);
        return brush;
    }
    return style <= hatched ? BrushObject{colourOfRecord(bgr)} : patternBrush(std::nullopt);
}

BrushObject patternBrush(std::optional<PixelImage> pattern) {
    constexpr std::uint32_t grey = 0xC0C0C0;
    if (!pattern) {
        return {grey};
    }
    return {{}, {}, std::make_shared<const PixelImage>(std::move(*pattern))};
}

std::optional<GraphicsObject> stockObject(std::uint32_t number) {
    constexpr std::uint32_t brushes[] = {0xFFFFFF, 0xC0C0C0, 0x808080, 0x404040, 0};
    if (number < std::size(brushes)) {
        return BrushObject{brushes[number]};
    }
    switch (number) {
    case 5:
        return BrushObject{};
    case 6:
        return penOf(0, 0, 0xFFFFFF);
    case 7:
        return penOf(0, 0, 0);
    case 8:
        return PenObject{};
    default:
        return number >= 10 && number <= 17 && number != 15
                   ? std::optional<GraphicsObject>(FontObject{})
                   : std::nullopt;
    }
}

namespace {

std::u16string readName(word::LittleEndianReader& reader, unsigned charset, bool wide) {
    constexpr std::size_t longest = 32;
    std::u16string name;
    if (wide) {
        name = reader.text(std::min(longest, reader.remaining() / 2));
    } else {
        word::ByteView bytes = reader.view(std::min(longest, reader.remaining()));
        const auto end = std::find(bytes.begin(), bytes.end(), 0);
        std::vector<unsigned> units;
        name =
            decodedText(bytes.first(static_cast<std::size_t>(end - bytes.begin())), charset, units);
    }
    name.resize(std::min(name.find(u'\0'), name.size()));
    const bool isTurned = name.starts_with(u'@'); // for vertical text; its characters are the same
    return isTurned ? name.substr(1) : name;
}

} // namespace

FontObject readFont(word::LittleEndianReader& reader, bool wide) {
    constexpr double tenths = 1800 / std::numbers::pi; // of a degree, in a radian
    constexpr int boldWeight = 600;
    const auto number = [&] { return wide ? reader.i32() : reader.i16(); };
    FontObject font;
    font.height = number();
    number(); // width
    font.angle = number() / tenths;
    number(); // the angle of single letters
    font.bold = number() >= boldWeight;
    font.italic = reader.u8() != 0;
    font.underlined = reader.u8() != 0;
    font.struckOut = reader.u8() != 0;
    font.charset = reader.u8();
    reader.skip(4); // precision, clipping, quality, pitch
    font.name = readName(reader, font.charset, wide);
    return font;
}

void ObjectTable::add(const GraphicsObject& object) {
    const std::uint32_t number = free_.empty() ? next_++ : *free_.begin();
    free_.erase(number);
    put(number, object);
}

void ObjectTable::remove(std::uint32_t number) {
    if (objects_.erase(number) > 0 && number < next_) {
        free_.insert(number);
    }
}

const GraphicsObject* ObjectTable::find(std::uint32_t number) const {
    const auto found = objects_.find(number);
    return found != objects_.end() ? &found->second : nullptr;
}

} // namespace qvnd::drawing::metafile
