#include "platform/preview/DocumentReading.h"

namespace qvnd::preview {

namespace {

void add(QString& text, const std::vector<Block>& blocks);

void add(QString& text, const Paragraph& paragraph) {
    text += paragraph.label.text;
    for (const TextRun& run : paragraph.runs) {
        text += run.text;
    }
    text.replace(QChar::LineSeparator, u'\n');
}

void add(QString& text, const Table& table) {
    for (const std::vector<Cell>& row : table.rows) {
        for (const Cell& cell : row) {
            add(text, cell.blocks);
            text.back() = u'\t';
        }
        if (!row.empty()) {
            text.back() = u'\n';
        }
    }
}

void add(QString& text, const std::vector<Block>& blocks) {
    for (const Block& block : blocks) {
        if (const auto* table = std::get_if<Table>(&block.content)) {
            add(text, *table);
        } else {
            add(text, std::get<Paragraph>(block.content));
            text += u'\n';
        }
    }
}

} // namespace

QString plainText(const DocumentReading& reading) {
    QString text;
    add(text, reading.blocks);
    return text;
}

} // namespace qvnd::preview
