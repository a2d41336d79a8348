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

void TextChanges::unwrapObjects() {
    forEachField(story_, [this](const FieldPlace& field) {
        if (!lacksObject(field)) {
            return;
        }
        ++losses_.objects;
        if (field.separator) {
            edits.remove(field.begin, *field.separator - field.begin + 1);
            edits.remove(field.end);
        } else {
            edits.remove(field.begin, field.end - field.begin + 1);
        }
    });
}

void TextChanges::rename(const NewNames& bookmarks, const NewListName& newListName) {
    forEachFieldCode(story_, [&](const FieldPlace& field, const FieldCode& code) {
        bool isRenamed = false;
        forEachBookmarkWord(code, [&](const FieldWord& word) {
            const auto found = bookmarks.find(foldedName(word.in(story_)));
            if (found != bookmarks.end()) {
                edits.replace(word.at, word.length, found->second);
                isRenamed = true;
            }
        });
        if (isRenamed) {
            removeHyperlinkData(field.begin, field.separator.value_or(field.end));
        }
        const std::optional<FieldWord> list = listNameWord(code);
        const auto name = list ? newListName(list->in(story_)) : std::nullopt;
        if (name) {
            edits.replace(list->at, list->length, *name);
        }
    });
}

// Whether the field is there for an object that is not.
bool TextChanges::lacksObject(const FieldPlace& field) {
    if (field.separator && factsAt(*field.separator).objectThere) {
        return false;
    }
    return field.type == embedField || field.type == controlField ||
           (field.separator && factsAt(*field.separator).object);
}

// Data behind a hyperlink repeat the old name; the field's code says all that is needed. The data
// of a form field stay: they bear its name and more. Fields come in the order in which they begin,
// so what lies in one of them is looked at once.
void TextChanges::removeHyperlinkData(Cp begin, Cp end) {
    for (Cp at = std::max(begin, dataSought_); at < end; ++at) {
        if (story_.text[at] == special::picture && factsAt(at).data && !isInFormField(at)) {
            edits.remove(at);
        }
    }
    dataSought_ = std::max(dataSought_, end);
}

// Asked for ascending places.
bool TextChanges::isInFormField(Cp at) {
    if (!formFields_) {
        formFields_.emplace();
        forEachField(story_, [this](const FieldPlace& field) {
            const bool isForm = field.type >= firstFormField && field.type <= lastFormField;
            if (isForm && (formFields_->empty() || formFields_->back().end < field.end)) {
                formFields_->push_back({field.begin, field.end});
            }
        });
    }
    while (nextForm_ < formFields_->size() && (*formFields_)[nextForm_].end < at) {
        ++nextForm_;
    }
    return nextForm_ < formFields_->size() && (*formFields_)[nextForm_].begin <= at;
}

const RunFacts& TextChanges::factsAt(Cp at) {
    if (ends_.empty()) {
        Cp end = 0;
        ends_.reserve(story_.characters.size());
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
