#pragma once

#include "platform/drawing/metafile/Metafile.h"
#include "platform/word/docfile/container/Bytes.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace qvnd::drawing {

// Makes an EMF: its frame is 1000 by 500 pixels, 10 pixels a millimetre.
class EmfBuilder {
public:
    EmfBuilder() {
        out_.u32(1);
        out_.u32(headSize);
        for (const std::uint32_t part : {0, 0, 1000, 500, 0, 0, 10000, 5000}) {
            out_.u32(part); // the bounds in pixels, the frame in hundredths of a millimetre
        }
        out_.u32(0x464D4520);
        out_.zeros(28);
        for (const std::uint32_t part : {1000, 1000, 100, 100}) {
            out_.u32(part); // the device in pixels and in millimetres
        }
    }

    EmfBuilder& record(std::uint32_t type, std::initializer_list<std::int64_t> numbers = {}) {
        out_.u32(type);
        out_.u32(static_cast<std::uint32_t>(8 + numbers.size() * 4));
        for (const std::int64_t number : numbers) {
            out_.u32(static_cast<std::uint32_t>(number));
        }
        return *this;
    }
    EmfBuilder& record(std::uint32_t type, word::ByteView content) {
        out_.u32(type);
        out_.u32(static_cast<std::uint32_t>(8 + content.size()));
        out_.bytes(content);
        return *this;
    }
    // Object 1, selected. A height below 0 is that of the characters.
    EmfBuilder& font(const std::u16string& name, int height, int weight = 400, int angle = 0) {
        word::LittleEndianWriter content;
        for (const int part : {1, height, 0, angle, 0, weight}) {
            content.u32(static_cast<std::uint32_t>(part));
        }
        content.zeros(8);
        content.text(name);
        content.zeros(64 - name.size() * 2);
        return record(82, content.data()).record(37, {1});
    }
    EmfBuilder& text(int x, int y, const std::u16string& text, const std::vector<int>& advances,
                     std::uint32_t options = 0) {
        constexpr std::uint32_t fixedPart = 76;
        word::LittleEndianWriter content;
        content.zeros(28);
        content.u32(static_cast<std::uint32_t>(x));
        content.u32(static_cast<std::uint32_t>(y));
        content.u32(static_cast<std::uint32_t>(text.size()));
        content.u32(fixedPart);
        content.u32(options);
        content.zeros(16);
        content.u32(advances.empty() ? 0 : fixedPart + static_cast<std::uint32_t>(text.size()) * 2);
        content.text(text);
        for (const int advance : advances) {
            content.u32(static_cast<std::uint32_t>(advance));
        }
        return record(84, content.data());
    }
    word::Bytes file() {
        record(14, {0, 0, 20});
        return out_.take();
    }

private:
    static constexpr std::uint32_t headSize = 88;
    word::LittleEndianWriter out_;
};

// Makes a WMF without the placeable header.
class WmfBuilder {
public:
    WmfBuilder() {
        out_.u16(1);
        out_.u16(9);
        out_.zeros(14);
    }

    WmfBuilder& record(unsigned type, std::initializer_list<int> words = {}) {
        out_.u32(static_cast<std::uint32_t>(3 + words.size()));
        out_.u16(type);
        for (const int word : words) {
            out_.u16(static_cast<unsigned>(word) & 0xFFFFU);
        }
        return *this;
    }
    // The next free object, selected as that number.
    WmfBuilder& font(int object, const std::string& name, int height, unsigned charset) {
        word::LittleEndianWriter content;
        for (const int part : {height, 0, 0, 0, 400}) {
            content.u16(static_cast<unsigned>(part) & 0xFFFFU);
        }
        content.zeros(3);
        content.u8(charset);
        content.zeros(4);
        content.bytes({reinterpret_cast<const std::uint8_t*>(name.data()), name.size()});
        content.zeros(2 - name.size() % 2);
        out_.u32(static_cast<std::uint32_t>(3 + content.position() / 2));
        out_.u16(0x02FB);
        out_.bytes(content.data());
        return record(0x012D, {object});
    }
    WmfBuilder& text(int x, int y, const std::string& bytes, const std::vector<int>& advances) {
        word::LittleEndianWriter content;
        for (const int part : {y, x, static_cast<int>(bytes.size()), 0}) {
            content.u16(static_cast<unsigned>(part) & 0xFFFFU);
        }
        content.bytes({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
        content.zeros(bytes.size() % 2);
        for (const int advance : advances) {
            content.u16(static_cast<unsigned>(advance));
        }
        out_.u32(static_cast<std::uint32_t>(3 + content.position() / 2));
        out_.u16(0x0A32);
        out_.bytes(content.data());
        return *this;
    }
    WmfBuilder& bytes(word::ByteView record) {
        out_.bytes(record);
        return *this;
    }
    word::Bytes file() {
        record(0);
        return out_.take();
    }

private:
    word::LittleEndianWriter out_;
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

inline Drawn drawn(EmfBuilder& builder) { return Drawn(readEmf(builder.file())); }

inline Drawn drawn(WmfBuilder& builder) { return Drawn(readWmf(builder.file())); }

// The head of a bitmap, without colours.
inline word::Bytes bitmapHead(int width, int height, unsigned depth, unsigned used = 0) {
    word::LittleEndianWriter head;
    head.u32(40);
    head.u32(static_cast<std::uint32_t>(width));
    head.u32(static_cast<std::uint32_t>(height));
    head.u16(1);
    head.u16(depth);
    head.zeros(16);
    head.u32(used);
    head.u32(0);
    return head.take();
}

// Pixels of 24 bits in one row: red, blue.
inline word::Bytes redAndBlue() {
    word::LittleEndianWriter file;
    file.bytes(bitmapHead(2, 1, 24));
    for (const unsigned part : {0U, 0U, 255U, 255U, 0U, 0U, 0U, 0U}) {
        file.u8(part);
    }
    return file.take();
}

inline const std::vector<std::uint8_t> redAndBluePixels{0, 0, 255, 255, 255, 0, 0, 255};

} // namespace qvnd::drawing
