#include "platform/word/engine/TextChanges.h"

#include "platform/word/docfile/format/SpecialCharacters.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/formatting/NameFolding.h"

#include <algorithm>

namespace qvnd::word {

namespace {

constexpr std::uint8_t embedField = 58;
constexpr std::uint8_t controlField = 87;
constexpr std::uint8_t firstFormField = 70; // FORMTEXT, FORMCHECKBOX, ...
constexpr std::uint8_t lastFormField = 83;  // ... FORMDROPDOWN

bool isInTable(ByteView list) {
    const auto entry = findSprm(list, sprm::PFInTable);
    return entry && entry->operand[0] == 1;
}

} // namespace

TextChanges::TextChanges(const Story& story, bool ofItsOwn, TextImport& text, ImportLosses& losses)
    : story_(story), text_(text), losses_(losses), ofItsOwn_(ofItsOwn) {
    for (const Anchor& anchor : story.anchors) {
        kept_.insert(anchor.at);
    }
}

void TextChanges::removeAnchors() {
    Cp at = 0;
    for (const CharacterRun& run : story_.characters) {
        const RunFacts& facts = text_.facts(run.properties);
        for (Cp i = 0; facts.special && i < run.length; ++i) {
            removeAnchor(at + i, facts);
        }
        at += run.length;
    }
}

void TextChanges::repairCellMarks(const PropertyLists& lists) {
    Cp end = 0;
    for (const ParagraphRun& paragraph : story_.paragraphs) {
        end += paragraph.length;
        if (paragraph.length == 0 || story_.text[end - 1] != special::cellMark) {
            continue;
        }
        const auto [known, isNew] = inTable_.try_emplace(paragraph.properties, false);
        if (isNew) {
            known->second = isInTable(lists[paragraph.properties]);
        }
        if (!known->second) {
            edits.replace(end - 1, 1, u"\r");
        }
    }
}

void TextChanges::unwrapObjects(const std::vector<FieldPlace>& fields) {
    for (const FieldPlace& field : fields) {
        if (!lacksObject(field)) {
            continue;
        }
        ++losses_.objects;
        if (field.separator) {
            edits.remove(field.begin, *field.separator - field.begin + 1);
            edits.remove(field.end);
        } else {
            edits.remove(field.begin, field.end - field.begin + 1);
        }
    }
}

void TextChanges::rename(const std::vector<FieldPlace>& fields, const NewNames& bookmarks,
                         const NewListName& newListName) {
    const std::vector<std::vector<FieldWord>> words = fieldWords(story_);
    std::set<Cp> data = bookmarks.empty() ? std::set<Cp>() : hyperlinkData(fields);
    const auto replace = [&](const FieldWord& word, const std::u16string& name) {
        edits.replace(word.at, static_cast<Cp>(word.text.size()), name);
    };
    for (std::size_t i = 0; i < fields.size(); ++i) {
        for (const FieldWord& word : bookmarkWords(words[i])) {
            const auto found = bookmarks.find(foldedName(word.text));
            if (found != bookmarks.end()) {
                replace(word, found->second);
                removeHyperlinkData(fields[i], data);
            }
        }
        const std::optional<FieldWord> list = listNameWord(words[i]);
        const auto name = list ? newListName(list->text) : std::nullopt;
        if (name) {
            replace(*list, *name);
        }
    }
}

// Whether the field is there for an object that is not.
bool TextChanges::lacksObject(const FieldPlace& field) {
    if (field.separator && factsAt(*field.separator).objectThere) {
        return false;
    }
    return field.type == embedField || field.type == controlField ||
           (field.separator && factsAt(*field.separator).object);
}

// Characters that stand for data of fields that are no form fields.
std::set<Cp> TextChanges::hyperlinkData(const std::vector<FieldPlace>& fields) {
    std::set<Cp> places;
    for (Cp at = 0; at < story_.size(); ++at) {
        if (story_.text[at] == special::picture && factsAt(at).data) {
            places.insert(places.end(), at);
        }
    }
    for (const FieldPlace& field : fields) {
        if (field.type >= firstFormField && field.type <= lastFormField) {
            places.erase(places.lower_bound(field.begin), places.upper_bound(field.end));
        }
    }
    return places;
}

// Data behind a hyperlink repeats the old name; the field's code says all that is needed. What
// is removed goes out of `data` as well: fields may lie in each other.
void TextChanges::removeHyperlinkData(const FieldPlace& field, std::set<Cp>& data) {
    const Cp codeEnd = field.separator.value_or(field.end);
    for (auto at = data.lower_bound(field.begin); at != data.end() && *at < codeEnd;) {
        edits.remove(*at);
        at = data.erase(at);
    }
}

const RunFacts& TextChanges::factsAt(Cp at) {
    if (ends_.empty()) {
        Cp end = 0;
        for (const CharacterRun& run : story_.characters) {
            ends_.push_back(end += run.length);
        }
    }
    const auto run = std::upper_bound(ends_.begin(), ends_.end(), at) - ends_.begin();
    return text_.facts(story_.characters.at(static_cast<std::size_t>(run)).properties);
}

void TextChanges::removeAnchor(Cp at, const RunFacts& facts) {
    const Missing missing = missingAt(story_.text[at], facts, kept_.contains(at));
    if (missing == Missing::nothing || (missing == Missing::note && ofItsOwn_)) {
        return;
    }
    count(missing, losses_);
    edits.remove(at);
}

} // namespace qvnd::word
