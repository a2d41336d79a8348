#include "generate/DocumentProbe.h"

#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/reader/DocumentReader.h"

#include <QStringList>

#include <cmath>

using namespace Qt::StringLiterals;

namespace qvnd::test {

namespace {

QString textOf(const preview::Paragraph& paragraph) {
    QString text;
    for (const preview::TextRun& run : paragraph.runs) {
        text += run.text;
    }
    return text.trimmed();
}

QString nameOf(preview::Alignment alignment) {
    switch (alignment) {
    case preview::Alignment::left:
        return u"left"_s;
    case preview::Alignment::centre:
        return u"centre"_s;
    case preview::Alignment::right:
        return u"right"_s;
    case preview::Alignment::justified:
        return u"justified"_s;
    }
    return {};
}

template <class Visit>
void eachParagraph(const preview::DocumentReading& reading, Visit visit) {
    for (const preview::Block& block : reading.blocks) {
        if (const auto* paragraph = std::get_if<preview::Paragraph>(&block.content)) {
            visit(*paragraph);
        }
    }
}

// The last run that shows something: a frame's text may stand before it.
const preview::TextRun* shownRun(const preview::Paragraph& paragraph) {
    for (const preview::TextRun& run : paragraph.runs) {
        if (!run.text.trimmed().isEmpty()) {
            return &run;
        }
    }
    return nullptr;
}

int little(word::ByteView bytes) {
    int value = 0;
    for (std::size_t i = bytes.size(); i > 0; --i) {
        value = value * 256 + bytes[i - 1];
    }
    return value;
}

} // namespace

DocumentProbe::DocumentProbe(const std::filesystem::path& file)
    : file_(file), data_(word::readDocument(file)), reading_(preview::ownReading(data_)) {}

const preview::Paragraph* DocumentProbe::find(const QString& text) const {
    const preview::Paragraph* found = nullptr;
    eachParagraph(reading_, [&](const preview::Paragraph& paragraph) {
        if (!found && textOf(paragraph) == text) {
            found = &paragraph;
        }
    });
    return found;
}

QString DocumentProbe::describe(const preview::DocumentReading& reading,
                                const preview::Paragraph& paragraph) const {
    const preview::TextRun* run = shownRun(paragraph);
    const preview::TextLook& look = reading.looks[run ? run->look : paragraph.markLook];
    return look.fonts.last() + u' ' + QString::number(look.points) +
           (look.bold ? u" bold "_s : u" plain "_s) + nameOf(paragraph.look.alignment);
}

QString DocumentProbe::lookOf(const QString& text) const {
    const preview::Paragraph* paragraph = find(text);
    return paragraph ? describe(reading_, *paragraph) : u"none"_s;
}

QString DocumentProbe::lookAt(std::size_t number) const {
    QStringList looks;
    eachParagraph(reading_, [&](const preview::Paragraph& paragraph) {
        looks << describe(reading_, paragraph);
    });
    return looks.value(static_cast<qsizetype>(number));
}

QString DocumentProbe::lines() const {
    QStringList lines;
    eachParagraph(reading_, [&](const preview::Paragraph& paragraph) {
        if (const QString text = textOf(paragraph); !text.isEmpty()) {
            lines << text;
        }
    });
    return lines.join(u'|');
}

// From the heading of the contents to the first heading.
QString DocumentProbe::contents() const {
    QStringList lines;
    bool inside = false;
    eachParagraph(reading_, [&](const preview::Paragraph& paragraph) {
        const QString text = textOf(paragraph);
        inside = (inside && paragraph.look.headingLevel == 0) || text.startsWith(u"目录");
        if (inside && !text.isEmpty() && text != u"目录") {
            lines << text;
        }
    });
    return lines.join(u'|');
}

bool DocumentProbe::startsPage(const QString& text) const {
    const preview::Paragraph* paragraph = find(text);
    return paragraph && paragraph->look.startsPage;
}

QString DocumentProbe::headings() const {
    QStringList headings;
    eachParagraph(reading_, [&](const preview::Paragraph& paragraph) {
        if (paragraph.look.headingLevel > 0) {
            headings << textOf(paragraph);
        }
    });
    return headings.join(u'|');
}

int DocumentProbe::blanksBehind(const QString& text) const {
    int count = -1;
    bool counting = false;
    eachParagraph(reading_, [&](const preview::Paragraph& paragraph) {
        const QString own = textOf(paragraph);
        if (count < 0 && own == text) {
            count = 0;
            counting = true;
        } else if (counting && own.isEmpty()) {
            ++count;
        } else {
            counting = false;
        }
    });
    return count;
}

double DocumentProbe::indentOf(const QString& text) const {
    const preview::Paragraph* paragraph = find(text);
    return paragraph ? paragraph->look.left + paragraph->look.firstLine : -1;
}

// The story is read as if it were a document's main one.
QString DocumentProbe::storyOf(word::HeaderKind kind) const {
    const word::SlicedText& story = data_.headers.at(0)[static_cast<std::size_t>(kind)];
    if (story.empty()) {
        return u"none"_s;
    }
    word::DocumentContent alone = word::readDocument(file_);
    alone.main = story;
    alone.sections = {{lengthOf(story), word::PropertyListId::empty}};
    alone.headers.resize(1);
    const preview::DocumentReading reading = preview::ownReading(alone);
    QString found = u"empty"_s;
    eachParagraph(reading, [&](const preview::Paragraph& paragraph) {
        const QString text = textOf(paragraph);
        bool isNumber = false;
        text.toInt(&isNumber);
        if (found == u"empty" && !text.isEmpty() && !isNumber) {
            found = text + u": "_s + describe(reading, paragraph);
        }
    });
    return found;
}

int DocumentProbe::pageNumberSide() const {
    for (const word::SlicedText& text : data_.headers.at(0)) {
        for (const word::ParagraphRun& run : word::joined(text)->paragraphs) {
            const auto place =
                word::findSprm(data_.tables.lists[run.properties], word::sprm::PDxaAbs);
            if (place) {
                return -static_cast<std::int16_t>(little(place->operand));
            }
        }
    }
    return 0;
}

int DocumentProbe::leader() const {
    constexpr std::uint16_t firstLevelOfContents = 19; // sti of "toc 1"
    for (const auto& style : data_.tables.styles.styles) {
        if (style && style->sti == firstLevelOfContents) {
            const auto tabs =
                word::findSprm(data_.tables.lists[style->paragraph], word::sprm::PChgTabsPapx);
            // The last byte is the kind of the last tab that is added, [MS-DOC] 2.9.304 TBD.
            return tabs ? (tabs->operand.back() >> 3) & 7 : -1;
        }
    }
    return -1;
}

int DocumentProbe::section(word::SprmOpcode opcode) const {
    const auto value = word::findSprm(data_.tables.lists[data_.sections.at(0).properties], opcode);
    return value ? little(value->operand) : -1;
}

QString DocumentProbe::picture() const {
    if (reading_.pictures.empty()) {
        return u"none"_s;
    }
    const preview::Picture& first = reading_.pictures.front();
    return u"%1 x %2%3"_s.arg(std::lround(first.width))
        .arg(std::lround(first.height))
        .arg(first.file.isEmpty() ? u" not drawn"_s : QString());
}

} // namespace qvnd::test
