#include "platform/word/engine/StoryEditor.h"

#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/engine/CharacterFormat.h"
#include "platform/word/engine/CommonLooks.h"
#include "platform/word/engine/ParagraphChange.h"

#include <algorithm>
#include <utility>

namespace qvnd::word {

namespace {

// Half a field is no field: what is deleted grows to the whole of those that it cuts.
std::pair<Cp, Cp> wholeFields(const WorkingStory& story, Cp start, Cp end) {
    int open = 0;
    int missing = 0;
    for (const char16_t c : story.text(start, end)) {
        if (c == u'\x13') {
            ++open;
        } else if (c == u'\x15') {
            open > 0 ? --open : ++missing;
        }
    }
    for (; open > 0 && end + 1 < story.size(); ++end) {
        open += story.at(end) == u'\x13' ? 1 : story.at(end) == u'\x15' ? -1 : 0;
    }
    for (; missing > 0 && start > 0; --start) {
        const char16_t c = story.at(start - 1);
        missing += c == u'\x15' ? 1 : c == u'\x13' ? -1 : 0;
    }
    return {start, end};
}

bool isTypeable(char16_t c) { return c >= u' ' || c == u'\t' || c == u'\v'; }

} // namespace

void StoryEditor::select(Cp start, Cp end) {
    at_.start = clamped(start);
    at_.end = std::max(at_.start, clamped(end));
    at_.movesStart = false;
    readTyping();
}

void StoryEditor::readTyping() {
    const Cp last = story_.size() - 1;
    Cp from = std::min(at_.start, last);
    if (at_.isPoint() && from > 0 && story_.paragraphStart(from) != from) {
        --from;
    }
    at_.typing = looksOnly(tables_.lists, story_.characterProperties(from));
}

void StoryEditor::moveLeftExtending() {
    if (at_.isPoint()) {
        at_.movesStart = true;
    }
    Cp& moving = at_.movesStart ? at_.start : at_.end;
    if (moving > 0) {
        --moving;
    }
    readTyping();
}

void StoryEditor::moveRightExtending() {
    if (at_.isPoint()) {
        at_.movesStart = false;
    }
    Cp& moving = at_.movesStart ? at_.start : at_.end;
    moving = clamped(moving + 1);
    readTyping();
}

void StoryEditor::eraseWhole(Cp start, Cp end) {
    const auto [from, to] = wholeFields(story_, start, std::min(end, story_.size() - 1));
    if (from < to) {
        story_.erase(from, to);
    }
    at_.start = at_.end = from;
}

void StoryEditor::eraseSelection() {
    if (at_.isPoint()) {
        // The very end lies behind the last mark; nothing can be typed there.
        at_.start = at_.end = std::min(at_.start, story_.size() - 1);
        return;
    }
    eraseWhole(at_.start, at_.end);
}

void StoryEditor::erase(Cp count) {
    if (!at_.isPoint()) {
        eraseSelection();
        return;
    }
    eraseWhole(at_.start, at_.start + std::min(count, story_.size() - at_.start));
    readTyping();
}

void StoryEditor::typeText(std::u16string_view text) {
    eraseSelection();
    while (true) {
        const std::size_t end = text.find_first_of(u"\r\n");
        typeLine(text.substr(0, end));
        if (end == text.npos) {
            return;
        }
        typeParagraph();
        text.remove_prefix(end + (text.substr(end, 2) == u"\r\n" ? 2 : 1));
    }
}

void StoryEditor::typeLine(std::u16string_view line) {
    std::u16string typed(line);
    typed.erase(
        std::remove_if(typed.begin(), typed.end(), [](char16_t c) { return !isTypeable(c); }),
        typed.end());
    story_.insertText(at_.start, typed, at_.typing);
    at_.start += static_cast<Cp>(typed.size());
    at_.end = at_.start;
}

void StoryEditor::typeCharacter(char16_t character, const PropertyChange& properties) {
    eraseSelection();
    story_.insertText(at_.start, std::u16string_view(&character, 1), properties(at_.typing));
    at_.end = ++at_.start;
}

void StoryEditor::typeParagraph() {
    eraseSelection();
    const ParagraphLook look = story_.paragraphLook(at_.start);
    const Cp end = story_.paragraphEnd(at_.start);
    const bool isAtEnd = at_.start + 1 == end;
    // A mark typed in a nested table's cell does not end the cell.
    const PropertyListId front =
        withoutEntries(tables_.lists, look.properties, {sprm::PFInnerTableCell, sprm::PFInnerTtp});
    story_.insertMark(at_.start, u'\r', {look.style, front}, at_.typing);
    at_.end = ++at_.start;

    const ParagraphLook rest =
        isAtEnd ? nextLook(tables_, look) : withPageBreak(tables_.lists, look, false);
    if (!(rest == look)) {
        story_.changeParagraphs(end, end + 1, [&](const ParagraphLook&) { return rest; });
    }
    if (rest.style != look.style) {
        at_.typing = PropertyListId::empty;
        story_.changeCharacters(end, end + 1, [](PropertyListId) { return PropertyListId::empty; });
    }
}

void StoryEditor::breakPage() {
    eraseSelection();
    if (at_.start == 0 || story_.paragraphStart(at_.start) != at_.start) {
        typeParagraph();
    }
    if (hasPageBreak(tables_.lists, story_.paragraphLook(at_.start))) {
        return;
    }
    const Cp end = story_.paragraphEnd(at_.start);
    story_.changeParagraphs(end - 1, end, [&](const ParagraphLook& look) {
        return withPageBreak(tables_.lists, look, true);
    });
}

bool StoryEditor::isEmptyParagraph(Cp at) const {
    return story_.paragraphStart(at) == at && story_.paragraphEnd(at) == at + 1;
}

void StoryEditor::changeFont(const FontChange& change) {
    const PropertyChange changed = propertyChange(tables_, change);
    at_.typing = changed(at_.typing);
    if (!at_.isPoint()) {
        story_.changeCharacters(at_.start, at_.end, changed);
    } else if (at_.start < story_.size() && isEmptyParagraph(at_.start)) {
        story_.changeCharacters(at_.start, at_.start + 1, changed);
    }
}

void StoryEditor::changeParagraphs(const LookChange& change) {
    const Cp last = story_.size() - 1;
    const Cp first = std::min(at_.start, last);
    const Cp final = at_.isPoint() ? first : std::min(at_.end - 1, last);
    story_.changeParagraphs(story_.paragraphStart(first), story_.paragraphEnd(final), change);
}

void StoryEditor::applyStyle(StyleIndex style) {
    const auto& styles = tables_.styles.styles;
    if (style >= styles.size() || !styles[style]) {
        return;
    }
    if (styles[style]->kind != StyleKind::character) {
        applyParagraphStyle(style);
        return;
    }
    const auto change = [&](PropertyListId id) {
        return withEntry(tables_.lists, id, sprm::CIstd, style);
    };
    at_.typing = change(at_.typing);
    story_.changeCharacters(at_.start, at_.end, change);
}

void StoryEditor::applyParagraphStyle(StyleIndex style) {
    changeParagraphs(styleChange(tables_.lists, style));
    const Cp last = story_.size() - 1;
    const Cp first = std::min(at_.start, last);
    const Cp final = at_.isPoint() ? first : std::min(at_.end - 1, last);
    story_.changeRuns(story_.paragraphStart(first), story_.paragraphEnd(final),
                      [&](Story& part) { return dropCommonLooks(part, tables_.lists); });
    readTyping();
}

} // namespace qvnd::word
