#include "platform/word/engine/TextBoxPlacing.h"

#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/text/StoryRepair.h"
#include "platform/word/engine/FieldCodes.h"
#include "platform/word/engine/Framing.h"
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
    appendMarks(story.fields, more.fields, 0, more.size(), story.size());
    appendMarks(story.anchors, more.anchors, 0, more.size(), story.size());
    story.text += more.text;
    for (const CharacterRun& run : more.characters) {
        appendRun(story.characters, run);
    }
    story.paragraphs.insert(story.paragraphs.end(), more.paragraphs.begin(), more.paragraphs.end());
}

// The paragraph that `before` ends with gets a mark of its own; its old one ends `text`.
void passEndOn(Story& before, Story& text, const TablePlace& place, PropertyLists& lists) {
    std::swap(before.text.back(), text.text.back());
    if (place.cellEnd && place.depth > 1) {
        PropertyListId& own = before.paragraphs.back().properties;
        own = withoutInnerCellEnd(own, lists);
        PropertyListId& last = text.paragraphs.back().properties;
        last = withInnerCellEnd(last, lists);
    }
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

std::optional<std::size_t> TextBoxPlacing::frameHostOf(Cp anchor, const Story& text) {
    std::size_t paragraph = paragraphAt(anchor);
    if (paragraph >= ends_.size() || placeOf(paragraph).depth > 0) {
        return std::nullopt;
    }
    paragraph = std::max<std::size_t>(paragraph, 1);
    if (paragraph >= ends_.size() || !isEnded(paragraph - 1) || placeOf(paragraph).depth > 0) {
        return std::nullopt;
    }
    const bool beginsWithTable = places_.of(text.paragraphs[0].properties, paragraphMark).depth > 0;
    if (beginsWithTable && placeOf(paragraph - 1).depth > 0) {
        return std::nullopt; // two tables would become one
    }
    const Cp start = startOf(paragraph);
    const bool inCode = std::any_of(codes_.begin(), codes_.end(), [&](const Code& code) {
        return code.begin < start && start <= code.end;
    });
    return inCode ? std::nullopt : std::optional(paragraph);
}

TextBoxPlacing::Form TextBoxPlacing::add(Cp anchor, Story text,
                                         const std::optional<FrameSpot>& spot) {
    if (text.paragraphs.empty()) {
        return Form::none;
    }
    calmBreaks(text);
    if (text.text.back() != paragraphMark) {
        return Form::none;
    }
    if (const auto host = spot ? frameHostOf(anchor, text) : std::nullopt) {
        putInFrame(text, *spot, lists_);
        boxes_.push_back({*host, Form::frame, std::move(text)});
        return Form::frame;
    }
    return addText(anchor, std::move(text)) ? Form::text : Form::none;
}

bool TextBoxPlacing::addText(Cp anchor, Story text) {
    const auto paragraph = hostOf(anchor);
    if (!paragraph) {
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
    boxes_.push_back({*paragraph, Form::text, std::move(text)});
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

// What goes to the paragraph in that form, one after another.
Story TextBoxPlacing::joined(std::size_t paragraph, Form form) {
    Story text;
    for (; next_ < boxes_.size() && boxes_[next_].paragraph == paragraph &&
           boxes_[next_].form == form;
         ++next_) {
        append(text, boxes_[next_].text);
    }
    return text;
}

void TextBoxPlacing::insert(Story& result, Cp at, const Story& text) {
    if (text.size() > 0) {
        append(result, text);
        const Cp before = insertions_.empty() ? 0 : insertions_.back().total;
        insertions_.push_back({at, before + text.size()});
    }
}

// Puts the marks of the story among those of what was inserted.
template <class Mark>
void TextBoxPlacing::moveMarks(const std::vector<Mark>& marks, std::vector<Mark>& result) const {
    for (Mark mark : marks) {
        mark.at = movedCharacter(mark.at);
        result.push_back(mark);
    }
    std::sort(result.begin(), result.end(),
              [](const Mark& a, const Mark& b) { return a.at < b.at; });
}

void TextBoxPlacing::apply() {
    std::stable_sort(boxes_.begin(), boxes_.end(), [](const Box& a, const Box& b) {
        return std::pair(a.paragraph, a.form) < std::pair(b.paragraph, b.form);
    });
    Story result;
    RunCursor runs(story_.characters);
    for (std::size_t i = 0; i < ends_.size(); ++i) {
        const Cp start = startOf(i);
        insert(result, start, joined(i, Form::frame));
        result.text.append(story_.text, start, ends_[i] - start);
        runs.take(ends_[i] - start, result.characters);
        result.paragraphs.push_back(story_.paragraphs[i]);
        Story text = joined(i, Form::text);
        if (text.size() > 0) {
            passEndOn(result, text, placeOf(i), lists_);
        }
        insert(result, ends_[i] - 1, text);
    }
    moveMarks(story_.fields, result.fields);
    moveMarks(story_.anchors, result.anchors);
    story_ = std::move(result);
}

Cp TextBoxPlacing::moved(Cp position) const {
    const auto next =
        std::lower_bound(insertions_.begin(), insertions_.end(), position,
                         [](const Insertion& insertion, Cp value) { return insertion.at < value; });
    return next == insertions_.begin() ? position : position + std::prev(next)->total;
}

// A character goes on with what was put in front of it.
Cp TextBoxPlacing::movedCharacter(Cp at) const { return moved(at + 1) - 1; }

} // namespace qvnd::word
