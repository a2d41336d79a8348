#include "platform/word/layout/StoryReader.h"

#include "platform/word/docfile/format/SpecialCharacters.h"
#include "platform/word/docfile/pictures/ObjectPicture.h"
#include "platform/word/formatting/Symbols.h"
#include "platform/word/layout/CharacterClasses.h"
#include "platform/word/layout/LineHeights.h"
#include "platform/word/layout/StoryBlocks.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace qvnd::layout {

namespace {

namespace special = word::special;

constexpr double scriptSize = 0.65; // of raised and lowered text, in parts of the size
constexpr double scriptRise = 0.33;
constexpr double scriptDrop = -0.15;
constexpr double smallCapitalSize = 0.8;

constexpr word::Cp nowhere = std::numeric_limits<word::Cp>::max();

constexpr std::uint16_t unnamedFont = 0xFFFE; // of no document
constexpr char16_t pageNumber = 0;            // in the office suite the number of the page
constexpr char16_t privateArea = 0xF000;
constexpr char16_t privateEnd = 0xF100;

bool isMark(char16_t c) { return c == u'\r' || c == u'\a' || c == special::pageBreak; }

bool isHigh(char16_t c) { return c >= 0xD800 && c < 0xDC00; }
bool isLow(char16_t c) { return c >= 0xDC00 && c < 0xE000; }

char32_t upper(char32_t c) {
    const bool latin = (c >= U'a' && c <= U'z') || (c >= 0xE0 && c <= 0xFE && c != 0xF7);
    return latin ? c - 0x20 : c;
}

} // namespace

const word::StyledParagraphs& StoryReader::Shared::styledParagraphs() {
    if (!styled) {
        styled.emplace(*source.tables, *source.main);
    }
    return *styled;
}

bool StoryReader::Shared::isLinked(std::uint32_t shapeText) {
    if (!linked) {
        linked.emplace();
        for (const word::Drawing& drawing : source.tables->drawings) {
            for (const word::ShapeReference& reference : drawing.references) {
                if (reference.kind == word::ShapeReference::Kind::text && reference.link > 0) {
                    linked->insert(reference.index);
                }
            }
        }
    }
    return linked->contains(shapeText);
}

StoryReader::StoryReader(Shared& shared, const word::Story& story,
                         std::optional<std::uint32_t> note)
    : shared_(shared), story_(story), note_(note), fields_(story, shared.source, shared.officeText),
      faces_(*shared.source.tables, shared.fonts, shared.officeText) {}

const word::CharacterRun& StoryReader::runAt(word::Cp at) {
    while (at < runStart_) {
        runStart_ -= story_.characters[--run_].length;
    }
    while (run_ + 1 < story_.characters.size() &&
           runStart_ + story_.characters[run_].length <= at) {
        runStart_ += story_.characters[run_++].length;
    }
    return story_.characters[run_];
}

// Most characters have the format of the one before.
const word::ResolvedText& StoryReader::formatAt(word::Cp at, word::StyleIndex style) {
    const word::CharacterRun& run = runAt(at);
    if (&run != formatRun_ || style != formatStyle_) {
        formatRun_ = &run;
        formatStyle_ = style;
        format_ = &shared_.formats.text(style, run.properties, cell_);
    }
    return *format_;
}

void StoryReader::setCell(word::CellLook cell) {
    cell_ = cell;
    formatRun_ = nullptr;
}

bool StoryReader::isUnseen(const word::ResolvedText& format) const {
    return format.isUnseen(shared_.showsDeleted);
}

// Whether nothing of a paragraph is seen, its mark at `end` included. The mark of a cell always is.
bool StoryReader::isUnseen(word::Cp start, word::Cp end, word::StyleIndex style) {
    if (end >= story_.size() || story_.text[end] != u'\r' || !isUnseen(formatAt(end, style))) {
        return false;
    }
    for (word::Cp at = start; at < end; ++at) {
        if (!isUnseen(formatAt(at, style))) {
            return false;
        }
    }
    return true;
}

ParagraphItems StoryReader::read(std::size_t paragraph, word::Cp start, const PageFields& fields) {
    ParagraphItems result;
    const word::ParagraphRun& run = story_.paragraphs[paragraph];
    word::Cp end = start + run.length;
    if (end > start && isMark(story_.text[end - 1])) {
        --end;
    }
    if (isUnseen(start, end, run.style)) {
        result.isLeftOut = true;
        return result;
    }
    // In the office suite a break right behind a paragraph's end is none of its own.
    bool isBehindEnd = shared_.officeText && start > 0 && endsParagraph(story_.text, start - 1);
    if (isBehindEnd && run.length == 1 && story_.text[start] == special::pageBreak) {
        result.isLeftOut = true;
        return result;
    }
    readLabel(paragraph, start, result);
    const word::Cp lostFrom = unformattedFrom(paragraph, start);
    result.items.reserve(result.items.size() + (end - start));
    word::Cp nextSpanAt = fields_.nextSpan(start);
    word::Cp nextAnchorAt = nextAnchor(start);
    for (word::Cp at = start; at < end; ++at) {
        if (isBehindEnd && story_.text[at] == special::pageBreak) {
            result.startsPage = result.startsPage || at == start;
            isBehindEnd = false;
            continue;
        }
        isBehindEnd = shared_.officeText && story_.text[at] == special::pageBreak;
        const FieldResults::Span* span = at < nextSpanAt ? nullptr : fields_.spanAt(at);
        if (span != nullptr) {
            if (span->shows != FieldResults::Span::Shows::nothing && at == span->begin) {
                // The look of the field's last character but one is that of its result.
                const word::Cp shown = span->end > span->begin + 2 ? span->end - 2 : at;
                const auto& look = shared_.formats.text(run.style, runAt(shown).properties, cell_);
                addText(shownBy(*span, fields), at, look, result);
            }
            at = std::min(span->end, end) - 1;
            nextSpanAt = fields_.nextSpan(at + 1);
            continue;
        }
        const char16_t c = story_.text[at];
        const bool isLost = at >= lostFrom && (c >= special::firstPrintable || c == special::tab);
        const auto& format =
            isLost ? shared_.formats.text(run.style, word::PropertyListId::empty, cell_)
                   : formatAt(at, run.style);
        if (isUnseen(format)) {
            continue;
        }
        if (c == pageNumber && shared_.officeText) {
            addText(fields.number, at, format, result);
        } else {
            const std::size_t first = result.items.size();
            readCharacter(c, at, format, result);
            if (at >= nextAnchorAt) {
                attachNote(at, first, result);
                nextAnchorAt = nextAnchor(at + 1);
            }
        }
    }
    const word::Cp markAt = std::min(end, story_.size() - 1);
    const auto& mark =
        formatOfMark(paragraph, start,
                     markAt >= lostFrom ? word::PropertyListId::empty : runAt(markAt).properties);
    result.markSize = mark.halfPoints * twipsPerHalfPoint;
    const bool isChinese = mark.eastAsianHint && !shared_.officeText;
    result.markFace = faces_.of(mark, isChinese ? U'中' : U'x');
    result.characterWidth = characterWidthOf(result);
    return result;
}

// The size of the paragraph's own text: neither that of a label in front of it nor what raised
// text is reduced to. The office suite takes the first character, whatever it is.
double StoryReader::characterWidthOf(const ParagraphItems& paragraph) const {
    const auto& items = paragraph.items;
    if (shared_.officeText) {
        return items.empty() ? paragraph.markSize : items.front().size;
    }
    const auto own = std::find_if(items.begin(), items.end(),
                                  [](const TextItem& item) { return !item.isLabel; });
    return own == items.end() ? paragraph.markSize : own->format->halfPoints * twipsPerHalfPoint;
}

// In the office suite a run of characters that ends right before a table has no direct formatting
// in the last paragraph before it. One that goes on in the table keeps it.
word::Cp StoryReader::unformattedFrom(std::size_t paragraph, word::Cp start) {
    const word::Cp end = start + story_.paragraphs[paragraph].length;
    if (!shared_.officeText || end == start ||
        !precedesTable(story_, paragraph, end, shared_.formats)) {
        return nowhere;
    }
    const word::Cp length = runAt(end - 1).length;
    return runStart_ + length == end ? std::max(runStart_, start) : nowhere;
}

// `own`: the direct formatting of the mark.
const word::ResolvedText& StoryReader::formatOfMark(std::size_t paragraph, word::Cp start,
                                                    word::PropertyListId own) {
    const word::ParagraphRun& run = story_.paragraphs[paragraph];
    if (!shared_.marksInherit || run.length != 1 || start == 0) {
        return shared_.formats.text(run.style, own, cell_);
    }
    const word::PropertyListId before = runAt(start - 1).properties;
    return before == own ? shared_.formats.text(run.style, own, cell_)
                         : shared_.formats.label(run.style, before, own, cell_);
}

std::u16string StoryReader::shownBy(const FieldResults::Span& span, const PageFields& fields) {
    if (!span.reference || !fields.text) {
        return FieldResults::shownBy(span, fields);
    }
    const bool isMainText = &story_ == shared_.source.main.get();
    const word::PageText text = isMainText ? word::PageText{span.begin, span.begin} : *fields.text;
    return layout::shownBy(*span.reference, shared_.styledParagraphs(), text).value_or(span.text);
}

word::ListNumbers& StoryReader::numbers() {
    using Counts = Shared::Counts;
    const bool isHeader = shared_.headers.contains(&story_);
    const Counts counts = isHeader                               ? Counts::header
                          : note_                                ? Counts::notes
                          : &story_ == shared_.source.main.get() ? Counts::mainText
                                                                 : Counts::shapes;
    return shared_.numbers
        .try_emplace({counts, isHeader ? &story_ : nullptr}, *shared_.source.tables,
                     shared_.formats.levels())
        .first->second;
}

void StoryReader::readLabel(std::size_t paragraph, word::Cp start, ParagraphItems& result) {
    const word::ParagraphRun& run = story_.paragraphs[paragraph];
    const auto& look = shared_.formats.paragraph(run.style, run.properties);
    if (look.list == word::noList) {
        return;
    }
    const auto [known, isNew] = shared_.labels.try_emplace({&story_, paragraph});
    if (isNew) {
        known->second = numbers().next(look.list, look.listLevel);
    }
    if (!known->second) {
        return;
    }
    const word::ListLabel& label = *known->second;
    const word::Cp mark = start + run.length - 1;
    const auto& format =
        shared_.formats.label(run.style, runAt(mark).properties, label.characters, cell_);
    if (format.hidden) {
        return;
    }
    const bool inSymbols = word::isSymbolFont(faces_.nameOf(format.latinFont));
    const bool isUnnamed = shared_.officeText && label.isBullet && !label.namesFont;
    for (const char16_t c : label.text) {
        if (c >= privateArea || inSymbols) {
            addSymbol(c, format.latinFont, start, format, result);
        } else if (isUnnamed) {
            const FaceId face = faces_.of(unnamedFont, false, format);
            addCharacter(c, shared_.fonts.shownBy(face, c), start, format, result);
        } else {
            addCharacter(c, start, format, result);
        }
    }
    for (const TextItem& item : result.items) {
        result.labelBefore += label.partBefore * item.width;
    }
    if (label.follows != 0) {
        TextItem follower;
        follower.kind = TextItem::Kind::tab;
        if (label.follows == u' ') {
            addCharacter(U' ', start, format, result);
        } else {
            follower.format = &format;
            follower.size = format.halfPoints * twipsPerHalfPoint;
            follower.face = faces_.of(format, U' ');
            follower.at = start;
            result.items.push_back(std::move(follower));
        }
    }
    for (TextItem& item : result.items) {
        item.isLabel = true;
    }
    result.items.back().endsLabel = true; // a label has text
}

void StoryReader::readCharacter(char16_t c, word::Cp at, const word::ResolvedText& format,
                                ParagraphItems& result) {
    if (c < special::firstPrintable && c != special::tab) {
        addSpecial(c, at, format, result);
    } else if (c == special::symbol && format.special && format.symbol) {
        // What stands as a bracket in the text may be a symbol of another font.
        addSymbol(format.symbol->code, format.symbol->font, at, format, result);
    } else if (c >= privateArea && c < privateEnd) {
        addSymbol(c, format.latinFont, at, format, result);
    } else if (isLow(c)) {
        const bool paired = at > 0 && isHigh(story_.text[at - 1]);
        if (paired) {
            addCharacter(0x10000 + ((char32_t{story_.text[at - 1]} - 0xD800) << 10) + (c - 0xDC00),
                         at - 1, format, result);
        }
    } else if (!isHigh(c)) {
        addCharacter(c, at, format, result);
    }
}

void StoryReader::addText(std::u16string_view text, word::Cp at, const word::ResolvedText& format,
                          ParagraphItems& result) {
    for (const char16_t c : text) {
        addCharacter(c, at, format, result);
    }
}

void StoryReader::addCharacter(char32_t c, word::Cp at, const word::ResolvedText& format,
                               ParagraphItems& result) {
    const bool isCapital = format.capitals || format.smallCapitals;
    addCharacter(c, faces_.of(format, isCapital ? upper(c) : c), at, format, result);
}

void StoryReader::addCharacter(char32_t c, FaceId face, word::Cp at,
                               const word::ResolvedText& format, ParagraphItems& result) {
    TextItem item;
    item.at = at;
    item.format = &format;
    item.size = format.halfPoints * twipsPerHalfPoint;
    item.raised = format.raisedBy * twipsPerHalfPoint;
    if (format.script != word::ResolvedText::Script::normal) {
        const bool isRaised = format.script == word::ResolvedText::Script::raised;
        const ScriptText script =
            shared_.officeText
                ? officeScript(shared_.fonts.heights(face), item.size, isRaised, shared_.hasLeading)
                : ScriptText{scriptSize * item.size,
                             (isRaised ? scriptRise : scriptDrop) * item.size};
        item.size = script.size;
        item.raised += script.raised;
    }
    const bool shrinks = format.smallCapitals && upper(c) != c;
    item.size *= shrinks ? smallCapitalSize : 1;
    item.character = format.capitals || format.smallCapitals ? upper(c) : c;
    item.face = face;
    item.isSetAsChinese = faces_.isSetAsChinese(format, item.character);
    if (c == special::tab) {
        item.kind = TextItem::Kind::tab;
    } else {
        item.width = shared_.fonts.advance(item.face, item.character) * item.size *
                         format.scalePercent / 100 +
                     format.spacing;
    }
    result.items.push_back(std::move(item));
}

void StoryReader::addSpecial(char16_t c, word::Cp at, const word::ResolvedText& format,
                             ParagraphItems& result) {
    TextItem item;
    item.at = at;
    item.format = &format;
    item.size = format.halfPoints * twipsPerHalfPoint;
    item.face = faces_.of(format, U' ');
    switch (c) {
    case special::picture:
        addPicture(at, format, result);
        return;
    case special::noteReference:
        addNote(at, format, result);
        return;
    case special::drawing:
        result.anchors.push_back(at);
        return;
    case special::fixedHyphen:
        addCharacter(0x2011, at, format, result);
        result.items.back().character = U'-';
        return;
    case special::optionalHyphen:
        addCharacter(U'-', at, format, result);
        result.items.back().kind = TextItem::Kind::optionalHyphen;
        std::swap(result.items.back().width, result.items.back().hyphenWidth);
        return;
    case special::lineBreak:
        item.kind = TextItem::Kind::lineBreak;
        break;
    case special::pageBreak:
        item.kind = TextItem::Kind::pageBreak;
        break;
    case special::columnBreak:
        item.kind = TextItem::Kind::columnBreak;
        break;
    default:
        return;
    }
    result.items.push_back(std::move(item));
}

// The picture of a character: the one behind it, or the one that its object keeps of itself. Form
// fields and hyperlinks keep data behind the same character.
const StoryReader::Shared::ShownPicture& StoryReader::pictureOf(const word::ResolvedText& format) {
    static const Shared::ShownPicture none;
    const auto shown = [](const std::optional<word::Picture>& picture, const word::DataBlob& blob) {
        return picture
                   ? Shared::ShownPicture{blob, double(picture->width()), double(picture->height())}
                   : none;
    };
    const word::DocumentTables& tables = *shared_.source.tables;
    if (!format.blob && format.object && *format.object < tables.objects.size() &&
        tables.objects[*format.object]) {
        const auto [known, isNew] = shared_.picturesOfObjects.try_emplace(*format.object);
        if (isNew) {
            const auto picture = word::pictureOfObject(*tables.objects[*format.object]);
            known->second = shown(picture, picture ? picture->blob() : nullptr);
        }
        return known->second;
    }
    if (!format.blob || format.isData || *format.blob >= tables.blobs.size() ||
        !tables.blobs[*format.blob]) {
        return none;
    }
    const auto [known, isNew] = shared_.pictures.try_emplace(*format.blob);
    if (isNew) {
        const word::DataBlob& blob = tables.blobs[*format.blob];
        known->second = shown(word::Picture::fromBlob(*blob), blob);
    }
    return known->second;
}

void StoryReader::addPicture(word::Cp at, const word::ResolvedText& format,
                             ParagraphItems& result) {
    const Shared::ShownPicture& picture = pictureOf(format);
    if (picture.width <= 0) {
        return;
    }
    TextItem item;
    item.kind = TextItem::Kind::picture;
    item.at = at;
    item.format = &format;
    item.size = format.halfPoints * twipsPerHalfPoint;
    item.face = faces_.of(format, U'x');
    item.width = picture.width;
    item.height = picture.height;
    item.raised = format.raisedBy * twipsPerHalfPoint;
    item.picture = picture.blob;
    result.items.push_back(std::move(item));
}

std::vector<word::Anchor>::const_iterator StoryReader::anchorFrom(word::Cp at) const {
    return std::lower_bound(
        story_.anchors.begin(), story_.anchors.end(), at,
        [](const word::Anchor& a, word::Cp position) { return a.at < position; });
}

word::Cp StoryReader::nextAnchor(word::Cp at) const {
    const auto anchor = anchorFrom(at);
    return anchor == story_.anchors.end() ? nowhere : anchor->at;
}

const word::Anchor* StoryReader::noteAt(word::Cp at) const {
    const auto anchor = anchorFrom(at);
    const bool refers = anchor != story_.anchors.end() && anchor->at == at && namesNote(*anchor) &&
                        anchor->index < shared_.noteMarks.size();
    return refers ? &*anchor : nullptr;
}

// In the text the number of the note referred to, in the note its own.
void StoryReader::addNote(word::Cp at, const word::ResolvedText& format, ParagraphItems& result) {
    const word::Anchor* anchor = noteAt(at);
    const std::optional<std::uint32_t> note = anchor != nullptr ? anchor->index : note_;
    if (note && *note < shared_.noteMarks.size()) {
        addText(shared_.noteMarks[*note], at, format, result);
    }
}

// A footnote stands on the page of its reference: a number, or a mark of the author's own. In the
// office suite an endnote does so too.
void StoryReader::attachNote(word::Cp at, std::size_t first, ParagraphItems& result) const {
    if (result.items.size() <= first) {
        return;
    }
    const word::Anchor* anchor = noteAt(at);
    const bool isAtFoot =
        shared_.officeText || (anchor != nullptr && anchor->kind == word::AnchorKind::footnote);
    if (anchor != nullptr && isAtFoot) {
        result.items[first].note = anchor->index;
    }
}

// A symbol that keeps its code stands in the face of its own font. Otherwise it is shown by the
// face of the text around it.
void StoryReader::addSymbol(char16_t code, std::uint16_t font, word::Cp at,
                            const word::ResolvedText& format, ParagraphItems& result) {
    constexpr unsigned lowByte = 0xFF;
    const std::u16string name = faces_.nameOf(font);
    if (shared_.officeText && word::isSymbolFont(name)) {
        const char32_t kept = privateArea + (code & lowByte);
        addCharacter(kept, shared_.fonts.shownBy(faces_.of(font, false, format), kept), at, format,
                     result);
    } else {
        addCharacter(word::symbolAsText(code, name), at, format, result);
    }
}

} // namespace qvnd::layout
