#include "WrittenDocument.h"

#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/text/DocumentText.h"
#include "support/Corpus.h"

#include <gtest/gtest.h>

#include <random>

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

// Its text: a line for each paragraph, numbers of lists included; cells separated by tabs.
QString plainText(const DocumentReading& reading) {
    QString text;
    add(text, reading.blocks);
    return text;
}

constexpr ReadingLimits everything{1'000'000, 100'000'000};

std::vector<std::filesystem::path> corpus() { return test::readableCorpusFiles(); }

// What letters a text has, in order: symbols, blanks and hyphens are shown in other ways.
QString lettersOf(const QString& text) {
    QString letters;
    for (const QChar c : text) {
        if (c.isLetterOrNumber() && c.unicode() < 0xE000) {
            letters += c;
        }
    }
    return letters;
}

int hiddenRuns(const word::DocumentContent& document) {
    int hidden = 0;
    for (std::size_t i = 0; i < document.tables.lists.size(); ++i) {
        const auto id = static_cast<word::PropertyListId>(i);
        hidden += word::findSprm(document.tables.lists[id], word::sprm::CFVanish) ? 1 : 0;
    }
    return hidden;
}

TEST(CorpusReading, NoLetterOfADocumentIsLost) {
    if (!test::corpusFolder()) {
        GTEST_SKIP() << "no documents of other programs here (QVND_CORPUS names their folder)";
    }
    int compared = 0;
    for (const auto& path : corpus()) {
        const word::DocumentContent document = word::readDocument(path);
        if (hiddenRuns(document) > 0) {
            continue; // hidden text is left out on purpose
        }
        DocumentReading reading = ownReading(document, everything);
        for (TextLook& look : reading.looks) {
            look.capitals = false;
        }
        const QString wanted = lettersOf(
            QString::fromStdU16String(word::documentText(document.main, document.tables)));
        const QString read = lettersOf(plainText(reading));
        // Labels of lists and texts of text boxes come in between.
        qsizetype at = 0;
        for (const QChar c : read) {
            at += at < wanted.size() && c.toUpper() == wanted.at(at).toUpper() ? 1 : 0;
        }
        EXPECT_EQ(at, wanted.size())
            << path.filename() << " stops before " << wanted.mid(at, 30).toStdString();
        ++compared;
    }
    EXPECT_GT(compared, 50);
}

TEST(CorpusReading, ChangedFilesAreReadOrRefused) {
    if (!test::corpusFolder()) {
        GTEST_SKIP() << "no documents of other programs here (QVND_CORPUS names their folder)";
    }
    std::mt19937 random(20260210);
    int read = 0;
    for (const auto& path : corpus()) {
        std::ifstream in(path, std::ios::binary);
        word::Bytes bytes(std::istreambuf_iterator<char>(in), {});
        if (bytes.size() > 100'000) {
            continue;
        }
        for (int change = 0; change < 30; ++change) {
            bytes[random() % bytes.size()] = static_cast<std::uint8_t>(random());
        }
        try {
            read += ownReading(word::readDocument(bytes)).blocks.empty() ? 0 : 1;
        } catch (const word::FormatError&) {
            continue;
        }
    }
    EXPECT_GT(read, 20);
}

} // namespace
} // namespace qvnd::preview
