#pragma once

#include "platform/word/layout/BlockComposer.h"

#include <map>
#include <memory>

namespace qvnd::layout {

// Footnotes and endnotes: their numbers and their composed texts.
class NoteStrips {
public:
    // Numbers all notes that the main story refers to. `shared` must outlive the object. `sheets`:
    // see noteMarks().
    NoteStrips(StoryReader::Shared& shared, const std::vector<int>& sheets);

    // The composed text of a note; cached for each width.
    const Strips& strips(std::uint32_t note, const LineSetting& setting);
    // Frees the text of a note that has been placed. Invalidates what strips() returned for it.
    void forget(std::uint32_t note);
    // The endnotes that stand behind the text, in the order of their references.
    const std::vector<std::uint32_t>& endnotes() const { return endnotes_; }
    // Whether an endnote stands at the foot of the page of its reference, below its footnotes.
    bool isEndnoteAtFoot(std::uint32_t note) const {
        return note < isEndnoteAtFoot_.size() && isEndnoteAtFoot_[note];
    }

private:
    StoryReader::Shared& shared_;
    std::vector<std::uint32_t> endnotes_;
    std::vector<bool> isEndnoteAtFoot_;                        // by note
    std::map<std::pair<std::uint32_t, int>, Strips> composed_; // by note and width
};

} // namespace qvnd::layout
