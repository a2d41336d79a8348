#include "platform/word/layout/FlatStory.h"

#include <algorithm>

namespace qvnd::word {

namespace {

// Calls `take` with the part of each run that lies inside [begin, end).
template <typename Run, typename Take>
void forRunsWithin(const std::vector<Run>& runs, Cp begin, Cp end, Take take) {
    Cp at = 0;
    for (const Run& run : runs) {
        const Cp from = std::max(at, begin);
        const Cp to = std::min(at + run.length, end);
        if (from < to) {
            Run part = run;
            part.length = to - from;
            take(part, to == at + run.length);
        }
        at += run.length;
        if (at >= end) {
            return;
        }
    }
}

bool endsParagraph(char16_t c) { return c == u'\r' || c == u'\a' || c == u'\f'; }

} // namespace

Story flatten(const std::vector<StorySlice>& slices) {
    Story flat;
    Cp open = 0; // length of the paragraph that lacks its mark so far
    for (const StorySlice& slice : slices) {
        const Cp end = slice.begin + slice.length;
        const Cp start = static_cast<Cp>(flat.text.size());
        Cp taken = 0;
        flat.text.append(slice.fragment->text, slice.begin, slice.length);
        appendMarks(flat.fields, slice.fragment->fields, slice.begin, slice.length, start);
        appendMarks(flat.anchors, slice.fragment->anchors, slice.begin, slice.length, start);
        forRunsWithin(slice.fragment->characters, slice.begin, end,
                      [&](const CharacterRun& run, bool) { flat.characters.push_back(run); });
        forRunsWithin(slice.fragment->paragraphs, slice.begin, end,
                      [&](ParagraphRun run, bool whole) {
                          taken += run.length;
                          run.length += open;
                          const bool marked = whole && endsParagraph(flat.text[start + taken - 1]);
                          open = marked ? 0 : run.length;
                          if (marked) {
                              flat.paragraphs.push_back(run);
                          }
                      });
    }
    if (open != 0) {
        flat.paragraphs.push_back({open, 0, PropertyListId::empty});
    }
    return flat;
}

} // namespace qvnd::word
