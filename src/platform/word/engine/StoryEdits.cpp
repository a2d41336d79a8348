#include "platform/word/engine/StoryEdits.h"

#include <algorithm>
#include <utility>

namespace qvnd::word {

void StoryEdits::remove(Cp at, Cp length) {
    const bool goesOn = !edits_.empty() && edits_.back().text.empty() &&
                        edits_.back().at + edits_.back().length == at;
    if (goesOn) {
        edits_.back().length += length;
    } else {
        replace(at, length, {});
    }
}

void StoryEdits::replace(Cp at, Cp length, std::u16string text) {
    edits_.push_back({at, length, std::move(text), 0});
}

// Brings the edits in order and apart from each other.
void StoryEdits::settle() {
    std::stable_sort(edits_.begin(), edits_.end(),
                     [](const Edit& one, const Edit& other) { return one.at < other.at; });
    std::vector<Edit> apart;
    Cp end = 0;
    Cp newEnd = 0; // where `end` lies after the edits
    for (Edit& edit : edits_) {
        const Cp editEnd = edit.at + edit.length;
        if (editEnd <= end && !apart.empty()) {
            continue;
        }
        if (edit.at < end) {
            edit.text.clear();
        }
        edit.at = std::max(edit.at, end);
        edit.length = editEnd - edit.at;
        newEnd += edit.at - end + static_cast<Cp>(edit.text.size());
        edit.newEnd = newEnd;
        end = editEnd;
        apart.push_back(std::move(edit));
    }
    edits_ = std::move(apart);
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

void StoryEdits::applyTo(Story& story) {
    settle();
    if (edits_.empty()) {
        return;
    }
    std::u16string text;
    Cp at = 0;
    for (const Edit& edit : edits_) {
        text.append(story.text, at, edit.at - at);
        text += edit.text;
        at = edit.at + edit.length;
    }
    text.append(story.text, at);
    story.text = std::move(text);
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
