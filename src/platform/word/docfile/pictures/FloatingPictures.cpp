#include "platform/word/docfile/pictures/FloatingPictures.h"

#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/format/Plc.h"
#include "platform/word/docfile/pictures/Drawings.h"
#include "platform/word/docfile/pictures/Picture.h"

#include <algorithm>

namespace qvnd::word {

namespace {

constexpr unsigned pictureFrame = 75;  // MSOSPT
constexpr std::size_t anchorSize = 26; // Spa

DataBlob inlineForm(const Drawings& drawings, ByteView anchor) {
    LittleEndianReader reader(anchor, "Spa");
    const std::uint32_t id = reader.u32();
    const Shape* shape = drawings.shape(id);
    const std::int64_t left = reader.i32();
    const std::int64_t top = reader.i32();
    const std::int64_t width = reader.i32() - left;
    const std::int64_t height = reader.i32() - top;
    if (shape == nullptr || shape->kind != pictureFrame || shape->outermost != id ||
        shape->properties.value(art::textOfShape)) {
        return nullptr;
    }
    const Bytes entry = drawings.picture(shape->properties.value(art::pib).value_or(0));
    if (entry.empty() || width <= 0 || height <= 0) {
        return nullptr;
    }
    return Picture::fromStore(entry, shape->properties, width, height).blob();
}

} // namespace

std::vector<FloatingPicture> readFloatingPictures(ByteView anchorTable, const Drawings& drawings) {
    std::vector<FloatingPicture> pictures;
    const Plc anchors = decodePlc(anchorTable, anchorSize);
    try {
        for (std::size_t i = 0; i < anchors.count(); ++i) {
            if (DataBlob form = inlineForm(drawings, anchors.element(i))) {
                pictures.push_back({anchors.positions[i], std::move(form)});
            }
        }
    } catch (const FormatError&) {
        pictures.clear(); // the drawings stay uncarried, and are counted as such
    }
    std::sort(pictures.begin(), pictures.end(),
              [](const FloatingPicture& a, const FloatingPicture& b) { return a.at < b.at; });
    return pictures;
}

} // namespace qvnd::word
