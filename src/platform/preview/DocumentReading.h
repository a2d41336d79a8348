#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <variant>
#include <vector>

// A document as our own engine reads it, made ready for drawing: formatting resolved through the
// styles, numbers of lists counted, fields replaced by what they show. Lengths in points, colours
// as 0xRRGGBB; where a colour is nothing it is automatic.
namespace qvnd::preview {

enum class Alignment : std::uint8_t { left, centre, right, justified };

struct TextLook {
    enum class Script : std::uint8_t { normal, raised, lowered };

    QStringList fonts; // that of Western letters, then that of Chinese; one name when they agree
    double points = 10;
    bool bold = false;
    bool italic = false;
    bool underlined = false;
    bool struckOut = false;
    bool capitals = false;
    bool hidden = false;
    Script script = Script::normal;
    std::optional<std::uint32_t> colour;
    std::optional<std::uint32_t> background;
};

// Characters of one look, or one picture.
struct TextRun {
    QString text;                         // U+2028 ends a line; empty for a picture
    std::size_t look = 0;                 // index into DocumentReading::looks
    std::optional<std::size_t> picture{}; // index into DocumentReading::pictures
};

struct Picture {
    QByteArray file; // PNG, JPEG or BMP; empty for a kind that is not drawn
    double width = 0;
    double height = 0;
    // Parts of the whole that are cut off.
    double cropLeft = 0;
    double cropTop = 0;
    double cropRight = 0;
    double cropBottom = 0;
};

struct TabStop {
    double at = 0; // from the margin of the text
    Alignment alignment = Alignment::left;
};

struct ParagraphLook {
    enum class Spacing : std::uint8_t { lines, atLeast, exactly };

    Alignment alignment = Alignment::left;
    double left = 0;
    double right = 0;
    double firstLine = 0; // negative: hanging
    double before = 0;
    double after = 0;
    Spacing spacing = Spacing::lines;
    double line = 1; // in lines or in points
    std::vector<TabStop> tabStops;
    int headingLevel = 0; // 1 to 9; 0 for text
    bool startsPage = false;
    std::optional<std::uint32_t> background;
};

struct Paragraph {
    ParagraphLook look;
    // The number or bullet of a list with what follows it (tab, space or nothing); often empty.
    TextRun label;
    std::vector<TextRun> runs;
    std::size_t markLook = 0; // look of the paragraph's mark: the height of an empty line
};

struct Block;

struct Borders {
    bool left = false;
    bool top = false;
    bool right = false;
    bool bottom = false;
    bool operator==(const Borders&) const = default;
};

struct Cell {
    std::size_t column = 0; // of the table's grid
    std::size_t columnSpan = 1;
    std::size_t rowSpan = 1;
    std::vector<Block> blocks; // at least one paragraph
    std::optional<std::uint32_t> background;
    bool isMiddle = false; // its content stands halfway down, or else at its top
    Borders borders;
};

struct Table {
    std::vector<double> columnWidths;
    double left = 0; // of its edge, from the margin of the text
    Alignment alignment = Alignment::left;
    double padding = 5.4; // left and right in each cell
    // By row, each cell at its first row only; together they fill the grid.
    std::vector<std::vector<Cell>> rows;
};

struct Block {
    std::variant<Paragraph, Table> content;
};

struct Paper {
    double width = 595.3;
    double height = 841.9;
    double left = 90;
    double top = 72;
    double right = 90;
    double bottom = 72;
};

struct DocumentReading {
    Paper paper; // that of the first section
    std::vector<TextLook> looks;
    std::vector<Picture> pictures;
    std::vector<Block> blocks;
    bool isCut = false; // the document goes on behind the last block
};

} // namespace qvnd::preview
