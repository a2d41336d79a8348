#pragma once

#include "platform/word/docfile/container/Bytes.h"

#include <cstdint>
#include <optional>

namespace qvnd::word {

enum class ImageKind : std::uint8_t { png, jpeg, dib, emf, wmf };

// What a picture file says of itself. `data` is the part that a document keeps, a view into the
// file: a BMP without its file header, a WMF without the placeable header.
struct ImageFile {
    ImageKind kind = ImageKind::png;
    ByteView data;
    std::int32_t width = 0; // natural size in twips, by the file's resolution or else 96 dpi
    std::int32_t height = 0;
    bool cmyk = false; // JPEG with four colour components
};

// Tells the kind by the file's first bytes, not by its name: PNG, JPEG, BMP, EMF, WMF.
// Nothing for every other file, and for one whose head is damaged or that shows no area.
std::optional<ImageFile> recogniseImage(ByteView file);

} // namespace qvnd::word
