#include "platform/word/engine/StoryEdits.h"

#include <algorithm>
#include <utility>

namespace qvnd::word {

void StoryEdits::remove(Cp at, Cp length) {
    const bool goesOn =
        !edits_.empty() && edits_.back().text == 0 && edits_.back().at + edits_.back().length == at;
    if (goesOn) {
        edits_.back().length += length;
    } else {
        replace(at, length, {});
    }
}

void StoryEdits::replace(Cp at, Cp length, const std::u16string& text) {
    const auto [known, isNew] =
        textPlaces_.try_emplace(text, static_cast<std::uint32_t>(texts_.size()));
    if (isNew) {
        texts_.push_back(text);
    }
    edits_.push_back({at, length, known->second, 0});
}

// Brings the edits in order and apart from each other.
void StoryEdits::settle() {
    const auto before = [](const Edit& one, const Edit& other) { return one.at < other.at; };
    if (!std::is_sorted(edits_.begin(), edits_.end(), before)) {
        std::stable_sort(edits_.begin(), edits_.end(), before);
    }
    auto kept = edits_.begin();
    Cp end = 0;
    Cp newEnd = 0; // where `end` lies after the edits
    for (Edit& edit : edits_) {
        const Cp editEnd = edit.at + edit.length;
        if (editEnd <= end && kept != edits_.begin()) {
            continue;
        }
        if (edit.at < end) {
            edit.text = 0;
        }
        edit.at = std::max(edit.at, end);
        edit.length = editEnd - edit.at;
        newEnd += edit.at - end + lengthOf(edit);
        edit.newEnd = newEnd;
        end = editEnd;
        *kept++ = edit;
    }
    edits_.erase(kept, edits_.end());
}

const StoryEdits::Edit* StoryEdits::lastBefore(Cp position) const {
    const auto next = std::lower_bound(edits_.begin(), edits_.end(), position,
                                       [](const Edit& edit, Cp value) { return edit.at < value; });
    return next == edits_.begin() ? nullptr : &*std::prev(next);
}

Cp StoryEdits::moved(Cp position) const {
    const Edit* edit = lastBefore(position);
    if (edit == nullptr) {
        return position;
    }
    const Cp end = edit->at + edit->length;
    return position <= end ? edit->newEnd : edit->newEnd + (position - end);
}

bool StoryEdits::removed(Cp position) const {
    const Edit* edit = lastBefore(position + 1);
    return edit != nullptr && position < edit->at + edit->length;
}

namespace {

// Lengths of the runs after the edits; what has none left goes.
template <class Run>
void shorten(std::vector<Run>& runs, const StoryEdits& edits) {
    Cp end = 0;
    Cp newStart = 0;
    std::size_t kept = 0;
    for (Run& run : runs) {
        end += run.length;
        const Cp newEnd = edits.moved(end);
        run.length = newEnd - newStart;
        newStart = newEnd;
        if (run.length > 0) {
            runs[kept++] = run;
        }
    }
    runs.resize(kept);
}

} // namespace

std::u16string StoryEdits::editedText(const std::u16string& text) const {
    const Edit& last = edits_.back();
    std::u16string edited;
    edited.reserve(last.newEnd + (text.size() - (last.at + last.length)));
    Cp at = 0;
    for (const Edit& edit : edits_) {
        edited.append(text, at, edit.at - at);
        edited += texts_[edit.text];
        at = edit.at + edit.length;
    }
    edited.append(text, at);
    return edited;
}

void StoryEdits::applyTo(Story& story) {
    settle();
    if (edits_.empty()) {
        return;
    }
    story.text = editedText(story.text);
    shorten(story.characters, *this);
    shorten(story.paragraphs, *this);
    const auto moveMarks = [this](auto& marks) {
        std::erase_if(marks, [this](const auto& mark) { return removed(mark.at); });
        for (auto& mark : marks) {
            mark.at = moved(mark.at);
        }
    };
    moveMarks(story.fields);
    moveMarks(story.anchors);
    for (Bookmark& bookmark : story.bookmarks) {
        bookmark.start = moved(bookmark.start);
        bookmark.end = moved(bookmark.end);
    }
}

} // namespace qvnd::word
