#include "platform/word/docfile/styles/StyleSheetTable.h"

#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/formatting/SoundSprms.h"
#include "platform/word/docfile/styles/StyleSheetRepair.h"

#include <algorithm>

namespace qvnd::word {

namespace {

constexpr std::size_t fixedSlots = 15;     // istdMaxFixedWhenSaved
constexpr std::size_t stshifSize = 18;     // Stshif
constexpr std::size_t post2000Size = 0x12; // Stdf with StdfPost2000
constexpr std::size_t lsdSize = 4;
constexpr unsigned stiMaxUnknown = 0x9C; // when no latent styles tell it
constexpr unsigned hasOriginalStyle = 0x1000;

StyleKind kindOf(unsigned stk) {
    if (stk < 1 || stk > 4) {
        throw FormatError(FormatError::Kind::damaged, "STD: stk " + std::to_string(stk));
    }
    return static_cast<StyleKind>(stk);
}

// The name and its aliases together have room for 255 characters (xstzName of STD); some of them
// are left for a number behind a name that another style has.
void splitName(std::u16string whole, StyleDefinition& style) {
    constexpr std::size_t longest = 240;
    whole.resize(std::min(whole.size(), longest));
    const std::size_t comma = whole.find(u',');
    style.name = whole.substr(0, comma);
    style.aliases = comma == std::u16string::npos ? u"" : whole.substr(comma + 1);
}

// --- decoding -------------------------------------------------------------------------------

class StyleReader {
public:
    StyleReader(ByteView std, std::size_t baseSize, PropertyLists& lists)
        : reader_(std, "STD"), lists_(lists) {
        readBase(baseSize);
        reader_.seek(baseSize);
        splitName(reader_.text(reader_.u16()), style_);
        reader_.skip(2);
    }

    // What the style formats. Throws FormatError; what was read before stays.
    void readFormatting() {
        if (style_.kind == StyleKind::table) {
            style_.table = tableUpx(reader_);
        }
        if (style_.kind != StyleKind::character) {
            style_.paragraph = paragraphUpx(reader_);
        }
        if (style_.kind != StyleKind::list) {
            style_.character = characterUpx(reader_);
        }
        if (original_ && !reader_.atEnd()) {
            readOriginal();
        }
    }

    // Whether a list was longer than a style may have it.
    bool isCut() const { return isCut_; }
    StyleDefinition take() { return std::move(style_); }

private:
    void readBase(std::size_t baseSize) {
        style_.sti = reader_.u16() & 0x0FFF;
        const std::uint16_t kindAndBase = reader_.u16();
        style_.kind = kindOf(kindAndBase & 0xF);
        style_.basedOn = kindAndBase >> 4;
        style_.next = reader_.u16() >> 4;
        reader_.skip(2); // bchUpe
        style_.flags = reader_.u16();
        if (baseSize >= post2000Size) {
            const std::uint16_t link = reader_.u16();
            style_.link = link & 0x0FFF;
            original_ = (link & hasOriginalStyle) != 0;
            reader_.skip(4); // rsid
            style_.priority = reader_.u16() >> 4;
        }
    }

    static ByteView upx(LittleEndianReader& reader) {
        if (reader.atEnd()) {
            return {};
        }
        const ByteView content = reader.view(reader.u16());
        if (content.size() % 2 != 0 && !reader.atEnd()) {
            reader.skip(1);
        }
        return content;
    }

    PropertyListId kept(const Bytes& sprms) {
        CutList cut = cutSprms(withoutStyleNames(sprms), longestStyleList);
        isCut_ = isCut_ || cut.lost;
        return lists_.intern(cut.list);
    }

    PropertyListId tableUpx(LittleEndianReader& reader) {
        return kept(soundSprms(upx(reader), {SprmGroup::table}));
    }

    PropertyListId characterUpx(LittleEndianReader& reader) {
        return kept(soundSprms(upx(reader), {SprmGroup::character}));
    }

    PropertyListId paragraphUpx(LittleEndianReader& reader) {
        const ByteView content = upx(reader);
        const ByteView sprms = content.size() < 2 ? ByteView{} : content.subspan(2);
        return kept(soundSprms(sprms, {SprmGroup::paragraph, SprmGroup::table}));
    }

    void readOriginal() {
        LittleEndianReader reader(upx(reader_), "StkParaUpxGrLPUpxRM");
        LittleEndianReader mark(upx(reader), "UpxRm");
        OriginalStyle original;
        original.date = mark.u32();
        original.author = mark.u16();
        if (style_.kind == StyleKind::paragraph) {
            original.paragraph = paragraphUpx(reader);
        }
        original.character = characterUpx(reader);
        style_.original = original;
    }

    LittleEndianReader reader_;
    PropertyLists& lists_;
    StyleDefinition style_;
    bool original_ = false;
    bool isCut_ = false;
};

// Throws FormatError when not even the name can be read.
StyleDefinition readStyle(ByteView std, std::size_t baseSize, PropertyLists& lists,
                          Remarks& remarks) {
    StyleReader reader(std, baseSize, lists);
    bool damaged = false;
    try {
        reader.readFormatting();
    } catch (const FormatError&) {
        damaged = true;
    }
    const bool isCut = reader.isCut();
    StyleDefinition style = reader.take();
    const std::u16string which =
        style.name.empty() ? u"一种没有名称的样式" : u"样式“" + style.name + u"”";
    if (damaged) {
        remarks.push_back(which + u"的格式已损坏，用它的文字可能与原来不同");
    }
    if (isCut) {
        remarks.push_back(which + u"的格式过于繁复，只读入了一部分，用它的文字可能与原来不同");
    }
    return style;
}

struct SheetHead {
    std::size_t count = 0;
    std::size_t baseSize = post2000Size;
};

void readLatent(LittleEndianReader& stshi, std::size_t count, StyleSheet& sheet) {
    if (stshi.remaining() < 2 || stshi.u16() != lsdSize || stshi.remaining() < count * lsdSize) {
        return;
    }
    for (std::size_t i = 0; i < count; ++i) {
        sheet.latent.push_back(stshi.u32());
    }
}

SheetHead readHead(LittleEndianReader& stsh, StyleSheet& sheet) {
    LittleEndianReader stshi(stsh.view(stsh.u16()), "STSHI");
    SheetHead head;
    head.count = stshi.u16();
    head.baseSize = stshi.u16();
    stshi.skip(2);
    const std::size_t stiMax = stshi.u16();
    stshi.skip(4);
    for (std::size_t i = 0; i < 3; ++i) {
        sheet.defaultFonts[i] = stshi.u16();
    }
    if (stshi.remaining() >= 2) {
        sheet.defaultFonts[3] = stshi.u16();
    }
    readLatent(stshi, stiMax, sheet);
    return head;
}

void readStyles(LittleEndianReader& stsh, const SheetHead& head, StyleSheet& sheet,
                PropertyLists& lists, Remarks& remarks) {
    int beyond = 0;
    int damaged = 0;
    for (std::size_t istd = 0; istd < head.count; ++istd) {
        const ByteView std = stsh.view(stsh.u16());
        if (std.size() % 2 != 0 && !stsh.atEnd()) {
            stsh.skip(1);
        }
        if (istd >= mostStyles) {
            beyond += std.empty() ? 0 : 1;
            continue;
        }
        sheet.styles.emplace_back();
        try {
            if (!std.empty()) {
                sheet.styles.back() = readStyle(std, head.baseSize, lists, remarks);
            }
        } catch (const FormatError&) {
            ++damaged;
        }
    }
    if (damaged > 0) {
        remarks.push_back(u"有 " + digits(damaged) +
                          u" 种样式已损坏，未读入，用它们的段落改用正文样式");
    }
    if (beyond > 0) {
        remarks.push_back(u"有 " + digits(beyond) + u" 种样式未读入，一个文档最多 4093 种样式");
    }
}

StyleDefinition plainNormal() {
    StyleDefinition normal;
    normal.name = u"Normal";
    normal.sti = 0;
    return normal;
}

// --- encoding -------------------------------------------------------------------------------

void writeUpx(LittleEndianWriter& writer, ByteView content) {
    writer.u16(static_cast<unsigned>(content.size()));
    writer.bytes(content);
    writer.align(2);
}

void writeParagraphUpx(LittleEndianWriter& writer, std::size_t istd, ByteView sprms) {
    LittleEndianWriter papx;
    papx.u16(static_cast<unsigned>(istd));
    papx.bytes(sprms);
    writeUpx(writer, papx.data());
}

void writeOriginal(LittleEndianWriter& writer, const StyleDefinition& style, std::size_t istd,
                   const PropertyLists& lists) {
    LittleEndianWriter content;
    LittleEndianWriter mark;
    mark.u32(style.original->date);
    mark.u16(style.original->author);
    writeUpx(content, mark.data());
    if (style.kind == StyleKind::paragraph) {
        writeParagraphUpx(content, istd, lists[style.original->paragraph]);
    }
    writeUpx(content, lists[style.original->character]);
    writeUpx(writer, content.data());
}

bool keepsOriginal(const StyleDefinition& style) {
    return style.original &&
           (style.kind == StyleKind::paragraph || style.kind == StyleKind::character);
}

unsigned upxCount(const StyleDefinition& style) {
    switch (style.kind) {
    case StyleKind::paragraph:
        return keepsOriginal(style) ? 3 : 2;
    case StyleKind::character:
        return keepsOriginal(style) ? 2 : 1;
    case StyleKind::table:
        return 3;
    case StyleKind::list:
        break;
    }
    return 1;
}

void writeStdf(LittleEndianWriter& writer, const StyleDefinition& style) {
    writer.u16(style.sti & 0x0FFFU);
    writer.u16(static_cast<unsigned>(style.kind) | (static_cast<unsigned>(style.basedOn) << 4));
    writer.u16(upxCount(style) | (static_cast<unsigned>(style.next) << 4));
    writer.u16(0); // bchUpe, patched when the size is known
    writer.u16(style.flags);
    writer.u16((style.link & 0x0FFFU) | (keepsOriginal(style) ? hasOriginalStyle : 0));
    writer.u32(0); // rsid
    writer.u16(static_cast<unsigned>(style.priority) << 4);
}

void writeFormatting(LittleEndianWriter& writer, const StyleDefinition& style, std::size_t istd,
                     const PropertyLists& lists) {
    if (style.kind == StyleKind::table) {
        writeUpx(writer, lists[style.table]);
    }
    if (style.kind != StyleKind::character) {
        writeParagraphUpx(writer, istd, lists[style.paragraph]);
    }
    if (style.kind != StyleKind::list) {
        writeUpx(writer, lists[style.character]);
    }
    if (keepsOriginal(style)) {
        writeOriginal(writer, style, istd, lists);
    }
}

Bytes encodeStyle(const StyleDefinition& style, std::size_t istd, const PropertyLists& lists) {
    constexpr std::size_t sizeAt = 6; // bchUpe
    const std::u16string name =
        style.aliases.empty() ? style.name : style.name + u"," + style.aliases;
    LittleEndianWriter writer;
    writeStdf(writer, style);
    writer.u16(static_cast<unsigned>(name.size()));
    writer.text(name);
    writer.u16(0);
    writeFormatting(writer, style, istd, lists);
    writer.patchU16(sizeAt, static_cast<unsigned>(writer.position()));
    return writer.take();
}

void writeHead(LittleEndianWriter& writer, const StyleSheet& sheet, std::size_t count) {
    const std::size_t latentSize = sheet.latent.empty() ? 0 : 2 + sheet.latent.size() * lsdSize;
    writer.u16(static_cast<unsigned>(stshifSize + 2 + latentSize));
    writer.u16(static_cast<unsigned>(count));
    writer.u16(post2000Size);
    writer.u16(1); // fStdStylenamesWritten
    writer.u16(sheet.latent.empty() ? stiMaxUnknown : static_cast<unsigned>(sheet.latent.size()));
    writer.u16(fixedSlots);
    writer.u16(0); // nVerBuiltInNamesWhenSaved
    for (const std::uint16_t font : sheet.defaultFonts) {
        writer.u16(font);
    }
    if (!sheet.latent.empty()) {
        writer.u16(lsdSize);
        for (const std::uint32_t lsd : sheet.latent) {
            writer.u32(lsd);
        }
    }
}

} // namespace

StyleSheet decodeStyleSheet(ByteView stsh, PropertyLists& lists, Remarks& remarks) {
    StyleSheet sheet;
    try {
        LittleEndianReader reader(stsh, "STSH");
        const SheetHead head = readHead(reader, sheet);
        readStyles(reader, head, sheet, lists, remarks);
    } catch (const FormatError&) {
        remarks.emplace_back(u"文件的样式已损坏，未能全部读出，没有读出的样式改用正文样式，"
                             u"请核对标题和段落的格式");
    }
    sheet.styles.resize(std::max(sheet.styles.size(), fixedSlots));
    std::optional<StyleDefinition>& standard = sheet.styles[0];
    if (standard && standard->kind != StyleKind::paragraph) {
        remarks.push_back(u"样式“" + standard->name + u"”已损坏，改用默认的正文格式");
        standard.reset();
    }
    if (!standard) {
        standard = plainNormal();
    }
    repairStyleSheet(sheet, remarks);
    return sheet;
}

Bytes encodeStyleSheet(const StyleSheet& sheet, const PropertyLists& lists) {
    const std::size_t count = std::max(sheet.styles.size(), fixedSlots);
    LittleEndianWriter writer;
    writeHead(writer, sheet, count);
    for (std::size_t istd = 0; istd < count; ++istd) {
        const bool used = istd < sheet.styles.size() && sheet.styles[istd];
        const Bytes std = used ? encodeStyle(*sheet.styles[istd], istd, lists) : Bytes{};
        writer.u16(static_cast<unsigned>(std.size()));
        writer.bytes(std);
        writer.align(2);
    }
    return writer.take();
}

} // namespace qvnd::word
