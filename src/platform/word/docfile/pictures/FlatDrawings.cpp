#include "platform/word/docfile/pictures/FlatDrawings.h"

#include "platform/word/docfile/container/CopyBudget.h"
#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/format/OfficeArt.h"
#include "platform/word/docfile/pictures/Picture.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <set>
#include <tuple>

namespace qvnd::word {

namespace {

using Kind = ShapeReference::Kind;

// What a Spa says without its shape, [MS-DOC] 2.9.253.
struct Place {
    std::int64_t left = 0;
    std::int64_t top = 0;
    std::int64_t width = 0;
    std::int64_t height = 0;
    unsigned flags = 0;
};

Place placeOf(const Drawing& drawing) {
    LittleEndianReader spa(drawing.place, "Spa");
    Place place;
    place.left = spa.i32();
    place.top = spa.i32();
    place.width = spa.i32() - place.left;
    place.height = spa.i32() - place.top;
    place.flags = spa.u16();
    return place;
}

// A frame's properties have 15 bits for each number.
constexpr std::int64_t farthest = 31680; // 22 inches, the most that Word allows

FrameSpot::Across across(unsigned bx) {
    return bx == 0   ? FrameSpot::Across::fromMargin
           : bx == 1 ? FrameSpot::Across::fromPage
                     : FrameSpot::Across::fromColumn;
}

FrameSpot::Down down(unsigned by) {
    return by == 0   ? FrameSpot::Down::fromMargin
           : by == 1 ? FrameSpot::Down::fromPage
                     : FrameSpot::Down::fromParagraph;
}

std::optional<FrameSpot> spotOf(const Place& place) {
    if (place.width <= 0 || place.height <= 0 ||
        std::max({place.width, place.height, std::abs(place.left), std::abs(place.top)}) >
            farthest) {
        return std::nullopt;
    }
    return FrameSpot{across((place.flags >> 1U) & 3U), down((place.flags >> 3U) & 3U),
                     static_cast<int>(place.left),     static_cast<int>(place.top),
                     static_cast<int>(place.width),    static_cast<int>(place.height)};
}

// A shape that is in no group.
struct LoneShape {
    unsigned kind = 0; // MSOSPT
    art::ShapeProperties properties;
    std::size_t propertiesAt = 0; // offset in the drawing's records
};

std::optional<LoneShape> loneShape(const Drawing& drawing) {
    LittleEndianReader reader(drawing.records, "OfficeArtSpContainer");
    if (art::readHeader(reader).type != art::spContainer) {
        return std::nullopt;
    }
    LoneShape shape;
    while (!reader.atEnd()) {
        const art::RecordHeader header = art::readHeader(reader);
        const std::size_t start = reader.position();
        const ByteView content = reader.view(header.length);
        if (header.type == art::fsp) {
            shape.kind = header.instance;
        } else if (header.type == art::fopt) {
            shape.propertiesAt = start;
            shape.properties = art::ShapeProperties(content, header.instance);
        }
    }
    return shape;
}

// The picture that the shape shows; nothing when it shows none.
const DataBlob* shownPicture(const Drawing& drawing, const LoneShape& shape,
                             const DocumentTables& tables) {
    std::set<std::size_t> places; // a damaged shape has more than one
    for (const art::ShapeProperties::Entry& entry : shape.properties.entries()) {
        if (entry.opid == art::pib && entry.namesBlip) {
            places.insert(shape.propertiesAt + entry.valueAt);
        }
    }
    for (const ShapeReference& reference : drawing.references) {
        if (reference.kind == Kind::picture && places.contains(reference.at)) {
            return &tables.shapePictures.at(reference.index);
        }
    }
    return nullptr;
}

bool showsText(const Drawing& drawing) {
    return std::any_of(
        drawing.references.begin(), drawing.references.end(),
        [](const ShapeReference& reference) { return reference.kind == Kind::text; });
}

// Pictures as they stand in a line, each form made once.
class InlineForms {
public:
    explicit InlineForms(const DocumentTables& tables)
        : tables_(tables), budget_(mostBytes(tables)) {}

    // Null for a drawing that shows more than a picture, or none.
    DataBlob of(const Drawing& drawing) {
        constexpr unsigned pictureFrame = 75;
        const Place place = placeOf(drawing);
        const std::optional<LoneShape> shape = loneShape(drawing);
        if (!shape || shape->kind != pictureFrame || showsText(drawing) || place.width <= 0 ||
            place.height <= 0) {
            return nullptr;
        }
        const DataBlob* entry = shownPicture(drawing, *shape, tables_);
        if (entry == nullptr) {
            return nullptr;
        }
        const auto [form, isNew] = forms_.try_emplace(
            {entry, place.width, place.height, shape->properties.encode()}, nullptr);
        if (isNew && budget_.take((*entry)->size())) {
            form->second =
                Picture::fromStore(**entry, shape->properties, place.width, place.height).blob();
        }
        return form->second;
    }

private:
    using Form = std::tuple<const DataBlob*, std::int64_t, std::int64_t, Bytes>;

    // A picture in a few sizes, or many small ones in many.
    static std::size_t mostBytes(const DocumentTables& tables) {
        std::size_t most = std::size_t{16} << 20;
        for (const DataBlob& picture : tables.shapePictures) {
            most += 4 * picture->size();
        }
        return most;
    }

    const DocumentTables& tables_;
    CopyBudget budget_;
    std::map<Form, DataBlob> forms_;
};

} // namespace

FlatDrawings flatDrawings(std::span<const Anchor> anchors, const DocumentTables& tables) {
    FlatDrawings flat;
    InlineForms forms(tables);
    std::set<std::uint32_t> shown;
    for (const Anchor& anchor : anchors) {
        if (anchor.kind != AnchorKind::drawing) {
            continue;
        }
        const Drawing& drawing = tables.drawings.at(anchor.index);
        const bool alone = loneShape(drawing).has_value();
        for (const ShapeReference& reference : drawing.references) {
            if (reference.kind == Kind::text && reference.link == 0 &&
                shown.insert(reference.index).second) {
                flat.textBoxes.push_back({anchor.at, tables.shapeTexts.at(reference.index).text,
                                          alone ? spotOf(placeOf(drawing)) : std::nullopt});
            }
        }
        if (DataBlob picture = forms.of(drawing)) {
            flat.pictures.push_back({anchor.at, std::move(picture)});
        }
    }
    return flat;
}

} // namespace qvnd::word
