#include "platform/word/docfile/pictures/CarriedDrawings.h"

#include "platform/word/docfile/container/FormatError.h"

#include <algorithm>
#include <set>

namespace qvnd::word {

namespace {

using Kind = ShapeReference::Kind;

constexpr int deepestGroup = 60;
constexpr std::size_t placeSize = 22; // of a Spa without its shape
constexpr std::size_t fspSize = 8;
constexpr std::size_t fspgrSize = 16;
constexpr unsigned pictureFrame = 75; // MSOSPT
constexpr unsigned textFrame = 202;

void put32(Bytes& bytes, std::size_t at, std::uint32_t value) {
    for (unsigned shift = 0; shift < 32; shift += 8) {
        bytes[at++] = static_cast<std::uint8_t>(value >> shift);
    }
}

// Copies the records of one drawing and notes where they name something, by the file's numbers.
class RecordCopy {
public:
    // The text of a shape that names none itself, as the shape would name it; 0 for none.
    using UnnamedText = std::function<std::uint32_t(std::uint32_t shape)>;

    RecordCopy(const art::ShapeProperties& defaults, const UnnamedText& unnamedText,
               CopyBudget& inherited)
        : defaults_(defaults), unnamedText_(unnamedText), inherited_(inherited) {}

    // Throws FormatError for what is no sound shape or group.
    void copy(ByteView record) {
        LittleEndianReader reader(record, "OfficeArtSpgrContainerFileBlock");
        const art::RecordHeader header = art::readHeader(reader);
        copyFileBlock(header, reader.view(header.length), 0);
    }

    // The shape behind the pages: it is in use, and has neither an anchor nor a text.
    void copyBackground(ByteView record) {
        LittleEndianReader reader(record, "OfficeArtSpContainer");
        const art::RecordHeader header = art::readHeader(reader);
        wanted_ = art::shapeIsBackground;
        copyShape(header, reader.view(header.length), false);
    }

    Bytes take() { return out_.take(); }
    bool fills = true; // whether the shape that was copied last is filled
    std::vector<ShapeReference> references;
    int damagedMembers = 0;
    int withoutDefaults = 0; // shapes that there was no room to write the defaults into

private:
    static void require(bool sound) {
        if (!sound) {
            throw FormatError(FormatError::Kind::damaged, "OfficeArtSpContainer");
        }
    }

    // Writes a container record around what `content` writes.
    template <class Content>
    void writeContainer(const art::RecordHeader& header, Content content) {
        out_.u16(art::container | (header.instance << 4));
        out_.u16(header.type);
        const std::size_t lengthAt = out_.position();
        out_.u32(0);
        content();
        out_.patchU32(lengthAt, static_cast<std::uint32_t>(out_.position() - lengthAt - 4));
    }

    template <class Visit>
    static void forEachRecord(ByteView content, Visit visit) {
        LittleEndianReader reader(content, "OfficeArt");
        while (!reader.atEnd()) {
            const art::RecordHeader header = art::readHeader(reader);
            visit(header, reader.view(header.length));
        }
    }

    void copyFileBlock(const art::RecordHeader& header, ByteView content, int depth) {
        require(depth <= deepestGroup);
        if (header.type == art::spContainer) {
            copyShape(header, content, depth == 0);
            return;
        }
        require(header.type == art::spgrContainer);
        writeContainer(header, [&] {
            bool first = true;
            forEachRecord(content, [&](const art::RecordHeader& inner, ByteView bytes) {
                if (first) {
                    require(inner.type == art::spContainer);
                    copyShape(inner, bytes, depth == 0);
                } else {
                    copyMember(inner, bytes, depth + 1);
                }
                first = false;
            });
            require(!first);
        });
    }

    // A damaged member stays out of its group.
    void copyMember(const art::RecordHeader& header, ByteView content, int depth) {
        RecordCopy member(defaults_, unnamedText_, inherited_);
        try {
            member.copyFileBlock(header, content, depth);
        } catch (const FormatError&) {
            ++damagedMembers;
            return;
        }
        damagedMembers += member.damagedMembers;
        withoutDefaults += member.withoutDefaults;
        for (const ShapeReference& reference : member.references) {
            references.push_back(reference);
            references.back().at += static_cast<std::uint32_t>(out_.position());
        }
        out_.bytes(member.out_.data());
    }

    void copyShape(const art::RecordHeader& header, ByteView content, bool outermost) {
        writeContainer(header, [&] {
            const std::size_t first = references.size();
            std::set<std::uint16_t> seen;
            const auto has = [&](std::uint16_t type) { return seen.contains(type); };
            forEachRecord(content, [&](const art::RecordHeader& inner, ByteView bytes) {
                require(has(art::fsp) || inner.type == art::fsp || inner.type == art::fspgr);
                require(!has(inner.type));
                seen.insert(inner.type);
                copyRecord(inner, bytes, outermost);
            });
            require(has(art::fsp));
            if (outermost && !has(art::clientAnchor)) {
                copyNamed({0, 0, art::clientAnchor, 0}, Bytes(4), Kind::anchor);
            }
            nameText(first);
        });
    }

    // `first`: where the references of the shape begin.
    void nameText(std::size_t first) {
        const auto begin = references.begin() + static_cast<std::ptrdiff_t>(first);
        const auto kindIs = [](Kind kind) {
            return [kind](const ShapeReference& reference) { return reference.kind == kind; };
        };
        const auto self = std::find_if(begin, references.end(), kindIs(Kind::shape));
        if (std::any_of(begin, references.end(), kindIs(Kind::text))) {
            return;
        }
        if (const std::uint32_t text = unnamedText_(self->index); text != 0) {
            Bytes named(4);
            put32(named, 0, text);
            copyNamed({0, 0, art::clientTextbox, 0}, named, Kind::text);
        }
    }

    void requireInUse(ByteView shape) const {
        constexpr std::uint32_t noShape =
            art::shapeIsPatriarch | art::shapeIsDeleted | art::shapeIsBackground;
        LittleEndianReader reader(shape, "OfficeArtFSP");
        reader.skip(4);
        require(shape.size() == fspSize && (reader.u32() & noShape) == wanted_);
    }

    void copyRecord(const art::RecordHeader& header, ByteView bytes, bool outermost) {
        require(header.type != art::fspgr || bytes.size() == fspgrSize);
        require(header.version != art::container);
        switch (header.type) {
        case art::fopt:
        case art::secondaryFopt:
        case art::tertiaryFopt:
            copyProperties(header, bytes);
            return;
        case art::fsp:
            requireInUse(bytes);
            copyNamed(header, bytes, Kind::shape);
            return;
        case art::clientTextbox:
            copyNamed(header, bytes, Kind::text);
            return;
        case art::clientAnchor:
            if (outermost) {
                copyNamed(header, bytes, Kind::anchor);
            }
            return;
        default:
            art::writeRecord(out_, header.version, header.instance, header.type, bytes);
        }
    }

    // A record that begins with what it names.
    void copyNamed(const art::RecordHeader& header, ByteView bytes, Kind kind) {
        const std::uint32_t value = LittleEndianReader(bytes, "OfficeArtClient").u32();
        refer(out_.position() + art::headerSize, kind, value);
        art::writeRecord(out_, header.version, header.instance, header.type, bytes);
    }

    void copyProperties(const art::RecordHeader& header, ByteView bytes) {
        art::ShapeProperties properties(bytes, header.instance);
        if (header.type == art::fopt && defaults_.count() > 0) {
            inherit(properties);
        }
        if (header.type == art::fopt) {
            fills = isFilled(properties.value(art::fillFlags).value_or(0));
        }
        const std::size_t start = out_.position() + art::headerSize;
        for (const art::ShapeProperties::Entry& entry : properties.entries()) {
            noteProperty(entry, start);
        }
        const Bytes encoded = properties.encode();
        noteRelations(properties, encoded, start);
        art::writeRecord(out_, header.version, properties.count(), header.type, encoded);
    }

    // A shape is filled unless it says otherwise: in one bit, that it says so in another.
    static bool isFilled(std::uint32_t flags) {
        constexpr std::uint32_t filled = 0x00000010;
        constexpr std::uint32_t saysSo = 0x00100000;
        return (flags & saysSo) == 0 || (flags & filled) != 0;
    }

    // Defaults are few; a damaged file may have thousands, for thousands of shapes.
    void inherit(art::ShapeProperties& properties) {
        constexpr std::size_t propertySize = 6;
        const bool hasRoom = properties.count() + defaults_.count() <= art::mostProperties &&
                             inherited_.take(propertySize * defaults_.count());
        if (hasRoom) {
            properties.inherit(defaults_);
        } else {
            ++withoutDefaults;
        }
    }

    void noteProperty(const art::ShapeProperties::Entry& entry, std::size_t start) {
        if (entry.namesBlip) {
            refer(start + entry.valueAt, Kind::picture, entry.value);
        } else if (entry.opid == art::textOfShape) {
            refer(start + entry.valueAt, Kind::text, entry.value);
        } else if (entry.opid == art::nextShape || entry.opid == art::masterShape) {
            refer(start + entry.valueAt, Kind::otherShape, entry.value);
        } else if (entry.opid == art::pictureId) {
            refer(start + entry.valueAt, Kind::object, entry.value);
        }
    }

    // An array of triples of shapes: three numbers of 16 bits, then the triples.
    void noteRelations(const art::ShapeProperties& properties, const Bytes& encoded,
                       std::size_t start) {
        constexpr std::size_t headSize = 6;
        for (const art::ShapeProperties::Entry& entry : properties.entries()) {
            if (entry.opid != art::shapeRelations || entry.complexSize < headSize) {
                continue;
            }
            for (std::size_t at = headSize; at + 4 <= entry.complexSize; at += 4) {
                LittleEndianReader reader(encoded, "OfficeArtFOPT");
                reader.seek(entry.complexAt + at);
                refer(start + entry.complexAt + at, Kind::otherShape, reader.u32());
            }
        }
    }

    void refer(std::size_t at, Kind kind, std::uint32_t value) {
        ShapeReference reference;
        reference.at = static_cast<std::uint32_t>(at);
        reference.kind = kind;
        reference.index = value;
        references.push_back(reference);
    }

    const art::ShapeProperties& defaults_;
    const UnnamedText& unnamedText_;
    CopyBudget& inherited_;
    std::uint32_t wanted_ = 0; // of the flags that a shape in a group or at an anchor has not
    LittleEndianWriter out_;
};

// A shape without any look of its own. Numbers are those of a file.
Bytes plainRecords(std::uint32_t id, unsigned kind, const art::ShapeProperties& properties,
                   std::uint32_t text) {
    LittleEndianWriter head;
    head.u32(id);
    head.u32(art::shapeHasAnchor | art::shapeHasKind);
    Bytes textName(4);
    put32(textName, 0, text);
    LittleEndianWriter content;
    art::writeRecord(content, 2, kind, art::fsp, head.data());
    art::writeRecord(content, 3, properties.count(), art::fopt, properties.encode());
    art::writeRecord(content, 0, 0, art::clientAnchor, Bytes(4));
    art::writeRecord(content, 0, 0, art::clientData, Bytes{1, 0, 0, 0});
    if (text != 0) {
        art::writeRecord(content, 0, 0, art::clientTextbox, textName);
    }
    LittleEndianWriter record;
    art::writeRecord(record, art::container, 0, art::spContainer, content.data());
    return record.take();
}

} // namespace

std::optional<std::uint32_t> CarriedDrawings::add(DrawingOf part, ByteView spa,
                                                  const Texts& texts) {
    LittleEndianReader reader(spa, "Spa");
    const std::uint32_t id = reader.u32();
    const ByteView place = reader.view(placeSize);
    const bool isFirst = anchored_[static_cast<std::size_t>(part)].insert(id).second;
    std::optional<Drawing> drawing =
        isFirst ? copied(drawings_.anchored(part, id), texts) : std::nullopt;
    if (!drawing) {
        drawing = copied(plainShape(id, isFirst, texts), texts);
    }
    if (!drawing) {
        return std::nullopt;
    }
    drawing->place.assign(place.begin(), place.end());
    drawing->order = drawings_.orderOf(part, id);
    tables_.nextOrder = std::max(tables_.nextOrder, drawing->order + 1);
    resolve(part, *drawing, texts);
    tables_.drawings.push_back(std::move(*drawing));
    return static_cast<std::uint32_t>(tables_.drawings.size() - 1);
}

// Nothing for no record and for one that is damaged.
std::optional<Drawing> CarriedDrawings::copied(ByteView record, const Texts& texts) {
    const RecordCopy::UnnamedText unnamed = [&](std::uint32_t id) {
        return unnamedText(id, texts);
    };
    RecordCopy copy(drawings_.defaults(), unnamed, inherited_);
    try {
        copy.copy(record);
    } catch (const FormatError&) {
        return std::nullopt;
    }
    damagedMembers_ += copy.damagedMembers;
    withoutDefaults_ += copy.withoutDefaults;
    return Drawing{{}, copy.take(), std::move(copy.references)};
}

std::optional<Drawing> CarriedDrawings::background() {
    const Texts none{[](std::uint16_t) { return std::optional<std::uint32_t>(); },
                     [](std::uint32_t) { return std::uint16_t{0}; }};
    const ByteView record = drawings_.background();
    if (record.empty()) {
        return std::nullopt;
    }
    const RecordCopy::UnnamedText noText = [](std::uint32_t) { return std::uint32_t{0}; };
    RecordCopy copy(drawings_.defaults(), noText, inherited_);
    try {
        copy.copyBackground(record);
    } catch (const FormatError&) {
        damagedBackground_ = true;
        return std::nullopt;
    }
    if (!copy.fills) {
        return std::nullopt;
    }
    Drawing drawing{{}, copy.take(), std::move(copy.references)};
    resolve(DrawingOf::main, drawing, none);
    return drawing;
}

std::uint32_t CarriedDrawings::unnamedText(std::uint32_t id, const Texts& texts) const {
    const std::uint16_t row = texts.rowOf(id);
    return row != 0 && drawings_.shapeOfText(row) == nullptr ? std::uint32_t{row} << 16 : 0;
}

Bytes CarriedDrawings::plainShape(std::uint32_t id, bool mayShowText, const Texts& texts) {
    const Shape* shape = drawings_.shape(id);
    std::uint32_t text = unnamedText(id, texts);
    if (shape != nullptr && shape->text) {
        text = (std::uint32_t{shape->text->number} << 16) | shape->text->link;
    }
    art::ShapeProperties properties;
    if (text != 0 && mayShowText && texts.index(static_cast<std::uint16_t>(text >> 16))) {
        properties.set(art::textOfShape, text);
        return plainRecords(id, textFrame, properties, text);
    }
    if (shape == nullptr || shape->kind != pictureFrame || text != 0 || shape->outermost != id ||
        !pictureOf(shape->properties.value(art::pib).value_or(0))) {
        return {};
    }
    properties.setBlip(art::pib, *shape->properties.value(art::pib));
    for (const std::uint16_t opid :
         {art::cropFromTop, art::cropFromBottom, art::cropFromLeft, art::cropFromRight,
          art::pictureContrast, art::pictureBrightness}) {
        if (const auto value = shape->properties.value(opid)) {
            properties.set(opid, *value);
        }
    }
    return plainRecords(id, pictureFrame, properties, 0);
}

// The file's numbers become places in the tables; what names nothing stays 0.
void CarriedDrawings::resolve(DrawingOf part, Drawing& drawing, const Texts& texts) {
    std::vector<ShapeReference> known;
    for (ShapeReference& reference : drawing.references) {
        const std::uint32_t value = reference.index;
        std::optional<std::uint32_t> index;
        switch (reference.kind) {
        case Kind::shape:
            index = newShape(part, value);
            break;
        case Kind::otherShape:
            index = value != 0 ? std::optional(shapeOf(part, value)) : std::nullopt;
            break;
        case Kind::picture:
            index = pictureOf(value);
            break;
        case Kind::text:
            reference.link = static_cast<std::uint16_t>(value);
            index = texts.index(static_cast<std::uint16_t>(value >> 16));
            break;
        case Kind::object:
            index = objectOf(value);
            if (!index) {
                continue; // the number is not that of an object
            }
            break;
        case Kind::anchor:
            index = 0;
            break;
        }
        put32(drawing.records, reference.at, 0);
        if (index) {
            reference.index = *index;
            known.push_back(reference);
        }
    }
    drawing.references = std::move(known);
}

std::optional<std::uint32_t> CarriedDrawings::pictureOf(std::uint32_t number) {
    const auto [known, isNew] = pictures_.try_emplace(number);
    if (isNew) {
        Bytes entry = drawings_.picture(number);
        const bool isOneTooMany = tables_.shapePictures.size() >= art::mostPictures;
        picturesWithoutRoom_ += isOneTooMany && !entry.empty() ? 1 : 0;
        if (!entry.empty() && !isOneTooMany && budget_.take(entry.size())) {
            known->second = static_cast<std::uint32_t>(tables_.shapePictures.size());
            tables_.shapePictures.push_back(std::make_shared<const Bytes>(std::move(entry)));
        }
    }
    return known->second;
}

std::optional<std::uint32_t> CarriedDrawings::objectOf(std::uint32_t number) {
    const auto found = objects_.find(number);
    if (found == objects_.end()) {
        return std::nullopt;
    }
    auto& objects = tables_.objects;
    for (; indexedObjects_ < objects.size(); ++indexedObjects_) {
        objectPlaces_.try_emplace(objects[indexedObjects_].get(), indexedObjects_);
    }
    const auto [place, isNew] =
        objectPlaces_.try_emplace(found->second.get(), static_cast<std::uint32_t>(objects.size()));
    if (isNew) {
        objects.push_back(found->second);
    }
    return place->second;
}

// A shape of its own, even where a damaged file has used its identifier before.
std::uint32_t CarriedDrawings::newShape(DrawingOf part, std::uint32_t id) {
    const std::uint32_t index = shapeOf(part, id);
    return present_.insert(index).second ? index : tables_.shapes++;
}

std::uint32_t CarriedDrawings::shapeOf(DrawingOf part, std::uint32_t id) {
    const auto [known, isNew] =
        shapes_[static_cast<std::size_t>(part)].try_emplace(id, tables_.shapes);
    tables_.shapes += isNew ? 1 : 0;
    return known->second;
}

} // namespace qvnd::word
