#pragma once

#include "platform/word/docfile/container/Bytes.h"

#include <QByteArray>

#include <functional>
#include <initializer_list>

namespace qvnd::test {

inline QByteArray bytesOf(word::ByteView data) {
    return {reinterpret_cast<const char*>(data.data()), static_cast<qsizetype>(data.size())};
}

constexpr std::uint32_t rgb(unsigned red, unsigned green, unsigned blue) {
    return red | (green << 8) | (blue << 16);
}

// A picture of 2 by 2 pixels of 24 bits, lines from below: blue and white, above them red and
// green.
inline word::Bytes fourPixels() {
    word::LittleEndianWriter dib;
    for (const std::uint32_t number : {40U, 2U, 2U}) {
        dib.u32(number);
    }
    dib.u16(1);
    dib.u16(24);
    dib.zeros(24);
    for (const unsigned byte : {255, 0, 0, 255, 255, 255, 0, 0, 0, 0, 255, 0, 255, 0, 0, 0}) {
        dib.u8(byte);
    }
    return dib.take();
}

// Writes a WMF record by record. Numbers are given in the order of the file.
class WmfBuilder {
public:
    WmfBuilder& record(unsigned function, std::initializer_list<int> words) {
        return record(function, [&](word::LittleEndianWriter& out) {
            for (const int number : words) {
                out.u16(static_cast<std::uint16_t>(number));
            }
        });
    }
    WmfBuilder& record(unsigned function,
                       const std::function<void(word::LittleEndianWriter&)>& parameters) {
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
    WmfBuilder& select(int object) { return record(0x012D, {object}); }
    WmfBuilder& remove(int object) { return record(0x01F0, {object}); }
    WmfBuilder& rectangle(int left, int top, int right, int bottom) {
        return record(0x041B, {bottom, right, top, left});
    }
    WmfBuilder& text(int x, int y, const QByteArray& letters) {
        return record(0x0521, [&](word::LittleEndianWriter& out) {
            out.u16(static_cast<unsigned>(letters.size()));
            for (const char letter : letters) {
                out.u8(static_cast<unsigned char>(letter));
            }
            out.align(2);
            out.u16(static_cast<unsigned>(y));
            out.u16(static_cast<unsigned>(x));
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

    QByteArray plain() const {
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
        return bytesOf(file.data());
    }
    QByteArray placeable(int left, int top, int right, int bottom, unsigned unitsPerInch) const {
        word::LittleEndianWriter head;
        head.u32(0x9AC6CDD7);
        head.u16(0);
        for (const int number : {left, top, right, bottom}) {
            head.u16(static_cast<std::uint16_t>(number));
        }
        head.u16(unitsPerInch);
        head.zeros(6);
        return bytesOf(head.data()) + plain();
    }

private:
    word::LittleEndianWriter records_;
};

// Writes an EMF record by record. The device has 10 units a millimetre; the frame is 10 mm square,
// which is 100 units.
class EmfBuilder {
public:
    EmfBuilder& record(std::uint32_t type, std::initializer_list<std::int64_t> numbers) {
        return record(type, [&](word::LittleEndianWriter& out) {
            for (const std::int64_t number : numbers) {
                out.u32(static_cast<std::uint32_t>(number));
            }
        });
    }
    EmfBuilder& record(std::uint32_t type,
                       const std::function<void(word::LittleEndianWriter&)>& fields) {
        word::LittleEndianWriter out;
        fields(out);
        out.align(4);
        records_.u32(type);
        records_.u32(static_cast<std::uint32_t>(out.position() + 8));
        records_.bytes(out.data());
        return *this;
    }

    EmfBuilder& brush(std::uint32_t number, std::uint32_t color) {
        return record(39, {number, 0, color, 0});
    }
    EmfBuilder& select(std::uint32_t number) { return record(37, {number}); }
    EmfBuilder& withoutPen() { return select(0x80000008); }
    EmfBuilder& rectangle(int left, int top, int right, int bottom) {
        return record(43, {left, top, right, bottom});
    }

    QByteArray file() const {
        word::LittleEndianWriter file;
        file.u32(1);
        file.u32(88);
        for (const std::uint32_t number :
             {0U, 0U, 99U, 99U, 0U, 0U, 1000U, 1000U, 0x464D4520U, 0x00010000U,
              0U, 0U, 0U,  0U,  0U, 0U, 1000U, 1000U, 100U,        100U}) {
            file.u32(number);
        }
        file.bytes(records_.data());
        file.u32(14);
        file.u32(20);
        file.zeros(12);
        return bytesOf(file.data());
    }

private:
    word::LittleEndianWriter records_;
};

} // namespace qvnd::test
