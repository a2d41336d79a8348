#include "platform/preview/StoryReading.h"

#include "platform/preview/PictureReading.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/text/Fields.h"
#include "platform/word/formatting/PropertyValues.h"
#include "platform/word/formatting/ResolvedSection.h"
#include "platform/word/formatting/Symbols.h"

#include <algorithm>

namespace qvnd::preview {

namespace {

namespace sprm = word::sprm;

constexpr char16_t pictureCharacter = 0x01;
constexpr char16_t cellMark = 0x07;
constexpr char16_t drawing = 0x08;
constexpr char16_t tab = 0x09;
constexpr char16_t lineBreak = 0x0B;
constexpr char16_t pageBreak = 0x0C;
constexpr char16_t paragraphMark = 0x0D;
constexpr char16_t columnBreak = 0x0E;
constexpr char16_t fixedHyphen = 0x1E;
constexpr char16_t symbolCharacter = 0x28;
constexpr char16_t firstPrintable = 0x20;
constexpr char16_t privateArea = 0xF000;

bool isSet(word::ByteView list, word::SprmOpcode opcode) {
    const auto entry = word::findSprm(list, opcode);
    return entry && entry->operand[0] != 0;
}

} // namespace

StoryReading::StoryReading(ReadingContext& context, const word::Story& story,
                           const ReadingLimits& limits)
    : context_(context), story_(story), limits_(limits) {
    if (isMain() && !context.document.sections.empty()) {
        sectionEnd_ = context.document.sections.front().length;
    }
}

std::vector<Block> StoryReading::read(bool& isCut) {
    word::Cp at = 0;
    for (const word::ParagraphRun& run : story_.paragraphs) {
        const bool enough = paragraphs_ >= limits_.paragraphs || at >= limits_.characters;
        const bool farTooMuch =
            paragraphs_ >= 2 * limits_.paragraphs || at >= 2 * limits_.characters;
        if (farTooMuch || (enough && blocks_.isBetweenRows())) {
            isCut = true;
            break;
        }
        const word::Cp end = at + run.length;
        for (; at + 1 < end; ++at) {
            take(at, run);
        }
        if (at < end) {
            endParagraph(at, run);
            ++at;
        }
    }
    return blocks_.finish();
}

void StoryReading::endParagraph(word::Cp at, const word::ParagraphRun& run) {
    const char16_t mark = story_.text[at];
    const bool isMark = mark == paragraphMark || mark == cellMark || mark == pageBreak;
    if (!isMark) {
        take(at, run);
    }
    if (instructions_ > 0) {
        return; // goes on behind the instructions of a field
    }
    paragraph_.markLook = context_.looks.text(run.style, runAt(at).properties);
    const bool onlyBreak = mark == pageBreak && paragraph_.runs.empty();
    if (!onlyBreak) {
        closeParagraph(run, context_.places.of(run.properties, mark));
    }
    startsPage_ = startsPage_ || mark == pageBreak;
    sectionEndsAt(at + 1);
}

// A new section starts a page unless it says that it goes on in the same one.
void StoryReading::sectionEndsAt(word::Cp end) {
    const auto& sections = context_.document.sections;
    while (isMain() && end >= sectionEnd_ && section_ + 1 < sections.size()) {
        ++section_;
        sectionEnd_ += sections[section_].length;
        const auto section = word::resolvedSectionOf(
            context_.document.tables.lists[sections[section_].properties], false);
        startsPage_ = section.start != word::ResolvedSection::Start::continuous;
    }
}

void StoryReading::closeParagraph(const word::ParagraphRun& run, const word::TablePlace& place) {
    const Looks::OfParagraph& look = context_.looks.paragraph(run.style, run.properties);
    paragraph_.look = look.look;
    paragraph_.look.startsPage = (look.look.startsPage || startsPage_) && place.depth == 0;
    startsPage_ = startsPage_ && place.depth > 0;
    if (!place.rowEnd) {
        label(paragraph_, run, look);
        ++paragraphs_;
    }
    blocks_.add(std::move(paragraph_), place, context_.document.tables.lists[run.properties]);
    paragraph_ = {};
    addTextBoxes();
}

void StoryReading::label(Paragraph& paragraph, const word::ParagraphRun& run,
                         const Looks::OfParagraph& look) {
    const auto found = context_.numbers.next(look.list, look.listLevel);
    if (!found) {
        return;
    }
    const auto markProperties = runAt(runStart_).properties;
    paragraph.label.look = context_.looks.label(run.style, markProperties, found->characters);
    const std::u16string font =
        context_.reading.looks[paragraph.label.look].fonts.first().toStdU16String();
    for (const char16_t c : found->text) {
        const bool isSymbol = c >= privateArea || word::isSymbolFont(font);
        paragraph.label.text += QChar(isSymbol ? word::symbolAsText(c, font) : c);
    }
    if (found->follows != 0) {
        paragraph.label.text += QChar(found->follows);
    }
}

void StoryReading::addTextBoxes() {
    for (const word::TextBox* box : boxes_) {
        bool isCut = false;
        Cell cell;
        cell.blocks = StoryReading(context_, *box->text, limits_).read(isCut);
        if (cell.blocks.empty()) {
            continue;
        }
        constexpr double twipsPerPoint = 20;
        constexpr double usualWidth = 200;
        cell.borders = {true, true, true, true};
        Table frame;
        frame.columnWidths = {box->spot ? box->spot->width / twipsPerPoint : usualWidth};
        frame.rows.emplace_back().push_back(std::move(cell));
        blocks_.add({std::move(frame)});
    }
    boxes_.clear();
}

void StoryReading::take(word::Cp at, const word::ParagraphRun& run) {
    if (nextField_ < story_.fields.size() && story_.fields[nextField_].at == at) {
        takeFieldMark(story_.fields[nextField_++].character);
    } else if (instructions_ == 0) {
        takeCharacter(at, run);
    }
}

void StoryReading::takeFieldMark(std::uint8_t character) {
    if (character == word::fieldBegin) {
        open_.push_back(true);
        ++instructions_;
    } else if (!open_.empty()) {
        instructions_ -= open_.back() ? 1 : 0;
        open_.back() = false;
        if (character == word::fieldEnd) {
            open_.pop_back();
        }
    }
}

void StoryReading::takeCharacter(word::Cp at, const word::ParagraphRun& run) {
    const char16_t c = story_.text[at];
    const word::PropertyListId properties = runAt(at).properties;
    const std::size_t look = context_.looks.text(run.style, properties);
    const TextLook& text = context_.reading.looks[look];
    if (text.hidden) {
        return;
    }
    if (c == pictureCharacter) {
        appendPicture(pictureAt(properties), look);
    } else if (c == drawing) {
        anchored(at, look);
    } else if (c == pageBreak) {
        breakPage(run);
    } else if (c == lineBreak || c == columnBreak) {
        append(QChar::LineSeparator, look);
    } else if (c == fixedHyphen) {
        append(u'\u2011', look);
    } else if (c == symbolCharacter) {
        append(symbol(properties), look);
    } else if (c >= privateArea && c < privateArea + 0x100) {
        append(word::symbolAsText(c, text.fonts.first().toStdU16String()), look);
    } else if (c >= firstPrintable || c == tab) {
        append(text.capitals ? QChar(c).toUpper() : QChar(c), look);
    }
}

// What stands before the break is a paragraph of its own.
void StoryReading::breakPage(const word::ParagraphRun& run) {
    if (!paragraph_.runs.empty()) {
        word::TablePlace place = context_.places.of(run.properties, paragraphMark);
        place.rowEnd = place.cellEnd = false;
        const Looks::OfParagraph& look = context_.looks.paragraph(run.style, run.properties);
        paragraph_.look = look.look;
        paragraph_.look.startsPage = (look.look.startsPage || startsPage_) && place.depth == 0;
        blocks_.add(std::move(paragraph_), place, {});
        paragraph_ = {};
    }
    startsPage_ = true;
}

void StoryReading::append(QChar c, std::size_t look) {
    auto& runs = paragraph_.runs;
    if (runs.empty() || runs.back().look != look || runs.back().picture) {
        runs.push_back({QString(), look});
    }
    runs.back().text += c;
}

void StoryReading::appendPicture(std::optional<std::size_t> picture, std::size_t look) {
    if (picture) {
        paragraph_.runs.push_back({QString(), look, picture});
    }
}

void StoryReading::anchored(word::Cp at, std::size_t look) {
    if (!isMain()) {
        return;
    }
    for (const word::FloatingPicture& floating : context_.drawings.pictures) {
        const auto picture =
            floating.at == at ? pictureOf(floating.inlineForm) : std::optional<Picture>();
        if (picture) {
            context_.reading.pictures.push_back(*picture);
            appendPicture(context_.reading.pictures.size() - 1, look);
        }
    }
    for (const word::TextBox& box : context_.drawings.textBoxes) {
        if (box.at == at) {
            boxes_.push_back(&box);
        }
    }
}

// What stands as a bracket in the text may be a symbol of another font.
char16_t StoryReading::symbol(word::PropertyListId properties) const {
    const auto entry = word::findSprm(context_.document.tables.lists[properties], sprm::CSymbol);
    if (!entry) {
        return symbolCharacter;
    }
    word::LittleEndianReader reader(entry->operand, "sprmCSymbol");
    const unsigned font = reader.u16();
    return word::symbolAsText(reader.u16(), context_.looks.fontName(font).toStdU16String());
}

// Form fields and hyperlinks keep data behind the same character.
std::optional<std::size_t> StoryReading::pictureAt(word::PropertyListId properties) {
    const auto& tables = context_.document.tables;
    const auto location = word::findSprm(tables.lists[properties], sprm::CPicLocation);
    const std::uint32_t blob = location ? word::numberOf(*location) : 0;
    if (!location || isSet(tables.lists[properties], sprm::CFData) || blob >= tables.blobs.size()) {
        return std::nullopt;
    }
    const auto [at, isNew] = context_.pictures.try_emplace(blob);
    if (isNew) {
        if (auto picture = pictureOf(tables.blobs[blob])) {
            context_.reading.pictures.push_back(std::move(*picture));
            at->second = context_.reading.pictures.size() - 1;
        }
    }
    return at->second;
}

const word::CharacterRun& StoryReading::runAt(word::Cp at) {
    while (run_ + 1 < story_.characters.size() &&
           runStart_ + story_.characters[run_].length <= at) {
        runStart_ += story_.characters[run_++].length;
    }
    return story_.characters[run_];
}

} // namespace qvnd::preview
