#include "platform/word/layout/RowComposer.h"

#include "platform/word/layout/BorderRules.h"
#include "platform/word/layout/ColumnFlow.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace qvnd::layout {

namespace {

using word::Border;
using word::LineAlignment;
using word::ResolvedCell;
using word::VerticalAlignment;

constexpr double sameEdge = 20; // twips between edges that are one

double paddingOf(const ResolvedCell& cell) { return cell.topPadding + cell.bottomPadding; }

double borderAbove(const ComposedRow& row) {
    double width = 0;
    for (const ComposedCell& cell : row.cells) {
        width = std::max<double>(width,
                                 cell.format.topSide.visible ? cell.format.topSide.thickness : 0);
    }
    return width;
}

// The last row that a cell of `first` reaches to.
std::size_t lastRowOf(const std::vector<ComposedRow>& rows, std::size_t first,
                      const ComposedCell& cell) {
    std::size_t last = first;
    while (last + 1 < rows.size() && goesOnIn(cell, rows[last + 1])) {
        ++last;
    }
    return last;
}

// The height of rows [first, last].
double heightOfRows(const std::vector<ComposedRow>& rows, std::size_t first, std::size_t last) {
    double height = 0;
    for (std::size_t i = first; i <= last; ++i) {
        height += rows[i].height;
    }
    return height;
}

// As its cells ask for that end in it.
double ownHeight(const std::vector<ComposedRow>& rows, std::size_t at, bool holdsBorder) {
    const ComposedRow& row = rows[at];
    const double wanted = row.format.height;
    if (row.format.exactHeight && wanted > 0) {
        return wanted;
    }
    double content = 0;
    for (const ComposedCell& cell : row.cells) {
        if (!cell.format.mergedAbove && lastRowOf(rows, at, cell) == at) {
            content = std::max(content, cell.contentHeight + paddingOf(cell.format));
        }
    }
    const double border = borderAbove(row);
    return holdsBorder ? std::max(wanted, content + border) : std::max(wanted, content) + border;
}

void addFrame(Layer& layer, const ComposedCell& cell, double height, bool goesOnBelow) {
    const ResolvedCell& format = cell.format;
    if (format.mergedLeft) {
        return;
    }
    if (format.background) {
        layer.fills.push_back({cell.left, 0, cell.right - cell.left, height, *format.background});
    }
    if (!format.mergedAbove) {
        addRule(layer, format.topSide, {cell.left, 0}, {cell.right, 0}, StrokeOrder::fromOutside);
    }
    if (!goesOnBelow) {
        addRule(layer, format.bottomSide, {cell.left, height}, {cell.right, height},
                StrokeOrder::fromInside);
    }
    addRule(layer, format.leftSide, {cell.left, 0}, {cell.left, height}, StrokeOrder::fromOutside);
    addRule(layer, format.rightSide, {cell.right, 0}, {cell.right, height},
            StrokeOrder::fromInside);
}

// How far down a cell's content begins in the room that it has.
double downIn(const ComposedCell& cell, double room) {
    const double rest = std::max(0.0, room - cell.contentHeight - paddingOf(cell.format));
    switch (cell.format.alignment) {
    case VerticalAlignment::centre:
        return rest / 2;
    case VerticalAlignment::bottom:
        return rest;
    default:
        return 0;
    }
}

double spaceAbove(const SharedStrips& strips, std::size_t at, bool addsSpaces) {
    return at > 0 ? gapBetween(strips[at - 1], strips[at], addsSpaces) : strips[at].before;
}

// Content of a part of a row, put into its layer.
void addContent(Strip& row, const RowParts& parts) {
    for (const RowParts::Cell& cell : parts.cells) {
        double y = cell.above;
        for (std::size_t i = 0; i < cell.strips.size(); ++i) {
            const Strip& shared = cell.strips[i];
            const Strip made = shared.lacksContent ? completed(shared) : Strip();
            const Strip& strip = shared.lacksContent ? made : shared;
            y += spaceAbove(cell.strips, i, parts.rules.addsSpaces);
            row.layer.append(strip.layer, cell.x, y);
            for (AnchoredFloat floating : strip.floats) {
                floating.columnWidth = floating.columnWidth > 0 ? floating.columnWidth : cell.width;
                floating.x += cell.x;
                floating.y += y;
                row.floats.push_back(std::move(floating));
            }
            y += strip.height;
        }
    }
}

// What the strip of a row has from its own cells; a cell that goes on from above says nothing.
Strip likeOf(const ComposedRow& row) {
    Strip like;
    for (const ComposedCell& cell : row.cells) {
        if (!cell.strips.empty()) {
            like.at = cell.strips.front().at;
            like.startsPage = cell.strips.front().startsPage;
            like.keepsWithNext = cell.strips.front().keepsWithNext;
            break;
        }
    }
    like.keepsLines = row.format.staysWhole || row.format.exactHeight;
    return like;
}

// The part of the row that a cell of it, or one that reaches down to it, fills.
RowParts::Cell& cellAt(const ComposedRow& row, RowParts& parts, const ComposedCell& cell) {
    for (std::size_t i = 0; i < row.cells.size(); ++i) {
        const ComposedCell& other = row.cells[i];
        if (&other == &cell ||
            (other.format.mergedAbove && std::abs(other.left - cell.left) < sameEdge)) {
            return parts.cells[i];
        }
    }
    return parts.cells.front();
}

void addNotes(Strip& row, const RowParts& parts) {
    for (const RowParts::Cell& cell : parts.cells) {
        for (std::size_t i = 0; i < cell.strips.size(); ++i) {
            const auto& notes = cell.strips[i].notes;
            row.notes.insert(row.notes.end(), notes.begin(), notes.end());
        }
    }
}

Strip withoutContent(RowParts parts, Strip like) {
    Strip strip = std::move(like);
    strip.layer = {};
    strip.notes.clear();
    strip.floats.clear();
    strip.height = parts.height;
    addNotes(strip, parts);
    strip.row = std::make_shared<const RowParts>(std::move(parts));
    strip.lacksContent = true;
    return strip;
}

// Moves a frame's lower edge.
Layer atHeight(Layer frame, double before, double now) {
    for (Fill& fill : frame.fills) {
        fill.height = fill.height >= before - 1 ? now : std::min(fill.height, now);
    }
    for (Rule& rule : frame.rules) {
        rule.y1 = rule.y1 >= before - 1 ? now : rule.y1;
        rule.y2 = rule.y2 >= before - 1 ? now : rule.y2;
    }
    return frame;
}

// How many strips of a cell stand in front of the end of a page. `room`: for its strips.
std::size_t countAbove(const SharedStrips& strips, double room, const CellRules& rules) {
    if (rules.keepsTogether) {
        return countOfFitting(strips, 0, room, rules.addsSpaces);
    }
    std::size_t count = 0;
    double y = 0;
    for (; count < strips.size(); ++count) {
        y += spaceAbove(strips, count, rules.addsSpaces) + strips[count].height;
        if (y > room) {
            break;
        }
    }
    return count;
}

struct PartedCell {
    RowParts::Cell upper;
    RowParts::Cell lower;
};

// Parts a cell where the room ends. A row of a table in the cell may be parted too. What is moved
// down by its alignment may stand as a whole on the next page.
PartedCell parted(const RowParts::Cell& cell, double room, const CellRules& rules) {
    PartedCell parts;
    parts.upper = {cell.x, cell.width, cell.above, cell.down, cell.below, {}};
    parts.lower = parts.upper;
    SharedStrips& upper = parts.upper.strips;
    SharedStrips& lower = parts.lower.strips;
    const double left = room - cell.below - cell.above;
    std::size_t count = countAbove(cell.strips, left, rules);
    upper.append(cell.strips, 0, count);
    if (count < cell.strips.size()) {
        const double above = spaceAbove(cell.strips, count, rules.addsSpaces);
        const double used =
            upper.empty() ? 0 : heightOf(upper, rules.addsSpaces) - upper.back().after;
        if (auto rows = partRow(cell.strips[count], left - used - above)) {
            upper.push_back(std::move(rows->head));
            lower.push_back(std::move(rows->rest));
            ++count;
        }
    }
    lower.append(cell.strips, count, cell.strips.size());
    const bool isMoved = upper.empty() && !lower.empty();
    parts.lower.above = parts.lower.down = isMoved ? std::max(0.0, cell.above - room) : 0;
    return parts;
}

// Whether nothing of a cell has room, even where its content would stand at the top.
bool hasNoRoom(const RowParts::Cell& cell, const RowParts::Cell& upper, double room,
               const CellRules& rules) {
    const double top = cell.above - cell.down;
    return !cell.strips.empty() && upper.strips.empty() &&
           countAbove(cell.strips, room - cell.below - top, rules) == 0;
}

std::optional<PartedRow> partedAt(const Strip& row, double room, const CellRules& rules) {
    RowParts head;
    RowParts rest;
    head.rules = rest.rules = row.row->rules;
    bool headHasText = false;
    bool restHasText = false;
    double restHeight = 0;
    for (const RowParts::Cell& cell : row.row->cells) {
        auto [upper, lower] = parted(cell, room, rules);
        if (hasNoRoom(cell, upper, room, rules)) {
            return std::nullopt; // a cell whose first lines do not fit moves the whole row
        }
        headHasText = headHasText || !upper.strips.empty();
        restHasText = restHasText || !lower.strips.empty();
        restHeight = std::max(restHeight,
                              lower.above + heightOf(lower.strips, rules.addsSpaces) + cell.below);
        head.cells.push_back(std::move(upper));
        rest.cells.push_back(std::move(lower));
    }
    if (!headHasText || !restHasText) {
        return std::nullopt;
    }
    head.height = room;
    head.frame = atHeight(row.row->frame, row.row->height, room);
    rest.height = restHeight;
    rest.frame = atHeight(row.row->frame, row.row->height, restHeight);
    PartedRow parts{completed(withoutContent(std::move(head), row)),
                    withoutContent(std::move(rest), row)};
    parts.rest.startsPage = false;
    return parts;
}

// Puts the content of a cell into the rows that it reaches over: each strip into the one beside
// which it stands.
void putContent(const std::vector<ComposedRow>& rows, std::size_t first, const ComposedCell& cell,
                Strips content, std::vector<RowParts>& parts) {
    constexpr double rounding = 1;
    const std::size_t last = lastRowOf(rows, first, cell);
    const bool addsSpaces = parts[first].rules.addsSpaces;
    const double top = borderAbove(rows[first]) + cell.format.topPadding;
    const double room = heightOfRows(rows, first, last) - borderAbove(rows[first]);
    std::size_t at = first;
    RowParts::Cell* part = &cellAt(rows[at], parts[at], cell);
    double y = top + downIn(cell, room);
    const Strip* above = nullptr;
    for (Strip& strip : content) {
        y += above != nullptr ? gapBetween(*above, strip, addsSpaces) : strip.before;
        while (at < last && y > rows[at].height - rounding) {
            y -= rows[at].height;
            ++at;
            part = &cellAt(rows[at], parts[at], cell);
        }
        if (part->strips.empty()) {
            part->above = y - strip.before;
            part->down = part->above - (at == first ? top : 0);
        }
        y += strip.height;
        part->strips.push_back(std::move(strip));
        above = &part->strips.back();
    }
}

} // namespace

bool goesOnIn(const ComposedCell& cell, const ComposedRow& below) {
    return std::any_of(below.cells.begin(), below.cells.end(), [&](const ComposedCell& other) {
        return other.format.mergedAbove && other.right - other.left >= sameEdge &&
               std::abs(other.left - cell.left) < sameEdge;
    });
}

double roomWithin(const std::vector<ComposedRow>& rows, std::size_t first,
                  const ComposedCell& cell) {
    return heightOfRows(rows, first, lastRowOf(rows, first, cell)) - borderAbove(rows[first]) -
           paddingOf(cell.format);
}

std::vector<ComposedCell> cellsOf(const word::ResolvedRow& row, std::size_t texts,
                                  double columnWidth) {
    std::vector<ComposedCell> cells;
    cells.reserve(std::max(row.cells.size(), texts));
    if (row.cells.empty()) {
        const double width = columnWidth / static_cast<double>(std::max<std::size_t>(texts, 1));
        for (std::size_t i = 0; i < texts; ++i) {
            const double left = static_cast<double>(i) * width;
            cells.push_back({left, left + width, {}, {}, 0});
        }
        return cells;
    }
    const double tableWidth = row.cells.back().right - row.cells.front().left;
    double shift = 0;
    if (row.alignment == LineAlignment::centre) {
        shift = (columnWidth - tableWidth) / 2 - row.cells.front().left;
    } else if (row.alignment == LineAlignment::right) {
        shift = columnWidth - tableWidth - row.cells.front().left;
    }
    std::size_t first = 0; // of the cells that are joined
    for (const ResolvedCell& format : row.cells) {
        cells.push_back({format.left + shift, format.right + shift, format, {}, 0});
        if (!format.mergedLeft || cells.size() == 1) {
            cells.back().format.mergedLeft = false;
            first = cells.size() - 1;
            continue;
        }
        cells[first].right = cells.back().right;
        cells[first].format.rightSide = format.rightSide;
        cells.back().left = cells.back().right;
    }
    return cells;
}

void settleHeights(std::vector<ComposedRow>& rows, bool holdBorders) {
    for (std::size_t i = 0; i < rows.size(); ++i) {
        rows[i].height = ownHeight(rows, i, holdBorders);
    }
    for (std::size_t i = 0; i < rows.size(); ++i) {
        for (const ComposedCell& cell : rows[i].cells) {
            const std::size_t last = cell.format.mergedAbove ? i : lastRowOf(rows, i, cell);
            if (last == i) {
                continue;
            }
            const double room = heightOfRows(rows, i, last);
            const double wanted = cell.contentHeight + paddingOf(cell.format);
            if (wanted > room && !rows[last].format.exactHeight) {
                rows[last].height += wanted - room;
            }
        }
    }
}

double borderBelow(const ComposedRow& row) {
    double width = 0;
    for (const ComposedCell& cell : row.cells) {
        const Border& side = cell.format.bottomSide;
        width = std::max<double>(width, side.visible ? side.thickness : 0);
    }
    return width;
}

Strips stripsOf(std::vector<ComposedRow>& rows, const CellRules& rules) {
    std::vector<RowParts> parts(rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        parts[i].rules = rules;
        parts[i].height = rows[i].height;
        for (const ComposedCell& cell : rows[i].cells) {
            const bool isOpen = i + 1 < rows.size() && goesOnIn(cell, rows[i + 1]);
            addFrame(parts[i].frame, cell, rows[i].height, isOpen);
            RowParts::Cell part;
            part.x = cell.left + cell.format.leftPadding;
            part.width =
                cell.right - cell.left - cell.format.leftPadding - cell.format.rightPadding;
            part.below = cell.format.bottomPadding;
            parts[i].cells.push_back(std::move(part));
        }
    }
    Strips strips;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        Strip like = likeOf(rows[i]);
        for (ComposedCell& cell : rows[i].cells) {
            if (!cell.strips.empty()) {
                putContent(rows, i, cell, std::exchange(cell.strips, {}), parts);
            }
        }
        like.at = like.at == 0 && i > 0 ? strips.back().at : like.at;
        strips.push_back(completed(withoutContent(std::move(parts[i]), std::move(like))));
    }
    return strips;
}

Strip completed(Strip row) {
    row.layer = row.row->frame;
    addContent(row, *row.row);
    row.lacksContent = false;
    return row;
}

std::optional<PartedRow> partRow(const Strip& row, double room, bool atAnyRate) {
    if (!row.row || (row.keepsLines && !atAnyRate)) {
        return std::nullopt;
    }
    CellRules rules = row.row->rules;
    auto parts = partedAt(row, room, rules);
    if (!parts && atAnyRate) {
        rules.keepsTogether = false;
        parts = partedAt(row, room, rules);
    }
    if (!parts) {
        return parts;
    }
    for (const RowParts::Cell& cell : parts->rest.row->cells) {
        if (!cell.strips.empty()) {
            parts->rest.at = cell.strips.front().at;
            break;
        }
    }
    return parts;
}

} // namespace qvnd::layout
