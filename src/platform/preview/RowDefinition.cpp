#include "platform/preview/RowDefinition.h"

#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/formatting/PropertyValues.h"

#include <algorithm>

namespace qvnd::preview {

namespace {

using word::ByteView;
using word::LittleEndianReader;
using word::SprmOpcode;
using word::SprmView;

constexpr int widestPadding = 1000;

constexpr std::size_t mostCells = 64;
constexpr std::size_t shdSize = 10;

// Tc80, [MS-DOC] 2.9.313.
constexpr unsigned horizontalMask = 0x03;
constexpr unsigned mergedAcross = 0x02; // 2 and 3: goes on the cell before
constexpr unsigned verticalMask = 0x60;
constexpr unsigned mergedDown = 0x20;
constexpr unsigned verticalAlignment = 0x180;

// Brc80: no width and no kind is no border; all ones says nothing.
bool isBorder(std::uint32_t brc80) { return brc80 != 0xFFFFFFFF && ((brc80 >> 8) & 0xFF) != 0; }

void readCell(LittleEndianReader& reader, RowDefinition::Cell& cell) {
    const unsigned flags = reader.u16();
    cell.mergedLeft = (flags & horizontalMask) >= mergedAcross;
    cell.mergedAbove = (flags & verticalMask) == mergedDown;
    cell.isMiddle = (flags & verticalAlignment) != 0;
    reader.skip(2); // wWidth
    cell.borders.top = isBorder(reader.u32());
    cell.borders.left = isBorder(reader.u32());
    cell.borders.bottom = isBorder(reader.u32());
    cell.borders.right = isBorder(reader.u32());
}

// TDefTableOperand, [MS-DOC] 2.9.322: a length of two bytes, the number of cells, their edges,
// then what is known of each.
void readCells(ByteView operand, RowDefinition& row) {
    constexpr std::size_t tcSize = 20;
    if (operand.size() < 3) {
        return;
    }
    LittleEndianReader reader(operand.subspan(2), "TDefTableOperand");
    const std::size_t count = reader.u8();
    if (count == 0 || count > mostCells || reader.remaining() < (count + 1) * 2) {
        return;
    }
    row.edges.clear();
    for (std::size_t i = 0; i <= count; ++i) {
        const int edge = reader.i16();
        row.edges.push_back(row.edges.empty() ? edge : std::max(edge, row.edges.back()));
    }
    row.cells.assign(count, {});
    for (std::size_t i = 0; i < count && reader.remaining() >= tcSize; ++i) {
        readCell(reader, row.cells[i]);
    }
}

void readShading(ByteView shds, RowDefinition& row) {
    for (std::size_t i = 0; i < row.cells.size() && shds.size() >= (i + 1) * shdSize; ++i) {
        row.cells[i].background = word::colourOfShd(shds.subspan(i * shdSize, shdSize));
    }
}

// Shd80 of two bytes each; the newer spelling, when there is one, comes later.
void readOldShading(ByteView shds, RowDefinition& row) {
    for (std::size_t i = 0; i < row.cells.size() && shds.size() >= (i + 1) * 2; ++i) {
        row.cells[i].background =
            word::colourOfShd80(static_cast<unsigned>(shds[2 * i] | (shds[2 * i + 1] << 8)));
    }
}

// VertMergeOperand: its length, the cell, 0 none, 1 goes on, 3 starts.
void readVerticalMerge(ByteView operand, RowDefinition& row) {
    if (operand.size() >= 3 && operand[1] < row.cells.size()) {
        row.cells[operand[1]].mergedAbove = operand[2] == 1;
    }
}

// CellVAlignOperand: its length, the first cell, the one behind the last, 0 for top.
void readVerticalAlignment(ByteView operand, RowDefinition& row) {
    if (operand.size() < 4) {
        return;
    }
    for (std::size_t i = operand[1]; i < std::min<std::size_t>(operand[2], row.cells.size()); ++i) {
        row.cells[i].isMiddle = operand[3] != 0;
    }
}

// CSSAOperand: its length, cells, sides (2 is left), unit (3 is twips), width.
void readPadding(ByteView operand, RowDefinition& row) {
    constexpr unsigned left = 2;
    constexpr unsigned twips = 3;
    if (operand.size() >= 7 && (operand[3] & left) != 0 && operand[4] == twips) {
        row.padding = std::min(operand[5] | (operand[6] << 8), widestPadding);
    }
}

Alignment alignmentOf(std::uint32_t jc) {
    return jc == 1 ? Alignment::centre : jc == 2 ? Alignment::right : Alignment::left;
}

// Six borders of 4 bytes each, kind at offset 1; or of 8 bytes each, kind at offset 5.
bool hasBorders(ByteView brcs, std::size_t size, std::size_t kindAt) {
    for (std::size_t at = 0; at + size <= brcs.size(); at += size) {
        if (brcs[at + kindAt] != 0 && brcs[at + kindAt] != 0xFF) {
            return true;
        }
    }
    return false;
}

void apply(const SprmView& entry, RowDefinition& row) {
    constexpr std::uint32_t tableNormal = 11; // fixed place in the style sheet
    const auto behindLength = [&] { return entry.operand.subspan(1); };
    switch (entry.opcode) {
    case word::sprm::TDefTable:
        readCells(entry.operand, row);
        break;
    case word::sprm::TJc90:
    case word::sprm::TJc:
        row.alignment = alignmentOf(word::numberOf(entry));
        break;
    case word::sprm::TTableBorders80:
        row.bordered = hasBorders(behindLength(), 4, 1);
        break;
    case word::sprm::TTableBorders:
        row.bordered = hasBorders(behindLength(), 8, 5);
        break;
    case word::sprm::TDefTableShd80:
        readOldShading(behindLength(), row);
        break;
    case word::sprm::TDefTableShd:
        readShading(behindLength(), row);
        break;
    case word::sprm::TVertMerge:
        readVerticalMerge(entry.operand, row);
        break;
    case word::sprm::TDxaGapHalf:
        row.padding = std::clamp<int>(word::signedNumberOf(entry), 0, widestPadding);
        break;
    case word::sprm::TCellPaddingDefault:
        readPadding(entry.operand, row);
        break;
    case word::sprm::TVertAlign:
        readVerticalAlignment(entry.operand, row);
        break;
    case word::sprm::TIstd:
        row.bordered = row.bordered || word::numberOf(entry) != tableNormal;
        break;
    default:
        break;
    }
}

} // namespace

RowDefinition rowDefinition(ByteView properties) {
    RowDefinition row;
    for (const SprmView& entry : word::parseSprms(properties).sprms) {
        apply(entry, row);
    }
    for (RowDefinition::Cell& cell : row.cells) {
        cell.borders = row.bordered ? Borders{true, true, true, true} : cell.borders;
    }
    return row;
}

} // namespace qvnd::preview
