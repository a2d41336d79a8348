#include "platform/preview/TableGrid.h"

#include "platform/preview/RowDefinition.h"

#include <algorithm>
#include <cstdlib>
#include <set>

namespace qvnd::preview {

namespace {

constexpr double twipsPerPoint = 20;
constexpr int sameEdge = 30; // twips; edges nearer than this are one
constexpr std::size_t mostColumns = 127;
constexpr int usualTextWidth = 8306;

// A cell of a row on the way to the grid.
struct Piece {
    std::size_t column = 0;
    std::size_t columnSpan = 1;
    bool mergedAbove = false;
    bool isMiddle = false;
    Borders borders;
    std::optional<std::uint32_t> background;
    std::vector<Block> blocks;
};

// A row that says nothing of its cells gets even ones.
void completeEdges(RowDefinition& row, std::size_t cells) {
    cells = std::max<std::size_t>(cells, 1);
    if (row.edges.empty()) {
        for (std::size_t i = 0; i <= cells; ++i) {
            row.edges.push_back(static_cast<int>(usualTextWidth * i / cells));
        }
    }
    row.cells.resize(row.edges.size() - 1);
}

// All edges of all rows, near ones drawn together.
std::vector<int> columnsOf(const std::vector<RowDefinition>& rows) {
    std::set<int> all;
    for (const RowDefinition& row : rows) {
        all.insert(row.edges.begin(), row.edges.end());
    }
    std::vector<int> edges;
    for (int nearness = sameEdge; edges.empty() || edges.size() > mostColumns + 1; nearness *= 2) {
        edges.clear();
        for (const int edge : all) {
            if (edges.empty() || edge - edges.back() > nearness) {
                edges.push_back(edge);
            }
        }
    }
    if (edges.size() < 2) {
        edges.push_back(edges.front() + sameEdge * 2);
    }
    return edges;
}

std::size_t nearest(const std::vector<int>& edges, int edge) {
    const auto above = std::lower_bound(edges.begin(), edges.end(), edge);
    if (above == edges.begin()) {
        return 0;
    }
    const bool below = above == edges.end() || edge - *(above - 1) <= *above - edge;
    return static_cast<std::size_t>(above - edges.begin()) - (below ? 1 : 0);
}

void append(std::vector<Block>& to, std::vector<Block>& from) {
    to.insert(to.end(), std::make_move_iterator(from.begin()), std::make_move_iterator(from.end()));
}

// The cells of one row with the columns they take; a cell without room joins the one before.
std::vector<Piece> piecesOf(TextRow& text, const RowDefinition& row,
                            const std::vector<int>& edges) {
    std::vector<Piece> pieces;
    std::size_t column = std::min(nearest(edges, row.edges.front()), edges.size() - 2);
    for (std::size_t i = 0; i < std::max(row.cells.size(), text.cells.size()); ++i) {
        std::vector<Block> none;
        std::vector<Block>& blocks = i < text.cells.size() ? text.cells[i] : none;
        const std::size_t end = i < row.cells.size() ? nearest(edges, row.edges[i + 1]) : column;
        const bool joins =
            !pieces.empty() && (end <= column || (i < row.cells.size() && row.cells[i].mergedLeft));
        if (joins) {
            pieces.back().columnSpan += end > column ? end - column : 0;
            append(pieces.back().blocks, blocks);
            if (i < row.cells.size()) {
                pieces.back().borders.right = row.cells[i].borders.right;
            }
        } else {
            Piece piece;
            piece.column = column;
            piece.columnSpan = end > column ? end - column : 1;
            piece.blocks = std::move(blocks);
            if (i < row.cells.size()) {
                piece.mergedAbove = row.cells[i].mergedAbove;
                piece.isMiddle = row.cells[i].isMiddle;
                piece.borders = row.cells[i].borders;
                piece.background = row.cells[i].background;
            }
            pieces.push_back(std::move(piece));
        }
        column = pieces.back().column + pieces.back().columnSpan;
    }
    return pieces;
}

Cell cellOf(Piece& piece) {
    Cell cell;
    cell.column = piece.column;
    cell.columnSpan = piece.columnSpan;
    cell.blocks = std::move(piece.blocks);
    cell.background = piece.background;
    cell.isMiddle = piece.isMiddle;
    cell.borders = piece.borders;
    if (cell.blocks.empty()) {
        cell.blocks.push_back({Paragraph{}});
    }
    return cell;
}

// Empty cells without borders where a row does not reach.
void fill(std::vector<Cell>& row, std::size_t from, std::size_t to) {
    if (from < to) {
        Cell cell;
        cell.column = from;
        cell.columnSpan = to - from;
        cell.blocks.push_back({Paragraph{}});
        row.push_back(std::move(cell));
    }
}

// Lays row under row, and lets cells grow down.
class Grid {
public:
    Grid(Table& table, std::size_t columns) : table_(table), above_(columns) {}

    void add(std::vector<Piece> pieces) {
        std::vector<Cell> row;
        std::vector<std::optional<Place>> places(above_.size());
        std::size_t column = 0;
        for (Piece& piece : pieces) {
            if (piece.column >= above_.size()) {
                break;
            }
            piece.columnSpan = std::min(piece.columnSpan, above_.size() - piece.column);
            fill(row, column, piece.column);
            column = piece.column + piece.columnSpan;
            const auto& over = above_[piece.column];
            const bool grows = piece.mergedAbove && over && over->columnSpan == piece.columnSpan;
            if (grows) {
                grow(*over, piece);
                places[piece.column] = over;
            } else {
                places[piece.column] = Place{table_.rows.size(), row.size(), piece.columnSpan};
                row.push_back(cellOf(piece));
            }
        }
        fill(row, column, above_.size());
        table_.rows.push_back(std::move(row));
        above_ = std::move(places);
    }

private:
    struct Place {
        std::size_t row;
        std::size_t cell;
        std::size_t columnSpan;
    };

    // What the file keeps in a merged-away cell is empty in a sound one, and never lost here.
    void grow(const Place& over, Piece& piece) {
        Cell& cell = table_.rows[over.row][over.cell];
        ++cell.rowSpan;
        cell.borders.bottom = piece.borders.bottom;
        const bool isEmpty = std::all_of(piece.blocks.begin(), piece.blocks.end(), [](auto& block) {
            const auto* paragraph = std::get_if<Paragraph>(&block.content);
            return paragraph != nullptr && paragraph->runs.empty();
        });
        if (!isEmpty) {
            append(cell.blocks, piece.blocks);
        }
    }

    Table& table_;
    std::vector<std::optional<Place>> above_; // by first column
};

} // namespace

Table tableOf(std::vector<TextRow> rows) {
    std::vector<RowDefinition> definitions;
    for (const TextRow& row : rows) {
        definitions.push_back(rowDefinition(row.definition));
        completeEdges(definitions.back(), row.cells.size());
    }
    Table table;
    if (rows.empty()) {
        return table;
    }
    const std::vector<int> edges = columnsOf(definitions);
    for (std::size_t i = 0; i + 1 < edges.size(); ++i) {
        table.columnWidths.push_back((edges[i + 1] - edges[i]) / twipsPerPoint);
    }
    table.left = edges.front() / twipsPerPoint;
    table.alignment = definitions.front().alignment;
    table.padding = definitions.front().padding / twipsPerPoint;
    Grid grid(table, table.columnWidths.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        grid.add(piecesOf(rows[i], definitions[i], edges));
    }
    return table;
}

} // namespace qvnd::preview
