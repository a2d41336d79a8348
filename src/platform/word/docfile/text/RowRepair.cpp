#include "platform/word/docfile/text/RowRepair.h"

#include "platform/word/docfile/format/SpecialCharacters.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/text/TablePlaces.h"
#include "platform/word/docfile/text/TableRepair.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <utility>

namespace qvnd::word {

namespace {

constexpr int mostCells = 63;
constexpr std::size_t tcSize = 20; // TC80
constexpr std::size_t edgesAt = 3; // behind cb and itcMac of TDefTableOperand
constexpr int usualWidth = 830;    // twips, of a cell of which nothing is known
constexpr int widestTable = 31680; // twips: the farthest edge, 22 inches

std::uint16_t u16At(ByteView bytes, std::size_t at) {
    return static_cast<std::uint16_t>(bytes[at] | (bytes[at + 1] << 8));
}

// What a row's property list says of its columns: the last definition, and columns that were put
// in or taken out behind it.
struct Columns {
    std::optional<SprmView> definition;
    int count = -1;
};

Columns columnsOf(ByteView list) {
    Columns columns;
    for (const SprmView& entry : parseSprms(list).sprms) {
        if (entry.opcode == sprm::TDefTable) {
            const ByteView operand = entry.operand;
            const bool whole = operand.size() >= edgesAt &&
                               operand.size() >= edgesAt + 2 * (std::size_t{operand[2]} + 1);
            columns.definition = whole ? std::optional(entry) : std::nullopt;
            columns.count = whole ? operand[2] : -1;
        } else if (entry.opcode == sprm::TInsert && columns.count >= 0) {
            columns.count += entry.operand[1];
        } else if (entry.opcode == sprm::TDelete && columns.count >= 0) {
            columns.count -= std::max(0, entry.operand[1] - entry.operand[0]);
        }
    }
    return columns;
}

// The edges that a definition names.
std::vector<int> edgesOf(const Columns& columns) {
    std::vector<int> edges;
    for (std::size_t i = 0; columns.definition && i <= columns.definition->operand[2]; ++i) {
        edges.push_back(
            static_cast<std::int16_t>(u16At(columns.definition->operand, edgesAt + 2 * i)));
    }
    return edges;
}

// Whether no edge lies in front of the one before it ([MS-DOC] 2.9.321).
bool ascends(const Columns& columns) {
    const std::vector<int> edges = edgesOf(columns);
    return std::is_sorted(edges.begin(), edges.end());
}

// The edges of so many cells: those of the old definition as far as there are any, each moved
// behind the one before it, then on with the width of its last cell. Where that leads past the
// widest table, all are drawn together.
std::vector<int> edgesFor(const Columns& columns, std::size_t cells) {
    std::vector<int> result = edgesOf(columns);
    result.resize(std::clamp<std::size_t>(result.size(), 1, cells + 1));
    for (std::size_t i = 1; i < result.size(); ++i) {
        result[i] = std::max(result[i], result[i - 1]);
    }
    const std::size_t last = result.size() - 1;
    const int width = last == 0 ? usualWidth : result[last] - result[last - 1];
    while (result.size() < cells + 1) {
        result.push_back(result.back() + width);
    }
    const std::int64_t room = std::max(widestTable - result.front(), 0);
    const std::int64_t wanted = result.back() - result.front();
    for (int& edge : result) {
        const std::int64_t inside = edge - result.front();
        edge = wanted > room ? result.front() + static_cast<int>(inside * room / wanted) : edge;
    }
    return result;
}

// TDefTableOperand for so many cells; each keeps what the old definition says of its borders.
Bytes definitionFor(const Columns& columns, std::size_t cells) {
    LittleEndianWriter content;
    content.u8(static_cast<unsigned>(cells));
    for (const int edge : edgesFor(columns, cells)) {
        content.u16(static_cast<std::uint16_t>(edge));
    }
    if (columns.definition) {
        const ByteView operand = columns.definition->operand;
        const std::size_t tcsAt = edgesAt + 2 * (std::size_t{operand[2]} + 1);
        content.bytes(operand.subspan(tcsAt).first(
            std::min(operand.size() - tcsAt, cells * tcSize) / tcSize * tcSize));
    }
    LittleEndianWriter operand;
    operand.u16(static_cast<unsigned>(content.data().size() + 1));
    operand.bytes(content.data());
    return operand.take();
}

// The list with a definition of so many cells where its last one was: later entries go over it.
Bytes withCells(ByteView list, const Columns& columns, std::size_t cells) {
    const Bytes definition = withSprm({}, sprm::TDefTable, definitionFor(columns, cells));
    const std::size_t place = columns.definition ? columns.definition->operandOffset : 0;
    Bytes result = columns.definition ? Bytes{} : definition;
    for (const SprmView& entry : parseSprms(list).sprms) {
        const bool dropped = entry.opcode == sprm::TDefTable || entry.opcode == sprm::TInsert ||
                             entry.opcode == sprm::TDelete;
        const ByteView kept = dropped ? ByteView{} : entry.whole;
        result.insert(result.end(), kept.begin(), kept.end());
        if (columns.definition && entry.operandOffset == place) {
            result.insert(result.end(), definition.begin(), definition.end());
        }
    }
    return result;
}

class RowsRepair {
public:
    RowsRepair(Story& story, PropertyLists& lists)
        : story_(story), lists_(lists), places_(lists), texts_(lists) {}

    int run() {
        ends_.reserve(story_.paragraphs.size());
        Cp end = 0;
        for (const ParagraphRun& paragraph : story_.paragraphs) {
            ends_.push_back(end += paragraph.length);
        }
        for (std::size_t i = 0; i < ends_.size(); ++i) {
            const TablePlace place = placeOf(i);
            rows_.resize(static_cast<std::size_t>(place.depth), i);
            if (place.rowEnd) {
                repair(rows_.back(), i, place.depth);
                rows_.back() = i + 1;
            }
        }
        return repaired_;
    }

private:
    TablePlace placeOf(std::size_t i) {
        const ParagraphRun& paragraph = story_.paragraphs[i];
        return paragraph.length == 0 ? TablePlace{}
                                     : places_.of(paragraph.properties, story_.text[ends_[i] - 1]);
    }

    // The row from its first paragraph to its end.
    void repair(std::size_t first, std::size_t end, int depth) {
        const bool closed = closeLastCell(first, end, depth);
        int cells = 0;
        for (std::size_t i = first; i < end; ++i) {
            const TablePlace place = placeOf(i);
            cells += place.depth == depth && place.cellEnd ? 1 : 0;
        }
        if (!closed || cells == 0 || cells > mostCells) {
            takeOut(first, end, depth);
            return;
        }
        PropertyListId& properties = story_.paragraphs[end].properties;
        const PropertyListId repaired = rowList(properties, cells);
        repaired_ += repaired != properties ? 1 : 0;
        properties = repaired;
    }

    // The list where its definition is that of so many cells, else one with such a definition. Rows
    // share their lists, so each is looked at once.
    PropertyListId rowList(PropertyListId list, int cells) {
        const auto [known, isNew] = rowLists_.try_emplace({list, cells}, list);
        if (isNew) {
            const Columns columns = columnsOf(lists_[list]);
            if (columns.count != cells || !ascends(columns)) {
                known->second = lists_.intern(
                    withCells(lists_[list], columns, static_cast<std::size_t>(cells)));
            }
        }
        return known->second;
    }

    // Whether the last cell of the row has an end, perhaps now.
    bool closeLastCell(std::size_t first, std::size_t end, int depth) {
        if (first == end) {
            return true;
        }
        const TablePlace last = placeOf(end - 1);
        if (last.depth != depth) {
            return false;
        }
        if (!last.cellEnd && story_.text[ends_[end - 1] - 1] != special::paragraphMark) {
            return false;
        }
        if (!last.cellEnd) {
            endCell(end - 1, depth);
            ++repaired_;
        }
        return true;
    }

    void endCell(std::size_t i, int depth) {
        ParagraphRun& paragraph = story_.paragraphs[i];
        if (depth == 1) {
            story_.text[ends_[i] - 1] = special::cellMark;
            paragraph.properties =
                lists_.intern(withoutSprm(lists_[paragraph.properties], sprm::PFTtp));
        } else {
            paragraph.properties =
                lists_.intern(withSprm8(lists_[paragraph.properties], sprm::PFInnerTableCell, 1));
        }
    }

    void takeOut(std::size_t first, std::size_t end, int depth) {
        for (std::size_t i = first; i <= end; ++i) {
            if (placeOf(i).depth >= depth) {
                ParagraphRun& paragraph = story_.paragraphs[i];
                paragraph.properties = texts_.at(depth - 1, paragraph.properties);
                char16_t& mark = story_.text[ends_[i] - 1];
                mark = mark == special::cellMark ? special::paragraphMark : mark;
            }
        }
        ++repaired_;
    }

    Story& story_;
    PropertyLists& lists_;
    TablePlaces places_;
    TextLists texts_;
    std::map<std::pair<PropertyListId, int>, PropertyListId> rowLists_;
    std::vector<Cp> ends_;
    std::vector<std::size_t> rows_; // by depth: the first paragraph of the row that is under way
    int repaired_ = 0;
};

} // namespace

int repairRows(Story& story, PropertyLists& lists) { return RowsRepair(story, lists).run(); }

} // namespace qvnd::word
