#include "generate/DocumentProbe.h"

#include "platform/word/docfile/format/SpecialCharacters.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/pictures/PictureFile.h"
#include "platform/word/docfile/reader/DocumentReader.h"
#include "platform/word/docfile/text/Fields.h"
#include "platform/word/formatting/FormatResolver.h"

#include <QStringList>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace qvnd::test {

namespace {

QString nameOf(word::LineAlignment alignment) {
    switch (alignment) {
    case word::LineAlignment::left:
        return u"left"_s;
    case word::LineAlignment::centre:
        return u"centre"_s;
    case word::LineAlignment::right:
        return u"right"_s;
    case word::LineAlignment::justified:
        return u"justified"_s;
    case word::LineAlignment::distributed:
        return u"distributed"_s;
    }
    return {};
}

// Follows which characters are instructions of fields.
class Instructions {
public:
    // Whether the character is one of them, or a mark of a field.
    bool take(char16_t c) {
        if (c == word::fieldBegin) {
            open_.push_back(true);
        } else if (c == word::fieldSeparator && !open_.empty()) {
            open_.back() = false;
        } else if (c == word::fieldEnd && !open_.empty()) {
            open_.pop_back();
        }
        const bool isMark = word::isFieldCharacter(c);
        return isMark || isInside();
    }
    bool isInside() const { return std::find(open_.begin(), open_.end(), true) != open_.end(); }

private:
    std::vector<bool> open_; // a field each: whether its instructions are being passed
};

int little(word::ByteView bytes) {
    int value = 0;
    for (std::size_t i = bytes.size(); i > 0; --i) {
        value = value * 256 + bytes[i - 1];
    }
    return value;
}

} // namespace

DocumentProbe::DocumentProbe(const std::filesystem::path& file)
    : data_(word::readDocument(file)), paragraphs_(paragraphsOf(data_.main)) {}

std::vector<DocumentProbe::Paragraph>
DocumentProbe::paragraphsOf(const word::SlicedText& text) const {
    const auto joined = word::joined(text);
    const word::Story& story = *joined;
    word::FormatResolver formats(data_.tables);
    std::vector<word::PropertyListId> looks; // by character
    for (const word::CharacterRun& run : story.characters) {
        looks.insert(looks.end(), run.length, run.properties);
    }
    std::vector<Paragraph> result;
    Instructions instructions;
    Paragraph paragraph;
    bool hasLook = false;
    bool startsPage = false;
    word::Cp at = 0;
    for (const word::ParagraphRun& run : story.paragraphs) {
        const auto close = [&](word::Cp mark) {
            paragraph.format = formats.paragraph(run.style, run.properties);
            paragraph.startsPage = paragraph.format.startsPage || startsPage;
            paragraph.text = paragraph.text.trimmed();
            if (!hasLook) {
                paragraph.look = formats.text(run.style, looks[mark]);
            }
            if (formats.place(run.properties, u'\r').depth == 0) {
                result.push_back(paragraph);
            }
            paragraph = {};
            hasLook = startsPage = false;
        };
        for (const word::Cp end = at + run.length; at < end; ++at) {
            const char16_t c = story.text[at];
            if (instructions.take(c)) {
                continue;
            }
            const auto& look = formats.text(run.style, looks[at]);
            if (c == word::special::pageBreak ? !paragraph.text.isEmpty() : at + 1 == end) {
                close(at);
            } else if ((c >= word::special::firstPrintable || c == u'\t') && !look.hidden) {
                paragraph.text += QChar(c);
                if (!hasLook && !QChar(c).isSpace()) {
                    paragraph.look = look;
                    hasLook = true;
                }
            }
            startsPage = startsPage || c == word::special::pageBreak;
        }
    }
    return result;
}

const DocumentProbe::Paragraph* DocumentProbe::find(const QString& text) const {
    const auto found = std::find_if(paragraphs_.begin(), paragraphs_.end(),
                                    [&](const Paragraph& it) { return it.text == text; });
    return found == paragraphs_.end() ? nullptr : &*found;
}

QString DocumentProbe::describe(const Paragraph& paragraph) const {
    const word::ResolvedText& look = paragraph.look;
    return QString::fromStdU16String(data_.tables.fonts.at(look.eastAsianFont).name) + u' ' +
           QString::number(look.halfPoints / 2.0) + (look.bold ? u" bold "_s : u" plain "_s) +
           nameOf(paragraph.format.alignment);
}

QString DocumentProbe::lookOf(const QString& text) const {
    const Paragraph* paragraph = find(text);
    return paragraph ? describe(*paragraph) : u"none"_s;
}

QString DocumentProbe::lookAt(std::size_t number) const {
    return number < paragraphs_.size() ? describe(paragraphs_[number]) : QString();
}

QString DocumentProbe::lines() const {
    QStringList lines;
    for (const Paragraph& paragraph : paragraphs_) {
        if (!paragraph.text.isEmpty()) {
            lines << paragraph.text;
        }
    }
    return lines.join(u'|');
}

// From the heading of the contents to the first heading.
QString DocumentProbe::contents() const {
    QStringList lines;
    bool inside = false;
    for (const Paragraph& paragraph : paragraphs_) {
        const QString& text = paragraph.text;
        inside = (inside && paragraph.format.outlineLevel == 0) || text.startsWith(u"目录");
        if (inside && !text.isEmpty() && text != u"目录") {
            lines << text;
        }
    }
    return lines.join(u'|');
}

bool DocumentProbe::startsPage(const QString& text) const {
    const Paragraph* paragraph = find(text);
    return paragraph && paragraph->startsPage;
}

QString DocumentProbe::headings() const {
    QStringList headings;
    for (const Paragraph& paragraph : paragraphs_) {
        if (paragraph.format.outlineLevel > 0) {
            headings << paragraph.text;
        }
    }
    return headings.join(u'|');
}

int DocumentProbe::blanksBehind(const QString& text) const {
    const Paragraph* paragraph = find(text);
    if (!paragraph) {
        return -1;
    }
    const auto behind = paragraphs_.begin() + (paragraph - paragraphs_.data()) + 1;
    const auto next = std::find_if(behind, paragraphs_.end(),
                                   [](const Paragraph& it) { return !it.text.isEmpty(); });
    return static_cast<int>(next - behind);
}

double DocumentProbe::indentOf(const QString& text) const {
    constexpr double twipsPerPoint = 20;
    const Paragraph* paragraph = find(text);
    if (!paragraph) {
        return -1;
    }
    return (paragraph->format.left.twips + paragraph->format.firstLine.twips) / twipsPerPoint;
}

QString DocumentProbe::storyOf(word::HeaderKind kind) const {
    const word::SlicedText& story = data_.headers.at(0)[static_cast<std::size_t>(kind)];
    if (story.empty()) {
        return u"none"_s;
    }
    for (const Paragraph& paragraph : paragraphsOf(story)) {
        bool isNumber = false;
        paragraph.text.toInt(&isNumber);
        if (!paragraph.text.isEmpty() && !isNumber) {
            return paragraph.text + u": "_s + describe(paragraph);
        }
    }
    return u"empty"_s;
}

int DocumentProbe::pageNumberSide() const {
    for (const word::SlicedText& text : data_.headers.at(0)) {
        const auto story = word::joined(text);
        for (const word::ParagraphRun& run : story->paragraphs) {
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

word::SectionPaper DocumentProbe::paper() const {
    return word::sectionPaper(data_.tables.lists[data_.sections.at(0).properties],
                              word::gutterOnTop(data_.settings));
}

QString DocumentProbe::picture() const {
    constexpr double twipsPerPoint = 20;
    word::FormatResolver formats(data_.tables);
    const auto main = word::joined(data_.main);
    for (const word::CharacterRun& run : main->characters) {
        const auto& blob = formats.text(0, run.properties).blob;
        const auto picture = blob ? word::Picture::fromBlob(*data_.tables.blobs.at(*blob))
                                  : std::optional<word::Picture>();
        if (picture) {
            return u"%1 x %2%3"_s.arg(std::lround(picture->width() / twipsPerPoint))
                .arg(std::lround(picture->height() / twipsPerPoint))
                .arg(word::pictureFile(*picture).empty() ? u" not drawn"_s : QString());
        }
    }
    return u"none"_s;
}

} // namespace qvnd::test
