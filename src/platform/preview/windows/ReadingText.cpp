#include "platform/preview/windows/ReadingText.h"

#include "platform/preview/windows/PictureObjects.h"
#include "platform/preview/windows/PreviewFonts.h"

#include <QAbstractTextDocumentLayout>
#include <QMap>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextFrame>
#include <QTextTable>

#include <algorithm>
#include <numeric>

namespace qvnd::preview {

namespace {

constexpr double units = ReadingText::unitsPerPoint;
constexpr double borderWidth = 0.5;

Qt::Alignment alignmentOf(Alignment alignment) {
    switch (alignment) {
    case Alignment::centre:
        return Qt::AlignHCenter;
    case Alignment::right:
        return Qt::AlignRight;
    case Alignment::justified:
        return Qt::AlignJustify;
    default:
        return Qt::AlignLeft;
    }
}

QTextOption::TabType tabTypeOf(Alignment alignment) {
    switch (alignment) {
    case Alignment::centre:
        return QTextOption::CenterTab;
    case Alignment::right:
        return QTextOption::RightTab;
    default:
        return QTextOption::LeftTab;
    }
}

bool hasPicture(const Paragraph& paragraph) {
    return std::any_of(paragraph.runs.begin(), paragraph.runs.end(),
                       [](const TextRun& run) { return run.picture.has_value(); });
}

// Tab stops count from where the first line starts; a hanging indent is a stop itself.
QList<QTextOption::Tab> tabsOf(const ParagraphLook& look) {
    QList<QTextOption::Tab> tabs;
    const double lineStart = look.left + look.firstLine;
    if (look.firstLine < 0) {
        tabs.append(QTextOption::Tab(-look.firstLine * units, QTextOption::LeftTab));
    }
    for (const TabStop& stop : look.tabStops) {
        if (stop.at > lineStart) {
            tabs.append(QTextOption::Tab((stop.at - lineStart) * units, tabTypeOf(stop.alignment)));
        }
    }
    return tabs;
}

void setSpacing(QTextBlockFormat& format, const Paragraph& paragraph) {
    const ParagraphLook& look = paragraph.look;
    if (hasPicture(paragraph)) {
        return; // as high as the picture
    }
    switch (look.spacing) {
    case ParagraphLook::Spacing::lines:
        format.setLineHeight(look.line * 100, QTextBlockFormat::ProportionalHeight);
        break;
    case ParagraphLook::Spacing::atLeast:
        format.setLineHeight(look.line * units, QTextBlockFormat::MinimumHeight);
        break;
    case ParagraphLook::Spacing::exactly:
        format.setLineHeight(look.line * units, QTextBlockFormat::FixedHeight);
        break;
    }
}

QTextBlockFormat blockFormatOf(const Paragraph& paragraph) {
    const ParagraphLook& look = paragraph.look;
    QTextBlockFormat format;
    format.setAlignment(alignmentOf(look.alignment));
    format.setLeftMargin(std::max(0.0, look.left) * units);
    format.setRightMargin(std::max(0.0, look.right) * units);
    format.setTextIndent(look.firstLine * units);
    format.setTopMargin(look.before * units);
    format.setBottomMargin(look.after * units);
    format.setHeadingLevel(look.headingLevel);
    format.setTabPositions(tabsOf(look));
    setSpacing(format, paragraph);
    if (look.startsPage) {
        format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
    }
    if (look.background) {
        format.setBackground(QColor::fromRgb(*look.background));
    }
    return format;
}

QTextCharFormat charFormatOf(const TextLook& look, const QStringList& families) {
    QTextCharFormat format;
    QFont font;
    font.setFamilies(families);
    font.setPixelSize(std::max(1, qRound(look.points * units)));
    font.setBold(look.bold);
    font.setItalic(look.italic);
    font.setUnderline(look.underlined);
    font.setStrikeOut(look.struckOut);
    font.setHintingPreference(QFont::PreferNoHinting);
    format.setFont(font);
    if (look.script != TextLook::Script::normal) {
        format.setVerticalAlignment(look.script == TextLook::Script::raised
                                        ? QTextCharFormat::AlignSuperScript
                                        : QTextCharFormat::AlignSubScript);
    }
    format.setForeground(QColor::fromRgb(look.colour.value_or(0x000000)));
    if (look.background) {
        format.setBackground(QColor::fromRgb(*look.background));
    }
    return format;
}

// Writes block after block behind a cursor.
class TextWriter {
public:
    TextWriter(const DocumentReading& reading, QTextDocument& document)
        : reading_(reading), cursor_(&document) {
        QMap<QStringList, QStringList> families;
        for (const TextLook& look : reading.looks) {
            auto& installed = families[look.fonts];
            installed = installed.isEmpty() ? installedFamilies(look.fonts) : installed;
            formats_.push_back(charFormatOf(look, installed));
        }
    }

    void write(double room, const QString& lastLine) {
        cursor_.beginEditBlock();
        write(reading_.blocks, room);
        if (reading_.isCut && !lastLine.isEmpty()) {
            writeLastLine(lastLine);
        }
        cursor_.endEditBlock();
    }

private:
    void write(const std::vector<Block>& blocks, double room) {
        isFresh_ = true;
        for (const Block& block : blocks) {
            if (const auto* table = std::get_if<Table>(&block.content)) {
                write(*table, room);
            } else {
                write(std::get<Paragraph>(block.content), room);
            }
        }
    }

    void startBlock(const QTextBlockFormat& format, const QTextCharFormat& mark) {
        if (isFresh_) {
            cursor_.setBlockFormat(format);
            cursor_.mergeBlockCharFormat(mark); // a cell keeps what it says of itself
        } else {
            cursor_.insertBlock(format, mark);
        }
        isFresh_ = false;
    }

    QTextCharFormat formatOf(std::size_t look) const {
        return look < formats_.size() ? formats_[look] : QTextCharFormat();
    }

    void write(const Paragraph& paragraph, double room) {
        startBlock(blockFormatOf(paragraph), formatOf(paragraph.markLook));
        if (!paragraph.label.text.isEmpty()) {
            cursor_.insertText(paragraph.label.text, formatOf(paragraph.label.look));
        }
        for (const TextRun& run : paragraph.runs) {
            if (run.picture) {
                writePicture(*run.picture, room);
            } else {
                cursor_.insertText(run.text, formatOf(run.look));
            }
        }
    }

    // No larger than there is room for.
    void writePicture(std::size_t index, double room) {
        const Picture& picture = reading_.pictures[index];
        const Paper& paper = reading_.paper;
        const double height = (paper.height - paper.top - paper.bottom) * 0.98;
        const QSizeF size(std::max(1.0, picture.width), std::max(1.0, picture.height));
        const double scale = std::min({1.0, room / size.width(), height / size.height()});
        cursor_.insertText(QString(QChar::ObjectReplacementCharacter),
                           PictureObjects::place(index, size * (scale * units)));
    }

    static void setBorders(QTextTableCellFormat& format, const Borders& borders) {
        const auto width = [](bool there) { return there ? borderWidth * units : 0; };
        format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
        format.setBorderBrush(Qt::black);
        format.setLeftBorder(width(borders.left));
        format.setTopBorder(width(borders.top));
        format.setRightBorder(width(borders.right));
        format.setBottomBorder(width(borders.bottom));
    }

    static QTextTableFormat tableFormat(const Table& table, double scale) {
        QTextTableFormat format;
        format.setCellSpacing(0);
        format.setCellPadding(0);
        format.setBorder(0); // each cell has its own
        format.setBorderCollapse(true);
        format.setAlignment(alignmentOf(table.alignment));
        if (table.alignment == Alignment::left) {
            format.setLeftMargin(std::max(0.0, table.left) * units);
        }
        QList<QTextLength> widths;
        for (const double width : table.columnWidths) {
            widths.append(QTextLength(QTextLength::FixedLength, width * scale * units));
        }
        format.setColumnWidthConstraints(widths);
        return format;
    }

    void write(const Table& table, double room) {
        const double width =
            std::accumulate(table.columnWidths.begin(), table.columnWidths.end(), 0.0);
        const double most = room + 2 * table.padding; // tables reach into the margins by that much
        const double scale = width > most ? most / width : 1;
        QTextTable* made = cursor_.insertTable(
            int(table.rows.size()), int(table.columnWidths.size()), tableFormat(table, scale));
        for (std::size_t row = 0; row < table.rows.size(); ++row) {
            for (const Cell& cell : table.rows[row]) {
                writeCell(*made, int(row), table, cell, scale);
            }
        }
        cursor_ = made->lastCursorPosition();
        cursor_.movePosition(QTextCursor::NextBlock);
        isFresh_ = true;
    }

    void writeCell(QTextTable& made, int row, const Table& table, const Cell& cell, double scale) {
        const int column = int(cell.column);
        if (cell.rowSpan > 1 || cell.columnSpan > 1) {
            made.mergeCells(row, column, int(cell.rowSpan), int(cell.columnSpan));
        }
        const auto first = table.columnWidths.begin() + column;
        const double width =
            std::accumulate(first, first + static_cast<std::ptrdiff_t>(cell.columnSpan), 0.0);
        QTextTableCell place = made.cellAt(row, column);
        cursor_ = place.firstCursorPosition();
        write(cell.blocks, std::max(1.0, width * scale - 2 * table.padding));
        // After its content, whose first paragraph's mark shares the format with the cell.
        QTextTableCellFormat format = place.format().toTableCellFormat();
        format.setLeftPadding(table.padding * units);
        format.setRightPadding(table.padding * units);
        setBorders(format, cell.borders);
        format.setVerticalAlignment(cell.isMiddle ? QTextCharFormat::AlignMiddle
                                                  : QTextCharFormat::AlignTop);
        if (cell.background) {
            format.setBackground(QColor::fromRgb(*cell.background));
        } else {
            format.clearBackground();
        }
        place.setFormat(format);
    }

    void writeLastLine(const QString& line) {
        TextLook look;
        look.points = 10.5;
        look.colour = 0x606060;
        Paragraph paragraph;
        paragraph.look.alignment = Alignment::centre;
        paragraph.look.before = 12;
        const QTextCharFormat format = charFormatOf(look, installedFamilies({}));
        startBlock(blockFormatOf(paragraph), format);
        cursor_.insertText(line, format);
    }

    const DocumentReading& reading_;
    QTextCursor cursor_;
    std::vector<QTextCharFormat> formats_; // by look
    bool isFresh_ = true;                  // the cursor stands in a block that is not used yet
};

void setPaper(QTextDocument& document, const Paper& paper) {
    document.setDocumentMargin(0);
    QTextFrameFormat frame = document.rootFrame()->frameFormat();
    frame.setLeftMargin(paper.left * units);
    frame.setTopMargin(paper.top * units);
    frame.setRightMargin(paper.right * units);
    frame.setBottomMargin(paper.bottom * units);
    document.rootFrame()->setFrameFormat(frame);
    document.setPageSize(QSizeF(paper.width, paper.height) * units);
}

} // namespace

ReadingText readingText(const DocumentReading& reading, const QString& lastLine) {
    ReadingText text{std::make_unique<QTextDocument>(), nullptr};
    text.document->setUndoRedoEnabled(false);
    text.pictures = new PictureObjects(text.document.get());
    text.document->documentLayout()->registerHandler(PictureObjects::objectType, text.pictures);
    const Paper& paper = reading.paper;
    TextWriter(reading, *text.document).write(paper.width - paper.left - paper.right, lastLine);
    setPaper(*text.document, paper);
    return text;
}

} // namespace qvnd::preview
