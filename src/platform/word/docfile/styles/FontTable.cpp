#include "platform/word/docfile/styles/FontTable.h"

#include "platform/word/docfile/container/FormatError.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace qvnd::word {

namespace {

// FFN without its length byte: ffid, wWeight, chs, ixchSzAlt, panose[10], fs[24], then the names.
constexpr std::size_t alternateAt = 4;
constexpr std::size_t namesAt = 39;
constexpr std::size_t longestRecord = 255;
constexpr std::size_t longestName = 64;

constexpr unsigned variablePitchTrueType = 0x06; // prq 2, fTrueType
constexpr unsigned regularWeight = 400;
constexpr unsigned gbCharacterSet = 134;

struct NamePair {
    std::u16string_view chinese;
    std::u16string_view latin;
};
constexpr std::array<NamePair, 12> latinNames{{{u"宋体", u"SimSun"},
                                               {u"新宋体", u"NSimSun"},
                                               {u"黑体", u"SimHei"},
                                               {u"楷体", u"KaiTi"},
                                               {u"仿宋", u"FangSong"},
                                               {u"微软雅黑", u"Microsoft YaHei"},
                                               {u"等线", u"DengXian"},
                                               {u"隶书", u"LiSu"},
                                               {u"幼圆", u"YouYuan"},
                                               {u"华文中宋", u"STZhongsong"},
                                               {u"华文楷体", u"STKaiti"},
                                               {u"华文仿宋", u"STFangsong"}}};

std::u16string zeroTerminated(ByteView text) {
    std::u16string name;
    for (std::size_t at = 0; at + 1 < text.size(); at += 2) {
        const auto c = static_cast<char16_t>(text[at] | (text[at + 1] << 8));
        if (c == 0) {
            break;
        }
        name.push_back(c);
    }
    return name;
}

// Whether the names are there to the end, as readers want them.
bool namesAreClosed(ByteView record) {
    const std::size_t size = record.size();
    return size >= namesAt + 4 && record[size - 1] == 0 && record[size - 2] == 0;
}

// The names at the end of a record: the font's, and the one to take in its place if it has one.
void writeNames(LittleEndianWriter& writer, const FontEntry& font) {
    writer.text(font.name);
    writer.u16(0);
    if (!font.alternateName.empty()) {
        writer.text(font.alternateName);
        writer.u16(0);
    }
}

// The record with its names written anew behind what it says of the font itself.
Bytes withNames(ByteView record, const FontEntry& font) {
    LittleEndianWriter writer;
    writer.bytes(record.first(alternateAt));
    writer.u8(font.alternateName.empty() ? 0 : static_cast<unsigned>(font.name.size() + 1));
    writer.bytes(record.subspan(alternateAt + 1, namesAt - alternateAt - 1));
    writeNames(writer, font);
    return writer.take();
}

std::optional<FontEntry> readFont(ByteView record) {
    if (record.size() < namesAt + 2) {
        return std::nullopt;
    }
    const ByteView names = record.subspan(namesAt);
    FontEntry font;
    font.name = zeroTerminated(names);
    const std::size_t alternate = std::size_t{2} * record[alternateAt];
    if (alternate != 0 && alternate < names.size()) {
        font.alternateName = zeroTerminated(names.subspan(alternate));
    }
    font.record.assign(record.begin(), record.end());
    if (font.name.empty()) {
        return std::nullopt;
    }
    if (!namesAreClosed(record)) {
        font.name.resize(std::min(font.name.size(), longestName));
        font.alternateName.clear();
        font.record = withNames(record, font);
    }
    return font;
}

void writeSignature(LittleEndianWriter& writer, bool chinese) {
    constexpr std::uint32_t basicLatin = 1;
    constexpr std::uint32_t unifiedIdeographs = 1U << 27; // bit 59 of the Unicode bitfield
    constexpr std::uint32_t latin1Codepage = 1;
    constexpr std::uint32_t gbCodepage = 1U << 18;
    writer.u32(basicLatin);
    writer.u32(chinese ? unifiedIdeographs : 0);
    writer.u32(0);
    writer.u32(0);
    writer.u32(chinese ? gbCodepage | latin1Codepage : latin1Codepage);
    writer.u32(0);
}

Bytes makeRecord(const FontEntry& font) {
    const bool chinese =
        std::any_of(font.name.begin(), font.name.end(), [](char16_t c) { return c >= 0x2E80; });
    LittleEndianWriter writer;
    writer.u8(variablePitchTrueType);
    writer.u16(regularWeight);
    writer.u8(chinese ? gbCharacterSet : 0);
    writer.u8(font.alternateName.empty() ? 0 : static_cast<unsigned>(font.name.size() + 1));
    writer.zeros(10); // panose
    writeSignature(writer, chinese);
    writeNames(writer, font);
    return writer.take();
}

FontEntry plainFont() { return makeFont(u"Times New Roman"); }

} // namespace

FontEntry makeFont(std::u16string name) {
    FontEntry font;
    font.name = std::move(name);
    font.name.resize(std::min(font.name.size(), longestName));
    for (const NamePair& pair : latinNames) {
        if (pair.chinese == font.name) {
            font.alternateName = pair.latin;
        }
    }
    font.record = makeRecord(font);
    return font;
}

std::vector<FontEntry> decodeFonts(ByteView sttbfFfn, Remarks& remarks) {
    std::vector<FontEntry> fonts;
    int damaged = 0;
    try {
        LittleEndianReader reader(sttbfFfn, "SttbfFfn");
        const std::size_t count = reader.u16();
        const std::size_t extra = reader.u16();
        for (std::size_t ftc = 0; ftc < count; ++ftc) {
            std::optional<FontEntry> font = readFont(reader.view(reader.u8()));
            reader.skip(extra);
            damaged += font ? 0 : 1;
            fonts.push_back(font ? *std::move(font) : plainFont());
        }
    } catch (const FormatError&) {
        remarks.emplace_back(u"文件的字体已损坏，未能全部读出，部分文字的字体可能与原来不同");
    }
    if (damaged > 0) {
        remarks.push_back(u"有 " + digits(damaged) +
                          u" 种字体已损坏，用它们的文字改用 Times New Roman");
    }
    return fonts;
}

Bytes encodeFonts(const std::vector<FontEntry>& fonts) {
    LittleEndianWriter writer;
    writer.u16(static_cast<unsigned>(fonts.size()));
    writer.u16(0); // cbExtra
    for (const FontEntry& font : fonts) {
        const bool usable = font.record.size() > namesAt && font.record.size() <= longestRecord;
        const Bytes record = usable ? font.record : makeFont(font.name).record;
        writer.u8(static_cast<unsigned>(record.size()));
        writer.bytes(record);
    }
    return writer.take();
}

} // namespace qvnd::word
