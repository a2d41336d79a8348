#include "platform/drawing/metafile/Metafile.h"
#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/pictures/Blip.h"
#include "platform/word/docfile/pictures/PictureFile.h"

#include <zlib.h>

#include <algorithm>
#include <array>

namespace qvnd::drawing {

namespace {

// The bytes that a deflated metafile comes to, as far as they can be read; what is not deflated as
// it stands.
word::Bytes inflated(word::ByteView data) {
    constexpr std::size_t largest = std::size_t{64} << 20;
    word::Bytes result;
    z_stream stream{};
    if (inflateInit(&stream) != Z_OK) {
        return result;
    }
    stream.next_in = const_cast<Bytef*>(data.data()); // which zlib only reads
    stream.avail_in = static_cast<uInt>(data.size());
    std::array<std::uint8_t, 16384> part{};
    int state = Z_OK;
    while (state == Z_OK && result.size() < largest) {
        stream.next_out = part.data();
        stream.avail_out = static_cast<uInt>(part.size());
        state = inflate(&stream, Z_NO_FLUSH);
        result.insert(result.end(), part.data(), part.data() + (part.size() - stream.avail_out));
    }
    inflateEnd(&stream);
    if (result.empty()) {
        result.assign(data.begin(), data.end());
    }
    return result;
}

void crop(VectorPicture& picture, const word::PictureCrop& crop) {
    picture.left += crop.left * picture.width;
    picture.top += crop.top * picture.height;
    picture.width *= 1 - crop.left - crop.right;
    picture.height *= 1 - crop.top - crop.bottom;
}

} // namespace

std::optional<VectorPicture> readMetafile(const word::DataBlob& blob) {
    const auto picture = blob ? word::Picture::fromBlob(*blob) : std::nullopt;
    const auto stored = picture ? word::decodeBlip(picture->stored()) : std::nullopt;
    const bool isMetafile =
        stored && (stored->kind == word::ImageKind::emf || stored->kind == word::ImageKind::wmf);
    if (!isMetafile) {
        return std::nullopt;
    }
    const word::Bytes file = inflated(stored->data);
    auto result = stored->kind == word::ImageKind::emf ? readEmf(file) : readWmf(file);
    if (result) {
        crop(*result, word::cropOf(*picture));
    }
    const bool isSeen =
        result && !result->elements.empty() && result->width > 0 && result->height > 0;
    return isSeen ? std::move(result) : std::nullopt;
}

} // namespace qvnd::drawing
