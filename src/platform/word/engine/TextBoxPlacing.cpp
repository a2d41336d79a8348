#include "platform/word/engine/TextBoxPlacing.h"

#include "platform/word/docfile/Sprm.h"
#include "platform/word/docfile/SprmCodes.h"
#include "platform/word/docfile/StoryRepair.h"
#include "platform/word/engine/FieldCodes.h"
#include "platform/word/engine/TableNesting.h"

#include <algorithm>
#include <utility>

namespace qvnd::word {

namespace {

constexpr char16_t paragraphMark = 0x0D;
constexpr char16_t cellMark = 0x07;
constexpr char16_t lineBreak = 0x0B;
constexpr char16_t pageBreak = 0x0C;
constexpr char16_t columnBreak = 0x0E;

// In a text box breaks lead to the next box of its chain; in the text they would begin a page.
void calmBreaks(Story& text) {
    for (char16_t& c : text.text) {
        c = c == pageBreak || c == columnBreak ? lineBreak : c;
    }
    Cp end = 0;
    for (const ParagraphRun& paragraph : text.paragraphs) {
        end += paragraph.length;
        char16_t& mark = text.text[end - 1];
        mark = mark == lineBreak ? paragraphMark : mark;
    }
}

void append(Story& story, const Story& more) {
    for (const FieldMark& mark : more.fields) {
        story.fields.push_back({story.size() + mark.at, mark.character, mark.data});
    }
    story.text += more.text;
    for (const CharacterRun& run : more.characters) {
        appendRun(story.characters, run);
    }
    story.paragraphs.insert(story.paragraphs.end(), more.paragraphs.begin(), more.paragraphs.end());
}

// Takes the runs of characters one after another into another story.
class RunCursor {
public:
    explicit RunCursor(const std::vector<CharacterRun>& runs) : runs_(runs) {}

    void take(Cp length, std::vector<CharacterRun>& result) {
        while (length > 0 && run_ < runs_.size()) {
            const Cp part = std::min(length, runs_[run_].length - used_);
            appendRun(result, {part, runs_[run_].properties});
            length -= part;
            used_ += part;
            if (used_ == runs_[run_].length) {
                ++run_;
                used_ = 0;
            }
        }
    }

private:
    const std::vector<CharacterRun>& runs_;
    std::size_t run_ = 0;
    Cp used_ = 0; // of the current run
};

} // namespace

TextBoxPlacing::TextBoxPlacing(Story& story, PropertyLists& lists)
    : story_(story), lists_(lists), places_(lists) {
    Cp end = 0;
    for (const ParagraphRun& paragraph : story.paragraphs) {
        ends_.push_back(end += paragraph.length);
    }
    readCodes();
}

void TextBoxPlacing::readCodes() {
    for (const FieldPlace& field : fieldPlaces(story_)) {
        const Cp end = field.separator.value_or(field.end);
        if (paragraphAt(field.begin) != paragraphAt(end)) {
            codes_.push_back({field.begin, end, field.end});
        }
    }
    std::sort(codes_.begin(), codes_.end(),
              [](const Code& a, const Code& b) { return a.begin < b.begin; });
}

std::size_t TextBoxPlacing::paragraphAt(Cp position) const {
    const auto found = std::upper_bound(ends_.begin(), ends_.end(), position);
    return static_cast<std::size_t>(found - ends_.begin());
}

// Paragraphs that a removed mark left open go on in the next one.
bool TextBoxPlacing::isEnded(std::size_t paragraph) const {
    const char16_t mark = story_.text[ends_[paragraph] - 1];
    return mark == paragraphMark || mark == cellMark || mark == pageBreak;
}

TablePlace TextBoxPlacing::placeOf(std::size_t paragraph) {
    return places_.of(story_.paragraphs[paragraph].properties, story_.text[ends_[paragraph] - 1]);
}

std::size_t TextBoxPlacing::behindCode(std::size_t paragraph) const {
    for (const Code& code : codes_) {
        if (code.begin >= ends_[paragraph]) {
            break;
        }
        if (code.end >= ends_[paragraph]) {
            paragraph = paragraphAt(code.fieldEnd);
        }
    }
    return paragraph;
}

std::optional<std::size_t> TextBoxPlacing::hostOf(Cp anchor) {
    std::size_t paragraph = paragraphAt(anchor);
    if (paragraph >= ends_.size()) {
        return std::nullopt;
    }
    paragraph = behindCode(paragraph);
    while (paragraph < ends_.size() && !isEnded(paragraph)) {
        ++paragraph;
    }
    // The end of a row holds no text; the row's last cell stands in front of it.
    while (paragraph < ends_.size() && placeOf(paragraph).rowEnd) {
        paragraph = paragraph == 0 ? ends_.size() : paragraph - 1;
    }
    return paragraph < ends_.size() ? std::optional(paragraph) : std::nullopt;
}

bool TextBoxPlacing::add(Cp anchor, Story text) {
    calmBreaks(text);
    const auto paragraph = hostOf(anchor);
    if (!paragraph || text.paragraphs.empty() || text.text.back() != paragraphMark) {
        return false;
    }
    const int depth = placeOf(*paragraph).depth;
    if (depth + depthOfTables(text, lists_) > deepestTable) {
        return false;
    }
    nestInCell(text, depth, lists_);
    if (depth > 0) {
        growRow(*paragraph, depth);
    }
    boxes_.push_back({*paragraph, std::move(text)});
    return true;
}

void TextBoxPlacing::growRow(std::size_t paragraph, int depth) {
    for (; paragraph < ends_.size(); ++paragraph) {
        const TablePlace place = placeOf(paragraph);
        if (place.depth < depth || (place.depth == depth && place.rowEnd)) {
            break;
        }
    }
    if (paragraph == ends_.size()) {
        return;
    }
    PropertyListId& properties = story_.paragraphs[paragraph].properties;
    const auto height = findSprm(lists_[properties], sprm::TDyaRowHeight);
    if (!height) {
        return;
    }
    // Negative for an exact height, positive for the least one.
    const int value = LittleEndianReader(height->operand, "sprmTDyaRowHeight").i16();
    if (value < 0) {
        properties = lists_.intern(
            withSprm16(lists_[properties], sprm::TDyaRowHeight, static_cast<unsigned>(-value)));
    }
}

// The texts that go behind the paragraph, one after another.
Story TextBoxPlacing::joined(std::size_t paragraph) {
    Story text;
    for (; next_ < boxes_.size() && boxes_[next_].paragraph == paragraph; ++next_) {
        append(text, boxes_[next_].text);
    }
    return text;
}

// The paragraph gets a mark of its own; its old one ends what was put behind it.
void TextBoxPlacing::apply() {
    std::stable_sort(boxes_.begin(), boxes_.end(),
                     [](const Box& a, const Box& b) { return a.paragraph < b.paragraph; });
    Story result;
    RunCursor runs(story_.characters);
    Cp start = 0;
    Cp total = 0;
    for (std::size_t i = 0; i < ends_.size(); ++i) {
        const Cp end = ends_[i];
        ParagraphRun paragraph = story_.paragraphs[i];
        result.text.append(story_.text, start, end - start);
        runs.take(end - start, result.characters);
        if (Story texts = joined(i); texts.size() > 0) {
            const TablePlace place = placeOf(i);
            std::swap(result.text.back(), texts.text.back());
            if (place.cellEnd && place.depth > 1) {
                paragraph.properties = withoutInnerCellEnd(paragraph.properties, lists_);
                PropertyListId& last = texts.paragraphs.back().properties;
                last = withInnerCellEnd(last, lists_);
            }
            result.paragraphs.push_back(paragraph);
            append(result, texts);
            insertions_.push_back({end - 1, total += texts.size()});
        } else {
            result.paragraphs.push_back(paragraph);
        }
        start = end;
    }
    for (const FieldMark& mark : story_.fields) {
        result.fields.push_back({moved(mark.at), mark.character, mark.data});
    }
    std::sort(result.fields.begin(), result.fields.end(),
              [](const FieldMark& a, const FieldMark& b) { return a.at < b.at; });
    story_ = std::move(result);
}

Cp TextBoxPlacing::moved(Cp position) const {
    const auto next =
        std::lower_bound(insertions_.begin(), insertions_.end(), position,
                         [](const Insertion& insertion, Cp value) { return insertion.at < value; });
    return next == insertions_.begin() ? position : position + std::prev(next)->total;
}

} // namespace qvnd::word
