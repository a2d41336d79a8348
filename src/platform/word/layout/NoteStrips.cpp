#include "platform/word/layout/NoteStrips.h"

#include "platform/word/layout/NoteNumbers.h"

namespace qvnd::layout {

NoteStrips::NoteStrips(StoryReader::Shared& shared, const std::vector<int>& sheets)
    : shared_(shared) {
    const LayoutSource& source = shared.source;
    shared.noteMarks = noteMarks(source, sheets);
    isEndnoteAtFoot_.assign(shared.noteMarks.size(), false);
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
