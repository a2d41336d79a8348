#include "platform/word/layout/NoteStrips.h"

#include "platform/word/docfile/format/Dop.h"
#include "platform/word/formatting/NumberForms.h"

#include <algorithm>

namespace qvnd::layout {

NoteStrips::NoteStrips(StoryReader::Shared& shared) : shared_(shared) {
    const LayoutSource& source = shared.source;
    shared.noteMarks.assign(source.tables->sideStories.size(), {});
    isEndnoteAtFoot_.assign(shared.noteMarks.size(), false);
    const auto first = [&](word::DopField field) {
        return std::max(1, static_cast<int>(word::readDop(source.settings, field)));
    };
    int footnote = first(word::dop::firstFootnote);
    int endnote = first(word::dop::firstEndnote);
    for (const word::Anchor& anchor : source.main->anchors) {
        if (!namesNote(anchor) || anchor.index >= shared.noteMarks.size()) {
            continue;
        }
        const bool atFoot = anchor.kind == word::AnchorKind::footnote;
        if (!atFoot && shared.officeText) {
            isEndnoteAtFoot_[anchor.index] = true;
        } else if (!atFoot) {
            endnotes_.push_back(anchor.index);
        }
        if (source.tables->sideStories[anchor.index].automatic) {
            const auto form = atFoot ? word::dop::footnoteNumbers : word::dop::endnoteNumbers;
            shared.noteMarks[anchor.index] = word::numberInForm(
                atFoot ? footnote++ : endnote++, word::readDop(source.settings, form));
        }
    }
}

const Strips& NoteStrips::strips(std::uint32_t note, const LineSetting& setting) {
    const auto [known, isNew] = composed_.try_emplace({note, static_cast<int>(setting.width)});
    const auto& notes = shared_.source.tables->sideStories;
    if (isNew && note < notes.size() && notes[note].text) {
        BlockComposer composer(shared_, *notes[note].text, note);
        PageFields fields;
        fields.totalPages = setting.options.counts.total;
        composer.setPage(fields);
        known->second = composer.composeAll(setting);
    }
    return known->second;
}

void NoteStrips::forget(std::uint32_t note) {
    std::erase_if(composed_, [&](const auto& composed) { return composed.first.first == note; });
}

} // namespace qvnd::layout
