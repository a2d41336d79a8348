#include "platform/word/docfile/check/Checks.h"
#include "platform/word/docfile/container/Bytes.h"
#include "platform/word/docfile/document/Remarks.h"
#include "platform/word/docfile/format/SpecialCharacters.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"

#include <algorithm>
#include <limits>
#include <map>

namespace qvnd::word {

namespace {

// What a paragraph says of its place in tables.
struct TablePlace {
    std::uint32_t depth = 0;
    bool endsCell = false;
    bool endsRow = false;
    int columns = -1;    // of a row end; -1 without a definition
    bool ascends = true; // the edges of its cells
};

int signedByte(std::uint8_t byte) { return byte; }

// Whether the edges of a TDefTableOperand do not decrease ([MS-DOC] 2.9.321).
bool edgesAscend(ByteView operand) {
    LittleEndianReader reader(operand, "TDefTableOperand");
    reader.skip(2);
    const int edges = reader.u8() + 1;
    int before = std::numeric_limits<std::int16_t>::min();
    for (int i = 0; i < edges && reader.remaining() >= 2; ++i) {
        const int edge = reader.i16();
        if (edge < before) {
            return false;
        }
        before = edge;
    }
    return true;
}

TablePlace placeOfParagraph(const CheckedParagraph& paragraph) {
    TablePlace place;
    std::map<SprmOpcode, std::uint32_t> values;
    for (const SprmView& entry : parseSprms(paragraph.sprms).sprms) {
        if (entry.opcode == sprm::TDefTable) {
            place.columns = entry.operand.size() > 2 ? entry.operand[2] : -1;
            place.ascends = place.columns < 0 || edgesAscend(entry.operand);
        } else if (entry.opcode == sprm::TInsert && entry.operand.size() >= 2 &&
                   place.columns >= 0) {
            place.columns += signedByte(entry.operand[1]);
        } else if (entry.opcode == sprm::TDelete && entry.operand.size() >= 2 &&
                   place.columns >= 0) {
            place.columns -= std::max(0, entry.operand[1] - entry.operand[0]);
        } else if (!entry.operand.empty()) {
            values[entry.opcode] = entry.operand[0];
        }
    }
    const bool inTable = values[sprm::PFInTable] != 0;
    place.depth = values.count(sprm::PItap) != 0 ? values[sprm::PItap] : (inTable ? 1U : 0U);
    place.depth = inTable ? std::max(place.depth, 1U) : place.depth;
    if (paragraph.mark == special::cellMark) {
        place.endsRow = values[sprm::PFTtp] != 0;
        place.endsCell = !place.endsRow;
    } else if (place.depth > 1) {
        place.endsRow = values[sprm::PFInnerTtp] != 0;
        place.endsCell = !place.endsRow && values[sprm::PFInnerTableCell] != 0;
    }
    return place;
}

// The rows that are open while the paragraphs go by, the outermost first.
class RowsCheck {
public:
    RowsCheck(const Evidence& evidence, Findings& findings)
        : evidence_(evidence), findings_(findings) {}

    void take(const CheckedParagraph& paragraph) {
        const TablePlace place = placeOfParagraph(paragraph);
        const Cp at = paragraph.end - 1;
        closeDeeper(place.depth, at);
        if (paragraph.mark == special::cellMark && place.depth != 1) {
            tell("table.mark", at,
                 place.depth == 0 ? u"：单元格标记不在表格中" : u"：内层表格中有外层的单元格标记");
        }
        if (place.depth == 0 || place.depth > deepest) {
            return;
        }
        while (open_.size() < place.depth) {
            open_.push_back({});
        }
        Row& row = open_.back();
        if (place.endsCell) {
            ++row.cells;
            row.inCell = false;
        } else if (place.endsRow) {
            endRow(row, place, at);
            row = {};
        } else {
            row.inCell = true;
        }
    }

    void finish() { closeDeeper(0, static_cast<Cp>(evidence_.text.size()) - 1); }

private:
    static constexpr std::uint32_t deepest = 64;

    struct Row {
        int cells = 0;
        bool inCell = false; // a cell has text but no end yet
    };

    // Rows deeper than `depth` must have come to their end.
    void closeDeeper(std::uint32_t depth, Cp at) {
        while (open_.size() > depth) {
            const Row row = open_.back();
            open_.pop_back();
            if (row.cells != 0 || row.inCell) {
                tell("table.row", at, u"：之前的表格行没有行结束标记");
            }
            // An inner table stands in a cell of the outer one.
            if (!open_.empty()) {
                open_.back().inCell = true;
            }
        }
    }

    void endRow(const Row& row, const TablePlace& place, Cp at) {
        const int columns = place.columns;
        if (!place.ascends) {
            tell("table.edges", at, u"：表格定义中单元格的边界不按顺序");
        }
        if (row.inCell) {
            tell("table.cell", at, u"：行中最后一个单元格没有结束标记");
        }
        if (columns < 0) {
            tell("table.definition", at, u"：行结束标记没有表格定义");
        } else if (columns != row.cells) {
            findings_.add("table.cells", placeOf(evidence_, at) + u"：表格定义有 " +
                                             digits(columns) + u" 个单元格，行中有 " +
                                             digits(row.cells) + u" 个");
        }
    }

    void tell(const char* rule, Cp at, const char16_t* what) {
        findings_.add(rule, placeOf(evidence_, at) + what);
    }

    const Evidence& evidence_;
    Findings& findings_;
    std::vector<Row> open_;
};

} // namespace

void checkTables(const Evidence& evidence, Findings& findings) {
    RowsCheck rows(evidence, findings);
    for (const CheckedParagraph& paragraph : evidence.marked) {
        rows.take(paragraph);
    }
    rows.finish();
}

} // namespace qvnd::word
