#include "platform/word/layout/TableRows.h"

#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"

#include <algorithm>
#include <cstdlib>

namespace qvnd::word {

namespace {

constexpr SprmOpcode rowHeight = 0x9407; // sprmTDyaRowHeight
constexpr SprmOpcode gapHalf = 0x9602;   // sprmTDxaGapHalf

// TDefTableOperand: a length word, the number of cells, their edges, then a TC of 20 bytes each.
std::vector<RowCell> cellsOf(ByteView operand) {
    constexpr std::size_t tcSize = 20;
    constexpr unsigned verticallyMerged = 0x20;
    constexpr unsigned verticalStart = 0x40;
    std::vector<RowCell> cells;
    if (operand.size() < 3) {
        return cells;
    }
    LittleEndianReader reader(operand.subspan(2), "TDefTableOperand");
    const std::size_t count = reader.u8();
    if (count > 64 || reader.remaining() < (count + 1) * 2) {
        return cells;
    }
    int edge = reader.i16();
    for (std::size_t i = 0; i < count; ++i) {
        const int next = reader.i16();
        cells.push_back({std::max(0, next - edge), false});
        edge = next;
    }
    for (std::size_t i = 0; i < count && reader.remaining() >= tcSize; ++i) {
        const unsigned flags = reader.u16();
        reader.skip(tcSize - 2);
        cells[i].continuesAbove = (flags & verticallyMerged) != 0 && (flags & verticalStart) == 0;
    }
    return cells;
}

int signedWord(const SprmView& sprm) {
    return static_cast<std::int16_t>(sprm.operand[0] | (sprm.operand[1] << 8));
}

} // namespace

RowShape rowShape(ByteView properties) {
    RowShape shape;
    for (const SprmView& entry : parseSprms(properties).sprms) {
        if (entry.opcode == sprm::TDefTable) {
            shape.cells = cellsOf(entry.operand);
        } else if (entry.opcode == rowHeight) {
            shape.leastHeight = std::abs(signedWord(entry));
            shape.exactHeight = signedWord(entry) < 0;
        } else if (entry.opcode == gapHalf) {
            shape.cellMargins = 2 * std::clamp(signedWord(entry), 0, 1000);
        }
    }
    return shape;
}

} // namespace qvnd::word
