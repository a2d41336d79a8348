#include "platform/word/docfile/document/StoryParts.h"

#include <algorithm>

namespace qvnd::word {

namespace {

// Both walks start at the nearer end: insertion mostly happens at a story's end.
template <typename Run>
const Run& runAt(const std::vector<Run>& runs, Cp size, Cp at) {
    if (at < size / 2) {
        auto run = runs.begin();
        for (Cp end = run->length; end <= at; end += run->length) {
            ++run;
        }
        return *run;
    }
    auto run = runs.rbegin();
    for (Cp start = size - run->length; start > at; start -= run->length) {
        ++run;
    }
    return *run;
}

template <typename Run>
std::vector<Run> runsOf(const std::vector<Run>& runs, Cp begin, Cp end) {
    std::vector<Run> result;
    Cp at = 0;
    for (const Run& run : runs) {
        const Cp from = std::max(at, begin);
        const Cp to = std::min(at + run.length, end);
        if (from < to) {
            result.push_back(run);
            result.back().length = to - from;
        }
        at += run.length;
        if (at >= end) {
            break;
        }
    }
    return result;
}

bool isEnded(const Story& story, Cp runEnd) { return endsParagraph(story.text[runEnd - 1]); }

// Those that have something of the part, or stand in it as points; what reaches beyond is cut.
void appendBookmarks(std::vector<Bookmark>& bookmarks, const std::vector<Bookmark>& ofFragment,
                     Cp begin, Cp length, Cp at) {
    for (const Bookmark& bookmark : ofFragment) {
        const Cp from = std::max(bookmark.start, begin);
        const Cp to = std::min(bookmark.end, begin + length);
        if (from < to || (from == to && bookmark.start == bookmark.end)) {
            bookmarks.push_back(bookmark);
            bookmarks.back().start = from - begin + at;
            bookmarks.back().end = to - begin + at;
        }
    }
}

} // namespace

bool endsParagraph(char16_t character) {
    return character == u'\r' || character == u'\a' || character == u'\f';
}

Story partOf(const Story& story, Cp begin, Cp length) {
    Story part;
    part.text = story.text.substr(begin, length);
    part.characters = runsOf(story.characters, begin, begin + length);
    part.paragraphs = runsOf(story.paragraphs, begin, begin + length);
    appendMarks(part.fields, story.fields, begin, length, 0);
    appendMarks(part.anchors, story.anchors, begin, length, 0);
    appendBookmarks(part.bookmarks, story.bookmarks, begin, length, 0);
    return part;
}

void appendStory(Story& target, const Story& part) {
    const Cp offset = target.size();
    // Two halves of one paragraph become one run, with the look of the half that has the mark.
    const bool joins = !target.text.empty() && !endsParagraph(target.text.back());
    auto run = part.paragraphs.begin();
    if (joins && run != part.paragraphs.end()) {
        target.paragraphs.back() = {target.paragraphs.back().length + run->length, run->style,
                                    run->properties};
        ++run;
    }
    target.paragraphs.insert(target.paragraphs.end(), run, part.paragraphs.end());
    target.characters.insert(target.characters.end(), part.characters.begin(),
                             part.characters.end());
    appendMarks(target.fields, part.fields, 0, part.size(), offset);
    appendMarks(target.anchors, part.anchors, 0, part.size(), offset);
    appendBookmarks(target.bookmarks, part.bookmarks, 0, part.size(), offset);
    target.text += part.text;
}

PropertyListId characterPropertiesAt(const Story& story, Cp at) {
    return runAt(story.characters, story.size(), at).properties;
}

ParagraphLook paragraphLookAt(const Story& story, Cp at) {
    const ParagraphRun& run = runAt(story.paragraphs, story.size(), at);
    return {run.style, run.properties};
}

std::optional<Cp> lastParagraphEnd(const Story& story, Cp low, Cp high) {
    Cp end = story.size();
    for (auto run = story.paragraphs.rbegin(); run != story.paragraphs.rend() && end > low; ++run) {
        if (end <= high && isEnded(story, end)) {
            return end;
        }
        end -= run->length;
    }
    return std::nullopt;
}

std::optional<Cp> firstParagraphEnd(const Story& story, Cp low, Cp high) {
    Cp end = 0;
    for (const ParagraphRun& run : story.paragraphs) {
        end += run.length;
        if (end > high) {
            break;
        }
        if (end > low && isEnded(story, end)) {
            return end;
        }
    }
    return std::nullopt;
}

} // namespace qvnd::word
