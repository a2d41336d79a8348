#include "platform/word/formatting/TableStyles.h"

#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/formatting/PropertyValues.h"

#include <algorithm>
#include <array>

namespace qvnd::word {

namespace {

// Fatl, [MS-DOC] 2.9.81.
constexpr unsigned wantsHeaderRow = 0x020;
constexpr unsigned wantsFooterRow = 0x040;
constexpr unsigned wantsFirstColumn = 0x080;
constexpr unsigned wantsLastColumn = 0x100;
constexpr unsigned hasNoRowBands = 0x200;
constexpr unsigned hasNoColumnBands = 0x400;

// cnfc, [MS-DOC] 2.9.41.
constexpr unsigned headerRow = 0x001;
constexpr unsigned footerRow = 0x002;
constexpr unsigned firstColumn = 0x004;
constexpr unsigned lastColumn = 0x008;
constexpr unsigned oddColumns = 0x010;
constexpr unsigned evenColumns = 0x020;
constexpr unsigned oddRows = 0x040;
constexpr unsigned evenRows = 0x080;
constexpr unsigned topRight = 0x100;
constexpr unsigned topLeft = 0x200;
constexpr unsigned bottomRight = 0x400;
constexpr unsigned bottomLeft = 0x800;

// Those that stand above others come later (ISO 29500-1, 17.7.6).
constexpr std::array<unsigned, 12> inOrder{oddColumns, evenColumns, oddRows,     evenRows,
                                           headerRow,  footerRow,   firstColumn, lastColumn,
                                           topLeft,    topRight,    bottomLeft,  bottomRight};

// The formatting of a CNFOperand: its length, the part in two bytes, entries.
std::optional<ByteView> formattingFor(unsigned part, const SprmView& entry) {
    constexpr std::size_t head = 3;
    const ByteView operand = entry.operand;
    const bool isIt =
        operand.size() >= head && static_cast<unsigned>(operand[1] | (operand[2] << 8)) == part;
    return isIt ? std::optional(operand.subspan(head)) : std::nullopt;
}

unsigned bandAt(std::size_t index, bool isFirstApart, std::size_t width, unsigned odd,
                unsigned even) {
    return (index - (isFirstApart ? 1 : 0)) / width % 2 == 0 ? odd : even;
}

} // namespace

std::vector<const StyleDefinition*> tableStyleChain(const StyleSheet& sheet, StyleIndex style) {
    constexpr std::size_t deepest = 16;
    std::vector<const StyleDefinition*> found;
    const auto& styles = sheet.styles;
    while (style < styles.size() && styles[style] && styles[style]->kind == StyleKind::table &&
           found.size() < deepest) {
        found.push_back(&*styles[style]);
        style = styles[style]->basedOn;
    }
    std::reverse(found.begin(), found.end());
    return found;
}

// How many rows or columns a band has.
std::size_t TableStyles::bandOf(StyleIndex style, std::uint16_t opcode) const {
    std::size_t width = 1;
    for (const StyleDefinition* layer : tableStyleChain(tables_.styles, style)) {
        if (const auto entry = findSprm(tables_.lists[layer->table], opcode)) {
            width = std::max<std::size_t>(numberOf(*entry), 1);
        }
    }
    return width;
}

const TableStyles::Known& TableStyles::known(StyleIndex style) {
    constexpr unsigned allParts = 0xFFF;
    const auto [at, isNew] = known_.try_emplace(style);
    if (isNew) {
        const Layers all = layersOf(style, allParts);
        at->second = {all.characters.empty() && all.paragraphs.empty() && !all.background,
                      bandOf(style, sprm::TCHorzBands), bandOf(style, sprm::TCVertBands)};
    }
    return at->second;
}

bool TableStyles::isPlain(StyleIndex style) { return known(style).isPlain; }

unsigned TableStyles::partsAt(const TableStyle& table, const CellPlace& cell) {
    const Known& style = known(table.style);
    const auto wants = [&](unsigned option) { return (table.options & option) != 0; };
    const bool inHeader = wants(wantsHeaderRow) && cell.row == 0;
    const bool inFooter = wants(wantsFooterRow) && cell.isLastRow && !inHeader;
    const bool inFirst = wants(wantsFirstColumn) && cell.column == 0;
    const bool inLast = wants(wantsLastColumn) && cell.isLastColumn && !inFirst;
    unsigned parts = 0;
    if (!inHeader && !inFooter && !wants(hasNoRowBands)) {
        parts |= bandAt(cell.row, wants(wantsHeaderRow), style.rowBand, oddRows, evenRows);
    }
    if (!inFirst && !inLast && !wants(hasNoColumnBands)) {
        parts |=
            bandAt(cell.column, wants(wantsFirstColumn), style.columnBand, oddColumns, evenColumns);
    }
    parts |= inHeader ? headerRow : inFooter ? footerRow : 0;
    parts |= inFirst ? firstColumn : inLast ? lastColumn : 0;
    parts |= inHeader && inFirst ? topLeft : inHeader && inLast ? topRight : 0;
    parts |= inFooter && inFirst ? bottomLeft : inFooter && inLast ? bottomRight : 0;
    return parts;
}

std::vector<ByteView> TableStyles::lists(const std::vector<const StyleDefinition*>& styles,
                                         PropertyListId StyleDefinition::*own,
                                         std::uint16_t conditional, unsigned parts) const {
    std::vector<ByteView> result;
    for (const StyleDefinition* style : styles) {
        if (const ByteView list = tables_.lists[style->*own]; !list.empty()) {
            result.push_back(list);
        }
    }
    const std::vector<ByteView> whole = result;
    for (const unsigned part : inOrder) {
        for (const ByteView list : (parts & part) != 0 ? whole : std::vector<ByteView>()) {
            for (const SprmView& entry : parseSprms(list).sprms) {
                const auto formatting =
                    entry.opcode == conditional ? formattingFor(part, entry) : std::nullopt;
                if (formatting) {
                    result.push_back(*formatting);
                }
            }
        }
    }
    return result;
}

TableStyles::Layers TableStyles::layersOf(StyleIndex style, unsigned parts) const {
    const auto styles = tableStyleChain(tables_.styles, style);
    Layers layers;
    layers.characters = lists(styles, &StyleDefinition::character, sprm::CCnf, parts);
    layers.paragraphs = lists(styles, &StyleDefinition::paragraph, sprm::PCnf, parts);
    for (const ByteView list : lists(styles, &StyleDefinition::table, sprm::TCnf, parts)) {
        const auto shading = findSprm(list, sprm::TCellShdStyle);
        if (shading && shading->operand.size() > shdSize) {
            layers.background = colourOfShd(shading->operand.subspan(1, shdSize));
        }
    }
    return layers;
}

} // namespace qvnd::word
