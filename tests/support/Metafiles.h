#pragma once

#include "platform/word/docfile/container/Bytes.h"

#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace qvnd::test {

constexpr std::uint32_t rgb(unsigned red, unsigned green, unsigned blue) {
    return red | (green << 8) | (blue << 16);
}

// The head of a bitmap, without colours.
inline word::Bytes bitmapHead(int width, int height, unsigned depth) {
    word::LittleEndianWriter head;
    head.u32(40);
    head.u32(static_cast<std::uint32_t>(width));
    head.u32(static_cast<std::uint32_t>(height));
    head.u16(1);
    head.u16(depth);
    head.zeros(24);
    return head.take();
}

// A picture of 2 by 2 pixels of 24 bits, lines from below: blue and white, above them red and
// green.
inline word::Bytes fourPixels() {
    word::LittleEndianWriter dib;
    dib.bytes(bitmapHead(2, 2, 24));
    for (const unsigned byte : {255, 0, 0, 255, 255, 255, 0, 0, 0, 0, 255, 0, 255, 0, 0, 0}) {
        dib.u8(byte);
    }
    return dib.take();
}

// Writes a WMF record by record. Numbers are given in the order of the file.
class WmfBuilder {
public:
    using Parameters = std::function<void(word::LittleEndianWriter&)>;

    WmfBuilder& record(unsigned function, std::initializer_list<int> words = {}) {
        return record(function, [&](word::LittleEndianWriter& out) {
            for (const int number : words) {
                out.u16(static_cast<std::uint16_t>(number));
            }
        });
    }
    WmfBuilder& record(unsigned function, const Parameters& parameters) {
        word::LittleEndianWriter out;
        parameters(out);
        out.align(2);
        records_.u32(static_cast<std::uint32_t>(out.position() / 2 + 3));
        records_.u16(function);
        records_.bytes(out.data());
        return *this;
    }
    // Bytes that are no record.
    WmfBuilder& raw(word::ByteView bytes) {
        records_.bytes(bytes);
        return *this;
    }

    WmfBuilder& window(int width, int height) { return record(0x020C, {height, width}); }
    WmfBuilder& origin(int x, int y) { return record(0x020B, {y, x}); }
    WmfBuilder& brush(std::uint32_t color, unsigned style = 0, unsigned hatch = 0) {
        return record(0x02FC, [&](word::LittleEndianWriter& out) {
            out.u16(style);
            out.u32(color);
            out.u16(hatch);
        });
    }
    WmfBuilder& pen(unsigned style, int width, std::uint32_t color) {
        return record(0x02FA, [&](word::LittleEndianWriter& out) {
            out.u16(style);
            out.u16(static_cast<unsigned>(width));
            out.u16(0);
            out.u32(color);
        });
    }
    // A height below 0 is that of the characters.
    WmfBuilder& font(std::string_view name, int height, unsigned charset) {
        return record(0x02FB, [&](word::LittleEndianWriter& out) {
            for (const int number : {height, 0, 0, 0, 400}) {
                out.u16(static_cast<std::uint16_t>(number));
            }
            out.zeros(3);
            out.u8(charset);
            out.zeros(4);
            letters(name, out);
            out.u8(0);
        });
    }
    WmfBuilder& select(int object) { return record(0x012D, {object}); }
    WmfBuilder& remove(int object) { return record(0x01F0, {object}); }
    WmfBuilder& rectangle(int left, int top, int right, int bottom) {
        return record(0x041B, {bottom, right, top, left});
    }
    WmfBuilder& text(int x, int y, std::string_view characters) {
        return record(0x0521, [&](word::LittleEndianWriter& out) {
            out.u16(static_cast<unsigned>(characters.size()));
            letters(characters, out);
            out.align(2);
            out.u16(static_cast<unsigned>(y));
            out.u16(static_cast<unsigned>(x));
        });
    }
    WmfBuilder& text(int x, int y, std::string_view characters, const std::vector<int>& advances) {
        return record(0x0A32, [&](word::LittleEndianWriter& out) {
            for (const int number : {y, x, static_cast<int>(characters.size()), 0}) {
                out.u16(static_cast<std::uint16_t>(number));
            }
            letters(characters, out);
            out.align(2);
            for (const int advance : advances) {
                out.u16(static_cast<unsigned>(advance));
            }
        });
    }
    WmfBuilder& stretchDib(std::uint32_t operation, int left, int top, int width, int height,
                           word::ByteView dib) {
        return record(0x0F43, [&](word::LittleEndianWriter& out) {
            out.u32(operation);
            for (const int number : {0, 2, 2, 0, 0, height, width, top, left}) {
                out.u16(static_cast<std::uint16_t>(number));
            }
            out.bytes(dib);
        });
    }

    word::Bytes plain() const {
        word::LittleEndianWriter file;
        file.u16(1);
        file.u16(9);
        file.u16(0x0300);
        file.u32(0);
        file.u16(8);
        file.u32(0);
        file.u16(0);
        file.bytes(records_.data());
        file.u32(3);
        file.u16(0);
        return file.take();
    }
    word::Bytes placeable(int left, int top, int right, int bottom, unsigned unitsPerInch) const {
        word::LittleEndianWriter file;
        file.u32(0x9AC6CDD7);
        file.u16(0);
        for (const int number : {left, top, right, bottom}) {
            file.u16(static_cast<std::uint16_t>(number));
        }
        file.u16(unitsPerInch);
        file.zeros(6);
        file.bytes(plain());
        return file.take();
    }

private:
    static void letters(std::string_view text, word::LittleEndianWriter& out) {
        for (const char letter : text) {
            out.u8(static_cast<unsigned char>(letter));
        }
    }

    word::LittleEndianWriter records_;
};

// Writes an EMF record by record, for a device of 10 pixels a millimetre.
class EmfBuilder {
public:
    using Fields = std::function<void(word::LittleEndianWriter&)>;

    // Pixels of the frame.
    explicit EmfBuilder(int width = 100, int height = 100) : width_(width), height_(height) {}

    EmfBuilder& record(std::uint32_t type, std::initializer_list<std::int64_t> numbers = {}) {
        return record(type, [&](word::LittleEndianWriter& out) {
            for (const std::int64_t number : numbers) {
                out.u32(static_cast<std::uint32_t>(number));
            }
        });
    }
    EmfBuilder& record(std::uint32_t type, const Fields& fields) {
        word::LittleEndianWriter out;
        fields(out);
        out.align(4);
        records_.u32(type);
        records_.u32(static_cast<std::uint32_t>(out.position() + 8));
        records_.bytes(out.data());
        return *this;
    }
    EmfBuilder& record(std::uint32_t type, word::ByteView content) {
        return record(type, [&](word::LittleEndianWriter& out) { out.bytes(content); });
    }

    EmfBuilder& brush(std::uint32_t number, std::uint32_t color) {
        return record(39, {number, 0, color, 0});
    }
    EmfBuilder& select(std::uint32_t number) { return record(37, {number}); }
    EmfBuilder& withoutPen() { return select(0x80000008); }
    EmfBuilder& rectangle(int left, int top, int right, int bottom) {
        return record(43, {left, top, right, bottom});
    }
    // Object 1, selected. A height below 0 is that of the characters; the angle is in tenths of a
    // degree.
    EmfBuilder& font(std::u16string_view name, int height, int weight = 400, int angle = 0) {
        record(82, [&](word::LittleEndianWriter& out) {
            for (const int part : {1, height, 0, angle, 0, weight}) {
                out.u32(static_cast<std::uint32_t>(part));
            }
            out.zeros(8);
            out.text(name);
            out.zeros(64 - name.size() * 2);
        });
        return select(1);
    }
    EmfBuilder& text(int x, int y, std::u16string_view text, const std::vector<int>& advances,
                     std::uint32_t options = 0) {
        constexpr std::uint32_t fixedPart = 76;
        const auto size = static_cast<std::uint32_t>(text.size());
        return record(84, [&](word::LittleEndianWriter& out) {
            out.zeros(28);
            out.u32(static_cast<std::uint32_t>(x));
            out.u32(static_cast<std::uint32_t>(y));
            out.u32(size);
            out.u32(fixedPart);
            out.u32(options);
            out.zeros(16);
            out.u32(advances.empty() ? 0 : fixedPart + size * 2);
            out.text(text);
            for (const int advance : advances) {
                out.u32(static_cast<std::uint32_t>(advance));
            }
        });
    }
    // Stretches `source`, a bitmap of 24 bits, over a place.
    EmfBuilder& stretchDib(std::uint32_t operation, int left, int top, int width, int height,
                           int sourceWidth, int sourceHeight, word::ByteView source) {
        constexpr int fixedPart = 80;
        constexpr int head = 40;
        return record(81, [&](word::LittleEndianWriter& out) {
            out.zeros(16);
            for (const int number : {left, top, 0, 0, sourceWidth, sourceHeight, fixedPart, head,
                                     fixedPart + head, static_cast<int>(source.size()) - head, 0}) {
                out.u32(static_cast<std::uint32_t>(number));
            }
            out.u32(operation);
            out.u32(static_cast<std::uint32_t>(width));
            out.u32(static_cast<std::uint32_t>(height));
            out.bytes(source);
        });
    }

    word::Bytes file() const {
        word::LittleEndianWriter file;
        file.u32(1);
        file.u32(88);
        for (const int number : {0, 0, width_ - 1, height_ - 1, 0, 0, width_ * 10, height_ * 10}) {
            file.u32(
                static_cast<std::uint32_t>(number)); // in pixels; in hundredths of a millimetre
        }
        file.u32(0x464D4520);
        file.u32(0x00010000);
        file.zeros(24);
        for (const std::uint32_t number : {1000U, 1000U, 100U, 100U}) {
            file.u32(number); // the device in pixels and in millimetres
        }
        file.bytes(records_.data());
        file.u32(14);
        file.u32(20);
        file.zeros(12);
        return file.take();
    }

private:
    int width_;
    int height_;
    word::LittleEndianWriter records_;
};

} // namespace qvnd::test
