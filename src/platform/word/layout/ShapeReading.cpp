#include "platform/word/layout/ShapeReading.h"

#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/format/OfficeArt.h"
#include "platform/word/docfile/format/ShapeProperties.h"
#include "platform/word/docfile/pictures/Picture.h"
#include "platform/word/layout/ShapeOutlines.h"
#include "platform/word/layout/VerticalText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace qvnd::layout {

namespace {

namespace art = word::art;
using Spot = word::FrameSpot;
using ReferenceKind = word::ShapeReference::Kind;

constexpr double unitsPerTwip = 635; // English metric units
constexpr double farthest = 31680;   // twips: no paper is larger
constexpr int deepestGroup = 60;
constexpr std::uint16_t childAnchor = 0xF00F;

// Property numbers, [MS-ODRAW] 2.3.
constexpr std::uint16_t rotation = 0x0004;
constexpr std::uint16_t artText = 0x00C0;
constexpr std::uint16_t artFont = 0x00C5;
constexpr std::uint16_t artFlags = 0x00FF;
constexpr std::uint16_t geometryLeft = 0x0140; // and top, right, bottom
constexpr std::uint16_t vertices = 0x0145;
constexpr std::uint16_t segments = 0x0146;
constexpr std::uint16_t lineDashing = 0x01CE;
constexpr std::uint16_t startArrow = 0x01D0;
constexpr std::uint16_t endArrow = 0x01D1;
constexpr std::uint16_t textLeft = 0x0081;
constexpr std::uint16_t textTop = 0x0082;
constexpr std::uint16_t textRight = 0x0083;
constexpr std::uint16_t textBottom = 0x0084;
constexpr std::uint16_t textFlow = 0x0088;
constexpr std::uint16_t textFlags = 0x00BF;
constexpr std::uint16_t fillColour = 0x0181;
constexpr std::uint16_t lineColour = 0x01C0;
constexpr std::uint16_t apartLeft = 0x0384;
constexpr std::uint16_t apartTop = 0x0385;
constexpr std::uint16_t alignAcross = 0x038F;
constexpr std::uint16_t fromAcross = 0x0390;
constexpr std::uint16_t alignDown = 0x0391;
constexpr std::uint16_t fromDown = 0x0392;
constexpr std::uint16_t groupFlags = 0x03BF;

constexpr std::uint32_t isFilled = 0x10;
constexpr std::uint32_t hasLine = 0x08;
constexpr std::uint32_t isHidden = 0x02;
constexpr std::uint32_t fitsText = 0x02;
constexpr std::uint32_t isBoldArt = 0x20;
constexpr std::uint32_t isItalicArt = 0x10;
constexpr std::uint32_t isFlippedAcross = 0x40; // of OfficeArtFSP
constexpr std::uint32_t isFlippedDown = 0x80;

constexpr unsigned pictureFrame = 75; // MSOSPT

// Values of all property tables of a shape.
class Properties {
public:
    void add(const art::RecordHeader& header, word::ByteView bytes) {
        tables_.push_back({art::ShapeProperties(bytes, header.instance), bytes});
    }
    std::optional<std::uint32_t> value(std::uint16_t opid) const {
        for (const Table& table : tables_) {
            if (const auto found = table.properties.value(opid)) {
                return found;
            }
        }
        return std::nullopt;
    }
    // English metric units as twips.
    double length(std::uint16_t opid, double otherwise) const {
        const auto found = value(opid);
        const double twips = found ? static_cast<std::int32_t>(*found) / unitsPerTwip : otherwise;
        return std::clamp(twips, -farthest, farthest);
    }
    bool flag(std::uint16_t opid, std::uint32_t bit, bool otherwise) const {
        const std::uint32_t flags = value(opid).value_or(0);
        return (flags & (bit << 16U)) != 0 ? (flags & bit) != 0 : otherwise;
    }
    // Colours of schemes and of the system are not known here.
    std::optional<std::uint32_t> colour(std::uint16_t opid,
                                        std::optional<std::uint32_t> otherwise) const {
        const auto found = value(opid);
        if (!found || (*found >> 24U) != 0) {
            return otherwise;
        }
        return ((*found & 0xFFU) << 16U) | (*found & 0xFF00U) | ((*found >> 16U) & 0xFFU);
    }
    // A part of 65536.
    double fixed(std::uint16_t opid, double otherwise) const {
        const auto found = value(opid);
        return found ? static_cast<std::int32_t>(*found) / 65536.0 : otherwise;
    }
    // Data that a property has behind the table. The size of an array may leave out the head of the
    // array, which stands there all the same.
    word::Bytes data(std::uint16_t opid) const {
        for (const Table& table : tables_) {
            std::size_t leftOut = 0; // before the entry
            for (const auto& entry : table.properties.entries()) {
                const std::size_t at = entry.complexAt + leftOut;
                const std::size_t head = entry.complexSize > 0 && isArray(entry.opid)
                                             ? headLeftOut(table.bytes, at, entry.complexSize)
                                             : 0;
                if (entry.opid == opid && entry.complexSize > 0 && at < table.bytes.size()) {
                    const word::ByteView rest = table.bytes.subspan(at);
                    const word::ByteView found =
                        rest.first(std::min(entry.complexSize + head, rest.size()));
                    return {found.begin(), found.end()};
                }
                leftOut += head;
            }
        }
        return {};
    }
    // Such data as a text, up to its end mark.
    std::u16string text(std::uint16_t opid) const {
        const word::Bytes bytes = data(opid);
        word::LittleEndianReader reader(bytes, "OfficeArtFOPT");
        std::u16string found = reader.text(bytes.size() / 2);
        found.resize(std::min(found.find(u'\0'), found.size()));
        return found;
    }
    const art::ShapeProperties* first() const {
        return tables_.empty() ? nullptr : &tables_[0].properties;
    }

private:
    struct Table {
        art::ShapeProperties properties;
        word::ByteView bytes; // of the record
    };

    static bool isArray(std::uint16_t opid) {
        constexpr std::array<std::uint16_t, 8> arrays{vertices, segments, 0x0155, 0x0156,
                                                      0x0157,   0x0197,   0x01CF, 0x0383};
        return std::find(arrays.begin(), arrays.end(), opid) != arrays.end();
    }

    // Bytes of an array's head, [MS-ODRAW] 2.2.51, that its size does not count.
    static std::size_t headLeftOut(word::ByteView bytes, std::size_t at, std::size_t size) {
        constexpr std::size_t headSize = 6;
        constexpr std::size_t truncated = 0xFFF0; // elements of four bytes
        if (at + headSize > bytes.size()) {
            return 0;
        }
        word::LittleEndianReader reader(bytes.subspan(at), "IMsoArray");
        const std::size_t count = reader.u16();
        reader.skip(2);
        const std::size_t each = reader.u16();
        return size == count * (each == truncated ? 4 : each) ? headSize : 0;
    }

    std::vector<Table> tables_;
};

struct ShapeRecord {
    unsigned kind = 0;
    std::uint32_t flags = 0;
    Properties properties;
    std::optional<PageArea> inGroup; // in the coordinates of its group
    std::optional<PageArea> ofGroup; // the coordinates that its own members have
    std::optional<std::uint32_t> picture;
    std::optional<std::uint32_t> text;
};

PageArea readArea(word::ByteView bytes) {
    word::LittleEndianReader reader(bytes, "OfficeArtFSPGR");
    PageArea area;
    area.left = reader.i32();
    area.top = reader.i32();
    area.right = reader.i32();
    area.bottom = reader.i32();
    return area;
}

// Walks over the records of one drawing.
class Reading {
public:
    Reading(const word::Drawing& drawing, const word::DocumentTables& tables,
            std::vector<ShapePart>& parts)
        : drawing_(drawing), tables_(tables), parts_(parts) {}

    // `area`: that of the drawing. Answers the properties of its outermost shape.
    Properties read(const PageArea& area) {
        word::LittleEndianReader reader(drawing_.records, "OfficeArt");
        const art::RecordHeader header = art::readHeader(reader);
        const std::size_t at = reader.position();
        return header.type == art::spgrContainer
                   ? readGroup(reader.view(header.length), at, area, 0)
                   : readShape(reader.view(header.length), at, area);
    }

private:
    template <class Visit>
    static void forEachRecord(word::ByteView content, std::size_t at, Visit visit) {
        word::LittleEndianReader reader(content, "OfficeArt");
        while (reader.remaining() >= art::headerSize) {
            const art::RecordHeader header = art::readHeader(reader);
            const std::size_t begin = at + reader.position();
            visit(header, reader.view(header.length), begin);
        }
    }

    Properties readGroup(word::ByteView content, std::size_t at, PageArea area, int depth) {
        Properties own;
        PageArea inner;
        bool first = true;
        forEachRecord(
            content, at,
            [&](const art::RecordHeader& header, word::ByteView bytes, std::size_t begin) {
                if (first) {
                    const ShapeRecord group = readRecord(bytes, begin);
                    own = group.properties;
                    inner = group.ofGroup.value_or(PageArea{});
                    first = false;
                } else if (header.type == art::spContainer) {
                    readMember(bytes, begin, area, inner);
                } else if (header.type == art::spgrContainer && depth < deepestGroup) {
                    readInnerGroup(bytes, begin, area, inner, depth);
                }
            });
        return own;
    }

    void readMember(word::ByteView bytes, std::size_t begin, const PageArea& area,
                    const PageArea& inner) {
        const ShapeRecord shape = readRecord(bytes, begin);
        if (shape.inGroup) {
            add(shape, mapped(*shape.inGroup, inner, area));
        }
    }

    void readInnerGroup(word::ByteView bytes, std::size_t begin, const PageArea& area,
                        const PageArea& inner, int depth) {
        word::LittleEndianReader reader(bytes, "OfficeArtSpgrContainer");
        const art::RecordHeader header = art::readHeader(reader);
        const std::size_t at = begin + reader.position();
        const ShapeRecord group = readRecord(reader.view(header.length), at);
        if (group.inGroup) {
            readGroup(bytes, begin, mapped(*group.inGroup, inner, area), depth + 1);
        }
    }

    Properties readShape(word::ByteView content, std::size_t at, const PageArea& area) {
        const ShapeRecord shape = readRecord(content, at);
        add(shape, area);
        return shape.properties;
    }

    static PageArea mapped(const PageArea& place, const PageArea& from, const PageArea& to) {
        const double x =
            from.right != from.left ? (to.right - to.left) / (from.right - from.left) : 1;
        const double y =
            from.bottom != from.top ? (to.bottom - to.top) / (from.bottom - from.top) : 1;
        return {to.left + (place.left - from.left) * x, to.top + (place.top - from.top) * y,
                to.left + (place.right - from.left) * x, to.top + (place.bottom - from.top) * y};
    }

    ShapeRecord readRecord(word::ByteView content, std::size_t at) const {
        ShapeRecord shape;
        forEachRecord(content, at,
                      [&](const art::RecordHeader& header, word::ByteView bytes,
                          std::size_t begin) { readPart(header, bytes, begin, shape); });
        return shape;
    }

    void readPart(const art::RecordHeader& header, word::ByteView bytes, std::size_t begin,
                  ShapeRecord& shape) const {
        switch (header.type) {
        case art::fsp:
            shape.kind = header.instance;
            shape.flags = readFlags(bytes);
            break;
        case art::fspgr:
            shape.ofGroup = readArea(bytes);
            break;
        case childAnchor:
            shape.inGroup = readArea(bytes);
            break;
        case art::fopt:
        case art::secondaryFopt:
        case art::tertiaryFopt:
            shape.properties.add(header, bytes);
            readReferences(begin, begin + bytes.size(), shape);
            break;
        case art::clientTextbox:
            readReferences(begin, begin + bytes.size(), shape);
            break;
        default:
            break;
        }
    }

    static std::uint32_t readFlags(word::ByteView bytes) {
        word::LittleEndianReader reader(bytes, "OfficeArtFSP");
        reader.skip(4);
        return reader.u32();
    }

    // Pictures and texts that the records in that range name.
    void readReferences(std::size_t begin, std::size_t end, ShapeRecord& shape) const {
        for (const word::ShapeReference& reference : drawing_.references) {
            if (reference.at < begin || reference.at >= end) {
                continue;
            }
            if (reference.kind == ReferenceKind::picture) {
                shape.picture = shape.picture ? shape.picture : reference.index;
            } else if (reference.kind == ReferenceKind::text && reference.link == 0) {
                shape.text = reference.index;
            }
        }
    }

    void add(const ShapeRecord& shape, const PageArea& area) {
        const Properties& look = shape.properties;
        if (look.flag(groupFlags, isHidden, false)) {
            return;
        }
        ShapePart part;
        part.area = area;
        part.kind = shape.kind;
        const bool isPicture = shape.kind == pictureFrame;
        part.turn = turnOf(shape);
        part.outline = ownOutline(geometryOf(look), area, part.turn);
        const bool isArea = !isPicture && !isOpenShape(shape.kind);
        if (isArea && look.flag(art::fillFlags, isFilled, true)) {
            part.fill = look.colour(fillColour, 0xFFFFFF);
        }
        part.opacity = std::clamp(look.fixed(art::fillOpacity, 1), 0.0, 1.0);
        part.hasLine = look.flag(art::lineFlags, hasLine, !isPicture);
        part.lineWidth = look.length(art::lineWidth, 15);
        part.lineColour = look.colour(lineColour, std::nullopt);
        part.isDashed = look.value(lineDashing).value_or(0) != 0;
        part.startsWithArrow = look.value(startArrow).value_or(0) != 0;
        part.endsWithArrow = look.value(endArrow).value_or(0) != 0;
        if (isTextArt(shape.kind)) {
            part.artText = look.text(artText);
            part.artFace = {look.text(artFont), look.flag(artFlags, isBoldArt, false),
                            look.flag(artFlags, isItalicArt, false), false};
        }
        part.text = shape.text;
        part.growsWithText = shape.text && look.flag(textFlags, fitsText, false);
        part.textFlow = flowOfShape(look.value(textFlow).value_or(0));
        part.padding = {look.length(textLeft, 144), look.length(textTop, 72),
                        look.length(textRight, 144), look.length(textBottom, 72)};
        if (isPicture && shape.picture) {
            part.picture = pictureOf(*shape.picture, look, area);
        }
        parts_.push_back(std::move(part));
    }

    static ShapeGeometry geometryOf(const Properties& look) {
        ShapeGeometry geometry;
        std::uint16_t property = geometryLeft;
        PageArea& room = geometry.room;
        for (double* side : {&room.left, &room.top, &room.right, &room.bottom}) {
            if (const auto value = look.value(property++)) {
                *side = static_cast<std::int32_t>(*value);
            }
        }
        geometry.vertices = look.data(vertices);
        geometry.segments = look.data(segments);
        return geometry;
    }

    static ShapeTurn turnOf(const ShapeRecord& shape) {
        constexpr double degrees = 180;
        ShapeTurn turn;
        turn.flippedAcross = (shape.flags & isFlippedAcross) != 0;
        turn.flippedDown = (shape.flags & isFlippedDown) != 0;
        turn.angle = shape.properties.fixed(rotation, 0) * std::numbers::pi / degrees;
        return turn;
    }

    word::DataBlob pictureOf(std::uint32_t index, const Properties& look,
                             const PageArea& area) const {
        if (index >= tables_.shapePictures.size() || !tables_.shapePictures[index] ||
            look.first() == nullptr) {
            return nullptr;
        }
        const auto size = [](double from, double to) {
            return std::clamp<std::int64_t>(std::llround(to - from), 1, 31680);
        };
        return word::Picture::fromStore(*tables_.shapePictures[index], *look.first(),
                                        size(area.left, area.right), size(area.top, area.bottom))
            .blob();
    }

    const word::Drawing& drawing_;
    const word::DocumentTables& tables_;
    std::vector<ShapePart>& parts_;
};

FloatPlace::Align alignOf(std::uint32_t value) {
    switch (value) {
    case 1: // left or top
    case 4: // inside
        return FloatPlace::Align::start;
    case 2:
        return FloatPlace::Align::centre;
    case 3: // right or bottom
    case 5: // outside
        return FloatPlace::Align::end;
    default:
        return FloatPlace::Align::none;
    }
}

// Spa without its shape, [MS-DOC] 2.9.253.
std::optional<FloatPlace> placeOf(word::ByteView spa) {
    constexpr unsigned wrapsBelow = 1;
    constexpr unsigned wrapsNothing = 3;
    word::LittleEndianReader reader(spa, "Spa");
    FloatPlace place;
    place.left = reader.i32();
    place.top = reader.i32();
    place.width = reader.i32() - place.left;
    place.height = reader.i32() - place.top;
    const unsigned flags = reader.u16();
    const bool isSound = place.width >= 0 && place.height >= 0 &&
                         std::max({place.width, place.height, std::abs(place.left),
                                   std::abs(place.top)}) <= farthest;
    if (!isSound) {
        return std::nullopt;
    }
    const unsigned across = (flags >> 1U) & 3U;
    const unsigned down = (flags >> 3U) & 3U;
    place.across = across == 0   ? Spot::Across::fromMargin
                   : across == 1 ? Spot::Across::fromPage
                                 : Spot::Across::fromColumn;
    place.down = down == 0   ? Spot::Down::fromMargin
                 : down == 1 ? Spot::Down::fromPage
                             : Spot::Down::fromParagraph;
    const unsigned wrap = (flags >> 5U) & 0xFU;
    place.wrap = wrap == wrapsBelow     ? FloatPlace::Wrap::below
                 : wrap == wrapsNothing ? FloatPlace::Wrap::none
                                        : FloatPlace::Wrap::beside;
    constexpr unsigned belowText = 0x4000;
    place.isBehindText = wrap == wrapsNothing && (flags & belowText) != 0;
    const unsigned side = (flags >> 9U) & 0xFU; // wrk
    place.side = side == 1   ? FloatPlace::Side::left
                 : side == 2 ? FloatPlace::Side::right
                 : side == 3 ? FloatPlace::Side::wider
                             : FloatPlace::Side::both;
    return place;
}

// What newer programs say of the place besides.
void readPlace(const Properties& look, FloatPlace& place) {
    place.alignAcross = alignOf(look.value(alignAcross).value_or(0));
    place.alignDown = alignOf(look.value(alignDown).value_or(0));
    if (const auto from = look.value(fromAcross)) {
        place.across = *from == 0   ? Spot::Across::fromMargin
                       : *from == 1 ? Spot::Across::fromPage
                                    : Spot::Across::fromColumn;
    }
    if (const auto from = look.value(fromDown)) {
        place.down = *from == 0   ? Spot::Down::fromMargin
                     : *from == 1 ? Spot::Down::fromPage
                                  : Spot::Down::fromParagraph;
    }
    constexpr double usualApart = 180;
    place.apartAcross = look.length(apartLeft, usualApart);
    place.apartDown = look.length(apartTop, 0);
    keepCornersClear(look.fixed(rotation, 0), place);
}

} // namespace

std::optional<ShapeReading> readShapes(const word::Drawing& drawing,
                                       const word::DocumentTables& tables) {
    try {
        const auto place = placeOf(drawing.place);
        if (!place) {
            return std::nullopt;
        }
        ShapeReading result{*place, {}};
        const Properties look =
            Reading(drawing, tables, result.parts).read({0, 0, place->width, place->height});
        if (look.flag(groupFlags, isHidden, false)) {
            return std::nullopt;
        }
        readPlace(look, result.place);
        return result;
    } catch (const word::FormatError&) {
        return std::nullopt;
    }
}

} // namespace qvnd::layout
