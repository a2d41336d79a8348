#include "platform/word/engine/TemplateStyles.h"

#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/engine/Fonts.h"
#include "platform/word/engine/SprmList.h"
#include "platform/word/engine/StyleLookup.h"

#include <array>

namespace qvnd::word {

namespace {

constexpr StyleIndex normalPlace = 0;
constexpr StyleIndex defaultFontPlace = 10;
constexpr unsigned left = 0;
constexpr unsigned centered = 1;
constexpr unsigned justified = 3;

// Both the form of Word 97 and that of its successors.
SprmList& align(SprmList& list, unsigned alignment) {
    return list.byte(sprm::PJc80, alignment).byte(sprm::PJc, alignment);
}

void defineNormal(DocumentTables& tables, StyleDefinition& style) {
    const std::uint16_t latin = fontNamed(tables.fonts, u"Times New Roman");
    const std::uint16_t chinese = fontNamed(tables.fonts, u"宋体");
    tables.styles.defaultFonts = {latin, chinese, latin, latin};
    SprmList paragraph;
    paragraph.byte(sprm::PFWidowControl, 0);
    style.paragraph = align(paragraph, justified).in(tables.lists);
    style.character = SprmList()
                          .word(sprm::CRgFtc0, latin)
                          .word(sprm::CRgFtc1, chinese)
                          .word(sprm::CRgFtc2, latin)
                          .word(sprm::CHps, 21)
                          .word(sprm::CHpsBi, 24)
                          .word(sprm::CHpsKern, 2)
                          .word(sprm::CRgLid0, 0x0409)
                          .word(sprm::CRgLid1, 0x0804)
                          .word(sprm::CRgLid0New, 0x0409)
                          .word(sprm::CRgLid1New, 0x0804)
                          .in(tables.lists);
}

void defineHeading(DocumentTables& tables, StyleDefinition& style, unsigned level) {
    constexpr std::array<unsigned, 9> halfPoints{44, 32, 30, 28, 28, 24, 24, 24, 24};
    const unsigned space = level == 0 ? 240 : level < 3 ? 180 : 120;
    style.paragraph = SprmList()
                          .byte(sprm::PFKeep, 1)
                          .byte(sprm::PFKeepFollow, 1)
                          .word(sprm::PDyaBefore, space)
                          .word(sprm::PDyaAfter, space)
                          .byte(sprm::POutLvl, level)
                          .in(tables.lists);
    style.character = SprmList()
                          .byte(sprm::CFBold, 1)
                          .word(sprm::CHps, halfPoints.at(level))
                          .byte(sprm::CFBoldBi, 1)
                          .word(sprm::CHpsBi, halfPoints.at(level))
                          .in(tables.lists);
}

void defineContents(DocumentTables& tables, StyleDefinition& style, unsigned level) {
    constexpr unsigned indentPerLevel = 420;
    SprmList paragraph;
    align(paragraph, left);
    if (level > 0) {
        paragraph.word(sprm::PDxaLeft80, indentPerLevel * level)
            .word(sprm::PDxaLeft, indentPerLevel * level);
    }
    style.paragraph = paragraph.in(tables.lists);
}

void defineHeaderFooter(DocumentTables& tables, StyleDefinition& style, bool isHeader) {
    // PChgTabsPapx: nothing deleted, a centred tab at 4156 and a right one at 8312 twips.
    constexpr std::array<std::uint8_t, 9> tabs{8, 0, 2, 0x3C, 0x10, 0x78, 0x20, 1, 2};
    constexpr std::uint32_t lineBelow = 0x01000106; // BRC80: single, 3/4 pt, 1 pt off the text
    SprmList paragraph;
    if (isHeader) {
        paragraph.dword(sprm::PBrcBottom80, lineBelow);
    }
    style.paragraph = align(paragraph, isHeader ? centered : left)
                          .bytes(sprm::PChgTabsPapx, tabs)
                          .in(tables.lists);
    style.character = SprmList().word(sprm::CHps, 18).word(sprm::CHpsBi, 18).in(tables.lists);
}

void defineHyperlink(DocumentTables& tables, StyleDefinition& style) {
    constexpr unsigned singleLine = 1;
    constexpr unsigned blue = 2;
    style.character =
        SprmList().byte(sprm::CKul, singleLine).byte(sprm::CIco, blue).in(tables.lists);
}

void define(DocumentTables& tables, StyleDefinition& style) {
    const std::uint16_t number = style.sti;
    if (number == sti::normal) {
        defineNormal(tables, style);
    } else if (number >= sti::heading1 && number < sti::heading1 + 9) {
        defineHeading(tables, style, number - sti::heading1);
    } else if (number >= sti::contents1 && number < sti::contents1 + 9) {
        defineContents(tables, style, number - sti::contents1);
    } else if (number == sti::header || number == sti::footer) {
        defineHeaderFooter(tables, style, number == sti::header);
    } else if (number == sti::hyperlink) {
        defineHyperlink(tables, style);
    }
}

bool standsAlone(std::uint16_t number) {
    return number == sti::normal || number == sti::defaultParagraphFont ||
           number == sti::normalTable || number == sti::noList;
}

bool isFollowedByText(std::uint16_t number) {
    return number < sti::heading1 + 9 || (number >= sti::contents1 && number < sti::contents1 + 9);
}

StyleDefinition definitionOf(DocumentTables& tables, std::uint16_t number) {
    StyleDefinition style;
    style.sti = number;
    if (const auto known = builtInStyle(number)) {
        style.name = known->chineseName;
        style.kind = known->kind;
    }
    if (!standsAlone(number)) {
        style.basedOn = style.kind == StyleKind::character ? defaultFontPlace : normalPlace;
    }
    define(tables, style);
    return style;
}

} // namespace

StyleIndex requireStyle(DocumentTables& tables, std::uint16_t number) {
    auto& styles = tables.styles.styles;
    if (const auto present = styleNumbered(tables.styles, number)) {
        return *present;
    }
    const auto place = fixedStyleIndex(number).value_or(static_cast<StyleIndex>(styles.size()));
    StyleDefinition style = definitionOf(tables, number);
    style.next = isFollowedByText(number) ? normalPlace : place;
    if (styles.size() <= place) {
        styles.resize(place + std::size_t{1});
    }
    styles[place] = std::move(style);
    return place;
}

} // namespace qvnd::word
