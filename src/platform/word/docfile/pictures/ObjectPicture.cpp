#include "platform/word/docfile/pictures/ObjectPicture.h"

#include "platform/word/docfile/container/Bytes.h"
#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/pictures/Blip.h"

#include <algorithm>
#include <string_view>

namespace qvnd::word {

namespace {

constexpr std::size_t metafileHead = 8;
constexpr std::size_t naturalSizeAt = 0x14;
constexpr std::size_t scaleAt = 0x2C;

ByteView objectStream(const EmbeddedObject& object, std::u16string_view name) {
    const auto found = std::find_if(
        object.entries.begin(), object.entries.end(),
        [&](const EmbeddedObject::Entry& entry) { return !entry.storage && entry.path == name; });
    return found == object.entries.end() ? ByteView{} : ByteView(found->content);
}

struct ObjectSize {
    std::int64_t width = 0;
    std::int64_t height = 0;
};

// Nothing for a size that no page holds.
std::optional<ObjectSize> objectSizeIn(ByteView stream) {
    constexpr std::int64_t fullScale = 1000;
    constexpr std::int64_t longest = 31680; // twips
    LittleEndianReader reader(stream, "\\3PIC");
    const auto pairAt = [&](std::size_t at) {
        reader.seek(at);
        const std::int64_t width = reader.u32();
        return ObjectSize{width, reader.u32()};
    };
    const ObjectSize natural = pairAt(naturalSizeAt);
    const ObjectSize scale = pairAt(scaleAt);
    const auto isSide = [](std::int64_t side) { return side > 0 && side <= longest; };
    if (!isSide(natural.width) || !isSide(natural.height) || scale.width > longest ||
        scale.height > longest) {
        return std::nullopt;
    }
    const ObjectSize shown{natural.width * scale.width / fullScale,
                           natural.height * scale.height / fullScale};
    return isSide(shown.width) && isSide(shown.height) ? std::optional(shown) : std::nullopt;
}

} // namespace

std::optional<Picture> pictureOfObject(const EmbeddedObject& object) {
    const ByteView metafile = objectStream(object, u"\x0003META");
    if (metafile.size() <= metafileHead) {
        return std::nullopt;
    }
    try {
        const auto image = recogniseImage(metafile.subspan(metafileHead));
        const auto size = objectSizeIn(objectStream(object, u"\x0003PIC"));
        return image && size ? std::optional(Picture::fromStore(encodeBlip(*image), {}, size->width,
                                                                size->height))
                             : std::nullopt;
    } catch (const FormatError&) {
        return std::nullopt;
    }
}

} // namespace qvnd::word
