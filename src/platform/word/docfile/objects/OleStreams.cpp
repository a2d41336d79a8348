#include "platform/word/docfile/objects/OleStreams.h"

#include "platform/error/Utf8.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>
#include <vector>

namespace qvnd::word {

namespace {

constexpr std::size_t customarySize = 4096;
constexpr std::uint32_t vtI2 = 2;
constexpr std::uint32_t vtLpstr = 30;
constexpr unsigned codePageUtf8 = 65001;
constexpr std::uint32_t pidCodePage = 1;
constexpr std::uint32_t pidTitle = 2;
constexpr std::uint32_t pidSubject = 3;
constexpr std::uint32_t pidAuthor = 4;

// F29F85E0-4FF9-1068-AB91-08002B27B3D9
constexpr ClassId summaryFormat{0xE0, 0x85, 0x9F, 0xF2, 0xF9, 0x4F, 0x68, 0x10,
                                0xAB, 0x91, 0x08, 0x00, 0x2B, 0x27, 0xB3, 0xD9};
// D5CDD502-2E9C-101B-9397-08002B2CF9AE
constexpr ClassId documentSummaryFormat{0x02, 0xD5, 0xCD, 0xD5, 0x9C, 0x2E, 0x1B, 0x10,
                                        0x93, 0x97, 0x08, 0x00, 0x2B, 0x2C, 0xF9, 0xAE};

void writeAnsi(LittleEndianWriter& out, std::string_view text) {
    out.u32(static_cast<std::uint32_t>(text.size() + 1));
    for (const char c : text) {
        out.u8(static_cast<std::uint8_t>(c));
    }
    out.u8(0);
}

using Property = std::pair<std::uint32_t, Bytes>; // identifier, typed value

Property codePage() {
    LittleEndianWriter value;
    value.u32(vtI2);
    value.u16(codePageUtf8);
    value.align(4);
    return {pidCodePage, value.take()};
}

void addText(std::vector<Property>& properties, std::uint32_t id, const std::u16string& text) {
    if (text.empty()) {
        return;
    }
    LittleEndianWriter value;
    value.u32(vtLpstr);
    writeAnsi(value, toUtf8(text));
    value.align(4);
    properties.emplace_back(id, value.take());
}

// A PropertySetStream with one property set.
Bytes propertySet(const ClassId& format, const std::vector<Property>& properties) {
    LittleEndianWriter out;
    out.u16(0xFFFE);
    out.u16(0);
    out.u32(0x00020006); // written on Windows NT
    out.zeros(16);
    out.u32(1);
    out.bytes(format);
    out.u32(48); // where the set starts

    std::size_t valueAt = 8 + 8 * properties.size();
    std::size_t size = valueAt;
    for (const auto& [id, value] : properties) {
        size += value.size();
    }
    out.u32(static_cast<std::uint32_t>(size));
    out.u32(static_cast<std::uint32_t>(properties.size()));
    for (const auto& [id, value] : properties) {
        out.u32(id);
        out.u32(static_cast<std::uint32_t>(valueAt));
        valueAt += value.size();
    }
    for (const auto& [id, value] : properties) {
        out.bytes(value);
    }
    Bytes bytes = out.take();
    bytes.resize(std::max(bytes.size(), customarySize));
    return bytes;
}

bool has(const LittleEndianReader& reader, std::uint64_t bytes) {
    return bytes <= reader.remaining();
}

// Whether what the value says of its own length is there; a value without a length has nothing to
// say. The dictionary has identifier 0 and no type.
bool isValue(std::uint32_t id, LittleEndianReader value) {
    constexpr std::uint32_t vtLpwstr = 31;
    constexpr std::uint32_t vtBlob = 65;
    constexpr std::uint32_t vtClipboard = 71;
    constexpr std::uint32_t vtVector = 0x1000;
    constexpr std::uint64_t leastEntry = 8; // of a dictionary
    if (!has(value, 4)) {
        return false;
    }
    const std::uint32_t type = value.u32();
    if (id == 0) {
        return has(value, leastEntry * type);
    }
    const bool bytes = type == vtLpstr || type == vtBlob || type == vtClipboard;
    if (!bytes && type != vtLpwstr && (type & vtVector) == 0) {
        return true;
    }
    if (!has(value, 4)) {
        return false;
    }
    const std::uint64_t count = value.u32();
    return has(value, type == vtLpwstr ? 2 * count : count);
}

// [MS-OLEPS] 2.20.
bool isPropertySet(ByteView bytes) {
    constexpr std::size_t headSize = 8;
    LittleEndianReader head(bytes, "PropertySet");
    if (!has(head, headSize)) {
        return false;
    }
    const std::uint32_t size = head.u32();
    const std::uint32_t count = head.u32();
    if (size < headSize || size > bytes.size() || count > (size - headSize) / 8) {
        return false;
    }
    const ByteView set = bytes.first(size);
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::uint32_t id = head.u32();
        const std::uint32_t at = head.u32();
        if (at > size || !isValue(id, LittleEndianReader(set.subspan(at), "TypedPropertyValue"))) {
            return false;
        }
    }
    return true;
}

} // namespace

bool isPropertySetStream(ByteView stream) {
    constexpr std::size_t headSize = 28;
    constexpr std::size_t placeSize = 20; // FMTID, offset
    LittleEndianReader reader(stream, "PropertySetStream");
    if (!has(reader, headSize) || reader.u16() != 0xFFFE) {
        return false;
    }
    reader.skip(headSize - 2 - 4);
    const std::uint32_t sets = reader.u32();
    if (sets < 1 || sets > 2 || !has(reader, sets * placeSize)) {
        return false;
    }
    for (std::uint32_t i = 0; i < sets; ++i) {
        reader.skip(placeSize - 4);
        const std::uint32_t at = reader.u32();
        if (at > stream.size() || !isPropertySet(stream.subspan(at))) {
            return false;
        }
    }
    return true;
}

Bytes encodeCompObj() {
    LittleEndianWriter out;
    out.u32(0xFFFE0001);
    out.u32(0x00000A03);
    out.u32(0xFFFFFFFF);
    out.bytes(wordDocumentClass);
    writeAnsi(out, "Microsoft Word 97-2003 Document");
    writeAnsi(out, "MSWordDoc");
    writeAnsi(out, "Word.Document.8");
    out.u32(0x71B239F4); // the texts in Unicode follow: none
    out.zeros(12);
    return out.take();
}

Bytes encodeSummary(const DocumentProperties& properties) {
    std::vector<Property> list{codePage()};
    addText(list, pidTitle, properties.title);
    addText(list, pidSubject, properties.subject);
    addText(list, pidAuthor, properties.author);
    return propertySet(summaryFormat, list);
}

Bytes encodeDocumentSummary() { return propertySet(documentSummaryFormat, {codePage()}); }

} // namespace qvnd::word
