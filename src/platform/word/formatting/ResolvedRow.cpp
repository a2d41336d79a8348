#include "platform/word/formatting/ResolvedRow.h"

#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/formatting/TableStyles.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>

namespace qvnd::word {

namespace {

constexpr std::size_t mostCells = 64;
constexpr int widestPadding = 1000;

// Tc80, [MS-DOC] 2.9.313.
constexpr std::size_t tcSize = 20;
constexpr unsigned horizontalMask = 0x03;
constexpr unsigned mergedAcross = 0x02; // 2 and 3: goes on the cell before
constexpr unsigned verticalMask = 0x60;
constexpr unsigned mergedDown = 0x20;
constexpr unsigned alignmentShift = 7;
constexpr unsigned flowShift = 2;
constexpr unsigned flowMask = 7;

// The text flow of a cell, [MS-DOC] 2.9.316. Two values are ways in which characters stand in lines
// that run downwards.
TextFlow flowOf(unsigned value) {
    return value == 1 || value == 5 ? TextFlow::down : value == 3 ? TextFlow::up : TextFlow::across;
}

VerticalAlignment verticalAlignmentOf(unsigned value) {
    return value == 1   ? VerticalAlignment::centre
           : value == 2 ? VerticalAlignment::bottom
                        : VerticalAlignment::top;
}

// Reads the entries of a row one after the other.
class RowReader {
public:
    explicit RowReader(const DocumentTables& tables) : tables_(tables) {}

    void read(ByteView properties, int depth = 0) {
        for (const SprmView& entry : parseSprms(properties).sprms) {
            if (depth == 0) {
                readOfTable(entry);
            }
        }
        isStyle_ = depth > 0;
        for (const SprmView& entry : parseSprms(properties).sprms) {
            readShape(entry);
            readFlow(entry);
            readLook(entry);
        }
    }

    ResolvedRow finish() {
        settleBorders();
        return std::move(row_);
    }

private:
    void readOfTable(const SprmView& entry) {
        constexpr unsigned optionsShift = 16; // of TLP, [MS-DOC] 2.9.334
        switch (entry.opcode) {
        case sprm::TIstd:
            row_.style.style = static_cast<StyleIndex>(numberOf(entry));
            readStyle(row_.style.style);
            break;
        case sprm::TTlp:
            row_.style.options = numberOf(entry) >> optionsShift;
            break;
        case sprm::TDefTableShd80:
        case sprm::TDefTableShd:
            row_.tellsBackgrounds = true;
            break;
        default:
            break;
        }
    }

    void readStyle(StyleIndex style) {
        for (const StyleDefinition* layer : tableStyleChain(tables_.styles, style)) {
            read(tables_.lists[layer->table], 1);
        }
    }

    void readShape(const SprmView& entry) {
        switch (entry.opcode) {
        case sprm::TDefTable:
            readCells(entry.operand);
            break;
        case sprm::TDxaGapHalf:
            padding_.left = padding_.right =
                std::clamp<int>(signedNumberOf(entry), 0, widestPadding);
            setPadding();
            break;
        case sprm::TCellPaddingDefault:
        case sprm::TCellPaddingStyle:
            readPadding(entry.operand, true);
            break;
        case sprm::TCellPadding:
            readPadding(entry.operand, isStyle_); // a style knows no cells
            break;
        case sprm::TVertMerge:
            readVerticalMerge(entry.operand);
            break;
        case sprm::TVertAlign:
            forCells(entry.operand, [&](ResolvedCell& cell) {
                cell.alignment = verticalAlignmentOf(entry.operand.back());
            });
            break;
        case sprm::TTextFlow:
            readTextFlow(entry.operand);
            break;
        default:
            break;
        }
    }

    void readFlow(const SprmView& entry) {
        switch (entry.opcode) {
        case sprm::TDyaRowHeight:
            row_.height = std::abs(int{signedNumberOf(entry)});
            row_.exactHeight = signedNumberOf(entry) < 0;
            break;
        case sprm::TFCantSplit:
        case sprm::TFCantSplit90:
            row_.staysWhole = numberOf(entry) != 0;
            break;
        case sprm::TTableHeader:
            row_.isHeading = numberOf(entry) != 0;
            break;
        case sprm::TJc:
        case sprm::TJc90:
            row_.alignment = numberOf(entry) == 1   ? LineAlignment::centre
                             : numberOf(entry) == 2 ? LineAlignment::right
                                                    : LineAlignment::left;
            break;
        default:
            break;
        }
    }

    void readLook(const SprmView& entry) {
        switch (entry.opcode) {
        case sprm::TTableBorders80:
            readTableBorders(entry.operand, brc80Size);
            break;
        case sprm::TTableBorders:
            readTableBorders(entry.operand, brcSize);
            break;
        case sprm::TSetBrc80:
        case sprm::TSetBrc:
            readCellBorders(entry.operand);
            break;
        case sprm::TDefTableShd80:
            forEach(entry.operand.subspan(1), 2, 0, [](ResolvedCell& cell, ByteView shd) {
                cell.background = colourOfShd80(static_cast<unsigned>(shd[0] | (shd[1] << 8)));
            });
            break;
        case sprm::TDefTableShd:
            forEach(entry.operand.subspan(1), shdSize, 0, setBackground);
            break;
        case sprm::TDefTableShd2nd:
            forEach(entry.operand.subspan(1), shdSize, 22, setBackground);
            break;
        case sprm::TDefTableShd3rd:
            forEach(entry.operand.subspan(1), shdSize, 44, setBackground);
            break;
        default:
            break;
        }
    }

    static void setBackground(ResolvedCell& cell, ByteView shd) {
        cell.background = colourOfShd(shd);
    }

    // Calls `set` with each cell from `first` on and its part of an array.
    template <class Set>
    void forEach(ByteView parts, std::size_t size, std::size_t first, Set set) {
        for (std::size_t i = first; i < row_.cells.size() && parts.size() >= size; ++i) {
            set(row_.cells[i], parts.first(size));
            parts = parts.subspan(size);
        }
    }

    // An operand that begins with its length, the first cell and the one behind the last.
    template <class Set>
    void forCells(ByteView operand, Set set) {
        if (operand.size() < 4) {
            return;
        }
        for (std::size_t i = operand[1]; i < std::min<std::size_t>(operand[2], row_.cells.size());
             ++i) {
            set(row_.cells[i]);
        }
    }

    // TDefTableOperand, [MS-DOC] 2.9.322: a length of two bytes, the number of cells, their edges,
    // then what is known of each.
    void readCells(ByteView operand) {
        if (operand.size() < 3) {
            return;
        }
        LittleEndianReader reader(operand.subspan(2), "TDefTableOperand");
        const std::size_t count = reader.u8();
        if (count == 0 || count > mostCells || reader.remaining() < (count + 1) * 2) {
            return;
        }
        row_.cells.assign(count, {});
        int edge = reader.i16();
        for (ResolvedCell& cell : row_.cells) {
            cell.left = edge;
            cell.right = edge = std::max<int>(edge, reader.i16());
        }
        for (std::size_t i = 0; i < count && reader.remaining() >= tcSize; ++i) {
            readCell(reader, row_.cells[i]);
        }
        setPadding();
    }

    static void readCell(LittleEndianReader& reader, ResolvedCell& cell) {
        const unsigned flags = reader.u16();
        cell.mergedLeft = (flags & horizontalMask) >= mergedAcross;
        cell.mergedAbove = (flags & verticalMask) == mergedDown;
        cell.alignment = verticalAlignmentOf((flags >> alignmentShift) & 3U);
        cell.flow = flowOf((flags >> flowShift) & flowMask);
        reader.skip(2); // wWidth
        for (Border* side : {&cell.topSide, &cell.leftSide, &cell.bottomSide, &cell.rightSide}) {
            *side = borderOf(reader.view(brc80Size));
        }
    }

    void setPadding() {
        for (ResolvedCell& cell : row_.cells) {
            cell.topPadding = padding_.top;
            cell.leftPadding = padding_.left;
            cell.bottomPadding = padding_.bottom;
            cell.rightPadding = padding_.right;
        }
    }

    // CSSAOperand, [MS-DOC] 2.9.45: its length, first cell, the one behind the last, sides (top 1,
    // left 2, bottom 4, right 8), unit (3 is twips), width.
    void readPadding(ByteView operand, bool everywhere) {
        constexpr unsigned twips = 3;
        if (operand.size() < 7 || operand[4] != twips) {
            return;
        }
        const unsigned sides = operand[3];
        const int width = std::min(operand[5] | (operand[6] << 8), widestPadding);
        const auto take = [&](int& top, int& left, int& bottom, int& right) {
            top = (sides & 1U) != 0 ? width : top;
            left = (sides & 2U) != 0 ? width : left;
            bottom = (sides & 4U) != 0 ? width : bottom;
            right = (sides & 8U) != 0 ? width : right;
        };
        if (everywhere) { // cells may be told behind it, as those of a table with a style are
            take(padding_.top, padding_.left, padding_.bottom, padding_.right);
        }
        const std::size_t first = everywhere ? 0 : operand[1];
        const std::size_t end = everywhere ? row_.cells.size() : operand[2];
        for (std::size_t i = first; i < std::min(end, row_.cells.size()); ++i) {
            ResolvedCell& cell = row_.cells[i];
            take(cell.topPadding, cell.leftPadding, cell.bottomPadding, cell.rightPadding);
        }
    }

    // CellRangeTextFlow: the first cell, the one behind the last, the flow in two bytes.
    void readTextFlow(ByteView operand) {
        for (std::size_t i = operand[0]; i < std::min<std::size_t>(operand[1], row_.cells.size());
             ++i) {
            row_.cells[i].flow = flowOf(operand[2]);
        }
    }

    // VertMergeOperand, [MS-DOC] 2.9.339: its length, the cell, 0 none, 1 goes on, 3 starts.
    void readVerticalMerge(ByteView operand) {
        if (operand.size() >= 3 && operand[1] < row_.cells.size()) {
            row_.cells[operand[1]].mergedAbove = operand[2] == 1;
        }
    }

    // Top, left, bottom, right, between rows, between columns.
    void readTableBorders(ByteView operand, std::size_t size) {
        for (std::size_t i = 0; i < table_.size() && operand.size() >= 1 + (i + 1) * size; ++i) {
            table_.at(i) = borderOf(operand.subspan(1 + i * size, size));
        }
    }

    // TableBrc80Operand and TableBrcOperand: length, cells, sides as for padding, the border.
    void readCellBorders(ByteView operand) {
        const std::size_t head = 4;
        if (operand.size() < head + brc80Size) {
            return;
        }
        const Border border = borderOf(operand.subspan(head));
        const unsigned sides = operand[3];
        forCells(operand, [&](ResolvedCell& cell) {
            cell.topSide = (sides & 1U) != 0 ? border : cell.topSide;
            cell.leftSide = (sides & 2U) != 0 ? border : cell.leftSide;
            cell.bottomSide = (sides & 4U) != 0 ? border : cell.bottomSide;
            cell.rightSide = (sides & 8U) != 0 ? border : cell.rightSide;
        });
    }

    // A border of the table stands where the cell has none of its own.
    void settleBorders() {
        for (std::size_t i = 0; i < row_.cells.size(); ++i) {
            ResolvedCell& cell = row_.cells[i];
            const auto isOwn = [](const Border& side) { return side.visible || side.isTakenAway; };
            const auto settle = [&](Border& side, const Border& ofTable) {
                side = isOwn(side) ? side : ofTable;
            };
            cell.ownTop = isOwn(cell.topSide);
            cell.ownBottom = isOwn(cell.bottomSide);
            settle(cell.topSide, table_[4]);
            settle(cell.bottomSide, table_[4]);
            settle(cell.leftSide, i == 0 ? table_[1] : table_[5]);
            settle(cell.rightSide, i + 1 == row_.cells.size() ? table_[3] : table_[5]);
        }
        row_.tableTop = table_[0];
        row_.tableBottom = table_[2];
    }

    const DocumentTables& tables_;
    ResolvedRow row_;
    std::array<Border, 6> table_{};
    bool isStyle_ = false; // what is read is that of a style
    struct Padding {
        int top = 0;
        int left = 108;
        int bottom = 0;
        int right = 108;
    };
    Padding padding_; // of each cell
};

} // namespace

ResolvedRow resolvedRowOf(ByteView properties, const DocumentTables& tables) {
    RowReader reader(tables);
    reader.read(properties);
    return reader.finish();
}

void putOuterBorders(ResolvedRow& row, bool isFirst, bool isLast) {
    for (ResolvedCell& cell : row.cells) {
        if (isFirst && !cell.ownTop) {
            cell.topSide = row.tableTop;
        }
        if (isLast && !cell.ownBottom) {
            cell.bottomSide = row.tableBottom;
        }
    }
}

} // namespace qvnd::word
