#pragma once

#include "platform/drawing/metafile/Metafile.h"
#include "support/Metafiles.h"

#include <gtest/gtest.h>

#include <optional>
#include <variant>
#include <vector>

namespace qvnd::drawing {

using test::WmfBuilder;

// The frame is 1000 by 500 pixels.
struct EmfBuilder : test::EmfBuilder {
    EmfBuilder() : test::EmfBuilder(1000, 500) {}
};

// What a file comes to, and its elements by their kind.
struct Drawn {
    explicit Drawn(std::optional<VectorPicture> read) : picture(std::move(read)) {
        EXPECT_TRUE(picture);
    }
    std::size_t count() const { return picture ? picture->elements.size() : 0; }
    template <class Kind>
    Kind at(std::size_t index) const {
        const bool isKind =
            index < count() && std::holds_alternative<Kind>(picture->elements[index].what);
        EXPECT_TRUE(isKind) << index;
        return isKind ? std::get<Kind>(picture->elements[index].what) : Kind();
    }
    VectorShape shape(std::size_t index) const { return at<VectorShape>(index); }
    VectorText text(std::size_t index) const { return at<VectorText>(index); }
    VectorImage image(std::size_t index) const { return at<VectorImage>(index); }

    std::optional<VectorPicture> picture;
};

inline Drawn drawn(const test::EmfBuilder& builder) { return Drawn(readEmf(builder.file())); }

inline Drawn drawn(const WmfBuilder& builder) { return Drawn(readWmf(builder.plain())); }

// Pixels of 24 bits in one row: red, blue.
inline word::Bytes redAndBlue() {
    word::LittleEndianWriter file;
    file.bytes(test::bitmapHead(2, 1, 24));
    for (const unsigned part : {0U, 0U, 255U, 255U, 0U, 0U, 0U, 0U}) {
        file.u8(part);
    }
    return file.take();
}

inline const std::vector<std::uint8_t> redAndBluePixels{0, 0, 255, 255, 255, 0, 0, 255};

} // namespace qvnd::drawing
