#include "platform/word/docfile/check/Checks.h"
#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/document/Remarks.h"
#include "platform/word/docfile/format/FixedStyles.h"

#include <algorithm>
#include <set>
#include <string>

namespace qvnd::word {

namespace {

constexpr std::size_t shortStdf = 0x0A;
constexpr std::size_t longStdf = 0x12;

struct Upx {
    ByteView content;
    ListPlace place;
};

// An entry as it stands in the file.
struct CheckedStyle {
    StyleKind kind = StyleKind::paragraph;
    std::uint16_t number = StyleDefinition::userDefined; // sti
    std::u16string name;
    StyleIndex base = StyleDefinition::none;
    StyleIndex next = 0;
    StyleIndex link = 0;
    std::vector<Upx> upxs;
};
using CheckedStyles = std::vector<std::optional<CheckedStyle>>;

struct CheckedSheet {
    CheckedStyles styles;
    std::vector<std::uint16_t> defaultFonts; // ftcAsci, ftcFE, ftcOther
};

std::u16string nameOf(std::size_t istd, const CheckedStyle& style) {
    return u"样式 " + digits(std::int64_t(istd)) + u"“" + style.name + u"”";
}

std::vector<ListPlace> placesOf(StyleKind kind) {
    switch (kind) {
    case StyleKind::paragraph:
        return {ListPlace::paragraph, ListPlace::characters};
    case StyleKind::character:
        return {ListPlace::characters};
    case StyleKind::table:
        return {ListPlace::tableStyle, ListPlace::paragraph, ListPlace::characters};
    case StyleKind::list:
        break;
    }
    return {ListPlace::paragraph};
}

ByteView readUpx(LittleEndianReader& reader) {
    const ByteView content = reader.view(reader.u16());
    if (content.size() % 2 != 0 && !reader.atEnd()) {
        reader.skip(1);
    }
    return content;
}

void readUpxs(LittleEndianReader& reader, unsigned count, std::size_t istd, CheckedStyle& style,
              Findings& findings) {
    const std::vector<ListPlace> places = placesOf(style.kind);
    if (count < places.size()) {
        findings.add("style.lists", nameOf(istd, style) + u"缺少属性表");
    }
    for (std::size_t i = 0; i < count && i < places.size(); ++i) {
        ByteView content = readUpx(reader);
        if (places[i] == ListPlace::paragraph && !content.empty()) {
            LittleEndianReader papx(content, "UpxPapx");
            // Word gives its own "No List" style number 0.
            if (papx.u16() != istd && style.kind != StyleKind::list) {
                findings.add("style.papx", nameOf(istd, style) + u"的段落属性属于别的样式");
            }
            content = papx.view(papx.remaining());
        }
        style.upxs.push_back({content, places[i]});
    }
}

CheckedStyle readStyle(ByteView std, std::size_t baseSize, std::size_t istd, Findings& findings) {
    LittleEndianReader reader(std, "STD");
    CheckedStyle style;
    const unsigned number = reader.u16();
    const unsigned kindAndBase = reader.u16();
    const unsigned countAndNext = reader.u16();
    const std::size_t size = reader.u16();
    reader.skip(2);
    if ((kindAndBase & 0xF) < 1 || (kindAndBase & 0xF) > 4) {
        throw FormatError(FormatError::Kind::damaged, "stk");
    }
    style.kind = static_cast<StyleKind>(kindAndBase & 0xF);
    style.number = number & 0x0FFF;
    style.base = static_cast<StyleIndex>(kindAndBase >> 4);
    style.next = static_cast<StyleIndex>(countAndNext >> 4);
    if (baseSize >= longStdf) {
        style.link = reader.u16() & 0x0FFF;
    }
    reader.seek(baseSize);
    const std::size_t length = reader.u16();
    style.name = reader.text(length);
    const bool closed = reader.u16() == 0;
    if (style.name.empty() || !closed) {
        findings.add("style.name", nameOf(istd, style) + u"的名称为空或没有结束");
    }
    if (size != std.size()) {
        findings.add("style.size", nameOf(istd, style) + u"所记的长度不对");
    }
    readUpxs(reader, countAndNext & 0xF, istd, style, findings);
    return style;
}

CheckedSheet readSheet(ByteView stsh, Findings& findings) {
    CheckedSheet sheet;
    CheckedStyles& styles = sheet.styles;
    LittleEndianReader reader(stsh, "STSH");
    LittleEndianReader stshi(reader.view(reader.u16()), "STSHI");
    const std::size_t count = stshi.u16();
    const std::size_t baseSize = stshi.u16();
    stshi.skip(8);
    for (int i = 0; i < 3; ++i) {
        sheet.defaultFonts.push_back(stshi.u16());
    }
    if (count < 15 || count >= 0x0FFE || (baseSize != shortStdf && baseSize != longStdf)) {
        findings.add("style.head", u"样式表的样式个数或基本部分的长度不对");
    }
    for (std::size_t istd = 0; istd < count; ++istd) {
        const ByteView std = reader.view(reader.u16());
        if (std.size() % 2 != 0 && !reader.atEnd()) {
            reader.skip(1);
        }
        styles.emplace_back();
        if (std.empty()) {
            continue;
        }
        try {
            styles.back() = readStyle(std, baseSize, istd, findings);
        } catch (const FormatError&) {
            findings.add("style.parse", u"样式 " + digits(std::int64_t(istd)) + u" 已损坏");
        }
    }
    return sheet;
}

const CheckedStyle* at(const CheckedStyles& styles, StyleIndex istd) {
    return istd < styles.size() && styles[istd] ? &*styles[istd] : nullptr;
}

void checkBase(const CheckedStyles& styles, std::size_t istd, Findings& findings) {
    const CheckedStyle& style = *styles[istd];
    std::set<StyleIndex> seen{static_cast<StyleIndex>(istd)};
    const CheckedStyle* derived = &style;
    while (derived->base != StyleDefinition::none) {
        const CheckedStyle* base = at(styles, derived->base);
        if (base == nullptr) {
            findings.add("style.base", nameOf(istd, style) + u"的基准样式不存在");
            return;
        }
        if (base->kind != style.kind) {
            findings.add("style.base", nameOf(istd, style) + u"与其基准样式种类不同");
            return;
        }
        if (!seen.insert(derived->base).second) {
            findings.add("style.cycle", nameOf(istd, style) + u"的基准样式成环");
            return;
        }
        derived = base;
    }
}

void checkReferences(const CheckedStyles& styles, std::size_t istd, Findings& findings) {
    const CheckedStyle& style = *styles[istd];
    checkBase(styles, istd, findings);
    const bool follows = style.kind == StyleKind::paragraph;
    if (follows && at(styles, style.next) == nullptr && style.next != StyleDefinition::none) {
        findings.add("style.next", nameOf(istd, style) + u"的后续样式不存在");
    }
    if (style.link != 0 && style.link != StyleDefinition::none &&
        at(styles, style.link) == nullptr) {
        findings.add("style.link", nameOf(istd, style) + u"的链接样式不存在");
    }
}

// A built-in style stands once, and those of fixed places stand there.
void checkNumbers(const CheckedStyles& styles, Findings& findings) {
    std::set<std::uint16_t> numbers;
    for (std::size_t istd = 0; istd < styles.size(); ++istd) {
        if (!styles[istd]) {
            continue;
        }
        const std::uint16_t number = styles[istd]->number;
        const bool displaced = istd < fixedStyles.size() && number != fixedStyles[istd];
        const bool again = number != StyleDefinition::userDefined && !numbers.insert(number).second;
        if (displaced || again) {
            findings.add("style.number", nameOf(istd, *styles[istd]) + u"的内置编号 " +
                                             digits(number) + u" 不该在此");
        }
    }
}

// A name with its aliases behind it, apart.
std::set<std::u16string> namesAndAliases(const std::u16string& whole) {
    std::set<std::u16string> names;
    for (std::size_t begin = 0; begin < whole.size();) {
        const std::size_t end = std::min(whole.find(u',', begin), whole.size());
        names.insert(whole.substr(begin, end - begin));
        begin = end + 1;
    }
    return names;
}

} // namespace

void checkStyles(Evidence& evidence, Findings& findings) {
    CheckedSheet sheet;
    try {
        sheet = readSheet(evidence.at(FibPair::Stshf), findings);
    } catch (const FormatError&) {
        findings.add("style.parse", u"样式表不完整");
    }
    const CheckedStyles& styles = sheet.styles;
    evidence.defaultFonts = sheet.defaultFonts;
    checkNumbers(styles, findings);
    std::set<std::u16string> names;
    for (const auto& style : styles) {
        evidence.styles.push_back(style ? std::optional(style->kind) : std::nullopt);
    }
    for (std::size_t istd = 0; istd < styles.size(); ++istd) {
        if (styles[istd]) {
            checkReferences(styles, istd, findings);
            for (const Upx& upx : styles[istd]->upxs) {
                evidence.styleProperties.push_back(
                    {nameOf(istd, *styles[istd]), upx.place, upx.content});
            }
            for (const std::u16string& name : namesAndAliases(styles[istd]->name)) {
                if (!names.insert(name).second) {
                    findings.add("style.unique", nameOf(istd, *styles[istd]) + u"的名称重复");
                }
            }
        }
    }
    if (styles.empty() || !styles[0]) {
        findings.add("style.normal", u"样式表没有正文样式");
    }
}

void checkStyleProperties(const Evidence& evidence, Findings& findings) {
    for (const StyleProperties& properties : evidence.styleProperties) {
        checkPropertyList(properties.sprms, properties.place, properties.where, evidence, findings);
    }
    for (const std::uint16_t font : evidence.defaultFonts) {
        if (font >= evidence.fonts) {
            findings.add("style.font", u"样式表的默认字体 " + digits(font) + u" 不存在");
        }
    }
}

} // namespace qvnd::word
