#pragma once

#include "platform/word/docfile/document/DocumentTables.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <vector>

namespace qvnd::word {

// The style of a table, as its rows name it.
struct TableStyle {
    StyleIndex style = StyleDefinition::none;
    unsigned options = 0; // which of its parts are formatted apart (Fatl, [MS-DOC] 2.9.81)
    bool operator==(const TableStyle&) const = default;
};

// Where a cell stands in its table.
struct CellPlace {
    std::size_t row = 0;
    std::size_t column = 0;
    bool isLastRow = false;
    bool isLastColumn = false;
};

// A table style with those that it is based on, these first. A circle ends somewhere.
std::vector<const StyleDefinition*> tableStyleChain(const StyleSheet& sheet, StyleIndex style);

// Reads the styles of tables, with those that they are based on.
class TableStyles {
public:
    explicit TableStyles(const DocumentTables& tables) : tables_(tables) {}

    // Whether a style says nothing that layersOf() could tell.
    bool isPlain(StyleIndex style);
    // The parts of a table (cnfc, [MS-DOC] 2.9.41) that a cell belongs to.
    unsigned partsAt(const TableStyle& table, const CellPlace& cell);

    // What a style says of cells that belong to these parts, lowest first.
    struct Layers {
        std::vector<ByteView> characters;
        std::vector<ByteView> paragraphs;
        std::optional<std::uint32_t> background;
    };
    Layers layersOf(StyleIndex style, unsigned parts) const;

private:
    // What is asked for again with each cell.
    struct Known {
        bool isPlain = false;
        std::size_t rowBand = 1; // how many rows a band has
        std::size_t columnBand = 1;
    };
    const Known& known(StyleIndex style);
    std::size_t bandOf(StyleIndex style, std::uint16_t opcode) const;
    std::vector<ByteView> lists(const std::vector<const StyleDefinition*>& styles,
                                PropertyListId StyleDefinition::*own, std::uint16_t conditional,
                                unsigned parts) const;

    const DocumentTables& tables_;
    std::map<StyleIndex, Known> known_;
};

} // namespace qvnd::word
